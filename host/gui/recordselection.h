#pragma once

#include "host/gui/recordrows.h"

#include <optional>
#include <vector>

/// Which records are selected, and the two that keys and clicks start from: the focus, which keys move, and
/// the anchor, where a range begins. All are kept by record, so they stay with it whatever row it comes to.
class RecordSelection {
public:
    /// The rows that records stand in must outlive the selection.
    explicit RecordSelection(const RecordRows& rows) : m_rows(rows) {}

    /// There are so many records now; of those that are no more, nothing is kept.
    void Resize(int records);
    /// Nothing is selected, and nothing has the focus.
    void Clear();

    int Count() const { return m_count; }
    bool Has(quint32 record) const { return m_selected[record]; }
    bool IsSelected(int row) const { return row >= 0 && row < m_rows.Count() && Has(m_rows.RecordAt(row)); }
    void Set(quint32 record, bool selected);
    /// Deselects all; the focus stays.
    void DeselectAll();
    /// Selects all rows.
    void SelectAll();
    /// The selected records, in the order shown.
    std::vector<quint32> Records() const;
    /// Records went, and those that are left have new numbers, see `RecordOrder::Renumber`.
    void Renumber(const std::vector<quint32>& numbers, int count);

    /// Selects as a click on the row does: it alone; with control it changes over; with shift all from the
    /// anchor on, instead of the range that was selected so before, and beside what else was. Negative is a
    /// click beside all rows.
    void Click(int row, Qt::KeyboardModifiers modifiers);
    /// Negative when nothing has the focus, or it is not shown.
    int FocusRow() const { return m_rows.RowOf(m_focus); }
    /// Moves the focus alone.
    void SetFocusRow(int row) { m_focus = m_rows.RecordAt(row); }
    /// A range begins at the focus.
    void SetAnchor() { m_anchor = m_focus; }
    /// The selected row that has the focus or is nearest to it, the lower of two; negative when nothing is
    /// selected.
    int CurrentRow() const;
    /// Deselects what is not shown: it is out of reach of what is done to the selection. A focus there goes
    /// to a row that is shown.
    void KeepShown();

private:
    void selectRange(int anchor, int row);
    void countAnew();

    const RecordRows& m_rows;
    std::vector<bool> m_selected; ///< by record
    std::vector<bool> m_before;   ///< the same before a range was begun; empty without one
    int m_count = 0;
    std::optional<quint32> m_focus;
    std::optional<quint32> m_anchor;
};
