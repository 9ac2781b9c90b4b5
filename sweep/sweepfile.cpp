#include "sweep/sweepfile.h"

#include "host/base/longwork.h"
#include "host/base/problems.h"
#include "host/report/filestamps.h"
#include "sweep/sweepreader.h"

#include <QFile>

SweepSummary ReadSweepFile(const QString& fileName, const QTimeZone& zone,
                           const std::function<void(const Sweep&)>& receive) {
    SweepSummary summary;
    FileStamps::Reading reading(fileName);
    QFile file(fileName);
    try {
        REPORTGENERATOR::OpenForReading(file);
    } catch (const RGException& exception) {
        Problems::Report("sweepfile", Problem::FromText(exception.GetErrorText()));
        summary.problems = 1;
        return summary;
    }
    const qint64 size = file.size();
    SweepReader reader(file, fileName, zone);
    Sweep sweep;
    while (reader.Next(sweep)) {
        receive(sweep);
        LongWork::Step(reader.BytesRead(), size);
    }
    summary.sweeps = reader.Sweeps();
    summary.rows = reader.Rows();
    summary.problems = reader.Problems() + (reading.Check() ? 0 : 1);
    return summary;
}

SweepSummary DetectInSweepFile(const QString& fileName, const QTimeZone& zone, const SweepSettings& settings,
                               const std::function<void(const SweepDetection&)>& receive) {
    SweepDetector detector(settings, receive);
    const SweepSummary summary =
        ReadSweepFile(fileName, zone, [&](const Sweep& sweep) { detector.Add(sweep); });
    detector.Finish();
    return summary;
}
