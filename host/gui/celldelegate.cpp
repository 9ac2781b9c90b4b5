#include "host/gui/celldelegate.h"

#include <QApplication>
#include <QPainter>
#include <QStyle>

namespace {

bool isOneLineOfText(const QStyleOptionViewItem& cell) {
    using Cell = QStyleOptionViewItem;
    return !(cell.features & (Cell::HasDecoration | Cell::HasCheckIndicator)) &&
           !(cell.state & (QStyle::State_HasFocus | QStyle::State_Editing)) &&
           !cell.text.contains(QChar::LineSeparator) && cell.direction == Qt::LeftToRight;
}

QPalette::ColorGroup colorGroup(QStyle::State state) {
    if (!(state & QStyle::State_Enabled))
        return QPalette::Disabled;
    return (state & QStyle::State_Active) ? QPalette::Normal : QPalette::Inactive;
}

/// How much of the room that a text leaves is on its left. It may begin between two pixels.
double leftShare(Qt::Alignment alignment) {
    if (alignment & Qt::AlignRight)
        return 1;
    return (alignment & Qt::AlignHCenter) ? 0.5 : 0;
}

} // namespace

const QStaticText& CellDelegate::layoutOf(const QString& text, const QFont& font) const {
    if (font != m_font) {
        m_layouts.clear();
        m_font = font;
    }
    if (const QStaticText* known = m_layouts.object(text))
        return *known;
    auto* layout = new QStaticText(text);
    layout->setTextFormat(Qt::PlainText);
    layout->prepare(QTransform(), font);
    m_layouts.insert(text, layout);
    return *layout;
}

void CellDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
    QStyleOptionViewItem cell(option);
    initStyleOption(&cell, index);
    const QStyle* style = cell.widget ? cell.widget->style() : QApplication::style();
    if (!isOneLineOfText(cell))
        return style->drawControl(QStyle::CE_ItemViewItem, &cell, painter, cell.widget);

    style->drawPrimitive(QStyle::PE_PanelItemViewItem, &cell, painter, cell.widget);
    if (cell.text.isEmpty())
        return;
    const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, &cell, cell.widget) + 1;
    const QRect room = cell.rect.adjusted(margin, 0, -margin, 0);
    const QStaticText* layout = &layoutOf(cell.text, cell.font);
    if (layout->size().width() > room.width())
        layout =
            &layoutOf(cell.fontMetrics.elidedText(cell.text, cell.textElideMode, room.width()), cell.font);
    const QSizeF size = layout->size();
    const QRect line = QStyle::alignedRect(cell.direction, cell.displayAlignment, size.toSize(), room);
    const double before = leftShare(cell.displayAlignment) * (room.width() - size.width());
    const bool isSelected = cell.state & QStyle::State_Selected;
    painter->setPen(
        cell.palette.color(colorGroup(cell.state), isSelected ? QPalette::HighlightedText : QPalette::Text));
    painter->setFont(cell.font);
    painter->drawStaticText(QPointF(room.x() + before, line.y()), *layout);
}
