// What the recovery file costs the window's thread: how long a turn of the event loop takes at most while a
// list of a million targets is written, and what an edit costs while changes are noted for it. Processor
// time.

#include "workstation/recovery.h"

#include "bench/figures.h"
#include "bench/targets.h"
#include "controls/frequencystore/common/keys.h"
#include "controls/frequencystore/targets/targetlistparser.h"
#include "host/freqlist/undohistory.h"
#include "workstation/listwalk.h"

#include <QApplication>

namespace {

constexpr int Rows = 1000000;
constexpr double Goal = 0.05;

/// The list as the window has it for the recovery file, with changes that are in no file.
ListFile unsavedList(TargetListHandler& handler) {
    ListFile list;
    list.id = static_cast<int>(Bench::Get().ListId());
    list.key = QStringLiteral("targets");
    list.suffix = QStringLiteral(".xml");
    list.file = [] { return QString(); };
    list.isUnsaved = [] { return true; };
    list.entries = [&handler] { return EntriesOf(*handler.GetParser()->GetMediatorCtrl()); };
    return list;
}

void WriteRecovery(benchmark::State& state) {
    TargetListHandler& handler = Bench::Get().List(Rows);
    const ListFiles lists{unsavedList(handler)};
    for (auto _ : state) {
        const QTemporaryDir folder;
        Recovery recovery(folder.path(), lists);
        recovery.SetInterval(0);
        bool isWritten = false;
        QObject::connect(&recovery, &Recovery::Written, [&] { isWritten = true; });
        handler.AddNew();
        double longest = 0;
        double all = 0;
        while (!isWritten) {
            const double turn =
                threadSecondsOf([] { QApplication::processEvents(QEventLoop::WaitForMoreEvents); });
            longest = std::max(longest, turn);
            all += turn;
        }
        state.counters["longest_turn_s"] = longest;
        state.counters["goal"] = Goal;
        state.counters["window_thread_s"] = all;
        state.counters["bytes"] = static_cast<double>(QFileInfo(recovery.GetFileName()).size());
    }
    Bench::Get().Forget();
}

/// Edits a value of each row of a hundred thousand, undo and recovery on, against undo alone.
void EditWithRecovery(benchmark::State& state) {
    TargetListHandler& handler = Bench::Get().List(Rows / 10);
    const ListFiles lists{unsavedList(handler)};
    const std::vector<Node*> entries = handler.GetItemsRoot()->Children();
    int round = 0;
    const auto edit = [&] {
        UndoHistory::Instance().SetOn(true);
        const double seconds = threadSecondsOf([&] {
            const OperatorAction action(QStringLiteral("Edit"));
            const QString text = QStringLiteral("edited %1").arg(++round);
            for (const Node* entry : entries)
                entry->FindOwnValue(Keys::KeyComment)->SetStringValue(text);
            handler.GetParser()->GetMediatorCtrl()->ForceUpdateNow();
        });
        UndoHistory::Instance().SetOn(false);
        return seconds;
    };
    const auto editWithRecovery = [&] {
        const QTemporaryDir folder;
        Recovery recovery(folder.path(), lists);
        const double seconds = edit();
        if (!recovery.WriteNow() || !QFileInfo::exists(recovery.GetFileName()))
            state.SkipWithError("the edit was not noted");
        return seconds;
    };
    for (auto _ : state)
        reportInTurn(state, "undo alone", 1.3, edit, editWithRecovery);
    Bench::Get().Forget();
}
BENCHMARK(EditWithRecovery)->UseManualTime()->Iterations(1)->Unit(benchmark::kSecond);
BENCHMARK(WriteRecovery)->Iterations(1)->Repetitions(5)->Unit(benchmark::kSecond);

} // namespace
