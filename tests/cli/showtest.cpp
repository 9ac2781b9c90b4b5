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

} // namespace
