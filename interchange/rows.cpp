#include "interchange/rows.h"

#include "host/base/textdecoder.h"

#include <QCoreApplication>
#include <QRegularExpression>

#include <algorithm>
#include <charconv>
#include <cmath>

namespace Interchange {

Rows::Rows(QIODevice& device, Reading& reading, FreqStoreXml::CsvDialect dialect, bool isUtf8)
    : m_reading(reading),
      m_input(device, reading.FileName()),
      m_scanner(m_input.Device(), reading.FileName(),
                {dialect.separator, dialect.quotes, dialect.lenient, true}) {
    if (isUtf8 || m_input.Form().encoding != TextEncoding::Windows1252)
        m_input.Tell(reading.Problems());
}

bool Rows::Next() {
    bool isRow = m_scanner.NextRow();
    while (isRow && IsBlank(m_scanner.Cells()))
        isRow = m_scanner.NextRow();
    if (m_scanner.IsCut())
        refuseAsCut();
    else if (isRow && !m_scanner.RowEnds())
        m_reading.GetAccount().Count(QT_TRANSLATE_NOOP("Account", "last line without an end"));
    return isRow && !m_scanner.IsCut();
}

bool IsBlank(const std::vector<std::string_view>& cells) {
    return std::ranges::all_of(cells, [](std::string_view cell) { return Trimmed(cell).empty(); });
}

void Rows::refuseAsCut() {
    m_reading.Refuse(Line(), QCoreApplication::translate("Readers", "is cut: the file ends within it"));
}

std::string_view Rows::Cell(std::size_t column) const {
    return column < Count() ? Trimmed(m_scanner.Cells()[column]) : std::string_view();
}

bool Rows::HasCells(std::size_t least, std::size_t most) {
    const std::size_t count = Count();
    if (count < least || count > most)
        m_reading.Refuse(
            Line(), (least + 1 == most
                         ? QCoreApplication::translate("Readers", "has %1 fields instead of %2 or %3")
                               .arg(count)
                               .arg(least)
                         : QCoreApplication::translate("Readers", "has %1 fields instead of %2").arg(count))
                        .arg(most));
    else if (count < most && !m_scanner.RowEnds())
        refuseAsCut();
    else
        return true;
    return false;
}

Heading::Heading(const Rows& rows) {
    for (std::size_t i = 0; i < rows.Count(); ++i)
        m_names.emplace_back(rows.Cell(i));
}

int Heading::Find(std::string_view heading) const {
    const auto found = std::find_if(m_names.begin(), m_names.end(), [&](const std::string& name) {
        return name.size() == heading.size() && qstrnicmp(name.data(), heading.data(), heading.size()) == 0;
    });
    return found == m_names.end() ? -1 : static_cast<int>(found - m_names.begin());
}

QString FirstContentLine(const QString& text) {
    static const QRegularExpression content(QStringLiteral("(?:^|[\\r\\n])[ \\t]*([^#\\s][^\\r\\n]*)"));
    return content.match(text).captured(1).trimmed();
}

QStringList FirstCells(const QString& text, QChar separator) {
    QStringList cells = FirstContentLine(text).split(separator);
    for (QString& cell : cells)
        cell = cell.remove(QLatin1Char('"')).trimmed();
    return cells;
}

bool BeginsWithHeadings(const QString& text, QChar separator, std::initializer_list<const char*> headings) {
    const QStringList cells = FirstCells(text, separator);
    if (cells.size() < static_cast<qsizetype>(headings.size()))
        return false;
    return std::equal(headings.begin(), headings.end(), cells.begin(),
                      [](const char* heading, const QString& cell) {
                          return cell.compare(QLatin1String(heading), Qt::CaseInsensitive) == 0;
                      });
}

void AppendCell(std::string& out, std::string_view utf8, char separator) {
    const bool isFramed = !utf8.empty() && (utf8.front() == ' ' || utf8.back() == ' ');
    const auto isSpecial = [separator](char c) { return c == separator || c == '"' || (c >= 0 && c < ' '); };
    if (!isFramed && std::ranges::none_of(utf8, isSpecial)) {
        out += utf8;
        return;
    }
    out += '"';
    for (const char c : utf8) {
        if (c < 0x7F && IsStrayControl(QLatin1Char(c))) {
            out += "\xEF\xBF\xBD"; // a file full of them would not be taken for text
            continue;
        }
        if (c == '"')
            out += '"';
        out += c;
    }
    out += '"';
}

void AppendCell(std::string& out, const QString& text, char separator) {
    const QByteArray utf8 = text.toUtf8();
    AppendCell(out, std::string_view(utf8.constData(), static_cast<std::size_t>(utf8.size())), separator);
}

bool AppendPlainCell(std::string& out, const QString& text, char separator) {
    const std::size_t begin = out.size();
    out += text.toStdString();
    bool isWhole = true;
    for (std::size_t i = begin; i < out.size(); ++i) {
        if (out[i] == separator || (out[i] >= 0 && out[i] < ' ')) {
            out[i] = ' ';
            isWhole = false;
        }
    }
    return isWhole;
}

void CountFraction(double hertz, Account& lost) {
    if (hertz != std::round(hertz))
        lost.Count(QT_TRANSLATE_NOOP("Account", "fractions of a Hz"));
}

void AppendWholeHertz(std::string& out, double hertz, Account& lost) {
    CountFraction(hertz, lost);
    AppendFixed(out, hertz, 0);
}

void AppendKilohertz(std::string& out, double hertz, Account& lost) {
    CountFraction(hertz, lost);
    AppendFixed(out, hertz / 1e3, 3);
}

void AppendMegahertz(std::string& out, double hertz, Account& lost) {
    CountFraction(hertz, lost);
    AppendFixed(out, hertz / 1e6, 6);
}

void AppendFixed(std::string& out, double value, int decimals) {
    char text[512]; // the longest double has 309 digits before the point
    const auto end = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, decimals).ptr;
    const std::string_view number(text, static_cast<std::size_t>(end - text));
    const bool isNegativeZero = value <= 0 && number.find_first_of("123456789") == number.npos;
    out += isNegativeZero && number.front() == '-' ? number.substr(1) : number;
}

} // namespace Interchange
