#include "cli/command.h"

#include "cli/interrupt.h"
#include "cli/output.h"
#include "cli/progressbar.h"
#include "host/report/filestamps.h"

#include <algorithm>
#include <new>

const std::vector<Command>& Commands() {
    static const std::vector<Command> commands = {
        {"show", "[--list KIND] [--format table|json|jsonl|tsv] [--where QUERY] [OPTIONS] FILE",
         "print the entries of a file", RunShow},
        {"convert", "[--list KIND] [--to FORMAT] [OPTIONS] IN OUT", "write a file in another format",
         RunConvert},
        {"check", "[--list KIND] FILE...", "tell what is wrong with files", RunCheck},
        {"formats", "", "tell which files of other programs are read and written", RunFormats},
        {"bands", "[--out FILE] FILE", "print the bands of frequencies of interest", RunBands},
        {"merge", "[OPTIONS] A B --out C", "add to a list what another one has", RunMerge},
        {"diff", "[OPTIONS] A B", "tell what two lists differ in", RunDiff},
        {"job", "show|merge [OPTIONS] FILES", "show or change the memory channels of a job", RunJob},
        {"versions", "[--data DIR] [--restore NUMBER] [--out OUT] FILE",
         "list or restore saved versions of a file", RunVersions},
        {"share", "[--list KIND] [OPTIONS] URL FILE", "serve a list to other seats", RunShare},
        {"watch", "[--list KIND] [OPTIONS] URL", "print a served list and its changes", RunWatch},
        {"detect", "[OPTIONS] SWEEP.csv OUT.xml|OUT.csv", "find the signals in power sweeps", RunDetect},
        {"receivers", "[--format table|json] [WORD...]", "list the models of receivers", RunReceivers},
        {"tune", "[--receiver R] FREQUENCY [MODE [BANDWIDTH]]", "tune a receiver", RunTune},
        {"level", "[--receiver R]", "print what a receiver receives", RunLevel},
        {"scan", "[OPTIONS] LIST|--range A-B OUT.xml|OUT.csv|-", "scan channels by a receiver", RunScan},
    };
    return commands;
}

namespace {

void printHelp(FILE* stream) {
    Output out(stream);
    out.Text(
        QStringLiteral("Usage: freqstore-cli COMMAND [OPTIONS] FILES\n\n"
                       "Reads, shows, converts and checks lists of frequencies without a screen, and finds "
                       "signals.\n\nCommands:\n"));
    for (const Command& command : Commands())
        out.Line(QString::asprintf("  %-9s %-48s %s", command.name, command.arguments, command.purpose));
    out.Text(QStringLiteral(
        "\nfreqstore-cli COMMAND --help tells more. Exit codes: 0 done, 1 wrong usage, 2 a file or "
        "the\noutput could not be read or written, or a file held errors, 3 diff found a difference.\n"));
}

int run(const QStringList& arguments) {
    if (arguments.isEmpty()) {
        printHelp(stderr);
        return ExitUsage;
    }
    const QString& name = arguments.first();
    if (name == QLatin1String("--help") || name == QLatin1String("-h")) {
        printHelp(stdout);
        return ExitDone;
    }
    if (name == QLatin1String("--version")) {
        Output(stdout).Text(QStringLiteral("freqstore-cli " FREQSTORE_VERSION "\n"));
        return ExitDone;
    }
    const auto found = std::find_if(Commands().begin(), Commands().end(), [&](const Command& command) {
        return name == QLatin1String(command.name);
    });
    if (found == Commands().end()) {
        TellError(QStringLiteral("freqstore-cli: no command is called \"%1\"\n").arg(name));
        printHelp(stderr);
        return ExitUsage;
    }
    try {
        const ProgressBar bar;
        const Interrupt interrupt;
        int exitCode = ExitDone;
        if (LongWork::Run(name, [&] { exitCode = found->run(arguments.mid(1)); }))
            return exitCode;
        interrupt.EndProgram();
        return ExitFile;
    } catch (const std::bad_alloc&) {
        TellError(QStringLiteral("freqstore-cli %1: not enough memory\n").arg(QLatin1String(found->name)));
        return ExitFile;
    }
}

} // namespace

int RunCli(const QStringList& arguments) {
    FileStamps::ForgetAll(); // each run knows only what it reads itself
    return FinishOutput(run(arguments));
}
