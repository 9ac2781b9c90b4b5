#include "controls/frequencystore/memory/memorysystemhandler.h"
#include "controls/frequencystore/targets/targetlisthandler.h"
#include "host/freqlist/buttonbar.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencynodelistview.h"
#include "host/gui/listsettings.h"
#include "host/widgets/frequencyfield.h"
#include "host/widgets/vclineedit.h"
#include "receiver/receiver.h"
#include "tests/support/dialogs.h"
#include "tests/workstation/windowfixture.h"
#include "workstation/frequencybar.h"
#include "workstation/job.h"
#include "workstation/levelmeter.h"
#include "workstation/listprint.h"
#include "workstation/simulatedsearch.h"
#include "workstation/tuningstrip.h"
#include "workstation/welcome.h"

#include <QAccessible>
#include <QClipboard>
#include <QComboBox>
#include <QDockWidget>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTextBrowser>
#include <QToolButton>

namespace {

TEST_F(Windows, CommandsActOnTheListThatIsShownByTheirKeys) {
    open({sample("targets.ltl")});
    ASSERT_TRUE(station->LoadFiles());
    SortListView* targets = show("Local TargetList");
    EXPECT_EQ(QApplication::focusWidget(), targets);
    select(targets, 3);
    key(Qt::Key_C, Qt::ControlModifier);
    SortListView* channels = show("Memory Channels");
    EXPECT_EQ(QApplication::focusWidget(), channels) << "what is pasted goes into the list, not the filter";
    key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(entriesOf("/Lists/MemoryChannels"), 1);
    key(Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(qobject_cast<QLineEdit*>(QApplication::focusWidget()));
    key(Qt::Key_Delete);
    EXPECT_EQ(entriesOf("/Lists/MemoryChannels"), 1) << "in a field the key means the field's text";
    select(channels, 0);
    channels->setFocus();
    ASSERT_TRUE(Until([&] { return action(A::Duplicate)->isEnabled(); }));
    key(Qt::Key_D, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(entriesOf("/Lists/MemoryChannels"), 2);
    key(Qt::Key_A, Qt::ControlModifier);
    ASSERT_TRUE(Until([&] { return action(A::Cut)->isEnabled(); }));
    key(Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(entriesOf("/Lists/MemoryChannels"), 0);
    key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(entriesOf("/Lists/MemoryChannels"), 2);
}

TEST_F(Windows, KeysTuneToTheRowAndToTheNextOnes) {
    open({sample("targets.ltl")});
    ASSERT_TRUE(station->LoadFiles());
    for (const char* name : {"Local TargetList", "Detections"}) {
        SCOPED_TRACE(name);
        if (name == std::string("Detections"))
            station->GetSearch().Simulate(60'000'000, 1'700'000'000'000'000);
        SortListView* list = show(name);
        ASSERT_TRUE(Until([&] { return list->topLevelItemCount() > 3; }));
        key(Qt::Key_Home);
        ASSERT_TRUE(Until([&] { return action(A::Tune)->isEnabled(); }));
        key(Qt::Key_T, Qt::ControlModifier);
        const QString first = status();
        EXPECT_TRUE(first.contains(list->topLevelItem(0)->text(0).section(' ', 0, 0).left(4)))
            << first.toStdString();
        key(Qt::Key_Down, Qt::AltModifier);
        EXPECT_NE(status(), first);
        key(Qt::Key_Up, Qt::AltModifier);
        EXPECT_EQ(status(), first);
    }
}

TEST_F(Windows, RowsGoThroughTheClipboardAsTextAndOneValueGoesToAll) {
    open({sample("targets.ltl")});
    ASSERT_TRUE(station->LoadFiles());
    SortListView* targets = show("Local TargetList");
    select(targets, 3);
    ASSERT_TRUE(Until([&] { return action(A::CopyText)->isEnabled(); }));
    key(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    const QStringList lines = QGuiApplication::clipboard()->text().split('\n');
    ASSERT_EQ(lines.size(), 3);
    EXPECT_TRUE(lines[1].startsWith(targets->topLevelItem(3)->text(0) + '\t'));
    SortListView* channels = show("Memory Channels");
    for (int i = 0; i < 3; ++i)
        key(Qt::Key_V, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(channels->topLevelItemCount(), 3);
    EXPECT_EQ(channels->topLevelItem(2)->text(0), targets->topLevelItem(3)->text(0));
    key(Qt::Key_A, Qt::ControlModifier);
    ASSERT_TRUE(Until([&] { return action(A::SetColumn)->isEnabled(); }));
    WhenOpen<QDialog>([&](QDialog& dialog) {
        auto* column = dialog.findChild<QComboBox*>();
        column->setCurrentIndex(column->findText("Comment"));
        auto* value = dialog.findChild<VCLineEdit*>();
        value->selectAll();
        QTest::keyClicks(value, "one for all");
        dialog.accept();
    });
    action(A::SetColumn)->trigger();
    for (int row = 0; row < 3; ++row)
        EXPECT_EQ(channels->topLevelItem(row)->text(2), "one for all");
    EXPECT_TRUE(station->GetJob().GetText().isEmpty() || station->GetJob().GetText().contains("one for all"));
}

TEST_F(Windows, TheTunedEntryIsMarkedInEveryList) {
    open({sample("targets.ltl")});
    ASSERT_TRUE(station->LoadFiles());
    station->GetSearch().Simulate(60'000'000, 1'700'000'000'000'000);
    for (const char* name : {"Local TargetList", "Detections"}) {
        SCOPED_TRACE(name);
        SortListView* list = show(name);
        ASSERT_TRUE(Until([&] { return list->topLevelItemCount() > 3; }));
        const auto image = [list](int row) {
            return list->viewport()->grab(list->visualItemRect(list->topLevelItem(row))).toImage();
        };
        station->GetReceiver().Tune(29'999'000);
        key(Qt::Key_Home);
        const QImage before = image(0);
        key(Qt::Key_Return);
        EXPECT_NE(tuned(), 29'999'000) << "Return tunes";
        EXPECT_NE(image(0), before);
        station->GetReceiver().Tune(29'999'000);
        EXPECT_EQ(image(0), before);
    }
}

TEST_F(Windows, WhatDoesNotApplyIsOffAndSaysWhy) {
    open({});
    show("Detections");
    const std::pair<A::Command, const char*> rows[] = {{A::Paste, "Detections does not have this."},
                                                       {A::Tune, "No entry is selected."},
                                                       {A::EditCell, "cannot be edited"},
                                                       {A::Copy, "No entry is selected."},
                                                       {A::Save, "use Save As"},
                                                       {A::Print, "shows no rows"}};
    for (const auto& [command, reason] : rows) {
        EXPECT_FALSE(action(command)->isEnabled()) << reason;
        EXPECT_TRUE(action(command)->toolTip().contains(reason)) << action(command)->toolTip().toStdString();
        EXPECT_TRUE(action(command)->statusTip().contains(reason));
    }
    EXPECT_TRUE(action(A::Export)->isEnabled()) << "needs no settings file";
    show("Memory Channels");
    EXPECT_TRUE(action(A::OpenIntoList)->text().contains("Add the channels"))
        << "added to those that are there";
    show("Local TargetList");
    EXPECT_TRUE(action(A::OpenIntoList)->text().contains("Replace the list"));
    EXPECT_TRUE(action(A::Import)->isEnabled());
    EXPECT_FALSE(window().GetTabs()->currentWidget()->findChild<Bar*>()->GetAction(Bar::Import)->isVisible());
    for (const QAction* menu : window().menuBar()->actions())
        EXPECT_TRUE(menu->text().contains('&')) << menu->text().toStdString();
}

TEST_F(Windows, TheKeyOfWhatIsOffTellsWhyForAWhile) {
    open({sample("targets.ltl")});
    ASSERT_TRUE(station->LoadFiles());
    window().Tell("told before");
    show("Detections");
    // The list itself would take the first one.
    for (const auto& [code, modifiers, reason] :
         {std::tuple(Qt::Key_C, Qt::ControlModifier, "Copy: No entry is selected."),
          std::tuple(Qt::Key_V, Qt::ControlModifier, "Paste: Detections does not have this."),
          std::tuple(Qt::Key_S, Qt::ControlModifier,
                     "Save: Detections has no file of its own: use Save As.")}) {
        window().GetActions().Refresh();
        key(code, modifiers);
        EXPECT_EQ(status(), reason);
    }
    window().statusBar()->clearMessage(); // as its time does
    EXPECT_EQ(status(), "told before");
    window().GetStrip()->GetField()->setFocus();
    key(Qt::Key_Delete);
    EXPECT_EQ(status(), "told before") << "the key means the text of the field there";
}

TEST_F(Windows, FindNextGoesToTheHitsOfOtherListsAndSaysWhenThereAreNone) {
    open({sample("targets.ltl")});
    ASSERT_TRUE(station->LoadFiles());
    show("Memory Channels");
    key(Qt::Key_F3);
    EXPECT_EQ(status(), "Type what is looked for into the filter");
    auto* filter = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    ASSERT_NE(filter, nullptr);
    QTest::keyClicks(filter, "BBC");
    action(A::FindNext)->trigger();
    EXPECT_TRUE(tabText().startsWith("Local TargetList")) << tabText().toStdString();
    auto* hits = window().GetTabs()->currentWidget()->findChild<SortListView*>();
    EXPECT_EQ(hits->CurrentPlace(), 0);
    key(Qt::Key_F3);
    EXPECT_EQ(hits->CurrentPlace(), 1);
    key(Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(hits->CurrentPlace(), 0);
    window().GetTabs()->currentWidget()->findChild<QLineEdit*>()->setText("nowhere");
    action(A::FindNext)->trigger();
    EXPECT_EQ(status(), "No list has a row with \"nowhere\"");
}

TEST_F(Windows, ImportAndExportFromTheMenuWork) {
    open({});
    show("Local TargetList");
    AnswerDialog(sample("targets.csv"));
    action(A::Import)->trigger();
    const int count = entriesOf("/Lists/LocalTargetList");
    EXPECT_GT(count, 0);
    AnswerDialog(Path("out.csv"));
    action(A::Export)->trigger();
    EXPECT_GT(Read(Path("out.csv")).count('\n'), count - 1);
}

TEST_F(Windows, TabsTellCountsAndUnsavedChangesByOneRule) {
    open({"--job", sample("job-hf.pij"), sample("targets.ltl")});
    ASSERT_TRUE(station->LoadFiles());
    SortListView* targets = show("Local TargetList");
    EXPECT_TRUE(Until([&] { return tabText() == "Local TargetList 527"; })) << tabText().toStdString();
    QCoreApplication::processEvents();
    EXPECT_EQ(title(), "Local TargetList - targets.ltl");
    select(targets, 0);
    Node* entry = Tree::Instance()->GetNode("/Lists/LocalTargetList")->Children().front();
    entry->FindOwnValue(Keys::KeyComment)->SetStringValue("new");
    EXPECT_TRUE(Until([&] { return tabText() == "Local TargetList 527*"; }));
    EXPECT_EQ(title(), "Local TargetList - targets.ltl*");
    AnswerDialog(Path("mine.xml"));
    action(A::SaveAs)->trigger();
    EXPECT_EQ(tabText(), "Local TargetList 527");
    EXPECT_EQ(title(), "Local TargetList - mine.xml");
    show("Memory Channels");
    EXPECT_FALSE(tabText().endsWith('*'));
    MemorySystemHandler::Instance()->SetNewEntry(7.1e6, 2700, "new", "USB");
    MemorySystemHandler::Instance()->UpdateJobFileEntries();
    EXPECT_EQ(tabText().endsWith('*'), station->GetJob().GetFileState() == Job::FileState::Older);
}

TEST_F(Windows, AllThatShowsSomethingHasANameForScreenReaders) {
    open({"--demo"});
    ASSERT_TRUE(station->LoadFiles());
    show("Local TargetList")->setCurrentItem(show("Local TargetList")->topLevelItem(0));
    for (QDockWidget* dock : window().findChildren<QDockWidget*>())
        dock->show();
    QCoreApplication::processEvents();
    int seen = 0;
    for (QWidget* widget : window().findChildren<QWidget*>()) {
        const bool shows = qobject_cast<QLabel*>(widget) && !static_cast<QLabel*>(widget)->text().isEmpty();
        const bool isOfQt = widget->objectName().startsWith("qt_") || widget->inherits("QScrollBar") ||
                            widget->inherits("QDockWidgetTitleButton") || widget->inherits("QTabBar") ||
                            widget->inherits("QComboBoxPrivateContainer") ||
                            (widget->parentWidget() && (widget->parentWidget()->inherits("QLineEdit") ||
                                                        widget->parentWidget()->inherits("QComboBox") ||
                                                        widget->parentWidget()->inherits("QTabBar")));
        if (isOfQt || (!shows && widget->focusPolicy() == Qt::NoFocus && !widget->inherits("LevelMeter")))
            continue;
        QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(widget);
        ASSERT_NE(accessible, nullptr);
        ++seen;
        EXPECT_FALSE(accessible->text(QAccessible::Name).isEmpty())
            << widget->metaObject()->className() << ' ' << widget->objectName().toStdString() << " in "
            << widget->parentWidget()->metaObject()->className() << ' '
            << widget->parentWidget()->objectName().toStdString();
    }
    EXPECT_GT(seen, 40);
}

TEST_F(Windows, TheMeterIsReadAsANumber) {
    open({});
    auto* meter = window().GetStrip()->findChild<LevelMeter*>();
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(meter);
    ASSERT_NE(accessible->valueInterface(), nullptr);
    EXPECT_EQ(accessible->valueInterface()->currentValue().toDouble(),
              station->GetReceiver().GetLevel()->GetValue());
    EXPECT_EQ(accessible->valueInterface()->minimumValue().toDouble(), -40);
    EXPECT_TRUE(accessible->text(QAccessible::Value).contains("threshold 20"))
        << accessible->text(QAccessible::Value).toStdString();
}

TEST_F(Windows, TheStripTunesByWhatIsTypedAndByStepsAndShowsWhatRuns) {
    open({});
    TuningStrip& strip = *window().GetStrip();
    key(Qt::Key_G, Qt::ControlModifier);
    ASSERT_EQ(QApplication::focusWidget(), strip.GetField());
    QTest::keyClicks(strip.GetField(), "7.055 MHz");
    key(Qt::Key_Return);
    EXPECT_EQ(tuned(), 7055000);
    const int width = strip.GetField()->width();
    QTest::keyClicks(strip.GetField(), "14230");
    EXPECT_EQ(strip.GetField()->UnderstoodText(), QString("14\u00A0230.000 kHz"));
    EXPECT_GT(strip.GetField()->textMargins().right(), 0) << "there is room to show it";
    QApplication::processEvents();
    EXPECT_EQ(strip.GetField()->width(), width) << "nothing moves while one types";
    EXPECT_EQ(tuned(), 7055000);
    key(Qt::Key_Escape);
    QTest::keyClicks(strip.GetField(), "31 MHz"); // out of reach
    key(Qt::Key_Return);
    EXPECT_EQ(tuned(), 7055000);
    EXPECT_EQ(strip.GetField()->GetFrequency(), 7055000);
    EXPECT_TRUE(status().contains("31.000000 MHz is outside")) << status().toStdString();
    strip.SetStep(5000);
    key(Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(tuned(), 7060000);
    key(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(tuned(), 7055000);
    auto* running = strip.findChild<QLabel*>("Running");
    EXPECT_EQ(running->text(), QString());
    station->GetSearch().SetRunning(true);
    station->GetSearch().Add(std::list<DetectionConventional>(3));
    strip.Refresh();
    EXPECT_EQ(running->text(), "Search running, 3 detections");
    for (QToolButton* button : strip.findChildren<QToolButton*>()) {
        if (button->text() == "Stop")
            QTest::mouseClick(button, Qt::LeftButton);
    }
    EXPECT_FALSE(station->GetSearch().IsRunning());
    EXPECT_EQ(running->text(), QString());
    EXPECT_TRUE(strip.findChild<QLabel*>("Time")->text().endsWith(" UTC"));
}

TEST_F(Windows, DetailsAreEditedInPlace) {
    open({"--job", sample("job-hf.pij")});
    ASSERT_TRUE(station->LoadFiles());
    SortListView* channels = show("Memory Channels");
    select(channels, 2);
    auto* details = window().findChild<QDockWidget*>("DetailsPanel");
    auto* comment = details->findChild<VCLineEdit*>("comment");
    ASSERT_NE(comment, nullptr);
    comment->setFocus();
    comment->selectAll();
    QTest::keyClicks(comment, "edited here");
    key(Qt::Key_Return);
    EXPECT_TRUE(Until([&] {
        return channels->topLevelItem(2)->text(2).contains("edited here") ||
               channels->currentItem()->CellText(2).contains("edited here");
    }));
    EXPECT_TRUE(station->GetJob().GetText().contains("edited here"));
    EXPECT_TRUE(tabText().endsWith('*')) << tabText().toStdString();
}

TEST_F(Windows, ALongFrequencyStandsWholeInTheDetailsOfANarrowWindow) {
    open({"--language", "de", sample("targets.ltl")});
    ASSERT_TRUE(station->LoadFiles());
    window().resize(1024, 600);
    select(window().GetTabs()->currentWidget()->findChild<SortListView*>(), 3);
    auto* field = window().findChild<QDockWidget*>("DetailsPanel")->findChild<VCLineEdit*>("frequency");
    ASSERT_TRUE(field && Until([&] { return field->isVisible(); }));
    QCoreApplication::processEvents();
    EXPECT_GT(field->width() - 10, field->fontMetrics().horizontalAdvance("145 500.000 000 MHz"));
}

TEST_F(Windows, MessagesStayAwayUntilThereIsAProblemOrTheyAreAskedFor) {
    open({});
    EXPECT_TRUE(station->LoadFiles());
    auto* dock = window().findChild<QDockWidget*>("MessagesPanel");
    auto* button = window().findChild<QToolButton*>("Problems");
    EXPECT_FALSE(dock->isVisible());
    const int height = window().statusBar()->height();
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_TRUE(dock->isVisible());
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_FALSE(dock->isVisible());
    start({Path("none.ltl")});
    EXPECT_FALSE(station->LoadFiles());
    EXPECT_TRUE(window().findChild<QDockWidget*>("MessagesPanel")->isVisible());
    EXPECT_EQ(window().findChild<QToolButton*>("Problems")->text(), "1 problem");
    EXPECT_EQ(window().statusBar()->height(), height);
}

TEST_F(Windows, ALongNameOfAReceiverLeavesRoomForWhatIsTold) {
    struct Link : ReceiverLink {
        QString GetName() const override { return QString(40, 'W') + " on the mast behind the house"; }
        void Begin() override { emit StateChanged(ReceiverState::NoAnswer, "nobody is there"); }
        void Set(const std::vector<ReceiverWord>&, quint64) override {}
    };
    open({});
    window().resize(1024, 600);
    station->GetReceiver().Attach(std::make_unique<Link>());
    QCoreApplication::processEvents();
    const auto* label = window().findChild<QLabel*>("ReceiverName");
    EXPECT_GT(label->x(), window().width() / 2);
    EXPECT_LT(window().findChild<QToolButton*>("Problems")->geometry().right(), window().width());
    EXPECT_EQ(label->toolTip(), Link().GetName() + ": no answer, nobody is there");
}

TEST_F(Windows, TheNextStartIsWhereTheLastOneEnded) {
    open({sample("targets.ltl")});
    ASSERT_TRUE(station->LoadFiles());
    show("NOI Frequencies");
    station->GetReceiver().Tune(7055000);
    window().GetStrip()->SetStep(9000);
    EXPECT_TRUE(window().close());
    open({});
    EXPECT_TRUE(station->LoadFiles());
    EXPECT_EQ(title().left(15), "NOI Frequencies");
    EXPECT_EQ(tuned(), 7055000);
    EXPECT_EQ(entriesOf("/Lists/LocalTargetList"), 527);
    QMenu* recent = window().GetRecentMenu();
    emit recent->aboutToShow();
    ASSERT_FALSE(recent->actions().isEmpty());
    EXPECT_TRUE(recent->actions().front()->text().contains("targets.ltl"));
}

TEST_F(Windows, TheWindowGetsAsSmallAsASmallScreen) {
    open({"--demo"});
    ASSERT_TRUE(station->LoadFiles());
    for (const QSize size : {QSize(1440, 860), QSize(1024, 600), QSize(800, 500), QSize(1440, 860)}) {
        window().resize(size);
        QCoreApplication::processEvents();
        EXPECT_EQ(window().size(), size);
        const bool isRoomy = size.width() > 1200;
        EXPECT_EQ(window().tabifiedDockWidgets(window().findChild<QDockWidget*>("DetailsPanel")).isEmpty(),
                  isRoomy);
        const QPoint end = window().GetTabs()->mapTo(&window(), window().GetTabs()->rect().bottomRight());
        EXPECT_LT(end.x(), size.width());
        EXPECT_LT(end.y(), size.height());
        const auto top = [this](const char* panel) { return window().findChild<QDockWidget*>(panel)->y(); };
        if (isRoomy) {
            EXPECT_LT(top("DetailsPanel"), top("ReceiverPanel"));
            EXPECT_LT(top("ReceiverPanel"), top("JobPanel"));
        }
    }
}

TEST_F(Windows, TheBarKeepsItsAxisWhereThereIsLittleRoom) {
    open({"--demo"});
    ASSERT_TRUE(station->LoadFiles());
    window().findChild<QDockWidget*>("TimePicture")->show();
    window().GetTabs()->currentWidget()->findChild<QLineEdit*>()->setText("5 MHz-30 MHz");
    FrequencyBar& bar = *window().GetBar();
    for (const int height : {600, 520, 860}) {
        window().resize(1024, height);
        QCoreApplication::processEvents();
        int bottom = 0;
        for (const int line : bar.ShownLists())
            bottom = std::max(bottom, bar.LineRect(line).bottom());
        EXPECT_GT(bar.height() - bottom, bar.fontMetrics().height()) << height;
    }
    EXPECT_EQ(bar.height(), bar.sizeHint().height());
}

TEST_F(Windows, KeysAndWelcomeFitASmallScreen) {
    open({});
    window().resize(1024, 560);
    window().findChild<QAction*>("welcome")->trigger();
    QApplication::processEvents();
    auto* page = window().findChild<WelcomePage*>();
    for (QWidget* part : page->findChildren<QPushButton*>())
        EXPECT_GE(part->height(), part->minimumSizeHint().height());
    for (QLabel* part : page->findChildren<QLabel*>())
        EXPECT_GE(part->height(), part->heightForWidth(part->width()));
    WhenOpen<QDialog>([&](QDialog& dialog) {
        EXPECT_LT(dialog.height(), 500); // 1600x1000 at twice the size
        EXPECT_TRUE(dialog.findChild<QTextBrowser*>()->toPlainText().contains("Find Previous"));
        dialog.reject();
    });
    window().findChild<QAction*>("keys")->trigger();
}

TEST_F(Windows, TheAnswerOfSendToStaysWhileTheSearchRuns) {
    open({"--demo"});
    ASSERT_TRUE(station->LoadFiles());
    SortListView* list = show("Detections");
    ASSERT_TRUE(Until([&] { return list->topLevelItemCount() > 3; }));
    key(Qt::Key_Home);
    ASSERT_TRUE(Until([&] { return action(A::SendTo)->isEnabled(); }));
    QMenu* menu = action(A::SendTo)->menu();
    emit menu->aboutToShow();
    menu->actions().front()->trigger();
    station->GetSearch().Simulate(30'000'000, QDateTime::currentMSecsSinceEpoch() * 1000 + 60'000'000);
    const int before = list->RowCount();
    ASSERT_TRUE(Until([&] { return list->RowCount() != before; }));
    EXPECT_TRUE(status().contains(" sent to ")) << status().toStdString();
}

TEST_F(Windows, APdfDocumentHasEveryRowThatIsShown) {
    open({});
    station->GetSearch().Simulate(600'000'000, 1'700'000'000'000'000);
    SortListView* list = show("Detections");
    ASSERT_TRUE(Until([&] { return list->RowCount() > 200; }));
    ASSERT_TRUE(Until([&] { return action(A::Pdf)->isEnabled(); }));
    AnswerDialog(Path("list.pdf"));
    action(A::Pdf)->trigger();
    const QByteArray bytes = Read(Path("list.pdf"));
    EXPECT_TRUE(bytes.startsWith("%PDF"));
    const auto pages = bytes.count("/Type /Page\n");
    EXPECT_GT(pages, list->RowCount() / 120) << list->RowCount();
    EXPECT_LT(pages, list->RowCount() / 30) << list->RowCount();
    auto* view = FreqStore::Instance().GetListIds().empty()
                     ? nullptr
                     : window().ViewOf(FreqStore::Instance().GetListIds().front());
    ASSERT_NE(view, nullptr);
    EXPECT_FALSE(ListPrint::WritePdf(*view, "x", Path("none/list.pdf")).isEmpty());
}

} // namespace
