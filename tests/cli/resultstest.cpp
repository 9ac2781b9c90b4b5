#include "tests/cli/runcli.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

namespace {

const QString Results = Sample("results.xml");

class ResultKind : public testing::Test {
protected:
    QString path(const char* name) const { return folder.filePath(QString::fromLatin1(name)); }
    static QByteArray bytes(const QString& file) {
        QFile opened(file);
        return opened.open(QIODevice::ReadOnly) ? opened.readAll() : QByteArray("<no such file>");
    }
    static QJsonArray shown(const QString& file) {
        const CliResult result = Cli({"show", "--list", "results", "--format", "json", file});
        EXPECT_EQ(result.exitCode, ExitDone) << result.err;
        return QJsonDocument::fromJson(QByteArray::fromStdString(result.out)).array();
    }

    QTemporaryDir folder;
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
        Cli({"check", "--list", "results", Results}).out,
        (Results + QStringLiteral(": frequency-store XML, %1 entries, no problems\n").arg(results.size()))
            .toStdString());

    EXPECT_EQ(Cli({"convert", "--list", "results", Results, path("same.xml")}).exitCode, ExitDone);
    EXPECT_EQ(bytes(path("same.xml")), bytes(Results));
    EXPECT_EQ(Cli({"convert", "--list", "results", Results, path("all.json")}).exitCode, ExitDone);
    EXPECT_EQ(Cli({"convert", path("all.json"), path("same.xml")}).exitCode, ExitDone);
    EXPECT_EQ(bytes(path("same.xml")), bytes(Results));
    // Lines have all but the comment.
    EXPECT_EQ(Cli({"convert", "--list", "results", Results, path("lines.csv")}).exitCode, ExitDone);
    EXPECT_EQ(Cli({"convert", "--list", "results", path("lines.csv"), path("back.xml")}).exitCode, ExitDone);
    const QJsonArray back = shown(path("back.xml"));
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
    QFile file(path("bad.csv"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("7055000\t3000\tp\tLOCKED\t5\t6\n7055000\t@\tp\tLOCKED\t5\t6\n");
    file.close();
    const CliResult checked = Cli({"check", "--list", "results", path("bad.csv")});
    EXPECT_EQ(checked.exitCode, ExitFile);
    EXPECT_EQ(checked.err, path("bad.csv").toStdString() + ":2: \"@\" is no bandwidth; 0 is taken\n");
    EXPECT_NE(checked.out.find("2 entries, 1 problem"), std::string::npos) << checked.out;
    for (const QString& target : {QStringLiteral("/dev/full/x.json"), QStringLiteral("/no/such/folder/x.csv"),
                                  QStringLiteral("/sys/x.xml"), QStringLiteral("/no/such/folder/x.json")}) {
        const CliResult written = Cli({"convert", "--list", "results", Results, target});
        EXPECT_EQ(written.exitCode, ExitFile) << target.toStdString();
        EXPECT_EQ(written.err.find(target.toStdString()), 0u) << written.err;
    }
}

} // namespace
