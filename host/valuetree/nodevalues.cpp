#include "host/valuetree/node.h"
#include "host/valuetree/nodeparts.h"

namespace {

/// A list entry has a dozen values, found fastest by looking through them; a node with more gets an index.
constexpr int IndexedFrom = 32;

} // namespace

Node* Node::Rare::find(Names::Id name, quint32 ordinal) {
    if (!indexed) {
        byNameAndOrdinal.reserve(static_cast<qsizetype>(children.size()));
        for (Node* child : children) {
            if (child)
                byNameAndOrdinal.insert(key(child->m_name, child->m_ordinal), child);
        }
        indexed = true;
    }
    return byNameAndOrdinal.value(key(name, ordinal));
}

void Node::Rare::closeHolesIfMany() {
    if (removing > 0 || holes * 2 <= children.size())
        return;
    std::vector<quint32> kept;
    kept.reserve(children.size() - holes);
    size_t to = 0;
    for (size_t from = 0; from < children.size(); ++from) {
        if (Node* child = children[from]) {
            kept.push_back(serialAt(from));
            child->m_index = static_cast<quint32>(to);
            children[to++] = child;
        }
    }
    children.resize(to);
    holes = 0;
    serials = std::move(kept);
}

void Node::Rare::append(Node* child) {
    ++lastSerial;
    if (children.empty()) {
        serials.clear();
        serialsBefore = lastSerial - 1;
    } else if (!serials.empty()) {
        serials.push_back(lastSerial);
    }
    children.push_back(child);
}

ValueBase* Node::FindOwnValue(Names::Id name) const {
    if (m_isFilled) {
        for (const Shape::Field& field : shape().Fields()) {
            if (field.name == name)
                return &shaped(field);
        }
    }
    if (!m_side)
        return nullptr;
    if (const Rare* r = findRare(); r && !r->valueIndex.isEmpty())
        return r->valueIndex.value(name);
    for (ValueBase* value = m_side->firstValue; value;) {
        const ValueBase::Head* head = value->head();
        if (head->name == name)
            return value;
        value = head->next;
    }
    return nullptr;
}

ValueBase* Node::FirstValue() const {
    if (m_isFilled)
        return &shaped(shape().Fields().front());
    return m_side ? m_side->firstValue : nullptr;
}

ValueBase* Node::NextValue(const ValueBase* value) {
    if (!value->IsOfShape()) {
        const ValueBase::Head* head = value->head();
        return head ? head->next : nullptr;
    }
    const Node* node = value->block();
    const std::vector<Shape::Field>& fields = node->shape().Fields();
    const size_t next = node->shape().fieldAt(value->m_place) + 1;
    if (next < fields.size())
        return &node->shaped(fields[next]);
    return node->m_side ? node->m_side->firstValue : nullptr;
}

ValueBase* Node::GetValue(const QString& path) const {
    const qsizetype slash = path.lastIndexOf(QLatin1Char('/'));
    const Node* node = slash < 0 ? this : findNode(QStringView(path).left(slash));
    return node ? node->FindOwnValue(Names::Find(QStringView(path).mid(slash + 1))) : nullptr;
}

void Node::linkValue(ValueBase* value) {
    ValueBase::Head& head = value->needHead();
    head.parent = this;
    head.next = nullptr;
    Side& s = side();
    (s.lastValue ? s.lastValue->head()->next : s.firstValue) = value;
    s.lastValue = value;

    if (s.rare && !s.rare->valueIndex.isEmpty()) {
        s.rare->valueIndex.insert(head.name, value);
        return;
    }
    int count = 0;
    for (const ValueBase* v = s.firstValue; v; v = v->head()->next)
        ++count;
    if (count >= IndexedFrom) {
        for (ValueBase* v = s.firstValue; v; v = v->head()->next)
            rare().valueIndex.insert(v->NameId(), v);
    }
}

void Node::unlinkValue(ValueBase* value) {
    leaveShape();
    stepAside(value);
    value->listFollower();
    Side& s = side();
    ++s.removedValues;
    if (s.rare)
        s.rare->valueIndex.remove(value->NameId());
    ValueBase* previous = nullptr;
    for (ValueBase* v = s.firstValue; v != value; v = v->head()->next)
        previous = v;
    ValueBase::Head& head = *value->head();
    (previous ? previous->head()->next : s.firstValue) = head.next;
    if (s.lastValue == value)
        s.lastValue = previous;
    head.parent = nullptr;
    head.next = nullptr;
}

bool Node::renameValue(ValueBase* value, Names::Id name) {
    if (FindOwnValue(name))
        return false;
    leaveShape();
    if (Rare* r = findRare(); r && !r->valueIndex.isEmpty()) {
        r->valueIndex.remove(value->NameId());
        r->valueIndex.insert(name, value);
    }
    return true;
}

bool Node::AddValue(Names::Id name, ValueBase* value) {
    if (!value || value->GetParentNode() || FindOwnValue(name))
        return false;
    value->needHead().name = name;
    value->m_autoDelete = m_autoDeleteAtAdd;
    linkValue(value);
    return true;
}

bool Node::AddValue(const QString& name, ValueBase* value) {
    return !name.contains(QLatin1Char('/')) && AddValue(Names::Intern(name), value);
}

ValueBase* Node::CreateValue(const QString& name, const ValueBase& prototype) {
    std::unique_ptr<ValueBase> value(prototype.Clone());
    return AddValue(name, value.get()) ? value.release() : nullptr;
}

bool Node::DeleteValue(const QString& name) {
    ValueBase* value = FindOwnValue(Names::Find(name));
    if (!value)
        return false;
    const WeakRef<ValueBase> alive(value);
    value->AnnounceRemoval();
    delete alive.get();
    return true;
}
