#include "host/freqlist/frequencynodemediatorctrl.h"

#include "host/base/longwork.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencynodelistview.h"
#include "host/freqlist/frequencynodemediator.h"
#include "host/freqstorexml/frequencystorelist.h"
#include "host/valuetree/tree.h"

#include <QTimerEvent>

#include <typeindex>

namespace {

/// Many changes within this time are one refresh; short enough to look immediate.
constexpr int TickMilliseconds = 40;
/// More changed entries than these count as all.
constexpr size_t MostChanges = 10000;
/// From so many new entries on the window paints while they get their rows.
constexpr unsigned long ManyNewRows = 5000;

} // namespace

FrequencyNodeMediatorCtrl::FrequencyNodeMediatorCtrl(int storeType) : m_storeType(storeType) {}

FrequencyNodeMediatorCtrl::~FrequencyNodeMediatorCtrl() {
    m_ending = true;
    FreqStore::Instance().RemoveController(this);
    RemoveMyMediators();
    for (FrequencyNodeListView* view : m_views)
        view->ControllerEnds();
}

void FrequencyNodeMediatorCtrl::Init(const QString& nodePath) {
    RemoveMyMediators();
    if (m_node)
        m_node->DeleteObserver(this);
    m_node = Tree::Instance()->GetNode(nodePath);
    m_seenSerial = 0;
    if (!m_node)
        return;
    m_seenRestores = m_node->RestoreCount();
    m_node->AddObserver(this);
    ForceUpdateNow();
}

Mediator* FrequencyNodeMediatorCtrl::CreateMediator(Observable* entryNode) {
    return node_cast(entryNode) ? new FrequencyNodeMediator(this, entryNode, m_storeType) : nullptr;
}

void FrequencyNodeMediatorCtrl::NotifyCreated(Mediator* mediator) {
    if (!mediator)
        return;
    // A list's mediators are mostly of one class, so that one cast serves for all of them.
    static std::type_index known = typeid(FrequencyNodeMediator);
    if (known != typeid(*mediator)) {
        if (!dynamic_cast<FrequencyNodeMediator*>(mediator))
            return;
        known = typeid(*mediator);
    }
    auto* const item = static_cast<FrequencyNodeMediator*>(mediator);
    item->OrderIndex = static_cast<unsigned>(m_order.size());
    m_order.push_back(item);
}

void FrequencyNodeMediatorCtrl::NotifyDeleted(Mediator* mediator) {
    const size_t index = mediator->OrderIndex;
    if (index >= m_order.size() || static_cast<Mediator*>(m_order[index]) != mediator)
        return;
    m_order[index] = nullptr;
    ++m_holes;
    if (!m_ending)
        SetDirty(true);
}

void FrequencyNodeMediatorCtrl::RemoveMyMediators() {
    const std::vector<FrequencyNodeMediator*> mediators = std::move(m_order);
    m_order.clear();
    m_changed.clear();
    m_holes = 0;
    for (FrequencyNodeMediator* mediator : mediators)
        delete mediator;
    for (FrequencyNodeListView* view : m_views)
        view->RemoveEndedRows();
}

void FrequencyNodeMediatorCtrl::closeHoles() {
    if (m_holes == 0)
        return;
    std::erase(m_order, nullptr);
    for (size_t i = 0; i < m_order.size(); ++i)
        m_order[i]->OrderIndex = static_cast<unsigned>(i);
    m_holes = 0;
}

FrequencyNodeMediator* FrequencyNodeMediatorCtrl::At(unsigned long index) {
    closeHoles();
    return index < m_order.size() ? m_order[index] : nullptr;
}

FrequencyNodeMediator* FrequencyNodeMediatorCtrl::Find(const Node* entry) {
    const auto found =
        std::find_if(m_order.begin(), m_order.end(), [entry](const FrequencyNodeMediator* mediator) {
            return mediator && mediator->GetNode() == entry;
        });
    return found == m_order.end() ? nullptr : *found;
}

void FrequencyNodeMediatorCtrl::ForEach(const std::function<void(FrequencyNodeMediator&)>& visit) {
    for (FrequencyNodeMediator* mediator : m_order) {
        if (mediator)
            visit(*mediator);
    }
}

void FrequencyNodeMediatorCtrl::ForEachInWork(const std::function<void(FrequencyNodeMediator&)>& visit) {
    qint64 visited = 0;
    ForEach([&](FrequencyNodeMediator& mediator) {
        LongWork::Step(visited++, static_cast<qint64>(m_order.size()));
        visit(mediator);
    });
}

void FrequencyNodeMediatorCtrl::followNewChildren() {
    if (!m_node)
        return;
    if (m_node->RestoreCount() != m_seenRestores)
        return followRestored();
    const size_t known = m_order.size();
    const std::vector<Node*> fresh = m_node->ChildrenSince(m_seenSerial);
    m_order.reserve(known + fresh.size());
    const LongWork::Unbroken whole;
    for (Node* child : fresh) {
        LongWork::Step(static_cast<qint64>(m_order.size() - known), static_cast<qint64>(fresh.size()));
        if (Mediator* mediator = CreateMediator(child))
            NotifyCreated(mediator);
    }
    if (known == m_order.size())
        return;
    const std::vector<FrequencyNodeMediator*> added(m_order.begin() + static_cast<std::ptrdiff_t>(known),
                                                    m_order.end());
    for (FrequencyNodeListView* view : m_views)
        view->AddRows(added);
}

/// Children came back to their places among the others: mediators and rows go there, too.
void FrequencyNodeMediatorCtrl::followRestored() {
    m_seenRestores = m_node->RestoreCount();
    m_seenSerial = 0;
    const std::vector<Node*> children = m_node->ChildrenSince(m_seenSerial);
    closeHoles();
    const std::vector<FrequencyNodeMediator*> before = std::exchange(m_order, {});
    m_order.reserve(children.size());
    std::vector<FrequencyNodeMediator*> added;
    auto next = before.begin();
    const LongWork::Unbroken whole;
    for (Node* child : children) {
        LongWork::Step(static_cast<qint64>(m_order.size()), static_cast<qint64>(children.size()));
        if (next != before.end() && (*next)->GetNode() == child) {
            (*next)->OrderIndex = static_cast<unsigned>(m_order.size());
            m_order.push_back(*next++);
        } else if (Mediator* mediator = CreateMediator(child)) {
            NotifyCreated(mediator);
            added.push_back(m_order.back());
        }
    }
    for (FrequencyNodeListView* view : m_views)
        view->InsertRows(added, m_order);
}

int FrequencyNodeMediatorCtrl::ScrollPlace() const {
    return m_views.empty() ? 0 : m_views.front()->ScrollPlace();
}

std::vector<quint32> FrequencyNodeMediatorCtrl::SelectedSerials() const {
    std::vector<quint32> serials;
    if (m_views.empty())
        return serials;
    for (const FrequencyNodeMediator* mediator : m_views.front()->SelectedInOrder()) {
        if (const Node* entry = mediator->GetNode())
            serials.push_back(entry->GetSerial());
    }
    std::sort(serials.begin(), serials.end());
    return serials;
}

std::vector<FrequencyNodeMediator*>
FrequencyNodeMediatorCtrl::mediatorsOf(const std::vector<const Node*>& entries) const {
    std::vector<FrequencyNodeMediator*> mediators;
    mediators.reserve(entries.size());
    auto next = entries.begin();
    for (FrequencyNodeMediator* mediator : m_order) {
        if (next != entries.end() && mediator && mediator->GetNode() == *next) {
            mediators.push_back(mediator);
            ++next;
        }
    }
    return mediators;
}

void FrequencyNodeMediatorCtrl::SelectEntries(const std::vector<const Node*>& entries, int scrollPlace) {
    const std::vector<FrequencyNodeMediator*> mediators = mediatorsOf(entries);
    for (FrequencyNodeListView* view : m_views)
        view->ShowEntries(mediators, scrollPlace);
}

void FrequencyNodeMediatorCtrl::ForceUpdateNow() {
    m_timer.stop();
    if (m_suspended || m_ending)
        return;
    MultiViewMediatorCtrl::SetDirty(false);
    for (FrequencyNodeListView* view : m_views)
        view->RemoveEndedRows();
    followNewChildren();
    for (FrequencyNodeListView* view : m_views)
        view->RowsChanged();
    // Others that show the list, such as the frequency bar, watch its node and not each entry.
    if (std::exchange(m_entriesChanged, false) && m_node)
        m_node->CommitChanges(std::exchange(m_changed, {}), this);
    emit Refreshed();
}

void FrequencyNodeMediatorCtrl::OnTimer() {
    m_timer.stop();
    if (!IsDirty())
        return;
    if (!m_node || m_node->ChildCount() < size() + ManyNewRows)
        return ForceUpdateNow();
    LongWork::Run(tr("Showing the list"), [this] {
        const LongWork::Unbroken whole;
        ForceUpdateNow();
    });
}

void FrequencyNodeMediatorCtrl::timerEvent(QTimerEvent* event) {
    if (event->timerId() == m_timer.timerId())
        OnTimer();
    else
        QObject::timerEvent(event);
}

void FrequencyNodeMediatorCtrl::scheduleUpdate() {
    if (!m_suspended && GetVisibleCnt() > 0 && !m_timer.isActive())
        m_timer.start(TickMilliseconds, this);
}

void FrequencyNodeMediatorCtrl::SetDirty(bool dirty) {
    MultiViewMediatorCtrl::SetDirty(dirty);
    m_entriesChanged = dirty;
    m_changed.clear();
    if (dirty)
        scheduleUpdate();
}

void FrequencyNodeMediatorCtrl::SetEntryDirty(Node* entry) {
    const bool areKnown = !m_entriesChanged || !m_changed.empty();
    if (!entry || !areKnown || m_changed.size() == MostChanges)
        return SetDirty(true);
    MultiViewMediatorCtrl::SetDirty(true);
    m_entriesChanged = true;
    if (m_changed.empty() || m_changed.back() != entry)
        m_changed.push_back(entry);
    scheduleUpdate();
}

void FrequencyNodeMediatorCtrl::Suspend(bool suspend) {
    if (m_suspended == suspend)
        return;
    m_suspended = suspend;
    if (suspend)
        m_timer.stop();
    else
        ForceUpdateNow();
}

void FrequencyNodeMediatorCtrl::Update(Observable* subject, TChangeCode code) {
    if (subject != m_node)
        return;
    if (code == TChangeCode::Removing || code == TChangeCode::MediatorNodeEnds) {
        m_node = nullptr;
        return;
    }
    MultiViewMediatorCtrl::SetDirty(true);
    scheduleUpdate();
}

void FrequencyNodeMediatorCtrl::AddView(FrequencyNodeListView* view) {
    if (!view)
        return;
    if (std::find(m_views.begin(), m_views.end(), view) == m_views.end())
        m_views.push_back(view);
    view->AddRows(m_order);
}

void FrequencyNodeMediatorCtrl::RemoveView(FrequencyNodeListView* view) {
    if (std::erase(m_views, view) == 0)
        return;
    ForEach([view](FrequencyNodeMediator& mediator) { mediator.RemoveView(view); });
}

void FrequencyNodeMediatorCtrl::UpdateMyViewItems(FrequencyNodeListView* view) {
    ForEach([view](FrequencyNodeMediator& mediator) { mediator.UpdateViewItem(view); });
    if (view)
        view->RowsChanged();
}

QString FrequencyNodeMediatorCtrl::GetUsageName() const {
    return FreqStoreXml::FrequencyStoreList::UsageToName(FreqStoreXml::FrequencyStoreList::Unspecified);
}
