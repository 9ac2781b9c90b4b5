#include "tests/cli/runcli.h"
#include "tests/support/testfolder.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <sys/stat.h>

namespace {

class CommandTest : public testing::Test, protected TestFolder {
protected:
    static QJsonArray EntriesOf(const QString& path, int exitCode = ExitDone) {
        const CliResult shown = Cli({Q("show"), Q("--format"), Q("json"), path});
        EXPECT_EQ(shown.exitCode, exitCode) << shown.err;
        return QJsonDocument::fromJson(QByteArray::fromStdString(shown.out)).array();
    }
};

TEST_F(CommandTest, WrongCommandLinesAreToldAndChangeNothing) {
    const QString file = Sample("targets.ltl");
    const QString out = Path(Q("out.xml"));
    const std::pair<QStringList, const char*> rows[] = {
        {{}, "Usage:"},
        {{Q("frobnicate")}, "no command is called \"frobnicate\""},
        {{Q("show")}, "show"},
        {{Q("show"), file, file}, "show"},
        {{Q("show"), Q("--format"), Q("yaml"), file}, "yaml"},
        {{Q("show"), Q("--list"), Q("nothing"), file}, "nothing"},
        {{Q("show"), Q("--frob"), file}, "frob"},
        {{Q("convert"), file}, "convert"},
        {{Q("convert"), Q("--list"), Q("nothing"), file, out}, "nothing"},
        {{Q("check")}, "check"},
    };
    for (const auto& [arguments, message] : rows) {
        const CliResult result = Cli(arguments);
        EXPECT_EQ(result.exitCode, ExitUsage) << arguments.join(QLatin1Char(' ')).toStdString();
        EXPECT_TRUE(result.out.empty()) << result.out;
        EXPECT_NE(result.err.find(message), std::string::npos) << result.err;
    }
    EXPECT_FALSE(QFile::exists(out));
    for (const char* const command : {"show", "convert", "check"}) {
        const CliResult help = Cli({Q(command), Q("--help")});
        EXPECT_EQ(help.exitCode, ExitDone);
        EXPECT_NE(help.out.find("--list"), std::string::npos);
    }
}

TEST_F(CommandTest, BadFilesAreToldWithFileLineAndReason) {
    QByteArray longLine("7055000\t3000\t");
    longLine.append(QByteArray(3000000, 'x')).append("\n8000000\t1\n");
    struct {
        const char* name;
        QByteArray bytes;
        const char* problem; ///< behind the file's name
        const char* entries;
    } const rows[] = {
        {"odd.ltl", Read(Sample("targets.ltl")).left(5001), ":35: file ends within a character",
         "35 entries"},
        {"third.ltl", "7055000\t3000\n8000000\t3000\n@@@\n9000000\t2000\n",
         ":3: \"@@@\" is no frequency; 0 is taken", "4 entries"},
        {"bytes.ltl", "7055000\t3000\n8000000\t3000\tbad \xc3\x28\n",
         ":2: is not UTF-8 from here on; all is read as Windows-1252", "2 entries"},
        {"cut.ltl", "7055000\t3000\r118450000", ":2: the last line has no line end; the file may be cut",
         "2 entries"},
        {"foreign.csv", "Name,Frequency,Duplex\nA,121.500000,\n", ":1: this is a table of CHIRP",
         "no entries"},
        {"nul.sfl", QByteArray("7055000\t\0x\n", 11), ":1: is no text file", "no entries"},
        {"long.ltl", longLine, ":1: line is too long; its end is ignored", "2 entries"},
        {"cut.xml", Read(Sample("targets.xml")).left(20000), ":616: the file ends within markup",
         "no entries"},
        {"root.xml", "<Foo/>", ": is no list and holds no profiles (root \"Foo\")", "no entries"},
        {"version.xml", "<FrequencyStoreList Version=\"2.0\"/>", ": is no list and holds no profiles",
         "no entries"},
        {"entity.xml", "<!DOCTYPE a [<!ENTITY x \"y\">]>\n<FrequencyStoreList/>",
         ":1: entity declarations are refused", "no entries"},
        {"cell.csv", "Frequency,Bandwidth\n7055000,3000\n8000000,abc\n",
         ":3: Bandwidth \"abc\" is not a number", "no entries"},
        {"empty.csv", "", ":1: the file is empty", "no entries"},
        {"notes.txt", "7055000\t3000\n", ": is of no known kind of file", "no entries"},
    };
    for (const auto& row : rows) {
        const QString path = Write(Q(row.name), row.bytes);
        const CliResult result = Cli({Q("check"), path});
        EXPECT_EQ(result.exitCode, ExitFile) << row.name;
        EXPECT_NE(result.err.find((path + Q(row.problem)).toStdString()), std::string::npos) << result.err;
        EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
        EXPECT_NE(result.out.find(row.entries), std::string::npos) << result.out;
        const bool partly = row.entries[0] != 'n';
        const QString out = Write(Q("out.xml"), "old");
        EXPECT_EQ(Cli({Q("convert"), path, out}).exitCode, ExitFile) << row.name;
        EXPECT_EQ(Read(out) == "old", !partly) << row.name << ": nothing replaces a file by an unread one";
        EXPECT_EQ(Read(path), row.bytes) << row.name;
    }
}

TEST_F(CommandTest, TablesForSpreadsheetsAreReadAsAllOthers) {
    const QString lines = Write(Q("a.ltl"), "7055000\t3000\t=1+1\tUSB\n8000000\t10\t'a\tAM\n");
    const QString safe = Path(Q("safe.csv"));
    EXPECT_EQ(Cli({Q("convert"), Q("--spreadsheet-safe"), lines, safe}).exitCode, ExitDone);
    EXPECT_TRUE(Read(safe).contains(",'=1+1,") && Read(safe).contains(",''a,"));
    EXPECT_EQ(Cli({Q("check"), safe}).exitCode, ExitDone);
    const QString plain = Path(Q("plain.csv"));
    EXPECT_EQ(Cli({Q("convert"), safe, plain}).exitCode, ExitDone);
    EXPECT_TRUE(Read(plain).contains(",=1+1,") && Read(plain).contains(",'a,"));
}

TEST_F(CommandTest, WhatIsNoFileIsNeitherReadNorWritten) {
    const QString good = Sample("targets.ltl");
    QDir(m_folder.path()).mkdir(Q("folder.ltl"));
    ASSERT_EQ(mkfifo(qPrintable(Path(Q("pipe.ltl"))), 0600), 0);
    QFile::link(Q("/dev/zero"), Path(Q("endless.ltl")));
    QFile::link(Path(Q("circle.ltl")), Path(Q("circle.ltl")));
    for (const char* name : {"missing.ltl", "folder.ltl", "pipe.ltl", "endless.ltl", "circle.ltl"}) {
        const CliResult shown = Cli({Q("show"), Path(Q(name))});
        EXPECT_EQ(shown.exitCode, ExitFile) << name;
        EXPECT_NE(shown.err.find(name), std::string::npos) << shown.err;
    }
    for (const QString& target :
         {Path(Q("folder.ltl")), Path(Q("no/folder/x.xml")), Q("/proc/x.csv"), Q("/dev/full.ltl/x.ltl")}) {
        const CliResult written = Cli({Q("convert"), good, target});
        EXPECT_EQ(written.exitCode, ExitFile) << target.toStdString();
        EXPECT_NE(written.err.find(target.toStdString()), std::string::npos) << written.err;
    }
    EXPECT_TRUE(QFileInfo(Path(Q("folder.ltl"))).isDir());
}

TEST_F(CommandTest, EveryFormatConvertsToEveryOther) {
    const char* const formats[] = {"ltl", "xml", "csv", "json"};
    ASSERT_EQ(Cli({Q("convert"), Sample("targets.xml"), Path(Q("targets.json"))}).exitCode, ExitDone);
    for (const char* from : formats) {
        const QString name = Q("targets.") + Q(from);
        const QString first = name.endsWith(Q("json")) ? Path(name) : Sample(name);
        const QJsonArray expected = EntriesOf(first);
        ASSERT_GE(expected.size(), 300) << from;
        for (const char* to : formats) {
            const QString there = Path(Q("there.") + Q(to));
            const QString back = Path(Q("back.") + Q(from));
            ASSERT_EQ(Cli({Q("convert"), first, there}).exitCode, ExitDone) << from << to;
            ASSERT_EQ(Cli({Q("convert"), there, back}).exitCode, ExitDone) << from << to;
            QJsonArray got = EntriesOf(back);
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
        const QString sfl = Path(Q("there.sfl"));
        ASSERT_EQ(Cli({Q("convert"), first, sfl}).exitCode, ExitDone);
        const QJsonArray exchanged =
            EntriesOf(sfl, ExitFile); // most comments are no bandwidth, and that is told
        ASSERT_EQ(exchanged.size(), expected.size());
        for (qsizetype i = 0; i < exchanged.size(); ++i) {
            EXPECT_EQ(exchanged[i].toObject()[Q("comment")].toString().toDouble(),
                      expected[i].toObject()[Q("bandwidth")].toDouble());
        }
    }
}

TEST_F(CommandTest, EntriesAreShownAsTableLinesAndJson) {
    const QString file = Write(Q("two.ltl"), "7055000\t2700\tcalling \"x\"\tUSB\tp\thostile\t1\n"
                                             "145500000\t12000\t\xc3\xa4\\\tFM\tg\tfriendly\t3\n");
    const QJsonArray entries = EntriesOf(file);
    ASSERT_EQ(entries.size(), 2);
    EXPECT_EQ(entries[0].toObject()[Q("frequency")].toDouble(), 7055000);
    EXPECT_EQ(entries[0].toObject()[Q("comment")].toString(), Q("calling \"x\""));
    EXPECT_EQ(entries[1].toObject()[Q("comment")].toString(), Q("ä\\"));
    EXPECT_EQ(entries[1].toObject()[Q("demodulation")].toString(), Q("FM"));
    EXPECT_TRUE(entries[1].toObject()[Q("priority")].isDouble());
    EXPECT_EQ(entries[1].toObject()[Q("type")].toString(), Q("n"));

    const std::string lines = Cli({Q("show"), Q("--format"), Q("tsv"), file}).out;
    EXPECT_EQ(std::count(lines.begin(), lines.end(), '\n'), 3);
    EXPECT_NE(lines.find("\tcalling \"x\"\t"), std::string::npos) << lines;
    const std::string table = Cli({Q("show"), file}).out;
    EXPECT_NE(table.find("frequency"), std::string::npos) << table;
    EXPECT_NE(table.find("145500000"), std::string::npos) << table;
}

} // namespace
