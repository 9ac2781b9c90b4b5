#include "host/freqstorexml/csvscanner.h"

#include "host/report/textform.h"

#include <algorithm>

namespace FreqStoreXml {

namespace {
constexpr std::size_t MostCells = 1024;
}

CsvScanner::CsvScanner(QIODevice& device, const QString& name) : m_input(device, name) {}

bool CsvScanner::NextRow() {
    m_input.Skip(m_rowSize);
    m_rowSize = 0;
    if (!m_started) {
        m_started = true;
        if (m_input.Ensure(3) && m_input.Rest().starts_with("\xEF\xBB\xBF"))
            m_input.Skip(3);
        FindSeparator();
    }
    while (m_input.Ensure(1)) {
        const std::string_view row = TakeRow();
        if (!row.empty()) {
            Split(row);
            return true;
        }
        m_input.Skip(m_rowSize);
        m_rowSize = 0;
    }
    return false;
}

void CsvScanner::FindSeparator() {
    while (m_input.Rest().find('\n') == std::string_view::npos && m_input.More()) {
    }
    const std::string_view heading = m_input.Rest().substr(0, m_input.Rest().find('\n'));
    m_separator = std::ranges::count(heading, ';') > std::ranges::count(heading, ',') ? ';' : ',';
}

/// The row at hand without its line end. Line ends within quotes do not end it; since quotes within quotes
/// are doubled, it ends at the first line end with an even number of quotes before it.
std::string_view CsvScanner::TakeRow() {
    std::size_t end = 0;
    bool quoted = false;
    for (std::size_t from = 0;; from = end + 1) {
        end = m_input.Rest().find('\n', from);
        while (end == std::string_view::npos) {
            const std::size_t size = m_input.Rest().size();
            end = m_input.More() ? m_input.Rest().find('\n', size) : size;
        }
        const std::string_view rest = m_input.Rest();
        quoted ^= std::ranges::count(rest.substr(from, end - from), '"') % 2 != 0;
        m_rowSize = std::min(end + 1, rest.size());
        if (end == rest.size() && quoted)
            Fail(QStringLiteral("a quoted cell does not end"));
        if (quoted)
            continue;
        std::string_view row = rest.substr(0, end);
        if (row.ends_with('\r'))
            row.remove_suffix(1);
        if (row.find('\0') != std::string_view::npos || !REPORTGENERATOR::IsUtf8(row))
            Fail(QStringLiteral("this is not UTF-8 text"));
        return row;
    }
}

void CsvScanner::Split(std::string_view row) {
    m_cells.clear();
    m_unquoted.clear();
    for (std::size_t at = 0;; ++at) {
        if (m_cells.size() == MostCells)
            Fail(QStringLiteral("a row has more than %1 cells").arg(MostCells));
        if (at < row.size() && row[at] == '"') {
            at = SplitQuoted(row, at);
        } else {
            const std::size_t end = std::min(row.find(m_separator, at), row.size());
            m_cells.push_back(row.substr(at, end - at));
            if (m_cells.back().find('"') != std::string_view::npos)
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
    if (quote == std::string_view::npos || (quote + 1 < row.size() && row[quote + 1] != m_separator))
        Fail(QStringLiteral("there is text behind the quotes of a cell"));
    const std::string_view last = row.substr(from, quote - from);
    m_cells.push_back(unquoted ? std::string_view(unquoted->append(last)) : last);
    return quote + 1;
}

} // namespace FreqStoreXml
