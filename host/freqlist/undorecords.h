#pragma once

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
        return m_kept.empty() && list ? list->Size() - m_first : m_kept.size();
    }
    bool CanSwap() const override {
        const ValueList<T>* list = m_list.get();
        return list && isAsLeft(*list);
    }
    void Swap() override {
        ValueList<T>* const list = m_list.get();
        if (!list)
            return;
        std::list<T>& all = list->GetList();
        std::list<T> rest;
        rest.splice(rest.end(), all, std::next(all.begin(), static_cast<std::ptrdiff_t>(m_first)), all.end());
        all.splice(all.end(), std::exchange(m_kept, {}));
        m_kept = std::move(rest);
        m_left = list->SeenNow();
        list->HasChanged(TChangeCode::ValueChanged);
    }
    size_t InMemory() const override { return m_kept.size() * sizeof(T); }

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
    bool isAsLeft(const List& list) const {
        const auto now = list.SeenNow();
        return now.rewrites == m_left.rewrites && now.edits == m_left.edits && now.size == m_left.size;
    }

    int m_listId;
    WeakRef<List> m_list;
    quint64 m_first;
    typename List::Seen m_left; ///< as this part left the list
    std::list<T> m_kept;
};
