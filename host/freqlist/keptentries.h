#pragma once

#include "host/freqlist/serialranges.h"
#include "host/freqlist/undobytes.h"
#include "host/valuetree/changerecorder.h"
#include "host/valuetree/node.h"

#include <deque>
#include <memory>
#include <vector>

/// Entries that a step has taken out of a list. Those that can be parked are kept as they are, which costs
/// neither time nor memory that the list did not have, until their memory is wanted. All others are compact
/// data: what many of them share, such as the names, types and limits of their values, stands once. Values of
/// types that have no form as bytes are kept as they are, too.
class KeptEntries final : public NodeKeeper {
public:
    /// So much memory, in bytes, is for parked entries; any further ones are compact data at once.
    static constexpr size_t MostParked = size_t(512) << 20;

    KeptEntries();
    KeptEntries(KeptEntries&&) noexcept;
    KeptEntries& operator=(KeptEntries&&) noexcept;
    ~KeptEntries();

    /// Keeps what an entry that is attached to its list consists of, with its values and sub-nodes.
    void Take(const Node& entry);
    /// Makes room, so that keeping so many entries needs no memory.
    void Reserve(size_t entries);
    /// Keeps an entry while it is being removed: itself, parked, when there is room.
    void Keep(Node* entry) override;
    /// No more are taken.
    void Finish();
    size_t Count() const { return m_count; }
    bool IsEmpty() const { return m_count == 0; }
    /// Of the entries; known when no more are taken.
    const SerialRanges& Serials() const { return m_serials; }
    /// The entries, or new ones with the same contents, to be attached to the list at the same places by
    /// `Node::Restore`; the caller owns them. They are kept no longer then. Throws RGException when they
    /// cannot be read.
    std::vector<Node::Returning> Make(Node& list);

    /// Some thousand parked entries become compact data; false when none are left.
    bool PackSome();
    /// Bytes of parked entries.
    size_t Parked() const { return m_parkedBytes; }
    void Spill() { m_bytes.Spill(); }
    size_t InMemory() const;

private:
    struct Layout;
    /// What an entry's path and its place in the list are made of; stands before its values.
    struct Place {
        quint32 serial;
        quint32 ordinal;
    };

    struct ParkedEntry {
        std::unique_ptr<Node> entry;
        Place place;
    };

    void put(const Node& node);
    void putValues(const Node& node);
    quint32 layoutOf(const Node& node);
    std::unique_ptr<Node> make(UndoBytes::Reader& bytes, Node* parent);
    void fill(UndoBytes::Reader& bytes, Node& node, const Layout& layout);

    std::deque<Layout> m_layouts;
    quint32 m_lastLayout = 0;
    UndoBytes m_bytes;
    std::vector<ParkedEntry> m_parked;
    size_t m_parkedBytes = 0;
    size_t m_count = 0;           ///< parked ones and others
    std::vector<quint32> m_taken; ///< serials, until no more are taken
    SerialRanges m_serials;
    std::deque<std::unique_ptr<ValueBase>> m_others; ///< values that have no form as bytes, as they came
};
