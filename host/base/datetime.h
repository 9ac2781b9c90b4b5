#pragma once

#include <QDateTime>

namespace Quor {

/// A point in time, to the microsecond, and its text forms.
class DateTime {
public:
    explicit DateTime(const QDateTime& time);
    /// Microseconds since 1970-01-01 UTC.
    explicit DateTime(const quint64& microseconds);

    /// The time in a zone: `Local_TimeZone`, or an offset from UTC in seconds (0 is UTC). The default format
    /// is "yyyy-MM-dd hh:mm:ss" with a 24-hour hour; the letters of a format are those of `QDateTime`.
    QString toString(qint64 timeZone) const;
    QString toString(const QString& format, qint64 timeZone) const;

    /// Stands for the zone of the machine; no offset has this value.
    static const qint64 Local_TimeZone;

private:
    qint64 m_microseconds;
};

/// The same point in time as a `QDateTime` in UTC, to the millisecond.
QDateTime FromMicroseconds(qint64 microseconds);

} // namespace Quor
