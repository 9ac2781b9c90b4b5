#pragma once

#include "host/freqstorexml/detectionresultlist.h"
#include "host/freqstorexml/frequencystorelist.h"
#include "host/valuetree/detection.h"

#include <QString>

#include <functional>
#include <list>
#include <vector>

/// Detections as they stand in files, and back. Plain ones are entries of a frequency-store list, extended
/// ones results of a detection result list. Files carry whole seconds, and no stop time while a detection is
/// active.
namespace SearchMC {

/// The receiver whose classifier made the extended results; it decides what their files hold.
enum class Variant { HF, VUHF };

/// Result codes that stand in azimuth and DF-quality texts instead of a number.
inline constexpr char DFSearching[] = "1000";
inline constexpr char DFInvalid[] = "1001";
inline constexpr char DFTimeout[] = "1002";
/// No value; also in the position texts.
inline constexpr char DFNoValue[] = "-1000";

/// Whether a text is one of the three codes that tell why there is no DF result.
bool IsDFCode(const std::string& text);
/// The number of a DF text; a text with several values counts as 0.
double DFNumber(const std::string& text);

FreqStoreXml::FrequencyStoreEntry ToEntry(const DetectionConventional& record);
FreqStoreXml::DetectionResult ToResult(const ExtendedDetectionConventional& record, Variant variant);
/// Take a file's record; members that the file does not have become "no value". An ID that is no number and
/// becomes 0, and a level that is cut, are told as problems of `file`.
DetectionConventional FromEntry(const FreqStoreXml::FrequencyStoreEntry& entry, const QString& file);
ExtendedDetectionConventional FromResult(const FreqStoreXml::DetectionResult& result, const QString& file);

/// Write a list as XML or, with `csv`, as CSV, record by record. Throw RGException; the old file stands then.
void WriteFile(const QString& file, bool csv, const std::vector<const DetectionConventional*>& records);
void WriteFile(const QString& file, bool csv,
               const std::vector<const ExtendedDetectionConventional*>& records, Variant variant);

/// Appends the results of a record to a list.
using AppendResult =
    std::function<void(FreqStoreXml::DetectionResultList&, const ExtendedDetectionConventional&)>;
/// The same for a caller that makes the results itself; they are written as they come.
void WriteResults(const QString& file, bool csv,
                  const std::vector<const ExtendedDetectionConventional*>& records,
                  const AppendResult& append);

/// Read a file, by its name as XML or CSV. Throw RGException "file:line: reason"; `records` is then as it
/// was.
void ReadFile(const QString& file, std::list<DetectionConventional>& records);
void ReadFile(const QString& file, std::list<ExtendedDetectionConventional>& records);

} // namespace SearchMC
