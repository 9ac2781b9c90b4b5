#include "controls/frequencystore/common/paths.h"
#include "controls/frequencystore/noi/noifrequencyhandler.h"
#include "controls/frequencystore/results/searchmcdatahandler.h"
#include "controls/frequencystore/targets/targetlisthandler.h"
#include "host/base/problems.h"
#include "host/freqlist/buttonbar.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencynodemediatorctrl.h"
#include "host/freqstorexml/filehandling.h"
#include "host/gui/listsettings.h"
#include "host/report/outputfile.h"
#include "host/valuetree/tree.h"
#include "workstation/application.h"
#include "workstation/applicationkeys.h"
#include "workstation/failurenote.h"
#include "workstation/fileopener.h"
#include "workstation/frequencybar.h"
#include "workstation/job.h"
#include "workstation/jobpanel.h"
#include "workstation/listchanges.h"
#include "workstation/mainwindow.h"
#include "workstation/sharing.h"
#include "workstation/simulatedclassifier.h"
#include "workstation/unsavedwork.h"

#include <QFileInfo>
#include <QMessageBox>
#include <QTimer>

namespace {

/// Whether targets written there are what is read there: no table of profiles, nor lines whose columns change
/// places.
bool holdsTargets(const QString& file) {
    return !file.isEmpty() && !file.contains(QLatin1String(".sfl")) &&
           (!file.contains(QLatin1String(".xml")) || FreqStoreXml::FileHandling().IsValidFormat(file));
}

} // namespace

/// The lists that hold an operator's work: whether that is in their files, and how it gets there. What a
/// search finds is none, nor what a classifier writes; detections that the operator adds to it are.
void Workstation::connectLists() {
    m_work = std::make_unique<UnsavedWork>(m_window.get());
    for (const int id : {m_targetsId, m_noiId})
        m_changes->Follow(id);
    m_changes->Follow(m_resultsId, [this] { return m_classifier->IsRunning(); });
    QObject::connect(m_changes.get(), &ListChanges::Changed, m_window.get(),
                     [this](int id) { m_window->SetUnsaved(id, m_changes->IsChanged(id)); });
    const auto isChanged = [this](int id) { return [this, id] { return m_changes->IsChanged(id); }; };
    addWork(m_targetsId, Paths::Targets, isChanged(m_targetsId), [this] { return saveTargets(); });
    addWork(
        m_memoryId, Paths::MemoryChannels, [this] { return m_job->HasUnsavedChanges(); },
        [this] { return m_jobPanel->Save() ? m_job->GetFileName() : QString(); });
    // Where the list of interest is remembered it is kept by itself.
    addWork(
        m_noiId, Paths::Noi, [this] { return !remembers() && m_changes->IsChanged(m_noiId); },
        [] {
            NOIFrequencyHandler& list = *NOIFrequencyHandler::Instance();
            return list.FileSave(!list.GetCurrentFileName().isEmpty());
        });
    addWork(m_resultsId, Paths::Results, isChanged(m_resultsId),
            [] { return SearchMCDataHandler::Instance()->SaveToFile(false); });
    QObject::connect(&FreqStore::Instance(), &FreqStore::ListSaved, m_changes.get(), &ListChanges::MarkSaved);
    QObject::connect(m_window.get(), &MainWindow::EntryEdited, m_window.get(), [](int id) {
        if (auto* list = dynamic_cast<FrequencyNodeMediatorCtrl*>(
                FreqStore::Instance().GetFrequencies(static_cast<unsigned>(id))))
            list->EntriesWereEdited();
    });
}

/// Into the file that the list shows, or into another one.
QString Workstation::saveTargets() {
    TargetListHandler& list = *TargetListHandler::Instance();
    const QString file = m_opener->FileOf(FileGate::List::Targets);
    if (!holdsTargets(file))
        return list.Save2File(false);
    return list.SaveAsOwn(file) ? file : QString();
}

void Workstation::addWork(int listId, const QString& nodePath, std::function<bool()> isUnsaved,
                          std::function<QString()> save) {
    m_work->Add({.listId = listId,
                 .isUnsaved = std::move(isUnsaved),
                 .count =
                     [nodePath] {
                         const Node* list = Tree::Instance()->GetNode(nodePath);
                         return list ? static_cast<qint64>(list->ChildCount()) : 0;
                     },
                 .file = [this, listId] { return m_window->FileOf(listId); },
                 .save = std::move(save)});
    setSaver(listId);
}

/// Ctrl+S saves the list as the question at the end does.
void Workstation::setSaver(int listId) {
    m_window->SetSaver(listId, [this, listId] {
        if (const QString path = m_work->Save(listId); !path.isEmpty())
            m_window->Tell(MainWindow::tr("Saved in %1").arg(QFileInfo(path).fileName()));
    });
}

/// Of a list that stands in a file of its own.
int Workstation::idOf(FileGate::List list) const {
    const std::map<FileGate::List, int> ids = {{FileGate::List::Targets, m_targetsId},
                                               {FileGate::List::Noi, m_noiId},
                                               {FileGate::List::Results, m_resultsId}};
    return ids.at(list);
}

/// Asked before another file takes the place of what a list holds: the end of the program asks no more.
bool Workstation::mayLeave(FileGate::List list) {
    const int id = idOf(list);
    if (!m_changes->IsChanged(id))
        return true;
    QMessageBox box(QMessageBox::Question, MainWindow::tr("Unsaved Work"),
                    MainWindow::tr("%1 has unsaved changes. Save them?")
                        .arg(FreqStore::Instance().GetDefinition(id)->GetName()),
                    QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, m_window.get());
    box.setInformativeText(MainWindow::tr("Undo brings them back, but only until the program ends."));
    box.setDefaultButton(QMessageBox::Save);
    const int answer = box.exec();
    return answer == QMessageBox::Discard || (answer == QMessageBox::Save && !m_work->Save(id).isEmpty());
}

/// A list shows another file now, or stands in one.
void Workstation::fileChanged(FileGate::List list) {
    const QString file = m_opener->FileOf(list);
    const int id = idOf(list);
    if (list == FileGate::List::Targets && TargetListHandler::Instance()->IsClient() && !file.isEmpty())
        return m_opener->SetFileOf(list, QString()); // a copy: the list stands in no file here
    m_window->SetFileOf(id, file);
    m_changes->MarkSaved(id);
    const auto* entries = dynamic_cast<FrequencyNodeMediatorCtrl*>(
        FreqStore::Instance().GetFrequencies(static_cast<unsigned>(id)));
    if (file.isEmpty() && entries && entries->size() > 0) // they came from a file that is not the list's
        m_changes->MarkChanged(id);
    if (list == FileGate::List::Targets)
        TargetListHandler::Instance()->NoteFile(file);
    m_window->GetBar()->FitAll();
    noteFile(file);
    if (m_sharing)
        m_sharing->NoteFile(id);
    if (remembers() && list == FileGate::List::Targets && !TargetListHandler::Instance()->IsClient())
        ListSettings::SaveText(SettingKeys::TargetsFile, file);
    resolveWriteFailure(file);
}

void Workstation::offerSaveToJob() {
    const QString& file = m_job->GetFileName();
    const Job::FileState state = m_job->GetFileState();
    m_window->SetUnsaved(m_memoryId, m_job->IsModified());
    if (!file.isEmpty() && file != m_window->FileOf(m_memoryId)) {
        noteFile(file);
        if (remembers())
            ListSettings::SaveText(SettingKeys::JobFile, file);
    }
    m_window->SetFileOf(m_memoryId, file);
    if (FreqStoreListViewButtonBar* bar = m_window->BarOf(m_memoryId))
        bar->SetWhyOff(FreqStoreListViewButtonBar::SaveToJob,
                       file.isEmpty() ? MainWindow::tr("No job is open.") : QString());
    if (!file.isEmpty() && state == Job::FileState::Same)
        resolveWriteFailure(file);
    if (m_sharing)
        m_sharing->NoteFile(m_memoryId);
}

/// Writers note their failure and tell it, in either order.
void Workstation::showWriteFailure() {
    if (!m_window) // its end tells what was gathered
        return;
    QTimer::singleShot(0, m_window.get(), [this] {
        if (const std::optional<Problem>& failure = REPORTGENERATOR::LastWriteFailure())
            m_window->GetFailureNote()->Show(MainWindow::tr("Not saved: ") + failure->ToString());
    });
}

/// The file has been written, or holds what is shown.
void Workstation::resolveWriteFailure(const QString& path) {
    const std::optional<Problem>& failure = REPORTGENERATOR::LastWriteFailure();
    if (!failure || QFileInfo(failure->file).absoluteFilePath() != QFileInfo(path).absoluteFilePath())
        return;
    REPORTGENERATOR::ForgetWriteFailure();
    m_window->GetFailureNote()->Show(QString());
}
