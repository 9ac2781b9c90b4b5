#include "cli/arguments.h"
#include "cli/command.h"
#include "cli/memorylist.h"
#include "cli/show.h"

#include <cstdio>

namespace {

constexpr char ShowName[] = "job show";
constexpr char MergeName[] = "job merge";

void addReceiverOption(QCommandLineParser& parser) {
    parser.addOption({QStringLiteral("receiver"), QStringLiteral("Receiver that runs the job: hf or vuhf."),
                      QStringLiteral("RECEIVER"), QStringLiteral("hf")});
}

/// Null, told, when there is no such receiver.
std::unique_ptr<MemoryList> listOf(const Arguments& args, const char* command) {
    const QString receiver = args.Value("receiver");
    if (receiver == QLatin1String("hf") || receiver == QLatin1String("vuhf"))
        return std::make_unique<MemoryList>(receiver == QLatin1String("vuhf"));
    std::fprintf(stderr, "freqstore-cli %s: no receiver is called \"%s\"\n", command, qPrintable(receiver));
    return nullptr;
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
    const ProblemPrinter problems;
    const std::unique_ptr<MemoryList> list = print ? listOf(args, ShowName) : nullptr;
    if (!list)
        return ExitUsage;
    if (!list->OpenJob(args.Files().first()))
        return ExitFile;
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
        {QStringLiteral("out"), QStringLiteral("Job to write."), QStringLiteral("OUT.pij")});
    args.Parser().addPositionalArgument(QStringLiteral("JOB.pij"), QStringLiteral("Job to read."));
    args.Parser().addPositionalArgument(QStringLiteral("CHANNELS"),
                                        QStringLiteral("Channels to add: .xml, .sfl or another .pij."));
    int exitCode = ExitDone;
    if (!args.Take(arguments, exitCode))
        return exitCode;
    if (args.Value("out").isEmpty()) {
        std::fprintf(stderr, "freqstore-cli %s: --out is missing\n", MergeName);
        return ExitUsage;
    }
    const ProblemPrinter problems;
    const std::unique_ptr<MemoryList> list = listOf(args, MergeName);
    if (!list)
        return ExitUsage;
    if (!list->OpenJob(args.Files()[0]))
        return ExitFile;
    if (args.Parser().isSet(QStringLiteral("replace")))
        list->Clear();
    const bool done = list->Read(args.Files()[1]) && list->SaveJob(args.Value("out"));
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
    std::fputs("Usage: freqstore-cli job show|merge [OPTIONS] FILES\n\n"
               "Shows the memory channels of a receiver's job, or puts others into it. freqstore-cli job "
               "show --help\nand freqstore-cli job merge --help tell more.\n",
               isHelp ? stdout : stderr);
    return isHelp ? ExitDone : ExitUsage;
}
