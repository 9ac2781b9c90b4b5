#pragma once

#include <QTimeZone>

#include <optional>
#include <string_view>

/// Turns the local times of a sweep file into UTC. Sweeps come many a minute, so the zone's rules are asked
/// once per minute of the file only.
class SweepClock {
public:
    explicit SweepClock(const QTimeZone& zone);

    /// Microseconds since 1970-01-01 UTC of a date "2024-03-31" and a time "12:00:00" or "12:00:00.25"; none
    /// for other texts. An hour that occurs twice, when summer time ends, is its second occurrence if the
    /// first lies before `notBefore`; one that does not occur counts on from the hour before.
    std::optional<qint64> ToUtc(std::string_view date, std::string_view time, qint64 notBefore);

private:
    void askZone(qint64 localMinute);

    QTimeZone m_zone;
    qint64 m_minute;          ///< of local time, to which the offsets belong
    qint64 m_offset = 0;      ///< seconds east of UTC
    qint64 m_laterOffset = 0; ///< the same, or that of the minute's second occurrence
};
