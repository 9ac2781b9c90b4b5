#pragma once

#include <Qt>

#include <functional>
#include <optional>

class QScrollBar;
class SortListView;
class SortListViewItem;

/// The page of a long list that can be seen: a list widget that holds items for its rows only, and the scroll
/// bar that says where it stands. Rows are those of the whole list; what is in them the page asks for.
class RecordPage {
public:
    struct Rows {
        std::function<SortListViewItem*(int row)> makeItem; ///< the page takes ownership
        std::function<bool(int row)> isSelected;
        std::function<int()> focusRow; ///< negative for none
    };

    /// Both widgets belong to somebody else, and outlive the page.
    RecordPage(SortListView* list, QScrollBar* scroll, Rows rows);

    /// Makes the items of the page at which the scroll bar stands: the rows that fit, and the one that is cut
    /// off. False, with nothing made, when it needs more than the first `ready` of so many rows.
    [[nodiscard]] bool Show(int rows, int ready);
    /// Fits the scroll bar to so many rows; items stay.
    void ShowScrollRange(int rows);
    /// Puts selection and focus of the rows on the items.
    void ShowSelection();
    /// Tells of each row of the page whether its item is selected.
    void ReadSelection(const std::function<void(int row, bool selected)>& take) const;

    /// The row at the top; rows that fit as a whole, at least 1.
    int First() const { return m_first; }
    int FullRows() const;
    /// Of an item of the page; negative for any other. Of a row outside the page, null.
    int RowOf(const SortListViewItem* item) const;
    SortListViewItem* ItemAt(int row) const;
    /// Moves the page until the row is on it.
    void ScrollTo(int row);
    /// The row to which a key leads from a row, before the first or behind the last of `rows` maybe; nothing
    /// for a key that does not move.
    std::optional<int> RowByKey(int key, int row, int rows) const;

private:
    SortListView* m_list;
    QScrollBar* m_scroll;
    Rows m_rows;
    int m_first = 0;
    bool m_measuring = false;
};
