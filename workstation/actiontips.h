#pragma once

#include <QAction>

/// Says what an action does, beside the pointer and in the status line.
inline void SetTips(QAction& action, const QString& tip) {
    action.setToolTip(tip);
    action.setStatusTip(tip);
}
