#include "controls/frequencystore/noi/noifrequencyhandler.h"

#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/files/filekind.h"
#include "controls/frequencystore/noi/noifrequency.h"
#include "controls/frequencystore/noi/noilistviewfactory.h"
#include "host/base/numbers.h"
#include "host/base/trace.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencynodemediator.h"
#include "host/freqlist/pixstatevector.h"
#include "host/freqlist/undohistory.h"
#include "host/freqstorexml/frequencystoreentry.h"
#include "host/startup/cfgcenter.h"
#include "host/valuetree/tree.h"

#include <QPixmap>
#include <QPointer>

namespace {

constexpr int StoreType = 4;
constexpr qsizetype BandTextLength = 24; ///< two edges in the GHz range

// A band between two edges, with its centre.
constexpr const char* IconXpm[] = {
    "16 16 7 1",        ". c none",         "# c #5c6bc0",      "a c #3949ab",      "b c #9fa8da",
    "c c #e8eaf6",      "d c #ffb300",      "e c #ff6f00",      "................", ".#............#.",
    ".#............#.", ".##..........##.", ".#a##########a#.", ".#abbbbeebbbba#.", ".#abccceecccba#.",
    ".#abccdeedccba#.", ".#abccdeedccba#.", ".#abccceecccba#.", ".#abbbbeebbbba#.", ".#a##########a#.",
    ".##..........##.", ".#............#.", ".#............#.", "................"};

PixStateVector* createPixStateVector() {
    auto* line = new PixStateVectorOnNode;
    if (const Node* root = NOIFrequencyHandler::Instance()->GetItemsRoot())
        line->Init(root->GetPathName());
    line->SetKeyWords(Keys::KeyFrequency.Text(), Keys::KeyBandwidth.Text(), QStringLiteral("t"),
                      Keys::KeyComment.Text());
    line->SetSymbol(2);
    line->SetFixedType('a');
    return line;
}

void appendBand(QString& text, FrequencyNodeMediator& mediator) {
    double frequency = 0;
    double bandwidth = 0;
    mediator.GetFrequency(frequency, 0);
    mediator.GetBandwidth(bandwidth, 0);
    Quor::AppendFixed(text, frequency - bandwidth / 2, 0);
    text += QLatin1Char(',');
    Quor::AppendFixed(text, frequency + bandwidth / 2, 0);
    text += QLatin1Char(';');
}

} // namespace

NOIFrequencyHandler* NOIFrequencyHandler::m_pInstance = nullptr;

NOIFrequencyHandler* NOIFrequencyHandler::Instance() {
    if (!m_pInstance)
        m_pInstance = new NOIFrequencyHandler;
    return m_pInstance;
}

void NOIFrequencyHandler::DeleteInstance() {
    delete std::exchange(m_pInstance, nullptr);
}

NOIFrequencyHandler::NOIFrequencyHandler()
    : m_currentFile(
          CfgCenter::GetAppCfg(ICfg::StartUp).GetString(QString::fromLatin1(RememberedFile), QString())),
      m_definition(this) {}

NOIFrequencyHandler::~NOIFrequencyHandler() {
    saveAtTheEnd();
}

void NOIFrequencyHandler::Init(Node* listNode) {
    m_pNode = listNode;
    m_pMedCtrl = std::make_unique<HalvoNodeMediatorCtrl>(MediatorType::NoiFrequencies, StoreType);
    m_pMedCtrl->IncrementVisibleCnt(nullptr);
    if (!listNode) // nothing could take what a file holds
        return;
    m_pMedCtrl->Init(listNode->GetPathName_NoSlashForRoot());
    // Entries that come together, such as those of a paste, are one change of the band list.
    m_pMedCtrl->SetEntryMaker([this](const FreqStoreXml::FrequencyStoreEntry& entry) {
        const FreqStoreXml::FFM_Settings& settings = entry.GetFFM_Settings();
        insert(settings.GetFrequency().GetValue(), settings.GetIFBandwidth().GetValue(), entry.GetComment());
    });
    connect(m_pMedCtrl.get(), &HalvoNodeMediatorCtrl::Refreshed, this, [this] {
        if (m_updateIsDue)
            UpdateNOIList();
    });
    connect(m_pMedCtrl.get(), &HalvoNodeMediatorCtrl::EntriesEdited, this, [this] {
        m_ready = true; // the file that could not be read, if any, is not waited for any more
        UpdateNOIList();
    });
    if (!m_remembersFile) {
        m_currentFile.clear();
        return;
    }
    if (m_currentFile.isEmpty()) {
        TraceLazily(TraceSource, [] { return QStringLiteral("No NOI file loaded"); });
        m_currentFile = QString::fromLatin1(DefaultFile);
        return;
    }
    if (PathContains(m_currentFile, ".xml"))
        ParseNOIXmlFile(m_currentFile);
    else
        ParseNOIFile(m_currentFile);
}

// The directory is dropped on purpose: operators expect the dialogs to start where the program does.
void NOIFrequencyHandler::SetReadDirectory(const QString&) {}

void NOIFrequencyHandler::SetFrequencyValue_Path(const QString& path) {
    m_template.AddSourceValue(SourceFrequency, path);
}

void NOIFrequencyHandler::SetBandwidthValue_Path(const QString& path) {
    m_template.AddSourceValue(SourceBandwidth, path);
}

void NOIFrequencyHandler::SetNOIDefinition_ValuePath(const QString& path) {
    m_definition.Reset(Tree::Instance()->GetValue(path));
    UpdateNOIList();
}

std::unique_ptr<NOIFrequency> NOIFrequencyHandler::AddValue() {
    Node* const list = m_pNode.get();
    if (!list)
        return nullptr;
    static const QString name = QStringLiteral("Entry");
    auto* node = new Node(list, name);
    list->AddItemUnique(node);
    return std::make_unique<NOIFrequency>(node, true, &m_template);
}

bool NOIFrequencyHandler::insert(double frequency, double bandwidth, const QString& comment) {
    const std::unique_ptr<NOIFrequency> entry = AddValue();
    if (!entry) {
        TraceLazily(TraceSource, [] { return QStringLiteral("AddValue returned invalid value"); });
        return false;
    }
    if (frequency > 0) {
        entry->SetFrequency(frequency);
        entry->SetBandwidth(bandwidth);
        entry->SetComment(comment);
    }
    m_updateIsDue = true;
    if (!m_ready)
        m_doubtful.Take(frequency, bandwidth);
    return true;
}

bool NOIFrequencyHandler::InsertNewValue(double frequency, double bandwidth, const QString& comment) {
    if (!insert(frequency, bandwidth, comment))
        return false;
    UpdateNOIList();
    return true;
}

void NOIFrequencyHandler::UpdateNOIList() {
    if (!m_definition || !m_pMedCtrl || !m_ready)
        return;
    m_updateIsDue = false;
    if (Node* list = m_pNode.get())
        list->Commit(nullptr);
    m_pMedCtrl->ForceUpdateNow();
    QString text;
    text.reserve(static_cast<qsizetype>(m_pMedCtrl->size()) * BandTextLength);
    m_pMedCtrl->ForEach([&](FrequencyNodeMediator& mediator) { appendBand(text, mediator); });
    if (m_definition) // observers of the list may have ended it
        m_definition->SetStringValue(text, nullptr);
}

bool NOIFrequencyHandler::IsWaitingForFile() const {
    return m_pMedCtrl && m_pMedCtrl->IsSuspended();
}

/// Undo of a read takes back what the list knows of its file.
void NOIFrequencyHandler::keepFileForUndo() {
    UndoHistory::Instance().Add(
        std::make_unique<UndoState>([this, file = m_currentFile, unread = m_unreadFile,
                                     incomplete = m_incomplete, alive = QPointer(this)]() mutable {
            if (!alive)
                return;
            std::swap(m_currentFile, file);
            std::swap(m_unreadFile, unread);
            std::swap(m_incomplete, incomplete);
        }));
}

void NOIFrequencyHandler::Prepare4NewFile() {
    keepFileForUndo();
    m_filling = true;
    m_ready = false;
    m_incomplete = true;
    m_doubtful = {};
    if (m_pMedCtrl)
        m_pMedCtrl->Suspend(true);
    if (m_pNode)
        m_pNode->DeleteChildren();
}

void NOIFrequencyHandler::ResetDataAfterNewFile() {
    m_ready = true;
    m_incomplete = false;
    m_updateIsDue = false; // comes below, once
    if (m_pMedCtrl)
        m_pMedCtrl->Suspend(false);
    UpdateNOIList();
    m_filling = false;
    emit signalNewFileLoaded();
}

void NOIFrequencyHandler::FillInData(double frequency, double bandwidth, QString comment, QString, int,
                                     QString, QString, QString, QString, QString) {
    InsertNewValue(frequency, bandwidth, comment);
}

int NOIFrequencyHandler::AddToFreqStore() {
    AssertHolds(TraceSource, m_pMedCtrl != nullptr, "m_pMedCtrl");
    return FreqStore::Instance().RegisterList({.name = tr("NOI Frequencies"),
                                               .icon = QPixmap(IconXpm),
                                               .pixStateFactory = createPixStateVector,
                                               .controller = m_pMedCtrl.get(),
                                               .viewFactory = CreateSearchMCNOIListView});
}

void NOIFrequencyHandler::Update(Observable* subject, TChangeCode code) {
    if (code == TChangeCode::Removing && m_definition && subject == m_definition.get())
        m_definition.Reset();
}
