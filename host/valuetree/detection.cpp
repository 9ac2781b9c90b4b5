#include "host/valuetree/detection.h"

#include "host/base/datetime.h"
#include "host/base/frequencytext.h"

#include <algorithm>

namespace {

QString timeText(double microseconds) {
    return Quor::DateTime(static_cast<quint64>(std::max(ClampedFromDouble<qint64>(microseconds), qint64(0))))
        .toString(Quor::DateTime::Local_TimeZone);
}

using Adapter = DetectionConventionalAdapter;

struct Field {
    QLatin1String name;
    Adapter::Text text;
};

constexpr Field Fields[] = {
    {QLatin1String("Frequency"), Adapter::GetFrequencyString},
    {QLatin1String("Name"), Adapter::GetName},
    {QLatin1String("Bandwidth"), Adapter::GetBandwidthString},
    {QLatin1String("Level"), Adapter::GetLevelString},
    {QLatin1String("Type"), [](const DetectionConventional&) { return QString(QLatin1Char(Adapter::Type)); }},
    {QLatin1String("From"), Adapter::GetStartTimeString},
    {QLatin1String("Until"), Adapter::GetStopTimeString},
};

} // namespace

bool DetectionConventional::operator==(const DetectionConventional& other) const {
    return m_id == other.m_id && m_frequency == other.m_frequency && m_bandwidth == other.m_bandwidth &&
           m_level == other.m_level && m_startTime == other.m_startTime && m_stopTime == other.m_stopTime &&
           m_active == other.m_active;
}

Adapter::Text DetectionConventionalAdapter::FindField(const QString& field) {
    const auto* found = std::find_if(std::begin(Fields), std::end(Fields),
                                     [&](const Field& candidate) { return field == candidate.name; });
    return found == std::end(Fields) ? nullptr : found->text;
}

QString DetectionConventionalAdapter::FieldText(const DetectionConventional& record, const QString& field) {
    const Text text = FindField(field);
    return text ? text(record) : QString();
}

QString DetectionConventionalAdapter::GetFrequencyString(const DetectionConventional& record) {
    return Quor::FrequencyText(record.GetFrequency());
}

QString DetectionConventionalAdapter::GetName(const DetectionConventional& record) {
    return QString::number(record.GetID());
}

QString DetectionConventionalAdapter::GetBandwidthString(const DetectionConventional& record) {
    return Quor::BandwidthText(record.GetBandwidth());
}

QString DetectionConventionalAdapter::GetLevelString(const DetectionConventional& record) {
    return QString::number(record.GetLevel());
}

QString DetectionConventionalAdapter::GetStartTimeString(const DetectionConventional& record) {
    return timeText(record.GetStartTime());
}

QString DetectionConventionalAdapter::GetStopTimeString(const DetectionConventional& record) {
    return record.GetActive() ? QString() : timeText(record.GetStopTime());
}
