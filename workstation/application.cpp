#include "workstation/application.h"

#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/common/keys.h"
#include "controls/frequencystore/common/paths.h"
#include "controls/frequencystore/detections/detconvlisthandler.h"
#include "controls/frequencystore/memory/memorysystemhandler.h"
#include "controls/frequencystore/noi/noifrequencyhandler.h"
#include "controls/frequencystore/results/searchmcdatahandler.h"
#include "controls/frequencystore/results/searchmcdatareader.h"
#include "controls/frequencystore/targets/targetlisthandler.h"
#include "host/base/problems.h"
#include "host/base/terminaltext.h"
#include "host/base/trace.h"
#include "host/freqlist/buttonbar.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencynodemediatorctrl.h"
#include "host/freqlist/frequencystorelistview.h"
#include "host/freqlist/undohistory.h"
#include "host/gui/guibase.h"
#include "host/gui/listsettings.h"
#include "host/gui/sortlistview.h"
#include "host/report/outputfile.h"
#include "host/startup/cfgcenter.h"
#include "host/startup/settingsfile.h"
#include "host/valuetree/tree.h"
#include "receiver/hamlibreceiver.h"
#include "receiver/receiver.h"
#include "workstation/actions.h"
#include "workstation/actiontips.h"
#include "workstation/applicationkeys.h"
#include "workstation/detectionpanels.h"
#include "workstation/directorylock.h"
#include "workstation/ending.h"
#include "workstation/failurenote.h"
#include "workstation/fileopener.h"
#include "workstation/frequencybar.h"
#include "workstation/job.h"
#include "workstation/jobpanel.h"
#include "workstation/language.h"
#include "workstation/listchanges.h"
#include "workstation/mainwindow.h"
#include "workstation/memoryneed.h"
#include "workstation/messagespanel.h"
#include "workstation/noibands.h"
#include "workstation/noikeeper.h"
#include "workstation/preferences.h"
#include "workstation/progressbox.h"
#include "workstation/receiverconnection.h"
#include "workstation/recentfiles.h"
#include "workstation/safekeeping.h"
#include "workstation/samples.h"
#include "workstation/scanning.h"
#include "workstation/sharecommands.h"
#include "workstation/sharing.h"
#include "workstation/simulatedclassifier.h"
#include "workstation/simulatedsearch.h"
#include "workstation/sweepimport.h"
#include "workstation/tuningstrip.h"
#include "workstation/unsavedwork.h"

#include <QApplication>
#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QLibrary>
#include <QMenu>
#include <QTabWidget>
#include <QTimer>
#include <QUndoStack>

#include <algorithm>
#include <cstdio>

namespace {

/// What a plug-in exports: called once after the store's own lists stand, and once before the end.
constexpr char PlugInStart[] = "FrequencyStorePlugInStart";
constexpr char PlugInStop[] = "FrequencyStorePlugInStop";
/// How long the search has been running when the demonstration begins.
constexpr qint64 DemoMicroseconds = 600 * qint64(1000000);
/// How long a radio may hold up the end of the program.
constexpr std::chrono::milliseconds LongestFarewell(2000);
/// How long rows may take to settle before a picture is taken.
constexpr int SettleMilliseconds = 400;

/// Which setting of the receiver each link of the template of memory channels follows.
struct TemplateLink {
    const FreqList::Key& setting;
    void (MemorySystemHandler::*bind)(const QString& path);
};
constexpr TemplateLink TemplateLinks[] = {
    {Keys::KeyFrequency, &MemorySystemHandler::SetFrequency_ValuePath},
    {Keys::KeyBandwidth, &MemorySystemHandler::SetBandwidth_ValuePath},
    {Keys::KeyDemodulation, &MemorySystemHandler::SetDemodulation_ValuePath},
    {Keys::Threshold, &MemorySystemHandler::SetThreshold_ValuePath},
    {Keys::BFOFrequency, &MemorySystemHandler::SetBFOFrequency_ValuePath},
    {Keys::OutputIFPath, &MemorySystemHandler::SetOutputIF_ValuePath},
    {Keys::Shift, &MemorySystemHandler::SetShift_ValuePath},
    {Keys::UseSquelch, &MemorySystemHandler::SetUseSquelch_ValuePath},
    {Keys::UseAttenuation, &MemorySystemHandler::SetUseAttenuation_ValuePath},
    {Keys::Attenuation, &MemorySystemHandler::SetAttenuation_ValuePath},
    {Keys::AntennaID, &MemorySystemHandler::SetAntenna_ValuePath},
    {Keys::AFC, &MemorySystemHandler::SetAFC_ValuePath},
};

void settle() {
    QElapsedTimer timer;
    timer.start();
    do {
        QApplication::processEvents(QEventLoop::AllEvents, 20);
    } while (timer.elapsed() < SettleMilliseconds);
}

} // namespace

Workstation::Workstation(const Options& options) : m_options(options) {
    ErrorHandler::Instance().SetTraceMask(options.traceMask);
    // What is wrong before there is a window is told when it stands.
    std::vector<Problem> early;
    Problems::SetSink([&early](const Problem& problem) { early.push_back(problem); });
    prepareDirectories();
    UndoHistory::Instance().SetOn(true);
    UndoHistory::Instance().SetMostResting(static_cast<size_t>(std::max<qint64>(AvailableMemory(), 0)) / 4);
    m_receiver = std::make_unique<Receiver>(options.receiver);
    m_search = std::make_unique<SimulatedSearch>(options.receiver);
    m_job = std::make_unique<Job>();
    const QString lostNoi = forgetLostNoi();
    m_window = std::make_unique<MainWindow>(*m_receiver);
    m_progress = std::make_unique<ProgressBox>(*m_window);
    m_connection = std::make_unique<ReceiverConnection>(*m_receiver, *m_window);
    m_connection->Connect(ReceiverChoice());
    m_changes = std::make_unique<ListChanges>([this](int id) { return m_window->FileOf(id); });
    // Whoever started the program from a terminal sees there what the panel shows.
    QObject::connect(m_window->GetMessages(), &MessagesPanel::ProblemAdded, [](const QString& text) {
        std::fprintf(stderr, "%s\n", TextFor(stderr, text).constData());
    });
    QObject::connect(m_window->GetMessages(), &MessagesPanel::ProblemAdded, m_window.get(),
                     [this] { showWriteFailure(); });
    QObject::connect(m_window->GetFailureNote(), &FailureNote::Dismissed, m_window.get(), [this] {
        REPORTGENERATOR::ForgetWriteFailure();
        m_window->GetFailureNote()->Show(QString());
    });
    if (!lostNoi.isEmpty())
        Problems::Report("application",
                         {lostNoi, 0, MainWindow::tr("is gone; the frequencies of interest start empty")});
    for (const Problem& problem : early)
        m_window->GetMessages()->AddProblem(problem);
    tellShared();
    addJobPanel();
    addSweepEntry();
    addOpener();
    registerLists();
    registerDetections();
    registerResults();
    connectLists();
    addActivities();
    QMenu* search = m_window->AddMenu(MainWindow::tr("&Search"));
    m_search->AddTo(*search);
    m_classifier->AddTo(*search);
    search->addSeparator();
    DetectionPanels::AddActions(*search, *m_window, *m_search, m_detectionIds);
    addScanning();
    DetectionPanels::AddPicture(*m_window, *m_search, *m_sweeps, m_detectionIds);
    for (const QString& path : m_options.plugIns)
        loadPlugIn(path);
    addPreferences();
    addSharing();
    addEnding();
    addSafekeeping();
    const QString platform = QGuiApplication::platformName();
    SetAttended(m_options.screenshotDirectory.isEmpty() && platform != QLatin1String("offscreen") &&
                platform != QLatin1String("minimal"));
    if (m_options.screenshotDirectory.isEmpty()) // pictures look the same on every machine
        m_window->RememberArrangement();
    if (const QString folder = ListSettings::LoadText(SettingKeys::Folder);
        remembers() && QFileInfo(folder).isDir())
        useFolder(folder);
    // What the window was tuned to last is for the simulated receiver: a radio shows what it does itself.
    if (!m_options.radio.isEmpty())
        m_connection->Connect(m_options.radio);
}

Workstation::~Workstation() {
    UndoHistory::Instance().SetOn(false);
    m_scanning->Stop();
    m_shareCommands.reset();
    m_sharing.reset();
    m_safekeeping.reset();
    m_opener.reset();
    m_sweeps.reset();
    m_connection.reset();
    m_progress.reset();
    m_window.reset();
    m_scanning.reset();
    for (const int id : FreqStore::Instance().GetListIds())
        FreqStore::Instance().RemoveFrequencyListDefinition(id);
    for (const auto& plugIn : m_plugIns) {
        if (const auto stop = reinterpret_cast<void (*)()>(plugIn->resolve(PlugInStop)))
            stop();
    }
    m_job->Revert(); // what was to be saved is saved
    m_classifier.reset();
    SearchMCDataHandler::DeleteInstance();
    NOIFrequencyHandler::DeleteInstance();
    m_ending->Finish();
    DetConvListHandler::DeleteInstance();
    MemorySystemHandler::DeleteInstance();
    TargetListHandler::DeleteInstance();
    SettingsFile::KeepInMemory(false);
    m_receiver.reset();
    HamlibReceiver::WaitForAll(LongestFarewell);
}

void Workstation::prepareDirectories() {
    if (!m_options.screenshotDirectory.isEmpty())
        m_options.screenshotDirectory = QFileInfo(m_options.screenshotDirectory).absoluteFilePath();
    const QString config = m_options.configDirectory.isEmpty()
                               ? CfgCenter::GetDirectory()
                               : QFileInfo(m_options.configDirectory).absoluteFilePath();
    QDir().mkpath(config);
    CfgCenter::SetDirectory(config);
    ListSettings::SetDirectory(config);
    lockSettings(config);
    m_language = std::make_unique<Language>(m_options.language);
    m_preferences = std::make_unique<Preferences>(m_options.receiver);
    const QString data = dataDirectory();
    if (QDir().mkpath(data))
        QDir::setCurrent(data);
    else
        Problems::Report("application", {data, 0, MainWindow::tr("data directory cannot be made")});
    lockData(config);
    if (CfgCenter::GetAdminCfg(ICfg::Administration)
            .GetString(QStringLiteral("VeltaDataDir"), QString())
            .isEmpty())
        CfgCenter::GetAdminCfg(ICfg::Administration).SetString(QStringLiteral("VeltaDataDir"), data);
}

void Workstation::addJobPanel() {
    m_jobPanel = new JobPanel(*m_job);
    m_window->AddPanel(m_jobPanel, MainWindow::tr("&Job"), Qt::RightDockWidgetArea);
    QMenu* menu = m_window->GetFileMenu();
    QAction* before = m_window->GetActions().Get(WindowActions::Print);
    const auto add = [&](const char* name, const QString& text, const QString& tip, auto slot) {
        auto* action = new QAction(text, menu);
        action->setObjectName(QLatin1String(name));
        SetTips(*action, tip);
        menu->insertAction(before, action);
        QObject::connect(action, &QAction::triggered, m_jobPanel, slot);
    };
    add("open-job", MainWindow::tr("Open &Job..."), MainWindow::tr("Open a job in place of the present one"),
        &JobPanel::AskAndOpen);
    add("save-job", MainWindow::tr("Save Jo&b"), MainWindow::tr("Save the job with the present channels"),
        &JobPanel::Save);
    add("save-job-as", MainWindow::tr("Save Job As..."), MainWindow::tr("Save the job under another name"),
        &JobPanel::SaveAs);
    add("show-section", MainWindow::tr("Show Memory-Scan Section..."),
        MainWindow::tr("Show what the channels are in the job"), &JobPanel::ShowSection);
    menu->insertSeparator(before);
}

void Workstation::addOpener() {
    const auto import = [this](const QString& path) { return importFile(path); };
    m_opener = std::make_unique<FileOpener>(m_window.get(), std::map<FileKind, FileOpener::Read>{
                                                                {FileKind::Foreign, import},
                                                                {FileKind::Table, import},
                                                                {FileKind::Job,
                                                                 [this](const QString& path) {
                                                                     return m_jobPanel->Open(path);
                                                                 }},
                                                                {FileKind::Noi,
                                                                 [](const QString& path) {
                                                                     return NOIFrequencyHandler::Instance()
                                                                         ->ReadFile(path);
                                                                 }},
                                                                {FileKind::Results,
                                                                 [this](const QString& path) {
                                                                     const bool wasChanged =
                                                                         m_changes->IsChanged(m_resultsId);
                                                                     const bool read =
                                                                         SearchMCDataReader(
                                                                             *SearchMCDataHandler::Instance()
                                                                                  ->GetMediatorCtrl())
                                                                             .ReadFile(path);
                                                                     // What is read is added.
                                                                     if (!wasChanged &&
                                                                         m_window->FileOf(m_resultsId)
                                                                             .isEmpty())
                                                                         m_changes->MarkSaved(m_resultsId);
                                                                     return read;
                                                                 }},
                                                                {FileKind::Sweep,
                                                                 [this](const QString& path) {
                                                                     return m_sweeps->Open(path);
                                                                 }},
                                                                {FileKind::Targets, [](const QString& path) {
                                                                     return readTargets(path);
                                                                 }}});
    QObject::connect(m_opener.get(), &FileOpener::Told, m_window.get(), [this](const QString& text) {
        m_window->GetMessages()->AddTrace(text);
        m_window->Tell(text);
        for (const int id : {m_targetsId, m_noiId, m_memoryId}) {
            if (FreqStoreListViewButtonBar* bar = m_window->BarOf(id))
                bar->EnableActions(); // a list may wait for a file now
        }
    });
    m_opener->SetMayLeave([this](FileGate::List list) { return mayLeave(list); });
    QObject::connect(m_opener.get(), &FileOpener::FileChanged, m_window.get(),
                     [this](FileGate::List list) { fileChanged(list); });
    // The list of memory channels is that of the job.
    QObject::connect(m_job.get(), &Job::Changed, m_window.get(), [this, shown = QString()]() mutable {
        offerSaveToJob();
        if (std::exchange(shown, m_job->GetFileName()) != m_job->GetFileName())
            m_window->GetBar()->FitAll();
    });
    m_recent = new RecentFiles(*m_window->GetRecentMenu()); // the menu's
    QObject::connect(m_recent, &RecentFiles::Chosen, m_window.get(),
                     [this](const QString& path) { openFile(path); });
    QObject::connect(m_window.get(), &MainWindow::OpenWanted, m_window.get(), [this] { askAndOpen(); });
}

/// The next dialogs start where the last file was.
void Workstation::noteFile(const QString& path) {
    if (path.isEmpty() || !remembers())
        return;
    m_recent->Add(path);
    const QString folder = QFileInfo(path).absolutePath();
    if (folder == GuiBase::Instance().GetCurrentDirectory())
        return;
    useFolder(folder);
    ListSettings::SaveText(SettingKeys::Folder, folder);
}

void Workstation::useFolder(const QString& folder) {
    GuiBase::Instance().SetCurrentDirectory(folder);
    TargetListHandler::Instance()->SetTargetListDirectory(folder);
    NOIFrequencyHandler::Instance()->SetReadDirectory(folder);
}

/// What runs stands in the strip.
void Workstation::addActivities() {
    TuningStrip* strip = m_window->GetStrip();
    strip->AddActivity(
        {MainWindow::tr("Search"), [this] { return m_search->IsRunning(); },
         [] {
             const auto* found = value_cast<ValueList<DetectionConventional>>(
                 Tree::Instance()->GetValue(QString::fromLatin1(SimulatedSearch::DetectionsPath)));
             return MainWindow::tr("%Ln detection(s)", nullptr, found ? static_cast<int>(found->Size()) : 0);
         },
         [this] { m_search->SetRunning(false); }});
    strip->AddActivity({MainWindow::tr("Classifier"), [this] { return m_classifier->IsRunning(); },
                        [] {
                            const Node* results = Tree::Instance()->GetNode(Paths::Results);
                            return MainWindow::tr("%Ln result(s)", nullptr,
                                                  results ? static_cast<int>(results->ChildCount()) : 0);
                        },
                        [this] { m_classifier->SetRunning(false); }});
    QObject::connect(m_search.get(), &SimulatedSearch::RunningChanged, strip, &TuningStrip::Refresh);
    QObject::connect(m_classifier.get(), &SimulatedClassifier::RunningChanged, strip, &TuningStrip::Refresh);
}

void Workstation::addEnding() {
    m_ending = std::make_unique<Ending>(*m_work, remembers() ? makeNoiKeeper() : nullptr);
    QObject::connect(m_ending.get(), &Ending::Begins, m_window.get(), &MainWindow::KeepArrangement);
    m_window->SetCloseCheck([this] {
        m_scanning->Stop(); // while it runs the job cannot be saved
        return m_ending->MayClose();
    });
}

void Workstation::SetAttended(bool attended) {
    m_isAttended = attended;
    m_opener->SetAttended(attended);
    m_ending->SetAttended(attended);
}

/// Signals in power sweeps stand beside those of the search.
void Workstation::addSweepEntry() {
    m_sweeps = std::make_unique<SweepImport>(
        m_window.get(), [this](std::list<DetectionConventional>&& found, const QString& source) {
            m_search->Add(std::move(found), source);
        });
    QObject::connect(m_sweeps.get(), &SweepImport::Opened, m_window.get(), &MainWindow::Tell);
    QMenu* menu = m_window->GetFileMenu();
    auto* action = new QAction(MainWindow::tr("Open S&weep..."), menu);
    action->setObjectName(QStringLiteral("open-sweep"));
    SetTips(*action, MainWindow::tr("Add the signals in power sweeps to the detections"));
    menu->insertAction(m_window->GetActions().Get(WindowActions::OpenIntoList), action);
    QObject::connect(action, &QAction::triggered, m_sweeps.get(), &SweepImport::AskAndOpen);
}

void Workstation::addScanning() {
    m_scanning = std::make_unique<Scanning>(Scanning::Parts{.window = *m_window,
                                                            .receiver = *m_receiver,
                                                            .search = *m_search,
                                                            .job = *m_jobPanel,
                                                            .channels = m_memoryId,
                                                            .detections = m_detectionIds.front(),
                                                            .remembers = remembers()});
}

void Workstation::registerLists() {
    // The default list is read where there is one and nothing else was asked for.
    const bool haveDefault =
        m_options.files.isEmpty() && !m_options.demo && fileToReopen(SettingKeys::TargetsFile).isEmpty() &&
        QFileInfo::exists(CfgCenter::GetAppCfg(ICfg::StartUp)
                              .GetFilePath(QStringLiteral("LocalTargetList"), QStringLiteral("Targets.xml")));
    Node* targets = Tree::Instance()->MakeNode(Paths::Targets);
    TargetListHandler& handler = *TargetListHandler::Instance();
    handler.SetTemplate({m_receiver->PathOf(Keys::KeyFrequency), m_receiver->PathOf(Keys::KeyBandwidth),
                         m_receiver->PathOf(Keys::KeyDemodulation)});
    handler.SetClientServer(!shareAtStart().url.isEmpty() &&
                            shareAtStart().role == ShareProfile::Role::Client);
    handler.Init(targets, haveDefault);
    m_targetsId = handler.AddToFreqStore();
    if (haveDefault && targets->ChildCount() > 0)
        m_opener->SetFileOf(FileGate::List::Targets, handler.GetCurrentFileName());
    registerMemoryChannels();
    offerSaveToJob();
    registerNoi();
}

/// What was open last, unless something else is asked for or it is not there any more.
QString Workstation::fileToReopen(const QString& key) const {
    if (!remembers() || !m_options.files.isEmpty())
        return QString();
    const QString file = ListSettings::LoadText(key);
    return QFileInfo(file).isFile() ? file : QString();
}

bool Workstation::remembers() const {
    return !m_options.demo && m_options.screenshotDirectory.isEmpty();
}

/// A file that is not there any more would keep the list from being used until another one is opened. The
/// name is looked at before the list's handler takes it, and answered, to be told when the messages stand.
QString Workstation::forgetLostNoi() const {
    ICfg& settings = CfgCenter::GetAppCfg(ICfg::StartUp);
    const QString key = NoiKeeper::SettingName();
    const QString file = settings.GetString(key, QString());
    if (!remembers() || file.isEmpty() || QFileInfo::exists(file))
        return QString();
    settings.SetString(key, QString());
    return file;
}

void Workstation::registerNoi() {
    NOIFrequencyHandler* list = NOIFrequencyHandler::Instance();
    list->SetRemembersFile(remembers());
    list->Init(Tree::Instance()->MakeNode(Paths::Noi));
    list->SetFrequencyValue_Path(m_receiver->PathOf(Keys::KeyFrequency));
    list->SetBandwidthValue_Path(m_receiver->PathOf(Keys::KeyBandwidth));
    list->SetNOIDefinition_ValuePath(Paths::NoiDefinition);
    m_noiId = list->AddToFreqStore();
    if (list->GetItemsRoot()->ChildCount() > 0)
        m_opener->SetFileOf(FileGate::List::Noi, list->GetCurrentFileName());
    leaveNoiFile();
}

/// Plain and classified detections are two lists of one search.
void Workstation::registerDetections() {
    DetConvListHandler& handler = *DetConvListHandler::Instance();
    const bool isVUHF = m_options.receiver == ReceiverKind::VUHF;
    handler.setEmissionMarkedPath(QString::fromLatin1(SimulatedSearch::MarkedPath));
    handler.setEmissionListPath(QString::fromLatin1(SimulatedSearch::DetectionsPath));
    m_detectionIds.push_back(handler.AddToFreqStore(isVUHF, MainWindow::tr("Detections")));
    handler.setEmissionListPath(QString::fromLatin1(SimulatedSearch::ClassifiedPath));
    handler.Init(true);
    m_detectionIds.push_back(handler.AddToFreqStore(isVUHF, QString()));
    m_search->SetListIds(m_detectionIds[0], m_detectionIds[1]);
}

void Workstation::registerResults() {
    Node* results = Tree::Instance()->MakeNode(Paths::Results);
    SearchMCDataHandler::Instance()->Init(results);
    m_resultsId = SearchMCDataHandler::Instance()->AddToFreqStore();
    m_classifier = std::make_unique<SimulatedClassifier>(m_options.receiver, *results);
}

void Workstation::registerMemoryChannels() {
    MemorySystemHandler& handler = *MemorySystemHandler::Instance();
    handler.SetListType(m_options.receiver == ReceiverKind::HF ? MediatorType::MemoryHF
                                                               : MediatorType::MemoryVUHF);
    handler.Init(Tree::Instance()->MakeNode(Paths::MemoryChannels));
    for (const TemplateLink& link : TemplateLinks)
        (handler.*link.bind)(m_receiver->PathOf(link.setting));
    handler.SetJobfile_ValuePath(Paths::JobText);
    handler.SetData4Jobfile_ValuePath(Paths::JobSection);
    handler.SetSave2Job_ValuePath(Paths::JobSave);
    m_memoryId = handler.AddToFreqStore();
}

void Workstation::loadPlugIn(const QString& path) {
    auto library = std::make_unique<QLibrary>(path);
    const auto start = reinterpret_cast<void (*)()>(library->resolve(PlugInStart));
    if (!start) {
        Problems::Report("application",
                         {path, 0, MainWindow::tr("is no plug-in: ") + library->errorString()});
        return;
    }
    start();
    m_plugIns.push_back(std::move(library));
}

bool Workstation::LoadFiles() {
    const int before = m_window->GetMessages()->ProblemCount();
    if (m_options.demo)
        readSamples();
    if (!m_options.jobFile.isEmpty())
        WithinMemory(m_options.jobFile, false, [this] { return m_job->Open(m_options.jobFile); });
    else if (const QString job = fileToReopen(SettingKeys::JobFile); !job.isEmpty())
        openFile(job);
    for (const QString& file : m_options.files)
        openFile(file);
    if (const QString targets = fileToReopen(SettingKeys::TargetsFile);
        !targets.isEmpty() && !TargetListHandler::Instance()->IsClient())
        openFile(targets);
    if (m_options.demo) {
        m_search->Simulate(DemoMicroseconds, QDateTime::currentMSecsSinceEpoch() * 1000);
        m_search->SetRunning(true);
        m_classifier->SetRunning(true);
    }
    UndoHistory::Instance().Stack().clear(); // the program begins with what it was asked to open
    m_window->GetBar()->FitAll();
    if (m_window->GetMessages()->ProblemCount() > 0)
        m_window->ShowMessages(true);
    return m_window->GetMessages()->ProblemCount() == before;
}

void Workstation::readSamples() {
    const QString program = QCoreApplication::applicationDirPath();
    const QString found = FindSamples(program);
    if (found.isEmpty()) {
        Problems::Report(
            "application",
            {program, 0, MainWindow::tr("no sample lists were found in this folder or above it")});
        return;
    }
    const QDir samples(found);
    m_opener->Open(samples.filePath(QStringLiteral("targets.xml")));
    m_opener->Open(samples.filePath(QStringLiteral("interest.noi")));
    m_opener->Open(samples.filePath(QStringLiteral("results.xml")));
    m_opener->Open(samples.filePath(m_options.receiver == ReceiverKind::HF ? QStringLiteral("job-hf.pij")
                                                                           : QStringLiteral("job-vuhf.pij")));
}

bool Workstation::TakeScreenshots() {
    const QDir directory(m_options.screenshotDirectory);
    if (!QDir().mkpath(directory.path())) {
        std::fprintf(stderr, "%s: cannot be made\n", qPrintable(directory.path()));
        return false;
    }
    std::printf("%-28s %10s %10s  %s\n", "list", "entries", "shown", "picture");
    QTabWidget* tabs = m_window->GetTabs();
    bool good = true;
    const auto save = [&](const QString& name) {
        const QString path = directory.filePath(name + QStringLiteral(".png"));
        const bool saved = m_window->grab().save(path);
        if (!saved)
            std::fprintf(stderr, "%s: cannot be written\n", qPrintable(path));
        good = good && saved;
        return path;
    };
    for (int index = 0; index < tabs->count(); ++index) {
        tabs->setCurrentIndex(index);
        settle();
        const auto* list = tabs->widget(index)->findChild<SortListView*>();
        std::printf("%-28s %10d %10d  %s\n", qPrintable(m_window->TabName(index)),
                    list ? list->RowCount() : 0, list ? list->ShownCount() : 0,
                    qPrintable(save(m_window->TabFileName(index))));
    }
    tabs->setCurrentIndex(0);
    settle();
    std::printf("%-28s %10s %10s  %s\n", "window", "", "", qPrintable(save(QStringLiteral("window"))));
    return good;
}
