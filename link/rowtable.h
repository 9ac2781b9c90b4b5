#pragma once

#include "link/messages.h"

#include <deque>
#include <optional>
#include <unordered_map>

/// The rows of a list that is served, as they were published last: found by the serial of the entry's node
/// and by the entry's id, and dealt out to chunks. The bytes of a chunk's rows stand one behind the other, as
/// they are published: a chunk costs one look at memory, not one for each row, and what changes costs the
/// same in a long list as in a short one.
class RowTable {
public:
    static constexpr size_t RowsInChunk = 32;

    struct Row {
        Messages::EntryId id;
        quint32 chunk;
        quint32 ordinal;      ///< of the entry's node
        QByteArrayView bytes; ///< good until a row is put or removed

        Messages::Row Content() const { return *Messages::Row::Read(bytes); }
    };
    /// A removed entry's node, as `Node::Restore` puts it back.
    struct Removed {
        quint32 serial;
        quint32 ordinal;
    };

    /// Nothing for an unknown serial.
    std::optional<Row> Find(quint32 serial) const;
    /// Serial of an entry's node; 0 for an unknown id.
    quint32 SerialOf(Messages::EntryId id) const;
    size_t Count() const { return m_places.size(); }
    quint64 Checksum() const { return m_sum.Sum(); }

    Messages::EntryId NewId() { return ++m_lastId; }
    /// No id up to this one is given to a new entry.
    void KeepIdsFrom(Messages::EntryId id) { m_lastId = std::max(m_lastId, id); }
    Messages::EntryId LastId() const { return m_lastId; }

    /// Sets the row of a serial, which a new one gets a chunk for, and tells the chunk; the id may have had
    /// another serial before.
    quint32 Put(quint32 serial, quint32 ordinal, const Messages::Row& row);
    /// Removes the row; the chunk in which it was.
    quint32 Remove(quint32 serial);
    /// Deals out all rows anew, in list order.
    void Deal();

    size_t ChunkCount() const { return m_chunks.size(); }
    size_t CountIn(quint32 chunk) const { return m_chunks[chunk].ends.size(); }
    /// The rows of a chunk, each behind its length.
    QByteArrayView BytesOf(quint32 chunk) const { return m_chunks[chunk].rows; }
    /// All serials, in order.
    std::vector<quint32> Serials() const;

    /// A removed entry that may come back, for as long as it is remembered: by its serial (0: none) or its
    /// id.
    Messages::EntryId RemovedId(quint32 serial) const;
    std::optional<Removed> RemovedPlace(Messages::EntryId id) const;

private:
    static constexpr size_t MostRemoved = 65536;

    struct Place {
        Messages::EntryId id;
        quint32 chunk;
        quint32 ordinal;
    };
    /// Where a row ends in its chunk.
    struct End {
        quint32 serial;
        quint32 at;
    };
    struct Chunk {
        std::vector<End> ends; ///< of the rows, in their order
        QByteArray rows;

        quint32 BeginOf(size_t number) const { return number == 0 ? 0 : ends[number - 1].at; }
        size_t NumberOf(quint32 serial) const; ///< the row must be there
        QByteArrayView RowAt(size_t number) const;
        /// Puts the bytes of a row, with their length in front, in place of the row that stands there.
        void Replace(size_t number, const QByteArray& block);
    };

    quint32 chunkWithRoom();
    void putAnew(quint32 serial, quint32 before, const QByteArray& row);
    void append(quint32 serial, quint32 chunk, QByteArrayView row);
    void forgetOldestRemoved();

    std::unordered_map<quint32, Place> m_places; ///< by serial
    std::unordered_map<Messages::EntryId, quint32> m_serials;
    std::vector<Chunk> m_chunks;
    std::vector<quint32> m_roomy; ///< chunks that may have room, besides the last one
    Wire::Checksum m_sum;
    Messages::EntryId m_lastId = 0;
    std::unordered_map<Messages::EntryId, Removed> m_removed;
    std::unordered_map<quint32, Messages::EntryId> m_removedIds; ///< by serial
    std::deque<Messages::EntryId> m_removedOrder;
};
