#include "host/freqlist/undostep.h"

#include "host/base/longwork.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencynodemediatorctrl.h"
#include "host/freqlist/undocontent.h"

#include <QSet>

ListStep::ListStep(int listId, Node& list) : m_listId(listId), m_list(&list), m_address(&list) {
    const FrequencyNodeMediatorCtrl* views = Controller();
    m_scrollBefore = views ? views->ScrollPlace() : 0;
}

FrequencyNodeMediatorCtrl* ListStep::Controller() const {
    return dynamic_cast<FrequencyNodeMediatorCtrl*>(
        FreqStore::Instance().GetFrequencies(static_cast<unsigned>(m_listId)));
}

void ListStep::NoteAttached(const Node& entry) {
    m_present.Append(entry.GetSerial());
}

/// Entries that came within the action leave nothing behind.
NodeKeeper* ListStep::NoteDetaching(const Node& entry) {
    if (m_present.Contains(entry.GetSerial()))
        return nullptr;
    if (entry.CanPark())
        return &m_absent;
    m_absent.Take(entry);
    return nullptr;
}

void ListStep::NoteChanging(const Node& entry, Names::Id path, const ValueBase& value) {
    if (&value == m_lastChanged || !UndoContent::IsKnown(value.GetType()))
        return;
    m_lastChanged = &value;
    const quint32 serial = entry.GetSerial();
    if (m_present.Contains(serial))
        return;
    const Change change{serial, path, value.GetType()};
    m_mayRepeat =
        m_mayRepeat || (!m_changed.IsEmpty() && (path != m_lastChange.path || serial <= m_lastChange.serial));
    m_lastChange = change;
    if (!m_mayRepeat)
        m_changed.Append(serial);
    m_contents.Put(change);
    UndoContent::Put(m_contents, value);
}

void ListStep::Finish() {
    const Node* const list = m_list.get();
    SerialRanges present;
    m_present.ForEach([&](quint32 serial) {
        if (list && list->ChildBySerial(serial))
            present.Append(serial);
    });
    m_present = std::move(present);
    if (m_mayRepeat)
        dropRepeated();
    m_lastChanged = nullptr;
    m_absent.Finish();
    m_contents.Trim();
    const FrequencyNodeMediatorCtrl* views = Controller();
    m_scrollAfter = views ? views->ScrollPlace() : 0;
}

/// Of several contents that a value had within the action the first counts.
void ListStep::dropRepeated() {
    UndoBytes contents;
    QSet<quint64> known;
    std::vector<quint32> serials;
    UndoBytes::Reader bytes(m_contents);
    while (!bytes.AtEnd()) {
        const auto change = bytes.Get<Change>();
        const auto before = known.size();
        known.insert(quint64(change.serial) << 32 | change.path);
        if (known.size() == before) {
            UndoContent::Skip(bytes, change.type);
            continue;
        }
        contents.Put(change);
        UndoContent::Copy(bytes, change.type, contents);
        serials.push_back(change.serial);
    }
    std::sort(serials.begin(), serials.end());
    m_changed = SerialRanges(serials);
    m_contents = std::move(contents);
}

size_t ListStep::EntryCount() const {
    if (!m_present.IsEmpty())
        return m_present.Count();
    return m_absent.IsEmpty() ? m_changed.Count() : m_absent.Count();
}

bool ListStep::CanSwap() const {
    const Node* const list = m_list.get();
    if (!list || !Controller())
        return false;
    bool allThere = true;
    m_present.ForEach([&](quint32 serial) { allThere = allThere && list->ChildBySerial(serial); });
    m_changed.ForEach([&](quint32 serial) {
        allThere = allThere && (list->ChildBySerial(serial) || m_absent.Serials().Contains(serial));
    });
    return allThere;
}

void ListStep::Swap(Direction direction) {
    m_contents.Load(); // what follows changes value by value
    if (direction == Direction::Undo)
        swapEntries();
    swapContents();
    if (direction == Direction::Redo)
        swapEntries();
    FrequencyNodeMediatorCtrl* const list = Controller();
    if (!list)
        return;
    list->Suspend(false); // a list that waits for a file has entries again
    list->ForceUpdateNow();
}

void ListStep::swapEntries() {
    Node* const list = m_list.get();
    if (!list || (m_present.IsEmpty() && m_absent.IsEmpty()))
        return;
    std::vector<Node*> leaving;
    m_present.ForEach([&](quint32 serial) { leaving.push_back(list->ChildBySerial(serial)); });
    const bool canPark =
        std::all_of(leaving.begin(), leaving.end(), [](const Node* entry) { return entry->CanPark(); });
    KeptEntries taken;
    if (canPark)
        taken.Reserve(leaving.size());
    for (size_t i = 0; i < leaving.size() && !canPark; ++i) {
        LongWork::Step(static_cast<qint64>(i), static_cast<qint64>(leaving.size()));
        taken.Take(*leaving[i]);
    }
    SerialRanges back = m_absent.Serials();
    const std::vector<Node::Returning> returning = m_absent.Make(*list);
    const WeakRef<Node> alive(list);
    list->DeleteNodes(leaving, canPark ? &taken : nullptr);
    taken.Finish();
    m_absent = std::move(taken);
    m_present = std::move(back);
    if (alive)
        list->Restore(returning);
}

ValueBase* ListStep::find(const Change& change) const {
    const Node* const list = m_list.get();
    const Node* const entry = list ? list->ChildBySerial(change.serial) : nullptr;
    ValueBase* value = entry ? entry->FindOwnValue(change.path) : nullptr;
    if (!value && entry)
        value = entry->GetValue(Names::Text(change.path));
    return value && value->GetType() == change.type ? value : nullptr;
}

void ListStep::swapContents() {
    if (m_changed.IsEmpty())
        return;
    UndoBytes present;
    UndoBytes::Reader bytes(m_contents);
    const auto count = static_cast<qint64>(m_changed.Count());
    qint64 done = 0;
    while (!bytes.AtEnd()) {
        LongWork::Step(std::min(done++, count), count);
        const auto change = bytes.Get<Change>();
        ValueBase* const value = find(change);
        if (!value) {
            UndoContent::Skip(bytes, change.type);
            continue;
        }
        present.Put(change);
        UndoContent::Put(present, *value);
        UndoContent::Take(bytes, *value);
    }
    m_contents = std::move(present);
    m_contents.Trim();
}

/// What the step has brought back, else what it has changed.
void ListStep::Show(Direction direction) const {
    const Node* const list = m_list.get();
    FrequencyNodeMediatorCtrl* const views = Controller();
    if (!list || !views)
        return;
    std::vector<const Node*> entries;
    (m_present.IsEmpty() ? m_changed : m_present).ForEach([&](quint32 serial) {
        if (const Node* entry = list->ChildBySerial(serial))
            entries.push_back(entry);
    });
    views->SelectEntries(entries, direction == Direction::Undo ? m_scrollBefore : m_scrollAfter);
}

void ListStep::Select(const std::vector<quint32>& serials, int scrollPlace) const {
    const Node* const list = m_list.get();
    FrequencyNodeMediatorCtrl* const views = Controller();
    if (!list || !views)
        return;
    std::vector<const Node*> entries;
    for (const quint32 serial : serials) {
        if (const Node* entry = list->ChildBySerial(serial))
            entries.push_back(entry);
    }
    views->SelectEntries(entries, scrollPlace);
}

void ListStep::Spill() {
    m_absent.Spill();
    m_contents.Spill();
}

size_t ListStep::InMemory() const {
    return m_absent.InMemory() + m_contents.InMemory() + m_present.InMemory() + m_changed.InMemory();
}
