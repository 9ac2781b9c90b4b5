#include "tests/cli/runcli.h"
#include "tests/support/testfolder.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>

namespace {

class JobCommandTest : public testing::Test, protected TestFolder {
protected:
    static QJsonArray Json(const QStringList& arguments) {
        const CliResult shown = Cli(arguments);
        EXPECT_EQ(shown.exitCode, ExitDone) << shown.err;
        return QJsonDocument::fromJson(QByteArray::fromStdString(shown.out)).array();
    }
    static QJsonArray ChannelsOf(const QString& job, const char* receiver) {
        return Json({Q("job"), Q("show"), Q("--receiver"), Q(receiver), Q("--format"), Q("json"), job});
    }
    /// What a job says besides its memory channels, in canonical form and without blanks between tags.
    static QByteArray Outside(const QString& path) {
        QProcess lint;
        lint.start(Q("xmllint"), {Q("--c14n"), path});
        EXPECT_TRUE(lint.waitForFinished()) << "xmllint is needed for this test";
        EXPECT_EQ(lint.exitCode(), 0);
        QString text = QString::fromUtf8(lint.readAllStandardOutput());
        static const QRegularExpression section(Q("<MEMORYSCAN>.*?</MEMORYSCAN>"),
                                                QRegularExpression::DotMatchesEverythingOption);
        static const QRegularExpression blanks(Q(">\\s+<"));
        return text.remove(section).replace(blanks, Q("><")).toUtf8();
    }
};

TEST_F(JobCommandTest, ChannelsAreMergedBehindThoseOfTheJobOrReplaceThem) {
    struct {
        const char* receiver;
        QString job;
        QString channels;
    } const rows[] = {
        {"hf", Sample(Q("job-hf.pij")), Sample(Q("memory-hf.sfl"))},
        {"hf", Sample(Q("job-hf.pij")), Sample(Q("memory-hf.xml"))},
        {"vuhf", Sample(Q("job-vuhf.pij")), Sample(Q("memory-vuhf.xml"))},
        {"vuhf", Sample(Q("job-vuhf.pij")), Sample(Q("airband.sfl"))},
        {"hf", Sample(Q("job-hf.pij")), Sample(Q("job-hf.pij"))},
    };
    const auto names = [](const QJsonArray& channels) {
        QStringList result;
        for (const auto& channel : channels)
            result << QString::number(channel.toObject()[Q("frequency")].toDouble(), 'f', 3) +
                          channel.toObject()[Q("comment")].toString() +
                          channel.toObject()[Q("demodulation")].toString();
        return result;
    };
    for (const auto& row : rows) {
        const QStringList own = names(ChannelsOf(row.job, row.receiver));
        const QStringList added = names(Json({Q("show"), Q("--list"), Q("memory-") + Q(row.receiver),
                                              Q("--format"), Q("json"), row.channels}));
        ASSERT_GT(own.size(), 5);
        ASSERT_GT(added.size(), 5);
        for (const bool replace : {false, true}) {
            const QString out = Path(Q("out.pij"));
            QStringList arguments = {Q("job"), Q("merge"),   Q("--receiver"), Q(row.receiver),
                                     row.job,  row.channels, Q("--out"),      out};
            if (replace)
                arguments.insert(2, Q("--replace"));
            const CliResult merged = Cli(arguments);
            EXPECT_EQ(merged.exitCode, ExitDone) << merged.err;
            EXPECT_EQ(names(ChannelsOf(out, row.receiver)), replace ? added : own + added);
            EXPECT_EQ(Outside(out), Outside(row.job));
        }
    }
}

TEST_F(JobCommandTest, ChannelsKeepTheirSettingsAndSubJobsTheirPlace) {
    const QString out = Path(Q("out.pij"));
    ASSERT_EQ(
        Cli({Q("job"), Q("merge"), Sample(Q("job-hf.pij")), Sample(Q("memory-hf.xml")), Q("--out"), out})
            .exitCode,
        ExitDone);
    const QJsonArray before = ChannelsOf(Sample(Q("job-hf.pij")), "hf");
    const QJsonArray after = ChannelsOf(out, "hf");
    for (qsizetype i = 0; i < before.size(); ++i)
        EXPECT_EQ(after[i], before[i]);
    EXPECT_EQ(before[0].toObject()[Q("bfofrequency")].toDouble(), 800);
    EXPECT_EQ(after.last().toObject()[Q("threshold")].toDouble(), 25);
    EXPECT_EQ(Read(out).count("<MEMORYSCAN>"), 2);
    ASSERT_EQ(
        Cli({Q("job"), Q("merge"), out, Write(Q("no.sfl"), ""), Q("--out"), Path(Q("again.pij"))}).exitCode,
        ExitDone);
    EXPECT_EQ(Read(Path(Q("again.pij"))), Read(out)) << "nothing added, nothing changed";
    const CliResult checked = Cli({Q("check"), Q("--list"), Q("memory-hf"), out});
    EXPECT_NE(checked.out.find("job, " + std::to_string(after.size()) + " entries, no problems"),
              std::string::npos)
        << checked.out;
    EXPECT_EQ(Cli({Q("convert"), Q("--list"), Q("memory-hf"), out, Path(Q("out.xml"))}).exitCode, ExitDone);
    EXPECT_EQ(
        Json({Q("show"), Q("--list"), Q("memory-hf"), Q("--format"), Q("json"), Path(Q("out.xml"))}).size(),
        after.size());
}

TEST_F(JobCommandTest, WrongCommandLinesAndBadFilesLeaveTheOutputAlone) {
    const QString job = Sample(Q("job-hf.pij"));
    const QString channels = Sample(Q("memory-hf.sfl"));
    const QString out = Write(Q("out.pij"), "old");
    const QString cut = Write(Q("cut.pij"), Read(job).left(3000));
    const QString bare = Write(Q("bare.pij"), "<JOB>\n<SUBJOB/></JOB>");
    const QString list = Write(Q("list.xml"), "<JOB/>");
    struct {
        QStringList arguments;
        int exitCode;
        QString message;
    } const rows[] = {
        {{}, ExitUsage, Q("Usage:")},
        {{Q("frob")}, ExitUsage, Q("Usage:")},
        {{Q("show")}, ExitUsage, Q("wrong number of files")},
        {{Q("show"), Q("--receiver"), Q("lf"), job}, ExitUsage, Q("no receiver is called \"lf\"")},
        {{Q("show"), Q("--format"), Q("yaml"), job}, ExitUsage, Q("no format is called \"yaml\"")},
        {{Q("show"), cut}, ExitFile, cut + Q(":")},
        {{Q("show"), list}, ExitFile, list + Q(": is no job: it has no SUBJOB")},
        {{Q("merge"), job, channels}, ExitUsage, Q("--out is missing")},
        {{Q("merge"), job, Q("--out"), out}, ExitUsage, Q("wrong number of files")},
        {{Q("merge"), cut, channels, Q("--out"), out}, ExitFile, cut + Q(":")},
        {{Q("merge"), job, cut, Q("--out"), out}, ExitFile, cut + Q(":")},
        {{Q("merge"), job, list, Q("--out"), out}, ExitFile, list + Q(":1: ")},
        {{Q("merge"), job, Sample(Q("targets.ltl")), Q("--out"), out},
         ExitFile,
         Q("is of no known kind of file")},
        {{Q("merge"), bare, channels, Q("--out"), out}, ExitFile, Q("the job has no memory-scan section")},
        {{Q("merge"), job, channels, Q("--out"), Path(Q("no/out.pij"))}, ExitFile, Path(Q("no/out.pij"))},
    };
    for (const auto& row : rows) {
        const CliResult result = Cli(QStringList{Q("job")} + row.arguments);
        EXPECT_EQ(result.exitCode, row.exitCode) << row.arguments.join(QLatin1Char(' ')).toStdString();
        EXPECT_NE(result.err.find(row.message.toStdString()), std::string::npos) << result.err;
        EXPECT_EQ(Read(out), "old");
    }
    for (const QStringList& help :
         {QStringList{Q("--help")}, {Q("show"), Q("-h")}, {Q("merge"), Q("--help")}})
        EXPECT_EQ(Cli(QStringList{Q("job")} + help).exitCode, ExitDone);
}

TEST_F(JobCommandTest, TheReceiverIsToldByTheChannelsWhereverTheyStand) {
    QByteArray far = Read(Sample(Q("job-vuhf.pij")));
    far.insert(far.indexOf("<SUBJOB"), "<!-- <MEMORYSCAN_SEQ_SHIFT/> " + QByteArray(3 << 20, '.') + " -->");
    for (const QString& job : {Sample(Q("job-vuhf.pij")), Write(Q("far.pij"), far)}) {
        const QByteArray expected = QByteArray::fromStdString(
            Cli({Q("job"), Q("show"), Q("--receiver"), Q("vuhf"), Sample(Q("job-vuhf.pij"))}).out);
        const CliResult shown = Cli({Q("job"), Q("show"), job});
        EXPECT_EQ(shown.exitCode, ExitDone) << shown.err;
        EXPECT_EQ(QByteArray::fromStdString(shown.out), expected);
        const CliResult checked = Cli({Q("check"), job});
        EXPECT_EQ(checked.exitCode, ExitDone) << checked.err;
        const QString out = Path(Q("out.pij"));
        const CliResult merged =
            Cli({Q("job"), Q("merge"), job, Sample(Q("memory-vuhf.xml")), Q("--out"), out});
        EXPECT_EQ(merged.exitCode, ExitDone) << merged.err;
        EXPECT_TRUE(Read(out).contains("MEMORYSCAN_SEQ_ANTENNAID"));
    }
    const CliResult asHF = Cli({Q("job"), Q("show"), Q("--receiver"), Q("hf"), Sample(Q("job-vuhf.pij"))});
    EXPECT_EQ(asHF.exitCode, ExitFile);
    EXPECT_LT(std::count(asHF.err.begin(), asHF.err.end(), '\n'), 10) << asHF.err;
}

TEST(JobKind, IsToldByTheChannels) {
    for (const char* const name : {"job-hf.pij", "job-vuhf.pij"}) {
        const CliResult checked = Cli({Q("check"), Sample(QString::fromLatin1(name))});
        EXPECT_EQ(checked.exitCode, ExitDone) << checked.err;
        EXPECT_NE(checked.out.find("entries, no problems"), std::string::npos) << checked.out;
    }
}

} // namespace
