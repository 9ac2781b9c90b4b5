#include "controls/frequencystore/files/filerecords.h"

#include "controls/frequencystore/files/filekind.h"
#include "controls/frequencystore/files/generallistparser.h"
#include "controls/frequencystore/files/linefields.h"
#include "controls/frequencystore/memory/jobfile.h"
#include "controls/frequencystore/memory/memoryscansection.h"
#include "host/base/fileproblems.h"
#include "host/base/problems.h"
#include "host/freqstorexml/filehandling.h"
#include "host/freqstorexml/liststreams.h"
#include "host/report/readsafely.h"

#include <QScopeGuard>

#include <algorithm>
#include <cmath>

using FreqStoreXml::FrequencyStoreEntry;

namespace {

constexpr char TraceSource[] = "filerecords";

struct LineKind {
    OwnFile kind;
    const LineLayout& layout;
};
constexpr LineKind LineKinds[] = {
    {OwnFile::SflLines, SflLayout}, {OwnFile::LtlLines, LtlLayout}, {OwnFile::NoiLines, NoiLayout}};

} // namespace

/// Takes entries from all readers.
class FileRecords::Collector final : public GeneralListParser {
public:
    explicit Collector(std::vector<Record>& records) : m_records(records) {}

    using GeneralListParser::FillInEntry;
    using GeneralListParser::ReadLines;

    void Prepare4NewFile() override {}
    void ResetDataAfterNewFile() override {}
    void FillInData(double frequency, double bandwidth, QString comment, QString demodulation, int priority,
                    QString threatClass, QString profileID, QString profileName, QString signalClass,
                    QString transmissionSystem) override {
        Add(frequency, bandwidth, comment, demodulation, priority, threatClass, profileID, profileName,
            signalClass, transmissionSystem);
    }
    template <typename... Contents>
    void Add(double frequency, const Contents&... contents) {
        m_records.push_back({std::isfinite(frequency) ? frequency : 0, qHashMulti(0, contents...)});
    }

private:
    std::vector<Record>& m_records;
};

FileRecords::FileRecords(const QString& path) {
    const Problems::Sink before = Problems::SetSink({});
    const auto giveBack = qScopeGuard([&] { Problems::SetSink(before); });
    m_isWhole = REPORTGENERATOR::ReadSafely(
        TraceSource, path, [&] { return read(path); },
        [&] {
            m_records = {};
            return REPORTGENERATOR::DroppedEntries{};
        });
    std::ranges::sort(m_records);
}

bool FileRecords::read(const QString& path) {
    if (IsNamedAs(OwnFile::Job, path))
        return readJob(path);
    Collector collector(m_records);
    for (const LineKind& kind : LineKinds)
        if (IsNamedAs(kind.kind, path))
            return collector.ReadLines(path, kind.layout);
    const auto take = [&](const FrequencyStoreEntry& entry) {
        const FreqStoreXml::FFM_Settings& settings = entry.GetFFM_Settings();
        collector.Add(settings.GetFrequency().GetValue(), settings.GetIFBandwidth().GetValue(),
                      entry.GetComment(), entry.GetType(), settings.GetLevel(),
                      FreqStoreXml::FFM_Settings::AnalogDemodToName(settings.GetAnalogDemod()),
                      entry.GetProfile_Data().GetPriority(), entry.GetProfile_Data().GetThreatClass());
    };
    if (IsNamedAs(OwnFile::Xml, path) && !FreqStoreXml::FileHandling().IsValidFormat(path))
        return collector.ParseProfileTable(path);
    if (IsNamedAs(OwnFile::Xml, path))
        FreqStoreXml::ReadXml(path, take);
    else
        FreqStoreXml::ReadCsv(path, FreqStoreXml::FrequencyStoreListHelper::XmlList, take);
    return true;
}

bool FileRecords::readJob(const QString& path) {
    const std::optional<QString> job = ReadJobText(path);
    FileProblems problems(path, TraceSource);
    JobChannels read;
    const bool isVUHF = job && job->contains(QLatin1String("<MEMORYSCAN_SEQ_AFC"));
    if (!job || !ReadScanChannels(*job, isVUHF, problems, read))
        return false;
    Collector collector(m_records);
    for (const ReadChannel& channel : read.channels)
        collector.Add(channel.frequency, channel.name, channel.threshold, channel.demodulation,
                      channel.bandwidth, channel.outputIFPath, channel.shift, channel.bfoFrequency,
                      channel.afc, channel.useSquelch, channel.useAttenuation, channel.attenuation,
                      channel.antennaID);
    return true;
}

FileDifference FileRecords::Since(const FileRecords& older) const {
    FileDifference difference;
    auto mine = m_records.begin();
    auto theirs = older.m_records.begin();
    while (mine != m_records.end() || theirs != older.m_records.end()) {
        const bool isTheirsFirst = mine == m_records.end() ||
                                   (theirs != older.m_records.end() && theirs->frequency < mine->frequency);
        const double frequency = isTheirsFirst ? theirs->frequency : mine->frequency;
        // Of one frequency those that are not equal are the same entries, as far as there are enough.
        qint64 added = 0;
        qint64 removed = 0;
        const auto isHere = [&](auto place, const std::vector<Record>& all) {
            return place != all.end() && place->frequency == frequency;
        };
        while (isHere(mine, m_records) || isHere(theirs, older.m_records)) {
            const bool isMine = isHere(mine, m_records);
            const bool isTheirs = isHere(theirs, older.m_records);
            const bool isEqual = isMine && isTheirs && *mine == *theirs;
            const bool takesMine = isEqual || !isTheirs || (isMine && *mine < *theirs);
            const bool takesTheirs = isEqual || !takesMine;
            added += takesMine && !isEqual ? 1 : 0;
            removed += takesTheirs && !isEqual ? 1 : 0;
            mine += takesMine ? 1 : 0;
            theirs += takesTheirs ? 1 : 0;
        }
        const qint64 changed = std::min(added, removed);
        difference.added += added - changed;
        difference.removed += removed - changed;
        difference.changed += changed;
    }
    return difference;
}
