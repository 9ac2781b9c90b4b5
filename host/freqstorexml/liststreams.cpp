#include "host/freqstorexml/liststreams.h"

#include "host/base/fileproblems.h"
#include "host/freqstorexml/csvreader.h"
#include "host/freqstorexml/passinglist.h"
#include "host/freqstorexml/recordlistwriter.h"
#include "host/report/byteinput.h"
#include "host/report/outputfile.h"
#include "host/report/recordreader.h"

#include <QFile>

#include <optional>

namespace FreqStoreXml {

class FrequencyStoreListWriter::Private {
public:
    Private(const QString& fileName, const CsvLayout* layout)
        : m_file(fileName), m_writer(m_file->Device(), fileName, layout) {}
    Private(QIODevice& device, const CsvLayout* layout) : m_writer(device, QString(), layout) {}

    void Begin(FrequencyStoreList::Usage usage) {
        m_head.SetUsage(usage);
        m_writer.Begin(m_head);
        m_begun = true;
    }
    void Append(const FrequencyStoreEntry& entry) {
        if (!m_begun)
            Begin(FrequencyStoreList::Unspecified);
        m_writer.Append(entry);
        ++m_entries;
    }
    void Commit() {
        if (!m_begun)
            Begin(FrequencyStoreList::Unspecified);
        m_writer.End(m_head);
        if (!m_file)
            return;
        m_file->SetEntryCount(m_entries);
        m_file->Commit();
    }

private:
    std::optional<REPORTGENERATOR::OutputFile> m_file;
    RecordListWriter m_writer;
    FrequencyStoreList m_head;
    qint64 m_entries = 0;
    bool m_begun = false;
};

FrequencyStoreListWriter::FrequencyStoreListWriter(const QString& fileName, bool csv, ListType type)
    : d(std::make_unique<Private>(fileName, csv ? &CsvLayout::Of(type) : nullptr)) {}

FrequencyStoreListWriter::FrequencyStoreListWriter(QIODevice& device, bool csv, ListType type)
    : d(std::make_unique<Private>(device, csv ? &CsvLayout::Of(type) : nullptr)) {}

FrequencyStoreListWriter::~FrequencyStoreListWriter() = default;

void FrequencyStoreListWriter::Begin(FrequencyStoreList::Usage usage) {
    d->Begin(usage);
}

void FrequencyStoreListWriter::Append(const FrequencyStoreEntry& entry) {
    d->Append(entry);
}

void FrequencyStoreListWriter::Commit() {
    d->Commit();
}

class DetectionResultListWriter::Private {
public:
    Private(const QString& fileName, bool csv)
        : m_file(fileName),
          m_writer(m_file.Device(), fileName, csv ? &CsvLayout::OfDetectionResults() : nullptr) {}

    void Begin(const DetectionResultList& head) {
        m_head = head;
        m_head.GetDetectionResult() = {};
        m_writer.Begin(m_head);
    }
    void Append(const DetectionResult& result) { m_writer.Append(result); }
    void Commit() {
        m_writer.End(m_head);
        m_file.Commit();
    }

private:
    REPORTGENERATOR::OutputFile m_file;
    RecordListWriter m_writer;
    DetectionResultList m_head;
};

DetectionResultListWriter::DetectionResultListWriter(const QString& fileName, bool csv)
    : d(std::make_unique<Private>(fileName, csv)) {}

DetectionResultListWriter::~DetectionResultListWriter() = default;

void DetectionResultListWriter::Begin(const DetectionResultList& head) {
    d->Begin(head);
}

void DetectionResultListWriter::Append(const DetectionResult& result) {
    d->Append(result);
}

void DetectionResultListWriter::Commit() {
    d->Commit();
}

namespace {

/// Tells frequencies of an XML file that cannot be, by the number of their entry.
class FrequencyCheck {
public:
    explicit FrequencyCheck(const QString& fileName) : m_problems(fileName, "liststreams") {}

    void Take(const Frequency& frequency) {
        ++m_number;
        if (!FileProblems::IsFrequency(frequency.GetValue()))
            m_problems.CheckFrequency(0, frequency.GetValue(), QStringLiteral("entry %1: ").arg(m_number));
    }

private:
    FileProblems m_problems;
    qint64 m_number = 0;
};

} // namespace

void ReadXml(const QString& fileName, const EntryCallback& callback, FrequencyStoreList::Usage* usage) {
    REPORTGENERATOR::ReadWhole(fileName, [&](QFile& file) { ReadXml(file, fileName, callback, usage); });
}

void ReadCsv(const QString& fileName, FrequencyStoreListHelper::ListType type,
             const EntryCallback& callback) {
    REPORTGENERATOR::ReadWhole(fileName, [&](QFile& file) { ReadCsv(file, fileName, type, callback); });
}

void ReadXml(QIODevice& device, const QString& name, const EntryCallback& callback,
             FrequencyStoreList::Usage* usage) {
    FrequencyStoreList head;
    FrequencyCheck check(name);
    const EntryCallback passOn = [&](const FrequencyStoreEntry& entry) {
        check.Take(entry.GetFFM_Settings().GetFrequency());
        if (usage)
            *usage = head.GetUsage();
        callback(entry);
    };
    PassingList<FrequencyStoreEntry> entries(passOn);
    REPORTGENERATOR::ReadDocument(device, name, head, &entries);
    if (usage)
        *usage = head.GetUsage();
}

void ReadCsv(QIODevice& device, const QString& name, FrequencyStoreListHelper::ListType type,
             const EntryCallback& callback) {
    FrequencyStoreEntry entry;
    ReadCsvRecords(device, name, CsvLayout::Of(type), entry, [&] { callback(entry); });
}

void ReadDetectionResults(const QString& fileName, bool csv, const ResultCallback& callback) {
    REPORTGENERATOR::ReadWhole(fileName, [&](QFile& file) {
        if (csv) {
            DetectionResult result;
            return ReadCsvRecords(file, fileName, CsvLayout::OfDetectionResults(), result,
                                  [&] { callback(result); });
        }
        FrequencyCheck check(fileName);
        const ResultCallback passOn = [&](const DetectionResult& result) {
            check.Take(result.GetFrequency());
            callback(result);
        };
        PassingList<DetectionResult> results(passOn);
        DetectionResultList head;
        REPORTGENERATOR::ReadDocument(file, fileName, head, &results);
    });
}

} // namespace FreqStoreXml
