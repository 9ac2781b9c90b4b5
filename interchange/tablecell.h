#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace Interchange {

// Numbers with and without units as people write them into tables.

/// How the numbers of a table are written.
enum class DecimalMark {
    Point,          ///< "121.5"
    Comma,          ///< "121,5"; points may group thousands
    PointAndGroups, ///< "7,055.5"
};

/// Hz of a unit's name, whatever its case; 0 for an unknown one.
double HertzOfUnit(QStringView unit);
/// "kHz"; "?" for a unit that has no name.
QString NameOfUnit(double hertz);
/// The unit that a heading names, in Hz: "Freq (kHz)", "freq_hz"; 0 for none.
double UnitInHeading(const QString& heading);
/// Takes a unit off the end of a number ("121.5 MHz") and gives its Hz; 0 when there is none.
double TakeUnit(std::string_view& number);

/// Whether a cell is nothing but a unit: "MHz", "(kHz)".
bool IsUnit(const QString& cell);

/// A number in the C locale: blanks, and what the mark says, may group thousands. What is no number stays
/// none.
std::string PlainNumber(std::string_view text, DecimalMark mark);
bool IsNumber(const QString& cell, DecimalMark mark);
/// Whether a cell is a number with decimals behind that mark, a point or a comma.
bool HasDecimals(const QString& cell, QChar mark);
/// Whether a cell is a number in which such marks group thousands for sure: there are several of them, or
/// decimals behind another one.
bool HasGroups(const QString& cell, QChar mark);
/// Whether what stands behind the only comma of a cell may be thousands as well as decimals: "7,055".
bool MayBeThousands(const QString& cell);

} // namespace Interchange
