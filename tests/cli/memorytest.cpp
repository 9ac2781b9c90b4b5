#include "cli/list.h"
#include "controls/frequencystore/files/generallistparser.h"
#include "controls/frequencystore/memory/jobfile.h"
#include "controls/frequencystore/memory/memoryscansection.h"
#include "host/base/fileproblems.h"
#include "tests/cli/runcli.h"

#include <QFileInfo>

#include <array>
#include <malloc.h>
#include <sys/resource.h>

#if defined(__SANITIZE_ADDRESS__)
constexpr bool MemoryIsLimitable = false; // the sanitizer maps more than any limit leaves
#elif defined(__has_feature)
constexpr bool MemoryIsLimitable = !__has_feature(address_sanitizer);
#else
constexpr bool MemoryIsLimitable = true;
#endif

namespace {

constexpr int MegaByte = 1024 * 1024;

/// A number of bytes that the kernel tells of this process.
qint64 statusOf(const char* name) {
    QFile file(Q("/proc/self/status"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : file.readAll().split('\n')) {
        if (line.startsWith(name))
            return line.mid(qsizetype(strlen(name)) + 1).simplified().split(' ').value(0).toLongLong() * 1024;
    }
    return 0;
}

void limitAddressSpace(qint64 bytes) {
    rlimit limit{};
    getrlimit(RLIMIT_AS, &limit);
    limit.rlim_cur = static_cast<rlim_t>(bytes);
    setrlimit(RLIMIT_AS, &limit);
}

/// Takes what the heap holds free, whatever ran before, and keeps it.
void takeFreeHeap() {
    constexpr size_t Largest = 16 * MegaByte;
    constexpr size_t Least = 512;
    for (size_t size = Largest; size >= Least; size /= 2) {
        void* volatile block = nullptr; // the compiler must not leave the blocks out
        do {
            block = malloc(size);
        } while (block);
    }
}

/// From now on this process gets only so much memory.
void limitMemory(int megaBytes) {
    malloc_trim(0);
    const qint64 present = statusOf("VmSize");
    limitAddressSpace(present);
    takeFreeHeap();
    limitAddressSpace(present + qint64(megaBytes) * MegaByte);
}

/// Leaves so much free memory in the heap, as tests do that ran before.
void leaveFreeHeap(int megaBytes) {
    constexpr int Blocks = 64; // small enough to come from the heap
    std::vector<std::unique_ptr<char[]>> blocks;
    for (int i = 0; i < megaBytes * Blocks; ++i)
        blocks.push_back(std::make_unique<char[]>(MegaByte / Blocks));
    static std::unique_ptr<char[]> top; // behind them, so that they stay with the process
    top = std::make_unique<char[]>(MegaByte / Blocks);
}

QByteArray repeated(int count, const std::function<QByteArray(const QByteArray&)>& entry) {
    QByteArray all;
    for (int i = 1; i <= count; ++i)
        all += entry(QByteArray::number(i));
    return all;
}

QByteArray list(int count) {
    return "<FrequencyStoreList Version=\"1\">" +
           repeated(count,
                    [](const QByteArray& number) {
                        return "<FrequencyStoreEntry><Comment>" + number +
                               "</Comment><FFM_Settings><Frequency>7000000</Frequency></FFM_Settings>"
                               "</FrequencyStoreEntry>\n";
                    }) +
           "</FrequencyStoreList>";
}

QByteArray results(int count) {
    return "<DetectionResultList Version=\"1\">" +
           repeated(count,
                    [](const QByteArray& number) {
                        return "<DetectionResult><Frequency>" + number + "</Frequency></DetectionResult>\n";
                    }) +
           "</DetectionResultList>";
}

QByteArray table(int count) {
    return "Frequency,Comment\n" + repeated(count, [](const QByteArray& number) { return number + ",c\n"; });
}

QByteArray lines(int count) {
    return repeated(count, [](const QByteArray& number) { return number + "\tcomment\t3000\n"; });
}

QByteArray exported(int count) {
    return repeated(count, [](const QByteArray& number) { return number + "\t3000\ta\tLocked\t1\t1\t\n"; });
}

QByteArray profiles(int count) {
    return "<T>" +
           repeated(count,
                    [](const QByteArray& number) {
                        return "<PROFILETBL><PROFILEID>" + number +
                               "</PROFILEID><PROFILEPARAMETERSETTBL><NOMINALFREQUENCY>1</NOMINALFREQUENCY>"
                               "</PROFILEPARAMETERSETTBL></PROFILETBL>\n";
                    }) +
           "</T>";
}

QByteArray job(int count) {
    return "<JOB><SUBJOB><TDS><MEMORYSCAN>" +
           repeated(count,
                    [](const QByteArray& number) {
                        return "<MEMORYSCAN_CHANNEL Range=\"" + number + "\" Name=\"" + number +
                               "\"><MEMORYSCAN_SEQ_FREQUENCY Value=\"7000000\"/></MEMORYSCAN_CHANNEL>\n";
                    }) +
           "</MEMORYSCAN></TDS></SUBJOB></JOB>";
}

struct Row {
    const char* kind;
    const char* file;
    QByteArray (*content)(int count);
    std::array<int, 3> megaBytes{18, 40, 70};
};
const Row Rows[] = {
    {"target", "a.csv", table, {18, 30, 45}}, {"target", "a.xml", list, {18, 30, 45}},
    {"target", "a.sfl", lines, {18, 30, 45}}, {"target", "profiles.xml", profiles},
    {"noi", "a.noi", lines, {24, 32, 42}},    {"noi", "a.xml", list, {18, 30, 42}},
    {"noi", "profiles.xml", profiles},        {"memory-hf", "a.sfl", lines, {24, 40, 70}},
    {"memory-vuhf", "a.xml", list},           {"memory-hf", "a.pij", job},
    {"results", "a.xml", list, {18, 30, 42}}, {"results", "a.csv", exported, {18, 30, 42}},
    {"detections", "a.xml", list, {2, 4, 8}}, {"detections-hf", "a.xml", results, {2, 10, 30}},
};

/// A process of its own reads files that do not fit into the memory that it has left.
class MemoryTest : public testing::Test, protected TestFolder {
protected:
    void SetUp() override {
        if (!MemoryIsLimitable)
            GTEST_SKIP() << "memory cannot be limited under AddressSanitizer";
        testing::FLAGS_gtest_death_test_style = "fast";
    }

    /// Ends the process: 0 when the list is as it was, or told to be empty, and can be used.
    [[noreturn]] static void readBeyondMemory(const Row& row, const QString& small, const QString& big,
                                              int megaBytes) {
        bool isToldEmpty = false;
        Problems::SetSink([&](const Problem& problem) {
            std::fprintf(stderr, "%s\n", qPrintable(problem.ToString()));
            isToldEmpty = isToldEmpty || problem.ToString().contains(Q("the list is empty now"));
        });
        const std::unique_ptr<CliList> list = MakeList(Q(row.kind));
        if (!list->Read(small) || list->Count() == 0)
            _exit(10);
        const size_t before = list->Count();
        limitMemory(megaBytes);
        if (list->Read(big))
            _exit(11);
        if (list->Count() != (isToldEmpty ? 0 : before))
            _exit(12);
        const size_t kept = QByteArray(row.kind).startsWith("memory") ? list->Count() : 0;
        if (!list->Read(small) || list->Count() != before + kept)
            _exit(13);
        _exit(0);
    }
};

TEST_F(MemoryTest, AFileThatDoesNotFitIsToldAndTheListIsConsistent) {
    leaveFreeHeap(100);
    for (const Row& row : Rows) {
        const QString small = Write("small-" + Q(row.file), row.content(3));
        const QString big = Write("big-" + Q(row.file), row.content(150000));
        for (const int megaBytes : row.megaBytes) {
            SCOPED_TRACE(testing::Message() << row.kind << ' ' << row.file << ' ' << megaBytes);
            EXPECT_EXIT(readBeyondMemory(row, small, big, megaBytes), testing::ExitedWithCode(0),
                        "big-.*: not enough memory to read it \\([0-9]+ ");
        }
    }
}

/// Counts the records of a file.
class Counter final : public GeneralListParser {
public:
    void Prepare4NewFile() override {}
    void ResetDataAfterNewFile() override {}
    void FillInData(double, double, QString, QString, int, QString, QString, QString, QString,
                    QString) override {
        ++count;
    }

    int count = 0;
};

/// How many times the size of a file its reading takes, at its peak.
template <typename Read>
double peakOf(const QString& path, Read read) {
    const qint64 before = statusOf("VmRSS:");
    if (!read())
        return 1e9;
    return static_cast<double>(statusOf("VmHWM:") - before) / static_cast<double>(QFileInfo(path).size());
}

TEST_F(MemoryTest, JobsAndProfileTablesTakeAFewTimesTheirSize) {
    const QByteArray filler = "<!--" + QByteArray(20 * MegaByte, 'x') + "-->";
    const QString jobFile = Write("a.pij", job(1000).replace("<SUBJOB>", filler + "<SUBJOB>"));
    const QString tableFile = Write("profiles.xml", profiles(150000));
    const auto end = [](double times) {
        std::fprintf(stderr, "%.1f times its size\n", times);
        _exit(times < 6 ? 0 : 1);
    };
    EXPECT_EXIT(end(peakOf(jobFile,
                           [&] {
                               const std::optional<QString> text = ReadJobText(jobFile);
                               FileProblems problems(jobFile, "test");
                               JobChannels channels;
                               return text && ReadScanChannels(*text, false, problems, channels);
                           })),
                testing::ExitedWithCode(0), "times its size");
    EXPECT_EXIT(end(peakOf(tableFile,
                           [&] {
                               Counter counter;
                               return counter.ParseProfileTable(tableFile) && counter.count == 150000;
                           })),
                testing::ExitedWithCode(0), "times its size");
}

} // namespace
