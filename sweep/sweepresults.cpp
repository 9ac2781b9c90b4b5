#include "sweep/sweepresults.h"

#include "host/freqstorexml/detectionresultlist.h"
#include "host/freqstorexml/liststreams.h"

#include <cmath>

using namespace FreqStoreXml;

namespace {

QString type() {
    return QString(QLatin1Char(DetectionConventionalAdapter::Type));
}

/// Sweeps have hundredths of a dB; their binary form has more digits, which say nothing.
double hundredths(float level) {
    return std::round(double(level) * 100) / 100;
}

} // namespace

class SweepResultWriter::Format {
public:
    virtual ~Format() = default;
    virtual void Append(const SweepDetection& detection, const QString& id) = 0;
    virtual void Commit() = 0;
};

class SweepResultWriter::Xml final : public Format {
public:
    explicit Xml(const QString& fileName) : m_writer(fileName, false) {
        DetectionResultList head;
        head.SetUsage(FrequencyStoreList::SearchResults);
        head.SetComment(QStringLiteral("Emission Result List"));
        head.SetID(QStringLiteral("None"));
        head.SetType(type());
        m_writer.Begin(head);
    }
    void Append(const SweepDetection& detection, const QString& id) override {
        DetectionResult result;
        result.SetID(id);
        result.SetType(type());
        result.GetFrequency().SetValue(detection.Frequency());
        result.GetBandwidth().SetValue(detection.Bandwidth());
        result.SetLevel(hundredths(detection.level));
        result.SetStartTimeUsec(detection.start);
        result.SetStopTimeUsec(detection.stop);
        m_writer.Append(result);
    }
    void Commit() override { m_writer.Commit(); }

private:
    DetectionResultListWriter m_writer;
};

class SweepResultWriter::Csv final : public Format {
public:
    explicit Csv(const QString& fileName) : m_writer(fileName, true, FrequencyStoreListHelper::Detections) {
        m_writer.Begin(FrequencyStoreList::SearchResults);
    }
    void Append(const SweepDetection& detection, const QString& id) override {
        FrequencyStoreEntry entry;
        entry.SetID(id);
        entry.SetType(type());
        entry.GetFFM_Settings().GetFrequency().SetValue(detection.Frequency());
        entry.GetFFM_Settings().GetIFBandwidth().SetValue(detection.Bandwidth());
        entry.GetFFM_Settings().SetLevel(hundredths(detection.level));
        entry.GetDetection().SetStartTimeUsec(detection.start);
        entry.GetDetection().SetStopTimeUsec(detection.stop);
        m_writer.Append(entry);
    }
    void Commit() override { m_writer.Commit(); }

private:
    FrequencyStoreListWriter m_writer;
};

bool SweepResultWriter::KnowsName(const QString& fileName) {
    return fileName.contains(QLatin1String(".xml")) || fileName.contains(QLatin1String(".csv"));
}

SweepResultWriter::SweepResultWriter(const QString& fileName) {
    if (fileName.contains(QLatin1String(".xml")))
        m_format = std::make_unique<Xml>(fileName);
    else
        m_format = std::make_unique<Csv>(fileName);
}

SweepResultWriter::~SweepResultWriter() = default;

void SweepResultWriter::Append(const SweepDetection& detection) {
    m_format->Append(detection, QString::number(++m_count));
}

void SweepResultWriter::Commit() {
    m_format->Commit();
}

DetectionConventional RecordOf(const SweepDetection& detection) {
    DetectionConventional record;
    record.SetFrequency(detection.Frequency());
    record.SetBandwidth(detection.Bandwidth());
    record.SetLevel(static_cast<short>(std::lround(detection.level)));
    record.SetStartTime(static_cast<double>(detection.start));
    record.SetStopTime(static_cast<double>(detection.stop));
    return record;
}
