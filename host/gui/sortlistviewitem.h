#pragma once

#include <QTreeWidgetItem>
#include <QTreeWidgetItemIterator>

#include <memory>
#include <vector>

class SortListView;

/// Row of a `SortListView`, owned by it. A row holds no text until it is asked for one: a subclass that fills
/// itself overrides `Fill`, which is called when a stale row is painted, sorted or searched.
class SortListViewItem : public QTreeWidgetItem {
public:
    /// A row with these texts, appended to the list unless `list` is null; `open` shows its children.
    SortListViewItem(QTreeWidget* list, const QStringList& texts, bool open);
    ~SortListViewItem() override;

    /// The row below on the same level, or null.
    SortListViewItem* nextSibling() const;
    void setOpen(bool open) { setExpanded(open); }
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
    /// What is painted behind the text of a cell and is no part of it; empty for nothing.
    virtual QString CellAddition(int /*column*/) const { return QString(); }

    /// Place in the order in which rows were added.
    quint32 Sequence = 0;

protected:
    /// Sets the texts of all cells; rows whose texts are set from outside need none.
    virtual void Fill() {}
    /// Tool tip of the row; empty for none.
    virtual QString ToolTip() const { return QString(); }
    SortListView* list() const;

private:
    friend class SortListView;

    void ensureFilled() const;
    void letMove();
    QString tipWithNote() const;

    std::unique_ptr<std::vector<QString>> m_texts;
    bool m_filled = false;
    bool m_wasSelected = false; ///< while the list puts its rows in anew
    bool m_mayMove = true;      ///< new or changed since the list was sorted
};

/// Walks the shown rows of a list from top to bottom, children included. The list must not change meanwhile.
class SortListViewItemIterator {
public:
    enum Flag : unsigned { All = 0, Selected = 1 };

    explicit SortListViewItemIterator(QTreeWidget* list, unsigned flags = All);
    /// Null at the end.
    SortListViewItem* current() const { return static_cast<SortListViewItem*>(*m_walk); }
    SortListViewItemIterator& operator++();

private:
    void skipUnwanted();

    QTreeWidgetItemIterator m_walk;
    unsigned m_flags;
};
