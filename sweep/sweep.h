#pragma once

#include <QtGlobal>

#include <cstddef>
#include <vector>

/// Neighbouring bins of equal width that a receiver measured without retuning. Bin i reaches from
/// `low + i * step` to `low + (i + 1) * step`. All in Hz.
struct SweepHop {
    double low;
    double step;
    std::size_t first; ///< its first level in Sweep::levels
    std::size_t count; ///< number of its bins

    double BinStart(std::size_t bin) const { return low + step * static_cast<double>(bin); }
    double End() const { return BinStart(count); }
};

/// One pass of a receiver over its range.
struct Sweep {
    qint64 time = 0;            ///< microseconds since 1970-01-01 UTC
    std::vector<SweepHop> hops; ///< by frequency
    std::vector<float> levels;  ///< dB; -inf where there was no power, NaN where there is no value
};
