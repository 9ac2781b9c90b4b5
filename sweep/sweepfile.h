#pragma once

#include "sweep/sweepdetector.h"

#include <QString>

class QTimeZone;

/// What a sweep file held.
struct SweepSummary {
    qint64 sweeps = 0;
    qint64 rows = 0;     ///< that were good
    qint64 problems = 0; ///< told to the problem sink
};

/// Reads a file of local times in `zone`, and hands each sweep to `receive`. A file that cannot be opened is
/// a problem, too. Each sweep is a step of LongWork.
SweepSummary ReadSweepFile(const QString& fileName, const QTimeZone& zone,
                           const std::function<void(const Sweep&)>& receive);

/// Hands each detection of a file to `receive`, in the order in which they end.
SweepSummary DetectInSweepFile(const QString& fileName, const QTimeZone& zone, const SweepSettings& settings,
                               const std::function<void(const SweepDetection&)>& receive);
