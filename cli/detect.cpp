#include "cli/arguments.h"
#include "cli/command.h"
#include "cli/output.h"
#include "cli/samefile.h"
#include "host/base/numbers.h"
#include "host/base/problems.h"
#include "host/report/rgexception.h"
#include "sweep/sweepfile.h"
#include "sweep/sweepresults.h"

#include <QTimeZone>

namespace {

/// A number of the command line, and what it sets.
struct Setting {
    const char* option;
    const char* unit;
    const char* purpose;
    double SweepSettings::*value;
};

constexpr Setting Settings[] = {
    {"threshold", "dB", "How far above the noise floor a signal is, in dB", &SweepSettings::threshold},
    {"min-width", "Hz", "Pass over signals narrower than this, in Hz", &SweepSettings::minWidth},
    {"hold", "s", "Seconds for which a signal may be away and still be the same", &SweepSettings::hold},
};
constexpr double LargestSetting = 1e12;

bool usageError(const QString& reason) {
    TellError(QStringLiteral("freqstore-cli detect: ") + reason);
    return false;
}

void addOptions(QCommandLineParser& parser) {
    const SweepSettings defaults;
    for (const Setting& setting : Settings)
        parser.addOption({QString::fromLatin1(setting.option),
                          QStringLiteral("%1 (%2).")
                              .arg(QLatin1String(setting.purpose), Quor::ToShortest(defaults.*setting.value)),
                          QString::fromLatin1(setting.unit)});
    parser.addOption(
        {QStringLiteral("time-zone"),
         QStringLiteral("Zone of the sweeps' times, such as Europe/Berlin or UTC (the machine's)."),
         QStringLiteral("ZONE")});
    parser.addPositionalArgument(QStringLiteral("SWEEP.csv"), QStringLiteral("Power sweeps to read."));
    parser.addPositionalArgument(QStringLiteral("OUT"), QStringLiteral("File to write: .xml or .csv."));
}

/// False, told, when an option or a file name cannot be.
bool takeOptions(const Arguments& args, SweepSettings& settings, QTimeZone& zone) {
    for (const Setting& setting : Settings) {
        const QString text = args.Value(setting.option);
        double& value = settings.*setting.value;
        if (!text.isEmpty() && (!Quor::ParseDouble(text, value) || value < 0 || value > LargestSetting))
            return usageError(QStringLiteral("--%1 \"%2\" is no number of %3")
                                  .arg(QLatin1String(setting.option), text, QLatin1String(setting.unit)));
    }
    const QString name = args.Value("time-zone");
    zone = name.isEmpty() ? QTimeZone::systemTimeZone() : QTimeZone(name.toUtf8());
    if (!zone.isValid())
        return usageError(QStringLiteral("no time zone is called \"%1\"").arg(name));
    const QString out = args.Files()[1];
    if (!SweepResultWriter::KnowsName(out))
        return usageError(QStringLiteral("\"%1\" is named neither .xml nor .csv").arg(out));
    if (IsSameFile(args.Files()[0], out))
        return usageError(QStringLiteral("\"%1\" would replace the sweeps by their detections").arg(out));
    return true;
}

/// Throws RGException when the detections cannot be written.
int detect(const QString& in, const QString& out, const SweepSettings& settings, const QTimeZone& zone) {
    SweepResultWriter writer(out);
    const SweepSummary summary = DetectInSweepFile(
        in, zone, settings, [&](const SweepDetection& detection) { writer.Append(detection); });
    if (summary.sweeps == 0 && summary.problems == 0)
        Problems::Report("detect", {in, 0, QStringLiteral("holds no power sweeps")});
    if (summary.sweeps == 0)
        return ExitFile;
    writer.Commit();
    Output(stdout).Line(QStringLiteral("%1: %2, %3, %4")
                            .arg(in, Counted(summary.sweeps, "sweep", "sweeps"),
                                 Counted(summary.rows, "row", "rows"),
                                 Counted(writer.Count(), "detection", "detections")));
    return summary.problems == 0 ? ExitDone : ExitFile;
}

} // namespace

int RunDetect(const QStringList& arguments) {
    Arguments args(
        "detect",
        "Finds signals in power sweeps: runs of neighbouring bins above the noise floor, which is the "
        "median of a sweep. Writes them as detection results (.xml) or as a table (.csv).",
        2, false);
    addOptions(args.Parser());
    int exitCode = ExitDone;
    if (!args.Take(arguments, exitCode))
        return exitCode;
    SweepSettings settings;
    QTimeZone zone;
    if (!takeOptions(args, settings, zone))
        return ExitUsage;
    const ProblemPrinter problems;
    try {
        return detect(args.Files()[0], args.Files()[1], settings, zone);
    } catch (const RGException&) { // told
        return ExitFile;
    }
}
