#include "host/freqlist/frequencynodelistview.h"

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
    mediator->AddView(owner, this);
}

FrequencyNodeMediatorViewItem::~FrequencyNodeMediatorViewItem() {
    if (m_mediator)
        m_mediator->RemoveView(m_view);
}

void FrequencyNodeMediatorViewItem::MediatorEnds() {
    m_mediator = nullptr;
    m_view->NoteEndedRow();
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
    const std::vector<unsigned>& ids = m_view->GetColumnDescription();
    const bool known = m_mediator && column >= 0 && static_cast<size_t>(column) < ids.size();
    return known && m_mediator->CellText(ids[static_cast<size_t>(column)], cell) ? cell : text(column);
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
    RemoveItems([](const SortListViewItem&) { return true; });
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
    std::vector<SortListViewItem*> rows;
    rows.reserve(mediators.size());
    for (FrequencyNodeMediator* mediator : mediators) {
        if (mediator && !mediator->GetItem4View(this))
            rows.push_back(new FrequencyNodeMediatorViewItem(this, mediator));
    }
    AddItems(rows);
}

void FrequencyNodeListView::InsertRows(const std::vector<FrequencyNodeMediator*>& mediators,
                                       const std::vector<FrequencyNodeMediator*>& order) {
    AddRows(mediators);
    quint32 place = 0;
    for (const FrequencyNodeMediator* mediator : order) {
        if (FrequencyNodeMediatorViewItem* row = mediator->GetItem4View(this))
            row->Sequence = ++place;
    }
    if (SortColumn() < 0)
        sortByColumn(-1, SortOrder());
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
    if (std::exchange(m_endedRows, 0) == 0)
        return;
    RemoveItems([](const SortListViewItem& row) {
        return !static_cast<const FrequencyNodeMediatorViewItem&>(row).GetMediator();
    });
}

std::vector<FrequencyNodeMediator*> FrequencyNodeListView::SelectedMediators() const {
    std::vector<FrequencyNodeMediator*> mediators = SelectedInOrder();
    const SortListViewItem* row = currentItem();
    const auto current =
        std::find(mediators.begin(), mediators.end(),
                  row ? static_cast<const FrequencyNodeMediatorViewItem*>(row)->GetMediator() : nullptr);
    if (current != mediators.end())
        std::rotate(mediators.begin(), current, current + 1);
    return mediators;
}

std::vector<FrequencyNodeMediator*> FrequencyNodeListView::SelectedInOrder() const {
    std::vector<FrequencyNodeMediator*> mediators;
    // Ranges of the selection in view order; a click on each row of a long list makes many.
    std::map<int, int> ranges;
    for (const QItemSelectionRange& range : selectionModel()->selection())
        ranges[range.top()] = std::max(ranges[range.top()], range.bottom());
    for (const auto& [top, bottom] : ranges) {
        for (int row = top; row <= bottom; ++row) {
            if (const QTreeWidgetItem* item = topLevelItem(row))
                mediators.push_back(static_cast<const FrequencyNodeMediatorViewItem*>(item)->GetMediator());
        }
    }
    std::erase(mediators, nullptr);
    return mediators;
}

void FrequencyNodeListView::SelectRowsOf(const std::vector<FrequencyNodeMediator*>& mediators) {
    QItemSelection rows;
    FrequencyNodeMediatorViewItem* first = nullptr;
    for (const FrequencyNodeMediator* mediator : mediators) {
        FrequencyNodeMediatorViewItem* row = mediator->GetItem4View(this);
        if (!ShowRow(row))
            continue;
        first = first ? first : row;
        const QModelIndex index = indexFromItem(row);
        rows.select(index, index);
    }
    if (!first)
        return;
    setCurrentItem(first, std::max(currentIndex().column(), 0), QItemSelectionModel::NoUpdate);
    selectionModel()->select(rows, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    scrollToItem(first);
}

double FrequencyNodeListView::DistanceTo(FrequencyNodeMediator& mediator, double hertz) const {
    double frequency = 0;
    return mediator.GetFrequency(frequency, 0) ? std::abs(frequency - hertz)
                                               : std::numeric_limits<double>::infinity();
}

void FrequencyNodeListView::SelectFrequency(double hertz) {
    SortListViewItem* nearest = nullptr;
    double distance = std::numeric_limits<double>::infinity();
    for (SortListViewItemIterator it(this); it.current(); ++it) {
        FrequencyNodeMediator* mediator =
            static_cast<FrequencyNodeMediatorViewItem*>(it.current())->GetMediator();
        const double away = mediator ? DistanceTo(*mediator, hertz) : distance;
        if (away < distance) {
            distance = away;
            nearest = it.current();
        }
    }
    if (!nearest)
        return;
    clearSelection();
    setCurrentItem(nearest);
    ensureItemVisible(nearest);
}

std::optional<std::vector<bool>> FrequencyNodeListView::ShownEntries() {
    if (FilterText().isEmpty())
        return std::nullopt;
    std::vector<bool> shown;
    for (int i = 0; i < topLevelItemCount(); ++i) {
        auto* mediator = static_cast<FrequencyNodeMediatorViewItem*>(topLevelItem(i))->GetMediator();
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
    for (FrequencyNodeMediator* mediator : SelectedMediators()) {
        double hertz = 0;
        if (mediator->GetFrequency(hertz, 0))
            frequencies.push_back(hertz);
    }
    return frequencies;
}

void FrequencyNodeListView::CopySelection(TracePlace place) {
    try {
        const std::vector<FrequencyNodeMediator*> mediators = CopiedMediators();
        if (mediators.empty())
            return;
        FreqStoreXml::FrequencyStoreList list;
        for (FrequencyNodeMediator* mediator : mediators)
            mediator->AddToXml(list);
        list.SetUsage(FreqStoreXml::FrequencyStoreList::NameToUsage(mediators.front()->GetUsage()));
        FreqStore::Instance().SetClipboardText(list.GetXmlString());
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
        QByteArray text = FreqStore::Instance().GetClipboardText().toUtf8();
        QBuffer buffer(&text);
        buffer.open(QIODevice::ReadOnly);
        FreqStoreXml::FrequencyStoreList copied;
        REPORTGENERATOR::ReadDocument(buffer, QStringLiteral("clipboard"), copied, nullptr, false);
        list->AppendEntries(copied.GetFrequencyStoreEntry());
    } catch (const RGException& exception) {
        TraceLazily(place, [] { return QStringLiteral("EXCEPTION WHILE PASTING FREQUENCIES:"); });
        Problems::Report(place, Problem::FromText(exception.GetErrorText()));
    }
    AllowSort(true);
    sort();
}

bool FrequencyNodeListView::TuneToCurrent() {
    const SortListViewItem* row = currentItem();
    FrequencyNodeMediator* mediator =
        row ? static_cast<const FrequencyNodeMediatorViewItem*>(row)->GetMediator() : nullptr;
    if (mediator)
        static_cast<IFrequencyStoreItem*>(mediator)->SetFrequency(this);
    return mediator != nullptr;
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
    FreqStoreXml::FrequencyStoreList copies;
    const std::vector<FrequencyNodeMediator*> sources = SelectedInOrder();
    for (FrequencyNodeMediator* mediator : sources)
        mediator->AddToXml(copies);
    const std::vector<FrequencyNodeMediator*> added = appendEntries(copies.GetFrequencyStoreEntry());
    // An interchange entry has no place for all values.
    for (size_t i = 0; i < added.size(); ++i) {
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
    int place = topLevelItemCount();
    for (const QItemSelectionRange& range : selectionModel()->selection())
        place = std::min(place, range.top());
    std::map<Node*, std::vector<Node*>> byParent;
    for (const FrequencyNodeMediator* mediator : SelectedMediators()) {
        if (Node* node = mediator->GetNode())
            byParent[node->GetParentNode()].push_back(node);
    }
    for (const auto& [parent, nodes] : byParent)
        parent->DeleteNodes(nodes);
    if (m_controller)
        m_controller->ForceUpdateNow();
    // Keys and the next command go on where the first of them was.
    const int rows = topLevelItemCount();
    if (!byParent.empty() && rows > 0)
        setCurrentItem(topLevelItem(std::min(place, rows - 1)), 0,
                       QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
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
