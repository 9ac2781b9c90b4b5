#include "host/base/frequencyinput.h"

#include "host/base/frequencytext.h"
#include "host/base/numbers.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>

namespace Quor {
namespace {

constexpr QChar NoBreakBlank(0xA0);
constexpr qsizetype GroupSize = 3;

QString tr(const char* text) {
    return QCoreApplication::translate("Quor", text);
}

bool isBlank(QChar c) {
    return c.isSpace() || c == QLatin1Char('\'') || c == QChar(0x2019);
}

bool isMark(QChar c) {
    return c == QLatin1Char('.') || c == QLatin1Char(',');
}

bool isDigit(QChar c) {
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

/// The mark that separates decimals: of two different marks the last; of one that stands once, that. Null
/// when there is none.
QChar decimalMark(QStringView number) {
    const auto last = std::find_if(number.rbegin(), number.rend(), isMark);
    if (last == number.rend())
        return QChar();
    const bool isTheOnlyKind =
        std::all_of(number.begin(), number.end(), [&](QChar c) { return !isMark(c) || c == *last; });
    return isTheOnlyKind && number.count(*last) > 1 ? QChar() : *last;
}

/// Takes the marks between thousands out of the whole part; false when groups are not of three digits.
bool ungroup(QStringView whole, QString& digits) {
    qsizetype inGroup = 0;
    bool grouped = false;
    for (const QChar c : whole) {
        if (isDigit(c)) {
            digits += c;
            ++inGroup;
            continue;
        }
        if (inGroup == 0 || inGroup > GroupSize || (grouped && inGroup != GroupSize))
            return false;
        grouped = true;
        inGroup = 0;
    }
    return !grouped || inGroup == GroupSize;
}

FrequencyInput refused(const QString& problem) {
    FrequencyInput input;
    input.problem = problem;
    return input;
}

} // namespace

FrequencyInput ReadFrequencyInput(QStringView text, double defaultUnit) {
    const QString entry = text.trimmed().toString();
    if (entry.isEmpty())
        return refused(tr("Type a frequency"));
    QStringView number = text.trimmed();
    const double unit = TakeUnit(number, defaultUnit);
    const bool hasUnit = number.size() != entry.size();
    number = number.trimmed();
    if (number.isEmpty() || !std::all_of(number.begin(), number.end(),
                                         [](QChar c) { return isDigit(c) || isMark(c) || isBlank(c); }))
        return refused(tr("\"%1\" is not a frequency").arg(entry));

    const QChar mark = decimalMark(number);
    const qsizetype place = mark.isNull() ? -1 : number.lastIndexOf(mark);
    const QStringView whole = place < 0 ? number : number.left(place);
    const QString decimals = place < 0 ? QString() : number.mid(place + 1).toString();
    QString digits;
    const bool marksAreMixed = !mark.isNull() && whole.contains(mark);
    if (marksAreMixed || !ungroup(whole, digits) || !std::all_of(decimals.begin(), decimals.end(), isDigit) ||
        (digits + decimals).isEmpty())
        return refused(tr("\"%1\": digits are grouped in threes, and one point or comma is the decimal mark")
                           .arg(entry));

    FrequencyInput input;
    // Read in Hz at once: multiplied afterwards, 7.0551 MHz would be a little off.
    const QString exponent = QLatin1Char('e') + QString::number(std::lround(std::log10(unit)));
    if (!ParseDouble(QString(digits + QLatin1Char('.') + decimals + exponent), input.hertz))
        return refused(tr("\"%1\" is too large").arg(entry));
    input.step = unit * std::pow(10.0, -static_cast<double>(decimals.size()));
    input.mayMisread = !hasUnit && digits.size() == whole.size() && decimals.size() == GroupSize &&
                       !digits.isEmpty() && digits.size() <= GroupSize;
    return input;
}

QString FrequencyInput::Understood() const {
    return IsFrequency() ? GroupedFrequencyText(hertz) : QString();
}

QString GroupedFrequencyText(double hertz) {
    return GroupThousands(FrequencyText(hertz));
}

QString GroupThousands(const QString& text) {
    qsizetype end = 0;
    while (end < text.size() && isDigit(text[end]))
        ++end;
    QString grouped = text;
    for (qsizetype place = end - GroupSize; place > 0; place -= GroupSize)
        grouped.insert(place, NoBreakBlank);
    return grouped;
}

} // namespace Quor
