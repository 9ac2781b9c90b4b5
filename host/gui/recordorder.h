#pragma once

#include "host/gui/recordsort.h"

#include <QtGlobal>

#include <limits>
#include <vector>

/// The order in which records are shown: that of their list, or that of a column. It knows by which column
/// and in which direction it is sorted, so that a sorted list is not sorted again, and turned round instead
/// of sorted in the other direction. Records go by their number in the list.
class RecordOrder {
public:
    /// In a list of new numbers, by old ones: the record is gone.
    static constexpr quint32 Gone = std::numeric_limits<quint32>::max();

    enum class Step { Nothing, Reverse, Anew };

    /// So many records in the order of their list.
    void Reset(int count);
    /// What has to be done to sort by a column in that direction.
    Step Next(int column, bool ascending) const;
    void Set(std::vector<quint32> records) { m_records = std::move(records); }
    /// The records as they have been sorted by a column in that direction.
    void SetSorted(std::vector<quint32> records, int column, bool ascending);
    bool IsSorted() const { return m_column >= 0; }
    /// So many records more, behind all others.
    void Append(int count);
    /// Records that have these numbers have come, and stand behind all others until they are placed.
    void Insert(const std::vector<quint32>& records);
    /// Records went or come, and those that were there have new numbers.
    void Renumber(const std::vector<quint32>& numbers, int count);
    /// Puts records that changed, and those that came, to their places. `goesBefore` compares two records in
    /// ascending order; equal ones go by their numbers.
    template <typename GoesBefore>
    void Place(const std::vector<quint32>& changed, int count, GoesBefore goesBefore);

    int Count() const { return m_count; }
    std::vector<quint32> Records() const;
    /// Empty while the order is that of the list.
    const std::vector<quint32>& Sorted() const { return m_records; }

private:
    int m_count = 0;
    int m_column = -1; ///< negative: in the order of the list
    bool m_ascending = true;
    std::vector<quint32> m_records;
};

template <typename GoesBefore>
void RecordOrder::Place(const std::vector<quint32>& changed, int count, GoesBefore goesBefore) {
    m_count = count;
    if (!IsSorted())
        return;
    const auto before = [&](quint32 a, quint32 b) {
        if (!m_ascending)
            std::swap(a, b);
        return goesBefore(a, b) || (!goesBefore(b, a) && a < b);
    };
    RecordSort::Place(m_records, changed, static_cast<quint32>(count), before);
}
