#include "host/valuetree/shape.h"

#include "host/valuetree/node.h"
#include "host/valuetree/valueselection.h"

namespace {

struct Kind {
    ValueType type;
    size_t bytes;
    ValueBase& (*construct)(void*);
};

template <typename V>
constexpr Kind kindOf() {
    static_assert(sizeof(V) % Shape::Word == 0 && alignof(V) == Shape::Word);
    return {V::Type, sizeof(V), [](void* memory) -> ValueBase& { return *new (memory) V; }};
}

constexpr Kind Kinds[] = {kindOf<Value<QString>>(),       kindOf<Value<char>>(),
                          kindOf<Value<bool>>(),          kindOf<ValueNumeric<int>>(),
                          kindOf<ValueNumeric<qint64>>(), kindOf<ValueNumeric<double>>(),
                          kindOf<ValueSelection>(),       kindOf<ValueList<double>>()};

static_assert(sizeof(Value<QString>) == 16 && sizeof(Value<char>) == 16 && sizeof(Value<bool>) == 16 &&
              sizeof(ValueNumeric<int>) == 16 && sizeof(ValueNumeric<double>) == 24 &&
              sizeof(ValueSelection) == 24 && sizeof(ValueList<double>) == 48);

const Kind& kindOf(ValueType type) {
    const auto found =
        std::find_if(std::begin(Kinds), std::end(Kinds), [type](const Kind& k) { return k.type == type; });
    Q_ASSERT(found != std::end(Kinds));
    return *found;
}

} // namespace

Shape* Shape::s_all[MaxShapes] = {new Shape};

Shape::Id Shape::add(Shape&& shape, size_t most) {
    static Id last = None;
    if (last + size_t(1) >= most)
        return None;
    shape.m_id = ++last;
    s_all[last] = new Shape(std::move(shape));
    return last;
}

const Shape& Shape::Make(std::initializer_list<Field> fields) {
    Shape shape;
    shape.m_bytes = sizeof(Node);
    for (Field field : fields) {
        const Kind& kind = kindOf(field.type);
        field.construct = kind.construct;
        field.place = static_cast<quint8>(shape.m_bytes / Word);
        shape.m_fieldAt.resize(field.place + size_t(1));
        shape.m_fieldAt[field.place] = static_cast<quint8>(shape.m_fields.size());
        shape.m_fields.push_back(field);
        shape.m_bytes += kind.bytes;
    }
    Q_ASSERT(shape.m_bytes <= MaxPlace * Word);
    return at(add(std::move(shape), MaxShapes));
}

Shape::Id Shape::withLimits(size_t field, NumberLimits::Id limits) {
    for (const Sibling& sibling : m_siblings) {
        if (sibling.field == field && sibling.limits == limits)
            return sibling.shape;
    }
    if (m_siblings.size() >= MaxSiblings)
        return None;
    Shape other = *this;
    other.m_siblings.clear();
    other.m_fields[field].limits = limits;
    const Id id = add(std::move(other), MaxShapes / 2);
    if (id != None)
        m_siblings.push_back({static_cast<quint8>(field), limits, id});
    return id;
}
