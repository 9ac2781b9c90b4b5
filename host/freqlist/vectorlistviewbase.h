#pragma once

#include "host/freqlist/frequencystorelistview.h"
#include "host/freqlist/recordcopy.h"
#include "host/gui/sortlistview.h"

#include <QBasicTimer>
#include <QWidget>

class QScrollBar;

/// What the views over record lists share, whatever the record: a list that makes items only for the page
/// that can be seen, and drops them when it moves. The view belongs to its parent widget and observes the
/// list value that it is bound to. It shows a copy of the list, taken anew at the tick that follows a change;
/// the list itself it never touches. The copy knows what was taken, the list widget where records stand and
/// which are selected.
class VectorListViewBase : public QWidget,
                           public FrequencyStoreListView,
                           public IObserver,
                           protected CopiedRecords {
    Q_OBJECT

public:
    VectorListViewBase(QWidget* parent, const char* name);
    ~VectorListViewBase() override;

    /// Binds the view to the record list at that path; false, and the view is empty, when there is none.
    bool Set_ValuePath(const QString& path);
    const QString& ValuePath() const { return m_path; }
    /// A view that is not connected follows nothing; connected again, it looks for its list anew.
    void SetConnected(bool connected) override;
    /// A view that stands still goes on showing the records that it has; to save them takes up what waits.
    void SetPaused(bool paused) override;
    int WaitingCount() const override;
    QWidget* GetWidget() override { return this; }
    /// The list that shows the page. Its counts and its filter are those of all records; its items are those
    /// of the page.
    SortListView* GetListView() override;
    QScrollBar* GetScrollBar() const;
    void SelectFrequency(double hertz) override;
    std::optional<std::vector<bool>> ShownEntries() override;
    bool SelectRecord(quint32 place) override;
    QString SelectedText() override;
    void InitFreqStoreWidget(FreqStoreListViewButtonBar* bar) override;
    FreqStoreListViewButtonBar* GetButtonBar() const { return m_bar; }

    int RecordCount() const { return m_copy.Count(); }
    int RowCount() const;
    int SelectedCount() const;
    /// Whether records are still to be taken: those shown are the first of them.
    bool IsLoading() const { return m_copy.IsPart(); }
    /// Whether the filter is still looking through the records; rows are those that it found so far.
    bool IsFiltering() const;
    /// Selects a row alone, as a click on it does.
    void SelectRow(int row);
    void SelectAll();
    /// What is known of records beyond their fields, by ID, see `SortListView::SetRowNote`.
    void SetRecordNote(const QString& title, std::function<QString(unsigned id)> textOf);
    /// The comment, by ID, that an entry of another list made from a record begins with.
    void SetRecordComment(std::function<QString(unsigned id)> textOf) { m_commentOf = std::move(textOf); }

    void Update(Observable* subject, TChangeCode code) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

public slots:
    /// Shows the page that begins with that row; follows the scroll bar.
    virtual void slotSetFirstIndex2View(int first);
    /// Offers the actions of the button bar as a menu.
    virtual void slotContextMenuRequested(SortListViewItem* item, const QPoint& globalPosition, int column);

signals:
    void clicked(SortListViewItem* item);
    void doubleClicked(SortListViewItem* item);
    /// The selection changed; `item` is the current row, null when it is not on the page.
    void selectionChanged(SortListViewItem* item);
    void contextMenuRequested(SortListViewItem* item, const QPoint& globalPosition, int column);

protected:
    /// Appends a right-aligned column that shows a field and sorts by `compare`.
    void AddColumn(const QString& title, const QString& field, CompareFunction compare);
    /// A new item for a row, outside any list; the caller owns it.
    virtual SortListViewItem* CreateItem(int row) = 0;
    /// Brings the records into the order of a column, by the texts of its cells; false when nothing changed.
    /// Views that sort by something else override this. Throws WorkCancelled, with nothing changed, when the
    /// operator cancels.
    virtual bool Sort(int column, bool ascending);
    /// Takes what changed of the records and shows it, at once.
    virtual void UpdateView();
    /// Takes all records anew, whatever is known of their changes, and sorts them anew.
    void TakeAnew() { load(RecordCopy::All); }
    /// The row that the operator acts on: the selected one that has the focus or is nearest to it, the lower
    /// of two; negative when nothing is selected.
    int CurrentRow() const;
    /// Row of an item of the page; negative for any other.
    int Item2Index(const SortListViewItem* item) const;

    const std::vector<QString>& Fields() const { return m_fields; }
    QString RecordComment(unsigned id) const { return m_commentOf ? m_commentOf(id) : QString(); }
    /// Makes the copy complete and brings it up to date.
    void LoadAll();
    /// Records in their order, whatever the filter hides; selected rows. A filter that is still at work is
    /// waited for.
    std::vector<quint32> Order() const;
    std::vector<quint32> SelectedRows();
    quint32 RecordOfRow(int row) const;

    using SortStep = RecordOrder::Step;
    /// What has to be done to sort by a column in that direction, and the order when it is done.
    SortStep NextSort(int column, bool ascending);
    void SetOrder(std::vector<quint32> order, int column, bool ascending);
    /// Shows the page in the order just set, unless that is about to happen anyway. What was selected stays
    /// selected.
    void ShowOrderUnlessArranging();

    void resizeEvent(QResizeEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    class PageList;

    void bind();
    void load(int atMost);
    bool follow(int atMost);
    void showRecords(int selectedBefore);
    bool sortByHeader();

    PageList* m_list;
    FreqStoreListViewButtonBar* m_bar = nullptr; ///< the window's; forgotten when it ends
    QString m_path;
    QBasicTimer m_tick;
    int m_tickMilliseconds;
    std::vector<QString> m_fields; ///< by column
    std::function<QString(unsigned)> m_commentOf;
    RecordCopy m_copy{*this};
    bool m_arranging = false; ///< the page will be shown when all is done
};
