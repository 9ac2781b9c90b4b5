#include "cli/progressbar.h"
#include "host/freqstorexml/filehandling.h"
#include "tests/cli/runcli.h"
#include "tests/support/fulldisk.h"
#include "tests/support/testfolder.h"

#include <QFile>

#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

using namespace FreqStoreXml;

namespace {

const QString Sweep = Sample("sweep.csv");

class DetectTest : public testing::Test, protected TestFolder {
protected:
    static CliResult Detect(const QStringList& options, const QString& in, const QString& out) {
        return Cli(QStringList{Q("detect"), Q("--time-zone"), Q("UTC")} + options + QStringList{in, out});
    }
    static QVector<DetectionResult> ResultsOf(const QString& path) {
        DetectionResultList list;
        FileHandling().ImportDetectionResultList(false, path, list);
        return list.GetDetectionResult();
    }
};

TEST_F(DetectTest, SignalsOfTheSampleAreWritten) {
    const QString out = Path("out.xml");
    const CliResult result = Detect({}, Sweep, out);
    EXPECT_EQ(result.exitCode, ExitDone) << result.err;
    EXPECT_TRUE(result.err.empty()) << result.err;
    EXPECT_NE(result.out.find("40 sweeps, 160 rows, 10 detections"), std::string::npos) << result.out;
    const QVector<DetectionResult> results = ResultsOf(out);
    ASSERT_EQ(results.size(), 10);
    const DetectionResult& second = results[1];
    EXPECT_EQ(second.GetID(), Q("2"));
    EXPECT_EQ(second.GetType(), Q("a"));
    EXPECT_EQ(second.GetFrequency().GetValue(), 119'737'500);
    EXPECT_EQ(second.GetBandwidth().GetValue(), 25'000);
    EXPECT_NEAR(second.GetLevel(), -40, 0.1);
    EXPECT_EQ(second.GetStartTimeUsec(), 1711791004'625000);
    EXPECT_EQ(second.GetStopTimeUsec(), 1711791010'625000);

    const QString table = Path("out.csv");
    ASSERT_EQ(Detect({}, Sweep, table).exitCode, ExitDone);
    FrequencyStoreList list;
    FileHandling().ImportCSV(table, list, FrequencyStoreListHelper::Detections);
    ASSERT_EQ(list.GetFrequencyStoreEntry().size(), 10);
    const FrequencyStoreEntry& entry = list.GetFrequencyStoreEntry()[1];
    EXPECT_EQ(entry.GetFFM_Settings().GetFrequency().GetValue(), 119'737'500);
    EXPECT_EQ(entry.GetFFM_Settings().GetLevel(), second.GetLevel());
    EXPECT_EQ(entry.GetDetection().GetStopTimeUsec(), second.GetStopTimeUsec());
}

TEST_F(DetectTest, OptionsSayWhatASignalIs) {
    const std::pair<QStringList, qsizetype> rows[] = {
        {{Q("--threshold"), Q("25")}, 5},   {{Q("--min-width"), Q("30000")}, 5},
        {{Q("--min-width"), Q("60e3")}, 3}, {{Q("--hold"), Q("0")}, 12},
        {{Q("--hold"), Q("40")}, 7},        {{Q("--threshold"), Q("60")}, 0},
    };
    for (const auto& [options, count] : rows) {
        ASSERT_EQ(Detect(options, Sweep, Path("out.xml")).exitCode, ExitDone);
        EXPECT_EQ(ResultsOf(Path("out.xml")).size(), count) << options.join(u' ').toStdString();
    }
    ASSERT_EQ(Cli({Q("detect"), Q("--time-zone"), Q("America/New_York"), Sweep, Path("out.xml")}).exitCode,
              ExitDone);
    EXPECT_EQ(ResultsOf(Path("out.xml"))[1].GetStartTimeUsec(),
              (1711791004 + 4 * 3600) * 1'000'000LL + 625'000);
}

TEST_F(DetectTest, WrongCommandLinesAreToldAndChangeNothing) {
    const QString in = Write("in.csv", Read(Sweep));
    const QString out = Write("out.xml", "old");
    const std::pair<QStringList, const char*> rows[] = {
        {{in}, "wrong number of files"},
        {{Q("--threshold"), Q("loud"), in, out}, "--threshold \"loud\" is no number of dB"},
        {{Q("--threshold"), Q("nan"), in, out}, "--threshold \"nan\""},
        {{Q("--min-width"), Q("-1"), in, out}, "--min-width \"-1\" is no number of Hz"},
        {{Q("--hold"), Q("1e300"), in, out}, "--hold \"1e300\" is no number of s"},
        {{Q("--time-zone"), Q("Mars/Olympus"), in, out}, "no time zone is called \"Mars/Olympus\""},
        {{Q("--list"), Q("target"), in, out}, "list"},
        {{in, Path("out.txt")}, "out.txt\" is named neither .xml nor .csv"},
        {{in, m_folder.path() + Q("/./in.csv")}, "would replace the sweeps"},
    };
    for (const auto& [arguments, message] : rows) {
        const CliResult result = Cli(QStringList{Q("detect")} + arguments);
        EXPECT_EQ(result.exitCode, ExitUsage) << message;
        EXPECT_TRUE(result.out.empty()) << result.out;
        EXPECT_NE(result.err.find(message), std::string::npos) << result.err;
    }
    EXPECT_EQ(Read(out), "old");
    EXPECT_EQ(Read(in), Read(Sweep));
}

TEST_F(DetectTest, BadRowsAreToldAndTheOthersUsed) {
    QByteArray bytes = Read(Sweep);
    bytes.replace(bytes.indexOf("-71.20"), 6, "   nan").chop(3);
    bytes.insert(bytes.indexOf('\n') + 1, "2024-03-30, 09:30\n");
    const QString in = Write("in.csv", bytes);
    const CliResult result = Detect({}, in, Path("out.xml"));
    EXPECT_EQ(result.exitCode, ExitFile);
    const std::string name = in.toStdString();
    EXPECT_EQ(result.err, name + ":1: level \"nan\" is not a number\n" + name +
                              ":2: the row has too few columns\n" + name +
                              ":161: the file ends within the row\n");
    EXPECT_EQ(ResultsOf(Path("out.xml")).size(), 10);
}

TEST_F(DetectTest, TheOldFileStandsWhenThereIsNoNewOne) {
    const QString out = Write("out.xml", "old");
    const std::pair<QString, const char*> rows[] = {
        {Path("missing.csv"), "missing.csv: there is no such file"},
        {m_folder.path(), "this is no ordinary file"},
        {Write("empty.csv", ""), "empty.csv: holds no power sweeps"},
        {Write("other.csv", "Frequency\n7055000\n"), "other.csv:1: the row has too few columns"},
    };
    for (const auto& [in, message] : rows) {
        const CliResult result = Detect({}, in, out);
        EXPECT_EQ(result.exitCode, ExitFile) << message;
        EXPECT_NE(result.err.find(message), std::string::npos) << result.err;
        EXPECT_EQ(Read(out), "old") << message;
    }
    for (const QString& target : {m_folder.path() + Q("/no/folder.xml"), Q("/proc/x.csv")}) {
        const CliResult result = Detect({}, Sweep, target);
        EXPECT_EQ(result.exitCode, ExitFile);
        EXPECT_NE(result.err.find(target.toStdString()), std::string::npos) << result.err;
    }
    for (const char* name : {"out.xml", "out.csv"}) {
        const QString full = Write(name, "old");
        CliResult result;
        {
            const FullDisk disk(800);
            result = Detect({Q("--threshold"), Q("4")}, Sweep, full);
        }
        EXPECT_EQ(result.exitCode, ExitFile);
        EXPECT_NE(result.err.find(full.toStdString() + ": cannot be written"), std::string::npos)
            << result.err;
        EXPECT_EQ(Read(full), "old") << name;
    }
}

TEST_F(DetectTest, CheckCountsSweepsAndRows) {
    const CliResult good = Cli({Q("check"), Sweep});
    EXPECT_EQ(good.exitCode, ExitDone) << good.err;
    EXPECT_NE(good.out.find("power sweeps, 40 sweeps, 160 rows, no problems"), std::string::npos) << good.out;
    const CliResult bad = Cli({Q("check"), Write("bad.csv", Read(Sweep) + "x\n"), Sweep});
    EXPECT_EQ(bad.exitCode, ExitFile);
    EXPECT_NE(bad.err.find("bad.csv:161: the row has too few columns"), std::string::npos) << bad.err;
    EXPECT_NE(bad.out.find("40 sweeps, 160 rows, 1 problem\n"), std::string::npos) << bad.out;
}

/// What a program has written to a terminal.
std::string Typed(int terminal) {
    char bytes[4096];
    const ssize_t count = read(terminal, bytes, sizeof bytes);
    return {bytes, static_cast<size_t>(std::max<ssize_t>(count, 0))};
}

TEST(ProgressBarTest, ATerminalShowsItUntilItIsDone) {
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
    ASSERT_GE(terminal, 0);
    ASSERT_EQ(grantpt(terminal) | unlockpt(terminal), 0);
    ASSERT_NE(fcntl(terminal, F_SETFL, O_NONBLOCK), -1);
    FILE* out = fopen(ptsname(terminal), "w");
    ASSERT_TRUE(out);
    {
        ProgressBar bar(out);
        bar.Show(50, 200);
        EXPECT_EQ(Typed(terminal), "\r[" + std::string(10, '#') + std::string(30, '.') + "]  25 %");
        bar.Show(51, 200);
        EXPECT_EQ(Typed(terminal), "") << "nothing new";
        ProgressBar::MakeRoom();
        EXPECT_EQ(Typed(terminal), "\r" + std::string(48, ' ') + "\r");
        bar.Show(400, 200);
        EXPECT_NE(Typed(terminal).find("] 100 %"), std::string::npos);
        bar.Show(1, 0);
    }
    EXPECT_EQ(Typed(terminal), "\r" + std::string(48, ' ') + "\r");
    ProgressBar::MakeRoom();
    EXPECT_EQ(Typed(terminal), "");
    fclose(out);
    close(terminal);
}

TEST(ProgressBarTest, AFileDoesNotShowIt) {
    FILE* out = tmpfile();
    ASSERT_TRUE(out);
    {
        ProgressBar bar(out);
        bar.Show(50, 100);
    }
    EXPECT_EQ(ftell(out), 0);
    fclose(out);
}

} // namespace
