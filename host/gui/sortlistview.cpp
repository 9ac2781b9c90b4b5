#include "host/gui/sortlistview.h"

#include "host/base/longwork.h"
#include "host/gui/celldelegate.h"
#include "host/gui/columnarrangement.h"
#include "host/gui/listsettings.h"

#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QProxyStyle>
#include <QScrollBar>

namespace {

const QEvent::Type SortEvent = static_cast<QEvent::Type>(QEvent::registerEventType());

constexpr Qt::AlignmentFlag Alignments[] = {Qt::AlignLeft, Qt::AlignLeft, Qt::AlignRight, Qt::AlignHCenter};

/// Changes that are remembered one by one; after more of them all rows are sorted.
constexpr size_t MostChanges = 1024;

SortListViewItem* asRow(QTreeWidgetItem* item) {
    return static_cast<SortListViewItem*>(item);
}

/// Gives the cells of a list room around their texts, so that a right-aligned column does not touch the next.
/// Stripes stay with their rows when the page moves, and a row that has the focus is framed, not filled: it
/// must not look selected.
class RoomyStyle : public QProxyStyle {
public:
    explicit RoomyStyle(SortListView* list) : m_list(*list) { setParent(list); }

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

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override {
        const auto* row = qstyleoption_cast<const QStyleOptionViewItem*>(option);
        if (element == PE_FrameFocusRect) {
            drawFocus(*option, *painter);
        } else if (element == PE_PanelItemViewRow && row && m_list.verticalScrollBar()->value() % 2 != 0) {
            QStyleOptionViewItem turned(*row);
            turned.features ^= QStyleOptionViewItem::Alternate;
            QProxyStyle::drawPrimitive(element, &turned, painter, widget);
        } else {
            QProxyStyle::drawPrimitive(element, option, painter, widget);
        }
    }

private:
    static void drawFocus(const QStyleOption& option, QPainter& painter) {
        const bool isSelected = option.state & State_Selected;
        painter.save();
        painter.setPen(QPen(option.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text), 0,
                            Qt::DotLine));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(option.rect.adjusted(0, 0, -1, -1));
        painter.restore();
    }

    const SortListView& m_list;
};

} // namespace

SortListView::SortListView(QWidget* parent)
    : QTreeWidget(parent),
      m_filter([this](quint32 record) {
          return m_filter.GetQuery().Matches([&](int column) { return RecordText(record, column); });
      }),
      m_bar(makeBar()),
      m_cells(new CellDelegate(this)) {
    setStyle(new RoomyStyle(this));
    setItemDelegate(m_cells);
    setColumnCount(0);
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAlternatingRowColors(true);
    setVerticalScrollMode(ScrollPerItem);
    setAutoScroll(false);            // the page moves instead
    setEditTriggers(NoEditTriggers); // `EditCell` begins
    QTreeWidget::setSelectionMode(ExtendedSelection);
    header()->setSectionsClickable(true);
    header()->setSectionsMovable(true);
    header()->setContextMenuPolicy(Qt::CustomContextMenu);

    connect(m_bar, &QScrollBar::valueChanged, this, &SortListView::movePage);
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
    m_mirroring = true;
    replacePage({});
    for (SortListViewItem* item : m_items)
        end(item);
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
    else if (m_sortColumn >= 0 && !SortNow()) { // the rows are in no order
        m_sortColumn = -1;
        showSortIndicator();
    }
}

void SortListView::sortByColumn(int column, Qt::SortOrder order) {
    if (IsEditing())
        endEditing();
    const auto before = std::pair(m_sortColumn, m_sortOrder);
    const bool wasInOrder = std::exchange(m_inOrder, false);
    m_sortColumn = column < columnCount() ? column : -1;
    m_sortOrder = order;
    showSortIndicator();
    if (!SortNow()) {
        std::tie(m_sortColumn, m_sortOrder) = before;
        m_inOrder = wasInOrder;
        showSortIndicator();
    }
}

void SortListView::setShowSortIndicator(bool show) {
    m_showSortIndicator = show;
    showSortIndicator();
}

bool SortListView::SortNow() {
    NeedAllRows();
    bool isWhole = true;
    ++m_filling; // rows that fill themselves to be sorted ask for a sort, too
    if (m_sortColumn < 0)
        m_order.Reset(RowCount());
    else if (!m_inOrder || !moveChanged())
        isWhole = sortAll();
    --m_filling;
    if (!isWhole)
        return false;
    m_inOrder = m_sortColumn >= 0;
    m_changed.clear();
    m_sortedCount = static_cast<quint32>(RowCount());
    ShowOrder();
    return true;
}

/// Equal rows stay in the order that they have, so that a list can be sorted by one column within another.
/// False when the operator cancelled.
bool SortListView::sortAll() {
    return LongWork::Run(tr("Sort"), [this] {
        m_order.Set(SortedPositions(
            static_cast<size_t>(RowCount()),
            [&](size_t record) { return RecordText(static_cast<quint32>(record), m_sortColumn); },
            compareFunction(m_sortColumn), m_sortOrder == Qt::AscendingOrder, m_order.Sorted()));
    });
}

void SortListView::RecordChanged(quint32 record) {
    if (!m_inOrder || m_filling > 0 || (!m_changed.empty() && m_changed.back() == record))
        return;
    m_changed.push_back(record);
    if (m_changed.size() <= MostChanges)
        return;
    m_inOrder = false; // sorting all is less work
    m_changed.clear();
}

/// Puts the records that came or changed to their places among the others; false, with nothing changed, when
/// they are not few.
bool SortListView::moveChanged() {
    constexpr size_t RowsPerMove = 64;
    constexpr size_t MostMoves = 2048;
    const auto count = static_cast<quint32>(RowCount());
    std::sort(m_changed.begin(), m_changed.end());
    m_changed.erase(std::unique(m_changed.begin(), m_changed.end()), m_changed.end());
    std::vector<quint32> moving;
    std::copy_if(m_changed.begin(), m_changed.end(), std::back_inserter(moving),
                 [&](quint32 record) { return record < m_sortedCount; });
    if (moving.size() + (count - m_sortedCount) > std::min(count / RowsPerMove, MostMoves))
        return false;
    const RowOrder order(compareFunction(m_sortColumn), m_sortOrder == Qt::AscendingOrder);
    std::vector<quint32> rows = m_order.Records();
    std::erase_if(rows, [this](quint32 record) { return record >= m_sortedCount; });
    m_changed = std::move(moving);
    std::vector<quint32> records = takeMisplaced(rows, order);
    for (quint32 record = m_sortedCount; record < count; ++record)
        records.push_back(record);
    insertRecords(rows, records, order);
    m_order.Set(std::move(rows));
    return true;
}

/// Takes those of the changed records out of the rows that no longer stand between their neighbours.
std::vector<quint32> SortListView::takeMisplaced(std::vector<quint32>& rows, const RowOrder& order) const {
    std::vector<quint32> taken;
    if (m_changed.empty())
        return taken;
    std::vector<bool> changed(m_sortedCount);
    for (const quint32 record : m_changed)
        changed[record] = true;
    std::vector<quint32> standing;
    standing.reserve(rows.size());
    for (auto row = rows.begin(); row != rows.end(); ++row) {
        if (changed[*row]) {
            const SortKey key = keyOf(*row, order);
            const auto below =
                std::find_if(row, rows.end(), [&](quint32 record) { return !changed[record]; });
            const bool fits = (standing.empty() || !order.Before(key, keyOf(standing.back(), order))) &&
                              (below == rows.end() || !order.Before(keyOf(*below, order), key));
            if (!fits) {
                taken.push_back(*row);
                continue;
            }
        }
        standing.push_back(*row);
    }
    rows = std::move(standing);
    return taken;
}

/// Puts records to their places, each behind its equals.
void SortListView::insertRecords(std::vector<quint32>& rows, const std::vector<quint32>& records,
                                 const RowOrder& order) const {
    std::vector<std::pair<size_t, quint32>> places; // among the rows, and the record
    for (const quint32 record : records) {
        const SortKey key = keyOf(record, order);
        const auto place = std::partition_point(
            rows.begin(), rows.end(), [&](quint32 row) { return !order.Before(key, keyOf(row, order)); });
        places.emplace_back(static_cast<size_t>(place - rows.begin()), record);
    }
    std::stable_sort(places.begin(), places.end(), [&](const auto& a, const auto& b) {
        return a.first != b.first ? a.first < b.first
                                  : order.Before(keyOf(a.second, order), keyOf(b.second, order));
    });
    std::vector<quint32> merged;
    merged.reserve(rows.size() + records.size());
    auto rest = rows.cbegin();
    for (const auto& [place, record] : places) {
        merged.insert(merged.end(), rest, rows.cbegin() + static_cast<std::ptrdiff_t>(place));
        rest = rows.cbegin() + static_cast<std::ptrdiff_t>(place);
        merged.push_back(record);
    }
    merged.insert(merged.end(), rest, rows.cend());
    rows = std::move(merged);
}

void SortListView::AddItems(const std::vector<SortListViewItem*>& items) {
    if (items.empty())
        return;
    finishFilter();
    for (SortListViewItem* item : items) {
        item->m_list = this;
        item->m_record = static_cast<quint32>(m_items.size());
        m_anyOpened = m_anyOpened || item->m_isOpen;
        m_items.push_back(item);
    }
    takeUpNewRecords(static_cast<int>(items.size()));
}

void SortListView::AddRecords(int count) {
    if (count <= 0)
        return;
    finishFilter();
    m_items.resize(m_items.size() + static_cast<size_t>(count));
    takeUpNewRecords(count);
}

void SortListView::InsertRecords(const std::vector<quint32>& places) {
    finishFilter();
    std::vector<quint32> numbers;
    numbers.reserve(m_items.size());
    std::vector<SortListViewItem*> items(m_items.size() + places.size());
    auto next = places.begin();
    quint32 number = 0;
    for (SortListViewItem* item : m_items) {
        for (; next != places.end() && *next == number; ++next)
            ++number;
        items[number] = item;
        if (item)
            item->m_record = number;
        numbers.push_back(number++);
    }
    const auto count = static_cast<quint32>(items.size());
    m_sortedCount = m_sortedCount < numbers.size() ? numbers[m_sortedCount] : count;
    m_items = std::move(items);
    for (quint32& record : m_changed)
        record = numbers[record];
    m_order.Renumber(numbers, static_cast<int>(count));
    m_order.Insert(places);
    m_filter.Renumber(numbers, m_filter.IsOn() ? count : 0);
    m_selection.Renumber(numbers, static_cast<int>(count));
    if (m_filter.IsOn())
        m_filter.Renew(places, count, m_order.Records());
    for (const quint32 record : places)
        RecordChanged(record);
    ShowPage();
    sort();
    emit countsChanged();
}

/// The last ones have come.
void SortListView::takeUpNewRecords(int count) {
    m_order.Append(count);
    m_selection.Resize(RowCount());
    if (m_filter.IsOn())
        m_filter.Renew({}, static_cast<size_t>(RowCount()), m_order.Records());
    ShowPage();
    sort();
    emit countsChanged();
}

/// The focus of a record that goes comes to the row behind it, else to the nearest above, that stays.
void SortListView::moveFocusFrom(const std::vector<bool>& gone) {
    const int focus = m_selection.FocusRow();
    if (focus < 0 || !gone[m_rows.RecordAt(focus)])
        return;
    const auto stays = [&](int row) { return !gone[m_rows.RecordAt(row)]; };
    int row = focus;
    while (row < ShownCount() && !stays(row))
        ++row;
    if (row == ShownCount()) {
        for (row = focus; row >= 0 && !stays(row);)
            --row;
    }
    if (row >= 0)
        m_selection.SetFocusRow(row);
}

/// Takes records out of the list; their items are the caller's, who shows the page.
std::vector<SortListViewItem*> SortListView::removeRecords(const std::vector<bool>& gone) {
    const int focus = m_selection.FocusRow();
    QWidget* field = IsEditing() && focus >= 0 ? indexWidget(currentIndex()) : nullptr;
    if (field && gone[m_rows.RecordAt(focus)]) { // what was entered goes with the row
        EndCellEditor(*field, false);
        closeEditor(field, QAbstractItemDelegate::NoHint);
    }
    moveFocusFrom(gone);
    std::vector<SortListViewItem*> removed;
    std::vector<quint32> numbers(gone.size(), RecordOrder::Gone);
    size_t count = 0;
    for (size_t record = 0; record < gone.size(); ++record) {
        if (gone[record]) {
            removed.push_back(m_items[record]);
            continue;
        }
        numbers[record] = static_cast<quint32>(count);
        m_items[count] = m_items[record];
        if (m_items[count])
            m_items[count]->m_record = static_cast<quint32>(count);
        ++count;
    }
    m_items.resize(count);
    std::erase(removed, nullptr);
    for (SortListViewItem* item : removed)
        item->m_list = nullptr;
    std::vector<SortListViewItem*> page = m_page;
    std::erase_if(page, [](const SortListViewItem* item) { return !item->m_list; });
    replacePage(page);
    m_sortedCount =
        static_cast<quint32>(std::count_if(numbers.begin(), numbers.begin() + m_sortedCount,
                                           [](quint32 number) { return number != RecordOrder::Gone; }));
    for (quint32& record : m_changed)
        record = numbers[record];
    std::erase(m_changed, RecordOrder::Gone);
    m_order.Renumber(numbers, static_cast<int>(count));
    m_filter.Renumber(numbers, m_filter.IsOn() ? count : 0);
    m_selection.Renumber(numbers, static_cast<int>(count));
    RecordsRemoved(gone);
    return removed;
}

void SortListView::RemoveItems(const std::function<bool(const SortListViewItem&)>& remove) {
    std::vector<bool> gone(m_items.size());
    for (size_t record = 0; record < gone.size(); ++record)
        gone[record] = remove(*ItemOf(static_cast<quint32>(record)));
    RemoveRecords(gone);
}

void SortListView::RemoveRecords(const std::vector<bool>& gone) {
    finishFilter();
    qDeleteAll(removeRecords(gone));
    ShowPage();
    AnnounceSelection();
}

void SortListView::clear() {
    RemoveItems([](const SortListViewItem&) { return true; });
}

void SortListView::RowsChanged() {
    viewport()->update();
    sort();
}

SortListViewItem* SortListView::takeItem(SortListViewItem* item) {
    if (!item || item->m_list != this || !m_keepsItems)
        return nullptr;
    finishFilter();
    std::vector<bool> gone(m_items.size());
    gone[item->m_record] = true;
    const int selected = SelectedCount();
    removeRecords(gone);
    ShowPage();
    if (SelectedCount() != selected)
        AnnounceSelection();
    else
        emit countsChanged();
    return item;
}

void SortListView::ensureItemVisible(SortListViewItem* item) {
    ScrollToRow(indexOfTopLevelItem(item));
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
    if (m_mirroring)
        return; // it was open before it could be seen
    asRow(item)->m_isOpen = true;
    m_anyOpened = true;
    fitBar();
    emit expanded(asRow(item));
}

void SortListView::slotCollapsed(QTreeWidgetItem* item) {
    asRow(item)->m_isOpen = false;
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

void SortListView::contextMenuEvent(QContextMenuEvent* event) {
    QTreeWidgetItem* item = itemAt(event->pos());
    emit contextMenuRequested(asRow(item), event->globalPos(), columnAt(event->pos().x()));
    event->accept();
}
