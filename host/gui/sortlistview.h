#pragma once

#include "host/base/query.h"
#include "host/gui/comparefunctions.h"
#include "host/gui/recordselection.h"
#include "host/gui/sortlistviewitem.h"

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QTreeWidget>

#include <functional>
#include <limits>
#include <vector>

class CellDelegate;
class QAction;
class QMenu;
class QScrollBar;

/// Sortable list with a compare function per column, made for a million rows: texts are asked for when rows
/// are seen, sort keys are computed once per row, rows come and go in bulk. A request to sort takes effect
/// once per turn of the event loop however often it is made.
///
/// The tree of the base class holds the items of one page only: the rows that can be seen. The list itself
/// knows which rows there are, in which order, and which of them are selected, and has a scroll bar over all
/// of them. Functions named as those of the base class speak of all rows here, too; what comes from the model
/// or the selection model of the base speaks of the page. A row is a place in the list as it is shown, from
/// 0: sorted, and without what the filter hides. A record is what stands there, numbered as they came.
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
    /// of two; null when nothing is selected, or when the list holds items for its page only and it is not
    /// there. Keys move the focus, with Ctrl held without selecting anything.
    SortListViewItem* currentItem() const { return topLevelItem(CurrentPlace()); }
    /// The row that has the focus, selected or not; null for none.
    SortListViewItem* FocusItem() const { return topLevelItem(m_selection.FocusRow()); }
    /// Gives the row the focus, selects it alone and moves the page to it. Null, and a row that the filter
    /// hides, deselect all.
    void setCurrentItem(QTreeWidgetItem* item, int column = 0) {
        setCurrentItem(item, column, QItemSelectionModel::ClearAndSelect);
    }
    /// The same with another effect on the selection.
    void setCurrentItem(QTreeWidgetItem* item, int column, QItemSelectionModel::SelectionFlags command);
    /// The item of a row; null when there is no such row, and where the list holds items for its page only
    /// for one outside that.
    SortListViewItem* topLevelItem(int row) const;
    int topLevelItemCount() const { return ShownCount(); }
    /// The row of an item; negative for one that is not shown here.
    int indexOfTopLevelItem(const QTreeWidgetItem* item) const;
    /// Where an item of the page is in the viewport; empty for any other.
    QRect visualItemRect(const QTreeWidgetItem* item) const;
    QModelIndex indexAt(const QPoint& place) const override;
    /// The scroll bar over all rows: its value is the row at the top of the page.
    QScrollBar* verticalScrollBar() const { return m_bar; }
    /// Rows that fit into the viewport as a whole, at least 1.
    int FullRows() const;
    SortListViewItem* firstChild() const { return topLevelItem(0); }
    /// Takes the row out of the list; the caller owns it then.
    SortListViewItem* takeItem(SortListViewItem* item);
    void ensureItemVisible(SortListViewItem* item);
    /// Moves the page until the row is on it as a whole.
    void ScrollToRow(int row);
    /// Removes and deletes all rows.
    void clear();

    /// Appends rows, of which the list takes ownership, in one operation. Sorting is asked for.
    void AddItems(const std::vector<SortListViewItem*>& items);
    /// Removes and deletes the rows for which `remove` is true, in one operation.
    void RemoveItems(const std::function<bool(const SortListViewItem&)>& remove);

    /// Shows only rows that match a `Query`; an empty text shows all. Rows that are not shown are out of
    /// reach of iterators and selection. A long list is looked through a part at a time, from the top; until
    /// then the rows are those found so far.
    void SetFilterText(const QString& text);
    QString FilterText() const { return m_filter.GetText(); }
    /// Whether the filter is still looking through the rows.
    bool IsFiltering() const { return !m_filter.IsComplete(); }
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
    /// Deselects all; the focus stays.
    void clearSelection();
    bool IsRowSelected(int row) const { return m_selection.IsSelected(row); }
    /// Selects rows as a click on the row does; negative is a click beside all rows.
    void ClickRow(int row, Qt::KeyboardModifiers modifiers);
    /// Goes to a row, or to the nearest one that there is: selects it alone, with shift all from where the
    /// range began; with control the focus moves alone.
    void GoToRow(int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// The text of a cell, whether the row has an item or not.
    QString TextAt(int row, int column) {
        NeedRows(row + 1);
        return RecordText(m_rows.RecordAt(row), column);
    }
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
    int CurrentPlace() const { return m_selection.CurrentRow(); }
    /// Selects a row by that number, alone, as a click on it does.
    void SelectPlace(int place) { GoToRow(place); }
    /// Rows of the list, rows that the filter shows, selected rows.
    int RowCount() const { return m_order.Count(); }
    int ShownCount() const { return m_rows.Count(); }
    int SelectedCount() const { return m_selection.Count(); }
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
    /// The text of a cell of a record.
    virtual QString RecordText(quint32 record, int column) const;
    /// A new item for a record that has none yet, outside any list. The list takes ownership.
    virtual SortListViewItem* MakeItem(quint32 /*record*/) { return nullptr; }
    /// These records have gone, by their numbers before; those that are left have new ones, without gaps.
    virtual void RecordsRemoved(const std::vector<bool>& /*gone*/) {}
    /// Before all rows, or those before `end`, are worked with: a list that has not taken all of its records
    /// yet takes them.
    virtual void NeedRows(int /*end*/) {}
    void NeedAllRows() { NeedRows(std::numeric_limits<int>::max()); }
    /// Items are made for the page and end when they leave it, instead of staying with their records.
    void KeepItemsOfPageOnly() { m_keepsItems = false; }
    /// So many records have come, which have no items yet.
    void AddRecords(int count);
    /// Records, which have no items yet, have come to these places among the others, in ascending order.
    void InsertRecords(const std::vector<quint32>& places);
    void RemoveRecords(const std::vector<bool>& gone);
    /// The item of a record, made now if need be; null from the other when none is made yet.
    SortListViewItem* ItemOf(quint32 record);
    SortListViewItem* MadeItem(quint32 record) const { return m_items[record]; }
    /// The row of a record; negative for one that is hidden.
    int RowOf(quint32 record) const;
    /// Whether changed records are to be told.
    bool IsInOrder() const { return m_inOrder; }
    /// Rows came, went, or stand elsewhere: shows them, with items made anew where they do not stay.
    void ShowPage();
    /// Tells that the selection has changed, and shows it.
    void AnnounceSelection();
    /// Begins to look through these records, given in the order shown, for those that match the filter.
    void BeginFilter(std::vector<quint32> records);
    /// Looks at so many more records for the filter.
    void FilterMore(size_t records);
    /// The order of the records is another one: the filter takes it up, and the page is shown.
    void ShowOrder();
    /// The selected records, in the order shown; a filter that is at work is waited for.
    std::vector<quint32> SelectedRecords();
    /// Makes these records the only selected ones, whatever the filter hides, the first of them the current
    /// one. None changes nothing.
    void SelectRecords(const std::vector<quint32>& records);
    /// A record has changed its texts: when the list is sorted next it goes to its place.
    void RecordChanged(quint32 record);
    /// Hz of a row; not a number for one without a frequency.
    virtual double FrequencyOfRow(int row) const;
    /// Rows are selected by the list, not by Qt.
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex&, const QEvent*) const override {
        return QItemSelectionModel::NoUpdate;
    }
    void keyboardSearch(const QString& text) override;
    void drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                 const QModelIndex& index) const override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void customEvent(QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    /// Puts the rows into the order of the sort column. A list that holds items for its page only sorts what
    /// they show. False when the operator cancelled: the rows stand as they did.
    [[nodiscard]] virtual bool SortNow();

    RecordOrder m_order;
    RecordFilter m_filter;
    RecordRows m_rows{m_order, m_filter};
    RecordSelection m_selection{m_rows};

private:
    friend class CellDelegate;
    friend class SortListViewItem;
    class PageBar;

    bool sortAll();
    bool moveChanged();
    SortKey keyOf(quint32 record, const RowOrder& order) const {
        return order.KeyOf(RecordText(record, m_sortColumn));
    }
    std::vector<quint32> takeMisplaced(std::vector<quint32>& rows, const RowOrder& order) const;
    void insertRecords(std::vector<quint32>& rows, const std::vector<quint32>& records,
                       const RowOrder& order) const;
    std::vector<SortListViewItem*> removeRecords(const std::vector<bool>& gone);
    void moveFocusFrom(const std::vector<bool>& gone);
    void finishFilter();
    void postSort();
    void takeUpNewRecords(int count);
    static void end(SortListViewItem* item);
    QScrollBar* makeBar();
    void movePage();
    void fillPage();
    void fillPageIfOld() const;
    void replacePage(const std::vector<SortListViewItem*>& page);
    void fitBar();
    void showSelection();
    void endEditing();
    int rowAt(const QPoint& place) const;
    int dragTarget() const;
    void drag();
    bool moveByKey(const QKeyEvent& key);
    void saveHeader() const;
    void showSortIndicator();
    bool editCell(SortListViewItem* row, int column);
    bool editNextCell(int by);
    void paintTunedMark(QPainter& painter, const QStyleOptionViewItem& row) const;
    QAction* addColumnAction(QMenu& menu, const QString& text, const std::vector<int>& columns);
    void addGroupMenu(QMenu& menu, const QString& group);

    std::vector<SortListViewItem*> m_items; ///< by record, null for one that has none yet; owned
    bool m_keepsItems = true;
    std::vector<SortListViewItem*> m_page; ///< items in Qt's tree
    int m_first = 0;                       ///< the row of the first of them
    bool m_pageIsOld = false;              ///< rows have changed while nobody looked
    bool m_fillingPage = false;
    bool m_mirroring = false;   ///< selection and focus of the page are being set, by the list itself
    int m_toSee = -1;           ///< row that is to be on the page when the list is shown
    mutable int m_lastRow = 0;  ///< found last: rows are mostly asked for one after the other
    QScrollBar* m_bar;          ///< over all rows; owned by Qt
    bool m_dragging = false;    ///< the mouse selects rows
    int m_dragY = 0;            ///< where it is, in the viewport
    QBasicTimer m_dragTurn;     ///< moves the page while the mouse is held above or below it
    QString m_searched;         ///< typed to go to a row
    QElapsedTimer m_searchTime; ///< since the last letter
    int m_column = 0;           ///< the column clicked last
    std::vector<CompareFunction> m_compare;
    std::vector<Qt::Alignment> m_alignments;
    bool m_showSortIndicator = false;
    bool m_anyOpened = false; ///< some row may show its children
    int m_sortColumn = -1;
    Qt::SortOrder m_sortOrder = Qt::AscendingOrder;
    bool m_sortAllowed = true;
    bool m_sortPosted = false;
    bool m_sortWanted = false; ///< asked for while it was not allowed
    bool m_inOrder = false;    ///< all but those that changed or came stand in the order of the sort column
    std::vector<quint32> m_changed; ///< records that changed since they were sorted, some more than once
    quint32 m_sortedCount = 0;      ///< records that there were then; the others came
    int m_filling = 0;
    quint64 m_fillCount = 0;
    QBasicTimer m_filterTurn; ///< runs while the filter has more to look at
    CellDelegate* m_cells;    ///< owned by Qt
    double m_tuned = 0;       ///< Hz
    QString m_persistentName;
    QString m_defaultColumns; ///< see `ColumnArrangement`
    QString m_rememberedColumns;
    QMenu* m_headerMenu = nullptr;
    QHash<int, QString> m_columnGroups; ///< by column
    RowNote m_rowNote;
};
