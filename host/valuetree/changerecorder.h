#pragma once

class IObserver;
class Node;
class ValueBase;

/// What notes the changes of the tree while it is active; mostly none is. Nodes and values call it, whoever
/// caused the change. GUI thread only.
class ChangeRecorder {
public:
    virtual ~ChangeRecorder() = default;

    /// The child has been attached to its parent; it mostly has no values yet.
    virtual void Attached(Node& child) = 0;
    /// The child is about to be removed; nobody has been told yet, and it is whole.
    virtual void Detaching(Node& child) = 0;
    /// The content of the value is about to change; it still has the old one. `originator` is not told.
    virtual void Changing(ValueBase& value, IObserver* originator) = 0;

    static ChangeRecorder* Active() { return s_active; }
    /// The recorder is not owned; null for none.
    static void SetActive(ChangeRecorder* recorder) { s_active = recorder; }
    static void NoteChange(ValueBase& value, IObserver* originator) {
        if (s_active) [[unlikely]]
            s_active->Changing(value, originator);
    }

private:
    inline static ChangeRecorder* s_active = nullptr;
};
