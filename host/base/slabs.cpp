#include "host/base/slabs.h"

#include <QtGlobal>

#include <cstdint>
#include <cstdlib>
#include <new>
#ifdef __linux__
#include <sys/mman.h>
#endif

namespace Slabs {
namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool FromHeap = true; // so that each piece is watched over
#else
constexpr bool FromHeap = false;
#endif

constexpr size_t RegionBytes = size_t(2) << 20;
constexpr size_t Unit = 8;

struct Piece {
    Piece* next;
};

/// Stands at the head of a region, which is aligned to its own size: a piece finds it by its address.
struct Region {
    Region* previous;
    Region* next;
    Piece* freed = nullptr;
    size_t used = 0; ///< bytes given out at least once, this head included
    size_t live = 0; ///< pieces in use
    bool hasRoom(size_t bytes) const { return freed || used + bytes <= RegionBytes; }
};

/// Regions of one size of piece, those with room first.
struct Size {
    Region* first = nullptr;
};

Size& sizeOf(size_t bytes) {
    static Size sizes[MaxBytes / Unit + 1];
    return sizes[bytes / Unit];
}

void link(Size& size, Region* region) {
    region->previous = nullptr;
    region->next = size.first;
    if (size.first)
        size.first->previous = region;
    size.first = region;
}

void unlink(Size& size, Region* region) {
    (region->previous ? region->previous->next : size.first) = region->next;
    if (region->next)
        region->next->previous = region->previous;
}

#ifdef __linux__

void* map(size_t bytes) {
    void* const memory = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED)
        throw std::bad_alloc();
    return memory;
}

/// Straight from the system, which finds it easier then to use large pages: reading takes a third longer
/// without them.
void* takeRegion() {
    void* memory = map(RegionBytes); // often lies below the region before, and is aligned as that one is
    if (reinterpret_cast<uintptr_t>(memory) % RegionBytes != 0) {
        munmap(memory, RegionBytes);
        memory = map(2 * RegionBytes);
        auto* const start = static_cast<char*>(memory);
        const size_t before = RegionBytes - reinterpret_cast<uintptr_t>(memory) % RegionBytes;
        munmap(start, before);
        if (before < RegionBytes)
            munmap(start + before + RegionBytes, RegionBytes - before);
        memory = start + before;
    }
    madvise(memory, RegionBytes, MADV_HUGEPAGE);
    return memory;
}

void giveRegionBack(void* memory) {
    munmap(memory, RegionBytes);
}

#else

void* takeRegion() {
    void* const memory = std::aligned_alloc(RegionBytes, RegionBytes);
    return memory ? memory : throw std::bad_alloc();
}

void giveRegionBack(void* memory) {
    std::free(memory);
}

#endif

Region* addRegion(Size& size) {
    auto* region = new (takeRegion()) Region;
    region->used = (sizeof(Region) + 63) / 64 * 64;
    link(size, region);
    return region;
}

constexpr size_t rounded(size_t bytes) {
    return (bytes + Unit - 1) / Unit * Unit;
}

} // namespace

void* Take(size_t bytes) {
    bytes = rounded(bytes);
    if (FromHeap || bytes > MaxBytes)
        return ::operator new(bytes);
    Size& size = sizeOf(bytes);
    Region* region = size.first ? size.first : addRegion(size);
    void* piece = region->freed;
    if (piece) {
        region->freed = region->freed->next;
    } else {
        piece = reinterpret_cast<char*>(region) + region->used;
        region->used += bytes;
    }
    ++region->live;
    if (!region->hasRoom(bytes))
        unlink(size, region); // it comes back with its first free piece
    return piece;
}

void Free(void* piece, size_t bytes) {
    bytes = rounded(bytes);
    if (FromHeap || bytes > MaxBytes)
        return ::operator delete(piece);
    Size& size = sizeOf(bytes);
    auto* region = reinterpret_cast<Region*>(reinterpret_cast<uintptr_t>(piece) & ~(RegionBytes - 1));
    if (!region->hasRoom(bytes))
        link(size, region);
    region->freed = new (piece) Piece{region->freed};
    const bool isOnlyOne = !region->previous && !region->next; // kept for what comes next
    if (--region->live == 0 && !isOnlyOne) {
        unlink(size, region);
        giveRegionBack(region);
    }
}

} // namespace Slabs
