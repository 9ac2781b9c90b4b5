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

/// Rows in the making. Chunks are of several revisions: an entry that was removed and taken back may stand in
/// two of them, of which the newer one holds.
struct ListCopy::Assembled {
    Rows rows;
    Wire::Checksum sum;

    void Put(const Messages::Row& content, quint32 chunk, QByteArrayView bytes) {
        Row& row = rows[content.id];
        if (!row.bytes.isNull()) {
            if (row.Content().revision > content.revision)
                return;
            sum.Remove(Wire::Hash(row.bytes));
        }
        sum.Add(Wire::Hash(bytes));
        row = {chunk, bytes.toByteArray()};
    }
    /// From this chunk, not from one that it has come to since.
    void Remove(Messages::EntryId id, quint32 chunk) {
        if (const auto found = rows.find(id); found != rows.end() && found->second.chunk == chunk) {
            sum.Remove(Wire::Hash(found->second.bytes));
            rows.erase(found);
        }
    }
};

namespace {

ListCopy::Taken atLeastProgress(ListCopy::Taken taken) {
    return taken == ListCopy::Taken::Nothing ? ListCopy::Taken::Progress : taken;
}

} // namespace

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
    return isOther ? atLeastProgress(complete()) : complete();
}

ListCopy::Taken ListCopy::TakeLayout(quint32 number, QByteArrayView bytes) {
    if (number < m_layouts.Count() && m_layouts.At(number) && m_layouts.Bytes(number) == bytes)
        return Taken::Nothing;
    return m_layouts.Put(number, bytes) ? atLeastProgress(complete()) : Taken::Garbage;
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
    const bool wasMissing = held.bytes.isEmpty();
    m_heldChunks += wasMissing ? 1 : 0;
    held = {chunk->revision, bytes};
    return wasMissing ? atLeastProgress(complete()) : complete();
}

ListCopy::Taken ListCopy::TakeDelta(const QByteArray& bytes) {
    const auto delta = Delta::Decode(bytes);
    if (!delta)
        return Taken::Garbage;
    const bool isOld = m_isCurrent && delta->revision <= m_revision;
    if (!m_manifest || delta->generation != m_manifest->generation || isOld || m_deltas.size() > MostDeltas)
        return Taken::Nothing;
    // One that has just been made was not missing.
    const bool wasMissing =
        m_deltas.insert_or_assign(delta->revision, bytes).second && delta->revision <= m_manifest->revision;
    return wasMissing ? atLeastProgress(complete()) : complete();
}

/// Those with higher numbers may be of an earlier life of the list.
bool ListCopy::hasLayouts() const {
    return m_layouts.Checksum(m_manifest->layouts) == m_manifest->layoutChecksum;
}

bool ListCopy::IsWhole() const {
    return m_isCurrent && m_revision == m_manifest->revision && hasLayouts();
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
        return Taken::Nothing;
    if (!m_isCurrent)
        return hasChunksAndLog() ? assemble() : Taken::Nothing;
    if (applyDeltas())
        return Taken::Changed;
    // The log has gone on without us.
    if (m_revision < m_manifest->revision && m_revision + 1 < m_manifest->logFrom) {
        m_isCurrent = false;
        DropAssembly();
    }
    return Taken::Nothing;
}

bool ListCopy::isRow(const std::optional<Messages::Row>& row) const {
    const bool isCounted = row && row->layout < m_manifest->layouts;
    const EntryLayout* const layout = isCounted ? m_layouts.At(row->layout) : nullptr;
    return layout && layout->AreContents(row->contents);
}

/// A change does nothing to chunks that have it already. False for rows that are none.
bool ListCopy::apply(const Delta& delta, Assembled& to, const std::vector<Held>* chunks) {
    for (const Delta::Step& step : delta.steps) {
        if (chunks && step.chunk < chunks->size() && (*chunks)[step.chunk].revision >= delta.revision)
            continue;
        if (step.removed != 0)
            to.Remove(step.removed, step.chunk);
        else if (const auto row = Messages::Row::Read(step.row))
            to.Put(*row, step.chunk, step.row);
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
            assembled.Put(*row, static_cast<quint32>(number), bytes);
        }
    }
    return true;
}

/// Whether the rows of the manifest can be made.
bool ListCopy::hasChunksAndLog() const {
    if (m_isInconsistent || m_heldChunks < m_manifest->chunks || !MissingChunks(1).empty())
        return false;
    // The manifest of a newer one follows.
    const auto isNewer = [this](const Held& chunk) { return chunk.revision > m_manifest->revision; };
    if (std::any_of(m_chunks.begin(), m_chunks.end(), isNewer))
        return false;
    const auto logged =
        std::distance(m_deltas.lower_bound(m_manifest->logFrom), m_deltas.upper_bound(m_manifest->revision));
    return static_cast<quint64>(logged) == m_manifest->revision + 1 - m_manifest->logFrom;
}

/// Makes the rows of all chunks and of the log.
ListCopy::Taken ListCopy::assemble() {
    Taken taken = Taken::Nothing;
    InTurns(loadingTitle(), static_cast<size_t>(m_manifest->count), [&] { taken = assembleAll(); });
    return taken;
}

/// With all that ends by it, which a long list makes long, too.
ListCopy::Taken ListCopy::assembleAll() {
    Assembled assembled;
    bool isGood = putChunks(assembled);
    for (auto delta = m_deltas.lower_bound(m_manifest->logFrom);
         isGood && delta != m_deltas.end() && delta->first <= m_manifest->revision; ++delta)
        isGood = apply(*Delta::Decode(delta->second), assembled, &m_chunks);
    if (!isGood || assembled.rows.size() != m_manifest->count ||
        assembled.sum.Sum() != m_manifest->checksum) {
        m_isInconsistent = true;
        return Taken::Nothing;
    }
    m_rows = std::move(assembled.rows);
    m_sum = assembled.sum;
    m_revision = m_manifest->revision;
    m_deltas.erase(m_deltas.begin(), m_deltas.upper_bound(m_revision));
    m_isCurrent = true;
    m_chunks = {};
    m_heldChunks = 0;
    m_changed = {true, {}};
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

/// Goes on from whole rows by the changes that follow, as far as the manifest tells of them. False when none
/// does.
bool ListCopy::applyDeltas() {
    const Messages::Revision before = m_revision;
    while (!m_deltas.empty() && m_deltas.begin()->first <= std::min(m_revision + 1, m_manifest->revision)) {
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
