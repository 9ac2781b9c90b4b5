// Undo and redo in the window: each way of work that changes a list.

#include "controls/frequencystore/common/paths.h"
#include "controls/frequencystore/memory/memorysystemhandler.h"
#include "controls/frequencystore/targets/targetlisthandler.h"
#include "host/base/longwork.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencynodelistview.h"
#include "host/freqlist/undohistory.h"
#include "tests/support/dialogs.h"
#include "tests/workstation/windowfixture.h"
#include "workstation/fileopener.h"
#include "workstation/historypanel.h"
#include "workstation/job.h"
#include "workstation/simulatedsearch.h"

#include <QDockWidget>
#include <QLineEdit>
#include <QUndoStack>

namespace {

class UndoInTheWindow : public Windows {
protected:
    static QUndoStack& stack() { return UndoHistory::Instance().Stack(); }
    /// All rows of a list, cell by cell.
    static QStringList rowsOf(SortListView* list) {
        QStringList rows;
        for (SortListViewItemIterator it(list); it.current(); ++it) {
            QStringList cells;
            for (int column = 0; column < list->columnCount(); ++column)
                cells << it.current()->CellText(column);
            rows << cells.join('|');
        }
        return rows;
    }
    static QString textAt(const QLatin1String& path) {
        return Tree::Instance()->GetValue(path)->GetStringValue();
    }
    void undo() { key(Qt::Key_Z, Qt::ControlModifier); }
    void redo() { key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier); }
};

TEST_F(UndoInTheWindow, EachCommandOnEachListIsAStep) {
    open({"--receiver", "vuhf", "--job", sample("job-vuhf.pij"), sample("targets.xml"),
          sample("interest.noi"), sample("results.xml")});
    ASSERT_TRUE(station->LoadFiles());
    EXPECT_FALSE(action(A::Undo)->isEnabled()) << "what the program begins with is no step";
    EXPECT_TRUE(action(A::Undo)->toolTip().endsWith("Nothing has been changed yet."));
    const std::pair<A::Command, QString> commands[] = {
        {A::Delete, "Delete 3 entries"},       {A::Cut, "Cut 3 entries"},
        {A::Paste, "Paste 3 entries"},         {A::New, "New 1 entry"},
        {A::Duplicate, "Duplicate 3 entries"},
    };
    for (const char* name : {"Local TargetList", "NOI Frequencies", "Memory Channels"}) {
        SCOPED_TRACE(name);
        SortListView* list = show(name);
        const QStringList before = rowsOf(list);
        const QString job = textAt(Paths::JobText);
        const QString bands = textAt(Paths::NoiDefinition);
        for (const auto& [command, step] : commands) {
            SCOPED_TRACE(step.toStdString());
            list->setFocus();
            list->SelectPlace(1);
            key(Qt::Key_Down, Qt::ShiftModifier);
            key(Qt::Key_Down, Qt::ShiftModifier);
            if (command == A::Paste)
                action(A::Copy)->trigger();
            ASSERT_TRUE(Until([&] { return action(command)->isEnabled(); }));
            action(command)->trigger();
            const QStringList after = rowsOf(list);
            const QString jobAfter = textAt(Paths::JobText);
            EXPECT_NE(before, after);
            EXPECT_EQ(stack().undoText(), step + " - " + name);
            show("Data Results");
            undo();
            EXPECT_EQ(window().TabName(window().GetTabs()->currentIndex()), name) << "the list is shown";
            EXPECT_EQ(rowsOf(list), before);
            EXPECT_EQ(textAt(Paths::JobText), job);
            EXPECT_EQ(textAt(Paths::NoiDefinition), bands);
            redo();
            EXPECT_EQ(rowsOf(list), after);
            EXPECT_EQ(textAt(Paths::JobText), jobAfter);
            undo();
        }
        EXPECT_EQ(stack().count(), 1) << "a new step takes the place of what was taken back";
    }
}

TEST_F(UndoInTheWindow, ValuesThatAreEditedAreStepsAndTheJobFollows) {
    open({"--receiver", "vuhf", "--job", sample("job-vuhf.pij")});
    ASSERT_TRUE(station->LoadFiles());
    SortListView* list = show("Memory Channels");
    auto* view = qobject_cast<FrequencyNodeListView*>(list);
    ASSERT_NE(view, nullptr);
    const QStringList before = rowsOf(list);
    const QString job = textAt(Paths::JobText);
    const int comment = static_cast<int>(list->ColumnTitles().indexOf("Comment"));

    view->selectAll();
    EXPECT_EQ(view->FillColumn(comment, "all the same").written, before.size());
    EXPECT_EQ(stack().undoText(), QStringLiteral("Fill %1 entries - Memory Channels").arg(before.size()));

    list->SelectPlace(2);
    ASSERT_TRUE(list->EditCell());
    auto* cell = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    ASSERT_NE(cell, nullptr);
    cell->selectAll();
    QTest::keyClicks(cell, "118.5 MHz");
    QTest::keyClick(cell, Qt::Key_Return);
    EXPECT_EQ(stack().undoText(), "Edit 1 entry - Memory Channels");

    auto* field = window().findChild<QDockWidget*>("DetailsPanel")->findChild<QLineEdit*>("comment");
    ASSERT_NE(field, nullptr);
    field->setFocus();
    field->selectAll();
    QTest::keyClicks(field, "by the panel");
    QTest::keyClick(field, Qt::Key_Return);
    ASSERT_EQ(stack().count(), 3);
    EXPECT_TRUE(textAt(Paths::JobText).contains("by the panel"));
    EXPECT_EQ(station->GetJob().GetFileState(), Job::FileState::Older);

    while (stack().canUndo())
        action(A::Undo)->trigger();
    EXPECT_EQ(rowsOf(list), before);
    EXPECT_EQ(textAt(Paths::JobText), job);
    EXPECT_EQ(station->GetJob().GetFileState(), Job::FileState::Same) << "nothing is to be saved";
    while (stack().canRedo())
        action(A::Redo)->trigger();
    EXPECT_TRUE(textAt(Paths::JobText).contains("by the panel"));
    EXPECT_TRUE(textAt(Paths::JobText).contains("all the same"));
    EXPECT_TRUE(textAt(Paths::JobText).contains("118500000"));
}

TEST_F(UndoInTheWindow, AFileThatWasReadOverAListIsTakenBackWithItsName) {
    const QString bands = writeBands("bands.xml", 3);
    open({sample("targets.xml"), sample("interest.noi")});
    ASSERT_TRUE(station->LoadFiles());
    SortListView* targets = show("Local TargetList");
    const QStringList before = rowsOf(targets);
    ASSERT_TRUE(station->GetOpener().Open(sample("targets.ltl")));
    EXPECT_EQ(title(), "Local TargetList - targets.ltl");
    undo();
    EXPECT_EQ(rowsOf(targets), before);
    EXPECT_EQ(title(), "Local TargetList - targets.xml");
    redo();
    EXPECT_NE(rowsOf(targets), before);
    EXPECT_EQ(title(), "Local TargetList - targets.ltl");

    SortListView* noi = show("NOI Frequencies");
    const QStringList noiBefore = rowsOf(noi);
    const QString definition = textAt(Paths::NoiDefinition);
    const QString file = NOIFrequencyHandler::Instance()->GetCurrentFileName();
    ASSERT_TRUE(station->GetOpener().Open(bands));
    EXPECT_EQ(noi->RowCount(), 3);
    undo();
    EXPECT_EQ(rowsOf(noi), noiBefore);
    EXPECT_EQ(textAt(Paths::NoiDefinition), definition);
    EXPECT_EQ(NOIFrequencyHandler::Instance()->GetCurrentFileName(), file);
    EXPECT_TRUE(title().startsWith("NOI Frequencies - interest.noi"));
}

TEST_F(UndoInTheWindow, AReadThatIsUndoneLeavesTheMarkOfBefore) {
    const QString mine = Write("mine.ltl", Read(sample("targets.ltl")));
    open({mine});
    ASSERT_TRUE(station->LoadFiles());
    SortListView* targets = show("Local TargetList");
    const auto edit = [&] {
        targets->setFocus();
        targets->SelectPlace(0);
        ASSERT_TRUE(Until([&] { return action(A::Delete)->isEnabled(); }));
        action(A::Delete)->trigger();
    };
    edit();
    ASSERT_TRUE(station->GetOpener().Open(sample("targets.xml")));
    EXPECT_EQ(title(), "Local TargetList - targets.xml");
    edit();
    undo();
    undo();
    EXPECT_EQ(title(), "Local TargetList - mine.ltl*") << "the first edit is in no file";
    redo();
    EXPECT_EQ(title(), "Local TargetList - targets.xml") << "as it was left, with its edit undone";
    undo();
    action(A::Save)->trigger();
    EXPECT_EQ(title(), "Local TargetList - mine.ltl");
    redo();
    undo();
    EXPECT_EQ(title(), "Local TargetList - mine.ltl");
    // The file of before is overwritten with the other content.
    redo();
    ASSERT_TRUE(TargetListHandler::Instance()->SaveFile(mine));
    FileGate::WasWritten(FileGate::List::Targets, mine);
    undo();
    EXPECT_EQ(title(), "Local TargetList - mine.ltl*");
}

TEST_F(UndoInTheWindow, AListThatWasSavedForAnotherFileComesBackAsItWasSaved) {
    const QString mine = Write("mine.ltl", Read(sample("targets.ltl")));
    const QString other = Write("other.ltl", "");
    open({mine});
    ASSERT_TRUE(station->LoadFiles());
    station->SetAttended(true);
    show("Local TargetList");
    const auto openOther = [&] { station->GetOpener().Open(sample("targets.xml")); };
    TargetListHandler& targets = *TargetListHandler::Instance();
    const auto addNew = [&] {
        const OperatorAction step("New");
        ASSERT_TRUE(targets.AddNew());
    };
    addNew();
    EXPECT_EQ(title(), "Local TargetList - mine.ltl*");
    Answered(QMessageBox::Save, openOther);
    EXPECT_EQ(title(), "Local TargetList - targets.xml");
    stack().undo();
    EXPECT_EQ(title(), "Local TargetList - mine.ltl");
    stack().redo();
    EXPECT_EQ(title(), "Local TargetList - targets.xml");
    addNew();
    stack().undo();
    ASSERT_TRUE(targets.SaveAsOwn(other));
    EXPECT_EQ(title(), "Local TargetList - other.ltl");
    stack().undo();
    EXPECT_EQ(title(), "Local TargetList - mine.ltl") << "whatever became of the other one";
    stack().redo();
    EXPECT_EQ(title(), "Local TargetList - other.ltl");
    // A list that has no file gets one when it is saved.
    targets.GetItemsRoot()->DeleteChildren();
    station->GetOpener().SetFileOf(FileGate::List::Targets, QString());
    addNew();
    EXPECT_EQ(title(), "Local TargetList*");
    QString asked;
    AnswerQuestion(QMessageBox::Save, asked, [this] { AnswerDialog(Path("named.xml")); });
    openOther();
    stack().undo();
    EXPECT_EQ(title(), "Local TargetList - named.xml");
}

TEST_F(UndoInTheWindow, AStepThatGoesOnBehindCancelledWorkKnowsTheMarkOfBefore) {
    open({Write("mine.ltl", Read(sample("targets.ltl")))});
    ASSERT_TRUE(station->LoadFiles());
    show("Local TargetList");
    Node* const targets = TargetListHandler::Instance()->GetItemsRoot();
    const auto drop = [&] {
        const OperatorAction step("Delete");
        targets->DeleteNode(targets->Children().front());
    };
    {
        const OperatorAction step("Several");
        EXPECT_FALSE(LongWork::Run("the first", [&] {
            targets->DeleteChildren();
            throw WorkCancelled();
        }));
        drop();
    }
    ASSERT_TRUE(TargetListHandler::Instance()->SaveAsOwn(Path("mine.ltl")));
    drop();
    stack().undo();
    EXPECT_EQ(title(), "Local TargetList - mine.ltl");
    stack().undo();
    EXPECT_EQ(title(), "Local TargetList - mine.ltl*") << "the file lacks what came back";
}

TEST_F(UndoInTheWindow, AJobThatWasSavedForAnotherOneComesBackAsItWasSaved) {
    open({"--receiver", "vuhf"});
    ASSERT_TRUE(station->LoadFiles());
    station->SetAttended(true);
    MemorySystemHandler::Instance()->SetNewEntry(118500000, 8333, "mine", "AM");
    QString asked;
    AnswerQuestion(QMessageBox::Save, asked, [this] { AnswerDialog(Path("mine.pij")); });
    ASSERT_TRUE(station->GetOpener().Open(sample("job-vuhf.pij")));
    EXPECT_EQ(station->GetJob().GetFileName(), sample("job-vuhf.pij"));
    stack().undo();
    EXPECT_EQ(station->GetJob().GetFileName(), Path("mine.pij"));
    EXPECT_EQ(station->GetJob().GetFileState(), Job::FileState::Same);
    EXPECT_FALSE(station->GetJob().HasUnsavedChanges());
}

TEST_F(UndoInTheWindow, AStepThatIsUndoneTakesItsMarkWithIt) {
    const QString targets = Write("mine.ltl", Read(sample("targets.ltl")));
    const QString interest = Write("mine.noi", Read(sample("interest.noi")));
    open({targets, interest});
    ASSERT_TRUE(station->LoadFiles());
    const std::pair<const char*, const char*> lists[] = {{"Local TargetList", "/Lists/LocalTargetList"},
                                                         {"NOI Frequencies", "/Lists/NOIFrequencies"}};
    for (const auto& [name, path] : lists) {
        SCOPED_TRACE(name);
        SortListView* list = show(name);
        const auto comment = [&] {
            const Node* entry = Tree::Instance()->GetNode(path)->Children().front();
            return entry->FindOwn<Value<QString>>(Keys::KeyComment);
        };
        const auto isMarked = [&] { return title().endsWith('*'); };
        const std::function<void()> steps[] = {
            [&] {
                list->setFocus();
                list->SelectPlace(1);
                ASSERT_TRUE(Until([&] { return action(A::Delete)->isEnabled(); }));
                action(A::Delete)->trigger();
            },
            [&] {
                const OperatorAction edit("Edit");
                comment()->SetValue(comment()->GetValue() + " edited");
            },
        };
        for (const auto& step : steps) {
            step();
            EXPECT_TRUE(isMarked());
            undo();
            EXPECT_FALSE(isMarked());
            redo();
            EXPECT_TRUE(isMarked());
            step();
            undo();
            EXPECT_TRUE(isMarked()) << "one of two steps is there still";
            undo();
            EXPECT_FALSE(isMarked());
            redo();
            action(A::Save)->trigger();
            EXPECT_FALSE(isMarked());
            undo();
            EXPECT_TRUE(isMarked());
            redo();
            EXPECT_FALSE(isMarked());
        }
        steps[0]();
        comment()->SetValue("by others");
        undo();
        EXPECT_TRUE(isMarked()) << "what is no step is in no file";
        action(A::Save)->trigger();
    }
}

TEST_F(UndoInTheWindow, AJobThatWasOpenedIsTakenBackWithItsFile) {
    open({"--receiver", "vuhf", "--job", sample("job-vuhf.pij")});
    ASSERT_TRUE(station->LoadFiles());
    SortListView* list = show("Memory Channels");
    const QStringList before = rowsOf(list);
    const QString job = textAt(Paths::JobText);
    const QString other = Write("other.pij", "<JOB><SUBJOB><TDS><MEMORYSCAN/></TDS></SUBJOB></JOB>\n");
    ASSERT_TRUE(station->GetJob().Open(other));
    EXPECT_EQ(list->RowCount(), 0);
    undo();
    EXPECT_EQ(rowsOf(list), before);
    EXPECT_EQ(textAt(Paths::JobText), job);
    EXPECT_EQ(station->GetJob().GetFileName(), sample("job-vuhf.pij"));
    EXPECT_EQ(station->GetJob().GetFileState(), Job::FileState::Same);
    EXPECT_EQ(MemorySystemHandler::Instance()->GetJobfileName(), sample("job-vuhf.pij"));
    redo();
    EXPECT_EQ(list->RowCount(), 0);
    EXPECT_EQ(station->GetJob().GetFileName(), other);
}

TEST_F(UndoInTheWindow, DetectionsComeBackUnlessASearchHasWrittenMeanwhile) {
    open({});
    SimulatedSearch& search = station->GetSearch();
    search.Simulate(60000000, 1700000000000000);
    const auto* found =
        Tree::Instance()->Find<ValueList<DetectionConventional>>(SimulatedSearch::DetectionsPath);
    const quint64 count = found->Size();
    ASSERT_GT(count, 0u);
    EXPECT_EQ(stack().count(), 0) << "what a search finds is no step";
    const std::list<DetectionConventional> before = found->Elements();
    search.Clear();
    EXPECT_EQ(found->Size(), 0u);
    EXPECT_EQ(stack().undoText(), QStringLiteral("Clear %1 entries - Detections").arg(count));
    stack().undo();
    EXPECT_TRUE(found->Elements() == before);
    stack().redo();
    EXPECT_EQ(found->Size(), 0u);
    search.Simulate(60000000, 1700000100000000);
    const quint64 fresh = found->Size();
    stack().undo();
    EXPECT_EQ(found->Size(), fresh);
    EXPECT_TRUE(status().contains("cannot be undone")) << status().toStdString();

    {
        const OperatorAction action(QStringLiteral("Open Sweep"));
        search.Add(std::list<DetectionConventional>(2), "sweep.csv");
        search.Add(std::list<DetectionConventional>(3), "sweep.csv");
    }
    EXPECT_EQ(stack().undoText(), "Open Sweep 5 entries - Detections");
    stack().undo();
    EXPECT_EQ(found->Size(), fresh);
    stack().redo();
    EXPECT_EQ(found->Size(), fresh + 5);
}

TEST_F(UndoInTheWindow, TheHistoryGoesBackByManySteps) {
    open({sample("targets.xml")});
    ASSERT_TRUE(station->LoadFiles());
    SortListView* list = show("Local TargetList");
    const QStringList before = rowsOf(list);
    for (int i = 0; i < 4; ++i) {
        list->SelectPlace(i);
        ASSERT_TRUE(Until([&] { return action(A::Delete)->isEnabled(); }));
        action(A::Delete)->trigger();
    }
    auto* history = window().findChild<HistoryPanel*>();
    ASSERT_NE(history, nullptr);
    EXPECT_EQ(history->model()->rowCount(), 5);
    EXPECT_EQ(history->model()->index(1, 0).data().toString(), "Delete 1 entry - Local TargetList");
    history->setCurrentIndex(history->model()->index(0, 0));
    EXPECT_EQ(rowsOf(list), before);
    EXPECT_EQ(list->RowCount(), before.size());
    history->setCurrentIndex(history->model()->index(4, 0));
    EXPECT_EQ(list->RowCount(), before.size() - 4);
}

} // namespace
