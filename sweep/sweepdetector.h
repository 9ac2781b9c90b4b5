#pragma once

#include "sweep/sweep.h"

#include <functional>
#include <optional>
#include <vector>

/// What counts as a detection.
struct SweepSettings {
    double threshold = 10; ///< dB above the noise floor, which is the median of a sweep's levels
    double minWidth = 0;   ///< Hz; narrower signals are passed over
    double hold = 5;       ///< s; a signal that was away no longer than this is the same detection
};

/// A signal from where it was first seen to where it was last seen.
struct SweepDetection {
    double from = 0;  ///< Hz; edges in the sweep in which it was strongest
    double to = 0;    ///< Hz
    float level = 0;  ///< dB, the highest
    qint64 start = 0; ///< microseconds since 1970-01-01 UTC; of the first and of the last sweep that shows it
    qint64 stop = 0;

    double Frequency() const { return from + (to - from) / 2; }
    double Bandwidth() const { return to - from; }
};

/// Turns runs of neighbouring bins above a threshold into detections, sweep by sweep. A run that overlaps a
/// signal of the sweep before goes on with it. A detection ends when a sweep that covers it does not show
/// it any more, and has not for longer than the hold time; at a pause of the recording; and where time goes
/// back. A pause is longer than a minute, than the hold time and than ten intervals between sweeps before.
class SweepDetector {
public:
    /// `receive` gets each detection when it ends.
    SweepDetector(const SweepSettings& settings, std::function<void(const SweepDetection&)> receive);

    void Add(const Sweep& sweep);
    /// Ends all detections.
    void Finish();

private:
    /// Neighbouring bins above the threshold; Hz and dB.
    struct Run {
        double from;
        double to;
        float level;
        std::size_t firstTrack = 0; ///< of those that it overlaps
        std::size_t endTrack = 0;
    };
    /// A detection that has not ended, and where it was seen last (Hz).
    struct Track {
        double from;
        double to;
        float edgeLevel; ///< dB; of the sweep from which the detection has its edges
        int runs;        ///< of the current sweep that overlap it
        SweepDetection detection;
    };

    bool isBreak(qint64 time);
    float noiseFloor(const Sweep& sweep);
    void findRuns(const Sweep& sweep, float threshold);
    void matchRuns();
    void follow(const Run& run);
    void endMissed(const Sweep& sweep);
    void mergeNewTracks();

    SweepSettings m_settings;
    qint64 m_hold; ///< microseconds
    std::function<void(const SweepDetection&)> m_receive;
    std::vector<Track> m_tracks; ///< by frequency; they do not overlap
    std::vector<Track> m_newTracks;
    std::vector<Run> m_runs; ///< by frequency; they do not overlap
    std::vector<float> m_sorted;
    std::optional<qint64> m_time; ///< of the last sweep
    qint64 m_longestInterval = 0; ///< between sweeps, since the last pause; microseconds
};
