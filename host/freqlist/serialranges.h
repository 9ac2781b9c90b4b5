#pragma once

#include <QtGlobal>

#include <vector>

/// Serials of entries in ascending order, as ranges: entries that come together have serials in a row.
class SerialRanges {
public:
    struct Range {
        quint32 first;
        quint32 last;
    };

    SerialRanges() = default;
    explicit SerialRanges(const std::vector<quint32>& ascending) {
        for (const quint32 serial : ascending)
            Append(serial);
    }
    /// Not below those that are there.
    void Append(quint32 serial);
    bool Contains(quint32 serial) const;
    bool IsEmpty() const { return m_ranges.empty(); }
    size_t Count() const;
    template <typename Visit>
    void ForEach(Visit visit) const {
        for (const Range& range : m_ranges) {
            for (quint32 serial = range.first; serial <= range.last; ++serial)
                visit(serial);
        }
    }
    size_t InMemory() const { return m_ranges.capacity() * sizeof(Range); }

private:
    std::vector<Range> m_ranges;
};
