#include "host/freqstorexml/filehandling.h"

#include "host/freqstorexml/csvreader.h"
#include "host/freqstorexml/liststreams.h"
#include "host/freqstorexml/passinglist.h"
#include "host/freqstorexml/recordlistwriter.h"
#include "host/report/byteinput.h"
#include "host/report/outputfile.h"
#include "host/report/recordreader.h"

#include <QFile>

#include <utility>

namespace FreqStoreXml {

bool FileHandling::IsValidFormat(const QString& fileName) const {
    FrequencyStoreList head;
    return REPORTGENERATOR::HasRoot(fileName, head);
}

void FileHandling::ImportFrequencyStoreList(bool csv, const QString& fileName, FrequencyStoreList& list,
                                            FrequencyStoreListHelper::ListType type) {
    FrequencyStoreList read;
    auto usage = FrequencyStoreListHelper::UsageOf(type);
    const EntryCallback append = [&](FrequencyStoreEntry& entry) {
        read.GetFrequencyStoreEntry().append(std::move(entry));
    };
    if (csv)
        ReadCsv(fileName, type, append);
    else
        ReadXml(fileName, append, &usage);
    read.SetUsage(usage);
    list = std::move(read);
}

void FileHandling::ImportDetectionResultList(bool csv, const QString& fileName, DetectionResultList& list) {
    DetectionResultList read;
    if (csv) {
        QFile file(fileName);
        REPORTGENERATOR::OpenForReading(file);
        const std::function<void(DetectionResult&)> append = [&](DetectionResult& result) {
            read.GetDetectionResult().append(std::move(result));
        };
        PassingList<DetectionResult> results(append);
        ReadCsvRecords(file, fileName, CsvLayout::OfDetectionResults(), results);
    } else {
        read.LoadXml(fileName);
    }
    list = std::move(read);
}

bool FileHandling::ExportFrequencyStoreList(bool csv, const QString& fileName, const FrequencyStoreList& list,
                                            FrequencyStoreListHelper::ListType type) {
    FrequencyStoreListWriter writer(fileName, csv, type);
    writer.Begin(list.GetUsage());
    for (const FrequencyStoreEntry& entry : list.GetFrequencyStoreEntry())
        writer.Append(entry);
    writer.Commit();
    return true;
}

bool FileHandling::ExportFrequencyStoreList(bool csv, const QString& fileName,
                                            const DetectionResultList& list) {
    REPORTGENERATOR::OutputFile file(fileName);
    RecordListWriter writer(file.Device(), fileName, csv ? &CsvLayout::OfDetectionResults() : nullptr);
    writer.Begin(list);
    for (const DetectionResult& result : list.GetDetectionResult())
        writer.Append(result);
    writer.End(list);
    file.Commit();
    return true;
}

bool FileHandling::ImportXml(const QString& fileName, FrequencyStoreList& list) {
    ImportFrequencyStoreList(false, fileName, list);
    return true;
}

bool FileHandling::ImportCSV(const QString& fileName, FrequencyStoreList& list,
                             FrequencyStoreListHelper::ListType type) {
    ImportFrequencyStoreList(true, fileName, list, type);
    return true;
}

} // namespace FreqStoreXml
