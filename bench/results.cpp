// How long the window keeps the operator waiting while a classifier adds a thousand results a second to a
// list of a hundred thousand that is open: the longest time between two turns of the event loop.

#include "bench/targets.h"
#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/results/searchmcdatahandler.h"
#include "controls/frequencystore/results/searchmcdatalistview.h"
#include "controls/frequencystore/results/searchmcdataresult.h"
#include "host/freqlist/frequencynodelistview.h"
#include "host/valuetree/tree.h"
#include "workstation/application.h"
#include "workstation/mainwindow.h"
#include "workstation/options.h"
#include "workstation/simulatedclassifier.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTimer>

#include <benchmark/benchmark.h>
#include <ctime>

namespace {

constexpr size_t Results = 100000;
constexpr double ResultsPerSecond = 1000;
constexpr int SettleMilliseconds = 3000; ///< filling, first paint and the sort that was asked for
constexpr int MeasuredMilliseconds = 6000;
constexpr double GoalSeconds = 0.05;

/// Runs the event loop for a while and tells the longest time, in milliseconds, between two beats of a timer
/// that beats each millisecond: as long an operator may have to wait for an answer. `busy` is the share of
/// the time that the processor worked, in percent.
double longestWait(int milliseconds, double& busy) {
    QEventLoop loop;
    QTimer heartbeat;
    QElapsedTimer sinceBeat;
    qint64 longest = 0;
    heartbeat.setTimerType(Qt::PreciseTimer);
    QObject::connect(&heartbeat, &QTimer::timeout, [&] {
        longest = std::max(longest, sinceBeat.nsecsElapsed());
        sinceBeat.start();
    });
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    const std::clock_t before = std::clock();
    sinceBeat.start();
    heartbeat.start(1);
    loop.exec();
    busy = 100.0 * static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC * 1e3 / milliseconds;
    return static_cast<double>(longest) / 1e6;
}

/// The argument is the column that the list is sorted by; -1 for none.
void resultsKeepComing(benchmark::State& state) {
    const int column = static_cast<int>(state.range(0));
    for (auto _ : state) {
        Bench::End();
        Tree::Instance()->GetRoot()->DeleteChildren(); // what the run before has left
        const QTemporaryDir folder;
        Options options;
        options.dataDirectory = folder.filePath(QStringLiteral("data"));
        options.configDirectory = folder.filePath(QStringLiteral("config"));
        Workstation workstation(options);
        SimulatedClassifier& classifier = workstation.GetClassifier();
        classifier.SetRate(Results);
        for (const qint64 second : {1, 2})
            classifier.Step(second * 1000000);
        auto* view = workstation.GetWindow().findChild<SearchMCDataListView*>();
        QTabWidget* tabs = workstation.GetWindow().GetTabs();
        tabs->setCurrentWidget(view->parentWidget());
        view->sortByColumn(column, Qt::AscendingOrder);
        workstation.GetWindow().show();
        SearchMCDataHandler::Instance()->GetMediatorCtrl()->ForceUpdateNow();
        classifier.SetRate(ResultsPerSecond);
        classifier.SetRunning(true);
        double busy = 0;
        longestWait(SettleMilliseconds, busy);
        const int before = view->RowCount();
        const double longest = longestWait(MeasuredMilliseconds, busy);
        if (view->RowCount() == before)
            state.SkipWithError("no results came");
        state.SetIterationTime(longest / 1e3);
        state.counters["ours_s"] = longest / 1e3;
        state.counters["goal"] = GoalSeconds;
        state.counters["busy_percent"] = busy;
        state.counters["rows"] = view->RowCount();
        state.counters["added"] = view->RowCount() - before;
    }
}
BENCHMARK(resultsKeepComing)
    ->Name("results/thousand_a_second")
    ->ArgName("column")
    ->DenseRange(-1, 4)
    ->Iterations(1)
    ->UseManualTime();

} // namespace
