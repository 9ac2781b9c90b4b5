#include "host/freqstorexml/csvscanner.h"

#include "host/base/textdecoder.h"

#include <algorithm>
#include <utility>

namespace FreqStoreXml {

namespace {
constexpr std::size_t MostCells = 1024;
constexpr char EndOfText = 0x1A;
} // namespace

CsvScanner::CsvScanner(QIODevice& device, const QString& name, CsvDialect dialect)
    : m_input(device, name), m_dialect(dialect) {}

bool CsvScanner::NextRow() {
    m_input.Skip(m_rowSize);
    m_rowSize = 0;
    while (m_input.Ensure(1)) {
        const std::string_view row = TakeRow();
        if (!row.empty()) {
            if (m_dialect.separator == 0)
                FindSeparator(row);
            Split(row);
            return true;
        }
        m_input.Skip(m_rowSize);
        m_rowSize = 0;
    }
    return false;
}

void CsvScanner::FindSeparator(std::string_view heading) {
    m_dialect.separator = std::ranges::count(heading, ';') > std::ranges::count(heading, ',') ? ';' : ',';
}

/// Whether a quote outside of quotes opens some.
bool CsvScanner::OpensQuotes(std::string_view row, std::size_t at) const {
    if (!m_dialect.lenient)
        return m_dialect.quotes;
    // One behind another that closed is the second of two that stand for one.
    return m_dialect.quotes && (at == 0 || row[at - 1] == m_dialect.separator || at == m_behindQuotes);
}

/// Where the row ends whose bytes from an offset on are still to be looked at; the size of the rest when it
/// has no end there. Line ends within quotes end no row; since quotes within quotes are doubled, an even
/// number of quotes stands before its end.
std::size_t CsvScanner::FindEnd(std::size_t from, bool& quoted) {
    const std::string_view rest = m_input.Rest();
    for (; from < rest.size(); ++from) {
        if (rest[from] > '"') // most are, and need one look only
            continue;
        m_isAscii = m_isAscii && (rest[from] & 0x80) == 0;
        if (rest[from] == '"') {
            m_behindQuotes = quoted ? from + 1 : m_behindQuotes;
            quoted = !quoted && OpensQuotes(rest, from);
        }
        if (!quoted && (rest[from] == '\n' || rest[from] == '\r'))
            break;
    }
    return from;
}

/// The row at hand without its line end, and without the Ctrl-Z that old systems put at the end of a file.
std::string_view CsvScanner::TakeRow() {
    bool quoted = false;
    m_behindQuotes = 0;
    m_isAscii = true;
    std::size_t end = FindEnd(0, quoted);
    while (end == m_input.Rest().size() && m_input.More())
        end = FindEnd(end, quoted);
    m_rowEnds = end < m_input.Rest().size();
    if (!m_rowEnds && quoted)
        Fail(QStringLiteral("a quoted cell does not end"));
    m_rowSize = end;
    if (m_rowEnds)
        m_rowSize += m_input.Ensure(end + 2) && m_input.Rest().substr(end).starts_with("\r\n") ? 2 : 1;
    std::string_view row = m_input.Rest().substr(0, end);
    if (!m_rowEnds && row.ends_with(EndOfText)) {
        row = row.substr(0, row.find_last_not_of(EndOfText) + 1);
        m_rowEnds = true;
    }
    return m_isAscii ? row : WholeCharacters(row);
}

/// The row without a character that the file's end cuts; throws for any other that is none.
std::string_view CsvScanner::WholeCharacters(std::string_view row) {
    const std::size_t good = Utf8Length(row);
    if (good == row.size())
        return row;
    m_isCut = m_dialect.takesCut && !m_rowEnds && BeginsCharacter(row.substr(good));
    if (!m_isCut)
        Fail(QStringLiteral("this is not UTF-8 text"));
    return row.substr(0, good);
}

void CsvScanner::Split(std::string_view row) {
    m_cells.clear();
    m_unquoted.clear();
    for (std::size_t at = 0;; ++at) {
        if (m_cells.size() == MostCells)
            Fail(QStringLiteral("a row has more than %1 cells").arg(MostCells));
        if (m_dialect.quotes && at < row.size() && row[at] == '"') {
            at = SplitQuoted(row, at);
        } else {
            const std::size_t end = std::min(row.find(m_dialect.separator, at), row.size());
            m_cells.push_back(row.substr(at, end - at));
            if (m_dialect.quotes && !m_dialect.lenient && m_cells.back().find('"') != std::string_view::npos)
                Fail(QStringLiteral("there is a quote within a cell that is not quoted"));
            at = end;
        }
        if (at == row.size())
            return;
    }
}

/// Adds the quoted cell that begins at `at`; the result is where it ends.
std::size_t CsvScanner::SplitQuoted(std::string_view row, std::size_t at) {
    std::string* unquoted = nullptr;
    std::size_t from = at + 1;
    std::size_t quote = row.find('"', from);
    for (; quote != std::string_view::npos && row.substr(quote + 1).starts_with('"');
         quote = row.find('"', from)) {
        if (!unquoted)
            unquoted = &m_unquoted.emplace_back();
        unquoted->append(row, from, quote + 1 - from);
        from = quote + 2;
    }
    const std::string_view last = row.substr(from, std::min(quote, row.size()) - from);
    const std::size_t end = quote == std::string_view::npos ? quote : row.find(m_dialect.separator, quote);
    const std::string_view behind =
        quote == std::string_view::npos ? "" : row.substr(quote + 1, std::min(end, row.size()) - quote - 1);
    if (!m_dialect.lenient && (quote == std::string_view::npos || !behind.empty()))
        Fail(QStringLiteral("there is text behind the quotes of a cell"));
    if (!behind.empty() && !unquoted)
        unquoted = &m_unquoted.emplace_back();
    m_cells.push_back(unquoted ? std::string_view(unquoted->append(last).append(behind)) : last);
    return std::min(end, row.size());
}

} // namespace FreqStoreXml
