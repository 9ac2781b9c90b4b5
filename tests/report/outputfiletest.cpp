#include "host/report/outputfile.h"

#include "host/report/filestamps.h"
#include "host/report/leftovers.h"
#include "tests/support/fulldisk.h"
#include "tests/support/testfolder.h"
#include "tests/support/traces.h"

#include <QDateTime>

#include <functional>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

using REPORTGENERATOR::OutputFile;

namespace {

class OutputFiles : public testing::Test, protected TestFolder {
protected:
    void SetUp() override { REPORTGENERATOR::ForgetWriteFailure(); }
    void TearDown() override { FileStamps::ForgetAll(); }

    static QString Save(OutputFile& file, const QString& name, const std::string& bytes) {
        REPORTGENERATOR::WriteBytes(file.Device(), name, bytes);
        file.Commit();
        return file.WrittenName();
    }
    /// Saves as lists do; the name under which the bytes stand, or why they do not.
    QString Save(const QString& name, const std::string& bytes) const {
        try {
            OutputFile file(Path(name));
            return Save(file, Path(name), bytes);
        } catch (const RGException& exception) {
            return exception.GetErrorText();
        }
    }
    struct stat StatOf(const QString& name) const {
        struct stat file {};
        EXPECT_EQ(::lstat(qPrintable(Path(name)), &file), 0) << qPrintable(name);
        return file;
    }
    void SetTime(const QString& name, qint64 seconds) const {
        QFile file(Path(name));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(
            file.setFileTime(QDateTime::fromSecsSinceEpoch(seconds), QFileDevice::FileModificationTime));
    }
    void MakeSocket(const QString& name) const {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        qstrncpy(address.sun_path, qPrintable(Path(name)), sizeof address.sun_path);
        const int handle = ::socket(AF_UNIX, SOCK_STREAM, 0);
        EXPECT_EQ(::bind(handle, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        ::close(handle);
    }
};

// Files are only opened here, never committed: what is wrong with the check must not cost a device.
TEST_F(OutputFiles, WhatIsNoOrdinaryFileIsRefusedAndToldOnce) {
    ASSERT_EQ(::mkfifo(qPrintable(Path("pipe")), 0600), 0);
    ASSERT_TRUE(QDir(m_folder.path()).mkdir("folder"));
    MakeSocket("socket");
    const auto link = [&](const char* target, const char* name) {
        ASSERT_EQ(::symlink(target, qPrintable(Path(name))), 0);
    };
    link("/dev/null", "null");
    link("/dev/full", "full");
    link("pipe", "to-pipe");
    link("two", "one");
    link("one", "two");
    link("folder", "to-folder");
    const std::pair<const char*, const char*> rows[] = {
        {"pipe", "this is no ordinary file"},
        {"socket", "this is no ordinary file"},
        {"folder", "this is no ordinary file"},
        {"null", "this is no ordinary file"},
        {"full", "this is no ordinary file"},
        {"to-pipe", "this is no ordinary file"},
        {"to-folder", "this is no ordinary file"},
        {"one", "cannot be written: Too many levels of symbolic links"},
        {"no/folder", "cannot be written: No such file or directory"},
        {"new/", "cannot be written: Is a directory"},
        {"pipe/x", "cannot be written: Not a directory"},
    };
    const QStringList before =
        QDir(m_folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System);
    for (const auto& [name, reason] : rows) {
        const Traces traces;
        const QString told = m_folder.filePath(name) + ": " + reason;
        EXPECT_THROW(OutputFile file(m_folder.filePath(name)), RGException) << name;
        EXPECT_EQ(traces.problems, QStringList(told));
        ASSERT_TRUE(REPORTGENERATOR::LastWriteFailure()) << name;
        EXPECT_EQ(REPORTGENERATOR::LastWriteFailure()->ToString(), told);
        REPORTGENERATOR::ForgetWriteFailure();
        EXPECT_FALSE(REPORTGENERATOR::LastWriteFailure());
    }
    EXPECT_THROW(OutputFile file{QString()}, RGException);
    EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System), before);
    EXPECT_TRUE(S_ISFIFO(StatOf("pipe").st_mode));
}

TEST_F(OutputFiles, ALinkStaysAndItsTargetIsReplacedOrMade) {
    ASSERT_TRUE(QDir(m_folder.path()).mkpath("far/inner"));
    Write("far/there", "old");
    ASSERT_EQ(::symlink("far/inner", qPrintable(Path("near"))), 0);
    ASSERT_EQ(::symlink("../there", qPrintable(Path("far/inner/existing"))), 0);
    ASSERT_EQ(::symlink("../made", qPrintable(Path("far/inner/dangling"))), 0);
    ASSERT_EQ(::symlink("near/existing", qPrintable(Path("chain"))), 0);
    ASSERT_EQ(::symlink("near/dangling", qPrintable(Path("new"))), 0);
    EXPECT_EQ(Save("chain", "one"), Path("chain"));
    EXPECT_EQ(Read("far/there"), "one");
    EXPECT_EQ(Save("new", "two"), Path("new"));
    EXPECT_EQ(Read("far/made"), "two");
    for (const char* link : {"chain", "new", "near/existing", "near/dangling"})
        EXPECT_TRUE(S_ISLNK(StatOf(link).st_mode)) << link;
}

TEST_F(OutputFiles, AFullDiskIsToldWithItsReasonAndLeavesTheOldFile) {
    Write("list.xml", "old");
    const Traces traces;
    const FullDisk disk(1000);
    OutputFile file(Path("list.xml"));
    EXPECT_EQ(file.Device().write(QByteArray(5000, 'x')), -1);
    EXPECT_EQ(file.Device().write("y"), -1);
    EXPECT_THROW(file.Commit(), RGException);
    const QString told = Path("list.xml") + ": cannot be written: File too large";
    EXPECT_EQ(Save("list.xml", std::string(5000, 'x')), told);
    EXPECT_EQ(traces.problems, QStringList({told, told})) << "once for each file";
    EXPECT_EQ(traces.texts, QStringList()) << "left to whoever catches it";
    EXPECT_EQ(Read("list.xml"), "old");
}

TEST_F(OutputFiles, EqualBytesLeaveTheFileAsItIs) {
    Write("list.xml", QByteArray(3'000'000, 'x'));
    SetTime("list.xml", 1'600'000'000);
    const struct stat before = StatOf("list.xml");
    const std::string same(3'000'000, 'x');
    EXPECT_EQ(Save("list.xml", same), Path("list.xml"));
    EXPECT_EQ(StatOf("list.xml").st_ino, before.st_ino);
    EXPECT_EQ(StatOf("list.xml").st_mtim.tv_sec, 1'600'000'000);
    EXPECT_EQ(FileNames(), QStringList("list.xml"));
    EXPECT_EQ(Save("list.xml", same.substr(1) + 'y'), Path("list.xml"));
    EXPECT_TRUE(Read("list.xml").endsWith("xy"));
}

TEST_F(OutputFiles, PermissionsOfTheOldFileAreKept) {
    for (const mode_t mode : {0600u, 0640u, 0666u, 0755u}) {
        Write("list.xml", "old");
        ASSERT_EQ(::chmod(qPrintable(Path("list.xml")), mode), 0);
        Save("list.xml", std::to_string(mode));
        EXPECT_EQ(StatOf("list.xml").st_mode & 07777, mode);
    }
    const mode_t mask = ::umask(027);
    Save("new.xml", "new");
    ::umask(mask);
    EXPECT_EQ(StatOf("new.xml").st_mode & 0777, 0640u);
}

TEST_F(OutputFiles, WhatAnotherProgramChangedIsKept) {
    const auto change = [&] { Write("list.xml", "theirs"); };
    const struct {
        const char* name;
        bool isRead;
        std::function<void()> meanwhile;
        bool isKept;
    } rows[] = {
        {"unread", false, change, false},
        {"unchanged", true, [] {}, false},
        {"touched", true, [&] { SetTime("list.xml", 1'600'000'000); }, false},
        {"changed", true, change, true},
        {"of the same size and tick", true, [&] { Write("list.xml", "was"); }, true},
        {"replaced", true,
         [&] {
             Write("other", "theirs");
             ASSERT_EQ(::rename(qPrintable(Path("other")), qPrintable(Path("list.xml"))), 0);
         },
         true},
        {"removed", true, [&] { QFile::remove(Path("list.xml")); }, false},
        {"changed to what is written", true, [&] { Write("list.xml", "ours"); }, false},
        {"saved by this process", true, [&] { Save("list.xml", "before"); }, false},
        {"saved, then changed", false,
         [&] {
             Save("list.xml", "before");
             change();
         },
         true},
    };
    for (const auto& row : rows) {
        FileStamps::ForgetAll();
        for (const QString& name : FileNames())
            QFile::remove(Path(name));
        Write("list.xml", "old");
        Write("list-2.xml", "taken");
        if (row.isRead)
            FileStamps::NoteRead(Path("list.xml"));
        row.meanwhile();
        const QByteArray theirs = Read("list.xml");
        const Traces traces;
        const QString written = Save("list.xml", "ours");
        EXPECT_EQ(written, Path(row.isKept ? "list-3.xml" : "list.xml")) << row.name;
        EXPECT_EQ(Read(written), "ours") << row.name;
        EXPECT_EQ(Read("list-2.xml"), "taken") << row.name;
        EXPECT_FALSE(REPORTGENERATOR::LastWriteFailure());
        if (!row.isKept) {
            EXPECT_EQ(traces.problems, QStringList()) << row.name;
            continue;
        }
        EXPECT_EQ(Read("list.xml"), theirs) << row.name;
        EXPECT_EQ(traces.problems,
                  QStringList(Path("list.xml") + ": was changed by another program and is kept; written as " +
                              Path("list-3.xml")));
        Save("list.xml", "ours"); // once more, as a window and its list do at the end
        EXPECT_FALSE(QFile::exists(Path("list-4.xml"))) << row.name;
        OutputFile file(Path("list.xml"));
        file.ReplaceAnyway();
        EXPECT_EQ(Save(file, Path("list.xml"), "ours"), Path("list.xml")) << row.name;
        EXPECT_EQ(Read("list.xml"), "ours") << row.name;
    }
}

TEST_F(OutputFiles, WhoHasNothingNewWritesNothing) {
    Write("list.xml", "old");
    FileStamps::NoteRead(Path("list.xml"));
    Write("list.xml", "theirs");
    const Traces traces;
    EXPECT_EQ(Save("list.xml", "old"), Path("list.xml"));
    EXPECT_EQ(Read("list.xml"), "theirs");
    EXPECT_EQ(FileNames(), QStringList("list.xml"));
    EXPECT_EQ(traces.problems.size(), 1);
}

TEST_F(OutputFiles, BesideNamesKeepFolderAndEnding) {
    const std::pair<const char*, const char*> rows[] = {
        {"a.xml", "a-2.xml"}, {"a.b.noi", "a.b-2.noi"}, {"list", "list-2"}, {"sub/a.ltl", "sub/a-2.ltl"}};
    for (const auto& [name, beside] : rows)
        EXPECT_EQ(REPORTGENERATOR::FreeNameBeside(Path(name)), Path(beside));
}

/// Another process, which begins a save in the folder and waits for its end.
class KilledSave {
public:
    explicit KilledSave(const QString& path) {
        int ready[2];
        EXPECT_EQ(::pipe(ready), 0);
        m_process = ::fork();
        if (m_process == 0) {
            const OutputFile file(path);
            EXPECT_EQ(::write(ready[1], "x", 1), 1);
            for (;;)
                ::pause();
        }
        char byte = 0;
        EXPECT_EQ(::read(ready[0], &byte, 1), 1);
        ::close(ready[0]);
        ::close(ready[1]);
    }
    ~KilledSave() { End(); }
    void End() {
        if (m_process > 0) {
            ::kill(m_process, SIGKILL);
            ::waitpid(m_process, nullptr, 0);
        }
        m_process = 0;
    }

private:
    pid_t m_process = 0;
};

TEST_F(OutputFiles, WhatKilledSavesLeftGoesAndWhatLivingOnesWriteStays) {
    Write(".freqstore-elsewhere-1-1.part", "of another machine");
    Write(".freqstore-x.part", "of another program");
    KilledSave killed(Path("list.xml"));
    EXPECT_EQ(FileNames().size(), 3);
    Save("other.xml", "new");
    EXPECT_EQ(FileNames().size(), 4) << "the process lives";
    killed.End();
    Save("other.xml", "newer");
    EXPECT_EQ(FileNames(), QStringList({".freqstore-elsewhere-1-1.part", ".freqstore-x.part", "other.xml"}));
}

} // namespace
