#include "host/freqlist/recordorder.h"

#include <numeric>
#include <utility>

void RecordOrder::Reset(int count) {
    m_count = count;
    m_column = -1;
    m_records.clear();
}

RecordOrder::Step RecordOrder::Next(int column, bool ascending) {
    if (m_count == 0 || (column == m_column && ascending == m_ascending))
        return Step::Nothing;
    m_ascending = ascending;
    return std::exchange(m_column, column) == column ? Step::Reverse : Step::Anew;
}

std::vector<quint32> RecordOrder::Records() const {
    if (!m_records.empty())
        return m_records;
    std::vector<quint32> records(static_cast<size_t>(m_count));
    std::iota(records.begin(), records.end(), 0u);
    return records;
}
