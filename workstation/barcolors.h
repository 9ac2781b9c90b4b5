#pragma once

#include <QColor>
#include <QPalette>
#include <QString>

class QPainter;
class QRect;

/// The colours of the frequency bar and what they mean.
namespace BarColors {

/// Of the bands of interest.
QColor Band();
/// The same behind marks.
QColor BandShade();
/// Of the marks of a type: from the most urgent one to the least, and the accent colour for all others.
QColor OfType(char type, const QPalette& palette);

/// Draws the colours by urgency, with the priorities of the first and the last.
void PaintLegend(QPainter& painter, const QRect& place, const QPalette& palette);
/// All colours in words, as rich text.
QString LegendText(const QPalette& palette, bool withPlan);

} // namespace BarColors
