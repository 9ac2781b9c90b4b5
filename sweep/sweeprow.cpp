#include "sweep/sweeprow.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace {

constexpr double HighestFrequency = 1e12;
/// No receiver measures more; it also keeps the levels in the range of their type.
constexpr double HighestLevel = 1000;
constexpr std::size_t LongestQuote = 40;

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

std::string_view takeField(std::string_view& text) {
    const auto comma = text.find(',');
    const std::string_view field = trimmed(text.substr(0, comma));
    text = comma == std::string_view::npos ? std::string_view() : text.substr(comma + 1);
    return field;
}

/// Parses a whole field; infinite and no number are accepted.
bool parse(std::string_view field, double& value) {
    const auto result = std::from_chars(field.data(), field.data() + field.size(), value);
    return result.ec == std::errc() && result.ptr == field.data() + field.size();
}

/// Reads a plain number such as "-64.72", which nearly all levels are, and returns what follows it; null for
/// all else.
const char* parsePlain(const char* at, const char* end, float& value) {
    static constexpr double Scale[] = {1, 1e-1, 1e-2, 1e-3, 1e-4, 1e-5, 1e-6, 1e-7, 1e-8, 1e-9};
    const bool negative = at < end && *at == '-';
    const char* const first = negative ? at + 1 : at;
    unsigned number = 0;
    const auto takeDigits = [&](const char* from) {
        for (; from < end && *from >= '0' && *from <= '9'; ++from)
            number = number * 10 + static_cast<unsigned>(*from - '0');
        return from;
    };
    at = takeDigits(first);
    const auto whole = at - first;
    std::ptrdiff_t decimals = 0;
    if (at < end && *at == '.') {
        const char* const point = ++at;
        at = takeDigits(point);
        decimals = at - point;
    }
    if (whole == 0 || whole > 3 || whole + decimals > 9)
        return nullptr;
    const double magnitude = number * Scale[decimals];
    value = static_cast<float>(negative ? -magnitude : magnitude);
    return at;
}

bool parseLevel(std::string_view field, float& level) {
    double value = 0;
    const bool isLevel = parse(field, value) && (std::abs(value) <= HighestLevel || value == -HUGE_VAL);
    level = isLevel ? static_cast<float>(value) : std::numeric_limits<float>::quiet_NaN();
    return isLevel;
}

/// Why the frequencies of a row cannot be; empty when they can.
QString frequencyFault(const SweepRow& row) {
    const auto hertz = [](double value) { return QString::number(value, 'g', 15) + QStringLiteral(" Hz"); };
    if (row.low < 0 || row.high > HighestFrequency)
        return QStringLiteral("no receiver reaches from %1 to %2").arg(hertz(row.low), hertz(row.high));
    if (row.high <= row.low)
        return QStringLiteral("the row ends at %1, where it begins or below").arg(hertz(row.high));
    if (row.step <= 0 || row.step > (row.high - row.low) * 1.5)
        return QStringLiteral("bins of %1 do not fit into %2")
            .arg(hertz(row.step), hertz(row.high - row.low));
    if ((row.high - row.low) / row.step > double(SweepRow::MostBins))
        return QStringLiteral("%1 in bins of %2 are too many bins")
            .arg(hertz(row.high - row.low), hertz(row.step));
    return {};
}

} // namespace

bool SweepRow::Parse(std::string_view line, QString& reason) {
    std::string_view rest = line;
    date = takeField(rest);
    time = takeField(rest);
    stamp = line.substr(0, line.size() - rest.size());
    struct {
        const char* name;
        double* value;
    } const numbers[] = {{"lowest frequency", &low}, {"highest frequency", &high}, {"bin width", &step}};
    for (const auto& number : numbers) {
        const std::string_view field = takeField(rest);
        if (rest.empty()) {
            reason = QStringLiteral("the row has too few columns");
            return false;
        }
        if (!parse(field, *number.value) || !std::isfinite(*number.value)) {
            reason = QStringLiteral("%1 %2 is not a number").arg(QLatin1String(number.name), Quoted(field));
            return false;
        }
    }
    takeField(rest); // how many samples or transforms were averaged: never the number of bins
    levels = rest;
    if (IsBlank(levels)) {
        reason = QStringLiteral("the row has too few columns");
        return false;
    }
    reason = frequencyFault(*this);
    if (!reason.isEmpty())
        return false;
    bins = static_cast<std::size_t>(std::llround((high - low) / step));
    return true;
}

bool IsBlank(std::string_view text) {
    return std::ranges::all_of(text, isBlank);
}

bool TakeLevel(std::string_view& text, float& level, std::string_view& wrong) {
    const char* at = text.data();
    const char* const end = at + text.size();
    while (at < end && *at == ' ')
        ++at;
    const char* const behind = parsePlain(at, end, level);
    if (behind && (behind == end || *behind == ',')) {
        text.remove_prefix(static_cast<std::size_t>(behind - text.data()) + (behind < end ? 1 : 0));
        return true;
    }
    const std::string_view field = takeField(text);
    if (parseLevel(field, level))
        return true;
    wrong = field;
    return false;
}

QString Quoted(std::string_view text) {
    const std::string_view shown = text.substr(0, LongestQuote);
    QString quoted = QString::fromUtf8(shown.data(), static_cast<qsizetype>(shown.size()));
    for (QChar& c : quoted) {
        if (!c.isPrint())
            c = QChar::ReplacementCharacter;
    }
    return QLatin1Char('"') + quoted + QLatin1String(shown.size() < text.size() ? "...\"" : "\"");
}
