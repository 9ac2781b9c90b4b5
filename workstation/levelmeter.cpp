#include "workstation/levelmeter.h"

#include "host/gui/colorset.h"

#include <QPainter>

namespace {

constexpr int BarHeight = 22;
constexpr int ThresholdWidth = 2;

QColor color(IColorBase::ECOLOR name) {
    return ColorSet::Instance().GetColorDefinition(name).GetColor();
}

} // namespace

LevelMeter::LevelMeter(ValueNumeric<double>* level, ValueNumeric<int>* threshold, QWidget* parent)
    : QWidget(parent) {
    m_level.Reset(level);
    m_threshold.Reset(threshold);
    setToolTip(tr("Level, with the threshold as a line"));
}

QSize LevelMeter::sizeHint() const {
    return {160, BarHeight};
}

void LevelMeter::Update(Observable* subject, TChangeCode code) {
    m_level.ForgetIfRemoved(subject, code);
    m_threshold.ForgetIfRemoved(subject, code);
    update();
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
        painter.setPen(palette().color(QPalette::WindowText));
        painter.drawText(rect(), Qt::AlignCenter, tr("%1 dBµV").arg(level, 0, 'f', 1));
    }
    painter.setPen(color(IColorBase::BAR_GRID));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}
