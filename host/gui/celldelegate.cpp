#include "host/gui/celldelegate.h"

#include "host/base/frequencyinput.h"
#include "host/base/frequencytext.h"
#include "host/gui/sortlistview.h"

#include <QApplication>
#include <QKeyEvent>
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

/// Where a cell has its text.
QRect roomIn(const QStyleOptionViewItem& cell) {
    const QStyle* style = cell.widget ? cell.widget->style() : QApplication::style();
    const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, &cell, cell.widget) + 1;
    return cell.rect.adjusted(margin, 0, -margin, 0);
}

bool isOfFrequencies(const QModelIndex& index) {
    return index.model()
        ->headerData(index.column(), Qt::Horizontal)
        .toString()
        .startsWith(QCoreApplication::translate("CellDelegate", "Frequency"));
}

} // namespace

CellDelegate::CellDelegate(QObject* parent)
    : QStyledItemDelegate(parent), m_list(qobject_cast<SortListView*>(parent)) {}

SortListViewItem* CellDelegate::rowOf(const QModelIndex& index) const {
    const bool isRow = m_list && !index.parent().isValid();
    return isRow ? static_cast<SortListViewItem*>(m_list->itemFromIndex(index)) : nullptr;
}

QWidget* CellDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                    const QModelIndex& index) const {
    const SortListViewItem* row = rowOf(index);
    return row ? m_list->CreateCellEditor(parent, *row, index.column()) : nullptr;
}

void CellDelegate::setModelData(QWidget* editor, QAbstractItemModel*, const QModelIndex&) const {
    if (!m_list->EndCellEditor(*editor, true)) // the field is left: what it refuses is lost
        m_list->EndCellEditor(*editor, false);
}

/// A field may be wider than its cell.
void CellDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                        const QModelIndex&) const {
    QRect place = option.rect;
    place.setWidth(std::max(place.width(), editor->minimumSizeHint().width()));
    const int room = m_list->viewport()->width();
    place.moveLeft(std::max(std::min(place.left(), room - place.width()), 0));
    editor->setGeometry(place);
}

bool CellDelegate::eventFilter(QObject* watched, QEvent* event) {
    auto* editor = qobject_cast<QWidget*>(watched);
    if (editor && event->type() == QEvent::ShortcutOverride) {
        event->accept();
        return true;
    }
    if (!editor || event->type() != QEvent::KeyPress)
        return QStyledItemDelegate::eventFilter(watched, event);
    const int key = static_cast<const QKeyEvent*>(event)->key();
    const int by = key == Qt::Key_Tab ? 1 : key == Qt::Key_Backtab ? -1 : 0;
    if (key == Qt::Key_Escape) {
        m_list->EndCellEditor(*editor, false);
        emit closeEditor(editor, RevertModelCache);
        return true;
    }
    if (by == 0 && key != Qt::Key_Return && key != Qt::Key_Enter)
        return QStyledItemDelegate::eventFilter(watched, event);
    if (m_list->EndCellEditor(*editor, true)) {
        emit closeEditor(editor, NoHint);
        if (by != 0)
            m_list->editNextCell(by);
    }
    return true;
}

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

void CellDelegate::SetFrequencyStyle(bool groupsThousands, double unit) {
    m_groupsThousands = groupsThousands;
    m_frequencyUnit = unit;
}

void CellDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    showFrequencyStyle(*option, index);
    const SortListViewItem* row = rowOf(index);
    if (const QString addition = row ? row->CellAddition(index.column()) : QString(); !addition.isEmpty())
        option->text.prepend(addition);
}

void CellDelegate::showFrequencyStyle(QStyleOptionViewItem& option, const QModelIndex& index) const {
    double hertz = 0;
    if ((!m_groupsThousands && m_frequencyUnit <= 0) || !isOfFrequencies(index) ||
        !Quor::ParseFrequency(option.text, hertz))
        return;
    if (m_frequencyUnit > 0)
        option.text = Quor::FrequencyTextIn(m_frequencyUnit, hertz);
    if (m_groupsThousands)
        option.text = Quor::GroupThousands(option.text);
}

void CellDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
    QStyleOptionViewItem cell(option);
    initStyleOption(&cell, index);
    paintCell(painter, cell);
    if (!m_query.IsEmpty())
        markHits(painter, cell, index);
}

/// Lays a translucent colour over what was found, so that it is seen on selected rows, too.
void CellDelegate::markHits(QPainter* painter, const QStyleOptionViewItem& cell,
                            const QModelIndex& index) const {
    constexpr int Translucent = 90;
    const QString text = index.data().toString();
    const std::vector<Query::Hit> hits = m_query.HitsIn(text, index.column());
    if (hits.empty())
        return;
    const QRect room = roomIn(cell);
    const int width = cell.fontMetrics.horizontalAdvance(cell.text);
    const int before = static_cast<int>(leftShare(cell.displayAlignment) * std::max(room.width() - width, 0));
    const bool isSelected = cell.state & QStyle::State_Selected;
    QColor color = cell.palette.color(colorGroup(cell.state),
                                      isSelected ? QPalette::HighlightedText : QPalette::Highlight);
    color.setAlpha(Translucent);
    for (const Query::Hit& hit : hits) {
        const bool isWhole = cell.text != text; // painted in another way than it was found
        const int from = isWhole ? 0 : cell.fontMetrics.horizontalAdvance(cell.text.left(hit.from));
        const int to =
            isWhole ? width : cell.fontMetrics.horizontalAdvance(cell.text.left(hit.from + hit.length));
        const QRect mark(room.x() + before + from, room.y() + 1, to - from, room.height() - 2);
        painter->fillRect(mark & room, color);
    }
}

void CellDelegate::paintCell(QPainter* painter, const QStyleOptionViewItem& cell) const {
    const QStyle* style = cell.widget ? cell.widget->style() : QApplication::style();
    if (!isOneLineOfText(cell))
        return style->drawControl(QStyle::CE_ItemViewItem, &cell, painter, cell.widget);

    style->drawPrimitive(QStyle::PE_PanelItemViewItem, &cell, painter, cell.widget);
    if (cell.text.isEmpty())
        return;
    const QRect room = roomIn(cell);
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
