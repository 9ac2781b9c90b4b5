#include "host/base/problems.h"
#include "host/base/quoros.h"
#include "tests/support/traces.h"

#include <QDateTime>

#include <gtest/gtest.h>

namespace {

class FixedClock : public IQuorOS {
public:
    qint64 CurrentTime() const override { return 42; }
};

TEST(OperatingSystem, GivesTheTimeInMicroseconds) {
    const qint64 before = QDateTime::currentMSecsSinceEpoch();
    const qint64 now = QuorOS::Create().CurrentTime();
    const qint64 after = QDateTime::currentMSecsSinceEpoch();
    EXPECT_GE(now, before * 1000);
    EXPECT_LT(now, (after + 1) * 1000);
}

TEST(OperatingSystem, CanBeReplacedAndBroughtBack) {
    FixedClock clock;
    QuorOS::Replace(&clock);
    EXPECT_EQ(QuorOS::Create().CurrentTime(), 42);
    QuorOS::Replace(nullptr);
    EXPECT_GT(QuorOS::Create().CurrentTime(), 42);
}

TEST(Trace, BuildsNoTextWhileItsBitIsClear) {
    Traces traces(TraceMaskAssert);
    bool built = false;
    const auto text = [&built] {
        built = true;
        return QStringLiteral("File cannot be opened: x");
    };
    TraceLazily("listviewshandler", 897, text);
    EXPECT_FALSE(built);
    EXPECT_TRUE(traces.texts.isEmpty());

    ErrorHandler::Instance().SetTraceMask(TraceMaskTrace);
    TraceLazily("listviewshandler", 897, text);
    EXPECT_EQ(traces.texts, QStringList("File cannot be opened: x"));
    EXPECT_EQ(traces.places, QStringList("listviewshandler:897"));
}

TEST(Trace, AssertionsNameTheirExpression) {
    Traces traces;
    _Q_assert(L"m_pMedCtrl", L"listviewshandler", 1155);
    ASSERT_EQ(traces.texts.size(), 1);
    EXPECT_TRUE(traces.texts[0].contains("m_pMedCtrl"));
    EXPECT_EQ(traces.places, QStringList("listviewshandler:1155"));
}

TEST(Problem, ReachesTheReceiverAndTheTrace) {
    Traces traces;
    Problems::Report("listviewshandler", 903, {"a.ltl", 7, "bad number"});
    Problems::Report("listviewshandler", 903, {"a.ltl", 0, "no such file"});
    Problems::Report("listviewshandler", 903, Problem::FromText("b.csv:2: bad cell"));
    EXPECT_EQ(traces.problems,
              (QStringList{"a.ltl:7: bad number", "a.ltl: no such file", "b.csv:2: bad cell"}));
    EXPECT_EQ(traces.texts.size(), 3);
    EXPECT_EQ(traces.places[0], QStringLiteral("listviewshandler:903"));
}

} // namespace
