#include "workstation/scanning.h"

#include "controls/frequencystore/common/paths.h"
#include "controls/frequencystore/memory/memorysystemhandler.h"
#include "host/report/rgexception.h"
#include "tests/workstation/windowfixture.h"
#include "workstation/frequencybar.h"
#include "workstation/job.h"
#include "workstation/scanpanel.h"
#include "workstation/simulatedsearch.h"

#include <QDockWidget>
#include <QLabel>
#include <QMenu>
#include <QToolButton>

namespace {

/// A radio that measures what the test says.
class LevelLink final : public ReceiverLink {
public:
    QString GetName() const override { return QStringLiteral("Test radio"); }
    void Begin() override { emit StateChanged(ReceiverState::Connected, QString()); }
    void Set(const std::vector<ReceiverWord>&, quint64 newest) override {
        serial = newest;
        if (throws)
            throw RGException(QStringLiteral("the driver has failed"));
    }
    void Measure(double level) {
        ReceiverReading reading;
        reading.serial = serial;
        reading.level = level;
        emit Read(reading);
    }

    quint64 serial = 0;
    bool throws = false;
};

class ScansInTheWindow : public Windows {
protected:
    void openWithJob() {
        open({"--job", sample("job-hf.pij")});
        ASSERT_TRUE(station->LoadFiles());
        auto attached = std::make_unique<LevelLink>();
        link = attached.get();
        station->GetReceiver().Attach(std::move(attached));
        write(ScanKeys::Settle, "0");
    }
    static void write(Names::Id key, const QString& text) {
        Tree::Instance()->GetValue(ScanValues::PathOf(key))->SetStringValue(text);
    }
    QAction* scanAction(const char* name) { return window().findChild<QAction*>(QLatin1String(name)); }
    QAction* fileAction(const char* name) {
        return window().GetFileMenu()->findChild<QAction*>(QLatin1String(name));
    }
    static const std::list<DetectionConventional>& detections() {
        return Tree::Instance()
            ->Find<ValueList<DetectionConventional>>(SimulatedSearch::DetectionsPath)
            ->Elements();
    }
    bool isClosed() { return !fileAction("open-job")->isEnabled(); }
    Scan& scan() { return station->GetScanning().GetScan(); }

    LevelLink* link = nullptr;
};

TEST_F(ScansInTheWindow, TheJobRestsWhileItsChannelsAreScannedHoweverThatEnds) {
    openWithJob();
    show("Memory Channels");
    MemorySystemHandler& channels = *MemorySystemHandler::Instance();
    const std::function<void()> ends[] = {
        [this] { scanAction("ScanStart")->trigger(); },
        [this] {
            link->throws = true;
            scanAction("ScanSkip")->trigger();
            EXPECT_TRUE(messages().contains("the driver has failed"));
            link->throws = false;
        },
        [] { write(ScanKeys::Running, "false"); },
    };
    for (const auto& end : ends) {
        key(Qt::Key_F6);
        ASSERT_TRUE(scan().GetScanner().IsRunning());
        EXPECT_TRUE(channels.GetInScanSurveillance());
        for (const char* name : {"open-job", "save-job", "save-job-as"}) {
            EXPECT_FALSE(fileAction(name)->isEnabled()) << name;
            EXPECT_TRUE(
                fileAction(name)->toolTip().endsWith("are being scanned: no job is opened or saved."));
        }
        EXPECT_FALSE(station->GetJob().Open(sample("job-hf.pij")));
        EXPECT_TRUE(Until([&] {
            return window().GetActions().Get(A::OpenIntoList)->statusTip().contains("scan surveillance");
        }));
        EXPECT_FALSE(action(A::Save)->isEnabled());
        end();
        EXPECT_FALSE(scan().GetScanner().IsRunning());
        EXPECT_FALSE(channels.GetInScanSurveillance());
        EXPECT_FALSE(isClosed());
        EXPECT_FALSE(fileAction("open-job")->toolTip().contains('\n'));
        EXPECT_TRUE(Until([&] { return action(A::Save)->isEnabled(); }));
    }
    EXPECT_TRUE(station->GetJob().Open(sample("job-hf.pij")));
}

TEST_F(ScansInTheWindow, ARangeLeavesTheJobAlone) {
    openWithJob();
    Tree::Instance()->Find<ValueSelection>(ScanValues::PathOf(ScanKeys::Source))->SelectAt(2);
    key(Qt::Key_F6);
    EXPECT_TRUE(scan().GetScanner().IsRunning());
    EXPECT_FALSE(MemorySystemHandler::Instance()->GetInScanSurveillance());
    EXPECT_FALSE(isClosed());
}

TEST_F(ScansInTheWindow, NoiBandsAreScannedInSteps) {
    openWithJob();
    Tree::Instance()->GetValue(Paths::NoiDefinition)->SetStringValue("7000000,7010000;2182000,2182100;");
    Tree::Instance()->Find<ValueSelection>(ScanValues::PathOf(ScanKeys::Source))->SelectAt(1);
    write(ScanKeys::Dwell, "0");
    std::vector<double> tuned;
    QObject::connect(&station->GetReceiver(), &Receiver::Tuned,
                     [&](double hertz) { tuned.push_back(hertz); });
    key(Qt::Key_F6);
    for (const size_t steps : {2u, 3u, 4u, 5u}) {
        link->Measure(-30);
        ASSERT_TRUE(Until([&] { return tuned.size() == steps; }));
    }
    EXPECT_EQ(tuned, (std::vector<double>{2182050, 7000000, 7005000, 7010000, 2182050}));
    Tree::Instance()->GetValue(Paths::NoiDefinition)->SetStringValue("");
}

TEST_F(ScansInTheWindow, TheWindowClosesWhileAScanRuns) {
    openWithJob();
    key(Qt::Key_F6);
    EXPECT_TRUE(window().close());
    EXPECT_FALSE(scan().GetScanner().IsRunning());
}

TEST_F(ScansInTheWindow, AStopIsADetectionWithItsChannelBesideIt) {
    openWithJob();
    station->GetReceiver().Tune(6060000);
    key(Qt::Key_F6);
    const double first = station->GetReceiver().GetFrequency();
    EXPECT_EQ(window().GetBar()->GetTuned(), first) << "the mark of the channel under way";
    EXPECT_EQ(status(), "The scan has begun") << "not where it was before, nor each step";
    link->Measure(90);
    link->Measure(60);
    ASSERT_EQ(detections().size(), 1u);
    EXPECT_TRUE(detections().front().GetActive());
    EXPECT_EQ(detections().front().GetLevel(), 90);
    EXPECT_EQ(detections().front().GetFrequency(), first);
    const QString comment = scan().GetScanner().GetStep().comment;
    ASSERT_FALSE(comment.isEmpty());
    scanAction("ScanSkip")->trigger();
    EXPECT_FALSE(detections().front().GetActive());
    EXPECT_NE(station->GetReceiver().GetFrequency(), first);
    link->Measure(90);
    scanAction("ScanStart")->trigger();
    ASSERT_EQ(detections().size(), 2u);
    EXPECT_NE(detections().front().GetID(), detections().back().GetID());

    SortListView* list = show("Detections");
    ASSERT_TRUE(Until([&] { return list->RowCount() == 2; }));
    select(list, 0);
    const QString note = "scan: channel 1, " + comment;
    EXPECT_EQ(list->NoteOf(*list->currentItem()), note);
    EXPECT_TRUE(list->currentItem()->data(0, Qt::ToolTipRole).toString().endsWith("Source: " + note));
    ASSERT_TRUE(Until([&] { return action(A::SendTo)->isEnabled(); }));
    emit action(A::SendTo)->menu()->aboutToShow();
    for (QAction* taker : action(A::SendTo)->menu()->actions()) {
        if (taker->text() == "NOI Frequencies")
            taker->trigger();
    }
    const std::vector<Node*> sent = Tree::Instance()->GetNode(Paths::Noi)->Children();
    ASSERT_EQ(sent.size(), 1u);
    EXPECT_TRUE(sent[0]->GetValue("comment")->GetStringValue().startsWith(comment + ", "));
}

TEST_F(ScansInTheWindow, AClearedListIsNotFilledAgainByTheStopThatWasInIt) {
    openWithJob();
    key(Qt::Key_F6);
    link->Measure(90);
    station->GetSearch().Clear();
    link->Measure(95);
    EXPECT_TRUE(detections().empty());
    scanAction("ScanSkip")->trigger();
    EXPECT_TRUE(detections().empty());
    link->Measure(95);
    EXPECT_EQ(detections().size(), 1u);
}

TEST_F(ScansInTheWindow, LongScansKeepNoMoreDetectionsThanASearchDoes) {
    open({});
    SimulatedSearch& search = station->GetSearch();
    search.Step(1'700'000'000'000'000);
    unsigned last = 0;
    for (size_t i = 0; i < SimulatedSearch::MaxRecords + 10; ++i)
        last = search.Begin(DetectionConventional(), "scan");
    EXPECT_LE(detections().size(), SimulatedSearch::MaxRecords);
    EXPECT_EQ(detections().back().GetID(), last);
    EXPECT_TRUE(search.Amend(last, [](DetectionConventional& record) { record.SetLevel(7); }));
    EXPECT_EQ(detections().back().GetLevel(), 7);
    EXPECT_FALSE(search.Amend(1, [](DetectionConventional&) { ADD_FAILURE(); })) << "it is long gone";
    search.Simulate(60'000'000, 1'700'000'100'000'000); // its own go on without those
}

TEST_F(ScansInTheWindow, ThePanelShowsStateCountsAndWhatApplies) {
    openWithJob();
    auto* panel = window().findChild<ScanPanel*>();
    auto* dock = window().findChild<QDockWidget*>("ScanPanel");
    dock->show();
    dock->raise();
    const auto text = [&](const char* name) { return panel->findChild<QLabel*>(name)->text(); };
    const auto isShown = [&](Names::Id key) {
        return panel->findChild<QWidget*>(Names::Text(key))->isVisibleTo(panel);
    };
    EXPECT_EQ(text("ScanState"), "Not scanning");
    EXPECT_FALSE(isShown(ScanKeys::From));
    EXPECT_FALSE(isShown(ScanKeys::Step));
    EXPECT_TRUE(isShown(ScanKeys::GoOnSeconds));
    key(Qt::Key_F6);
    link->Measure(90);
    panel->Refresh();
    EXPECT_EQ(text("ScanState"), "Signal");
    EXPECT_TRUE(text("ScanCurrent").contains("channel 1")) << text("ScanCurrent").toStdString();
    EXPECT_EQ(text("ScanCounts"), "1 step, 0 passes, 1 signal");
    key(Qt::Key_F7);
    panel->Refresh();
    EXPECT_EQ(text("ScanState"), "Held");
    Tree::Instance()->Find<ValueSelection>(ScanValues::PathOf(ScanKeys::Source))->SelectAt(2);
    Tree::Instance()->Find<ValueSelection>(ScanValues::PathOf(ScanKeys::GoOn))->SelectAt(2);
    panel->Refresh();
    EXPECT_TRUE(isShown(ScanKeys::From));
    EXPECT_TRUE(isShown(ScanKeys::Step));
    EXPECT_FALSE(isShown(ScanKeys::GoOnSeconds));
    key(Qt::Key_F8, Qt::ShiftModifier);
    panel->Refresh();
    EXPECT_TRUE(text("ScanCounts").endsWith("1 locked out"));
    EXPECT_TRUE(scanAction("ScanForgetLockedOut")->isEnabled());
    scanAction("ScanForgetLockedOut")->trigger();
    EXPECT_TRUE(scan().GetScanner().GetLockedOut().empty());
}

TEST_F(ScansInTheWindow, SettingsAreThereAtTheNextStart) {
    open({});
    write(ScanKeys::Dwell, "321");
    Tree::Instance()->Find<ValueSelection>(ScanValues::PathOf(ScanKeys::Source))->SelectAt(2);
    key(Qt::Key_F6);
    ASSERT_TRUE(scan().GetScanner().IsRunning());
    open({});
    EXPECT_EQ(Tree::Instance()->GetValue(ScanValues::PathOf(ScanKeys::Dwell))->GetStringValue(), "321");
    EXPECT_EQ(scan().GetValues().GetSource(), ScanSource::Range);
}

} // namespace
