#include "cli/command.h"
#include "cli/output.h"
#include "host/base/terminaltext.h"

#include <QCoreApplication>

#include <csignal>

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
