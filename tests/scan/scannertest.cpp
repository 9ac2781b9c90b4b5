#include "scan/scanner.h"

#include "host/report/rgexception.h"
#include "tests/scan/scriptedreceiver.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace {

using StopAt = ScanSettings::StopAt;
using GoOn = ScanSettings::GoOn;

constexpr double Low = 7e6, Middle = 8e6, High = 9e6;

class Scans : public testing::Test {
protected:
    void start() {
        scanner.Start(std::make_unique<SpanPlan>(std::vector<SpanPlan::Span>{{Low, High}}, 1e6, "nothing"),
                      settings);
    }
    void run(qint64 milliseconds) { RunFor(clock, receiver, scanner, milliseconds); }
    /// A signal at a frequency during a part of the time (ms).
    void addSignal(double hertz, qint64 from, qint64 to, double strength = 40) {
        receiver.level = [this, before = receiver.level, hertz, from, to, strength](double tuned) {
            return tuned == hertz && clock.now >= from && clock.now < to ? strength : before(tuned);
        };
    }

    ScanSettings settings;
    TestClock clock;
    ScriptedReceiver receiver;
    Told told;
    Scanner scanner{receiver, clock, told};
};

TEST_F(Scans, EachStepTakesSettlingAndDwellAndPassesAreCounted) {
    start();
    run(4 * 230 + 100);
    EXPECT_THAT(receiver.tuned, ElementsAre(Low, Middle, High, Low, Middle));
    EXPECT_EQ(scanner.GetCounts().passes, 1u);
    EXPECT_EQ(scanner.GetCounts().steps, 5u);
    EXPECT_EQ(scanner.GetState(), ScanState::Scanning);
    scanner.Stop();
    EXPECT_EQ(told.ended, QString());
    EXPECT_EQ(scanner.GetState(), ScanState::Idle);
    run(1000);
    EXPECT_EQ(receiver.tuned.size(), 5u);
}

TEST_F(Scans, SoManyPassesAndNoStepMore) {
    settings.passes = 2;
    start();
    run(10'000);
    EXPECT_THAT(receiver.tuned, ElementsAre(Low, Middle, High, Low, Middle, High));
    EXPECT_EQ(told.ended, QString());
}

TEST_F(Scans, AStopTellsWhereFromWhenToWhenAndTheHighestLevel) {
    addSignal(Middle, 0, 2000, 35);
    addSignal(Middle, 1000, 1100, 50);
    start();
    run(1500);
    EXPECT_EQ(scanner.GetState(), ScanState::OnSignal);
    run(10'000);
    ASSERT_EQ(told.stops.size(), 1u);
    const ScanStop& stop = told.stops[1];
    EXPECT_EQ(stop.frequency, Middle);
    EXPECT_EQ(stop.bandwidth, 6000);
    EXPECT_EQ(stop.level, 50);
    EXPECT_EQ(stop.start, TestClock::Start + 260'000) << "the first level behind the settling";
    EXPECT_EQ(stop.stop, TestClock::Start + 1'990'000) << "when it was heard last";
    EXPECT_FALSE(stop.isActive);
    EXPECT_TRUE(told.order.front().isActive);
}

/// A signal at the middle frequency that pauses for a second, and what becomes of it.
struct Condition {
    const char* name;
    StopAt stopAt;
    double threshold;
    GoOn goOn;
    double seconds;
    double strength;
    size_t stops; ///< in ten seconds
    qint64 left;  ///< ms, when the scan went on first; 0 for never
};

void PrintTo(const Condition& condition, std::ostream* out) {
    *out << condition.name;
}

class ScanConditions : public Scans, public testing::WithParamInterface<Condition> {};

TEST_P(ScanConditions, SayWhenItStopsAndWhenItGoesOn) {
    const Condition& condition = GetParam();
    settings.stopAt = condition.stopAt;
    settings.threshold = condition.threshold;
    settings.goOn = condition.goOn;
    settings.goOnSeconds = condition.seconds;
    addSignal(Middle, 0, 3000, condition.strength);
    addSignal(Middle, 4000, 5000, condition.strength);
    qint64 left = 0;
    receiver.onTune = [&](const ScanStep& step) {
        if (step.frequency == High && left == 0)
            left = clock.now;
    };
    start();
    run(10'000);
    EXPECT_EQ(told.stops.size(), condition.stops);
    EXPECT_EQ(left, condition.left);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, ScanConditions,
    testing::Values(
        Condition{"silence shorter than the wait", StopAt::Threshold, 20, GoOn::WhenGone, 2, 40, 1, 6990},
        Condition{"silence longer than the wait", StopAt::Threshold, 20, GoOn::WhenGone, 0.5, 40, 2, 3490},
        Condition{"after a time", StopAt::Threshold, 20, GoOn::AfterTime, 1, 40, 3, 1260},
        Condition{"by hand", StopAt::Threshold, 20, GoOn::ByHand, 1, 40, 1, 0},
        Condition{"below the threshold", StopAt::Threshold, 41, GoOn::ByHand, 1, 40, 0, 460},
        Condition{"squelch closed", StopAt::Squelch, 20, GoOn::ByHand, 1, 59, 0, 460},
        Condition{"squelch open", StopAt::Squelch, 90, GoOn::ByHand, 1, 61, 1, 0}));

TEST_F(Scans, HoldSkipAndLockOut) {
    start();
    run(100);
    scanner.Hold(true);
    run(5000);
    EXPECT_EQ(scanner.GetState(), ScanState::Held);
    EXPECT_THAT(receiver.tuned, ElementsAre(Low));
    scanner.Skip();
    run(5000);
    EXPECT_THAT(receiver.tuned, ElementsAre(Low, Middle)) << "held at the next one";
    scanner.LockOut();
    scanner.Hold(false);
    run(4 * 230 + 100);
    EXPECT_THAT(receiver.tuned, ElementsAre(Low, Middle, High, Low, High, Low, High));
    EXPECT_THAT(scanner.GetLockedOut(), ElementsAre(Middle));
    scanner.SetLockedOut({Low, Middle, High});
    run(1000);
    EXPECT_EQ(told.ended, QString("Everything is locked out."));
}

TEST_F(Scans, SkippingAStopEndsItsDetection) {
    addSignal(Low, 0, 100'000);
    start();
    run(1000);
    scanner.Skip();
    EXPECT_FALSE(told.stops[1].isActive);
    EXPECT_EQ(receiver.tuned.back(), Middle);
}

TEST_F(Scans, ThePriorityChannelIsLookedAtAgainAndAgain) {
    settings.priority = 5e6;
    settings.prioritySeconds = 1;
    start();
    run(2000);
    EXPECT_THAT(receiver.tuned, ElementsAre(5e6, Low, Middle, High, Low, 5e6, Middle, High, Low));
}

TEST_F(Scans, FromASignalItComesBackToThePriorityChannelAndStaysThereWhenItIsHeard) {
    settings.priority = 5e6;
    settings.prioritySeconds = 1;
    addSignal(Low, 0, 60'000);
    addSignal(5e6, 3500, 5500);
    start();
    run(3400);
    EXPECT_THAT(receiver.tuned, ElementsAre(5e6, Low, 5e6, Low, 5e6, Low, 5e6, Low));
    EXPECT_EQ(told.stops.size(), 1u) << "one signal, whatever is looked at meanwhile";
    EXPECT_TRUE(told.stops[1].isActive);
    run(1600);
    EXPECT_TRUE(scanner.IsAtPriority());
    EXPECT_EQ(scanner.GetState(), ScanState::OnSignal);
    EXPECT_FALSE(told.stops[1].isActive) << "the priority channel has the receiver now";
    EXPECT_EQ(told.stops[2].frequency, 5e6);
    run(4000);
    EXPECT_EQ(receiver.tuned.back(), Low);
    scanner.LockOut();
    run(3000);
    scanner.SetLockedOut({5e6});
    const size_t before = receiver.tuned.size();
    run(3000);
    EXPECT_THAT(std::vector(receiver.tuned.begin() + static_cast<long>(before), receiver.tuned.end()),
                testing::Not(testing::Contains(5e6)));
}

TEST_F(Scans, ASignalOnThePriorityChannelIsOneDetectionWhoeverFoundIt) {
    settings.priority = Low;
    settings.prioritySeconds = 1;
    addSignal(Low, 300, 60'000);
    start();
    run(5000);
    EXPECT_THAT(receiver.tuned, ElementsAre(Low, Low)) << "at first in vain";
    EXPECT_EQ(told.stops.size(), 1u);
    EXPECT_TRUE(told.stops[1].isActive);
}

TEST_F(Scans, APriorityChannelThatIsDueAlreadyLeavesTheOthersTheirTurn) {
    settings.priority = 5e6;
    settings.prioritySeconds = 0.1; // less than a step takes
    addSignal(Middle, 0, 3000);
    start();
    run(10 * 230 - 1);
    EXPECT_THAT(receiver.tuned, ElementsAre(5e6, Low, 5e6, Middle, 5e6, Middle, 5e6, Middle, 5e6, Middle));
    run(6000);
    EXPECT_EQ(told.stops.size(), 1u);
    EXPECT_FALSE(told.stops[1].isActive);
    EXPECT_THAT(receiver.tuned, testing::Contains(High));
}

TEST_F(Scans, AStopThatTheReceiverDoesNotComeBackToEnds) {
    settings.priority = 5e6;
    settings.prioritySeconds = 1;
    addSignal(Low, 0, 60'000);
    receiver.onTune = [this](const ScanStep& step) {
        receiver.measures = step.frequency != Low || clock.now < 1000; // not before it has refused
    };
    start();
    run(1600);
    ASSERT_EQ(receiver.tuned.back(), Low);
    receiver.Refuse("the band is closed");
    EXPECT_EQ(receiver.tuned.back(), Middle);
    EXPECT_FALSE(told.stops[1].isActive);
    EXPECT_EQ(scanner.GetState(), ScanState::Scanning);
    EXPECT_EQ(scanner.GetCounts().unreachable, 1u);
}

TEST_F(Scans, AReceiverThatGoesAwayIsWaitedForAndTunedAnew) {
    addSignal(Middle, 0, 60'000);
    start();
    run(1000);
    receiver.BeSilent("the cable is off");
    EXPECT_EQ(scanner.GetState(), ScanState::Waiting);
    EXPECT_EQ(scanner.GetReason(), QString("the cable is off"));
    EXPECT_FALSE(told.stops[1].isActive);
    run(60'000);
    EXPECT_THAT(receiver.tuned, ElementsAre(Low, Middle));
    receiver.BeSilent(QString());
    run(600);
    EXPECT_THAT(receiver.tuned, ElementsAre(Low, Middle, Middle, High, Low));
    EXPECT_EQ(scanner.GetState(), ScanState::Scanning);
}

TEST_F(Scans, AReceiverThatIsNotThereYetMissesNoStep) {
    receiver.silent = "connecting";
    start();
    EXPECT_EQ(scanner.GetState(), ScanState::Waiting);
    run(10'000);
    receiver.BeSilent(QString());
    run(300);
    EXPECT_THAT(receiver.tuned, ElementsAre(Low, Middle));
    EXPECT_EQ(scanner.GetCounts().passes, 0u);
    EXPECT_EQ(scanner.GetCounts().unreachable, 0u);
    receiver.silent = "connecting";
    scanner.Start(std::make_unique<SpanPlan>(std::vector<SpanPlan::Span>{{Low, Low}}, 1e6, "nothing"),
                  settings);
    receiver.BeSilent(QString());
    run(300);
    EXPECT_EQ(scanner.GetCounts().passes, 1u) << "one step is enough for a pass";
}

TEST_F(Scans, AReceiverWithoutALevelIsAskedAgain) {
    start();
    run(500);
    receiver.measures = false;
    run(5000);
    EXPECT_EQ(scanner.GetState(), ScanState::Waiting);
    EXPECT_EQ(scanner.GetReason(), QString("The receiver tells no level"));
    run(20'000);
    EXPECT_EQ(scanner.GetState(), ScanState::Waiting);
    receiver.measures = true;
    run(1000);
    EXPECT_EQ(scanner.GetState(), ScanState::Scanning);
    EXPECT_EQ(scanner.GetReason(), QString());
}

TEST_F(Scans, WhoTurnsTheKnobHasTheReceiver) {
    start();
    run(100);
    receiver.TurnKnob(Low + 400); // a correction
    EXPECT_EQ(scanner.GetState(), ScanState::Scanning);
    receiver.TurnKnob(3e6);
    EXPECT_EQ(scanner.GetState(), ScanState::Held);
    EXPECT_EQ(scanner.GetReason(), QString("Tuned by hand to 3000.000 kHz"));
    run(60'000);
    EXPECT_THAT(receiver.tuned, ElementsAre(Low));
    scanner.Hold(false);
    run(100);
    EXPECT_THAT(receiver.tuned, ElementsAre(Low, Middle));
    receiver.TurnKnob(3e6);
    scanner.Skip();
    EXPECT_EQ(scanner.GetState(), ScanState::Held);
    EXPECT_EQ(scanner.GetReason(), QString()) << "it is on a channel again";
    receiver.measures = false;
    run(4500); // waits, and has tuned anew
    ASSERT_EQ(scanner.GetState(), ScanState::Waiting);
    scanner.Hold(true);
    EXPECT_EQ(scanner.GetReason(), QString("The receiver tells no level"));
    receiver.TurnKnob(3e6);
    EXPECT_EQ(scanner.GetState(), ScanState::Held);
    const size_t before = receiver.tuned.size();
    run(60'000);
    EXPECT_EQ(receiver.tuned.size(), before);
}

TEST_F(Scans, WhatCannotBeReachedIsLeftOutAndNothingAtAllEndsTheScan) {
    receiver.lowest = Middle;
    start();
    run(2 * 230 + 100);
    EXPECT_THAT(receiver.tuned, ElementsAre(Middle, High, Middle));
    EXPECT_EQ(scanner.GetCounts().unreachable, 2u);
    EXPECT_EQ(told.leftOut, QStringList("7000.000 kHz is left out: too low"));
    receiver.lowest = 1e9;
    run(1000);
    EXPECT_EQ(told.ended, QString("Nothing can be reached: too low"));
    scanner.Start(std::make_unique<SpanPlan>(std::vector<SpanPlan::Span>{}, 1e3, "no bands"), settings);
    EXPECT_EQ(told.ended, QString("no bands"));
    EXPECT_FALSE(scanner.IsRunning());
}

TEST_F(Scans, AReceiverThatFollowsNowhereEndsTheScan) {
    receiver.measures = false;
    start();
    for (int steps = 0; steps < 3; ++steps)
        receiver.Refuse("it stays");
    EXPECT_EQ(told.ended, QString("Nothing can be reached: it stays"));
    EXPECT_THAT(receiver.tuned, ElementsAre(Low, Middle, High));
}

TEST_F(Scans, ManyPlacesThatCannotBeReachedDoNotTakeTheWindowsTime) {
    receiver.lowest = 9e6;
    scanner.Start(std::make_unique<SpanPlan>(std::vector<SpanPlan::Span>{{0, High}}, 1, ""), settings);
    EXPECT_EQ(scanner.GetCounts().unreachable, 1000u) << "then others have their turn";
    EXPECT_EQ(clock.due, clock.now);
    EXPECT_EQ(told.leftOut.size(), 10) << "more tell nothing new";
}

TEST_F(Scans, WhatAReceiverThrowsEndsTheScan) {
    addSignal(Middle, 0, 60'000);
    settings.goOn = GoOn::AfterTime;
    receiver.onTune = [](const ScanStep& step) {
        if (step.frequency == High)
            throw RGException("the radio is on fire");
    };
    start();
    run(10'000);
    EXPECT_FALSE(scanner.IsRunning());
    EXPECT_EQ(told.ended, QString("the radio is on fire"));
    EXPECT_FALSE(told.stops[1].isActive);
    EXPECT_EQ(clock.due, std::nullopt);
}

TEST_F(Scans, LevelsMeasuredWhileTuningCountAndStepsDoNotNest) {
    settings.settle = settings.dwell = 0;
    receiver.measuresAtOnce = true;
    addSignal(High, 0, 60'000);
    start();
    EXPECT_EQ(receiver.tuned.size(), 1u) << "the next one is the event loop's";
    run(0);
    EXPECT_THAT(receiver.tuned, ElementsAre(Low, Middle, High));
    EXPECT_EQ(told.stops[1].frequency, High);
}

} // namespace
