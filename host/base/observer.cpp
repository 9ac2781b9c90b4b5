#include "host/base/observer.h"

#include <QScopeGuard>
#include <QVarLengthArray>

#include <algorithm>
#include <unordered_map>
#include <vector>

namespace {

quint64 pack(Life::Handle handle) {
    return (quint64(handle.generation) << 32) | (quint64(handle.index) << 2);
}

Life::Handle unpack(quint64 word) {
    return {static_cast<quint32>(word & 0xffffffffu) >> 2, static_cast<quint32>(word >> 32)};
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

Observable::List* Observable::list() const {
    return isInline() ? nullptr : reinterpret_cast<List*>(m_observers & ~(InlineBit | WatchedBit));
}

void Observable::setList(List* list) {
    m_observers = reinterpret_cast<quint64>(list) | (m_observers & WatchedBit);
}

Observable::~Observable() {
    if (m_observers == 0)
        return;
    if (m_observers & WatchedBit) {
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
}

Life::Handle Observable::WatchedHandle() const {
    auto& table = watchedSubjects();
    if (m_observers & WatchedBit)
        return Life::HandleOf(table.find(this)->second);
    const Life::Handle handle = Life::Acquire(const_cast<Observable*>(this));
    table.emplace(this, handle.index);
    m_observers |= WatchedBit;
    return handle;
}

bool Observable::contains(Life::Handle handle) const {
    if (isInline())
        return unpack(m_observers) == handle;
    const List* l = list();
    return l && std::find(l->handles.begin(), l->handles.end(), handle) != l->handles.end();
}

/// Turns the inline form into a list; room for growth is made by dropping observers that have ended.
Observable::List* Observable::expand() {
    List* l = list();
    if (!l) {
        l = new List;
        if (isInline())
            l->handles.push_back(unpack(m_observers));
        setList(l);
    } else if (l->handles.size() == l->handles.capacity()) {
        std::erase_if(l->handles, [](Life::Handle handle) { return !alive(handle); });
        ++l->changes;
    }
    return l;
}

/// A list that a notification still reads stays.
void Observable::dropEmptyList() {
    List* l = list();
    if (l->handles.empty() && !l->diedWhileNotifying) {
        delete l;
        m_observers &= WatchedBit;
    }
}

bool Observable::AddObserver(IObserver* observer) {
    if (!observer)
        return false;
    const Life::Handle handle = observer->handle();
    const bool empty = !HasObservers() || (isInline() && !alive(unpack(m_observers)));
    if (empty) {
        m_observers = pack(handle) | InlineBit | (m_observers & WatchedBit);
        return true;
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
    if (isInline()) {
        if (unpack(m_observers) == handle)
            m_observers &= WatchedBit;
        return;
    }
    List* l = list();
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
        m_observers &= WatchedBit;
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
    if (isInline()) {
        IObserver* observer = alive(unpack(m_observers));
        if (observer && observer != causer)
            observer->Update(this, code);
        return;
    }
    List* l = list();
    if (!l || l->handles.empty())
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
