#include "host/startup/cfgcenter.h"
#include "tests/cli/runcli.h"
#include "tests/support/testfolder.h"

#include <QDir>
#include <QFile>

namespace {

/// Runs in a folder of its own, whose settings name a list that no command may touch.
class BandsTest : public testing::Test, protected TestFolder {
protected:
    void SetUp() override {
        QDir::setCurrent(m_folder.path());
        CfgCenter::SetDirectory(m_folder.path());
        CfgCenter::GetAppCfg(ICfg::StartUp).SetString(Q("NOIFrequencies"), Q("remembered.noi"));
        Write("remembered.noi", "1\tremembered\t2\n");
        m_settings = Read(Q("Application.ini"));
    }
    void TearDown() override {
        EXPECT_EQ(Read(Q("remembered.noi")), "1\tremembered\t2\n");
        EXPECT_EQ(Read(Q("Application.ini")), m_settings);
        EXPECT_FALSE(QFile::exists(Q("NoiFrequencies.xml")));
        CfgCenter::SetDirectory(QString());
        QDir::setCurrent(m_before);
    }

    QString m_before = QDir::currentPath();
    QByteArray m_settings;
};

TEST_F(BandsTest, TheBandListOfEachKindOfFile) {
    Write("two.noi", "100000000\tone\t10000\n5000.4\ttwo\t1\n");
    EXPECT_EQ(Cli({Q("convert"), Q("two.noi"), Q("two.xml")}).exitCode, ExitDone);
    EXPECT_EQ(Cli({Q("convert"), Q("two.noi"), Q("two.csv")}).exitCode, ExitDone);
    EXPECT_EQ(Cli({Q("convert"), Q("--list"), Q("noi"), Q("two.csv"), Q("again.noi")}).exitCode, ExitDone);
    EXPECT_EQ(Cli({Q("convert"), Q("again.noi"), Q("two.json")}).exitCode, ExitDone);
    const std::string expected = "99995000,100005000;5000,5001;\n";
    for (const char* name : {"two.noi", "two.xml", "two.csv", "two.json", "again.noi"}) {
        const CliResult shown = Cli({Q("bands"), Q(name)});
        EXPECT_EQ(shown.exitCode, ExitDone) << name << shown.err;
        EXPECT_EQ(shown.out, expected) << name;
        const QString out = Write("out.txt", "old");
        const CliResult written = Cli({Q("bands"), Q("--out"), out, Q(name)});
        EXPECT_EQ(written.exitCode, ExitDone) << name;
        EXPECT_TRUE(written.out.empty());
        EXPECT_EQ(Read(out).toStdString(), expected);
    }
    EXPECT_EQ(Cli({Q("bands"), Write("empty.noi", "")}).out, "\n");
    const CliResult table = Cli({Q("show"), Q("two.noi")});
    EXPECT_NE(table.out.find("one"), std::string::npos) << table.out;
    EXPECT_NE(table.out.find("bandwidth"), std::string::npos) << table.out;
    const CliResult checked = Cli({Q("check"), Sample("interest.noi")});
    EXPECT_EQ(checked.exitCode, ExitDone) << checked.err;
    EXPECT_NE(checked.out.find("NOI lines, 30 entries, no problems"), std::string::npos) << checked.out;
}

TEST_F(BandsTest, WrongCommandLinesAndBadFilesAreTold) {
    for (const QStringList& arguments : {QStringList{Q("bands")},
                                         {Q("bands"), Q("a.noi"), Q("b.noi")},
                                         {Q("bands"), Q("--out"), Q("./remembered.noi"), Q("remembered.noi")},
                                         {Q("bands"), Q("--list"), Q("noi"), Q("a")}})
        EXPECT_EQ(Cli(arguments).exitCode, ExitUsage);
    struct {
        const char* name;
        QByteArray bytes;
        const char* problem;
        const char* bands;
        int problems = 1;
    } const rows[] = {
        {"number.noi", "7055000\ta\t0\nabc\tb\t1\n", "number.noi:2: \"abc\" is no frequency",
         "7055000,7055000;0,0;\n", 2},
        {"zero.noi", "0\ta\t5\n", "zero.noi: entries without a frequency above 0", "0,0;\n"},
        {"edge.noi", "10\ta\t100\n", "edge.noi: bands that begin below 0 Hz: 1", "-40,60;\n"},
        {"nul.noi", QByteArray("12\t\0", 4), "nul.noi:1: is no text file", ""},
        {"bytes.noi", "12\ta\n13\t\xc3\x28\n", "bytes.noi:2: is not UTF-8", "12,12;13,13;\n"},
        {"cut.xml", "<FrequencyStoreList><FrequencyStoreEntry>", "cut.xml:1: the file ends", ""},
        {"root.xml", "<Foo/>", "root.xml: is no list and holds no profiles", ""},
        {"cell.csv", "Frequency\n1\nx\n", "cell.csv:3: Frequency \"x\"", ""},
        {"notes.txt", "12\n", "notes.txt: is of no known kind of file", ""},
    };
    for (const auto& row : rows) {
        const QString path = Write(row.name, row.bytes);
        const CliResult result = Cli({Q("bands"), path});
        EXPECT_EQ(result.exitCode, ExitFile) << row.name;
        EXPECT_EQ(result.out, row.bands) << row.name;
        EXPECT_NE(result.err.find(row.problem), std::string::npos) << result.err;
        EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), row.problems) << result.err;
        EXPECT_EQ(Read(path), row.bytes);
    }
    EXPECT_EQ(Cli({Q("bands"), Q("missing.noi")}).exitCode, ExitFile);
    const QString good = Write("good.noi", "12\ta\t1\n");
    for (const char* out : {"no/folder/x", "/proc/x", "."})
        EXPECT_EQ(Cli({Q("bands"), Q("--out"), Q(out), good}).exitCode, ExitFile) << out;
}

} // namespace
