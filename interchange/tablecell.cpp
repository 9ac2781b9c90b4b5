#include "interchange/tablecell.h"

#include "interchange/reading.h"

#include <QRegularExpression>

#include <algorithm>

namespace Interchange {

namespace {

struct Unit {
    const char* name;
    double hertz;
};
// The longer names come first: one ends with another.
constexpr Unit Units[] = {{"GHz", 1e9}, {"MHz", 1e6}, {"kHz", 1e3}, {"Hz", 1}};

/// What stands between groups of thousands in whatever country: blanks, unbroken, narrow and thin ones too,
/// and the apostrophes of typewriters and printers.
constexpr std::string_view Gaps[] = {" ", "'", "\xC2\xA0", "\xE2\x80\xAF", "\xE2\x80\x89", "\xE2\x80\x99"};

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Whether a text begins with three digits and no fourth one.
bool beginsWithThousands(std::string_view text) {
    const std::size_t digits = std::min(text.find_first_not_of("0123456789"), text.size());
    return digits == 3;
}

} // namespace

double HertzOfUnit(QStringView unit) {
    const auto* const found = std::ranges::find_if(Units, [unit](const Unit& known) {
        return unit.compare(QLatin1String(known.name), Qt::CaseInsensitive) == 0;
    });
    return found == std::end(Units) ? 0 : found->hertz;
}

QString NameOfUnit(double hertz) {
    const auto* const unit = std::ranges::find(Units, hertz, &Unit::hertz);
    return unit == std::end(Units) ? QStringLiteral("?") : QString::fromLatin1(unit->name);
}

double UnitInHeading(const QString& heading) {
    static const QRegularExpression unit(QStringLiteral("(^|[^a-z])(g|m|k)?hz($|[^a-z])"),
                                         QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch found = unit.match(heading);
    return found.hasMatch() ? HertzOfUnit(QString(found.captured(2) + QStringLiteral("Hz"))) : 0;
}

double TakeUnit(std::string_view& number) {
    for (const Unit& unit : Units) {
        const std::string_view name = unit.name;
        if (number.size() > name.size() &&
            qstrnicmp(number.data() + number.size() - name.size(), name.data(), name.size()) == 0) {
            number = Trimmed(number.substr(0, number.size() - name.size()));
            return unit.hertz;
        }
    }
    return 0;
}

bool IsUnit(const QString& cell) {
    static const QRegularExpression unit(QStringLiteral("^[\\[(]?[gmk]?hz[\\])]?$"),
                                         QRegularExpression::CaseInsensitiveOption);
    return unit.match(cell).hasMatch();
}

std::string PlainNumber(std::string_view text, DecimalMark mark) {
    const char group = mark == DecimalMark::Comma ? '.' : mark == DecimalMark::PointAndGroups ? ',' : '\0';
    std::string number;
    while (!text.empty()) {
        const char c = text.front();
        const auto* const gap =
            isDigit(c) ? std::end(Gaps)
                       : std::ranges::find_if(Gaps, [text](auto known) { return text.starts_with(known); });
        const bool isGap = gap != std::end(Gaps) || (c == group && group != '\0');
        const std::size_t size = gap == std::end(Gaps) ? 1 : gap->size();
        if (!isGap || !beginsWithThousands(text.substr(size)))
            number += c == ',' && mark == DecimalMark::Comma ? '.' : c;
        text.remove_prefix(size);
    }
    return number;
}

bool IsNumber(const QString& cell, DecimalMark mark) {
    const QByteArray utf8 = cell.trimmed().toUtf8();
    std::string_view text(utf8.constData(), static_cast<std::size_t>(utf8.size()));
    TakeUnit(text);
    return HertzOf(PlainNumber(text, mark), 1).has_value();
}

bool HasDecimals(const QString& cell, QChar mark) {
    // With a decimal comma the points may group thousands, too.
    static const QRegularExpression comma(
        QStringLiteral("^[\\d .'\u00A0\u202F\u2009\u2019]*\\d,\\d+( ?[GMk]?Hz)?$"));
    static const QRegularExpression point(
        QStringLiteral("^[\\d '\u00A0\u202F\u2009\u2019]*\\d\\.\\d+( ?[GMk]?Hz)?$"));
    return (mark == u',' ? comma : point).match(cell).hasMatch();
}

bool HasGroups(const QString& cell, QChar mark) {
    static const QRegularExpression commas(
        QStringLiteral("^\\d{1,3}((,\\d{3})+\\.\\d+|(,\\d{3}){2,})( ?[GMk]?Hz)?$"));
    static const QRegularExpression points(
        QStringLiteral("^\\d{1,3}((\\.\\d{3})+,\\d+|(\\.\\d{3}){2,})( ?[GMk]?Hz)?$"));
    return (mark == u',' ? commas : points).match(cell).hasMatch();
}

bool MayBeThousands(const QString& cell) {
    static const QRegularExpression grouped(QStringLiteral("^\\d{1,3},\\d{3}( ?[GMk]?Hz)?$"));
    return grouped.match(cell).hasMatch();
}

} // namespace Interchange
