// Figures of radios: wall time of what is done through a receiver beside the same calls of the radio library,
// both by TCP to the library's own server with a radio that there is not, and how long the window gets no
// turn while a radio is silent.

#include "bench/figures.h"
#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/memory/hfmemoryentry.h"
#include "host/valuetree/tree.h"
#include "receiver/hamlib.h"
#include "receiver/hamlibreceiver.h"
#include "receiver/receiver.h"
#include "scan/receiverport.h"
#include "scan/scan.h"
#include "scan/scanclock.h"
#include "workstation/application.h"
#include "workstation/mainwindow.h"

#include <QApplication>
#include <QProcess>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QThread>

#include <benchmark/benchmark.h>

using namespace std::chrono_literals;

namespace {

constexpr int Steps = 50; ///< each takes some tens of milliseconds
constexpr double Goal = 1.2;
constexpr double LongestTurn = 0.05; // seconds
constexpr char ListPath[] = "/RadioBench";

double frequencyOf(int step) {
    return 2e6 + step * 1e3;
}

const char* modeOf(int step) {
    return step % 2 ? "USB" : "AM";
}

int widthOf(int step) {
    return step % 2 ? 2400 : 6000;
}

/// The radio library and no more.
class BareRadio {
public:
    /// Null when nobody answers there.
    static std::unique_ptr<BareRadio> Open(const QString& port) {
        LoadHamlib();
        auto bare = std::make_unique<BareRadio>();
        RIG* rig = bare->m_rig.get();
        rig_set_conf(rig, rig_token_lookup(rig, "rig_pathname"), port.toLatin1().constData());
        if (rig_open(rig) != RIG_OK)
            return nullptr;
        rig_set_cache_timeout_ms(rig, HAMLIB_CACHE_ALL, 0);
        return bare;
    }
    void TuneAndMeasure() {
        for (int i = 0; i < Steps; ++i) {
            Tune(i);
            Measure();
        }
    }
    void Tune(int step) { rig_set_freq(m_rig.get(), RIG_VFO_CURR, frequencyOf(step)); }
    void SetMode(int step) {
        rig_set_mode(m_rig.get(), RIG_VFO_CURR, rig_parse_mode(modeOf(step)), widthOf(step));
    }
    void Measure() {
        value_t level{};
        rig_get_level(m_rig.get(), RIG_VFO_CURR, RIG_LEVEL_STRENGTH, &level);
        benchmark::DoNotOptimize(level);
    }

private:
    struct Closer {
        void operator()(RIG* rig) const {
            rig_close(rig);
            rig_cleanup(rig);
        }
    };
    std::unique_ptr<RIG, Closer> m_rig{rig_init(RIG_MODEL_NETRIGCTL)};
};

/// The library's server, a radio of ours and one without us that are its clients.
class Radios {
public:
    Radios() {
        QTcpServer free;
        free.listen(QHostAddress::LocalHost);
        m_port = free.serverPort();
        free.close();
        m_server.setStandardErrorFile(QProcess::nullDevice());
        m_server.start(QStringLiteral("rigctld"),
                       {QStringLiteral("-m"), QStringLiteral("1"), QStringLiteral("-T"),
                        QStringLiteral("127.0.0.1"), QStringLiteral("-t"), QString::number(m_port)});
        const QString address = QStringLiteral("127.0.0.1:%1").arg(m_port);
        for (int tries = 0; tries < 100 && !bare; ++tries, QThread::msleep(50))
            bare = BareRadio::Open(address);
        if (!bare)
            return;
        receiver.Attach(std::make_unique<HamlibReceiver>(RadioProfile{{}, RadioProfile::Client, address}));
        while (receiver.GetState() != ReceiverState::Connected)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    ~Radios() {
        receiver.Attach(nullptr);
        HamlibReceiver::WaitForAll(10s);
        m_server.kill();
        m_server.waitForFinished();
    }

    /// Compares, both in wall time.
    void Report(benchmark::State& state, const char* with, const std::function<void()>& baseline,
                const std::function<void()>& ours) const {
        if (!bare)
            return state.SkipWithError("rigctld is not there");
        for (auto _ : state)
            reportInTurn(
                state, with, Goal, [&] { return secondsOf(baseline); }, [&] { return secondsOf(ours); });
    }

    std::unique_ptr<BareRadio> bare; ///< null when there is no such server on this machine
    Receiver receiver{ReceiverKind::HF};

private:
    QProcess m_server;
    quint16 m_port = 0;
};

/// A scan by the machine's clock that waits nowhere.
class RadioScan {
public:
    explicit RadioScan(Receiver& receiver) : m_port(receiver), scan(m_port, m_clock) {
        scan.GetValues()
            .Get<ValueSelection>(ScanKeys::GoOn)
            .Select(static_cast<long>(ScanSettings::GoOn::AfterTime));
        for (const auto& [key, text] : {std::pair{Names::Id(ScanKeys::Settle), "0"},
                                        {ScanKeys::Dwell, "0"},
                                        {ScanKeys::GoOnSeconds, "0"},
                                        {ScanKeys::Step, "1000"},
                                        {ScanKeys::From, "2000000"},
                                        {ScanKeys::To, "29000000"}})
            scan.GetValues().Find(key)->SetStringValue(QLatin1String(text));
    }
    void Run(ScanSource source) {
        scan.GetValues().Get<ValueSelection>(ScanKeys::Source).SelectAt(static_cast<long>(source));
        scan.Start();
        while (scan.GetScanner().IsRunning() && scan.GetScanner().GetCounts().steps < Steps)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        scan.Stop();
    }

private:
    ReceiverPort m_port;
    MachineClock m_clock;

public:
    Scan scan;
};

void ScanStepByRadio(benchmark::State& state) {
    Radios radios;
    RadioScan ours(radios.receiver);
    radios.Report(
        state, "frequency and level by the radio library", [&] { radios.bare->TuneAndMeasure(); },
        [&] { ours.Run(ScanSource::Range); });
}
BENCHMARK(ScanStepByRadio)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

/// Each channel has another mode than the one before.
void ScanChannelByRadio(benchmark::State& state) {
    Radios radios;
    Node* node = Tree::Instance()->MakeNode(ListPath);
    {
        HalvoNodeMediatorCtrl list(MediatorType::MemoryHF, 4);
        for (int i = 0; i < Steps + 1; ++i) {
            Node* channel =
                Node::NewEntry(node, Names::Intern(QStringLiteral("MemItem")), HFMemoryEntry::Shape());
            node->AddItemUnique(channel);
            HFMemoryEntry(channel, true, nullptr, SimpleFrequency::Use::Passing)
                .SetBasics(frequencyOf(i), widthOf(i), QStringLiteral("channel"),
                           QString::fromLatin1(modeOf(i)));
        }
        list.Init(ListPath);
        list.IncrementVisibleCnt();
        list.ForceUpdateNow();
        RadioScan ours(radios.receiver);
        ours.scan.SetPlan(ScanSource::MemoryChannels,
                          [&](QString&) { return std::make_unique<ChannelPlan>(list); });
        radios.Report(
            state, "frequency, mode and level by the library",
            [&] {
                for (int i = 0; i < Steps; ++i) {
                    radios.bare->Tune(i);
                    radios.bare->SetMode(i);
                    radios.bare->Measure();
                }
            },
            [&] { ours.Run(ScanSource::MemoryChannels); });
    }
    node->DeleteChildren();
}
BENCHMARK(ScanChannelByRadio)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

/// Until the level has been measured with it.
void SettingByRadio(benchmark::State& state) {
    Radios radios;
    quint64 measured = 0;
    QObject::connect(&radios.receiver, &Receiver::Measured,
                     [&](double, quint64 serial) { measured = serial; });
    radios.Report(
        state, "frequency and level by the radio library", [&] { radios.bare->TuneAndMeasure(); },
        [&] {
            for (int i = 0; i < Steps; ++i) {
                radios.receiver.Tune(frequencyOf(i));
                while (measured < radios.receiver.GetSerial())
                    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            }
        });
}
BENCHMARK(SettingByRadio)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

/// The longest turn of the event loop, in wall time, while the operator tunes a radio whose server takes
/// connections and says nothing, and connects it anew.
void TurnWhileRadioIsSilent(benchmark::State& state) {
    constexpr int Rounds = 5;  ///< the median counts: other work on the machine takes turns away, too
    constexpr int Turns = 400; ///< of 1 ms and more, in a round
    constexpr int TurnsOfTuning = 50;
    QTcpServer silent; // nobody takes the connections: the system does
    silent.listen(QHostAddress::LocalHost);
    RadioProfile profile{{}, RadioProfile::Client, QStringLiteral("127.0.0.1:%1").arg(silent.serverPort())};
    profile.timeout = 300;
    const QTemporaryDir folder;
    QString error;
    Workstation station(Options::Parse({QStringLiteral("freqstore"), QStringLiteral("--data"),
                                        folder.filePath(QStringLiteral("data")), QStringLiteral("--config"),
                                        folder.filePath(QStringLiteral("config"))},
                                       error));
    station.GetWindow().show();
    QApplication::processEvents();
    for (auto _ : state) {
        std::vector<double> longests;
        int states = 0;
        QObject::connect(&station.GetReceiver(), &Receiver::StateChanged, &silent, [&] { ++states; });
        for (int round = 0; round < Rounds; ++round) {
            double longest =
                secondsOf([&] { station.GetReceiver().Attach(std::make_unique<HamlibReceiver>(profile)); });
            for (int i = 0; i < Turns; ++i) {
                longest = std::max(longest, secondsOf([&] {
                                       if (i % TurnsOfTuning == 0)
                                           station.GetReceiver().Tune(frequencyOf(i));
                                       QApplication::processEvents();
                                   }));
                QThread::msleep(1);
            }
            longest = std::max(longest, secondsOf([&] { station.GetReceiver().Attach(nullptr); }));
            longests.push_back(longest);
        }
        const double longest = medianOf(longests);
        state.SetIterationTime(longest);
        state.counters["ours_s"] = longest;
        state.counters["goal"] = LongestTurn;
        state.counters["states"] = states;
    }
    HamlibReceiver::WaitForAll(10s);
}
BENCHMARK(TurnWhileRadioIsSilent)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace
