#include "host/base/longwork.h"

#include "host/base/problems.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>

#include <gmock/gmock.h>
#include <thread>

namespace {

using testing::ElementsAre;

class LongWorkTest : public testing::Test, protected LongWork::Display, protected LongWork::Keeper {
protected:
    LongWorkTest() {
        LongWork::SetDisplay(this);
        LongWork::SetKeeper(this);
    }
    ~LongWorkTest() override {
        LongWork::SetDisplay(nullptr);
        LongWork::SetKeeper(nullptr);
    }

    void Turn(const LongWork::Progress& progress) override {
        shown.push_back(progress);
        if (onTurn)
            onTurn(progress);
    }
    void Hide() override { ++hidden; }
    void NoteBefore() override { kept << QStringLiteral("begin"); }
    void Revert() override {
        kept << QStringLiteral("revert");
        LongWork::Step(1, 1); // what is put back takes time as well, and cannot be cancelled
    }
    /// Steps on until the display has been called.
    void StepUntilShown() {
        for (const size_t before = shown.size(); shown.size() == before;)
            LongWork::Step(3, 10);
    }

    std::vector<LongWork::Progress> shown;
    std::function<void(const LongWork::Progress&)> onTurn;
    QStringList kept;
    int hidden = 0;
};

TEST_F(LongWorkTest, ShowsHowFarItIsAndWhichPart) {
    EXPECT_TRUE(LongWork::Run(QStringLiteral("Open"), [&] {
        EXPECT_TRUE(LongWork::IsRunning());
        StepUntilShown();
        LongWork::Run(QStringLiteral("Look"), [&] { StepUntilShown(); });
        StepUntilShown();
    }));
    EXPECT_FALSE(LongWork::IsRunning());
    ASSERT_GE(shown.size(), 3u);
    EXPECT_EQ(shown[0].part, QStringLiteral("Open"));
    EXPECT_EQ(shown[0].done * 100 + shown[0].total, 310);
    EXPECT_EQ(shown[1].title, QStringLiteral("Open"));
    EXPECT_EQ(shown[1].part, QStringLiteral("Look"));
    EXPECT_EQ(shown[2].part, QStringLiteral("Open"));
    EXPECT_EQ(hidden, 1);
    EXPECT_THAT(kept, ElementsAre(QStringLiteral("begin")));
}

TEST_F(LongWorkTest, ShortWorksInARowDoNotPutOffTheTurn) {
    for (int i = 0; i < 10; ++i) {
        LongWork::Run(QStringLiteral("Look"), [] {
            QElapsedTimer time;
            for (time.start(); time.elapsed() < 15;)
                LongWork::Step(1, 2);
        });
    }
    EXPECT_FALSE(shown.empty());
}

TEST_F(LongWorkTest, ACancelEndsTheOutermostWorkAndPutsBackWhatItDid) {
    onTurn = [](const LongWork::Progress&) { LongWork::Cancel(); };
    bool isBehind = false;
    EXPECT_FALSE(LongWork::Run(QStringLiteral("Open"), [&] {
        LongWork::Run(QStringLiteral("Look"), [&] {
            for (;;)
                LongWork::Step(0, 0);
        });
        isBehind = true;
    }));
    EXPECT_FALSE(isBehind);
    EXPECT_THAT(kept, ElementsAre(QStringLiteral("begin"), QStringLiteral("revert")));
    kept.clear();
    onTurn = nullptr;
    EXPECT_TRUE(LongWork::Run(QStringLiteral("Again"), [&] { StepUntilShown(); })); // it is no longer wanted
}

TEST_F(LongWorkTest, WhatIsUnbrokenEndsBeforeTheCancelCounts) {
    bool isWhole = false;
    EXPECT_FALSE(LongWork::Run(QStringLiteral("Save"), [&] {
        LongWork::Cancel();
        {
            const LongWork::Unbroken unbroken;
            StepUntilShown();
            isWhole = true;
        }
        EXPECT_FALSE(shown.back().canCancel);
        EXPECT_TRUE(shown.back().isCancelled);
        StepUntilShown();
        ADD_FAILURE() << "goes on";
    }));
    EXPECT_TRUE(isWhole);
}

TEST_F(LongWorkTest, OtherExceptionsPassThroughAndTakeNothingBack) {
    EXPECT_THROW(LongWork::Run(QStringLiteral("Save"), [] { throw std::bad_alloc(); }), std::bad_alloc);
    EXPECT_FALSE(LongWork::IsRunning());
    EXPECT_EQ(hidden, 1);
    EXPECT_THAT(kept, ElementsAre(QStringLiteral("begin")));
}

TEST_F(LongWorkTest, WhatComesMeanwhileWaitsForTheEnd) {
    QStringList order;
    onTurn = [&](const LongWork::Progress&) {
        onTurn = nullptr;
        LongWork::WhenDone([&] { order << QStringLiteral("waited"); });
    };
    LongWork::Run(QStringLiteral("Open"), [&] {
        StepUntilShown();
        order << QStringLiteral("worked");
    });
    QCoreApplication::processEvents();
    LongWork::WhenDone([&] { order << QStringLiteral("at once"); });
    EXPECT_THAT(order,
                ElementsAre(QStringLiteral("worked"), QStringLiteral("waited"), QStringLiteral("at once")));
}

TEST_F(LongWorkTest, AStandstillTakesTheDisplayAway) {
    LongWork::Run(QStringLiteral("Save"), [&] {
        const LongWork::Standstill standstill;
        EXPECT_EQ(hidden, 1);
        EXPECT_FALSE(LongWork::IsRunning());
        const size_t before = shown.size();
        for (int i = 0; i < 3; ++i) {
            QThread::msleep(40); // longer than a turn
            LongWork::Step(0, 0);
        }
        EXPECT_EQ(shown.size(), before);
    });
}

/// What another thread does as a part of the work.
class LongWorkElsewhereTest : public LongWorkTest {
protected:
    ~LongWorkElsewhereTest() override { Problems::SetSink(nullptr); }
};

TEST_F(LongWorkElsewhereTest, ShowsItsStepsAndTellsItsProblemsHere) {
    const auto here = std::this_thread::get_id();
    QStringList told;
    Problems::SetSink([&](const Problem& problem) {
        EXPECT_EQ(std::this_thread::get_id(), here);
        told << problem.reason;
    });
    std::atomic<bool> isShown = false;
    onTurn = [&](const LongWork::Progress& progress) { isShown = isShown || progress.done == 7; };
    LongWork::Run(QStringLiteral("Read"), [&] {
        LongWork::Elsewhere([&] {
            EXPECT_NE(std::this_thread::get_id(), here);
            Problems::Report("longworktest", {QString(), 0, QStringLiteral("one")});
            Problems::Report("longworktest", {QString(), 0, QStringLiteral("two")});
            EXPECT_TRUE(told.isEmpty());
            while (!isShown)
                LongWork::Step(7, 9);
        });
        EXPECT_THAT(told, ElementsAre(QStringLiteral("one"), QStringLiteral("two")));
    });
}

TEST_F(LongWorkElsewhereTest, ItsExceptionsAreThrownOn) {
    EXPECT_THROW(
        LongWork::Run(QStringLiteral("Read"), [] { LongWork::Elsewhere([] { throw std::bad_alloc(); }); }),
        std::bad_alloc);
}

TEST_F(LongWorkElsewhereTest, ACancelEndsItToo) {
    onTurn = [](const LongWork::Progress&) { LongWork::Cancel(); };
    EXPECT_FALSE(LongWork::Run(QStringLiteral("Read"), [] {
        LongWork::Elsewhere([] {
            for (;;)
                LongWork::Step(1, 2);
        });
    }));
}

TEST_F(LongWorkElsewhereTest, PiecesAreTakenHereInTheirOrderAndNotFarBehind) {
    const auto here = std::this_thread::get_id();
    QStringList order;
    Problems::SetSink([&](const Problem& problem) { order << problem.reason; });
    std::atomic<int> taken = 0;
    QStringList expected;
    int next = 0;
    const auto make = [&]() -> LongWork::Take {
        EXPECT_LE(next - taken, 7); // those that wait, the one in work and the one being made
        if (next == 200)
            return {};
        Problems::Report("longworktest", {QString(), 0, QStringLiteral("p%1").arg(next)});
        return [&, number = next++] {
            EXPECT_EQ(std::this_thread::get_id(), here);
            order << QString::number(number);
            ++taken;
        };
    };
    for (int i = 0; i < 200; ++i)
        expected << QStringLiteral("p%1").arg(i) << QString::number(i);
    LongWork::Run(QStringLiteral("Read"), [&] { LongWork::Ahead(make); });
    EXPECT_EQ(order, expected);
    order.clear();
    next = taken = 0;
    LongWork::Ahead(make);
    EXPECT_EQ(order, expected) << "without running work";
}

TEST_F(LongWorkElsewhereTest, WhoTakesAPieceMayFailWhileOthersAreMade) {
    EXPECT_THROW(
        LongWork::Run(
            QStringLiteral("Read"),
            [] { LongWork::Ahead([]() -> LongWork::Take { return [] { throw std::bad_alloc(); }; }); }),
        std::bad_alloc);
}

} // namespace
