#include "controls/frequencystore/common/paths.h"
#include "host/valuetree/tree.h"
#include "tests/cli/runcli.h"

#include <sys/stat.h>

namespace {

class CommandTest : public testing::Test, protected TestFolder {};

TEST_F(CommandTest, WrongCommandLinesAreToldAndChangeNothing) {
    const QString file = Sample("targets.ltl");
    const QString out = Path("out.xml");
    const std::pair<QStringList, const char*> rows[] = {
        {{}, "Usage:"},
        {{"frobnicate"}, "no command is called \"frobnicate\""},
        {{"show"}, "show"},
        {{"show", file, file}, "show"},
        {{"show", "--format", "yaml", file}, "yaml"},
        {{"show", "--list", "nothing", file}, "nothing"},
        {{"show", "--frob", file}, "frob"},
        {{"convert", file}, "convert"},
        {{"convert", "--list", "nothing", file, out}, "nothing"},
        {{"check"}, "check"},
    };
    for (const auto& [arguments, message] : rows) {
        const CliResult result = Cli(arguments);
        EXPECT_TRUE(result.out.empty()) << result.out;
        EXPECT_TRUE(result.Is(ExitUsage, message)) << arguments.join(QLatin1Char(' ')).toStdString();
    }
    EXPECT_FALSE(QFile::exists(out));
    for (const char* const command : {"show", "convert", "check"}) {
        EXPECT_TRUE(Cli({Q(command), "--help"}).Is(ExitDone, "--list"));
    }
}

TEST_F(CommandTest, BadFilesAreToldWithFileLineAndReason) {
    struct {
        const char* name;
        QByteArray bytes;
        const char* problem; ///< behind the file's name
        const char* entries;
    } const rows[] = {
        {"third.ltl", "7055000\t3000\n8000000\t3000\n@@@\n9000000\t2000\n",
         ":3: \"@@@\" is no frequency; 0 is taken", "4 entries"},
        {"nul.sfl", QByteArray("7055000\t\0x\n", 11), ":1: is no text file", "no entries"},
        {"cut.xml", Read(Sample("targets.xml")).left(20000), ":616: the file ends within markup",
         "no entries"},
        {"root.xml", "<Foo/>", ": is no list and holds no profiles (root \"Foo\")", "no entries"},
        {"cell.csv", "Frequency,Bandwidth\n7055000,3000\n8000000,abc\n",
         ":3: Bandwidth \"abc\" is not a number", "no entries"},
        {"empty.csv", "", ":1: the file is empty", "no entries"},
        {"notes.txt", "calling frequencies\n", ": is of no known kind of file", "no entries"},
        {"table.txt", "7055000\t3000\n", ":1: is a table of another program", "no entries"},
    };
    for (const auto& row : rows) {
        const QString path = Write(row.name, row.bytes);
        const CliResult result = Cli("check", {path});
        EXPECT_TRUE(result.Is(ExitFile, path + Q(row.problem))) << row.name;
        EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
        EXPECT_NE(result.out.find(row.entries), std::string::npos) << result.out;
        const bool partly = row.entries[0] != 'n';
        const QString out = Write("out.xml", "old");
        EXPECT_TRUE(Cli("convert", {path, out}).Is(ExitFile)) << row.name;
        EXPECT_EQ(Read(out) == "old", !partly) << row.name << ": nothing replaces a file by an unread one";
        EXPECT_EQ(Read(path), row.bytes) << row.name;
    }
}

TEST_F(CommandTest, TablesForSpreadsheetsAreReadAsAllOthers) {
    const QString lines = Write("a.ltl", "7055000\t3000\t=1+1\tUSB\n8000000\t10\t'a\tAM\n");
    const QString safe = Path("safe.csv");
    EXPECT_TRUE(Cli("convert --spreadsheet-safe", {lines, safe}).Is(ExitDone));
    EXPECT_TRUE(Read(safe).contains(",'=1+1,") && Read(safe).contains(",''a,"));
    EXPECT_TRUE(Cli("check", {safe}).Is(ExitDone));
    const QString plain = Path("plain.csv");
    EXPECT_TRUE(Cli("convert", {safe, plain}).Is(ExitDone));
    EXPECT_TRUE(Read(plain).contains(",=1+1,") && Read(plain).contains(",'a,"));
}

TEST_F(CommandTest, WhatIsNoFileIsNeitherReadNorWritten) {
    const QString good = Sample("targets.ltl");
    QDir(m_folder.path()).mkdir(Q("folder.ltl"));
    ASSERT_EQ(mkfifo(qPrintable(Path("pipe.ltl")), 0600), 0);
    QFile::link(Q("/dev/zero"), Path("endless.ltl"));
    QFile::link(Path("circle.ltl"), Path("circle.ltl"));
    for (const char* name : {"missing.ltl", "folder.ltl", "pipe.ltl", "endless.ltl", "circle.ltl"}) {
        EXPECT_TRUE(Cli("show", {Path(name)}).Is(ExitFile, name)) << name;
    }
    for (const QString& target :
         {Path("folder.ltl"), Path("no/folder/x.xml"), Q("/proc/x.csv"), Q("/dev/full.ltl/x.ltl")}) {
        EXPECT_TRUE(Cli("convert", {good, target}).Is(ExitFile, target)) << target.toStdString();
    }
    EXPECT_TRUE(QFileInfo(Path("folder.ltl")).isDir());
}

TEST_F(CommandTest, EveryFormatConvertsToEveryOther) {
    const char* const formats[] = {"ltl", "xml", "csv", "json"};
    ASSERT_TRUE(Cli("convert", {Sample("targets.xml"), Path("targets.json")}).Is(ExitDone));
    for (const char* from : formats) {
        const QString name = Q("targets.") + Q(from);
        const QString first = name.endsWith(Q("json")) ? Path(name) : Sample(name);
        const QJsonArray expected = ShownBy("show", {first});
        ASSERT_GE(expected.size(), 300) << from;
        for (const char* to : formats) {
            const QString there = Path("there." + Q(to));
            const QString back = Path("back." + Q(from));
            ASSERT_TRUE(Cli("convert", {first, there}).Is(ExitDone)) << from << to;
            ASSERT_TRUE(Cli("convert", {there, back}).Is(ExitDone)) << from << to;
            QJsonArray got = ShownBy("show", {back});
            QJsonArray want = expected;
            if (qstrcmp(to, "ltl") == 0) {
                // Lines hold no profile.
                for (QJsonArray* entries : {&got, &want}) {
                    for (auto&& entry : *entries) {
                        QJsonObject object = entry.toObject();
                        for (const char* key :
                             {"profileid", "profilename", "signalclass", "transmissionsystem"})
                            object.remove(Q(key));
                        entry = object;
                    }
                }
            }
            EXPECT_EQ(got, want) << from << " by " << to;
        }
        // Written as .sfl and read back, comment and bandwidth have changed places: the name promises the
        // order of one format, the content has that of the other.
        const QString sfl = Path("there.sfl");
        ASSERT_TRUE(Cli("convert", {first, sfl}).Is(ExitDone));
        const QJsonArray exchanged =
            ShownBy("show", {sfl}, ExitFile); // most comments are no bandwidth, and that is told
        ASSERT_EQ(exchanged.size(), expected.size());
        for (qsizetype i = 0; i < exchanged.size(); ++i) {
            EXPECT_EQ(exchanged[i].toObject()[Q("comment")].toString().toDouble(),
                      expected[i].toObject()[Q("bandwidth")].toDouble());
        }
    }
}

TEST_F(CommandTest, EntriesAreShownAsTableLinesAndJson) {
    const QString file = Write("two.ltl", "7055000\t2700\tcalling \"x\"\tUSB\tp\thostile\t1\n"
                                          "145500000\t12000\t\xc3\xa4\\\tFM\tg\tfriendly\t3\n");
    const QJsonArray entries = ShownBy("show", {file});
    ASSERT_EQ(entries.size(), 2);
    EXPECT_EQ(entries[0].toObject()[Q("frequency")].toDouble(), 7055000);
    EXPECT_EQ(entries[0].toObject()[Q("comment")].toString(), Q("calling \"x\""));
    EXPECT_EQ(entries[1].toObject()[Q("comment")].toString(), Q("ä\\"));
    EXPECT_EQ(entries[1].toObject()[Q("demodulation")].toString(), Q("FM"));
    EXPECT_TRUE(entries[1].toObject()[Q("priority")].isDouble());
    EXPECT_EQ(entries[1].toObject()[Q("type")].toString(), Q("n"));

    const std::string lines = Cli("show --format tsv", {file}).out;
    EXPECT_EQ(std::count(lines.begin(), lines.end(), '\n'), 3);
    EXPECT_NE(lines.find("\tcalling \"x\"\t"), std::string::npos) << lines;
    const std::string table = Cli("show", {file}).out;
    EXPECT_NE(table.find("frequency"), std::string::npos) << table;
    EXPECT_NE(table.find("145500000"), std::string::npos) << table;
}

/// A program that ends takes no tree apart; the lists of one that goes on do not add up.
TEST_F(CommandTest, EntriesStandInTheTreeUntilTheNextList) {
    const auto countAt = [](QLatin1String path) {
        const Node* list = Tree::Instance()->GetNode(path);
        return list ? list->ChildCount() : 0;
    };
    const QString file = Write("two.ltl", "1\t2\ta\n2\t2\tb\n");
    testing::internal::CaptureStdout();
    EXPECT_EQ(RunCli({"check", file, file}), ExitDone);
    EXPECT_EQ(countAt(Paths::Targets), 2u);
    EXPECT_EQ(RunCli({"check", Sample("interest.noi")}), ExitDone);
    EXPECT_EQ(countAt(Paths::Targets), 0u);
    EXPECT_GT(countAt(Paths::Noi), 0u);
    EndLeftLists();
    EXPECT_EQ(countAt(Paths::Noi), 0u);
    EXPECT_EQ(testing::internal::GetCapturedStdout().find("4 entries"), std::string::npos);
}

} // namespace
