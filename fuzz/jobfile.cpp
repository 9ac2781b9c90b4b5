#include "controls/frequencystore/memory/jobfile.h"

#include "controls/frequencystore/memory/memorysystemhandler.h"
#include "host/valuetree/tree.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <cstdlib>

namespace {

void require(bool holds) {
    if (!holds)
        std::abort();
}

QByteArray read(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The handler of a receiver with an empty list and no job.
MemorySystemHandler& start(bool vuhf) {
    MemorySystemHandler::DeleteInstance();
    Tree::Instance()->GetRoot()->DeleteChildren();
    Tree::Instance()->MakeNode(QStringLiteral("/JEN/Job"));
    MemorySystemHandler& handler = *MemorySystemHandler::Instance();
    handler.SetListType(vuhf ? MediatorType::MemoryVUHF : MediatorType::MemoryHF);
    handler.Init(Tree::Instance()->MakeNode(QStringLiteral("/Lists/Memory")));
    GetOrCreateValue<Value<QString>>(QStringLiteral("/JEN/Job/File"));
    GetOrCreateValue<Value<QString>>(QStringLiteral("/JEN/Job/Data"));
    handler.SetJobfile_ValuePath(QStringLiteral("/JEN/Job/File"));
    handler.SetData4Jobfile_ValuePath(QStringLiteral("/JEN/Job/Data"));
    return handler;
}

} // namespace

/// Jobs: what opens and is saved opens again, however often.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static int argumentCount = 0;
    static const QCoreApplication application(argumentCount, nullptr);
    static const QTemporaryDir folder(QStringLiteral("/dev/shm/fuzz-XXXXXX"));
    const QString given = folder.filePath(QStringLiteral("given.pij"));
    const QString first = folder.filePath(QStringLiteral("first.pij"));
    const QString second = folder.filePath(QStringLiteral("second.pij"));
    QFile file(given);
    require(file.open(QIODevice::WriteOnly));
    file.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size));
    file.close();

    MemorySystemHandler& handler = start(size % 2 == 1);
    if (!handler.OpenJobFile(given) || !handler.SaveJobFile(first))
        return 0;
    require(handler.OpenJobFile(first) && handler.SaveJobFile(second) && handler.OpenJobFile(second));
    QString job = QString::fromUtf8(read(second));
    require(MergeSection(job, handler.GetData4JobFile(), false, given) >= 0);
    return 0;
}
