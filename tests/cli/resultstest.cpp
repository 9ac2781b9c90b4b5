#include "tests/cli/runcli.h"

namespace {

const QString Results = Sample("results.xml");

class ResultKind : public testing::Test, protected TestFolder {
protected:
    static QJsonArray shown(const QString& file) { return ShownBy("show --list results", {file}); }
};

TEST_F(ResultKind, IsShownCheckedAndConvertedBothWays) {
    const QJsonArray results = shown(Results);
    ASSERT_GT(results.size(), 50);
    const QJsonObject third = results[2].toObject();
    EXPECT_EQ(third["frequency"], 639000);
    EXPECT_EQ(third["bandwidthsel"], "9000");
    EXPECT_EQ(third["locked"], "LOCKED");
    EXPECT_EQ(third["locktime"].toDouble(), 1714543290000000.0);
    EXPECT_EQ(third["confidence"], 54);
    EXPECT_EQ(third["type"], "p");
    EXPECT_EQ(
        Cli("check --list results", {Results}).out,
        (Results + QStringLiteral(": frequency-store XML, %1 entries, no problems\n").arg(results.size()))
            .toStdString());

    EXPECT_TRUE(Cli("convert --list results", {Results, Path("same.xml")}).Is(ExitDone));
    EXPECT_EQ(Read("same.xml"), Read(Results));
    EXPECT_TRUE(Cli("convert --list results", {Results, Path("all.json")}).Is(ExitDone));
    EXPECT_TRUE(Cli("convert", {Path("all.json"), Path("same.xml")}).Is(ExitDone));
    EXPECT_EQ(Read("same.xml"), Read(Results));
    // Lines have all but the comment.
    EXPECT_TRUE(Cli("convert --list results", {Results, Path("lines.csv")}).Is(ExitDone));
    EXPECT_TRUE(Cli("convert --list results", {Path("lines.csv"), Path("back.xml")}).Is(ExitDone));
    const QJsonArray back = shown(Path("back.xml"));
    ASSERT_EQ(back.size(), results.size());
    for (qsizetype i = 0; i < back.size(); ++i) {
        QJsonObject want = results[i].toObject();
        QJsonObject got = back[i].toObject();
        want.remove("comment");
        got.remove("comment");
        EXPECT_EQ(got, want) << i;
    }
}

TEST_F(ResultKind, WhatCannotBeReadOrWrittenIsTold) {
    Write("bad.csv", "7055000\t3000\tp\tLOCKED\t5\t6\n7055000\t@\tp\tLOCKED\t5\t6\n");
    const CliResult checked = Cli("check --list results", {Path("bad.csv")});
    EXPECT_TRUE(checked.Is(ExitFile));
    EXPECT_EQ(checked.err, Path("bad.csv").toStdString() + ":2: \"@\" is no bandwidth; 0 is taken\n");
    EXPECT_NE(checked.out.find("2 entries, 1 problem"), std::string::npos) << checked.out;
    for (const QString& target : {QStringLiteral("/dev/full/x.json"), QStringLiteral("/no/such/folder/x.csv"),
                                  QStringLiteral("/sys/x.xml"), QStringLiteral("/no/such/folder/x.json")}) {
        const CliResult written = Cli("convert --list results", {Results, target});
        EXPECT_EQ(written.exitCode, ExitFile) << target.toStdString();
        EXPECT_EQ(written.err.find(target.toStdString()), 0u) << written.err;
    }
}

} // namespace
