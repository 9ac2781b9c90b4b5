#include "workstation/safekeeping.h"

#include "host/base/datetime.h"
#include "host/base/problems.h"
#include "host/freqlist/buttonbar.h"
#include "host/freqlist/undohistory.h"
#include "host/valuetree/operatoraction.h"
#include "workstation/actions.h"
#include "workstation/actiontips.h"
#include "workstation/job.h"
#include "workstation/listchanges.h"
#include "workstation/listimport.h"
#include "workstation/mainwindow.h"
#include "workstation/preferences.h"
#include "workstation/recoveryoffer.h"
#include "workstation/versionsdialog.h"

#include <QDir>
#include <QFileInfo>
#include <QMenu>
#include <QTabWidget>

namespace {

constexpr int MillisecondsPerSecond = 1000;

} // namespace

Safekeeping::Safekeeping(MainWindow& window, const ListOwners& owners)
    : m_window(window),
      m_dataFolder(QDir::currentPath()),
      m_owners(owners),
      m_lists(ListFilesOf(owners)),
      m_versions(m_dataFolder),
      m_watch(&window, m_lists),
      m_recovery(m_dataFolder, m_lists),
      m_action(new QAction(tr("&Versions..."), window.GetFileMenu())) {
    addAction();
    Configure();
    m_versions.SetQuestion([this](const QString& path) { return m_watch.AskBeforeSave(path); });
    m_versions.SetFollower(
        [this](const QString& path, const QString& aside) { m_recovery.LetGoWith(path, aside); });
    m_watch.SetMerge([&window](const ListFile& list, const QString& path) {
        return ListImport::Import(window, static_cast<unsigned>(list.id), path);
    });
    connect(&m_watch, &DiskWatch::Told, &window, &MainWindow::Tell);
    connect(&owners.changes, &ListChanges::Changed, this, [this](int id) { m_recovery.NoteChange(id); });
    connect(&owners.job, &Job::Changed, this, [this, memoryId = owners.memoryId] {
        Follow();
        m_recovery.NoteChange(memoryId);
    });
    connect(window.GetTabs(), &QTabWidget::currentChanged, this, &Safekeeping::Follow);
    Follow();
}

const ListFile* Safekeeping::Add(int listId) {
    std::optional<ListFile> list = Find(listId) ? std::nullopt : OtherListFile(m_owners, listId);
    if (!list)
        return nullptr;
    m_lists.push_back(std::move(*list));
    m_recovery.Follow(m_lists.back());
    return &m_lists.back();
}

void Safekeeping::addAction() {
    m_action->setObjectName(QStringLiteral("versions"));
    QMenu* menu = m_window.GetFileMenu();
    menu->insertAction(m_window.GetActions().Get(WindowActions::Import), m_action);
    menu->insertSeparator(m_window.GetActions().Get(WindowActions::Import));
    connect(m_action, &QAction::triggered, this, &Safekeeping::showVersions);
}

void Safekeeping::SetMayAsk(const std::function<bool()>& mayAsk) {
    m_mayAsk = mayAsk;
    m_watch.SetMayAsk(mayAsk);
}

void Safekeeping::Configure() {
    using P = Preferences;
    m_versions.GetStore().SetLimits(
        {P::Get(P::Versions).toInt(), P::Get(P::VersionsSize).toLongLong() * FileVersions::BytesPerMegabyte});
    m_recovery.SetInterval(P::Get(P::RecoverySeconds).toInt() * MillisecondsPerSecond);
}

void Safekeeping::Follow() {
    m_watch.Follow();
    const ListFile* list = shownList();
    m_action->setEnabled(list && !list->file().isEmpty());
    SetTips(*m_action, m_action->isEnabled()
                           ? tr("Show what was saved in the list's file before, and restore it")
                           : tr("The list is in no file yet."));
}

const ListFile* Safekeeping::shownList() const {
    const QWidget* page = m_window.GetTabs()->currentWidget();
    for (const ListFile& list : m_lists) {
        const QWidget* bar = m_window.BarOf(list.id);
        if (page && bar && (page == bar || page->isAncestorOf(bar)))
            return &list;
    }
    return nullptr;
}

void Safekeeping::showVersions() {
    const ListFile* list = shownList();
    if (!list || list->file().isEmpty())
        return;
    std::vector<FileVersions::Version> versions = m_versions.GetStore().Of(list->file());
    if (versions.empty())
        return m_window.Tell(tr("No version of %1 has been kept yet: that begins when it is saved")
                                 .arg(QFileInfo(list->file()).fileName()));
    VersionsDialog dialog(*list, std::move(versions), &m_window);
    if (dialog.exec() == QDialog::Accepted && dialog.GetChosen())
        restore(*list, *dialog.GetChosen());
}

void Safekeeping::restore(const ListFile& list, const FileVersions::Version& version) {
    if (!FileVersions::IsWhole(version))
        return Problems::Report("safekeeping", {version.path, 0, tr("is not what was kept")});
    const OperatorAction action(tr("Restore Version"));
    if (UndoHistory::Instance().DoWhole([&] { return list.takeContent(version.path); }))
        m_window.Tell(tr("%1 is as it was saved on %2 UTC")
                          .arg(list.name, Quor::DateTime(static_cast<quint64>(version.time)).toString(0)));
}

bool Safekeeping::OfferRecovery() {
    RecoveryOffer offer(m_dataFolder, m_lists, m_recovery);
    offer.OpenSaved();
    if (offer.IsEmpty())
        return false;
    if (m_mayAsk && m_mayAsk()) {
        offer.Ask(&m_window);
        return true;
    }
    Problems::Report("safekeeping", {QDir(m_dataFolder).filePath(QLatin1String(RecoveryForm::FolderName)), 0,
                                     tr("holds unsaved work: ") + offer.GetText()});
    return false;
}
