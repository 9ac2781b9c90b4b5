#include "link/listjournal.h"

#include "host/report/privatefile.h"
#include "host/report/rgexception.h"
#include "link/bycontents.h"
#include "link/inturns.h"

#include <QFileInfo>

#include <unistd.h>
#include <unordered_set>

namespace {

enum class Record : quint8 { Identities = 1, Layout = 2, Delta = 3 };
constexpr qint64 LargestFile = qint64(1) << 31;

/// A record knows its length and whether all of it was written.
void putRecord(Wire::Writer& out, Record kind, QByteArrayView bytes) {
    Wire::Writer record;
    record.Byte(static_cast<quint8>(kind));
    record.Rest(bytes);
    out.Fixed(Wire::Hash(record.View()));
    out.Block(record.View());
}

void putLayout(Wire::Writer& out, const LayoutTable& layouts, quint32 number) {
    Wire::Writer layout;
    layout.Count(number);
    layout.Rest(layouts.Bytes(number));
    putRecord(out, Record::Layout, layout.View());
}

} // namespace

/// What a file says: identities with the contents that their entries had when the list was written, and the
/// last content of each that has changed since.
struct ListJournal::Kept {
    struct Changed {
        QByteArray layout; ///< empty: the entry was removed
        QByteArray contents;
    };
    std::vector<std::pair<Messages::EntryId, quint64>> written;
    std::map<Messages::EntryId, Changed> changed;
    Messages::EntryId lastId = 0;
    qint64 bytes = 0; ///< of whole records

    /// False when the record is damaged.
    bool Take(QByteArrayView record);

    /// Which entry one of the file is.
    struct Known {
        Messages::EntryId id = 0; ///< 0: a new one
        bool isOld = false;       ///< as it was before its change
    };
    /// Of entries by their contents. The file is mostly as it was written, or as it is with all changes.
    std::vector<Known> Recognize(const std::vector<quint64>& contents) const;

private:
    ByContents idsByContents(bool areOld) const;
    bool takeIdentities(Wire::Reader in);
    bool takeDelta(QByteArrayView message);

    LayoutTable m_layouts;
};

bool ListJournal::Kept::Take(QByteArrayView record) {
    Wire::Reader in(record);
    switch (static_cast<Record>(in.Byte())) {
    case Record::Identities:
        return takeIdentities(in);
    case Record::Layout: {
        const auto number = static_cast<quint32>(in.CountUpTo(0xffffffffu));
        return in.IsGood() && m_layouts.Put(number, in.Rest());
    }
    case Record::Delta:
        return takeDelta(in.Rest());
    }
    return false;
}

bool ListJournal::Kept::takeIdentities(Wire::Reader in) {
    lastId = static_cast<Messages::EntryId>(in.CountUpTo(0xffffffffu));
    while (in.IsGood() && !in.AtEnd()) {
        const auto id = static_cast<Messages::EntryId>(in.CountUpTo(0xffffffffu));
        written.emplace_back(id, in.Fixed());
    }
    return in.IsGood();
}

bool ListJournal::Kept::takeDelta(QByteArrayView message) {
    const auto delta = Messages::Delta::Decode(message);
    for (const Messages::Delta::Step& step : delta ? delta->steps : std::vector<Messages::Delta::Step>()) {
        if (step.removed != 0) {
            changed[step.removed] = {};
            continue;
        }
        const auto row = Messages::Row::Read(step.row);
        const EntryLayout* const layout = row ? m_layouts.At(row->layout) : nullptr;
        if (!layout || !layout->AreContents(row->contents))
            return false;
        changed[row->id] = {m_layouts.Bytes(row->layout), row->contents.toByteArray()};
        lastId = std::max(lastId, row->id);
    }
    return delta.has_value();
}

/// Ids in list order, equal contents first come, first served.
ByContents ListJournal::Kept::idsByContents(bool areOld) const {
    ByContents ids;
    auto added = changed;
    for (const auto& [id, contents] : written) {
        const auto change = added.find(id);
        if (change == added.end() || areOld)
            ids.Add(contents, id);
        else if (!change->second.layout.isEmpty())
            ids.Add(Wire::Hash(change->second.contents), id);
        if (change != added.end())
            added.erase(change);
    }
    for (const auto& [id, change] : added) {
        if (!areOld && !change.layout.isEmpty())
            ids.Add(Wire::Hash(change.contents), id);
    }
    return ids;
}

std::vector<ListJournal::Kept::Known>
ListJournal::Kept::Recognize(const std::vector<quint64>& contents) const {
    const auto knownBy = [&](bool areOld) {
        ByContents ids = idsByContents(areOld);
        std::vector<Known> known;
        known.reserve(contents.size());
        for (const quint64 one : contents)
            known.push_back({ids.Take(one).value_or(0), areOld});
        return known;
    };
    std::vector<Known> known = knownBy(false);
    if (changed.empty() || contents.empty())
        return known;
    std::vector<Known> asWritten = knownBy(true);
    const auto isNew = [](const Known& one) { return one.id == 0; };
    const auto newOnes = [&](const auto& all) { return std::count_if(all.begin(), all.end(), isNew); };
    if (newOnes(asWritten) < newOnes(known))
        known.swap(asWritten);
    // Another program may have written it in between.
    std::unordered_set<Messages::EntryId> taken;
    for (const Known& one : known)
        taken.insert(one.id);
    ByContents others = idsByContents(!known.front().isOld);
    for (size_t i = 0; i < known.size(); ++i) {
        while (isNew(known[i])) {
            const auto id = others.Take(contents[i]);
            if (!id)
                break;
            if (taken.insert(*id).second)
                known[i] = {*id, asWritten[i].isOld};
        }
    }
    return known;
}

ListJournal::ListJournal(const QString& path)
    : m_path(path), m_lock(path + QStringLiteral(".lock")), m_file(path) {
    m_lock.setStaleLockTime(0);
    if (!m_lock.tryLock(0))
        fail(m_lock.error() == QLockFile::LockFailedError ? tr("is used by another program")
                                                          : tr("cannot be locked"));
}

void ListJournal::fail(const QString& reason) const {
    throw RGException(m_path + QStringLiteral(": ") + reason);
}

ListJournal::Kept ListJournal::read() {
    Kept kept;
    QFile file(m_path);
    if (!file.exists())
        return kept;
    if (!file.open(QIODevice::ReadOnly) || file.size() > LargestFile)
        fail(file.isOpen() ? tr("is too long") : file.errorString());
    const QByteArray bytes = file.readAll();
    Wire::Reader in(bytes);
    while (!in.AtEnd()) {
        const quint64 hash = in.Fixed();
        const QByteArrayView record = in.Block();
        if (!in.IsGood() || Wire::Hash(record) != hash || !kept.Take(record))
            break;
        kept.bytes = bytes.size() - in.Left();
    }
    return kept;
}

void ListJournal::Restore(const SharedList& list, Messages::Revision revision, RowTable& rows,
                          LayoutTable& layouts) {
    Kept kept = read();
    const bool hasChanges = !kept.changed.empty();
    rows.KeepIdsFrom(kept.lastId);
    std::vector<quint64> read;
    read.reserve(list.node->ChildCount());
    Wire::Writer contents;
    for (Node* const entry : list.node->Children()) {
        StepOf(read.size(), list.node->ChildCount());
        contents.Clear();
        layouts.At(layouts.NumberOf(*entry))->Put(contents, *entry);
        read.push_back(Wire::Hash(contents.View()));
    }
    const std::vector<Kept::Known> known = kept.Recognize(read);

    std::vector<std::pair<Node*, Messages::EntryId>> entries;
    std::vector<Node*> removed;
    size_t number = 0;
    for (Node* const entry : list.node->Children()) {
        const auto [id, isOld] = known[number++];
        const auto change = kept.changed.find(id);
        if (change != kept.changed.end()) {
            const auto layout = isOld ? EntryLayout::Decode(change->second.layout) : std::nullopt;
            if (layout)
                layout->Set(change->second.contents, *entry, nullptr);
            else if (isOld)
                removed.push_back(entry);
            kept.changed.erase(change);
        }
        if (removed.empty() || removed.back() != entry)
            entries.emplace_back(entry, id != 0 ? id : rows.NewId());
    }
    list.node->DeleteNodes(removed);
    for (const auto& [id, changed] : kept.changed) {
        const auto layout = EntryLayout::Decode(changed.layout);
        if (!layout)
            continue;
        Node* const entry = layout->MakeEntry(*list.node, list.shape, changed.contents).release();
        list.node->AddItemUnique(entry);
        entries.emplace_back(entry, id);
    }
    for (const auto& [entry, id] : entries) {
        StepOf(rows.Count(), entries.size());
        contents.Clear();
        const quint32 layout = layouts.NumberOf(*entry);
        layouts.At(layout)->Put(contents, *entry);
        rows.Put(entry->GetSerial(), entry->GetOrdinal(),
                 {id, entry->GetSerial(), revision, layout, contents.View()});
    }
    if (!QFile::exists(m_path))
        return Begin(rows, layouts);
    openBehind(kept.bytes);
    m_changeBytes = hasChanges ? kept.bytes : 0;
}

void ListJournal::openBehind(qint64 bytes) {
    m_file.close();
    if (!m_file.open(QIODevice::ReadWrite | QIODevice::Unbuffered) || !m_file.resize(bytes) ||
        !m_file.seek(bytes))
        fail(m_file.errorString());
    m_size = bytes;
    m_unwritten.clear();
    m_layoutsKept = 0; // numbers of another process are others
}

void ListJournal::Begin(const RowTable& rows, const LayoutTable& layouts) {
    Wire::Writer identities;
    identities.Count(rows.LastId());
    size_t kept = 0;
    const LongWork::Unbroken whole;
    for (const quint32 serial : rows.Serials()) {
        StepOf(kept++, rows.Count());
        const Messages::Row row = rows.Find(serial)->Content();
        identities.Count(row.id);
        identities.Fixed(Wire::Hash(row.contents));
    }
    Wire::Writer out;
    putRecord(out, Record::Identities, identities.View());
    for (quint32 number = 0; number < layouts.Count(); ++number)
        putLayout(out, layouts, number);
    REPORTGENERATOR::PrivateFile file(QFileInfo(m_path).absolutePath());
    file.Write(out.View());
    file.Commit(QFileInfo(m_path).absoluteFilePath());
    openBehind(out.View().size());
    m_layoutsKept = layouts.Count();
    m_changeBytes = 0;
}

void ListJournal::Append(QByteArrayView delta, const LayoutTable& layouts) {
    Wire::Writer out;
    for (; m_layoutsKept < layouts.Count(); ++m_layoutsKept)
        putLayout(out, layouts, m_layoutsKept);
    putRecord(out, Record::Delta, delta);
    m_changeBytes += out.Size();
    m_unwritten += out.View();
    write();
}

/// A record that was written in part would hide all that come behind it.
void ListJournal::write() {
    if (m_file.write(m_unwritten) != m_unwritten.size() || fdatasync(m_file.handle()) != 0) {
        const QString reason = m_file.errorString();
        m_file.resize(m_size);
        m_file.seek(m_size);
        fail(reason);
    }
    m_size += m_unwritten.size();
    m_unwritten.clear();
}
