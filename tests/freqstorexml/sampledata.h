#pragma once

#include "host/freqstorexml/detectionresultlist.h"
#include "host/freqstorexml/frequencystorelist.h"
#include "tests/support/testfolder.h"

/// Texts that are hard to carry through a file.
inline const QString AwkwardText =
    QString::fromUtf8(" <a & \"b\", 'c'; ]]> \t\r\n=\u00e4\u20ac\U0001F600\u2028 ");

/// An entry with every member set.
inline FreqStoreXml::FrequencyStoreEntry FullEntry() {
    using namespace FreqStoreXml;
    FrequencyStoreEntry entry;
    entry.SetID(QStringLiteral("17"));
    entry.SetType(QStringLiteral("p"));
    entry.SetComment(QStringLiteral("Harbour"));
    FFM_Settings& settings = entry.GetFFM_Settings();
    settings.GetFrequency().SetValue(7055000.5);
    settings.GetIFBandwidth().SetValue(3100);
    settings.SetAnalogDemod(FFM_Settings::NameToAnalogDemod(QStringLiteral("USB")));
    settings.SetLevel(-12.25);
    settings.GetDetail().SetBFOFrequency(1500);
    Profile_Data& profile = entry.GetProfile_Data();
    profile.SetSignalClass(QStringLiteral("voice"));
    profile.SetProfileID(QStringLiteral("P1"));
    profile.SetTransmissionSystem(QStringLiteral("analogue"));
    profile.SetProfileName(QStringLiteral("Port control"));
    profile.SetPriority(QStringLiteral("1"));
    profile.SetThreatClass(QStringLiteral("not classified"));
    Detection detection;
    detection.SetStartTimeUsec(1'717'156'800'000'001);
    detection.SetStopTime(QDateTime::fromSecsSinceEpoch(1'717'156'860, Qt::UTC));
    entry.SetDetection(detection);
    ResultList result;
    result.SetReason(QStringLiteral("LOCKED"));
    result.SetResultTime(QDateTime::fromSecsSinceEpoch(1'717'156'800, Qt::UTC));
    result.SetConfidence(87);
    entry.SetResultList(result);
    return entry;
}

/// The same with awkward texts wherever there is a text.
inline FreqStoreXml::FrequencyStoreEntry AwkwardEntry() {
    using namespace FreqStoreXml;
    FrequencyStoreEntry entry = FullEntry();
    entry.SetID(AwkwardText);
    entry.SetType(QStringLiteral("<"));
    entry.SetComment(AwkwardText);
    entry.GetFFM_Settings().SetAnalogDemod(FFM_Settings::NameToAnalogDemod(AwkwardText));
    entry.GetProfile_Data().SetThreatClass(AwkwardText);
    return entry;
}

inline FreqStoreXml::DetectionResult FullResult() {
    using namespace FreqStoreXml;
    DetectionResult result;
    result.SetID(QStringLiteral("4"));
    result.SetType(QStringLiteral("a"));
    result.GetFrequency().SetValue(145.5e6);
    result.GetBandwidth().SetValue(12500);
    result.SetLevel(33);
    result.SetStartTimeUsec(1'717'156'800'250'000);
    result.SetStopTimeUsec(1'717'156'801'000'000);
    result.SetConfidence(90);
    result.SetModulation(QStringLiteral("FSK2"));
    result.SetTransmissionSystem(QStringLiteral("Pager, \"fast\""));
    result.GetBaudrate().SetValue(1200);
    result.GetShift().SetValue(850);
    result.SetDecoder(QStringLiteral("pager"));
    result.SetAzimuth(271.5);
    result.SetDFQuality(80);
    result.SetLongitude(-9.75);
    result.SetLatitude(53.125);
    return result;
}

inline FreqStoreXml::DetectionResultList FullResultList() {
    FreqStoreXml::DetectionResultList list;
    list.SetUsage(1);
    list.SetID(QStringLiteral("None"));
    list.SetType(QStringLiteral("a"));
    list.SetComment(QStringLiteral("Emission Result List"));
    list.AppendDetectionResult(FullResult());
    list.AppendDetectionResult(FreqStoreXml::DetectionResult());
    return list;
}

/// A folder of files for one test.
class FileTest : public testing::Test, protected TestFolder {};

/// The error text that `action` throws, or an empty one.
template <class Action>
std::string ErrorOf(Action&& action) {
    try {
        action();
    } catch (const RGException& exception) {
        return exception.GetErrorText().toStdString();
    }
    return {};
}
