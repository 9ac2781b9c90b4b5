// How long a turn of the event loop takes at most while a list of a million targets is written into the
// recovery file: processor time of the window's thread.

#include "workstation/recovery.h"

#include "bench/figures.h"
#include "bench/targets.h"
#include "workstation/listwalk.h"

#include <QApplication>

namespace {

constexpr int Rows = 1000000;
constexpr double Goal = 0.05;

void WriteRecovery(benchmark::State& state) {
    TargetListHandler& handler = Bench::Get().List(Rows);
    ListFile list;
    list.id = static_cast<int>(Bench::Get().ListId());
    list.key = QStringLiteral("targets");
    list.suffix = QStringLiteral(".xml");
    list.file = [] { return QString(); };
    list.isUnsaved = [] { return true; };
    list.entries = [&handler] { return EntriesOf(*handler.GetParser()->GetMediatorCtrl()); };
    const ListFiles lists{list};
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
BENCHMARK(WriteRecovery)->Iterations(1)->Repetitions(5)->Unit(benchmark::kSecond);

} // namespace
