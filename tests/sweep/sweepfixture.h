#pragma once

#include "host/base/problems.h"
#include "sweep/sweepdetector.h"
#include "sweep/sweepreader.h"

#include <QBuffer>

#include <gtest/gtest.h>

/// Sweeps read from a text, with what was told about it.
struct SweepReading {
    std::vector<Sweep> sweeps;
    QStringList problems; ///< "line: reason"
    qint64 problemCount = 0;
    qint64 rows = 0;
};

inline SweepReading ReadSweeps(const QByteArray& text, const QTimeZone& zone = QTimeZone::utc()) {
    SweepReading reading;
    const Problems::Sink before = Problems::SetSink([&](const Problem& problem) {
        reading.problems << QStringLiteral("%1: %2").arg(problem.line).arg(problem.reason);
    });
    QBuffer buffer;
    buffer.setData(text);
    buffer.open(QIODevice::ReadOnly);
    SweepReader reader(buffer, QStringLiteral("sweep.csv"), zone);
    for (Sweep sweep; reader.Next(sweep);)
        reading.sweeps.push_back(sweep);
    EXPECT_EQ(reader.Sweeps(), static_cast<qint64>(reading.sweeps.size()));
    EXPECT_EQ(reader.BytesRead(), text.size());
    reading.problemCount = reader.Problems();
    reading.rows = reader.Rows();
    Problems::SetSink(before);
    return reading;
}

/// One hop from 100 MHz on in bins of 10 kHz, `second` seconds after the epoch.
inline Sweep SweepOf(double second, std::vector<float> levels, double low = 100e6, double step = 10e3) {
    Sweep sweep;
    sweep.time = static_cast<qint64>(second * 1e6);
    sweep.hops.push_back({low, step, 0, levels.size()});
    sweep.levels = std::move(levels);
    return sweep;
}

inline std::vector<SweepDetection> Detect(const std::vector<Sweep>& sweeps,
                                          const SweepSettings& settings = {}) {
    std::vector<SweepDetection> detections;
    SweepDetector detector(settings,
                           [&](const SweepDetection& detection) { detections.push_back(detection); });
    for (const Sweep& sweep : sweeps)
        detector.Add(sweep);
    detector.Finish();
    return detections;
}
