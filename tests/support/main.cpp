#include <QApplication>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

/// Read by the leak check of sanitized builds. The radio library's network client makes lists of tones each
/// time that it connects, and never frees them.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libhamlib.so";
}

namespace {

/// Of programs that tests start: a thread that works for a broker which was let go may outlive what its
/// encryption cleans up at the end.
void suppressLeaksOfPrograms(const QString& path) {
    QFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write("leak:libcrypto.so\n") > 0)
        qputenv("LSAN_OPTIONS", "print_suppressions=0:suppressions=" + path.toLocal8Bit());
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Settings, those of Qt's own dialogs too, are each program's own: tests run side by side.
    const QTemporaryDir home;
    qputenv("HOME", home.path().toLocal8Bit());
    suppressLeaksOfPrograms(home.filePath("leaks"));
    QStandardPaths::setTestModeEnabled(true);
    testing::InitGoogleTest(&argc, argv);
    QApplication app(argc, argv);
    return RUN_ALL_TESTS();
}
