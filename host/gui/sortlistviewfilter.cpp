#include "host/gui/celldelegate.h"
#include "host/gui/sortlistview.h"

#include <QTimerEvent>

#include <limits>

namespace {

/// Rows that the filter looks at in a turn: some 10 ms. In the first turn all rows are taken out, too.
constexpr qsizetype RowsPerTurn = 2000;
constexpr qsizetype RowsInFirstTurn = 1000;
/// Shown rows that fill every window.
constexpr int RowsSeen = 200;
constexpr qsizetype AllRows = std::numeric_limits<qsizetype>::max();

} // namespace

int SortListView::RowCount() const {
    const qsizetype waiting = m_filterTurn.isActive() ? m_toLookAt.size() - m_lookedAt : 0;
    return topLevelItemCount() +
           static_cast<int>(static_cast<qsizetype>(m_filteredOut.size()) + m_hits.size() + waiting);
}

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

bool SortListView::matchesFilter(const QTreeWidgetItem* row) const {
    const auto* item = static_cast<const SortListViewItem*>(row);
    return m_filter.Matches([item](int column) { return item->CellText(column); });
}

void SortListView::SetFilterText(const QString& text) {
    if (text == m_filter.GetText())
        return;
    Query query = Query::Parse(text, ColumnTitles());
    const bool narrows = !m_filterTurn.isActive() && query.Narrows(m_filter);
    const bool wasOn = !m_filter.IsEmpty();
    m_filter = std::move(query);
    replaceShown([&](Rows& rows) {
        if (wasOn && !narrows)
            takeAllRows(rows);
        m_filterTurn.stop();
        m_toLookAt.clear();
        m_hits.clear();
        m_lookedAt = 0;
        if (!narrows)
            m_allRows = m_filter.IsEmpty() ? Rows() : rows;
        if (m_filter.IsEmpty())
            return;
        m_toLookAt = std::exchange(rows, {});
        lookOn(rows, RowsInFirstTurn);
    });
    if (m_lookedAt < m_toLookAt.size())
        m_filterTurn.start(0, this);
    MarkHits(m_filter);
    slotSelectionChanged();
}

void SortListView::hideRow(QTreeWidgetItem* row) {
    static_cast<SortListViewItem*>(row)->m_wasSelected = false;
    m_filteredOut.push_back(row);
}

/// Adds the rows that the filter hides or has not looked at to those shown, in the order of the list.
void SortListView::takeAllRows(Rows& shown) {
    const Rows waiting = m_hits + m_toLookAt.mid(m_lookedAt);
    const qsizetype count = shown.size() + waiting.size() + static_cast<qsizetype>(m_filteredOut.size());
    if (m_allRows.size() == count) {
        shown = m_allRows;
    } else {
        shown.append(waiting);
        shown.append(Rows(m_filteredOut.begin(), m_filteredOut.end()));
        sortRows(shown);
    }
    m_filteredOut.clear();
}

/// Looks at so many more rows, and adds those that match to `hits`.
void SortListView::lookOn(Rows& hits, qsizetype rows) {
    const qsizetype end = m_lookedAt + std::min(rows, m_toLookAt.size() - m_lookedAt);
    for (; m_lookedAt < end; ++m_lookedAt) {
        QTreeWidgetItem* row = m_toLookAt.at(m_lookedAt);
        if (matchesFilter(row))
            hits.append(row);
        else
            hideRow(row);
    }
}

/// The view lays out all its rows whenever some come: many are put in when they are half as many again.
void SortListView::lookForMore(qsizetype rows) {
    ++m_filling;
    lookOn(m_hits, rows);
    --m_filling;
    const bool isDone = m_lookedAt == m_toLookAt.size();
    if (isDone || topLevelItemCount() < RowsSeen || m_hits.size() > topLevelItemCount() / 2)
        insertHits();
    if (!isDone) {
        emit countsChanged();
        return;
    }
    m_filterTurn.stop();
    m_toLookAt.clear();
    m_lookedAt = 0;
    slotSelectionChanged();
}

void SortListView::insertHits() {
    const Rows hits = std::exchange(m_hits, {});
    if (hits.isEmpty())
        return;
    keepingPlace([&] {
        const int top = topLevelItemCount();
        addTopLevelItems(hits);
        selectMarkedRows(hits, top);
    });
}

void SortListView::timerEvent(QTimerEvent* event) {
    if (event->timerId() == m_filterTurn.timerId())
        lookForMore(RowsPerTurn);
    else
        QTreeWidget::timerEvent(event);
}

void SortListView::finishFilter() {
    if (m_filterTurn.isActive())
        lookForMore(AllRows);
}

/// Before rows come, go or change places: what the filter knows of their order does not hold any longer.
void SortListView::loseOrder() {
    finishFilter();
    m_allRows.clear();
}

bool SortListView::ShowRow(SortListViewItem* row) {
    if (!row)
        return false;
    loseOrder();
    if (std::erase(m_filteredOut, row) > 0) {
        addTopLevelItem(row);
        row->m_mayMove = true;
        sort();
        emit countsChanged();
    }
    return row->treeWidget() == this;
}
