#include "controls/frequencystore/detections/searchmcrecords.h"

#include "host/base/longwork.h"
#include "host/base/numbers.h"
#include "host/base/problems.h"
#include "host/freqstorexml/liststreams.h"
#include "host/report/readsafely.h"

#include <charconv>
#include <cmath>

using FreqStoreXml::DetectionResult;
using FreqStoreXml::DetectionResultList;
using FreqStoreXml::FrequencyStoreEntry;
using FreqStoreXml::FrequencyStoreList;

namespace SearchMC {
namespace {

constexpr char TraceSource[] = "searchmcrecords";
const QString TypeText{QLatin1Char(DetectionConventionalAdapter::Type)};
constexpr qint64 MicrosecondsPerSecond = 1000000;
/// The bearings of an HF search are not for its files: these stand in their place.
constexpr double HFAzimuth = 2222.0;
constexpr double HFQuality = 4444.0;
constexpr double HFLongitude = 1000.0;
constexpr double HFLatitude = 2000.0;
/// Positions from here on are none.
constexpr double PositionLimit = 1000.0;

/// A time in microseconds, cut to whole seconds.
qint64 wholeSeconds(double microseconds) {
    return ClampedFromDouble<qint64>(microseconds) / MicrosecondsPerSecond * MicrosecondsPerSecond;
}

QString text(const std::string& utf8) {
    return QString::fromStdString(utf8);
}

/// Sets begin and end of anything that has them.
template <typename Times>
void setTimes(Times& times, const DetectionConventional& record) {
    times.SetStartTimeUsec(wholeSeconds(record.GetStartTime()));
    if (!record.GetActive())
        times.SetStopTimeUsec(wholeSeconds(record.GetStopTime()));
}

template <typename Times>
void takeTimes(const Times& times, DetectionConventional& record) {
    record.SetStartTime(static_cast<double>(times.GetStartTimeUsec()));
    record.SetStopTime(static_cast<double>(times.GetStopTimeUsec()));
    record.SetActive(!times.HasStopTime());
}

void tell(TracePlace place, const QString& file, const QString& reason) {
    Problems::Report(place, {file, 0, reason});
}

unsigned idOf(const QString& id, const QString& file) {
    bool isNumber = false;
    const unsigned number = id.toUInt(&isNumber);
    if (!isNumber && !id.isEmpty())
        tell(TraceSource, file,
             QStringLiteral("the ID \"") + id.left(80) + QStringLiteral("\" is no number"));
    return number;
}

short levelOf(double level, const QString& file) {
    const auto whole = ClampedFromDouble<short>(std::round(level));
    if (std::abs(level - whole) > 1)
        tell(TraceSource, file,
             QStringLiteral("the level ") + Quor::ToShortest(level) + QStringLiteral(" is cut to ") +
                 QString::number(whole));
    return whole;
}

void setDirection(DetectionResult& result, const ExtendedDetectionConventional& record, Variant variant) {
    if (IsDFCode(record.GetAzimuth()))
        return;
    const bool isHF = variant == Variant::HF;
    if (record.GetAzimuth() != DFNoValue)
        result.SetAzimuth(isHF ? HFAzimuth : DFNumber(record.GetAzimuth()));
    if (record.GetDFQuality() != DFNoValue)
        result.SetDFQuality(isHF ? HFQuality : DFNumber(record.GetDFQuality()));
    if (record.GetDFLongitude() == DFNoValue || record.GetDFLatitude() == DFNoValue)
        return;
    const double longitude = isHF ? HFLongitude : DFNumber(record.GetDFLongitude());
    const double latitude = isHF ? HFLatitude : DFNumber(record.GetDFLatitude());
    if (isHF || (longitude < PositionLimit && latitude < PositionLimit)) {
        result.SetLongitude(longitude);
        result.SetLatitude(latitude);
    }
}

std::string dfText(bool isSet, double number) {
    return isSet ? Quor::ToShortest(number).toStdString() : std::string(DFNoValue);
}

/// The head of a saved list; an exported one has no more than its usage.
DetectionResultList resultListHead(bool csv) {
    DetectionResultList head;
    head.SetUsage(FrequencyStoreList::SearchResults);
    if (!csv) {
        head.SetComment(QStringLiteral("Emission Result List"));
        head.SetID(QStringLiteral("None"));
        head.SetType(TypeText);
    }
    return head;
}

bool isCsv(const QString& file) {
    return file.contains(QLatin1String(".csv"));
}

} // namespace

bool IsDFCode(const std::string& code) {
    return code == DFSearching || code == DFInvalid || code == DFTimeout;
}

double DFNumber(const std::string& text) {
    double number = 0;
    const char* end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, number);
    if (read.ec == std::errc() && read.ptr == end &&
        std::isfinite(number)) // the quick way for what is nothing but a number
        return number;
    return QString::fromStdString(text).toDouble();
}

FrequencyStoreEntry ToEntry(const DetectionConventional& record) {
    FrequencyStoreEntry entry;
    entry.SetType(TypeText);
    entry.SetID(QString::number(record.GetID()));
    entry.GetFFM_Settings().GetFrequency().SetValue(record.GetFrequency());
    entry.GetFFM_Settings().GetIFBandwidth().SetValue(record.GetBandwidth());
    entry.GetFFM_Settings().SetLevel(record.GetLevel());
    setTimes(entry.GetDetection(), record);
    return entry;
}

DetectionConventional FromEntry(const FrequencyStoreEntry& entry, const QString& file) {
    DetectionConventional record;
    record.SetID(idOf(entry.GetID(), file));
    record.SetFrequency(entry.GetFFM_Settings().GetFrequency().GetValue());
    record.SetBandwidth(entry.GetFFM_Settings().GetIFBandwidth().GetValue());
    record.SetLevel(levelOf(entry.GetFFM_Settings().GetLevel(), file));
    takeTimes(entry.GetDetection(), record);
    return record;
}

DetectionResult ToResult(const ExtendedDetectionConventional& record, Variant variant) {
    DetectionResult result;
    result.SetType(TypeText);
    result.SetID(QString::number(record.GetID()));
    const bool hasFrequency = record.GetClassifierFrequency() > 0;
    result.GetFrequency().SetValue(hasFrequency ? record.GetClassifierFrequency() : record.GetFrequency());
    const bool hasBandwidth = record.GetClassifierBandwidth() > 0;
    result.GetBandwidth().SetValue(hasBandwidth ? record.GetClassifierBandwidth() : record.GetBandwidth());
    result.SetLevel(record.GetLevel());
    setTimes(result, record);
    if (record.GetClassifierConfidence() > 0)
        result.SetConfidence(record.GetClassifierConfidence());
    result.SetModulation(text(record.GetClassifierDemodulator()));
    result.SetTransmissionSystem(text(record.GetClassifierTransmissionType()));
    if (record.GetClassifierShift() > 0)
        result.GetShift().SetValue(record.GetClassifierShift());
    result.SetDecoder(text(record.GetClassifierDecoder()));
    setDirection(result, record, variant);
    if (record.GetClassifierBaudrate() > 0)
        result.GetBaudrate().SetValue(record.GetClassifierBaudrate());
    return result;
}

ExtendedDetectionConventional FromResult(const DetectionResult& result, const QString& file) {
    ExtendedDetectionConventional record;
    record.SetID(idOf(result.GetID(), file));
    record.SetFrequency(result.GetFrequency().GetValue());
    record.SetBandwidth(result.GetBandwidth().GetValue());
    record.SetLevel(levelOf(result.GetLevel(), file));
    takeTimes(result, record);
    ClassifierResult& classified = record.Result();
    classified.confidence = ClampedFromDouble<short>(result.GetConfidence());
    classified.demodulator = result.GetModulation().toStdString();
    classified.transmissionType = result.GetTransmissionSystem().toStdString();
    classified.shift = result.GetShift().GetValue();
    classified.decoder = result.GetDecoder().toStdString();
    classified.baudrate = result.GetBaudrate().GetValue();
    classified.azimuth = dfText(result.HasAzimuth(), result.GetAzimuth());
    classified.dfQuality = dfText(result.HasDFQuality(), result.GetDFQuality());
    classified.dfLongitude = dfText(result.HasLongitude(), result.GetLongitude());
    classified.dfLatitude = dfText(result.HasLatitude(), result.GetLatitude());
    return record;
}

void WriteFile(const QString& file, bool csv, const std::vector<const DetectionConventional*>& records) {
    using Helper = FreqStoreXml::FrequencyStoreListHelper;
    FreqStoreXml::FrequencyStoreListWriter writer(file, csv, csv ? Helper::Detections : Helper::XmlList);
    writer.Begin(FrequencyStoreList::SearchResults);
    qint64 written = 0;
    for (const DetectionConventional* record : records) {
        LongWork::Step(written++, static_cast<qint64>(records.size()));
        writer.Append(ToEntry(*record));
    }
    writer.Commit();
}

void WriteFile(const QString& file, bool csv,
               const std::vector<const ExtendedDetectionConventional*>& records, Variant variant) {
    WriteResults(file, csv, records, [variant](DetectionResultList& list, const auto& record) {
        list.AppendDetectionResult(ToResult(record, variant));
    });
}

void WriteResults(const QString& file, bool csv,
                  const std::vector<const ExtendedDetectionConventional*>& records,
                  const AppendResult& append) {
    FreqStoreXml::DetectionResultListWriter writer(file, csv);
    writer.Begin(resultListHead(csv));
    DetectionResultList list;
    qint64 written = 0;
    for (const ExtendedDetectionConventional* record : records) {
        LongWork::Step(written++, static_cast<qint64>(records.size()));
        append(list, *record);
        for (const DetectionResult& result : std::as_const(list).GetDetectionResult())
            writer.Append(result);
        list.GetDetectionResult().clear();
    }
    writer.Commit();
}

void ReadFile(const QString& file, std::list<DetectionConventional>& records) {
    std::list<DetectionConventional> read;
    const FreqStoreXml::EntryCallback take = [&](const FrequencyStoreEntry& entry) {
        read.push_back(FromEntry(entry, file));
    };
    REPORTGENERATOR::ReadInto(read, file, [&] {
        LongWork::Elsewhere([&] {
            if (isCsv(file))
                FreqStoreXml::ReadCsv(file, FreqStoreXml::FrequencyStoreListHelper::Detections, take);
            else
                FreqStoreXml::ReadXml(file, take);
        });
    });
    records.swap(read);
}

void ReadFile(const QString& file, std::list<ExtendedDetectionConventional>& records) {
    std::list<ExtendedDetectionConventional> read;
    REPORTGENERATOR::ReadInto(read, file, [&] {
        LongWork::Elsewhere([&] {
            FreqStoreXml::ReadDetectionResults(file, isCsv(file), [&](const DetectionResult& result) {
                read.push_back(FromResult(result, file));
            });
        });
    });
    records.swap(read);
}

} // namespace SearchMC
