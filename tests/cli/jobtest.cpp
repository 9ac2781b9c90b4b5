#include "tests/cli/runcli.h"

#include <QProcess>
#include <QRegularExpression>

namespace {

class JobCommandTest : public testing::Test, protected TestFolder {
protected:
    static QJsonArray ChannelsOf(const QString& job, const char* receiver) {
        return ShownBy("job show --receiver", {receiver, job});
    }
    /// What a job says besides its memory channels, in canonical form and without blanks between tags.
    static QByteArray Outside(const QString& path) {
        QProcess lint;
        lint.start(Q("xmllint"), {"--c14n", path});
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
        {"hf", Sample("job-hf.pij"), Sample("memory-hf.sfl")},
        {"hf", Sample("job-hf.pij"), Sample("memory-hf.xml")},
        {"vuhf", Sample("job-vuhf.pij"), Sample("memory-vuhf.xml")},
        {"vuhf", Sample("job-vuhf.pij"), Sample("airband.sfl")},
        {"hf", Sample("job-hf.pij"), Sample("job-hf.pij")},
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
        const QStringList added =
            names(ShownBy("show --list", {Q("memory-") + Q(row.receiver), row.channels}));
        ASSERT_GT(own.size(), 5);
        ASSERT_GT(added.size(), 5);
        for (const bool replace : {false, true}) {
            const QString out = Path("out.pij");
            QStringList arguments = {"job",   "merge",      "--receiver", Q(row.receiver),
                                     row.job, row.channels, "--out",      out};
            if (replace)
                arguments.insert(2, Q("--replace"));
            EXPECT_TRUE(Cli(arguments).Is(ExitDone));
            EXPECT_EQ(names(ChannelsOf(out, row.receiver)), replace ? added : own + added);
            EXPECT_EQ(Outside(out), Outside(row.job));
        }
    }
}

TEST_F(JobCommandTest, ChannelsKeepTheirSettingsAndSubJobsTheirPlace) {
    const QString out = Path("out.pij");
    ASSERT_TRUE(Cli("job merge", {Sample("job-hf.pij"), Sample("memory-hf.xml"), "--out", out}).Is(ExitDone));
    const QJsonArray before = ChannelsOf(Sample("job-hf.pij"), "hf");
    const QJsonArray after = ChannelsOf(out, "hf");
    for (qsizetype i = 0; i < before.size(); ++i)
        EXPECT_EQ(after[i], before[i]);
    EXPECT_EQ(before[0].toObject()[Q("bfofrequency")].toDouble(), 800);
    EXPECT_EQ(after.last().toObject()[Q("threshold")].toDouble(), 25);
    EXPECT_EQ(Read(out).count("<MEMORYSCAN>"), 2);
    ASSERT_TRUE(Cli("job merge", {out, Write("no.sfl", ""), "--out", Path("again.pij")}).Is(ExitDone));
    EXPECT_EQ(Read(Path("again.pij")), Read(out)) << "nothing added, nothing changed";
    EXPECT_TRUE(Cli("check --list memory-hf", {out})
                    .Is(ExitDone, Q("job, %1 entries, no problems").arg(after.size())));
    EXPECT_TRUE(Cli("convert --list memory-hf", {out, Path("out.xml")}).Is(ExitDone));
    EXPECT_EQ(ShownBy("show --list memory-hf", {Path("out.xml")}).size(), after.size());
}

TEST_F(JobCommandTest, WrongCommandLinesAndBadFilesLeaveTheOutputAlone) {
    const QString job = Sample("job-hf.pij");
    const QString channels = Sample("memory-hf.sfl");
    const QString out = Write("out.pij", "old");
    const QString cut = Write("cut.pij", Read(job).left(3000));
    const QString bare = Write("bare.pij", "<JOB>\n<SUBJOB/></JOB>");
    const QString list = Write("list.xml", "<JOB/>");
    struct {
        QStringList arguments;
        int exitCode;
        QString message;
    } const rows[] = {
        {{}, ExitUsage, "Usage:"},
        {{"frob"}, ExitUsage, "Usage:"},
        {{"show"}, ExitUsage, "wrong number of files"},
        {{"show", "--receiver", "lf", job}, ExitUsage, "no receiver is called \"lf\""},
        {{"show", "--format", "yaml", job}, ExitUsage, "no format is called \"yaml\""},
        {{"show", cut}, ExitFile, cut + Q(":")},
        {{"show", list}, ExitFile, list + Q(": is no job: it has no SUBJOB")},
        {{"merge", job, channels}, ExitUsage, "--out is missing"},
        {{"merge", job, "--out", out}, ExitUsage, "wrong number of files"},
        {{"merge", cut, channels, "--out", out}, ExitFile, cut + Q(":")},
        {{"merge", job, cut, "--out", out}, ExitFile, cut + Q(":")},
        {{"merge", job, list, "--out", out}, ExitFile, list + Q(":1: ")},
        {{"merge", job, Sample("targets.ltl"), "--out", out}, ExitFile, "is of no known kind of file"},
        {{"merge", bare, channels, "--out", out}, ExitFile, "the job has no memory-scan section"},
        {{"merge", job, channels, "--out", Path("no/out.pij")}, ExitFile, Path("no/out.pij")},
    };
    for (const auto& row : rows) {
        EXPECT_TRUE(Cli(QStringList{"job"} + row.arguments).Is(row.exitCode, row.message))
            << row.arguments.join(QLatin1Char(' ')).toStdString();
        EXPECT_EQ(Read(out), "old");
    }
    for (const QStringList& help : {QStringList{"--help"}, {"show", "-h"}, {"merge", "--help"}})
        EXPECT_TRUE(Cli(QStringList{"job"} + help).Is(ExitDone));
}

TEST_F(JobCommandTest, TheReceiverIsToldByTheChannelsWhereverTheyStand) {
    QByteArray far = Read(Sample("job-vuhf.pij"));
    far.insert(far.indexOf("<SUBJOB"), "<!-- <MEMORYSCAN_SEQ_SHIFT/> " + QByteArray(3 << 20, '.') + " -->");
    for (const QString& job : {Sample("job-vuhf.pij"), Write("far.pij", far)}) {
        const QByteArray expected =
            QByteArray::fromStdString(Cli("job show --receiver vuhf", {Sample("job-vuhf.pij")}).out);
        const CliResult shown = Cli("job show", {job});
        EXPECT_TRUE(shown.Is(ExitDone));
        EXPECT_EQ(QByteArray::fromStdString(shown.out), expected);
        EXPECT_TRUE(Cli("check", {job}).Is(ExitDone));
        const QString out = Path("out.pij");
        EXPECT_TRUE(Cli("job merge", {job, Sample("memory-vuhf.xml"), "--out", out}).Is(ExitDone));
        EXPECT_TRUE(Read(out).contains("MEMORYSCAN_SEQ_ANTENNAID"));
    }
    const CliResult asHF = Cli("job show --receiver hf", {Sample("job-vuhf.pij")});
    EXPECT_TRUE(asHF.Is(ExitFile));
    EXPECT_LT(std::count(asHF.err.begin(), asHF.err.end(), '\n'), 10) << asHF.err;
}

} // namespace
