#include "tests/support/recorder.h"

#include <gtest/gtest.h>
#include <memory>
#include <random>

namespace {

class Subject : public Observable {
public:
    using Observable::NotifyObservers;
};

constexpr TChangeCode Changed = TChangeCode::ValueChanged;

TEST(Observer, NotifiesInOrderOfRegistrationAndSkipsTheCauser) {
    Subject subject;
    std::vector<int> order;
    Recorder recorders[4];
    for (int i = 0; i < 4; ++i) {
        recorders[i].onUpdate = [&order, i](Observable*, TChangeCode) { order.push_back(i); };
        EXPECT_TRUE(subject.AddObserver(&recorders[i]));
    }
    EXPECT_FALSE(subject.AddObserver(&recorders[2]));
    EXPECT_FALSE(subject.AddObserver(nullptr));
    subject.NotifyObservers(Changed, &recorders[1]);
    EXPECT_EQ(order, (std::vector<int>{0, 2, 3}));

    order.clear();
    subject.MakeFirstObserver(&recorders[3]);
    subject.DeleteObserver(&recorders[0]);
    subject.DeleteObserver(&recorders[0]);
    subject.NotifyObservers(Changed, nullptr);
    EXPECT_EQ(order, (std::vector<int>{3, 1, 2}));

    subject.DeleteObservers();
    EXPECT_FALSE(subject.HasObservers());
}

TEST(Observer, ForeignCodesPassUnchanged) {
    Subject subject;
    Recorder recorder;
    subject.AddObserver(&recorder);
    subject.NotifyObservers(static_cast<TChangeCode>(4711), nullptr);
    EXPECT_EQ(recorder.codes, std::vector<int>{4711});
}

TEST(Observer, AnEndedObserverIsNoLongerCalled) {
    Subject subject;
    Recorder stays;
    auto ends = std::make_unique<Recorder>();
    subject.AddObserver(ends.get());
    subject.AddObserver(&stays);
    ends.reset();
    subject.NotifyObservers(Changed, nullptr);
    EXPECT_EQ(stays.codes.size(), 1u);

    auto only = std::make_unique<Recorder>();
    Subject single;
    single.AddObserver(only.get());
    only.reset();
    single.NotifyObservers(Changed, nullptr);
    EXPECT_TRUE(single.AddObserver(&stays));
}

TEST(Observer, WhoIsRemovedBeforeItsTurnIsNotCalledAndNobodyElseIsSkipped) {
    Subject subject;
    Recorder a, b, c, added;
    a.onUpdate = [&](Observable*, TChangeCode) {
        subject.DeleteObserver(&a);
        subject.DeleteObserver(&b);
        subject.AddObserver(&added);
    };
    for (Recorder* r : {&a, &b, &c})
        subject.AddObserver(r);
    subject.NotifyObservers(Changed, nullptr);
    EXPECT_EQ(a.codes.size(), 1u);
    EXPECT_EQ(b.codes.size(), 0u);
    EXPECT_EQ(c.codes.size(), 1u);
    EXPECT_EQ(added.codes.size(), 0u);
    subject.NotifyObservers(Changed, nullptr);
    EXPECT_EQ(added.codes.size(), 1u);
}

TEST(Observer, TheSubjectMayEndWhileItNotifies) {
    for (const int observers : {1, 2, 5}) {
        auto subject = std::make_unique<Subject>();
        Recorder recorders[5];
        for (int i = 0; i < observers; ++i)
            subject->AddObserver(&recorders[i]);
        recorders[0].onUpdate = [&](Observable*, TChangeCode) { subject.reset(); };
        Subject* const raw = subject.get();
        raw->NotifyObservers(Changed, nullptr);
        EXPECT_FALSE(subject);
        EXPECT_TRUE(recorders[4].codes.empty());
    }
}

TEST(Observer, TheSubjectMayEndInANestedNotification) {
    auto subject = std::make_unique<Subject>();
    Recorder outer, inner, last;
    Subject* const raw = subject.get();
    for (Recorder* r : {&outer, &inner, &last})
        subject->AddObserver(r);
    outer.onUpdate = [&](Observable*, TChangeCode code) {
        if (code == Changed)
            raw->NotifyObservers(TChangeCode::Announcement, nullptr);
    };
    inner.onUpdate = [&](Observable*, TChangeCode) { subject.reset(); };
    raw->NotifyObservers(Changed, nullptr);
    EXPECT_EQ(outer.codes, (std::vector<int>{3, 19}));
    EXPECT_TRUE(last.codes.empty());
}

TEST(Observer, WeakReferencesEndWithTheirSubject) {
    auto subject = std::make_unique<Subject>();
    Recorder recorder;
    subject->AddObserver(&recorder);
    const WeakRef<Subject> ref(subject.get());
    const WeakRef<Subject> other(subject.get());
    EXPECT_EQ(ref.get(), subject.get());
    subject->NotifyObservers(Changed, nullptr);
    EXPECT_EQ(recorder.codes.size(), 1u);
    subject.reset();
    EXPECT_FALSE(ref);
    EXPECT_FALSE(other);
    const Subject anew; // may take the slot
    EXPECT_FALSE(ref);
}

/// Random reactions against each other; what counts is that the sanitizers stay quiet and that whoever is
/// registered all along hears of each notification.
TEST(Observer, RandomReactionsTouchNothingThatHasEnded) {
    std::mt19937 random(20260101);
    for (int round = 0; round < 300; ++round) {
        auto subject = std::make_unique<Subject>();
        std::vector<std::unique_ptr<Recorder>> crowd;
        Recorder faithful;
        size_t sent = 0;
        const auto react = [&](Observable*, TChangeCode) {
            const size_t other = random() % crowd.size();
            switch (random() % 8) {
            case 0:
                crowd[other].reset();
                break;
            case 1:
                if (subject && crowd[other])
                    subject->DeleteObserver(crowd[other].get());
                break;
            case 2:
                if (subject && crowd[other])
                    subject->AddObserver(crowd[other].get());
                break;
            case 3:
                if (subject && crowd[other])
                    subject->MakeFirstObserver(crowd[other].get());
                break;
            case 4:
                if (random() % 10 == 0)
                    subject.reset();
                break;
            default:
                break;
            }
        };
        for (int i = 0; i < 12; ++i) {
            crowd.push_back(std::make_unique<Recorder>());
            crowd.back()->onUpdate = [react](Observable* s, TChangeCode c) {
                const auto copy = react; // this observer may end within
                copy(s, c);
            };
            subject->AddObserver(crowd.back().get());
            if (i == 5)
                subject->AddObserver(&faithful);
        }
        while (subject && sent < 8) {
            const size_t heard = faithful.codes.size();
            Subject* const raw = subject.get();
            raw->NotifyObservers(Changed, nullptr);
            ++sent;
            if (subject) {
                EXPECT_EQ(faithful.codes.size(), heard + 1);
            }
        }
    }
}

} // namespace
