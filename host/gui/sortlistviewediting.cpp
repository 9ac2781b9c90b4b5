#include "host/gui/celldelegate.h"
#include "host/gui/sortlistview.h"

#include <QHeaderView>
#include <QPainter>

#include <cmath>

namespace {

/// Frequencies in less than that distance are one (Hz).
constexpr double SameFrequency = 0.5;
constexpr int MarkWidth = 5;

} // namespace

std::vector<int> SortListView::ShownColumns() const {
    std::vector<int> columns;
    for (int place = 0; place < columnCount(); ++place) {
        if (const int column = header()->logicalIndex(place); !isColumnHidden(column))
            columns.push_back(column);
    }
    return columns;
}

int SortListView::EditedColumn() const {
    const SortListViewItem* row = currentItem();
    if (!row)
        return -1;
    const int clicked = m_column;
    if (clicked >= 0 && !isColumnHidden(clicked) && CanEdit(*row, clicked))
        return clicked;
    const std::vector<int> columns = ShownColumns();
    const auto found =
        std::find_if(columns.begin(), columns.end(), [&](int column) { return CanEdit(*row, column); });
    return found == columns.end() ? -1 : *found;
}

bool SortListView::EditCell() {
    return !IsEditing() && editCell(currentItem(), EditedColumn());
}

bool SortListView::editCell(SortListViewItem* row, int column) {
    if (!row || column < 0 || isColumnHidden(column) || !CanEdit(*row, column))
        return false;
    row->setFlags(row->flags() | Qt::ItemIsEditable);
    setCurrentItem(row, column, QItemSelectionModel::NoUpdate);
    fillPageIfOld();
    scrollTo(currentIndex()); // to the side
    edit(currentIndex());
    return true;
}

/// Goes on to the next cell that can be edited, in the order shown, from row to row.
bool SortListView::editNextCell(int by) {
    int row = m_selection.FocusRow();
    int place = header()->visualIndex(m_column);
    for (int left = 2 * columnCount(); left > 0; --left) {
        place += by;
        if (place < 0 || place >= columnCount()) {
            row += by;
            place = by > 0 ? 0 : columnCount() - 1;
        }
        SortListViewItem* item = topLevelItem(row);
        if (!item)
            return false;
        if (row != m_selection.FocusRow() && CanEdit(*item, header()->logicalIndex(place)))
            setCurrentItem(item, m_column);
        if (editCell(item, header()->logicalIndex(place)))
            return true;
    }
    return false;
}

/// The page moves away from a field that is open: what was entered is kept, as when the field is left.
void SortListView::endEditing() {
    QWidget* editor = indexWidget(currentIndex());
    if (!editor)
        return;
    commitData(editor);
    closeEditor(editor, QAbstractItemDelegate::NoHint);
}

void SortListView::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
    QTreeWidget::closeEditor(editor, hint);
    if (m_sortAllowed && std::exchange(m_sortWanted, false))
        postSort(); // it waited for the cell
}

double SortListView::FrequencyOfRow(int) const {
    return std::numeric_limits<double>::quiet_NaN();
}

void SortListView::MarkTuned(double hertz) {
    if (std::exchange(m_tuned, hertz) != hertz)
        viewport()->update();
}

void SortListView::drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                           const QModelIndex& index) const {
    QTreeWidget::drawRow(painter, option, index);
    const int row = m_first + index.row();
    if (m_tuned <= 0 || index.parent().isValid() ||
        !(std::abs(FrequencyOfRow(row) - m_tuned) < SameFrequency))
        return;
    QStyleOptionViewItem marked(option);
    marked.state.setFlag(QStyle::State_Selected, IsRowSelected(row));
    paintTunedMark(*painter, marked);
}

/// An arrow at the beginning of the row, and lines above and below it.
void SortListView::paintTunedMark(QPainter& painter, const QStyleOptionViewItem& row) const {
    const QRect place = row.rect;
    const bool isSelected = row.state & QStyle::State_Selected;
    const QColor color = row.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Highlight);
    painter.save();
    painter.setPen(color);
    painter.drawLine(place.topLeft(), place.topRight());
    painter.drawLine(place.bottomLeft(), place.bottomRight());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    const double left = std::max(place.x(), 0);
    const double middle = place.y() + place.height() / 2.0;
    painter.drawPolygon(
        QPolygonF{{left, middle - MarkWidth}, {left + MarkWidth, middle}, {left, middle + MarkWidth}});
    painter.restore();
}
