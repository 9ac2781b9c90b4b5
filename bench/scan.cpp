// Figures of scanning: what a step costs beside the calls of the receiver that it makes, and what memory a
// long scan takes.

#include "scan/scan.h"

#include "bench/figures.h"
#include "bench/memoryprobe.h"
#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/memory/hfmemoryentry.h"
#include "host/freqlist/frequencynodemediator.h"
#include "host/valuetree/tree.h"
#include "receiver/hamlibreceiver.h"
#include "receiver/radio.h"
#include "receiver/receiver.h"
#include "scan/receiverport.h"
#include "scan/scanclock.h"

#include <QCoreApplication>
#include <QProcess>
#include <QThread>

#include <benchmark/benchmark.h>

namespace {

constexpr int Channels = 10000;
constexpr char ListPath[] = "/ScanBench";

/// A radio that has measured as soon as it is set.
class InstantLink final : public ReceiverLink {
public:
    QString GetName() const override { return QStringLiteral("Instant"); }
    void Begin() override { emit StateChanged(ReceiverState::Connected, QString()); }
    void Set(const std::vector<ReceiverWord>&, quint64 serial) override {
        ReceiverReading reading;
        reading.serial = serial;
        reading.level = -20;
        emit Read(reading);
    }
};

/// A clock that wakes whoever asked when it is told to.
class HandClock final : public ScanClock {
public:
    qint64 Now() const override { return m_now; }
    qint64 Time() const override { return m_now * 1000; }
    void WakeAt(qint64 milliseconds) override { m_due = milliseconds; }
    void Cancel() override {}
    void Go() {
        m_now = std::max(m_now, m_due);
        Wake();
    }

private:
    qint64 m_now = 0;
    qint64 m_due = 0;
};

/// A scan of a list of channels that never stops at one.
class ChannelScan {
public:
    ChannelScan() {
        Node* node = Tree::Instance()->MakeNode(ListPath);
        for (int i = 0; i < Channels; ++i) {
            Node* channel =
                Node::NewEntry(node, Names::Intern(QStringLiteral("MemItem")), HFMemoryEntry::Shape());
            node->AddItemUnique(channel);
            HFMemoryEntry(channel, true, nullptr, SimpleFrequency::Use::Passing)
                .SetBasics(2e6 + i * 1e3, 2700 + i % 2 * 300, QStringLiteral("channel"),
                           QStringLiteral("USB"));
        }
        list.Init(ListPath);
        list.IncrementVisibleCnt();
        list.ForceUpdateNow();
        receiver.Attach(std::make_unique<InstantLink>());
        scan.SetPlan(ScanSource::MemoryChannels,
                     [this](QString&) { return std::make_unique<ChannelPlan>(list); });
        for (const Names::Id key : {Names::Id(ScanKeys::Settle), Names::Id(ScanKeys::Dwell)})
            scan.GetValues().Get<ValueNumeric<int>>(key).SetValue(0);
    }
    ~ChannelScan() { Tree::Instance()->GetNode(ListPath)->DeleteChildren(); }

    void Pass(int count) {
        for (int i = 0; i < count * Channels; ++i)
            clock.Go();
    }

    HalvoNodeMediatorCtrl list{MediatorType::MemoryHF, 4};
    Receiver receiver{ReceiverKind::HF};
    HandClock clock;
    ReceiverPort port{receiver};
    Scan scan{port, clock};
};

void ScanStepBesideBareCalls(benchmark::State& state) {
    ChannelScan bench;
    for (auto _ : state) {
        reportInTurn(state, "the receiver's own calls", 2.0, timed([&] {
                         for (unsigned long i = 0; i < Channels; ++i)
                             bench.receiver.Tune(*bench.list.At(i), true);
                     }),
                     timed([&] {
                         bench.scan.Start();
                         bench.Pass(1);
                         bench.scan.Stop();
                     }));
    }
}
BENCHMARK(ScanStepBesideBareCalls)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

/// Ten more passes over ten thousand channels take no more memory than the first one.
void ScanMemory(benchmark::State& state) {
    ChannelScan bench;
    for (auto _ : state) {
        bench.scan.Start();
        bench.Pass(1);
        const double before = residentBytes();
        state.SetIterationTime(secondsOf([&] { bench.Pass(10); }));
        state.counters["grown_kB"] = (residentBytes() - before) / 1024;
        state.counters["passes"] = static_cast<double>(bench.scan.GetScanner().GetCounts().passes);
    }
}
BENCHMARK(ScanMemory)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

/// A server of the radio library, with a radio that there is not.
class RadioServer {
public:
    RadioServer() {
        m_process.setStandardErrorFile(QProcess::nullDevice());
        m_process.start(QStringLiteral("rigctld"),
                        {QStringLiteral("-m"), QStringLiteral("1"), QStringLiteral("-T"),
                         QStringLiteral("127.0.0.1"), QStringLiteral("-t"), Port});
    }
    ~RadioServer() {
        m_process.kill();
        m_process.waitForFinished();
    }
    /// Null when there is no such server on this machine.
    static std::unique_ptr<Radio> Connect(const RadioProfile& profile) {
        for (int tries = 0; tries < 100; ++tries) {
            try {
                return std::make_unique<Radio>(profile);
            } catch (const RadioError&) {
                QThread::msleep(50);
            }
        }
        return nullptr;
    }

    inline static const QString Port = QStringLiteral("14539");

private:
    QProcess m_process;
};

/// The wall time of a step by a radio behind a network connection, beside setting and measuring alone.
void ScanStepByRadio(benchmark::State& state) {
    constexpr int Steps = 100; // each takes some tens of milliseconds
    const RadioServer server;
    RadioProfile profile;
    profile.model = RadioProfile::Client;
    profile.port = QStringLiteral("127.0.0.1:") + RadioServer::Port;
    const std::unique_ptr<Radio> bare = RadioServer::Connect(profile);
    if (!bare)
        return state.SkipWithError("rigctld is not there");
    Receiver receiver(ReceiverKind::HF);
    receiver.Attach(std::make_unique<HamlibReceiver>(profile));
    while (receiver.GetState() != ReceiverState::Connected)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    ReceiverPort port(receiver);
    MachineClock clock;
    Scan scan(port, clock);
    for (const auto& [key, text] : {std::pair{Names::Id(ScanKeys::Settle), "0"},
                                    {ScanKeys::Dwell, "0"},
                                    {ScanKeys::ScanThreshold, "110"},
                                    {ScanKeys::Step, "1000"},
                                    {ScanKeys::From, "2000000"},
                                    {ScanKeys::To, "29000000"}})
        scan.GetValues().Find(key)->SetStringValue(QLatin1String(text));
    scan.GetValues().Get<ValueSelection>(ScanKeys::Source).SelectAt(2);
    for (auto _ : state) {
        reportInTurn(
            state, "set and measure by the radio library", 1.2,
            [&] {
                return secondsOf([&] {
                    QStringList refusals;
                    for (int i = 0; i < Steps; ++i) {
                        RadioWishes wishes;
                        wishes.frequency = 2e6 + i * 1e3;
                        bare->Set(wishes, refusals);
                        bare->Measure();
                    }
                });
            },
            [&] {
                scan.Start();
                const double seconds = secondsOf([&] {
                    while (scan.GetScanner().GetCounts().steps < Steps)
                        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
                });
                scan.Stop();
                return seconds;
            });
    }
}
BENCHMARK(ScanStepByRadio)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace
