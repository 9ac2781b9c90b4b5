// Figures of a view over a record list of a million detections: "goal" is the number of seconds that must not
// be exceeded.

#include "host/freqlist/valuelistmediator.h"
#include "host/valuetree/detection.h"
#include "host/valuetree/tree.h"

#include <QElapsedTimer>
#include <QScrollBar>

#include <benchmark/benchmark.h>

namespace {

constexpr int Million = 1000000;
constexpr char Path[] = "/RecordViewBench/Detections";

using Adapter = DetectionConventionalAdapter;

class View final : public ValueListMediatorListView<DetectionConventional, Adapter> {
public:
    View() : ValueListMediatorListView(nullptr, 0, "RecordViewBench") {
        for (const char* field : {"Frequency", "Name", "Bandwidth", "Level", "From", "Until"})
            AddColumn(QLatin1String(field), QLatin1String(field), _compNumericWithSuffix);
        resize(1000, 800);
    }
    using VectorListViewBase::UpdateView;
};

void fillList() {
    Tree::Instance()->MakeNode(QStringLiteral("/RecordViewBench"));
    auto& records = GetOrCreateValue<ValueList<DetectionConventional>>(QString::fromLatin1(Path))->GetList();
    for (int i = static_cast<int>(records.size()); i < Million; ++i) {
        DetectionConventional& record = records.emplace_back();
        record.SetID(static_cast<unsigned>(i));
        record.SetFrequency(1e6 + static_cast<double>(i * 104729LL % Million) * 29.0);
        record.SetBandwidth(2700);
        record.SetStartTime(1.7e15 + i * 1e6);
    }
}

void measure(benchmark::State& state, const std::function<void(View&)>& prepare,
             const std::function<void(View&)>& work, double goal) {
    fillList();
    double seconds = 0;
    for (auto _ : state) {
        View view;
        prepare(view);
        QElapsedTimer timer;
        timer.start();
        work(view);
        seconds = static_cast<double>(timer.nsecsElapsed()) / 1e9;
        state.SetIterationTime(seconds);
    }
    state.counters["ours_s"] = seconds;
    state.counters["goal"] = goal;
}

void open(View& view) {
    view.Set_ValuePath(QString::fromLatin1(Path));
    view.show();
    view.grab();
}

void openAMillionDetections(benchmark::State& state) {
    measure(
        state, [](View& view) { view.show(); }, open, 0.016);
}

void scrollAMillionDetections(benchmark::State& state) {
    measure(
        state,
        [](View& view) {
            open(view);
            view.UpdateView();
        },
        [](View& view) {
            view.GetScrollBar()->setValue(Million / 2);
            view.GetListView()->grab();
        },
        0.016);
}

BENCHMARK(openAMillionDetections)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);
BENCHMARK(scrollAMillionDetections)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);

} // namespace
