#include "host/base/datetime.h"

#include "tests/support/clock.h"

#include <gtest/gtest.h>
#include <random>

namespace {

/// 2024-02-29 23:59:58.123456 UTC
constexpr quint64 LeapDay = 1709251198123456;

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

TEST(DateTime, AgreesWithTheStringClass) {
    std::mt19937_64 random(4);
    std::vector<quint64> times = {0, 1, 86399999999, 4102444800000000, 253402300799000000};
    for (int i = 0; i < 500; ++i)
        times.push_back(random() % 4200000000000000);
    for (const quint64 change :
         {1711846800u, 1729990800u, 2147483647u}) { // of Berlin's clocks, and of an era
        for (const quint64 seconds : {change - 1, change, change + 1})
            times.push_back(seconds * 1000000);
    }
    for (const char* name : {"Europe/Berlin", "America/St_Johns", "Asia/Kathmandu", "Pacific/Apia", "UTC"}) {
        const Zone zone(name);
        for (const quint64 time : times) {
            const QDateTime utc = Quor::FromMicroseconds(static_cast<qint64>(time));
            const QString format = QStringLiteral("yyyy-MM-dd hh:mm:ss");
            EXPECT_EQ(Quor::DateTime(time).toString(Quor::DateTime::Local_TimeZone),
                      utc.toLocalTime().toString(format))
                << name;
            EXPECT_EQ(Quor::DateTime(time).toString(-34200), utc.toOffsetFromUtc(-34200).toString(format));
        }
    }
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
