#include "controls/frequencystore/files/filelook.h"
#include "tests/support/testfolder.h"

#include <QProcess>

#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>

namespace {

constexpr int WaitMilliseconds = 60000;

/// The program itself, without a display, with directories of its own.
class Program : public QProcess {
public:
    Program(const QDir& folder, const QStringList& arguments) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QT_QPA_PLATFORM", "offscreen");
        setProcessEnvironment(environment);
        m_arguments =
            QStringList{"--data", folder.filePath("data"), "--config", folder.filePath("config")} + arguments;
    }
    ~Program() override {
        if (state() == NotRunning)
            return;
        kill();
        waitForFinished(WaitMilliseconds);
    }
    /// Runs until it writes a line with this text, or ends.
    bool StartUntil(const char* text) {
        start(FREQSTORE_PROGRAM, m_arguments);
        while (!m_error.contains(text) && waitForError())
            m_error += readAllStandardError();
        return m_error.contains(text);
    }
    void Signal(int number) { ::kill(static_cast<pid_t>(processId()), number); }
    /// Its exit code; -1 when it was killed.
    int Wait() {
        waitForFinished(WaitMilliseconds);
        m_error += readAllStandardError();
        return exitStatus() == NormalExit ? exitCode() : -1;
    }
    const QByteArray& Error() const { return m_error; }

private:
    bool waitForError() {
        setReadChannel(StandardError);
        return waitForReadyRead(WaitMilliseconds);
    }

    QStringList m_arguments;
    QByteArray m_error;
};

class Programs : public testing::Test, protected TestFolder {
protected:
    /// A missing file is told when everything stands.
    static constexpr char Ready[] = "missing.ltl: ";
    QStringList arguments() {
        return {Write("bands.xml", "<FrequencyStoreList Version=\"1\" Usage=\"NOI\"><FrequencyStoreEntry>"
                                   "<FFM_Settings><Frequency>7055000</Frequency></FFM_Settings>"
                                   "</FrequencyStoreEntry></FrequencyStoreList>"),
                "missing.ltl"};
    }
    QDir folder() const { return QDir(m_folder.path()); }
};

TEST_F(Programs, ThatASignalEndsHaveSavedTheList) {
    for (const int number : {SIGTERM, SIGHUP, SIGINT}) {
        QFile::remove(Path("data/NoiFrequencies.xml"));
        Program program(folder(), arguments());
        ASSERT_TRUE(program.StartUntil(Ready)) << program.Error().toStdString();
        program.Signal(number);
        EXPECT_EQ(program.Wait(), 0) << program.Error().toStdString();
        EXPECT_EQ(LookAtFile(Path("data/NoiFrequencies.xml")).rows, 1) << "signal " << number;
    }
}

TEST_F(Programs, ThatCannotSaveTheListSaySoAndFail) {
    Program program(folder(), arguments());
    program.setChildProcessModifier([] {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit none{0, 0};
        setrlimit(RLIMIT_FSIZE, &none);
    });
    ASSERT_TRUE(program.StartUntil(Ready)) << program.Error().toStdString();
    program.Signal(SIGTERM);
    EXPECT_EQ(program.Wait(), 2);
    EXPECT_TRUE(program.Error().contains("NoiFrequencies.xml: ")) << program.Error().toStdString();
}

TEST_F(Programs, ThatShareADirectorySayIt) {
    constexpr char Shared[] = "is also used by freqstore (process ";
    Program first(folder(), arguments());
    ASSERT_TRUE(first.StartUntil(Ready));
    EXPECT_FALSE(first.Error().contains(Shared));
    Program second(folder(), arguments());
    ASSERT_TRUE(second.StartUntil(Ready));
    EXPECT_TRUE(second.Error().contains(Shared + QByteArray::number(first.processId())))
        << second.Error().toStdString();
    // The second one has read bands of its own: they go into a file of their own.
    second.Signal(SIGTERM);
    EXPECT_EQ(second.Wait(), 0) << second.Error().toStdString();
    EXPECT_FALSE(QFile::exists(Path("data/NoiFrequencies.xml")));
    first.Signal(SIGKILL);
    EXPECT_EQ(first.Wait(), -1);
    Program third(folder(), arguments());
    ASSERT_TRUE(third.StartUntil(Ready));
    EXPECT_FALSE(third.Error().contains(Shared)) << "the first one is dead";
}

} // namespace
