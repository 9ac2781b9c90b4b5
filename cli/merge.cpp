#include "cli/command.h"
#include "cli/foreign.h"
#include "cli/jsonfile.h"
#include "cli/memorylist.h"
#include "cli/output.h"
#include "cli/samefile.h"
#include "cli/twolists.h"
#include "controls/frequencystore/common/keys.h"
#include "host/base/problems.h"
#include "host/valuetree/node.h"
#include "host/valuetree/value.h"

#include <algorithm>

namespace {

constexpr char TraceSource[] = "merge";
/// Kinds whose entries are kept by an operator; those of the others were heard at a time, and stay as they
/// are.
constexpr const char* MergedKinds[] = {"target", "memory-hf", "memory-vuhf", "noi"};

bool isJob(const QString& path) {
    return path.endsWith(QLatin1String(".pij"));
}

void addOptions(QCommandLineParser& parser) {
    parser.addOption({QStringLiteral("out"), QStringLiteral("File to write."), QStringLiteral("C")});
    TwoLists::AddTolerance(parser);
    Foreign::AddOptions(parser);
    parser.addOption({QStringLiteral("prefer"),
                      QStringLiteral("What holds where entries of both differ: first or second (first)."),
                      QStringLiteral("WHICH"), QStringLiteral("first")});
    parser.addOption(
        {QStringLiteral("force"),
         QStringLiteral("Let C take the place of A or B even when reading them told problems.")});
    parser.addPositionalArgument(QStringLiteral("A"), QStringLiteral("List that the other is added to."));
    parser.addPositionalArgument(QStringLiteral("B"), QStringLiteral("List whose entries are added."));
}

struct Options {
    QString kind;
    QString out;
    double tolerance = 0; ///< Hz
    bool prefersSecond = false;
};

/// False, told, when the command line is wrong.
bool takeOptions(const Arguments& args, Options& options) {
    const auto refuse = [&args](const QString& reason) {
        args.TellUsage(reason);
        return false;
    };
    options.out = args.Value("out");
    if (options.out.isEmpty())
        return refuse(QStringLiteral("--out is missing"));
    const QString prefer = args.Value("prefer");
    options.prefersSecond = prefer == QLatin1String("second");
    if (!options.prefersSecond && prefer != QLatin1String("first"))
        return refuse(QStringLiteral("--prefer \"%1\" is neither first nor second").arg(prefer));
    if (!Foreign::CheckOptions(args) || !TwoLists::TakeTolerance(args, options.tolerance))
        return false;
    options.kind = TwoLists::KindOfBoth(args);
    if (options.kind.isEmpty())
        return false;
    if (std::none_of(std::begin(MergedKinds), std::end(MergedKinds),
                     [&](const char* kind) { return options.kind == QLatin1String(kind); }))
        return refuse(QStringLiteral("lists of kind %1 are not merged: each entry was heard at its own time")
                          .arg(options.kind));
    if (isJob(options.out) && isJob(args.Files()[0]))
        return true;
    if (isJob(options.out))
        return refuse(
            QStringLiteral("\"%1\" is a job, and is made of another one only: A is none").arg(options.out));
    const QString refusal = MakeList(options.kind)->Names().RefuseToWrite(options.out);
    return refusal.isEmpty() || refuse(refusal);
}

struct Counts {
    qint64 added = 0;
    qint64 changed = 0;
    qint64 kept = 0; ///< of the first list
};

/// Brings the second list's entries into the first one.
class Merger {
public:
    Merger(TwoLists& lists, const QString& nameOfSecond, bool prefersSecond)
        : m_lists(lists),
          m_name(nameOfSecond),
          m_prefersSecond(prefersSecond),
          m_hasPriorities(lists.First().Names().FormatRead(nameOfSecond) != FileFormat::SflLines &&
                          !Foreign::IsOfOthers(lists.First(), nameOfSecond)) {}

    Counts Run() {
        const std::vector<Node*> mine = m_lists.First().GetNode()->Children();
        m_counts.kept = static_cast<qint64>(mine.size());
        for (size_t place = 0; place < m_lists.Second().Size(); ++place) {
            const quint32 of = m_lists.OfSecond()[place];
            if (of == EntryMerge::None)
                add(place);
            else if (m_prefersSecond)
                takeOver(place, *mine[of]);
        }
        m_lists.First().EntriesChanged();
        return m_counts;
    }

private:
    void add(size_t place) {
        const std::vector<EntryField> entry = m_lists.Second().At(place);
        if (!(EntryMerge::FrequencyOf(ComparedFields(entry)) > 0)) {
            Problems::Report(
                TraceSource,
                {m_name, 0, QStringLiteral("entry %1 has no frequency and is left out").arg(place + 1)});
            return;
        }
        Interchange::JsonEntry members(m_name, static_cast<qint64>(place + 1));
        for (const EntryField& field : entry)
            AddToJson(members, field);
        m_lists.First().AddEntry(members);
        ++m_counts.added;
    }

    /// What differs is taken; what the second list says nothing about stays.
    void takeOver(size_t place, Node& mine) {
        const std::vector<EntryField> entry = m_lists.Second().At(place);
        std::vector<EntryMerge::Difference> differences = EntryMerge::Differences(
            ComparedFields(FieldsOf(mine)), ComparedFields(entry), EntryMerge::Silence::IsEqual);
        if (!m_hasPriorities)
            std::erase_if(differences, [](const EntryMerge::Difference& difference) {
                return difference.key == Keys::Priority.Text();
            });
        if (differences.empty())
            return;
        Interchange::JsonEntry members(m_name, static_cast<qint64>(place + 1));
        for (const EntryField& field : entry) {
            if (std::ranges::find(differences, field.key, &EntryMerge::Difference::key) == differences.end())
                continue;
            AddToJson(members, field);
            if (auto* numbers = mine.FindOwn<ValueList<double>>(Names::Find(field.key)))
                numbers->Clear();
        }
        FillFromJson(mine, members);
        ++m_counts.changed;
        --m_counts.kept;
    }

    TwoLists& m_lists;
    QString m_name;
    bool m_prefersSecond;
    bool m_hasPriorities; ///< else the second list's file has none, and they are made up
    Counts m_counts;
};

bool write(CliList& list, const QString& out) {
    auto* const memory = dynamic_cast<MemoryList*>(&list);
    return memory && isJob(out) ? memory->SaveJob(out) : list.Write(out);
}

bool openJob(CliList& list, const QString& path) {
    auto* const memory = dynamic_cast<MemoryList*>(&list);
    return memory && memory->OpenJob(path);
}

} // namespace

int RunMerge(const QStringList& arguments) {
    Arguments args(
        "merge",
        "Writes the list A with what B has besides. Entries whose frequencies are the same, or lie "
        "within the tolerance, and whose demodulations do not differ, are one entry. A's entries "
        "come first, in A's order, then the new ones in B's.",
        2);
    addOptions(args.Parser());
    int exitCode = ExitDone;
    if (!args.Take(arguments, exitCode))
        return exitCode;
    Options options;
    ProblemPrinter problems;
    if (!takeOptions(args, options))
        return ExitUsage;
    TwoLists lists;
    if (!lists.Read(args, options.kind, options.tolerance,
                    isJob(options.out) ? TwoLists::Reader(openJob) : TwoLists::Reader()))
        return ExitFile;
    const QStringList files = args.Files();
    const Counts counts = Merger(lists, files[1], options.prefersSecond).Run();
    const bool isKept = problems.Count() > 0 && !args.IsSet("force") &&
                        std::any_of(files.begin(), files.end(),
                                    [&](const QString& in) { return WouldLose(in, options.out); });
    if (isKept || !write(lists.First(), options.out))
        return ExitFile;
    problems.Flush();
    Output(stdout).Line(QStringLiteral("%1: %2 added, %3 changed, %4 as they were")
                            .arg(options.out, Counted(counts.added, "entry", "entries"))
                            .arg(counts.changed)
                            .arg(counts.kept));
    return problems.Count() == 0 ? ExitDone : ExitFile;
}
