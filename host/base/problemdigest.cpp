#include "host/base/problemdigest.h"

#include <QCoreApplication>

#include <algorithm>

namespace {

/// The reason with "#" for each number and "" for all between the first quotation mark and the last: quoted
/// texts may hold quotation marks themselves.
QString shapeOf(const QString& reason) {
    const QLatin1Char quote('"');
    const qsizetype first = reason.indexOf(quote);
    const qsizetype last = reason.lastIndexOf(quote);
    QString shape;
    for (qsizetype i = 0; i < reason.size(); ++i) {
        if (i == first)
            i = last;
        const QChar c = reason[i];
        if (c < QLatin1Char('0') || c > QLatin1Char('9'))
            shape += c;
        else if (!shape.endsWith(QLatin1Char('#')))
            shape += QLatin1Char('#');
    }
    return shape;
}

} // namespace

void ProblemDigest::Add(const Problem& problem) {
    if (problem.file.isEmpty()) {
        m_tell(problem);
        return;
    }
    const QString key = problem.file + QLatin1Char('\n') + shapeOf(problem.reason);
    const size_t place = m_places.value(key, m_kinds.size());
    if (place == m_kinds.size()) {
        m_places.insert(key, place);
        m_kinds.emplace_back().held.count = 0;
    }
    Kind& kind = m_kinds[place];
    if (kind.told < ToldAtOnce) {
        ++kind.told;
        m_tell(problem);
        return;
    }
    kind.lastLine = std::max(kind.lastLine, problem.line);
    const qint64 count = kind.held.count + problem.count;
    if (kind.held.count == 0)
        kind.held = problem;
    kind.held.count = count;
}

void ProblemDigest::Flush() {
    // Whoever is told may add problems.
    std::vector<Kind> kinds;
    kinds.swap(m_kinds);
    m_places.clear();
    for (Kind& kind : kinds) {
        if (kind.held.count == 0)
            continue;
        if (kind.held.count > 1) {
            const qint64 more = kind.held.count - 1;
            kind.held.reason +=
                kind.lastLine > kind.held.line
                    ? QCoreApplication::translate("Readers", " (and %1 more like it, to line %2)")
                          .arg(more)
                          .arg(kind.lastLine)
                    : QCoreApplication::translate("Readers", " (and %1 more like it)").arg(more);
        }
        m_tell(kind.held);
    }
}
