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
    const Chunk& its = m_chunks[chunk];
    return Row{id, chunk, ordinal, its.RowAt(its.NumberOf(serial))};
}

quint32 RowTable::SerialOf(Messages::EntryId id) const {
    const auto found = m_serials.find(id);
    return found == m_serials.end() ? 0 : found->second;
}

size_t RowTable::Chunk::NumberOf(quint32 serial) const {
    const auto isIts = [serial](const End& end) { return end.serial == serial; };
    return static_cast<size_t>(std::find_if(ends.begin(), ends.end(), isIts) - ends.begin());
}

QByteArrayView RowTable::Chunk::RowAt(size_t number) const {
    const quint32 begin = BeginOf(number);
    return Wire::Reader(QByteArrayView(rows).sliced(begin, ends[number].at - begin)).Block();
}

void RowTable::Chunk::Replace(size_t number, const QByteArray& block) {
    const quint32 begin = BeginOf(number);
    const quint32 before = ends[number].at - begin;
    const auto now = static_cast<quint32>(block.size());
    rows.replace(begin, before, block);
    for (; before != now && number < ends.size(); ++number)
        ends[number].at += now - before;
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
    Chunk& its = m_chunks[chunk];
    its.rows += blockOf(row);
    its.ends.push_back({serial, static_cast<quint32>(its.rows.size())});
}

/// Puts the row in the place of the one of serial `before`, which may be the same.
void RowTable::putAnew(quint32 serial, quint32 before, const QByteArray& row) {
    Chunk& chunk = m_chunks[m_places[before].chunk];
    const size_t number = chunk.NumberOf(before);
    m_sum.Remove(Wire::Hash(chunk.RowAt(number)));
    chunk.ends[number].serial = serial;
    chunk.Replace(number, blockOf(row));
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
    Chunk& its = m_chunks[chunk];
    const size_t number = its.NumberOf(serial);
    m_sum.Remove(Wire::Hash(its.RowAt(number)));
    if (CountIn(chunk) == RowsInChunk)
        m_roomy.push_back(chunk);
    its.Replace(number, {});
    its.ends.erase(its.ends.begin() + static_cast<std::ptrdiff_t>(number));
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
    for (const Chunk& chunk : before) {
        StepOf(all.size(), Count());
        for (size_t number = 0; number < chunk.ends.size(); ++number)
            all.emplace_back(chunk.ends[number].serial, chunk.RowAt(number));
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
