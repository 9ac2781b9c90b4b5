#include "host/freqlist/recordpage.h"

#include "host/gui/sortlistview.h"

#include <QScrollBar>
#include <QSignalBlocker>

#include <algorithm>

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

RecordPage::RecordPage(SortListView* list, QScrollBar* scroll, Rows rows)
    : m_list(list), m_scroll(scroll), m_rows(std::move(rows)) {
    m_scroll->setRange(0, 0);
}

bool RecordPage::Show(int rows, int ready) {
    const int page = FullRows();
    ShowScrollRange(rows);
    m_first = m_scroll->value();
    const int end = std::min(rows, m_first + page + 1);
    if (end > ready)
        return false;
    {
        const QSignalBlocker quiet(m_list);
        const QSignalBlocker quietSelection(m_list->selectionModel());
        std::vector<SortListViewItem*> items;
        for (int row = m_first; row < end; ++row)
            items.push_back(m_rows.makeItem(row));
        m_list->clear();
        m_list->AddItems(items);
        m_list->verticalScrollBar()->setValue(0);
    }
    ShowSelection();
    if (FullRows() == page || std::exchange(m_measuring, true))
        return true;
    const bool shown = Show(rows, ready); // how many rows fit is known only when there is one
    m_measuring = false;
    return shown;
}

void RecordPage::ShowScrollRange(int rows) {
    const int page = FullRows();
    const QSignalBlocker quiet(m_scroll);
    m_scroll->setRange(0, std::max(rows - page, 0));
    m_scroll->setPageStep(page);
}

void RecordPage::ShowSelection() {
    const QSignalBlocker quiet(m_list);
    const QSignalBlocker quietSelection(m_list->selectionModel());
    for (int i = 0; i < m_list->topLevelItemCount(); ++i)
        m_list->topLevelItem(i)->setSelected(m_rows.isSelected(m_first + i));
    m_list->setCurrentItem(ItemAt(m_rows.focusRow()), 0, QItemSelectionModel::NoUpdate);
    m_list->viewport()->update();
}

void RecordPage::ReadSelection(const std::function<void(int row, bool selected)>& take) const {
    for (int i = 0; i < m_list->topLevelItemCount(); ++i)
        take(m_first + i, m_list->topLevelItem(i)->isSelected());
}

int RecordPage::FullRows() const {
    int height = m_list->sizeHintForRow(0);
    if (height <= 0)
        height = QFontMetrics(m_list->font()).height();
    return std::max(m_list->viewport()->height() / height, 1);
}

int RecordPage::RowOf(const SortListViewItem* item) const {
    const int index = item ? m_list->indexOfTopLevelItem(const_cast<SortListViewItem*>(item)) : -1;
    return index < 0 ? -1 : m_first + index;
}

SortListViewItem* RecordPage::ItemAt(int row) const {
    return row < 0 ? nullptr : static_cast<SortListViewItem*>(m_list->topLevelItem(row - m_first));
}

void RecordPage::ScrollTo(int row) {
    const int page = FullRows();
    if (row < m_first)
        m_scroll->setValue(row);
    else if (row >= m_first + page)
        m_scroll->setValue(row - page + 1);
}

std::optional<int> RecordPage::RowByKey(int key, int row, int rows) const {
    const auto* step = std::find_if(std::begin(KeySteps), std::end(KeySteps),
                                    [key](const KeyStep& candidate) { return candidate.key == key; });
    if (step == std::end(KeySteps))
        return std::nullopt;
    const int lengths[] = {1, FullRows(), rows};
    return row + step->sign * lengths[step->unit];
}
