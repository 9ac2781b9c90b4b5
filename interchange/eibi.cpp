#include "interchange/formatlist.h"
#include "interchange/rows.h"
#include "interchange/schedule.h"

#include <QCoreApplication>

namespace Interchange {

namespace {

// A schedule of shortwave broadcasts: frequencies in kHz, times in UTC, Windows-1252. The time on air is kept
// in the comment, whatever is asked for.

// In the field of what an entry is valid for. Only a part of a season has dates; those of others tell when
// they began some year.
constexpr char PartOfSeason[] = "6";
constexpr char InactiveEntry[] = "8";
constexpr std::size_t LeastFields = 5;
constexpr std::size_t MostFields = 12; // with the empty one behind the last separator

bool knows(const QString& head) {
    const QString line = FirstContentLine(head);
    return line.startsWith(QLatin1String("kHz:")) && line.contains(QLatin1String("Time(UTC)"));
}

void read(QIODevice& device, Reading& reading) {
    Rows rows(device, reading, {';', false, false}, false);
    if (!rows.Next())
        return;
    while (rows.Next()) {
        if (!rows.HasCells(LeastFields, MostFields))
            continue;
        Schedule schedule;
        if (!TakeTimes(rows.Cell(1), schedule)) {
            reading.Refuse(
                rows.Line(),
                QCoreApplication::translate("Readers", "\"%1\" is no time on air").arg(TextOf(rows.Cell(1))));
            continue;
        }
        TakeDays(rows.Cell(2), schedule);
        schedule.isActive = rows.Cell(8) != InactiveEntry;
        if (rows.Cell(8) == PartOfSeason) {
            schedule.firstDay = DayOfYear(rows.Cell(9));
            schedule.lastDay = DayOfYear(rows.Cell(10));
        }
        if (!reading.IsWanted(schedule))
            continue;
        if (!schedule.isDaysKnown)
            reading.GetAccount().Count(QT_TRANSLATE_NOOP("Account", "days in words, taken as daily"));
        reading.Keep("Time", rows.Cell(1));
        reading.Keep("Days", rows.Cell(2));
        constexpr std::pair<std::size_t, std::string_view> Others[] = {
            {3, "ITU"}, {5, "Language"}, {6, "Target"}, {7, "Remarks"}, {8, "P"}, {9, "Start"}, {10, "Stop"}};
        for (const auto& [column, key] : Others)
            reading.Extra(key, rows.Cell(column));
        reading.Take(
            {.line = rows.Line(), .frequency = rows.Cell(0), .hertzPerUnit = 1000, .name = rows.Cell(4)});
    }
}

} // namespace

const Format EibiSchedule{
    "eibi",
    QT_TRANSLATE_NOOP("Format", "EiBi schedule"),
    ".csv",
    "countries, languages, targets and remarks have no place in our lists; the time on air "
    "stands in the comment",
    knows,
    read,
    nullptr,
    true};

} // namespace Interchange
