#include "tests/cli/runcli.h"

namespace {

class MergeTest : public testing::Test, protected TestFolder {
protected:
    /// A target list of lines "frequency bandwidth comment demodulation".
    QString Targets(const char* name, const QList<const char*>& lines) const {
        QByteArray bytes;
        for (const QByteArray line : lines)
            bytes += QByteArray(line).replace(' ', '\t').replace('_', ' ') + "\tg\tNot defined\t10\t\n";
        return Write(Q(name), bytes);
    }
    /// What a file has, in its order.
    static std::string Content(const QString& path, const char* command = "show") {
        QStringList lines;
        for (const auto& entry : ShownBy(command, {path})) {
            const QJsonObject members = entry.toObject();
            lines << QString::number(members[Q("frequency")].toDouble()) + ' ' +
                         members[Q("comment")].toString() + ' ' + members[Q("demodulation")].toString();
        }
        return lines.join(Q(", ")).toStdString();
    }
};

TEST_F(MergeTest, TheFirstListKeepsItsOrderAndTheNewOnesFollow) {
    const QString a = Targets("a.ltl", {"3000 9000 three AM", "1000 9000 one AM", "2000 9000 two AM"});
    const QString b = Targets("b.ltl", {"5000 9000 five AM", "1000 9000 uno AM", "2004 3000 2004_Hz NONE",
                                        "4000 9000 four AM", "3000 9000 three USB"});
    const struct {
        QStringList options;
        const char* told;
        const char* content;
    } rows[] = {
        {{},
         "4 entries added, 0 changed, 3 as they were",
         "3000 three AM, 1000 one AM, 2000 two AM, 5000 five AM, 2004 2004 Hz NONE, 4000 four AM, 3000 three "
         "USB"},
        {{"--tolerance", "5"},
         "3 entries added, 0 changed, 3 as they were",
         "3000 three AM, 1000 one AM, 2000 two AM, 5000 five AM, 4000 four AM, 3000 three USB"},
        {{"--tolerance", "0.005kHz", "--prefer", "second"},
         "3 entries added, 2 changed, 1 as they were",
         "3000 three AM, 1000 uno AM, 2004 2004 Hz AM, 5000 five AM, 4000 four AM, 3000 three USB"},
    };
    for (const auto& row : rows) {
        const QString out = Path("out.ltl");
        EXPECT_TRUE(Cli(QStringList{"merge", a, b, "--out", out} + row.options).Is(ExitDone, Q(row.told)));
        EXPECT_EQ(Content(out), row.content) << row.told;
        EXPECT_TRUE(Cli(QStringList{"merge", out, b, "--out", out} + row.options)
                        .Is(ExitDone, Q("no entries added, 0 changed")));
        EXPECT_EQ(Content(out), row.content) << "a second time nothing comes";
    }
}

TEST_F(MergeTest, EveryKindOfListIsMergedWithWhatItsEntriesHave) {
    const struct {
        const char* first;
        const char* second;
        const char* out;
        const char* show;
        const char* told;
    } rows[] = {
        {"targets.xml", "airband.sfl", "out.xml", "show", "out.xml: "},
        {"targets.csv", "targets.xml", "out.json", "show", "no entries added"},
        {"interest.noi", "interest.csv", "out.noi", "show --list noi", "no entries added"},
        {"interest.xml", "interest.noi", "out.csv", "show --list noi", "no entries added"},
        {"job-hf.pij", "memory-hf.xml", "out.pij", "job show", "entries added, 0 changed, 36 as they were"},
        {"memory-hf.sfl", "job-hf.pij", "out.xml", "show --list memory-hf", "36 entries added"},
    };
    for (const auto& row : rows) {
        const QString out = Path(Q(row.out));
        const QStringList command = {"merge", Sample(Q(row.first)), Sample(Q(row.second)), "--out", out};
        EXPECT_TRUE(Cli(command).Is(ExitDone, Q(row.told))) << row.first;
        const std::string merged = Content(out, row.show);
        EXPECT_TRUE(Cli(QStringList(command).replaceInStrings(Sample(Q(row.first)), out))
                        .Is(ExitDone, Q("no entries added, 0 changed")))
            << row.first;
        EXPECT_EQ(Content(out, row.show), merged) << row.first;
    }
    EXPECT_TRUE(Cli("diff", {Sample("interest.noi"), Path("out.noi")}).Is(ExitDone));
}

TEST_F(MergeTest, AChannelThatIsTakenOverHasTheRangeOfTheOtherOnly) {
    const QByteArray channel = R"([{"frequency":7055000,"comment":"%1","bfofrequency":%2,"range":true,)"
                               R"("rangefrequencies":[%3]}])";
    const auto written = [&](const char* name, const char* comment, const char* bfo, const char* range) {
        QByteArray bytes = channel;
        return Write(Q(name), bytes.replace("%1", comment).replace("%2", bfo).replace("%3", range));
    };
    const QString a = written("a.json", "mine", "800", "7056000,7057000");
    const QString b = written("b.json", "theirs", "900", "7058000");
    const QString out = Path("out.json");
    EXPECT_TRUE(Cli("merge --list memory-hf --prefer second", {a, b, "--out", out}).Is(ExitDone));
    const QJsonObject merged = ShownBy("show --list memory-hf", {out})[0].toObject();
    EXPECT_EQ(merged[Q("comment")].toString(), Q("theirs"));
    EXPECT_EQ(merged[Q("bfofrequency")].toInt(), 900);
    EXPECT_EQ(merged[Q("rangefrequencies")].toArray(), QJsonArray{7058000.0});
}

TEST_F(MergeTest, WhatAFormatDoesNotCarryIsNotTakenOver) {
    const QString a = Write("a.ltl", "1000\t9000\tone\tAM\tn\tred\t3\n2000\t9000\ttwo\tAM\tn\tred\t3\n");
    const QString b = Write("b.sfl", "1000\tuno\t0\tAM\n2000\ttwo\t9000\tAM\n");
    const QString out = Path("out.ltl");
    EXPECT_TRUE(
        Cli("merge --prefer second", {a, b, "--out", out}).Is(ExitDone, Q("1 changed, 1 as they were")));
    const QJsonObject first = ShownBy("show", {out})[0].toObject();
    EXPECT_EQ(first[Q("comment")], Q("uno"));
    EXPECT_EQ(first[Q("priority")], 3);
    EXPECT_EQ(first[Q("threadclass")], Q("red"));
    EXPECT_EQ(first[Q("bandwidth")], 9000);
}

TEST_F(MergeTest, NothingIsWrittenWhereTheInputIsRefused) {
    const QString good = Targets("good.ltl", {"1000 9000 one AM"});
    const QString none = Targets("none.ltl", {"0 9000 none AM"});
    const QString bad = Write("bad.xml", "<FrequencyStoreList><FrequencyStoreEntry>");
    const QString job = Sample("job-hf.pij");
    const QString out = Path("out.ltl");
    const struct {
        QStringList arguments;
        int exitCode;
        QString told;
    } rows[] = {
        {{good, bad, "--out", out}, ExitFile, bad},
        {{bad, good, "--out", out}, ExitFile, bad},
        {{good, Path("missing.ltl"), "--out", out}, ExitFile, Q("missing.ltl")},
        {{good, good}, ExitUsage, Q("--out is missing")},
        {{good, "--out", out}, ExitUsage, Q("wrong number of files")},
        {{good, good, "--out", Path("out.noi")}, ExitUsage, Q("is no name that this list is written under")},
        {{good, good, "--out", Path("out.pij")}, ExitUsage, Q("is a job")},
        {{good, job, "--out", out}, ExitUsage, Q("of kind target, ")},
        {{job, Sample("job-vuhf.pij"), "--out", Path("out.pij")}, ExitUsage, Q("no list reads both")},
        {{good, good, "--out", out, "--prefer", "third"}, ExitUsage, Q("neither first nor second")},
        {{good, good, "--out", out, "--tolerance", "-1"}, ExitUsage, Q("no number of Hz")},
        {{good, good, "--out", out, "--list", "lists"}, ExitUsage, Q("no kind of list")},
        {{good, good, "--out", out, "--list", "results"}, ExitUsage, Q("are not merged")},
        {{good, none, "--out", none}, ExitFile, none + Q(": is kept")},
    };
    for (const auto& row : rows)
        EXPECT_TRUE(Cli("merge", row.arguments).Is(row.exitCode, row.told));
    EXPECT_EQ(FileNames(), (QStringList{"bad.xml", "good.ltl", "none.ltl"}));
    EXPECT_TRUE(
        Cli("merge", {good, none, "--out", out}).Is(ExitFile, none + Q(": entry 1 has no frequency")));
    EXPECT_EQ(Content(out), "1000 one AM") << "the others are there";
}

TEST_F(MergeTest, DifferencesAreToldInTheOrderOfTheListsAndByTheExitCode) {
    const QString a = Targets("a.ltl", {"3000 9000 three AM", "1000 9000 one AM", "2000 9000 two AM"});
    const QString b = Targets("b.ltl", {"4000 9000 four NONE", "1000 8000 uno AM", "2004 9000 two AM"});
    const QString same = Targets("same.ltl", {"2000 9000 two AM", "3000 9000 three AM", "1000 9000 one AM"});
    const CliResult text = Cli("diff", {a, b});
    EXPECT_EQ(text.exitCode, ExitDifferent);
    EXPECT_EQ(text.out, "- 3.000 kHz AM \"three\"\n"
                        "~ 1.000 kHz: comment \"one\" -> \"uno\", bandwidth \"9000\" -> \"8000\"\n"
                        "- 2.000 kHz AM \"two\"\n"
                        "+ 4.000 kHz \"four\"\n"
                        "+ 2.004 kHz AM \"two\"\n");
    const auto json = [](const CliResult& result) {
        return QJsonDocument::fromJson(QByteArray::fromStdString(result.out)).array();
    };
    const QJsonArray found = json(Cli("diff --json --tolerance 10", {a, b}));
    ASSERT_EQ(found.size(), 4);
    EXPECT_EQ(found[0].toObject()[Q("entry")].toObject()[Q("comment")], Q("three"));
    EXPECT_EQ(found[0].toObject()[Q("first")], 1);
    EXPECT_EQ(found[1].toObject()[Q("different")].toObject()[Q("bandwidth")], (QJsonArray{9000, 8000}));
    EXPECT_EQ(found[2].toObject()[Q("different")].toObject(),
              (QJsonObject{{Q("frequency"), QJsonArray{2000, 2004}}}));
    EXPECT_EQ(found[3].toObject()[Q("second")], 1);

    for (const QStringList& equal :
         {QStringList{a, a}, {a, same}, {Sample("targets.csv"), Sample("targets.xml")}}) {
        const CliResult result = Cli("diff", equal);
        EXPECT_TRUE(result.Is(ExitDone));
        EXPECT_EQ(result.out, "");
    }
    const CliResult none = Cli("diff --format json", {a, same});
    EXPECT_TRUE(none.Is(ExitDone));
    EXPECT_EQ(json(none), QJsonArray());
    EXPECT_EQ(Cli("diff", {Sample("results.xml"), Sample("results.xml"), "--list", "results"}).exitCode,
              ExitDone);
}

TEST_F(MergeTest, FilesOfOtherProgramsAreReadToo) {
    const QString mine = Targets("mine.ltl", {"121500000 9000 Guard AM"});
    const QString radio = Write(Q("radio.csv"), "Location,Name,Frequency,Duplex,Mode\n0,Emergency,121.5,,AM\n"
                                                "1,Relay,145.6,,FM\n");
    const QString table = Write(Q("table.tsv"), "Freq\tCall\n121.5\tGuard\n");
    const QString out = Path("out.ltl");
    EXPECT_TRUE(Cli("merge --prefer second", {mine, radio, "--out", out})
                    .Is(ExitDone, Q("1 entry added, 1 changed")));
    EXPECT_EQ(Content(out), "1.215e+08 Emergency AM, 1.456e+08 Relay FM");
    EXPECT_EQ(ShownBy("show", {out})[0].toObject()[Q("priority")].toInt(), 10) << "the radio has none";
    EXPECT_EQ(Cli("diff", {radio, radio}).exitCode, ExitDone);
    EXPECT_NE(Cli("diff", {radio, mine}).out.find("- 145.600000 MHz FM \"Relay\""), std::string::npos);
    EXPECT_TRUE(Cli("diff", {mine, table}).Is(ExitFile, Q("--columns \"frequency=Freq:MHz,name=Call\"")));
    const CliResult told = Cli("diff --columns frequency=Freq:MHz,name=Call", {table, radio});
    EXPECT_EQ(told.exitCode, ExitDifferent);
    EXPECT_NE(told.out.find("+ 145.600000 MHz FM \"Relay\""), std::string::npos) << told.out;
}

TEST_F(MergeTest, ADiffOfWhatCannotBeReadIsNoAnswer) {
    const QString good = Targets("good.ltl", {"1000 9000 one AM"});
    const QString doubtful = Write("doubtful.ltl", "1000\tx\tone\tAM\tg\tNot defined\t10\t\n");
    EXPECT_TRUE(Cli("diff", {good, Path("missing.ltl")}).Is(ExitFile, Q("missing.ltl")));
    EXPECT_TRUE(Cli("diff", {good, doubtful}).Is(ExitFile, doubtful));
    EXPECT_TRUE(Cli("diff --format tsv", {good, good}).Is(ExitUsage, Q("no format is called")));
    EXPECT_TRUE(
        Cli("diff", {Sample("interest.noi"), Sample("job-hf.pij")}).Is(ExitUsage, Q("no list reads both")));
}

} // namespace
