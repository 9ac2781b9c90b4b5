#include "link/rowtable.h"

#include "link/inturns.h"

#include <algorithm>

namespace {

QByteArray blockOf(QByteArrayView row) {
    Wire::Writer writer;
    writer.Block(row);
    return writer.Take();
}

} // namespace

std::optional<RowTable::Row> RowTable::Find(quint32 serial) const {
    const auto found = m_places.find(serial);
    if (found == m_places.end())
        return std::nullopt;
    const auto [id, chunk, ordinal] = found->second;
    return Row{id, chunk, ordinal, stretchOf(serial, chunk).row};
}

quint32 RowTable::SerialOf(Messages::EntryId id) const {
    const auto found = m_serials.find(id);
    return found == m_serials.end() ? 0 : found->second;
}

/// The row must be in the chunk.
RowTable::Stretch RowTable::stretchOf(quint32 serial, quint32 chunk) const {
    const auto& [serials, rows] = m_chunks[chunk];
    const auto number =
        static_cast<size_t>(std::find(serials.begin(), serials.end(), serial) - serials.begin());
    Wire::Reader in(rows);
    for (size_t before = 0; before < number; ++before)
        in.Block();
    const qsizetype begin = rows.size() - in.Left();
    const QByteArrayView row = in.Block();
    return {number, begin, rows.size() - in.Left() - begin, row};
}

quint32 RowTable::chunkWithRoom() {
    const auto isFull = [this](quint32 chunk) { return CountIn(chunk) >= RowsInChunk; };
    const auto last = [this] { return static_cast<quint32>(m_chunks.size() - 1); };
    while (!m_chunks.empty() && isFull(last()) && !m_roomy.empty()) {
        if (!isFull(m_roomy.back()))
            return m_roomy.back();
        m_roomy.pop_back();
    }
    if (m_chunks.empty() || isFull(last()))
        m_chunks.emplace_back();
    return last();
}

void RowTable::append(quint32 serial, quint32 chunk, QByteArrayView row) {
    m_chunks[chunk].serials.push_back(serial);
    m_chunks[chunk].rows += blockOf(row);
}

/// Puts the row in the place of the one of serial `before`, which may be the same.
void RowTable::putAnew(quint32 serial, quint32 before, const QByteArray& row) {
    Chunk& chunk = m_chunks[m_places[before].chunk];
    const Stretch old = stretchOf(before, m_places[before].chunk);
    m_sum.Remove(Wire::Hash(old.row));
    chunk.serials[old.number] = serial;
    chunk.rows.replace(old.begin, old.size, blockOf(row));
}

quint32 RowTable::Put(quint32 serial, quint32 ordinal, const Messages::Row& row) {
    Wire::Writer writer;
    row.Put(writer);
    const QByteArray bytes = writer.Take();
    const quint32 before = SerialOf(row.id);
    quint32 chunk = 0;
    if (before != 0) {
        chunk = m_places[before].chunk;
        putAnew(serial, before, bytes);
        if (before != serial)
            m_places.erase(before);
    } else {
        append(serial, chunk = chunkWithRoom(), bytes);
    }
    m_sum.Add(Wire::Hash(bytes));
    m_serials[row.id] = serial;
    if (const auto back = m_removed.find(row.id); back != m_removed.end()) {
        m_removedIds.erase(back->second.serial);
        m_removed.erase(back);
    }
    m_places[serial] = {row.id, chunk, ordinal};
    return chunk;
}

quint32 RowTable::Remove(quint32 serial) {
    const auto found = m_places.find(serial);
    const auto [id, chunk, ordinal] = found->second;
    m_places.erase(found);
    m_serials.erase(id);
    const Stretch row = stretchOf(serial, chunk);
    m_sum.Remove(Wire::Hash(row.row));
    if (CountIn(chunk) == RowsInChunk)
        m_roomy.push_back(chunk);
    m_chunks[chunk].rows.remove(row.begin, row.size);
    std::erase(m_chunks[chunk].serials, serial);
    m_removed[id] = {serial, ordinal};
    m_removedIds[serial] = id;
    m_removedOrder.push_back(id);
    if (m_removedOrder.size() > MostRemoved)
        forgetOldestRemoved();
    return chunk;
}

void RowTable::forgetOldestRemoved() {
    if (const auto oldest = m_removed.find(m_removedOrder.front()); oldest != m_removed.end()) {
        m_removedIds.erase(oldest->second.serial);
        m_removed.erase(oldest);
    }
    m_removedOrder.pop_front();
}

void RowTable::Deal() {
    const LongWork::Unbroken whole;
    const std::vector<Chunk> before = std::exchange(m_chunks, {});
    m_roomy.clear();
    std::vector<std::pair<quint32, QByteArrayView>> all;
    all.reserve(Count());
    for (const auto& [serials, rows] : before) {
        StepOf(all.size(), Count());
        Wire::Reader in(rows);
        for (const quint32 serial : serials)
            all.emplace_back(serial, in.Block());
    }
    std::sort(all.begin(), all.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    size_t dealt = 0;
    for (const auto& [serial, row] : all) {
        StepOf(dealt++, all.size());
        append(serial, m_places[serial].chunk = chunkWithRoom(), row);
    }
}

std::vector<quint32> RowTable::Serials() const {
    std::vector<quint32> serials;
    serials.reserve(Count());
    for (const auto& place : m_places)
        serials.push_back(place.first);
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
