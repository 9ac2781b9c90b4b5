#include "cli/arguments.h"
#include "cli/command.h"
#include "cli/memorylist.h"
#include "cli/output.h"
#include "cli/samefile.h"
#include "cli/show.h"

#include <algorithm>

namespace {

constexpr char ShowName[] = "job show";
constexpr char MergeName[] = "job merge";

void addReceiverOption(QCommandLineParser& parser) {
    parser.addOption(
        {QStringLiteral("receiver"),
         QStringLiteral("Receiver that runs the job: hf or vuhf. Without it, the channels tell."),
         QStringLiteral("RECEIVER")});
}

/// The receiver of the first file whose channels tell one; else HF.
bool isAnyOfVUHF(const QStringList& files) {
    for (const QString& file : files) {
        if (const std::optional<bool> isVUHF = IsJobOfVUHF(file))
            return *isVUHF;
    }
    return false;
}

/// Null, told, when there is no such receiver.
std::unique_ptr<MemoryList> listOf(const Arguments& args) {
    const QString receiver = args.Value("receiver");
    if (!args.IsSet("receiver"))
        return std::make_unique<MemoryList>(isAnyOfVUHF(args.Files()));
    if (receiver == QLatin1String("hf") || receiver == QLatin1String("vuhf"))
        return std::make_unique<MemoryList>(receiver == QLatin1String("vuhf"));
    args.TellUsage(QStringLiteral("no receiver is called \"%1\"").arg(receiver));
    return nullptr;
}

/// Whether a file that is read would lose what could not be read of it.
bool wouldLose(const Arguments& args) {
    if (args.IsSet("force"))
        return false;
    const QStringList files = args.Files();
    return std::any_of(files.begin(), files.end(),
                       [&](const QString& in) { return WouldLose(in, args.Value("out")); });
}

int show(const QStringList& arguments) {
    Arguments args(ShowName, "Prints the memory channels of a job.", 1, false);
    addReceiverOption(args.Parser());
    AddFormatOption(args.Parser());
    args.Parser().addPositionalArgument(QStringLiteral("JOB.pij"), QStringLiteral("Job to read."));
    int exitCode = ExitDone;
    if (!args.Take(arguments, exitCode))
        return exitCode;
    const EntryPrinter print = PrinterOf(args.Value("format"), ShowName);
    ProblemPrinter problems;
    const std::unique_ptr<MemoryList> list = print ? listOf(args) : nullptr;
    if (!list)
        return ExitUsage;
    if (!list->OpenJob(args.Files().first()))
        return ExitFile;
    problems.Flush();
    print(*list);
    return problems.Count() == 0 ? ExitDone : ExitFile;
}

int merge(const QStringList& arguments) {
    Arguments args(MergeName,
                   "Adds channels behind the memory channels of a job, and writes the job with its "
                   "memory-scan sections made anew and all else as it is.",
                   2, false);
    addReceiverOption(args.Parser());
    args.Parser().addOption({QStringLiteral("replace"), QStringLiteral("Drop the channels of the job.")});
    args.Parser().addOption(
        {QStringLiteral("force"),
         QStringLiteral("Let OUT.pij take the place of a file even when reading it told problems.")});
    args.Parser().addOption(
        {QStringLiteral("out"), QStringLiteral("Job to write."), QStringLiteral("OUT.pij")});
    args.Parser().addPositionalArgument(QStringLiteral("JOB.pij"), QStringLiteral("Job to read."));
    args.Parser().addPositionalArgument(QStringLiteral("CHANNELS"),
                                        QStringLiteral("Channels to add: .xml, .sfl or another .pij."));
    int exitCode = ExitDone;
    if (!args.Take(arguments, exitCode))
        return exitCode;
    if (args.Value("out").isEmpty()) {
        args.TellUsage(QStringLiteral("--out is missing"));
        return ExitUsage;
    }
    const ProblemPrinter problems;
    const std::unique_ptr<MemoryList> list = listOf(args);
    if (!list)
        return ExitUsage;
    if (!list->OpenJob(args.Files()[0]))
        return ExitFile;
    if (args.IsSet("replace"))
        list->Clear();
    if (!list->Read(args.Files()[1]))
        return ExitFile;
    const bool isKept = problems.Count() > 0 && wouldLose(args);
    const bool done = !isKept && list->SaveJob(args.Value("out"));
    return done && problems.Count() == 0 ? ExitDone : ExitFile;
}

} // namespace

int RunJob(const QStringList& arguments) {
    const QString name = arguments.value(0);
    if (name == QLatin1String("show"))
        return show(arguments.mid(1));
    if (name == QLatin1String("merge"))
        return merge(arguments.mid(1));
    const bool isHelp = name == QLatin1String("--help") || name == QLatin1String("-h");
    Output(isHelp ? stdout : stderr)
        .Text(QStringLiteral(
            "Usage: freqstore-cli job show|merge [OPTIONS] FILES\n\nShows the memory channels of a "
            "receiver's job, or puts others into it. freqstore-cli job show --help\nand "
            "freqstore-cli job merge --help tell more.\n"));
    return isHelp ? ExitDone : ExitUsage;
}
