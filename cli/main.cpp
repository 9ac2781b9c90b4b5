#include "cli/command.h"
#include "cli/output.h"
#include "host/base/terminaltext.h"

#include <QCoreApplication>

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {

/// A standard stream that is closed would have its number taken by the next file that is opened, and what is
/// printed would go into that. It becomes one that takes nothing.
void occupyStandardStreams() {
    int opened = 0;
    while ((opened = open("/dev/null", O_RDONLY)) >= 0 && opened <= STDERR_FILENO) {
    }
    close(opened);
}

/// Before the first line of any library: some of the radio library's open sockets as soon as they are loaded.
[[gnu::section(".preinit_array"), gnu::used]] void (*const occupyFirst)() = occupyStandardStreams;

} // namespace

int main(int argc, char** argv) {
    // Who reads our output may go at any time; that is an error of writing like others.
    std::signal(SIGPIPE, SIG_IGN);
    if (const QString refusal = RefuseArguments(argc, argv); !refusal.isEmpty()) {
        TellError(QStringLiteral("freqstore-cli: ") + refusal);
        return ExitUsage;
    }
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments << QString::fromUtf8(argv[i]);
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("freqstore-cli"));
    return RunCli(arguments);
}
