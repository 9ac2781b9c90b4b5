#include "host/freqstorexml/filehandling.h"

#include "host/base/longwork.h"
#include "host/freqstorexml/csvreader.h"
#include "host/freqstorexml/liststreams.h"
#include "host/report/byteinput.h"
#include "host/report/readsafely.h"
#include "host/report/recordreader.h"

#include <QFile>

#include <utility>

namespace FreqStoreXml {

bool FileHandling::IsValidFormat(const QString& fileName) const {
    FrequencyStoreList head;
    return REPORTGENERATOR::HasRoot(fileName, head);
}

bool FileHandling::IsDetectionResults(const QString& fileName) const {
    DetectionResultList head;
    return REPORTGENERATOR::HasRoot(fileName, head);
}

QString FileHandling::WhyNotReadable(const QString& csvFileName) {
    try {
        QFile file(csvFileName);
        REPORTGENERATOR::OpenForReading(file);
        LookAtCsv(file, csvFileName, CsvLayout::Of(FrequencyStoreListHelper::XmlList));
        return QString();
    } catch (const RGException& exception) {
        return exception.GetErrorText();
    }
}

void FileHandling::ImportFrequencyStoreList(bool csv, const QString& fileName, FrequencyStoreList& list,
                                            FrequencyStoreListHelper::ListType type) {
    FrequencyStoreList read;
    auto usage = FrequencyStoreListHelper::UsageOf(type);
    const EntryCallback append = [&](const FrequencyStoreEntry& entry) {
        read.GetFrequencyStoreEntry().append(entry);
    };
    REPORTGENERATOR::ReadInto(read.GetFrequencyStoreEntry(), fileName, [&] {
        LongWork::Elsewhere([&] {
            if (csv)
                ReadCsv(fileName, type, append);
            else
                ReadXml(fileName, append, &usage);
        });
    });
    read.SetUsage(usage);
    list = std::move(read);
}

void FileHandling::ImportDetectionResultList(bool csv, const QString& fileName, DetectionResultList& list) {
    DetectionResultList read;
    const ResultCallback append = [&](const DetectionResult& result) {
        read.GetDetectionResult().append(result);
    };
    REPORTGENERATOR::ReadInto(read.GetDetectionResult(), fileName, [&] {
        LongWork::Elsewhere([&] {
            if (csv)
                ReadDetectionResults(fileName, true, append);
            else
                read.LoadXml(fileName);
        });
    });
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
    DetectionResultListWriter writer(fileName, csv);
    writer.Begin(list);
    for (const DetectionResult& result : list.GetDetectionResult())
        writer.Append(result);
    writer.Commit();
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
