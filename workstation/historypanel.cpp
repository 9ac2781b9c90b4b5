#include "workstation/historypanel.h"

#include "host/freqlist/undohistory.h"
#include "host/gui/colorset.h"

#include <QStyledItemDelegate>
#include <QUndoStack>

namespace {

/// What was undone, and could be done again, is muted.
class StepDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        if (index.row() > UndoHistory::Instance().Stack().index()) // the first row is the state before all
            option->palette.setColor(
                QPalette::Text, ColorSet::Instance().GetColorDefinition(IColorBase::MUTED_TEXT).GetColor());
    }
};

} // namespace

HistoryPanel::HistoryPanel(QWidget* parent) : QUndoView(&UndoHistory::Instance().Stack(), parent) {
    setEmptyLabel(tr("Before the first step"));
    setAccessibleName(tr("History"));
    setToolTip(tr("Click a step to go back, or on again, to what the lists were behind it"));
    setItemDelegate(new StepDelegate(this));
    // The steps on both sides of the present one are those that are wanted.
    connect(&UndoHistory::Instance().Stack(), &QUndoStack::indexChanged, this, [this] {
        scrollTo(currentIndex(), PositionAtCenter);
        viewport()->update();
    });
}
