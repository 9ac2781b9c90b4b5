#pragma once

#include "link/layouttable.h"
#include "link/messages.h"

#include <map>
#include <set>
#include <unordered_map>

/// What a reader holds of a list that another seat serves. It takes messages in any order and is whole when
/// its rows are exactly those of the manifest; until then the rows stay as they were when they were whole
/// last.
class ListCopy {
public:
    enum class Taken {
        Garbage, ///< bytes that are no such message
        Nothing, ///< nothing that was missing
        Progress,
        Changed, ///< the rows have changed: see `Changes`
    };
    /// Each takes one message; `number` is that of its topic.
    Taken TakeManifest(QByteArrayView bytes);
    Taken TakeLayout(quint32 number, QByteArrayView bytes);
    Taken TakeChunk(quint32 number, const QByteArray& bytes);
    Taken TakeDelta(const QByteArray& bytes);

    struct Row {
        quint32 chunk;
        QByteArray bytes;
        Messages::Row Content() const { return *Messages::Row::Read(bytes); }
    };
    using Rows = std::unordered_map<Messages::EntryId, Row>;
    const Rows& GetRows() const { return m_rows; }
    const Row* Find(Messages::EntryId id) const;
    /// The rows' places and ids, by places; in steps of LongWork.
    using Order = std::vector<std::pair<quint32, Messages::EntryId>>;
    Order InOrder() const;
    const LayoutTable& Layouts() const { return m_layouts; }
    const std::optional<Messages::Manifest>& Newest() const { return m_manifest; }
    /// Of the rows; 0 before they were whole for the first time.
    Messages::Revision Revision() const { return m_revision; }

    /// What changed since the last call; `all` when the rows are to be looked at as a whole.
    struct Changed {
        bool all = false;
        std::vector<Messages::EntryId> ids; ///< in order; of removed rows, too
    };
    Changed TakeChanges() { return std::exchange(m_changed, {}); }

    /// Whether the rows are what the newest manifest says.
    bool IsWhole() const;
    /// Whether chunks are wanted, and how many are held of how many.
    bool WantsChunks() const { return m_manifest && !m_isCurrent; }
    quint32 HeldChunks() const { return m_heldChunks; }
    /// The first ones of the chunks that are missing.
    std::vector<quint32> MissingChunks(size_t most) const;
    /// Begins anew with the chunks, since what is held does not fit together.
    void DropAssembly();
    bool IsInconsistent() const { return m_isInconsistent; }

private:
    struct Assembled;
    struct Held {
        Messages::Revision revision = 0;
        QByteArray bytes;
    };

    Taken complete();
    bool hasLayouts() const;
    bool isRow(const std::optional<Messages::Row>& row) const;
    bool hasChunksAndLog() const;
    Taken assemble();
    Taken assembleAll();
    bool putChunks(Assembled& assembled) const;
    bool applyDeltas();
    bool applyDelta(const Messages::Delta& delta);
    static bool apply(const Messages::Delta& delta, Assembled& to, const std::vector<Held>* chunks);

    std::optional<Messages::Manifest> m_manifest;
    LayoutTable m_layouts;
    std::vector<Held> m_chunks;
    quint32 m_heldChunks = 0;
    std::map<Messages::Revision, QByteArray> m_deltas; ///< of the manifest's generation, later than the rows

    Rows m_rows;
    Wire::Checksum m_sum;
    Messages::Revision m_revision = 0;
    bool m_isCurrent = false; ///< the rows are of the manifest's generation, and the log leads on from them
    bool m_isInconsistent = false;
    Changed m_changed;
};
