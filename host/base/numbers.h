#pragma once

#include <QString>
#include <QStringView>

#include <bit>
#include <cmath>
#include <limits>

/// Numbers and their texts, always in the C locale, whatever the user's locale is. Texts such as "nan" and
/// "inf" are not numbers. Blanks around a number are allowed.
namespace Quor {

/// Parses a whole text as a finite number; on failure `ok` (if given) is false and the result 0.
double toDoubleEx(const QString& text, bool* ok = nullptr);

/// Parse a whole text; false, with `value` untouched, when it is no such number or out of range.
[[nodiscard]] bool ParseDouble(QStringView text, double& value);
[[nodiscard]] bool ParseInt(QStringView text, int& value);
[[nodiscard]] bool ParseInt(QStringView text, qint64& value);

/// A number whose unsigned order is that of the doubles. Zero is one value whatever its sign; what is no
/// number is greater than all.
inline quint64 OrderedBits(double value) {
    if (std::isnan(value))
        return std::numeric_limits<quint64>::max();
    constexpr quint64 Sign = quint64(1) << 63;
    const auto bits = std::bit_cast<quint64>(value + 0.0); // a negative zero becomes zero
    return (bits & Sign) != 0 ? ~bits : bits | Sign;
}

/// The shortest fixed notation that reads back exactly: "7055000", "0.5", "0". Not a number gives "0".
QString ToShortest(double value);

/// Appends a number in the notation of `ToShortest`, or with a fixed count of decimals.
void AppendShortest(QString& out, double value);
void AppendShortest(QByteArray& out, double value);
void AppendFixed(QString& out, double value, int decimals);
void AppendFixed(QByteArray& out, double value, int decimals);

} // namespace Quor
