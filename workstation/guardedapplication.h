#pragma once

#include "workstation/memoryneed.h"

#include <QApplication>

/// An application that outlives an action for which the memory does not do: the action ends, and that is
/// told.
class GuardedApplication : public QApplication {
public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override {
        return WithinMemory(translate("GuardedApplication", "The last action"), false,
                            [&] { return QApplication::notify(receiver, event); });
    }
};
