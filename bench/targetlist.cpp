// Figures of the local target list. Each benchmark times a baseline and the real thing in one run and reports
// their ratio; "goal" is the ratio (or the seconds, or the bytes) that must not be exceeded.

#include "bench/figures.h"
#include "bench/leantargets.h"
#include "bench/memoryprobe.h"
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

#include <algorithm>
#include <benchmark/benchmark.h>
#include <malloc.h>
#include <vector>

namespace {

constexpr int Million = 1000000;

/// Reading a million targets into tree, controller and mediators, beside the lean parse of the same file:
/// pairs that alternate, each with an empty list at its start.
void ReadLtl(benchmark::State& state) {
    const QString path = Bench::Get().Ltl(Million);
    for (auto _ : state) {
        compareReading(state, "a lean parse into structs", path, Million, 2.0, 400, [&] {
            Bench::Get().Empty();
            malloc_trim(0); // both find no free memory
            return processorSecondsOf([&] {
                const LeanParse lean(path);
                if (lean.Records().size() != Million)
                    state.SkipWithError("the lean parse lost lines");
            });
        });
    }
}

void FirstPaint(benchmark::State& state) {
    Bench& bench = Bench::Get();
    const int count = static_cast<int>(state.range(0));
    bench.List(count);
    for (auto _ : state) {
        std::unique_ptr<WkfListView> view;
        const double ours = secondsOf([&] {
            view = std::make_unique<WkfListView>(nullptr, bench.ListId());
            view->resize(1200, 800);
            view->show();
            QApplication::processEvents();
            view->viewport()->grab();
        });
        state.SetIterationTime(ours);
        state.counters["ours_s"] = ours;
        state.counters["goal"] = count >= Million ? 0.5 : 0.1;
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
        const double first = processorSecondsOf([&] { line->Refresh(); });
        list.GetParser()->GetMediatorCtrl()->At(5)->SetFrequency(first + 7e6);
        list.GetParser()->GetMediatorCtrl()->ForceUpdateNow();
        const double changed = processorSecondsOf([&] { line->Refresh(); });
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
            longest = std::max(longest, processorSecondsOf([&] {
                                   view.SetFilterText(QString::fromLatin1(text));
                                   view.viewport()->grab();
                               }));
        }
        state.SetIterationTime(longest);
        state.counters["ours_s"] = longest;
    }
}

/// Bare keys with the numbers of their rows; how much is in a key is known by its column.
template <typename Key>
void sortKeys(std::vector<std::pair<Key, int>> keys) {
    std::sort(keys.begin(), keys.end());
    benchmark::DoNotOptimize(keys.data());
}

/// Sorting the rows of a list by a column, its page shown, beside sorting bare keys and the same repaint.
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
    std::vector<std::pair<double, int>> numbers;
    std::vector<std::pair<std::u16string, int>> texts;
    const bool isNumber = column == 0 || column == 2 || column == 4;
    for (SortListViewItemIterator it(&view); it.current(); ++it) {
        const QString text = it.current()->CellText(column);
        if (isNumber)
            numbers.emplace_back(text.section(QLatin1Char(' '), 0, 0).toDouble(), numbers.size());
        else
            texts.emplace_back(text.toStdU16String(), texts.size());
    }
    for (auto _ : state) {
        reportInTurn(state, "std::sort of bare keys, and a repaint", 3, timed([&] {
                         isNumber ? sortKeys(numbers) : sortKeys(texts);
                         view.viewport()->grab();
                     }),
                     [&] {
                         view.sortByColumn(-1, Qt::AscendingOrder);
                         QApplication::processEvents();
                         return processorSecondsOf([&] {
                             view.sortByColumn(column, Qt::DescendingOrder);
                             view.viewport()->grab();
                         });
                     });
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
            small += processorSecondsOf(work) / 20;
        }
        prepare(Million);
        const double large = processorSecondsOf(work);
        report(state, small / Small, large / Million, 1.5);
        state.SetLabel("the same at 10,000, per entry");
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
    Bench::End();
    return 0;
}
