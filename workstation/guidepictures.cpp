#include "workstation/guidepictures.h"

#include "host/freqlist/filterfield.h"
#include "host/gui/sortlistview.h"
#include "workstation/actions.h"
#include "workstation/application.h"
#include "workstation/mainwindow.h"
#include "workstation/timepicture.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QDockWidget>
#include <QElapsedTimer>
#include <QTabWidget>
#include <QTimer>

#include <cstdio>

namespace {

constexpr QSize WindowSize(1100, 680);
constexpr int SettleMilliseconds = 400;
constexpr int DialogMilliseconds = 200;
constexpr int RowsMilliseconds = 10000; ///< how long rows may take to come
constexpr int TimeHeight = 240;

/// The lists by the order of their tabs.
enum Tab { Targets, Channels, Detections = 3 };

void settle(int milliseconds = SettleMilliseconds) {
    QElapsedTimer timer;
    timer.start();
    do {
        QApplication::processEvents(QEventLoop::AllEvents, 20);
    } while (timer.elapsed() < milliseconds);
}

QWidget* show(MainWindow& window, Tab tab) {
    window.GetTabs()->setCurrentIndex(tab);
    settle();
    return window.GetTabs()->widget(tab);
}

void select(QWidget& page, int rows) {
    auto* list = page.findChild<SortListView*>();
    list->clearSelection();
    QElapsedTimer timer; // rows come some time after their list is shown
    timer.start();
    while (list->topLevelItemCount() < rows && timer.elapsed() < RowsMilliseconds)
        settle();
    for (int row = std::min(rows, list->topLevelItemCount()) - 1; row >= 0; --row)
        list->setSelected(list->topLevelItem(row), true);
    settle();
}

/// The dialog that a command opens and that is dismissed then; null when it opens none.
QPixmap dialogOf(QAction& command) {
    QPixmap picture;
    QTimer::singleShot(DialogMilliseconds, qApp, [&picture] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        picture = dialog->grab();
        dialog->reject();
    });
    command.trigger();
    settle(2 * DialogMilliseconds);
    return picture;
}

QPixmap takeWindow(MainWindow& window) {
    show(window, Targets);
    return window.grab();
}

QPixmap takeFind(MainWindow& window) {
    QWidget* page = show(window, Targets);
    auto* filter = page->findChild<FilterField*>();
    filter->setText(QStringLiteral("tower"));
    settle();
    QPixmap picture = window.GetTabs()->grab();
    filter->clear();
    return picture;
}

QPixmap takeEdit(MainWindow& window) {
    select(*show(window, Channels), 2);
    return dialogOf(*window.GetActions().Get(WindowActions::Edit));
}

QPixmap takeSearch(MainWindow& window) {
    select(*show(window, Detections), 3);
    return window.GetTabs()->grab();
}

QPixmap takeTime(MainWindow& window) {
    auto* picture = window.findChild<TimePicture*>();
    auto* dock = window.findChild<QDockWidget*>(QStringLiteral("TimePicture"));
    dock->show();
    window.resizeDocks({dock}, {TimeHeight}, Qt::Vertical);
    settle();
    QPixmap pixels = picture->grab();
    dock->hide();
    return pixels;
}

QPixmap takePreferences(MainWindow& window) {
    return dialogOf(*window.findChild<QAction*>(QStringLiteral("preferences")));
}

struct Row {
    const char* name;
    QPixmap (*take)(MainWindow& window);
};
constexpr Row Rows[] = {
    {"window.png", takeWindow}, {"find.png", takeFind},         {"edit.png", takeEdit},
    {"search.png", takeSearch}, {"time-picture.png", takeTime}, {"preferences.png", takePreferences},
};

} // namespace

QStringList GuidePictures::Names() {
    QStringList names;
    for (const Row& row : Rows)
        names << QString::fromLatin1(row.name);
    return names;
}

bool GuidePictures::Take(Workstation& station, const QString& folder) {
    QDir().mkpath(folder);
    MainWindow& window = station.GetWindow();
    window.resize(WindowSize);
    bool good = true;
    for (const Row& row : Rows) {
        const QString path = QDir(folder).filePath(QString::fromLatin1(row.name));
        if (row.take(window).save(path))
            continue;
        std::fprintf(stderr, "%s: cannot be written\n", qPrintable(path));
        good = false;
    }
    return good;
}
