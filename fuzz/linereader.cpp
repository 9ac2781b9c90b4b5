#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/targets/targetlistparser.h"
#include "host/report/rgexception.h"
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

bool Parse(TargetListParser& list, const QString& path) {
    try {
        return list.ParseSFLFile(path);
    } catch (const RGException&) {
        return false;
    }
}

} // namespace

/// Target list lines of both orders and profile tables: what was read comes back the same from the written
/// form.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static int argumentCount = 0;
    static const QCoreApplication application(argumentCount, nullptr);
    static const QTemporaryDir folder(QStringLiteral("/dev/shm/fuzz-XXXXXX"));
    static Node* const node = Tree::Instance()->MakeNode(QStringLiteral("/Lists/Targets"));
    static TargetListParser list(node);

    const QString given = folder.filePath(size % 2 ? QStringLiteral("a.ltl") : QStringLiteral("a.sfl"));
    QFile file(given);
    if (!file.open(QIODevice::WriteOnly))
        std::abort();
    file.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size));
    file.close();
    if (!Parse(list, given))
        return 0;
    const QString first = folder.filePath(QStringLiteral("first.ltl"));
    const QString second = folder.filePath(QStringLiteral("second.ltl"));
    const unsigned long count = node->ChildCount();
    if (!list.SaveFile(first))
        std::abort();
    if (count > 0 && (!Parse(list, first) || !list.SaveFile(second) || Read(first) != Read(second)))
        std::abort();
    node->DeleteChildren();
    list.GetMediatorCtrl()->ForceUpdateNow();
    return 0;
}
