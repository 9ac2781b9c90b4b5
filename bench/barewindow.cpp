#include "workstation/firstpaint.h"

#include <QApplication>
#include <QMainWindow>
#include <QTreeWidget>

/// The least that a program with a list in a window is: what the start of the workstation is compared with.
int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QMainWindow window;
    window.setCentralWidget(new QTreeWidget(&window));
    window.resize(1440, 860);
    window.show();
    new FirstPaint(window);
    return QApplication::exec();
}
