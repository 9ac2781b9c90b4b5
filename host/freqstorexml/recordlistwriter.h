#pragma once

#include "host/freqstorexml/csvlayout.h"

#include <QString>

#include <string>

class QIODevice;

namespace FreqStoreXml {

/// Writes a list of records of any kind to a device, record by record through a buffer. All operations throw
/// RGException "name: reason".
class RecordListWriter {
public:
    /// In XML, or with a layout in CSV. The device, the layout and the list's head belong to the caller.
    RecordListWriter(QIODevice& device, const QString& name, const CsvLayout* layout);

    void Begin(const REPORTGENERATOR::IRGObject& head);
    void Append(const REPORTGENERATOR::IRGObject& record);
    void End(const REPORTGENERATOR::IRGObject& head);

private:
    void AppendRow(REPORTGENERATOR::IRGObject& record);
    void Flush();

    QIODevice& m_device;
    const QString m_name;
    const CsvLayout* const m_layout;
    const bool m_isGuarded; ///< CSV for spreadsheets, see CsvOptions
    std::string m_buffer;
};

} // namespace FreqStoreXml
