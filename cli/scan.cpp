#include "cli/arguments.h"
#include "cli/command.h"
#include "cli/output.h"
#include "cli/radio.h"
#include "cli/samefile.h"
#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "host/base/datetime.h"
#include "host/base/frequencytext.h"
#include "host/base/numbers.h"
#include "host/freqlist/frequencynodemediator.h"
#include "host/report/rgexception.h"
#include "host/startup/endsignals.h"
#include "receiver/hamlibreceiver.h"
#include "receiver/receiver.h"
#include "receiver/receiverlink.h"
#include "scan/receiverport.h"
#include "scan/scanclock.h"
#include "scan/scanner.h"
#include "sweep/sweepresults.h"

#include <QEventLoop>

#include <cmath>

namespace {

constexpr double HighestOfHF = 30e6; ///< Hz
constexpr double LongestTime = 1e9;  ///< ms
constexpr std::chrono::milliseconds LongestFarewell(2000);

/// What the command line says.
struct Wish {
    std::optional<SpanPlan::Span> range;
    double step = 0; ///< Hz; 0 for none
    ScanSettings settings{};
    double milliseconds = 0; ///< 0 for no end
    QString list{};
    QString out{};
};

/// "200ms", "10m", "1h"; a bare number is seconds.
bool parseTime(const QString& text, double& milliseconds) {
    struct Unit {
        const char* name;
        double factor;
    };
    for (const Unit& unit :
         {Unit{"ms", 1}, Unit{"m", 60e3}, Unit{"h", 3600e3}, Unit{"s", 1e3}, Unit{"", 1e3}}) {
        const QLatin1String name(unit.name);
        double number = 0;
        if (!text.endsWith(name) || !Quor::ParseDouble(QStringView(text).chopped(name.size()), number))
            continue;
        milliseconds = number * unit.factor;
        return milliseconds >= 0 && milliseconds <= LongestTime;
    }
    return false;
}

bool parseTime(const QString& text, int& milliseconds) {
    double parsed = 0;
    if (!parseTime(text, parsed))
        return false;
    milliseconds = static_cast<int>(parsed);
    return true;
}

bool parseSeconds(const QString& text, double& seconds) {
    double parsed = 0;
    const bool good = parseTime(text, parsed);
    seconds = parsed / 1000;
    return good;
}

/// Two frequencies with a hyphen between them.
bool parseRange(const QString& text, SpanPlan::Span& range) {
    const qsizetype hyphen = text.indexOf(QLatin1Char('-'));
    return hyphen > 0 && Quor::ParseFrequency(QStringView(text).left(hyphen), range.from) &&
           Quor::ParseFrequency(QStringView(text).mid(hyphen + 1), range.to) && range.from >= 0 &&
           range.from <= range.to;
}

template <typename Number>
bool parsePositive(const QString& text, Number& number) {
    double parsed = 0;
    if (!Quor::ParseFrequency(text, parsed) || !(parsed >= 1) || parsed > 1e12)
        return false;
    number = static_cast<Number>(parsed);
    return true;
}

/// An option, and how it is taken; false when the text is nothing for it.
struct Option {
    const char* name;
    const char* value;
    const char* purpose;
    bool (*take)(const QString& text, Wish& wish);
};

constexpr Option Options[] = {
    {"range", "A-B", "Scan from A to B, such as 7MHz-7.2MHz, instead of a list.",
     [](const QString& text, Wish& wish) { return parseRange(text, wish.range.emplace()); }},
    {"step", "HZ", "Step of a range, or of the bands of a list of interest, such as 5k.",
     [](const QString& text, Wish& wish) { return parsePositive(text, wish.step); }},
    {"for", "TIME", "End after that time, such as 10m (until Ctrl+C).",
     [](const QString& text, Wish& wish) {
         return parseTime(text, wish.milliseconds) && wish.milliseconds > 0;
     }},
    {"passes", "N", "End after so many passes.",
     [](const QString& text, Wish& wish) { return parsePositive(text, wish.settings.passes); }},
    {"settle", "TIME", "Time after tuning in which levels do not count (30ms).",
     [](const QString& text, Wish& wish) { return parseTime(text, wish.settings.settle); }},
    {"dwell", "TIME", "Time in which a signal is looked for (200ms).",
     [](const QString& text, Wish& wish) { return parseTime(text, wish.settings.dwell); }},
    {"threshold", "DBUV", "Level at which to stop where an entry has none, in dBµV (20).",
     [](const QString& text, Wish& wish) { return Quor::ParseDouble(text, wish.settings.threshold); }},
    {"stop-at", "WHAT", "Stop at a \"level\" over the threshold, or where the \"squelch\" is open (level).",
     [](const QString& text, Wish& wish) {
         const bool isSquelch = text == QLatin1String("squelch");
         wish.settings.stopAt = isSquelch ? ScanSettings::StopAt::Squelch : ScanSettings::StopAt::Threshold;
         return isSquelch || text == QLatin1String("level");
     }},
    {"gone", "TIME", "Go on when the signal is gone for that long (2s).",
     [](const QString& text, Wish& wish) { return parseSeconds(text, wish.settings.goOnSeconds); }},
    {"stay", "TIME", "Go on that long after a stop, whatever the signal does.",
     [](const QString& text, Wish& wish) {
         wish.settings.goOn = ScanSettings::GoOn::AfterTime;
         return parseSeconds(text, wish.settings.goOnSeconds);
     }},
    {"priority", "HZ", "Look at this frequency again and again.",
     [](const QString& text, Wish& wish) { return parsePositive(text, wish.settings.priority); }},
    {"priority-every", "TIME", "How often to look there (5s).",
     [](const QString& text, Wish& wish) { return parseSeconds(text, wish.settings.prioritySeconds); }},
};

void addOptions(Arguments& args) {
    CliRadio::AddOptions(args);
    QCommandLineParser& parser = args.Parser();
    for (const Option& option : Options)
        parser.addOption({QString::fromLatin1(option.name), QString::fromUtf8(option.purpose),
                          QString::fromLatin1(option.value)});
    parser.addPositionalArgument(QStringLiteral("LIST"),
                                 QStringLiteral("Entries to scan, such as a job (.pij)."));
    parser.addPositionalArgument(
        QStringLiteral("OUT"),
        QStringLiteral("File of detections to write: .xml or .csv; \"-\" prints them."));
}

/// False, told, when something of the command line cannot be.
bool takeWish(const Arguments& args, Wish& wish) {
    const auto refuse = [&args](const QString& reason) {
        args.TellUsage(reason);
        return false;
    };
    for (const Option& option : Options) {
        const QString text = args.Value(option.name);
        if (args.IsSet(option.name) && !option.take(text, wish))
            return refuse(QStringLiteral("--%1 \"%2\" is no %3")
                              .arg(QLatin1String(option.name), text, QLatin1String(option.value)));
    }
    const QStringList files = args.Files();
    if (files.size() != (wish.range ? 1 : 2))
        return refuse(wish.range ? QStringLiteral("a range needs no list, and one file to write")
                                 : QStringLiteral("it takes a list, or --range, and a file to write"));
    if (wish.range && wish.step == 0)
        return refuse(QStringLiteral("a range needs --step"));
    wish.list = wish.range ? QString() : files.first();
    wish.out = files.last();
    if (wish.out != QLatin1String("-") && !SweepResultWriter::KnowsName(wish.out))
        return refuse(QStringLiteral("\"%1\" is named neither .xml nor .csv").arg(wish.out));
    if (!wish.list.isEmpty() && IsSameFile(wish.list, wish.out))
        return refuse(QStringLiteral("\"%1\" would replace the list by the detections").arg(wish.out));
    return true;
}

/// The entries of a list as spans of their bandwidths.
std::vector<SpanPlan::Span> bandsOf(HalvoNodeMediatorCtrl& list) {
    std::vector<SpanPlan::Span> spans;
    list.ForEach([&](FrequencyNodeMediator& entry) {
        double hertz = 0;
        double bandwidth = 0;
        entry.GetBandwidth(bandwidth, 0);
        if (entry.GetFrequency(hertz, 0))
            spans.push_back({hertz - bandwidth / 2, hertz + bandwidth / 2});
    });
    return spans;
}

/// What is scanned.
struct Work {
    std::unique_ptr<CliList> list{}; ///< with the entries; null for a range
    std::unique_ptr<ScanPlan> plan{};
    double highest = 0; ///< Hz
};

/// A range may have more steps than anybody can count.
Work planSpans(std::vector<SpanPlan::Span> spans, double step) {
    Work work;
    for (const SpanPlan::Span& span : spans)
        work.highest = std::max(work.highest, span.to);
    work.plan =
        std::make_unique<SpanPlan>(std::move(spans), step, QStringLiteral("There is nothing in the list."));
    return work;
}

Work planChannels(HalvoNodeMediatorCtrl& list) {
    Work work;
    work.plan = std::make_unique<ChannelPlan>(list);
    ScanStep step;
    for (work.plan->Begin(); work.plan->Next(step);)
        work.highest = std::max(work.highest, step.frequency);
    return work;
}

/// Without a plan, told, when the list cannot be read or scanned.
Work makeWork(const Arguments& args, const Wish& wish) {
    if (wish.range)
        return planSpans({*wish.range}, wish.step);
    std::unique_ptr<CliList> list = args.List(wish.list);
    if (!list)
        return {};
    HalvoNodeMediatorCtrl* controller = list->Controller();
    if (!controller)
        args.TellUsage(QStringLiteral("a list of this kind cannot be scanned"));
    if (!controller || !list->Read(wish.list))
        return {};
    controller->ForceUpdateNow();
    Work work = wish.step > 0 ? planSpans(bandsOf(*controller), wish.step) : planChannels(*controller);
    work.list = std::move(list);
    return work;
}

/// Takes the stops of a scan to where they are written.
class StopWriter {
public:
    explicit StopWriter(const QString& out) {
        if (out != QLatin1String("-"))
            m_file = std::make_unique<SweepResultWriter>(out);
        else
            m_isGood = m_output.Line(
                QStringLiteral("starttime\tstoptime\tfrequency\tbandwidth\tlevel\tchannel\tcomment"));
    }

    /// False when nobody takes any more.
    bool Write(const ScanStop& stop) {
        ++m_count;
        if (m_file) {
            m_file->Append({.from = stop.frequency - stop.bandwidth / 2,
                            .to = stop.frequency + stop.bandwidth / 2,
                            .level = static_cast<float>(stop.level),
                            .start = stop.start,
                            .stop = stop.stop});
            return true;
        }
        QString comment = stop.comment;
        comment.replace(QLatin1Char('\t'), QLatin1Char(' '));
        m_isGood = m_isGood &&
                   m_output.Line(QStringList{
                       timeText(stop.start), timeText(stop.stop), Quor::ToShortest(stop.frequency),
                       Quor::ToShortest(stop.bandwidth), QString::number(stop.level, 'f', 1),
                       stop.channel > 0 ? QString::number(stop.channel) : QString(), comment}
                                     .join(QLatin1Char('\t'))) &&
                   std::fflush(stdout) == 0;
        return m_isGood;
    }
    void Commit() {
        if (m_file)
            m_file->Commit();
    }
    bool IsFile() const { return m_file != nullptr; }
    qint64 Count() const { return m_count; }

private:
    static QString timeText(qint64 microseconds) {
        return Quor::FromMicroseconds(microseconds).toString(Qt::ISODateWithMs);
    }

    Output m_output{stdout};
    std::unique_ptr<SweepResultWriter> m_file; ///< null for standard output
    qint64 m_count = 0;
    bool m_isGood = true;
};

/// A scan until it is asked to end.
class Run final : private ScanWatcher {
public:
    Run(Receiver& receiver, const Wish& wish) : m_wish(wish), m_port(receiver), m_writer(wish.out) {}

    /// Throws RGException when the detections cannot be written.
    int Do(std::unique_ptr<ScanPlan> plan) {
        const EndSignals endSignals;
        QObject::connect(&endSignals, &EndSignals::Came, &m_loop, [this] { m_scanner.Stop(); });
        QTimer end;
        end.setSingleShot(true);
        QObject::connect(&end, &QTimer::timeout, &m_loop, [this] { m_scanner.Stop(); });
        if (m_wish.milliseconds > 0)
            end.start(static_cast<int>(m_wish.milliseconds));
        m_scanner.Start(std::move(plan), m_wish.settings);
        if (m_scanner.IsRunning())
            m_loop.exec();
        if (m_failure)
            std::rethrow_exception(m_failure);
        m_writer.Commit();
        if (m_reason.isEmpty() && Counts().steps == 0)
            m_reason = QStringLiteral("the receiver was never reached");
        if (!m_reason.isEmpty())
            TellError(QStringLiteral("freqstore-cli scan: ") + m_reason);
        return m_reason.isEmpty() ? ExitDone : ExitFile;
    }
    qint64 Stops() const { return m_writer.Count(); }
    const ScanCounts& Counts() const { return m_scanner.GetCounts(); }

private:
    void ScanChanged() override {
        if (m_scanner.GetReason() != m_told) {
            m_told = m_scanner.GetReason();
            if (!m_told.isEmpty())
                TellError(QStringLiteral("freqstore-cli scan: ") + m_told);
        }
    }
    void LeftOut(const QString& reason) override {
        TellError(QStringLiteral("freqstore-cli scan: ") + reason);
    }
    void StopTold(const ScanStop& stop) override {
        if (stop.isActive || m_failure)
            return;
        try {
            if (!m_writer.Write(stop))
                endSoon();
        } catch (const RGException&) {
            m_failure = std::current_exception();
            endSoon();
        }
    }
    void ScanEnded(const QString& reason) override {
        m_reason = reason;
        m_loop.quit();
    }
    /// The scanner is not to be called from what it calls.
    void endSoon() {
        QMetaObject::invokeMethod(
            &m_loop, [this] { m_scanner.Stop(); }, Qt::QueuedConnection);
    }

    const Wish& m_wish;
    ReceiverPort m_port;
    MachineClock m_clock;
    StopWriter m_writer;
    QEventLoop m_loop;
    Scanner m_scanner{m_port, m_clock, *this};
    QString m_reason;
    QString m_told;
    std::exception_ptr m_failure;
};

int scan(const Wish& wish, Receiver& receiver, std::unique_ptr<ScanPlan> plan) {
    try {
        Run run(receiver, wish);
        const int exitCode = run.Do(std::move(plan));
        if (wish.out != QLatin1String("-"))
            Output(stdout).Line(QStringLiteral("%1: %2, %3, %4")
                                    .arg(wish.out,
                                         Counted(static_cast<qint64>(run.Counts().steps), "step", "steps"),
                                         Counted(static_cast<qint64>(run.Counts().passes), "pass", "passes"),
                                         Counted(run.Stops(), "detection", "detections")));
        return exitCode;
    } catch (const RGException&) { // told
        return ExitFile;
    }
}

} // namespace

int RunScan(const QStringList& arguments) {
    Arguments args(
        "scan",
        "Tunes a receiver from entry to entry of a list, or through a range, and writes where it heard "
        "a signal. Ctrl+C ends it; what it has found is written.",
        -1);
    addOptions(args);
    int exitCode = ExitDone;
    if (!args.Take(arguments, exitCode))
        return exitCode;
    Wish wish;
    if (!takeWish(args, wish))
        return ExitUsage;
    const std::optional<ReceiverChoice> choice = CliRadio::Choice(args);
    if (!choice)
        return ExitUsage;
    const ProblemPrinter problems;
    Work work = makeWork(args, wish);
    if (!work.plan)
        return problems.Count() > 0 ? ExitFile : ExitUsage;
    // The one of the two that reaches it.
    Receiver receiver(work.highest > HighestOfHF ? ReceiverKind::VUHF : ReceiverKind::HF);
    receiver.Attach(choice->MakeLink(receiver));
    exitCode = scan(wish, receiver, std::move(work.plan));
    receiver.Attach(nullptr);
    HamlibReceiver::WaitForAll(LongestFarewell);
    return problems.Count() > 0 ? ExitFile : exitCode;
}
