#include "workstation/simulatedclassifier.h"

#include "controls/frequencystore/results/searchmcdatalistview.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/multiviewmediator.h"
#include "tests/workstation/stationfixture.h"

#include <QAction>
#include <QMenu>
#include <QTabWidget>

#include <map>

namespace {

constexpr qint64 Second = 1000000;
constexpr qint64 Begin = 1'700'000'000 * Second;

class SimulatedClassifiers : public testing::TestWithParam<ReceiverKind> {
protected:
    void SetUp() override { results = Tree::Instance()->MakeNode("/Test/Results"); }
    void TearDown() override { Tree::Instance()->GetRoot()->DeleteChildren(); }
    /// Steps of 40 ms over a span of seconds.
    static void run(SimulatedClassifier& classifier, int seconds, qint64 from = Begin) {
        for (qint64 time = from; time <= from + seconds * Second; time += 40000)
            classifier.Step(time);
    }
    QString text(const Node& entry, const char* key) const {
        const ValueBase* value = entry.GetValue(QString::fromLatin1(key));
        return value ? value->GetStringValue() : QString();
    }

    Node* results = nullptr;
};

INSTANTIATE_TEST_SUITE_P(Receivers, SimulatedClassifiers,
                         testing::Values(ReceiverKind::HF, ReceiverKind::VUHF));

TEST_P(SimulatedClassifiers, ResultsComeAtTheRateAndSomeAreLockedAndConfident) {
    SimulatedClassifier classifier(GetParam(), *results);
    classifier.SetRate(10);
    run(classifier, 60);
    EXPECT_NEAR(static_cast<double>(results->ChildCount()), 600, 2);
    std::map<std::string, int> kinds;
    for (const Node* entry : results->Children()) {
        const double hertz = text(*entry, "frequency").toDouble();
        EXPECT_GT(hertz, GetParam() == ReceiverKind::HF ? 1e6 : 30e6);
        EXPECT_LT(hertz, GetParam() == ReceiverKind::HF ? 30e6 : 1e9);
        EXPECT_GT(text(*entry, "bandwidthsel").toDouble(), 0);
        EXPECT_FALSE(text(*entry, "comment").isEmpty());
        EXPECT_GE(text(*entry, "locktime").toLongLong(), Begin);
        const int confidence = text(*entry, "confidence").toInt();
        EXPECT_LE(confidence, 100);
        EXPECT_TRUE(confidence == 0 || text(*entry, "locked") == "LOCKED");
        ++kinds[text(*entry, "locked").toStdString() + (confidence > 0 ? "+" : "")];
    }
    EXPECT_EQ(kinds.size(), 3u);
    for (const char* kind : {"UNLOCKED", "LOCKED", "LOCKED+"})
        EXPECT_GT(kinds[kind], 30) << kind;
    // What came in the last second is not classified yet.
    EXPECT_EQ(text(*results->Children().back(), "locked"), QString("UNLOCKED"));
}

TEST_P(SimulatedClassifiers, TheSameStepsGiveTheSameResultsAndRemovedOnesAreForgotten) {
    Node* others = Tree::Instance()->MakeNode("/Test/Others");
    SimulatedClassifier one(GetParam(), *results);
    SimulatedClassifier other(GetParam(), *others);
    run(one, 20);
    run(other, 20);
    EXPECT_EQ(results->GetAsStdString(), others->GetAsStdString());
    const size_t before = results->ChildCount();
    results->DeleteChildren(); // while some are pending
    run(one, 20, Begin + 21 * Second);
    EXPECT_NEAR(static_cast<double>(results->ChildCount()), static_cast<double>(before), 3);
}

TEST(SimulatedClassifierAction, StartsAndStopsAndTheClassifierStopsWhenThereIsEnough) {
    Node* results = Tree::Instance()->MakeNode("/Test/Results");
    {
        SimulatedClassifier classifier(ReceiverKind::HF, *results);
        QMenu menu;
        classifier.AddTo(menu);
        QAction* action = menu.actions().front();
        EXPECT_EQ(action->shortcut(), QKeySequence(Qt::Key_F9));
        action->trigger();
        EXPECT_TRUE(classifier.IsRunning());
        action->trigger();
        EXPECT_FALSE(classifier.IsRunning());
        action->trigger();
        classifier.SetRate(1e6);
        classifier.Step(Begin);
        classifier.Step(Begin + Second);
        EXPECT_EQ(results->ChildCount(), SimulatedClassifier::MaxResults);
        EXPECT_FALSE(classifier.IsRunning());
        EXPECT_FALSE(action->isChecked());
    }
    Tree::Instance()->GetRoot()->DeleteChildren();
}

using ResultsInTheWorkstation = Workstations;

TEST_F(ResultsInTheWorkstation, AreATabThatFillsWhileTheClassifierRuns) {
    start({sample("results.xml")});
    ASSERT_TRUE(station->LoadFiles());
    auto* view = station->GetWindow().findChild<SearchMCDataListView*>();
    ASSERT_NE(view, nullptr);
    QTabWidget* tabs = station->GetWindow().GetTabs();
    EXPECT_EQ(station->GetWindow().TabName(tabs->indexOf(view->parentWidget())), QString("Data Results"));
    const int read = view->RowCount();
    EXPECT_GT(read, 50);
    EXPECT_FALSE(station->GetClassifier().IsRunning());
    for (QAction* action : station->GetWindow().findChildren<QAction*>()) {
        if (action->shortcut() == QKeySequence(Qt::Key_F9))
            action->trigger();
    }
    EXPECT_TRUE(station->GetClassifier().IsRunning());
    station->GetClassifier().Step(Begin);
    station->GetClassifier().Step(Begin + 5 * Second);
    FreqStore::Instance().GetFrequencies(view->GetID())->ForceUpdateNow();
    EXPECT_GE(view->RowCount(), read + 10);
}

} // namespace
