#include "cli/arguments.h"
#include "cli/command.h"
#include "cli/foreign.h"
#include "cli/output.h"
#include "sweep/sweepfile.h"
#include "sweep/sweepreader.h"

#include <QTimeZone>

#include <algorithm>
#include <cstdio>
#include <optional>

namespace {

/// What a file is read as; of XML that could not be read no more can be told.
QString kindOf(const FileNames& names, const QString& path, bool isRead) {
    const FileFormat format = names.FormatRead(path);
    const bool isXml = format == FileFormat::StoreXml || format == FileFormat::DetectionXml ||
                       format == FileFormat::ProfileTable;
    return isXml && !isRead ? QStringLiteral("XML") : FormatName(format);
}

/// Prints what there is to tell of a file; false when standard output takes no more.
bool printLine(const QStringList& facts, const QString& path) {
    return Output(stdout).Line(path + QStringLiteral(": ") + facts.join(QStringLiteral(", ")));
}

int checkSweep(const QString& path, ProblemPrinter& problems) {
    const SweepSummary summary = ReadSweepFile(path, QTimeZone::systemTimeZone(), [](const Sweep&) {});
    problems.Flush();
    const bool isPrinted =
        printLine({QStringLiteral("power sweeps"), Counted(summary.sweeps, "sweep", "sweeps"),
                   Counted(summary.rows, "row", "rows"), Counted(summary.problems, "problem", "problems")},
                  path);
    return isPrinted && summary.problems == 0 ? ExitDone : ExitFile;
}

/// An exit code; empty for a kind of list that there is not.
std::optional<int> checkList(const Arguments& args, const QString& path, ProblemPrinter& problems) {
    const std::unique_ptr<CliList> list = args.List(path);
    if (!list)
        return std::nullopt;
    const qint64 before = problems.Count();
    QString kind;
    const bool isRead = Foreign::Read(args, *list, path, &kind);
    const qint64 found = problems.Count() - before;
    problems.Flush(); // what is wrong stands before the summary
    const bool isPrinted =
        printLine({kind.isEmpty() ? kindOf(list->Names(), path, isRead) : kind,
                   Counted(isRead ? static_cast<qint64>(list->Count()) : 0, "entry", "entries"),
                   Counted(found, "problem", "problems")},
                  path);
    return isPrinted && isRead && found == 0 ? ExitDone : ExitFile;
}

} // namespace

int RunCheck(const QStringList& arguments) {
    Arguments args("check",
                   "Tells the kind of each file, the number of its entries, and every problem in it.", -1);
    Foreign::AddOptions(args.Parser());
    args.Parser().addPositionalArgument(QStringLiteral("FILE..."), QStringLiteral("Files to check."));
    int exitCode = ExitDone;
    if (!args.Take(arguments, exitCode))
        return exitCode;
    if (!Foreign::CheckOptions(args))
        return ExitUsage;
    ProblemPrinter problems;
    for (const QString& path : args.Files()) {
        const std::optional<int> code =
            IsSweepFile(path) ? checkSweep(path, problems) : checkList(args, path, problems);
        if (!code)
            return ExitUsage;
        exitCode = std::max(exitCode, *code);
        if (std::ferror(stdout) != 0)
            break;
    }
    return exitCode;
}
