#pragma once

#include "host/base/query.h"
#include "host/gui/comparefunctions.h"
#include "host/gui/sortlistviewitem.h"

#include <QBasicTimer>
#include <QTreeWidget>

#include <functional>
#include <optional>
#include <vector>

class CellDelegate;
class QAction;
class QMenu;

/// Sortable list with a compare function per column, made for a million rows: texts are asked for when rows
/// are seen, sort keys are computed once per row, rows come and go in bulk. A request to sort takes effect
/// once per turn of the event loop however often it is made.
class SortListView : public QTreeWidget {
    Q_OBJECT

public:
    explicit SortListView(QWidget* parent = nullptr);
    ~SortListView() override;

    /// Appends a column and returns its index.
    int addColumn(const QString& title);
    /// 1 left, 2 right, 4 centre; any Qt alignment does, too.
    void setColumnAlignment(unsigned column, int alignment);
    Qt::Alignment ColumnAlignment(int column) const;
    /// A `QHeaderView::ResizeMode`.
    void setColumnWidthMode(int column, int mode);
    /// Makes the columns as wide as that many characters each.
    void FitColumns(const std::vector<int>& characters);
    /// Widths, order and visibility of columns are remembered under that name. Call it when all columns
    /// stand.
    void SetColumnWidthPersistantName(const QString& name);
    /// Announces how many compare functions will be set; setting one behind that count grows the table.
    void SetCompareFunctionLength(int length);
    /// The order of a column; a column without a function sorts as text.
    void SetCompareFunction(int column, CompareFunction function);
    CompareFunction compareFunction(int column) const;

    /// While sorting is not allowed, requests are kept until it is allowed again.
    void AllowSort(bool allow);
    /// Asks for a sort by the present column. Without a sort column rows stay in the order of the file.
    void sort();
    /// Sorts at once. Column -1 brings back the order in which rows were added.
    void sortByColumn(int column, Qt::SortOrder order);
    int SortColumn() const { return m_sortColumn; }
    Qt::SortOrder SortOrder() const { return m_sortOrder; }
    void setShowSortIndicator(bool show);

    void setMultiSelection(bool multi);
    using QTreeWidget::setSelectionMode;
    /// 0 none, 1 single, 2 multi, 3 extended, 4 contiguous.
    void setSelectionMode(int mode);
    void setSelected(QTreeWidgetItem* item, bool selected);
    /// The row that the operator acts on: the selected one that has the focus or is nearest to it, the lower
    /// of two; null when nothing is selected. The focus itself is Qt's current index: keys move it, with Ctrl
    /// held without selecting anything.
    virtual SortListViewItem* currentItem() const;
    SortListViewItem* firstChild() const;
    /// Takes the row out of the list; the caller owns it then.
    SortListViewItem* takeItem(SortListViewItem* item);
    void ensureItemVisible(SortListViewItem* item);

    /// Appends rows, of which the list takes ownership, in one operation. Sorting is asked for.
    void AddItems(const std::vector<SortListViewItem*>& items);
    /// Removes and deletes the rows for which `remove` is true, in one operation.
    void RemoveItems(const std::function<bool(const SortListViewItem&)>& remove);

    /// Shows only rows that match a `Query`; an empty text shows all. Rows that are not shown are out of
    /// reach of iterators and selection. A long list is looked through a part at a time, from the top; until
    /// then the rows are those found so far.
    virtual void SetFilterText(const QString& text);
    virtual QString FilterText() const { return m_filter.GetText(); }
    /// Whether the filter is still looking through the rows.
    virtual bool IsFiltering() const { return m_filterTurn.isActive(); }
    QStringList ColumnTitles() const;
    /// Columns that are not hidden, in the order shown.
    std::vector<int> ShownColumns() const;
    /// What the filter was understood as, and what is marked in the cells.
    const Query& FilterQuery() const;
    /// Marks what a query finds in the cells that are seen.
    void MarkHits(const Query& query);
    /// Shows a row of the list even if the filter hides it; false when it is not in the list.
    bool ShowRow(SortListViewItem* row);
    void selectAll() override;
    CellDelegate& Cells() const { return *m_cells; }
    /// Begins to edit a cell of the row that the operator acts on: that of the column clicked last, if it can
    /// be edited, else the first one that can. False, with nothing done, when the row has none.
    bool EditCell();
    /// The column clicked last; that of the first cell of the current row that can be edited when that one
    /// cannot; negative without any.
    int EditedColumn() const;
    bool IsEditing() const { return state() == EditingState; }
    /// Marks the rows of a frequency (Hz), that of the receiver; 0 marks none.
    void MarkTuned(double hertz);
    /// The number of the row that the operator acts on, among all that the filter shows; negative for none.
    virtual int CurrentPlace() const;
    /// Selects a row by that number, alone, as a click on it does.
    virtual void SelectPlace(int place);
    /// Rows of the list, rows that the filter shows, selected rows.
    virtual int RowCount() const;
    virtual int ShownCount() const { return topLevelItemCount(); }
    virtual int SelectedCount() const;
    /// How often rows have filled themselves to be seen or read since the list was made; sorting and
    /// filtering do not count.
    quint64 FillCount() const { return m_fillCount; }
    /// True while a row fills itself; requests to sort are ignored then.
    bool IsFilling() const { return m_filling > 0; }

    /// Rows have changed their texts: repaint, and sort again when sorted by anything.
    void RowsChanged();
    /// Replaces the actions above the column entries of the header menu; the list takes ownership.
    void SetHeaderMenu(QMenu* menu);
    QMenu* HeaderMenu() const { return m_headerMenu; }
    /// Puts a column into a group of that name: the header menu has a menu of its own for each group, from
    /// which all of them can be shown or hidden at once.
    void SetColumnGroup(int column, const QString& group);
    /// Adds what the header menu offers of columns and order.
    void AddColumnActionsTo(QMenu& menu);

    /// What is known of rows beyond their cells, by a title: details and tool tips show it. Empty texts are
    /// not shown.
    struct RowNote {
        QString title;
        std::function<QString(const SortListViewItem& row)> textOf;
    };
    void SetRowNote(RowNote note) { m_rowNote = std::move(note); }
    const RowNote& GetRowNote() const { return m_rowNote; }
    /// The note of a row; empty when there is none.
    QString NoteOf(const SortListViewItem& row) const {
        return m_rowNote.textOf ? m_rowNote.textOf(row) : QString();
    }

public slots:
    void slotClicked(QTreeWidgetItem* item, int column);
    void slotDoubleClicked(QTreeWidgetItem* item, int column);
    void slotExpanded(QTreeWidgetItem* item);
    void slotCollapsed(QTreeWidgetItem* item);
    /// Sorts by the column, then in reverse, then not at all.
    void slotHeaderClicked(int column);
    void slotHeaderContextMenuRequested(const QPoint& position);
    void slotSelectionChanged();

signals:
    void clicked(SortListViewItem* item);
    void doubleClicked(SortListViewItem* item);
    void returnPressed(SortListViewItem* item);
    void expanded(SortListViewItem* item);
    void collapsed(SortListViewItem* item);
    /// The selection changed; `item` is the current row, or null.
    void selectionChanged(SortListViewItem* item);
    void contextMenuRequested(SortListViewItem* item, const QPoint& globalPosition, int column);
    /// Number of rows, of shown rows or of selected rows may have changed.
    void countsChanged();
    /// The filter shows other rows now, or begins to look for them; see `FilterQuery`.
    void filterChanged();

protected:
    /// Whether the operator can edit a cell.
    virtual bool CanEdit(const SortListViewItem& /*row*/, int /*column*/) const { return false; }
    /// A new field for a cell that can be edited; null for none. The parent owns it.
    virtual QWidget* CreateCellEditor(QWidget* /*parent*/, const SortListViewItem& /*row*/, int /*column*/) {
        return nullptr;
    }
    /// Writes what was entered into such a field, or with `keep` false drops it. False when it cannot be
    /// taken; the field then says why.
    virtual bool EndCellEditor(QWidget& /*field*/, bool /*keep*/) { return true; }
    /// Hz of the n-th row that is shown; not a number for one without a frequency.
    virtual double FrequencyOfRow(int row) const;
    void drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                 const QModelIndex& index) const override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void customEvent(QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    /// Puts the rows into the order of the sort column. A list whose rows are a page of something longer
    /// sorts that instead.
    virtual void SortNow();

private:
    friend class CellDelegate;
    friend class SortListViewItem;

    using Rows = QList<QTreeWidgetItem*>;

    void sortRows(Rows& rows);
    bool moveFew();
    std::optional<std::vector<int>> fewMoving() const;
    Rows takeMisplaced(const std::vector<int>& moving, const RowOrder& order);
    int placeOf(const SortListViewItem& row, const RowOrder& order) const;
    void keepingPlace(const std::function<void()>& change);
    int focusPlace() const;
    QTreeWidgetItem* nextStanding(const Rows& before, qsizetype place) const;
    void replaceShown(const std::function<void(Rows&)>& change);
    void selectMarkedRows(const Rows& rows, int top);
    void hideRow(QTreeWidgetItem* row);
    void takeAllRows(Rows& shown);
    void lookOn(Rows& hits, qsizetype rows);
    void lookForMore(qsizetype rows);
    void finishFilter();
    void loseOrder();
    void appendRows(const Rows& rows);
    bool matchesFilter(const QTreeWidgetItem* row) const;
    void postSort();
    void saveHeader() const;
    void showSortIndicator();
    bool editCell(SortListViewItem* row, int column);
    bool editNextCell(int by);
    void paintTunedMark(QPainter& painter, const QStyleOptionViewItem& row) const;
    QAction* addColumnAction(QMenu& menu, const QString& text, const std::vector<int>& columns);
    void addGroupMenu(QMenu& menu, const QString& group);

    static constexpr size_t FewRows = 128;

    /// Rows that had their places in the order and have changed since; when they are more than `FewRows`, not
    /// all of them. Some may be gone: they are only to be compared with those that are there.
    std::vector<const SortListViewItem*> m_changedRows;
    std::vector<CompareFunction> m_compare;
    std::vector<Qt::Alignment> m_alignments;
    bool m_showSortIndicator = false;
    int m_sortColumn = -1;
    Qt::SortOrder m_sortOrder = Qt::AscendingOrder;
    bool m_sortAllowed = true;
    bool m_sortPosted = false;
    bool m_inOrder = false;    ///< all rows but those that may move stand in the order of the sort column
    bool m_sortWanted = false; ///< asked for while it was not allowed
    int m_filling = 0;
    std::vector<QTreeWidgetItem*> m_filteredOut; ///< rows that the filter keeps out of sight; owned
    quint64 m_fillCount = 0;
    quint32 m_lastSequence = 0;
    Query m_filter;
    Rows m_allRows;  ///< while the filter is on: in the order of the list; empty when that was lost
    Rows m_toLookAt; ///< while the filter looks through rows: these, and how many it has looked at
    qsizetype m_lookedAt = 0;
    QBasicTimer m_filterTurn; ///< runs while there are more
    CellDelegate* m_cells;    ///< owned by Qt
    double m_tuned = 0;       ///< Hz
    QString m_persistentName;
    QString m_defaultColumns; ///< see `ColumnArrangement`
    QString m_rememberedColumns;
    QMenu* m_headerMenu = nullptr;
    QHash<int, QString> m_columnGroups; ///< by column
    RowNote m_rowNote;
};
