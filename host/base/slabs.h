#pragma once

#include <cstddef>

/// Memory for very many small pieces that live long: entries of lists and their mediators. Pieces of one size
/// lie side by side in large regions, for which the system can use large pages. A region without a used piece
/// is given back, except the last one of a size. GUI thread only.
namespace Slabs {

/// Larger pieces come from the ordinary heap.
inline constexpr size_t MaxBytes = 2048;

/// A piece of `bytes` bytes, aligned to 8; the same number of bytes is given when it is freed.
void* Take(size_t bytes);
void Free(void* piece, size_t bytes);

} // namespace Slabs
