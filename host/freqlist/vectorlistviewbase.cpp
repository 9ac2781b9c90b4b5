#include "host/freqlist/vectorlistviewbase.h"

#include "host/freqlist/buttonbar.h"
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
/// Records taken when a view opens, so that it opens at once however long its list; the rest follows at the
/// next tick.
constexpr int FirstRecords = 1000;

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
    QString FilterText() const override { return m_view->m_filter; }
    void selectAll() override { m_view->SelectAll(); }
    using SortListView::compareFunction;

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
        if (row != m_view->rowOf(m_view->m_current))
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
      m_tickMilliseconds(TickMilliseconds) {
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
    const bool inListOrder = m_list->SortColumn() < 0 && m_filter.isEmpty();
    load(inListOrder ? FirstRecords : std::numeric_limits<int>::max());
    if (m_loaded < m_count)
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
    if (event->timerId() != m_tick.timerId())
        return QWidget::timerEvent(event);
    m_tick.stop();
    UpdateView();
}

void VectorListViewBase::UpdateView() {
    m_tick.stop();
    if (!IsConnected())
        return;
    QElapsedTimer timer;
    timer.start();
    if (!follow())
        TakeAnew();
    m_tickMilliseconds = std::max(TickMilliseconds, static_cast<int>(timer.elapsed()) * TickShare);
}

void VectorListViewBase::LoadAll() {
    if (m_tick.isActive() && !m_arranging)
        UpdateView();
    else if (m_loaded < m_count)
        TakeAnew();
}

void VectorListViewBase::load(int atMost) {
    const QScopedValueRollback arranging(m_arranging, true);
    m_count = TakeRecords(m_value.get(), atMost);
    m_loaded = std::min(atMost, m_count);
    const int selectedBefore = m_selectedCount;
    m_selected.resize(static_cast<size_t>(m_count));
    if (selectedBefore > 0)
        m_selectedCount = static_cast<int>(std::count(m_selected.begin(), m_selected.end(), true));
    for (std::optional<quint32>* record : {&m_current, &m_anchor}) {
        if (*record && **record >= static_cast<quint32>(m_count))
            record->reset();
    }
    m_order.clear();
    m_sortedColumn = -1;
    if (m_list->SortColumn() >= 0)
        Sort(m_list->SortColumn(), m_list->SortOrder() == Qt::AscendingOrder);
    filterRows();
    showPage();
    if (m_selectedCount != selectedBefore)
        announceSelection();
    else
        emit m_list->countsChanged();
}

/// Takes up the records that came or changed; false when the whole list has to be taken anew.
bool VectorListViewBase::follow() {
    if (m_loaded < m_count || (m_sortedColumn >= 0 && !KnowsOrder()))
        return false;
    std::vector<quint32> edited;
    const std::optional<int> count = TakeChanges(m_value.get(), edited);
    if (!count)
        return false;
    std::sort(edited.begin(), edited.end());
    edited.erase(std::unique(edited.begin(), edited.end()), edited.end());
    const auto firstNew = static_cast<quint32>(m_count);
    m_count = m_loaded = *count;
    m_selected.resize(static_cast<size_t>(m_count));
    place(edited, firstNew);
    const int selectedBefore = m_selectedCount;
    if (!m_filter.isEmpty()) {
        for (const quint32 record : edited)
            m_passes[record] = passesFilter(record);
        for (quint32 record = firstNew; record < static_cast<quint32>(m_count); ++record)
            m_passes.push_back(passesFilter(record));
        showPassed();
    }
    showPage();
    if (m_selectedCount != selectedBefore)
        announceSelection();
    else
        emit m_list->countsChanged();
    return true;
}

/// Gives the records that changed, and those from `firstNew` on, their places in the order.
void VectorListViewBase::place(const std::vector<quint32>& edited, quint32 firstNew) {
    if (m_sortedColumn < 0)
        return;
    const auto before = [this](quint32 a, quint32 b) {
        if (!m_sortedAscending)
            std::swap(a, b);
        return GoesBefore(a, b) || (!GoesBefore(b, a) && a < b);
    };
    if (!edited.empty()) {
        std::vector<bool> moves(firstNew);
        for (const quint32 record : edited)
            moves[record] = true;
        std::erase_if(m_order, [&](quint32 record) { return moves[record]; });
    }
    std::vector<quint32> placed = edited;
    for (quint32 record = firstNew; record < static_cast<quint32>(m_count); ++record)
        placed.push_back(record);
    std::sort(placed.begin(), placed.end(), before);
    std::vector<quint32> order;
    order.reserve(static_cast<size_t>(m_count));
    auto rest = m_order.cbegin();
    for (const quint32 record : placed) {
        const auto to =
            std::partition_point(rest, m_order.cend(), [&](quint32 other) { return before(other, record); });
        order.insert(order.end(), rest, to);
        order.push_back(record);
        rest = to;
    }
    order.insert(order.end(), rest, m_order.cend());
    m_order = std::move(order);
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
    showPassed();
    showPage();
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

void VectorListViewBase::ShowOrder() {
    if (m_arranging)
        return;
    showPassed();
    showPage();
}

void VectorListViewBase::setFilter(const QString& text) {
    if (text == m_filter)
        return;
    m_filter = text;
    LoadAll();
    filterRows();
    showPage();
    announceSelection();
}

bool VectorListViewBase::passesFilter(quint32 record) const {
    const int columns = m_list->columnCount();
    for (int column = 0; column < columns; ++column) {
        if (CellText(record, column).contains(m_filter, Qt::CaseInsensitive))
            return true;
    }
    return false;
}

void VectorListViewBase::filterRows() {
    m_passes.clear();
    if (!m_filter.isEmpty()) {
        for (quint32 record = 0; record < static_cast<quint32>(m_count); ++record)
            m_passes.push_back(passesFilter(record));
    }
    showPassed();
}

/// Puts what the filter lets through into order.
void VectorListViewBase::showPassed() {
    m_shown.clear();
    if (m_filter.isEmpty())
        return;
    for (const quint32 record : Order()) {
        if (m_passes[record])
            m_shown.push_back(record);
    }
    // What is out of sight is out of reach of what is done to the selection.
    for (size_t record = 0; record < m_selected.size(); ++record)
        m_selected[record] = m_selected[record] && m_passes[record];
    m_selectedCount = static_cast<int>(std::count(m_selected.begin(), m_selected.end(), true));
}

int VectorListViewBase::RowCount() const {
    return m_filter.isEmpty() ? m_count : static_cast<int>(m_shown.size());
}

quint32 VectorListViewBase::RecordOfRow(int row) const {
    const auto index = static_cast<size_t>(row);
    if (!m_filter.isEmpty())
        return m_shown[index];
    return m_order.empty() ? static_cast<quint32>(row) : m_order[index];
}

int VectorListViewBase::rowOf(std::optional<quint32> record) const {
    if (!record)
        return -1;
    if (m_filter.isEmpty() && m_order.empty())
        return static_cast<int>(*record);
    const std::vector<quint32>& rows = m_filter.isEmpty() ? m_order : m_shown;
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

std::vector<quint32> VectorListViewBase::Rows() const {
    return m_filter.isEmpty() ? Order() : m_shown;
}

std::vector<quint32> VectorListViewBase::SelectedRows() const {
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

/// Makes the items of the page at which the scroll bar stands: the rows that fit, and the one that is cut
/// off.
void VectorListViewBase::showPage() {
    const int rows = RowCount();
    const int page = fullRows();
    {
        const QSignalBlocker quiet(m_scroll);
        m_scroll->setRange(0, std::max(rows - page, 0));
        m_scroll->setPageStep(page);
    }
    m_first = m_scroll->value();
    const int end = std::min(rows, m_first + page + 1);
    if (end > m_loaded && m_loaded < m_count)
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

/// Puts the selection of the records on the items of the page.
void VectorListViewBase::showSelection() {
    const QSignalBlocker quiet(m_list);
    const QSignalBlocker quietSelection(m_list->selectionModel());
    for (int i = 0; i < m_list->topLevelItemCount(); ++i)
        m_list->topLevelItem(i)->setSelected(m_selected[RecordOfRow(m_first + i)]);
    const int current = rowOf(m_current) - m_first;
    const bool onPage = m_current && current >= 0 && current < m_list->topLevelItemCount();
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
    m_current.reset();
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
        m_current = RecordOfRow(row);
        if (extend) {
            const auto [from, to] = std::minmax({rowOf(m_anchor), row});
            for (int i = from; i <= to; ++i)
                setSelected(RecordOfRow(i), true);
        } else {
            m_anchor = m_current;
            setSelected(*m_current, !toggle || !m_selected[*m_current]);
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

bool VectorListViewBase::moveByKey(int key, bool extend) {
    const auto* step = std::find_if(std::begin(KeySteps), std::end(KeySteps),
                                    [key](const KeyStep& candidate) { return candidate.key == key; });
    if (step == std::end(KeySteps))
        return false;
    const int lengths[] = {1, fullRows(), RowCount()};
    moveTo(rowOf(m_current) + step->sign * lengths[step->unit], extend);
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

bool VectorListViewBase::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_list && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (m_bar && m_bar->TriggerByKey(*key))
            return true;
        return !key->modifiers().testFlag(Qt::AltModifier) &&
               moveByKey(key->key(), key->modifiers().testFlag(Qt::ShiftModifier));
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
