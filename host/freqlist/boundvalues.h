#pragma once

#include "host/valuetree/node.h"

#include <array>
#include <span>

/// The values of an entry that its mediator has bound, by number. Values of the entry's shape are kept as
/// places in the entry's block, one byte each. Once another value is bound, all are kept as pointers.
class BoundValues {
public:
    static constexpr size_t Count = 15;

    BoundValues() = default;
    BoundValues(const BoundValues&) = delete;
    BoundValues& operator=(const BoundValues&) = delete;
    ~BoundValues() { delete pointers(); }

    /// The bound value; null when there is none. `entry` is always the same node.
    ValueBase* Get(const Node* entry, size_t number) const;
    void Set(const Node* entry, size_t number, ValueBase* value);
    /// The entry ends before its values: they are kept without it from now on.
    void OutliveEntry(const Node* entry) { keepPointers(entry); }
    /// Whether none of these is bound, and then binds the values at these places.
    [[nodiscard]] bool SetFresh(size_t first, std::span<const quint8> places);

private:
    using Pointers = std::array<ValueBase*, Count>;
    static constexpr quint8 PointersMark = 0xff; ///< no place is that large

    Pointers* pointers() const;
    void keepPointers(const Node* entry);

    std::array<quint8, Count> m_bytes{}; ///< places, or the address of the pointers and, last, the mark
};
