#include "workstation/frequencybaraccess.h"

#include "workstation/frequencybar.h"

#include <QAccessibleWidget>

namespace {

/// The bar as a control whose value is the tuned frequency (Hz), between the ends of the range shown.
class BarInterface final : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit BarInterface(FrequencyBar& bar) : QAccessibleWidget(&bar, QAccessible::Slider), m_bar(bar) {}

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ValueInterface ? static_cast<QAccessibleValueInterface*>(this)
                                                   : QAccessibleWidget::interface_cast(type);
    }
    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Description || kind == QAccessible::Value ? m_bar.Summary()
                                                                              : QAccessibleWidget::text(kind);
    }
    QVariant currentValue() const override { return m_bar.GetTuned(); }
    /// Tunes, as a click does.
    void setCurrentValue(const QVariant& hertz) override { emit m_bar.Clicked(hertz.toDouble(), 0); }
    QVariant maximumValue() const override { return m_bar.To(); }
    QVariant minimumValue() const override { return m_bar.From(); }
    QVariant minimumStepSize() const override { return m_bar.GetStep(); }

private:
    FrequencyBar& m_bar;
};

QAccessibleInterface* make(const QString&, QObject* object) {
    auto* bar = qobject_cast<FrequencyBar*>(object);
    return bar ? new BarInterface(*bar) : nullptr;
}

} // namespace

void FrequencyBarAccess::Install() {
    static const bool isInstalled = [] {
        QAccessible::installFactory(make);
        return true;
    }();
    Q_UNUSED(isInstalled)
}
