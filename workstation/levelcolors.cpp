#include "workstation/levelcolors.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace {

/// Corners of the way through the colours, at equal distances.
constexpr QRgb Corners[] = {0x440154, 0x472c7a, 0x3b518b, 0x2c718e, 0x21908d,
                            0x27ad81, 0x5cc863, 0xaadc32, 0xfde725};

std::array<QRgb, LevelColors::Count> makeTable() {
    std::array<QRgb, LevelColors::Count> table{};
    for (size_t i = 0; i < table.size(); ++i) {
        const double place = static_cast<double>(i) / (LevelColors::Count - 1) * (std::size(Corners) - 1);
        const size_t corner = std::min(static_cast<size_t>(place), std::size(Corners) - 2);
        const double share = place - static_cast<double>(corner);
        const auto mix = [&](int (*part)(QRgb)) {
            return static_cast<int>(
                std::lround(part(Corners[corner]) * (1 - share) + part(Corners[corner + 1]) * share));
        };
        table[i] = qRgb(mix(qRed), mix(qGreen), mix(qBlue));
    }
    return table;
}

} // namespace

const std::array<QRgb, LevelColors::Count>& LevelColors::Table() {
    static const std::array<QRgb, Count> table = makeTable();
    return table;
}

QRgb LevelColors::ColorOf(double level, double lowest, double highest) {
    const double share = highest > lowest ? (level - lowest) / (highest - lowest) : 1.0;
    return Table()[static_cast<size_t>(std::lround(std::clamp(share, 0.0, 1.0) * (Count - 1)))];
}
