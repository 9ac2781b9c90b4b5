#include "cli/memorylist.h"

#include "controls/frequencystore/memorysystemhandling/memorysystemhandler.h"
#include "host/valuetree/tree.h"

namespace {

constexpr char JobPath[] = "/JEN/Job";

MemorySystemHandler& handler() {
    return *MemorySystemHandler::Instance();
}

} // namespace

MemoryList::MemoryList(bool vuhf)
    : m_node(Tree::Instance()->MakeNode(QStringLiteral("/Lists/MemoryChannels"))) {
    const QString job = QStringLiteral("/JEN/Job/");
    Tree::Instance()->MakeNode(QString::fromLatin1(JobPath));
    handler().SetListType(vuhf ? MediatorType::MemoryVUHF : MediatorType::MemoryHF);
    handler().Init(m_node);
    for (const char* name : {"File", "MemoryScan"})
        GetOrCreateValue<Value<QString>>(job + QString::fromLatin1(name));
    handler().SetJobfile_ValuePath(job + QStringLiteral("File"));
    handler().SetData4Jobfile_ValuePath(job + QStringLiteral("MemoryScan"));
}

MemoryList::~MemoryList() {
    // The command line said what is saved: the job is let go of, and nobody is asked about it.
    auto* job = GetOrCreateValue<Value<QString>>(QString::fromLatin1(JobPath) + QStringLiteral("/File"));
    job->SetValue(QString(), &handler());
    job->HasChanged(TChangeCode::ValueChanged);
    MemorySystemHandler::DeleteInstance();
    m_node->DeleteChildren();
    Tree::Instance()->GetNode(QString::fromLatin1(JobPath))->DeleteChildren();
}

bool MemoryList::Read(const QString& path) {
    return handler().ReadFile(path);
}

bool MemoryList::Write(const QString& path) {
    return handler().SaveFile(path);
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
