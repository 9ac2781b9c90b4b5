#include "host/base/numbers.h"

#include <charconv>
#include <cmath>

namespace Quor {
namespace {

/// Longest fixed notation of a double: 309 digits before the point, sign, and the digits of the smallest one.
constexpr size_t BufferSize = 1100;
constexpr qsizetype LongestNumber = 400;

/// A text narrowed to ASCII without surrounding blanks; length 0 when it cannot be a number.
class Narrowed {
public:
    explicit Narrowed(QStringView text) {
        text = text.trimmed();
        if (text.startsWith(QLatin1Char('+')) && text.size() > 1 && text[1] != QLatin1Char('-'))
            text = text.mid(1);
        if (text.size() > LongestNumber)
            return;
        for (const QChar c : text) {
            if (c.unicode() > 0x7f) {
                m_end = m_text;
                return;
            }
            *m_end++ = static_cast<char>(c.unicode());
        }
    }
    const char* begin() const { return m_text; }
    const char* end() const { return m_end; }

private:
    char m_text[LongestNumber];
    char* m_end = m_text;
};

template <typename T, typename... Format>
bool parseWhole(QStringView text, T& value, Format... format) {
    const Narrowed narrowed(text);
    T parsed{};
    const auto result = std::from_chars(narrowed.begin(), narrowed.end(), parsed, format...);
    if (result.ec != std::errc() || result.ptr != narrowed.end())
        return false;
    value = parsed;
    return true;
}

/// Nearly all numbers of files are a few digits and a point. Up to 2^53 the digits without the point are
/// exact as a double, and so are the powers of ten: one division is then rounded as the number itself is.
/// False for any other text.
bool parsePlain(QStringView text, double& value) {
    static constexpr double Powers[] = {1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10};
    constexpr qsizetype MostDigits = 15; // fewer than 2^53
    const char16_t* at = text.utf16();
    const char16_t* const end = at + text.size();
    const auto digitsFrom = [end](const char16_t*& digit, quint64& number) {
        const char16_t* const first = digit;
        for (; digit != end && static_cast<char16_t>(*digit - u'0') < 10; ++digit)
            number = number * 10 + (*digit - u'0');
        return digit - first;
    };
    if (text.size() > MostDigits + 1)
        return false;
    quint64 number = 0;
    const qsizetype whole = digitsFrom(at, number);
    qsizetype decimals = 0;
    if (at != end && *at == u'.')
        decimals = digitsFrom(++at, number);
    if (whole == 0 || at != end || whole + decimals > MostDigits || (decimals == 0 && end[-1] == u'.') ||
        static_cast<size_t>(decimals) >= std::size(Powers))
        return false;
    value = static_cast<double>(number) / Powers[decimals];
    return true;
}

bool parsePlain(QStringView text, int& value) {
    if (text.isEmpty() || text.size() > std::numeric_limits<int>::digits10)
        return false;
    int number = 0;
    for (const QChar c : text) {
        if (static_cast<char16_t>(c.unicode() - u'0') > 9)
            return false;
        number = number * 10 + (c.unicode() - u'0');
    }
    value = number;
    return true;
}

/// Ties are rounded away from zero, as the string class does; the standard library rounds them to even. With
/// d decimals a number is a tie exactly if it is an odd multiple of 2^-(d+1), since ten's other factor is
/// odd.
double avoidTie(double value, int decimals) {
    const double scaled = std::ldexp(value, decimals);
    if (scaled - std::floor(scaled) == 0.5)
        return std::nextafter(value, std::copysign(HUGE_VAL, value));
    return value;
}

/// The number's digits by way of the whole number of units of its last decimal. Empty for a number so large,
/// or so near to a tie, that the product might be rounded to the wrong side.
std::string_view wholeDigits(char (&buffer)[BufferSize], double value, int decimals) {
    static constexpr double Powers[] = {1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9};
    if (decimals < 0 || static_cast<size_t>(decimals) >= std::size(Powers))
        return {};
    const double scaled = std::abs(value) * Powers[decimals];
    const double whole = std::floor(scaled);
    const double fromTie = scaled - whole - 0.5;
    if (!(scaled < 1e15) || std::abs(fromTie) <= scaled * std::numeric_limits<double>::epsilon())
        return {};
    const quint64 units = static_cast<quint64>(whole) + (fromTie > 0 ? 1 : 0);
    char* at = buffer;
    if (value < 0)
        *at++ = '-';
    const auto power = static_cast<quint64>(Powers[decimals]);
    at = std::to_chars(at, std::end(buffer), units / power).ptr;
    if (decimals > 0) {
        *at++ = '.';
        quint64 rest = units % power;
        for (char* digit = at + decimals; digit != at; rest /= 10)
            *--digit = static_cast<char>('0' + rest % 10);
        at += decimals;
    }
    return {buffer, static_cast<size_t>(at - buffer)};
}

/// The number's digits in `buffer`.
std::string_view digits(char (&buffer)[BufferSize], double value, int decimals) {
    value = std::isfinite(value) ? value + 0.0 : 0; // the sum makes 0 of -0
    if (const std::string_view whole = wholeDigits(buffer, value, decimals); !whole.empty())
        return whole;
    const auto result = decimals < 0
                            ? std::to_chars(buffer, buffer + BufferSize, value, std::chars_format::fixed)
                            : std::to_chars(buffer, buffer + BufferSize, avoidTie(value, decimals),
                                            std::chars_format::fixed, decimals);
    return {buffer, static_cast<size_t>(result.ptr - buffer)};
}

template <typename Out>
void appendNumber(Out& out, double value, int decimals) {
    char buffer[BufferSize];
    const std::string_view text = digits(buffer, value, decimals);
    if constexpr (std::is_same_v<Out, QString>)
        out.append(QLatin1String(text.data(), static_cast<qsizetype>(text.size())));
    else
        out.append(text.data(), static_cast<qsizetype>(text.size()));
}

} // namespace

bool ParseDouble(QStringView text, double& value) {
    if (parsePlain(text, value))
        return true;
    double parsed = 0;
    if (!parseWhole(text, parsed, std::chars_format::general) || !std::isfinite(parsed))
        return false;
    value = parsed;
    return true;
}

bool ParseInt(QStringView text, int& value) {
    return parsePlain(text, value) || parseWhole(text, value, 10);
}

bool ParseInt(QStringView text, qint64& value) {
    return parseWhole(text, value, 10);
}

double toDoubleEx(const QString& text, bool* ok) {
    double value = 0;
    const bool parsed = ParseDouble(text, value);
    if (ok)
        *ok = parsed;
    return value;
}

QString ToShortest(double value) {
    if (value == 0)
        return QStringLiteral("0"); // every new entry starts with it: no allocation
    QString out;
    appendNumber(out, value, -1);
    return out;
}

void AppendShortest(QString& out, double value) {
    appendNumber(out, value, -1);
}

void AppendShortest(QByteArray& out, double value) {
    appendNumber(out, value, -1);
}

void AppendFixed(QString& out, double value, int decimals) {
    appendNumber(out, value, decimals);
}

void AppendFixed(QByteArray& out, double value, int decimals) {
    appendNumber(out, value, decimals);
}

} // namespace Quor
