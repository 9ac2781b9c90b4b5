#include "host/report/fileversions.h"
#include "tests/cli/runcli.h"

namespace {

class VersionsOf : public testing::Test, protected TestFolder {
protected:
    void keep(const QByteArray& bytes) {
        Write("list.sfl", bytes);
        FileVersions(Path("data/versions")).Keep(Path("list.sfl"));
    }
    CliResult run(QStringList arguments) {
        return Cli(QStringList{"versions", "--data", Path("data")} + arguments);
    }
};

TEST_F(VersionsOf, AFileAreListedWithWhatWasDoneSince) {
    EXPECT_EQ(run({Path("list.sfl")}).exitCode, 2);
    keep("7055000\tone\t100\tAM\n7060000\ttwo\t100\tAM\n");
    keep("7055000\tONE\t100\tAM\n");
    keep("7055000\tONE\t100\tAM\n7065000\tthree\t100\tAM\n7065000\tthree\t100\tAM\n");
    const CliResult result = run({Path("list.sfl")});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    const QStringList lines = Q(result.out.c_str()).split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 4) << result.out;
    EXPECT_TRUE(lines[1].endsWith(" 3  equal"));
    EXPECT_TRUE(lines[2].endsWith(" 1  2 added"));
    EXPECT_TRUE(lines[3].endsWith(" 2  2 added, 1 removed, 1 changed"));
}

TEST_F(VersionsOf, AFileAreRestoredAndWhatWasThereIsKept) {
    keep("7055000\tone\t100\tAM\n");
    keep("7060000\ttwo\t100\tAM\n");
    Write("list.sfl", "not kept yet");
    EXPECT_EQ(run({"--restore", "2", "--out", Path("out.sfl"), Path("list.sfl")}).exitCode, 0);
    EXPECT_EQ(Read("out.sfl"), "7055000\tone\t100\tAM\n");
    EXPECT_EQ(Read("list.sfl"), "not kept yet");
    EXPECT_EQ(run({"--restore", "2", Path("list.sfl")}).exitCode, 0);
    EXPECT_EQ(Read("list.sfl"), "7055000\tone\t100\tAM\n");
    const auto versions = FileVersions(Path("data/versions")).Of(Path("list.sfl"));
    ASSERT_EQ(versions.size(), 3u);
    EXPECT_EQ(Read(versions[0].path), "not kept yet");
    for (const char* number : {"0", "4", "-1", "x"})
        EXPECT_EQ(run({"--restore", number, Path("list.sfl")}).exitCode, 1) << number;
    Write(versions[0].path, "damaged");
    const CliResult damaged = run({"--restore", "1", Path("list.sfl")});
    EXPECT_EQ(damaged.exitCode, 2);
    EXPECT_NE(damaged.err.find("is not what was kept"), std::string::npos) << damaged.err;
    EXPECT_EQ(Read("list.sfl"), "7055000\tone\t100\tAM\n");
}

} // namespace
