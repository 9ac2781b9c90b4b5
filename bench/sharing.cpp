// Figures of shared lists: through a mosquitto of the bench's own on this machine, and of the library alone.

#include "bench/memoryprobe.h"
#include "bench/targets.h"
#include "bench/turnclock.h"
#include "controls/frequencystore/targets/wkflistentry.h"
#include "controls/frequencystore/targets/wkflistview.h"
#include "host/freqlist/buttonbar.h"
#include "host/valuetree/detection.h"
#include "link/listclient.h"
#include "link/listserver.h"
#include "link/localbus.h"
#include "link/mqttbus.h"
#include "link/recordclient.h"
#include "link/recordserver.h"

#include <QCoreApplication>
#include <QProcess>

#include <benchmark/benchmark.h>

namespace {

constexpr int Port = 28831;

/// Handles events until something is so.
template <typename Is>
void until(Is isSo) {
    while (!isSo())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
}

/// A broker without encryption or passwords for the loopback, whose limits are those of the documentation.
class BenchBroker {
public:
    BenchBroker() {
        QFile file(m_dir.filePath(QStringLiteral("conf")));
        file.open(QIODevice::WriteOnly);
        file.write(
            "listener " + QByteArray::number(Port) +
            " 127.0.0.1\nallow_anonymous true\nmax_queued_messages 1000000000\nmax_inflight_messages 0\n");
        file.close();
        m_process.setProcessChannelMode(QProcess::MergedChannels);
        m_process.start(QStringLiteral("mosquitto"), {QStringLiteral("-c"), file.fileName()});
        QByteArray told;
        while (!told.contains("running") && m_process.waitForReadyRead())
            told += m_process.readAll();
    }
    ~BenchBroker() {
        m_process.terminate();
        m_process.waitForFinished();
    }
    std::unique_ptr<MqttBus> Connect() const {
        BrokerAddress address;
        address.host = QStringLiteral("127.0.0.1");
        address.port = Port;
        return std::make_unique<MqttBus>(address);
    }
    /// What the broker's process holds.
    double Bytes() const {
        QFile file(QStringLiteral("/proc/%1/statm").arg(m_process.processId()));
        file.open(QIODevice::ReadOnly);
        return file.readAll().split(' ')[1].toDouble() * 4096;
    }

private:
    QTemporaryDir m_dir;
    QProcess m_process;
};

SharedList targets(Node& node) {
    return {&node, QStringLiteral("target"), QStringLiteral("Target"), &WkfTarget::Shape(), false};
}

/// The list of the bench, served.
struct Served {
    Served(std::unique_ptr<MessageBus> itsBus, int count)
        : bus(std::move(itsBus)), seat(*bus, QStringLiteral("bench"), QStringLiteral("server")) {
        Node& list = *Bench::Get().List(count).GetItemsRoot();
        server = std::make_unique<ListServer>(seat, targets(list));
        until([&] { return server->GetState() == ListServer::State::Serving; });
        entries = list.Children();
    }
    /// Changes the n-th entry.
    void Edit(size_t n) {
        auto* const value = entries[n % entries.size()]->FindOwn<ValueNumeric<double>>(
            Names::Intern(QStringLiteral("frequency")));
        value->SetValue(value->GetValue() + 1);
    }

    std::unique_ptr<MessageBus> bus;
    Seat seat;
    std::unique_ptr<ListServer> server;
    std::vector<Node*> entries;
};

/// A seat that follows the list; without a node it keeps the rows alone.
struct Follower {
    Follower(std::unique_ptr<MessageBus> itsBus, Node* node = nullptr)
        : bus(std::move(itsBus)),
          seat(*bus, QStringLiteral("bench"), QStringLiteral("client")),
          reader(seat, QStringLiteral("target")) {
        if (node)
            client = std::make_unique<ListClient>(reader, targets(*node));
    }
    bool IsAt(Messages::Revision revision) const { return reader.Copy().Revision() >= revision; }
    bool IsWhole() const { return reader.GetState() == ListReader::State::Whole; }

    std::unique_ptr<MessageBus> bus;
    Seat seat;
    ListReader reader;
    std::unique_ptr<ListClient> client;
};

/// A late joiner gets 20,000 entries into its tree, beside reading them from XML: the time on the clock,
/// since the broker works, too.
void ShareLateJoiner(benchmark::State& state) {
    constexpr int Count = 20000;
    const BenchBroker broker;
    const QString xml = Bench::Get().File("shared.xml");
    Bench::Get().List(Count).SaveFile(xml);
    for (auto _ : state) {
        std::vector<double> readings, joinings, ratios;
        for (int i = 0; i < 5; ++i) {
            Bench::Get().Empty();
            readings.push_back(secondsOf([&] { TargetListHandler::Instance()->ReadFile(xml); }));
            const Served served(broker.Connect(), Count);
            Node& node = *Tree::Instance()->MakeNode(QStringLiteral("/Lists/Joined"));
            joinings.push_back(secondsOf([&] {
                const Follower late(broker.Connect(), &node);
                until([&] { return late.IsWhole(); });
            }));
            if (node.ChildCount() != Count)
                state.SkipWithError("the list is not whole");
            node.DeleteChildren();
            ratios.push_back(joinings.back() / readings.back());
        }
        report(state, medianOf(readings), medianOf(joinings), 3.0);
        state.counters["ratio"] = medianOf(ratios);
        state.SetLabel("reading them from XML");
    }
}
BENCHMARK(ShareLateJoiner)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

/// Has what has been published arrive at the broker.
void arrive(Served& served) {
    bool isThere = false;
    served.seat.AfterWhatIsUnderWay([&] { isThere = true; });
    until([&] { return isThere; });
}

/// Processor time of this process, a server, until a bus has edits of a list; from one to the next it goes on
/// by `stride` entries.
double secondsOfEdits(std::unique_ptr<MessageBus> bus, int count, size_t stride) {
    constexpr size_t Edits = 10000;
    Served served(std::move(bus), count);
    arrive(served);
    return processorSecondsOf([&] {
        for (size_t i = 0; i < Edits; ++i) {
            served.Edit(i * stride);
            served.server->Flush();
        }
        arrive(served);
    });
}

/// Edits all over a list of 100,000 beside those of 1,000, until the broker has them, which is another
/// process. In the long list each is in another chunk, which is copied and sent, in the short one eight share
/// that; and neither entry nor row is in a cache.
void ShareEditOfLongList(benchmark::State& state) {
    const BenchBroker broker;
    const auto edits = [&](int count) {
        return [&broker, count] { return secondsOfEdits(broker.Connect(), count, 7919); };
    };
    for (auto _ : state)
        reportInTurn(state, "the same in a list of 1,000", 1.5, edits(1000), edits(100000));
}
BENCHMARK(ShareEditOfLongList)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

/// Takes what a server publishes of its list and keeps nothing.
class BusOfServer : public LocalBus {
public:
    using LocalBus::LocalBus;
    void Publish(const QByteArray& topic, const QByteArray& payload, Keep keep) override {
        if (keep == Keep::No || topic.endsWith("/claim"))
            LocalBus::Publish(topic, payload, keep);
    }
};

/// Edits of one entry after the other, by the library alone: nothing in it grows with the list.
void ShareEditByItself(benchmark::State& state) {
    LocalBroker broker;
    const auto edits = [&](int count) {
        return [&broker, count] {
            return secondsOfEdits(std::make_unique<BusOfServer>(broker, QStringLiteral("server")), count, 1);
        };
    };
    for (auto _ : state)
        reportInTurn(state, "the same in a list of 1,000", 1.5, edits(1000), edits(100000));
}
BENCHMARK(ShareEditByItself)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

/// A record that a search appends to a list of 100,000, beside one of 1,000, until a client shows it.
void ShareRecordOfLongList(benchmark::State& state) {
    constexpr unsigned Records = 5000;
    const auto appends = [](unsigned count) {
        return [count] {
            LocalBroker broker;
            LocalBus bus(broker, QStringLiteral("server"));
            Seat seat(bus, QStringLiteral("bench"), QStringLiteral("server"));
            ValueList<DetectionConventional> found, shown;
            const auto record = [](unsigned id) {
                DetectionConventional detection;
                detection.SetID(id);
                detection.SetFrequency(7e6 + id * 12.5);
                return detection;
            };
            for (unsigned id = 0; id < count; ++id)
                found.PushBack(record(id));
            RecordServer server(seat, found, QStringLiteral("target"));
            Follower late(std::make_unique<LocalBus>(broker, QStringLiteral("client")));
            const RecordClient client(late.reader, shown);
            until([&] { return shown.Size() == count; });
            return processorSecondsOf([&] {
                for (unsigned id = 0; id < Records; ++id) {
                    found.PushBack(record(id));
                    server.Flush();
                    until([&] { return shown.Size() == found.Size(); });
                }
            });
        };
    };
    for (auto _ : state)
        reportInTurn(state, "the same in a list of 1,000", 2.0, appends(1000), appends(100000));
}
BENCHMARK(ShareRecordOfLongList)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

/// How long it takes until ten clients have an edit of a list, in the median.
double secondsToTenClients(const BenchBroker& broker, int count) {
    Served served(broker.Connect(), count);
    std::vector<std::unique_ptr<Follower>> clients;
    for (int i = 0; i < 10; ++i)
        clients.push_back(std::make_unique<Follower>(broker.Connect()));
    const auto haveAll = [&](Messages::Revision revision) {
        return std::all_of(clients.begin(), clients.end(),
                           [&](const auto& client) { return client->IsWhole() && client->IsAt(revision); });
    };
    until([&] { return haveAll(1); });
    std::vector<double> times;
    for (size_t i = 0; i < 50; ++i) {
        const Messages::Revision next = served.server->Publisher().NextRevision();
        times.push_back(secondsOf([&] {
            served.Edit(i * 7919);
            until([&] { return haveAll(next); });
        }));
    }
    return medianOf(times);
}

void ShareEditToTenClients(benchmark::State& state) {
    const BenchBroker broker;
    for (auto _ : state) {
        report(state, 0.1, secondsToTenClients(broker, 100000), 1.0);
        state.SetLabel("100 ms");
    }
}
BENCHMARK(ShareEditToTenClients)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

void ShareEditOfLongListToTenClients(benchmark::State& state) {
    const BenchBroker broker;
    const auto edits = [&](int count) {
        return [&broker, count] { return secondsToTenClients(broker, count); };
    };
    for (auto _ : state)
        reportInTurn(state, "the same in a list of 1,000", 1.5, edits(1000), edits(100000));
}
BENCHMARK(ShareEditOfLongListToTenClients)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

/// What is allocated: what the process holds also has what the server needed and gave back.
double usedBytes() {
    const struct mallinfo2 used = mallinfo2();
    return static_cast<double>(used.uordblks + used.hblkhd);
}

/// Memory of a seat that follows 200,000 entries without a tree, and of the broker, an entry.
void ShareMemory(benchmark::State& state) {
    constexpr int Count = 200000;
    for (auto _ : state) {
        const BenchBroker broker;
        const double empty = broker.Bytes();
        Served served(broker.Connect(), Count);
        arrive(served);
        const double before = usedBytes();
        const Follower late(broker.Connect());
        until([&] { return late.IsWhole(); });
        state.SetIterationTime(1e-9);
        state.counters["bytes_per_entry"] = (usedBytes() - before) / Count;
        state.counters["broker_bytes_per_entry"] = (broker.Bytes() - empty) / Count;
        state.counters["rows"] = static_cast<double>(late.reader.Copy().GetRows().size());
    }
}
BENCHMARK(ShareMemory)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

/// A thousand changes a second for a minute: how far a client lags behind, and what grows; then five times as
/// many as fast as they are taken, which tells what would go on growing from pools that fill.
void ShareManyChanges(benchmark::State& state) {
    constexpr int Seconds = 60;
    constexpr size_t PerTurn = 20, ToFill = 20000, More = 300000;
    const BenchBroker broker;
    Served served(broker.Connect(), 20000);
    const Follower client(broker.Connect());
    until([&] { return client.IsWhole(); });
    size_t edits = 0;
    const auto edit = [&] {
        for (size_t i = 0; i < PerTurn; ++i)
            served.Edit(++edits * 7919);
    };
    const auto catchUp = [&] {
        served.server->Flush();
        until([&] { return client.IsAt(served.server->Publisher().Revision()); });
    };
    for (auto _ : state) {
        QElapsedTimer clock;
        clock.start();
        double ours = 0, its = 0;
        const auto note = [&] {
            ours = usedBytes();
            its = broker.Bytes();
        };
        while (clock.elapsed() < Seconds * 1000) {
            edit();
            const auto next = static_cast<qint64>(edits);
            until([&] { return clock.elapsed() >= next; });
            if (edits == ToFill) // each entry has changed once
                note();
        }
        state.counters["lag_s"] = secondsOf(catchUp);
        state.SetIterationTime(static_cast<double>(clock.elapsed()) / 1000);
        state.counters["changes"] = static_cast<double>(edits);
        state.counters["grown_bytes"] = usedBytes() - ours;
        state.counters["broker_grown_bytes"] = broker.Bytes() - its;
        const auto hurry = [&](size_t changes) {
            for (const size_t last = edits + changes; edits < last;) {
                edit();
                served.server->Flush();
                if (edits % 1000 == 0)
                    catchUp();
            }
            catchUp();
        };
        hurry(More / 5); // fills the pools of what waits
        note();
        hurry(More);
        state.counters["bytes_per_entry"] =
            std::max(usedBytes() - ours, broker.Bytes() - its) / static_cast<double>(More);
        state.counters["bytes_goal"] = 1;
        if (!client.IsWhole())
            state.SkipWithError("the list is not whole");
    }
}
BENCHMARK(ShareManyChanges)->UseManualTime()->Iterations(1)->Unit(benchmark::kSecond);

/// Gives a list's node the entries of another one.
void copyEntries(const Node& from, Node& node) {
    const std::vector<Node*> entries = from.Children();
    const EntryLayout layout = EntryLayout::Of(*entries.front());
    Wire::Writer contents;
    for (const Node* entry : entries) {
        contents.Clear();
        layout.Put(contents, *entry);
        node.AddItemUnique(layout.MakeEntry(node, &WkfTarget::Shape(), contents.View()).release());
    }
}

/// The longest turn of a window, in processor time of its thread.
class Turns {
public:
    void During(const std::function<void()>& work) {
        m_longest = std::max(m_longest, m_clock.LongestOf(work));
    }
    void Until(const std::function<bool()>& isSo) {
        while (!isSo())
            During([] { QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 20); });
    }
    void Report(benchmark::State& state, const char* what) {
        state.counters[what] = std::exchange(m_longest, 0);
    }

private:
    TurnClock m_clock;
    double m_longest = 0;
};

/// While a list of 100,000 is served, comes to a client that shows it in a view, and comes to it again
/// because the server has read it anew.
void ShareWaits(benchmark::State& state) {
    Turns turns;
    constexpr int Count = 100000;
    Node& list = *Tree::Instance()->MakeNode(QStringLiteral("/Lists/Served"));
    Node& node = *Bench::Get().List(Count).GetItemsRoot();
    copyEntries(node, list);
    Bench::Get().Empty();
    WkfListView view(nullptr, Bench::Get().ListId());
    FreqStoreListViewButtonBar bar;
    view.InitFreqStoreWidget(&bar);
    view.resize(1200, 800);
    view.show();
    for (auto _ : state) {
        const BenchBroker broker;
        const auto bus = broker.Connect();
        Seat seat(*bus, QStringLiteral("bench"), QStringLiteral("server"));
        std::unique_ptr<ListServer> server;
        turns.During([&] { server = std::make_unique<ListServer>(seat, targets(list)); });
        turns.Until([&] { return server->GetState() == ListServer::State::Serving; });
        turns.Report(state, "serve");
        const Follower late(broker.Connect(), &node);
        turns.Until([&] { return late.IsWhole() && view.RowCount() == Count; });
        turns.Report(state, "join");
        list.DeleteChildren();
        copyEntries(node, list);
        const Messages::Revision next = server->Publisher().NextRevision();
        turns.Until([&] { return late.IsWhole() && late.IsAt(next) && view.RowCount() == Count; });
        turns.Report(state, "read_again");
        state.counters["goal"] = 0.05;
    }
    list.DeleteChildren();
    Bench::Get().Empty();
}
BENCHMARK(ShareWaits)->Iterations(1)->Unit(benchmark::kSecond);

/// While half of 100,000 detections go at once, at the server and at a client that shows them.
void ShareRecordWaits(benchmark::State& state) {
    constexpr unsigned Count = 100000;
    Turns turns;
    LocalBroker broker;
    LocalBus bus(broker, QStringLiteral("server"));
    Seat seat(bus, QStringLiteral("bench"), QStringLiteral("server"));
    ValueList<ExtendedDetectionConventional> found, shown;
    for (unsigned id = 0; id < Count; ++id) {
        ExtendedDetectionConventional detection;
        detection.SetID(id);
        detection.SetFrequency(7e6 + id * 12.5);
        detection.Result().demodulator = "FSK " + std::to_string(id);
        found.PushBack(detection);
    }
    for (auto _ : state) {
        std::unique_ptr<RecordServer> server;
        turns.During([&] { server = std::make_unique<RecordServer>(seat, found, QStringLiteral("target")); });
        turns.Until([&] { return server->GetState() == RecordServer::State::Serving; });
        turns.Report(state, "serve");
        Follower late(std::make_unique<LocalBus>(broker, QStringLiteral("client")));
        const RecordClient client(late.reader, shown);
        turns.Until([&] { return shown.Size() == Count; });
        turns.Report(state, "join");
        found.GetList().remove_if([](const auto& record) { return record.GetID() % 2 == 0; });
        found.HasChanged(TChangeCode::ValueChanged);
        turns.Until([&] { return shown.Size() == Count / 2; });
        turns.Report(state, "half_goes");
        state.counters["goal"] = 0.05;
    }
}
BENCHMARK(ShareRecordWaits)->Iterations(1)->Unit(benchmark::kSecond);

/// Bytes on the wire: of an entry in its chunk, and of an edit as each client gets it.
void ShareBytes(benchmark::State& state) {
    constexpr int Count = 20000;
    LocalBroker broker;
    Served served(std::make_unique<LocalBus>(broker, QStringLiteral("server")), Count);
    for (auto _ : state) {
        double chunks = 0, edit = 0;
        for (const auto& [topic, payload] : broker.Retained()) {
            if (topic.contains("/chunk/"))
                chunks += static_cast<double>(topic.size() + payload.size());
        }
        served.Edit(1);
        served.server->Flush();
        for (const auto& [topic, payload] : broker.Retained()) {
            if (topic.contains("/log/") || topic.contains("/manifest"))
                edit += static_cast<double>(topic.size() + payload.size());
        }
        state.SetIterationTime(1e-9);
        state.counters["bytes_per_entry"] = chunks / Count;
        state.counters["bytes_per_edit"] = edit;
    }
}
BENCHMARK(ShareBytes)->UseManualTime()->Iterations(1);

} // namespace
