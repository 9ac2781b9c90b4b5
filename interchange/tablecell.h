#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace Interchange {

// Numbers with and without units as people write them into tables.

/// Hz of a unit's name, whatever its case; 0 for an unknown one.
double HertzOfUnit(QStringView unit);
/// "kHz"; "?" for a unit that has no name.
QString NameOfUnit(double hertz);
/// The unit that a heading names, in Hz: "Freq (kHz)", "freq_hz"; 0 for none.
double UnitInHeading(const QString& heading);
/// Takes a unit off the end of a number ("121.5 MHz") and gives its Hz; 0 when there is none.
double TakeUnit(std::string_view& number);

/// A number in the C locale: blanks, and with a decimal comma the points, may group thousands. What is no
/// number stays none.
std::string PlainNumber(std::string_view text, bool hasDecimalComma);
bool IsNumber(const QString& cell, bool hasDecimalComma);
/// Whether a cell is a number with decimals behind that mark, a point or a comma.
bool HasDecimals(const QString& cell, QChar mark);
/// Whether what stands behind the only comma of a cell may be thousands as well as decimals: "7,055".
bool MayBeThousands(const QString& cell);

} // namespace Interchange
