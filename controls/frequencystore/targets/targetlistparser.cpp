#include "controls/frequencystore/targets/targetlistparser.h"

#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/files/filekind.h"
#include "controls/frequencystore/files/linefields.h"
#include "controls/frequencystore/files/linewriter.h"
#include "controls/frequencystore/targets/targetlisthandler.h"
#include "controls/frequencystore/targets/targetlistviewfactory.h"
#include "controls/frequencystore/targets/wkflistentry.h"
#include "controls/frequencystore/targets/wkfnodemediator.h"
#include "host/base/fixedplace.h"
#include "host/base/problems.h"
#include "host/base/trace.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/pixstatevector.h"
#include "host/freqstorexml/stagedentries.h"

#include <QCoreApplication>

using FreqStoreXml::FrequencyStoreListHelper;

namespace {

constexpr char TraceSource[] = "listviewshandler";
constexpr int StoreType = 2;

// A target: rings around a dot, in the list's greens, with a yellow mark.
constexpr const char* IconXpm[] = {
    "16 16 7 1",        "# c #000000",      "c c #000400",      "d c #008200",      "e c #088608",
    "b c #ffffff",      "a c #ffff00",      ". c none",         ".....######.....", "...##bbbbbb##...",
    "..#bbddddddbb#..", ".#bbdbbbbbbdbb#.", ".#bdbbeeeebbdb#.", "#bdbbebbbbebbdb#", "#bdbebbccbbebdb#",
    "#bdbebcaacbebdb#", "#bdbebcaacbebdb#", "#bdbebbccbbebdb#", "#bdbbebbbbebbdb#", ".#bdbbeeeebbdb#.",
    ".#bbdbbbbbbdbb#.", "..#bbddddddbb#..", "...##bbbbbb##...", ".....######....."};

PixStateVector* createPixStateVector() {
    auto* line = new PixStateVectorOnNode;
    if (const Node* root = TargetListHandler::Instance()->GetItemsRoot())
        line->Init(root->GetPathName());
    line->SetKeyWords(Keys::KeyFrequency.Text(), Keys::KeyBandwidth.Text(), Keys::KeyType.Text(),
                      Keys::KeyComment.Text());
    return line;
}

} // namespace

TargetListParser::TargetListParser(Node* node)
    : m_pNode(node),
      m_pMedCtrl(std::make_unique<HalvoNodeMediatorCtrl>(MediatorType::TargetList, StoreType)) {
    m_pMedCtrl->SetEntryMaker([this](const FreqStoreXml::FrequencyStoreEntry& entry) { FillInEntry(entry); });
    if (node)
        m_pMedCtrl->Init(node->GetPathName());
    m_pMedCtrl->IncrementVisibleCnt();
}

TargetListParser::~TargetListParser() = default;

/// A new node at the end of the list, without values yet; null when there is no list node.
Node* TargetListParser::addTarget() {
    static const Names::Id name = Names::Intern(QStringLiteral("Target"));
    Node* const list = m_pNode.get();
    if (!list)
        return nullptr;
    Node* const target = Node::NewEntry(list, name, WkfTarget::Shape());
    list->AddItemUnique(target);
    return target;
}

std::unique_ptr<WkfListEntry> TargetListParser::AddValue() {
    Node* const target = addTarget();
    return target ? std::make_unique<WkfListEntry>(target, true, nullptr) : nullptr;
}

void TargetListParser::add(const WkfTarget::Content& content) {
    Node* const target = addTarget();
    if (!target)
        return;
    if (WkfTarget whole(*target); whole.Fill(content))
        return;
    // Somebody who observes the list had a hand in the target while it came: value by value, then.
    WkfListEntry entry(target, true, nullptr);
    entry.SetBandwidth(content.bandwidth);
    entry.SetFrequency(content.frequency);
    entry.SetComment(content.comment.toString());
    entry.SetPriority(content.priority);
    entry.SetThreadClass(content.threatClass.toString());
    entry.SetDemodulation(content.demodulation.toString());
    entry.SetProfileID(content.profileID.toString());
    entry.SetProfileName(content.profileName.toString());
    entry.SetSignalClass(content.signalClass.toString());
    entry.SetTransmissionSystem(content.transmissionSystem.toString());
}

void TargetListParser::FillInData(double frequency, double bandwidth, QString comment, QString demodulation,
                                  int priority, QString threatClass, QString profileID, QString profileName,
                                  QString signalClass, QString transmissionSystem) {
    add({.frequency = frequency,
         .bandwidth = bandwidth,
         .priority = priority,
         .comment = comment,
         .demodulation = demodulation,
         .threatClass = threatClass,
         .profileID = profileID,
         .profileName = profileName,
         .signalClass = signalClass,
         .transmissionSystem = transmissionSystem});
}

void TargetListParser::FillInLine(const LineRecord& line) {
    add({.frequency = line.frequency,
         .bandwidth = line.bandwidth,
         .priority = line.priority,
         .comment = line.comment,
         .demodulation = line.demodulation,
         .threatClass = line.threatClass});
}

void TargetListParser::Prepare4NewFile() {
    m_filling = true;
    m_pMedCtrl->Suspend(true);
    if (m_pNode)
        m_pNode->DeleteChildren();
}

void TargetListParser::ResetDataAfterNewFile() {
    m_pMedCtrl->Suspend(false);
    m_readIndex = 0;
    m_filling = false;
}

REPORTGENERATOR::DroppedEntries TargetListParser::DropUnfinishedFile() {
    if (!m_filling)
        return {};
    const auto count = m_pNode ? static_cast<qint64>(m_pNode->ChildCount()) : 0;
    Prepare4NewFile();
    ResetDataAfterNewFile();
    return {count, true};
}

void TargetListParser::ResetDataCollect() {
    m_readIndex = 0;
}

bool TargetListParser::GetNextData(double& frequency, double& bandwidth, int& priority, QString& comment,
                                   QString& threatClass, QString& demodulation) {
    frequency = 0;
    bandwidth = 0;
    priority = 0;
    comment.clear();
    threatClass.clear();
    demodulation.clear();
    if (!m_pMedCtrl || m_readIndex >= m_pMedCtrl->size())
        return false;
    auto* mediator = dynamic_cast<WkfNodeMediator*>(m_pMedCtrl->At(m_readIndex));
    if (!mediator)
        return false;
    ++m_readIndex;
    ++m_readCount;
    mediator->GetFrequency(frequency, 0);
    mediator->GetBandwidth(bandwidth, 0);
    mediator->GetPriority(priority, 0);
    mediator->GetComment(comment, 0);
    mediator->GetThreadClass(threatClass, 0);
    mediator->GetDemodulation(demodulation, 0);
    return true;
}

bool TargetListParser::ParseSFLFile(const QString& path) {
    if (PathContains(path, ".sfl"))
        return ReadLines(path, SflLayout);
    if (PathContains(path, ".ltl"))
        return ReadLines(path, LtlLayout);
    if (PathContains(path, ".xml") || PathContains(path, ".csv")) {
        readEntries(path, PathContains(path, ".csv"));
        return true;
    }
    QFile file(path);
    if (const QString refusal = RefuseToOpen(file); !refusal.isEmpty())
        return TellRefusal(FixedPlace::CannotOpenList, {path, 0, refusal});
    Prepare4NewFile();
    // The file ends here, but the emptied list must not stay frozen.
    m_pMedCtrl->Suspend(false);
    m_filling = false;
    TraceLazily(FixedPlace::CannotConvert, [] { return QStringLiteral("File cannot be converted"); });
    Problems::Report(TraceSource,
                     {path, 0, QCoreApplication::translate("Readers", "is of no known kind of file")});
    return false;
}

/// The file is read whole before the list is emptied: one that is bad half-way costs nothing.
void TargetListParser::readEntries(const QString& path, bool csv) {
    FreqStoreXml::StagedEntries entries;
    entries.Read(path, csv, FrequencyStoreListHelper::Targets);
    Prepare4NewFile();
    entries.Drain([this](const FreqStoreXml::FrequencyStoreEntry& entry) { FillInEntry(entry); });
    ResetDataAfterNewFile();
}

bool TargetListParser::writeLines(const QString& path) {
    try {
        LineWriter writer(path);
        m_pMedCtrl->ForEachInWork(
            [&](FrequencyNodeMediator& mediator) { writer.Append(mediator.ToString()); });
        writer.Commit();
        return true;
    } catch (const RGException& exception) {
        TraceLazily(TraceSource, [&] { return exception.GetErrorText(); });
        return false;
    }
}

bool TargetListParser::SaveFile(const QString& path) {
    if (path.isEmpty())
        return false;
    m_pMedCtrl->ForceUpdateNow();
    if (PathContains(path, ".ltl") || PathContains(path, ".sfl"))
        return writeLines(path);
    try {
        const bool csv = PathContains(path, ".csv");
        m_pMedCtrl->WriteFrequencies(
            path, csv, csv ? FrequencyStoreListHelper::Targets : FrequencyStoreListHelper::XmlList);
        return true;
    } catch (const RGException& exception) {
        TraceLazily(TraceSource, [] { return QStringLiteral("EXCEPTION WHILE SAVING FREQUENCIES:"); });
        TraceLazily(TraceSource, [&] { return exception.GetErrorText(); });
        return false;
    }
}

int TargetListParser::AddToFreqStore() {
    AssertHolds(FixedPlace::TargetsWithoutController, m_pMedCtrl != nullptr, "m_pMedCtrl");
    return FreqStore::Instance().RegisterList(
        {.name = QCoreApplication::translate("TargetListParser", "Local TargetList"),
         .icon = QPixmap(IconXpm),
         .pixStateFactory = createPixStateVector,
         .controller = m_pMedCtrl.get(),
         .viewFactory = CreateWkfListView});
}
