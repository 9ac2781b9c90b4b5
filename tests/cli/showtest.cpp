#include "tests/cli/runcli.h"

#include <algorithm>

namespace {

TEST(Show, PrintsOnlyEntriesThatMatchWhere) {
    const QString file = Sample(Q("airband.sfl"));
    const auto lines = [&](const char* query) {
        const CliResult shown = Cli({Q("show"), Q("--format"), Q("tsv"), Q("--where"), Q(query), file});
        EXPECT_EQ(shown.exitCode, ExitDone) << shown.err;
        return std::count(shown.out.begin(), shown.out.end(), '\n');
    };
    const auto all = lines("");
    EXPECT_GT(all, 3);
    EXPECT_EQ(lines("not no-such-word"), all);
    EXPECT_EQ(lines("no-such-word"), 0);
    EXPECT_EQ(lines("121.5 MHz"), 2) << "the heading and one entry";
    EXPECT_EQ(lines(">121.5 MHz") + lines("<=121.5 MHz"), all + 1);
    const CliResult wrong = Cli({Q("show"), Q("--where"), Q("am lamp:2"), file});
    EXPECT_EQ(wrong.exitCode, 1);
    EXPECT_EQ(wrong.out, "");
    EXPECT_NE(wrong.err.find("character 4: No column is called \"lamp\""), std::string::npos) << wrong.err;
}

class ShowTest : public testing::Test, protected TestFolder {};

TEST_F(ShowTest, OddTextsAreOneFieldAndNumbersStandToTheRight) {
    const QString file =
        Write("odd.json",
              "[\n{\"frequency\":1000000.5,\"comment\":\"\\u0001\\\"\xc3\xa4\\\\\\n\\t\\u007f\\u009b "
              "x\",\"bandwidth\":300},"
              "{\"frequency\":2e15,\"comment\":\"? lone ?, pair \\ud83d\\ude00\"},"
              "{\"frequency\":-7,\"comment\":\"thirty-nine characters before the pair.\\ud83d\\ude00\"}]");
    const struct {
        const char* format;
        std::string shown;
    } rows[] = {
        {"json",
         "[\n"
         "{\"frequency\":1000000.5,\"comment\":\"\\u0001\\\"\xc3\xa4\\\\\\u000a\\u0009\x7f\xc2\x9b x\","
         "\"bandwidth\":300},\n"
         "{\"frequency\":2000000000000000,\"comment\":\"? lone ?, pair \xf0\x9f\x98\x80\","
         "\"bandwidth\":0},\n"
         "{\"frequency\":-7,\"comment\":\"thirty-nine characters before the pair.\xf0\x9f\x98\x80\","
         "\"bandwidth\":0}\n"
         "]\n"},
        {"tsv", "frequency\tcomment\tbandwidth\n"
                "1000000.5\t\xef\xbf\xbd\"\xc3\xa4\\  \xef\xbf\xbd\xc2\x9b x\t300\n"
                "2000000000000000\t? lone ?, pair \xf0\x9f\x98\x80\t0\n"
                "-7\tthirty-nine characters before the pair.\xf0\x9f\x98\x80\t0\n"},
        {"table", "       frequency  comment                                   bandwidth\n"
                  "       1000000.5  \xef\xbf\xbd\"\xc3\xa4\\  \xef\xbf\xbd\xc2\x9b x                        "
                  "              300\n"
                  "2000000000000000  ? lone ?, pair \xf0\x9f\x98\x80                                 0\n"
                  "              -7  thirty-nine characters before the pair.?          0\n"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Cli("show --list noi --format", {Q(row.format), file}).out, row.shown) << row.format;
}

TEST_F(ShowTest, LongListsAreShownWhole) {
    constexpr int Count = 20000;
    QByteArray lines;
    for (int i = 1; i <= Count; ++i)
        lines += QByteArray::number(i) + "\tStation\t2700\n";
    const QString file = Write("long.noi", lines);
    for (const char* const format : {"json", "tsv", "table"}) {
        const std::string shown = Cli("show --format", {Q(format), file}).out;
        const auto headings = Q(format) == Q("json") ? 2 : 1;
        EXPECT_EQ(std::count(shown.begin(), shown.end(), '\n'), Count + headings) << format;
        EXPECT_NE(shown.find(std::to_string(Count)), std::string::npos) << format;
    }
}

} // namespace
