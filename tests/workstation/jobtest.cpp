#include "workstation/job.h"

#include "controls/frequencystore/common/paths.h"
#include "controls/frequencystore/memory/memorysystemhandler.h"
#include "host/valuetree/tree.h"
#include "tests/support/dialogs.h"
#include "tests/support/testfolder.h"
#include "tests/support/traces.h"
#include "tests/support/waiting.h"
#include "workstation/jobpanel.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QTest>

namespace {

constexpr char SmallJob[] = R"(<?xml version="1.0"?>
<JOB Name="Wärme">
 <SUBJOB><TDS>
  <MEMORYSCAN><MEMORYSCAN_CHANNEL Range="1" Name="old">
   <MEMORYSCAN_SEQ_CHANNELNUMBER Value="1"/><MEMORYSCAN_SEQ_FREQUENCY Value="6060000.000000"/>
   <MEMORYSCAN_SEQ_THRESHOLD Value="20"/><MEMORYSCAN_SEQ_ANALOGDEMOD_METHOD Value="AM"/>
   <MEMORYSCAN_SEQ_IFBANDWIDTH Value="6000.000000"/><MEMORYSCAN_SEQ_OUTPUTIFPATH Value="48.0 kHz"/>
   <MEMORYSCAN_SEQ_SHIFT Value="20000"/><MEMORYSCAN_SEQ_BFOFREQUENCY Value="0"/>
  </MEMORYSCAN_CHANNEL></MEMORYSCAN>
 </TDS></SUBJOB>
</JOB>)";

class Jobs : public testing::Test, protected TestFolder {
protected:
    static void setText(const QString& text) {
        Tree::Instance()->GetValue(Paths::JobText)->SetStringValue(text);
    }
    /// A new channel, as a list view makes it.
    static void addChannel() { MemorySystemHandler::Instance()->SetNewEntry(7055000, 2700, "new", "LSB"); }
    static size_t channelCount() { return Tree::Instance()->GetNode("/Lists/Memory")->ChildCount(); }

    Jobs() {
        MemorySystemHandler& handler = *MemorySystemHandler::Instance();
        handler.Init(Tree::Instance()->MakeNode("/Lists/Memory"));
        handler.SetJobfile_ValuePath(Paths::JobText);
        handler.SetData4Jobfile_ValuePath(Paths::JobSection);
        handler.SetSave2Job_ValuePath(Paths::JobSave);
    }
    ~Jobs() override {
        job.Revert();
        MemorySystemHandler::DeleteInstance();
        Tree::Instance()->GetRoot()->DeleteChildren();
    }

    Traces traces;
    Job job;
};

TEST_F(Jobs, AnOpenedJobIsTheListAndItsFile) {
    const QString path = Write("small.pij", QByteArray(SmallJob) + '\n');
    ASSERT_TRUE(job.Open(path));
    EXPECT_EQ(job.GetText(), QString::fromUtf8(SmallJob));
    EXPECT_TRUE(job.GetSection().startsWith(QLatin1String("<MEMORYSCAN><MEMORYSCAN_CHANNEL Range=\"1\"")));
    EXPECT_TRUE(job.GetSection().endsWith(QLatin1String("</MEMORYSCAN_CHANNEL></MEMORYSCAN>")));
    EXPECT_EQ(channelCount(), 1U);
    EXPECT_EQ(job.GetFileState(), Job::FileState::Same);
    EXPECT_FALSE(job.IsModified());
}

TEST_F(Jobs, ABadOneIsRefusedWithFileLineAndReasonAndTheOldOneStays) {
    const QString good = Write("good.pij", SmallJob);
    ASSERT_TRUE(job.Open(good));
    const std::pair<QString, const char*> rows[] = {
        {Write("cut.pij", QByteArray(SmallJob).left(120)), ":5: "},
        {Write("list.pij", "<FrequencyStoreList/>"), ": is no job: it has no SUBJOB"}};
    for (const auto& [bad, problem] : rows) {
        traces.problems.clear();
        EXPECT_FALSE(job.Open(bad));
        EXPECT_EQ(job.GetFileName(), good);
        EXPECT_EQ(channelCount(), 1U);
        EXPECT_EQ(job.GetText(), QString::fromUtf8(SmallJob));
        ASSERT_EQ(traces.problems.size(), 1);
        EXPECT_TRUE(traces.problems[0].startsWith(bad + problem)) << traces.problems[0].toStdString();
    }
}

TEST_F(Jobs, AMissingFileOrAFolderIsNoJob) {
    EXPECT_FALSE(job.Open(Path("none.pij")));
    EXPECT_FALSE(job.Open(m_folder.path()));
    EXPECT_EQ(traces.problems.size(), 2);
    EXPECT_EQ(job.GetFileState(), Job::FileState::None);
}

TEST_F(Jobs, AJobWithoutAPlaceForChannelsIsNotSavedWithoutThem) {
    const QByteArray bare = "<JOB><SUBJOB><TDS/></SUBJOB></JOB>";
    const QString path = Write("bare.pij", bare);
    ASSERT_TRUE(job.Open(path));
    EXPECT_TRUE(job.Save()) << "there are no channels";
    addChannel();
    EXPECT_FALSE(job.Save());
    EXPECT_EQ(Read(path), bare + '\n');
    ASSERT_EQ(traces.problems.size(), 1);
    EXPECT_TRUE(traces.problems[0].contains("no memory-scan section")) << traces.problems[0].toStdString();
}

TEST_F(Jobs, TheFileIsOlderWhenChannelsChangeAndTheSameWhenTheJobIsSaved) {
    const QString path = Write("small.pij", SmallJob);
    ASSERT_TRUE(job.Open(path));
    addChannel();
    MemorySystemHandler::Instance()->UpdateJobFileEntries();
    EXPECT_EQ(job.GetFileState(), Job::FileState::Older);
    EXPECT_TRUE(job.IsModified());
    EXPECT_TRUE(job.Save());
    EXPECT_EQ(job.GetFileState(), Job::FileState::Same);
    EXPECT_FALSE(job.IsModified());
    EXPECT_TRUE(Read(path).contains("Name=\"new\"")) << Read(path).toStdString();
    ASSERT_TRUE(job.Open(path));
    EXPECT_EQ(channelCount(), 2U);
}

TEST_F(Jobs, AListThatSavesTheJobLeavesTheFileTheSame) {
    ASSERT_TRUE(job.Open(Write("small.pij", SmallJob)));
    addChannel();
    EXPECT_TRUE(MemorySystemHandler::Instance()->Save2Job());
    EXPECT_EQ(job.GetFileState(), Job::FileState::Same);
    EXPECT_FALSE(job.IsModified());
}

TEST_F(Jobs, SomebodyElsesChangeAndALostFileAreSeen) {
    const QString path = Write("small.pij", SmallJob);
    ASSERT_TRUE(job.Open(path));
    QSignalSpy changes(&job, &Job::Changed);
    Write("small.pij", "<JOB><SUBJOB/></JOB>");
    EXPECT_EQ(job.GetFileState(), Job::FileState::Changed);
    EXPECT_TRUE(changes.wait(5000)) << "the watched file tells it";
    QFile::remove(path);
    EXPECT_EQ(job.GetFileState(), Job::FileState::Gone);
    EXPECT_TRUE(job.Save());
    EXPECT_EQ(job.GetFileState(), Job::FileState::Same);
}

TEST_F(Jobs, RevertBringsTheSavedJobAndItsChannelsBack) {
    ASSERT_TRUE(job.Open(Write("small.pij", SmallJob)));
    addChannel();
    MemorySystemHandler::Instance()->UpdateJobFileEntries();
    ASSERT_TRUE(MemorySystemHandler::Instance()->IsChangedSinceJobSave());
    job.Revert();
    EXPECT_EQ(job.GetText(), QString::fromUtf8(SmallJob));
    EXPECT_EQ(channelCount(), 1U);
    EXPECT_FALSE(MemorySystemHandler::Instance()->IsChangedSinceJobSave());
}

TEST_F(Jobs, SaveAsThatFailsKeepsTheOldFile) {
    const QString path = Write("small.pij", SmallJob);
    ASSERT_TRUE(job.Open(path));
    addChannel();
    EXPECT_FALSE(job.SaveAs(Path("no such folder/copy.pij")));
    EXPECT_EQ(job.GetFileName(), path);
    EXPECT_EQ(MemorySystemHandler::Instance()->GetJobfileName(), path);
    EXPECT_TRUE(job.IsModified());
    EXPECT_EQ(traces.problems.size(), 1);
    const QString copy = Path("copy.pij");
    EXPECT_TRUE(job.SaveAs(copy));
    EXPECT_EQ(job.GetFileName(), copy);
    EXPECT_TRUE(Read(copy).contains("Name=\"new\""));
    EXPECT_EQ(Read(path), QByteArray(SmallJob)) << "the first file stays";
}

TEST_F(Jobs, ChannelsWithoutAJobAreSavedInANewOne) {
    EXPECT_FALSE(job.IsModified());
    EXPECT_FALSE(job.Save()) << "there is no file";
    addChannel();
    MemorySystemHandler::Instance()->UpdateJobFileEntries();
    EXPECT_TRUE(job.IsModified());
    const QString path = Path("new.pij");
    ASSERT_TRUE(job.SaveAs(path));
    EXPECT_FALSE(job.IsModified());
    EXPECT_EQ(channelCount(), 1U);
    EXPECT_TRUE(job.GetSection().contains(QLatin1String("Name=\"new\"")));
    EXPECT_TRUE(job.Open(path)) << "what was made is a job";
    EXPECT_EQ(channelCount(), 1U);
    EXPECT_TRUE(traces.problems.isEmpty());
}

TEST_F(Jobs, LeavingAChangedJobIsAskedAbout) {
    const QString path = Write("small.pij", SmallJob);
    ASSERT_TRUE(job.Open(path));
    JobPanel panel(job);
    EXPECT_TRUE(panel.MayLeave()) << "nothing changed, nothing is asked";
    addChannel(); // that is not in the job yet
    EXPECT_TRUE(Answered(QMessageBox::Cancel, [&] { EXPECT_FALSE(panel.MayLeave()); }).contains("small.pij"));
    Answered(QMessageBox::Discard, [&] { EXPECT_TRUE(panel.MayLeave()); });
    EXPECT_EQ(Read(path), QByteArray(SmallJob));
    Answered(QMessageBox::Save, [&] { EXPECT_TRUE(panel.MayLeave()); });
    EXPECT_TRUE(Read(path).contains("Name=\"new\""));
    EXPECT_TRUE(panel.MayLeave()) << "all is saved";
}

TEST_F(Jobs, AFileThatAnotherProgramChangedIsReplacedOnlyWhenTheOperatorWantsIt) {
    const QString path = Write("small.pij", SmallJob);
    ASSERT_TRUE(job.Open(path));
    JobPanel panel(job);
    Write("small.pij", "<JOB><SUBJOB/></JOB>");
    Answered(QMessageBox::No, [&] { EXPECT_FALSE(panel.Save()); });
    EXPECT_EQ(Read(path), "<JOB><SUBJOB/></JOB>");
    Answered(QMessageBox::Yes, [&] { EXPECT_TRUE(panel.Save()); });
    EXPECT_TRUE(Read(path).contains("MEMORYSCAN_CHANNEL"));
}

TEST_F(Jobs, ThePanelShowsTheSectionAndHowTheFileStands) {
    JobPanel panel(job);
    panel.show();
    panel.ShowSection();
    const auto* state = panel.findChild<QLabel*>("JobState");
    const auto* section = panel.findChild<QPlainTextEdit*>("JobSection");
    EXPECT_TRUE(section->toPlainText().isEmpty());
    ASSERT_TRUE(job.Open(Write("small.pij", SmallJob)));
    EXPECT_TRUE(Until([&] { return section->toPlainText().contains("MEMORYSCAN_CHANNEL"); }));
    EXPECT_TRUE(state->text().contains("up to date")) << state->text().toStdString();
    QString large = "<JOB><SUBJOB><TDS><MEMORYSCAN>\n";
    for (int channel = 1; channel <= 2000; ++channel)
        large += "<MEMORYSCAN_CHANNEL/>\n";
    setText(large + "</MEMORYSCAN></TDS></SUBJOB></JOB>");
    EXPECT_TRUE(Until([&] { return section->toPlainText().endsWith("1502 more lines"); }))
        << section->toPlainText().right(80).toStdString();
    EXPECT_TRUE(state->text().contains("unsaved changes")) << state->text().toStdString();
}

} // namespace
