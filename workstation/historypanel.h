#pragma once

#include <QUndoView>

/// What the operator has done to lists, the latest below. A click on a line goes back, or on again, to what
/// the lists were then.
class HistoryPanel : public QUndoView {
    Q_OBJECT

public:
    explicit HistoryPanel(QWidget* parent = nullptr);
};
