// Prints a list that another seat serves, and what becomes of it, or which lists there are.

#include "cli/broker.h"
#include "cli/command.h"
#include "cli/jsonfile.h"
#include "cli/output.h"
#include "cli/sitelists.h"
#include "host/report/rgexception.h"
#include "host/valuetree/tree.h"
#include "link/listreader.h"

#include <QCoreApplication>

namespace {

class Watch : public QObject {
public:
    Watch(Broker& broker, const QString& kind, bool once)
        : m_reader(broker.GetSeat(), kind),
          m_once(once),
          m_scratch(Tree::Instance()->MakeNode(QStringLiteral("/Watch"))) {
        connect(&m_reader, &ListReader::RowsChanged, this, &Watch::print);
        connect(&m_reader, &ListReader::StateChanged, this, &Watch::tell);
    }

private:
    using EntryId = Messages::EntryId;

    void tell() {
        if (const QString text = m_reader.StateText(); !text.isEmpty())
            TellError(QStringLiteral("freqstore-cli watch: ") + text);
        if (m_reader.GetState() == ListReader::State::Refused)
            QCoreApplication::exit(ExitFile);
        if (m_once && m_printed && !m_reader.Copy().WantsChunks())
            QCoreApplication::exit(ExitDone);
    }
    void print(const ListCopy::Changed& changed) {
        Output out(stdout);
        TextPieces pieces([&](std::string_view lines) { return out.Lines(lines); });
        bool isTaken = true;
        for (const EntryId id : changed.all ? allIds() : changed.ids)
            isTaken = isTaken && printEntry(id, pieces);
        m_printed = true;
        isTaken = pieces.HandOn() && std::fflush(stdout) == 0 && isTaken;
        if (!isTaken || m_once)
            QCoreApplication::exit(isTaken ? ExitDone : ExitFile);
    }
    /// Rows in list order, and what was printed of rows that have gone.
    std::vector<EntryId> allIds() const {
        std::vector<std::pair<quint32, EntryId>> byPlace;
        for (const auto& [id, row] : m_reader.Copy().GetRows())
            byPlace.emplace_back(row.Content().place, id);
        std::sort(byPlace.begin(), byPlace.end());
        std::vector<EntryId> ids;
        for (const auto& [id, contents] : m_known) {
            if (!m_reader.Copy().Find(id))
                ids.push_back(id);
        }
        for (const auto& row : byPlace)
            ids.push_back(row.second);
        return ids;
    }
    bool printEntry(EntryId id, TextPieces& pieces) {
        std::string& out = pieces.Text();
        const ListCopy::Row* const row = m_reader.Copy().Find(id);
        if (!row) {
            if (m_known.erase(id) > 0)
                out += "{\"event\":\"removed\",\"id\":" + std::to_string(id) + "}\n";
            return pieces.Proceed();
        }
        const Messages::Row content = row->Content();
        const quint64 hash = Wire::Hash(content.contents);
        const auto [known, isNew] = m_known.try_emplace(id, hash);
        if (!isNew && std::exchange(known->second, hash) == hash)
            return true;
        const char* const event = !m_printed ? "entry" : isNew ? "added" : "changed";
        const EntryLayout& layout = *m_reader.Copy().Layouts().At(content.layout);
        std::vector<EntryField> fields = FieldsOfDetection(layout, content.contents);
        if (fields.empty())
            fields = FieldsOf(*layout.MakeEntry(*m_scratch, nullptr, content.contents));
        out += std::string("{\"event\":\"") + event + "\",\"id\":" + std::to_string(id) + ",";
        AppendJsonMembers(out, fields);
        out += "}\n";
        return pieces.Proceed();
    }

    ListReader m_reader;
    bool m_once;
    bool m_printed = false;
    Node* m_scratch;
    std::unordered_map<EntryId, quint64> m_known; ///< hashes of the contents that were printed
};

/// Options that do not go together; empty when they do.
QString whyWrong(const Arguments& args) {
    const QString format = args.Value("format");
    if (format != QLatin1String("table") && format != QLatin1String("jsonl"))
        return QStringLiteral("--format takes table or jsonl, not \"%1\"").arg(format);
    for (const char* option : {"list", "once"}) {
        if (args.IsSet("lists") && args.IsSet(option))
            return QStringLiteral("--lists tells of all lists, --%1 of one").arg(QLatin1String(option));
    }
    return args.IsSet("format") && !args.IsSet("lists") ? QStringLiteral("--format belongs to --lists")
                                                        : QString();
}

} // namespace

int RunWatch(const QStringList& arguments) {
    Arguments args(
        "watch",
        "Prints the entries of a list that another seat serves, one JSON object a line, when all of it is "
        "here, and then each change, until a signal ends it; or tells which lists there are.",
        1);
    Broker::AddOptions(args.Parser());
    args.Parser().addOption({QStringLiteral("once"), QStringLiteral("End when all entries are printed.")});
    args.Parser().addOption(
        {QStringLiteral("lists"), QStringLiteral("Print the lists that the site has instead, and end.")});
    args.Parser().addOption(
        {QStringLiteral("format"),
         QStringLiteral("Of --lists: table (the default) or jsonl, one JSON object a line."),
         QStringLiteral("FORMAT"), QStringLiteral("table")});
    args.Parser().addPositionalArgument(QStringLiteral("URL"), QStringLiteral("Broker and site."));
    int exitCode = ExitDone;
    if (!args.Take(arguments, exitCode))
        return exitCode;
    if (const QString wrong = whyWrong(args); !wrong.isEmpty()) {
        args.TellUsage(wrong);
        return ExitUsage;
    }
    const ProblemPrinter problems;
    try {
        Broker broker(args, args.Files().first());
        if (args.IsSet("lists"))
            return PrintSiteLists(broker, args.Value("format") == QLatin1String("jsonl"));
        const Watch watch(broker, args.Value("list"), args.IsSet("once"));
        return RunUntilSignal();
    } catch (const RGException& exception) {
        TellError(exception.GetErrorText());
        return ExitFile;
    }
}
