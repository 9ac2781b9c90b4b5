#pragma once

#include "host/freqstorexml/detectionresultlist.h"
#include "host/freqstorexml/frequencystorelist.h"
#include "host/freqstorexml/frequencystorelisthelper.h"
#include "host/report/rgexception.h"

#include <QString>

#include <functional>
#include <memory>

class QIODevice;

namespace FreqStoreXml {

/// Writes a list entry by entry, so that a list of any length needs no vector of entries. The old file stands
/// until Commit(); a writer that is destroyed before leaves it untouched. All operations throw RGException
/// with the file's name and the reason; a file that failed once fails at Commit() too.
class FrequencyStoreListWriter {
public:
    using ListType = FrequencyStoreListHelper::ListType;

    /// Opens the file, in XML or, with `csv`, with the columns of `type`.
    FrequencyStoreListWriter(const QString& fileName, bool csv,
                             ListType type = FrequencyStoreListHelper::XmlList);
    /// Writes to an open device that the caller owns; Commit() then leaves it open.
    FrequencyStoreListWriter(QIODevice& device, bool csv, ListType type = FrequencyStoreListHelper::XmlList);
    ~FrequencyStoreListWriter();

    /// Writes the list's head; once, before the first entry. Without it the usage is unspecified.
    void Begin(FrequencyStoreList::Usage usage);
    void Append(const FrequencyStoreEntry& entry);
    /// Writes the list's end and puts the new file in the place of the old one.
    void Commit();

private:
    class Private;
    std::unique_ptr<Private> d;
};

/// The same for detection results.
class DetectionResultListWriter {
public:
    DetectionResultListWriter(const QString& fileName, bool csv);
    ~DetectionResultListWriter();

    /// Writes the list's head, which is all that is taken of the list; once, before the first result.
    void Begin(const DetectionResultList& head);
    void Append(const DetectionResult& result);
    void Commit();

private:
    class Private;
    std::unique_ptr<Private> d;
};

/// Receives one entry of a file; the object is used again for the next.
using EntryCallback = std::function<void(const FrequencyStoreEntry&)>;

/// Read a file entry by entry in its order. They throw RGException with a text "file:line: reason", and have
/// then delivered the entries before the bad place: a caller that replaces a list by a file must be ready to
/// undo, or use FileHandling. What the callback throws passes through. `usage`, when given, is set before the
/// first entry.
void ReadXml(const QString& fileName, const EntryCallback& callback,
             FrequencyStoreList::Usage* usage = nullptr);
void ReadCsv(const QString& fileName, FrequencyStoreListHelper::ListType type, const EntryCallback& callback);
/// The same for an open device of the caller's; `name` stands for the file in error texts.
void ReadXml(QIODevice& device, const QString& name, const EntryCallback& callback,
             FrequencyStoreList::Usage* usage = nullptr);
void ReadCsv(QIODevice& device, const QString& name, FrequencyStoreListHelper::ListType type,
             const EntryCallback& callback);

/// Receives one detection result of a file; the object is used again for the next.
using ResultCallback = std::function<void(const DetectionResult&)>;

/// Reads detection results, in XML or CSV, as the functions above read entries.
void ReadDetectionResults(const QString& fileName, bool csv, const ResultCallback& callback);

} // namespace FreqStoreXml
