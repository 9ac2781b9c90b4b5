#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/files/filegate.h"
#include "controls/frequencystore/files/linefields.h"
#include "controls/frequencystore/memory/jobfile.h"
#include "controls/frequencystore/memory/memorydialogs.h"
#include "controls/frequencystore/memory/memorymediatorhf.h"
#include "controls/frequencystore/memory/memoryscansection.h"
#include "controls/frequencystore/memory/memorysystemhandler.h"
#include "host/base/fileproblems.h"
#include "host/base/longwork.h"
#include "host/base/trace.h"
#include "host/freqlist/listsaving.h"
#include "host/freqstorexml/stagedentries.h"
#include "host/report/filework.h"
#include "host/report/readsafely.h"

#include <QCoreApplication>
#include <QPointer>

#include <cmath>

// The memory handler's files: reading and writing of channels and of the job.

namespace {

constexpr char TraceSource[] = "memorysystemhandling";

long rounded(double number) {
    return ClampedFromDouble<int>(std::round(number));
}

void readSettings(const MemoryMediatorHF& mediator, ScanChannel& channel) {
    mediator.GetOutputIFPath(channel.outputIFPath);
    mediator.GetShift(channel.shift);
    mediator.GetBFOFrequency(channel.bfoFrequency);
}

void readSettings(const MemoryMediatorVUHF& mediator, ScanChannel& channel) {
    mediator.GetAFC(channel.afc);
    mediator.GetUseThreshold(channel.useSquelch);
    mediator.GetUseAttenuation(channel.useAttenuation);
    mediator.GetAttenuation(channel.attenuation);
    mediator.GetAntenna(channel.antennaID);
}

void writeSettings(const ScanChannel& channel, HFMemoryEntry& entry) {
    entry.SetOutputIFPath(channel.outputIFPath);
    entry.SetShift(channel.shift);
    entry.SetBFOFrequency(channel.bfoFrequency);
}

void writeSettings(const ScanChannel& channel, VUHFMemoryEntry& entry) {
    entry.SetAfc(channel.afc);
    entry.SetUseSquelch(channel.useSquelch);
    entry.SetUseAttenuation(channel.useAttenuation);
    entry.SetAttenuation(channel.attenuation);
    entry.SetAntennaID(channel.antennaID);
}

/// A channel as a section says it, but for its number and frequency.
ScanChannel channelOf(MemoryMediator& mediator) {
    ScanChannel channel;
    channel.name = mediator.GetCommentString(0);
    mediator.GetThreshold(channel.threshold);
    mediator.GetDemodulationSelection(channel.demodulation);
    mediator.GetBandwidth(channel.bandwidth, 0);
    if (const auto* hf = dynamic_cast<const MemoryMediatorHF*>(&mediator))
        readSettings(*hf, channel);
    else if (const auto* vuhf = dynamic_cast<const MemoryMediatorVUHF*>(&mediator))
        readSettings(*vuhf, channel);
    return channel;
}

/// A channel's own frequency and, for a range, the others.
std::vector<double> frequenciesOf(MemoryMediator& mediator) {
    std::vector<double> frequencies(1);
    mediator.GetFrequency(frequencies.front(), 0);
    bool inRange = false;
    long number = 0;
    long count = 0;
    if (!mediator.GetInRange(inRange) || !inRange || !mediator.GetRangeNumber(number, count))
        return frequencies;
    for (long k = 0; k < count; ++k)
        mediator.GetFrequencyInRange(k, frequencies.emplace_back());
    return frequencies;
}

/// Fills a new channel from an interchange entry. Settings that the entry does not carry stay those of the
/// template.
template <typename Entry>
void fillFrom(const FreqStoreXml::FrequencyStoreEntry& from, Entry* entry) {
    const FreqStoreXml::FFM_Settings& settings = from.GetFFM_Settings();
    const double frequency = settings.GetFrequency().GetValue();
    if (!entry || frequency == 0.0)
        return;
    entry->SetBasics(frequency, settings.GetIFBandwidth().GetValue(), from.GetComment(),
                     FreqStoreXml::FFM_Settings::AnalogDemodToName(settings.GetAnalogDemod()));
    if (settings.HasLevel())
        entry->SetThreshold(rounded(settings.GetLevel()));
    if constexpr (std::is_same_v<Entry, HFMemoryEntry>) {
        if (settings.GetDetail().AnyData())
            entry->SetBFOFrequency(rounded(settings.GetDetail().GetBFOFrequency()));
    }
}

template <typename Entry>
void fillFrom(const ScanChannel& channel, Entry& entry) {
    entry.SetRangeNumber(channel.range);
    entry.SetBasics(channel.frequency, channel.bandwidth, channel.name, channel.demodulation);
    entry.SetThreshold(channel.threshold);
    writeSettings(channel, entry);
}

/// Tells which numbers of a channel lie outside their limits; they are kept. A range number is no setting of
/// the receiver.
void reportLimits(const Node& node, qint64 line, FileProblems& problems) {
    for (const ValueBase* value = node.FirstValue(); value; value = Node::NextValue(value)) {
        const auto* number = numeric_cast(const_cast<ValueBase*>(value));
        if (!number || value->NameId() == Keys::RangeCounter)
            continue;
        const double content = number->ValueAsDouble();
        if (content < number->MinAsDouble() || content > number->MaxAsDouble())
            problems.Report(line, QCoreApplication::translate("Readers", "%1 %2 is outside %3 to %4")
                                      .arg(value->GetName(), Quor::ToShortest(content),
                                           Quor::ToShortest(number->MinAsDouble()),
                                           Quor::ToShortest(number->MaxAsDouble())));
    }
}

} // namespace

QString MemorySystemHandler::FileOpen() {
    if (m_inScanSurveillance)
        return QString();
    // Whoever ends the application while a dialog is open ends this, too.
    const QPointer<MemorySystemHandler> alive(this);
    const QString path = MemoryDialogs::FileToOpen();
    if (path.isEmpty() || !alive || !FileGate::MayRead(FileGate::List::MemoryChannels, path) || !alive)
        return QString();
    const auto take = [&] {
        const bool read = ReadFile(path);
        FileGate::WasRead(FileGate::List::MemoryChannels, path, read);
        return true;
    };
    return REPORTGENERATOR::ReadAsWork(path, take) ? path : QString();
}

bool MemorySystemHandler::isRefused(const QString& path) const {
    if (m_inScanSurveillance)
        Problems::Report(TraceSource, {path, 0, tr("no file is used while a scan surveillance runs")});
    return m_inScanSurveillance;
}

bool MemorySystemHandler::ReadFile(const QString& path) {
    if (isRefused(path))
        return false;
    const bool isJob = path.endsWith(QLatin1String(".pij"));
    if (!isJob && !path.endsWith(QLatin1String(".xml")) && !path.endsWith(QLatin1String(".sfl"))) {
        Problems::Report(TraceSource, {path, 0, tr("is of no known kind of file")});
        return false;
    }
    quint32 serial = 0;
    if (m_root)
        m_root->ChildrenSince(serial);
    return REPORTGENERATOR::ReadAsWork(path, [&] {
        return REPORTGENERATOR::ReadSafely(
            TraceSource, path, [&] { return isJob ? ParseJobFile(path) : ParseSFLFile(path); },
            [&] { return dropChannelsSince(serial); });
    });
}

/// Takes the channels of a file that does not fit into memory out of the list again.
REPORTGENERATOR::DroppedEntries MemorySystemHandler::dropChannelsSince(quint32 serial) {
    std::vector<Node*> added;
    if (m_root)
        added = m_root->ChildrenSince(serial);
    const auto count = static_cast<qint64>(added.size());
    if (m_root)
        m_root->DeleteNodes(std::exchange(added, {}));
    SuspendMediatorCtrl(false, true);
    try {
        UpdateJobFileEntries();
    } catch (const std::bad_alloc&) {
        m_jobDataPending = true; // with the next change of the list
    }
    return {count};
}

bool MemorySystemHandler::ParseSFLFile(const QString& path) {
    return path.endsWith(QLatin1String(".xml")) ? readEntries(path) : ReadLines(path, SflLayout);
}

/// The file is read whole before the first channel is made: one that is bad half-way changes nothing.
bool MemorySystemHandler::readEntries(const QString& path) {
    QFile file(path);
    if (const QString refusal = RefuseToOpen(file); !refusal.isEmpty())
        return TellRefusal(TraceSource, {path, 0, refusal});
    file.close();
    FreqStoreXml::StagedEntries entries;
    try {
        entries.Read(path, false, FreqStoreXml::FrequencyStoreListHelper::XmlList);
    } catch (const RGException& exception) {
        TraceLazily(TraceSource, [] { return QStringLiteral("EXCEPTION WHILE READING FREQUENCIES:"); });
        Problems::Report(TraceSource, Problem::FromText(exception.GetErrorText()));
        return false;
    }
    Prepare4NewFile();
    entries.Drain([this](const FreqStoreXml::FrequencyStoreEntry& entry) { addEntry(entry); });
    ResetDataAfterNewFile();
    return true;
}

void MemorySystemHandler::addEntry(const FreqStoreXml::FrequencyStoreEntry& entry) {
    m_jobDataPending = true;
    if (IsVUHF())
        fillFrom(entry, AddVUHFValue().get());
    else
        fillFrom(entry, AddHFValue().get());
}

void MemorySystemHandler::FillInData(double frequency, double bandwidth, QString comment,
                                     QString demodulation, int, QString, QString, QString, QString, QString) {
    if (m_listType == MediatorType::MemoryHF)
        SetNewEntryHF(frequency, bandwidth, comment, demodulation, false, QString(), 0, 0, 0);
    else if (m_listType == MediatorType::MemoryVUHF)
        SetNewEntryVUHF(frequency, bandwidth, comment, demodulation, false, 0, 0, 0, false, false, false);
}

void MemorySystemHandler::Prepare4NewFile() {
    SuspendMediatorCtrl(true, false);
}

void MemorySystemHandler::ResetDataAfterNewFile() {
    SuspendMediatorCtrl(false, true);
    if (m_root)
        m_root->NotifyObservers(TChangeCode::LookAgain);
    if (m_pMedCtrl)
        m_pMedCtrl->ForceUpdateNow();
    UpdateJobFileEntries();
    SetData2VT();
}

bool MemorySystemHandler::ParseJobFile(const QString& path) {
    Prepare4NewFile();
    QFile file(path);
    if (const QString refusal = RefuseToOpen(file); !refusal.isEmpty())
        return TellRefusal(TraceSource, {path, 0, refusal}); // the views stay frozen
    file.close();
    // The numbers of another job say nothing about the ranges of this one: its channels are new ones.
    m_hfEntries.Clear();
    m_vuhfEntries.Clear();
    const std::optional<QString> job = ReadJobText(path);
    const bool read = job && readChannels(*job, path);
    ResetDataAfterNewFile();
    return read;
}

bool MemorySystemHandler::UpdateFromJobFile(const QString& jobText) {
    if (jobText.isEmpty() && !m_jobFile)
        return false;
    const QString job = jobText.isEmpty() ? m_jobFile->GetValue() : jobText;
    return job.isEmpty() || readChannels(job, jobName());
}

bool MemorySystemHandler::readChannels(const QString& job, const QString& name) {
    FileProblems problems(name, TraceSource);
    JobChannels read;
    if (!ReadScanChannels(job, IsVUHF(), problems, read))
        return false;
    takeChannels(read.channels, problems);
    return true;
}

void MemorySystemHandler::takeChannels(const std::vector<ReadChannel>& channels, FileProblems& problems) {
    m_hfEntries.Refresh();
    m_vuhfEntries.Refresh();
    qint64 taken = 0;
    for (const ReadChannel& channel : channels) {
        LongWork::Step(taken++, static_cast<qint64>(channels.size()));
        if (!RangeExists(channel.range)) {
            takeNewChannel(channel, problems);
            continue;
        }
        MemoryEntry* entry = IsVUHF() ? static_cast<MemoryEntry*>(GetRangeMedVUHF(channel.range))
                                      : GetRangeMedHF(channel.range);
        entry->SetInRange();
        entry->SetFrequencyInRange(channel.frequency);
        problems.CheckFrequency(channel.line, channel.frequency);
    }
}

void MemorySystemHandler::takeNewChannel(const ReadChannel& channel, FileProblems& problems) {
    const auto take = [&](auto entry, auto& entries) {
        if (!entry)
            return;
        fillFrom(channel, *entry);
        if (const Node* node = entry->GetNode())
            reportLimits(*node, channel.line, problems);
        entries.Append(std::move(entry));
    };
    if (IsVUHF())
        take(addChannel<VUHFMemoryEntry>(SimpleFrequency::Use::Kept), m_vuhfEntries);
    else
        take(addChannel<HFMemoryEntry>(SimpleFrequency::Use::Kept), m_hfEntries);
}

/// Replaces the channels by those of another job, which `read` takes.
template <typename Read>
void MemorySystemHandler::replaceChannels(Read read) {
    m_changedSinceJobSave = false;
    if (m_root)
        m_root->DeleteChildren();
    m_hfEntries.Clear();
    m_vuhfEntries.Clear();
    Prepare4NewFile();
    read();
    SuspendMediatorCtrl(false, false);
    m_jobDataPending = false;
    UpdateJobFileEntries();
}

void MemorySystemHandler::readJobAnew() {
    replaceChannels([this] { UpdateFromJobFile(QString()); });
}

bool MemorySystemHandler::OpenJobFile(const QString& path) {
    if (isRefused(path))
        return false;
    const QString jobBefore = m_jobFile ? m_jobFile->GetValue() : QString();
    const QString nameBefore = m_jobFileName;
    const bool wasChanged = m_changedSinceJobSave;
    bool isReplacing = false;
    const auto takeBack = [&] {
        if (!isReplacing)
            return REPORTGENERATOR::DroppedEntries();
        const REPORTGENERATOR::DroppedEntries dropped = takeJobBack(jobBefore, nameBefore);
        m_changedSinceJobSave = wasChanged;
        return dropped;
    };
    return REPORTGENERATOR::ReadAsWork(path, [&] {
        return REPORTGENERATOR::ReadSafely(
            TraceSource, path, [&] { return takeJobFile(path, isReplacing); }, takeBack);
    });
}

/// Brings back the job, and the channels that it says, after another that does not fit into memory.
REPORTGENERATOR::DroppedEntries MemorySystemHandler::takeJobBack(const QString& job, const QString& name) {
    const auto count = m_root ? static_cast<qint64>(m_root->ChildCount()) : 0;
    m_jobFileName = name;
    if (m_jobFile)
        m_jobFile->SetValue(job, this);
    readJobAnew();
    return {count, !m_root || m_root->ChildCount() == 0};
}

bool MemorySystemHandler::takeJobFile(const QString& path, bool& isReplacing) {
    const std::optional<QString> job = ReadJobText(path);
    if (!job)
        return false;
    FileProblems problems(path, TraceSource);
    JobChannels read;
    if (!ReadScanChannels(*job, IsVUHF(), problems, read))
        return false;
    if (!read.hasSubJob || !m_jobFile) {
        problems.ReportAlways(0, read.hasSubJob ? tr("there is no receiver to take a job")
                                                : tr("is no job: it has no SUBJOB"));
        return false;
    }
    isReplacing = true;
    m_jobFileName = path;
    m_jobFile->SetValue(*job, this);
    replaceChannels([&] { takeChannels(read.channels, problems); });
    return true;
}

void MemorySystemHandler::UpdateJobFileEntries() {
    if (m_viewMap)
        m_viewMap->StartTransaction();
    bool collected = false;
    try {
        collected = collectChannels();
    } catch (const std::bad_alloc&) {
        if (m_viewMap)
            m_viewMap->EndTransaction(TChangeCode::ValueChanged);
        throw;
    }
    if (m_viewMap)
        m_viewMap->EndTransaction(TChangeCode::ValueChanged);
    if (collected)
        SetData2VT();
}

/// Makes the job data and the view map anew from the channels; false when there is no list of channels.
bool MemorySystemHandler::collectChannels() {
    if (m_viewMap)
        m_viewMap->Clear();
    if (!m_pMedCtrl) {
        TraceLazily(TraceSource, [] { return QStringLiteral("no mediator controller defined"); });
        return false;
    }
    if (m_inScanSurveillance && m_root)
        m_root->NotifyObservers(TChangeCode::LookAgain);
    if (m_inScanSurveillance || m_pMedCtrl->IsDirty())
        m_pMedCtrl->ForceUpdateNow();
    if (m_listType != MediatorType::MemoryHF && !IsVUHF())
        return false;
    const LongWork::Unbroken whole;
    MemoryScanWriter writer(IsVUHF());
    long number = 0;
    const auto count = static_cast<int>(m_pMedCtrl->size());
    for (int i = 0; i < count; ++i) {
        LongWork::Step(i, count);
        auto* mediator = dynamic_cast<MemoryMediator*>(m_pMedCtrl->GetItemwithIndex(i));
        if (!mediator)
            continue;
        ScanChannel channel = channelOf(*mediator);
        for (const double frequency : frequenciesOf(*mediator)) {
            channel.number = ++number;
            channel.frequency = frequency;
            writer.Append(channel);
            if (m_viewMap)
                m_viewMap->Add(FrequencyMapItem(frequency, channel.bandwidth, 0, channel.name,
                                                MemoryEntry::Type, QString(), true));
        }
    }
    m_jobData = writer.Finish();
    return true;
}

void MemorySystemHandler::bringJobUpToDate() {
    m_sectionsInJob = 0;
    m_jobDataPending = true;
    UpdateJobFileEntries();
}

void MemorySystemHandler::SaveData2JobFile() {
    bringJobUpToDate();
    if (!m_inScanSurveillance && m_jobFile && !m_jobFileName.isEmpty())
        writeJob(m_jobFileName);
}

/// The job's file is from then on the one that was written, which may stand beside the one that was asked
/// for.
bool MemorySystemHandler::writeJob(const QString& path) {
    const QString written =
        ListSaving::Do(m_pMedCtrl.get(), [&] { return WriteJobText(path, m_jobFile->GetValue()); });
    if (written.isEmpty())
        return false;
    m_jobFileName = written;
    m_changedSinceJobSave = false;
    return true;
}

bool MemorySystemHandler::SaveJobFile(const QString& path) {
    if (isRefused(path))
        return false;
    bringJobUpToDate();
    if (m_sectionsInJob == 0 && m_pMedCtrl && m_pMedCtrl->size() > 0)
        Problems::Report(TraceSource,
                         {path, 0, tr("not written: the job has no memory-scan section for the channels")});
    else if (!m_jobFile || m_jobFile->GetValue().isEmpty())
        Problems::Report(TraceSource, {path, 0, tr("not written: there is no job")});
    else
        return m_sectionsInJob >= 0 && REPORTGENERATOR::WriteAsWork(path, [&] { return writeJob(path); });
    return false;
}

bool MemorySystemHandler::SaveFile(const QString& path) {
    if (!m_pMedCtrl || isRefused(path))
        return false;
    if (!path.endsWith(QLatin1String(".xml"))) {
        Problems::Report(TraceSource, {path, 0, tr("memory channels are written as .xml or into a job")});
        return false;
    }
    m_pMedCtrl->ForceUpdateNow();
    return REPORTGENERATOR::WriteAsWork(path, [&] {
        try {
            m_pMedCtrl->WriteFrequencies(path, false, FreqStoreXml::FrequencyStoreListHelper::XmlList);
            return true;
        } catch (const RGException& exception) {
            TraceLazily(TraceSource, [] { return QStringLiteral("EXCEPTION WHILE SAVING FREQUENCIES:"); });
            TraceLazily(TraceSource, [&] { return exception.GetErrorText(); });
            return false;
        }
    });
}
