#include "host/base/observer.h"

#include "host/base/pointermap.h"

#include <QScopeGuard>
#include <QVarLengthArray>

#include <algorithm>
#include <unordered_map>
#include <vector>

namespace {

constexpr quint64 LoneBit = 1;

quint64 pack(Life::Handle handle) {
    return (quint64(handle.generation) << 32) | (quint64(handle.index) << 2) | LoneBit;
}

Life::Handle unpack(quint64 word) {
    return {static_cast<quint32>(word & 0xffffffffu) >> 2, static_cast<quint32>(word >> 32)};
}

/// What stands in the table for a subject: one packed observer handle (LoneBit), or a pointer to its list.
PointerMap& observersOf() {
    static auto* const table = new PointerMap;
    return *table;
}

/// Subjects that somebody holds weakly, with their slots; few of all subjects ever stand here.
std::unordered_map<const Observable*, quint32>& watchedSubjects() {
    static auto* const table = new std::unordered_map<const Observable*, quint32>;
    return *table;
}

IObserver* alive(Life::Handle handle) {
    return static_cast<IObserver*>(Life::Find(handle));
}

} // namespace

struct Observable::List {
    std::vector<Life::Handle> handles;
    quint32 changes = 0; ///< counts removals and moves, so that a running notification notices them
    bool* diedWhileNotifying = nullptr; ///< set when the subject ends during its innermost notification
};

Life::Handle IObserver::handle() {
    if (m_slot == 0)
        m_slot = Life::Acquire(this).index;
    return Life::HandleOf(m_slot);
}

Life::Handle Observable::handleOf(IObserver& observer) {
    return observer.handle();
}

Observable::List* Observable::list() const {
    const quint64 word = m_observed & Listed ? observersOf().Find(this) : LoneBit;
    return word & LoneBit ? nullptr : reinterpret_cast<List*>(word);
}

/// 0 takes the subject out of the table.
void Observable::setWord(quint64 word) {
    if (word != 0)
        observersOf().Set(this, word);
    else if (m_observed & Listed)
        observersOf().Erase(this);
    m_observed = static_cast<quint8>((m_observed & Watched) | (word != 0 ? Listed : 0));
}

Observable::~Observable() {
    end();
}

void Observable::end() {
    if (m_observed == 0)
        return;
    if (m_observed & Watched) {
        auto& table = watchedSubjects();
        const auto found = table.find(this);
        Life::Release(found->second);
        table.erase(found);
    }
    if (List* l = list()) {
        if (l->diedWhileNotifying)
            *l->diedWhileNotifying = true;
        delete l;
    }
    setWord(0);
    m_observed = 0;
}

Life::Handle Observable::WatchedHandle() const {
    auto& table = watchedSubjects();
    if (m_observed & Watched)
        return Life::HandleOf(table.find(this)->second);
    const Life::Handle handle = Life::Acquire(const_cast<Observable*>(this));
    table.emplace(this, handle.index);
    m_observed |= Watched;
    return handle;
}

bool Observable::contains(Life::Handle handle) const {
    if (m_observed & Followed)
        return follower() == handle;
    if (const List* l = list())
        return std::find(l->handles.begin(), l->handles.end(), handle) != l->handles.end();
    return m_observed & Listed && unpack(observersOf().Find(this)) == handle;
}

/// Turns the short forms into a list; room for growth is made by dropping observers that have ended.
Observable::List* Observable::expand() {
    List* l = list();
    if (!l) {
        l = new List;
        if (m_observed & Followed)
            l->handles.push_back(follower());
        else if (m_observed & Listed)
            l->handles.push_back(unpack(observersOf().Find(this)));
        setWord(reinterpret_cast<quint64>(l));
    } else if (l->handles.size() == l->handles.capacity()) {
        std::erase_if(l->handles, [](Life::Handle handle) { return !alive(handle); });
        ++l->changes;
    }
    return l;
}

void Observable::listFollower() {
    if (m_observed & Followed)
        setWord(pack(follower()));
}

/// A list that a notification still reads stays.
void Observable::dropEmptyList() {
    List* l = list();
    if (l->handles.empty() && !l->diedWhileNotifying) {
        delete l;
        setWord(0);
    }
}

bool Observable::AddObserver(IObserver* observer) {
    if (!observer)
        return false;
    const Life::Handle handle = observer->handle();
    if (!list()) {
        const bool isEmpty =
            !HasObservers() || !alive(m_observed & Followed ? follower() : unpack(observersOf().Find(this)));
        if (isEmpty) {
            setWord(0);
            if (isFollower(handle))
                m_observed |= Followed;
            else
                setWord(pack(handle));
            return true;
        }
    }
    if (contains(handle))
        return false;
    expand()->handles.push_back(handle);
    return true;
}

void Observable::DeleteObserver(IObserver* observer) {
    if (!observer || observer->m_slot == 0 || !HasObservers())
        return;
    const Life::Handle handle = observer->handle();
    List* l = list();
    if (!l) {
        if (contains(handle))
            setWord(0);
        return;
    }
    const auto found = std::find(l->handles.begin(), l->handles.end(), handle);
    if (found != l->handles.end()) {
        l->handles.erase(found);
        ++l->changes;
        dropEmptyList();
    }
}

void Observable::DeleteObservers() {
    if (List* l = list()) {
        l->handles.clear();
        ++l->changes;
        dropEmptyList();
    } else {
        setWord(0);
    }
}

void Observable::MakeFirstObserver(IObserver* observer) {
    if (!observer)
        return;
    DeleteObserver(observer);
    List* l = expand();
    l->handles.insert(l->handles.begin(), observer->handle());
    ++l->changes;
}

void Observable::NotifyObservers(TChangeCode code, IObserver* causer) {
    if (m_observed & Followed) {
        IObserver* observer = alive(follower());
        if (observer && observer != causer)
            observer->Update(this, code);
    } else if (m_observed & Listed) {
        notifyListed(code, causer);
    }
}

void Observable::notifyListed(TChangeCode code, IObserver* causer) {
    List* l = list();
    if (!l) {
        IObserver* observer = alive(unpack(observersOf().Find(this)));
        if (observer && observer != causer)
            observer->Update(this, code);
        return;
    }
    if (l->handles.empty())
        return;

    const QVarLengthArray<Life::Handle, 16> snapshot(l->handles.begin(), l->handles.end());
    const quint32 changes = l->changes;
    bool died = false;
    bool* const outer = std::exchange(l->diedWhileNotifying, &died);
    const auto end = qScopeGuard([&] { // also when an observer throws
        if (!died)
            l->diedWhileNotifying = outer;
        else if (outer)
            *outer = true;
    });
    for (const Life::Handle handle : snapshot) {
        IObserver* observer = alive(handle);
        if (!observer || observer == causer || (l->changes != changes && !contains(handle)))
            continue;
        observer->Update(this, code);
        if (died)
            return;
    }
}
