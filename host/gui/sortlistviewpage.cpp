// The page of a list: what of it Qt's tree holds, and the scroll bar over all of it.

#include "host/gui/sortlistview.h"

#include <QCoreApplication>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>

/// Stands where Qt has the scroll bar of the page, which itself never scrolls, and shows the one over all
/// rows instead.
class SortListView::PageBar final : public QScrollBar {
public:
    PageBar() : QScrollBar(Qt::Vertical), m_bar(new QScrollBar(Qt::Vertical, this)) { m_bar->setRange(0, 0); }

    QScrollBar* OverAll() const { return m_bar; }

protected:
    void sliderChange(SliderChange change) override {
        if (change == SliderRangeChange && maximum() != 0)
            setRange(0, 0);
    }
    void resizeEvent(QResizeEvent*) override { m_bar->setGeometry(rect()); }
    void wheelEvent(QWheelEvent* event) override { QCoreApplication::sendEvent(m_bar, event); }

private:
    QScrollBar* m_bar;
};

QScrollBar* SortListView::makeBar() {
    auto* bar = new PageBar;
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBar(bar);
    return bar->OverAll();
}

QString SortListView::RecordText(quint32 record, int column) const {
    return m_items[record]->CellText(column);
}

SortListViewItem* SortListView::ItemOf(quint32 record) {
    SortListViewItem* item = m_keepsItems ? m_items[record] : nullptr;
    if (item)
        return item;
    item = MakeItem(record);
    item->m_list = this;
    item->m_record = record;
    if (m_keepsItems)
        m_items[record] = item;
    return item;
}

SortListViewItem* SortListView::topLevelItem(int row) const {
    if (row < 0 || row >= ShownCount())
        return nullptr;
    if (m_keepsItems)
        return const_cast<SortListView*>(this)->ItemOf(m_rows.RecordAt(row));
    const int place = row - m_first;
    return place >= 0 && place < static_cast<int>(m_page.size()) ? m_page[static_cast<size_t>(place)]
                                                                 : nullptr;
}

int SortListView::indexOfTopLevelItem(const QTreeWidgetItem* item) const {
    const auto* row = static_cast<const SortListViewItem*>(item);
    return row && row->m_list == this ? RowOf(row->m_record) : -1;
}

int SortListView::RowOf(quint32 record) const {
    for (const int row : {m_lastRow, m_lastRow + 1}) {
        if (row < ShownCount() && m_rows.RecordAt(row) == record)
            return m_lastRow = row;
    }
    const int row = m_rows.RowOf(record);
    m_lastRow = std::max(row, 0);
    return row;
}

QRect SortListView::visualItemRect(const QTreeWidgetItem* item) const {
    fillPageIfOld();
    return QTreeWidget::visualItemRect(item);
}

QModelIndex SortListView::indexAt(const QPoint& place) const {
    fillPageIfOld();
    return QTreeWidget::indexAt(place);
}

int SortListView::FullRows() const {
    const QModelIndex first = model()->index(0, 0);
    int height = first.isValid() && !m_pageIsOld ? rowHeight(first) : 0;
    if (height <= 0) // told by the first row that is there; until then it is nearly right
        height =
            fontMetrics().height() + 2 * style()->pixelMetric(QStyle::PM_FocusFrameVMargin, nullptr, this);
    return std::max(viewport()->height() / height, 1);
}

/// Fits the scroll bar to the rows.
void SortListView::fitBar() {
    const int rows = ShownCount();
    const int page = FullRows();
    const QSignalBlocker quiet(m_bar);
    // Children of open rows take room on the page: the last row may be its first.
    m_bar->setRange(0, std::max(rows - (m_anyOpened ? 1 : page), 0));
    m_bar->setPageStep(page);
    setVerticalScrollBarPolicy(m_bar->maximum() > 0 ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
}

/// The bar has moved.
void SortListView::movePage() {
    if (IsEditing())
        endEditing();
    ShowPage();
}

void SortListView::ShowPage() {
    m_pageIsOld = true;
    if (m_fillingPage)
        return; // it goes on
    if (isVisible() || !m_keepsItems)
        fillPage();
    else
        fitBar();
}

void SortListView::fillPageIfOld() const {
    if (m_pageIsOld && !m_fillingPage)
        const_cast<SortListView*>(this)->fillPage();
}

void SortListView::fillPage() {
    constexpr int Rounds = 3; // the first row tells how high they are, and then the bar may need room
    const QScopedValueRollback filling(m_fillingPage, true);
    for (int round = 0; m_pageIsOld && round < Rounds; ++round) {
        NeedRows(m_bar->value() + FullRows() + 1);
        m_pageIsOld = false;
        fitBar();
        const int first = m_bar->value();
        const int before = FullRows();
        const int end = std::min(ShownCount(), first + before + 1);
        std::vector<SortListViewItem*> page;
        for (int row = first; row < end; ++row)
            page.push_back(ItemOf(m_rows.RecordAt(row)));
        replacePage(page);
        m_first = first;
        m_pageIsOld = m_pageIsOld || FullRows() != before;
    }
    m_pageIsOld = false;
    showSelection();
}

/// Makes these the items in Qt's tree. What stays at the top is not touched.
void SortListView::replacePage(const std::vector<SortListViewItem*>& page) {
    const QScopedValueRollback mirroring(m_mirroring, true);
    const auto same = std::mismatch(m_page.begin(), m_page.end(), page.begin(), page.end()).first;
    const auto kept = static_cast<int>(same - m_page.begin());
    if (kept == static_cast<int>(m_page.size()) && kept == static_cast<int>(page.size()))
        return;
    const std::vector<SortListViewItem*> old = std::exchange(m_page, page);
    QTreeWidgetItem* root = invisibleRootItem();
    if (kept == 0) {
        root->takeChildren();
    } else {
        for (int row = root->childCount() - 1; row >= kept; --row)
            root->takeChild(row);
    }
    if (!m_keepsItems) {
        for (int row = kept; row < static_cast<int>(old.size()); ++row)
            end(old[static_cast<size_t>(row)]);
    }
    addTopLevelItems(QList<QTreeWidgetItem*>(page.begin() + kept, page.end()));
    for (int row = kept; m_anyOpened && row < static_cast<int>(page.size()); ++row) {
        const SortListViewItem* item = page[static_cast<size_t>(row)];
        if (item->m_isOpen)
            expand(indexFromItem(item));
    }
}

/// Deletes an item that is in no tree any longer.
void SortListView::end(SortListViewItem* item) {
    if (item)
        item->m_list = nullptr;
    delete item;
}

void SortListView::ScrollToRow(int row) {
    if (row < 0)
        return;
    if (!isVisible())
        m_toSee = row;
    fitBar();
    const int page = FullRows();
    if (row < m_bar->value())
        m_bar->setValue(row);
    else if (row >= m_bar->value() + page)
        m_bar->setValue(row - page + 1);
}

void SortListView::showEvent(QShowEvent* event) {
    QTreeWidget::showEvent(event);
    ShowPage();
    ScrollToRow(std::min(std::exchange(m_toSee, -1), ShownCount() - 1));
    emit countsChanged();
}

void SortListView::resizeEvent(QResizeEvent* event) {
    QTreeWidget::resizeEvent(event);
    ShowPage();
}

/// Rows may have another height then.
void SortListView::changeEvent(QEvent* event) {
    QTreeWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        m_pageIsOld = true;
}

void SortListView::paintEvent(QPaintEvent* event) {
    fillPageIfOld();
    QTreeWidget::paintEvent(event);
}
