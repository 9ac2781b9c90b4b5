// Passwords of brokers in a real keyring, where one is installed: one of the test's own, on a message bus of
// its own.

#include "host/gui/listsettings.h"
#include "tests/link/linkfixture.h"
#include "tests/support/testfolder.h"
#include "workstation/shareprofile.h"

#include <QProcess>
#include <QStandardPaths>

#include <csignal>

namespace {

constexpr char Anna[] = "mqtts://anna@broker.example.org/north";
constexpr char Bert[] = "mqtts://bert@broker.example.org/north";

class Keyring : public testing::Test, protected TestFolder {
protected:
    void SetUp() override {
        for (const char* program : {"dbus-daemon", "dbus-send", "gnome-keyring-daemon"}) {
            if (QStandardPaths::findExecutable(Q(program)).isEmpty())
                GTEST_SKIP() << program << " is not installed";
        }
        startBus();
        start(true);
    }
    void TearDown() override {
        stop();
        m_bus.kill();
        m_bus.waitForFinished();
    }
    /// A locked keyring finds nobody on this bus who would unlock it.
    void start(bool unlocked) {
        QStringList arguments{"--foreground", "--components=secrets"};
        if (unlocked)
            arguments << "--unlock";
        m_daemon.setProcessEnvironment(m_environment);
        m_daemon.start(Q("gnome-keyring-daemon"), arguments);
        m_daemon.write("of the login");
        m_daemon.closeWriteChannel();
        ASSERT_TRUE(Until([&] { return isThere(); }));
    }
    void stop() {
        m_daemon.kill();
        m_daemon.waitForFinished();
    }
    void restart(bool unlocked) {
        stop();
        ASSERT_TRUE(Until([&] { return !isThere(); }));
        start(unlocked);
    }
    /// As another start of the program.
    QString does(const QStringList& arguments) {
        QProcess child;
        begin(child, arguments);
        EXPECT_TRUE(child.waitForFinished());
        return Q(child.readAllStandardOutput().trimmed().split('\n').last());
    }
    void begin(QProcess& child, const QStringList& arguments) {
        child.setProcessEnvironment(m_environment);
        child.start(Q(KEYRING_CHILD), arguments);
    }
    qint64 daemon() const { return m_daemon.processId(); }

private:
    void startBus() {
        const QString configuration =
            Write("bus.conf", "<busconfig><type>session</type><listen>unix:dir=" + m_folder.path().toUtf8() +
                                  "</listen><policy context=\"default\"><allow send_destination=\"*\" "
                                  "eavesdrop=\"true\"/><allow eavesdrop=\"true\"/><allow own=\"*\"/>"
                                  "</policy></busconfig>");
        m_bus.start(Q("dbus-daemon"), {"--nofork", "--print-address", "--config-file=" + configuration});
        ASSERT_TRUE(m_bus.waitForReadyRead());
        for (const char* folder : {"HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR"})
            m_environment.insert(Q(folder), m_folder.path());
        m_environment.insert("DBUS_SESSION_BUS_ADDRESS", Q(m_bus.readLine().trimmed()));
        m_environment.remove("DISPLAY");
        m_environment.insert("QT_QPA_PLATFORM", "offscreen");
        m_environment.remove("FREQSTORE_SHARE_PASSWORD");
    }
    bool isThere() {
        QProcess asks;
        asks.setProcessEnvironment(m_environment);
        asks.start(Q("dbus-send"),
                   {"--session", "--print-reply", "--reply-timeout=5000", "--dest=org.freedesktop.DBus", "/",
                    "org.freedesktop.DBus.NameHasOwner", "string:org.freedesktop.secrets"});
        return asks.waitForFinished() && asks.readAllStandardOutput().contains("true");
    }

    QProcessEnvironment m_environment = QProcessEnvironment::systemEnvironment();
    QProcess m_bus;
    QProcess m_daemon;
};

TEST_F(Keyring, KeepsPasswordsOverItsEndUntilTheyAreForgotten) {
    EXPECT_EQ(does({"find", Anna}), "not: there is none in the keyring");
    EXPECT_EQ(does({"keep", Anna, "first"}), "done");
    EXPECT_EQ(does({"keep", Anna, "sécond"}), "done");
    EXPECT_EQ(does({"keep", Bert, "other"}), "done");
    restart(true);
    EXPECT_EQ(does({"find", Anna}), "password sécond");
    EXPECT_EQ(does({"find", "mqtts://anna@broker.example.org/south"}), "password sécond");
    EXPECT_EQ(does({"find", "mqtts://anna@other.example.org/north"}), "not: there is none in the keyring");
    EXPECT_EQ(does({"forget", Anna}), "done");
    EXPECT_EQ(does({"find", Anna}), "not: there is none in the keyring");
    EXPECT_EQ(does({"forget", Anna}), "done") << "there is none any more";
    EXPECT_EQ(does({"find", Bert}), "password other");
}

TEST_F(Keyring, ForgetsThePasswordWithTheLastConnectionThatNeedsIt) {
    ListSettings::SetDirectory(m_folder.path());
    const ShareProfile profiles[] = {{.name = "North", .url = Anna},
                                     {.name = "South", .url = "mqtts://anna@broker.example.org/south"},
                                     {.name = "Other", .url = Bert},
                                     {.name = "Filed", .url = Anna, .passwordFile = "/etc/hostname"}};
    ShareProfile::Save({std::begin(profiles), std::end(profiles)});
    ShareProfile::SetAtStart(profiles[2]);
    ListSettings::SetDirectory(QString());
    EXPECT_EQ(does({"keep", Anna, "first"}), "done");
    EXPECT_EQ(does({"keep", Bert, "other"}), "done");
    const QString none = "The keyring has no password of this user any more.";
    const std::pair<const char*, QString> rows[] = {
        {"Filed", "Name the broker's machine."},
        {"North", "The password stays in the keyring: South needs it, too."},
        {"Other", "The password stays in the keyring: the connection at the program's start needs it."},
        {"South", none},
    };
    for (const auto& [name, answer] : rows) {
        SCOPED_TRACE(name);
        EXPECT_EQ(does({"find", Anna}), "password first");
        EXPECT_EQ(does({"remove", Q(name), m_folder.path()}), answer);
    }
    EXPECT_EQ(does({"find", Anna}), "not: there is none in the keyring");
    EXPECT_EQ(does({"find", Bert}), "password other");
}

TEST_F(Keyring, ThatIsLockedSaysSoAndKeepsWhatItHas) {
    EXPECT_EQ(does({"keep", Anna, "first"}), "done");
    restart(false);
    EXPECT_EQ(does({"find", Anna}), "not: the keyring is locked");
    EXPECT_TRUE(does({"keep", Anna, "second"}).startsWith("not: "));
    EXPECT_EQ(does({"forget", Anna}), "not: the keyring is locked") << "it was not removed";
    restart(true);
    EXPECT_EQ(does({"find", Anna}), "password first");
}

TEST_F(Keyring, ThatTakesItsTimeHoldsUpNothing) {
    EXPECT_EQ(does({"keep", Anna, "first"}), "done");
    ASSERT_EQ(::kill(static_cast<pid_t>(daemon()), SIGSTOP), 0);
    QProcess child;
    begin(child, {"find", Anna});
    for (int line = 0; line < 3; ++line) {
        while (!child.canReadLine())
            ASSERT_TRUE(child.waitForReadyRead());
        EXPECT_EQ(child.readLine(), "alive\n");
    }
    ASSERT_EQ(::kill(static_cast<pid_t>(daemon()), SIGCONT), 0);
    EXPECT_TRUE(child.waitForFinished());
    EXPECT_TRUE(child.readAllStandardOutput().endsWith("password first\n"));
}

} // namespace
