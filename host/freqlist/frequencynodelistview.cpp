#include "host/freqlist/frequencynodelistview.h"

#include "host/base/longwork.h"
#include "host/base/problems.h"
#include "host/base/trace.h"
#include "host/freqlist/buttonbar.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencynodemediator.h"
#include "host/freqlist/frequencynodemediatorctrl.h"
#include "host/freqstorexml/frequencystorelist.h"
#include "host/report/recordreader.h"
#include "host/report/rgexception.h"
#include "host/valuetree/operatoraction.h"

#include <QBuffer>
#include <QKeyEvent>
#include <QMenu>
#include <QScrollBar>

#include <cmath>
#include <map>

FrequencyNodeMediatorViewItem::FrequencyNodeMediatorViewItem(FrequencyNodeListView* owner,
                                                             FrequencyNodeMediator* mediator)
    : SortListViewItem(nullptr, {}, false), m_view(owner), m_mediator(mediator) {
    if (mediator)
        mediator->AddView(owner, this);
}

FrequencyNodeMediatorViewItem::~FrequencyNodeMediatorViewItem() {
    if (m_mediator)
        m_mediator->RemoveView(m_view);
}

void FrequencyNodeMediatorViewItem::MediatorEnds() {
    m_mediator = nullptr;
}

void FrequencyNodeMediatorViewItem::MarkStale() {
    if (!m_view->IsPaused())
        SortListViewItem::MarkStale();
}

void FrequencyNodeMediatorViewItem::Fill() {
    if (m_mediator)
        m_mediator->UpdateMyViewItems(m_view);
}

QString FrequencyNodeMediatorViewItem::CellText(int column) const {
    if (IsFilled())
        return text(column);
    QString cell;
    return m_view->cellText(m_mediator, column, cell) ? cell : text(column);
}

QString FrequencyNodeMediatorViewItem::CellAddition(int column) const {
    const std::vector<unsigned>& ids = m_view->GetColumnDescription();
    const bool known = m_mediator && static_cast<size_t>(column) < ids.size();
    return known ? m_mediator->CellAddition(ids[static_cast<size_t>(column)]) : QString();
}

QString FrequencyNodeMediatorViewItem::ToolTip() const {
    return m_mediator ? m_mediator->GetTipString(0) : QString();
}

FrequencyNodeListView::FrequencyNodeListView(QWidget* parent, unsigned listId)
    : SortListView(parent), m_controller(FreqStore::Instance().GetFrequencies(listId)) {
    SetID(listId);
    connect(this, &SortListView::contextMenuRequested, this,
            &FrequencyNodeListView::slotContextMenuRequested);
    const auto tune = [this](SortListViewItem* item) {
        FrequencyNodeMediator* mediator =
            item ? static_cast<FrequencyNodeMediatorViewItem*>(item)->GetMediator() : nullptr;
        if (mediator && !HasEditor())
            static_cast<IFrequencyStoreItem*>(mediator)->SetFrequency(this);
    };
    connect(this, &SortListView::doubleClicked, this, tune);
    connect(this, &SortListView::returnPressed, this, tune);
    if (m_controller)
        m_controller->AddView(this);
}

FrequencyNodeListView::~FrequencyNodeListView() {
    if (m_bar)
        m_bar->DetachView(this);
    if (m_controller)
        m_controller->RemoveView(this);
    for (FrequencyNodeMediator* mediator : m_mediators) {
        if (mediator)
            mediator->RemoveView(this);
    }
}

void FrequencyNodeListView::AddColumn(const QString& title, CompareFunction compare, unsigned columnId) {
    const int column = addColumn(title);
    SetCompareFunction(column, compare);
    m_columnIds.push_back(columnId);
}

void FrequencyNodeListView::AddRows(const std::vector<FrequencyNodeMediator*>& mediators) {
    if (IsPaused()) {
        emit countsChanged();
        return;
    }
    m_mediators.reserve(m_mediators.size() + mediators.size());
    m_numbers.reserve(m_mediators.capacity());
    for (FrequencyNodeMediator* mediator : mediators) {
        if (!mediator || !mediator->AddView(this, m_lastNumber + 1))
            continue;
        m_mediators.push_back(mediator);
        m_numbers.push_back(++m_lastNumber);
    }
    AddRecords(static_cast<int>(m_mediators.size()) - RowCount());
}

/// The record of a number; nothing when it has been taken out.
std::optional<quint32> FrequencyNodeListView::recordOf(quint32 number) const {
    if (++m_lastRecord >= m_numbers.size() || m_numbers[m_lastRecord] != number)
        m_lastRecord = static_cast<size_t>(std::lower_bound(m_numbers.begin(), m_numbers.end(), number) -
                                           m_numbers.begin());
    const bool isThere = m_lastRecord < m_numbers.size() && m_numbers[m_lastRecord] == number;
    return isThere ? std::optional(static_cast<quint32>(m_lastRecord)) : std::nullopt;
}

FrequencyNodeMediatorViewItem* FrequencyNodeListView::MakeRow(quint32 number) {
    const std::optional<quint32> record = recordOf(number);
    return record ? static_cast<FrequencyNodeMediatorViewItem*>(ItemOf(*record)) : nullptr;
}

void FrequencyNodeListView::NoteEndedRow(quint32 number) {
    if (const std::optional<quint32> record = recordOf(number)) {
        m_mediators[*record] = nullptr;
        m_anyEnded = true;
    }
}

void FrequencyNodeListView::NoteChangedRow(quint32 number) {
    if (!IsInOrder() || IsPaused())
        return;
    if (const std::optional<quint32> record = recordOf(number))
        RecordChanged(*record);
}

bool FrequencyNodeListView::cellText(FrequencyNodeMediator* mediator, int column, QString& text) const {
    const bool known = mediator && column >= 0 && static_cast<size_t>(column) < m_columnIds.size();
    return known && mediator->CellText(m_columnIds[static_cast<size_t>(column)], text);
}

QString FrequencyNodeListView::RecordText(quint32 record, int column) const {
    if (const SortListViewItem* row = MadeItem(record))
        return row->CellText(column);
    QString text;
    if (!m_mediators[record] || cellText(m_mediators[record], column, text))
        return text;
    return const_cast<FrequencyNodeListView*>(this)->ItemOf(record)->text(column);
}

SortListViewItem* FrequencyNodeListView::MakeItem(quint32 record) {
    return new FrequencyNodeMediatorViewItem(this, m_mediators[record]);
}

void FrequencyNodeListView::RecordsRemoved(const std::vector<bool>& gone) {
    size_t count = 0;
    for (size_t record = 0; record < gone.size(); ++record) {
        if (gone[record])
            continue;
        m_mediators[count] = m_mediators[record];
        m_numbers[count++] = m_numbers[record];
    }
    m_mediators.resize(count);
    m_numbers.resize(count);
}

/// Numbers ascend: rows get those that are free between their neighbours, which rows that were deleted have
/// left there. False, with nothing changed, when there are none.
bool FrequencyNodeListView::insertBetween(const std::vector<FrequencyNodeMediator*>& mediators,
                                          const std::vector<FrequencyNodeMediator*>& order) {
    if (m_anyEnded || m_mediators.size() + mediators.size() != order.size())
        return false;
    std::vector<quint32> places;
    std::vector<quint32> numbers;
    numbers.reserve(order.size());
    auto known = m_numbers.cbegin();
    quint32 last = 0;
    for (quint32 place = 0; place < order.size(); ++place) {
        const bool isNew = places.size() < mediators.size() && order[place] == mediators[places.size()];
        if (!isNew && known == m_numbers.cend())
            return false;
        const quint32 number = isNew ? last + 1 : *known++;
        if (number <= last)
            return false;
        if (isNew)
            places.push_back(place);
        last = number;
        numbers.push_back(number);
    }
    for (const quint32 place : places)
        (void)order[place]->AddView(this, numbers[place]); // a new one is in no view
    m_mediators = order;
    m_numbers = std::move(numbers);
    m_lastNumber = std::max(m_lastNumber, last);
    InsertRecords(places);
    return true;
}

/// Else all rows are taken up anew; those that were made are made again when they are seen.
void FrequencyNodeListView::InsertRows(const std::vector<FrequencyNodeMediator*>& mediators,
                                       const std::vector<FrequencyNodeMediator*>& order) {
    if (IsPaused())
        return AddRows(mediators);
    if (insertBetween(mediators, order))
        return;
    const std::vector<FrequencyNodeMediator*> selected = SelectedInOrder();
    const int scrollPlace = ScrollPlace();
    for (FrequencyNodeMediator* mediator : m_mediators) {
        if (mediator)
            mediator->RemoveView(this);
    }
    RemoveRecords(std::vector<bool>(m_mediators.size(), true));
    AddRows(order);
    ShowEntries(selected, scrollPlace);
}

int FrequencyNodeListView::ScrollPlace() const {
    return verticalScrollBar()->value();
}

void FrequencyNodeListView::ShowEntries(const std::vector<FrequencyNodeMediator*>& mediators,
                                        int scrollPlace) {
    verticalScrollBar()->setValue(scrollPlace);
    SelectRowsOf(mediators);
}

void FrequencyNodeListView::SetPaused(bool paused) {
    if (paused == IsPaused())
        return;
    FrequencyStoreListView::SetPaused(paused);
    if (!paused && m_controller) {
        m_controller->AddView(this);
        m_controller->UpdateMyViewItems(this);
    }
    emit countsChanged();
}

int FrequencyNodeListView::WaitingCount() const {
    const auto* list = dynamic_cast<const FrequencyNodeMediatorCtrl*>(m_controller);
    return IsPaused() && list ? std::max(static_cast<int>(list->size()) - RowCount(), 0) : 0;
}

void FrequencyNodeListView::RemoveEndedRows() {
    if (IsPaused())
        emit countsChanged(); // entries that wait may have ended, too
    if (!std::exchange(m_anyEnded, false))
        return;
    std::vector<bool> gone(m_mediators.size());
    for (size_t record = 0; record < gone.size(); ++record)
        gone[record] = !m_mediators[record];
    RemoveRecords(gone);
}

std::vector<FrequencyNodeMediator*> FrequencyNodeListView::SelectedMediators() const {
    std::vector<FrequencyNodeMediator*> mediators = SelectedInOrder();
    const int row = CurrentPlace();
    const auto current =
        std::find(mediators.begin(), mediators.end(), row < 0 ? nullptr : mediatorOfRow(row));
    if (current != mediators.end())
        std::rotate(mediators.begin(), current, current + 1);
    return mediators;
}

std::vector<FrequencyNodeMediator*> FrequencyNodeListView::SelectedInOrder() const {
    std::vector<FrequencyNodeMediator*> mediators;
    for (const quint32 record : const_cast<FrequencyNodeListView*>(this)->SelectedRecords())
        mediators.push_back(m_mediators[record]);
    std::erase(mediators, nullptr);
    return mediators;
}

void FrequencyNodeListView::SelectRowsOf(const std::vector<FrequencyNodeMediator*>& mediators) {
    std::vector<quint32> records;
    for (const FrequencyNodeMediator* mediator : mediators) {
        const std::optional<quint32> number = mediator->NumberInView(this);
        if (const std::optional<quint32> record = number ? recordOf(*number) : std::nullopt)
            records.push_back(*record);
    }
    SelectRecords(records);
}

double FrequencyNodeListView::DistanceTo(FrequencyNodeMediator& mediator, double hertz) const {
    double frequency = 0;
    return mediator.GetFrequency(frequency, 0) ? std::abs(frequency - hertz)
                                               : std::numeric_limits<double>::infinity();
}

void FrequencyNodeListView::SelectFrequency(double hertz) {
    int nearest = -1;
    double distance = std::numeric_limits<double>::infinity();
    for (int row = 0; row < ShownCount(); ++row) {
        FrequencyNodeMediator* mediator = mediatorOfRow(row);
        const double away = mediator ? DistanceTo(*mediator, hertz) : distance;
        if (away < distance) {
            distance = away;
            nearest = row;
        }
    }
    if (nearest >= 0)
        GoToRow(nearest);
}

std::optional<std::vector<bool>> FrequencyNodeListView::ShownEntries() {
    if (FilterText().isEmpty())
        return std::nullopt;
    std::vector<bool> shown;
    for (int row = 0; row < ShownCount(); ++row) {
        const FrequencyNodeMediator* mediator = mediatorOfRow(row);
        const Node* entry = mediator ? mediator->GetNode() : nullptr;
        if (!entry)
            continue;
        if (entry->GetSerial() >= shown.size())
            shown.resize(std::max<size_t>(2 * shown.size(), entry->GetSerial() + size_t(1)));
        shown[entry->GetSerial()] = true;
    }
    return shown;
}

std::vector<double> FrequencyNodeListView::SelectedFrequencies() {
    std::vector<double> frequencies;
    for (const quint32 record : m_selection.Records()) {
        FrequencyNodeMediator* mediator = m_mediators[record];
        double hertz = 0;
        if (mediator && mediator->GetFrequency(hertz, 0))
            frequencies.push_back(hertz);
    }
    return frequencies;
}

namespace {

/// What mediators say of themselves, one after the other.
void describe(const std::vector<FrequencyNodeMediator*>& mediators, FreqStoreXml::FrequencyStoreList& list) {
    qint64 described = 0;
    for (FrequencyNodeMediator* mediator : mediators) {
        LongWork::Step(described++, static_cast<qint64>(mediators.size()));
        mediator->AddToXml(list);
    }
}

} // namespace

void FrequencyNodeListView::CopySelection(TracePlace place) {
    try {
        const std::vector<FrequencyNodeMediator*> mediators = CopiedMediators();
        if (mediators.empty())
            return;
        LongWork::Run(tr("Copy"), [&] {
            FreqStoreXml::FrequencyStoreList list;
            describe(mediators, list);
            list.SetUsage(FreqStoreXml::FrequencyStoreList::NameToUsage(mediators.front()->GetUsage()));
            QString text;
            LongWork::Elsewhere([&] { text = list.GetXmlString(); });
            FreqStore::Instance().SetClipboardText(text);
        });
    } catch (const RGException& exception) {
        TraceLazily(place, [] { return QStringLiteral("EXCEPTION WHILE COPYING FREQUENCIES:"); });
        TraceLazily(place, [&] { return exception.GetErrorText(); });
    } catch (...) {
        TraceLazily(place, [] { return QStringLiteral("UNKNOWN EXCEPTION WHILE COPYING FREQUENCIES"); });
    }
}

void FrequencyNodeListView::PasteClipboard(TracePlace place) {
    auto* list = dynamic_cast<FrequencyNodeMediatorCtrl*>(m_controller);
    if (!list)
        return;
    const OperatorAction action(tr("Paste"));
    AllowSort(false);
    try {
        LongWork::Run(tr("Paste"), [&] {
            QByteArray text = FreqStore::Instance().GetClipboardText().toUtf8();
            QBuffer buffer(&text);
            buffer.open(QIODevice::ReadOnly);
            FreqStoreXml::FrequencyStoreList copied;
            LongWork::Elsewhere([&] {
                REPORTGENERATOR::ReadDocument(buffer, QStringLiteral("clipboard"), copied, nullptr, false);
            });
            list->AppendEntries(copied.GetFrequencyStoreEntry());
        });
    } catch (const RGException& exception) {
        TraceLazily(place, [] { return QStringLiteral("EXCEPTION WHILE PASTING FREQUENCIES:"); });
        Problems::Report(place, Problem::FromText(exception.GetErrorText()));
    }
    AllowSort(true);
    sort();
}

bool FrequencyNodeListView::TuneToCurrent() {
    const int row = CurrentPlace();
    FrequencyNodeMediator* mediator = row < 0 ? nullptr : mediatorOfRow(row);
    if (mediator)
        static_cast<IFrequencyStoreItem*>(mediator)->SetFrequency(this);
    return mediator != nullptr;
}

FreqStoreXml::ListContent FrequencyNodeListView::Content() {
    auto* list = dynamic_cast<FrequencyNodeMediatorCtrl*>(m_controller);
    if (!list)
        return {};
    list->ForceUpdateNow();
    return list->Content();
}

/// A list that takes copied entries takes its own.
bool FrequencyNodeListView::CanDuplicate() const {
    const QAction* paste = m_bar ? m_bar->GetAction(FreqStoreListViewButtonBar::Paste) : nullptr;
    return paste && paste->isVisible() && paste->isEnabled();
}

/// The mediators of the entries that the list has made of these; none when it has not made one of each.
std::vector<FrequencyNodeMediator*>
FrequencyNodeListView::appendEntries(const QVector<FreqStoreXml::FrequencyStoreEntry>& entries) {
    std::vector<FrequencyNodeMediator*> added;
    auto* list = dynamic_cast<FrequencyNodeMediatorCtrl*>(m_controller);
    const unsigned long before = list ? list->size() : 0;
    if (list)
        list->AppendEntries(entries);
    for (unsigned long i = before; list && i < list->size(); ++i)
        added.push_back(list->At(i));
    if (added.size() != static_cast<size_t>(entries.size()))
        added.clear();
    return added;
}

void FrequencyNodeListView::Duplicate() {
    const OperatorAction action(tr("Duplicate"));
    LongWork::Run(tr("Duplicate"), [this] { duplicateSelected(); });
}

void FrequencyNodeListView::duplicateSelected() {
    FreqStoreXml::FrequencyStoreList copies;
    const std::vector<FrequencyNodeMediator*> sources = SelectedInOrder();
    describe(sources, copies);
    const std::vector<FrequencyNodeMediator*> added = appendEntries(copies.GetFrequencyStoreEntry());
    // An interchange entry has no place for all values.
    for (size_t i = 0; i < added.size(); ++i) {
        LongWork::Step(static_cast<qint64>(i), static_cast<qint64>(added.size()));
        const Node* source = sources[i]->GetNode();
        Node* copy = added[i]->GetNode();
        for (const ValueBase* value = source->FirstValue(); value; value = Node::NextValue(value)) {
            if (ValueBase* own = copy->FindOwnValue(value->NameId()))
                own->SetStringValue(value->GetStringValue());
        }
    }
    EntriesWereEdited();
    SelectRowsOf(added);
}

void FrequencyNodeListView::DeleteSelectedEntries() {
    const OperatorAction action(tr("Delete"));
    LongWork::Run(tr("Delete"), [this] { deleteSelected(); });
}

void FrequencyNodeListView::deleteSelected() {
    const std::vector<quint32> selected = SelectedRecords();
    const int place = selected.empty() ? -1 : RowOf(selected.front());
    std::map<Node*, std::vector<Node*>> byParent;
    for (const FrequencyNodeMediator* mediator : SelectedMediators()) {
        if (Node* node = mediator->GetNode())
            byParent[node->GetParentNode()].push_back(node);
    }
    for (const auto& [parent, nodes] : byParent) {
        parent->DeleteNodes(nodes);
        LongWork::Step(1, 1); // a cancel that came meanwhile
    }
    if (m_controller)
        m_controller->ForceUpdateNow();
    // Keys and the next command go on where the first of them was.
    if (!byParent.empty())
        GoToRow(place);
}

void FrequencyNodeListView::InitFreqStoreWidget(FreqStoreListViewButtonBar* bar) {
    m_bar = bar;
    if (bar)
        connect(bar, &QObject::destroyed, this, [this] { m_bar = nullptr; });
}

void FrequencyNodeListView::slotItemClicked(SortListViewItem*) {}

void FrequencyNodeListView::slotContextMenuRequested(SortListViewItem*, const QPoint& position, int) {
    if (!m_bar)
        return;
    QMenu menu;
    m_bar->EnableActions();
    m_bar->AddActionsTo(menu);
    if (!menu.isEmpty())
        menu.exec(position);
}

void FrequencyNodeListView::aboutToShow(QWidget*) {
    if (m_bar)
        m_bar->EnableActions();
}

void FrequencyNodeListView::keyPressEvent(QKeyEvent* event) {
    if (!m_bar || !m_bar->TriggerByKey(*event))
        SortListView::keyPressEvent(event);
}
