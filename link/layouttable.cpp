#include "link/layouttable.h"

namespace {

/// No list has nearly as many.
constexpr quint32 MostLayouts = 100000;

} // namespace

quint32 LayoutTable::NumberOf(const Node& entry) {
    if (m_last >= m_rows.size() || !m_rows[m_last].layout->Describes(entry))
        m_last = Add(EntryLayout::Of(entry));
    return m_last;
}

quint32 LayoutTable::Add(EntryLayout layout) {
    QByteArray bytes = layout.Encode();
    if (const auto found = m_numbers.constFind(bytes); found != m_numbers.constEnd())
        return *found;
    const quint32 number = Count();
    m_sum.Add(Wire::Hash(bytes));
    m_numbers.insert(bytes, number);
    m_rows.push_back({std::move(layout), std::move(bytes)});
    return number;
}

bool LayoutTable::Put(quint32 number, QByteArrayView bytes) {
    std::optional<EntryLayout> layout = number < MostLayouts ? EntryLayout::Decode(bytes) : std::nullopt;
    if (!layout)
        return false;
    if (number >= m_rows.size())
        m_rows.resize(number + 1);
    Row& row = m_rows[number];
    if (row.layout)
        m_sum.Remove(Wire::Hash(row.bytes));
    row = {std::move(layout), bytes.toByteArray()};
    m_sum.Add(Wire::Hash(row.bytes));
    return true;
}

quint64 LayoutTable::Checksum(quint32 count) const {
    Wire::Checksum sum = m_sum;
    for (quint32 number = count; number < Count(); ++number) {
        if (m_rows[number].layout)
            sum.Remove(Wire::Hash(m_rows[number].bytes));
    }
    return sum.Sum();
}

const EntryLayout* LayoutTable::At(quint32 number) const {
    return number < m_rows.size() && m_rows[number].layout ? &*m_rows[number].layout : nullptr;
}

const EntryLayout* LayoutTable::Similar(const EntryLayout& layout) const {
    for (const Row& row : m_rows) {
        if (row.layout && row.layout->HasFieldsOf(layout))
            return &*row.layout;
    }
    return nullptr;
}

void LayoutTable::Clear() {
    *this = LayoutTable();
}
