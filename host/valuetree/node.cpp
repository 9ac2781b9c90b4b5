#include "host/valuetree/node.h"

#include "host/base/longwork.h"
#include "host/valuetree/changerecorder.h"
#include "host/valuetree/nodeparts.h"
#include "host/valuetree/tree.h"

#include <QScopedValueRollback>

/// One node whose parts are being announced or removed; it steps aside when what it points at ends meanwhile.
struct Node::RemovalCursor {
    Node* node;
    ValueBase* nextValue = nullptr;
    bool dead = false;
    RemovalCursor* outer;

    static RemovalCursor*& innermost() {
        static RemovalCursor* cursor = nullptr;
        return cursor;
    }
    explicit RemovalCursor(Node* n) : node(n), outer(std::exchange(innermost(), this)) {}
    RemovalCursor(const RemovalCursor&) = delete;
    RemovalCursor& operator=(const RemovalCursor&) = delete;
    ~RemovalCursor() { innermost() = outer; }
};

namespace {

/// What the notification that is under way is about. It is not the node's: that may end meanwhile.
struct Changes {
    const TreeItem* of = nullptr;
    std::span<Node* const> children;
};
Changes changes;

/// Who keeps the children that are being removed; also those that an observer removes meanwhile.
struct Keeping {
    const Node* parent = nullptr;
    NodeKeeper* keeper = nullptr;
};
Keeping keeping;

} // namespace

/// Nearly all subjects that are asked are plain nodes.
Node* node_cast(Observable* subject) {
    return subject && typeid(*subject) == typeid(Node) ? static_cast<Node*>(subject)
                                                       : dynamic_cast<Node*>(subject);
}

void TreeItem::Commit(IObserver* originator) {
    const QScopedValueRollback anything(changes, {});
    NotifyObservers(TChangeCode::LookAgain, originator);
}

void Node::CommitChanges(std::span<Node* const> children, IObserver* originator) {
    const QScopedValueRollback these(changes, {this, children});
    NotifyObservers(TChangeCode::LookAgain, originator);
}

std::span<Node* const> Node::ChangedChildren() const {
    return changes.of == this ? changes.children : std::span<Node* const>();
}

/// `value` leaves this node: removals under way must not go on from it.
void Node::stepAside(const ValueBase* value) {
    for (RemovalCursor* c = RemovalCursor::innermost(); c; c = c->outer) {
        if (c->nextValue == value)
            c->nextValue = NextValue(value);
    }
}

Life::Handle Node::WatchedHandle() const {
    auto* const self = const_cast<Node*>(this);
    quint32& slot = self->side().slot;
    if (slot == 0)
        slot = Life::Acquire(self).index;
    return Life::HandleOf(slot);
}

QString TreeItem::GetPathName() const {
    const QString path = GetPathName_NoSlashForRoot();
    return path.isEmpty() ? QStringLiteral("/") : path;
}

QString TreeItem::GetPathName_NoSlashForRoot() const {
    const auto* node = static_cast<const Node*>(this);
    if (!node->m_attached)
        return m_parent || m_name != 0 ? Names::Text(m_name) : QString();
    return m_parent->PathOfChild(node->segment());
}

Node::Node(Node* parent, Names::Id name) : TreeItem(parent, name) {}

Node::Node(Node* parent, const QString& name) : Node(parent, Names::Intern(name)) {}

Node::~Node() {
    announceRemoval();
    stopRemovals();
    ITreeItem* const told = GetDeleteObserver();
    if (m_attached && m_parent)
        m_parent->unlinkChild(this);
    if (!endShapedValues()) {
        while (ValueBase* value = FirstValue()) {
            unlinkValue(value);
            if (value->m_autoDelete)
                delete value;
        }
    }
    if (const Rare* r = findRare()) {
        for (Node* child : r->children) {
            if (child) {
                child->m_attached = false;
                delete child;
            }
        }
    }
    if (m_side && m_side->slot != 0)
        Life::Release(m_side->slot);
    if (told)
        told->OnDeleted(this);
}

/// What goes through the parts of this node goes no further.
void Node::stopRemovals() {
    for (RemovalCursor* c = RemovalCursor::innermost(); c; c = c->outer)
        c->dead = c->dead || c->node == this;
}

Node::Side& Node::side() {
    if (!m_side)
        m_side = std::make_unique<Side>();
    return *m_side;
}

Node::Rare& Node::rare() {
    std::unique_ptr<Rare>& r = side().rare;
    if (!r)
        r = std::make_unique<Rare>();
    return *r;
}

Node::Rare* Node::findRare() const {
    return m_side ? m_side->rare.get() : nullptr;
}

quint32 Node::RemovedValues() const {
    return m_side ? m_side->removedValues : 0;
}

quint32 Node::GetSerial() const {
    return m_attached ? m_parent->findRare()->serialAt(m_index) : 0;
}

/// A follower that has ended makes room for the next. Nobody inherits what it observed.
bool Node::isFollower(Life::Handle observer) {
    if (m_follower == observer)
        return true;
    if (Life::Find(m_follower))
        return false;
    if (m_follower) {
        forgetFollower();
        for (ValueBase* value = FirstValue(); value; value = NextValue(value))
            value->forgetFollower();
    }
    m_follower = observer;
    return true;
}

ITreeItem* Node::GetDeleteObserver() const {
    const Rare* r = findRare();
    return r ? r->deleteObserver : nullptr;
}

void Node::SetDeleteObserver(ITreeItem* item) {
    rare().deleteObserver = item;
}

bool Node::IsInTree() const {
    const Node* node = this;
    while (node->m_attached)
        node = node->m_parent;
    return node == Tree::Instance()->GetRoot();
}

QString Node::segment() const {
    if (m_ordinal <= 1)
        return Names::Text(m_name);
    return Names::Text(m_name) + QLatin1Char('#') + QString::number(m_ordinal);
}

QString Node::PathOfChild(const QString& segment) const {
    return GetPathName_NoSlashForRoot() + QLatin1Char('/') + segment;
}

void Node::SetName(const QString& name, IObserver* originator, bool notify) {
    const Names::Id id = Names::Intern(name);
    if (id == m_name)
        return;
    if (m_attached) {
        Rare& parent = m_parent->rare();
        parent.forget(this, m_name, m_ordinal);
        m_name = id;
        m_ordinal = parent.nextOrdinal(id);
        parent.remember(this, m_name, m_ordinal);
    }
    m_name = id;
    if (notify)
        NotifyObservers(TChangeCode::LookAgain, originator);
}

/// Attaches a child under the next segment of its name or, `asNamed`, under the name itself, which is free.
void Node::attach(Node* child, bool asNamed) {
    Rare& r = rare();
    child->m_parent = this;
    child->m_attached = true;
    const bool takesName = asNamed && r.hasOrdinal(child->m_name);
    child->m_ordinal = takesName ? 1 : r.nextOrdinal(child->m_name);
    child->m_index = static_cast<quint32>(r.children.size());
    r.append(child);
    r.remember(child, child->m_name, child->m_ordinal);
    if (ChangeRecorder* recorder = ChangeRecorder::Active()) [[unlikely]]
        recorder->Attached(*child);
    NotifyObservers(TChangeCode::ChildrenChanged, nullptr);
}

void Node::AddItemUnique(Node* child) {
    if (child && !child->m_attached && child != this)
        attach(child, false);
}

void Node::AddItemUnique(ValueBase* value) {
    if (!value || value->GetParentNode())
        return;
    const QString name = value->GetName();
    for (int n = 2; !AddValue(value->GetName(), value); ++n)
        value->SetName(QStringLiteral("%1#%2").arg(name, QString::number(n)));
}

bool Node::AddNode(const QString& name, Node* child) {
    if (!child || child->m_attached || child == this || name.isEmpty() || name.contains(QLatin1Char('/')) ||
        findChild(name))
        return false;
    child->m_name = Names::Intern(name);
    attach(child, true);
    return true;
}

bool Node::AddNode(const QString& path) {
    Node* node = this;
    bool created = false;
    for (const QStringView part : QStringView(path).split(QLatin1Char('/'), Qt::SkipEmptyParts)) {
        Node* child = node->findChild(part);
        if (!child) {
            child = new Node(node, part.toString());
            node->attach(child, true);
            created = true;
        }
        node = child;
    }
    return created;
}

Node* Node::findChild(QStringView segment) const {
    Rare* const r = findRare();
    if (!r)
        return nullptr;
    if (Node* first = r->find(Names::Find(segment), 1))
        return first;
    const qsizetype mark = segment.lastIndexOf(QLatin1Char('#'));
    if (mark < 0)
        return nullptr;
    bool ok = false;
    const uint ordinal = segment.mid(mark + 1).toUInt(&ok);
    return ok && ordinal > 1 ? r->find(Names::Find(segment.left(mark)), ordinal) : nullptr;
}

Node* Node::findNode(QStringView path) const {
    const Node* node = this;
    for (const QStringView part : path.split(QLatin1Char('/'), Qt::SkipEmptyParts)) {
        node = node->findChild(part);
        if (!node)
            return nullptr;
    }
    return const_cast<Node*>(node);
}

void Node::unlinkChild(Node* child) {
    Rare& r = rare();
    r.forget(child, child->m_name, child->m_ordinal);
    r.children[child->m_index] = nullptr;
    ++r.holes;
    child->m_attached = false;
    r.closeHolesIfMany();
}

void Node::removeChild(Node* child) {
    NodeKeeper* const given = keeping.parent == this ? keeping.keeper : nullptr;
    NodeKeeper* noting = nullptr;
    ChangeRecorder* const recorder = ChangeRecorder::Active();
    if (recorder) [[unlikely]]
        noting = recorder->Detaching(*child);
    if (!child->announceRemoval())
        return;
    if (recorder != ChangeRecorder::Active()) // ended by who was told
        noting = nullptr;
    if (NodeKeeper* const keeper = given ? given : noting)
        keeper->Keep(child);
    else
        delete child;
}

bool Node::DeleteNode(Node* child) {
    if (!child || !child->m_attached || child->m_parent != this)
        return false;
    DeleteNodes({child});
    return true;
}

void Node::DeleteNodes(const std::vector<Node*>& children, NodeKeeper* keeper) {
    // Observers may delete other nodes of the selection meanwhile: go by place, which dead ones leave empty.
    std::vector<quint32> places;
    places.reserve(children.size());
    for (const Node* child : children) {
        if (child && child->m_attached && child->m_parent == this)
            places.push_back(child->m_index);
    }
    if (places.empty())
        return;
    const QScopedValueRollback keeps(keeping, keeper ? Keeping{this, keeper} : keeping);
    Rare& r = rare();
    RemovalCursor cursor(this);
    ++r.removing;
    const LongWork::Unbroken whole;
    qint64 removed = 0;
    for (const quint32 place : places) {
        LongWork::Step(removed++, static_cast<qint64>(places.size()));
        if (Node* child = r.children[place])
            removeChild(child);
        if (cursor.dead)
            return;
    }
    --r.removing;
    r.closeHolesIfMany();
    NotifyObservers(TChangeCode::ChildrenChanged, nullptr);
}

void Node::DeleteChildren() {
    if (!FirstValue() && ChildCount() == 0)
        return;
    RemovalCursor cursor(this);
    if (!announceValues(cursor))
        return;
    while (ValueBase* value = FirstValue()) {
        unlinkValue(value);
        if (value->m_autoDelete)
            delete value;
        if (cursor.dead)
            return;
    }
    if (findRare()) {
        Rare& r = rare();
        ++r.removing;
        const size_t count = r.children.size(); // children attached meanwhile stay
        const LongWork::Unbroken whole;
        for (size_t place = 0; place < count; ++place) {
            LongWork::Step(static_cast<qint64>(place), static_cast<qint64>(count));
            if (Node* child = r.children[place])
                removeChild(child);
            if (cursor.dead)
                return;
        }
        --r.removing;
        r.closeHolesIfMany();
    }
    NotifyObservers(TChangeCode::ChildrenChanged, nullptr);
}

/// Tells everyone below and at this node that it ends; false when the node was deleted meanwhile.
bool Node::announceRemoval() {
    if (m_announced)
        return true;
    m_announced = true;
    RemovalCursor cursor(this);
    for (const TChangeCode code : {TChangeCode::MediatorNodeEnds, TChangeCode::Removing}) {
        if (HasObservers())
            NotifyObservers(code, nullptr);
        if (cursor.dead)
            return false;
    }
    return announceValues(cursor) && announceChildren(cursor);
}

bool Node::announceValues(RemovalCursor& cursor) {
    for (ValueBase* value = FirstValue(); value; value = cursor.nextValue) {
        cursor.nextValue = NextValue(value);
        value->AnnounceRemoval();
        if (cursor.dead)
            return false;
    }
    return true;
}

bool Node::announceChildren(RemovalCursor& cursor) {
    Rare* const r = findRare();
    if (!r)
        return true;
    ++r->removing;
    for (size_t place = 0; place < r->children.size(); ++place) {
        if (Node* child = r->children[place])
            child->announceRemoval();
        if (cursor.dead)
            return false;
    }
    --r->removing;
    return true;
}

size_t Node::ChildCount() const {
    const Rare* r = findRare();
    return r ? r->children.size() - r->holes : 0;
}

std::vector<Node*> Node::Children() const {
    quint32 serial = 0;
    return ChildrenSince(serial);
}

std::vector<Node*> Node::ChildrenSince(quint32& serial) const {
    std::vector<Node*> result;
    const Rare* r = findRare();
    if (!r)
        return result;
    const std::vector<Node*>& children = r->children;
    size_t first = 0;
    for (size_t end = children.size(); first < end;) {
        const size_t middle = (first + end) / 2;
        if (r->serialAt(middle) <= serial)
            first = middle + 1;
        else
            end = middle;
    }
    result.reserve(children.size() - first);
    std::copy_if(children.begin() + static_cast<std::ptrdiff_t>(first), children.end(),
                 std::back_inserter(result), [](Node* child) { return child != nullptr; });
    serial = r->lastSerial;
    return result;
}

Node* Node::LastChild() const {
    const Rare* r = findRare();
    return r && !r->children.empty() ? r->children.back() : nullptr;
}

void Node::SetAllValuesAutoDelete(bool on) {
    for (ValueBase* value = FirstValue(); value; value = NextValue(value))
        value->m_autoDelete = on;
}

QString Node::GetLastCompletePathName() const {
    const Rare* r = findRare();
    return r ? r->completePath : QString();
}

void Node::SetLastCompletePathName(bool complete) {
    rare().completePath = complete ? GetPathName() : QString();
}

const ValueDescriptor* Node::GetValueDescriptor() const {
    auto& descriptor = const_cast<Node*>(this)->rare().descriptor;
    descriptor = std::make_unique<ValueDescriptor>();
    for (const ValueBase* value = FirstValue(); value; value = NextValue(value))
        descriptor->values.push_back({value->GetName(), value->GetType()});
    return descriptor.get();
}
