#pragma once

#include "host/freqlist/buttonbar.h"
#include "host/gui/sortlistview.h"
#include "receiver/receiver.h"
#include "tests/workstation/stationfixture.h"
#include "workstation/actions.h"

#include <QApplication>
#include <QTabWidget>
#include <QTest>

/// A workstation whose window is worked with by keys and mouse.
class Windows : public Workstations {
protected:
    using A = WindowActions;
    using Bar = FreqStoreListViewButtonBar;

    void open(const QStringList& arguments) {
        start(arguments);
        window().activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window(), Patience));
    }
    MainWindow& window() { return station->GetWindow(); }
    QAction* action(A::Command command) { return window().GetActions().Get(command); }
    double tuned() { return station->GetReceiver().GetFrequency(); }
    /// Shows the tab of a list and answers with its list view.
    SortListView* show(const char* name) {
        QTabWidget* tabs = window().GetTabs();
        for (int index = 0; index < tabs->count(); ++index) {
            if (window().TabName(index) != QLatin1String(name))
                continue;
            tabs->setCurrentIndex(index);
            return tabs->widget(index)->findChild<SortListView*>();
        }
        return nullptr;
    }
    QString tabText() { return window().GetTabs()->tabText(window().GetTabs()->currentIndex()); }
    void key(int code, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(code), modifiers);
    }
    /// A row of a list as if it had been clicked.
    static void select(SortListView* list, int row) { list->setCurrentItem(list->topLevelItem(row)); }
};
