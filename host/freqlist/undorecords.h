#pragma once

#include "host/freqlist/recordbytes.h"
#include "host/freqlist/undohistory.h"
#include "host/freqlist/undopart.h"

#include <list>

/// The records behind a place of a list: those that are there, or those that were. A list that anybody has
/// written to since is left alone.
template <typename T>
class UndoRecords final : public UndoPart {
public:
    /// Appends records as a part of the running action; `listId` is that of the store.
    static void Append(int listId, ValueList<T>& list, std::list<T>&& records) {
        UndoRecords* const part = partOf(listId, list);
        list.Append(std::move(records));
        if (part)
            part->m_left = list.SeenNow();
    }
    /// Removes all records as a part of the running action.
    static void Clear(int listId, ValueList<T>& list) {
        UndoRecords* const part = list.Size() > 0 ? partOf(listId, list) : nullptr;
        if (!part)
            return list.Clear();
        part->m_first = 0;
        part->Swap();
    }

    UndoRecords(int listId, ValueList<T>& list)
        : m_listId(listId), m_list(&list), m_first(list.Size()), m_left(list.SeenNow()) {}

    int GetListId() const override { return m_listId; }
    size_t EntryCount() const override {
        const ValueList<T>* list = m_list.get();
        return m_keptCount == 0 && list ? list->Size() - m_first : m_keptCount;
    }
    bool CanSwap() const override {
        const ValueList<T>* list = m_list.get();
        return list && isAsLeft(*list);
    }
    void Swap() override {
        ValueList<T>* const list = m_list.get();
        if (!list)
            return;
        std::list<T> back = takeKept();
        std::list<T>& all = list->GetList();
        m_kept.splice(m_kept.end(), all, std::next(all.begin(), static_cast<std::ptrdiff_t>(m_first)),
                      all.end());
        m_keptCount = m_kept.size();
        all.splice(all.end(), back);
        m_left = list->SeenNow();
        if (InMemory() > UndoBytes::MostInMemory)
            Spill();
        list->HasChanged(TChangeCode::ValueChanged);
    }
    size_t InMemory() const override { return m_kept.size() * sizeof(T) + m_bytes.InMemory(); }
    void Spill() override {
        for (const T& record : std::exchange(m_kept, {}))
            RecordBytes::Put(m_bytes, record);
        m_bytes.Spill();
    }

private:
    using List = ValueList<T>;

    /// One part for all that an action appends to a list; null when no action runs, or when somebody else has
    /// written meanwhile, and nothing of it can be undone.
    static UndoRecords* partOf(int listId, List& list) {
        UndoHistory& history = UndoHistory::Instance();
        UndoRecords* found = nullptr;
        history.ForEachPart([&](UndoPart& part) {
            auto* records = dynamic_cast<UndoRecords*>(&part);
            found = records && records->m_list.get() == &list ? records : found;
        });
        if (found)
            return found->isAsLeft(list) ? found : nullptr;
        auto made = std::make_unique<UndoRecords>(listId, list);
        found = made.get();
        return history.Add(std::move(made)) ? found : nullptr;
    }
    /// Throws RGException, with nothing changed, when they cannot be read.
    std::list<T> takeKept() {
        std::list<T> records;
        UndoBytes::Reader bytes(m_bytes);
        while (!bytes.AtEnd())
            RecordBytes::Take(bytes, records.emplace_back());
        records.splice(records.end(), m_kept);
        m_bytes.Clear();
        return records;
    }
    bool isAsLeft(const List& list) const {
        const auto now = list.SeenNow();
        return now.rewrites == m_left.rewrites && now.edits == m_left.edits && now.size == m_left.size;
    }

    int m_listId;
    WeakRef<List> m_list;
    quint64 m_first;
    typename List::Seen m_left; ///< as this part left the list
    std::list<T> m_kept;
    UndoBytes m_bytes; ///< what is kept, instead of `m_kept`
    size_t m_keptCount = 0;
};
