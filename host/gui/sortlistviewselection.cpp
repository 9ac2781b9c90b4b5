#include "host/gui/sortlistview.h"

#include <QScopedValueRollback>

#include <algorithm>

void SortListView::setMultiSelection(bool multi) {
    QTreeWidget::setSelectionMode(multi ? ExtendedSelection : SingleSelection);
}

void SortListView::setSelectionMode(int mode) {
    QTreeWidget::setSelectionMode(static_cast<SelectionMode>(mode));
}

void SortListView::setSelected(QTreeWidgetItem* item, bool selected) {
    const auto* row = static_cast<SortListViewItem*>(item);
    if (!row || row->list() != this || row->parent() || m_selection.Has(row->Record()) == selected)
        return;
    if (selected && selectionMode() == SingleSelection)
        m_selection.DeselectAll();
    m_selection.Set(row->Record(), selected);
    AnnounceSelection();
}

void SortListView::setCurrentItem(QTreeWidgetItem* item, int column,
                                  QItemSelectionModel::SelectionFlags command) {
    const int row = indexOfTopLevelItem(item);
    const int selected = SelectedCount();
    if (command & QItemSelectionModel::Clear)
        m_selection.DeselectAll();
    if (row >= 0) {
        m_column = column;
        m_selection.SetFocusRow(row);
        const quint32 record = m_rows.RecordAt(row);
        if (command & (QItemSelectionModel::Select | QItemSelectionModel::Toggle)) {
            m_selection.Set(record, !(command & QItemSelectionModel::Toggle) || !m_selection.Has(record));
            m_selection.SetAnchor();
        } else if (command & QItemSelectionModel::Deselect) {
            m_selection.Set(record, false);
        }
        ScrollToRow(row);
    }
    if (command == QItemSelectionModel::NoUpdate && SelectedCount() == selected)
        showSelection();
    else
        AnnounceSelection();
}

void SortListView::selectAll() {
    const SelectionMode mode = QTreeWidget::selectionMode();
    if (mode != MultiSelection && mode != ExtendedSelection && mode != ContiguousSelection)
        return;
    NeedAllRows();
    // What the filter has not looked at yet is selected with the rest: it deselects what it does not find.
    for (int record = 0; IsFiltering() && record < RowCount(); ++record)
        m_selection.Set(static_cast<quint32>(record), true);
    m_selection.SelectAll();
    AnnounceSelection();
}

void SortListView::clearSelection() {
    m_selection.DeselectAll();
    AnnounceSelection();
}

std::vector<quint32> SortListView::SelectedRecords() {
    finishFilter();
    return m_selection.Records();
}

void SortListView::SelectRecords(const std::vector<quint32>& records) {
    if (records.empty())
        return;
    finishFilter();
    const bool areHidden = std::any_of(records.begin(), records.end(),
                                       [this](quint32 record) { return !m_rows.IsShown(record); });
    if (areHidden) {
        m_filter.LetPass(records, m_order.Records());
        ShowPage();
    }
    m_selection.DeselectAll();
    for (const quint32 record : records)
        m_selection.Set(record, true);
    const int row = m_rows.RowOf(records.front());
    m_selection.SetFocusRow(row);
    m_selection.SetAnchor();
    ScrollToRow(row);
    AnnounceSelection();
}

void SortListView::ClickRow(int row, Qt::KeyboardModifiers modifiers) {
    switch (QTreeWidget::selectionMode()) {
    case NoSelection:
        return;
    case SingleSelection:
        modifiers = Qt::NoModifier;
        break;
    case MultiSelection: // each click changes one row over
        modifiers.setFlag(Qt::ControlModifier, !modifiers.testFlag(Qt::ShiftModifier));
        break;
    case ContiguousSelection:
        modifiers.setFlag(Qt::ControlModifier, false);
        break;
    case ExtendedSelection:
        break;
    }
    m_selection.Click(row, modifiers);
    AnnounceSelection();
}

void SortListView::GoToRow(int row, Qt::KeyboardModifiers modifiers) {
    if (ShownCount() == 0)
        return;
    row = std::clamp(row, 0, ShownCount() - 1);
    ScrollToRow(row);
    if (!modifiers.testFlag(Qt::ControlModifier) || modifiers.testFlag(Qt::ShiftModifier))
        return ClickRow(row, modifiers);
    m_selection.SetFocusRow(row);
    AnnounceSelection();
}

void SortListView::AnnounceSelection() {
    showSelection();
    emit selectionChanged(currentItem());
    emit countsChanged();
}

/// Items of the page may have been selected by others than the list.
void SortListView::slotSelectionChanged() {
    if (m_mirroring)
        return;
    for (const SortListViewItem* item : m_page) {
        if (!m_pageIsOld)
            m_selection.Set(item->m_record, item->QTreeWidgetItem::isSelected());
    }
    emit selectionChanged(currentItem());
    emit countsChanged();
}

/// Puts selection and focus of the rows on the items of the page.
void SortListView::showSelection() {
    if (m_pageIsOld)
        return; // all of it is shown when somebody looks
    const QScopedValueRollback mirroring(m_mirroring, true);
    for (SortListViewItem* item : m_page) {
        const bool selected = m_selection.Has(item->m_record);
        if (item->QTreeWidgetItem::isSelected() != selected)
            item->QTreeWidgetItem::setSelected(selected);
    }
    const int focus = m_selection.FocusRow() - m_first;
    const bool isOnPage = focus >= 0 && focus < static_cast<int>(m_page.size());
    SortListViewItem* focused = isOnPage ? m_page[static_cast<size_t>(focus)] : nullptr;
    if (focused != QTreeWidget::currentItem() || (focused && currentIndex().column() != m_column))
        QTreeWidget::setCurrentItem(focused, focused ? m_column : 0, QItemSelectionModel::NoUpdate);
    viewport()->update();
}
