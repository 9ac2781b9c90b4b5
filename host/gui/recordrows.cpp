#include "host/gui/recordrows.h"

#include <algorithm>

int RecordRows::Count() const {
    return m_filter.IsOn() ? static_cast<int>(m_filter.Passed().size()) : m_order.Count();
}

quint32 RecordRows::RecordAt(int row) const {
    return isListed() ? listed()[static_cast<size_t>(row)] : static_cast<quint32>(row);
}

int RecordRows::RowOf(std::optional<quint32> record) const {
    if (!record)
        return -1;
    if (!isListed())
        return static_cast<int>(*record);
    const auto found = std::find(listed().begin(), listed().end(), *record);
    return found == listed().end() ? -1 : static_cast<int>(found - listed().begin());
}

std::vector<quint32> RecordRows::Records() const {
    return m_filter.IsOn() ? m_filter.Passed() : m_order.Records();
}

std::optional<quint32> RecordRows::NextShown(quint32 record) const {
    const std::vector<quint32> order = m_order.Records();
    const auto next = std::find_if(std::find(order.begin(), order.end(), record), order.end(),
                                   [this](quint32 candidate) { return IsShown(candidate); });
    if (next != order.end())
        return *next;
    return Count() == 0 ? std::nullopt : std::optional(RecordAt(Count() - 1));
}
