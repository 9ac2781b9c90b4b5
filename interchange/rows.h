#pragma once

#include "host/freqstorexml/csvscanner.h"
#include "host/report/textinput.h"
#include "interchange/reading.h"

#include <initializer_list>

namespace Interchange {

/// The rows of a table in a text file of any encoding.
class Rows {
public:
    /// Tells when the device's text is not UTF-8, unless files of the format may be Windows-1252.
    Rows(QIODevice& device, Reading& reading, FreqStoreXml::CsvDialect dialect, bool isUtf8 = true);

    /// Goes to the next row that has anything in it: spreadsheets write rows of nothing but separators. A
    /// last one that the file's end cuts within a character is refused; one without a line end is counted,
    /// since nothing tells whether its last cell is whole.
    [[nodiscard]] bool Next();
    qint64 Line() const { return m_scanner.Line(); }
    /// Whether the row has so many cells and the file does not end within it; one that has not is refused.
    /// Fewer cells than `most` are good only where a line end says that there are no others.
    [[nodiscard]] bool HasCells(std::size_t least, std::size_t most);
    std::size_t Count() const { return m_scanner.Cells().size(); }
    /// A cell without the blanks around it; empty when the row is shorter.
    std::string_view Cell(std::size_t column) const;
    /// The same for where a heading was found; empty for a column that is not there.
    std::string_view CellIn(int column) const {
        return column < 0 ? std::string_view() : Cell(static_cast<std::size_t>(column));
    }
    /// The first cell as it stands, for dialects in which it is the whole line.
    std::string_view First() const { return m_scanner.Cells().front(); }

private:
    void refuseAsCut();

    Reading& m_reading;
    REPORTGENERATOR::TextInput m_input;
    FreqStoreXml::CsvScanner m_scanner;
};

/// Whether nothing but blanks stands in the cells.
bool IsBlank(const std::vector<std::string_view>& cells);

/// A dialect whose rows are lines of one cell.
inline constexpr FreqStoreXml::CsvDialect WholeLines{'\n', false, false};

/// Where the columns of a table stand, by their headings in any order. Blanks and case do not count.
class Heading {
public:
    explicit Heading(const Rows& rows);

    /// Negative for a column that is not there.
    int Find(std::string_view heading) const;
    std::size_t Count() const { return m_names.size(); }
    const std::string& NameAt(std::size_t column) const { return m_names[column]; }

private:
    std::vector<std::string> m_names;
};

/// The first line of a text that has anything in it and is no comment, which begins with "#".
QString FirstContentLine(const QString& text);
/// The cells of that line, without quotes and the blanks around them.
QStringList FirstCells(const QString& text, QChar separator);
/// Whether the first line of the content begins with these headings, whatever blanks stand around them.
bool BeginsWithHeadings(const QString& text, QChar separator, std::initializer_list<const char*> headings);

/// Appends a text as a cell: in quotes when the separator, a quote or a line end stands in it.
void AppendCell(std::string& out, std::string_view utf8, char separator);
void AppendCell(std::string& out, const QString& text, char separator);
/// Appends a text for tables that know no quotes: what cannot stand in a cell becomes a blank; false when
/// something did.
[[nodiscard]] bool AppendPlainCell(std::string& out, const QString& text, char separator);
/// Counts the fraction of a frequency or bandwidth that is written in whole Hz.
void CountFraction(double hertz, Account& lost);
/// A cell whose content must be a whole number in Hz; counted when it has a fraction.
void AppendWholeHertz(std::string& out, double hertz, Account& lost);
/// The same in kHz with three decimals, and in MHz with six.
void AppendKilohertz(std::string& out, double hertz, Account& lost);
void AppendMegahertz(std::string& out, double hertz, Account& lost);
/// Appends a number with so many decimals, rounded.
void AppendFixed(std::string& out, double value, int decimals);

} // namespace Interchange
