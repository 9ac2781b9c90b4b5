#include "workstation/listfiles.h"

#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/detections/searchmcrecords.h"
#include "controls/frequencystore/files/filegate.h"
#include "controls/frequencystore/files/filekind.h"
#include "controls/frequencystore/memory/memorysystemhandler.h"
#include "controls/frequencystore/noi/noifrequencyhandler.h"
#include "controls/frequencystore/results/searchmcdatahandler.h"
#include "controls/frequencystore/results/searchmcdatareader.h"
#include "controls/frequencystore/targets/targetlisthandler.h"
#include "host/freqlist/freqstore.h"
#include "host/freqstorexml/liststreams.h"
#include "host/report/readsafely.h"
#include "host/valuetree/operatoraction.h"
#include "host/valuetree/tree.h"
#include "workstation/job.h"
#include "workstation/listchanges.h"
#include "workstation/listwalk.h"
#include "workstation/mainwindow.h"
#include "workstation/simulatedsearch.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QScopeGuard>

#include <algorithm>

namespace {

constexpr char TraceSource[] = "listfiles";

/// A content that is read over a list is not its file: nobody is to take it for that.
template <typename Read>
bool withoutGate(Read read) {
    FileGate::Guard* const before = FileGate::SetGuard(nullptr);
    const auto giveBack = qScopeGuard([before] { FileGate::SetGuard(before); });
    return read();
}

FrequencyNodeMediatorCtrl* controllerOf(int id) {
    return dynamic_cast<FrequencyNodeMediatorCtrl*>(
        FreqStore::Instance().GetFrequencies(static_cast<unsigned>(id)));
}

qint64 countOf(int id) {
    const FrequencyNodeMediatorCtrl* const list = controllerOf(id);
    return list && list->GetNode() ? static_cast<qint64>(list->GetNode()->ChildCount()) : 0;
}

ValueList<DetectionConventional>* detections() {
    return value_cast<ValueList<DetectionConventional>>(
        Tree::Instance()->GetValue(QString::fromLatin1(SimulatedSearch::DetectionsPath)));
}

bool takeNoi(const QString& path) {
    NOIFrequencyHandler& list = *NOIFrequencyHandler::Instance();
    const bool waited = list.IsWaitingForFile();
    const bool isRead = PathContains(path, ".xml") || PathContains(path, ".csv") ? list.ParseNOIXmlFile(path)
                                                                                 : list.ParseNOIFile(path);
    if (!isRead && !waited && list.GetMediatorCtrl())
        list.GetMediatorCtrl()->Suspend(false); // it goes on with what it had
    return isRead;
}

bool takeDetections(SimulatedSearch& search, const QString& path) {
    std::list<DetectionConventional> records;
    const auto read = [&] {
        SearchMC::ReadFile(path, records);
        return true;
    };
    if (!REPORTGENERATOR::ReadSafely(TraceSource, path, read,
                                     [] { return REPORTGENERATOR::DroppedEntries(); }))
        return false;
    const OperatorAction action(QCoreApplication::translate("RecoveryOffer", "Restore"));
    search.Clear();
    search.Add(std::move(records));
    return true;
}

/// Gives a list the entries of a file, as it makes entries that are pasted.
bool takeEntries(int id, const QString& path) {
    QVector<FreqStoreXml::FrequencyStoreEntry> entries;
    const auto read = [&] {
        FreqStoreXml::ReadXml(path,
                              [&](const FreqStoreXml::FrequencyStoreEntry& entry) { entries.append(entry); });
        return true;
    };
    FrequencyNodeMediatorCtrl* const list = controllerOf(id);
    if (!list || !list->GetNode() || !REPORTGENERATOR::ReadSafely(TraceSource, path, read, [] {
            return REPORTGENERATOR::DroppedEntries();
        }))
        return false;
    const OperatorAction action(QCoreApplication::translate("RecoveryOffer", "Restore"));
    list->GetNode()->DeleteChildren();
    list->AppendEntries(entries);
    return true;
}

/// A list of entries, as the window and the store know it.
ListFile listOf(const ListOwners& owners, int id, const QString& key) {
    ListChanges& changes = owners.changes;
    const IFrequencyListDefinition* const definition = FreqStore::Instance().GetDefinition(id);
    ListFile list;
    list.id = id;
    list.key = key;
    list.name = definition ? definition->GetName() : key;
    list.suffix = QStringLiteral(".xml");
    list.file = [&window = owners.window, id] {
        const QString file = window.FileOf(id);
        return file.isEmpty() ? file : QFileInfo(file).absoluteFilePath();
    };
    list.count = [id] { return countOf(id); };
    list.isUnsaved = [&changes, id] { return changes.IsChanged(id); };
    list.markChanged = [&changes, id] { changes.MarkChanged(id); };
    list.open = owners.open;
    list.entries = [id]() -> std::unique_ptr<EntrySource> {
        FrequencyNodeMediatorCtrl* const entries = controllerOf(id);
        return entries && !entries->IsSuspended() ? EntriesOf(*entries) : nullptr;
    };
    return list;
}

ListFile jobOf(const ListOwners& owners) {
    Job& job = owners.job;
    ListFile list = listOf(owners, owners.memoryId, QStringLiteral("job"));
    list.suffix = QStringLiteral(".pij");
    list.isUnsaved = [&job] { return job.IsModified(); };
    list.markChanged = [&job] { job.MarkChanged(); };
    list.writeCopy = [&job](const QString& path) { return job.SaveCopy(path); };
    list.takeContent = [&job](const QString& path) { return job.TakeContent(path); };
    list.leaveFile = [&job] { job.LeaveFile(); };
    list.text = [&job] { return job.TextToSave(); };
    list.entries = {};
    return list;
}

/// Detections are in a file as they were when it was written: none is the list's own.
ListFile detectionsOf(const ListOwners& owners) {
    ListFile list = listOf(owners, owners.detectionsId, QStringLiteral("detections"));
    list.count = [] { return detections() ? static_cast<qint64>(detections()->Size()) : 0; };
    list.takeContent = [&search = owners.search](const QString& path) {
        return takeDetections(search, path);
    };
    list.entries = []() -> std::unique_ptr<EntrySource> {
        return detections() ? EntriesOf(*detections()) : nullptr;
    };
    return list;
}

} // namespace

ListFiles ListFilesOf(const ListOwners& owners) {
    ListFile targets = listOf(owners, owners.targetsId, QStringLiteral("targets"));
    targets.writeCopy = [](const QString& path) { return TargetListHandler::Instance()->SaveFile(path); };
    targets.takeContent = [](const QString& path) {
        return withoutGate([&] { return TargetListHandler::Instance()->ReadFile(path); });
    };
    targets.leaveFile = [] { FileGate::WasWritten(FileGate::List::Targets, QString()); };
    ListFile noi = listOf(owners, owners.noiId, QStringLiteral("noi"));
    noi.writeCopy = [](const QString& path) { return NOIFrequencyHandler::Instance()->SaveFile(path); };
    noi.takeContent = [](const QString& path) { return withoutGate([&] { return takeNoi(path); }); };
    ListFile results = listOf(owners, owners.resultsId, QStringLiteral("results"));
    results.writeCopy = [id = owners.resultsId](const QString& path) {
        FrequencyNodeMediatorCtrl* const list = controllerOf(id);
        return list && list->SaveFrequencies(path);
    };
    results.takeContent = [](const QString& path) {
        return SearchMCDataReader(*SearchMCDataHandler::Instance()->GetMediatorCtrl()).ReadFile(path);
    };
    return {targets, noi, jobOf(owners), results, detectionsOf(owners)};
}

std::optional<ListFile> OtherListFile(const ListOwners& owners, int id) {
    const FrequencyNodeMediatorCtrl* const entries = controllerOf(id);
    if (!entries || !entries->GetNode())
        return std::nullopt;
    ListFile list = listOf(owners, id, entries->GetNode()->GetPathName());
    list.writeCopy = [id](const QString& path) {
        FrequencyNodeMediatorCtrl* const written = controllerOf(id);
        return written && written->SaveFrequencies(path);
    };
    list.takeContent = [id](const QString& path) { return takeEntries(id, path); };
    list.open = [id, &window = owners.window, &changes = owners.changes](const QString& path) {
        if (!takeEntries(id, path))
            return false;
        window.SetFileOf(id, path);
        changes.MarkSaved(id);
        return true;
    };
    return list;
}

const ListFile* FindListFile(const ListFiles& lists, int id) {
    const auto found = std::ranges::find(lists, id, &ListFile::id);
    return found == lists.end() ? nullptr : &*found;
}
