#include "workstation/options.h"

#include "receiver/receiverchoice.h"
#include "workstation/language.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace {

struct NamedReceiver {
    const char* name;
    ReceiverKind kind;
};
constexpr NamedReceiver ReceiverKinds[] = {{"hf", ReceiverKind::HF}, {"vuhf", ReceiverKind::VUHF}};

QStringList absolute(const QStringList& files) {
    QStringList result;
    for (const QString& file : files)
        result << QFileInfo(file).absoluteFilePath();
    return result;
}

/// Why a path cannot be a directory: it, or what lies above it, is a file. Empty when it can.
QString whyNoDirectory(const QString& path) {
    QFileInfo place(QDir::cleanPath(QFileInfo(path).absoluteFilePath()));
    while (!place.exists() && !place.isRoot())
        place = QFileInfo(place.absolutePath());
    return place.isDir() ? QString() : QStringLiteral("%1 is no directory").arg(place.filePath());
}

} // namespace

/// A kind, or which receiver; whether there is a profile of that name is known when the settings are.
void Options::takeReceiver(const QString& name, QString& error) {
    const auto kind = std::ranges::find_if(
        ReceiverKinds, [&](const NamedReceiver& known) { return name == QLatin1String(known.name); });
    if (kind != std::end(ReceiverKinds)) {
        receiver = kind->kind;
        return;
    }
    radio = name;
    QString wrong;
    if (name.startsWith(QLatin1String("hamlib:")))
        ReceiverChoice::Parse(name, wrong);
    if (!wrong.isEmpty())
        error = QStringLiteral("--receiver: %1").arg(wrong);
}

/// A list of this program is shared from its start on.
void Options::takeShare(const QCommandLineParser& parser, QString& error) {
    const auto path = [&](const char* option) {
        const QString name = parser.value(QLatin1String(option));
        return name.isEmpty() ? name : QFileInfo(name).absoluteFilePath();
    };
    share = {.url = parser.value(QStringLiteral("share")),
             .passwordFile = path("password-file"),
             .caFile = path("ca-file"),
             .certificateFile = path("certificate"),
             .keyFile = path("key")};
    if (const QString role = parser.value(QStringLiteral("role")); !ShareProfile::TakeRole(role, share.role))
        error = QStringLiteral("--role takes client or server, not \"%1\"").arg(role);
    if (const QString problem = share.url.isEmpty() ? QString() : share.Problem(); !problem.isEmpty())
        error = QStringLiteral("--share: %1").arg(problem);
}

Options Options::Parse(const QStringList& arguments, QString& error) {
    const QString languages = Language::Known().join(QStringLiteral(" or "));
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Workstation for lists of frequencies"));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption data(
        QStringLiteral("data"), QStringLiteral("Directory of the lists' own files."), QStringLiteral("DIR"));
    const QCommandLineOption config(QStringLiteral("config"), QStringLiteral("Directory of the settings."),
                                    QStringLiteral("DIR"));
    const QCommandLineOption receiver(
        QStringLiteral("receiver"),
        QStringLiteral("The kind of receiver, hf (the default) or vuhf, or which one: a profile's name or "
                       "hamlib:MODEL@PORT. May be given twice."),
        QStringLiteral("KIND|NAME"));
    const QCommandLineOption screenshot(
        QStringLiteral("screenshot"),
        QStringLiteral("Write one PNG per tab and of the window to DIR, and exit."), QStringLiteral("DIR"));
    const QCommandLineOption trace(QStringLiteral("trace"),
                                   QStringLiteral("Enabled traces: 32 traces, 2 assertions."),
                                   QStringLiteral("MASK"), QStringLiteral("0"));
    const QCommandLineOption plugIn(QStringLiteral("extension"),
                                    QStringLiteral("Load a plug-in with lists of its own."),
                                    QStringLiteral("FILE"));
    const QCommandLineOption job(QStringLiteral("job"), QStringLiteral("The job to open."),
                                 QStringLiteral("FILE"));
    const QCommandLineOption demo(QStringLiteral("demo"),
                                  QStringLiteral("Load the sample lists and a sample job."));
    const QCommandLineOption language(QStringLiteral("language"),
                                      QStringLiteral("The language of the window: %1.").arg(languages),
                                      QStringLiteral("CODE"));
    QCommandLineOption guide(QStringLiteral("guide"),
                             QStringLiteral("Write the pictures of the guide to DIR, and exit."),
                             QStringLiteral("DIR"));
    guide.setFlags(QCommandLineOption::HiddenFromHelp); // the build has them made
    const QList<QCommandLineOption> shared{
        {QStringLiteral("share"),
         QStringLiteral("Share lists of a site through a broker: mqtts://USER@HOST/SITE."),
         QStringLiteral("URL")},
        {QStringLiteral("role"), QStringLiteral("What this seat is there: client (the default) or server."),
         QStringLiteral("ROLE"), QStringLiteral("client")},
        {QStringLiteral("password-file"),
         QStringLiteral("File whose first line is the password; its mode must be 600."),
         QStringLiteral("FILE")},
        {QStringLiteral("ca-file"),
         QStringLiteral("Certificates of the authorities that the broker's is checked by."),
         QStringLiteral("FILE")},
        {QStringLiteral("certificate"), QStringLiteral("Certificate of this client."),
         QStringLiteral("FILE")},
        {QStringLiteral("key"), QStringLiteral("Key of this client's certificate."), QStringLiteral("FILE")}};
    QCommandLineOption timeStart(QStringLiteral("time-start"),
                                 QStringLiteral("End after the first paint and print the memory in use."));
    timeStart.setFlags(QCommandLineOption::HiddenFromHelp); // for bench/start
    parser.addOptions(
        {data, config, receiver, job, screenshot, trace, plugIn, demo, language, guide, timeStart});
    parser.addOptions(shared);
    parser.addPositionalArgument(QStringLiteral("FILE"),
                                 QStringLiteral("Files to read: jobs, NOI lists, target lists."),
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
    for (const QString& name : parser.values(receiver))
        options.takeReceiver(name, error);
    options.takeShare(parser, error);
    options.language = parser.value(language);
    if (parser.isSet(language) && !Language::Known().contains(options.language))
        error = QStringLiteral("--language takes %1, not \"%2\"").arg(languages, options.language);
    for (const QCommandLineOption& option : {data, config, screenshot, guide}) {
        const QString why = parser.isSet(option) ? whyNoDirectory(parser.value(option)) : QString();
        if (!why.isEmpty())
            error = QStringLiteral("--%1 takes a directory: %2").arg(option.names().first(), why);
    }
    options.dataDirectory = parser.value(data);
    options.configDirectory = parser.value(config);
    options.takesGuide = parser.isSet(guide);
    options.timesStart = parser.isSet(timeStart);
    if (const QString folder = parser.value(options.takesGuide ? guide : screenshot); !folder.isEmpty())
        options.screenshotDirectory = QFileInfo(folder).absoluteFilePath();
    options.demo = parser.isSet(demo) || options.takesGuide;
    if (parser.isSet(job))
        options.jobFile = absolute({parser.value(job)}).first();
    options.plugIns = absolute(parser.values(plugIn));
    options.files = absolute(parser.positionalArguments());
    return options;
}
