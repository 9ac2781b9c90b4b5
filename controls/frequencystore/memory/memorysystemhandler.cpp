#include "controls/frequencystore/memory/memorysystemhandler.h"

#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/common/paths.h"
#include "controls/frequencystore/memory/jobfile.h"
#include "controls/frequencystore/memory/memorydialogs.h"
#include "controls/frequencystore/memory/memorylistviewfactory.h"
#include "controls/frequencystore/memory/memorysystemfreqstorelistdefinition.h"
#include "host/base/trace.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/pixstatevector.h"
#include "host/freqlist/undohistory.h"
#include "host/valuetree/tree.h"

namespace {

constexpr char TraceSource[] = "memorysystemhandling";
constexpr int StoreType = 4;
constexpr char ViewMapName[] = "MemoryItemMap4View";

// A memory chip: a dark body with a lit window between its pins.
constexpr const char* IconXpm[] = {
    "16 16 7 1",        ". c none",         "# c #202020",      "a c #404850",      "b c #8890a0",
    "c c #d8dce4",      "d c #30a060",      "e c #a0f0c0",      "................", "..b..b..b..b....",
    "..c..c..c..c....", ".############...", ".#aaaaaaaaaa#cb.", ".#addddddddda#..", ".#adeedeedeea#cb",
    ".#addddddddda#..", ".#adeedeedeea#cb", ".#addddddddda#..", ".#aaaaaaaaaaa#..", ".#aaaaaaaaa##...",
    ".############...", "..c..c..c..c....", "..b..b..b..b....", "................"};

PixStateVector* createPixStateVector() {
    auto* line = new PixStateVectorOnNode;
    if (const Node* root = MemorySystemHandler::Instance()->GetItemsRoot())
        line->Init(root->GetPathName());
    line->SetKeyWords(Keys::KeyFrequency.Text(), Keys::BandwidthSel.Text(), QStringLiteral("t"),
                      Keys::KeyComment.Text());
    line->SetSymbol(4);
    line->SetFixedType(MemoryEntry::Type);
    return line;
}

/// Sets what new channels share; false, with the channel at its defaults, without one or without a frequency.
bool setBasics(MemoryEntry* entry, double frequency, double bandwidth, const QString& comment,
               const QString& demodulation) {
    if (!entry || frequency == 0.0)
        return false;
    entry->SetBasics(frequency, bandwidth, comment, demodulation);
    return true;
}

/// Tells the receiver, while the job is changed, not to start anew for it.
class SuppressedRestart {
public:
    explicit SuppressedRestart(int& depth) : m_depth(depth) {
        ++m_depth;
        set(true);
    }
    SuppressedRestart(const SuppressedRestart&) = delete;
    SuppressedRestart& operator=(const SuppressedRestart&) = delete;
    ~SuppressedRestart() {
        if (--m_depth == 0)
            set(false);
    }

private:
    static void set(bool suppress) {
        if (auto* value = Tree::Instance()->Find<Value<bool>>(Paths::SuppressRestart))
            value->SetValue(suppress);
    }

    int& m_depth;
};

} // namespace

MemorySystemHandler* MemorySystemHandler::m_pInstance = nullptr;

MemorySystemHandler* MemorySystemHandler::Instance() {
    if (!m_pInstance)
        m_pInstance = new MemorySystemHandler;
    return m_pInstance;
}

void MemorySystemHandler::DeleteInstance() {
    // The end may ask the operator, and the program goes on meanwhile.
    static bool ending = false;
    if (std::exchange(ending, true))
        return;
    delete m_pInstance;
    m_pInstance = nullptr;
    ending = false;
}

MemorySystemHandler::MemorySystemHandler()
    : m_generalEntry(std::make_unique<GeneralEntry>()),
      m_data4Jobfile(this),
      m_jobFile(this),
      m_save2Job(this) {}

MemorySystemHandler::~MemorySystemHandler() {
    if (m_changedSinceJobSave && MemoryDialogs::IsToSaveChangedChannels())
        SaveData2JobFile();
    m_hfEntries.Clear();
    m_vuhfEntries.Clear();
    m_root = nullptr;
    m_pMedCtrl.reset();
    m_generalEntry.reset();
    TraceLazily(TraceSource, [] { return QStringLiteral(" ARDeletes are ready"); });
    m_data4Jobfile.Reset();
    m_jobFile.Reset();
    m_save2Job.Reset();
    TraceLazily(TraceSource, [] { return QStringLiteral(" Observers removed"); });
}

void MemorySystemHandler::Init(Node* root) {
    if (m_initialised)
        return;
    m_root = root;
    m_pMedCtrl = std::make_unique<HalvoNodeMediatorCtrl>(m_listType, StoreType);
    m_pMedCtrl->IncrementVisibleCnt();
    if (root)
        m_pMedCtrl->Init(root->GetPathName());
    takeSentEntries();
    m_initialised = true;
    if (!root)
        return;
    const Node* place = root->GetParentNode() ? root->GetParentNode() : root;
    const QString parentPath = place->GetPathName_NoSlashForRoot() + QLatin1Char('/');
    const QString name = QString::fromLatin1(ViewMapName);
    m_viewMap = Tree::Instance()->Find<FrequencyItemMap>(parentPath + name);
    if (m_viewMap)
        return;
    auto map = std::make_unique<FrequencyItemMap>(name, TValueState::Valid);
    if (Tree::Instance()->AddValue(parentPath, map.get()))
        m_viewMap = map.release();
}

void MemorySystemHandler::SetFrequency_ValuePath(const QString& path) {
    m_generalEntry->AddSourceValue(SourceFrequency, path);
}

void MemorySystemHandler::SetBandwidth_ValuePath(const QString& path) {
    m_generalEntry->AddSourceValue(SourceBandwidth, path);
}

void MemorySystemHandler::SetDemodulation_ValuePath(const QString& path) {
    m_generalEntry->AddSourceValue(SourceDemodulation, path);
}

void MemorySystemHandler::SetThreshold_ValuePath(const QString& path) {
    m_generalEntry->AddSourceValue(SourceThreshold, path);
}

void MemorySystemHandler::SetBFOFrequency_ValuePath(const QString& path) {
    m_generalEntry->AddSourceValue(SourceBFOFrequency, path);
}

void MemorySystemHandler::SetOutputIF_ValuePath(const QString& path) {
    m_generalEntry->AddSourceValue(SourceOutputIF, path);
}

void MemorySystemHandler::SetShift_ValuePath(const QString& path) {
    m_generalEntry->AddSourceValue(SourceShift, path);
}

void MemorySystemHandler::SetUseSquelch_ValuePath(const QString& path) {
    m_generalEntry->AddSourceValue(SourceUseSquelch, path);
}

void MemorySystemHandler::SetUseAttenuation_ValuePath(const QString& path) {
    m_generalEntry->AddSourceValue(SourceUseAttenuation, path);
}

void MemorySystemHandler::SetAttenuation_ValuePath(const QString& path) {
    m_generalEntry->AddSourceValue(SourceAttenuation, path);
}

void MemorySystemHandler::SetAntenna_ValuePath(const QString& path) {
    m_generalEntry->AddSourceValue(SourceAntenna, path);
}

void MemorySystemHandler::SetAFC_ValuePath(const QString& path) {
    m_generalEntry->AddSourceValue(SourceAFC, path);
}

void MemorySystemHandler::SetJobfile_ValuePath(const QString& path) {
    m_jobFile.Reset(Tree::Instance()->Find<Value<QString>>(path));
    if (m_jobFile && m_root)
        UndoHistory::Instance().Follow(*m_jobFile.get(), *m_root.get());
    if (m_jobFile && !m_inScanSurveillance)
        UpdateFromJobFile(QString());
}

void MemorySystemHandler::SetData4Jobfile_ValuePath(const QString& path) {
    m_data4Jobfile.Reset(Tree::Instance()->Find<Value<QString>>(path));
    if (m_data4Jobfile && m_jobDataPending)
        SetData2VT();
}

void MemorySystemHandler::SetSave2Job_ValuePath(const QString& path) {
    m_save2Job.Reset(Tree::Instance()->GetValue(path));
}

int MemorySystemHandler::AddToFreqStore() {
    AssertHolds(TraceSource, m_pMedCtrl != nullptr, "m_pMedCtrl");
    const QString rootPath = m_root ? m_root->GetPathName() : QString();
    return FreqStore::Instance().AddFrequencyListDefinition(
        new MemorySystemFreqStoreListDefinition({.name = tr("Memory Channels"),
                                                 .icon = QPixmap(IconXpm),
                                                 .pixStateFactory = createPixStateVector,
                                                 .controller = m_pMedCtrl.get(),
                                                 .viewFactory = CreateMemorySystemListView},
                                                rootPath));
}

Node* MemorySystemHandler::newChannelNode() {
    Node* const list = m_root.get();
    if (!list)
        return nullptr;
    static const QString name = QStringLiteral("MemItem");
    auto* node = new Node(list, name);
    list->AddItemUnique(node);
    return node;
}

std::unique_ptr<HFMemoryEntry> MemorySystemHandler::AddHFValue() {
    Node* const node = newChannelNode();
    return node ? std::make_unique<HFMemoryEntry>(node, true, m_generalEntry.get()) : nullptr;
}

std::unique_ptr<VUHFMemoryEntry> MemorySystemHandler::AddVUHFValue() {
    Node* const node = newChannelNode();
    return node ? std::make_unique<VUHFMemoryEntry>(node, true, m_generalEntry.get()) : nullptr;
}

/// Entries that other lists send become channels; those that come together are one change of the job.
void MemorySystemHandler::takeSentEntries() {
    m_pMedCtrl->SetEntryMaker([this](const FreqStoreXml::FrequencyStoreEntry& entry) {
        addEntry(entry);
        m_sentEntriesCame = true;
    });
    connect(m_pMedCtrl.get(), &HalvoNodeMediatorCtrl::Refreshed, this, [this] {
        if (!std::exchange(m_sentEntriesCame, false))
            return;
        if (m_root)
            m_root->NotifyObservers(TChangeCode::LookAgain);
        UpdateJobFileEntries();
    });
    connect(m_pMedCtrl.get(), &HalvoNodeMediatorCtrl::EntriesEdited, this, [this] {
        SuspendMediatorCtrl(false, true);
        UpdateJobFileEntries();
    });
}

void MemorySystemHandler::SetNewEntryHF(double frequency, double bandwidth, const QString& comment,
                                        const QString& demodulation, bool withReceiverSettings,
                                        const QString& outputIFPath, long bfoFrequency, long shift,
                                        long threshold) {
    const std::unique_ptr<HFMemoryEntry> entry = AddHFValue();
    m_jobDataPending = true;
    if (!setBasics(entry.get(), frequency, bandwidth, comment, demodulation) || !withReceiverSettings)
        return;
    entry->SetBFOFrequency(bfoFrequency);
    entry->SetOutputIFPath(outputIFPath);
    entry->SetShift(shift);
    entry->SetThreshold(threshold);
}

void MemorySystemHandler::SetNewEntryVUHF(double frequency, double bandwidth, const QString& comment,
                                          const QString& demodulation, bool withReceiverSettings,
                                          long attenuation, long antennaId, long threshold, bool afc,
                                          bool useSquelch, bool useAttenuation) {
    const std::unique_ptr<VUHFMemoryEntry> entry = AddVUHFValue();
    m_jobDataPending = true;
    if (!setBasics(entry.get(), frequency, bandwidth, comment, demodulation) || !withReceiverSettings)
        return;
    entry->SetThreshold(threshold);
    entry->SetAntennaID(antennaId);
    entry->SetAttenuation(attenuation);
    entry->SetAfc(afc);
    entry->SetUseSquelch(useSquelch);
    entry->SetUseAttenuation(useAttenuation);
}

void MemorySystemHandler::SetNewEntry(double frequency, double bandwidth, const QString& comment,
                                      const QString& demodulation) {
    FillInData(frequency, bandwidth, comment, demodulation, 10, QString(), QString(), QString(), QString(),
               QString());
    if (m_root)
        m_root->NotifyObservers(TChangeCode::LookAgain);
    if (m_pMedCtrl)
        m_pMedCtrl->ForceUpdateNow();
}

bool MemorySystemHandler::RangeExists(long rangeNumber) const {
    return IsVUHF() ? GetRangeMedVUHF(rangeNumber) != nullptr : GetRangeMedHF(rangeNumber) != nullptr;
}

HFMemoryEntry* MemorySystemHandler::GetRangeMedHF(long rangeNumber) const {
    return m_hfEntries.Find(rangeNumber);
}

VUHFMemoryEntry* MemorySystemHandler::GetRangeMedVUHF(long rangeNumber) const {
    return m_vuhfEntries.Find(rangeNumber);
}

void MemorySystemHandler::SuspendMediatorCtrl(bool suspend, bool markJobDataPending) {
    if (m_pMedCtrl)
        m_pMedCtrl->Suspend(suspend);
    if (markJobDataPending)
        m_jobDataPending = true;
}

bool MemorySystemHandler::Save2Job() {
    if (!m_save2Job)
        return false;
    m_save2Job->NotifyObservers(TChangeCode::Announcement, this);
    SaveData2JobFile();
    return true;
}

void MemorySystemHandler::SetData2VT() {
    if (!m_data4Jobfile || !m_jobDataPending)
        return;
    m_jobDataPending = false;
    const QString generated = m_jobData;
    m_data4Jobfile->SetValue(generated, this);
    if (m_data4Jobfile)
        putSectionIntoJob(m_data4Jobfile->GetValue() == generated);
}

/// The name under which problems of the job are told.
QString MemorySystemHandler::jobName() const {
    if (!m_jobFileName.isEmpty())
        return m_jobFileName;
    return m_jobFile ? m_jobFile->GetPathName() : QString();
}

/// Takes the section of the job-data value into the job.
void MemorySystemHandler::putSectionIntoJob(bool generatedHere) {
    const SuppressedRestart suppressed(m_suppressingRestart);
    if (!m_jobFile || !m_data4Jobfile)
        return;
    m_changedSinceJobSave = true;
    m_jobData = m_data4Jobfile->GetValue();
    QString job = m_jobFile->GetValue();
    m_sectionsInJob = MergeSection(job, m_jobData, generatedHere, jobName());
    if (m_sectionsInJob > 0)
        m_jobFile->SetValue(job, this);
}

void MemorySystemHandler::Update(Observable* source, TChangeCode code) {
    if (code == TChangeCode::Removing) {
        m_jobFile.ForgetIfRemoved(source, code) || m_data4Jobfile.ForgetIfRemoved(source, code) ||
            m_save2Job.ForgetIfRemoved(source, code);
    } else if (code == TChangeCode::ValueChanged) {
        if (m_data4Jobfile && source == m_data4Jobfile.get())
            putSectionIntoJob(false);
        if (m_save2Job && source == m_save2Job.get())
            SaveData2JobFile();
        if (m_jobFile && source == m_jobFile.get() && !m_inScanSurveillance)
            readJobAnew();
    } else if (code == TChangeCode::Announcement && m_save2Job && source == m_save2Job.get()) {
        SaveData2JobFile();
    }
}
