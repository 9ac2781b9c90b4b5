#include "cli/arguments.h"
#include "cli/command.h"
#include "cli/output.h"
#include "cli/samefile.h"
#include "controls/frequencystore/common/paths.h"
#include "controls/frequencystore/noi/noifrequencyhandler.h"
#include "host/report/outputfile.h"
#include "host/valuetree/tree.h"

namespace {

bool writeFile(const QString& path, const std::string& line) {
    try {
        REPORTGENERATOR::OutputFile file(path);
        REPORTGENERATOR::WriteBytes(file.Device(), path, line);
        file.Commit();
        return true;
    } catch (const RGException&) { // told
        return false;
    }
}

} // namespace

int RunBands(const QStringList& arguments) {
    Arguments args(
        "bands",
        "Prints the band list of a file of frequencies of interest, in one line: lower and upper edge "
        "of each entry in whole hertz, \"lower,upper;\".",
        1, false);
    args.Parser().addOption({QStringLiteral("out"), QStringLiteral("Write the band list to FILE."),
                             QStringLiteral("FILE"), QString()});
    args.Parser().addPositionalArgument(QStringLiteral("FILE"),
                                        QStringLiteral("File to read (.noi, .xml, .csv, .json)."));
    int exitCode = ExitDone;
    if (!args.Take(arguments, exitCode))
        return exitCode;
    if (IsSameFile(args.Files().first(), args.Value("out"))) {
        args.TellUsage(
            QStringLiteral("\"%1\" would replace the frequencies by their bands").arg(args.Value("out")));
        return ExitUsage;
    }
    const ProblemPrinter problems;
    const std::unique_ptr<CliList> list = MakeList(QStringLiteral("noi"));
    Tree::Instance()->MakeNode(Paths::NoiNode);
    const auto* definition = GetOrCreateValue<Value<QString>>(Paths::NoiDefinition);
    NOIFrequencyHandler::Instance()->SetNOIDefinition_ValuePath(Paths::NoiDefinition);
    if (!list->Read(args.Files().first()))
        return ExitFile;
    const std::string line = definition->GetValue().toStdString() + '\n';
    if (args.IsSet("out")) {
        if (!writeFile(args.Value("out"), line))
            return ExitFile;
    } else {
        Output(stdout).Text(QString::fromStdString(line));
    }
    return problems.Count() == 0 ? ExitDone : ExitFile;
}
