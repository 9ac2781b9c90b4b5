#include "workstation/job.h"

#include "host/valuetree/tree.h"
#include "tests/support/traces.h"
#include "workstation/jobpanel.h"

#include <QAbstractButton>
#include <QFile>
#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

namespace {

constexpr char SmallJob[] = "<?xml version=\"1.0\"?>\n"
                            "<JOB Name=\"Wärme\">\n"
                            " <SUBJOB><TDS>\n"
                            "  <MEMORYSCAN><MEMORYSCAN_CHANNEL Range=\"1\"/></MEMORYSCAN>\n"
                            " </TDS></SUBJOB>\n"
                            "</JOB>";
constexpr char NewSection[] =
    "<MEMORYSCAN>\n <MEMORYSCAN_CHANNEL Range=\"1\" Name=\"new\"/>\n</MEMORYSCAN>\n";

/// Stands for the owner of the memory channels: writes the job's text into its file when it is asked to.
class Owner : public IObserver {
public:
    explicit Owner(Job& job) {
        QObject::connect(&job, &Job::FileNamed, [this](const QString& path) { fileName = path; });
        Tree::Instance()->GetValue(Job::SavePath())->AddObserver(this);
    }
    void Update(Observable*, TChangeCode code) override {
        QFile file(fileName);
        if (code == TChangeCode::Announcement && file.open(QIODevice::WriteOnly))
            file.write(Tree::Instance()->GetValue(Job::TextPath())->GetStringValue().toUtf8() + '\n');
    }

    QString fileName;
};

class Jobs : public testing::Test {
protected:
    QString write(const QString& name, const QByteArray& bytes) const {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(bytes), bytes.size());
        return file.fileName();
    }
    static QByteArray read(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<no such file>");
    }
    static void setSection(const QString& text) {
        Tree::Instance()->GetValue(Job::SectionPath())->SetStringValue(text);
    }
    static void setText(const QString& text) {
        Tree::Instance()->GetValue(Job::TextPath())->SetStringValue(text);
    }

    QTemporaryDir folder;
    Traces traces;
    Job job;
    Owner owner{job};
};

TEST_F(Jobs, AJobThatIsReadAndWrittenIsTheSameFile) {
    const QByteArray bytes = QByteArray(SmallJob) + '\n';
    const QString path = write("small.pij", bytes);
    ASSERT_TRUE(job.Open(path));
    EXPECT_EQ(job.GetText(), QString::fromUtf8(SmallJob));
    EXPECT_EQ(job.GetSection().toString(), "<MEMORYSCAN><MEMORYSCAN_CHANNEL Range=\"1\"/></MEMORYSCAN>");
    EXPECT_EQ(job.GetFileState(), Job::FileState::Same);
    EXPECT_FALSE(job.IsModified());
    EXPECT_TRUE(job.Save());
    EXPECT_EQ(read(path), bytes);
}

struct BadJob {
    const char* name;
    QByteArray bytes;
    const char* problem; ///< behind the folder's name
};

void PrintTo(const BadJob& bad, std::ostream* out) {
    *out << bad.name;
}

class BadJobs : public Jobs, public testing::WithParamInterface<BadJob> {};

TEST_P(BadJobs, AreRefusedWithFileLineAndReasonAndTheOldJobStays) {
    const QString good = write("good.pij", SmallJob);
    ASSERT_TRUE(job.Open(good));
    const QString bad = write(GetParam().name, GetParam().bytes);
    EXPECT_FALSE(job.Open(bad));
    EXPECT_EQ(job.GetFileName(), good);
    EXPECT_EQ(owner.fileName, good);
    EXPECT_EQ(job.GetText(), QString::fromUtf8(SmallJob));
    ASSERT_EQ(traces.problems.size(), 1);
    EXPECT_TRUE(traces.problems[0].startsWith(bad + GetParam().problem)) << traces.problems[0].toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    Files, BadJobs,
    testing::Values(BadJob{"cut.pij", QByteArray(SmallJob).left(120), ":5: "},
                    BadJob{"crossed.pij", "<JOB>\n<SUBJOB>\n</JOB></SUBJOB>", ":3: "},
                    BadJob{"empty.pij", "", ":1: "}, BadJob{"text.pij", "7055000\t2700\n", ":1: "},
                    BadJob{"latin1.pij", "<JOB>\n<SUBJOB Name=\"W\xe4rme\"/></JOB>", ":2: "},
                    BadJob{"list.pij", "<FrequencyStoreList/>", ": this is no job: it has no SUBJOB"}));

TEST_F(Jobs, AMissingFileOrAFolderIsNoJob) {
    EXPECT_FALSE(job.Open(folder.filePath("none.pij")));
    EXPECT_FALSE(job.Open(folder.path()));
    EXPECT_EQ(traces.problems.size(), 2);
    EXPECT_EQ(job.GetFileState(), Job::FileState::None);
}

TEST_F(Jobs, AJobWithoutAPlaceForChannelsIsOpenedAndTold) {
    EXPECT_TRUE(job.Open(write("bare.pij", "<JOB><SUBJOB><TDS/></SUBJOB></JOB>")));
    ASSERT_EQ(traces.problems.size(), 1);
    EXPECT_TRUE(traces.problems[0].contains("no SUBJOB has a MEMORYSCAN"))
        << traces.problems[0].toStdString();
}

TEST_F(Jobs, TheFileIsOlderWhenTheJobChangesAndTheSameWhenItIsSaved) {
    const QString path = write("small.pij", SmallJob);
    ASSERT_TRUE(job.Open(path));
    const QString changed = QString::fromUtf8(SmallJob).replace("Range=\"1\"", "Range=\"2\"");
    setText(changed);
    EXPECT_EQ(job.GetFileState(), Job::FileState::Older);
    EXPECT_TRUE(job.IsModified());
    EXPECT_TRUE(job.Save());
    EXPECT_EQ(job.GetFileState(), Job::FileState::Same);
    EXPECT_EQ(read(path), changed.toUtf8() + '\n');
}

TEST_F(Jobs, SomebodyElsesChangeAndALostFileAreSeen) {
    const QString path = write("small.pij", SmallJob);
    ASSERT_TRUE(job.Open(path));
    QSignalSpy changes(&job, &Job::Changed);
    write("small.pij", "<JOB><SUBJOB/></JOB>");
    EXPECT_EQ(job.GetFileState(), Job::FileState::Changed);
    EXPECT_TRUE(changes.wait(5000)) << "the watched file tells it";
    QFile::remove(path);
    EXPECT_EQ(job.GetFileState(), Job::FileState::Gone);
    EXPECT_TRUE(job.Save());
    EXPECT_EQ(job.GetFileState(), Job::FileState::Same);
}

TEST_F(Jobs, RevertBringsTheSavedTextBackAndTellsItsObservers) {
    ASSERT_TRUE(job.Open(write("small.pij", SmallJob)));
    setSection(NewSection);
    setText("<JOB><SUBJOB/></JOB>");
    job.Revert();
    EXPECT_EQ(job.GetText(), QString::fromUtf8(SmallJob));
    EXPECT_FALSE(job.IsModified());
}

TEST_F(Jobs, SaveAsThatFailsKeepsTheOldFile) {
    const QString path = write("small.pij", SmallJob);
    ASSERT_TRUE(job.Open(path));
    setText("<JOB><SUBJOB/></JOB>");
    EXPECT_FALSE(job.SaveAs(folder.filePath("no such folder/copy.pij")));
    EXPECT_EQ(job.GetFileName(), path);
    EXPECT_EQ(owner.fileName, path);
    EXPECT_TRUE(job.IsModified());
    EXPECT_EQ(traces.problems.size(), 1);
    const QString copy = folder.filePath("copy.pij");
    EXPECT_TRUE(job.SaveAs(copy));
    EXPECT_EQ(job.GetFileName(), copy);
    EXPECT_EQ(read(copy), "<JOB><SUBJOB/></JOB>\n");
    EXPECT_EQ(read(path), QByteArray(SmallJob)) << "the first file stays";
}

TEST_F(Jobs, ChannelsWithoutAJobAreSavedInANewOne) {
    EXPECT_FALSE(job.IsModified());
    EXPECT_FALSE(job.Save()) << "there is no file";
    setSection("<MEMORYSCAN/>");
    EXPECT_FALSE(job.IsModified()) << "no channels, nothing to lose";
    setSection(NewSection);
    EXPECT_TRUE(job.IsModified());
    const QString path = folder.filePath("new.pij");
    ASSERT_TRUE(job.SaveAs(path));
    EXPECT_FALSE(job.IsModified());
    EXPECT_EQ(job.GetSection().toString(), QString::fromLatin1(NewSection).trimmed());
    EXPECT_TRUE(job.Open(path)) << "what was made is a job";
    EXPECT_TRUE(traces.problems.isEmpty());
}

/// Presses a button of the next message box and remembers what it asked.
QString answer(QMessageBox::StandardButton button, const std::function<void()>& act) {
    QString asked;
    QTimer::singleShot(0, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        asked = box->text();
        box->button(button)->click();
    });
    act();
    return asked;
}

TEST_F(Jobs, LeavingAChangedJobIsAskedAbout) {
    const QString path = write("small.pij", SmallJob);
    ASSERT_TRUE(job.Open(path));
    JobPanel panel(job);
    EXPECT_TRUE(panel.MayLeave()) << "nothing changed, nothing is asked";
    const QString changed = QString::fromUtf8(SmallJob).replace("Range=\"1\"", "Range=\"2\"");
    // A change that its owner has not brought in yet counts.
    QObject::connect(&job, &Job::ChangesWanted, &panel, [&] { setText(changed); });
    EXPECT_TRUE(answer(QMessageBox::Cancel, [&] { EXPECT_FALSE(panel.MayLeave()); }).contains("small.pij"));
    answer(QMessageBox::Discard, [&] { EXPECT_TRUE(panel.MayLeave()); });
    EXPECT_EQ(read(path), QByteArray(SmallJob));
    answer(QMessageBox::Save, [&] { EXPECT_TRUE(panel.MayLeave()); });
    EXPECT_EQ(read(path), changed.toUtf8() + '\n');
}

TEST_F(Jobs, AFileThatAnotherProgramChangedIsReplacedOnlyWhenTheOperatorWantsIt) {
    const QString path = write("small.pij", SmallJob);
    ASSERT_TRUE(job.Open(path));
    JobPanel panel(job);
    write("small.pij", "<JOB><SUBJOB/></JOB>");
    answer(QMessageBox::No, [&] { EXPECT_FALSE(panel.Save()); });
    EXPECT_EQ(read(path), "<JOB><SUBJOB/></JOB>");
    answer(QMessageBox::Yes, [&] { EXPECT_TRUE(panel.Save()); });
    EXPECT_EQ(read(path), QByteArray(SmallJob) + '\n');
}

TEST_F(Jobs, ThePanelShowsTheSectionAndHowTheFileStands) {
    JobPanel panel(job);
    panel.show();
    const auto* state = panel.findChild<QLabel*>("JobState");
    const auto* section = panel.findChild<QPlainTextEdit*>("JobSection");
    EXPECT_TRUE(section->toPlainText().isEmpty());
    ASSERT_TRUE(job.Open(write("small.pij", SmallJob)));
    EXPECT_TRUE(QTest::qWaitFor([&] { return section->toPlainText().contains("MEMORYSCAN_CHANNEL"); }));
    EXPECT_TRUE(state->text().contains("up to date")) << state->text().toStdString();
    QString large = "<JOB><SUBJOB><TDS><MEMORYSCAN>\n";
    for (int channel = 1; channel <= 2000; ++channel)
        large += "<MEMORYSCAN_CHANNEL/>\n";
    setText(large + "</MEMORYSCAN></TDS></SUBJOB></JOB>");
    EXPECT_TRUE(QTest::qWaitFor([&] { return section->toPlainText().endsWith("1502 more lines"); }))
        << section->toPlainText().right(80).toStdString();
    EXPECT_TRUE(state->text().contains("older")) << state->text().toStdString();
}

} // namespace
