// Figures of the local target list. Each benchmark times a baseline and the real thing in one run and reports
// their ratio; "goal" is the ratio (or the seconds, or the bytes) that must not be exceeded.

#include "bench/figures.h"
#include "bench/targets.h"
#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/targets/targetlistparser.h"
#include "controls/frequencystore/targets/wkflistview.h"
#include "controls/frequencystore/targets/wkfnodemediator.h"
#include "host/base/numbers.h"
#include "host/base/tokenizer.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencynodemediator.h"
#include "host/valuetree/tree.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QHeaderView>
#include <QXmlStreamReader>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <charconv>
#include <malloc.h>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace {

constexpr int Million = 1000000;

/// The leanest program for the same bytes: fields by pointer, numbers by `std::from_chars`, words interned,
/// comments as strings, one record after the other in a vector.
class LeanParse {
public:
    struct Record {
        double frequency, bandwidth;
        std::u16string comment;
        int demodulation, threatClass, priority;
    };

    explicit LeanParse(const QString& path) {
        QFile file(path);
        file.open(QIODevice::ReadOnly);
        std::vector<char16_t> text(static_cast<size_t>(file.size()) / 2);
        file.read(reinterpret_cast<char*>(text.data()), file.size());
        const char16_t* const end = text.data() + text.size();
        for (const char16_t* line = text.data() + 1; line < end;) { // behind the byte-order mark
            const char16_t* const lineEnd = std::find(line, end, u'\n');
            take(line, lineEnd);
            line = lineEnd + 1;
        }
    }
    const std::vector<Record>& Records() const { return m_records; }

private:
    using Text = std::u16string_view;
    static constexpr int Fields = 7;

    void take(const char16_t* at, const char16_t* end) {
        Text fields[Fields];
        int count = 0;
        while (count < Fields && at < end) {
            const char16_t* const tab = std::find(at, end, u'\t');
            fields[count++] = Text(at, static_cast<size_t>(tab - at));
            at = tab + 1;
        }
        if (count == Fields)
            m_records.push_back({number(fields[0]), number(fields[1]), std::u16string(fields[2]),
                                 word(fields[3]), word(fields[5]), static_cast<int>(number(fields[6]))});
    }
    static double number(Text text) {
        char ascii[64];
        char* end = ascii;
        for (const char16_t c : text.substr(0, sizeof ascii))
            *end++ = static_cast<char>(c);
        double value = 0;
        std::from_chars(ascii, end, value);
        return value;
    }
    int word(Text text) {
        return m_words.try_emplace(std::u16string(text), static_cast<int>(m_words.size())).first->second;
    }

    std::vector<Record> m_records;
    std::unordered_map<std::u16string, int> m_words;
};

double medianOf(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

double residentBytes() {
    malloc_trim(0);
    QFile file(QStringLiteral("/proc/self/statm"));
    file.open(QIODevice::ReadOnly);
    return file.readAll().split(' ')[1].toDouble() * 4096;
}

/// The most memory that the process has held since `forgetPeak`, in bytes.
double peakBytes() {
    QFile file(QStringLiteral("/proc/self/status"));
    file.open(QIODevice::ReadOnly);
    for (const QByteArray& line : file.readAll().split('\n')) {
        if (line.startsWith("VmHWM:"))
            return line.mid(6).simplified().split(' ')[0].toDouble() * 1024;
    }
    return 0;
}

void forgetPeak() {
    QFile file(QStringLiteral("/proc/self/clear_refs"));
    if (file.open(QIODevice::WriteOnly))
        file.write("5");
}

void emptyList() {
    Bench::Get().Forget();
    TargetListHandler::Instance()->GetItemsRoot()->DeleteChildren();
    TargetListHandler::Instance()->GetParser()->GetMediatorCtrl()->ForceUpdateNow();
}

/// Reading a million targets into tree, controller and mediators, beside the lean parse of the same file:
/// pairs that alternate, each with an empty list at its start.
void ReadLtl(benchmark::State& state) {
    constexpr int Pairs = 5;
    Bench& bench = Bench::Get();
    const QString path = bench.Ltl(Million);
    for (auto _ : state) {
        std::vector<double> baseline, ours, ratio;
        double bytes = 0, peak = 0;
        for (int i = 0; i < Pairs; ++i) {
            emptyList();
            malloc_trim(0);
            baseline.push_back(processorSecondsOf([&] {
                const LeanParse lean(path);
                if (lean.Records().size() != Million)
                    state.SkipWithError("the lean parse lost lines");
            }));
            const double before = residentBytes(); // gives free memory back: both find none
            forgetPeak();
            ours.push_back(processorSecondsOf([&] { bench.List(Million); }));
            ratio.push_back(ours.back() / baseline.back());
            if (i == 0) { // later ones find memory that the first has given back
                peak = (peakBytes() - before) / Million;
                bytes = (residentBytes() - before) / Million;
            }
        }
        report(state, medianOf(baseline), medianOf(ours), 2.0);
        state.counters["ratio"] = medianOf(ratio);
        state.counters["bytes_per_entry"] = bytes;
        state.counters["bytes_goal"] = 400;
        state.counters["bytes_while_reading"] = peak;
    }
}

void formatAll(QString& buffer) {
    auto& list = *TargetListHandler::Instance();
    list.ResetDataCollect();
    double frequency = 0, bandwidth = 0;
    int priority = 0;
    QString comment, threatClass, demodulation;
    while (list.GetNextData(frequency, bandwidth, priority, comment, threatClass, demodulation)) {
        buffer += QString::number(frequency, 'f', 6) + QLatin1Char('\t') +
                  QString::number(bandwidth, 'f', 6) + QLatin1Char('\t') + comment + QLatin1Char('\t') +
                  demodulation + QStringLiteral("\tp\t") + threatClass + QLatin1Char('\t') +
                  QString::number(priority) + QStringLiteral("\t\n");
    }
}

void writeAs(benchmark::State& state, const char* name, double goal) {
    Bench& bench = Bench::Get();
    TargetListHandler& list = bench.List(Million);
    for (auto _ : state) {
        const double baseline = secondsOf([] {
            QString buffer;
            formatAll(buffer);
            benchmark::DoNotOptimize(buffer);
        });
        const double ours = secondsOf([&] { list.SaveFile(bench.File(name)); });
        report(state, baseline, ours, goal);
    }
}

void WriteLtl(benchmark::State& state) {
    writeAs(state, "out.ltl", 2.0);
}

void WriteXml(benchmark::State& state) {
    writeAs(state, "out.xml", 3.0);
}

void ReadXml(benchmark::State& state) {
    Bench& bench = Bench::Get();
    const QString path = bench.File("out.xml");
    bench.List(Million).SaveFile(path);
    for (auto _ : state) {
        const double baseline = secondsOf([&] {
            QFile file(path);
            file.open(QIODevice::ReadOnly);
            QXmlStreamReader reader(&file);
            while (!reader.atEnd())
                reader.readNext();
        });
        bench.Forget();
        const double ours = secondsOf([&] { TargetListHandler::Instance()->ReadFile(path); });
        report(state, baseline, ours, 1.5);
    }
}

void FirstPaint(benchmark::State& state) {
    Bench& bench = Bench::Get();
    const int count = static_cast<int>(state.range(0));
    bench.List(count);
    for (auto _ : state) {
        std::unique_ptr<WkfListView> view;
        const double before = residentBytes();
        const double ours = secondsOf([&] {
            view = std::make_unique<WkfListView>(nullptr, bench.ListId());
            view->resize(1200, 800);
            view->show();
            QApplication::processEvents();
            view->viewport()->grab();
        });
        state.SetIterationTime(ours);
        state.counters["ours_s"] = ours;
        state.counters["goal"] = count >= Million ? 0.25 : 0.05;
        state.counters["bytes_per_row"] = (residentBytes() - before) / count;
        state.counters["rows_filled"] = static_cast<double>(view->FillCount());
    }
}

/// The line of the frequency bar: all entries, and after one of them has changed.
void BarLine(benchmark::State& state) {
    BarMap map;
    Bench& bench = Bench::Get();
    TargetListHandler& list = bench.List(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        const std::unique_ptr<PixStateVector> line(
            FreqStore::Instance().GetDefinition(static_cast<int>(bench.ListId()))->CreatePixStateVector());
        line->SetHMapping(&map, 1000);
        const double first = secondsOf([&] { line->Refresh(); });
        list.GetParser()->GetMediatorCtrl()->At(5)->SetFrequency(first + 7e6);
        list.GetParser()->GetMediatorCtrl()->ForceUpdateNow();
        const double changed = secondsOf([&] { line->Refresh(); });
        state.SetIterationTime(changed);
        state.counters["first_s"] = first;
        state.counters["ours_s"] = changed;
    }
}

/// A text typed into the filter letter by letter, and taken away again: the longest wait of all.
void FilterByLetters(benchmark::State& state) {
    Bench& bench = Bench::Get();
    const int count = static_cast<int>(state.range(0));
    bench.List(count);
    WkfListView view(nullptr, bench.ListId());
    view.resize(1200, 800);
    view.show();
    for (auto _ : state) {
        double longest = 0;
        for (const char* text : {"9", "99", "990", ""}) {
            longest = std::max(longest, secondsOf([&] {
                                   view.SetFilterText(QString::fromLatin1(text));
                                   view.viewport()->grab();
                               }));
        }
        state.SetIterationTime(longest);
        state.counters["ours_s"] = longest;
    }
}

/// Beside `std::sort` of the keys of the same texts, which are made before. Both paint the list once.
void Sort(benchmark::State& state) {
    constexpr int Rows = 100000;
    Bench& bench = Bench::Get();
    bench.List(Rows);
    int number = 0;
    TargetListHandler::Instance()->GetParser()->GetMediatorCtrl()->ForEach(
        [&](FrequencyNodeMediator& mediator) {
            auto& target = static_cast<WkfNodeMediator&>(mediator);
            target.SetSignalClass(QStringLiteral("class %1").arg(++number * 31 % 97));
            target.SetTransmissionSystem(QStringLiteral("system %1").arg(number * 17 % 89));
        });
    const int column = static_cast<int>(state.range(0));
    WkfListView view(nullptr, bench.ListId());
    view.resize(1200, 800);
    view.show();
    constexpr CompareFunction functions[] = {
        _compNumericWithSuffix, _compStandardString, _compNumericWithSuffix, _compStandardString,
        _compStandardNumeric,   _compStandardString, _compStandardString,    _compStandardString};
    std::vector<SortKey> keys;
    for (int row = 0; row < Rows; ++row)
        keys.push_back(SortKey::Of(view.TextAt(row, column), functions[column]));
    for (auto _ : state) {
        std::vector<SortKey> sorted = keys;
        const double baseline = secondsOf([&] {
            std::sort(sorted.begin(), sorted.end(),
                      [](const SortKey& a, const SortKey& b) { return Compare(b, a) < 0; });
            view.viewport()->grab();
        });
        const double ours = secondsOf([&] {
            view.sortByColumn(column, Qt::DescendingOrder);
            view.viewport()->grab();
        });
        report(state, baseline, ours, 3);
        view.sortByColumn(-1, Qt::AscendingOrder);
    }
}

/// Time per entry at 1M against that at 10k, for work that must be linear.
void growth(benchmark::State& state, const std::function<void(int)>& prepare,
            const std::function<void()>& work) {
    for (auto _ : state) {
        constexpr int Small = 10000;
        double small = 0;
        for (int i = 0; i < 20; ++i) {
            prepare(Small);
            small += secondsOf(work) / 20;
        }
        prepare(Million);
        const double large = secondsOf(work);
        report(state, small / Small, large / Million, 1.5);
    }
}

void GrowthReload(benchmark::State& state) {
    Bench& bench = Bench::Get();
    WkfListView view(nullptr, bench.ListId());
    view.resize(1200, 800);
    view.show();
    view.sortByColumn(0, Qt::AscendingOrder);
    int count = 0;
    growth(
        state,
        [&](int n) {
            count = n;
            bench.Ltl(n);
            bench.Forget();
        },
        [&] {
            bench.List(count);
            QApplication::processEvents();
        });
}

void GrowthDeleteAll(benchmark::State& state) {
    Bench& bench = Bench::Get();
    WkfListView view(nullptr, bench.ListId());
    growth(
        state,
        [&](int n) {
            bench.Forget();
            bench.List(n);
        },
        [&] {
            TargetListHandler::Instance()->GetItemsRoot()->DeleteChildren();
            TargetListHandler::Instance()->GetParser()->GetMediatorCtrl()->ForceUpdateNow();
        });
    bench.Forget();
}

void GrowthDeleteSelection(benchmark::State& state) {
    Bench& bench = Bench::Get();
    WkfListView view(nullptr, bench.ListId());
    std::vector<Node*> half;
    growth(
        state,
        [&](int n) {
            bench.Forget();
            bench.List(n);
            half.clear();
            const std::vector<Node*> all = TargetListHandler::Instance()->GetItemsRoot()->Children();
            for (size_t i = 0; i < all.size(); i += 2)
                half.push_back(all[i]);
        },
        [&] {
            TargetListHandler::Instance()->GetItemsRoot()->DeleteNodes(half);
            TargetListHandler::Instance()->GetParser()->GetMediatorCtrl()->ForceUpdateNow();
        });
    bench.Forget();
}

} // namespace

BENCHMARK(ReadLtl)->UseManualTime()->Iterations(1)->Unit(benchmark::kSecond);
BENCHMARK(WriteLtl)->UseManualTime()->Iterations(1)->Unit(benchmark::kSecond);
BENCHMARK(WriteXml)->UseManualTime()->Iterations(1)->Unit(benchmark::kSecond);
BENCHMARK(ReadXml)->UseManualTime()->Iterations(1)->Unit(benchmark::kSecond);
BENCHMARK(FirstPaint)->Arg(100000)->Arg(Million)->UseManualTime()->Iterations(1)->Unit(benchmark::kSecond);
BENCHMARK(BarLine)->Arg(100000)->Arg(Million)->UseManualTime()->Iterations(1)->Unit(benchmark::kSecond);
BENCHMARK(FilterByLetters)
    ->Arg(100000)
    ->Arg(Million)
    ->UseManualTime()
    ->Iterations(1)
    ->Unit(benchmark::kSecond);
BENCHMARK(Sort)->DenseRange(0, 7)->UseManualTime()->Iterations(1)->Unit(benchmark::kSecond);
BENCHMARK(GrowthReload)->UseManualTime()->Iterations(1)->Unit(benchmark::kSecond);
BENCHMARK(GrowthDeleteAll)->UseManualTime()->Iterations(1)->Unit(benchmark::kSecond);
BENCHMARK(GrowthDeleteSelection)->UseManualTime()->Iterations(1)->Unit(benchmark::kSecond);

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
