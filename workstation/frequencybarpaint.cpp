#include "host/base/frequencytext.h"
#include "host/gui/colorset.h"
#include "workstation/barcolors.h"
#include "workstation/barlabels.h"
#include "workstation/frequencybar.h"
#include "workstation/frequencybarsizes.h"

#include <QElapsedTimer>
#include <QPainter>
#include <QStyleOptionFocusRect>

#include <cmath>

using namespace BarSizes;

namespace {

constexpr int TintOpacity = 70;  ///< of the bandwidth of an entry, of 255
constexpr int PlanOpacity = 26;  ///< of the band plan behind the lines
constexpr int StripOpacity = 90; ///< of its strip above them
constexpr int LeastPlanName = 18;

QColor withAlpha(QColor color, int alpha) {
    color.setAlpha(alpha);
    return color;
}

} // namespace

/// A band of one pixel gets one more on either side, so that no other mark covers it.
void FrequencyBar::paintBands(QPainter& painter, int top, int height, const QColor& color) const {
    for (const Shade& shade : m_shades) {
        const int more = shade.first == shade.last ? 1 : 0;
        painter.fillRect(m_labelWidth + shade.first - more, top, shade.last - shade.first + 1 + 2 * more,
                         height, color);
    }
}

/// Names stand in a strip above the lines where they fit; the colours go down behind the lines.
void FrequencyBar::paintPlan(QPainter& painter) const {
    const int bottom = lineTop(std::max(shownCount(), 1));
    const QFontMetrics metrics(font());
    for (const BandPlan::Band& band : m_plan.Within(From(), To())) {
        const int left = static_cast<int>(std::max(MapToPixel(band.from), 0.0));
        const int right = static_cast<int>(std::min(MapToPixel(band.to), double(m_axis.Width())));
        const QColor color = BandPlan::ColorOf(band.service);
        const QRect strip(m_labelWidth + left, Margin / 2, std::max(right - left, 1), planHeight() - 1);
        painter.fillRect(strip, withAlpha(color, StripOpacity));
        painter.fillRect(strip.left(), lineTop(0), strip.width(), bottom - lineTop(0),
                         withAlpha(color, PlanOpacity));
        if (strip.width() < LeastPlanName)
            continue;
        painter.setPen(palette().color(QPalette::WindowText));
        const QString name = metrics.elidedText(band.name, Qt::ElideRight, strip.width() - 4);
        if (name.size() > 2)
            painter.drawText(strip.adjusted(2, 0, -2, 0), Qt::AlignCenter, name);
    }
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(QRect(Margin, Margin / 2, m_labelWidth - 2 * Margin, planHeight()),
                     Qt::AlignLeft | Qt::AlignVCenter, tr("Band plan"));
}

void FrequencyBar::paintTickTexts(QPainter& painter, int top) const {
    const QFontMetrics metrics(font());
    const int gap = metrics.averageCharWidth();
    LabelRow row;
    painter.setPen(palette().color(QPalette::WindowText));
    const std::vector<FrequencyAxis::Tick> ticks = m_axis.Ticks();
    for (const bool major :
         {true, false}) { // major ones have the first choice; even minor ones say nothing new
        for (const FrequencyAxis::Tick& tick : ticks) {
            if (tick.isMajor != major || (!major && !m_axis.IsWide()))
                continue;
            const QString text = Quor::ShortFrequencyText(tick.hertz);
            const int width = metrics.horizontalAdvance(text);
            const int left = m_labelWidth + static_cast<int>(MapToPixel(tick.hertz)) - width / 2;
            if (left >= m_labelWidth && left + width <= this->width() && row.Take(left - gap, left + width))
                painter.drawText(left, top + MajorTick + 2 + metrics.ascent(), text);
        }
    }
}

void FrequencyBar::paintAxis(QPainter& painter) const {
    const int top = lineTop(std::max(shownCount(), 1));
    const QColor grid = palette().color(QPalette::Mid);
    paintBands(painter, top - BandHeight, BandHeight, BarColors::Band());
    painter.setPen(grid);
    painter.drawLine(m_labelWidth, top, m_labelWidth + m_axis.Width(), top);
    for (const FrequencyAxis::Tick& tick : m_axis.Ticks()) {
        const int x = m_labelWidth + static_cast<int>(MapToPixel(tick.hertz));
        painter.drawLine(x, top, x, top + (tick.isMajor ? MajorTick : MinorTick));
        if (tick.isMajor) {
            painter.setPen(withAlpha(grid, 90));
            painter.drawLine(x, lineTop(0), x, top);
            painter.setPen(grid);
        }
    }
    paintTickTexts(painter, top);
    BarColors::PaintLegend(painter, {Margin, top + 2, m_labelWidth - 3 * Margin, AxisHeight - 2}, palette());
}

void FrequencyBar::paintMarks(QPainter& painter, const PixStateVector& pixels, int top, int height) const {
    for (size_t pixel = 0; pixel < pixels.size(); ++pixel) {
        const PixState& state = pixels[pixel];
        if (state.IsEmpty())
            continue;
        const QColor color = BarColors::OfType(state.type, palette());
        const int x = m_labelWidth + static_cast<int>(pixel);
        if ((state.flags & PixState::Bandwidth) != 0)
            painter.fillRect(x, top, 1, height, withAlpha(color, TintOpacity));
        if ((state.flags & PixState::Centre) != 0) {
            // The more entries share the pixel, the taller the mark.
            const double share = std::min(1.0, 0.5 + 0.15 * std::log2(1.0 + state.count));
            const int mark = static_cast<int>(height * share);
            painter.fillRect(x, top + height - mark, 2, mark, color);
        }
        if ((state.flags & PixState::Focus) != 0) {
            painter.fillRect(x - 1, top, 4, height, palette().color(QPalette::WindowText));
            painter.fillRect(x, top + 1, 2, height - 2, palette().color(QPalette::Highlight));
        }
    }
}

void FrequencyBar::paintLine(QPainter& painter, const Line& line, int top) const {
    const QFontMetrics metrics(font());
    const int height = lineHeight() - 4;
    const QRect label(Margin, top, m_labelWidth - 2 * Margin, height);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(label, Qt::AlignLeft | Qt::AlignVCenter,
                     metrics.elidedText(line.name, Qt::ElideRight, label.width()));
    paintBands(painter, top, height, BarColors::BandShade());
    painter.save();
    painter.setClipRect(m_labelWidth, top, m_axis.Width(), height);
    paintMarks(painter, *line.pixels, top, height);
    painter.setPen(palette().color(QPalette::Text));
    for (const BarLabel& text : LabelsOf(*line.pixels, metrics))
        painter.drawText(QRect(m_labelWidth + text.left, top, text.width + 1, height),
                         Qt::AlignLeft | Qt::AlignVCenter, text.text);
    painter.restore();
}

void FrequencyBar::paintTuned(QPainter& painter) const {
    const double tuned = MapToPixel(m_tuned);
    if (!(tuned >= 0 && tuned <= m_axis.Width()))
        return;
    painter.setPen(QPen(ColorSet::Instance().GetColorDefinition(IColorBase::BAR_TUNED).GetColor(), 2));
    const int x = m_labelWidth + static_cast<int>(tuned);
    painter.drawLine(x, 0, x, lineTop(std::max(shownCount(), 1)));
}

void FrequencyBar::paintEvent(QPaintEvent*) {
    if (m_mapped)
        computeLines();
    QPainter painter(this);
    for (int row = 0; row < std::max(shownCount(), 1); ++row)
        painter.fillRect(m_labelWidth, lineTop(row), m_axis.Width(), lineHeight() - 4,
                         palette().color(QPalette::Base));
    if (m_region > 0)
        paintPlan(painter);
    int row = 0;
    for (const Line& line : m_lines) {
        if (line.isShown)
            paintLine(painter, line, lineTop(row++));
    }
    paintAxis(painter);
    paintTuned(painter);
    if (!hasFocus())
        return;
    QStyleOptionFocusRect option;
    option.initFrom(this);
    option.rect = rect().adjusted(1, 1, -1, -1);
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
}
