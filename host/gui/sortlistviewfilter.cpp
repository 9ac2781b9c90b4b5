#include "host/gui/celldelegate.h"
#include "host/gui/sortlistview.h"

#include <QTimerEvent>

#include <limits>

namespace {

/// Rows that the filter looks at in a turn: some 20 ms.
constexpr size_t RowsPerTurn = 4000;
constexpr size_t AllRows = std::numeric_limits<size_t>::max();

} // namespace

QStringList SortListView::ColumnTitles() const {
    QStringList titles;
    for (int column = 0; column < columnCount(); ++column)
        titles << headerItem()->text(column);
    return titles;
}

const Query& SortListView::FilterQuery() const {
    return m_cells->GetQuery();
}

void SortListView::MarkHits(const Query& query) {
    m_cells->SetQuery(query);
    viewport()->update();
    emit filterChanged();
}

void SortListView::SetFilterText(const QString& text) {
    if (text == m_filter.GetText())
        return;
    NeedAllRows();
    if (SelectedCount() > 0 && SelectedCount() == RowCount())
        finishFilter(); // of all that was selected while it was at work it leaves what it finds
    const bool narrows = m_filter.SetQuery(Query::Parse(text, ColumnTitles()));
    BeginFilter(narrows ? m_filter.Passed() : m_order.Records());
    ShowPage();
    MarkHits(m_filter.GetQuery());
    AnnounceSelection();
}

/// Looks through a short list at once.
void SortListView::BeginFilter(std::vector<quint32> records) {
    if (!m_filter.IsOn())
        records.clear();
    m_filter.Begin(std::move(records), static_cast<size_t>(RowCount()));
    FilterMore(RowsPerTurn);
}

void SortListView::FilterMore(size_t records) {
    const int before = ShownCount();
    const bool wasActive = m_filterTurn.isActive();
    ++m_filling; // rows that fill themselves to be searched ask for a sort, too
    m_filter.LookOn(records);
    --m_filling;
    if (IsFiltering()) {
        m_filterTurn.start(0, this);
    } else {
        m_filterTurn.stop();
        if (m_filter.IsOn())
            m_selection.KeepShown();
    }
    if (!wasActive)
        return; // who began shows the page
    if (before <= m_first + FullRows())
        ShowPage();
    else
        fitBar();
    if (IsFiltering())
        emit countsChanged();
    else
        AnnounceSelection();
}

void SortListView::timerEvent(QTimerEvent* event) {
    if (event->timerId() == m_filterTurn.timerId())
        FilterMore(RowsPerTurn);
    else if (event->timerId() == m_dragTurn.timerId())
        drag();
    else
        QTreeWidget::timerEvent(event);
}

void SortListView::finishFilter() {
    if (IsFiltering())
        FilterMore(AllRows);
}

void SortListView::ShowOrder() {
    if (m_filter.IsOn()) {
        m_filter.Reorder(m_order.Records());
        FilterMore(0);
    }
    ShowPage();
}

bool SortListView::ShowRow(SortListViewItem* row) {
    if (!row || row->m_list != this)
        return false;
    finishFilter();
    if (!m_rows.IsShown(row->m_record)) {
        m_filter.LetPass({row->m_record}, m_order.Records());
        ShowPage();
        emit countsChanged();
    }
    return true;
}
