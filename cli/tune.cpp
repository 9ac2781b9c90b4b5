#include "cli/command.h"
#include "cli/output.h"
#include "cli/radio.h"
#include "host/base/frequencyinput.h"
#include "host/base/frequencytext.h"

namespace {

constexpr qsizetype MostWords = 3;

/// Frequency, mode and bandwidth as the receiver has them, and the level if it measures one.
void printReceiver(Receiver& receiver) {
    QStringList parts{
        Quor::FrequencyText(receiver.GetFrequency()),
        receiver.GetValue(Keys::KeyDemodulation)->GetStringValue(),
        Quor::BandwidthText(receiver.Find<ValueNumeric<double>>(Keys::KeyBandwidth)->GetValue())};
    if (receiver.HasLevel())
        parts << QStringLiteral("%1 dBµV").arg(receiver.GetLevel()->GetValue(), 0, 'f', 1);
    Output(stdout).Line(parts.join(QLatin1Char(' ')));
}

/// Whether the receiver takes what a word of the command line says; it is told when not.
bool takes(const Receiver& receiver, Names::Id key, const QString& text) {
    const auto setting = std::ranges::find_if(
        receiver.GetSettings(), [key](const ReceiverSetting& known) { return known.key == key; });
    const QString problem = receiver.ProblemOf(*setting, text);
    if (!problem.isEmpty())
        TellError(problem);
    return problem.isEmpty();
}

/// All of it or nothing.
bool setAll(Receiver& receiver, const QStringList& words, double hertz, double width) {
    const QString demodulation = words.value(1).toUpper();
    const QString bandwidth = Quor::ToShortest(width);
    if (words.size() > 1 && !takes(receiver, Keys::KeyDemodulation, demodulation))
        return false;
    if (words.size() > 2 && !takes(receiver, Keys::KeyBandwidth, bandwidth))
        return false;
    if (!receiver.Tune(hertz))
        return false;
    if (words.size() > 2)
        receiver.SetMode(demodulation, bandwidth);
    else if (words.size() > 1)
        receiver.GetValue(Keys::KeyDemodulation)->SetStringValue(demodulation);
    return true;
}

} // namespace

int RunTune(const QStringList& arguments) {
    Arguments args(
        "tune",
        "Tunes a receiver, and prints what it does then. A frequency or bandwidth without a unit is in Hz.",
        -1, false);
    CliRadio::AddOptions(args);
    args.Parser().addPositionalArgument(QStringLiteral("FREQUENCY"),
                                        QStringLiteral("As 7055000, 7055 kHz or 7.055MHz."));
    args.Parser().addPositionalArgument(QStringLiteral("MODE"),
                                        QStringLiteral("As the receiver names it, such as USB."),
                                        QStringLiteral("[MODE"));
    args.Parser().addPositionalArgument(QStringLiteral("BANDWIDTH"), QStringLiteral("As 2400 or 2.4kHz."),
                                        QStringLiteral("[BANDWIDTH]]"));
    int exitCode = ExitDone;
    if (!args.Take(arguments, exitCode))
        return exitCode;
    const QStringList words = args.Files();
    const Quor::FrequencyInput frequency = Quor::ReadFrequencyInput(words[0], 1);
    const Quor::FrequencyInput bandwidth = Quor::ReadFrequencyInput(words.value(2, QStringLiteral("0")), 1);
    const QString problem = frequency.IsFrequency() ? bandwidth.problem : frequency.problem;
    if (words.size() > MostWords || !problem.isEmpty()) {
        args.TellUsage(problem.isEmpty() ? QStringLiteral("more than a frequency, a mode and a bandwidth")
                                         : problem);
        return ExitUsage;
    }
    CliRadio radio;
    if (!radio.Connect(args, exitCode))
        return exitCode;
    const bool isSet = setAll(radio.Get(), words, frequency.hertz, bandwidth.hertz);
    if (!radio.WaitUntilSet() || !isSet)
        return ExitFile;
    printReceiver(radio.Get());
    return ExitDone;
}

int RunLevel(const QStringList& arguments) {
    Arguments args("level", "Prints what a receiver is tuned to, and its level. Nothing is set.", 0, false);
    CliRadio::AddOptions(args);
    int exitCode = ExitDone;
    if (!args.Take(arguments, exitCode))
        return exitCode;
    CliRadio radio;
    if (!radio.Connect(args, exitCode))
        return exitCode;
    if (!radio.WaitUntilSet())
        return ExitFile;
    printReceiver(radio.Get());
    if (radio.Get().HasLevel())
        return ExitDone;
    TellError(QStringLiteral("%1 tells no level").arg(radio.Get().GetName()));
    return ExitFile;
}
