#include "host/base/query.h"

#include "host/base/frequencytext.h"
#include "host/base/numbers.h"

#include <QCoreApplication>

#include <algorithm>

namespace {

/// The number that a cell shows, with at most a unit behind it ("-90 dBµV"); nothing for other texts.
std::optional<double> shownNumber(QStringView cell) {
    cell = cell.trimmed();
    qsizetype end = 0;
    while (end < cell.size() && (cell[end].isDigit() || QStringView(u"+-.").contains(cell[end])))
        ++end;
    const QStringView unit = cell.mid(end).trimmed();
    const bool isUnit = std::none_of(unit.begin(), unit.end(),
                                     [](QChar c) { return c.isSpace() || c.isDigit() || c == u':'; });
    double number = 0;
    if (!isUnit || !Quor::ParseDouble(cell.left(end), number))
        return std::nullopt;
    return number;
}

std::optional<double> numberOf(const QString& cell, bool inHertz) {
    double hertz = 0;
    if (!inHertz)
        return shownNumber(cell);
    return Quor::ParseFrequency(cell, hertz) ? std::optional(hertz) : std::nullopt;
}

} // namespace

bool Query::Term::LooksAt(int column) const {
    return !columns || std::find(columns->begin(), columns->end(), column) != columns->end();
}

bool Query::Term::IsIn(const QString& cell) const {
    if (range) {
        if (const std::optional<double> number = numberOf(cell, range->inHertz))
            return range->from <= *number && *number <= range->to;
    }
    return !word.isEmpty() && cell.contains(word, wordCase);
}

bool Query::Term::Holds(int columnCount, const Cells& cell) const {
    const auto isThere = [&](int column) { return IsIn(cell(column)); };
    if (columns)
        return std::any_of(columns->begin(), columns->end(), isThere) != isNegated;
    for (int column = 0; column < columnCount; ++column) {
        if (isThere(column))
            return !isNegated;
    }
    return isNegated;
}

bool Query::Matches(const Cells& cell) const {
    if (m_alternatives.empty())
        return true;
    if (m_alternatives.size() == 1 && m_alternatives.front().size() == 1)
        return m_alternatives.front().front().Holds(m_columnCount, cell);
    // Several terms look at the same cells, whose texts may have to be made.
    std::vector<std::optional<QString>> made(static_cast<size_t>(m_columnCount));
    const Cells once = [&](int column) {
        std::optional<QString>& text = made[static_cast<size_t>(column)];
        if (!text)
            text = cell(column);
        return *text;
    };
    return std::any_of(m_alternatives.begin(), m_alternatives.end(), [&](const Terms& terms) {
        return std::all_of(terms.begin(), terms.end(),
                           [&](const Term& term) { return term.Holds(m_columnCount, once); });
    });
}

bool Query::Narrows(const Query& before) const {
    if (before.m_alternatives.size() != 1 || m_alternatives.size() != 1)
        return false;
    const Terms& now = m_alternatives.front();
    const Terms& then = before.m_alternatives.front();
    return std::all_of(then.begin(), then.end(), [&](const Term& old) {
        return old.IsPlainWord() && std::any_of(now.begin(), now.end(), [&](const Term& term) {
                   return term.IsPlainWord() && term.word.contains(old.word, Qt::CaseInsensitive);
               });
    });
}

std::vector<Query::Hit> Query::HitsIn(const QString& cell, int column) const {
    std::vector<Hit> hits;
    for (const Terms& terms : m_alternatives) {
        for (const Term& term : terms) {
            if (term.isNegated || !term.LooksAt(column) || !term.IsIn(cell))
                continue;
            if (term.range)
                return {{0, cell.size()}};
            for (qsizetype at = 0; (at = cell.indexOf(term.word, at, term.wordCase)) >= 0;
                 at += term.word.size())
                hits.push_back({at, term.word.size()});
        }
    }
    return hits;
}

QString Query::Describe() const {
    QStringList alternatives;
    for (const Terms& terms : m_alternatives) {
        QStringList parts;
        for (const Term& term : terms) {
            parts << (term.isNegated ? QCoreApplication::translate("Query", "not %1").arg(term.description)
                                     : term.description);
        }
        alternatives << parts.join(QCoreApplication::translate("Query", " and "));
    }
    return alternatives.join(QCoreApplication::translate("Query", ", or "));
}
