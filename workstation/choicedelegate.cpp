#include "workstation/choicedelegate.h"

#include "workstation/mergemodel.h"

#include <QApplication>
#include <QComboBox>
#include <QPainter>
#include <QTimer>

namespace {

const MergeModel& modelOf(const QModelIndex& index) {
    return static_cast<const MergeModel&>(*index.model());
}

} // namespace

void ChoiceDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                           const QModelIndex& index) const {
    QStyledItemDelegate::paint(painter, option, index);
    if (!(index.flags() & Qt::ItemIsEditable))
        return;
    const int side = option.rect.height() / 2;
    QStyleOption arrow;
    arrow.palette = option.palette;
    arrow.state = QStyle::State_Enabled;
    if (option.state & QStyle::State_Selected) // the arrow is drawn in the colour of texts
        arrow.palette.setColor(QPalette::ButtonText, option.palette.color(QPalette::HighlightedText));
    arrow.rect = QRect(option.rect.right() - side - 2, option.rect.center().y() - side / 2, side, side);
    const QStyle* const style = option.widget ? option.widget->style() : QApplication::style();
    style->drawPrimitive(QStyle::PE_IndicatorArrowDown, &arrow, painter, option.widget);
}

QWidget* ChoiceDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                      const QModelIndex& index) const {
    auto* const box = new QComboBox(parent);
    for (const auto& [choice, text] : modelOf(index).ChoicesOf(index.row()))
        box->addItem(text, static_cast<int>(choice));
    connect(box, &QComboBox::activated, this, [this, box] {
        auto* const self = const_cast<ChoiceDelegate*>(this); // signals of a delegate are not const
        emit self->commitData(box);
        emit self->closeEditor(box);
    });
    QTimer::singleShot(0, box, &QComboBox::showPopup); // when it has its place
    return box;
}

void ChoiceDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
    auto& box = static_cast<QComboBox&>(*editor);
    box.setCurrentIndex(box.findData(static_cast<int>(modelOf(index).ChoiceOf(index.row()))));
}

void ChoiceDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                  const QModelIndex& index) const {
    const auto& box = static_cast<const QComboBox&>(*editor);
    static_cast<MergeModel*>(model)->Choose({index.row()},
                                            static_cast<ListMerge::Choice>(box.currentData().toInt()));
}

void ChoiceDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                          const QModelIndex&) const {
    editor->setGeometry(option.rect);
}
