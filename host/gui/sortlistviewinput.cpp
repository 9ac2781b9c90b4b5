// Keys and mouse: they move through all rows, not through the page that Qt knows of.

#include "host/gui/sortlistview.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QStyleHints>

#include <algorithm>
#include <cmath>

namespace {

constexpr int DragMilliseconds = 50; ///< for each row that the page moves while the mouse is held beside it

struct KeyStep {
    enum Unit { Row, Page, All };

    int key;
    Unit unit;
    int sign;
};

constexpr KeyStep KeySteps[] = {
    {Qt::Key_Up, KeyStep::Row, -1},      {Qt::Key_Down, KeyStep::Row, 1},
    {Qt::Key_PageUp, KeyStep::Page, -1}, {Qt::Key_PageDown, KeyStep::Page, 1},
    {Qt::Key_Home, KeyStep::All, -1},    {Qt::Key_End, KeyStep::All, 1},
};

} // namespace

/// The row at a place of the viewport, a row's children included; negative for none.
int SortListView::rowAt(const QPoint& place) const {
    QModelIndex index = indexAt(place);
    while (index.parent().isValid())
        index = index.parent();
    return index.isValid() ? m_first + index.row() : -1;
}

void SortListView::mousePressEvent(QMouseEvent* event) {
    const int row = rowAt(event->pos());
    m_dragging = event->button() == Qt::LeftButton && row >= 0;
    if (row >= 0)
        m_column = std::max(columnAt(event->pos().x()), 0);
    if (event->button() != Qt::RightButton || !IsRowSelected(row))
        ClickRow(row, event->modifiers());
    QTreeWidget::mousePressEvent(event);
}

/// The row that a drag leads to: that under the mouse, or the one beside the page.
int SortListView::dragTarget() const {
    if (m_dragY < 0)
        return m_first - 1;
    if (m_dragY >= viewport()->height())
        return m_first + FullRows();
    const int row = rowAt(QPoint(0, m_dragY));
    return row < 0 ? ShownCount() - 1 : row;
}

void SortListView::mouseMoveEvent(QMouseEvent* event) {
    if (!m_dragging || !(event->buttons() & Qt::LeftButton))
        return QTreeWidget::mouseMoveEvent(event);
    m_dragY = event->pos().y();
    if (m_dragY >= 0 && m_dragY < viewport()->height())
        m_dragTurn.stop();
    else if (!m_dragTurn.isActive())
        m_dragTurn.start(DragMilliseconds, this);
    drag();
}

void SortListView::drag() {
    const int row = dragTarget();
    if (std::clamp(row, 0, ShownCount() - 1) != m_selection.FocusRow())
        GoToRow(row, Qt::ShiftModifier);
}

void SortListView::mouseReleaseEvent(QMouseEvent* event) {
    m_dragging = false;
    m_dragTurn.stop();
    QTreeWidget::mouseReleaseEvent(event);
}

/// A list that gets the focus puts it on the first row that is seen, which is not selected.
void SortListView::focusInEvent(QFocusEvent* event) {
    if (m_selection.FocusRow() < 0 && ShownCount() > 0)
        m_selection.SetFocusRow(std::min(m_bar->value(), ShownCount() - 1));
    showSelection();
    QTreeWidget::focusInEvent(event);
}

void SortListView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F2 && event->modifiers() == Qt::NoModifier) {
        EditCell();
        return;
    }
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && CurrentPlace() >= 0) {
        emit returnPressed(currentItem());
        return;
    }
    if (!moveByKey(*event))
        QTreeWidget::keyPressEvent(event);
}

/// With Ctrl the focus moves alone, and Ctrl+Space selects or deselects where it is, as in every list.
bool SortListView::moveByKey(const QKeyEvent& key) {
    const int from = m_selection.FocusRow();
    const bool extend = key.modifiers().testFlag(Qt::ShiftModifier);
    const bool focusOnly = key.modifiers().testFlag(Qt::ControlModifier) && !extend;
    if (key.modifiers().testFlag(Qt::AltModifier))
        return false;
    if (focusOnly && key.key() == Qt::Key_Space && from >= 0) {
        ClickRow(from, Qt::ControlModifier);
        return true;
    }
    const bool isTyping =
        m_searchTime.isValid() && m_searchTime.elapsed() < QApplication::keyboardInputInterval();
    if (key.key() == Qt::Key_Space && key.modifiers() == Qt::NoModifier && from >= 0 && !isTyping) {
        if (!IsRowSelected(from))
            ClickRow(from, Qt::ControlModifier);
        return true;
    }
    const auto* step = std::find_if(std::begin(KeySteps), std::end(KeySteps),
                                    [&](const KeyStep& candidate) { return candidate.key == key.key(); });
    if (step == std::end(KeySteps))
        return false;
    // The first row has the focus of a list that was not used yet: that is the next row then.
    const bool begins = from == 0 && SelectedCount() == 0 && step->unit == KeyStep::Row && !focusOnly;
    const int lengths[] = {begins ? 0 : 1, FullRows(), ShownCount()};
    GoToRow(from + step->sign * lengths[step->unit], extend      ? Qt::ShiftModifier
                                                     : focusOnly ? Qt::ControlModifier
                                                                 : Qt::NoModifier);
    return true;
}

/// Goes to the next row whose cell, in the column clicked last, begins with what was typed.
void SortListView::keyboardSearch(const QString& text) {
    const bool goesOn =
        m_searchTime.isValid() && m_searchTime.elapsed() < QApplication::keyboardInputInterval();
    m_searchTime.start();
    m_searched = goesOn ? m_searched + text : text;
    NeedAllRows();
    const int rows = ShownCount();
    if (rows == 0 || m_searched.isEmpty())
        return;
    // The same letter over and over goes from row to row.
    const bool steps = m_searched.count(m_searched.front()) == m_searched.size();
    const QString wanted = steps ? m_searched.left(1) : m_searched;
    const int from = std::max(m_selection.FocusRow(), 0) + (steps ? 1 : 0);
    for (int i = 0; i < rows; ++i) {
        const int row = (from + i) % rows;
        if (TextAt(row, m_column).startsWith(wanted, Qt::CaseInsensitive))
            return GoToRow(row);
    }
}
