#include "host/freqlist/serialranges.h"

#include <algorithm>

void SerialRanges::Append(quint32 serial) {
    if (m_ranges.empty() || m_ranges.back().last + 1 < serial)
        m_ranges.push_back({serial, serial});
    else
        m_ranges.back().last = serial;
}

bool SerialRanges::Contains(quint32 serial) const {
    const auto next =
        std::upper_bound(m_ranges.begin(), m_ranges.end(), serial,
                         [](quint32 wanted, const Range& range) { return wanted < range.first; });
    return next != m_ranges.begin() && serial <= std::prev(next)->last;
}

size_t SerialRanges::Count() const {
    size_t count = 0;
    for (const Range& range : m_ranges)
        count += range.last - range.first + size_t(1);
    return count;
}
