#pragma once

#include "host/freqlist/pixstatevector.h"

#include <QElapsedTimer>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cmath>
#include <ctime>
#include <functional>
#include <vector>

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

/// The same of the calling thread alone.
inline double threadSecondsOf(const std::function<void()>& work) {
    const auto now = [] {
        timespec time{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
    };
    const double start = now();
    work();
    return now() - start;
}

inline double medianOf(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// Tells a time beside its baseline, both in seconds, and the ratio that must not be exceeded.
inline void report(benchmark::State& state, double baseline, double ours, double goal) {
    state.SetIterationTime(ours);
    state.counters["baseline_s"] = baseline;
    state.counters["ours_s"] = ours;
    state.counters["ratio"] = ours / baseline;
    state.counters["goal"] = goal;
}

/// Does its work and tells the processor seconds that count.
using Timed = std::function<double()>;
inline Timed timed(std::function<void()> work) {
    return [work = std::move(work)] { return processorSecondsOf(work); };
}

/// Runs ours and the fastest simple program that does the same in turn, and tells the medians of their times,
/// and of the ratios of the pairs: what disturbs the machine for a while disturbs both. `with` is what the
/// baseline is.
inline void reportInTurn(benchmark::State& state, const char* with, double goal, const Timed& baseline,
                         const Timed& ours) {
    constexpr int Pairs = 5;
    std::vector<double> baselines, times, ratios;
    for (int i = 0; i < Pairs; ++i) {
        baselines.push_back(baseline());
        times.push_back(ours());
        ratios.push_back(times.back() / baselines.back());
    }
    report(state, medianOf(baselines), medianOf(times), goal);
    state.counters["ratio"] = medianOf(ratios);
    state.SetLabel(with);
}

/// A frequency bar from 100 kHz to 3 GHz, 1000 pixels wide.
struct BarMap : IHasHMap {
    double MapToPixel(double hertz) const override { return std::log(hertz / 1e5) * 97; }
    double MapToFrequency(double pixel) const override { return 1e5 * std::exp(pixel / 97); }
};
