#include "host/base/terminaltext.h"
#include "workstation/application.h"
#include "workstation/ending.h"
#include "workstation/firstpaint.h"
#include "workstation/guardedapplication.h"
#include "workstation/guidepictures.h"
#include "workstation/icons.h"
#include "workstation/mainwindow.h"

#include <QScreen>

#include <cstdio>

int main(int argc, char** argv) {
    if (const QString refusal = RefuseArguments(argc, argv); !refusal.isEmpty()) {
        std::fprintf(stderr, "freqstore: %s\n", TextFor(stderr, refusal).constData());
        return 1;
    }
    GuardedApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("freqstore"));
    QApplication::setApplicationVersion(QStringLiteral(FREQSTORE_VERSION));
    QGuiApplication::setWindowIcon(Icons::Get(QStringLiteral("freqstore")));
    QString error;
    const Options options = Options::Parse(QApplication::arguments(), error);
    if (!error.isEmpty()) {
        std::fprintf(stderr, "freqstore: %s\n", TextFor(stderr, error).constData());
        return 1;
    }
    Workstation workstation(options);
    MainWindow& window = workstation.GetWindow();
    if (options.screenshotDirectory.isEmpty()) // pictures are the same on every screen
        window.resize(window.size().boundedTo(window.screen()->availableSize()));
    window.show();
    const bool loaded = workstation.LoadFiles();
    if (options.takesGuide)
        return GuidePictures::Take(workstation, options.screenshotDirectory) && loaded ? 0 : 2;
    if (!options.screenshotDirectory.isEmpty())
        return workstation.TakeScreenshots() && loaded ? 0 : 2;
    if (options.timesStart)
        new FirstPaint(window);
    else if (workstation.OfferRecovery())
        workstation.WelcomeAtFirstStart();
    if (!workstation.GetEnding().IsEnding())
        workstation.BeginSharing();
    if (!workstation.GetEnding().IsEnding()) // a signal may have come meanwhile
        QApplication::exec();
    return workstation.GetEnding().ExitCode();
}
