#include "controls/frequencystore/noi/noifrequencyhandler.h"
#include "host/valuetree/tree.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <cstdlib>

namespace {

QByteArray Read(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

/// Files of frequencies of interest of each kind: what was read comes back the same from the written form,
/// and the band list has one band per entry.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static int argumentCount = 0;
    static const QCoreApplication application(argumentCount, nullptr);
    static const QTemporaryDir folder(QStringLiteral("/dev/shm/fuzz-XXXXXX"));
    static Node* const node = Tree::Instance()->MakeNode(QStringLiteral("/Lists/NOI"));
    static const auto* const definition =
        GetOrCreateValue<Value<QString>>(QStringLiteral("/Lists/NoiDefinition"));
    static NOIFrequencyHandler& list = [&]() -> NOIFrequencyHandler& {
        NOIFrequencyHandler* handler = NOIFrequencyHandler::Instance();
        handler->SetRemembersFile(false);
        handler->Init(node);
        handler->SetNOIDefinition_ValuePath(definition->GetPathName());
        return *handler;
    }();

    static const char* const names[] = {"a.noi", "a.noi", "a.csv", "a.xml"};
    const QString given = folder.filePath(QString::fromLatin1(names[size % std::size(names)]));
    QFile file(given);
    if (!file.open(QIODevice::WriteOnly))
        std::abort();
    file.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size));
    file.close();
    if (!list.ReadFile(given))
        return 0;
    if (static_cast<size_t>(definition->GetValue().count(QLatin1Char(';'))) != node->ChildCount())
        std::abort();
    // The first writing turns numbers into six decimals; from then on nothing changes.
    const QString files[] = {folder.filePath(QStringLiteral("1.noi")),
                             folder.filePath(QStringLiteral("2.noi")),
                             folder.filePath(QStringLiteral("3.noi"))};
    for (const QString& path : files) {
        if (!list.SaveFile(path) || !list.ReadFile(path))
            std::abort();
    }
    if (Read(files[1]) != Read(files[2]))
        std::abort();
    return 0;
}
