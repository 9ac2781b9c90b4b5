#pragma once

#include <QString>
#include <QStringList>

#include <string>
#include <vector>

/// Exit codes of the program.
enum ExitCode { ExitDone = 0, ExitUsage = 1, ExitFile = 2, ExitDifferent = 3 };

/// One command of the program. Messages go to standard error, results to standard output.
struct Command {
    const char* name;
    const char* arguments; ///< as the help shows them
    const char* purpose;
    /// Runs the command with the arguments behind its name and returns an exit code.
    int (*run)(const QStringList& arguments);
};

int RunShow(const QStringList& arguments);
int RunConvert(const QStringList& arguments);
int RunCheck(const QStringList& arguments);
int RunBands(const QStringList& arguments);
int RunDetect(const QStringList& arguments);
int RunScan(const QStringList& arguments);
int RunJob(const QStringList& arguments);
int RunFormats(const QStringList& arguments);
int RunVersions(const QStringList& arguments);
int RunMerge(const QStringList& arguments);
int RunDiff(const QStringList& arguments);
int RunReceivers(const QStringList& arguments);
int RunTune(const QStringList& arguments);
int RunLevel(const QStringList& arguments);
int RunShare(const QStringList& arguments);
int RunWatch(const QStringList& arguments);

/// All commands, in the order of the help.
const std::vector<Command>& Commands();

/// Runs the program: finds the command and runs it, or shows the help.
int RunCli(const QStringList& arguments);
