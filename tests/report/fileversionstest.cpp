#include "host/report/fileversions.h"

#include "host/report/filestamps.h"
#include "host/report/outputfile.h"
#include "host/report/writeguard.h"
#include "tests/support/fulldisk.h"
#include "tests/support/testfolder.h"
#include "tests/support/traces.h"

#include <QDateTime>

#include <sys/stat.h>

using REPORTGENERATOR::WriteGuard;

namespace {

class Versions : public testing::Test, protected TestFolder {
protected:
    /// Writes a file as of that time and keeps it.
    void keep(const QString& name, const QByteArray& bytes, qint64 seconds) {
        Write(name, bytes);
        QFile file(Path(name));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite) &&
                    file.setFileTime(QDateTime::fromSecsSinceEpoch(seconds), QFile::FileModificationTime));
        file.close();
        versions.Keep(Path(name), bytes.size());
    }
    /// The contents of all copies of a file, newest first, in one text.
    std::string kept(const QString& name) const {
        std::string all;
        for (const FileVersions::Version& version : versions.Of(Path(name))) {
            EXPECT_TRUE(FileVersions::IsWhole(version));
            EXPECT_EQ(version.entries, version.size);
            all += Read(version.path).toStdString() + ' ';
        }
        return all;
    }

    FileVersions versions{Path("data/versions")};
};

TEST_F(Versions, AreKeptNewestFirstWhateverTheClockSaysAndEqualOnesOnce) {
    keep("list.ltl", "a", 1000);
    keep("list.ltl", "b", 2000);
    keep("list.ltl", "c", 500); // the clock went back
    EXPECT_EQ(kept("list.ltl"), "c b a ");
    EXPECT_EQ(versions.Of(Path("list.ltl")).front().time, 500'000'000);
    versions.Keep(Path("list.ltl"));
    EXPECT_EQ(kept("list.ltl"), "c b a ") << "the same again";
    keep("list.ltl", "a", 3000);
    EXPECT_EQ(kept("list.ltl"), "a c b ");
    keep("other.ltl", "x", 10);
    EXPECT_EQ(kept("list.ltl"), "a c b ");
    QFile::remove(Path("list.ltl"));
    EXPECT_EQ(kept("list.ltl"), "a c b ") << "of a file that is gone";
}

TEST_F(Versions, AreBoundedInNumberAndSize) {
    versions.SetLimits({3, 8});
    for (int i = 0; i < 5; ++i)
        keep("list.ltl", QByteArray::number(10 + i), 1000 + i);
    EXPECT_EQ(kept("list.ltl"), "14 13 12 ");
    keep("other.ltl", "1234", 1002); // as old as the oldest of the first
    EXPECT_EQ(kept("list.ltl"), "14 13 ");
    EXPECT_EQ(kept("other.ltl"), "1234 ");
    EXPECT_THROW(keep("large.ltl", "123456789", 5000), RGException);
    EXPECT_EQ(kept("list.ltl") + kept("other.ltl"), "14 13 1234 ");
    versions.SetLimits({0, 8});
    keep("list.ltl", "99", 9000);
    EXPECT_EQ(kept("list.ltl"), "14 13 ");
}

TEST_F(Versions, AreForTheirUserAloneAndKnownWhenDamaged) {
    keep("list.ltl", "content", 1000);
    const QString copy = versions.Of(Path("list.ltl")).front().path;
    struct stat file {};
    struct stat folder {};
    ASSERT_EQ(::stat(qPrintable(copy), &file), 0);
    ASSERT_EQ(::stat(qPrintable(Path("data/versions")), &folder), 0);
    EXPECT_EQ(file.st_mode & 0777u, 0600u);
    EXPECT_EQ(folder.st_mode & 0777u, 0700u);
    EXPECT_TRUE(copy.endsWith("_list.ltl"));
    Write(copy, "Content");
    EXPECT_FALSE(FileVersions::IsWhole(versions.Of(Path("list.ltl")).front()));
}

TEST_F(Versions, CostNothingWhenTheyCannotBeKept) {
    keep("list.ltl", "a", 1000);
    const auto expectRefusal = [&](const char* why) {
        Write("list.ltl", QByteArray(100'000, 'x'));
        EXPECT_THROW(versions.Keep(Path("list.ltl")), RGException) << why;
    };
    {
        Write("list.ltl", QByteArray(100'000, 'x'));
        const FullDisk disk(50'000);
        EXPECT_THROW(versions.Keep(Path("list.ltl")), RGException);
    }
    EXPECT_EQ(kept("list.ltl"), "a ");
    QDir(Path("data")).removeRecursively();
    Write("data", "a file in place of the folder");
    expectRefusal("no folder");
    QFile::remove(Path("data"));
    versions.Keep(Path("list.ltl"), 100'000);
    EXPECT_EQ(versions.Of(Path("list.ltl")).size(), 1u) << "the folder comes back";
}

/// Answers as it is told to, and notes what it is asked.
struct Guard : WriteGuard {
    Guard() : before(REPORTGENERATOR::SetWriteGuard(this)) {}
    ~Guard() override { REPORTGENERATOR::SetWriteGuard(before); }
    Answer FileIsChanged(const QString& path) override {
        seen << "asked " + QFileInfo(path).fileName();
        return answer;
    }
    void Replacing(const QString& path, const QString& aside) override {
        EXPECT_TRUE(QFile::exists(aside));
        seen << "replacing " + QFileInfo(path).fileName();
    }
    void Unchanged(const QString& path) override { seen << "unchanged " + QFileInfo(path).fileName(); }
    void Replaced(const QString& path, qint64 entries) override {
        seen << QStringLiteral("replaced %1 %2").arg(QFileInfo(path).fileName()).arg(entries);
    }

    WriteGuard* before;
    Answer answer = Answer::Cancel;
    QStringList seen;
};

TEST_F(Versions, OfAFileThatAnotherProgramChangedAreAskedAbout) {
    const auto write = [&](const char* bytes) {
        REPORTGENERATOR::OutputFile file(Path("list.ltl"));
        REPORTGENERATOR::WriteBytes(file.Device(), "list.ltl", bytes);
        file.SetEntryCount(7);
        file.Commit();
    };
    Guard guard;
    const Traces traces;
    write("mine");
    EXPECT_EQ(guard.seen.join('|'), "replacing list.ltl|replaced list.ltl 7");
    Write("list.ltl", "theirs");
    guard.seen.clear();
    EXPECT_THROW(write("new"), RGException);
    EXPECT_EQ(Read("list.ltl"), "theirs");
    EXPECT_EQ(traces.problems.join('|'), Path("list.ltl") + ": was changed by another program and is kept");
    guard.answer = Guard::Answer::WriteBeside;
    write("new");
    EXPECT_EQ(Read("list.ltl") + '|' + Read("list-2.ltl"), "theirs|new");
    EXPECT_EQ(guard.seen.join('|'), "asked list.ltl|asked list.ltl");
    guard.answer = Guard::Answer::Replace;
    write("newer");
    EXPECT_EQ(Read("list.ltl"), "newer");
    guard.seen.clear();
    write("newest");
    write("newest");
    EXPECT_EQ(guard.seen.join('|'), "replacing list.ltl|replaced list.ltl 7|unchanged list.ltl")
        << "not asked again";
    FileStamps::ForgetAll();
}

} // namespace
