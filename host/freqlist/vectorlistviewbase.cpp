#include "host/freqlist/vectorlistviewbase.h"

#include "host/freqlist/buttonbar.h"
#include "host/freqlist/recordsort.h"
#include "host/valuetree/tree.h"

#include <QElapsedTimer>
#include <QHeaderView>
#include <QMenu>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QSignalBlocker>

#include <cmath>
#include <numeric>

namespace {

constexpr int TickMilliseconds = 40;
/// A list that takes long to show leaves the rest of the program that many times as much.
constexpr int TickShare = 4;
/// Records taken when a view opens, so that it opens at once however long its list, and in each turn of the
/// event loop from the next tick on: less than 10 ms.
constexpr int FirstRecords = 1000;
constexpr int RecordsPerTurn = 20000;
/// Records that the filter looks at in a turn: some 20 ms.
constexpr size_t FilteredPerTurn = 4000;

} // namespace

/// The list of the page. Whatever concerns more than the page it leaves to the view.
class VectorListViewBase::PageList final : public SortListView {
public:
    explicit PageList(VectorListViewBase* view) : SortListView(view), m_view(view) {
        setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setAutoScroll(false);
    }

    int RowCount() const override { return m_view->m_count; }
    int ShownCount() const override { return m_view->RowCount(); }
    int SelectedCount() const override { return m_view->m_selectedCount; }
    void SetFilterText(const QString& text) override { m_view->setFilter(text); }
    QString FilterText() const override { return m_view->m_filter.GetText(); }
    bool IsFiltering() const override { return m_view->IsFiltering(); }
    int CurrentPlace() const override { return m_view->CurrentRow(); }
    void SelectPlace(int place) override { m_view->SelectRow(place); }
    void selectAll() override { m_view->SelectAll(); }
    SortListViewItem* currentItem() const override {
        const int index = m_view->CurrentRow() - m_view->m_first;
        return static_cast<SortListViewItem*>(topLevelItem(index));
    }

protected:
    void SortNow() override { m_view->sortByHeader(); }
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex&, const QEvent*) const override {
        return QItemSelectionModel::NoUpdate; // the view selects, by record
    }

    void mousePressEvent(QMouseEvent* event) override {
        const int index = indexAt(event->pos()).row();
        const int row = index < 0 ? -1 : m_view->m_first + index;
        m_dragging = event->button() == Qt::LeftButton && index >= 0;
        if (event->button() != Qt::RightButton || !m_view->IsSelected(row))
            m_view->select(row, event->modifiers());
        SortListView::mousePressEvent(event);
    }
    void mouseMoveEvent(QMouseEvent* event) override {
        if (!m_dragging || !(event->buttons() & Qt::LeftButton))
            return SortListView::mouseMoveEvent(event);
        const int height = std::max(sizeHintForRow(0), 1);
        const int offset = static_cast<int>(std::floor(event->position().y() / height));
        const int row = m_view->m_first + std::clamp(offset, -1, m_view->fullRows());
        if (row != m_view->rowOf(m_view->m_focus))
            m_view->moveTo(row, true);
    }

private:
    VectorListViewBase* m_view;
    bool m_dragging = false;
};

VectorListViewBase::VectorListViewBase(QWidget* parent, const char* name)
    : QWidget(parent),
      m_list(new PageList(this)),
      m_scroll(new QScrollBar(Qt::Vertical, this)),
      m_tickMilliseconds(TickMilliseconds),
      m_filter([this](quint32 record) { return hasFilterText(record); }) {
    setObjectName(QString::fromUtf8(name));
    setFocusProxy(m_list);
    m_scroll->setRange(0, 0);
    m_list->installEventFilter(this);
    m_list->viewport()->installEventFilter(this);
    connect(m_scroll, &QScrollBar::valueChanged, this, &VectorListViewBase::slotSetFirstIndex2View);
    connect(m_list, &SortListView::clicked, this, &VectorListViewBase::clicked);
    connect(m_list, &SortListView::doubleClicked, this, &VectorListViewBase::doubleClicked);
    connect(m_list, &SortListView::contextMenuRequested, this, &VectorListViewBase::contextMenuRequested);
    connect(this, &VectorListViewBase::contextMenuRequested, this,
            &VectorListViewBase::slotContextMenuRequested);
    connect(m_list, &SortListView::selectionChanged, this, [this](SortListViewItem* item) {
        takePageSelection();
        emit selectionChanged(item);
    });
}

VectorListViewBase::~VectorListViewBase() {
    m_list->disconnect(this);
    m_list->removeEventFilter(this);
    m_list->viewport()->removeEventFilter(this);
    delete m_list; // it asks the view for its counts
}

void VectorListViewBase::InitFreqStoreWidget(FreqStoreListViewButtonBar* bar) {
    m_bar = bar;
    if (bar)
        connect(bar, &QObject::destroyed, this, [this] { m_bar = nullptr; });
}

void VectorListViewBase::slotContextMenuRequested(SortListViewItem*, const QPoint& globalPosition, int) {
    if (!m_bar)
        return;
    QMenu menu;
    m_bar->AddActionsTo(menu);
    if (!menu.isEmpty())
        menu.exec(globalPosition);
}

SortListView* VectorListViewBase::GetListView() {
    return m_list;
}

bool VectorListViewBase::Set_ValuePath(const QString& path) {
    m_path = path;
    clearSelection();
    const QSignalBlocker quiet(m_scroll);
    m_scroll->setValue(0);
    bind();
    return m_value || IsRecordList(Tree::Instance()->GetValue(path));
}

void VectorListViewBase::SetConnected(bool connected) {
    const bool change = connected != IsConnected();
    if (change && !connected)
        LoadAll(); // what is shown stays whole
    FrequencyStoreListView::SetConnected(connected);
    if (change)
        bind();
}

/// Follows the list at the path while connected; otherwise shows on what it has.
void VectorListViewBase::bind() {
    m_tick.stop();
    if (ValueBase* old = m_value.get())
        old->DeleteObserver(this);
    m_value = nullptr;
    if (!IsConnected())
        return;
    ValueBase* value = Tree::Instance()->GetValue(m_path);
    if (IsRecordList(value)) {
        m_value = value;
        value->AddObserver(this);
    }
    const bool inListOrder = m_list->SortColumn() < 0 && !m_filter.IsOn();
    load(inListOrder && !IsPaused() ? FirstRecords : AllRecords);
    if (IsLoading())
        m_tick.start(TickMilliseconds, this);
}

void VectorListViewBase::Update(Observable* subject, TChangeCode code) {
    if (subject != static_cast<Observable*>(m_value.get()))
        return;
    if (code == TChangeCode::Removing) {
        m_tick.stop();
        m_value = nullptr;
        UpdateView();
    } else if (!m_tick.isActive()) {
        m_tick.start(m_tickMilliseconds, this);
    }
}

void VectorListViewBase::timerEvent(QTimerEvent* event) {
    if (event->timerId() == m_filterTurn.timerId())
        return filterMore(FilteredPerTurn);
    if (event->timerId() != m_tick.timerId())
        return QWidget::timerEvent(event);
    if (IsPaused()) {
        m_tick.stop();
        emit m_list->countsChanged(); // more wait
        return;
    }
    if (m_filterTurn.isActive())
        return; // one after the other: changes would make the filter begin anew
    if (!IsLoading() || !follow(RecordsPerTurn))
        UpdateView();
    if (IsLoading())
        m_tick.start(0, this);
    else
        m_tick.stop();
}

void VectorListViewBase::UpdateView() {
    m_tick.stop();
    if (!IsConnected())
        return;
    QElapsedTimer timer;
    timer.start();
    if (!follow(AllRecords))
        TakeAnew();
    m_tickMilliseconds = std::max(TickMilliseconds, static_cast<int>(timer.elapsed()) * TickShare);
}

void VectorListViewBase::SetPaused(bool paused) {
    if (paused == IsPaused())
        return;
    if (paused)
        LoadAll(); // what is shown stays whole
    FrequencyStoreListView::SetPaused(paused);
    if (!paused)
        UpdateView();
    emit m_list->countsChanged();
}

int VectorListViewBase::WaitingCount() const {
    return IsPaused() ? CountNew(m_value.get()) : 0;
}

void VectorListViewBase::LoadAll() {
    if (IsPaused())
        return;
    if (IsLoading() || (m_tick.isActive() && !m_arranging))
        UpdateView();
}

void VectorListViewBase::load(int atMost) {
    const QScopedValueRollback arranging(m_arranging, true);
    m_count = TakeRecords(m_value.get(), atMost);
    m_loaded = std::min(atMost, m_count);
    const int selectedBefore = m_selectedCount;
    m_selected.resize(static_cast<size_t>(m_count));
    if (selectedBefore > 0)
        m_selectedCount = static_cast<int>(std::count(m_selected.begin(), m_selected.end(), true));
    for (std::optional<quint32>* record : {&m_focus, &m_anchor}) {
        if (*record && **record >= static_cast<quint32>(m_count))
            record->reset();
    }
    m_order.clear();
    m_sortedColumn = -1;
    if (m_list->SortColumn() >= 0)
        Sort(m_list->SortColumn(), m_list->SortOrder() == Qt::AscendingOrder);
    if (m_filter.IsOn())
        beginFilter(Order());
    showPage();
    if (m_selectedCount != selectedBefore)
        announceSelection();
    else
        emit m_list->countsChanged();
}

/// Takes up the records that came, as far as they are no more than `atMost`, or changed; false when the whole
/// list has to be taken anew.
bool VectorListViewBase::follow(int atMost) {
    if (m_sortedColumn >= 0 && !KnowsOrder())
        return false;
    std::vector<quint32> edited;
    const std::optional<int> count = TakeChanges(m_value.get(), atMost, edited);
    if (!count)
        return false;
    const bool pageStands = atMost < AllRecords && *count == m_count && edited.empty();
    m_loaded += std::min(atMost, *count - m_loaded);
    m_count = *count;
    if (pageStands)
        return true;
    std::sort(edited.begin(), edited.end());
    edited.erase(std::unique(edited.begin(), edited.end()), edited.end());
    m_selected.resize(static_cast<size_t>(m_count));
    const auto before = [this](quint32 a, quint32 b) {
        if (!m_sortedAscending)
            std::swap(a, b);
        return GoesBefore(a, b) || (!GoesBefore(b, a) && a < b);
    };
    if (m_sortedColumn >= 0)
        RecordSort::Place(m_order, edited, static_cast<quint32>(m_count), before);
    const int selectedBefore = m_selectedCount;
    if (m_filter.IsOn()) {
        m_filter.Renew(edited, static_cast<size_t>(m_count), Order());
        filterMore(0);
    }
    showPage();
    if (m_selectedCount != selectedBefore)
        announceSelection();
    else
        emit m_list->countsChanged();
    return true;
}

void VectorListViewBase::AddColumn(const QString& title, const QString& field, CompareFunction compare) {
    const int column = m_list->addColumn(title);
    m_list->setColumnAlignment(static_cast<unsigned>(column), Qt::AlignRight);
    m_list->SetCompareFunction(column, compare);
    m_fields.push_back(field);
}

void VectorListViewBase::sortByHeader() {
    const QScopedValueRollback arranging(m_arranging, true);
    LoadAll();
    if (m_list->SortColumn() < 0) {
        m_order.clear();
        m_sortedColumn = -1;
    } else if (!Sort(m_list->SortColumn(), m_list->SortOrder() == Qt::AscendingOrder)) {
        return;
    }
    refilterInOrder();
}

bool VectorListViewBase::Sort(int column, bool ascending) {
    if (NextSort(column, ascending) == SortStep::Nothing)
        return false;
    SetOrder(SortedPositions(
        static_cast<size_t>(m_count),
        [&](size_t record) { return CellText(static_cast<quint32>(record), column); },
        m_list->compareFunction(column), ascending));
    return true;
}

VectorListViewBase::SortStep VectorListViewBase::NextSort(int column, bool ascending) {
    LoadAll();
    if (m_count == 0 || (column == m_sortedColumn && ascending == m_sortedAscending))
        return SortStep::Nothing;
    m_sortedAscending = ascending;
    return std::exchange(m_sortedColumn, column) == column ? SortStep::Reverse : SortStep::Anew;
}

void VectorListViewBase::SetOrder(std::vector<quint32> order) {
    m_order = std::move(order);
}

void VectorListViewBase::ShowOrderUnlessArranging() {
    if (!m_arranging)
        refilterInOrder();
}

void VectorListViewBase::refilterInOrder() {
    if (m_filter.IsOn()) {
        m_filter.Reorder(Order());
        filterMore(0);
    }
    showPage();
}

void VectorListViewBase::setFilter(const QString& text) {
    if (text == m_filter.GetText())
        return;
    LoadAll();
    const bool narrows = m_filter.SetQuery(Query::Parse(text, m_list->ColumnTitles()));
    beginFilter(narrows ? m_filter.Passed() : Order());
    m_list->MarkHits(m_filter.GetQuery());
    showPage();
    announceSelection();
}

bool VectorListViewBase::hasFilterText(quint32 record) const {
    return m_filter.GetQuery().Matches([&](int column) { return CellText(record, column); });
}

/// Looks through records in the order shown; a short list at once.
void VectorListViewBase::beginFilter(std::vector<quint32> records) {
    if (!m_filter.IsOn())
        records.clear();
    m_filter.Begin(std::move(records), static_cast<size_t>(m_count));
    filterMore(FilteredPerTurn);
}

void VectorListViewBase::filterMore(size_t records) {
    const size_t before = m_filter.Passed().size();
    const bool turn = m_filterTurn.isActive();
    m_filter.LookOn(records);
    if (!m_filter.IsComplete()) {
        m_filterTurn.start(0, this);
    } else {
        m_filterTurn.stop();
        deselectHidden();
    }
    if (!turn)
        return; // who began shows the page
    if (before <= static_cast<size_t>(m_first + fullRows()))
        showPage();
    else
        showScrollRange();
    if (m_filter.IsComplete())
        announceSelection();
    else
        emit m_list->countsChanged();
}

void VectorListViewBase::finishFilter() {
    if (!m_filter.IsComplete())
        filterMore(std::numeric_limits<size_t>::max());
}

int VectorListViewBase::RowCount() const {
    return m_filter.IsOn() ? static_cast<int>(m_filter.Passed().size()) : m_count;
}

quint32 VectorListViewBase::RecordOfRow(int row) const {
    const auto index = static_cast<size_t>(row);
    if (m_filter.IsOn())
        return m_filter.Passed()[index];
    return m_order.empty() ? static_cast<quint32>(row) : m_order[index];
}

int VectorListViewBase::rowOf(std::optional<quint32> record) const {
    if (!record)
        return -1;
    if (!m_filter.IsOn() && m_order.empty())
        return static_cast<int>(*record);
    const std::vector<quint32>& rows = m_filter.IsOn() ? m_filter.Passed() : m_order;
    const auto found = std::find(rows.begin(), rows.end(), *record);
    return found == rows.end() ? -1 : static_cast<int>(found - rows.begin());
}

std::vector<quint32> VectorListViewBase::Order() const {
    if (!m_order.empty())
        return m_order;
    std::vector<quint32> order(static_cast<size_t>(m_count));
    std::iota(order.begin(), order.end(), 0u);
    return order;
}

std::vector<quint32> VectorListViewBase::Rows() {
    finishFilter();
    return m_filter.IsOn() ? m_filter.Passed() : Order();
}

std::vector<quint32> VectorListViewBase::SelectedRows() {
    std::vector<quint32> records = Rows();
    std::erase_if(records, [this](quint32 record) { return !m_selected[record]; });
    return records;
}

int VectorListViewBase::Item2Index(const SortListViewItem* item) const {
    const int index = item ? m_list->indexOfTopLevelItem(const_cast<SortListViewItem*>(item)) : -1;
    return index < 0 ? -1 : m_first + index;
}

int VectorListViewBase::fullRows() const {
    int height = m_list->sizeHintForRow(0);
    if (height <= 0)
        height = QFontMetrics(m_list->font()).height();
    return std::max(m_list->viewport()->height() / height, 1);
}

void VectorListViewBase::slotSetFirstIndex2View(int) {
    showPage();
}

void VectorListViewBase::showScrollRange() {
    const int page = fullRows();
    const QSignalBlocker quiet(m_scroll);
    m_scroll->setRange(0, std::max(RowCount() - page, 0));
    m_scroll->setPageStep(page);
}

/// Makes the items of the page at which the scroll bar stands: the rows that fit, and the one that is cut
/// off.
void VectorListViewBase::showPage() {
    const int rows = RowCount();
    const int page = fullRows();
    showScrollRange();
    m_first = m_scroll->value();
    const int end = std::min(rows, m_first + page + 1);
    if (end > m_loaded && IsLoading())
        return LoadAll(); // which shows the page
    {
        const QSignalBlocker quiet(m_list);
        const QSignalBlocker quietSelection(m_list->selectionModel());
        std::vector<SortListViewItem*> items;
        for (int row = m_first; row < end; ++row)
            items.push_back(CreateItem(row));
        m_list->clear();
        m_list->AddItems(items);
        m_list->verticalScrollBar()->setValue(0);
    }
    showSelection();
    if (fullRows() != page && !std::exchange(m_measuring, true)) {
        showPage(); // how many rows fit is known only when there is one
        m_measuring = false;
    }
}

bool VectorListViewBase::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_list && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (m_bar && m_bar->TriggerByKey(*key))
            return true;
        return !key->modifiers().testFlag(Qt::AltModifier) && moveByKey(key->key(), key->modifiers());
    }
    if (watched == m_list->viewport() && event->type() == QEvent::Wheel) {
        QCoreApplication::sendEvent(m_scroll, event);
        return true; // the page itself does not scroll
    }
    if (watched == m_list->viewport() && event->type() == QEvent::Resize)
        showPage();
    return QWidget::eventFilter(watched, event);
}

void VectorListViewBase::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    const int bar = m_scroll->sizeHint().width();
    m_list->setGeometry(0, 0, width() - bar, height());
    m_scroll->setGeometry(width() - bar, 0, bar, height());
}
