// Serves a list to other seats, without a screen.

#include "cli/broker.h"
#include "cli/command.h"
#include "cli/foreign.h"
#include "cli/output.h"
#include "host/report/rgexception.h"
#include "link/listserver.h"
#include "link/recordserver.h"

#include <QCoreApplication>

namespace {

/// Clients' changes within this time are written to the file together; until then the journal has them.
constexpr int SaveMilliseconds = 5000;

/// Tells the operator what has become of a server; one that is refused ends the program.
template <typename Server>
void tellState(const Server& server, const CliList& list, const Broker& broker) {
    using State = ListClaim::State;
    const State state = server.GetState();
    if (state == State::Serving)
        TellError(QStringLiteral("freqstore-cli share: serves %1 at %2")
                      .arg(Counted(static_cast<qint64>(list.Count()), "entry", "entries"),
                           broker.Address().ToString()));
    else if (!server.Reason().isEmpty())
        TellError(QStringLiteral("freqstore-cli share: ") +
                  (state == State::Offline ? QStringLiteral("not connected: ") : QString()) +
                  server.Reason());
    if (state == State::Refused)
        QMetaObject::invokeMethod(
            QCoreApplication::instance(), [] { QCoreApplication::exit(ExitFile); }, Qt::QueuedConnection);
}

/// A list with its file and its server.
class SharedFile : public QObject {
public:
    SharedFile(CliList& list, const QString& kind, const QString& path, const QString& journal,
               Broker& broker)
        : m_list(list), m_path(path), m_broker(broker) {
        const CliList::EntryNodes nodes = list.GetEntryNodes();
        const SharedList shared{list.GetNode(), kind, QString::fromLatin1(nodes.name), nodes.shape, false};
        m_server = std::make_unique<ListServer>(broker.GetSeat(), shared, QString(),
                                                std::make_unique<ListJournal>(journal));
        m_save.setSingleShot(true);
        m_save.setInterval(SaveMilliseconds);
        connect(&m_save, &QTimer::timeout, this, &SharedFile::Save);
        connect(m_server.get(), &ListServer::Edited, this, &SharedFile::saveSoon);
        connect(m_server.get(), &ListServer::StateChanged, this, &SharedFile::tell);
        tell();
    }
    /// Writes the list; the journal begins anew. False, told, when the file cannot be written: then the
    /// journal keeps all.
    bool Save() {
        m_save.stop();
        m_server->Flush();
        m_list.EntriesChanged();
        if (!m_list.Write(m_path))
            return false;
        try {
            m_server->WasSaved();
        } catch (const RGException& exception) {
            TellError(exception.GetErrorText());
            return false;
        }
        return true;
    }
    bool HasUnsaved() const { return m_server->HasUnsaved(); }

private:
    void saveSoon() {
        if (HasUnsaved() && !m_save.isActive())
            m_save.start();
    }
    void tell() {
        tellState(*m_server, m_list, m_broker);
        if (m_server->GetState() == ListServer::State::Serving)
            saveSoon(); // what an earlier life left
    }

    CliList& m_list;
    QString m_path;
    Broker& m_broker;
    std::unique_ptr<ListServer> m_server;
    QTimer m_save;
};

/// Records are served as the file has them: no client changes them.
int shareRecords(CliList& list, const QString& kind, Broker& broker) {
    RecordServer server(broker.GetSeat(), *list.Records(), kind);
    const auto tell = [&] { tellState(server, list, broker); };
    QObject::connect(&server, &RecordServer::StateChanged, tell);
    tell();
    return RunUntilSignal();
}

int share(const Arguments& args) {
    const QString path = args.Files().at(1);
    const QString kind = args.IsSet("list") ? args.Value("list") : ListKindOf(path);
    ProblemPrinter problems;
    const std::unique_ptr<CliList> list = args.List(path);
    if (!list)
        return ExitUsage;
    if (!list->Read(path))
        return ExitFile;
    problems.Flush();
    const QString journal = args.IsSet("journal") ? args.Value("journal") : path + QStringLiteral(".share");
    Broker broker(args, args.Files().first());
    if (list->Records())
        return shareRecords(*list, kind, broker);
    SharedFile shared(*list, kind, path, journal, broker);
    const int exitCode = RunUntilSignal();
    const bool isKept = exitCode != ExitDone || !shared.HasUnsaved() || shared.Save();
    return isKept ? exitCode : int(ExitFile);
}

} // namespace

int RunShare(const QStringList& arguments) {
    Arguments args(
        "share",
        "Serves the list of a file to other seats, through the broker at mqtts://USER@HOST/SITE, until a "
        "signal ends it. What clients change is written to the file; detections they only see.",
        2);
    Broker::AddOptions(args.Parser());
    args.Parser().addOption({QStringLiteral("role"),
                             QStringLiteral("server, the only role without a screen."),
                             QStringLiteral("ROLE"), QStringLiteral("server")});
    args.Parser().addOption(
        {QStringLiteral("journal"),
         QStringLiteral("File that keeps identities and changes not yet written; FILE.share if not given."),
         QStringLiteral("JOURNAL")});
    args.Parser().addPositionalArgument(QStringLiteral("URL"), QStringLiteral("Broker and site."));
    args.Parser().addPositionalArgument(QStringLiteral("FILE"), QStringLiteral("List to serve."));
    int exitCode = ExitDone;
    if (!args.Take(arguments, exitCode))
        return exitCode;
    if (args.Value("role") != QLatin1String("server")) {
        args.TellUsage(QStringLiteral("the role can only be \"server\""));
        return ExitUsage;
    }
    try {
        return share(args);
    } catch (const RGException& exception) {
        TellError(exception.GetErrorText());
        return ExitFile;
    }
}
