#pragma once

#include "host/valuetree/valuebase.h"

/// A pointer to a value of type T that turns null when the value is deleted. It owns nothing.
template <typename T>
using ValuePtr = WeakRef<T>;

/// A pointer to a value that also registers its owner as an observer of the value while it holds it, and lets
/// go of it when the value is deleted. The owner outlives the pointer (it is usually a member of the owner).
///
/// \code
/// class LevelMeter : public IObserver {
/// public:
///     explicit LevelMeter(Value<int>* level) { m_level.Reset(level); }
///     void Update(Observable* subject, TChangeCode code) override { m_level.ForgetIfRemoved(subject, code);
///     } int Level() const { return m_level ? m_level->GetValue() : 0; }
///
/// private:
///     ValueObservingPtr<Value<int>> m_level{this};
/// };
/// \endcode
template <typename T>
class ValueObservingPtr {
public:
    explicit ValueObservingPtr(IObserver* owner) : m_owner(owner) {}
    ValueObservingPtr(const ValueObservingPtr&) = delete;
    ValueObservingPtr& operator=(const ValueObservingPtr&) = delete;
    ~ValueObservingPtr() { Reset(); }

    /// Stops observing the value held before and observes `value`; null just lets go.
    void Reset(T* value = nullptr) {
        if (value == get())
            return;
        if (T* old = get())
            old->DeleteObserver(m_owner);
        m_value = value;
        if (value)
            value->AddObserver(m_owner);
    }
    /// Lets go of the value when `subject` is that value and `code` announces its removal; true when it did.
    bool ForgetIfRemoved(const Observable* subject, TChangeCode code) {
        if (code != TChangeCode::Removing || !get() || subject != static_cast<const Observable*>(get()) ||
            get()->GetState() != TValueState::Removing)
            return false;
        Reset();
        return true;
    }
    T* get() const { return m_value.get(); }
    T* operator->() const { return get(); }
    explicit operator bool() const { return get() != nullptr; }

private:
    IObserver* m_owner;
    WeakRef<T> m_value;
};
