#include "workstation/simulatedsearch.h"

#include "host/freqlist/freqstore.h"
#include "host/gui/sortlistview.h"
#include "tests/workstation/stationfixture.h"
#include "workstation/frequencybar.h"

#include <QAction>
#include <QMenu>
#include <QTabWidget>
#include <QTest>

#include <set>

namespace {

constexpr qint64 Second = 1000000;
constexpr qint64 Begin = 1'700'000'000 * Second;

const ValueList<ExtendedDetectionConventional>& classified() {
    return *value_cast<ValueList<ExtendedDetectionConventional>>(
        Tree::Instance()->GetValue(SimulatedSearch::ClassifiedPath));
}

const ValueList<DetectionConventional>& detections() {
    return *value_cast<ValueList<DetectionConventional>>(
        Tree::Instance()->GetValue(SimulatedSearch::DetectionsPath));
}

class SimulatedSearches : public testing::TestWithParam<ReceiverKind> {
protected:
    void TearDown() override { Tree::Instance()->GetRoot()->DeleteChildren(); }
};

INSTANTIATE_TEST_SUITE_P(Receivers, SimulatedSearches, testing::Values(ReceiverKind::HF, ReceiverKind::VUHF));

TEST_P(SimulatedSearches, DetectionsComeAreClassifiedLocatedAndEnd) {
    SimulatedSearch search(GetParam());
    search.Simulate(300 * Second, Begin);
    ASSERT_GT(detections().Size(), 200u);
    ASSERT_EQ(classified().Size(), detections().Size());
    std::set<std::string> codes;
    size_t active = 0;
    size_t severalPlaces = 0;
    unsigned lastId = 0;
    auto plain = detections().Elements().begin();
    for (const ExtendedDetectionConventional& record : classified().Elements()) {
        SCOPED_TRACE(record.GetID());
        EXPECT_TRUE(static_cast<const DetectionConventional&>(record) == *plain++);
        EXPECT_GT(record.GetID(), std::exchange(lastId, record.GetID()));
        EXPECT_GE(record.GetStopTime(), record.GetStartTime());
        EXPECT_LE(record.GetStopTime(), static_cast<double>(Begin));
        EXPECT_GT(record.GetFrequency(), 0);
        active += record.GetActive();
        const double age = record.GetStopTime() - record.GetStartTime();
        EXPECT_EQ(record.GetClassifierConfidence() > 0, age >= 2e6) << "the classifier takes its time";
        if (record.GetAzimuth().size() == 4 && record.GetAzimuth().starts_with("100"))
            codes.insert(record.GetAzimuth());
        severalPlaces += record.GetDFLongitude().find(',') != std::string::npos;
        EXPECT_TRUE(record.GetActive() || record.GetAzimuth() != "1000") << "nobody searches for what ended";
    }
    EXPECT_GT(active, 3u);
    EXPECT_LT(active, 160u);
    EXPECT_EQ(codes, (std::set<std::string>{"1000", "1001", "1002"}));
    EXPECT_GT(severalPlaces, 0u);
}

TEST_P(SimulatedSearches, TheSameStepsGiveTheSameRecords) {
    std::list<ExtendedDetectionConventional> first;
    for (int run = 0; run < 2; ++run) {
        SimulatedSearch search(GetParam(), 7);
        EXPECT_EQ(classified().Size(), 0u);
        search.Simulate(30 * Second, Begin);
        if (run == 0)
            first = classified().Elements();
    }
    EXPECT_TRUE(first == classified().Elements());
}

TEST_F(SimulatedSearches, StoppedItEndsWhatIsActive) {
    SimulatedSearch search(ReceiverKind::HF);
    search.SetRunning(true);
    EXPECT_TRUE(search.IsRunning());
    search.Simulate(20 * Second, Begin);
    search.SetRunning(false);
    EXPECT_FALSE(search.IsRunning());
    size_t ended = 0;
    for (const DetectionConventional& record : detections().Elements())
        ended += !record.GetActive();
    // What came on air with the very last step is the only exception.
    EXPECT_GE(ended + 3, detections().Size());
}

TEST_F(SimulatedSearches, OldRecordsGoWhenThereAreVeryMany) {
    SimulatedSearch search(ReceiverKind::HF);
    search.Add(std::list<DetectionConventional>(7)); // somebody else's, which go with those beside them
    search.Simulate(20 * Second, Begin);
    EXPECT_EQ(detections().Elements().front().GetID(), 1u);
    EXPECT_EQ(classified().Elements().front().GetID(), 8u);
    auto& list = const_cast<ValueList<DetectionConventional>&>(detections());
    auto& extended = const_cast<ValueList<ExtendedDetectionConventional>&>(classified());
    const unsigned lastId = list.Elements().back().GetID();
    list.Append(std::list<DetectionConventional>(100000));
    extended.Append(std::list<ExtendedDetectionConventional>(100000));
    search.Simulate(60 * Second, Begin + 60 * Second);
    EXPECT_LT(list.Size(), 60000u);
    EXPECT_EQ(list.Size(), extended.Size());
    EXPECT_GT(list.Elements().back().GetID(), lastId) << "the search goes on";
}

class DetectionTabs : public Workstations {
protected:
    SortListView* listOf(const QString& title) const {
        const QTabWidget* tabs = station->GetWindow().GetTabs();
        for (int i = 0; i < tabs->count(); ++i) {
            if (station->GetWindow().TabName(i) == title)
                return tabs->widget(i)->findChild<SortListView*>();
        }
        return nullptr;
    }
};

TEST_F(DetectionTabs, ShowTheListsOfTheReceiver) {
    for (const auto& [receiver, columns] : {std::pair("hf", 20), std::pair("vuhf", 18)}) {
        start({"--receiver", receiver});
        ASSERT_NE(listOf("Detections"), nullptr);
        EXPECT_EQ(listOf("Detections")->columnCount(), 6);
        ASSERT_NE(listOf("Search MC with Classifier"), nullptr);
        EXPECT_EQ(listOf("Search MC with Classifier")->columnCount(), columns);
        station.reset();
    }
}

TEST_F(DetectionTabs, FollowTheSearchThatTheMenuStarts) {
    start({});
    QAction* action = nullptr;
    for (QAction* candidate : station->GetWindow().findChildren<QAction*>()) {
        if (candidate->shortcut() == QKeySequence(Qt::Key_F5))
            action = candidate;
    }
    ASSERT_NE(action, nullptr);
    action->trigger();
    EXPECT_TRUE(station->GetSearch().IsRunning());
    station->GetSearch().Simulate(60 * Second, Begin);
    const auto all = static_cast<int>(detections().Size());
    ASSERT_TRUE(Until([&] { return listOf("Detections")->RowCount() >= all; }));
    action->trigger();
    EXPECT_FALSE(station->GetSearch().IsRunning());
    EXPECT_FALSE(action->isChecked());
}

TEST_F(DetectionTabs, AClickOnTheBarSelectsTheRowThatItMeans) {
    start({});
    station->GetSearch().Simulate(60 * Second, Begin);
    const double hertz = detections().Elements().back().GetFrequency();
    SortListView* list = listOf("Detections");
    int listId = 0;
    for (const int id : FreqStore::Instance().GetListIds()) {
        if (FreqStore::Instance().GetDefinition(id)->GetName() == "Detections")
            listId = id;
    }
    emit station->GetWindow().GetBar()->Clicked(hertz, listId);
    ASSERT_NE(list->currentItem(), nullptr);
    EXPECT_EQ(list->SelectedCount(), 1);
    const auto& marked =
        *value_cast<ValueList<double>>(Tree::Instance()->GetValue(SimulatedSearch::MarkedPath));
    EXPECT_EQ(marked.Elements(), std::vector<double>{hertz}) << "the selected emission is marked";
}

} // namespace
