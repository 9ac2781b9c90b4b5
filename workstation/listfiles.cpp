#include "workstation/listfiles.h"

#include "controls/frequencystore/files/filegate.h"
#include "controls/frequencystore/files/filekind.h"
#include "controls/frequencystore/memory/memorysystemhandler.h"
#include "controls/frequencystore/noi/noifrequencyhandler.h"
#include "controls/frequencystore/targets/targetlisthandler.h"
#include "host/valuetree/node.h"
#include "workstation/job.h"
#include "workstation/listchanges.h"
#include "workstation/mainwindow.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QScopeGuard>

#include <algorithm>

namespace {

/// A content that is read over a list is not its file: nobody is to take it for that.
template <typename Read>
bool withoutGate(Read read) {
    FileGate::Guard* const before = FileGate::SetGuard(nullptr);
    const auto giveBack = qScopeGuard([before] { FileGate::SetGuard(before); });
    return read();
}

qint64 countOf(const Node* node) {
    return node ? static_cast<qint64>(node->ChildCount()) : 0;
}

bool takeNoi(const QString& path) {
    NOIFrequencyHandler& list = *NOIFrequencyHandler::Instance();
    return PathContains(path, ".xml") || PathContains(path, ".csv") ? list.ParseNOIXmlFile(path)
                                                                    : list.ParseNOIFile(path);
}

} // namespace

ListFiles ListFilesOf(const ListOwners& owners) {
    const auto fileOf = [&window = owners.window](int id) {
        return [&window, id] {
            const QString file = window.FileOf(id);
            return file.isEmpty() ? file : QFileInfo(file).absoluteFilePath();
        };
    };
    const auto isChanged = [&changes = owners.changes](int id) {
        return [&changes, id] { return changes.IsChanged(id); };
    };
    Job& job = owners.job;
    return {
        {owners.targetsId, QStringLiteral("targets"),
         QCoreApplication::translate("FileOpener", "Local TargetList"), QStringLiteral(".xml"),
         fileOf(owners.targetsId), [] { return countOf(TargetListHandler::Instance()->GetItemsRoot()); },
         isChanged(owners.targetsId),
         [](const QString& path) { return TargetListHandler::Instance()->SaveFile(path); },
         [](const QString& path) {
             return withoutGate([&] { return TargetListHandler::Instance()->ReadFile(path); });
         }},
        {owners.noiId, QStringLiteral("noi"), QCoreApplication::translate("FileOpener", "NOI Frequencies"),
         QStringLiteral(".xml"), fileOf(owners.noiId),
         [] { return countOf(NOIFrequencyHandler::Instance()->GetItemsRoot()); }, isChanged(owners.noiId),
         [](const QString& path) { return NOIFrequencyHandler::Instance()->SaveFile(path); },
         [](const QString& path) { return withoutGate([&] { return takeNoi(path); }); }},
        {owners.memoryId, QStringLiteral("job"), QCoreApplication::translate("FileOpener", "Memory Channels"),
         QStringLiteral(".pij"), fileOf(owners.memoryId),
         [] { return countOf(MemorySystemHandler::Instance()->GetItemsRoot()); },
         [&job] { return job.IsModified(); }, [&job](const QString& path) { return job.SaveCopy(path); },
         [&job](const QString& path) { return job.TakeContent(path); }, [&job] { return job.TextToSave(); }},
    };
}

const ListFile* FindListFile(const ListFiles& lists, int id) {
    const auto found = std::ranges::find(lists, id, &ListFile::id);
    return found == lists.end() ? nullptr : &*found;
}
