#pragma once

#include "host/freqstorexml/detectionresultlist.h"
#include "host/freqstorexml/frequencystorelist.h"
#include "host/freqstorexml/frequencystorelisthelper.h"
#include "host/report/rgexception.h"

#include <QString>

namespace FreqStoreXml {

/// Reads and writes whole lists as XML and CSV files; holds nothing and is made on the stack for each use.
/// For lists that nobody needs in memory as a whole there are the streams of liststreams.h, on which this
/// rests. Every failure is thrown as RGException with a text "file:line: reason", so the results are true. A
/// list that cannot be read whole is left as it was; a file that cannot be written whole is left as it was.
///
/// \code
/// FreqStoreXml::FileHandling files;
/// files.ExportFrequencyStoreList(false, path, list);
/// FreqStoreXml::FrequencyStoreList read;
/// files.ImportFrequencyStoreList(false, path, read);
/// \endcode
class FileHandling {
public:
    /// Whether the file is a frequency-store list in XML, of a version that can be read. Looks at the root
    /// element only, so reading the rest may still fail. Never throws.
    [[nodiscard]] bool IsValidFormat(const QString& fileName) const;
    /// The same for a list of detection results.
    [[nodiscard]] bool IsDetectionResults(const QString& fileName) const;

    /// Why a CSV file cannot be read as a list of frequencies, judged by its heading, rows and frequencies;
    /// empty when it can. Callers that clear their list before they read ask this first, so that a table of
    /// another program does not cost them the list. Never throws.
    [[nodiscard]] static QString WhyNotReadable(const QString& csvFileName);

    /// Replaces the list by the file's content. Entries of a CSV file carry the columns of `type`, and the
    /// list's usage becomes that of `type`; for XML files it is what the file says.
    void
    ImportFrequencyStoreList(bool csv, const QString& fileName, FrequencyStoreList& list,
                             FrequencyStoreListHelper::ListType type = FrequencyStoreListHelper::XmlList);
    /// Replaces the list by the file's content.
    void ImportDetectionResultList(bool csv, const QString& fileName, DetectionResultList& list);

    bool
    ExportFrequencyStoreList(bool csv, const QString& fileName, const FrequencyStoreList& list,
                             FrequencyStoreListHelper::ListType type = FrequencyStoreListHelper::XmlList);
    bool ExportFrequencyStoreList(bool csv, const QString& fileName, const DetectionResultList& list);

    bool ImportXml(const QString& fileName, FrequencyStoreList& list);
    bool ImportCSV(const QString& fileName, FrequencyStoreList& list,
                   FrequencyStoreListHelper::ListType type);
};

} // namespace FreqStoreXml
