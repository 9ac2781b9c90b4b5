#include "host/gui/recordorder.h"

#include <numeric>

void RecordOrder::Reset(int count) {
    m_count = count;
    m_column = -1;
    m_records.clear();
}

RecordOrder::Step RecordOrder::Next(int column, bool ascending) const {
    if (m_count == 0 || (column == m_column && ascending == m_ascending))
        return Step::Nothing;
    return column == m_column ? Step::Reverse : Step::Anew;
}

void RecordOrder::SetSorted(std::vector<quint32> records, int column, bool ascending) {
    m_records = std::move(records);
    m_column = column;
    m_ascending = ascending;
}

void RecordOrder::Append(int count) {
    for (int i = 0; !m_records.empty() && i < count; ++i)
        m_records.push_back(static_cast<quint32>(m_count + i));
    m_count += count;
}

void RecordOrder::Insert(const std::vector<quint32>& records) {
    if (!m_records.empty())
        m_records.insert(m_records.end(), records.begin(), records.end());
}

void RecordOrder::Renumber(const std::vector<quint32>& numbers, int count) {
    for (quint32& record : m_records)
        record = numbers[record];
    std::erase(m_records, Gone);
    m_count = count;
}

std::vector<quint32> RecordOrder::Records() const {
    if (!m_records.empty())
        return m_records;
    std::vector<quint32> records(static_cast<size_t>(m_count));
    std::iota(records.begin(), records.end(), 0u);
    return records;
}
