#include "sweep/sweepfile.h"

#include "host/base/problems.h"
#include "host/report/filestamps.h"
#include "sweep/sweepreader.h"

#include <QFile>

SweepSummary ReadSweepFile(const QString& fileName, const QTimeZone& zone,
                           const std::function<void(const Sweep&)>& receive, const SweepProgress& progress) {
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
    while (summary.isWhole && reader.Next(sweep)) {
        receive(sweep);
        summary.isWhole = progress(reader.BytesRead(), size);
    }
    summary.sweeps = reader.Sweeps();
    summary.rows = reader.Rows();
    summary.problems = reader.Problems() + (reading.Check() ? 0 : 1);
    return summary;
}

SweepSummary DetectInSweepFile(const QString& fileName, const QTimeZone& zone, const SweepSettings& settings,
                               const std::function<void(const SweepDetection&)>& receive,
                               const SweepProgress& progress) {
    SweepDetector detector(settings, receive);
    const SweepSummary summary = ReadSweepFile(
        fileName, zone, [&](const Sweep& sweep) { detector.Add(sweep); }, progress);
    detector.Finish();
    return summary;
}
