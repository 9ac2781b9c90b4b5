#pragma once

#include <QDate>
#include <QTime>

#include <optional>
#include <string_view>

namespace Interchange {

/// When a broadcaster is on air, in UTC: a time of the day that may go past midnight, days of the week, and a
/// season.
struct Schedule {
    int begin = 0;               ///< minutes since midnight
    int end = 24 * 60;           ///< the same; not after `begin` when it goes past midnight
    unsigned days = 0x7F;        ///< bit 0 is Monday; those on which it begins
    bool isDaysKnown = true;     ///< else the days are in words of their own ("irr"), and all count
    bool isActive = true;        ///< else it is in the list and on air no more
    std::optional<int> firstDay; ///< as month * 100 + day; the time may go past the end of a year
    std::optional<int> lastDay;  ///< without either, the season tells

    /// Whether the broadcaster is on air at a time (UTC).
    bool IsOnAir(const QDate& date, const QTime& time) const;

private:
    bool IsInSeason(const QDate& date) const;
};

/// "0600-0700", "2300-0200", "0000-2400"; nothing for what is no such time.
bool TakeTimes(std::string_view text, Schedule& schedule);
/// "" (daily), "Mo-Fr", "SaSu", "1245" (1 is Monday); what it does not know sets `isDaysKnown` to false.
void TakeDays(std::string_view text, Schedule& schedule);
/// "2503" is the 25th of March; anything else is no day.
std::optional<int> DayOfYear(std::string_view text);

} // namespace Interchange
