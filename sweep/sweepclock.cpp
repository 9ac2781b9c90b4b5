#include "sweep/sweepclock.h"

#include <QDate>

#include <limits>

namespace {

constexpr qint64 Second = 1'000'000; ///< in microseconds
constexpr qint64 SecondsOfDay = 86400;

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// The number that the next `count` characters are, which are then passed over; -1 when they are no digits.
int takeDigits(std::string_view& text, std::size_t count) {
    if (text.size() < count)
        return -1;
    int number = 0;
    for (const char c : text.substr(0, count)) {
        if (!isDigit(c))
            return -1;
        number = number * 10 + (c - '0');
    }
    text.remove_prefix(count);
    return number;
}

bool take(std::string_view& text, char c) {
    if (text.empty() || text.front() != c)
        return false;
    text.remove_prefix(1);
    return true;
}

std::optional<qint64> dayOf(std::string_view text) {
    const int year = takeDigits(text, 4);
    const bool dash = take(text, '-');
    const int month = takeDigits(text, 2);
    const bool secondDash = take(text, '-');
    const int day = takeDigits(text, 2);
    if (!dash || !secondDash || !text.empty() || !QDate::isValid(year, month, day))
        return std::nullopt;
    return QDate(1970, 1, 1).daysTo(QDate(year, month, day));
}

/// Microseconds of ".25", of which digits beyond the sixth do not count; -1 when it is no such text.
qint64 fraction(std::string_view text) {
    if (text.empty())
        return 0;
    if (!take(text, '.') || text.empty())
        return -1;
    qint64 microseconds = 0;
    qint64 unit = Second / 10;
    for (const char c : text) {
        if (!isDigit(c))
            return -1;
        microseconds += unit * (c - '0');
        unit /= 10;
    }
    return microseconds;
}

/// Microseconds since midnight; a leap second belongs to the minute that follows.
std::optional<qint64> timeOfDay(std::string_view text) {
    const int hour = takeDigits(text, 2);
    const bool colon = take(text, ':');
    const int minute = takeDigits(text, 2);
    const bool secondColon = take(text, ':');
    const int second = takeDigits(text, 2);
    const qint64 microseconds = fraction(text);
    if (!colon || !secondColon || hour < 0 || hour > 23 || minute < 0 || minute > 59 || second < 0 ||
        second > 60 || microseconds < 0)
        return std::nullopt;
    return ((hour * 60 + minute) * 60 + second) * Second + microseconds;
}

} // namespace

SweepClock::SweepClock(const QTimeZone& zone) : m_zone(zone), m_minute(std::numeric_limits<qint64>::min()) {}

/// Offsets of a day before and a day after are those that may hold: one that leads to a time at which it
/// does hold is right.
void SweepClock::askZone(qint64 localMinute) {
    const auto offsetAt = [this](qint64 seconds) {
        return qint64(m_zone.offsetFromUtc(QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC)));
    };
    const qint64 local = localMinute * 60;
    const qint64 before = offsetAt(local - SecondsOfDay);
    const qint64 after = offsetAt(local + SecondsOfDay);
    const bool beforeHolds = offsetAt(local - before) == before;
    const bool afterHolds = offsetAt(local - after) == after;
    m_minute = localMinute;
    m_offset = beforeHolds || !afterHolds ? before : after;
    m_laterOffset = beforeHolds && afterHolds ? after : m_offset;
}

std::optional<qint64> SweepClock::ToUtc(std::string_view date, std::string_view time, qint64 notBefore) {
    const std::optional<qint64> day = dayOf(date);
    const std::optional<qint64> ofDay = timeOfDay(time);
    if (!day || !ofDay)
        return std::nullopt;
    const qint64 local = *day * SecondsOfDay * Second + *ofDay;
    const qint64 minute = *day * SecondsOfDay / 60 + *ofDay / (60 * Second);
    if (minute != m_minute)
        askZone(minute);
    const qint64 utc = local - m_offset * Second;
    return utc >= notBefore ? utc : local - m_laterOffset * Second;
}
