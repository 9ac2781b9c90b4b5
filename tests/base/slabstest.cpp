#include "host/base/slabs.h"

#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace {

/// Pieces of many sizes, taken and freed in any order: none overlaps another, all are aligned.
TEST(Slabs, PiecesKeepTheirContentWhileOthersComeAndGo) {
    struct Piece {
        unsigned char* memory;
        size_t bytes;
        unsigned char mark;
    };
    std::mt19937 random(3);
    std::vector<Piece> pieces;
    const auto endOne = [&](size_t i) {
        const Piece piece = pieces[i];
        for (size_t k = 0; k < piece.bytes; ++k)
            ASSERT_EQ(piece.memory[k], piece.mark);
        Slabs::Free(piece.memory, piece.bytes);
        pieces[i] = pieces.back();
        pieces.pop_back();
    };
    constexpr size_t sizes[] = {8, 60, 64, 240, 2048, 5000};
    for (int step = 0; step < 60000; ++step) {
        if (random() % 5 < 3 || pieces.empty()) {
            const size_t bytes = sizes[random() % std::size(sizes)];
            const auto mark = static_cast<unsigned char>(step);
            pieces.push_back({static_cast<unsigned char*>(Slabs::Take(bytes)), bytes, mark});
            ASSERT_EQ(reinterpret_cast<uintptr_t>(pieces.back().memory) % 8, 0u);
            std::memset(pieces.back().memory, mark, bytes);
        } else {
            endOne(random() % pieces.size());
        }
    }
    while (!pieces.empty())
        endOne(pieces.size() - 1);
}

} // namespace
