#include "controls/frequencystore/noi/noifrequencyhandler.h"
#include "controls/frequencystore/targets/targetlisthandler.h"
#include "host/base/problems.h"
#include "host/freqlist/buttonbar.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencynodemediatorctrl.h"
#include "host/freqlist/listsaving.h"
#include "host/gui/guibase.h"
#include "host/startup/settingsfile.h"
#include "workstation/application.h"
#include "workstation/directorylock.h"
#include "workstation/ending.h"
#include "workstation/fileopener.h"
#include "workstation/job.h"
#include "workstation/listchanges.h"
#include "workstation/mainwindow.h"
#include "workstation/preferences.h"
#include "workstation/safekeeping.h"
#include "workstation/sharing.h"
#include "workstation/simulatedsearch.h"
#include "workstation/unsavedwork.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMessageBox>

/// Settings belong to the first window; those of a second one end with it.
void Workstation::lockSettings(const QString& config) {
    if (m_options.screenshotDirectory.isEmpty())
        m_settingsLock = std::make_unique<DirectoryLock>(config);
    SettingsFile::KeepInMemory(m_settingsLock && !m_settingsLock->GetOther().isEmpty());
}

void Workstation::lockData(const QString& config) {
    if (m_options.screenshotDirectory.isEmpty() && QFileInfo(config) != QFileInfo(QDir::currentPath()))
        m_lock = std::make_unique<DirectoryLock>(QDir::currentPath());
}

/// Whether another window has the lists' own files.
bool Workstation::isShared() const {
    const DirectoryLock* lock = m_lock ? m_lock.get() : m_settingsLock.get();
    return lock && !lock->GetOther().isEmpty();
}

/// Two windows that share a directory work on; what the first one keeps by itself is not overwritten.
void Workstation::tellShared() {
    if (!isShared())
        return;
    const QString directory = QDir::currentPath();
    const QString text =
        MainWindow::tr("is also used by %1: the frequencies of interest and the settings there are left "
                       "alone, and a file that it changes is not overwritten unasked")
            .arg((m_lock ? m_lock : m_settingsLock)->GetOther());
    m_window->AddNote(MainWindow::tr("Shared data directory"), directory + QLatin1Char(' ') + text);
    Problems::Report("application", {directory, 0, text});
}

/// A second window has the first one's frequencies of interest, and saves changes of them in a file of its
/// own.
void Workstation::leaveNoiFile() {
    NOIFrequencyHandler& list = *NOIFrequencyHandler::Instance();
    if (!isShared() || !remembers() || list.GetCurrentFileName().isEmpty())
        return;
    const QFileInfo file(list.GetCurrentFileName());
    list.SetRemembersFile(false);
    // Lines, since an XML file that is not there yet would be taken for none of the list's.
    list.SetCurrentFileName(file.dir().filePath(
        QStringLiteral("%1-window-%2.noi").arg(file.baseName()).arg(QCoreApplication::applicationPid())));
}

std::unique_ptr<NoiKeeper> Workstation::makeNoiKeeper() {
    auto keeper = std::make_unique<NoiKeeper>(m_window.get(), m_window->GetBands());
    if (isShared())
        keeper->SetNeed([this] { return m_changes->IsChanged(m_noiId); });
    return keeper;
}

void Workstation::addSafekeeping() {
    if (!m_options.screenshotDirectory.isEmpty())
        return;
    const auto open = [this](const QString& path) {
        return path == m_job->GetFileName() ? m_job->Open(path) : m_opener->OpenInPlace(path);
    };
    m_safekeeping = std::make_unique<Safekeeping>(
        *m_window, ListOwners{*m_window, *m_changes, *m_job, *m_search, m_targetsId, m_noiId, m_memoryId,
                              m_resultsId, m_detectionIds.front(), open});
    m_safekeeping->SetMayAsk(
        [this] { return m_isAttended && !m_ending->IsEnding() && !qGuiApp->isSavingSession(); });
    QObject::connect(m_opener.get(), &FileOpener::FileChanged, m_safekeeping.get(), &Safekeeping::Follow);
    QObject::connect(m_preferences.get(), &Preferences::Changed, m_safekeeping.get(),
                     &Safekeeping::Configure);
    m_ending->SetRecovery([this] {
        m_job->HasUnsavedChanges(); // takes the present channels in
        return !m_safekeeping || m_safekeeping->GetRecovery().WriteNow();
    });
    keepOtherLists();
}

/// Detections, and lists that the program does not know: what the operator does to them is kept and asked
/// about like that of any list.
void Workstation::keepOtherLists() {
    if (const ListFile* list = m_safekeeping->Find(m_detectionIds.front()))
        keepStepsOf(*list);
    const auto keep = [this](int id) {
        const auto* entries = dynamic_cast<FrequencyNodeMediatorCtrl*>(
            FreqStore::Instance().GetFrequencies(static_cast<unsigned>(id)));
        if (entries && entries->GetNode() && Sharing::IsOfOthers(*entries->GetNode()))
            return; // the seat that serves it keeps it
        if (const ListFile* list = m_safekeeping->Add(id))
            keepStepsOf(*list);
    };
    for (const int id : FreqStore::Instance().GetListIds())
        keep(id);
    QObject::connect(&FreqStore::Instance(), &FreqStore::ListAdded, m_safekeeping.get(), keep);
}

void Workstation::keepStepsOf(const ListFile& list) {
    m_changes->FollowSteps(list.id, list.count);
    m_work->Add({.listId = list.id,
                 .isUnsaved = list.isUnsaved,
                 .count = list.count,
                 .file = list.file,
                 .save = [this, &list] { return saveKept(list); }});
    const FreqStoreListViewButtonBar* bar = m_window->BarOf(list.id);
    if (!bar || !bar->Offers(FreqStoreListViewButtonBar::Save))
        setSaver(list.id);
}

/// By the list's own action where it has one, else as frequency-store XML.
QString Workstation::saveKept(const ListFile& list) {
    if (FreqStoreListViewButtonBar* bar = m_window->BarOf(list.id);
        bar && bar->Offers(FreqStoreListViewButtonBar::Save)) {
        QString saved;
        const auto connection =
            QObject::connect(&FreqStore::Instance(), &FreqStore::ListSaved, m_window.get(), [&](int id) {
                if (id == list.id)
                    saved = list.name;
            });
        bar->GetAction(FreqStoreListViewButtonBar::Save)->trigger();
        QObject::disconnect(connection);
        return saved;
    }
    QString file = list.file();
    if (file.isEmpty())
        file = QFileDialog::getSaveFileName(m_window.get(), MainWindow::tr("Save %1 As").arg(list.name),
                                            GuiBase::Instance().GetCurrentDirectory(),
                                            MainWindow::tr("XML Lists") + QStringLiteral(" (*.xml)"), nullptr,
                                            GuiBase::Instance().UseNativeDialogs());
    if (file.isEmpty())
        return file;
    if (!file.contains(list.suffix)) {
        file += list.suffix;
        if (QFileInfo::exists(file) && // the dialog has asked about another name
            QMessageBox::question(
                m_window.get(), MainWindow::tr("Save %1 As").arg(list.name),
                MainWindow::tr("%1 is there already. Replace it?").arg(QFileInfo(file).fileName())) !=
                QMessageBox::Yes)
            return QString();
    }
    if (!ListSaving::Do(list.id, [&] { return list.writeCopy(file); }))
        return QString();
    m_window->SetFileOf(list.id, file);
    m_changes->MarkSaved(list.id);
    m_safekeeping->Follow();
    resolveWriteFailure(file);
    return file;
}

bool Workstation::OfferRecovery() {
    TargetListHandler::Instance()->SetClientServer(false); // what is restored is this seat's own
    return !m_safekeeping || !m_safekeeping->OfferRecovery();
}
