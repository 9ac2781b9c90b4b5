#include "workstation/options.h"

#include <QDir>

#include <gtest/gtest.h>
#include <ostream>

namespace {

TEST(Options, FilesAndDirectoriesAreWhereTheProgramWasStarted) {
    QString error;
    const Options options =
        Options::Parse({"freqstore", "--receiver", "vuhf", "--trace", "34", "--demo", "--extension",
                        "libmine.so", "--job", "my.pij", "lists/a.ltl", "/b.xml"},
                       error);
    EXPECT_EQ(error, QString());
    EXPECT_EQ(options.receiver, ReceiverKind::VUHF);
    EXPECT_EQ(options.traceMask, 34U);
    EXPECT_TRUE(options.demo);
    EXPECT_EQ(options.plugIns, QStringList{QDir::current().filePath("libmine.so")});
    EXPECT_EQ(options.jobFile, QDir::current().filePath("my.pij"));
    EXPECT_EQ(options.files, (QStringList{QDir::current().filePath("lists/a.ltl"), "/b.xml"}));
}

TEST(Options, WithoutArgumentsTheReceiverIsAnHfReceiverAndNothingIsRead) {
    QString error;
    const Options options = Options::Parse({"freqstore"}, error);
    EXPECT_EQ(error, QString());
    EXPECT_EQ(options.receiver, ReceiverKind::HF);
    EXPECT_EQ(options.traceMask, 0U);
    EXPECT_FALSE(options.demo);
    EXPECT_TRUE(options.jobFile.isEmpty());
    EXPECT_TRUE(options.files.isEmpty());
}

TEST(Options, ASiteIsSharedInARole) {
    QString error;
    const Options options = Options::Parse({"freqstore", "--share", "mqtts://anna@host/north", "--role",
                                            "server", "--password-file", "pw", "--ca-file", "/ca.crt"},
                                           error);
    EXPECT_EQ(error, QString());
    EXPECT_EQ(options.share.url, "mqtts://anna@host/north");
    EXPECT_EQ(options.share.role, ShareProfile::Role::Server);
    EXPECT_EQ(options.share.passwordFile, QDir::current().filePath("pw"));
    EXPECT_EQ(options.share.caFile, "/ca.crt");
}

struct WrongLine {
    QStringList arguments;
    const char* complaint;
};

void PrintTo(const WrongLine& line, std::ostream* out) {
    *out << line.arguments.join(' ').toStdString();
}

class WrongOptions : public testing::TestWithParam<WrongLine> {};

TEST_P(WrongOptions, AreNamed) {
    QString error;
    Options::Parse(QStringList{"freqstore"} + GetParam().arguments, error);
    EXPECT_TRUE(error.contains(GetParam().complaint)) << error.toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    Lines, WrongOptions,
    testing::Values(WrongLine{{"--receiver", "hamlib:x"}, "\"x\""},
                    WrongLine{{"--receiver", "hamlib:2@nowhere"}, "host:port"},
                    WrongLine{{"--share", "mqtt://broker.example.org/north"}, "mqtts://"},
                    WrongLine{{"--share", "mqtts://anna:pw@host/north"}, "password"},
                    WrongLine{{"--role", "boss"}, "\"boss\""}, WrongLine{{"--trace", "all"}, "\"all\""},
                    WrongLine{{"--language", "xx"}, "de or en, not \"xx\""},
                    WrongLine{{"--colour"}, "colour"}, WrongLine{{"--data"}, "data"},
                    WrongLine{{"--data", SAMPLES_DIR "/targets.ltl"}, "no directory"},
                    WrongLine{{"--config", SAMPLES_DIR "/targets.ltl/x/y"}, "--config"},
                    WrongLine{{"--screenshot", SAMPLES_DIR "/targets.ltl"}, "targets.ltl is no directory"}));

} // namespace
