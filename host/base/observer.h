#pragma once

#include "host/base/life.h"

#include <QtGlobal>

class IObserver;
class Observable;

/// Kinds of change passed to `IObserver::Update`. Numbers without a name are passed through unchanged.
enum class TChangeCode : int {
    LookAgain = 0,         ///< nothing is said beyond "look again"
    ChildrenChanged = 1,   ///< a node got or lost children
    Removing = 2,          ///< the value or node is being removed: let go of it
    ValueChanged = 3,      ///< the content of a value changed
    MediatorNodeEnds = 18, ///< tells a mediator that its own node goes away
    Announcement = 19,     ///< a handler announces something on a value that it owns
};

/// A subject that notifies its observers, in order. It owns none of them. It may be deleted at any time, even
/// by an observer that it is notifying.
///
/// A subject itself has one byte for all that. Its observers stand in a table beside; most subjects of very
/// many have none, or only the *follower* that a group of them shares: the values of an entry and their node
/// are mostly observed by one mediator, and then a bit says so.
class Observable {
public:
    Observable() = default;
    /// A copy starts without observers, and assigning leaves those of the target as they are.
    Observable(const Observable&) {}
    Observable& operator=(const Observable&) { return *this; }
    virtual ~Observable();

    /// Appends the observer; false when it is null or registered already.
    virtual bool AddObserver(IObserver* observer);
    /// Removes the observer; one that is not registered is no error.
    virtual void DeleteObserver(IObserver* observer);
    virtual void DeleteObservers();
    /// Moves the observer to the head of the list, inserting it when it is not registered yet.
    void MakeFirstObserver(IObserver* observer);

    bool HasObservers() const { return (m_observed & (Listed | Followed)) != 0; }

    /// A handle that finds the subject as long as it lives; see `WeakRef`.
    Life::Handle WatchedHandle() const;

protected:
    /// Calls `Update(this, code)` on each registered observer in list order, except on the one that caused
    /// the change. Observers may add and remove observers and delete observers or this subject meanwhile:
    /// whoever is removed before its turn is not called, whoever is added is called from the next
    /// notification on.
    virtual void NotifyObservers(TChangeCode code, IObserver* causer);

    /// The follower of the subject's group; none for a subject without one.
    virtual Life::Handle follower() const { return {}; }
    /// Whether that observer is the follower, or has just become it.
    virtual bool isFollower(Life::Handle) { return false; }
    /// Gives the follower a place in the subject's own list: the subject leaves its group.
    void listFollower();
    /// The follower is the only observer of this subject, which had none.
    void follow() { m_observed |= Followed; }
    static Life::Handle handleOf(IObserver& observer);
    /// A follower that has ended is followed by another one.
    void forgetFollower() { m_observed &= static_cast<quint8>(~Followed); }
    /// For all others the subject ends: nobody observes it, and weak references find nothing.
    void end();

private:
    struct List;
    enum : quint8 {
        Listed = 1,   ///< the observers stand in the table
        Followed = 2, ///< the follower is the only observer
        Watched = 4,  ///< stands in the table of watched subjects
    };

    bool contains(Life::Handle handle) const;
    List* list() const;
    List* expand();
    void setWord(quint64 word);
    void dropEmptyList();
    void notifyListed(TChangeCode code, IObserver* causer);

    mutable quint8 m_observed = 0;
};

/// Observer interface. An observer that ends is no longer called by any subject: subjects hold handles, not
/// pointers, so nothing needs to be deregistered.
///
/// \code
/// class ChangeCounter : public IObserver {
/// public:
///     void Update(Observable*, TChangeCode code) override {
///         changes += code == TChangeCode::ValueChanged ? 1 : 0;
///     }
///     int changes = 0;
/// };
///
/// Value<int> level;
/// ChangeCounter counter;
/// level.AddObserver(&counter);
/// level.SetValue(3);
/// level.SetValue(3); // no change: the counter stays 1
/// \endcode
class IObserver {
public:
    IObserver() = default;
    IObserver(const IObserver&) {}
    IObserver& operator=(const IObserver&) { return *this; }
    virtual ~IObserver() {
        if (m_slot != 0)
            Life::Release(m_slot);
    }

    /// `subject` changed as `code` says. `subject` may be on its way out (codes 2 and 18).
    virtual void Update(Observable* subject, TChangeCode code) = 0;

private:
    friend class Observable;
    Life::Handle handle();

    quint32 m_slot = 0;
};

/// A pointer to a subject that turns null when the subject ends. It owns nothing and observes nothing.
/// T is an `Observable`.
template <typename T>
class WeakRef {
public:
    WeakRef() = default;
    WeakRef(T* object) : m_object(object), m_handle(object ? object->WatchedHandle() : Life::Handle{}) {}

    T* get() const { return m_handle && Life::Find(m_handle) ? m_object : nullptr; }
    T* operator->() const { return get(); }
    explicit operator bool() const { return get() != nullptr; }

private:
    T* m_object = nullptr;
    Life::Handle m_handle;
};
