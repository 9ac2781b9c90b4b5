#include "workstation/barcolors.h"

#include "host/gui/colorset.h"
#include "workstation/bandplan.h"

#include <QCoreApplication>
#include <QPainter>

#include <cstring>
#include <iterator>

namespace {

/// Types by priority 1 to 9, and that of entries without one.
constexpr char UrgencyLetters[] = "ponmlkjihg";
constexpr QRgb UrgencyColors[] = {0xffc62828, 0xffd84315, 0xffef6c00, 0xfff9a825, 0xff9e9d24,
                                  0xff558b2f, 0xff2e7d32, 0xff00838f, 0xff1565c0, 0xff607d8b};
constexpr int UrgencyCount = static_cast<int>(std::size(UrgencyColors));
static_assert(std::size(UrgencyLetters) == UrgencyCount + 1);
constexpr int DarkLighter = 135; ///< percent, on a dark background
constexpr int ShadeOpacity = 70; ///< of 255

QString tr(const char* text) {
    return QCoreApplication::translate("BarColors", text);
}

QColor urgency(int index) {
    const QColor color(UrgencyColors[index]);
    return ColorSet::IsDark() ? color.lighter(DarkLighter) : color;
}

QString entry(const QColor& color, const QString& text) {
    return QStringLiteral("<div><span style='color:%1'>&#9632;</span> %2</div>")
        .arg(color.name(), text.toHtmlEscaped());
}

} // namespace

QColor BarColors::Band() {
    return {0xff, 0xa0, 0x00};
}

QColor BarColors::BandShade() {
    QColor shade = Band();
    shade.setAlpha(ShadeOpacity);
    return shade;
}

QColor BarColors::OfType(char type, const QPalette& palette) {
    const char* place = type ? std::strchr(UrgencyLetters, type) : nullptr;
    return place ? urgency(static_cast<int>(place - UrgencyLetters)) : palette.color(QPalette::Highlight);
}

void BarColors::PaintLegend(QPainter& painter, const QRect& place, const QPalette& palette) {
    const QFontMetrics metrics = painter.fontMetrics();
    const QString first = tr("urgent");
    const QString last = tr("low");
    const int begin = place.left() + metrics.horizontalAdvance(first) + 4;
    const int swatch = (place.right() - metrics.horizontalAdvance(last) - 4 - begin) / UrgencyCount;
    if (swatch < 3)
        return;
    painter.setPen(palette.color(QPalette::WindowText));
    painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter, first);
    for (int i = 0; i < UrgencyCount; ++i)
        painter.fillRect(begin + i * swatch, place.center().y() - 4, swatch - 1, 9, urgency(i));
    painter.drawText(place.adjusted(begin + UrgencyCount * swatch + 3 - place.left(), 0, 0, 0),
                     Qt::AlignLeft | Qt::AlignVCenter, last);
}

QString BarColors::LegendText(const QPalette& palette, bool withPlan) {
    QString text;
    for (int i = 0; i + 1 < UrgencyCount; ++i)
        text += entry(urgency(i), tr("priority %1").arg(i + 1) +
                                      (i == 0 ? QStringLiteral(", ") + tr("the most urgent") : QString()));
    text += entry(urgency(UrgencyCount - 1), tr("no priority"));
    text += entry(palette.color(QPalette::Highlight), tr("other types, and detections"));
    text += entry(Band(), tr("bands of interest"));
    for (const QString& service : withPlan ? BandPlan::Services() : QStringList())
        text += entry(BandPlan::ColorOf(service), tr("band plan: %1").arg(service));
    return text;
}
