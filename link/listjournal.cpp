#include "link/listjournal.h"

#include "host/report/privatefile.h"
#include "host/report/rgexception.h"
#include "link/bycontents.h"
#include "link/inturns.h"

#include <QFileInfo>

#include <unistd.h>

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

private:
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
    ByContents present, before; // ids: first come, first served
    std::map<Messages::EntryId, Kept::Changed> missing;
    for (const auto& [id, contents] : kept.written) {
        const bool isChanged = kept.changed.count(id) > 0;
        (isChanged ? before : present).Add(contents, id);
    }
    for (const auto& [id, changed] : kept.changed) {
        if (!changed.layout.isEmpty())
            present.Add(Wire::Hash(changed.contents), id);
        missing[id] = changed;
    }
    rows.KeepIdsFrom(kept.lastId);

    std::vector<std::pair<Node*, Messages::EntryId>> entries;
    std::vector<Node*> removed;
    Wire::Writer contents;
    for (Node* const entry : list.node->Children()) {
        StepOf(entries.size(), list.node->ChildCount());
        contents.Clear();
        layouts.At(layouts.NumberOf(*entry))->Put(contents, *entry);
        const quint64 hash = Wire::Hash(contents.View());
        Messages::EntryId id = present.Take(hash).value_or(0);
        if (const Messages::EntryId old = id == 0 ? before.Take(hash).value_or(0) : 0; old != 0) {
            const Kept::Changed& changed = kept.changed[id = old];
            if (changed.layout.isEmpty())
                removed.push_back(entry);
            else if (const auto layout = EntryLayout::Decode(changed.layout))
                layout->Set(changed.contents, *entry, nullptr);
        }
        missing.erase(id);
        if (removed.empty() || removed.back() != entry)
            entries.emplace_back(entry, id != 0 ? id : rows.NewId());
    }
    list.node->DeleteNodes(removed);
    for (const auto& [id, changed] : missing) {
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
    m_changeBytes = kept.changed.empty() ? 0 : kept.bytes;
}

void ListJournal::openBehind(qint64 bytes) {
    m_file.close();
    if (!m_file.open(QIODevice::ReadWrite) || !m_file.resize(bytes) || !m_file.seek(bytes))
        fail(m_file.errorString());
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
    write(out.Take());
}

void ListJournal::write(const QByteArray& records) {
    if (m_file.write(records) != records.size() || !m_file.flush() || fdatasync(m_file.handle()) != 0)
        fail(m_file.errorString());
    m_changeBytes += records.size();
}
