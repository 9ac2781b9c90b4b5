// What undo costs. "ratio" is ours against the baseline of the same run, of processor time; "goal" is what it
// must not exceed.

#include "bench/figures.h"
#include "bench/memoryprobe.h"
#include "bench/targets.h"
#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/common/keys.h"
#include "controls/frequencystore/targets/targetlistparser.h"
#include "host/freqlist/undohistory.h"
#include "host/valuetree/value.h"

#include <QCoreApplication>
#include <QUndoStack>

#include <algorithm>

namespace {

constexpr int Rows = 100000;
constexpr int Pairs = 5;
constexpr double LongestTurn = 0.05;

/// Undo is on as long as it lives.
class WithUndo {
public:
    WithUndo() { UndoHistory::Instance().SetOn(true); }
    WithUndo(const WithUndo&) = delete;
    WithUndo& operator=(const WithUndo&) = delete;
    ~WithUndo() { UndoHistory::Instance().SetOn(false); }
    QUndoStack& Stack() { return UndoHistory::Instance().Stack(); }
};

Node& listNode() {
    return *TargetListHandler::Instance()->GetItemsRoot();
}

void update() {
    TargetListHandler::Instance()->GetParser()->GetMediatorCtrl()->ForceUpdateNow();
}

/// The list, empty, and nothing of another one in memory.
void emptyList() {
    listNode().DeleteNodes(listNode().Children());
    update();
    Bench::Get().Forget();
}

void reportMedians(benchmark::State& state, const std::vector<double>& baseline,
                   const std::vector<double>& ours, double goal) {
    std::vector<double> ratio;
    for (size_t i = 0; i < ours.size(); ++i)
        ratio.push_back(ours[i] / baseline[i]);
    report(state, medianOf(baseline), medianOf(ours), goal);
    state.counters["ratio"] = medianOf(ratio);
}

/// Deleting all rows and undoing it, against reading them.
void UndoDelete(benchmark::State& state) {
    const auto rows = static_cast<int>(state.range(0));
    for (auto _ : state) {
        std::vector<double> baseline, ours, deleting;
        for (int i = 0; i < Pairs; ++i) {
            Bench::Get().List(rows);
            deleting.push_back(processorSecondsOf(emptyList));
            baseline.push_back(processorSecondsOf([&] { Bench::Get().List(rows); }));
            WithUndo undo;
            ours.push_back(processorSecondsOf([&] {
                {
                    const OperatorAction action(QStringLiteral("Delete"));
                    emptyList();
                }
                undo.Stack().undo();
            }));
            if (listNode().ChildCount() != static_cast<size_t>(rows))
                state.SkipWithError("rows are lost");
        }
        reportMedians(state, baseline, ours, 1.5);
        state.counters["delete_alone_s"] = medianOf(deleting);
    }
}

/// The longest turn of the event loop while rows that were deleted, and have rested, are made small.
void UndoPacking(benchmark::State& state) {
    UndoHistory& history = UndoHistory::Instance();
    for (auto _ : state) {
        Bench::Get().List(10 * Rows);
        WithUndo undo;
        history.SetRest(0);
        {
            const OperatorAction action(QStringLiteral("Delete"));
            emptyList();
        }
        state.SetLabel(std::to_string(history.InMemory() >> 20) + " MB rest");
        double longest = 0;
        double all = 0;
        while (history.InMemory() > UndoHistory::MostInMemory) {
            const double turn = threadSecondsOf([] { QCoreApplication::processEvents(); });
            longest = std::max(longest, turn);
            all += turn;
        }
        history.SetRest(UndoHistory::UsualRest);
        state.counters["longest_turn_s"] = longest;
        state.counters["goal"] = LongestTurn;
        state.SetIterationTime(all);
    }
    Bench::Get().Forget();
}

/// Editing a value of all rows with undo, against the same without.
void UndoEdit(benchmark::State& state) {
    Bench::Get().List(Rows);
    const std::vector<Node*> entries = listNode().Children();
    int round = 0;
    const auto edit = [&] {
        const OperatorAction action(QStringLiteral("Edit"));
        const QString text = QStringLiteral("edited %1").arg(++round);
        for (const Node* entry : entries)
            entry->FindOwnValue(Keys::KeyComment)->SetStringValue(text);
        update();
    };
    for (auto _ : state) {
        std::vector<double> baseline, ours;
        for (int i = 0; i < Pairs; ++i) {
            baseline.push_back(processorSecondsOf(edit));
            const WithUndo undo;
            ours.push_back(processorSecondsOf(edit));
        }
        reportMedians(state, baseline, ours, 1.3);
    }
    Bench::Get().Forget();
}

/// What a hundred steps keep in memory, each of which has changed two values of a hundred thousand rows.
void UndoMemory(benchmark::State& state) {
    Bench::Get().List(Rows);
    for (auto _ : state) {
        WithUndo undo;
        const double before = residentBytes();
        state.SetIterationTime(processorSecondsOf([&] {
            for (int i = 0; i < UndoHistory::MostSteps; ++i) {
                const OperatorAction action(QStringLiteral("Edit"));
                const QString text = QStringLiteral("round %1").arg(i);
                for (const Node* entry : listNode().Children()) {
                    entry->FindOwnValue(Keys::KeyComment)->SetStringValue(text);
                    entry->FindOwnValue(Keys::KeyFrequency)->SetStringValue(QString::number(1000 + i));
                }
            }
        }));
        state.counters["steps"] = undo.Stack().count();
        state.counters["bytes"] = static_cast<double>(UndoHistory::Instance().InMemory());
        state.counters["resident"] = residentBytes() - before;
        state.counters["goal"] = static_cast<double>(UndoHistory::MostInMemory);
    }
    Bench::Get().Forget();
}

} // namespace

BENCHMARK(UndoDelete)->Arg(Rows)->Arg(3 * Rows)->UseManualTime()->Iterations(1)->Unit(benchmark::kSecond);
BENCHMARK(UndoPacking)->UseManualTime()->Iterations(1)->Unit(benchmark::kSecond);
BENCHMARK(UndoEdit)->UseManualTime()->Iterations(1)->Unit(benchmark::kSecond);
BENCHMARK(UndoMemory)->UseManualTime()->Iterations(1)->Unit(benchmark::kSecond);
