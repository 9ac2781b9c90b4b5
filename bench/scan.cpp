// Figures of scanning: what a step costs beside the calls of the receiver that it makes, and what memory a
// long scan takes.

#include "scan/scan.h"

#include "bench/figures.h"
#include "bench/memoryprobe.h"
#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/memory/hfmemoryentry.h"
#include "host/freqlist/frequencynodemediator.h"
#include "host/valuetree/tree.h"
#include "receiver/receiver.h"
#include "scan/receiverport.h"
#include "scan/scanclock.h"

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

/// A list of channels with a receiver that can be tuned to them.
struct Bench {
    Bench() {
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
    }
    ~Bench() { Tree::Instance()->GetNode(ListPath)->DeleteChildren(); }

    HalvoNodeMediatorCtrl list{MediatorType::MemoryHF, 4};
    Receiver receiver{ReceiverKind::HF};
};

void ScanStepBesideBareCalls(benchmark::State& state) {
    Bench bench;
    ReceiverPort port(bench.receiver);
    HandClock clock;
    Scan scan(port, clock);
    scan.SetPlan(ScanSource::MemoryChannels,
                 [&](QString&) { return std::make_unique<ChannelPlan>(bench.list); });
    for (const Names::Id key : {Names::Id(ScanKeys::Settle), Names::Id(ScanKeys::Dwell)})
        scan.GetValues().Get<ValueNumeric<int>>(key).SetValue(0);
    for (auto _ : state) {
        reportInTurn(state, "the receiver's own calls", 1.2, timed([&] {
                         for (unsigned long i = 0; i < Channels; ++i)
                             bench.receiver.Tune(*bench.list.At(i), true);
                     }),
                     timed([&] {
                         scan.Start();
                         for (int i = 0; i < Channels; ++i)
                             clock.Go();
                         scan.Stop();
                     }));
    }
    state.counters["steps"] = static_cast<double>(scan.GetScanner().GetCounts().steps);
}
BENCHMARK(ScanStepBesideBareCalls)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

/// Ten passes over ten thousand channels take no more memory than one.
void ScanMemory(benchmark::State& state) {
    Bench bench;
    ReceiverPort port(bench.receiver);
    HandClock clock;
    Scan scan(port, clock);
    scan.SetPlan(ScanSource::MemoryChannels,
                 [&](QString&) { return std::make_unique<ChannelPlan>(bench.list); });
    for (const Names::Id key : {Names::Id(ScanKeys::Settle), Names::Id(ScanKeys::Dwell)})
        scan.GetValues().Get<ValueNumeric<int>>(key).SetValue(0);
    const auto pass = [&](int count) {
        for (int i = 0; i < count * Channels; ++i)
            clock.Go();
    };
    for (auto _ : state) {
        scan.Start();
        pass(1);
        const double before = residentBytes();
        const double seconds = secondsOf([&] { pass(10); });
        state.SetIterationTime(seconds);
        state.counters["grown_kB"] = (residentBytes() - before) / 1024;
        state.counters["passes"] = static_cast<double>(scan.GetScanner().GetCounts().passes);
    }
}
BENCHMARK(ScanMemory)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace
