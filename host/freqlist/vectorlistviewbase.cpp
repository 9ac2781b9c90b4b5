#include "host/freqlist/vectorlistviewbase.h"

#include "host/freqlist/buttonbar.h"
#include "host/freqlist/rowtext.h"
#include "host/valuetree/tree.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QMenu>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QSignalBlocker>

#include <cmath>
#include <limits>

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

    int RowCount() const override { return m_view->RecordCount(); }
    int ShownCount() const override { return m_view->RowCount(); }
    int SelectedCount() const override { return m_view->SelectedCount(); }
    void SetFilterText(const QString& text) override { m_view->setFilter(text); }
    QString FilterText() const override { return m_view->m_filter.GetText(); }
    bool IsFiltering() const override { return m_view->IsFiltering(); }
    int CurrentPlace() const override { return m_view->CurrentRow(); }
    void SelectPlace(int place) override { m_view->SelectRow(place); }
    void selectAll() override { m_view->SelectAll(); }
    SortListViewItem* currentItem() const override { return m_view->m_page.ItemAt(m_view->CurrentRow()); }

protected:
    void SortNow() override { m_view->sortByHeader(); }
    double FrequencyOfRow(int row) const override {
        const int shown = m_view->m_page.First() + row;
        return shown < m_view->RowCount() ? m_view->RecordFrequency(m_view->RecordOfRow(shown))
                                          : SortListView::FrequencyOfRow(row);
    }
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex&, const QEvent*) const override {
        return QItemSelectionModel::NoUpdate; // the view selects, by record
    }

    void mousePressEvent(QMouseEvent* event) override {
        const int index = indexAt(event->pos()).row();
        const int row = index < 0 ? -1 : m_view->m_page.First() + index;
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
        const int row = m_view->m_page.First() + std::clamp(offset, -1, m_view->m_page.FullRows());
        if (row != m_view->m_selection.FocusRow())
            m_view->moveTo(row, Qt::ShiftModifier);
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
      m_filter([this](quint32 record) { return hasFilterText(record); }),
      m_page(m_list, m_scroll,
             {[this](int row) { return CreateItem(row); }, [this](int row) { return IsSelected(row); },
              [this] { return m_selection.FocusRow(); }}) {
    setObjectName(QString::fromUtf8(name));
    setFocusProxy(m_list);
    m_list->installEventFilter(this);
    m_list->viewport()->installEventFilter(this);
    connect(m_scroll, &QScrollBar::valueChanged, this, &VectorListViewBase::slotSetFirstIndex2View);
    connect(m_list, &SortListView::clicked, this, &VectorListViewBase::clicked);
    connect(m_list, &SortListView::doubleClicked, this, &VectorListViewBase::doubleClicked);
    connect(m_list, &SortListView::returnPressed, this, [this] { TuneToCurrent(); });
    connect(m_list, &SortListView::contextMenuRequested, this, &VectorListViewBase::contextMenuRequested);
    connect(this, &VectorListViewBase::contextMenuRequested, this,
            &VectorListViewBase::slotContextMenuRequested);
    connect(m_list, &SortListView::selectionChanged, this, [this](SortListViewItem* item) {
        // Items of the page may have been selected by others.
        m_page.ReadSelection([this](int row, bool on) { m_selection.Set(RecordOfRow(row), on); });
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

void VectorListViewBase::SetRecordNote(const QString& title, std::function<QString(unsigned id)> textOf) {
    m_list->SetRowNote({title, [this, textOf = std::move(textOf)](const SortListViewItem& item) {
                            const int row = Item2Index(&item);
                            return row < 0 ? QString() : textOf(RecordId(RecordOfRow(row)));
                        }});
}

bool VectorListViewBase::Set_ValuePath(const QString& path) {
    m_path = path;
    m_selection.Clear();
    const QSignalBlocker quiet(m_scroll);
    m_scroll->setValue(0);
    bind();
    return m_copy.IsFollowing() || IsRecordList(Tree::Instance()->GetValue(path));
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
    m_copy.Follow(IsConnected() ? Tree::Instance()->GetValue(m_path) : nullptr, this);
    if (!IsConnected())
        return;
    const bool inListOrder = m_list->SortColumn() < 0 && !m_filter.IsOn();
    load(inListOrder && !IsPaused() ? FirstRecords : RecordCopy::All);
    if (IsLoading())
        m_tick.start(TickMilliseconds, this);
}

void VectorListViewBase::Update(Observable* subject, TChangeCode code) {
    if (!m_copy.Follows(subject))
        return;
    if (code == TChangeCode::Removing) {
        m_tick.stop();
        m_copy.Forget();
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
    if (!follow(RecordCopy::All))
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
    return IsPaused() ? m_copy.CountNew() : 0;
}

void VectorListViewBase::LoadAll() {
    if (IsPaused())
        return;
    if (IsLoading() || (m_tick.isActive() && !m_arranging))
        UpdateView();
}

void VectorListViewBase::load(int atMost) {
    const QScopedValueRollback arranging(m_arranging, true);
    m_copy.TakeAnew(atMost);
    const int selectedBefore = SelectedCount();
    m_selection.Resize(RecordCount());
    m_order.Reset(RecordCount());
    if (m_list->SortColumn() >= 0)
        Sort(m_list->SortColumn(), m_list->SortOrder() == Qt::AscendingOrder);
    if (m_filter.IsOn())
        beginFilter(Order());
    showRecords(selectedBefore);
}

/// Takes up the records that came, as far as they are no more than `atMost`, or changed; false when the whole
/// list has to be taken anew.
bool VectorListViewBase::follow(int atMost) {
    if (m_order.IsSorted() && !KnowsOrder())
        return false;
    const std::optional<RecordCopy::Changes> changes = m_copy.TakeChanges(atMost);
    if (!changes)
        return false;
    if (atMost < RecordCopy::All && !changes->any)
        return true; // the page stands
    m_selection.Resize(RecordCount());
    m_order.Place(changes->edited, RecordCount(), [this](quint32 a, quint32 b) { return GoesBefore(a, b); });
    const int selectedBefore = SelectedCount();
    if (m_filter.IsOn()) {
        m_filter.Renew(changes->edited, static_cast<size_t>(RecordCount()), Order());
        filterMore(0);
    }
    showRecords(selectedBefore);
    return true;
}

void VectorListViewBase::showRecords(int selectedBefore) {
    showPage();
    if (SelectedCount() != selectedBefore)
        announceSelection();
    else
        emit m_list->countsChanged();
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
        m_order.Reset(RecordCount());
    } else if (!Sort(m_list->SortColumn(), m_list->SortOrder() == Qt::AscendingOrder)) {
        return;
    }
    refilterInOrder();
}

bool VectorListViewBase::Sort(int column, bool ascending) {
    if (NextSort(column, ascending) == SortStep::Nothing)
        return false;
    SetOrder(SortedPositions(
        static_cast<size_t>(RecordCount()),
        [&](size_t record) { return CellText(static_cast<quint32>(record), column); },
        m_list->compareFunction(column), ascending));
    return true;
}

VectorListViewBase::SortStep VectorListViewBase::NextSort(int column, bool ascending) {
    LoadAll();
    return m_order.Next(column, ascending);
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
    m_filter.Begin(std::move(records), static_cast<size_t>(RecordCount()));
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
        if (m_filter.IsOn())
            m_selection.KeepShown();
    }
    if (!turn)
        return; // who began shows the page
    if (static_cast<qint64>(before) <= qint64(m_page.First()) + m_page.FullRows())
        showPage();
    else
        m_page.ShowScrollRange(RowCount());
    if (m_filter.IsComplete())
        announceSelection();
    else
        emit m_list->countsChanged();
}

std::vector<quint32> VectorListViewBase::Rows() {
    if (IsFiltering())
        filterMore(std::numeric_limits<size_t>::max());
    return m_rows.Records();
}

std::vector<quint32> VectorListViewBase::SelectedRows() {
    std::vector<quint32> records = Rows();
    std::erase_if(records, [this](quint32 record) { return !m_selection.Has(record); });
    return records;
}

void VectorListViewBase::slotSetFirstIndex2View(int) {
    showPage();
}

void VectorListViewBase::showPage() {
    if (!m_page.Show(RowCount(), m_copy.Taken()))
        LoadAll(); // which shows the page
}

void VectorListViewBase::announceSelection() {
    emit m_list->selectionChanged(m_list->currentItem());
    emit m_list->countsChanged();
}

void VectorListViewBase::SelectAll() {
    if (m_list->selectionMode() != QAbstractItemView::ExtendedSelection)
        return;
    for (const quint32 record : Rows())
        m_selection.Set(record, true);
    m_page.ShowSelection();
    announceSelection();
}

/// Selects as a click on the row does; negative is a click beside all rows.
void VectorListViewBase::select(int row, Qt::KeyboardModifiers modifiers) {
    const QAbstractItemView::SelectionMode mode = m_list->selectionMode();
    if (mode == QAbstractItemView::NoSelection)
        return;
    m_selection.Click(row, mode == QAbstractItemView::SingleSelection ? Qt::NoModifier : modifiers);
    m_page.ShowSelection();
    announceSelection();
}

/// Goes to a row, or to the nearest one that there is: selects it alone, with shift all from the anchor on;
/// with control the focus moves alone.
void VectorListViewBase::moveTo(int row, Qt::KeyboardModifiers modifiers) {
    if (RowCount() == 0)
        return;
    row = std::clamp(row, 0, RowCount() - 1);
    m_page.ScrollTo(row);
    if (!modifiers.testFlag(Qt::ControlModifier))
        return select(row, modifiers);
    m_selection.SetFocusRow(row);
    m_page.ShowSelection();
    announceSelection();
}

/// With Ctrl the focus moves alone, and Ctrl+Space selects or deselects where it is, as in every list.
bool VectorListViewBase::moveByKey(int key, Qt::KeyboardModifiers modifiers) {
    const int from = m_selection.FocusRow();
    const bool extend = modifiers.testFlag(Qt::ShiftModifier);
    const bool focusOnly = modifiers.testFlag(Qt::ControlModifier) && !extend;
    if (focusOnly && key == Qt::Key_Space && from >= 0) {
        select(from, modifiers);
        return true;
    }
    const std::optional<int> row = m_page.RowByKey(key, from, RowCount());
    if (row)
        moveTo(*row, extend ? Qt::ShiftModifier : focusOnly ? Qt::ControlModifier : Qt::NoModifier);
    return row.has_value();
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
        moveTo(nearest, Qt::NoModifier);
}

QString VectorListViewBase::SelectedText() {
    LoadAll();
    RowText text(*m_list);
    for (const quint32 record : SelectedRows())
        text.Add([&](int column) { return CellText(record, column); });
    return text.Get();
}

bool VectorListViewBase::SelectRecord(quint32 place) {
    LoadAll();
    const int row = place < static_cast<quint32>(RecordCount()) ? m_rows.RowOf(place) : -1;
    if (row >= 0)
        moveTo(row, Qt::NoModifier);
    return row >= 0;
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
