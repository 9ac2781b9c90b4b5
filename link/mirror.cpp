#include "link/mirror.h"

#include "link/inturns.h"

Node* Mirror::EntryOf(EntryId id) const {
    const auto found = m_entries.find(id);
    return found == m_entries.end() ? nullptr : m_list.node->ChildBySerial(found->second.serial);
}

Mirror::EntryId Mirror::IdOf(quint32 serial) const {
    const auto found = m_ids.find(serial);
    return found == m_ids.end() ? 0 : found->second;
}

Mirror::EntryId Mirror::GoneId(quint32 serial) const {
    const auto found = m_goneIds.find(serial);
    return found == m_goneIds.end() ? 0 : found->second;
}

bool Mirror::IsAs(const Node& entry, quint32 layout, QByteArrayView contents) const {
    const EntryLayout& its = *m_copy.Layouts().At(layout);
    if (!its.Describes(entry))
        return false;
    Wire::Writer writer;
    its.Put(writer, entry);
    return writer.View() == contents;
}

std::unique_ptr<Node> Mirror::make(const Messages::Row& row) const {
    return m_copy.Layouts().At(row.layout)->MakeEntry(*m_list.node, m_list.shape, row.contents);
}

std::unique_ptr<Node> Mirror::CopyOf(const Node& entry) const {
    const EntryLayout layout = EntryLayout::Of(entry);
    Wire::Writer writer;
    layout.Put(writer, entry);
    return layout.MakeEntry(*m_list.node, m_list.shape, writer.View());
}

void Mirror::insert(EntryId id, const Messages::Row& row, Node& entry) {
    m_entries[id] = {entry.GetSerial(), entry.GetOrdinal(), row.place, row.revision, row.layout};
    m_ids[entry.GetSerial()] = id;
    m_places[row.place] = id;
    if (const auto gone = m_gone.find(id); gone != m_gone.end()) {
        m_goneIds.erase(gone->second.serial);
        m_gone.erase(gone);
    }
}

void Mirror::forget(EntryId id, bool remember) {
    const auto found = m_entries.find(id);
    const Entry entry = found->second;
    m_entries.erase(found);
    m_ids.erase(entry.serial);
    m_places.erase(entry.place);
    if (!remember)
        return;
    if (m_gone.size() >= MostGone) {
        m_gone.clear();
        m_goneIds.clear();
    }
    m_gone[id] = entry;
    m_goneIds[entry.serial] = id;
}

void Mirror::Forget(EntryId id) {
    forget(id, true);
}

void Mirror::Destroy(EntryId id) {
    Node* const entry = EntryOf(id);
    forget(id, true);
    m_list.node->DeleteNode(entry);
}

/// Whether an entry of that serial stands where a row of that place belongs.
bool Mirror::isBetween(quint32 serial, quint32 place) const {
    const auto after = m_places.lower_bound(place);
    if (after != m_places.begin() && m_entries.at(std::prev(after)->second).serial > serial)
        return false;
    return after == m_places.end() || m_entries.at(after->second).serial > serial;
}

/// Puts an entry back where it was, if that is its place.
bool Mirror::restore(EntryId id, Node& entry, quint32 place) {
    const auto gone = m_gone.find(id);
    if (gone == m_gone.end() || m_list.node->ChildBySerial(gone->second.serial))
        return false;
    if (!isBetween(gone->second.serial, place))
        return false;
    const Node::Returning back[] = {{&entry, gone->second.serial, gone->second.ordinal}};
    m_list.node->Restore(back);
    return true;
}

/// Nearly all new entries come at the end. One that comes between others without having been there before has
/// all entries behind it made anew, but for those that have been removed here; few of them are not as their
/// rows.
Node* Mirror::Attach(EntryId id, const Messages::Row& row, std::unique_ptr<Node> node) {
    Node* const entry = node ? node.release() : make(row).release();
    const auto after = m_places.upper_bound(row.place);
    if (restore(id, *entry, row.place) || after == m_places.end()) {
        m_list.node->AddItemUnique(entry); // does nothing to one that is back
        insert(id, row, *entry);
        return entry;
    }
    std::vector<std::pair<EntryId, std::unique_ptr<Node>>> behind;
    std::vector<Node*> nodes;
    for (const auto& [place, other] : Sorted(after, m_places.end())) {
        Node* const old = EntryOf(other);
        if (!old)
            continue;
        nodes.push_back(old);
        const ListCopy::Row* const its = m_copy.Find(other);
        const bool isAsRow = !its || IsAs(*old, its->Content().layout, its->Content().contents);
        behind.emplace_back(other, isAsRow ? nullptr : CopyOf(*old));
        forget(other, false);
    }
    m_list.node->DeleteNodes(nodes);
    m_list.node->AddItemUnique(entry);
    insert(id, row, *entry);
    for (auto& [other, own] : behind) {
        if (const ListCopy::Row* const its = m_copy.Find(other))
            Attach(other, its->Content(), std::move(own));
    }
    return entry;
}

void Mirror::Set(EntryId id, const Messages::Row& row) {
    Entry& known = m_entries.at(id);
    Node* const entry = EntryOf(id);
    if (known.place != row.place || !entry) {
        forget(id, false);
        m_list.node->DeleteNode(entry);
        Attach(id, row);
        return;
    }
    const EntryLayout& layout = *m_copy.Layouts().At(row.layout);
    const bool isDescribed = layout.Describes(*entry);
    known.revision = row.revision;
    known.layout = row.layout;
    if (isDescribed || layout.HasFieldsOf(EntryLayout::Of(*entry))) {
        if (!isDescribed)
            layout.Fit(*entry);
        layout.Set(row.contents, *entry, nullptr);
        return;
    }
    const Entry its = known;
    forget(id, false);
    m_list.node->DeleteNode(entry);
    const Node::Returning back[] = {{make(row).release(), its.serial, its.ordinal}};
    m_list.node->Restore(back);
    insert(id, row, *back[0].child);
}

bool Mirror::Bind(EntryId id, const Messages::Row& row, const Node& entry) {
    if (!isBetween(entry.GetSerial(), row.place))
        return false;
    insert(id, row, const_cast<Node&>(entry));
    return true;
}

void Mirror::SetRevision(EntryId id, Messages::Revision revision, quint32 layout) {
    Entry& entry = m_entries.at(id);
    entry.revision = revision;
    entry.layout = layout;
}

/// Whether the entries that are here stand in the order of the rows, and new ones come behind them all.
bool Mirror::keepsOrder(const Sorted& rows) const {
    quint32 last = 0;
    bool sawNew = false;
    size_t seen = 0;
    for (const auto& [place, id] : rows) {
        StepOf(seen++, rows.size());
        const auto known = m_entries.find(id);
        sawNew = sawNew || known == m_entries.end();
        if (known == m_entries.end())
            continue;
        if (sawNew || known->second.serial <= last)
            return false;
        last = known->second.serial;
    }
    return true;
}

void Mirror::ShowAll(const std::function<bool(EntryId)>& keep) {
    const Sorted rows = m_copy.InOrder();
    if (!std::exchange(m_isShown, true))
        m_list.node->DeleteChildren();
    const bool staysInOrder = keepsOrder(rows);
    std::vector<Node*> ended;
    std::vector<EntryId> endedIds;
    std::unordered_map<EntryId, std::unique_ptr<Node>> kept;
    size_t seen = 0;
    for (const auto& [id, entry] : m_entries) {
        StepOf(seen++, m_entries.size());
        Node* const node = m_list.node->ChildBySerial(entry.serial);
        const bool isKept = m_copy.Find(id) && keep(id);
        if (m_copy.Find(id) && (staysInOrder || (isKept && !node)))
            continue;
        if (isKept)
            kept[id] = CopyOf(*node);
        ended.push_back(node);
        endedIds.push_back(id);
    }
    size_t forgotten = 0;
    for (const EntryId id : endedIds) {
        StepOf(forgotten++, endedIds.size());
        forget(id, !m_copy.Find(id));
    }
    m_list.node->DeleteNodes(ended);
    // Places are of this state of the list.
    m_places.clear();
    size_t shown = 0;
    for (const auto& [place, id] : rows) {
        StepOf(shown++, rows.size());
        const Messages::Row row = m_copy.Find(id)->Content();
        const auto known = m_entries.find(id);
        if (known == m_entries.end()) {
            const auto own = kept.find(id);
            if (own != kept.end())
                Attach(id, row, std::move(own->second));
            else if (!keep(id))
                Attach(id, row);
            continue;
        }
        known->second.place = place;
        m_places[place] = id;
        if (keep(id))
            continue;
        // Another server may have given the same revision to something else.
        const Node* const entry = EntryOf(id);
        if (entry && IsAs(*entry, row.layout, row.contents))
            SetRevision(id, row.revision, row.layout);
        else
            Set(id, row);
    }
}
