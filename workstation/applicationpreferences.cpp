#include "host/base/problems.h"
#include "host/gui/guibase.h"
#include "host/widgets/frequencyfield.h"
#include "workstation/application.h"
#include "workstation/filedrop.h"
#include "workstation/fileopener.h"
#include "workstation/foreignimport.h"
#include "workstation/frequencybar.h"
#include "workstation/helpwindow.h"
#include "workstation/keysettings.h"
#include "workstation/mainwindow.h"
#include "workstation/messagespanel.h"
#include "workstation/preferences.h"
#include "workstation/preferencesdialog.h"
#include "workstation/sharing.h"
#include "workstation/simulatedclassifier.h"
#include "workstation/simulatedsearch.h"
#include "workstation/tuningstrip.h"
#include "workstation/welcome.h"

#include <QDir>
#include <QFileInfo>
#include <QMenuBar>
#include <QStandardPaths>
#include <QTabWidget>

/// That of the command line, else that of the preferences, else the usual one.
QString Workstation::dataDirectory() const {
    if (!m_options.dataDirectory.isEmpty())
        return QFileInfo(m_options.dataDirectory).absoluteFilePath();
    const QString preferred = Preferences::DataFolder();
    if (QDir::isAbsolutePath(preferred) && QFileInfo(preferred).isDir())
        return preferred;
    if (!preferred.isEmpty())
        Problems::Report("application",
                         {preferred, 0, MainWindow::tr("is no folder; the usual data folder is taken")});
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
}

/// Once all menus stand.
void Workstation::addPreferences() {
    m_preferences->SetWindow(*m_window);
    m_window->SetPreferences([this] { PreferencesDialog(*m_preferences, *m_keys, m_window.get()).exec(); });
    m_keys = new KeySettings(*m_window->menuBar(), m_window.get());
    QObject::connect(new FileDrop(*m_window), &FileDrop::Dropped, m_window.get(),
                     [this](const QStringList& paths) { openAll(paths); });
    QObject::connect(m_window.get(), &MainWindow::WelcomeWanted, m_window.get(), [this] { welcome(); });
}

void Workstation::askAndOpen() {
    const QString path = QFileDialog::getOpenFileName(
        m_window.get(), MainWindow::tr("Open File"), GuiBase::Instance().GetCurrentDirectory(),
        KnownFilesFilter(), nullptr, GuiBase::Instance().UseNativeDialogs());
    if (!path.isEmpty())
        openFile(path);
}

bool Workstation::openFile(const QString& path) {
    const bool opened = m_opener->Open(path);
    if (opened)
        noteFile(path);
    return opened;
}

/// A file of another program goes where the operator says; with nobody there, it becomes the list of targets.
bool Workstation::importFile(const QString& path) {
    const ForeignSource source(path);
    if (!m_isAttended)
        return ForeignImport::Take(*m_window, source, {static_cast<unsigned>(m_targetsId), true});
    ForeignPlan plan =
        ForeignImport::Propose(static_cast<unsigned>(m_window->ShownList()), ForeignImport::Way::Open);
    // What stands in no file is hardly to be given up.
    plan.replaces = plan.replaces && !m_window->FileOf(static_cast<int>(plan.listId)).isEmpty();
    return ForeignImport::Ask(*m_window, source, plan);
}

/// Each by whoever knows its kind; what was refused is told.
void Workstation::openAll(const QStringList& paths) {
    bool good = true;
    for (const QString& path : paths)
        good = openFile(path) && good;
    if (!good)
        m_window->ShowMessages(true);
}

void Workstation::WelcomeAtFirstStart() {
    if (remembers() && m_options.files.isEmpty() && m_options.jobFile.isEmpty() &&
        shareAtStart().url.isEmpty() && WelcomePage::IsWanted())
        welcome();
}

void Workstation::welcome() {
    if (m_window->findChild<WelcomePage*>())
        return;
    auto* page = new WelcomePage(*m_window->GetTabs());
    const auto start = [this] {
        m_search->SetRunning(true);
        m_window->GetBar()->FitAll();
    };
    QObject::connect(page, &WelcomePage::SamplesWanted, m_window.get(), [this, start] {
        readSamples();
        m_classifier->SetRunning(true);
        start();
    });
    QObject::connect(page, &WelcomePage::ReceiverWanted, m_window.get(), [this, start] {
        start();
        m_window->GetStrip()->GetField()->setFocus();
        m_window->GetStrip()->GetField()->selectAll();
    });
    QObject::connect(
        page, &WelcomePage::FileWanted, m_window.get(), [this] { askAndOpen(); }, Qt::QueuedConnection);
    QObject::connect(m_sharing.get(), &Sharing::Began, page, &WelcomePage::End);
    QObject::connect(page, &WelcomePage::GuideWanted, m_window.get(),
                     [this] { HelpWindow::ShowFor(*m_window, nullptr); });
}
