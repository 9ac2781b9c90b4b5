#include "controls/frequencystore/files/filelook.h"
#include "controls/frequencystore/targets/targetlisthandler.h"
#include "host/report/filestamps.h"
#include "host/report/fileversions.h"
#include "host/report/outputfile.h"
#include "tests/support/dialogs.h"
#include "tests/workstation/windowfixture.h"
#include "workstation/fileopener.h"
#include "workstation/mergedialog.h"
#include "workstation/versionsdialog.h"

#include <QPushButton>
#include <QTest>
#include <QTreeWidget>

namespace {

using Box = QMessageBox;

constexpr char Targets[] = "/Lists/LocalTargetList";

class FilesOnDisk : public Windows {
protected:
    void SetUp() override { FileStamps::ForgetAll(); }
    void TearDown() override {
        Windows::TearDown();
        REPORTGENERATOR::ForgetWriteFailure();
    }
    static QByteArray lines(int count) {
        QByteArray text;
        for (int i = 0; i < count; ++i)
            text += QByteArray::number(7000000 + 1000 * i) + "\tentry\t100\tAM\n";
        return text;
    }
    /// A window that shows a list of two targets.
    void openList() {
        open({Write("list.sfl", lines(2))});
        station->SetAttended(true);
        station->LoadFiles();
        ASSERT_EQ(entriesOf(Targets), 2);
    }
    /// Another program writes the list, which is noticed and answered; what was asked.
    QString changeAndAnswer(int entries, Box::StandardButton answer) {
        QString asked;
        AnswerQuestion(answer, asked);
        Write("list.sfl", lines(entries));
        EXPECT_TRUE(Until([&] { return !asked.isEmpty(); }));
        QApplication::processEvents();
        return asked;
    }
    QString save() {
        const QString path = Path("list.sfl");
        TargetListHandler& list = *TargetListHandler::Instance();
        if (!list.SaveFile(path))
            return "not saved";
        FileGate::WasWritten(FileGate::List::Targets, path);
        return "saved";
    }
};

TEST_F(FilesOnDisk, AreReadAnewWhenTheOperatorSaysSo) {
    openList();
    EXPECT_EQ(changeAndAnswer(5, Box::Yes), "File Changed|Another program has changed list.sfl.");
    EXPECT_EQ(entriesOf(Targets), 5);
    EXPECT_FALSE(tabText().contains('*'));
    EXPECT_EQ(save(), "saved");
}

TEST_F(FilesOnDisk, AreReplacedWithoutAnotherQuestionWhenTheListIsKept) {
    openList();
    changeAndAnswer(5, Box::No);
    EXPECT_EQ(entriesOf(Targets), 2);
    EXPECT_TRUE(tabText().contains('*')) << "the list is in no file now";
    EXPECT_EQ(save(), "saved");
    EXPECT_EQ(LookAtFile(Path("list.sfl")).rows, 2);
    const auto versions = FileVersions(Path("data/versions")).Of(Path("list.sfl"));
    ASSERT_EQ(versions.size(), 2u);
    EXPECT_EQ(Read(versions[1].path), lines(5)) << "what the other program wrote is kept";
}

TEST_F(FilesOnDisk, AreMergedIntoTheListAndAskedAboutAgainWhenThatCameToNothing) {
    openList();
    int previews = 0;
    QString asked;
    const std::function<void()> answerPreview = [&] {
        WhenOpen<MergeDialog>([&](MergeDialog& dialog) {
            if (++previews == 2)
                return dialog.accept();
            AnswerQuestion(Box::Apply, asked, answerPreview);
            dialog.reject();
        });
    };
    AnswerQuestion(Box::Apply, asked, answerPreview);
    Write("list.sfl", lines(5));
    ASSERT_TRUE(Until([&] { return previews == 2; }));
    QApplication::processEvents();
    EXPECT_EQ(entriesOf(Targets), 5);
    EXPECT_TRUE(tabText().contains('*')) << "what was merged is in no file";
    EXPECT_EQ(save(), "saved") << "the operator has seen the file";
}

TEST_F(FilesOnDisk, OfAJobAreReplacedWithoutAnotherQuestionWhenTheJobIsKept) {
    const QString job = Write("my.pij", Read(sample("job-hf.pij")));
    open({"--job", job});
    station->SetAttended(true);
    station->LoadFiles();
    QString asked;
    AnswerQuestion(Box::No, asked);
    Write("my.pij", Read(sample("job-hf.pij")).replace("Revision=\"7\"", "Revision=\"8\""));
    ASSERT_TRUE(Until([&] { return !asked.isEmpty(); }));
    QApplication::processEvents();
    show("Memory Channels");
    EXPECT_TRUE(tabText().contains('*')) << "the channels are in no file now";
    window().GetFileMenu()->findChild<QAction*>("save-job")->trigger();
    EXPECT_FALSE(tabText().contains('*'));
    EXPECT_TRUE(Read("my.pij").contains("Revision=\"7\""));
}

TEST_F(FilesOnDisk, AreAskedAboutBeforeASaveThatComesFirst) {
    openList();
    struct Row {
        Box::StandardButton answer;
        QString result;
        int rows; ///< of the file afterwards
    };
    for (const auto& [answer, result, rows] :
         {Row{Box::Cancel, "not saved", 7}, {Box::No, "saved", 7}, {Box::Yes, "saved", 5}}) {
        TargetListHandler::Instance()->AddNew();
        Write("list.sfl", lines(7));
        QString saved;
        const QString asked = Answered(answer, [&] { saved = save(); });
        EXPECT_EQ(asked, "File Changed|Another program has changed list.sfl since it was read.");
        EXPECT_EQ(saved, result);
        EXPECT_EQ(LookAtFile(Path("list.sfl")).rows, rows);
        EXPECT_EQ(QFile::exists(Path("list-2.sfl")), answer != Box::Cancel);
    }
}

TEST_F(FilesOnDisk, ThatAreGoneLeaveTheListUnsaved) {
    openList();
    QFile::remove(Path("list.sfl"));
    EXPECT_TRUE(Until([&] { return tabText().contains('*'); }));
    EXPECT_TRUE(status().contains("list.sfl is gone from the disk")) << status().toStdString();
}

TEST_F(FilesOnDisk, ThatUndoBringsBackAreLookedAtAgain) {
    openList();
    show("Local TargetList");
    const auto openOther = [&] { return station->GetOpener().Open(sample("targets.ltl")); };
    const auto undo = [&] { action(A::Undo)->trigger(); };
    ASSERT_TRUE(openOther());
    Write("list.sfl", lines(5));
    QString asked;
    AnswerQuestion(Box::No, asked);
    undo();
    EXPECT_TRUE(tabText().contains('*')) << "the file is another one";
    EXPECT_TRUE(Until([&] { return !asked.isEmpty(); }));
    QApplication::processEvents();
    EXPECT_EQ(asked, "File Changed|Another program has changed list.sfl.");
    EXPECT_EQ(save(), "saved");
    EXPECT_FALSE(tabText().contains('*'));
    ASSERT_TRUE(openOther());
    QFile::remove(Path("list.sfl"));
    undo();
    EXPECT_TRUE(Until([&] { return status().contains("list.sfl is gone from the disk"); }));
    EXPECT_TRUE(tabText().contains('*'));
    EXPECT_EQ(entriesOf(Targets), 2);
}

TEST_F(FilesOnDisk, AreAskedAboutWhenTheDialogThatIsOpenIsDone) {
    openList();
    show("Local TargetList");
    ASSERT_TRUE(Until([&] { return action(A::Merge)->isEnabled(); }));
    QString asked;
    WhenOpen<MergeDialog>([&](MergeDialog& dialog) {
        AnswerQuestion(Box::No, asked);
        Write("list.sfl", lines(5));
        QTest::qWait(1000); // it would be asked by then
        EXPECT_EQ(asked, QString());
        dialog.accept();
    });
    AnswerDialog(Write("theirs.sfl", "8000000\tother\t100\tAM\n"));
    action(A::Merge)->trigger();
    EXPECT_EQ(entriesOf(Targets), 3) << "as it was seen";
    EXPECT_TRUE(Until([&] { return !asked.isEmpty(); }));
}

TEST_F(FilesOnDisk, AreToldWhereNobodyCanBeAsked) {
    openList();
    station->SetAttended(false);
    Write("list.sfl", lines(5));
    EXPECT_TRUE(Until([&] { return messages().contains("was changed by another program"); }));
    TargetListHandler::Instance()->AddNew();
    EXPECT_EQ(save(), "saved");
    EXPECT_EQ(Read("list.sfl"), lines(5));
    EXPECT_EQ(LookAtFile(Path("list-2.sfl")).rows, 3);
}

TEST_F(FilesOnDisk, HaveVersionsThatAreListedAndRestored) {
    openList();
    show("Local TargetList");
    ASSERT_TRUE(window().findChild<QAction*>("versions")->isEnabled());
    for (int i = 0; i < 2; ++i) {
        TargetListHandler::Instance()->AddNew();
        EXPECT_EQ(save(), "saved");
    }
    QStringList rows;
    WhenOpen<VersionsDialog>([&](VersionsDialog& dialog) {
        auto* table = dialog.findChild<QTreeWidget*>();
        EXPECT_TRUE(
            Until([&] { return table->topLevelItem(table->topLevelItemCount() - 1)->text(3) != "..."; }));
        for (int row = 0; row < table->topLevelItemCount(); ++row)
            rows << table->topLevelItem(row)->text(1) + ' ' + table->topLevelItem(row)->text(3);
        table->setCurrentItem(table->topLevelItem(2));
        dialog.accept();
    });
    window().findChild<QAction*>("versions")->trigger();
    // What is read as ".sfl" is written in another layout, so all entries of the first version differ.
    EXPECT_EQ(rows.join('|'), "4 nothing|3 1 added|2 2 added, 2 changed");
    EXPECT_EQ(entriesOf(Targets), 2);
    EXPECT_TRUE(tabText().contains('*'));
    EXPECT_EQ(LookAtFile(Path("list.sfl")).rows, 4) << "the file stays until it is saved";
    EXPECT_TRUE(title().contains("list.sfl")) << title().toStdString();
}

} // namespace
