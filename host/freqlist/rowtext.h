#pragma once

#include <QStringList>

#include <vector>

class SortListView;

/// Rows of a list as text for a spreadsheet: a tab between cells, a line for each row, the headings first.
/// Only columns that are shown are in it, in the order shown. Like CSV for spreadsheets it has an apostrophe
/// before what they would run as a formula, where the operator wants that.
class RowText {
public:
    explicit RowText(const SortListView& list);

    /// Adds a row; `textOf` gives the text of its cell in a column.
    template <typename TextOf>
    void Add(const TextOf& textOf) {
        for (const int column : m_columns)
            addCell(textOf(column), column == m_columns.back());
        m_isEmpty = false;
    }
    /// All of it; empty without rows.
    QString Get() const { return m_isEmpty ? QString() : m_text; }
    /// The cells of such a line, without those apostrophes.
    static QStringList CellsOf(const QString& line);

private:
    void addCell(QString cell, bool isLast);

    std::vector<int> m_columns;
    QString m_text;
    bool m_isEmpty = true;
};
