#include "workstation/application.h"

#include "controls/frequencystore/listviewshandler/targetlisthandler.h"
#include "host/base/problems.h"
#include "host/base/trace.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencystorelistview.h"
#include "host/gui/listsettings.h"
#include "host/gui/sortlistview.h"
#include "host/startup/cfgcenter.h"
#include "host/valuetree/tree.h"
#include "workstation/frequencybar.h"
#include "workstation/mainwindow.h"
#include "workstation/messagespanel.h"
#include "workstation/simulatedreceiver.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QLibrary>
#include <QStandardPaths>
#include <QTabWidget>

#include <cstdio>

namespace {

constexpr char TargetsPath[] = "/Lists/LocalTargetList";
/// What a plug-in exports: called once after the store's own lists stand, and once before the end.
constexpr char PlugInStart[] = "FrequencyStorePlugInStart";
constexpr char PlugInStop[] = "FrequencyStorePlugInStop";
/// How long rows may take to settle before a picture is taken.
constexpr int SettleMilliseconds = 400;

struct NamedReceiver {
    const char* name;
    ReceiverKind kind;
};
constexpr NamedReceiver ReceiverKinds[] = {{"hf", ReceiverKind::HF}, {"vuhf", ReceiverKind::VUHF}};

QString samplesDirectory() {
    const QDir program(QCoreApplication::applicationDirPath());
    for (const QString& candidate :
         {program.filePath(QStringLiteral("../share/frequencystore/samples")),
          program.filePath(QStringLiteral("samples")), program.filePath(QStringLiteral("../../samples"))}) {
        if (QFileInfo(candidate).isDir())
            return QDir::cleanPath(candidate);
    }
    return QString();
}

QStringList absolute(const QStringList& files) {
    QStringList result;
    for (const QString& file : files)
        result << QFileInfo(file).absoluteFilePath();
    return result;
}

void settle() {
    QElapsedTimer timer;
    timer.start();
    do {
        QApplication::processEvents(QEventLoop::AllEvents, 20);
    } while (timer.elapsed() < SettleMilliseconds);
}

} // namespace

Options Options::Parse(const QStringList& arguments, QString& error) {
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Workstation for lists of frequencies"));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption data(
        QStringLiteral("data"), QStringLiteral("Directory of the lists' own files."), QStringLiteral("DIR"));
    const QCommandLineOption config(QStringLiteral("config"), QStringLiteral("Directory of the settings."),
                                    QStringLiteral("DIR"));
    const QCommandLineOption receiver(QStringLiteral("receiver"),
                                      QStringLiteral("The receiver: hf (the default) or vuhf."),
                                      QStringLiteral("KIND"), QString::fromLatin1(ReceiverKinds[0].name));
    const QCommandLineOption screenshot(
        QStringLiteral("screenshot"),
        QStringLiteral("Write one PNG per tab and of the window to DIR, and exit."), QStringLiteral("DIR"));
    const QCommandLineOption trace(QStringLiteral("trace"),
                                   QStringLiteral("Enabled traces: 32 traces, 2 assertions."),
                                   QStringLiteral("MASK"), QStringLiteral("0"));
    const QCommandLineOption plugIn(QStringLiteral("extension"),
                                    QStringLiteral("Load a plug-in with lists of its own."),
                                    QStringLiteral("FILE"));
    const QCommandLineOption demo(QStringLiteral("demo"), QStringLiteral("Load the sample lists."));
    parser.addOptions({data, config, receiver, screenshot, trace, plugIn, demo});
    parser.addPositionalArgument(QStringLiteral("FILE"), QStringLiteral("Target list files to read."),
                                 QStringLiteral("[FILE...]"));
    Options options;
    if (!parser.parse(arguments)) {
        error = parser.errorText();
        return options;
    }
    if (parser.isSet(QStringLiteral("help")))
        parser.showHelp();
    if (parser.isSet(QStringLiteral("version")))
        parser.showVersion();
    bool isNumber = false;
    options.traceMask = parser.value(trace).toUInt(&isNumber, 0);
    if (!isNumber)
        error = QStringLiteral("--trace takes a number, not \"%1\"").arg(parser.value(trace));
    const auto kind =
        std::find_if(std::begin(ReceiverKinds), std::end(ReceiverKinds),
                     [&](const auto& known) { return parser.value(receiver) == QLatin1String(known.name); });
    if (kind != std::end(ReceiverKinds))
        options.receiver = kind->kind;
    else
        error = QStringLiteral("--receiver takes hf or vuhf, not \"%1\"").arg(parser.value(receiver));
    options.dataDirectory = parser.value(data);
    options.configDirectory = parser.value(config);
    options.screenshotDirectory = parser.value(screenshot);
    options.demo = parser.isSet(demo);
    options.plugIns = absolute(parser.values(plugIn));
    options.files = absolute(parser.positionalArguments());
    return options;
}

Workstation::Workstation(const Options& options) : m_options(options) {
    ErrorHandler::Instance().SetTraceMask(options.traceMask);
    prepareDirectories();
    m_receiver = std::make_unique<SimulatedReceiver>(options.receiver);
    m_receiver->Start();
    m_window = std::make_unique<MainWindow>(*m_receiver);
    // Whoever started the program from a terminal sees there what the panel shows.
    QObject::connect(m_window->GetMessages(), &MessagesPanel::ProblemAdded,
                     [](const QString& text) { std::fprintf(stderr, "%s\n", qPrintable(text)); });
    registerLists();
    for (const QString& path : m_options.plugIns)
        loadPlugIn(path);
}

Workstation::~Workstation() {
    m_window.reset();
    for (const auto& plugIn : m_plugIns) {
        if (const auto stop = reinterpret_cast<void (*)()>(plugIn->resolve(PlugInStop)))
            stop();
    }
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

void Workstation::registerLists() {
    // The default list is read where there is one and nothing else was asked for.
    const bool haveDefault =
        m_options.files.isEmpty() && !m_options.demo &&
        QFileInfo::exists(CfgCenter::GetAppCfg(ICfg::StartUp)
                              .GetFilePath(QStringLiteral("LocalTargetList"), QStringLiteral("Targets.xml")));
    Node* targets = Tree::Instance()->MakeNode(QString::fromLatin1(TargetsPath));
    TargetListHandler::Instance()->Init(targets, haveDefault);
    TargetListHandler::Instance()->AddToFreqStore();
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
    QStringList files = m_options.files;
    if (m_options.demo && !samplesDirectory().isEmpty())
        files.prepend(samplesDirectory() + QStringLiteral("/targets.xml"));
    for (const QString& file : files)
        TargetListHandler::Instance()->ReadFile(file);
    m_window->GetBar()->FitAll();
    return m_window->GetMessages()->ProblemCount() == before;
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
