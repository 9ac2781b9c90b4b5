#include "link/rowtable.h"

#include <algorithm>

const RowTable::Row* RowTable::Find(quint32 serial) const {
    const auto found = m_rows.find(serial);
    return found == m_rows.end() ? nullptr : &found->second;
}

quint32 RowTable::SerialOf(Messages::EntryId id) const {
    const auto found = m_serials.find(id);
    return found == m_serials.end() ? 0 : found->second;
}

quint32 RowTable::chunkWithRoom() {
    while (!m_chunks.empty() && m_chunks.back().size() >= RowsInChunk && !m_roomy.empty()) {
        const quint32 chunk = m_roomy.back();
        if (m_chunks[chunk].size() < RowsInChunk)
            return chunk;
        m_roomy.pop_back();
    }
    if (m_chunks.empty() || m_chunks.back().size() >= RowsInChunk)
        m_chunks.emplace_back();
    return static_cast<quint32>(m_chunks.size() - 1);
}

void RowTable::leaveChunk(quint32 serial, quint32 chunk) {
    std::vector<quint32>& serials = m_chunks[chunk];
    if (serials.size() == RowsInChunk)
        m_roomy.push_back(chunk);
    std::erase(serials, serial);
}

const RowTable::Row& RowTable::Put(quint32 serial, quint32 ordinal, const Messages::Row& row) {
    Wire::Writer writer;
    row.Put(writer);
    QByteArray bytes = writer.Take();
    const quint32 before = SerialOf(row.id);
    const Row* const old = before == 0 ? nullptr : Find(before);
    const quint32 chunk = old ? old->chunk : chunkWithRoom();
    if (old)
        m_sum.Remove(Wire::Hash(old->bytes));
    if (before != serial) {
        std::vector<quint32>& serials = m_chunks[chunk];
        const auto place = std::find(serials.begin(), serials.end(), before);
        if (old && place != serials.end())
            *place = serial;
        else
            serials.push_back(serial);
        m_rows.erase(before);
    }
    m_sum.Add(Wire::Hash(bytes));
    m_serials[row.id] = serial;
    if (const auto back = m_removed.find(row.id); back != m_removed.end()) {
        m_removedIds.erase(back->second.serial);
        m_removed.erase(back);
    }
    return m_rows[serial] = {row.id, chunk, ordinal, std::move(bytes)};
}

quint32 RowTable::Remove(quint32 serial) {
    const auto found = m_rows.find(serial);
    const auto [id, chunk, ordinal, bytes] = std::move(found->second);
    m_rows.erase(found);
    m_serials.erase(id);
    m_sum.Remove(Wire::Hash(bytes));
    leaveChunk(serial, chunk);
    m_removed[id] = {serial, ordinal};
    m_removedIds[serial] = id;
    m_removedOrder.push_back(id);
    if (m_removedOrder.size() > MostRemoved) {
        if (const auto oldest = m_removed.find(m_removedOrder.front()); oldest != m_removed.end()) {
            m_removedIds.erase(oldest->second.serial);
            m_removed.erase(oldest);
        }
        m_removedOrder.pop_front();
    }
    return chunk;
}

void RowTable::Deal() {
    m_chunks.clear();
    m_roomy.clear();
    for (const quint32 serial : Serials()) {
        const quint32 chunk = chunkWithRoom();
        m_rows[serial].chunk = chunk;
        m_chunks[chunk].push_back(serial);
    }
}

std::vector<quint32> RowTable::Serials() const {
    std::vector<quint32> serials;
    serials.reserve(m_rows.size());
    for (const auto& row : m_rows)
        serials.push_back(row.first);
    std::sort(serials.begin(), serials.end());
    return serials;
}

Messages::EntryId RowTable::RemovedId(quint32 serial) const {
    const auto found = m_removedIds.find(serial);
    return found == m_removedIds.end() ? 0 : found->second;
}

std::optional<RowTable::Removed> RowTable::RemovedPlace(Messages::EntryId id) const {
    const auto found = m_removed.find(id);
    return found == m_removed.end() ? std::nullopt : std::optional(found->second);
}
