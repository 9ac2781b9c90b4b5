#include "cli/memorylist.h"

#include "cli/jsonfile.h"
#include "cli/shapedentry.h"
#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/common/paths.h"
#include "controls/frequencystore/memory/memorysystemhandler.h"
#include "host/valuetree/tree.h"
#include "host/valuetree/value.h"

namespace {

constexpr char EntryName[] = "MemItem";
constexpr FileMark MarksRead[] = {
    {".xml", FileFormat::StoreXml}, {".sfl", FileFormat::SflLines}, {".pij", FileFormat::Job}};
constexpr FileMark MarksWritten[] = {{".xml", FileFormat::StoreXml}};

MemorySystemHandler& handler() {
    return *MemorySystemHandler::Instance();
}

} // namespace

MemoryList::MemoryList(bool vuhf) : m_node(Tree::Instance()->MakeNode(Paths::MemoryChannels)) {
    Tree::Instance()->MakeNode(Paths::Job);
    handler().SetListType(vuhf ? MediatorType::MemoryVUHF : MediatorType::MemoryHF);
    handler().Init(m_node);
    for (const QLatin1String path : {Paths::JobText, Paths::JobSection})
        GetOrCreateValue<Value<QString>>(path);
    handler().SetJobfile_ValuePath(Paths::JobText);
    handler().SetData4Jobfile_ValuePath(Paths::JobSection);
}

MemoryList::~MemoryList() {
    LeaveToNextList([node = m_node] {
        // The command line said what is saved: the job is let go of, and nobody is asked about it.
        auto* job = GetOrCreateValue<Value<QString>>(Paths::JobText);
        job->SetValue(QString(), &handler());
        job->HasChanged(TChangeCode::ValueChanged);
        MemorySystemHandler::DeleteInstance();
        node->DeleteChildren();
        Tree::Instance()->GetNode(Paths::Job)->DeleteChildren();
    });
}

const FileNames& MemoryList::Names() const {
    static constexpr FileNames names{.read = MarksRead, .written = MarksWritten, .isAtTheEnd = true};
    return names;
}

bool MemoryList::ReadFile(const QString& path) {
    return handler().ReadFile(path);
}

bool MemoryList::WriteFile(const QString& path) {
    return handler().SaveFile(path);
}

void MemoryList::BeginEntries() {
    handler().Prepare4NewFile();
}

void MemoryList::EndEntries(bool isWhole) {
    if (!isWhole)
        m_node->DeleteChildren();
    handler().SuspendMediatorCtrl(true, true); // the channels go into the job
    handler().ResetDataAfterNewFile();
}

GeneralListParser* MemoryList::Parser() const {
    return &handler();
}

HalvoNodeMediatorCtrl* MemoryList::Controller() const {
    return handler().GetMediatorCtrl();
}

void MemoryList::AddEntry(const Interchange::JsonEntry& from) {
    const auto add = handler().IsVUHF() ? AddShapedEntry<VUHFMemoryEntry> : AddShapedEntry<HFMemoryEntry>;
    FillFromJson(add(*m_node, EntryName, handler().GetGeneralEntry()), from);
}

CliList::EntryNodes MemoryList::GetEntryNodes() const {
    return {EntryName, handler().IsVUHF() ? &VUHFMemoryEntry::Shape() : &HFMemoryEntry::Shape()};
}

void MemoryList::EntriesChanged() {
    handler().SuspendMediatorCtrl(false, true);
}

bool MemoryList::OpenJob(const QString& path) {
    return handler().OpenJobFile(path);
}

void MemoryList::Clear() {
    m_node->DeleteChildren();
    handler().SuspendMediatorCtrl(false, true);
}

bool MemoryList::SaveJob(const QString& path) {
    return handler().SaveJobFile(path);
}
