#pragma once

#include "host/valuetree/value.h"

#include <initializer_list>
#include <vector>

/// What the entries of one class have in common: names, types, limits and order of their values. An entry
/// made from a shape (`Node::NewEntry`) is one block of memory: the node, and behind it its values, which
/// know their place in the block and nothing else that the shape knows.
///
/// Shapes are made once, by the class of the entry, and never end. An entry whose value gets other limits
/// moves on to a sibling shape, so that limits cost nothing as long as there are few of them.
class Shape {
public:
    struct Field {
        Names::Id name;
        ValueType type;
        NumberLimits::Id limits = 0;
        quint8 place = 0; ///< in words behind the start of the node; the shape's own affair, as is the next
        ValueBase& (*construct)(void* memory) = nullptr;
    };
    /// Unit of places, in bytes.
    static constexpr size_t Word = 8;
    static constexpr size_t MaxPlace = 250;

    static Field Text(Names::Id name) { return {name, ValueType::Text}; }
    static Field Letter(Names::Id name) { return {name, ValueType::Char}; }
    static Field Flag(Names::Id name) { return {name, ValueType::Bool}; }
    /// A selection without rows; those that all entries get are soon shared, see `ValueSelection`.
    static Field Selection(Names::Id name) { return {name, ValueType::Selection}; }
    /// An ordered list of doubles.
    static Field Numbers(Names::Id name) { return {name, ValueType::DoubleList}; }
    template <typename T>
    static Field Number(Names::Id name, T min, T max, T step) {
        return {name, ValueText<T>::NumericType, NumberLimits::Keep(NumberLimits::Of(min, max, step))};
    }

    /// Makes a shape of up to `MaxPlace` words, the node's six included.
    static const Shape& Make(std::initializer_list<Field> fields);

    const std::vector<Field>& Fields() const { return m_fields; }
    /// Of the whole block.
    size_t Bytes() const { return m_bytes; }

private:
    friend class Node;
    using Id = quint16;
    static constexpr Id None = 0;
    /// So many siblings of one kind, and then values keep their limits themselves.
    static constexpr size_t MaxSiblings = 64;
    static constexpr size_t MaxShapes = 4096; ///< half of them are for classes of entries, half for siblings

    struct Sibling {
        quint8 field;
        NumberLimits::Id limits;
        Id shape;
    };

    static Shape& at(Id id) { return *s_all[id]; }
    static Id add(Shape&& shape, size_t most);
    size_t fieldAt(quint8 place) const { return m_fieldAt[place]; }
    /// The shape that differs in the limits of one field; `None` when there would be too many.
    Id withLimits(size_t field, NumberLimits::Id limits);

    static Shape* s_all[MaxShapes];

    std::vector<Field> m_fields;
    std::vector<quint8> m_fieldAt; ///< by place
    std::vector<Sibling> m_siblings;
    size_t m_bytes = 0;
    Id m_id = None;
};
