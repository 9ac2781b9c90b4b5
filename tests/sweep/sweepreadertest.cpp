#include "tests/sweep/sweepfixture.h"

#include <QTemporaryDir>

#include <cmath>
#include <limits>

namespace {

constexpr float Infinity = std::numeric_limits<float>::infinity();

/// A good row of five bins of 1 MHz.
QByteArray Row(const char* stamp, int lowMegahertz,
               const char* levels = "-70.00, -70.00, -70.00, -70.00, -70.00") {
    return QByteArray(stamp) + ", " + QByteArray::number(lowMegahertz) + "000000, " +
           QByteArray::number(lowMegahertz + 5) + "000000, 1000000.00, 20, " + levels + "\n";
}

QDateTime TimeOf(const Sweep& sweep) {
    return QDateTime::fromMSecsSinceEpoch(sweep.time / 1000, Qt::UTC);
}

TEST(SweepReaderTest, RowsOfOneTimeAreOneSweepByFrequency) {
    const SweepReading read =
        ReadSweeps(Row("2024-03-30, 12:00:00.500000", 2400) + Row("2024-03-30, 12:00:00.500000", 2410) +
                   Row("2024-03-30, 12:00:00.500000", 2405, "-1.00, -2.5, -3, 4e0, -5") +
                   Row("2024-03-30, 12:00:01.750000", 2400) + Row("2024-03-30, 12:00:01.750000", 2410));
    ASSERT_EQ(read.sweeps.size(), 2u);
    EXPECT_TRUE(read.problems.isEmpty()) << read.problems.join(u'\n').toStdString();
    const Sweep& first = read.sweeps[0];
    ASSERT_EQ(first.hops.size(), 3u);
    EXPECT_EQ(first.hops[0].low, 2400e6);
    EXPECT_EQ(first.hops[1].low, 2405e6);
    EXPECT_EQ(first.hops[1].End(), 2410e6);
    EXPECT_EQ(first.hops[2].low, 2410e6);
    const float* levels = first.levels.data() + first.hops[1].first;
    EXPECT_EQ(std::vector<float>(levels, levels + 5), (std::vector<float>{-1, -2.5, -3, 4, -5}));
    EXPECT_EQ(TimeOf(first), QDateTime(QDate(2024, 3, 30), QTime(12, 0, 0, 500), Qt::UTC));
    EXPECT_EQ(read.sweeps[1].time - first.time, 1'250'000);
    EXPECT_EQ(read.rows, 5);
}

TEST(SweepReaderTest, AClockOfSecondsMayShowSeveralSweeps) {
    const SweepReading read = ReadSweeps(Row("2024-03-30, 12:00:00", 88) + Row("2024-03-30, 12:00:00", 93) +
                                         Row("2024-03-30, 12:00:00", 88) + Row("2024-03-30, 12:00:00", 93));
    ASSERT_EQ(read.sweeps.size(), 2u);
    EXPECT_EQ(read.sweeps[1].hops.size(), 2u);
    EXPECT_EQ(read.sweeps[0].time, read.sweeps[1].time);
}

TEST(SweepReaderTest, BinsLieByTheirWidth) {
    // The last bin stands twice, and the sixth value is no number of bins.
    const SweepReading read =
        ReadSweeps("2024-03-30, 12:00:00, 88000000, 88040000, 10000.00, 1, -1, -2, -3, -4, -4\n");
    ASSERT_EQ(read.sweeps.size(), 1u);
    EXPECT_TRUE(read.problems.isEmpty());
    EXPECT_EQ(read.sweeps[0].hops[0].count, 4u);
    EXPECT_EQ(read.sweeps[0].hops[0].End(), 88040000);
    EXPECT_EQ(read.sweeps[0].levels, (std::vector<float>{-1, -2, -3, -4}));
}

TEST(SweepReaderTest, OtherWaysToWriteARowAreRead) {
    const char* const rows[] = {
        "2024-03-30,12:00:00,88000000,88030000,10000,1,-1,-2,-3\n",
        ("\xef\xbb\xbf"
         "2024-03-30, 12:00:00, 88000000, 88030000, 10000, 1, -1, -2, -3\r\n"),
        "\n2024-03-30, 12:00:00, 8.8e7, 8.803e7, 1e4, 1, -1.0000000000, -2, -3, \n",
        "2024-03-30,\t12:00:00 , 88000000 , 88030000, 10000.00, 1, -1 , -2,-3 ",
    };
    for (const char* row : rows) {
        const SweepReading read = ReadSweeps(row);
        EXPECT_TRUE(read.problems.isEmpty()) << row << read.problems.join(u'\n').toStdString();
        ASSERT_EQ(read.sweeps.size(), 1u) << row;
        EXPECT_EQ(read.sweeps[0].levels, (std::vector<float>{-1, -2, -3})) << row;
        EXPECT_EQ(read.sweeps[0].hops[0].low, 88e6) << row;
    }
}

TEST(SweepReaderTest, BadRowsAreToldAndLeftOut) {
    const QByteArray at = "2024-03-30, 12:00:01, ";
    const std::pair<QByteArray, const char*> rows[] = {
        {"x", "the row has too few columns"},
        {at + "88000000, 93000000, 1000000.00, 20", "the row has too few columns"},
        {at + "88000000, 93000000, 1000000.00, 20, ", "the row has too few columns"},
        {at + "abc, 93000000, 1000000, 20, -1", "lowest frequency \"abc\" is not a number"},
        {at + "88000000, nan, 1000000, 20, -1", "highest frequency \"nan\" is not a number"},
        {at + "88000000, 93000000, 1000000x, 20, -1", "bin width \"1000000x\" is not a number"},
        {at + "93000000, 88000000, 1000000, 20, -1", "the row ends at 88000000 Hz, where it begins or below"},
        {at + "-5, 93000000, 1000000, 20, -1", "no receiver reaches from -5 Hz to 93000000 Hz"},
        {at + "88000000, 9e12, 1000000, 20, -1", "no receiver reaches from 88000000 Hz to 9000000000000 Hz"},
        {at + "88000000, 93000000, 0, 20, -1", "bins of 0 Hz do not fit into 5000000 Hz"},
        {at + "88000000, 93000000, 9000000, 20, -1", "bins of 9000000 Hz do not fit into 5000000 Hz"},
        {at + "88000000, 93000000, 0.001, 20, -1", "5000000 Hz in bins of 0.001 Hz are too many bins"},
        {"2024-02-30, 12:00:01, 88000000, 93000000, 1000000, 20, -1",
         "\"2024-02-30, 12:00:01\" is no date and time"},
        {"2024-03-30, 24:00:00, 88000000, 93000000, 1000000, 20, -1",
         "\"2024-03-30, 24:00:00\" is no date and time"},
        {"2024-03-30, 12:00:01.x, 88000000, 93000000, 1000000, 20, -1",
         "\"2024-03-30, 12:00:01.x\" is no date and time"},
        {"2024-03-30, 12:00:00, 98000000, 103000000, 1000000, 20, nan, nan, nan, nan, nan",
         "5 levels are not numbers, the first is \"nan\""},
    };
    for (const auto& [row, problem] : rows) {
        // Between two rows of a sweep, which stays one.
        const SweepReading read =
            ReadSweeps(Row("2024-03-30, 12:00:00", 88) + row + "\n" + Row("2024-03-30, 12:00:00", 93));
        EXPECT_EQ(read.problems, QStringList(QStringLiteral("2: ") + QLatin1String(problem)))
            << row.constData();
        ASSERT_EQ(read.sweeps.size(), 1u) << row.constData();
        EXPECT_EQ(read.sweeps[0].hops.size(), 2u) << row.constData();
        EXPECT_EQ(read.rows, 2) << row.constData();
    }
}

TEST(SweepReaderTest, GoodValuesOfABadRowAreKept) {
    struct {
        const char* levels;
        const char* problem;     ///< null for none
        std::vector<float> kept; ///< infinite stands for a value that is missing
    } const rows[] = {
        {"-1, -2, -inf, -4, -5", nullptr, {-1, -2, -Infinity, -4, -5}},
        {"-1, nan, -3, -4, -5", "level \"nan\" is not a number", {-1, Infinity, -3, -4, -5}},
        {"-nan, -2, inf, x, 99999",
         "4 levels are not numbers, the first is \"-nan\"",
         {Infinity, -2, Infinity, Infinity, Infinity}},
        {"-1, , -3, -4, -5", "level \"\" is not a number", {-1, Infinity, -3, -4, -5}},
        {"-1, -2, -3", "3 levels do not fill 5 bins", {-1, -2, -3}},
        {"-1, -2, -3, -4", "4 levels, where rows before have 5", {-1, -2, -3, -4}},
        {"-1, -2, -3, -4, -5, -6, -7, -8", "8 levels do not fill 5 bins", {-1, -2, -3, -4, -5}},
    };
    for (const auto& row : rows) {
        const SweepReading read =
            ReadSweeps(Row("2024-03-30, 12:00:00", 88) + Row("2024-03-30, 12:00:01", 88, row.levels) +
                       Row("2024-03-30, 12:00:02", 88));
        EXPECT_EQ(read.problems, row.problem ? QStringList(QStringLiteral("2: ") + QLatin1String(row.problem))
                                             : QStringList())
            << row.levels;
        ASSERT_EQ(read.sweeps.size(), 3u) << row.levels;
        std::vector<float> levels = read.sweeps[1].levels;
        std::ranges::replace_if(
            levels, [](float level) { return std::isnan(level); }, Infinity);
        EXPECT_EQ(levels, row.kept) << row.levels;
        EXPECT_EQ(read.sweeps[1].hops[0].count, row.kept.size()) << row.levels;
    }
}

TEST(SweepReaderTest, ATornLastRowLosesItsLastValueOnly) {
    const QByteArray good = Row("2024-03-30, 12:00:00", 88) +
                            Row("2024-03-30, 12:00:01", 88, "-61.25, -62.25, -63.25, -64.25, -65.25");
    const qsizetype begin = good.indexOf('\n') + 1;
    const qsizetype levels = good.indexOf("-61.25");
    for (qsizetype size = begin + 1; size < good.size() - 1; ++size) {
        const SweepReading read = ReadSweeps(good.left(size));
        EXPECT_EQ(read.problems.size(), 1) << size;
        EXPECT_TRUE(read.problems.first().startsWith(QLatin1String("2: the file ends within the row")))
            << read.problems.first().toStdString();
        const auto whole =
            static_cast<size_t>(std::max(good.mid(levels, size - levels).count(','), qsizetype(0)));
        if (size < levels || whole == 0)
            EXPECT_EQ(read.sweeps.size(), 1u) << size;
        else
            ASSERT_EQ(read.sweeps.size(), 2u) << size;
        for (size_t i = 0; read.sweeps.size() == 2 && i < read.sweeps[1].levels.size(); ++i)
            EXPECT_EQ(read.sweeps[1].levels[i], -61.25f - static_cast<float>(i)) << size;
    }
    const SweepReading whole = ReadSweeps(good.left(good.size() - 1));
    EXPECT_TRUE(whole.problems.isEmpty()) << "only the line end is missing";
    EXPECT_EQ(whole.sweeps.at(1).levels.size(), 5u);
}

TEST(SweepReaderTest, TimesThatGoBackAreTold) {
    const SweepReading read = ReadSweeps(Row("2024-03-30, 12:00:05", 88) + Row("2024-03-30, 12:00:04", 88) +
                                         Row("2024-03-30, 12:00:04.5", 88));
    EXPECT_EQ(read.problems, QStringList(QStringLiteral("2: time goes back from the row before")));
    EXPECT_EQ(read.sweeps.size(), 3u);
}

TEST(SweepReaderTest, ManyProblemsAreToldInShort) {
    QByteArray text;
    for (int i = 0; i < 250; ++i)
        text += "nonsense\n";
    const SweepReading read = ReadSweeps(text + Row("2024-03-30, 12:00:05", 88));
    EXPECT_EQ(read.sweeps.size(), 1u);
    EXPECT_EQ(read.problemCount, 250);
    ASSERT_EQ(read.problems.size(), 101);
    EXPECT_EQ(read.problems.last(), QStringLiteral("0: 150 more problems"));
}

TEST(SweepReaderTest, LinesWithoutEndAreSkipped) {
    const SweepReading read = ReadSweeps(Row("2024-03-30, 12:00:00", 88) + QByteArray(20'000'000, 'x') +
                                         '\n' + Row("2024-03-30, 12:00:01", 88));
    EXPECT_EQ(read.problems, QStringList(QStringLiteral("2: the line is too long")));
    EXPECT_EQ(read.sweeps.size(), 2u);
    EXPECT_EQ(ReadSweeps(QByteArray(20'000'000, 'x')).problems.size(), 1);
}

TEST(SweepReaderTest, LocalTimesBecomeUtc) {
    const QTimeZone berlin("Europe/Berlin");
    ASSERT_TRUE(berlin.isValid());
    const std::pair<const char*, const char*> rows[] = {
        {"2024-01-15, 12:00:00", "2024-01-15T11:00:00.000Z"},
        {"2024-07-15, 12:00:00.250000", "2024-07-15T10:00:00.250Z"},
        {"1970-01-01, 00:30:00", "1969-12-31T23:30:00.000Z"},
        {"2024-03-31, 01:59:59", "2024-03-31T00:59:59.000Z"},
        {"2024-03-31, 03:00:00", "2024-03-31T01:00:00.000Z"},
        {"2024-03-31, 02:30:00", "2024-03-31T01:30:00.000Z"},
        {"2024-10-27, 01:59:59", "2024-10-26T23:59:59.000Z"},
        {"2024-10-27, 03:00:00", "2024-10-27T02:00:00.000Z"},
        {"2016-12-31, 23:59:60", "2016-12-31T23:00:00.000Z"},
    };
    for (const auto& [stamp, utc] : rows) {
        const SweepReading read = ReadSweeps(Row(stamp, 88), berlin);
        ASSERT_EQ(read.sweeps.size(), 1u) << stamp;
        EXPECT_EQ(TimeOf(read.sweeps[0]).toString(Qt::ISODateWithMs).toStdString(), utc) << stamp;
    }
}

TEST(SweepReaderTest, TheHourThatComesTwiceGoesOn) {
    QByteArray text;
    for (const char* stamp : {"2024-10-27, 02:00:00", "2024-10-27, 02:30:00", "2024-10-27, 02:59:59.5",
                              "2024-10-27, 02:00:00", "2024-10-27, 02:30:00", "2024-10-27, 03:00:00"})
        text += Row(stamp, 88);
    const SweepReading read = ReadSweeps(text, QTimeZone("Europe/Berlin"));
    EXPECT_TRUE(read.problems.isEmpty()) << read.problems.join(u'\n').toStdString();
    ASSERT_EQ(read.sweeps.size(), 6u);
    EXPECT_EQ(read.sweeps[3].time - read.sweeps[0].time, 3600'000'000);
    EXPECT_EQ(read.sweeps[5].time - read.sweeps[0].time, 7200'000'000);
}

TEST(SweepReaderTest, SweepFilesAreKnownByTheirRows) {
    QTemporaryDir folder;
    const std::pair<QByteArray, bool> rows[] = {
        {Row("2024-03-30, 12:00:00", 88), true},
        {"torn, row\n" + Row("2024-03-30, 12:00:00", 88), true},
        {"2024-03-30, 12:00:00, 88000000, 93000000, 1000.00, 20, " + QByteArray("-70.00, ").repeated(50000),
         true},
        {"", false},
        {"Frequency,Bandwidth\n7055000,3000\n", false},
        {"7055000\t3000\t2024-03-30, 12:00:00, 88000000, 93000000, 10000, 20, -1\n", false},
    };
    for (const auto& [bytes, expected] : rows) {
        QFile file(folder.filePath(QStringLiteral("file.csv")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        file.close();
        EXPECT_EQ(IsSweepFile(file.fileName()), expected) << bytes.left(60).toStdString();
    }
    EXPECT_FALSE(IsSweepFile(folder.path()));
    EXPECT_FALSE(IsSweepFile(folder.filePath(QStringLiteral("missing.csv"))));
}

} // namespace
