// Entries made from a shape: one block of memory for the node and its values.

#include "host/base/pointermap.h"
#include "host/base/slabs.h"
#include "host/valuetree/node.h"
#include "host/valuetree/nodeparts.h"

static_assert(sizeof(Node) == 48);

namespace {

/// Blocks whose node has left its shape: how many of node and values still live in them, and their size.
PointerMap& looseBlocks() {
    static auto* const table = new PointerMap;
    return *table;
}

constexpr int SizeShift = 32;

PointerMap& headsBeside() {
    static auto* const table = new PointerMap;
    return *table;
}

} // namespace

ValueBase::Head* ValueBase::Head::Beside(const ValueBase* value) {
    return reinterpret_cast<Head*>(headsBeside().Find(value));
}

ValueBase::Head& ValueBase::Head::MakeBeside(const ValueBase* value) {
    auto* const head = new Head;
    headsBeside().Set(value, reinterpret_cast<quint64>(head));
    return *head;
}

void ValueBase::Head::Drop(const ValueBase* value) {
    delete Beside(value);
    headsBeside().Erase(value);
}

Node* Node::NewEntry(Node* parent, Names::Id name, const Shape& shape) {
    auto* const node = ::new (Slabs::Take(shape.Bytes())) Node(parent, name);
    node->m_isInBlock = true;
    node->m_shape = shape.m_id;
    return node;
}

void Node::operator delete(Node* node, std::destroying_delete_t) {
    const size_t blockBytes = node->m_isInBlock ? node->shape().Bytes() : 0;
    void* const memory = dynamic_cast<void*>(node); // a class may have other bases in front
    node->~Node();
    if (blockBytes == 0)
        ::operator delete(memory);
    else if (looseBlocks().Find(node) != 0)
        endPart(node);
    else
        Slabs::Free(node, blockBytes);
}

/// The node or a value of a block that has left its shape has ended; the last one frees the memory.
void Node::endPart(Node* block) {
    const quint64 word = looseBlocks().Find(block) - 1;
    if (static_cast<quint32>(word) != 0) {
        looseBlocks().Set(block, word);
        return;
    }
    looseBlocks().Erase(block);
    Slabs::Free(block, word >> SizeShift);
}

bool Node::FillFromShape() {
    if (!m_isInBlock || shape().Fields().empty() || FirstValue() || !m_autoDeleteAtAdd ||
        looseBlocks().Find(this) != 0)
        return false;
    for (const Shape::Field& field : shape().Fields()) {
        ValueBase& value = field.construct(ValueAtPlace(field.place));
        value.m_place = field.place;
        value.m_isLoose = 0;
    }
    m_isFilled = true;
    return true;
}

const Shape::Field& Node::fieldOf(const ValueBase& value) const {
    return shape().Fields()[shape().fieldAt(value.m_place)];
}

/// Moves the entry on to the shape that has these limits; false when there would be too many.
bool Node::changeLimits(const ValueBase& value, NumberLimits::Id limits) {
    const Shape::Id other = Shape::at(m_shape).withLimits(shape().fieldAt(value.m_place), limits);
    if (other == Shape::None)
        return false;
    m_shape = other;
    return true;
}

/// From now on each value has a head, like those that came one by one. What happens to single values of an
/// entry (renamed, removed, outliving the node) happens to few entries, and is done in one way then.
void Node::leaveShape() {
    if (!m_isFilled)
        return;
    Side& s = side();
    ValueBase* last = nullptr;
    for (const Shape::Field& field : shape().Fields()) {
        ValueBase* const value = &shaped(field);
        value->becomeLoose();
        value->head()->parent = this;
        if (last)
            last->head()->next = value;
        last = value;
    }
    last->head()->next = s.firstValue;
    s.firstValue = &shaped(shape().Fields().front());
    if (!s.lastValue)
        s.lastValue = last;
    if (s.rare && !s.rare->valueIndex.isEmpty()) {
        for (const Shape::Field& field : shape().Fields())
            s.rare->valueIndex.insert(field.name, &shaped(field));
    }
    m_isFilled = false;
    looseBlocks().Set(this, shape().Bytes() << SizeShift | (1 + shape().Fields().size()));
}

/// Ends the values of the shape all at once; false when one of them is not just to end.
bool Node::endShapedValues() {
    if (!m_isFilled)
        return false;
    for (const Shape::Field& field : shape().Fields()) {
        const ValueBase& value = shaped(field);
        if (!value.m_autoDelete || !value.m_isRemoving || value.m_hasHeadBeside)
            return false;
    }
    for (const Shape::Field& field : shape().Fields()) {
        ValueBase& value = shaped(field);
        value.m_isLoose = 1; // it leaves nothing behind
        value.~ValueBase();
    }
    m_isFilled = false;
    return !m_side || !m_side->firstValue;
}

quint16 Node::ShapeId() const {
    return m_isFilled && !(m_side && m_side->firstValue) ? m_shape : quint16(Shape::None);
}

quint8 Node::PlaceOf(Names::Id name, ValueTypes types) const {
    for (const Shape::Field& field : shape().Fields()) {
        if (field.name == name)
            return types & TypesOf(field.type) ? field.place : quint8(0);
    }
    return 0;
}

void Node::AddObserverAt(std::span<const quint8> places, IObserver& observer) {
    const bool follows = m_follower == handleOf(observer);
    for (const quint8 place : places) {
        if (place == 0)
            continue;
        ValueBase* const value = ValueAtPlace(place);
        if (follows && value->IsOfShape() && !value->HasObservers())
            value->follow();
        else
            value->AddObserver(&observer);
    }
}
