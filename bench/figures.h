#pragma once

#include "host/freqlist/pixstatevector.h"

#include <QElapsedTimer>

#include <benchmark/benchmark.h>
#include <cmath>
#include <ctime>
#include <functional>

/// How long the work takes, in seconds.
inline double secondsOf(const std::function<void()>& work) {
    QElapsedTimer timer;
    timer.start();
    work();
    return static_cast<double>(timer.nsecsElapsed()) / 1e9;
}

/// Processor time of this process, all threads, in seconds: what other programs do at the same time counts
/// little in it.
inline double processorSecondsOf(const std::function<void()>& work) {
    const auto now = [] {
        timespec time{};
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
    };
    const double start = now();
    work();
    return now() - start;
}

/// Tells a time beside its baseline, both in seconds, and the ratio that must not be exceeded.
inline void report(benchmark::State& state, double baseline, double ours, double goal) {
    state.SetIterationTime(ours);
    state.counters["baseline_s"] = baseline;
    state.counters["ours_s"] = ours;
    state.counters["ratio"] = ours / baseline;
    state.counters["goal"] = goal;
}

/// A frequency bar from 100 kHz to 3 GHz, 1000 pixels wide.
struct BarMap : IHasHMap {
    double MapToPixel(double hertz) const override { return std::log(hertz / 1e5) * 97; }
    double MapToFrequency(double pixel) const override { return 1e5 * std::exp(pixel / 97); }
};
