#include "interchange/table.h"

#include "host/freqstorexml/csvlayout.h"
#include "host/freqstorexml/csvoptions.h"
#include "interchange/rows.h"
#include "interchange/tabletext.h"

#include <QCoreApplication>
#include <QFile>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>

namespace Interchange {

namespace {

constexpr std::size_t RowsLookedAt = 50;

struct FieldWord {
    TableField field;
    const char* word;
    const char* headings; ///< a pattern of the headings that mean it
};
constexpr FieldWord Words[] = {
    {TableField::Frequency, "frequency",
     "^(rx\\W*)?(freq|frequenz|qrg|receive frequency|downlink|kanalfrequenz)"},
    {TableField::Bandwidth, "bandwidth", "^(band\\W?width|bandbreite|bw\\b|width|ch\\W*bw)"},
    {TableField::Mode, "mode", "^(mode\\b|modulation|demod|betriebsart|modus)"},
    {TableField::Name, "name", "^(name|call|station|label|alpha\\W*tag|ident|title|text)"},
    // Without any of these.
    {TableField::Name, "name", "^(comment|kommentar|description|beschreibung)"},
    {TableField::Notes, "notes",
     "^(notes?|remarks?|bemerkung|info|comment|kommentar|description|beschreibung)"},
};

QString nameOf(TextEncoding encoding) {
    switch (encoding) {
    case TextEncoding::Utf8:
        return QStringLiteral("UTF-8");
    case TextEncoding::Windows1252:
        return QStringLiteral("Windows-1252");
    case TextEncoding::Utf16LE:
    case TextEncoding::Utf16BE:
        return QStringLiteral("UTF-16");
    default:
        return QStringLiteral("UTF-32");
    }
}

class TableLooker {
public:
    TableLooker(QIODevice& device, const QString& name, const TableHints& hints) : m_hints(hints) {
        REPORTGENERATOR::TextInput input(device, name);
        m_look.encoding = nameOf(input.Form().encoding);
        m_look.choice.encoding = hints.encoding;
        m_look.choice.separator = hints.separator ? hints.separator : FindSeparator(input.Form().head);
        FreqStoreXml::CsvScanner scanner(input.Device(), name, {m_look.choice.separator, true, true, true});
        while (m_look.rows.size() < RowsLookedAt && scanner.NextRow() && !scanner.IsCut()) {
            QStringList cells;
            for (const std::string_view cell : scanner.Cells())
                cells << TextOf(Trimmed(cell));
            if (IsBlank(scanner.Cells()))
                continue;
            if (!IsPassedOver(scanner.Cells().front()))
                m_look.rows.push_back(cells);
            else if (m_look.rows.empty() && cells[0].startsWith(u'#'))
                m_marked = cells;
        }
        if (m_look.rows.empty())
            throw RGException(
                REPORTGENERATOR::ErrorText(name, 0, QCoreApplication::translate("Readers", "holds no rows")));
    }

    TableLook Look() {
        findDecimalMark();
        findHeadings();
        findFields();
        return m_look;
    }

private:
    void findDecimalMark() {
        int commas = 0;
        int points = 0;
        int groupsByComma = 0;
        int groupsByPoint = 0;
        for (const QStringList& row : m_look.rows) {
            for (const QString& cell : row) {
                commas += HasDecimals(cell, QLatin1Char(',')) ? 1 : 0;
                points += HasDecimals(cell, QLatin1Char('.')) ? 1 : 0;
                groupsByComma += HasGroups(cell, QLatin1Char(',')) ? 1 : 0;
                groupsByPoint += HasGroups(cell, QLatin1Char('.')) ? 1 : 0;
            }
        }
        const bool isComma = groupsByPoint > 0 || commas > points;
        const DecimalMark found = groupsByComma > groupsByPoint ? DecimalMark::PointAndGroups
                                  : isComma                     ? DecimalMark::Comma
                                                                : DecimalMark::Point;
        m_look.choice.decimals = m_hints.decimals.value_or(found);
    }
    /// Headings have no numbers; the rows below some.
    bool areHeadings(const QStringList& row) const {
        const DecimalMark mark = m_look.choice.decimals;
        return std::none_of(row.begin(), row.end(),
                            [mark](const QString& cell) { return IsNumber(cell, mark); });
    }
    /// Where no row can be the headings, they may stand in the last comment before the rows.
    void findMarkedHeadings(qsizetype columns) {
        if (m_marked.size() != columns || columns < 2 || areHeadings(m_look.rows.front()) ||
            !areHeadings(m_marked) || !m_hints.hasHeadings.value_or(true))
            return;
        const QString first = m_marked[0].mid(1).trimmed();
        m_marked[0] = first.isEmpty() ? m_marked[0] : first;
        m_look.choice.isHeadingMarked = true;
        m_look.rows.insert(m_look.rows.begin(), m_marked);
    }
    /// Rows of one text each above the headings, of which there are several, are what somebody calls the
    /// table.
    void passTitles() {
        const auto isOneText = [](const QStringList& row) { return row.size() - row.count(QString()) == 1; };
        const auto headings = std::ranges::find_if_not(m_look.rows, isOneText);
        const auto titles = headings - m_look.rows.begin();
        if (headings == m_look.rows.end() || !m_hints.hasHeadings.value_or(true) ||
            !std::all_of(m_look.rows.begin(), headings + 1,
                         [this](const QStringList& row) { return areHeadings(row); }))
            return;
        m_look.choice.titleRows = static_cast<int>(titles);
        m_look.rows.erase(m_look.rows.begin(), headings);
    }
    /// A row below the headings that names units belongs to them.
    void takeUnitRow() {
        const QStringList units = m_look.rows.empty() ? QStringList() : m_look.rows.front();
        if (std::ranges::none_of(units, IsUnit) || !areHeadings(units))
            return;
        m_look.choice.hasUnitRow = true;
        m_look.rows.erase(m_look.rows.begin());
        for (qsizetype i = 0; i < units.size() && i < m_look.headings.size(); ++i)
            m_look.headings[i] = (m_look.headings[i] + QLatin1Char(' ') + units[i]).trimmed();
    }
    void findHeadings() {
        passTitles();
        qsizetype columns = 0;
        for (const QStringList& row : m_look.rows)
            columns = std::max(columns, row.size());
        findMarkedHeadings(columns);
        const QStringList first = m_look.rows.front();
        m_look.choice.hasHeadings = m_hints.hasHeadings.value_or(areHeadings(first));
        for (qsizetype i = 0; i < columns; ++i) {
            const QString heading = m_look.choice.hasHeadings ? InOneLine(first.value(i)) : QString();
            m_look.headings << (heading.isEmpty() ? QString::number(i + 1) : heading);
        }
        if (!m_look.choice.hasHeadings)
            return;
        m_look.rows.erase(m_look.rows.begin());
        takeUnitRow();
    }
    void findFields() {
        std::vector<TableColumn>& columns = m_look.choice.columns;
        columns.resize(static_cast<std::size_t>(m_look.headings.size()));
        for (const FieldWord& word : Words) {
            if (std::ranges::find(columns, word.field, &TableColumn::field) != columns.end())
                continue;
            const QRegularExpression pattern(QString::fromLatin1(word.headings),
                                             QRegularExpression::CaseInsensitiveOption);
            for (qsizetype i = 0; i < m_look.headings.size(); ++i) {
                TableColumn& column = columns[static_cast<std::size_t>(i)];
                if (column.field != TableField::None || !pattern.match(m_look.headings[i]).hasMatch())
                    continue;
                column.field = word.field;
                column.hertzPerUnit = hasUnit(word.field) ? m_look.SureUnit(i) : 0;
                break;
            }
        }
        m_look.proposal = m_look.choice;
        proposeFrequency();
        if (!m_look.choice.hasHeadings)
            proposeTexts();
        for (qsizetype i = 0; i < m_look.headings.size(); ++i) {
            TableColumn& column = m_look.proposal.columns[static_cast<std::size_t>(i)];
            if (hasUnit(column.field) && column.hertzPerUnit == 0)
                column.hertzPerUnit = m_look.SureUnit(i);
            if (hasUnit(column.field) && column.hertzPerUnit == 0)
                column.hertzPerUnit = m_look.LikelyUnit(i, column.field);
        }
    }
    static bool hasUnit(TableField field) {
        return field == TableField::Frequency || field == TableField::Bandwidth;
    }
    /// Without headings, the column of known modes, and the first other one of texts as names.
    void proposeTexts() {
        std::vector<TableColumn>& columns = m_look.proposal.columns;
        for (qsizetype i = 0; i < m_look.headings.size(); ++i) {
            bool areModes = true;
            bool areTexts = true;
            bool isEmpty = true;
            for (const QStringList& row : m_look.rows) {
                const QString cell = row.value(i);
                areModes = areModes && ModeOf(ModeWords::Chirp, cell.toStdString()).isKnown;
                areTexts = areTexts && !IsNumber(cell, m_look.choice.decimals);
                isEmpty = isEmpty && cell.isEmpty();
            }
            const TableField field = areModes ? TableField::Mode : TableField::Name;
            if (areTexts && !isEmpty &&
                std::ranges::find(columns, field, &TableColumn::field) == columns.end())
                columns[static_cast<std::size_t>(i)].field = field;
        }
    }
    /// Whether a column counts the rows.
    bool isCounter(qsizetype column) const {
        const auto numberAt = [&](std::size_t row) { return m_look.rows[row].value(column).toInt(); };
        for (std::size_t row = 1; row < m_look.rows.size(); ++row) {
            if (numberAt(row) != numberAt(row - 1) + 1)
                return false;
        }
        return m_look.rows.size() > 1;
    }
    /// Without a heading that means it, the first column whose cells are all numbers and count no rows.
    void proposeFrequency() {
        std::vector<TableColumn>& columns = m_look.proposal.columns;
        const auto isFrequency = [](const TableColumn& column) {
            return column.field == TableField::Frequency;
        };
        if (std::any_of(columns.begin(), columns.end(), isFrequency))
            return;
        for (qsizetype i = 0; i < m_look.headings.size(); ++i) {
            if (columns[static_cast<std::size_t>(i)].field == TableField::None && !m_look.rows.empty() &&
                !isCounter(i) &&
                std::all_of(m_look.rows.begin(), m_look.rows.end(), [&](const QStringList& row) {
                    return IsNumber(row.value(i), m_look.choice.decimals);
                })) {
                columns[static_cast<std::size_t>(i)].field = TableField::Frequency;
                return;
            }
        }
    }

    const TableHints& m_hints;
    TableLook m_look;
    QStringList m_marked; ///< the last comment before the first row
};

} // namespace

QString TableFieldWord(TableField field) {
    const auto* const found = std::find_if(std::begin(Words), std::end(Words),
                                           [field](const FieldWord& word) { return word.field == field; });
    return found == std::end(Words) ? QString() : QString::fromLatin1(found->word);
}

QString TableChoice::WhyOpen(const QStringList& headings) const {
    const auto frequency = std::find_if(columns.begin(), columns.end(), [](const TableColumn& column) {
        return column.field == TableField::Frequency;
    });
    if (frequency == columns.end())
        return QCoreApplication::translate("Readers", "no column is known to hold the frequency");
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const bool hasUnit =
            columns[i].field == TableField::Frequency || columns[i].field == TableField::Bandwidth;
        if (hasUnit && columns[i].hertzPerUnit == 0)
            return QCoreApplication::translate("Readers", "nothing tells the unit of column \"%1\"")
                .arg(headings.value(static_cast<qsizetype>(i)));
    }
    return QString();
}

QString TableChoice::ToText(const QStringList& headings) const {
    QStringList texts;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const TableColumn& column = columns[i];
        if (column.field == TableField::None)
            continue;
        const auto place = static_cast<qsizetype>(i);
        const QString heading = headings.value(place);
        const bool isName =
            headings.indexOf(heading) == place && !heading.contains(u',') && !heading.contains(u':');
        QString text =
            TableFieldWord(column.field) + QLatin1Char('=') + (isName ? heading : QString::number(place + 1));
        if (column.field == TableField::Frequency || column.field == TableField::Bandwidth)
            text += column.hertzPerUnit == TableColumn::InEachCell
                        ? QString()
                        : QLatin1Char(':') + NameOfUnit(column.hertzPerUnit);
        texts << text;
    }
    return texts.join(QLatin1Char(','));
}

double TableLook::SureUnit(qsizetype column) const {
    if (const double unit = UnitInHeading(headings[column]); unit > 0)
        return mayBeGrouped(column, unit) ? 0 : unit;
    const bool areNamed = !rows.empty() && std::all_of(rows.begin(), rows.end(), [&](const QStringList& row) {
        const std::string cell = row.value(column).toStdString();
        std::string_view number = cell;
        return cell.empty() || TakeUnit(number) > 0;
    });
    return areNamed ? TableColumn::InEachCell : 0;
}

/// Decimals of a kHz that are all three digits long may as well be the thousands of another country.
bool TableLook::mayBeGrouped(qsizetype column, double unit) const {
    constexpr double LargestGrouped = 1000; // Hz
    bool areGrouped = false;
    for (const QStringList& row : rows) {
        const QString cell = row.value(column);
        if (cell.contains(u',') && !MayBeThousands(cell))
            return false;
        areGrouped = areGrouped || cell.contains(u',');
    }
    return areGrouped && choice.decimals == DecimalMark::Comma && unit <= LargestGrouped;
}

double TableLook::LikelyUnit(qsizetype column, TableField field) const {
    double least = 1e300;
    double greatest = 0;
    bool areWhole = true;
    for (const QStringList& row : rows) {
        const std::string number = PlainNumber(row.value(column).toStdString(), choice.decimals);
        if (const std::optional<double> value = HertzOf(number, 1); value && *value > 0) {
            least = std::min(least, *value);
            greatest = std::max(greatest, *value);
            areWhole = areWhole && number.find('.') == std::string::npos;
        }
    }
    constexpr double LeastHertz = 9000; // where radio begins
    constexpr double GreatestMegahertz = 40000;
    constexpr double GreatestKilohertz = 250; // of a bandwidth
    if (greatest == 0)
        return 0;
    if (field == TableField::Bandwidth)
        return greatest <= GreatestKilohertz ? 1000 : 1;
    if (areWhole && least >= 100 * LeastHertz)
        return 1;
    if (!areWhole && greatest < GreatestMegahertz && least < 1000)
        return 1e6;
    return least * 1000 >= LeastHertz && greatest <= 100000 ? 1000 : areWhole ? 1 : 1e6;
}

bool TableLook::MayHoldFrequencies() const {
    const QString first = choice.hasHeadings || rows.empty() ? headings.value(0) : rows.front().value(0);
    const bool isMarkup = first.startsWith(u'<') || first.startsWith(u'{') || first.startsWith(u'[');
    return !isMarkup && (headings.size() > 1 || std::any_of(proposal.columns.begin(), proposal.columns.end(),
                                                            [](const TableColumn& column) {
                                                                return column.field == TableField::Frequency;
                                                            }));
}

bool TableLook::IsOwn() const {
    using FreqStoreXml::CsvLayout;
    const CsvLayout& ours = CsvLayout::Of(FreqStoreXml::FrequencyStoreListHelper::XmlList);
    const qsizetype frequency = headings.indexOf(QLatin1String("Frequency"));
    for (qsizetype i = 0; i < headings.size(); ++i) {
        const std::string name = headings[i].toStdString();
        const bool isNone = choice.hasHeadings && headings[i] == QString::number(i + 1);
        if (!isNone && !ours.Find(name) && !CsvLayout::OfDetectionResults().Find(name) &&
            name != FreqStoreXml::CsvOptions::SafeMark)
            return false;
    }
    constexpr double LeastLarge = 30'000; // Hz; below it nobody listens, and in MHz it is all that there is
    bool areSmall = true;
    bool haveDecimals = false;
    for (const QStringList& row : rows) {
        const double number = row.value(frequency).toDouble();
        areSmall = areSmall && number < LeastLarge;
        haveDecimals = haveDecimals || number != std::trunc(number);
    }
    return choice.titleRows == 0 && frequency >= 0 && !(areSmall && haveDecimals);
}

TableLook LookAtTable(QIODevice& device, const QString& name, const TableHints& hints) {
    return InEncoding(device, hints.encoding,
                      [&](QIODevice& text) { return TableLooker(text, name, hints).Look(); });
}

TableLook LookAtTable(const QString& path, const TableHints& hints) {
    QFile file(path);
    REPORTGENERATOR::OpenForReading(file);
    return LookAtTable(file, path, hints);
}

std::vector<TableOption> ParseTableOptions(const QString& text) {
    std::vector<TableOption> options;
    for (const QString& part : text.split(QLatin1Char(','))) {
        const qsizetype equals = part.indexOf(QLatin1Char('='));
        const QString word = part.left(equals).trimmed();
        const auto* const known =
            std::find_if(std::begin(Words), std::end(Words), [&](const FieldWord& field) {
                return word == QLatin1String(field.word) ||
                       (field.field == TableField::Name && word == QLatin1String("comment"));
            });
        if (equals <= 0 || known == std::end(Words))
            throw RGException(
                QStringLiteral("\"%1\" is no column: frequency, bandwidth, mode, name or notes, \"=\" and a "
                               "heading")
                    .arg(part));
        TableOption option{known->field, part.mid(equals + 1).trimmed(), 0};
        if (std::ranges::find(options, option.field, &TableOption::field) != options.end())
            throw RGException(QStringLiteral("\"%1\" stands there twice").arg(word));
        if (const qsizetype colon = option.heading.lastIndexOf(QLatin1Char(':')); colon > 0) {
            const QString unit = option.heading.mid(colon + 1);
            option.hertzPerUnit = HertzOfUnit(unit);
            if (option.hertzPerUnit == 0)
                throw RGException(QStringLiteral("\"%1\" is no unit: Hz, kHz, MHz or GHz").arg(unit));
            option.heading.truncate(colon);
        }
        options.push_back(option);
    }
    return options;
}

void TakeTableOptions(const QString& text, const TableLook& look, TableChoice& choice) {
    const QStringList& headings = look.headings;
    choice.columns.assign(static_cast<std::size_t>(headings.size()), {});
    for (const TableOption& option : ParseTableOptions(text)) {
        qsizetype column = headings.indexOf(option.heading);
        if (column < 0)
            column = option.heading.toInt() - 1;
        if (column < 0 || column >= headings.size())
            throw RGException(QStringLiteral("there is no column \"%1\", but %2")
                                  .arg(option.heading, headings.join(QStringLiteral(", "))));
        TableColumn& chosen = choice.columns[static_cast<std::size_t>(column)];
        if (chosen.field != TableField::None)
            throw RGException(QStringLiteral("column \"%1\" stands there twice").arg(headings[column]));
        const bool hasUnit = option.field == TableField::Frequency || option.field == TableField::Bandwidth;
        chosen = {option.field,
                  hasUnit && option.hertzPerUnit == 0 ? look.SureUnit(column) : option.hertzPerUnit};
    }
}

namespace {

/// Makes stations of the rows of a table.
class TableReader {
public:
    TableReader(const TableChoice& choice, Reading& reading) : m_choice(choice), m_reading(reading) {
        for (std::size_t i = 0; i < choice.columns.size(); ++i) {
            if (!choice.hasHeadings || choice.columns[i].field != TableField::None)
                m_columns = i + 1;
        }
    }

    void TakeHeadings(const Rows& rows) {
        for (std::size_t i = 0; i < rows.Count(); ++i)
            m_headings.emplace_back(rows.Cell(i));
    }
    void Take(Rows& rows) {
        if (!isWhole(rows))
            return;
        Station station{.line = rows.Line()};
        m_withoutUnit = {};
        for (std::size_t i = 0; i < rows.Count(); ++i)
            takeCell(i, rows.Cell(i), station);
        if (m_withoutUnit.empty())
            m_reading.Take(station);
        else
            m_reading.Refuse(
                station.line,
                QCoreApplication::translate("Readers", "\"%1\" has no unit").arg(TextOf(m_withoutUnit)));
    }

private:
    /// Between commas a cell too many may be the decimals of a frequency ("121,5").
    bool isWhole(Rows& rows) const {
        return m_choice.separator != ',' || rows.HasCells(1, std::max(m_columns, m_headings.size()));
    }
    void takeCell(std::size_t place, std::string_view cell, Station& station) {
        const TableColumn column = place < m_choice.columns.size() ? m_choice.columns[place] : TableColumn();
        switch (column.field) {
        case TableField::None:
            m_reading.Extra(nameOf(place), cell);
            break;
        case TableField::Frequency:
            station.frequency = number(cell, column, m_frequency, station.hertzPerUnit);
            break;
        case TableField::Bandwidth:
            station.bandwidth = number(cell, column, m_bandwidth, station.hertzPerBandwidth);
            break;
        case TableField::Mode:
            station.mode = cell;
            break;
        case TableField::Name:
            station.name = cell;
            break;
        case TableField::Notes:
            station.notes = cell;
            break;
        }
    }
    std::string nameOf(std::size_t place) const {
        const bool isNamed = place < m_headings.size() && !m_headings[place].empty();
        return isNamed ? m_headings[place] : "column " + std::to_string(place + 1);
    }
    std::string_view number(std::string_view cell, const TableColumn& column, std::string& plain,
                            double& hertzPerUnit) {
        std::string_view digits = cell;
        const double unit = TakeUnit(digits);
        hertzPerUnit = unit > 0 ? unit : column.hertzPerUnit;
        if (hertzPerUnit < 0 && !digits.empty())
            m_withoutUnit = cell;
        plain = PlainNumber(digits, m_choice.decimals);
        return plain;
    }

    const TableChoice& m_choice;
    Reading& m_reading;
    std::size_t m_columns = 0; ///< those that hold anything
    std::vector<std::string> m_headings;
    std::string m_frequency;
    std::string m_bandwidth;
    std::string_view m_withoutUnit; ///< cell of the row at hand
};

} // namespace

Account ReadTable(QIODevice& device, const QString& name, const TableChoice& choice,
                  const ReadOptions& options, const TakeEntry& take) {
    Reading reading(name, options, take);
    InEncoding(device, choice.encoding, [&](QIODevice& text) {
        Rows rows(text, reading, {choice.separator, true, true});
        TableReader reader(choice, reading);
        int titles = choice.titleRows;
        bool isHeading = choice.hasHeadings;
        bool isUnits = choice.hasUnitRow;
        while (rows.Next()) {
            const bool isMarkedHeading =
                isHeading && choice.isHeadingMarked && rows.Count() == choice.columns.size();
            if (IsPassedOver(rows.First()) && !isMarkedHeading)
                continue;
            if (titles > 0) {
                --titles;
                reading.GetAccount().Count(QT_TRANSLATE_NOOP("Account", "titles"));
            } else if (std::exchange(isHeading, false)) {
                reader.TakeHeadings(rows);
            } else if (!std::exchange(isUnits, false)) {
                reader.Take(rows);
            }
        }
    });
    return reading.GetAccount();
}

Account ReadTable(const QString& path, const TableChoice& choice, const ReadOptions& options,
                  const TakeEntry& take) {
    Account account;
    REPORTGENERATOR::ReadWhole(path,
                               [&](QFile& file) { account = ReadTable(file, path, choice, options, take); });
    return account;
}

} // namespace Interchange
