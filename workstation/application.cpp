#include "workstation/application.h"

#include "controls/frequencystore/entries/keys.h"
#include "controls/frequencystore/halvonodemediatorctrl.h"
#include "controls/frequencystore/listviewshandler/detconvlisthandler.h"
#include "controls/frequencystore/listviewshandler/noifrequencyhandler.h"
#include "controls/frequencystore/listviewshandler/searchmcdatahandler.h"
#include "controls/frequencystore/listviewshandler/searchmcdatareader.h"
#include "controls/frequencystore/listviewshandler/targetlisthandler.h"
#include "controls/frequencystore/memorysystemhandling/memorysystemhandler.h"
#include "host/base/problems.h"
#include "host/base/terminaltext.h"
#include "host/base/trace.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencystorelistview.h"
#include "host/gui/listsettings.h"
#include "host/gui/sortlistview.h"
#include "host/startup/cfgcenter.h"
#include "host/valuetree/tree.h"
#include "workstation/filekinds.h"
#include "workstation/frequencybar.h"
#include "workstation/job.h"
#include "workstation/jobpanel.h"
#include "workstation/mainwindow.h"
#include "workstation/messagespanel.h"
#include "workstation/noibands.h"
#include "workstation/samples.h"
#include "workstation/simulatedclassifier.h"
#include "workstation/simulatedreceiver.h"
#include "workstation/simulatedsearch.h"
#include "workstation/sweepimport.h"

#include <QApplication>
#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QLibrary>
#include <QMenu>
#include <QStandardPaths>
#include <QTabWidget>

#include <cstdio>

namespace {

constexpr char TargetsPath[] = "/Lists/LocalTargetList";
constexpr char NoiPath[] = "/Lists/NOIFrequencies";
constexpr char ResultsPath[] = "/Lists/SearchMCDataResults";
constexpr char MemoryPath[] = "/Lists/MemoryChannels";
/// What a plug-in exports: called once after the store's own lists stand, and once before the end.
constexpr char PlugInStart[] = "FrequencyStorePlugInStart";
constexpr char PlugInStop[] = "FrequencyStorePlugInStop";
/// How long the search has been running when the demonstration begins.
constexpr qint64 DemoMicroseconds = 600 * qint64(1000000);
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
    m_receiver = std::make_unique<SimulatedReceiver>(options.receiver);
    m_receiver->Start();
    m_search = std::make_unique<SimulatedSearch>(options.receiver);
    m_job = std::make_unique<Job>();
    const QString lostNoi = forgetLostNoi();
    m_window = std::make_unique<MainWindow>(*m_receiver);
    // Whoever started the program from a terminal sees there what the panel shows.
    QObject::connect(m_window->GetMessages(), &MessagesPanel::ProblemAdded, [](const QString& text) {
        std::fprintf(stderr, "%s\n", TextFor(stderr, text).constData());
    });
    for (const Problem& problem : early)
        m_window->GetMessages()->AddProblem(problem);
    addJobPanel();
    addSweepEntry();
    registerLists();
    registerDetections();
    registerResults();
    QMenu* search = m_window->AddMenu(MainWindow::tr("&Search"));
    m_search->AddTo(*search);
    m_classifier->AddTo(*search);
    for (const QString& path : m_options.plugIns)
        loadPlugIn(path);
    if (m_options.screenshotDirectory.isEmpty()) // pictures look the same on every machine
        m_window->RememberArrangement();
}

Workstation::~Workstation() {
    m_sweeps.reset();
    m_window.reset();
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
    DetConvListHandler::DeleteInstance();
    MemorySystemHandler::DeleteInstance();
    TargetListHandler::DeleteInstance();
}

void Workstation::prepareDirectories() {
    if (!m_options.screenshotDirectory.isEmpty())
        m_options.screenshotDirectory = QFileInfo(m_options.screenshotDirectory).absoluteFilePath();
    const QString config = m_options.configDirectory.isEmpty()
                               ? CfgCenter::GetDirectory()
                               : QFileInfo(m_options.configDirectory).absoluteFilePath();
    const QString data = m_options.dataDirectory.isEmpty()
                             ? QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)
                             : QFileInfo(m_options.dataDirectory).absoluteFilePath();
    QDir().mkpath(config);
    CfgCenter::SetDirectory(config);
    ListSettings::SetDirectory(config);
    if (QDir().mkpath(data))
        QDir::setCurrent(data);
    else
        Problems::Report("application", 118, {data, 0, QStringLiteral("data directory cannot be made")});
    if (CfgCenter::GetAdminCfg(ICfg::Administration)
            .GetString(QStringLiteral("VeltaDataDir"), QString())
            .isEmpty())
        CfgCenter::GetAdminCfg(ICfg::Administration).SetString(QStringLiteral("VeltaDataDir"), data);
}

void Workstation::addJobPanel() {
    m_jobPanel = new JobPanel(*m_job);
    m_window->AddPanel(m_jobPanel, MainWindow::tr("Job"), Qt::RightDockWidgetArea);
    QMenu* menu = m_window->GetFileMenu();
    QAction* before = menu->actions().first();
    const auto add = [&](const QString& text, auto slot) {
        auto* action = new QAction(text, menu);
        menu->insertAction(before, action);
        QObject::connect(action, &QAction::triggered, m_jobPanel, slot);
    };
    add(MainWindow::tr("&Open Job..."), &JobPanel::AskAndOpen);
    add(MainWindow::tr("&Save Job"), &JobPanel::Save);
    add(MainWindow::tr("Save Job &As..."), &JobPanel::SaveAs);
    menu->insertSeparator(before);
    m_window->SetCloseCheck([panel = m_jobPanel] { return panel->MayLeave(); });
}

/// Signals in power sweeps stand beside those of the search.
void Workstation::addSweepEntry() {
    m_sweeps =
        std::make_unique<SweepImport>(m_window.get(), [this](std::list<DetectionConventional>&& found) {
            m_search->Add(std::move(found));
        });
    QObject::connect(m_sweeps.get(), &SweepImport::Opened, m_window.get(), &MainWindow::Tell);
    QMenu* menu = m_window->GetFileMenu();
    auto* action = new QAction(MainWindow::tr("Open S&weep..."), menu);
    menu->insertAction(menu->actions().first(), action);
    QObject::connect(action, &QAction::triggered, m_sweeps.get(), &SweepImport::AskAndOpen);
}

void Workstation::registerLists() {
    // The default list is read where there is one and nothing else was asked for.
    const bool haveDefault =
        m_options.files.isEmpty() && !m_options.demo &&
        QFileInfo::exists(CfgCenter::GetAppCfg(ICfg::StartUp)
                              .GetFilePath(QStringLiteral("LocalTargetList"), QStringLiteral("Targets.xml")));
    Node* targets = Tree::Instance()->MakeNode(QString::fromLatin1(TargetsPath));
    TargetListHandler::Instance()->Init(targets, haveDefault);
    TargetListHandler::Instance()->AddToFreqStore();
    registerMemoryChannels();
    registerNoi();
}

bool Workstation::remembersNoi() const {
    return !m_options.demo && m_options.screenshotDirectory.isEmpty();
}

/// A file that is not there any more would keep the list from being used until another one is opened. The
/// name is looked at before the list's handler takes it, and answered, to be told when the messages stand.
QString Workstation::forgetLostNoi() const {
    ICfg& settings = CfgCenter::GetAppCfg(ICfg::StartUp);
    const QString key = QStringLiteral("NOIFrequencies");
    const QString file = settings.GetString(key, QString());
    if (!remembersNoi() || file.isEmpty() || QFileInfo::exists(file))
        return QString();
    settings.SetString(key, QString());
    return file;
}

void Workstation::registerNoi() {
    NOIFrequencyHandler* list = NOIFrequencyHandler::Instance();
    list->SetRemembersFile(remembersNoi());
    list->Init(Tree::Instance()->MakeNode(QString::fromLatin1(NoiPath)));
    list->SetFrequencyValue_Path(m_receiver->PathOf(Keys::KeyFrequency));
    list->SetBandwidthValue_Path(m_receiver->PathOf(Keys::KeyBandwidth));
    list->SetNOIDefinition_ValuePath(NoiBands::ValuePath());
    list->AddToFreqStore();
}

/// Plain and classified detections are two lists of one search; views and bar lines are made as their list is
/// registered, from the path that is set then.
void Workstation::registerDetections() {
    DetConvListHandler& handler = *DetConvListHandler::Instance();
    const bool isVUHF = m_options.receiver == ReceiverKind::VUHF;
    handler.setEmissionMarkedPath(QString::fromLatin1(SimulatedSearch::MarkedPath));
    handler.setEmissionListPath(QString::fromLatin1(SimulatedSearch::DetectionsPath));
    handler.AddToFreqStore(isVUHF, MainWindow::tr("Detections"));
    handler.setEmissionListPath(QString::fromLatin1(SimulatedSearch::ClassifiedPath));
    handler.Init(true);
    handler.AddToFreqStore(isVUHF, QString());
}

void Workstation::registerResults() {
    Node* results = Tree::Instance()->MakeNode(QString::fromLatin1(ResultsPath));
    SearchMCDataHandler::Instance()->Init(results);
    SearchMCDataHandler::Instance()->AddToFreqStore();
    m_classifier = std::make_unique<SimulatedClassifier>(m_options.receiver, *results);
}

void Workstation::registerMemoryChannels() {
    MemorySystemHandler& handler = *MemorySystemHandler::Instance();
    handler.SetListType(m_options.receiver == ReceiverKind::HF ? MediatorType::MemoryHF
                                                               : MediatorType::MemoryVUHF);
    handler.Init(Tree::Instance()->MakeNode(QString::fromLatin1(MemoryPath)));
    for (const TemplateLink& link : TemplateLinks)
        (handler.*link.bind)(m_receiver->PathOf(link.setting));
    handler.SetJobfile_ValuePath(Job::TextPath());
    handler.SetData4Jobfile_ValuePath(Job::SectionPath());
    handler.SetSave2Job_ValuePath(Job::SavePath());
    handler.AddToFreqStore();
}

void Workstation::loadPlugIn(const QString& path) {
    auto library = std::make_unique<QLibrary>(path);
    const auto start = reinterpret_cast<void (*)()>(library->resolve(PlugInStart));
    if (!start) {
        Problems::Report("application", 142,
                         {path, 0, QStringLiteral("is no plug-in: ") + library->errorString()});
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
        m_job->Open(m_options.jobFile);
    for (const QString& file : m_options.files)
        readFile(file);
    if (m_options.demo) {
        m_search->Simulate(DemoMicroseconds, QDateTime::currentMSecsSinceEpoch() * 1000);
        m_search->SetRunning(true);
        m_classifier->SetRunning(true);
    }
    m_window->GetBar()->FitAll();
    return m_window->GetMessages()->ProblemCount() == before;
}

void Workstation::readSamples() {
    const QString program = QCoreApplication::applicationDirPath();
    const QString found = FindSamples(program);
    if (found.isEmpty()) {
        Problems::Report(
            "application", 160,
            {program, 0, QStringLiteral("no sample lists were found in this folder or above it")});
        return;
    }
    const QDir samples(found);
    readFile(samples.filePath(QStringLiteral("targets.xml")));
    readFile(samples.filePath(QStringLiteral("interest.noi")));
    readFile(samples.filePath(QStringLiteral("results.xml")));
    readFile(samples.filePath(m_options.receiver == ReceiverKind::HF ? QStringLiteral("job-hf.pij")
                                                                     : QStringLiteral("job-vuhf.pij")));
}

void Workstation::readFile(const QString& path) {
    switch (FileKindOf(path)) {
    case FileKind::Job:
        m_job->Open(path);
        break;
    case FileKind::Noi:
        NOIFrequencyHandler::Instance()->ReadFile(path);
        break;
    case FileKind::Results:
        SearchMCDataReader(*SearchMCDataHandler::Instance()->GetMediatorCtrl()).ReadFile(path);
        break;
    case FileKind::Sweep:
        m_sweeps->Open(path);
        break;
    default:
        TargetListHandler::Instance()->ReadFile(path);
    }
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
        std::printf("%-28s %10d %10d  %s\n", qPrintable(tabs->tabText(index)), list ? list->RowCount() : 0,
                    list ? list->ShownCount() : 0, qPrintable(save(m_window->TabFileName(index))));
    }
    tabs->setCurrentIndex(0);
    settle();
    std::printf("%-28s %10s %10s  %s\n", "window", "", "", qPrintable(save(QStringLiteral("window"))));
    return good;
}
