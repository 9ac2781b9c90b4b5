#include "host/gui/sortlistview.h"

namespace {

SortListViewItem* asRow(QTreeWidgetItem* item) {
    return static_cast<SortListViewItem*>(item);
}

/// The number of the top row that an index belongs to; 0 for none.
int placeAmongRows(QModelIndex index) {
    while (index.parent().isValid())
        index = index.parent();
    return std::max(index.row(), 0);
}

} // namespace

int SortListView::focusPlace() const {
    return placeAmongRows(currentIndex());
}

SortListViewItem* SortListView::currentItem() const {
    QTreeWidgetItem* focused = QTreeWidget::currentItem();
    if (focused && focused->isSelected())
        return asRow(focused);
    const int place = focusPlace();
    QModelIndex nearest;
    int least = std::numeric_limits<int>::max();
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        QModelIndex row = range.topLeft();
        if (!row.parent().isValid()) // of a row's children the first stands for all
            row = row.siblingAtRow(std::clamp(place, range.top(), range.bottom()));
        const int distance =
            2 * std::abs(placeAmongRows(row) - place) - (placeAmongRows(row) > place ? 1 : 0);
        if (row.isValid() && distance < least) {
            least = distance;
            nearest = row;
        }
    }
    return asRow(itemFromIndex(nearest));
}

int SortListView::SelectedCount() const {
    int count = 0;
    for (const QItemSelectionRange& range : selectionModel()->selection())
        count += range.height();
    return count;
}

/// Of the rows that stood in the list, the one behind that place that still does, else the nearest above.
QTreeWidgetItem* SortListView::nextStanding(const Rows& before, qsizetype place) const {
    const auto stands = [this](const QTreeWidgetItem* row) { return row->treeWidget() == this; };
    const auto at = before.begin() + std::min(place, before.size());
    const auto below = std::find_if(at, before.end(), stands);
    if (below != before.end())
        return *below;
    const auto above = std::find_if(std::make_reverse_iterator(at), before.rend(), stands);
    return above == before.rend() ? nullptr : *above;
}

/// Selects of the rows that begin at `top` those that were selected before they were taken out. With `top` 0
/// no others are selected.
void SortListView::selectMarkedRows(const Rows& rows, int top) {
    QItemSelection selection;
    const int lastColumn = std::max(columnCount() - 1, 0);
    int first = -1;
    for (int i = 0; i <= rows.size(); ++i) {
        const bool selected = i < rows.size() && std::exchange(asRow(rows[i])->m_wasSelected, false);
        // A row keeps its own note that it is selected while it is out of the list, filtered out for example.
        if (!selected && i < rows.size() && rows[i]->isSelected())
            rows[i]->setSelected(false);
        if (selected && first < 0)
            first = i;
        if (!selected && first >= 0) {
            selection.select(model()->index(top + first, 0), model()->index(top + i - 1, lastColumn));
            first = -1;
        }
    }
    selectionModel()->select(selection,
                             top == 0 ? QItemSelectionModel::ClearAndSelect : QItemSelectionModel::Select);
}

int SortListView::CurrentPlace() const {
    SortListViewItem* row = currentItem();
    return row ? placeAmongRows(indexFromItem(row)) : -1;
}

void SortListView::SelectPlace(int place) {
    if (QTreeWidgetItem* row = topLevelItem(place))
        setCurrentItem(row, 0, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

void SortListView::selectAll() {
    finishFilter();
    const int mode = selectionMode();
    if (mode == MultiSelection || mode == ExtendedSelection || mode == ContiguousSelection) {
        // Taking all into a selection of many ranges would compare all with all.
        const QSignalBlocker quiet(selectionModel());
        selectionModel()->clearSelection();
    }
    QTreeWidget::selectAll();
}
