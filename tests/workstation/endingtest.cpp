#include "workstation/ending.h"

#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/common/paths.h"
#include "controls/frequencystore/files/filelook.h"
#include "controls/frequencystore/memory/memorysystemhandler.h"
#include "controls/frequencystore/results/searchmcdatahandler.h"
#include "controls/frequencystore/results/searchmcdataresult.h"
#include "controls/frequencystore/targets/targetlisthandler.h"
#include "controls/frequencystore/targets/wkflistentry.h"
#include "host/report/outputfile.h"
#include "host/startup/cfgcenter.h"
#include "tests/workstation/stationfixture.h"
#include "tests/workstation/unsavedquestion.h"
#include "workstation/failurenote.h"
#include "workstation/fileopener.h"
#include "workstation/simulatedclassifier.h"
#include "workstation/simulatedsearch.h"
#include "workstation/unsaveddialog.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QSessionManager>
#include <QTreeWidget>

#include <csignal>

namespace {

using Box = QMessageBox;

NOIFrequencyHandler& noi() {
    return *NOIFrequencyHandler::Instance();
}

class Endings : public Workstations {
protected:
    /// A window before which somebody sits.
    void startAttended() {
        start({});
        station->SetAttended(true);
    }
    /// Closes the window and answers what is asked; what was asked.
    QString close(Box::StandardButton answer, const std::function<void()>& then = {}) {
        QString seen;
        AnswerQuestion(answer, seen, then);
        station->GetWindow().close();
        return seen;
    }
    bool isOpen() const { return station->GetWindow().isVisible(); }
    void blockDefaultFile() { QDir(Path("data")).mkpath("NoiFrequencies.xml"); }
    void freeDefaultFile() { QDir(Path("data")).rmdir("NoiFrequencies.xml"); }
    static QString rememberedFile() {
        return CfgCenter::GetAppCfg(ICfg::StartUp).GetString(NoiKeeper::SettingName(), QString());
    }
    void remember(const QString& file) {
        QDir().mkpath(Path("config"));
        CfgCenter::SetDirectory(Path("config"));
        CfgCenter::GetAppCfg(ICfg::StartUp).SetString(NoiKeeper::SettingName(), file);
    }
    void SetUp() override { QGuiApplication::setQuitOnLastWindowClosed(false); }
    void TearDown() override {
        Workstations::TearDown();
        QGuiApplication::setQuitOnLastWindowClosed(true);
        REPORTGENERATOR::ForgetWriteFailure();
    }
};

TEST_F(Endings, NothingIsAskedWhenAllIsSavedOrNothingWasThere) {
    writeBands("NoiFrequencies.xml", 3); // nobody's, in an empty session
    startAttended();
    EXPECT_TRUE(station->GetWindow().close());
    start({});
    station->SetAttended(true);
    noi().InsertNewValue(7e6, 3000, "mine");
    EXPECT_TRUE(station->GetWindow().close());
    EXPECT_EQ(LookAtFile(Path("data/NoiFrequencies.xml")).rows, 1);
    EXPECT_EQ(station->GetEnding().ExitCode(), 0);
}

TEST_F(Endings, AFailedSaveIsAskedAboutBeforeTheWindowGoes) {
    blockDefaultFile();
    startAttended();
    noi().InsertNewValue(7e6, 3000, "mine");
    EXPECT_TRUE(close(Box::Cancel).contains("could not be saved in NoiFrequencies.xml"));
    EXPECT_TRUE(isOpen());
    close(Box::Retry, [this] { freeDefaultFile(); });
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(LookAtFile(Path("data/NoiFrequencies.xml")).rows, 1);
}

TEST_F(Endings, AListThatCannotBeSavedIsSavedElsewhereOrLeft) {
    blockDefaultFile();
    startAttended();
    noi().InsertNewValue(7e6, 3000, "mine");
    close(Box::Discard);
    EXPECT_FALSE(isOpen());
    station->GetWindow().show();
    close(Box::Save, [this] { AnswerDialog(Path("elsewhere.xml")); });
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(LookAtFile(Path("elsewhere.xml")).rows, 1);
    station.reset();
    EXPECT_EQ(rememberedFile(), Path("elsewhere.xml"));
}

TEST_F(Endings, AListWhoseFileACancelledDialogHasForgottenIsAskedAbout) {
    startAttended();
    noi().InsertNewValue(7e6, 3000, "mine");
    AnswerDialog(QString());
    noi().FileOpen();
    EXPECT_TRUE(close(Box::Cancel).contains("have no file"));
    EXPECT_TRUE(isOpen());
    close(Box::Save, [this] { AnswerDialog(Path("data/mine.xml")); });
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(LookAtFile(Path("data/mine.xml")).rows, 1);
}

TEST_F(Endings, AnEmptiedListMayEmptyItsFile) {
    for (const auto& [answer, left] : {std::pair{Box::No, 2}, std::pair{Box::Yes, 0}}) {
        const QString file = writeBands("bands.xml", 2);
        remember(file);
        startAttended();
        ASSERT_EQ(entriesOf("/Lists/NOIFrequencies"), 2);
        noi().GetItemsRoot()->DeleteChildren();
        noi().UpdateNOIList();
        EXPECT_TRUE(close(answer).contains("its file bands.xml still holds 2 entries"));
        EXPECT_FALSE(isOpen());
        station.reset();
        EXPECT_EQ(LookAtFile(file).rows, left);
        EXPECT_EQ(rememberedFile(), file) << "what is left of it is there again at the next start";
        Workstations::TearDown();
    }
}

TEST_F(Endings, WithNobodyToAskWhatIsLostIsToldAndCounts) {
    blockDefaultFile();
    start({});
    noi().InsertNewValue(7e6, 3000, "mine");
    EXPECT_TRUE(station->GetWindow().close()) << "no question";
    EXPECT_EQ(station->GetEnding().ExitCode(), 2);
    EXPECT_TRUE(messages().contains("NoiFrequencies.xml: ")) << messages().toStdString();
    station->GetWindow().show();
    AnswerDialog(QString());
    noi().FileOpen(); // forgets the file
    station->GetEnding().Keep();
    EXPECT_EQ(station->GetEnding().ExitCode(), 2) << "the next start does not find it";
    EXPECT_EQ(LookAtFile(Path("data/NoiFrequencies-2.xml")).rows, 1) << messages().toStdString();
}

TEST_F(Endings, AListThatNeverHadAnEntryIsNotMissedByTheNextStart) {
    start({});
    station->GetEnding().Keep();
    start({});
    EXPECT_EQ(messages(), "");
}

TEST_F(Endings, UnsavedChangesOfAJobAreKeptForTheNextStart) {
    const QString job = Write("my.pij", Read(sample("job-hf.pij")));
    start({"--job", job});
    ASSERT_TRUE(station->LoadFiles());
    const QByteArray before = Read(job);
    MemorySystemHandler::Instance()->SetNewEntry(7055000, 2700, "new one", "LSB");
    station->GetEnding().Keep();
    station->GetEnding().Keep(); // a session that did not end after all
    EXPECT_EQ(station->GetEnding().ExitCode(), 0);
    EXPECT_EQ(Read(job), before);
    const QDir folder(Path("data/recovery"));
    const QStringList kept = folder.entryList({"*.recovery"}, QDir::Files);
    ASSERT_EQ(kept.size(), 1);
    EXPECT_TRUE(Read("data/recovery/" + kept.first()).contains("new one"));
    QFile::remove(folder.filePath(kept.first()));
    ASSERT_TRUE(QDir().mkpath(folder.filePath(kept.first()))) << "in place of the file";
    Write("data/recovery/" + kept.first() + "/a", "");
    station->GetEnding().Keep();
    EXPECT_EQ(station->GetEnding().ExitCode(), 2) << "nothing keeps the job";
}

class UnsavedLists : public Endings {
protected:
    /// Closes the window; leaves those lists checked, and answers by a button.
    Asked close(QDialogButtonBox::StandardButton answer, const QStringList& unchecked = {},
                const std::function<void()>& then = {}) {
        return CloseAndAnswer(station->GetWindow(), answer, unchecked, then);
    }
    static void addTarget(double hertz) {
        Node* list = TargetListHandler::Instance()->GetItemsRoot();
        WkfListEntry entry(makeNode(list, "Target"), true, nullptr);
        entry.SetFrequency(hertz);
    }
    static void addResult(double hertz) {
        Node* list = Tree::Instance()->GetNode(Paths::Results);
        SearchMCDataResult(makeNode(list, "Entry"), true, nullptr).SetFrequency(hertz);
    }
    static Node* makeNode(Node* parent, const char* name) {
        auto* node = new Node(parent, name);
        parent->AddItemUnique(node);
        return node;
    }
    static void addChannel() {
        MemorySystemHandler::Instance()->SetNewEntry(7055000, 2700, "new one", "LSB");
        MemorySystemHandler::Instance()->UpdateJobFileEntries();
    }
};

TEST_F(UnsavedLists, AreNamedInOneQuestionWithWhatIsKept) {
    const QString targets = Write("my.ltl", Read(sample("targets.ltl")));
    const QString job = Write("my.pij", Read(sample("job-hf.pij")));
    start({"--job", job, targets});
    ASSERT_TRUE(station->LoadFiles());
    station->SetAttended(true);
    addTarget(7e6);
    addChannel();
    addResult(8e6);
    noi().InsertNewValue(7e6, 3000, "mine");
    const QByteArray before = Read(targets) + Read(job);
    const Asked asked = close(QDialogButtonBox::Cancel, {"Data Results"});
    EXPECT_EQ(asked.rows, (QStringList{"Local TargetList|528|my.ltl", "Memory Channels|37|my.pij",
                                       "Data Results|1|never saved"}));
    EXPECT_EQ(asked.kept,
              "Frequencies of interest are kept without a question: 1 entry in NoiFrequencies.xml.");
    EXPECT_EQ(asked.save, "&Save Checked");
    EXPECT_TRUE(isOpen());
    close(QDialogButtonBox::Save, {"Data Results"});
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(LookAtFile(targets).rows, 528);
    EXPECT_TRUE(Read(job).contains("new one"));
    station->GetWindow().show();
    EXPECT_EQ(close(QDialogButtonBox::Discard).rows, QStringList{"Data Results|1|never saved"});
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(QDir(Path("data")).entryList({"SearchMC*"}), QStringList());
}

TEST_F(UnsavedLists, WithoutAFileAskForOneAndAFailedSaveKeepsTheWindow) {
    startAttended();
    addTarget(7e6);
    EXPECT_EQ(close(QDialogButtonBox::Save, {}, [] { AnswerDialog(QString()); }).save, "&Save All");
    EXPECT_TRUE(isOpen()) << "no name, no file";
    QDir().mkpath(Path("taken.xml"));
    close(QDialogButtonBox::Save, {}, [this] { AnswerDialog(Path("taken.xml")); });
    EXPECT_TRUE(isOpen());
    close(QDialogButtonBox::Save, {}, [this] { AnswerDialog(Path("mine.xml")); });
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(LookAtFile(Path("mine.xml")).rows, 1);
    addTarget(8e6);
    station->GetWindow().show();
    EXPECT_EQ(close(QDialogButtonBox::Save).rows, QStringList{"Local TargetList|2|mine.xml"});
    EXPECT_EQ(LookAtFile(Path("mine.xml")).rows, 2);
}

TEST_F(UnsavedLists, AreNotWrittenWhereTheyWouldBeReadOtherwise) {
    const QString lines = Write("my.sfl", "7000000\tname\t3000\tUSB\n"); // written, two columns change places
    start({lines});
    ASSERT_TRUE(station->LoadFiles());
    station->SetAttended(true);
    addTarget(8e6);
    const QByteArray before = Read(lines);
    close(QDialogButtonBox::Save, {}, [this] { AnswerDialog(Path("mine.xml")); });
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(Read(lines), before);
    EXPECT_EQ(LookAtFile(Path("mine.xml")).rows, 2);
}

TEST_F(UnsavedLists, WhatMachinesWriteAndWhatIsGoneAgainIsNotAskedAbout) {
    startAttended();
    station->GetSearch().Simulate(60'000'000, 1'700'000'000'000'000);
    station->GetClassifier().SetRunning(true);
    station->GetClassifier().Step(1'700'000'000'000'000);
    station->GetClassifier().Step(1'700'000'100'000'000);
    station->GetClassifier().SetRunning(false);
    ASSERT_GT(entriesOf("/Lists/SearchMCDataResults"), 0);
    QApplication::processEvents();
    addTarget(7e6);
    QApplication::processEvents();
    TargetListHandler::Instance()->GetItemsRoot()->DeleteChildren();
    QApplication::processEvents();
    EXPECT_TRUE(station->GetWindow().close());
    station->GetWindow().show();
    addResult(9e6);
    EXPECT_EQ(close(QDialogButtonBox::Discard).rows.size(), 1);
}

TEST_F(UnsavedLists, AreAskedAboutBeforeAnotherFileTakesTheirPlace) {
    const QString mine = Write("mine.ltl", Read(sample("targets.ltl")));
    const QString other = Write("other.xml", Read(sample("targets.xml")));
    const QByteArray before = Read("other.xml");
    start({mine});
    ASSERT_TRUE(station->LoadFiles());
    station->SetAttended(true);
    const auto open = [&](Box::StandardButton answer, const QString& path) {
        return Answered(answer, [&] { station->GetOpener().Open(path); });
    };
    addTarget(7e6);
    EXPECT_EQ(open(Box::Cancel, other), "Unsaved Work|Local TargetList has unsaved changes. Save them?");
    EXPECT_EQ(title(), "Local TargetList - mine.ltl*");
    open(Box::Save, other);
    EXPECT_EQ(title(), "Local TargetList - other.xml");
    EXPECT_EQ(LookAtFile(mine).rows, 528);
    addTarget(8e6);
    open(Box::Discard, mine);
    EXPECT_EQ(title(), "Local TargetList - mine.ltl");
    EXPECT_EQ(Read("other.xml"), before);
}

TEST_F(UnsavedLists, AreThoseThatHoldMoreThanTheFileThatTheyShow) {
    startAttended();
    addResult(8e6);
    AnswerDialog(Path("mine.xml"));
    ASSERT_FALSE(SearchMCDataHandler::Instance()->SaveToFile(false).isEmpty());
    ASSERT_TRUE(station->GetOpener().Open(sample("results.xml")));
    EXPECT_EQ(close(QDialogButtonBox::Cancel).rows.join(';').section('|', 2), "mine.xml");
}

TEST_F(UnsavedLists, AreWrittenForRecoveryWhenNobodyCanBeAsked) {
    const QString targets = Write("my.ltl", Read(sample("targets.ltl")));
    start({targets});
    ASSERT_TRUE(station->LoadFiles());
    station->SetAttended(true);
    addTarget(7e6);
    noi().InsertNewValue(9e6, 3000, "mine");
    int written = 0;
    station->GetEnding().SetRecovery([&] { return ++written > 0; });
    const std::function<void()> endIt = [&] {
        if (!QApplication::activeModalWidget())
            return QTimer::singleShot(0, qApp, endIt);
        raise(SIGHUP); // while the question is open
    };
    QTimer::singleShot(0, qApp, [this] { station->GetWindow().close(); });
    QTimer::singleShot(0, qApp, endIt);
    EXPECT_EQ(QApplication::exec(), 0);
    EXPECT_EQ(written, 1);
    EXPECT_EQ(LookAtFile(targets).rows, 527) << "the file is the operator's to write";
    EXPECT_EQ(LookAtFile(Path("data/NoiFrequencies.xml")).rows, 1);
}

TEST_F(Endings, TheStatusBarShowsAFailedSaveUntilItIsResolvedOrDismissed) {
    blockDefaultFile();
    startAttended();
    const FailureNote& note = *station->GetWindow().GetFailureNote();
    noi().InsertNewValue(7e6, 3000, "mine");
    const auto fail = [&] {
        noi().FileSave(true);
        QCoreApplication::processEvents();
    };
    fail();
    EXPECT_TRUE(note.GetText().startsWith("Not saved: NoiFrequencies.xml")) << note.GetText().toStdString();
    EXPECT_TRUE(note.isVisible());
    emit station->GetWindow().GetFailureNote()->Dismissed();
    EXPECT_FALSE(note.isVisible());
    fail();
    EXPECT_TRUE(note.isVisible());
    freeDefaultFile();
    noi().FileSave(true);
    EXPECT_FALSE(note.isVisible()) << note.GetText().toStdString();
}

TEST_F(Endings, TheEndOfTheSessionSavesTheListAndLeavesTheWindow) {
    startAttended();
    noi().InsertNewValue(7e6, 3000, "mine");
    alignas(QSessionManager) char nobody[sizeof(QSessionManager)] = {}; // none is asked
    emit qApp->commitDataRequest(*reinterpret_cast<QSessionManager*>(nobody));
    EXPECT_EQ(LookAtFile(Path("data/NoiFrequencies.xml")).rows, 1);
    EXPECT_TRUE(isOpen());
}

bool endsAtOnce(int signalNumber) {
    struct sigaction action {};
    sigaction(signalNumber, nullptr, &action);
    return action.sa_handler == SIG_DFL;
}

/// Inside the event loop, as the program has it: a dialog's loop ends with it.
TEST_F(Endings, ASignalEndsAnOpenDialogAndKeepsTheListAndItsFile) {
    const QString file = writeBands("bands.xml", 2);
    remember(file);
    startAttended();
    noi().InsertNewValue(9e6, 3000, "mine");
    EXPECT_FALSE(endsAtOnce(SIGTERM));
    QString chosen("nothing yet");
    QTimer::singleShot(0, qApp, [&] { chosen = noi().FileOpen(); });
    const std::function<void()> endIt = [&] {
        if (!QApplication::activeModalWidget())
            return QTimer::singleShot(0, qApp, endIt);
        raise(SIGTERM);
    };
    QTimer::singleShot(0, qApp, endIt);
    EXPECT_EQ(QApplication::exec(), 0);
    EXPECT_EQ(chosen, QString());
    EXPECT_TRUE(station->GetEnding().IsEnding());
    for (const int number : {SIGTERM, SIGHUP, SIGINT})
        EXPECT_TRUE(endsAtOnce(number)) << "a second signal " << number;
    station.reset();
    EXPECT_EQ(LookAtFile(file).rows, 3);
    EXPECT_EQ(rememberedFile(), file) << "the cancelled dialog has not made the program forget it";
}

} // namespace
