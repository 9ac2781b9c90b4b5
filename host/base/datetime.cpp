#include "host/base/datetime.h"

#include <chrono>
#include <ctime>
#include <limits>

namespace Quor {
namespace {

constexpr qint64 MicrosecondsPerSecond = 1000000;
/// Up to 2038 the machine and the string class agree on the rules of every zone.
constexpr qint64 AgreedSeconds = std::numeric_limits<qint32>::max();
constexpr qint64 GreatestOffset = 14 * 3600;

/// Local time by the machine's zone, at whose rules is looked again each second.
std::tm localTime(std::time_t seconds) {
    using Clock = std::chrono::steady_clock;
    static Clock::time_point looked = Clock::time_point::min();
    const Clock::time_point now = Clock::now();
    if (looked == Clock::time_point::min() || now - looked > std::chrono::seconds(1)) {
        looked = now;
        tzset();
    }
    std::tm time{};
    localtime_r(&seconds, &time);
    return time;
}

std::tm utcTime(std::time_t seconds) {
    std::tm time{};
    gmtime_r(&seconds, &time);
    return time;
}

/// "yyyy-MM-dd hh:mm:ss" of a year with four digits.
QString defaultText(const std::tm& time) {
    char16_t text[] = u"0000-00-00 00:00:00";
    const auto put = [&](int end, int number) {
        for (; number > 0; number /= 10)
            text[--end] = static_cast<char16_t>(u'0' + number % 10);
    };
    put(4, time.tm_year + 1900);
    put(7, time.tm_mon + 1);
    put(10, time.tm_mday);
    put(13, time.tm_hour);
    put(16, time.tm_min);
    put(19, time.tm_sec);
    return QString::fromUtf16(text, 19);
}

} // namespace

const qint64 DateTime::Local_TimeZone = std::numeric_limits<qint64>::max();

DateTime::DateTime(const QDateTime& time) : m_microseconds(time.toMSecsSinceEpoch() * 1000) {}

DateTime::DateTime(const quint64& microseconds)
    : m_microseconds(
          static_cast<qint64>(std::min<quint64>(microseconds, std::numeric_limits<qint64>::max()))) {}

QString DateTime::toString(qint64 timeZone) const {
    // Whole columns are filled with it, so the usual cases do without the string class's way.
    const qint64 seconds = m_microseconds / MicrosecondsPerSecond;
    if (m_microseconds >= GreatestOffset * MicrosecondsPerSecond &&
        seconds < AgreedSeconds - GreatestOffset) {
        if (timeZone == Local_TimeZone)
            return defaultText(localTime(seconds));
        if (std::abs(timeZone) <= GreatestOffset)
            return defaultText(utcTime(seconds + timeZone));
    }
    return toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"), timeZone);
}

QString DateTime::toString(const QString& format, qint64 timeZone) const {
    const QDateTime utc = FromMicroseconds(m_microseconds);
    if (timeZone == Local_TimeZone)
        return utc.toLocalTime().toString(format);
    return utc.toOffsetFromUtc(static_cast<int>(timeZone)).toString(format);
}

QDateTime FromMicroseconds(qint64 microseconds) {
    const qint64 milliseconds = microseconds / 1000 - (microseconds % 1000 < 0 ? 1 : 0);
    return QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC);
}

} // namespace Quor
