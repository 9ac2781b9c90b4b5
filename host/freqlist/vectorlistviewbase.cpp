#include "host/freqlist/vectorlistviewbase.h"

#include "host/base/longwork.h"
#include "host/freqlist/buttonbar.h"
#include "host/freqlist/rowtext.h"
#include "host/valuetree/tree.h"

#include <QElapsedTimer>
#include <QKeyEvent>
#include <QMenu>
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

} // namespace

/// The list of the view's records, which it knows by their numbers.
class VectorListViewBase::PageList final : public SortListView {
public:
    explicit PageList(VectorListViewBase* view) : SortListView(view), m_view(view) { KeepItemsOfPageOnly(); }

    using SortListView::AnnounceSelection;
    using SortListView::BeginFilter;
    using SortListView::FilterMore;
    using SortListView::SelectedRecords;
    using SortListView::ShowOrder;
    using SortListView::ShowPage;

    RecordOrder& Order() { return m_order; }
    RecordFilter& Filter() { return m_filter; }
    const RecordRows& Rows() const { return m_rows; }
    RecordSelection& Selection() { return m_selection; }

protected:
    QString RecordText(quint32 record, int column) const override { return m_view->CellText(record, column); }
    SortListViewItem* MakeItem(quint32 record) override { return m_view->CreateItem(RowOf(record)); }
    void NeedRows(int end) override {
        if (end == All || std::min(end, ShownCount()) > m_view->m_copy.Taken())
            m_view->LoadAll();
    }
    bool SortNow() override { return m_view->sortByHeader(); }
    double FrequencyOfRow(int row) const override { return m_view->RecordFrequency(m_rows.RecordAt(row)); }

private:
    static constexpr int All = std::numeric_limits<int>::max();

    VectorListViewBase* m_view;
};

VectorListViewBase::VectorListViewBase(QWidget* parent, const char* name)
    : QWidget(parent), m_list(new PageList(this)), m_tickMilliseconds(TickMilliseconds) {
    setObjectName(QString::fromUtf8(name));
    setFocusProxy(m_list);
    m_list->installEventFilter(this);
    connect(GetScrollBar(), &QScrollBar::valueChanged, this, &VectorListViewBase::slotSetFirstIndex2View);
    connect(m_list, &SortListView::clicked, this, &VectorListViewBase::clicked);
    connect(m_list, &SortListView::doubleClicked, this, &VectorListViewBase::doubleClicked);
    connect(m_list, &SortListView::returnPressed, this, [this] { TuneToCurrent(); });
    connect(m_list, &SortListView::contextMenuRequested, this, &VectorListViewBase::contextMenuRequested);
    connect(this, &VectorListViewBase::contextMenuRequested, this,
            &VectorListViewBase::slotContextMenuRequested);
    connect(m_list, &SortListView::selectionChanged, this, &VectorListViewBase::selectionChanged);
}

VectorListViewBase::~VectorListViewBase() {
    m_list->disconnect(this);
    m_list->removeEventFilter(this);
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

QScrollBar* VectorListViewBase::GetScrollBar() const {
    return m_list->verticalScrollBar();
}

std::optional<std::vector<bool>> VectorListViewBase::ShownEntries() {
    return m_list->Filter().IsOn() ? std::optional(m_list->Filter().PassesByRecord()) : std::nullopt;
}

int VectorListViewBase::RowCount() const {
    return m_list->ShownCount();
}

int VectorListViewBase::SelectedCount() const {
    return m_list->SelectedCount();
}

bool VectorListViewBase::IsFiltering() const {
    return m_list->IsFiltering();
}

int VectorListViewBase::CurrentRow() const {
    return m_list->CurrentPlace();
}

int VectorListViewBase::Item2Index(const SortListViewItem* item) const {
    return m_list->indexOfTopLevelItem(item);
}

quint32 VectorListViewBase::RecordOfRow(int row) const {
    return m_list->Rows().RecordAt(row);
}

std::vector<quint32> VectorListViewBase::Order() const {
    return m_list->Order().Records();
}

void VectorListViewBase::SetOrder(std::vector<quint32> order, int column, bool ascending) {
    m_list->Order().SetSorted(std::move(order), column, ascending);
}

void VectorListViewBase::SelectRow(int row) {
    m_list->GoToRow(row);
}

void VectorListViewBase::SelectAll() {
    m_list->selectAll();
}

void VectorListViewBase::SetRecordNote(const QString& title, std::function<QString(unsigned id)> textOf) {
    m_list->SetRowNote({title, [this, textOf = std::move(textOf)](const SortListViewItem& item) {
                            const int row = Item2Index(&item);
                            return row < 0 ? QString() : textOf(RecordId(RecordOfRow(row)));
                        }});
}

bool VectorListViewBase::Set_ValuePath(const QString& path) {
    m_path = path;
    m_list->Selection().Clear();
    const QSignalBlocker quiet(GetScrollBar());
    GetScrollBar()->setValue(0);
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
    const bool inListOrder = m_list->SortColumn() < 0 && !m_list->Filter().IsOn();
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
    if (event->timerId() != m_tick.timerId())
        return QWidget::timerEvent(event);
    if (IsPaused()) {
        m_tick.stop();
        emit m_list->countsChanged(); // more wait
        return;
    }
    if (IsFiltering())
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
    const LongWork::Unbroken whole;
    m_copy.TakeAnew(atMost);
    const int selectedBefore = SelectedCount();
    m_list->Selection().Resize(RecordCount());
    m_list->Order().Reset(RecordCount());
    if (m_list->SortColumn() >= 0)
        Sort(m_list->SortColumn(), m_list->SortOrder() == Qt::AscendingOrder);
    if (m_list->Filter().IsOn())
        m_list->BeginFilter(Order());
    showRecords(selectedBefore);
}

/// Takes up the records that came, as far as they are no more than `atMost`, or changed; false when the whole
/// list has to be taken anew.
bool VectorListViewBase::follow(int atMost) {
    if (m_list->Order().IsSorted() && !KnowsOrder())
        return false;
    const std::optional<RecordCopy::Changes> changes = m_copy.TakeChanges(atMost);
    if (!changes)
        return false;
    if (atMost < RecordCopy::All && !changes->any)
        return true; // the page stands
    m_list->Selection().Resize(RecordCount());
    m_list->Order().Place(changes->edited, RecordCount(),
                          [this](quint32 a, quint32 b) { return GoesBefore(a, b); });
    const int selectedBefore = SelectedCount();
    if (m_list->Filter().IsOn()) {
        m_list->Filter().Renew(changes->edited, static_cast<size_t>(RecordCount()), Order());
        m_list->FilterMore(0);
    }
    showRecords(selectedBefore);
    return true;
}

void VectorListViewBase::showRecords(int selectedBefore) {
    m_list->ShowPage();
    if (SelectedCount() != selectedBefore)
        m_list->AnnounceSelection();
    else
        emit m_list->countsChanged();
}

void VectorListViewBase::AddColumn(const QString& title, const QString& field, CompareFunction compare) {
    const int column = m_list->addColumn(title);
    m_list->setColumnAlignment(static_cast<unsigned>(column), Qt::AlignRight);
    m_list->SetCompareFunction(column, compare);
    m_fields.push_back(field);
}

/// False when the operator cancelled.
bool VectorListViewBase::sortByHeader() {
    const QScopedValueRollback arranging(m_arranging, true);
    LoadAll();
    bool isSorted = true;
    bool isWhole = true;
    if (m_list->SortColumn() < 0)
        m_list->Order().Reset(RecordCount());
    else
        isWhole = LongWork::Run(tr("Sort"), [&] {
            isSorted = Sort(m_list->SortColumn(), m_list->SortOrder() == Qt::AscendingOrder);
        });
    if (isWhole && isSorted)
        m_list->ShowOrder();
    return isWhole;
}

bool VectorListViewBase::Sort(int column, bool ascending) {
    if (NextSort(column, ascending) == SortStep::Nothing)
        return false;
    SetOrder(SortedPositions(
                 static_cast<size_t>(RecordCount()),
                 [&](size_t record) { return CellText(static_cast<quint32>(record), column); },
                 m_list->compareFunction(column), ascending),
             column, ascending);
    return true;
}

VectorListViewBase::SortStep VectorListViewBase::NextSort(int column, bool ascending) {
    LoadAll();
    return m_list->Order().Next(column, ascending);
}

void VectorListViewBase::ShowOrderUnlessArranging() {
    if (!m_arranging)
        m_list->ShowOrder();
}

std::vector<quint32> VectorListViewBase::SelectedRows() {
    return m_list->SelectedRecords();
}

void VectorListViewBase::slotSetFirstIndex2View(int first) {
    GetScrollBar()->setValue(first);
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
        m_list->GoToRow(nearest);
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
    const int row = place < static_cast<quint32>(RecordCount()) ? m_list->Rows().RowOf(place) : -1;
    if (row >= 0)
        m_list->GoToRow(row);
    return row >= 0;
}

bool VectorListViewBase::eventFilter(QObject* watched, QEvent* event) {
    const bool isKey = watched == m_list && event->type() == QEvent::KeyPress;
    return (isKey && m_bar && m_bar->TriggerByKey(*static_cast<QKeyEvent*>(event))) ||
           QWidget::eventFilter(watched, event);
}

void VectorListViewBase::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    m_list->setGeometry(rect());
}
