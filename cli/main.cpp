#include "cli/command.h"

#include <QCoreApplication>

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("freqstore-cli"));
    return RunCli(QCoreApplication::arguments().mid(1));
}
