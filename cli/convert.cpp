#include "cli/arguments.h"
#include "cli/command.h"
#include "host/freqstorexml/csvoptions.h"

int RunConvert(const QStringList& arguments) {
    Arguments args(
        "convert",
        "Reads a file and writes it through the list's own writer, in the format that the name of the "
        "output tells (.ltl, .sfl, .noi, .xml, .csv).",
        2);
    args.Parser().addOption({QStringLiteral("spreadsheet-safe"),
                             QStringLiteral("Write .csv so that spreadsheets take no text for a formula.")});
    args.Parser().addPositionalArgument(QStringLiteral("IN"), QStringLiteral("File to read."));
    args.Parser().addPositionalArgument(QStringLiteral("OUT"), QStringLiteral("File to write."));
    int exitCode = ExitDone;
    if (!args.Take(arguments, exitCode))
        return exitCode;
    FreqStoreXml::CsvOptions::SetSpreadsheetSafe(args.Parser().isSet(QStringLiteral("spreadsheet-safe")));
    const ProblemPrinter problems;
    const std::unique_ptr<CliList> list = args.List(args.Files().first());
    if (!list)
        return ExitUsage;
    const bool done = list->Read(args.Files()[0]) && list->Write(args.Files()[1]);
    return done && problems.Count() == 0 ? ExitDone : ExitFile;
}
