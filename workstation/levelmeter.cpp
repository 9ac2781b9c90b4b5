#include "workstation/levelmeter.h"

#include "host/gui/colorset.h"

#include <QAccessibleWidget>
#include <QPainter>

namespace {

constexpr int BarHeight = 22;
constexpr int ThresholdWidth = 2;

QColor color(IColorBase::ECOLOR name) {
    return ColorSet::Instance().GetColorDefinition(name).GetColor();
}

/// A screen reader hears the level as that of a progress bar, with the threshold in words.
class AccessibleMeter : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit AccessibleMeter(LevelMeter* meter)
        : QAccessibleWidget(meter, QAccessible::ProgressBar), m_meter(meter) {}

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ValueInterface ? static_cast<QAccessibleValueInterface*>(this)
                                                   : QAccessibleWidget::interface_cast(type);
    }
    QString text(QAccessible::Text what) const override {
        return what == QAccessible::Value ? m_meter->Reading() : QAccessibleWidget::text(what);
    }
    QVariant currentValue() const override { return m_meter->GetLevel(); }
    QVariant minimumValue() const override { return m_meter->GetLowest(); }
    QVariant maximumValue() const override { return m_meter->GetHighest(); }
    QVariant minimumStepSize() const override { return 0.1; }
    void setCurrentValue(const QVariant&) override {}

private:
    LevelMeter* m_meter;
};

QAccessibleInterface* makeAccessible(const QString&, QObject* object) {
    auto* meter = qobject_cast<LevelMeter*>(object);
    return meter ? new AccessibleMeter(meter) : nullptr;
}

} // namespace

LevelMeter::LevelMeter(ValueNumeric<double>* level, ValueNumeric<int>* threshold, QWidget* parent)
    : QWidget(parent) {
    QAccessible::installFactory(makeAccessible); // before a name is set; a second time changes nothing
    m_level.Reset(level);
    m_threshold.Reset(threshold);
    setToolTip(tr("Level, with the threshold as a line"));
    setAccessibleName(tr("Level"));
    setAccessibleDescription(toolTip());
}

QSize LevelMeter::sizeHint() const {
    return {160, BarHeight};
}

void LevelMeter::Update(Observable* subject, TChangeCode code) {
    m_level.ForgetIfRemoved(subject, code);
    m_threshold.ForgetIfRemoved(subject, code);
    update();
    if (!QAccessible::isActive())
        return;
    QAccessibleValueChangeEvent event(this, GetLevel());
    QAccessible::updateAccessibility(&event);
}

double LevelMeter::GetLevel() const {
    return m_level ? m_level->GetValue() : 0;
}

double LevelMeter::GetLowest() const {
    return m_level ? m_level->GetMin() : 0;
}

double LevelMeter::GetHighest() const {
    return m_level ? m_level->GetMax() : 0;
}

QString LevelMeter::Reading() const {
    const QString level = tr("%1 dBµV").arg(GetLevel(), 0, 'f', 1);
    return m_threshold ? tr("%1, threshold %2 dBµV").arg(level).arg(m_threshold->GetValue()) : level;
}

int LevelMeter::pixelOf(double dbMicrovolt) const {
    const double share =
        (dbMicrovolt - m_level->GetMin()) / std::max(m_level->GetMax() - m_level->GetMin(), 1.0);
    return static_cast<int>(share * width());
}

void LevelMeter::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), color(IColorBase::BAR_BACKGROUND));
    if (m_level) {
        const double level = m_level->GetValue();
        const bool open = m_threshold && level >= m_threshold->GetValue();
        QColor fill = color(open ? IColorBase::GOOD_TEXT : IColorBase::MUTED_TEXT);
        fill.setAlphaF(0.45F);
        painter.fillRect(0, 0, pixelOf(level), height(), fill);
        if (m_threshold)
            painter.fillRect(pixelOf(m_threshold->GetValue()), 0, ThresholdWidth, height(),
                             color(IColorBase::BAR_TUNED));
    }
    painter.setPen(color(IColorBase::BAR_GRID));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}
