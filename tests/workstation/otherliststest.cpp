// Lists that have no file of the program's: a plug-in's, and detections.

#include "controls/frequencystore/files/filelook.h"
#include "host/freqlist/undorecords.h"
#include "tests/workstation/unsavedquestion.h"
#include "tests/workstation/windowfixture.h"
#include "workstation/listwalk.h"
#include "workstation/recoverydialog.h"
#include "workstation/recoveryfile.h"
#include "workstation/safekeeping.h"
#include "workstation/simulatedsearch.h"

#include <QDir>
#include <QUndoStack>

#include "examples/bookmarks/bookmarks.cpp"

namespace {

class OtherLists : public Windows {
protected:
    void TearDown() override {
        endPlugIn();
        Windows::TearDown();
    }
    void startPlugIn() {
        FrequencyStorePlugInStart();
        m_hasPlugIn = true;
    }
    /// As the end of the program does it.
    void endPlugIn() {
        if (m_hasPlugIn)
            FrequencyStorePlugInStop();
        m_hasPlugIn = false;
        if (Node* list = Tree::Instance()->GetNode(QString::fromLatin1(NodePath)))
            list->GetParentNode()->DeleteNode(list);
    }
    void openAttended() {
        open({});
        station->SetAttended(true);
    }
    void deleteBookmark(int row) {
        select(show("Bookmarks"), row);
        window().BarOf(listId)->GetAction(Bar::Delete)->trigger();
        QApplication::processEvents();
    }
    Recovery& recovery() { return station->GetSafekeeping().GetRecovery(); }
    QDir folder() const { return QDir(Path("data/recovery")); }
    /// "list: entries" for each section of this process's recovery file.
    QStringList kept() {
        EXPECT_TRUE(recovery().WriteNow());
        QStringList texts;
        const RecoveryReader reader(recovery().GetFileName());
        for (const RecoverySection& section : reader.GetSections())
            texts << QStringLiteral("%1: %2").arg(section.head.key).arg(section.entries);
        return texts;
    }
    /// Another window finds what this one leaves when it is killed.
    void crash() {
        recovery().WriteNow(); // who has written so leaves the file
        station.reset();
        endPlugIn();
        Tree::Instance()->GetRoot()->DeleteChildren();
    }
    void restoreAll() {
        WhenOpen<RecoveryDialog>(
            [](RecoveryDialog& dialog) { dialog.findChild<QPushButton*>("restore")->click(); });
        EXPECT_FALSE(station->OfferRecovery());
    }
    static DetectionConventional detection(double hertz) {
        DetectionConventional record;
        record.SetFrequency(hertz);
        return record;
    }
    void importDetections() {
        const OperatorAction action("Open Sweep");
        station->GetSearch().Add({detection(7e6), detection(8e6)}, "sweep");
    }

private:
    bool m_hasPlugIn = false;
};

TEST_F(OtherLists, OfAPlugInComeBackAfterACrash) {
    openAttended();
    startPlugIn();
    EXPECT_EQ(kept(), QStringList()) << "what the plug-in itself has put there";
    deleteBookmark(1);
    EXPECT_TRUE(tabText().contains('*'));
    EXPECT_EQ(kept(), QStringList("/Lists/Bookmarks: 2"));
    crash();
    openAttended();
    EXPECT_TRUE(station->OfferRecovery()) << "nothing to ask about without the plug-in";
    EXPECT_TRUE(messages().contains("holds unsaved work of /Lists/Bookmarks, which is not there"));
    startPlugIn();
    ASSERT_EQ(entriesOf(NodePath), 3);
    restoreAll();
    ASSERT_EQ(entriesOf(NodePath), 2);
    EXPECT_EQ(show("Bookmarks")->topLevelItem(1)->CellText(1), "2 m calling");
    EXPECT_EQ(kept(), QStringList("/Lists/Bookmarks: 2"));
    EXPECT_EQ(folder().entryList({"*.recovery"}).size(), 1);
}

TEST_F(OtherLists, OfAPlugInAreAskedAboutAndSaved) {
    openAttended();
    startPlugIn();
    deleteBookmark(0);
    Write("mine.xml", "other");
    QString asked;
    CloseAndAnswer(window(), QDialogButtonBox::Save, {}, [&] {
        AnswerDialog(Path("mine"));
        AnswerQuestion(QMessageBox::No, asked);
    });
    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(asked, "Save Bookmarks As|mine.xml is there already. Replace it?");
    EXPECT_EQ(Read("mine.xml"), "other");
    EXPECT_EQ(
        CloseAndAnswer(window(), QDialogButtonBox::Save, {}, [this] { AnswerDialog(Path("mine.xml")); }).rows,
        QStringList("Bookmarks|2|never saved"));
    EXPECT_FALSE(window().isVisible());
    EXPECT_EQ(LookAtFile(Path("mine.xml")).rows, 2);
    window().show();
    deleteBookmark(0);
    EXPECT_EQ(title(), "Bookmarks - mine.xml*");
    action(A::Save)->trigger();
    EXPECT_EQ(LookAtFile(Path("mine.xml")).rows, 1);
    EXPECT_TRUE(window().close()) << "all is saved";
    window().show();
    UndoHistory::Instance().Stack().undo();
    EXPECT_EQ(kept(), QStringList("/Lists/Bookmarks: 2"));
}

TEST_F(OtherLists, OfDetectionsAreKeptWhenTheOperatorHasAddedSome) {
    openAttended();
    station->GetSearch().Simulate(60'000'000, 1'700'000'000'000'000);
    EXPECT_EQ(kept(), QStringList()) << "what a search finds";
    station->GetSearch().Clear();
    EXPECT_TRUE(window().close()) << "there is nothing left";
    window().show();
    importDetections();
    EXPECT_EQ(kept(), QStringList("detections: 2"));
    crash();
    openAttended();
    restoreAll();
    show("Detections");
    EXPECT_TRUE(Until([this] { return tabText() == "Detections 2*"; }));
    UndoHistory::Instance().Stack().undo();
    EXPECT_EQ(kept(), QStringList());
    UndoHistory::Instance().Stack().redo();
    EXPECT_EQ(kept(), QStringList("detections: 2"));
    EXPECT_EQ(
        CloseAndAnswer(window(), QDialogButtonBox::Save, {}, [this] { AnswerDialog(Path("found.xml")); })
            .rows,
        QStringList("Detections|2|never saved"));
    EXPECT_FALSE(window().isVisible());
    EXPECT_EQ(LookAtFile(Path("found.xml")).rows, 2);
    EXPECT_EQ(kept(), QStringList());
}

/// A search appends, and drops its oldest records, while they are walked through.
TEST_F(OtherLists, OfDetectionsAreWholeThoughTheyChangeWhileTheyAreWalked) {
    constexpr int Count = 20000;
    ValueList<DetectionConventional> list;
    std::list<DetectionConventional> records;
    const auto add = [&](unsigned id) {
        DetectionConventional record = detection(1e6);
        record.SetID(id);
        records.push_back(record);
    };
    for (unsigned id = 1; id <= Count; ++id)
        add(id);
    list.Append(std::move(records));
    ListWalk walk(EntriesOf(list));
    QByteArray bytes;
    unsigned turns = 0;
    for (; !walk.GoOn(1); ++turns) {
        bytes += walk.TakeBytes();
        records.clear();
        add(Count + turns + 1);
        list.Append(std::move(records));
        if (turns % 2 == 0)
            list.GetList().pop_front();
    }
    ASSERT_GT(turns, 3u);
    bytes += walk.TakeBytes();
    EXPECT_EQ(walk.EntryCount(), Count + turns);
    EXPECT_EQ(bytes.count("</FrequencyStoreEntry>"), Count + turns);
    EXPECT_EQ(bytes.count(QByteArray::number(Count - 1) + '"'), 1);
}

TEST_F(OtherLists, WhatIsTakenBackWhileARoundRunsIsNotKept) {
    openAttended();
    importDetections();
    QObject::connect(&recovery(), &Recovery::Begun, &window(), [] {
        QMetaObject::invokeMethod(
            qApp, [] { UndoHistory::Instance().Stack().undo(); }, Qt::QueuedConnection);
    });
    bool isWritten = false;
    QObject::connect(&recovery(), &Recovery::Written, &window(), [&] { isWritten = true; });
    recovery().SetInterval(0);
    ASSERT_TRUE(Until([&] { return isWritten; }));
    EXPECT_EQ(UndoHistory::Instance().Stack().index(), 0);
    EXPECT_TRUE(RecoveryReader(recovery().GetFileName()).GetSections().empty());
}

} // namespace
