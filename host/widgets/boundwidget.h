#pragma once

#include "host/valuetree/operatoraction.h"
#include "host/valuetree/valueptr.h"

#include <QCoreApplication>

/// The common part of widgets that show a value. The widget follows the changes of its value, and lets go of
/// it when it is removed. It does not own it. V is the class of the value.
///
/// \code
/// class LevelLabel : public QLabel, private BoundWidget<Value<int>> {
/// public:
///     void SetLevel(Value<int>* level) { bind(level); }
///
/// private:
///     void showValue() override { setText(m_value ? m_value->GetStringValue() : QString()); }
/// };
/// \endcode
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

    /// Around what the operator writes into the value by the widget.
    [[nodiscard]] static OperatorAction edits() {
        return OperatorAction(QCoreApplication::translate("BoundWidget", "Edit"));
    }

    ValueObservingPtr<V> m_value{this};
};
