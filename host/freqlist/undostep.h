#pragma once

#include "host/freqlist/keptentries.h"

#include <QString>

class FrequencyNodeMediatorCtrl;

/// What one action has done to one list, and how it is taken back and done again: entries that are not in the
/// list at present, entries that would not be, and contents that values would have. Undo and redo both swap
/// these against what is there.
class ListStep {
public:
    enum class Direction { Undo, Redo };

    /// Begins to note; `listId` is that of the store.
    ListStep(int listId, Node& list);

    // While the action runs.
    void NoteAttached(const Node& entry);
    /// Who is to keep the entry; null when nobody.
    NodeKeeper* NoteDetaching(const Node& entry);
    /// `path` is the value's below its entry, as a name.
    void NoteChanging(const Node& entry, Names::Id path, const ValueBase& value);
    void Finish();

    int GetListId() const { return m_listId; }
    const Node* GetNode() const { return m_list.get(); }
    /// Whether it is about that node; cheap. A list that has gone is never swapped, whatever is taken for it.
    bool IsOf(const Node& list) const { return &list == m_address; }
    bool IsEmpty() const { return m_absent.IsEmpty() && m_present.IsEmpty() && m_changed.IsEmpty(); }
    /// How many entries came, went or changed; of an action that replaced entries, those that came.
    size_t EntryCount() const;

    /// Whether the list, and all entries that the step is about, are still there.
    bool CanSwap() const;
    /// Throws RGException, with the list as it was, when what is kept cannot be read.
    void Swap(Direction direction);
    /// Selects in the list's views what the last swap has brought back or changed, at the scroll place where
    /// the operator was.
    void Show(Direction direction) const;
    /// Selects those of the list's entries, whose serials ascend, that are there.
    void Select(const std::vector<quint32>& serials, int scrollPlace) const;
    FrequencyNodeMediatorCtrl* Controller() const;

    /// Some parked entries become compact data, which takes less memory and more time; false when none are
    /// left.
    bool PackSome() { return m_absent.PackSome(); }
    /// Bytes of parked entries.
    size_t Parked() const { return m_absent.Parked(); }
    void Spill();
    size_t InMemory() const;

private:
    /// Stands in `m_contents` before the content.
    struct Change {
        quint32 serial;
        Names::Id path;
        ValueType type;
    };

    ValueBase* find(const Change& change) const;
    void dropRepeated();
    void swapEntries();
    void swapContents();

    int m_listId;
    WeakRef<Node> m_list;
    const Node* m_address; ///< only to be compared
    KeptEntries m_absent;
    SerialRanges m_present;
    UndoBytes m_contents;
    SerialRanges m_changed;                   ///< entries of `m_contents`
    bool m_mayRepeat = false;                 ///< a value may have changed twice within the action
    Change m_lastChange{};                    ///< within the action
    const ValueBase* m_lastChanged = nullptr; ///< only to be compared
    int m_scrollBefore;
    int m_scrollAfter = 0;
};
