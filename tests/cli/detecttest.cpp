#include "cli/interrupt.h"
#include "cli/progressbar.h"
#include "host/base/longwork.h"
#include "host/freqstorexml/filehandling.h"
#include "host/report/outputfile.h"
#include "tests/cli/runcli.h"
#include "tests/support/fulldisk.h"

#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

using namespace FreqStoreXml;

namespace {

const QString Sweep = Sample("sweep.csv");

class DetectTest : public testing::Test, protected TestFolder {
protected:
    static CliResult Detect(const QStringList& options, const QString& in, const QString& out) {
        return Cli(QStringList{"detect", "--time-zone", "UTC"} + options + QStringList{in, out});
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
    EXPECT_TRUE(result.Is(ExitDone));
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
    ASSERT_TRUE(Detect({}, Sweep, table).Is(ExitDone));
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
        {{"--threshold", "25"}, 5}, {{"--min-width", "30000"}, 5}, {{"--min-width", "60e3"}, 3},
        {{"--hold", "0"}, 12},      {{"--hold", "40"}, 7},         {{"--threshold", "60"}, 0},
    };
    for (const auto& [options, count] : rows) {
        ASSERT_TRUE(Detect(options, Sweep, Path("out.xml")).Is(ExitDone));
        EXPECT_EQ(ResultsOf(Path("out.xml")).size(), count) << options.join(u' ').toStdString();
    }
    ASSERT_TRUE(Cli("detect --time-zone America/New_York", {Sweep, Path("out.xml")}).Is(ExitDone));
    EXPECT_EQ(ResultsOf(Path("out.xml"))[1].GetStartTimeUsec(),
              (1711791004 + 4 * 3600) * 1'000'000LL + 625'000);
}

TEST_F(DetectTest, WrongCommandLinesAreToldAndChangeNothing) {
    const QString in = Write("in.csv", Read(Sweep));
    const QString out = Write("out.xml", "old");
    const std::pair<QStringList, const char*> rows[] = {
        {{in}, "wrong number of files"},
        {{"--threshold", "loud", in, out}, "--threshold \"loud\" is no number of dB"},
        {{"--threshold", "nan", in, out}, "--threshold \"nan\""},
        {{"--min-width", "-1", in, out}, "--min-width \"-1\" is no number of Hz"},
        {{"--hold", "1e300", in, out}, "--hold \"1e300\" is no number of s"},
        {{"--time-zone", "Mars/Olympus", in, out}, "no time zone is called \"Mars/Olympus\""},
        {{"--list", "target", in, out}, "list"},
        {{in, Path("out.txt")}, "out.txt\" is named neither .xml nor .csv"},
        {{in, m_folder.path() + Q("/./in.csv")}, "would replace the sweeps"},
    };
    for (const auto& [arguments, message] : rows) {
        const CliResult result = Cli(QStringList{"detect"} + arguments);
        EXPECT_TRUE(result.out.empty()) << result.out;
        EXPECT_TRUE(result.Is(ExitUsage, message));
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
    EXPECT_TRUE(result.Is(ExitFile));
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
        EXPECT_TRUE(Detect({}, in, out).Is(ExitFile, message)) << message;
        EXPECT_EQ(Read(out), "old") << message;
    }
    for (const QString& target : {m_folder.path() + Q("/no/folder.xml"), Q("/proc/x.csv")}) {
        const CliResult result = Detect({}, Sweep, target);
        EXPECT_TRUE(result.Is(ExitFile, target));
    }
    for (const char* name : {"out.xml", "out.csv"}) {
        const QString full = Write(name, "old");
        CliResult result;
        {
            const FullDisk disk(800);
            result = Detect({"--threshold", "4"}, Sweep, full);
        }
        EXPECT_TRUE(result.Is(ExitFile, full + ": cannot be written"));
        EXPECT_EQ(Read(full), "old") << name;
    }
}

TEST_F(DetectTest, CheckCountsSweepsAndRows) {
    EXPECT_TRUE(Cli("check", {Sweep}).Is(ExitDone, "power sweeps, 40 sweeps, 160 rows, no problems"));
    const CliResult bad = Cli("check", {Write("bad.csv", Read(Sweep) + "x\n"), Sweep});
    EXPECT_TRUE(bad.Is(ExitFile, "bad.csv:161: the row has too few columns"));
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

class InterruptTest : public testing::Test, protected TestFolder {};

TEST_F(InterruptTest, NothingHalfWrittenStaysAndTheProgramEndsByTheSignal) {
    const QString path = Write("list.xml", "before");
    EXPECT_EXIT(
        {
            LongWork::SetEager(true);
            const Interrupt interrupt;
            const bool isWhole = LongWork::Run(QString(), [&] {
                REPORTGENERATOR::OutputFile file(path);
                REPORTGENERATOR::WriteBytes(file.Device(), path, "after");
                ::raise(SIGINT);
                LongWork::Step(1, 2);
                file.Commit();
            });
            if (!isWhole)
                interrupt.EndProgram();
            _exit(0);
        },
        testing::KilledBySignal(SIGINT), "");
    EXPECT_EQ(Read("list.xml"), "before");
    EXPECT_EQ(FileNames(), QStringList{"list.xml"});
}

} // namespace
