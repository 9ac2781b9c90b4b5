#include "host/gui/recordfilter.h"

#include "host/gui/recordorder.h"

#include <algorithm>

bool RecordFilter::SetQuery(Query query) {
    const bool narrows = IsComplete() && query.Narrows(m_query);
    m_query = std::move(query);
    return narrows;
}

void RecordFilter::Begin(std::vector<quint32> records, size_t count) {
    m_toLookAt = std::move(records);
    m_next = 0;
    m_passes.assign(count, false);
    m_passed.clear();
}

void RecordFilter::LookOn(size_t records) {
    const size_t end = m_next + std::min(records, m_toLookAt.size() - m_next);
    for (; m_next < end; ++m_next) {
        const quint32 record = m_toLookAt[m_next];
        m_passes[record] = m_matches(record);
        if (m_passes[record])
            m_passed.push_back(record);
    }
    if (IsComplete()) {
        m_toLookAt = {};
        m_next = 0;
    }
}

void RecordFilter::Renew(const std::vector<quint32>& changed, size_t count,
                         const std::vector<quint32>& order) {
    if (IsComplete()) {
        for (const quint32 record : changed)
            m_passes[record] = m_matches(record);
        for (auto record = static_cast<quint32>(m_passes.size()); record < count; ++record)
            m_passes.push_back(m_matches(record));
    } else {
        m_passes.resize(count);
    }
    Reorder(order);
}

void RecordFilter::LetPass(const std::vector<quint32>& records, const std::vector<quint32>& order) {
    for (const quint32 record : records)
        m_passes[record] = true;
    Reorder(order);
}

void RecordFilter::Renumber(const std::vector<quint32>& numbers, size_t count) {
    m_toLookAt.erase(m_toLookAt.begin(), m_toLookAt.begin() + static_cast<std::ptrdiff_t>(m_next));
    m_next = 0;
    for (std::vector<quint32>* records : {&m_toLookAt, &m_passed}) {
        for (quint32& record : *records)
            record = numbers[record];
        std::erase(*records, RecordOrder::Gone);
    }
    m_passes.assign(count, false);
    for (const quint32 record : m_passed)
        m_passes[record] = true;
}

void RecordFilter::Reorder(const std::vector<quint32>& order) {
    if (!IsComplete())
        return Begin(order, m_passes.size());
    m_passed.clear();
    std::copy_if(order.begin(), order.end(), std::back_inserter(m_passed),
                 [this](quint32 record) { return m_passes[record]; });
}
