#include "host/freqstorexml/filehandling.h"
#include "host/gui/listsettings.h"
#include "receiver/radioprofile.h"
#include "receiver/receiver.h"
#include "receiver/simulatedreceiver.h"
#include "tests/cli/runcli.h"
#include "tests/support/badserver.h"
#include "tests/support/fulldisk.h"

#include <QProcess>
#include <QTimer>

#include <csignal>

using namespace FreqStoreXml;

namespace {

const QStringList Quick = {"--settle", "0", "--dwell", "0", "--stay", "0"};

class ScanTest : public testing::Test, protected TestFolder {
protected:
    static CliResult ScanRange(const QStringList& options, const QString& out) {
        return Cli(QStringList{"scan", "--range", "7MHz-7.1MHz", "--step", "5k"} + Quick + options +
                   QStringList{out});
    }
    static QVector<DetectionResult> ResultsOf(const QString& path) {
        DetectionResultList list;
        FileHandling().ImportDetectionResultList(false, path, list);
        return list.GetDetectionResult();
    }
    /// The columns of the lines that were printed, without the heading.
    static QList<QStringList> Rows(const CliResult& result) {
        QList<QStringList> rows;
        for (const QString& line : QString::fromStdString(result.out).split('\n', Qt::SkipEmptyParts))
            rows << line.split('\t');
        return rows.mid(1);
    }
};

TEST_F(ScanTest, ARangeIsScannedAndWhatIsHeardIsWritten) {
    std::vector<double> sure, maybe;
    {
        Receiver receiver(ReceiverKind::HF);
        const SimulatedReceiver simulated(receiver, SimulatedReceiver::Pace::OnDemand);
        for (double hertz = 7e6; hertz <= 7.1e6; hertz += 5e3) {
            const double strength = simulated.CarrierAt(hertz, 6000);
            if (strength > 24) // fading takes 3 dB
                sure.push_back(hertz);
            if (strength > 16)
                maybe.push_back(hertz);
        }
    }
    ASSERT_FALSE(sure.empty());
    const CliResult result = ScanRange({"--passes", "1"}, Path("out.xml"));
    EXPECT_TRUE(result.Is(ExitDone, "1 pass, ")) << result.err;
    EXPECT_TRUE(result.err.empty()) << result.err;
    std::vector<double> found;
    for (const DetectionResult& detection : ResultsOf(Path("out.xml"))) {
        found.push_back(detection.GetFrequency().GetValue());
        EXPECT_EQ(detection.GetBandwidth().GetValue(), 6000);
        EXPECT_GE(detection.GetLevel(), 20);
        EXPECT_GE(detection.GetStopTimeUsec(), detection.GetStartTimeUsec());
    }
    EXPECT_TRUE(std::ranges::includes(found, sure));
    EXPECT_TRUE(std::ranges::includes(maybe, found));
    ASSERT_TRUE(ScanRange({"--passes", "1"}, Path("out.csv")).Is(ExitDone));
    FrequencyStoreList table;
    FileHandling().ImportCSV(Path("out.csv"), table, FrequencyStoreListHelper::Detections);
    EXPECT_GE(table.GetFrequencyStoreEntry().size(), static_cast<qsizetype>(sure.size()));
}

TEST_F(ScanTest, ListsAreScannedInTheirOrderWithTheirThresholds) {
    const QStringList options = QStringList{"scan", "--passes", "1"} + Quick;
    const CliResult job = Cli(options + QStringList{"--threshold", "-40", Sample("job-hf.pij"), "-"});
    EXPECT_TRUE(job.Is(ExitDone)) << job.err;
    long before = 0;
    for (const QStringList& row : Rows(job)) {
        ASSERT_EQ(row.size(), 7) << row.join('|').toStdString();
        EXPECT_GT(row[5].toLong(), before) << "in the order of the job";
        before = row[5].toLong();
        EXPECT_FALSE(row[6].isEmpty());
    }
    EXPECT_GT(before, 0);
    // Targets have no thresholds of their own.
    EXPECT_EQ(Rows(Cli(options + QStringList{"--threshold", "109", Sample("targets.ltl"), "-"})).size(), 0);
    const QString interest = Write("one.noi", "7055000\tband\t20000\n");
    const CliResult bands =
        Cli(options + QStringList{"--threshold", "-40", "--step", "5000", "--list", "noi", interest, "-"});
    EXPECT_EQ(Rows(bands).size(), 5) << bands.out << bands.err;
}

TEST_F(ScanTest, CtrlCEndsItAndTheOutputIsWhole) {
    QTimer::singleShot(0, [] { raise(SIGINT); });
    const CliResult result = ScanRange({"--threshold", "-40"}, Path("out.xml"));
    EXPECT_TRUE(result.Is(ExitDone)) << result.err;
    EXPECT_GE(ResultsOf(Path("out.xml")).size(), 1);

    QProcess program;
    program.start(CLI_PROGRAM,
                  QStringList{"scan", "--range", "7MHz-7.1MHz", "--step", "5k", "--threshold", "-40"} +
                      Quick + QStringList{"-"});
    for (int lines = 0; lines < 3 && program.waitForReadyRead(Patience);) {
        while (program.canReadLine()) {
            program.readLine();
            ++lines;
        }
    }
    ASSERT_EQ(kill(static_cast<pid_t>(program.processId()), SIGINT), 0);
    ASSERT_TRUE(program.waitForFinished(Patience));
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(program.exitCode(), ExitDone);
    EXPECT_TRUE(program.readAll().endsWith('\n'));
}

TEST_F(ScanTest, AReaderThatGoesEndsIt) {
    QProcess shell;
    shell.start("sh", {"-c", QStringLiteral(
                                 "%1 scan --range 7MHz-7.1MHz --step 5k --threshold -40 --settle 0 --dwell 0 "
                                 "--stay 0 - | head -n 2")
                                 .arg(CLI_PROGRAM)});
    EXPECT_TRUE(shell.waitForFinished(Patience));
    EXPECT_EQ(shell.readAllStandardOutput().count('\n'), 2);
}

TEST_F(ScanTest, ARadioThatComesLateIsWaitedForAndScanned) {
    const QString port = QStringLiteral("127.0.0.1:%1").arg(FreePort());
    QProcess scan;
    scan.start(CLI_PROGRAM, QStringList{"scan", "--receiver", "hamlib:2@" + port, "--range", "7MHz-7.02MHz",
                                        "--step", "5k", "--passes", "1", "--threshold", "-40"} +
                                Quick + QStringList{Path("out.xml")});
    ASSERT_TRUE(scan.waitForStarted(Patience));
    scan.setReadChannel(QProcess::StandardError);
    ASSERT_TRUE(scan.waitForReadyRead(Patience)) << "it says that it waits";
    QProcess server;
    server.start("rigctld", {"-m", "1", "-T", "127.0.0.1", "-t", port.section(':', 1)});
    ASSERT_TRUE(server.waitForStarted(Patience));
    EXPECT_TRUE(scan.waitForFinished(Patience));
    EXPECT_EQ(scan.exitCode(), ExitDone);
    std::vector<double> found;
    for (const DetectionResult& detection : ResultsOf(Path("out.xml")))
        found.push_back(detection.GetFrequency().GetValue());
    EXPECT_EQ(found, (std::vector<double>{7e6, 7.005e6, 7.01e6, 7.015e6, 7.02e6}));
    server.kill();
    server.waitForFinished(Patience);
}

TEST_F(ScanTest, ARadioThatStaysWhereItIsDetectsNothingElsewhere) {
    BadServer server; // says that it is at 7055 kHz, whatever it is told
    const CliResult result =
        Cli(QStringList{"scan", "--receiver", "hamlib:2@" + server.Port(), "--range", "7055kHz-7056kHz",
                        "--step", "500", "--passes", "2", "--threshold", "-40"} +
            Quick + QStringList{"-"});
    EXPECT_EQ(result.exitCode, ExitDone) << result.err;
    const QList<QStringList> rows = Rows(result);
    ASSERT_EQ(rows.size(), 2) << result.out;
    for (const QStringList& row : rows)
        EXPECT_EQ(row[2], "7055000");
    for (const char* told : {"7055.500 kHz is left out: HF receiver: the radio stays at 7055.000 kHz",
                             "7056.000 kHz is left out"}) {
        EXPECT_EQ(QString::fromStdString(result.err).count(told), 1) << result.err;
    }
}

TEST_F(ScanTest, AReceiverThatTheWorkstationKeepsIsFoundInItsSettings) {
    constexpr int Dummy = 1;
    ListSettings::SetDirectory(Path("config"));
    RadioProfile::Save({{QStringLiteral("attic"), Dummy, QString()}});
    EXPECT_TRUE(
        ScanRange({"--receiver", "attic", "--config", Path("config"), "--passes", "1", "--threshold", "-200"},
                  Path("out.xml"))
            .Is(ExitDone, ""));
    EXPECT_FALSE(ResultsOf(Path("out.xml")).empty());
}

TEST_F(ScanTest, ARangeWithoutAnEndInSightIsBegunAtOnce) {
    const CliResult result =
        Cli("scan --receiver hamlib:1 --range 1-1000000GHz --step 1 --for 100ms", {Path("out.xml")});
    EXPECT_TRUE(result.Is(ExitFile, "never reached")) << result.out << result.err;
}

TEST_F(ScanTest, WrongCommandLinesAreToldAndChangeNothing) {
    const QString out = Write("out.xml", "old");
    const QString job = Sample("job-hf.pij");
    const std::pair<QStringList, const char*> rows[] = {
        {{out}, "it takes a list, or --range, and a file to write"},
        {{"--range", "1M-2M", "--step", "1k", job, out}, "a range needs no list"},
        {{"--range", "1M-2M", out}, "a range needs --step"},
        {{"--range", "2M-1M", "--step", "1k", out}, "--range \"2M-1M\" is no A-B"},
        {{"--range", "7M", "--step", "1k", out}, "--range \"7M\" is no A-B"},
        {{"--step", "0", job, out}, "--step \"0\" is no HZ"},
        {{"--dwell", "-1s", job, out}, "--dwell \"-1s\" is no TIME"},
        {{"--dwell", "1d", job, out}, "--dwell \"1d\" is no TIME"},
        {{"--for", "soon", job, out}, "--for \"soon\" is no TIME"},
        {{"--for", "0s", job, out}, "--for \"0s\" is no TIME"},
        {{"--passes", "none", job, out}, "--passes \"none\" is no N"},
        {{"--stop-at", "noise", job, out}, "--stop-at \"noise\" is no WHAT"},
        {{"--receiver", "none", job, out}, "\"none\""},
        {{job, Path("out.txt")}, "out.txt\" is named neither .xml nor .csv"},
        {{"--list", "detections", out, Path("other.xml")}, "cannot be scanned"},
    };
    for (const auto& [arguments, message] : rows) {
        SCOPED_TRACE(arguments.join(' ').toStdString());
        const CliResult result = Cli(QStringList{"scan"} + arguments);
        EXPECT_NE(result.exitCode, ExitDone);
        EXPECT_NE(result.err.find(message), std::string::npos) << result.err;
    }
    EXPECT_EQ(Read(out), "old");
}

TEST_F(ScanTest, WhatCannotBeScannedOrWrittenIsTold) {
    const QString empty = Write("empty.ltl", "");
    const CliResult nothing = Cli("scan", {empty, Path("out.xml")});
    EXPECT_TRUE(nothing.Is(ExitFile, "There are no channels in the list.")) << nothing.out;
    EXPECT_TRUE(Cli("scan", {Path("none.ltl"), Path("out.xml")}).Is(ExitFile, "none.ltl: no such file"));
    EXPECT_TRUE(
        Cli("scan --range 1kHz-2kHz --step 1k", {Path("out.xml")}).Is(ExitFile, "Nothing can be reached"));
    const QStringList nobody{"--receiver", "hamlib:2@127.0.0.1:1", "--for", "5s"};
    const CliResult never = ScanRange(nobody, Path("out.xml"));
    EXPECT_TRUE(never.Is(ExitFile, "never reached")) << never.out;
    EXPECT_TRUE(never.Is(ExitFile, "tries again")) << "as long as it has time";
    EXPECT_TRUE(ScanRange({"--passes", "1"}, Q("/proc/out.xml")).Is(ExitFile, Q("/proc/out.xml")));
}

} // namespace
