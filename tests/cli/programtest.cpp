#include "tests/cli/runcli.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// Runs the built program, where bytes of arguments and the kind of standard output matter.
class ProgramTest : public testing::Test, protected TestFolder {
protected:
    /// The exit code, or the negative number of the signal that ended it. Standard error goes to a file;
    /// standard output is closed when `out` is negative.
    int Run(const std::vector<std::string>& arguments, int out) {
        std::vector<char*> argv{const_cast<char*>(CLI_PROGRAM)};
        for (const std::string& argument : arguments)
            argv.push_back(const_cast<char*>(argument.c_str()));
        argv.push_back(nullptr);
        char locale[] = "LC_ALL=C";
        char* environment[] = {locale, nullptr};
        posix_spawn_file_actions_t files;
        posix_spawn_file_actions_init(&files);
        if (out < 0)
            posix_spawn_file_actions_addclose(&files, STDOUT_FILENO);
        else
            posix_spawn_file_actions_adddup2(&files, out, STDOUT_FILENO);
        posix_spawn_file_actions_addopen(&files, STDERR_FILENO, qPrintable(Path("err")),
                                         O_WRONLY | O_CREAT | O_TRUNC, 0600);
        pid_t process = 0;
        EXPECT_EQ(posix_spawn(&process, CLI_PROGRAM, &files, nullptr, argv.data(), environment), 0);
        posix_spawn_file_actions_destroy(&files);
        int status = 0;
        EXPECT_EQ(waitpid(process, &status, 0), process);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    }
    int RunTo(const QString& path, const std::vector<std::string>& arguments) {
        const int out = open(qPrintable(path), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        EXPECT_GE(out, 0);
        const int exitCode = Run(arguments, out);
        close(out);
        return exitCode;
    }
    /// Small and large outputs: some are written at the end only.
    static std::vector<std::vector<std::string>> PrintingCommands() {
        const std::string targets = Sample("targets.xml").toStdString();
        return {{"--help"},
                {"--version"},
                {"show", "--help"},
                {"job", "-h"},
                {"show", targets},
                {"show", "--format", "tsv", targets},
                {"show", "--format", "json", targets},
                {"check", targets, targets},
                {"bands", Sample("interest.noi").toStdString()},
                {"job", "show", Sample("job-hf.pij").toStdString()},
                {"detect", Sample("sweep.csv").toStdString(), "signals.xml"}};
    }
    void SetUp() override { QDir::setCurrent(m_folder.path()); }
    void TearDown() override { QDir::setCurrent(m_before); }

    QString m_before = QDir::currentPath();
};

TEST_F(ProgramTest, AFullDiskAndAClosedOutputAreToldAndAPipeWithoutReaderIsNot) {
    for (const std::vector<std::string>& arguments : PrintingCommands()) {
        SCOPED_TRACE(arguments.back());
        EXPECT_EQ(RunTo(Q("/dev/full"), arguments), ExitFile);
        EXPECT_EQ(Read("err"), "standard output: cannot be written: No space left on device\n");
        int ends[2];
        ASSERT_EQ(pipe2(ends, O_CLOEXEC), 0);
        close(ends[0]);
        EXPECT_EQ(Run(arguments, ends[1]), ExitFile);
        EXPECT_EQ(Read("err"), "");
        close(ends[1]);
        EXPECT_EQ(Run(arguments, -1), ExitFile);
        EXPECT_EQ(Read("err"), "standard output: cannot be written: Bad file descriptor\n");
    }
}

TEST_F(ProgramTest, ATerminalGetsVisibleTextAndAFileTheBytes) {
    const std::string name = "a\u202e\u009b\x1b[2J\u00fc.ltl";
    Write(QString::fromStdString(name), "7055000\t3000\tx\u202ey\u0085z\tUSB\n");
    const std::vector<std::string> show = {"show", "--format", "tsv", name};
    const std::vector<std::string> check = {"check", name};
    EXPECT_EQ(RunTo(Path("out"), show), ExitDone) << Read("err").constData();
    EXPECT_TRUE(Read("out").contains("\tx\u202ey\u0085z\t")) << Read("out").constData();
    EXPECT_EQ(RunTo(Path("out"), check), ExitDone);
    EXPECT_TRUE(Read("out").startsWith(name.c_str())) << "the locale does not matter";

    const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
    ASSERT_GE(terminal, 0);
    ASSERT_EQ(grantpt(terminal), 0);
    ASSERT_EQ(unlockpt(terminal), 0);
    const int out = open(ptsname(terminal), O_RDWR | O_NOCTTY | O_CLOEXEC);
    ASSERT_GE(out, 0);
    EXPECT_EQ(Run(show, out), ExitDone);
    EXPECT_EQ(Run(check, out), ExitDone);
    ASSERT_EQ(fcntl(terminal, F_SETFL, O_NONBLOCK), 0);
    std::string shown;
    char bytes[4096];
    for (ssize_t count = 0; (count = read(terminal, bytes, sizeof bytes)) > 0;)
        shown.append(bytes, static_cast<size_t>(count));
    close(out);
    close(terminal);
    EXPECT_NE(shown.find("\tx\\u202ey\\u0085z\t"), std::string::npos) << shown;
    EXPECT_EQ(shown.find("\\u000a"), std::string::npos) << shown;
    EXPECT_NE(shown.find("a\\u202e\\u009b\\u001b[2J\u00fc.ltl: LTL lines"), std::string::npos) << shown;
}

TEST_F(ProgramTest, NamesThatAreNotUtf8AreRefused) {
    const std::string out = "caf\xe9.csv";
    EXPECT_EQ(RunTo(Path("out"), {"convert", Sample("targets.ltl").toStdString(), out}), ExitUsage);
    EXPECT_EQ(Read("err"), "freqstore-cli: \"caf\\xe9.csv\" is not UTF-8\n");
    EXPECT_EQ(FileNames().size(), 2);
}

} // namespace
