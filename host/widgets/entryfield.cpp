#include "host/widgets/entryfield.h"

#include "host/gui/colorset.h"

#include <QPainter>
#include <QWidget>

void PaintErrorFrame(QWidget& field) {
    constexpr int FrameWidth = 2;
    QPainter painter(&field);
    painter.setPen(
        QPen(ColorSet::Instance().GetColorDefinition(IColorBase::ERROR_TEXT).GetColor(), FrameWidth));
    painter.drawRect(field.rect().adjusted(1, 1, -1, -1));
}
