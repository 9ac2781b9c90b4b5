#include "cli/arguments.h"
#include "cli/command.h"
#include "host/freqstorexml/filehandling.h"
#include "host/valuetree/node.h"

#include <cstdio>

namespace {

/// What a file is read as, by its name and, for XML, by its content.
QString kindOf(const QString& path) {
    if (path.contains(QLatin1String(".sfl")))
        return QStringLiteral("SFL lines");
    if (path.contains(QLatin1String(".ltl")))
        return QStringLiteral("LTL lines");
    if (path.contains(QLatin1String(".xml")))
        return FreqStoreXml::FileHandling().IsValidFormat(path) ? QStringLiteral("frequency-store XML")
                                                                : QStringLiteral("profile table");
    return path.contains(QLatin1String(".csv")) ? QStringLiteral("CSV") : QStringLiteral("unknown");
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
        const std::unique_ptr<CliList> list = args.List();
        if (!list)
            return ExitUsage;
        const int before = problems.Count();
        const bool read = list->Read(path);
        const int found = problems.Count() - before;
        std::printf("%s: %s, %zu entries, %s\n", qPrintable(path), qPrintable(kindOf(path)),
                    read ? list->GetNode()->ChildCount() : size_t(0),
                    found == 0 ? "no problems" : qPrintable(QStringLiteral("%1 problems").arg(found)));
        if (!read || found > 0)
            exitCode = ExitFile;
    }
    return exitCode;
}
