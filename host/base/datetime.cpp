#include "host/base/datetime.h"

#include <limits>

namespace Quor {

const qint64 DateTime::Local_TimeZone = std::numeric_limits<qint64>::max();

DateTime::DateTime(const QDateTime& time) : m_microseconds(time.toMSecsSinceEpoch() * 1000) {}

DateTime::DateTime(const quint64& microseconds)
    : m_microseconds(
          static_cast<qint64>(std::min<quint64>(microseconds, std::numeric_limits<qint64>::max()))) {}

QString DateTime::toString(qint64 timeZone) const {
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
