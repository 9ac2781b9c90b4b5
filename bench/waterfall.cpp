#include "workstation/waterfall.h"

#include "bench/figures.h"

#include <random>

namespace {

/// Ten million cells: an hour and a half of two sweeps a second.
constexpr size_t Bins = 1000;
constexpr qint64 Sweeps = 10'000;

Waterfall makeWaterfall() {
    std::mt19937 random(1);
    Waterfall waterfall;
    Sweep sweep;
    sweep.hops.push_back({24e6, 1e6, 0, Bins});
    sweep.levels.resize(Bins);
    for (qint64 i = 0; i < Sweeps; ++i) {
        sweep.time = i * 500'000;
        for (float& level : sweep.levels)
            level = -100.0F + static_cast<float>(random() % 600) / 10;
        waterfall.Add(sweep);
    }
    waterfall.Finish();
    return waterfall;
}

/// All of it in a picture of 1200 by 400 pixels, beside filling such a picture with one colour.
void drawWaterfall(benchmark::State& state) {
    const Waterfall waterfall = makeWaterfall();
    FrequencyAxis frequencies;
    frequencies.SetWidth(1200);
    frequencies.SetRange(waterfall.From(), waterfall.To());
    const TimeAxis times{waterfall.End(), waterfall.End() - waterfall.Begin(), 400};
    QImage picture(1200, 400, QImage::Format_RGB32);
    picture.fill(Qt::black); // its memory is there
    for (auto _ : state) {
        const double fill = processorSecondsOf([&] { picture.fill(Qt::white); });
        const double draw = processorSecondsOf([&] { waterfall.Draw(picture, frequencies, times); });
        report(state, fill, draw, 0.1 / fill); // a tenth of a second
        state.SetLabel("filling the picture with one colour");
    }
}
BENCHMARK(drawWaterfall)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace
