#include "host/gui/sortlistview.h"

#include "host/gui/celldelegate.h"
#include "host/gui/columnarrangement.h"
#include "host/gui/listsettings.h"

#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QProxyStyle>
#include <QScrollBar>

namespace {

const QEvent::Type SortEvent = static_cast<QEvent::Type>(QEvent::registerEventType());

constexpr Qt::AlignmentFlag Alignments[] = {Qt::AlignLeft, Qt::AlignLeft, Qt::AlignRight, Qt::AlignHCenter};

SortListViewItem* asRow(QTreeWidgetItem* item) {
    return static_cast<SortListViewItem*>(item);
}

/// Gives the cells of a list room around their texts, so that a right-aligned column does not touch the next.
class RoomyStyle : public QProxyStyle {
public:
    explicit RoomyStyle(QObject* owner) { setParent(owner); }

    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override {
        constexpr int Sides = 5;
        constexpr int AboveAndBelow = 2;
        switch (metric) {
        case PM_FocusFrameHMargin:
            return Sides;
        case PM_FocusFrameVMargin:
            return AboveAndBelow;
        default:
            return QProxyStyle::pixelMetric(metric, option, widget);
        }
    }
};

void collectOpen(QTreeWidgetItem* row, QList<QTreeWidgetItem*>& open) {
    if (row->childCount() == 0)
        return;
    if (row->isExpanded())
        open.append(row);
    for (int i = 0; i < row->childCount(); ++i)
        collectOpen(row->child(i), open);
}

} // namespace

SortListView::SortListView(QWidget* parent) : QTreeWidget(parent), m_cells(new CellDelegate(this)) {
    setStyle(new RoomyStyle(this));
    setItemDelegate(m_cells);
    setColumnCount(0);
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAlternatingRowColors(true);
    setVerticalScrollMode(ScrollPerItem);
    setEditTriggers(NoEditTriggers); // `EditCell` begins
    QTreeWidget::setSelectionMode(ExtendedSelection);
    header()->setSectionsClickable(true);
    header()->setSectionsMovable(true);
    header()->setContextMenuPolicy(Qt::CustomContextMenu);

    connect(this, &QTreeWidget::itemClicked, this, &SortListView::slotClicked);
    connect(this, &QTreeWidget::itemDoubleClicked, this, &SortListView::slotDoubleClicked);
    connect(this, &QTreeWidget::itemExpanded, this, &SortListView::slotExpanded);
    connect(this, &QTreeWidget::itemCollapsed, this, &SortListView::slotCollapsed);
    connect(this, &QTreeWidget::itemSelectionChanged, this, &SortListView::slotSelectionChanged);
    connect(header(), &QHeaderView::sectionClicked, this, &SortListView::slotHeaderClicked);
    connect(header(), &QWidget::customContextMenuRequested, this,
            &SortListView::slotHeaderContextMenuRequested);
}

SortListView::~SortListView() {
    saveHeader();
    if (m_filterTurn.isActive())
        std::for_each(m_toLookAt.cbegin() + m_lookedAt, m_toLookAt.cend(), [](auto* row) { delete row; });
    qDeleteAll(m_filteredOut);
    delete m_headerMenu;
}

int SortListView::addColumn(const QString& title) {
    const int index = columnCount();
    setColumnCount(index + 1);
    headerItem()->setText(index, title);
    return index;
}

void SortListView::setColumnAlignment(unsigned column, int alignment) {
    const bool isCode = alignment >= 0 && alignment < static_cast<int>(std::size(Alignments));
    const Qt::Alignment horizontal = isCode ? Qt::Alignment(Alignments[alignment]) : Qt::Alignment(alignment);
    m_alignments.resize(std::max(m_alignments.size(), static_cast<size_t>(column) + 1), Qt::AlignLeft);
    m_alignments[column] = horizontal;
    headerItem()->setTextAlignment(static_cast<int>(column), horizontal | Qt::AlignVCenter);
}

Qt::Alignment SortListView::ColumnAlignment(int column) const {
    const bool known = column >= 0 && static_cast<size_t>(column) < m_alignments.size();
    return (known ? m_alignments[static_cast<size_t>(column)] : Qt::AlignLeft) | Qt::AlignVCenter;
}

void SortListView::setColumnWidthMode(int column, int mode) {
    header()->setSectionResizeMode(column, static_cast<QHeaderView::ResizeMode>(mode));
}

void SortListView::FitColumns(const std::vector<int>& characters) {
    const QFontMetrics metrics(font());
    const int digit = metrics.horizontalAdvance(QLatin1Char('0'));
    int column = 0;
    for (const int count : characters) {
        const int title = metrics.horizontalAdvance(headerItem()->text(column));
        header()->resizeSection(column++, std::max(title, count * digit) + 3 * digit);
    }
}

void SortListView::SetColumnWidthPersistantName(const QString& name) {
    m_persistentName = name;
    m_defaultColumns = ColumnArrangement::Of(*header());
    ColumnArrangement::Apply(*header(), ListSettings::LoadText(name));
    m_rememberedColumns = ColumnArrangement::Of(*header());
}

void SortListView::saveHeader() const {
    if (m_persistentName.isEmpty())
        return;
    const QString columns = ColumnArrangement::Of(*header());
    if (columns != m_rememberedColumns)
        ListSettings::SaveText(m_persistentName, columns);
}

void SortListView::showSortIndicator() {
    header()->setSortIndicatorShown(m_showSortIndicator && m_sortColumn >= 0);
    header()->setSortIndicator(m_sortColumn, m_sortOrder);
}

void SortListView::SetCompareFunctionLength(int length) {
    m_compare.reserve(static_cast<size_t>(std::max(length, 0)));
}

void SortListView::SetCompareFunction(int column, CompareFunction function) {
    if (column < 0)
        return;
    if (static_cast<size_t>(column) >= m_compare.size())
        m_compare.resize(static_cast<size_t>(column) + 1, nullptr);
    m_compare[static_cast<size_t>(column)] = function;
}

CompareFunction SortListView::compareFunction(int column) const {
    const bool known = column >= 0 && static_cast<size_t>(column) < m_compare.size();
    const CompareFunction function = known ? m_compare[static_cast<size_t>(column)] : nullptr;
    return function ? function : _compStandardString;
}

void SortListView::AllowSort(bool allow) {
    m_sortAllowed = allow;
    if (allow && std::exchange(m_sortWanted, false))
        postSort();
}

void SortListView::sort() {
    if (IsFilling() || m_sortColumn < 0)
        return;
    if (m_sortAllowed)
        postSort();
    else
        m_sortWanted = true;
}

void SortListView::postSort() {
    if (!std::exchange(m_sortPosted, true))
        QCoreApplication::postEvent(this, new QEvent(SortEvent)); // comes before the next painting
}

void SortListView::customEvent(QEvent* event) {
    if (event->type() != SortEvent) {
        QTreeWidget::customEvent(event);
        return;
    }
    m_sortPosted = false;
    if (!m_sortAllowed || IsEditing())
        m_sortWanted = true;
    else if (m_sortColumn >= 0)
        SortNow();
}

void SortListView::sortByColumn(int column, Qt::SortOrder order) {
    m_sortColumn = column < columnCount() ? column : -1;
    m_sortOrder = order;
    m_inOrder = false;
    showSortIndicator();
    SortNow();
}

void SortListView::setShowSortIndicator(bool show) {
    m_showSortIndicator = show;
    showSortIndicator();
}

void SortListView::SortNow() {
    loseOrder();
    if (!m_inOrder || !moveFew())
        replaceShown([this](Rows& rows) { sortRows(rows); });
}

/// Where in the sorted list a row belongs that is not in it: behind its equals.
int SortListView::placeOf(const SortListViewItem& row, const RowOrder& order) const {
    const SortKey key = order.KeyOf(row.CellText(m_sortColumn));
    int from = 0;
    int to = topLevelItemCount();
    while (from < to) {
        const int middle = (from + to) / 2;
        if (order.Before(key, order.KeyOf(asRow(topLevelItem(middle))->CellText(m_sortColumn))))
            to = middle;
        else
            from = middle + 1;
    }
    return from;
}

/// Takes out those of the rows at these places, in ascending order, that no longer stand between their
/// neighbours. They are all rows that may move.
SortListView::Rows SortListView::takeMisplaced(const std::vector<int>& moving, const RowOrder& order) {
    const auto keyAt = [&](int index) {
        return order.KeyOf(asRow(topLevelItem(index))->CellText(m_sortColumn));
    };
    Rows taken;
    for (auto place = moving.rbegin(); place != moving.rend(); ++place) {
        const int index = *place;
        SortListViewItem* row = asRow(topLevelItem(index));
        row->m_mayMove = false;
        // All rows below stand right; above, the nearest that has not changed counts.
        int above = index - 1;
        while (above >= 0 && asRow(topLevelItem(above))->m_mayMove)
            --above;
        const SortKey key = keyAt(index);
        const bool fits = (above < 0 || !order.Before(key, keyAt(above))) &&
                          (index + 1 >= topLevelItemCount() || !order.Before(keyAt(index + 1), key));
        if (fits)
            continue;
        row->m_wasSelected = row->isSelected();
        taken.prepend(invisibleRootItem()->takeChild(index));
    }
    return taken;
}

/// The places of the rows that may move, in ascending order; none when there are so many that sorting all is
/// less work. New rows stand behind all others; rows before them are not looked at unless many have changed.
std::optional<std::vector<int>> SortListView::fewMoving() const {
    constexpr int RowsPerMove = 64;
    const int count = topLevelItemCount();
    const bool lookAtAll = m_changedRows.size() > FewRows;
    std::vector<int> moving;
    for (int i = count - 1; i >= 0; --i) {
        if (asRow(topLevelItem(i))->m_mayMove)
            moving.push_back(i);
        else if (!lookAtAll)
            break;
        if (moving.size() > static_cast<size_t>(count / RowsPerMove))
            return std::nullopt;
    }
    for (const SortListViewItem* row : m_changedRows) {
        const int place = lookAtAll ? -1 : indexOfTopLevelItem(const_cast<SortListViewItem*>(row));
        if (place >= 0)
            moving.push_back(place);
    }
    std::sort(moving.begin(), moving.end());
    moving.erase(std::unique(moving.begin(), moving.end()), moving.end());
    const auto hasChildren = [this](int place) { return topLevelItem(place)->childCount() > 0; };
    if (std::any_of(moving.begin(), moving.end(), hasChildren))
        return std::nullopt;
    return moving;
}

/// Puts the rows that are new or have changed to their places among the others; false, with nothing changed,
/// when they are not few.
bool SortListView::moveFew() {
    if (selectionMode() == SingleSelection)
        return false; // a current row that is taken out selects another one
    const std::optional<std::vector<int>> moving = fewMoving();
    if (!moving)
        return false;
    m_changedRows.clear();
    if (moving->empty() || m_sortColumn < 0)
        return true;
    const RowOrder order(compareFunction(m_sortColumn), m_sortOrder == Qt::AscendingOrder);
    keepingPlace([&] {
        for (QTreeWidgetItem* row : takeMisplaced(*moving, order)) {
            const int place = placeOf(*asRow(row), order);
            invisibleRootItem()->insertChild(place, row);
            if (std::exchange(asRow(row)->m_wasSelected, false))
                row->setSelected(true);
        }
    });
    return true;
}

void SortListView::sortRows(Rows& rows) {
    for (QTreeWidgetItem* row : rows)
        asRow(row)->m_mayMove = false;
    m_changedRows.clear();
    m_inOrder = true;
    if (m_sortColumn < 0) {
        std::sort(rows.begin(), rows.end(), [](QTreeWidgetItem* a, QTreeWidgetItem* b) {
            return asRow(a)->Sequence < asRow(b)->Sequence;
        });
        return;
    }
    const std::vector<quint32> order = SortedPositions(
        static_cast<size_t>(rows.size()),
        [&](size_t i) { return asRow(rows[static_cast<qsizetype>(i)])->CellText(m_sortColumn); },
        compareFunction(m_sortColumn), m_sortOrder == Qt::AscendingOrder);
    Rows sorted;
    sorted.reserve(rows.size());
    for (const quint32 index : order)
        sorted.append(rows[index]);
    rows.swap(sorted);
}

/// Takes all shown rows out, lets `change` make other ones of them, and puts those in, with selection,
/// focus, open rows and scroll position kept. Rows that `change` leaves out are the caller's.
void SortListView::replaceShown(const std::function<void(Rows&)>& change) {
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        for (int i = range.top(); !range.parent().isValid() && i <= range.bottom(); ++i)
            asRow(topLevelItem(i))->m_wasSelected = true;
    }
    Rows open;
    for (int i = 0; i < topLevelItemCount(); ++i)
        collectOpen(topLevelItem(i), open);
    const QTreeWidgetItem* focused = QTreeWidget::currentItem();
    const int place = focusPlace();
    keepingPlace([&] {
        Rows rows = invisibleRootItem()->takeChildren();
        const Rows before = focused ? rows : Rows();
        change(rows);
        addTopLevelItems(rows);
        for (QTreeWidgetItem* row : open)
            row->setExpanded(true); // does nothing for a row that was left out
        selectMarkedRows(rows, 0);
        if (focused && focused->treeWidget() != this)
            setCurrentItem(nextStanding(before, place), 0, QItemSelectionModel::NoUpdate);
    });
}

/// Changes the shown rows while nobody looks, with focus and scroll position kept.
void SortListView::keepingPlace(const std::function<void()>& change) {
    QTreeWidgetItem* current = QTreeWidget::currentItem();
    const int scroll = verticalScrollBar()->value();
    setUpdatesEnabled(false);
    ++m_filling; // rows that fill themselves to be sorted or searched ask for a sort, too
    {
        const QSignalBlocker quiet(this);
        const QSignalBlocker quietSelection(selectionModel());
        change();
        if (current && current->treeWidget() == this)
            selectionModel()->setCurrentIndex(indexFromItem(current), QItemSelectionModel::NoUpdate);
    }
    --m_filling;
    verticalScrollBar()->setValue(scroll);
    setUpdatesEnabled(true);
    viewport()->update();
}

void SortListView::appendRows(const Rows& rows) {
    if (m_filter.IsEmpty()) {
        addTopLevelItems(rows);
        return;
    }
    Rows shown;
    for (QTreeWidgetItem* row : rows) {
        if (matchesFilter(row))
            shown.append(row);
        else
            hideRow(row);
    }
    addTopLevelItems(shown);
}

void SortListView::AddItems(const std::vector<SortListViewItem*>& items) {
    if (items.empty())
        return;
    loseOrder();
    Rows rows;
    rows.reserve(static_cast<qsizetype>(items.size()));
    for (SortListViewItem* item : items) {
        item->Sequence = ++m_lastSequence;
        item->m_mayMove = true;
        rows.append(item);
    }
    appendRows(rows);
    sort();
    emit countsChanged();
}

void SortListView::RemoveItems(const std::function<bool(const SortListViewItem&)>& remove) {
    loseOrder();
    Rows removed;
    std::erase_if(m_filteredOut, [&](QTreeWidgetItem* row) {
        const bool out = remove(*asRow(row));
        if (out)
            removed.append(row);
        return out;
    });
    replaceShown([&](Rows& rows) {
        const auto kept = std::stable_partition(rows.begin(), rows.end(),
                                                [&](QTreeWidgetItem* row) { return !remove(*asRow(row)); });
        removed.append(Rows(kept, rows.end()));
        rows.erase(kept, rows.end());
    });
    qDeleteAll(removed);
    emit countsChanged();
    slotSelectionChanged();
}

void SortListView::RowsChanged() {
    viewport()->update();
    sort();
}

void SortListView::setMultiSelection(bool multi) {
    QTreeWidget::setSelectionMode(multi ? ExtendedSelection : SingleSelection);
}

void SortListView::setSelectionMode(int mode) {
    QTreeWidget::setSelectionMode(static_cast<SelectionMode>(mode));
}

void SortListView::setSelected(QTreeWidgetItem* item, bool selected) {
    if (item)
        item->setSelected(selected);
}

SortListViewItem* SortListView::firstChild() const {
    return static_cast<SortListViewItem*>(topLevelItem(0));
}

SortListViewItem* SortListView::takeItem(SortListViewItem* item) {
    loseOrder();
    const int index = item ? indexOfTopLevelItem(item) : -1;
    if (index < 0 && std::erase(m_filteredOut, item) == 0)
        return nullptr;
    if (index >= 0)
        takeTopLevelItem(index);
    emit countsChanged();
    return item;
}

void SortListView::ensureItemVisible(SortListViewItem* item) {
    if (item)
        scrollToItem(item);
}

void SortListView::SetHeaderMenu(QMenu* menu) {
    if (m_headerMenu != menu)
        delete m_headerMenu;
    m_headerMenu = menu;
}

void SortListView::slotClicked(QTreeWidgetItem* item, int) {
    emit clicked(asRow(item));
}

void SortListView::slotDoubleClicked(QTreeWidgetItem* item, int) {
    emit doubleClicked(asRow(item));
}

void SortListView::slotExpanded(QTreeWidgetItem* item) {
    emit expanded(asRow(item));
}

void SortListView::slotCollapsed(QTreeWidgetItem* item) {
    emit collapsed(asRow(item));
}

void SortListView::slotHeaderClicked(int column) {
    if (column != m_sortColumn)
        sortByColumn(column, Qt::AscendingOrder);
    else if (m_sortOrder == Qt::AscendingOrder)
        sortByColumn(column, Qt::DescendingOrder);
    else
        sortByColumn(-1, Qt::AscendingOrder);
}

void SortListView::slotSelectionChanged() {
    emit selectionChanged(currentItem());
    emit countsChanged();
}

void SortListView::contextMenuEvent(QContextMenuEvent* event) {
    QTreeWidgetItem* item = itemAt(event->pos());
    emit contextMenuRequested(asRow(item), event->globalPos(), columnAt(event->pos().x()));
    event->accept();
}

void SortListView::showEvent(QShowEvent* event) {
    QTreeWidget::showEvent(event);
    emit countsChanged();
}

void SortListView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F2 && event->modifiers() == Qt::NoModifier) {
        EditCell();
        return;
    }
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && currentItem()) {
        emit returnPressed(currentItem());
        return;
    }
    QTreeWidget::keyPressEvent(event);
}
