#pragma once

#include <QCoreApplication>
#include <QFile>
#include <QTimer>
#include <QWidget>

#include <cstdio>
#include <unistd.h>

/// Ends the program once a window has been painted for the first time from now on, and prints then how much
/// of its memory (KiB) is in the machine's. The object belongs to the window.
class FirstPaint : public QObject {
public:
    explicit FirstPaint(QWidget& window) : QObject(&window) { window.installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            watched->removeEventFilter(this);
            QTimer::singleShot(0, this, [] { // all that is in the window has been painted then
                std::printf("painted, %lld KiB\n", residentKilobytes());
                std::fflush(stdout);
                QCoreApplication::quit();
            });
        }
        return false;
    }

private:
    static long long residentKilobytes() {
        QFile file(QStringLiteral("/proc/self/statm"));
        const QByteArrayList pages =
            file.open(QIODevice::ReadOnly) ? file.readAll().split(' ') : QByteArrayList();
        return pages.size() > 1 ? pages[1].toLongLong() * sysconf(_SC_PAGESIZE) / 1024 : 0;
    }
};
