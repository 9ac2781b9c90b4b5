#include "host/base/datetime.h"

#include <gtest/gtest.h>

namespace {

/// 2024-02-29 23:59:58.123456 UTC
constexpr quint64 LeapDay = 1709251198123456;

/// Sets the zone of the process while it lives.
class Zone {
public:
    explicit Zone(const char* name) : m_before(qgetenv("TZ")) { set(name); }
    ~Zone() { set(m_before); }

private:
    static void set(const QByteArray& name) {
        if (name.isEmpty())
            qunsetenv("TZ");
        else
            qputenv("TZ", name);
        tzset();
    }
    QByteArray m_before;
};

TEST(DateTime, ShowsTheTimeInAZoneByItsOffset) {
    const Quor::DateTime time(LeapDay);
    EXPECT_EQ(time.toString(0), QStringLiteral("2024-02-29 23:59:58"));
    EXPECT_EQ(time.toString(3600), QStringLiteral("2024-03-01 00:59:58"));
    EXPECT_EQ(time.toString(-(5 * 3600 + 1800)), QStringLiteral("2024-02-29 18:29:58"));
}

TEST(DateTime, ShowsTheTimeOfTheMachine) {
    const Zone zone("XYZ-03:00"); // three hours ahead of UTC
    EXPECT_EQ(Quor::DateTime(LeapDay).toString(Quor::DateTime::Local_TimeZone),
              QStringLiteral("2024-03-01 02:59:58"));
    EXPECT_EQ(Quor::DateTime(LeapDay).toString("hh", Quor::DateTime::Local_TimeZone), QStringLiteral("02"));
}

TEST(DateTime, TakesAFormat) {
    EXPECT_EQ(Quor::DateTime(LeapDay).toString("dd.MM.yyyy hh:mm:ss.zzz", 0),
              QStringLiteral("29.02.2024 23:59:58.123"));
    EXPECT_EQ(Quor::DateTime(LeapDay).toString("h:mm AP", 0), QStringLiteral("11:59 PM"));
}

TEST(DateTime, IsTheSameHoweverItWasGiven) {
    const QDateTime inAZone = QDateTime::fromString(QStringLiteral("2024-03-01T04:59:58+05:00"), Qt::ISODate);
    EXPECT_EQ(Quor::DateTime(inAZone).toString(0), QStringLiteral("2024-02-29 23:59:58"));
    EXPECT_EQ(Quor::DateTime(quint64(0)).toString(0), QStringLiteral("1970-01-01 00:00:00"));
}

TEST(DateTime, RoundsTowardsThePastBefore1970) {
    EXPECT_EQ(Quor::FromMicroseconds(-1).toMSecsSinceEpoch(), -1);
    EXPECT_EQ(Quor::FromMicroseconds(-1000).toMSecsSinceEpoch(), -1);
    EXPECT_EQ(Quor::FromMicroseconds(1999).toMSecsSinceEpoch(), 1);
    EXPECT_EQ(Quor::FromMicroseconds(0).timeSpec(), Qt::UTC);
}

} // namespace
