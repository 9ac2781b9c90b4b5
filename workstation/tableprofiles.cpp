#include "workstation/tableprofiles.h"

#include "host/gui/listsettings.h"

#include <QCryptographicHash>

namespace TableProfiles {

using Interchange::TableChoice;
using Interchange::TableColumn;
using Interchange::TableField;
using Interchange::TableLook;

namespace {

const QString SettingName = QStringLiteral("Import/Tables");
/// Parts of a profile: headings, separator, headings there, decimal mark, encoding, columns.
constexpr qsizetype Parts = 6;
constexpr char BetweenParts = '|';

QString keyOf(const TableLook& look) {
    return QString::fromLatin1(
        QCryptographicHash::hash(look.headings.join(QChar(u'\x1f')).toUtf8(), QCryptographicHash::Sha1)
            .toHex());
}

QStringList load() {
    return ListSettings::LoadText(SettingName).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

QString toText(const QString& key, const TableChoice& choice) {
    QStringList columns;
    for (const TableColumn& column : choice.columns)
        columns << QStringLiteral("%1:%2").arg(static_cast<int>(column.field)).arg(column.hertzPerUnit);
    return QStringList{key,
                       QString::number(static_cast<int>(choice.separator)),
                       QString::number(choice.hasHeadings),
                       QString::number(static_cast<int>(choice.decimals)),
                       QString::fromLatin1(choice.encoding),
                       columns.join(QLatin1Char(','))}
        .join(QLatin1Char(BetweenParts));
}

/// Nothing for what is none: settings are files that anybody may edit.
std::optional<TableColumn> toColumn(const QString& text) {
    const int field = text.section(QLatin1Char(':'), 0, 0).toInt();
    bool isNumber = false;
    const double unit = text.section(QLatin1Char(':'), 1).toDouble(&isNumber);
    if (!isNumber || field < 0 || field > static_cast<int>(TableField::Notes))
        return std::nullopt;
    return TableColumn{static_cast<TableField>(field), unit};
}

std::optional<TableChoice> toChoice(const QString& text) {
    const QStringList parts = text.split(QLatin1Char(BetweenParts));
    if (parts.size() != Parts)
        return std::nullopt;
    TableChoice choice;
    const int separator = parts[1].toInt();
    if (separator <= 0 || separator > 127)
        return std::nullopt;
    choice.separator = static_cast<char>(separator);
    choice.hasHeadings = parts[2] == QLatin1String("1");
    const int decimals = parts[3].toInt();
    if (decimals < 0 || decimals > static_cast<int>(Interchange::DecimalMark::PointAndGroups))
        return std::nullopt;
    choice.decimals = static_cast<Interchange::DecimalMark>(decimals);
    choice.encoding = parts[4].toLatin1();
    for (const QString& column : parts[5].split(QLatin1Char(','))) {
        const std::optional<TableColumn> found = toColumn(column);
        if (!found)
            return std::nullopt;
        choice.columns.push_back(*found);
    }
    return choice;
}

} // namespace

std::optional<TableChoice> Find(const TableLook& atFirst) {
    if (!atFirst.choice.hasHeadings)
        return std::nullopt;
    const QString key = keyOf(atFirst) + QLatin1Char(BetweenParts);
    for (const QString& line : load()) {
        if (line.startsWith(key))
            return toChoice(line);
    }
    return std::nullopt;
}

void Remember(const TableLook& atFirst, const TableChoice& choice) {
    if (!atFirst.choice.hasHeadings)
        return;
    const QString key = keyOf(atFirst);
    QStringList lines = load();
    lines.removeIf([&](const QString& line) { return line.startsWith(key); });
    lines.prepend(toText(key, choice));
    ListSettings::SaveText(SettingName, lines.mid(0, Most).join(QLatin1Char('\n')));
}

} // namespace TableProfiles
