#include "host/freqlist/recordcopy.h"

#include <algorithm>

void RecordCopy::Follow(ValueBase* value, IObserver* observer) {
    if (ValueBase* old = m_value.get())
        old->DeleteObserver(observer);
    m_value = m_records.IsRecordList(value) ? value : nullptr;
    if (m_value)
        value->AddObserver(observer);
}

bool RecordCopy::Follows(const Observable* subject) const {
    return subject == static_cast<const Observable*>(m_value.get());
}

void RecordCopy::TakeAnew(int atMost) {
    m_count = m_records.TakeRecords(m_value.get(), atMost);
    m_taken = std::min(atMost, m_count);
}

std::optional<RecordCopy::Changes> RecordCopy::TakeChanges(int atMost) {
    std::vector<quint32> edited;
    const std::optional<int> count = m_records.TakeChanges(m_value.get(), atMost, edited);
    if (!count)
        return std::nullopt;
    std::sort(edited.begin(), edited.end());
    edited.erase(std::unique(edited.begin(), edited.end()), edited.end());
    const bool any = *count != m_count || !edited.empty();
    m_taken += std::min(atMost, *count - m_taken);
    m_count = *count;
    return Changes{std::move(edited), any};
}
