#include "sweep/sweepdetector.h"
#include "sweep/sweepreader.h"

#include <QBuffer>

#include <cmath>
#include <cstdlib>

/// Whatever the bytes are, each sweep has the bins that its hops promise, and no byte is left behind.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const QTimeZone zone("Europe/Berlin");
    QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    SweepReader reader(buffer, QStringLiteral("fuzz"), zone);
    SweepDetector detector({6, 0, 1}, [](const SweepDetection& detection) {
        if (!(detection.Bandwidth() > 0) || !std::isfinite(detection.level) ||
            detection.stop < detection.start)
            std::abort();
    });
    qint64 hops = 0;
    for (Sweep sweep; reader.Next(sweep);) {
        double low = 0;
        for (const SweepHop& hop : sweep.hops) {
            if (hop.count == 0 || hop.first + hop.count > sweep.levels.size() || hop.low < low ||
                !(hop.End() > hop.low))
                std::abort();
            low = hop.low;
            ++hops;
        }
        detector.Add(sweep);
    }
    detector.Finish();
    if (hops != reader.Rows() || reader.BytesRead() != bytes.size())
        std::abort();
    return 0;
}
