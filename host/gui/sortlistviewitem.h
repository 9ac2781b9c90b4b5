#pragma once

#include <QTreeWidgetItem>

#include <memory>
#include <vector>

class SortListView;

/// Row of a `SortListView`, owned by it. A row holds no text until it is asked for one: a subclass that fills
/// itself overrides `Fill`, which is called when a stale row is painted, sorted or searched. Qt knows of the
/// row only while it can be seen; whether it is selected, or shows its children, the row itself says.
class SortListViewItem : public QTreeWidgetItem {
public:
    /// A row with these texts, appended to the list unless `list` is null; `open` shows its children.
    SortListViewItem(QTreeWidget* list, const QStringList& texts, bool open);
    ~SortListViewItem() override;

    /// The row below on the same level, or null.
    SortListViewItem* nextSibling() const;
    void setOpen(bool open);
    bool isExpanded() const { return m_isOpen; }
    bool isSelected() const;
    void setSelected(bool selected);
    /// Makes the row the current one and scrolls it into view.
    void activate();
    /// Sorts the children of this row by a column.
    void sortChildItems(int column, bool ascending);
    bool operator<(const QTreeWidgetItem& other) const override;

    QVariant data(int column, int role) const override;
    void setData(int column, int role, const QVariant& value) override;
    /// Sets a cell's text without a detour through variants.
    void setText(int column, const QString& text);
    QString text(int column) const;

    /// Marks the texts as out of date: the row fills itself when it is next seen, sorted or searched.
    void MarkStale();
    bool IsFilled() const { return m_filled; }
    /// The text of one cell; a subclass that can tell it without filling the row overrides this.
    virtual QString CellText(int column) const { return text(column); }
    /// What is painted before the text of a cell and is no part of it; empty for nothing.
    virtual QString CellAddition(int /*column*/) const { return QString(); }

protected:
    /// Sets the texts of all cells; rows whose texts are set from outside need none.
    virtual void Fill() {}
    /// Tool tip of the row; empty for none.
    virtual QString ToolTip() const { return QString(); }
    /// The list that the row, or the row that it is a child of, belongs to; null for none.
    SortListView* list() const;
    /// Its number among the records of the list.
    quint32 Record() const { return m_record; }

private:
    friend class SortListView;

    void ensureFilled() const;
    QString tipWithNote() const;
    QString placeText() const;

    std::unique_ptr<std::vector<QString>> m_texts;
    SortListView* m_list = nullptr; ///< of a row, not of its children
    quint32 m_record = 0;
    bool m_filled = false;
    bool m_isOpen = false;
};

/// Walks the shown rows of a list from top to bottom, children included. The list must not change meanwhile.
class SortListViewItemIterator {
public:
    enum Flag : unsigned { All = 0, Selected = 1 };

    /// A tree that is no `SortListView` has no rows.
    explicit SortListViewItemIterator(QTreeWidget* list, unsigned flags = All);
    /// Null at the end.
    SortListViewItem* current() const { return m_current; }
    SortListViewItemIterator& operator++();

private:
    SortListViewItem* following() const;
    void findRow(int row);

    SortListView* m_list;
    SortListViewItem* m_current = nullptr;
    int m_row = 0; ///< of the current one, or the row that it is a child of
    unsigned m_flags;
};
