#pragma once

#include "host/valuetree/valueptr.h"

/// What the value-bound widgets have in common: the widget shows its value, follows its changes, and lets go
/// of it when it is removed. It owns no value. V is the value's class.
template <typename V>
class BoundWidget : public IObserver {
public:
    void Update(Observable* subject, TChangeCode code) override {
        m_value.ForgetIfRemoved(subject, code);
        showValue();
    }

protected:
    void bind(V* value) {
        m_value.Reset(value);
        showValue();
    }
    /// Brings the widget up to date with the value; without a value it is empty and disabled.
    virtual void showValue() = 0;

    ValueObservingPtr<V> m_value{this};
};
