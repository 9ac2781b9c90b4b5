#include "host/base/fileproblems.h"
#include "host/base/textdecoder.h"
#include "host/report/byteinput.h"
#include "host/report/outputfile.h"
#include "interchange/format.h"
#include "interchange/formatlist.h"
#include "interchange/reading.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QFile>

#include <algorithm>
#include <iterator>

namespace Interchange {

namespace {

// The order matters: a file is the first format that knows it.
constexpr const Format* All[] = {&ChirpCsv,    &GqrxBookmarks,  &GqrxBandPlan,      &KiwiCsv,  &EibiSchedule,
                                 &ScannerCsv,  &AnnotationsCsv, &FldigiFrequencies, &KiwiJson, &SdrPlusJson,
                                 &SdrSharpXml, &OwnJson,        &OwnJsonLines,      &GeoJson,  &Kml};

template <typename Matches>
const Format* find(Matches matches) {
    const auto* const found =
        std::find_if(std::begin(All), std::end(All), [&](const Format* format) { return matches(*format); });
    return found == std::end(All) ? nullptr : *found;
}

constexpr std::size_t FlushAt = 1 << 16;

/// Counts what no foreign format has a place for.
void countRest(const FreqStoreXml::FrequencyStoreEntry& entry, Account& lost) {
    const auto says = [](const QString& text) {
        constexpr QLatin1String Nothing[] = {QLatin1String(""), QLatin1String("undefined"),
                                             QLatin1String("Not defined"), QLatin1String("not classified")};
        return std::ranges::find(Nothing, text) == std::end(Nothing);
    };
    const FreqStoreXml::FFM_Settings& settings = entry.GetFFM_Settings();
    const FreqStoreXml::Profile_Data& profile = entry.GetProfile_Data();
    constexpr int MostUrgent = 1;
    constexpr int LeastUrgent = 10;
    const int priority = profile.GetPriority().toInt();
    const std::pair<bool, const char*> rest[] = {
        {settings.GetLevel() != 0, QT_TRANSLATE_NOOP("Account", "levels")},
        {settings.GetDetail().GetBFOFrequency() != 0, QT_TRANSLATE_NOOP("Account", "BFO frequencies")},
        {priority >= MostUrgent && priority <= LeastUrgent, QT_TRANSLATE_NOOP("Account", "priorities")},
        {says(profile.GetThreatClass()), QT_TRANSLATE_NOOP("Account", "threat classes")},
        {says(profile.GetProfileID()) || says(profile.GetProfileName()) || says(profile.GetSignalClass()) ||
             says(profile.GetTransmissionSystem()),
         QT_TRANSLATE_NOOP("Account", "profiles")},
        {entry.GetDetection().HasStartTime(), QT_TRANSLATE_NOOP("Account", "times on air")},
        {!entry.GetResultList().GetReason().isEmpty(), QT_TRANSLATE_NOOP("Account", "results")},
    };
    for (const auto& [isThere, what] : rest) {
        if (isThere)
            lost.Count(what);
    }
}

double hertzOf(const FreqStoreXml::FrequencyStoreEntry& entry) {
    return entry.GetFFM_Settings().GetFrequency().GetValue();
}

double hertzOf(const FreqStoreXml::DetectionResult& result) {
    return result.GetFrequency().GetValue();
}

void countRest(const FreqStoreXml::DetectionResult&, Account& lost) {
    lost.Count(QT_TRANSLATE_NOOP("Account", "classifications, levels and times"));
}

/// Encodes all that there is; `pass` may take the bytes away after each entry. Gives those that stay.
template <typename Pass>
std::string encode(const Format& format, const Content& content, Account& lost, Pass pass) {
    const std::unique_ptr<Encoder> encoder = format.makeEncoder();
    std::string bytes;
    const auto append = [&](const auto& entry) {
        if (!encoder->HoldsRecords()) {
            // Readers refuse other frequencies, and most formats round to whole Hz.
            if (const double hertz = hertzOf(entry); hertz < 1 || !FileProblems::IsFrequency(hertz)) {
                ++lost.refused;
                lost.Count(QT_TRANSLATE_NOOP("Account", "entries without a frequency of 1 Hz to 1 THz"));
                return;
            }
            countRest(entry, lost);
        }
        encoder->Append(bytes, entry, lost);
        pass(bytes);
    };
    for (const auto& [what, count] : content.lost)
        lost.Count(what, count);
    encoder->Begin(bytes);
    if (content.entries)
        content.entries(append);
    if (content.results)
        content.results(append);
    encoder->End(bytes);
    return bytes;
}

} // namespace

std::span<const Format* const> Formats() {
    return All;
}

QString Format::Name() const {
    return QCoreApplication::translate("Format", name);
}

const Format* FormatOfId(const QString& id) {
    return find([&](const Format& format) { return id == QLatin1String(format.id); });
}

const Format* FormatOfFile(const QString& path) {
    QFile file(path);
    try {
        REPORTGENERATOR::OpenForReading(file);
    } catch (const RGException&) {
        return nullptr; // whoever reads the file tells why
    }
    constexpr qint64 HeadBytes = 64 * 1024;
    QByteArray head = file.read(HeadBytes);
    QBuffer device(&head);
    device.open(QIODevice::ReadOnly);
    const TextForm form = LookAtText(device);
    return form.refusal.isEmpty() ? FormatOfText(form.head) : nullptr;
}

const Format* FormatOfText(const QString& head) {
    return find([&](const Format& format) { return format.knows(head); });
}

Account Read(const Format& format, const QString& path, const ReadOptions& options, const TakeEntry& take) {
    Account account;
    REPORTGENERATOR::ReadWhole(path, [&](QFile& file) { account = Read(format, file, path, options, take); });
    return account;
}

Account Read(const Format& format, QIODevice& device, const QString& name, const ReadOptions& options,
             const TakeEntry& take) {
    Reading reading(name, options, take);
    if (!format.read)
        reading.Fail(
            0, QCoreApplication::translate("Readers", "files of %1 are only written").arg(format.Name()));
    format.read(device, reading);
    return reading.GetAccount();
}

void Encoder::Append(std::string& out, const FreqStoreXml::DetectionResult& result, Account& lost) {
    FreqStoreXml::FrequencyStoreEntry entry;
    FreqStoreXml::FFM_Settings& settings = entry.GetFFM_Settings();
    settings.GetFrequency().SetValue(result.GetFrequency().GetValue());
    settings.GetIFBandwidth().SetValue(result.GetBandwidth().GetValue());
    settings.SetAnalogDemod(FreqStoreXml::FFM_Settings::NameToAnalogDemod(result.GetModulation()));
    Append(out, entry, lost);
}

std::optional<Account> Write(const Format& format, const QString& path, const Content& content,
                             const std::function<bool(const Account&)>& confirm) {
    Account lost;
    REPORTGENERATOR::OutputFile file(path);
    const std::string rest = encode(format, content, lost, [&](std::string& bytes) {
        if (bytes.size() < FlushAt)
            return;
        REPORTGENERATOR::WriteBytes(file.Device(), path, bytes);
        bytes.clear();
    });
    REPORTGENERATOR::WriteBytes(file.Device(), path, rest);
    if (confirm && !confirm(lost))
        return std::nullopt;
    file.Commit();
    return lost;
}

std::string ToBytes(const Format& format, const Content& content, Account* lost) {
    Account own;
    return encode(format, content, lost ? *lost : own, [](std::string&) {});
}

} // namespace Interchange
