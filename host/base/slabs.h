#pragma once

#include <cstddef>

/// Memory for very many small pieces that live long: entries of lists and their mediators. Pieces of one size
/// lie close together in large regions, which the system may back with large pages; a region whose pieces are
/// all free is given back, but for the last one of a size. GUI thread only.
namespace Slabs {

/// Larger pieces come from the ordinary heap.
inline constexpr size_t MaxBytes = 2048;

/// A piece of `bytes` bytes, aligned to 8; the same number of bytes is given when it is freed.
void* Take(size_t bytes);
void Free(void* piece, size_t bytes);

} // namespace Slabs
