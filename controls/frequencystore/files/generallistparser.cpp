#include "controls/frequencystore/files/generallistparser.h"

#include "controls/frequencystore/files/linefields.h"
#include "host/base/fixedplace.h"
#include "host/freqstorexml/stagedentries.h"
#include "host/report/filestamps.h"

namespace {

constexpr char TraceSource[] = "listviewshandler";

} // namespace

bool GeneralListParser::ReadLines(const QString& path, const LineLayout& layout, bool* sound) {
    FileStamps::Reading reading(path);
    QFile file(path);
    if (const QString refusal = RefuseToOpen(file); !refusal.isEmpty())
        return TellRefusal(FixedPlace::CannotOpenList, {path, 0, refusal});
    LineReader reader(file, path);
    if (const std::optional<Problem> refusal = reader.RefuseContent()) {
        Problems::Report(TraceSource, *refusal);
        return false;
    }
    Prepare4NewFile();
    LineFields fields(reader, layout);
    QStringView line;
    while (reader.Next(line)) {
        if (line.size() < 2)
            continue;
        fields.Take();
        reader.CheckFrequency(fields.frequency);
        FillInLine(fields);
    }
    const bool isUnchanged = reading.Finish();
    if (sound)
        *sound = isUnchanged && reader.IsSound();
    ResetDataAfterNewFile();
    return true;
}

bool GeneralListParser::TakeEntries(const QString& path,
                                    const std::function<void(const FreqStoreXml::EntryCallback&)>& read) {
    FreqStoreXml::StagedEntries entries;
    try {
        entries.Read(path, read);
    } catch (const RGException& exception) {
        Problems::Report(TraceSource, Problem::FromText(exception.GetErrorText()));
        return false;
    }
    Prepare4NewFile();
    entries.Drain([this](const FreqStoreXml::FrequencyStoreEntry& entry) { FillInEntry(entry); });
    ResetDataAfterNewFile();
    return true;
}

void GeneralListParser::FillInLine(const LineFields& line) {
    FillInData(line.frequency, line.bandwidth, line.comment, line.demodulation, line.priority,
               line.threatClass, QString(), QString(), QString(), QString());
}

void GeneralListParser::FillInEntry(const FreqStoreXml::FrequencyStoreEntry& entry) {
    const auto orUndefined = [](const QString& text) {
        return text.isEmpty() ? QStringLiteral("undefined") : text;
    };
    const FreqStoreXml::FFM_Settings& settings = entry.GetFFM_Settings();
    const FreqStoreXml::Profile_Data& profile = entry.GetProfile_Data();
    FillInData(settings.GetFrequency().GetValue(), settings.GetIFBandwidth().GetValue(), entry.GetComment(),
               FreqStoreXml::FFM_Settings::AnalogDemodToName(settings.GetAnalogDemod()),
               profile.GetPriority().toInt(), profile.GetThreatClass(), orUndefined(profile.GetProfileID()),
               orUndefined(profile.GetProfileName()), orUndefined(profile.GetSignalClass()),
               orUndefined(profile.GetTransmissionSystem()));
}
