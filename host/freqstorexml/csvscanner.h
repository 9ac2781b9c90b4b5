#pragma once

#include "host/report/byteinput.h"

#include <QString>

#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace FreqStoreXml {

/// How a table marks its cells.
struct CsvDialect {
    char separator = 0; ///< 0: the first row tells
    bool quotes = true; ///< else quotes are text, and each line is a row
    /// A quote within a cell that does not begin with one is text, and so is what stands behind the quotes of
    /// one that does. The separator must be given.
    bool lenient = false;
    /// A last row that ends within a character is given without that character, see `IsCut`; else it fails.
    bool takesCut = false;
};

/// Takes a CSV file (RFC 4180, UTF-8, lines ending with LF, CR or both) apart into rows of cells. The first
/// row tells the separator, unless the dialect does: ";" when it has more of them than of ",". Empty lines
/// are passed over.
class CsvScanner {
public:
    /// Reads from the caller's device; `name` stands for it in error texts.
    CsvScanner(QIODevice& device, const QString& name, CsvDialect dialect = {});

    /// Goes to the next row; false at the end. Throws RGException for what is not CSV or not UTF-8.
    [[nodiscard]] bool NextRow();
    /// The cells of the row in UTF-8, without quotes; valid until the next call of NextRow().
    const std::vector<std::string_view>& Cells() const { return m_cells; }
    /// Whether a line end follows the row: only the last one may lack it.
    bool RowEnds() const { return m_rowEnds; }
    /// Whether the file ends within a character of the row.
    bool IsCut() const { return m_isCut; }
    /// The line on which the row begins.
    qint64 Line() const { return m_input.Line(); }
    /// Throws RGException that names the line on which the row begins.
    [[noreturn]] void Fail(const QString& reason) const { m_input.Fail(reason); }

private:
    void FindSeparator(std::string_view heading);
    std::size_t FindEnd(std::size_t from, bool& quoted);
    std::string_view TakeRow();
    std::string_view WholeCharacters(std::string_view row);
    void Split(std::string_view row);
    std::size_t SplitQuoted(std::string_view row, std::size_t at);
    bool OpensQuotes(std::string_view row, std::size_t at) const;

    REPORTGENERATOR::ByteInput m_input;
    CsvDialect m_dialect; ///< its separator is known from the first row on
    bool m_rowEnds = true;
    bool m_isCut = false;
    bool m_isAscii = true;          ///< the current row
    std::size_t m_behindQuotes = 0; ///< place behind the last quote of the row at hand that closed a cell
    std::size_t m_rowSize = 0;      ///< of the current row with its line end; skipped by the next call
    std::vector<std::string_view> m_cells;
    std::deque<std::string> m_unquoted; ///< owns the cells that hold doubled quotes
};

} // namespace FreqStoreXml
