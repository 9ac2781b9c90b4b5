#include "host/startup/cfgcenter.h"
#include "tests/cli/runcli.h"

namespace {

/// Runs in a folder of its own, whose settings name a list that no command may touch.
class BandsTest : public testing::Test, protected TestFolder {
protected:
    void SetUp() override {
        QDir::setCurrent(m_folder.path());
        CfgCenter::SetDirectory(m_folder.path());
        CfgCenter::GetAppCfg(ICfg::StartUp).SetString(Q("NOIFrequencies"), Q("remembered.noi"));
        Write("remembered.noi", "1\tremembered\t2\n");
        m_settings = Read("Application.ini");
    }
    void TearDown() override {
        EXPECT_EQ(Read("remembered.noi"), "1\tremembered\t2\n");
        EXPECT_EQ(Read("Application.ini"), m_settings);
        EXPECT_FALSE(QFile::exists(Q("NoiFrequencies.xml")));
        CfgCenter::SetDirectory(QString());
        QDir::setCurrent(m_before);
    }

    QString m_before = QDir::currentPath();
    QByteArray m_settings;
};

TEST_F(BandsTest, TheBandListOfEachKindOfFile) {
    Write("two.noi", "100000000\tone\t10000\n5000.4\ttwo\t1\n");
    EXPECT_TRUE(Cli("convert two.noi two.xml").Is(ExitDone));
    EXPECT_TRUE(Cli("convert two.noi two.csv").Is(ExitDone));
    EXPECT_TRUE(Cli("convert --list noi two.csv again.noi").Is(ExitDone));
    EXPECT_TRUE(Cli("convert again.noi two.json").Is(ExitDone));
    const std::string expected = "99995000,100005000;5000,5001;\n";
    for (const char* name : {"two.noi", "two.xml", "two.csv", "two.json", "again.noi"}) {
        EXPECT_EQ(Cli("bands", {name}).out, expected) << name;
        const QString out = Write("out.txt", "old");
        const CliResult written = Cli("bands --out", {out, Q(name)});
        EXPECT_TRUE(written.Is(ExitDone) && written.out.empty()) << name;
        EXPECT_EQ(Read(out).toStdString(), expected);
    }
    EXPECT_EQ(Cli("bands", {Write("empty.noi", "")}).out, "\n");
    const CliResult table = Cli("show two.noi");
    EXPECT_NE(table.out.find("one"), std::string::npos) << table.out;
    EXPECT_NE(table.out.find("bandwidth"), std::string::npos) << table.out;
    EXPECT_TRUE(Cli("check", {Sample("interest.noi")}).Is(ExitDone, "NOI lines, 30 entries, no problems"));
}

TEST_F(BandsTest, WrongCommandLinesAndBadFilesAreTold) {
    for (const QStringList& arguments : {QStringList{"bands"},
                                         {"bands", "a.noi", "b.noi"},
                                         {"bands", "--out", "./remembered.noi", "remembered.noi"},
                                         {"bands", "--list", "noi", "a"}})
        EXPECT_TRUE(Cli(arguments).Is(ExitUsage));
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
        {"cut.xml", "<FrequencyStoreList><FrequencyStoreEntry>", "cut.xml:1: the file ends", ""},
        {"notes.txt", "12\n", "notes.txt: is of no known kind of file", ""},
    };
    for (const auto& row : rows) {
        const QString path = Write(row.name, row.bytes);
        const CliResult result = Cli("bands", {path});
        EXPECT_EQ(result.out, row.bands) << row.name;
        EXPECT_TRUE(result.Is(ExitFile, row.problem)) << row.name;
        EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), row.problems) << result.err;
        EXPECT_EQ(Read(path), row.bytes);
    }
    EXPECT_TRUE(Cli("bands missing.noi").Is(ExitFile));
    const QString good = Write("good.noi", "12\ta\t1\n");
    for (const char* out : {"no/folder/x", "/proc/x", "."})
        EXPECT_TRUE(Cli("bands --out", {Q(out), good}).Is(ExitFile)) << out;
}

} // namespace
