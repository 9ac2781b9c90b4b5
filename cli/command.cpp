#include "cli/command.h"

#include <algorithm>
#include <cstdio>
#include <new>

const std::vector<Command>& Commands() {
    static const std::vector<Command> commands = {
        {"show", "[--list KIND] [--format table|json|tsv] FILE", "print the entries of a file", RunShow},
        {"convert", "[--list KIND] IN OUT", "write a file in another format", RunConvert},
        {"check", "[--list KIND] FILE...", "tell what is wrong with files", RunCheck},
        {"bands", "[--out FILE] FILE", "print the bands of frequencies of interest", RunBands},
        {"job", "show|merge [OPTIONS] FILES", "show or change the memory channels of a job", RunJob},
        {"detect", "[OPTIONS] SWEEP.csv OUT.xml|OUT.csv", "find the signals in power sweeps", RunDetect},
    };
    return commands;
}

namespace {

void printHelp(FILE* out) {
    std::fputs("Usage: freqstore-cli COMMAND [OPTIONS] FILES\n\n"
               "Reads, shows, converts and checks lists of frequencies without a screen, and finds "
               "signals.\n\nCommands:\n",
               out);
    for (const Command& command : Commands())
        std::fprintf(out, "  %-8s %-48s %s\n", command.name, command.arguments, command.purpose);
    std::fputs("\nfreqstore-cli COMMAND --help tells more. Exit codes: 0 done, 1 wrong usage, 2 a file could "
               "not be\n"
               "read or written or held errors.\n",
               out);
}

} // namespace

int RunCli(const QStringList& arguments) {
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
        std::printf("freqstore-cli %s\n", FREQSTORE_VERSION);
        return ExitDone;
    }
    const auto found = std::find_if(Commands().begin(), Commands().end(), [&](const Command& command) {
        return name == QLatin1String(command.name);
    });
    if (found == Commands().end()) {
        std::fprintf(stderr, "freqstore-cli: no command is called \"%s\"\n\n", qPrintable(name));
        printHelp(stderr);
        return ExitUsage;
    }
    try {
        return found->run(arguments.mid(1));
    } catch (const std::bad_alloc&) {
        std::fprintf(stderr, "freqstore-cli %s: not enough memory\n", found->name);
        return ExitFile;
    }
}
