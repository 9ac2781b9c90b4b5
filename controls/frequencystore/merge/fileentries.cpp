#include "controls/frequencystore/merge/fileentries.h"

#include "controls/frequencystore/files/filekind.h"
#include "controls/frequencystore/files/generallistparser.h"
#include "controls/frequencystore/files/linefields.h"
#include "controls/frequencystore/memory/jobfile.h"
#include "controls/frequencystore/memory/memoryscansection.h"
#include "host/base/fileproblems.h"
#include "host/freqstorexml/filehandling.h"
#include "host/report/filework.h"
#include "host/report/readsafely.h"

namespace {

using FreqStoreXml::FFM_Settings;
using FreqStoreXml::FrequencyStoreEntry;
using FreqStoreXml::FrequencyStoreListHelper;
using Entries = QVector<FrequencyStoreEntry>;

constexpr char TraceSource[] = "fileentries";

void fillBasics(FrequencyStoreEntry& entry, double frequency, double bandwidth, const QString& comment,
                const QString& demodulation) {
    FFM_Settings& settings = entry.GetFFM_Settings();
    settings.GetFrequency().SetValue(frequency);
    settings.GetIFBandwidth().SetValue(bandwidth);
    settings.SetAnalogDemod(FFM_Settings::NameToAnalogDemod(demodulation));
    entry.SetComment(comment);
}

/// Keeps the records of a file as entries.
class EntryCollector final : public GeneralListParser {
public:
    explicit EntryCollector(Entries& entries) : m_entries(entries) {}

    bool Lines(const QString& path, const LineLayout& layout) {
        m_hasPriority = layout.priority >= 0;
        return ReadLines(path, layout);
    }
    void Prepare4NewFile() override {}
    void ResetDataAfterNewFile() override {}
    void FillInData(double frequency, double bandwidth, QString comment, QString demodulation, int priority,
                    QString threatClass, QString profileID, QString profileName, QString signalClass,
                    QString transmissionSystem) override {
        FrequencyStoreEntry& entry = m_entries.emplaceBack();
        fillBasics(entry, frequency, bandwidth, comment, demodulation);
        FreqStoreXml::Profile_Data& profile = entry.GetProfile_Data();
        if (m_hasPriority) {
            profile.SetPriority(QString::number(priority));
            profile.SetThreatClass(threatClass);
        }
        profile.SetProfileID(profileID);
        profile.SetProfileName(profileName);
        profile.SetSignalClass(signalClass);
        profile.SetTransmissionSystem(transmissionSystem);
    }

private:
    Entries& m_entries;
    bool m_hasPriority = true; ///< else the reader makes up the same one for all
};

template <const LineLayout& Layout>
bool readLines(const QString& path, MediatorType, Entries& entries) {
    return EntryCollector(entries).Lines(path, Layout);
}

bool readList(const QString& path, bool csv, FrequencyStoreListHelper::ListType type, Entries& entries) {
    FreqStoreXml::FrequencyStoreList read;
    FreqStoreXml::FileHandling().ImportFrequencyStoreList(csv, path, read, type);
    entries = std::move(read.GetFrequencyStoreEntry());
    return true;
}

bool readXml(const QString& path, MediatorType, Entries& entries) {
    if (!FreqStoreXml::FileHandling().IsValidFormat(path))
        return EntryCollector(entries).ParseProfileTable(path);
    return readList(path, false, FrequencyStoreListHelper::XmlList, entries);
}

bool readCsv(const QString& path, MediatorType list, Entries& entries) {
    const auto type = list == MediatorType::NoiFrequencies ? FrequencyStoreListHelper::NoiFrequencies
                                                           : FrequencyStoreListHelper::Targets;
    return readList(path, true, type, entries);
}

/// A range of channels gives an entry for each of its frequencies.
bool readJob(const QString& path, MediatorType list, Entries& entries) {
    const std::optional<QString> job = ReadJobText(path);
    FileProblems problems(path, TraceSource);
    JobChannels read;
    if (!job || !ReadScanChannels(*job, list == MediatorType::MemoryVUHF, problems, read))
        return false;
    for (const ReadChannel& channel : read.channels) {
        FrequencyStoreEntry& entry = entries.emplaceBack();
        fillBasics(entry, channel.frequency, channel.bandwidth, channel.name, channel.demodulation);
        entry.GetFFM_Settings().SetLevel(static_cast<double>(channel.threshold));
        if (list == MediatorType::MemoryHF)
            entry.GetFFM_Settings().GetDetail().SetBFOFrequency(static_cast<double>(channel.bfoFrequency));
    }
    return true;
}

/// The kinds of files by the marks in their names; the first that a name has counts.
struct Kind {
    OwnFile kind;
    bool (*read)(const QString& path, MediatorType list, Entries& entries);
};
constexpr Kind Kinds[] = {
    {OwnFile::Job, readJob},
    {OwnFile::SflLines, readLines<SflLayout>},
    {OwnFile::LtlLines, readLines<LtlLayout>},
    {OwnFile::NoiLines, readLines<NoiLayout>},
    {OwnFile::Xml, readXml},
    {OwnFile::Csv, readCsv},
};

bool readByName(const QString& path, MediatorType list, Entries& entries) {
    for (const Kind& kind : Kinds) {
        if (IsNamedAs(kind.kind, path))
            return kind.read(path, list, entries);
    }
    Problems::Report(TraceSource, {path, 0, QStringLiteral("is of no known kind of file")});
    return false;
}

} // namespace

std::optional<Entries> ReadFileEntries(const QString& path, MediatorType list) {
    Entries entries;
    const auto drop = [&] {
        entries = Entries();
        return REPORTGENERATOR::DroppedEntries();
    };
    const bool isRead = REPORTGENERATOR::ReadAsWork(path, [&] {
        return REPORTGENERATOR::ReadSafely(
            TraceSource, path, [&] { return readByName(path, list, entries); }, drop);
    });
    return isRead ? std::optional(std::move(entries)) : std::nullopt;
}
