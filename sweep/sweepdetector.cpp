#include "sweep/sweepdetector.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr qint64 Second = 1'000'000; ///< in microseconds
constexpr qint64 ShortestPause = 60 * Second;
constexpr qint64 IntervalsOfPause = 10;
/// Of signals that are on; the memory for them does not grow beyond it for long.
constexpr std::size_t MostTracks = 1'000'000;
constexpr double Rounding = 1e-3; ///< Hz; of edges that are sums of bin widths

} // namespace

SweepDetector::SweepDetector(const SweepSettings& settings,
                             std::function<void(const SweepDetection&)> receive)
    : m_settings(settings), m_hold(std::llround(settings.hold * Second)), m_receive(std::move(receive)) {}

void SweepDetector::Add(const Sweep& sweep) {
    if (isBreak(sweep.time))
        Finish();
    m_time = sweep.time;
    findRuns(sweep, noiseFloor(sweep) + static_cast<float>(m_settings.threshold));
    matchRuns();
    for (const Run& run : m_runs)
        follow(run);
    endMissed(sweep);
    mergeNewTracks();
}

void SweepDetector::mergeNewTracks() {
    const auto middle = static_cast<std::ptrdiff_t>(m_tracks.size());
    m_tracks.insert(m_tracks.end(), m_newTracks.begin(), m_newTracks.end());
    m_newTracks.clear();
    std::ranges::inplace_merge(m_tracks, m_tracks.begin() + middle, {}, &Track::from);
}

void SweepDetector::Finish() {
    for (const Track& track : m_tracks)
        m_receive(track.detection);
    m_tracks.clear();
}

/// Whether what was on before the sweep of that time says nothing about it.
bool SweepDetector::isBreak(qint64 time) {
    const qint64 interval = m_time ? time - *m_time : 0;
    const bool isPause = interval > ShortestPause && interval > m_hold && m_longestInterval > 0 &&
                         interval / IntervalsOfPause > m_longestInterval;
    if (interval < 0 || isPause) {
        m_longestInterval = 0;
        return true;
    }
    m_longestInterval = std::max(m_longestInterval, interval);
    return false;
}

/// The median level; NaN, above which there is nothing, when there is none.
float SweepDetector::noiseFloor(const Sweep& sweep) {
    m_sorted.clear();
    std::ranges::copy_if(sweep.levels, std::back_inserter(m_sorted),
                         [](float level) { return std::isfinite(level); });
    if (m_sorted.empty())
        return std::numeric_limits<float>::quiet_NaN();
    const auto middle = m_sorted.begin() + static_cast<std::ptrdiff_t>(m_sorted.size() / 2);
    std::ranges::nth_element(m_sorted, middle);
    return *middle;
}

/// Finds the runs of a sweep. Hops may adjoin or overlap; bins that an earlier hop has covered do not count
/// again. A bin without a value neither begins nor ends a run.
void SweepDetector::findRuns(const Sweep& sweep, float threshold) {
    m_runs.clear();
    bool isInRun = false;
    double covered = -std::numeric_limits<double>::infinity();
    for (const SweepHop& hop : sweep.hops) {
        const double overlap = std::clamp(std::round((covered - hop.low) / hop.step), 0., double(hop.count));
        const auto begin = static_cast<std::size_t>(overlap);
        if (hop.BinStart(begin) - covered > hop.step / 2)
            isInRun = false;
        const float* const levels = sweep.levels.data() + hop.first;
        for (std::size_t bin = begin; bin < hop.count; ++bin) {
            const float level = levels[bin];
            if (!(level > threshold)) {
                isInRun = isInRun && std::isnan(level);
                continue;
            }
            if (!std::exchange(isInRun, true))
                m_runs.push_back({hop.BinStart(bin), 0, level});
            m_runs.back().to = hop.BinStart(bin + 1);
            m_runs.back().level = std::max(m_runs.back().level, level);
        }
        covered = std::max(covered, hop.End());
    }
    if (m_settings.minWidth > 0)
        std::erase_if(m_runs,
                      [this](const Run& run) { return run.to - run.from < m_settings.minWidth - Rounding; });
}

/// Finds which runs and tracks overlap. Both are in order and free of overlaps, so one walk does.
void SweepDetector::matchRuns() {
    for (Track& track : m_tracks)
        track.runs = 0;
    std::size_t first = 0;
    for (Run& run : m_runs) {
        while (first < m_tracks.size() && m_tracks[first].to <= run.from)
            ++first;
        run.firstTrack = run.endTrack = first;
        for (; run.endTrack < m_tracks.size() && m_tracks[run.endTrack].from < run.to; ++run.endTrack)
            ++m_tracks[run.endTrack].runs;
    }
}

/// Goes on with the tracks that the run overlaps, or begins one. Where a run and a track overlap each other
/// only, the track takes the run's edges, so that it follows a signal that drifts; signals that run into one
/// another or break into pieces for a while keep theirs.
void SweepDetector::follow(const Run& run) {
    if (run.firstTrack == run.endTrack)
        m_newTracks.push_back(
            {run.from, run.to, run.level, 1, {run.from, run.to, run.level, *m_time, *m_time}});
    for (std::size_t i = run.firstTrack; i < run.endTrack; ++i) {
        Track& track = m_tracks[i];
        track.detection.stop = *m_time;
        if (run.endTrack - run.firstTrack > 1)
            continue;
        track.detection.level = std::max(track.detection.level, run.level);
        if (track.runs > 1)
            continue;
        track.from = run.from;
        track.to = run.to;
        if (run.level > track.edgeLevel) {
            track.edgeLevel = run.level;
            track.detection.from = run.from;
            track.detection.to = run.to;
        }
    }
}

/// Ends the tracks that the sweep covers but has not shown for the hold time.
void SweepDetector::endMissed(const Sweep& sweep) {
    auto hop = sweep.hops.begin();
    const bool tooMany = m_tracks.size() > MostTracks;
    const auto isMissed = [&](const Track& track) {
        if (track.runs > 0)
            return false;
        const double middle = track.from + (track.to - track.from) / 2;
        while (hop != sweep.hops.end() && hop->End() <= middle)
            ++hop;
        const bool isCovered = hop != sweep.hops.end() && hop->low <= middle;
        return tooMany || (isCovered && sweep.time - track.detection.stop > m_hold);
    };
    std::erase_if(m_tracks, [&](const Track& track) {
        const bool missed = isMissed(track);
        if (missed)
            m_receive(track.detection);
        return missed;
    });
}
