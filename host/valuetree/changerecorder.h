#pragma once

class IObserver;
class Node;
class ValueBase;

/// Who keeps children that are removed.
class NodeKeeper {
public:
    /// The child is being removed and everybody has been told; it is still attached. The keeper owns it now
    /// and takes it off its parent: by `Node::Park`, or by its deletion.
    virtual void Keep(Node* child) = 0;

protected:
    ~NodeKeeper() = default;
};

/// What notes the changes of the tree while it is active; mostly none is. Nodes and values call it, whoever
/// caused the change. GUI thread only.
class ChangeRecorder {
public:
    virtual ~ChangeRecorder() = default;

    /// The child has been attached to its parent; it mostly has no values yet.
    virtual void Attached(Node& child) = 0;
    /// The child is about to be removed; nobody has been told yet, and it is whole. Null: nobody keeps it.
    virtual NodeKeeper* Detaching(Node& child) = 0;
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
