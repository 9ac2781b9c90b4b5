#include "cli/command.h"
#include "cli/foreign.h"
#include "cli/output.h"
#include "cli/twolists.h"
#include "host/base/frequencytext.h"
#include "host/base/numbers.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

/// Entries are counted from 1; 0 stands for none.
struct Found {
    size_t first = 0;
    size_t second = 0;
    std::vector<EntryField> entry;                   ///< of the first list, if it has one
    std::vector<EntryMerge::Difference> differences; ///< of one that both have
    double hertz = 0;
};

QString quoted(const QString& text) {
    return QLatin1Char('"') + text + QLatin1Char('"');
}

/// What is known of an entry on one line.
QString described(const Found& found) {
    QStringList parts{Quor::FrequencyText(found.hertz)};
    for (const char* key : {"demodulation", "comment"}) {
        for (const EntryField& field : found.entry) {
            const QString said = EntryMerge::Said({field.key, field.text}, found.hertz);
            if (field.key == QLatin1String(key) && !said.isEmpty())
                parts << (field.key == QLatin1String("comment") ? quoted(said) : said);
        }
    }
    return parts.join(QLatin1Char(' '));
}

/// Prints differences, and counts them.
class Printer {
public:
    virtual ~Printer() = default;
    /// False when standard output takes no more.
    bool Put(const Found& found) {
        ++m_count;
        return put(found);
    }
    virtual void Finish() {}
    qint64 Count() const { return m_count; }

protected:
    virtual bool put(const Found& found) = 0;
    Output m_out{stdout};

private:
    qint64 m_count = 0;
};

class TextPrinter : public Printer {
    bool put(const Found& found) override {
        if (found.first == 0 || found.second == 0)
            return m_out.Line((found.first != 0 ? QLatin1String("- ") : QLatin1String("+ ")) +
                              described(found));
        QStringList parts;
        for (const EntryMerge::Difference& difference : found.differences)
            parts << QStringLiteral("%1 %2 -> %3")
                         .arg(difference.key, quoted(difference.mine), quoted(difference.theirs));
        return m_out.Line(QStringLiteral("~ %1: %2")
                              .arg(Quor::FrequencyText(found.hertz), parts.join(QStringLiteral(", "))));
    }
};

/// An array with an object per difference.
class JsonPrinter : public Printer {
public:
    void Finish() override {
        m_out.Line(Count() == 0 ? QStringLiteral("[") : m_line);
        m_out.Line(QStringLiteral("]"));
    }

private:
    bool put(const Found& found) override {
        const bool isTaken = m_out.Line(Count() == 1 ? QStringLiteral("[") : m_line + QLatin1Char(','));
        QJsonObject object{{QStringLiteral("frequency"), found.hertz}};
        QJsonObject members;
        QJsonObject changes;
        for (const EntryField& field : found.entry) {
            members.insert(field.key, JsonOf(field));
            for (const EntryMerge::Difference& difference : found.differences)
                if (difference.key == field.key)
                    changes.insert(field.key, QJsonArray{JsonOf({field.key, difference.mine, field.type}),
                                                         JsonOf({field.key, difference.theirs, field.type})});
        }
        if (changes.isEmpty())
            object.insert(QStringLiteral("entry"), members);
        else
            object.insert(QStringLiteral("different"), changes);
        if (found.first != 0)
            object.insert(QStringLiteral("first"), static_cast<qint64>(found.first));
        if (found.second != 0)
            object.insert(QStringLiteral("second"), static_cast<qint64>(found.second));
        m_line = QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
        return isTaken;
    }

    QString m_line; ///< that is printed when it is known whether another one follows
};

/// What the first list has alone or otherwise, in its order, then what the second one has alone. False when
/// standard output takes no more.
bool printDifferences(TwoLists& lists, Printer& printer) {
    const std::vector<quint32> ofFirst = lists.OfFirst();
    size_t place = 0;
    const bool isTaken = lists.First().ForEachEntry([&](const std::vector<EntryField>& entry) {
        const quint32 other = ofFirst[place++];
        Found found;
        found.first = place;
        found.entry = entry;
        const std::vector<EntryMerge::Field> fields = ComparedFields(entry);
        found.hertz = EntryMerge::FrequencyOf(fields);
        if (other == EntryMerge::None)
            return printer.Put(found);
        found.second = other + size_t(1);
        found.differences = EntryMerge::Differences(fields, ComparedFields(lists.Second().At(other)),
                                                    EntryMerge::Silence::Differs);
        return found.differences.empty() || printer.Put(found);
    });
    bool goesOn = isTaken;
    for (size_t second = 0; goesOn && second < lists.Second().Size(); ++second) {
        if (lists.OfSecond()[second] != EntryMerge::None)
            continue;
        Found found;
        found.second = second + 1;
        found.entry = lists.Second().At(second);
        found.hertz = EntryMerge::FrequencyOf(ComparedFields(found.entry));
        goesOn = printer.Put(found);
    }
    return goesOn;
}

/// Null, told, when there is no such format.
std::unique_ptr<Printer> printerOf(const Arguments& args) {
    const QString format = args.IsSet("json") ? QStringLiteral("json") : args.Value("format");
    if (format == QLatin1String("json"))
        return std::make_unique<JsonPrinter>();
    if (format == QLatin1String("text"))
        return std::make_unique<TextPrinter>();
    args.TellUsage(QStringLiteral("no format is called \"%1\"").arg(format));
    return nullptr;
}

} // namespace

int RunDiff(const QStringList& arguments) {
    Arguments args(
        "diff",
        "Tells what two lists differ in: entries that only A has (-), that only B has (+), and what "
        "is different in those that both have (~). The order of the entries does not matter.",
        2);
    args.Parser().addOption({QStringLiteral("format"), QStringLiteral("text or json."),
                             QStringLiteral("FORMAT"), QStringLiteral("text")});
    args.Parser().addOption({QStringLiteral("json"), QStringLiteral("The same as --format json.")});
    TwoLists::AddTolerance(args.Parser());
    Foreign::AddOptions(args.Parser());
    args.Parser().addPositionalArgument(QStringLiteral("A"), QStringLiteral("First list."));
    args.Parser().addPositionalArgument(QStringLiteral("B"), QStringLiteral("Second list."));
    int exitCode = ExitDone;
    if (!args.Take(arguments, exitCode))
        return exitCode;
    double tolerance = 0;
    if (!Foreign::CheckOptions(args) || !TwoLists::TakeTolerance(args, tolerance))
        return ExitUsage;
    const std::unique_ptr<Printer> printer = printerOf(args);
    const QString kind = printer ? TwoLists::KindOfBoth(args) : QString();
    if (kind.isEmpty())
        return ExitUsage;
    ProblemPrinter problems;
    TwoLists lists;
    if (!lists.Read(args, kind, tolerance))
        return ExitFile;
    problems.Flush();
    if (printDifferences(lists, *printer))
        printer->Finish();
    if (problems.Count() > 0)
        return ExitFile;
    return printer->Count() == 0 ? ExitDone : ExitDifferent;
}
