#include "interchange/schedule.h"

#include <algorithm>
#include <charconv>

namespace Interchange {

namespace {

constexpr int MinutesPerDay = 24 * 60;
constexpr int LeapYear = 2000; // has all days that there are
constexpr unsigned AllDays = 0x7F;
constexpr std::string_view DayNames[] = {"Mo", "Tu", "We", "Th", "Fr", "Sa", "Su"};

std::optional<int> numberOf(std::string_view digits) {
    int number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error != std::errc() || end != digits.data() + digits.size() || number < 0)
        return std::nullopt;
    return number;
}

/// Minutes of "HHMM", up to "2400".
std::optional<int> minutesOf(std::string_view text) {
    const std::optional<int> number = text.size() == 4 ? numberOf(text) : std::nullopt;
    if (!number || *number % 100 >= 60 || *number > 2400)
        return std::nullopt;
    return *number / 100 * 60 + *number % 100;
}

/// The number of the day whose name a text begins with, from 0; negative for none.
int takeDayName(std::string_view& text) {
    for (int day = 0; day < 7; ++day) {
        if (text.starts_with(DayNames[day])) {
            text.remove_prefix(2);
            return day;
        }
    }
    return -1;
}

/// Days by names: "Mo-Fr", "MoWe", "Sa,Su"; 0 for what is none.
unsigned daysByNames(std::string_view text) {
    unsigned days = 0;
    while (!text.empty()) {
        const int first = takeDayName(text);
        int last = first;
        if (first >= 0 && text.starts_with('-')) {
            text.remove_prefix(1);
            last = takeDayName(text);
        }
        if (first < 0 || last < 0)
            return 0;
        for (int day = first;; day = (day + 1) % 7) {
            days |= 1U << day;
            if (day == last)
                break;
        }
        if (text.starts_with(','))
            text.remove_prefix(1);
    }
    return days;
}

unsigned daysByNumbers(std::string_view text) {
    unsigned days = 0;
    for (const char c : text) {
        if (c < '1' || c > '7')
            return 0;
        days |= 1U << (c - '1');
    }
    return days;
}

} // namespace

bool TakeTimes(std::string_view text, Schedule& schedule) {
    if (text.size() != 9 || text[4] != '-')
        return false;
    const std::optional<int> begin = minutesOf(text.substr(0, 4));
    const std::optional<int> end = minutesOf(text.substr(5));
    if (!begin || !end)
        return false;
    schedule.begin = *begin;
    schedule.end = *end;
    return true;
}

void TakeDays(std::string_view text, Schedule& schedule) {
    const unsigned byNumbers = daysByNumbers(text);
    const unsigned days = byNumbers != 0 ? byNumbers : daysByNames(text);
    schedule.isDaysKnown = days != 0 || text.empty();
    schedule.days = days != 0 ? days : AllDays;
}

std::optional<int> DayOfYear(std::string_view text) {
    const std::optional<int> number = text.size() == 4 ? numberOf(text) : std::nullopt;
    const int day = number.value_or(0) / 100;
    const int month = number.value_or(0) % 100;
    return QDate::isValid(LeapYear, month, day) ? std::optional(month * 100 + day) : std::nullopt;
}

bool Schedule::IsInSeason(const QDate& date) const {
    constexpr int LongestSeason = 31 * 7; // days, of summer time
    const auto dayOf = [](int ofYear) { return QDate(LeapYear, ofYear / 100, ofYear % 100).dayOfYear(); };
    const auto daysFrom = [&](int from, int to) { return (dayOf(to) - dayOf(from) + 366) % 366; };
    const int today = date.month() * 100 + date.day();
    if (firstDay)
        return daysFrom(*firstDay, today) <= (lastDay ? daysFrom(*firstDay, *lastDay) : LongestSeason);
    return !lastDay || daysFrom(today, *lastDay) <= LongestSeason;
}

bool Schedule::IsOnAir(const QDate& date, const QTime& time) const {
    const int minute = time.msecsSinceStartOfDay() / 60000;
    const auto begins = [this](const QDate& day) {
        return isActive && (days & (1U << (day.dayOfWeek() - 1))) != 0 && IsInSeason(day);
    };
    const int length = end > begin ? end - begin : end - begin + MinutesPerDay;
    if (minute >= begin && minute < begin + length && begins(date))
        return true;
    return minute < begin + length - MinutesPerDay && begins(date.addDays(-1));
}

} // namespace Interchange
