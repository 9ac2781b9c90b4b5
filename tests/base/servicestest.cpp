#include "host/base/fileproblems.h"
#include "host/base/fixedplace.h"
#include "tests/support/clock.h"
#include "tests/support/traces.h"

#include <QDateTime>

#include <gtest/gtest.h>

namespace {

TEST(OperatingSystem, GivesTheTimeInMicroseconds) {
    const qint64 before = QDateTime::currentMSecsSinceEpoch();
    const qint64 now = QuorOS::Create().CurrentTime();
    const qint64 after = QDateTime::currentMSecsSinceEpoch();
    EXPECT_GE(now, before * 1000);
    EXPECT_LT(now, (after + 1) * 1000);
}

TEST(OperatingSystem, CanBeReplacedAndBroughtBack) {
    {
        const FixedClock clock(42);
        EXPECT_EQ(QuorOS::Create().CurrentTime(), 42);
    }
    EXPECT_GT(QuorOS::Create().CurrentTime(), 42);
}

TEST(Trace, BuildsNoTextWhileItsBitIsClear) {
    Traces traces(TraceMaskAssert);
    bool built = false;
    const auto text = [&built] {
        built = true;
        return QStringLiteral("File cannot be opened: x");
    };
    TraceLazily(FixedPlace::CannotOpenList, text);
    EXPECT_FALSE(built);
    EXPECT_TRUE(traces.texts.isEmpty());

    ErrorHandler::Instance().SetTraceMask(TraceMaskTrace);
    TraceLazily(FixedPlace::CannotOpenList, text);
    EXPECT_EQ(traces.texts, QStringList("File cannot be opened: x"));
    EXPECT_EQ(traces.places, QStringList("listviewshandler:897"));
}

TEST(Trace, AssertionsNameTheirExpression) {
    Traces traces(TraceMaskTrace);
    AssertHolds(FixedPlace::TargetsWithoutController, false, "m_pMedCtrl");
    EXPECT_TRUE(traces.texts.isEmpty()) << "their bit is clear";
    ErrorHandler::Instance().SetTraceMask(TraceMaskAssert);
    AssertHolds(FixedPlace::TargetsWithoutController, true, "m_pMedCtrl");
    EXPECT_TRUE(traces.texts.isEmpty()) << "it holds";
    AssertHolds(FixedPlace::TargetsWithoutController, false, "m_pMedCtrl");
    EXPECT_EQ(traces.texts, QStringList("assertion failed: m_pMedCtrl"));
    EXPECT_EQ(traces.places, QStringList("listviewshandler:1155"));
}

TEST(Trace, ASourceAloneTellsTheLineOfItsCall) {
    constexpr char Source[] = "listviewshandler";
    const Traces traces;
    const auto tell = [](TracePlace place) { Problems::Report(place, Problem::FromText("told")); };
    const int begin = __LINE__;
    TraceLazily(Source, [] { return QStringLiteral("traced"); });
    Problems::Report("sweepfile", {"a.csv", 7, "bad number"});
    AssertHolds(Source, false, "m_pMedCtrl");
    tell(Source); // on behalf of this line, not of its own
    FileProblems problems("a.ltl", Source);
    problems.Report(1, "bad number");
    QStringList places;
    for (const char* source : {Source, "sweepfile", Source, Source, Source})
        places << QStringLiteral("%1:%2").arg(source).arg(begin + 1 + places.size());
    EXPECT_EQ(traces.places, places);
}

TEST(Problem, ReachesTheReceiverAndTheTrace) {
    Traces traces;
    Problems::Report("listviewshandler", {"a.ltl", 7, "bad number"});
    Problems::Report("listviewshandler", {"a.ltl", 0, "no such file"});
    Problems::Report("listviewshandler", Problem::FromText("b.csv:2: bad cell"));
    EXPECT_EQ(traces.problems,
              (QStringList{"a.ltl:7: bad number", "a.ltl: no such file", "b.csv:2: bad cell"}));
    EXPECT_EQ(traces.texts.size(), 3);
    EXPECT_TRUE(traces.places[0].startsWith("listviewshandler:"));
}

} // namespace
