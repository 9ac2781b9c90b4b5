#include "host/freqlist/filterfield.h"
#include "host/freqlist/freqstore.h"
#include "tests/workstation/windowfixture.h"
#include "workstation/frequencybar.h"
#include "workstation/simulatedsearch.h"

#include <QDockWidget>
#include <QHeaderView>
#include <QMenu>
#include <QMenuBar>
#include <QToolButton>

#include <set>

namespace {

class WaysOfWork : public Windows {
protected:
    /// What the filter leaves of the list that is shown.
    void find(const QString& query) {
        key(Qt::Key_F, Qt::ControlModifier);
        QTest::keyClicks(QApplication::focusWidget(), query);
    }
    /// The actions of menus and their menus, all the way down, without the files that were opened last.
    static void collect(const QMenu& menu, const QMenu* skipped, std::vector<QAction*>& actions) {
        for (QAction* action : menu.actions()) {
            if (action->isSeparator() || action->menu() == skipped)
                continue;
            if (action->menu())
                collect(*action->menu(), skipped, actions);
            else
                actions.push_back(action);
        }
    }
    QString tabShown() { return window().TabName(window().GetTabs()->currentIndex()); }
    QDockWidget* dock(const char* name) { return window().findChild<QDockWidget*>(name); }
};

TEST_F(WaysOfWork, ATowerIsFoundTunedToAndCopiedToTheChannelsByKeysAlone) {
    open({"--receiver", "vuhf", "--job", sample("job-vuhf.pij"), sample("targets.xml")});
    ASSERT_TRUE(station->LoadFiles());
    SortListView* targets = show("Local TargetList");
    find("tower 118-137 MHz");
    ASSERT_TRUE(Until([&] { return !targets->IsFiltering(); }));
    const int found = targets->ShownCount();
    ASSERT_GT(found, 3);
    for (int row = 0; row < found; ++row)
        EXPECT_TRUE(targets->topLevelItem(row)->text(1).contains("tower", Qt::CaseInsensitive));
    key(Qt::Key_Down);
    EXPECT_EQ(QApplication::focusWidget(), targets);
    EXPECT_EQ(targets->CurrentPlace(), 0) << "the first one found is at hand";
    ASSERT_TRUE(Until([&] { return action(A::Tune)->isEnabled(); }));
    key(Qt::Key_Return, Qt::ControlModifier);
    const double first = tuned();
    EXPECT_GE(first, 118e6);
    EXPECT_LE(first, 137e6);
    key(Qt::Key_Down, Qt::AltModifier);
    EXPECT_GT(tuned(), first);

    key(Qt::Key_A, Qt::ControlModifier);
    key(Qt::Key_C, Qt::ControlModifier);
    const int before = entriesOf("/Lists/MemoryChannels");
    key(Qt::Key_PageDown, Qt::ControlModifier);
    ASSERT_EQ(tabShown(), "Memory Channels");
    key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(entriesOf("/Lists/MemoryChannels"), before + found);
    EXPECT_TRUE(tabText().endsWith('*'));
    key(Qt::Key_PageUp, Qt::ControlModifier);
    EXPECT_EQ(targets->ShownCount(), found) << "each list keeps its filter";
    key(Qt::Key_F, Qt::ControlModifier);
    key(Qt::Key_Escape);
    EXPECT_EQ(targets->ShownCount(), targets->RowCount());
    EXPECT_EQ(QApplication::focusWidget(), targets);
}

TEST_F(WaysOfWork, TheFirstKeyDownSelectsTheFirstRow) {
    open({sample("targets.ltl")});
    ASSERT_TRUE(station->LoadFiles());
    for (const int code : {Qt::Key_Down, Qt::Key_Home}) {
        SortListView* list = show("Local TargetList");
        list->clearSelection();
        window().GetBar()->setFocus();
        list->setFocus(Qt::TabFocusReason);
        key(code);
        EXPECT_EQ(list->CurrentPlace(), 0) << code;
    }
    key(Qt::Key_Down);
    EXPECT_EQ(show("Local TargetList")->CurrentPlace(), 1);
}

TEST_F(WaysOfWork, ASearchIsFollowedPausedSortedAndThreeDetectionsAreSent) {
    open({});
    SimulatedSearch& search = station->GetSearch();
    constexpr qint64 Second = 1'000'000;
    constexpr qint64 Begin = 1'700'000'000 * Second;
    key(Qt::Key_F5);
    EXPECT_TRUE(search.IsRunning());
    search.Simulate(60 * Second, Begin);
    key(Qt::Key_F5);
    ASSERT_FALSE(search.IsRunning()) << "from here on, detections come when the test says so";
    SortListView* list = show("Detections");
    ASSERT_TRUE(Until([&] { return list->RowCount() > 5; }));

    QToolButton* pause = nullptr;
    for (QToolButton* button : window().GetTabs()->currentWidget()->findChildren<QToolButton*>()) {
        if (button->text() == "Pause")
            pause = button;
    }
    ASSERT_NE(pause, nullptr);
    QTest::mouseClick(pause, Qt::LeftButton);
    const int standing = list->RowCount();
    search.Simulate(120 * Second, Begin + 60 * Second);
    QApplication::processEvents();
    EXPECT_EQ(list->RowCount(), standing);
    QTest::mouseClick(pause, Qt::LeftButton);
    ASSERT_TRUE(Until([&] { return list->RowCount() > standing; }));

    const QHeaderView& header = *list->header();
    QTest::mouseClick(header.viewport(), Qt::LeftButton, {},
                      {header.sectionViewportPosition(0) + header.sectionSize(0) / 2, header.height() / 2});
    ASSERT_TRUE(Until([&] { return list->sortColumn() == 0; }));
    list->setFocus();
    key(Qt::Key_Home);
    for (int row = 1; row < 3; ++row)
        key(Qt::Key_Down, Qt::ShiftModifier);
    ASSERT_EQ(list->SelectedCount(), 3);
    ASSERT_TRUE(Until([&] { return action(A::SendTo)->isEnabled(); }));
    QMenu* takers = action(A::SendTo)->menu();
    emit takers->aboutToShow();
    const auto send = [&](const char* name) {
        for (QAction* taker : takers->actions()) {
            if (taker->text() == name)
                return taker->trigger();
        }
        ADD_FAILURE() << name;
    };
    const int before = entriesOf("/Lists/NOIFrequencies");
    send("NOI Frequencies");
    const int added = entriesOf("/Lists/NOIFrequencies") - std::max(before, 0);
    EXPECT_GT(added, 0);
    EXPECT_TRUE(status().startsWith(QString("%1 sent to NOI Frequencies").arg(added)))
        << status().toStdString();
    emit takers->aboutToShow();
    send("NOI Frequencies");
    EXPECT_TRUE(status().startsWith("0 sent to NOI Frequencies, 3 there already")) << status().toStdString();
}

TEST_F(WaysOfWork, PanelsAtTheBottomHaveTheWholeWidthAndComeToTheFront) {
    open({"--demo"});
    ASSERT_TRUE(station->LoadFiles());
    QDockWidget* picture = dock("TimePicture");
    QDockWidget* messages = dock("MessagesPanel");
    for (const QSize size : {QSize(1440, 860), QSize(1024, 600)}) {
        window().resize(size);
        for (QDockWidget* asked : {messages, picture}) {
            asked->toggleViewAction()->trigger();
            QApplication::processEvents();
            EXPECT_EQ(window().size(), size) << "no panel makes the window higher";
            EXPECT_GT(asked->width(), size.width() * 9 / 10);
            EXPECT_FALSE(asked->visibleRegion().isEmpty()) << asked->objectName().toStdString();
        }
        EXPECT_GT(picture->height(), size.height() > 800 ? 200 : 70);
        QTest::mouseClick(window().findChild<QToolButton*>("Problems"), Qt::LeftButton);
        EXPECT_FALSE(messages->visibleRegion().isEmpty()) << "they stood behind the picture";
        for (QDockWidget* asked : {messages, picture})
            asked->toggleViewAction()->trigger();
    }
}

TEST_F(WaysOfWork, PanelsStayClosedWhenTheWindowShrinksAndTheNextTime) {
    open({});
    dock("ReceiverPanel")->close();
    for (const QSize size : {QSize(1024, 600), QSize(1440, 860)}) {
        window().resize(size);
        QApplication::processEvents();
        EXPECT_TRUE(dock("ReceiverPanel")->isHidden()) << size.width();
        EXPECT_FALSE(dock("DetailsPanel")->isHidden()) << size.width();
    }
    SortListView* list = show("Local TargetList");
    const int width = list->header()->sectionSize(0) + 37;
    list->header()->resizeSection(0, width);
    EXPECT_TRUE(window().close());
    open({});
    EXPECT_TRUE(dock("ReceiverPanel")->isHidden());
    EXPECT_FALSE(dock("DetailsPanel")->isHidden());
    EXPECT_EQ(show("Local TargetList")->header()->sectionSize(0), width);
}

TEST_F(WaysOfWork, TabReachesEveryWidgetAndNoneTrapsIt) {
    open({"--demo"});
    ASSERT_TRUE(station->LoadFiles());
    SortListView* list = show("Memory Channels");
    select(list, 0);
    dock("MessagesPanel")->show();
    dock("TimePicture")->show();
    QApplication::processEvents();
    std::set<QWidget*> wanted;
    for (QWidget* widget : window().findChildren<QWidget*>()) {
        if ((widget->focusPolicy() & Qt::TabFocus) && widget->isEnabled() && !widget->focusProxy() &&
            !widget->visibleRegion().isEmpty())
            wanted.insert(widget);
    }
    EXPECT_GT(wanted.size(), 20u);
    list->setFocus();
    for (const auto& [code, modifiers] :
         {std::pair(Qt::Key_Tab, Qt::NoModifier), std::pair(Qt::Key_Backtab, Qt::ShiftModifier)}) {
        std::set<QWidget*> missed = wanted;
        const auto enough = 4 * wanted.size();
        for (size_t step = 0; step < enough && !missed.empty(); ++step) {
            const QWidget* before = QApplication::focusWidget();
            key(code, modifiers);
            missed.erase(QApplication::focusWidget());
            ASSERT_NE(QApplication::focusWidget(), before)
                << before->metaObject()->className() << " traps it";
        }
        for (const QWidget* widget : missed)
            ADD_FAILURE() << "not reached by " << code << ": " << widget->metaObject()->className() << ' '
                          << widget->accessibleName().toStdString();
    }
}

TEST_F(WaysOfWork, EveryEntryOfAMenuTellsWhatItDoesInBothLanguages) {
    for (const char* language : {"en", "de"}) {
        open({"--language", language});
        std::vector<QAction*> actions;
        QList<QList<QAction*>> groups{window().menuBar()->actions()};
        for (const QAction* title : window().menuBar()->actions()) {
            collect(*title->menu(), window().GetRecentMenu(), actions);
            groups << title->menu()->actions();
        }
        EXPECT_GT(actions.size(), 40u);
        for (const QAction* action : actions) {
            SCOPED_TRACE(testing::Message() << language << ": " << action->text().toStdString());
            EXPECT_FALSE(action->text().isEmpty());
            EXPECT_FALSE(action->statusTip().isEmpty());
            EXPECT_TRUE(action->toolTip().contains(action->statusTip())) << action->toolTip().toStdString();
        }
        for (const auto& group : groups) {
            std::set<QString> keys;
            for (const QAction* action : group) {
                const QString key = QKeySequence::mnemonic(action->text()).toString();
                EXPECT_TRUE(key.isEmpty() || keys.insert(key).second)
                    << language << ": " << action->text().toStdString();
            }
        }
    }
}

} // namespace
