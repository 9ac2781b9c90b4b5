#include "controls/frequencystore/common/paths.h"
#include "controls/frequencystore/memory/memorysystemhandler.h"
#include "controls/frequencystore/targets/targetlisthandler.h"
#include "host/base/problems.h"
#include "host/freqlist/buttonbar.h"
#include "host/freqlist/undohistory.h"
#include "host/valuetree/tree.h"
#include "workstation/application.h"
#include "workstation/fileopener.h"
#include "workstation/frequencybar.h"
#include "workstation/job.h"
#include "workstation/listchanges.h"
#include "workstation/mainwindow.h"
#include "workstation/sharecommands.h"
#include "workstation/sharing.h"
#include "workstation/simulatedsearch.h"
#include "workstation/unsavedwork.h"

#include <QMessageBox>
#include <QUndoStack>

void Workstation::addSharing() {
    const auto own = [this](const char* kind, int listId, QLatin1String node, std::function<bool()> isSaved) {
        return Sharing::Own{FindShareKind(QString::fromLatin1(kind)), listId,
                            Tree::Instance()->MakeNode(node),
                            [this, listId] { return m_window->FileOf(listId); }, std::move(isSaved)};
    };
    const auto isSaved = [this](int id) { return [this, id] { return !m_changes->IsChanged(id); }; };
    const char* const memory = MemorySystemHandler::Instance()->IsVUHF() ? "memory-vuhf" : "memory-hf";
    const auto records = [](const char* kind, int listId, const char* path) {
        return Sharing::Own{FindShareKind(QString::fromLatin1(kind)),
                            listId,
                            nullptr,
                            {},
                            {},
                            Tree::Instance()->GetValue(QString::fromLatin1(path))};
    };
    const char* const classified =
        m_options.receiver == ReceiverKind::VUHF ? "detections-vuhf" : "detections-hf";
    m_sharing = std::make_unique<Sharing>(std::vector<Sharing::Own>{
        own("target", m_targetsId, Paths::Targets, isSaved(m_targetsId)),
        own("noi", m_noiId, Paths::Noi, isSaved(m_noiId)),
        own(memory, m_memoryId, Paths::MemoryChannels, [this] { return !m_job->IsModified(); }),
        records("detections", m_detectionIds[0], SimulatedSearch::DetectionsPath),
        records(classified, m_detectionIds[1], SimulatedSearch::ClassifiedPath)});
    QObject::connect(m_sharing.get(), &Sharing::Began, m_window.get(), [this] { beginSharing(); });
    QObject::connect(m_sharing.get(), &Sharing::Ended, m_window.get(),
                     [this](bool mirrored) { endSharing(mirrored); });
    QObject::connect(m_sharing.get(), &Sharing::RightsChanged, m_window.get(),
                     [this](int listId) { followRights(listId); });
    // What could be undone is not in the site's list.
    QObject::connect(m_sharing.get(), &Sharing::Mirrored, m_window.get(), [this] {
        UndoHistory::Instance().Stack().clear();
        m_window->GetBar()->FitAll();
    });
    m_shareCommands = std::make_unique<ShareCommands>(*m_sharing, *m_window, remembers());
    m_shareCommands->SetMayBecomeClient([this] { return mayBecomeClient(); });
    m_shareCommands->SetMayAsk([this] { return m_isAttended; });
}

/// The site of the command line, else the one of the settings.
ShareProfile Workstation::shareAtStart() const {
    if (!m_options.share.url.isEmpty() || !remembers())
        return m_options.share;
    return ShareProfile::AtStart();
}

void Workstation::BeginSharing() {
    if (const ShareProfile profile = shareAtStart(); !profile.url.isEmpty())
        m_shareCommands->Connect(profile);
}

/// The site's targets take the place of those that are shown.
bool Workstation::mayBecomeClient() {
    if (!m_changes->IsChanged(m_targetsId))
        return true;
    const QString text = MainWindow::tr("The targets are not saved, and those of the site take their place.");
    if (!m_isAttended) {
        Problems::Report("sharing", {MainWindow::tr("Share"), 0, text});
        return false;
    }
    QMessageBox box(QMessageBox::Question, MainWindow::tr("Share"), text,
                    QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, m_window.get());
    const int answer = box.exec();
    return answer == QMessageBox::Save ? !m_work->Save(m_targetsId).isEmpty()
                                       : answer == QMessageBox::Discard;
}

/// No file, and nothing that follows one, is the list's as long as the site has it.
void Workstation::beginSharing() {
    TargetListHandler& targets = *TargetListHandler::Instance();
    m_ownTargets = m_opener->FileOf(FileGate::List::Targets);
    targets.SetClientServer(m_sharing->IsClient());
    if (!targets.IsClient())
        return;
    m_changes->SetFollowed(m_targetsId, false);
    m_opener->SetFileOf(FileGate::List::Targets, QString());
}

/// What the site had stays, as a list that is in no file.
void Workstation::endSharing(bool mirrored) {
    TargetListHandler& targets = *TargetListHandler::Instance();
    const bool wasClient = targets.IsClient();
    targets.SetClientServer(false);
    targets.SetWhyNoEditing(QString());
    if (!wasClient)
        return;
    m_changes->SetFollowed(m_targetsId, true);
    targets.NoteFile(QString());
    if (!mirrored)
        m_opener->SetFileOf(FileGate::List::Targets, m_ownTargets);
    else if (targets.GetItemsRoot()->ChildCount() > 0)
        m_changes->MarkChanged(m_targetsId);
}

void Workstation::followRights(int listId) {
    if (listId == m_targetsId) {
        const QString reason = m_sharing->WhyNoEditing(listId);
        TargetListHandler::Instance()->SetWhyNoEditing(
            reason.isEmpty() ? reason : MainWindow::tr("The targets are those of a site: %1.").arg(reason));
    }
    if (FreqStoreListViewButtonBar* bar = m_window->BarOf(listId))
        bar->SetNote(m_sharing->WhyOld(listId));
    m_window->GetActions().Refresh();
}

/// A client's targets are read by their server alone.
bool Workstation::readTargets(const QString& path) {
    TargetListHandler& targets = *TargetListHandler::Instance();
    if (!targets.IsClient())
        return targets.ReadFile(path);
    Problems::Report("sharing", {path, 0,
                                 MainWindow::tr("is not read: the targets are those of a site, whose server "
                                                "alone reads files")});
    return false;
}
