#pragma once

#include <QtGlobal>

/// Handles to objects that may end. An object takes a slot when the first handle to it is made, and gives the
/// slot back when it ends; from then on its handles find nothing. A handle has eight bytes and owns nothing.
/// The table is never destroyed, so handles work until the process ends. GUI thread only.
namespace Life {

struct Handle {
    quint32 index = 0; ///< 0 is no object
    quint32 generation = 0;

    explicit operator bool() const { return index != 0; }
    bool operator==(const Handle&) const = default;
};

/// Largest slot index; two bits of a packed handle belong to whoever packs it.
inline constexpr quint32 MaxIndex = (1u << 30) - 1;

/// Takes a slot for `object`; the owner of the object gives it back with `Release`.
Handle Acquire(void* object);

/// Gives a slot back; every handle to it is dead from now on.
void Release(quint32 index);

/// The handle of a slot in use.
Handle HandleOf(quint32 index);

/// The object, or null when it has ended.
void* Find(Handle handle);

} // namespace Life
