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
    size_t to = 0;
    for (Node* child : children) {
        if (child) {
            child->m_index = static_cast<quint32>(to);
            children[to++] = child;
        }
    }
    children.resize(to);
    holes = 0;
}

ValueBase* Node::FindOwnValue(Names::Id name) const {
    if (m_rare && !m_rare->valueIndex.isEmpty())
        return m_rare->valueIndex.value(name);
    for (ValueBase* value = m_firstValue; value; value = value->m_next) {
        if (value->m_name == name)
            return value;
    }
    return nullptr;
}

ValueBase* Node::GetValue(const QString& path) const {
    const qsizetype slash = path.lastIndexOf(QLatin1Char('/'));
    const Node* node = slash < 0 ? this : findNode(QStringView(path).left(slash));
    return node ? node->FindOwnValue(Names::Find(QStringView(path).mid(slash + 1))) : nullptr;
}

void Node::linkValue(ValueBase* value) {
    value->m_parent = this;
    value->m_next = nullptr;
    (m_lastValue ? m_lastValue->m_next : m_firstValue) = value;
    m_lastValue = value;

    if (m_rare && !m_rare->valueIndex.isEmpty()) {
        m_rare->valueIndex.insert(value->m_name, value);
        return;
    }
    int count = 0;
    for (const ValueBase* v = m_firstValue; v; v = v->m_next)
        ++count;
    if (count >= IndexedFrom) {
        for (ValueBase* v = m_firstValue; v; v = v->m_next)
            rare().valueIndex.insert(v->m_name, v);
    }
}

void Node::unlinkValue(ValueBase* value) {
    stepAside(value);
    ++m_removedValues;
    if (m_rare)
        m_rare->valueIndex.remove(value->m_name);
    ValueBase* previous = nullptr;
    for (ValueBase* v = m_firstValue; v != value; v = v->m_next)
        previous = v;
    (previous ? previous->m_next : m_firstValue) = value->m_next;
    if (m_lastValue == value)
        m_lastValue = previous;
    value->m_parent = nullptr;
    value->m_next = nullptr;
}

bool Node::renameValue(ValueBase* value, Names::Id name) {
    if (FindOwnValue(name))
        return false;
    if (m_rare && !m_rare->valueIndex.isEmpty()) {
        m_rare->valueIndex.remove(value->m_name);
        m_rare->valueIndex.insert(name, value);
    }
    return true;
}

bool Node::AddValue(Names::Id name, ValueBase* value) {
    if (!value || value->m_parent || FindOwnValue(name))
        return false;
    value->m_name = name;
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
