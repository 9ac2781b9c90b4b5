#include "cli/arguments.h"
#include "cli/command.h"
#include "cli/foreign.h"
#include "cli/samefile.h"
#include "host/freqstorexml/csvoptions.h"

int RunConvert(const QStringList& arguments) {
    Arguments args(
        "convert",
        "Reads a file and writes it through the list's own writer, in the format that the ending of the "
        "output's name tells (.ltl, .sfl, .noi, .xml, .csv), or as .json.",
        2);
    args.Parser().addOption({QStringLiteral("spreadsheet-safe"),
                             QStringLiteral("Write .csv so that spreadsheets take no text for a formula.")});
    args.Parser().addOption(
        {QStringLiteral("force"),
         QStringLiteral("Let OUT take the place of IN even when reading it told problems.")});
    Foreign::AddOptions(args.Parser());
    args.Parser().addOption(
        {QStringLiteral("to"),
         QStringLiteral("Write a file of another program; \"freqstore-cli formats\" lists them."),
         QStringLiteral("FORMAT")});
    args.Parser().addPositionalArgument(QStringLiteral("IN"), QStringLiteral("File to read."));
    args.Parser().addPositionalArgument(QStringLiteral("OUT"), QStringLiteral("File to write."));
    int exitCode = ExitDone;
    if (!args.Take(arguments, exitCode))
        return exitCode;
    if (!Foreign::CheckOptions(args))
        return ExitUsage;
    FreqStoreXml::CsvOptions::SetSpreadsheetSafe(args.Parser().isSet(QStringLiteral("spreadsheet-safe")));
    const QString in = args.Files()[0];
    const QString out = args.Files()[1];
    const ProblemPrinter problems;
    const std::unique_ptr<CliList> list = args.List(in);
    if (!list)
        return ExitUsage;
    const bool isForeign = args.IsSet("to");
    if (isForeign && !Foreign::CheckTo(args, exitCode))
        return exitCode;
    if (const QString refusal = list->Names().RefuseToWrite(out); !isForeign && !refusal.isEmpty()) {
        args.TellUsage(refusal);
        return ExitUsage;
    }
    if (!Foreign::Read(args, *list, in))
        return ExitFile;
    const bool isKept = problems.Count() > 0 && !args.IsSet("force") && WouldLose(in, out);
    const bool done = !isKept && (isForeign ? Foreign::Write(args, *list, out) : list->Write(out));
    return done && problems.Count() == 0 ? ExitDone : ExitFile;
}
