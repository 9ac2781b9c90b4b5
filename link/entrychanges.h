#pragma once

#include "host/valuetree/changerecorder.h"
#include "host/valuetree/node.h"

#include <functional>

/// Notes which entries of one list come, go and change, whoever changes them, from the tree itself: nothing
/// is registered at an entry, and a change costs the same in a long list as in a short one. Changes of limits
/// and choices alone, and of sub-nodes, are not noted.
class EntryChanges : private ChangeRecorder {
public:
    /// Follows the children of `list`; `noted` is called at the first change since `Take`.
    EntryChanges(Node& list, std::function<void()> noted);
    ~EntryChanges() override;

    /// Serials of what has changed since the last call, in order, each once; of those that have gone as well.
    std::vector<quint32> Take();
    size_t Count() const { return m_serials.size(); }
    bool Contains(quint32 serial) const;
    bool IsEmpty() const { return m_serials.empty(); }
    /// While one lives, nothing is noted.
    class Deaf {
    public:
        explicit Deaf(EntryChanges& changes) : m_changes(changes) { ++changes.m_deaf; }
        ~Deaf() { --m_changes.m_deaf; }
        Deaf(const Deaf&) = delete;
        Deaf& operator=(const Deaf&) = delete;

    private:
        EntryChanges& m_changes;
    };

private:
    void Attached(Node& child) override { note(child); }
    NodeKeeper* Detaching(Node& child) override {
        note(child);
        return nullptr;
    }
    void Changing(ValueBase& value, IObserver* originator) override;
    void note(const Node& child);

    const Node* m_list;
    std::function<void()> m_noted;
    std::vector<quint32> m_serials;
    int m_deaf = 0; ///< how many of these live
};
