#include "interchange/tabletext.h"

#include <QStringList>

#include <algorithm>
#include <map>

namespace Interchange {

namespace {

constexpr qsizetype RowsCounted = 50;

/// How often a separator stands in a row outside of quotes.
qsizetype countOf(QChar separator, const QString& row) {
    qsizetype count = 0;
    bool isQuoted = false;
    for (const QChar c : row) {
        isQuoted = isQuoted != (c == u'"');
        count += c == separator && !isQuoted ? 1 : 0;
    }
    return count;
}

/// The first rows that have anything in them. Line ends within quotes end none, unless a quote that nothing
/// closes would make one row of all.
QStringList firstRows(const QString& head, bool joins) {
    QStringList rows;
    QString row;
    for (const QString& line : QString(head).replace(u'\r', u'\n').split(u'\n')) {
        row += line;
        if (joins && row.count(u'"') % 2 != 0)
            continue;
        if (!row.trimmed().isEmpty() && !row.startsWith(QLatin1Char('#')))
            rows << row;
        row.clear();
        if (rows.size() == RowsCounted)
            break;
    }
    return rows.isEmpty() && joins ? firstRows(head, false) : rows;
}

} // namespace

bool IsPassedOver(std::string_view first) {
    constexpr std::string_view Separator = "sep=";
    return first.starts_with('#') || (first.starts_with(Separator) && first.size() <= Separator.size() + 1);
}

char FindSeparator(const QString& head) {
    const QStringList rows = firstRows(head, true);
    char best = ',';
    qsizetype most = 0;
    for (const char separator : {'\t', ';', ',', '|'}) {
        std::map<qsizetype, qsizetype> rowsByCount;
        for (const QString& row : rows)
            ++rowsByCount[countOf(QLatin1Char(separator), row)];
        rowsByCount.erase(0);
        for (const auto& [count, number] : rowsByCount) {
            if (number * 1000 + count > most && number * 2 > rows.size()) {
                most = number * 1000 + count;
                best = separator;
            }
        }
    }
    return best;
}

NamedEncoding::NamedEncoding(QIODevice& source, const QByteArray& encoding)
    : m_source(source), m_decoder(encoding.constData()) {
    open(QIODevice::ReadOnly);
}

qint64 NamedEncoding::readData(char* data, qint64 size) {
    constexpr qint64 BlockBytes = 64 * 1024;
    while (m_text.isEmpty() && !m_source.atEnd())
        m_text = QString(m_decoder.decode(m_source.read(BlockBytes))).toUtf8();
    const qint64 count = std::min<qint64>(size, m_text.size());
    std::copy_n(m_text.constData(), count, data);
    m_text.remove(0, count);
    return count;
}

} // namespace Interchange
