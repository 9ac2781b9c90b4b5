#include "host/freqlist/vectorlistviewbase.h"

#include <QScrollBar>
#include <QSignalBlocker>

#include <cmath>

namespace {

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

/// Puts the selection of the records on the items of the page.
void VectorListViewBase::showSelection() {
    const QSignalBlocker quiet(m_list);
    const QSignalBlocker quietSelection(m_list->selectionModel());
    for (int i = 0; i < m_list->topLevelItemCount(); ++i)
        m_list->topLevelItem(i)->setSelected(m_selected[RecordOfRow(m_first + i)]);
    const int current = rowOf(m_focus) - m_first;
    const bool onPage = m_focus && current >= 0 && current < m_list->topLevelItemCount();
    m_list->setCurrentItem(onPage ? m_list->topLevelItem(current) : nullptr, 0,
                           QItemSelectionModel::NoUpdate);
    m_list->viewport()->update();
}

void VectorListViewBase::announceSelection() {
    emit m_list->selectionChanged(m_list->currentItem());
    emit m_list->countsChanged();
}

/// Items of the page may have been selected by others.
void VectorListViewBase::takePageSelection() {
    for (int i = 0; i < m_list->topLevelItemCount(); ++i)
        setSelected(RecordOfRow(m_first + i), m_list->topLevelItem(i)->isSelected());
}

void VectorListViewBase::setSelected(quint32 record, bool selected) {
    if (m_selected[record] == selected)
        return;
    m_selected[record] = selected;
    m_selectedCount += selected ? 1 : -1;
}

void VectorListViewBase::clearSelection() {
    m_selected.assign(m_selected.size(), false);
    m_selectedCount = 0;
    m_focus.reset();
    m_anchor.reset();
}

bool VectorListViewBase::IsSelected(int row) const {
    return row >= 0 && row < RowCount() && m_selected[RecordOfRow(row)];
}

void VectorListViewBase::SelectAll() {
    if (m_list->selectionMode() != QAbstractItemView::ExtendedSelection)
        return;
    for (const quint32 record : Rows())
        setSelected(record, true);
    showSelection();
    announceSelection();
}

/// Selects as a click on the row does: it alone; with control it changes over; with shift all from where the
/// selection began. Negative is a click beside all rows.
void VectorListViewBase::select(int row, Qt::KeyboardModifiers modifiers) {
    if (m_list->selectionMode() == QAbstractItemView::NoSelection)
        return;
    const bool several = m_list->selectionMode() != QAbstractItemView::SingleSelection;
    const bool extend = several && modifiers.testFlag(Qt::ShiftModifier) && rowOf(m_anchor) >= 0;
    const bool toggle = several && modifiers.testFlag(Qt::ControlModifier);
    if (!toggle) {
        m_selected.assign(m_selected.size(), false);
        m_selectedCount = 0;
    }
    if (row >= 0) {
        m_focus = RecordOfRow(row);
        if (extend) {
            const auto [from, to] = std::minmax({rowOf(m_anchor), row});
            for (int i = from; i <= to; ++i)
                setSelected(RecordOfRow(i), true);
        } else {
            m_anchor = m_focus;
            setSelected(*m_focus, !toggle || !m_selected[*m_focus]);
        }
    }
    showSelection();
    announceSelection();
}

void VectorListViewBase::moveTo(int row, bool extend) {
    if (RowCount() == 0)
        return;
    row = std::clamp(row, 0, RowCount() - 1);
    scrollTo(row);
    select(row, extend ? Qt::ShiftModifier : Qt::NoModifier);
}

void VectorListViewBase::scrollTo(int row) {
    const int page = fullRows();
    if (row < m_first)
        m_scroll->setValue(row);
    else if (row >= m_first + page)
        m_scroll->setValue(row - page + 1);
}

/// Moves the focus alone.
void VectorListViewBase::focusRow(int row) {
    if (RowCount() == 0)
        return;
    row = std::clamp(row, 0, RowCount() - 1);
    m_focus = RecordOfRow(row);
    scrollTo(row);
    showSelection();
    announceSelection();
}

int VectorListViewBase::CurrentRow() const {
    if (m_selectedCount == 0)
        return -1;
    const int place = std::max(rowOf(m_focus), 0);
    const int rows = RowCount();
    for (int away = 0; away < rows; ++away) {
        for (const int row : {place + away, place - away}) {
            if (IsSelected(row))
                return row;
        }
    }
    return -1;
}

/// With Ctrl the focus moves alone, and Ctrl+Space selects or deselects where it is, as in every list.
bool VectorListViewBase::moveByKey(int key, Qt::KeyboardModifiers modifiers) {
    const bool extend = modifiers.testFlag(Qt::ShiftModifier);
    const bool focusOnly = modifiers.testFlag(Qt::ControlModifier) && !extend;
    if (focusOnly && key == Qt::Key_Space && rowOf(m_focus) >= 0) {
        select(rowOf(m_focus), modifiers);
        return true;
    }
    const auto* step = std::find_if(std::begin(KeySteps), std::end(KeySteps),
                                    [key](const KeyStep& candidate) { return candidate.key == key; });
    if (step == std::end(KeySteps))
        return false;
    const int lengths[] = {1, fullRows(), RowCount()};
    const int row = rowOf(m_focus) + step->sign * lengths[step->unit];
    if (focusOnly)
        focusRow(row);
    else
        moveTo(row, extend);
    return true;
}

void VectorListViewBase::SelectFrequency(double hertz) {
    LoadAll();
    int nearest = -1;
    double distance = std::numeric_limits<double>::infinity();
    for (int row = 0; row < RowCount(); ++row) {
        const double away = std::abs(RecordFrequency(RecordOfRow(row)) - hertz);
        if (away < distance) {
            distance = away;
            nearest = row;
        }
    }
    if (nearest >= 0)
        moveTo(nearest, false);
}

bool VectorListViewBase::SelectRecord(quint32 place) {
    LoadAll();
    const int row = place < static_cast<quint32>(m_count) ? rowOf(place) : -1;
    if (row >= 0)
        moveTo(row, false);
    return row >= 0;
}

/// A focus that the filter hides goes to the next row that is shown, else to the last.
void VectorListViewBase::focusShown() {
    if (!m_filter.IsOn() || !m_focus || m_filter.Passes(*m_focus))
        return;
    const std::vector<quint32> order = Order();
    const auto passes = [this](quint32 record) { return m_filter.Passes(record); };
    const auto next = std::find_if(std::find(order.begin(), order.end(), *m_focus), order.end(), passes);
    if (next != order.end())
        m_focus = *next;
    else if (m_filter.Passed().empty())
        m_focus.reset();
    else
        m_focus = m_filter.Passed().back();
}

/// What is out of sight is out of reach of what is done to the selection.
void VectorListViewBase::deselectHidden() {
    focusShown();
    if (!m_filter.IsOn() || m_selectedCount == 0)
        return;
    for (size_t record = 0; record < m_selected.size(); ++record)
        m_selected[record] = m_selected[record] && m_filter.Passes(static_cast<quint32>(record));
    m_selectedCount = static_cast<int>(std::count(m_selected.begin(), m_selected.end(), true));
}
