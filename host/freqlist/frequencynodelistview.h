#pragma once

#include "host/base/traceplace.h"
#include "host/freqlist/frequencystorelistview.h"
#include "host/gui/sortlistview.h"

#include <limits>
#include <vector>

class FrequencyNodeListView;
class FrequencyNodeMediator;
class MultiViewMediatorCtrl;
class Node;
class ValueBase;

namespace FreqStoreXml {
class FrequencyStoreEntry;
} // namespace FreqStoreXml

/// The row of one mediator in one view. It belongs to the view; when its mediator ends it stays as an empty
/// row until the view takes all such rows out at once.
class FrequencyNodeMediatorViewItem final : public SortListViewItem {
public:
    FrequencyNodeMediatorViewItem(FrequencyNodeListView* owner, FrequencyNodeMediator* mediator);
    ~FrequencyNodeMediatorViewItem() override;

    /// Null when the mediator has ended.
    FrequencyNodeMediator* GetMediator() const { return m_mediator; }
    FrequencyNodeListView* GetView() const { return m_view; }
    void MediatorEnds();
    /// Asks for the texts again; a paused row does so when it goes on.
    void MarkStale();

    QString CellText(int column) const override;
    QString CellAddition(int column) const override;

protected:
    void Fill() override;
    QString ToolTip() const override;

private:
    FrequencyNodeListView* m_view;
    FrequencyNodeMediator* m_mediator;
};

/// List view bound to a mediator controller: one row per mediator, made when it is first seen or asked for.
/// Which text stands in a column follows from
/// the column's identifier, which the mediators know. The view belongs to its parent widget and takes itself
/// out of its controller when it ends.
///
/// \code
/// class BookmarkView : public FrequencyNodeListView {
/// public:
///     BookmarkView(QWidget* parent, unsigned listId) : FrequencyNodeListView(parent, listId) {
///         AddColumn(QStringLiteral("Frequency"), _compNumericWithSuffix, FreqList::ColumnFrequency);
///         AddColumn(QStringLiteral("Comment"), _compStandardString, FreqList::ColumnComment);
///     }
/// };
/// \endcode
class FrequencyNodeListView : public SortListView, public FrequencyStoreListView {
    Q_OBJECT

public:
    /// A view of the registered list `listId`, attached to its controller.
    FrequencyNodeListView(QWidget* parent, unsigned listId);
    ~FrequencyNodeListView() override;

    /// Identifiers of the columns, in order.
    const std::vector<unsigned>& GetColumnDescription() const { return m_columnIds; }
    QWidget* GetWidget() override { return this; }
    SortListView* GetListView() override { return this; }
    /// Sets whether the view emits signals.
    void EnableSignals(bool enable) { blockSignals(!enable); }
    void SetPaused(bool paused) override;
    int WaitingCount() const override;
    void SelectFrequency(double hertz) override;
    bool TuneToCurrent() override;
    bool CanDuplicate() const override;
    FreqStoreXml::ListContent Content() override;
    void Duplicate() override;
    std::vector<double> SelectedFrequencies() override;
    std::optional<std::vector<bool>> ShownEntries() override;
    void InitFreqStoreWidget(FreqStoreListViewButtonBar* bar) override;
    FreqStoreListViewButtonBar* GetButtonBar() const { return m_bar; }

    /// Mediators of the selected rows: the current one first, the others in view order, none twice.
    std::vector<FrequencyNodeMediator*> SelectedMediators() const;
    /// The same in the order shown.
    std::vector<FrequencyNodeMediator*> SelectedInOrder() const;

    /// Makes these rows the only selected ones, whatever the filter hides, the first of them the current one.
    void SelectRowsOf(const std::vector<FrequencyNodeMediator*>& mediators);

    /// The value that is edited in the cell of an entry; null when the list takes no changes there.
    ValueBase* EditedValue(FrequencyNodeMediator& mediator, int column) const;
    /// Columns of the current row that can be edited, in the order shown.
    std::vector<int> EditableColumns() const;
    /// What became of a value that was given to many entries.
    struct Filled {
        int written = 0;
        int refused = 0; ///< has no such value, or cannot take this one
    };
    /// Gives the cells of a column in all selected rows a value, by the text of the value.
    Filled FillColumn(int column, const QString& text);
    /// Gives the value of the first selected row's cell, in the column clicked last, to the other selected
    /// rows.
    Filled FillDown();
    /// The selected rows as lines of text with tabs between the cells of the columns that are shown, in the
    /// order shown, after a line of their headings.
    QString SelectedText() override;
    /// Adds entries from lines of such text. Its columns are those that the first line names, else those
    /// that are shown. Lines that make no entry are told, each with its reason, and add nothing. The answer
    /// is how many entries came.
    int PasteText(const QString& text);

    /// For the controller: adds rows for these mediators (nulls are passed over), takes out the rows whose
    /// mediators have ended, lets go of the controller.
    void AddRows(const std::vector<FrequencyNodeMediator*>& mediators);
    /// The same for mediators that came between others; `order` are all of them in order.
    void InsertRows(const std::vector<FrequencyNodeMediator*>& mediators,
                    const std::vector<FrequencyNodeMediator*>& order);
    int ScrollPlace() const;
    /// Selects the rows of these mediators alone, with the list scrolled to that place if they are seen
    /// there.
    void ShowEntries(const std::vector<FrequencyNodeMediator*>& mediators, int scrollPlace);
    void RemoveEndedRows();
    void ControllerEnds() { m_controller = nullptr; }
    /// For the mediators, whose rows the view knows by ascending numbers that stay: the row, made now if need
    /// be, or null when it is not in the list any longer; the mediator has ended, or has changed.
    static constexpr quint32 NoNumber = std::numeric_limits<quint32>::max();
    FrequencyNodeMediatorViewItem* MakeRow(quint32 number);
    void NoteEndedRow(quint32 number);
    void NoteChangedRow(quint32 number);

public slots:
    /// Does nothing; views that react to a click connect here.
    virtual void slotItemClicked(SortListViewItem* item);
    virtual void slotContextMenuRequested(SortListViewItem* item, const QPoint& position, int column);
    virtual void aboutToShow(QWidget* widget);

protected:
    /// Appends a column that shows the value of `columnId` and sorts by `compare`.
    void AddColumn(const QString& title, CompareFunction compare, unsigned columnId);
    /// Puts the selected entries on the clipboard as frequency-store XML, current one first. Failures are
    /// traced under the place given.
    void CopySelection(TracePlace place);
    /// Adds the entries on the clipboard to the list, each as the list makes its entries. A clipboard that
    /// holds no frequency-store XML adds nothing and is told and traced under the place given.
    void PasteClipboard(TracePlace place);
    /// Removes the nodes of the selected entries, in one operation, and selects the row that follows the
    /// first of them.
    void DeleteSelectedEntries();
    MultiViewMediatorCtrl* Controller() const { return m_controller; }
    /// How far an entry is from a frequency, both in Hz; infinity for one without a frequency.
    virtual double DistanceTo(FrequencyNodeMediator& mediator, double hertz) const;
    /// The selected entries as they are copied: the current one first.
    virtual std::vector<FrequencyNodeMediator*> CopiedMediators() const { return SelectedMediators(); }
    /// Entries were edited in their cells: what is made of the list follows.
    virtual void EntriesWereEdited() {}
    bool CanEdit(const SortListViewItem& row, int column) const override;
    QWidget* CreateCellEditor(QWidget* parent, const SortListViewItem& row, int column) override;
    bool EndCellEditor(QWidget& field, bool keep) override;
    double FrequencyOfRow(int row) const override;
    QString RecordText(quint32 record, int column) const override;
    SortListViewItem* MakeItem(quint32 record) override;
    void RecordsRemoved(const std::vector<bool>& gone) override;
    /// Whether Return and a double click open an editor; without one they tune the receiver to the entry.
    virtual bool HasEditor() const { return false; }
    void keyPressEvent(QKeyEvent* event) override;

private:
    class TextLines;

    friend class FrequencyNodeMediatorViewItem;

    FrequencyNodeMediator* mediatorOfRow(int row) const { return m_mediators[m_rows.RecordAt(row)]; }
    bool cellText(FrequencyNodeMediator* mediator, int column, QString& text) const;
    void duplicateSelected();
    void deleteSelected();
    int append(const TextLines& lines);
    std::optional<quint32> recordOf(quint32 number) const;
    bool insertBetween(const std::vector<FrequencyNodeMediator*>& mediators,
                       const std::vector<FrequencyNodeMediator*>& order);
    std::vector<FrequencyNodeMediator*>
    appendEntries(const QVector<FreqStoreXml::FrequencyStoreEntry>& entries);

    std::vector<unsigned> m_columnIds;
    MultiViewMediatorCtrl* m_controller;
    FreqStoreListViewButtonBar* m_bar = nullptr;     ///< the window's; forgotten when it ends
    std::vector<FrequencyNodeMediator*> m_mediators; ///< by record; null for one that has ended
    std::vector<quint32> m_numbers;                  ///< by record
    quint32 m_lastNumber = 0;
    mutable size_t m_lastRecord = 0; ///< found last by its number: entries mostly change one after the other
    bool m_anyEnded = false;
};
