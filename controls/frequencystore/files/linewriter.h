#pragma once

#include "host/report/outputfile.h"

#include <QStringEncoder>

/// Writes lines of text as UTF-16, little-endian, with a byte-order mark. The old file stands until `Commit`;
/// a writer that ends before leaves it untouched. All operations throw RGException, told, as OutputFile does.
class LineWriter {
public:
    explicit LineWriter(const QString& path);

    /// Appends one line and its end.
    void Append(const QString& line);
    /// Puts the new file in the place of the old one.
    void Commit();

private:
    void flush();

    const QString m_path;
    REPORTGENERATOR::OutputFile m_file;
    QStringEncoder m_encoder;
    QString m_buffer;
    qint64 m_lines = 0; ///< that say something: an entry has one
};
