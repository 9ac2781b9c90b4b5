#include "cli/arguments.h"
#include "cli/command.h"
#include "cli/progressbar.h"
#include "host/freqstorexml/filehandling.h"
#include "sweep/sweepfile.h"
#include "sweep/sweepreader.h"

#include <QTimeZone>

#include <cstdio>

namespace {

/// What a file is read as, by its name and, for XML, by its content.
QString kindOf(const QString& path, bool isRead) {
    if (path.contains(QLatin1String(".sfl")))
        return QStringLiteral("SFL lines");
    if (path.contains(QLatin1String(".ltl")))
        return QStringLiteral("LTL lines");
    if (path.contains(QLatin1String(".noi")) && !path.contains(QLatin1String(".xml")))
        return QStringLiteral("NOI lines");
    if (path.endsWith(QLatin1String(".pij")))
        return QStringLiteral("job");
    if (path.contains(QLatin1String(".xml"))) {
        if (!isRead)
            return QStringLiteral("XML");
        if (FreqStoreXml::FileHandling().IsValidFormat(path))
            return QStringLiteral("frequency-store XML");
        return FreqStoreXml::FileHandling().IsDetectionResults(path) ? QStringLiteral("detection results XML")
                                                                     : QStringLiteral("profile table");
    }
    return path.contains(QLatin1String(".csv")) ? QStringLiteral("CSV") : QStringLiteral("unknown");
}

/// False when there is a problem.
bool checkSweep(const QString& path) {
    ProgressBar bar;
    const SweepSummary summary = ReadSweepFile(
        path, QTimeZone::systemTimeZone(), [](const Sweep&) {},
        [&](qint64 done, qint64 total) {
            bar.Show(done, total);
            return true;
        });
    ProgressBar::MakeRoom();
    std::printf("%s: power sweeps, %s, %s, %s\n", qPrintable(path),
                qPrintable(Counted(summary.sweeps, "sweep", "sweeps")),
                qPrintable(Counted(summary.rows, "row", "rows")),
                qPrintable(Counted(summary.problems, "problem", "problems")));
    return summary.problems == 0;
}

} // namespace

int RunCheck(const QStringList& arguments) {
    Arguments args("check",
                   "Tells the kind of each file, the number of its entries, and every problem in it.", -1);
    args.Parser().addPositionalArgument(QStringLiteral("FILE..."), QStringLiteral("Files to check."));
    int exitCode = ExitDone;
    if (!args.Take(arguments, exitCode))
        return exitCode;
    const ProblemPrinter problems;
    for (const QString& path : args.Files()) {
        if (IsSweepFile(path)) {
            if (!checkSweep(path))
                exitCode = ExitFile;
            continue;
        }
        const std::unique_ptr<CliList> list = args.List(path);
        if (!list)
            return ExitUsage;
        const int before = problems.Count();
        const bool read = list->Read(path);
        const int found = problems.Count() - before;
        std::printf("%s: %s, %s, %s\n", qPrintable(path), qPrintable(kindOf(path, read)),
                    qPrintable(Counted(read ? static_cast<qint64>(list->Count()) : 0, "entry", "entries")),
                    qPrintable(Counted(found, "problem", "problems")));
        if (!read || found > 0)
            exitCode = ExitFile;
    }
    return exitCode;
}
