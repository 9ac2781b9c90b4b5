#include "workstation/historypanel.h"

#include "host/freqlist/undohistory.h"

HistoryPanel::HistoryPanel(QWidget* parent) : QUndoView(&UndoHistory::Instance().Stack(), parent) {
    setEmptyLabel(tr("Before the first step"));
    setAccessibleName(tr("History"));
    setToolTip(tr("Click a step to go back, or on again, to what the lists were behind it"));
}
