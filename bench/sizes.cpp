// Targets at different sizes: processor time of reading and writing each format, and where the memory is. The
// table in docs/performance.md is made of it (bench/compare --sizes).

#include "bench/figures.h"
#include "bench/memoryprobe.h"
#include "bench/targets.h"
#include "controls/frequencystore/targets/wkflistentry.h"
#include "controls/frequencystore/targets/wkfnodemediator.h"

namespace {

constexpr int Fewest = 10'000;
constexpr int Million = 1'000'000;
constexpr int Most = 3 * Million;
constexpr double GrowthGoal = 1.2; ///< of the time of an entry, from the fewest to the most
constexpr const char* Formats[] = {"ltl", "csv", "xml", "json"};

/// The blocks of that many entries without texts, then the same with the texts that the file has: bytes that
/// each takes of an entry.
void SizesOfParts(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    Tree::Instance()->MakeNode(QStringLiteral("/SizesBench"));
    Node* const list = Tree::Instance()->MakeNode(QStringLiteral("/SizesBench/Entries"));
    const Names::Id name = Names::Intern(QStringLiteral("Target"));
    std::vector<Node*> nodes(static_cast<size_t>(count)); // all its pages are there
    const QString words[] = {QStringLiteral("USB"), QStringLiteral("AM"), QStringLiteral("CW")};
    for (auto _ : state) {
        const double before = residentBytes();
        for (Node*& node : nodes) {
            node = Node::NewEntry(list, name, WkfTarget::Shape());
            list->AddItemUnique(node);
            if (!WkfTarget(*node).Fill({}))
                state.SkipWithError("an entry is not made from its shape");
        }
        const double blocks = residentBytes();
        for (int i = 0; i < count; ++i) {
            const Node& target = *nodes[static_cast<size_t>(i)];
            const auto set = [&target](Names::Id key, const QString& text) {
                target.FindOwn<Value<QString>>(key)->SetValue(text);
            };
            set(Keys::KeyComment, QStringLiteral("Station %1").arg(i * 7919LL % count));
            set(Keys::KeyDemodulation, words[i % 3]);
            set(Keys::ThreatClass, words[(i + 1) % 3]);
        }
        state.counters["bytes_blocks"] = (blocks - before) / count;
        state.counters["bytes_texts"] = (residentBytes() - blocks) / count;
        state.counters["bytes_mediators"] = sizeof(WkfNodeMediator);
    }
    Tree::Instance()->GetNode(QStringLiteral("/SizesBench"))->DeleteChildren();
}

/// What the list takes, and the most while it is read from lines, in a process that has held no list yet.
void SizesOfList(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    Bench& bench = Bench::Get();
    bench.Ltl(count);
    for (auto _ : state) {
        const double before = residentBytes();
        forgetPeak();
        bench.List(count);
        state.counters["bytes_reading_first"] = (peakBytes() - before) / count;
        state.counters["bytes_list"] = (residentBytes() - before) / count;
    }
    bench.Empty();
}

/// Reads the list from a file of each format and writes it: the medians of some runs. A process that has held
/// no list yet tells the memory best: bench/compare starts one for each size.
void reportFormats(benchmark::State& state, int count) {
    Bench& bench = Bench::Get();
    CliList& list = bench.CommandLine();
    const int runs = count > Million ? 1 : 3;
    for (const char* const format : Formats) {
        const QString path = bench.File("sizes.") + QString::fromLatin1(format);
        std::vector<double> reading, writing;
        double peak = 0;
        for (int i = 0; i < runs; ++i) {
            bench.List(count);
            QFile::remove(path);
            writing.push_back(processorSecondsOf([&] { list.Write(path); }));
            bench.Empty();
            const double before = residentBytes();
            forgetPeak();
            reading.push_back(processorSecondsOf([&] { list.Read(path); }));
            peak = std::max(peak, peakBytes() - before);
            bench.Empty();
        }
        QFile::remove(path);
        const std::string name = format;
        state.counters["read_" + name] = medianOf(reading) / count;
        state.counters["write_" + name] = medianOf(writing) / count;
        state.counters["bytes_reading_" + name] = peak / count;
    }
}

void Sizes(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    Bench& bench = Bench::Get();
    bench.Ltl(count);
    for (auto _ : state) {
        state.counters["goal_growth"] = GrowthGoal;
        reportFormats(state, count);
    }
    bench.Empty();
}

void ofEachSize(benchmark::internal::Benchmark* bench) {
    for (const int count : {Fewest, 100'000, Million, Most})
        bench->Arg(count);
    bench->Iterations(1)->Unit(benchmark::kSecond);
}

} // namespace

BENCHMARK(Sizes)->Apply(ofEachSize);
BENCHMARK(SizesOfList)->Apply(ofEachSize);
BENCHMARK(SizesOfParts)->Apply(ofEachSize);
