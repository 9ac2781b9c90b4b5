#include "link/listcopy.h"

#include "link/inturns.h"
#include "link/rowtable.h"

#include <QCoreApplication>

#include <algorithm>

using Messages::Chunk;
using Messages::Delta;
using Messages::Manifest;

namespace {

constexpr quint32 MostChunks = 1000000;
constexpr size_t MostDeltas = 4096;

QString loadingTitle() {
    return QCoreApplication::translate("ListCopy", "Loading the shared list");
}

} // namespace

/// Rows in the making.
struct ListCopy::Assembled {
    Rows rows;
    Wire::Checksum sum;

    void Put(Messages::EntryId id, quint32 chunk, QByteArrayView bytes) {
        Row& row = rows[id];
        if (!row.bytes.isNull())
            sum.Remove(Wire::Hash(row.bytes));
        sum.Add(Wire::Hash(bytes));
        row = {chunk, bytes.toByteArray()};
    }
    void Remove(Messages::EntryId id) {
        if (const auto found = rows.find(id); found != rows.end()) {
            sum.Remove(Wire::Hash(found->second.bytes));
            rows.erase(found);
        }
    }
};

const ListCopy::Row* ListCopy::Find(Messages::EntryId id) const {
    const auto found = m_rows.find(id);
    return found == m_rows.end() ? nullptr : &found->second;
}

ListCopy::Order ListCopy::InOrder() const {
    Order order;
    order.reserve(m_rows.size());
    for (const auto& [id, row] : m_rows) {
        StepOf(order.size(), m_rows.size());
        order.emplace_back(row.Content().place, id);
    }
    std::sort(order.begin(), order.end());
    return order;
}

ListCopy::Taken ListCopy::TakeManifest(QByteArrayView bytes) {
    auto manifest = Manifest::Decode(bytes);
    if (!manifest || manifest->chunks > MostChunks || manifest->logFrom > manifest->revision + 1)
        return Taken::Garbage;
    const bool isOther = !m_manifest || m_manifest->generation != manifest->generation;
    if (!isOther && manifest->revision < m_manifest->revision)
        return Taken::Nothing;
    if (isOther) {
        m_isCurrent = false;
        m_deltas.clear();
        DropAssembly();
    }
    m_manifest = std::move(manifest);
    m_chunks.resize(std::max<size_t>(m_chunks.size(), m_manifest->chunks));
    return complete();
}

ListCopy::Taken ListCopy::TakeLayout(quint32 number, QByteArrayView bytes) {
    if (number < m_layouts.Count() && m_layouts.At(number) && m_layouts.Bytes(number) == bytes)
        return Taken::Nothing;
    return m_layouts.Put(number, bytes) ? complete() : Taken::Garbage;
}

ListCopy::Taken ListCopy::TakeChunk(quint32 number, const QByteArray& bytes) {
    const auto chunk = Chunk::Decode(bytes);
    if (!chunk || number > MostChunks)
        return Taken::Garbage;
    if (!WantsChunks() || chunk->generation != m_manifest->generation)
        return Taken::Nothing;
    if (number >= m_chunks.size())
        m_chunks.resize(number + 1);
    Held& held = m_chunks[number];
    if (!held.bytes.isEmpty() && held.revision >= chunk->revision)
        return Taken::Nothing;
    m_heldChunks += held.bytes.isEmpty() ? 1 : 0;
    held = {chunk->revision, bytes};
    return complete();
}

ListCopy::Taken ListCopy::TakeDelta(const QByteArray& bytes) {
    const auto delta = Delta::Decode(bytes);
    if (!delta)
        return Taken::Garbage;
    const bool isOld = m_isCurrent && delta->revision <= m_revision;
    if (!m_manifest || delta->generation != m_manifest->generation || isOld || m_deltas.size() > MostDeltas)
        return Taken::Nothing;
    m_deltas[delta->revision] = bytes;
    return complete();
}

bool ListCopy::hasLayouts() const {
    if (m_layouts.Count() < m_manifest->layouts)
        return false;
    return m_layouts.Count() > m_manifest->layouts || m_layouts.Checksum() == m_manifest->layoutChecksum;
}

bool ListCopy::IsWhole() const {
    return m_isCurrent && m_revision >= m_manifest->revision;
}

std::vector<quint32> ListCopy::MissingChunks(size_t most) const {
    std::vector<quint32> missing;
    for (quint32 chunk = 0; WantsChunks() && chunk < m_manifest->chunks && missing.size() < most; ++chunk) {
        if (m_chunks[chunk].bytes.isEmpty())
            missing.push_back(chunk);
    }
    return missing;
}

void ListCopy::DropAssembly() {
    m_chunks.assign(m_manifest ? m_manifest->chunks : 0, {});
    m_heldChunks = 0;
    m_isInconsistent = false;
}

ListCopy::Taken ListCopy::complete() {
    if (!m_manifest || !hasLayouts())
        return Taken::Progress;
    if (!m_isCurrent)
        return assembleIfAllIsHere();
    if (applyDeltas())
        return Taken::Changed;
    // The log has gone on without us.
    if (m_revision < m_manifest->revision && m_revision + 1 < m_manifest->logFrom) {
        m_isCurrent = false;
        DropAssembly();
    }
    return Taken::Progress;
}

bool ListCopy::isRow(const std::optional<Messages::Row>& row) const {
    const EntryLayout* const layout = row ? m_layouts.At(row->layout) : nullptr;
    return layout && layout->AreContents(row->contents);
}

/// A change does nothing to chunks that have it already. False for rows that are none.
bool ListCopy::apply(const Delta& delta, Assembled& to, const std::vector<Held>* chunks) {
    for (const Delta::Step& step : delta.steps) {
        if (chunks && step.chunk < chunks->size() && (*chunks)[step.chunk].revision >= delta.revision)
            continue;
        if (step.removed != 0)
            to.Remove(step.removed);
        else if (const auto row = Messages::Row::Read(step.row))
            to.Put(row->id, step.chunk, step.row);
        else
            return false;
    }
    return true;
}

bool ListCopy::putChunks(Assembled& assembled) const {
    assembled.rows.reserve(std::min<quint64>(m_manifest->count, m_chunks.size() * RowTable::RowsInChunk));
    for (size_t number = 0; number < m_chunks.size(); ++number) {
        StepOf(number, m_chunks.size());
        if (m_chunks[number].bytes.isEmpty())
            continue;
        const auto chunk = Chunk::Decode(m_chunks[number].bytes);
        for (const QByteArrayView bytes : chunk->rows) {
            const auto row = Messages::Row::Read(bytes);
            if (!isRow(row))
                return false;
            assembled.Put(row->id, static_cast<quint32>(number), bytes);
        }
    }
    return true;
}

/// Makes the rows of all chunks and of the log, if both are there.
ListCopy::Taken ListCopy::assembleIfAllIsHere() {
    if (m_isInconsistent || m_heldChunks < m_manifest->chunks || !MissingChunks(1).empty())
        return Taken::Progress;
    m_deltas.erase(m_deltas.begin(), m_deltas.lower_bound(m_manifest->logFrom));
    Messages::Revision last = m_manifest->logFrom - 1;
    for (const auto& delta : m_deltas) {
        if (delta.first == last + 1)
            last = delta.first;
    }
    Messages::Revision wanted = m_manifest->revision;
    for (const Held& chunk : m_chunks)
        wanted = std::max(wanted, chunk.revision);
    if (last < wanted)
        return Taken::Progress;
    Taken taken = Taken::Progress;
    InTurns(loadingTitle(), static_cast<size_t>(m_manifest->count), [&] { taken = assemble(last); });
    return taken;
}

/// Up to the change of the log that came last.
ListCopy::Taken ListCopy::assemble(Messages::Revision last) {
    Assembled assembled;
    bool isGood = putChunks(assembled);
    quint64 count = m_manifest->count;
    quint64 checksum = m_manifest->checksum;
    for (auto delta = m_deltas.begin(); isGood && delta != m_deltas.end() && delta->first <= last; ++delta) {
        const auto message = Delta::Decode(delta->second);
        isGood = apply(*message, assembled, &m_chunks);
        count = message->count;
        checksum = message->checksum;
    }
    if (!isGood || assembled.rows.size() != count || assembled.sum.Sum() != checksum) {
        m_isInconsistent = true;
        return Taken::Progress;
    }
    m_deltas.erase(m_deltas.begin(), m_deltas.upper_bound(last));
    m_rows = std::move(assembled.rows);
    m_sum = assembled.sum;
    m_revision = last;
    m_isCurrent = true;
    m_chunks = {};
    m_heldChunks = 0;
    m_changed = {true, {}};
    applyDeltas();
    return Taken::Changed;
}

/// Makes one more change to rows that are whole, in one turn. False when they do not fit together.
bool ListCopy::applyDelta(const Delta& delta) {
    size_t looked = 0;
    for (const Delta::Step& step : delta.steps) {
        StepOf(looked++, delta.steps.size());
        if (step.removed == 0 && !isRow(Messages::Row::Read(step.row)))
            return false;
    }
    Assembled rows{std::move(m_rows), m_sum};
    apply(delta, rows, nullptr);
    m_rows = std::move(rows.rows);
    m_sum = rows.sum;
    return m_rows.size() == delta.count && m_sum.Sum() == delta.checksum;
}

/// Goes on from whole rows by the changes that follow. False when none does.
bool ListCopy::applyDeltas() {
    const Messages::Revision before = m_revision;
    while (!m_deltas.empty() && m_deltas.begin()->first <= m_revision + 1) {
        const QByteArray bytes = m_deltas.begin()->second; // what the steps look at
        const auto delta = Delta::Decode(bytes);
        m_deltas.erase(m_deltas.begin());
        if (delta->revision <= m_revision)
            continue;
        bool fits = false;
        InTurns(loadingTitle(), delta->steps.size(), [&] { fits = applyDelta(*delta); });
        if (!fits) {
            m_isCurrent = false;
            DropAssembly();
            break;
        }
        m_revision = delta->revision;
        for (const Delta::Step& step : delta->steps)
            m_changed.ids.push_back(step.removed != 0 ? step.removed : Messages::Row::Read(step.row)->id);
    }
    return m_revision > before;
}
