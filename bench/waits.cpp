// How long an operator waits at most in a list of 100000 targets: processor time of the longest turn of the
// event loop, painting included, for what operators do.

#include "bench/figures.h"
#include "bench/targets.h"
#include "bench/turnclock.h"
#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/targets/targetlistparser.h"
#include "controls/frequencystore/targets/wkflistview.h"
#include "host/freqlist/buttonbar.h"
#include "host/freqlist/frequencynodemediator.h"

#include <QApplication>
#include <QScrollBar>

namespace {

constexpr int Rows = 100000;
constexpr int Few = 1000;
constexpr double Goal = 0.05;

HalvoNodeMediatorCtrl& controller() {
    return *TargetListHandler::Instance()->GetParser()->GetMediatorCtrl();
}

/// Processor time of the longest turn that the work, and what it leaves to do, takes.
double longestTurn(WkfListView& view, const std::function<void()>& work) {
    double longest = processorSecondsOf([&] {
        work();
        QApplication::processEvents();
        view.viewport()->grab();
    });
    while (view.IsFiltering())
        longest = std::max(longest, processorSecondsOf([] { QApplication::processEvents(); }));
    return longest;
}

void selectFirst(WkfListView& view, int rows) {
    view.SelectPlace(0);
    view.GoToRow(rows - 1, Qt::ShiftModifier);
}

void deleteFirst(int rows) {
    const std::vector<Node*> all = TargetListHandler::Instance()->GetItemsRoot()->Children();
    TargetListHandler::Instance()->GetItemsRoot()->DeleteNodes({all.begin(), all.begin() + rows});
    controller().ForceUpdateNow();
}

/// `sortColumn` is that of the list while all but sorting itself is done; -1 for none.
void Waits(benchmark::State& state) {
    const int sortColumn = static_cast<int>(state.range(0));
    Bench::Get().Forget();
    Bench::Get().List(Rows);
    std::unique_ptr<WkfListView> view;
    FreqStoreListViewButtonBar bar; // without one nothing can be pasted
    for (auto _ : state) {
        const auto take = [&](const char* name, const std::function<void()>& work) {
            const double longest = longestTurn(*view, work);
            state.counters[name] = longest;
        };
        state.counters["first_paint"] = processorSecondsOf([&] {
            view = std::make_unique<WkfListView>(nullptr, Bench::Get().ListId());
            view->InitFreqStoreWidget(&bar);
            view->resize(1200, 800);
            view->show();
            QApplication::processEvents();
            view->viewport()->grab();
        });
        take("sort_text", [&] { view->sortByColumn(1, Qt::AscendingOrder); });
        take("sort_frequency", [&] { view->sortByColumn(0, Qt::AscendingOrder); });
        take("sort_reverse", [&] { view->sortByColumn(0, Qt::DescendingOrder); });
        take("sort_none", [&] { view->sortByColumn(-1, Qt::AscendingOrder); });
        view->sortByColumn(sortColumn, Qt::AscendingOrder);
        const auto filter = [&](const char* name, const char* text) {
            take(name, [&] { view->SetFilterText(QString::fromLatin1(text)); });
        };
        filter("filter_s", "s"); // leaves all
        filter("filter_st", "st");
        filter("filter_clear", "");
        filter("filter_9", "9");
        filter("filter_99", "99");
        filter("filter_990", "990");
        filter("filter_few_clear", "");
        take("filter_9_selectall", [&] {
            view->SetFilterText(QStringLiteral("9"));
            view->selectAll();
        });
        filter("filter_clear_selected", "");
        take("select_all", [&] { view->selectAll(); });
        take("scroll_far", [&] { view->verticalScrollBar()->setValue(Rows / 2); });
        take("end_key", [&] { view->GoToRow(Rows - 1, Qt::ShiftModifier); });
        view->clearSelection();
        take("delete", [] { deleteFirst(Few); });
        selectFirst(*view, Few);
        const int before = view->RowCount();
        take("paste", [&] {
            view->Duplicate();
            controller().ForceUpdateNow();
        });
        if (view->RowCount() != before + Few)
            state.SkipWithError("nothing was pasted");
        state.counters["goal"] = Goal;
    }
}

/// The longest turn while a million targets are read, into an empty list and in place of others.
void WaitsWhileReading(benchmark::State& state) {
    constexpr int Million = 1000000;
    const QString path = Bench::Get().Ltl(Million);
    TurnClock clock;
    for (auto _ : state) {
        Bench::Get().Empty();
        const auto read = [&] {
            if (!TargetListHandler::Instance()->ReadFile(path))
                state.SkipWithError("nothing was read");
        };
        state.counters["read"] = clock.LongestOf(read);
        state.counters["read_again"] = clock.LongestOf(read);
        state.counters["goal"] = Goal;
    }
}

} // namespace

BENCHMARK(WaitsWhileReading)->Iterations(1)->Unit(benchmark::kSecond);
BENCHMARK(Waits)->Arg(-1)->Arg(1)->Iterations(1)->Unit(benchmark::kSecond);
