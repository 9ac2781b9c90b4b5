#pragma once

#include <QEventLoop>
#include <QTest>
#include <QTimer>

/// How long a test waits before it gives up, in ms: far longer than anything takes on a busy machine.
constexpr int Patience = 60000;

/// Runs the event loop until something is so; false when it has not become so.
template <typename Condition>
bool Until(Condition isSo) {
    return QTest::qWaitFor(isSo, Patience);
}

/// Runs the event loop until each timer that runs by now and is shorter has fired, however slow the machine
/// is.
inline void RunTimersUpTo(int milliseconds) {
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}
