// Figures of scanning: what a step costs beside the calls of the receiver that it makes, and what memory a
// long scan takes.

#include "scan/scan.h"

#include "bench/figures.h"
#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/memory/hfmemoryentry.h"
#include "host/freqlist/frequencynodemediator.h"
#include "host/valuetree/tree.h"
#include "receiver/receiver.h"
#include "scan/receiverport.h"
#include "scan/scanclock.h"

#include <benchmark/benchmark.h>
#include <malloc.h>

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

/// Ten more passes over ten thousand channels allocate no more than the first one. What is resident would
/// tell pages, not bytes.
void ScanMemory(benchmark::State& state) {
    constexpr int Passes = 10;
    ChannelScan bench;
    for (auto _ : state) {
        bench.scan.Start();
        bench.Pass(1);
        const auto allocated = static_cast<double>(mallinfo2().uordblks);
        state.SetIterationTime(secondsOf([&] { bench.Pass(Passes); }));
        const double grown = static_cast<double>(mallinfo2().uordblks) - allocated;
        state.counters["grown"] = grown;
        state.counters["bytes_per_entry"] = grown / Channels / Passes;
        state.counters["bytes_goal"] = 0.01;
        state.counters["passes"] = static_cast<double>(bench.scan.GetScanner().GetCounts().passes);
    }
}
BENCHMARK(ScanMemory)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace
