#pragma once

#include "link/listcopy.h"
#include "link/sharedlist.h"

/// The entries of a list's node that stand for rows of another seat's list, in the order of their places. It
/// makes, sets and removes nodes, and knows which node stands for which row.
class Mirror {
public:
    using EntryId = Messages::EntryId;

    /// The list's node and the copy outlive the mirror.
    Mirror(const SharedList& list, const ListCopy& copy) : m_list(list), m_copy(copy) {}

    /// Whether the node holds the rows; before, it holds what it held without the link.
    bool IsShown() const { return m_isShown; }
    /// Makes the entries as the rows of the copy are, in steps of LongWork. Entries that `keep` answers for
    /// stay as they are, those that are not here included.
    void ShowAll(const std::function<bool(EntryId)>& keep);

    /// An entry that is not mirrored yet, from its row, or a node that is made for it. Entries that it comes
    /// before may be made anew, with what they hold here.
    Node* Attach(EntryId id, const Messages::Row& row, std::unique_ptr<Node> node = nullptr);
    /// A node like this one, not attached.
    std::unique_ptr<Node> CopyOf(const Node& entry) const;
    /// Sets the entry as its row is.
    void Set(EntryId id, const Messages::Row& row);
    /// Destroys the entry; what follows learns of it as of any other removal.
    void Destroy(EntryId id);
    /// The entry has been removed from the tree by somebody else.
    void Forget(EntryId id);
    /// A node that is here already stands for the row from now on; false when it does not stand in its place.
    bool Bind(EntryId id, const Messages::Row& row, const Node& entry);
    /// The row has been changed to what the entry is already.
    void SetRevision(EntryId id, Messages::Revision revision, quint32 layout);

    bool Has(EntryId id) const { return m_entries.count(id) > 0; }
    Node* EntryOf(EntryId id) const;
    EntryId IdOf(quint32 serial) const;
    /// The id that a removed entry of this serial had; 0 when none is remembered.
    EntryId GoneId(quint32 serial) const;
    /// Revision and layout of the row that the entry was set to.
    Messages::Revision RevisionOf(EntryId id) const { return m_entries.at(id).revision; }
    quint32 LayoutOf(EntryId id) const { return m_entries.at(id).layout; }

    /// Whether the entry is as these contents say.
    bool IsAs(const Node& entry, quint32 layout, QByteArrayView contents) const;

private:
    struct Entry {
        quint32 serial;
        quint32 ordinal;
        quint32 place;
        Messages::Revision revision;
        quint32 layout;
    };
    using Sorted = ListCopy::Order;

    bool keepsOrder(const Sorted& rows) const;
    std::unique_ptr<Node> make(const Messages::Row& row) const;
    void insert(EntryId id, const Messages::Row& row, Node& entry);
    void forget(EntryId id, bool remember);
    bool isBetween(quint32 serial, quint32 place) const;
    bool restore(EntryId id, Node& entry, quint32 place);

    static constexpr size_t MostGone = 65536;

    SharedList m_list;
    const ListCopy& m_copy;
    bool m_isShown = false;
    std::unordered_map<EntryId, Entry> m_entries;
    std::unordered_map<quint32, EntryId> m_ids; ///< by serial
    std::map<quint32, EntryId> m_places;
    std::unordered_map<EntryId, Entry> m_gone; ///< entries that may come back
    std::unordered_map<quint32, EntryId> m_goneIds;
};
