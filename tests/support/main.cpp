#include <QApplication>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

/// Read by the leak check of sanitized builds. The radio library's network client makes lists of tones each
/// time that it connects, and never frees them.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libhamlib.so";
}

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Settings, those of Qt's own dialogs too, are each program's own: tests run side by side.
    const QTemporaryDir home;
    qputenv("HOME", home.path().toLocal8Bit());
    QStandardPaths::setTestModeEnabled(true);
    testing::InitGoogleTest(&argc, argv);
    QApplication app(argc, argv);
    return RUN_ALL_TESTS();
}
