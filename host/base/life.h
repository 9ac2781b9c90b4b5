#pragma once

#include <QtGlobal>

/// Handles to objects that may go away: an object takes a slot when it is first referred to and gives it back
/// when it ends; a handle kept by somebody else then simply finds nothing. A handle costs eight bytes, its
/// holder owns nothing, and nobody has to be told. The table is never destroyed, so handles may be asked
/// until the very end of the process. GUI thread only.
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
