#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>
#include <vector>

/// What an operator looks for in the rows of a list, as one types it:
///
///     bbc am              all words, each in any column, whatever its case
///     "new york"          words that stand together
///     5505 kHz            a frequency, within half of the last digit typed
///     118-137 MHz  >7 MHz frequencies in a range, its ends included
///     demod:am            words in one column, named by its title or the beginning of one of its words
///     priority:<=3        numbers in one column, in the unit that its cells show unless one is typed
///     not am  -am         rows without
///     am or fm            either; "or" binds less than a blank
///
/// It knows the columns only by their titles and asks for the texts of cells when it needs them.
class Query {
public:
    /// Where and why a text was not understood. All its words are searched as plain text then.
    struct Misreading {
        qsizetype position; ///< in the text
        QString reason;     ///< a sentence
    };
    /// A part of a cell.
    struct Hit {
        qsizetype from;
        qsizetype length;
    };
    using Cells = std::function<QString(int column)>;

    /// An empty query lets all rows through.
    Query() = default;
    static Query Parse(const QString& text, const QStringList& columnTitles);

    const QString& GetText() const { return m_text; }
    bool IsEmpty() const { return m_alternatives.empty(); }
    /// What was understood, a short sentence; empty for an empty query.
    QString Describe() const;
    const std::optional<Misreading>& Problem() const { return m_problem; }

    /// Whether a row matches, by the texts of its cells.
    bool Matches(const Cells& cell) const;
    /// Whether only rows that match `before` can match this one. False when that is not plain.
    bool Narrows(const Query& before) const;
    /// What of a cell made its row match, to be marked.
    std::vector<Hit> HitsIn(const QString& cell, int column) const;

private:
    friend class QueryParser;

    /// Numbers from and to; in Hz or as the cells show them.
    struct Range {
        double from;
        double to;
        bool inHertz;
    };
    struct Term {
        QString word{}; ///< empty when only the range counts
        Qt::CaseSensitivity wordCase = Qt::CaseInsensitive;
        std::optional<Range> range{};
        std::optional<std::vector<int>> columns{}; ///< any, when there are none
        bool isNegated = false;
        QString description{};

        bool IsIn(const QString& cell) const;
        bool Holds(int columnCount, const Cells& cell) const;
        bool LooksAt(int column) const;
        bool IsPlainWord() const { return !word.isEmpty() && !range && !columns && !isNegated; }
    };
    using Terms = std::vector<Term>;

    QString m_text;
    int m_columnCount = 0;
    std::vector<Terms> m_alternatives; ///< each with one term or more
    std::optional<Misreading> m_problem;
};
