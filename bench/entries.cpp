// Entries of other lists beside targets: what reading one from a file costs, in processor time and in memory.
// "ratio" is the time of one against that of a target, "bytes_ratio" the memory; "goal" is what neither
// should exceed. Memory channels have their part of the job's section and of the frequency bar's map, too,
// which are more than the entries.

#include "bench/figures.h"
#include "bench/memoryprobe.h"
#include "bench/targets.h"
#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/memory/memorysystemhandler.h"
#include "controls/frequencystore/noi/noifrequencyhandler.h"
#include "controls/frequencystore/results/searchmcdatahandler.h"
#include "controls/frequencystore/results/searchmcdatareader.h"
#include "controls/frequencystore/targets/targetlistparser.h"
#include "host/valuetree/tree.h"

#include <algorithm>
#include <vector>

namespace {

constexpr int Count = 300000;
constexpr int Runs = 5;
constexpr double Goal = 1.3;

QString hertzOf(int i) {
    return QString::number(100000 + 137LL * (i * 104729LL % Count)) + QStringLiteral(".000000");
}

QString commentOf(int i) {
    return QStringLiteral("Station %1").arg(i * 7919LL % Count);
}

QString demodulationOf(int i) {
    static const QString all[] = {QStringLiteral("USB"), QStringLiteral("AM"), QStringLiteral("CW")};
    return all[i % 3];
}

/// A list beside the targets: the line of its n-th entry, how it is set up, read and taken down again.
struct Kind {
    const char* file;
    QString (*line)(int i);
    void (*begin)(Node* list);
    void (*read)(const QString& path);
    void (*end)();
};

const Kind Noi{"entries.noi",
               [](int i) { return hertzOf(i) + '\t' + commentOf(i) + QStringLiteral("\t2700.000000\t\n\n"); },
               [](Node* list) {
                   NOIFrequencyHandler::Instance()->SetRemembersFile(false);
                   NOIFrequencyHandler::Instance()->Init(list);
               },
               [](const QString& path) { NOIFrequencyHandler::Instance()->ReadFile(path); },
               [] { NOIFrequencyHandler::DeleteInstance(); }};

QString channelLine(int i) {
    return hertzOf(i) + '\t' + commentOf(i) + QStringLiteral("\t2700.000000\t") + demodulationOf(i) + '\n';
}

template <MediatorType Type>
void beginMemory(Node* list) {
    MemorySystemHandler::Instance()->SetListType(Type);
    MemorySystemHandler::Instance()->Init(list);
}

void readMemory(const QString& path) {
    MemorySystemHandler::Instance()->ReadFile(path);
}

void endMemory() {
    MemorySystemHandler::DeleteInstance();
}

const Kind MemoryHF{"hf.sfl", channelLine, beginMemory<MediatorType::MemoryHF>, readMemory, endMemory};
const Kind MemoryVUHF{"vuhf.sfl", channelLine, beginMemory<MediatorType::MemoryVUHF>, readMemory, endMemory};

const Kind Results{"entries.csv",
                   [](int i) {
                       return hertzOf(i) + QStringLiteral("\t\t%1.000000\t\tc\t").arg(100 * (1 + i % 40)) +
                              (i % 3 ? QStringLiteral("LOCKED") : QStringLiteral("UNLOCKED")) +
                              QStringLiteral("\t%1\t%2\t\n").arg(1700000000000000LL + i).arg(i % 101);
                   },
                   [](Node* list) { SearchMCDataHandler::Instance()->Init(list); },
                   [](const QString& path) {
                       SearchMCDataReader(*SearchMCDataHandler::Instance()->GetMediatorCtrl()).ReadFile(path);
                   },
                   [] { SearchMCDataHandler::DeleteInstance(); }};

/// What reading takes of one entry: seconds, and bytes that stay.
struct Cost {
    double seconds;
    double bytes;
};

Cost costOf(const Node& list, const std::function<void()>& read) {
    const double before = residentBytes();
    const double seconds = processorSecondsOf(read);
    const auto count = static_cast<double>(list.ChildCount());
    return {seconds / count, (residentBytes() - before) / count};
}

void ReadBesideTargets(benchmark::State& state, const Kind& kind) {
    Bench& bench = Bench::Get();
    Node* const targets = TargetListHandler::Instance()->GetItemsRoot();
    const QString path = bench.File(kind.file);
    if (QFile file(path); file.open(QIODevice::WriteOnly)) {
        QStringEncoder encoder(QStringConverter::Utf16LE, QStringConverter::Flag::WriteBom);
        QString text;
        for (int i = 0; i < Count; ++i)
            text += kind.line(i);
        file.write(encoder.encode(text));
    }
    bench.Ltl(Count);
    Node* const list = Tree::Instance()->MakeNode(QStringLiteral("/Lists/Beside"));
    kind.begin(list);
    for (auto _ : state) {
        std::vector<double> time, ratio;
        double bytes = 0, bytesOfTarget = 0;
        for (int run = 0; run < Runs; ++run) {
            bench.Forget();
            targets->DeleteChildren();
            TargetListHandler::Instance()->GetParser()->GetMediatorCtrl()->ForceUpdateNow();
            list->DeleteChildren();
            const Cost target = costOf(*targets, [&] { bench.List(Count); });
            const Cost entry = costOf(*list, [&] { kind.read(path); });
            if (list->ChildCount() != Count)
                state.SkipWithError("entries are lost");
            time.push_back(entry.seconds);
            ratio.push_back(entry.seconds / target.seconds);
            if (run == 0) { // later ones find memory that the first has given back
                bytes = entry.bytes;
                bytesOfTarget = target.bytes;
            }
        }
        state.SetIterationTime(medianOf(time) * Count);
        state.counters["ours_s"] = medianOf(time) * Count;
        state.counters["ratio"] = medianOf(ratio);
        state.counters["goal"] = Goal;
        state.counters["bytes_per_entry"] = bytes;
        state.counters["bytes_ratio"] = bytes / bytesOfTarget;
    }
    list->DeleteChildren();
    kind.end();
    Tree::Instance()->GetNode(QStringLiteral("/Lists"))->DeleteNode(list);
}

} // namespace

BENCHMARK_CAPTURE(ReadBesideTargets, Noi, Noi)->UseManualTime()->Iterations(1)->Unit(benchmark::kSecond);
BENCHMARK_CAPTURE(ReadBesideTargets, MemoryHF, MemoryHF)
    ->UseManualTime()
    ->Iterations(1)
    ->Unit(benchmark::kSecond);
BENCHMARK_CAPTURE(ReadBesideTargets, MemoryVUHF, MemoryVUHF)
    ->UseManualTime()
    ->Iterations(1)
    ->Unit(benchmark::kSecond);
BENCHMARK_CAPTURE(ReadBesideTargets, Results, Results)
    ->UseManualTime()
    ->Iterations(1)
    ->Unit(benchmark::kSecond);
