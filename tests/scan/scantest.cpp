#include "scan/scan.h"

#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/common/keys.h"
#include "host/valuetree/tree.h"
#include "receiver/receiver.h"
#include "scan/receiverport.h"
#include "tests/scan/scriptedreceiver.h"

#include <QSignalSpy>

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace {

/// A radio that does what it is told and says what the test wants.
class ScriptedLink final : public ReceiverLink {
public:
    QString GetName() const override { return QStringLiteral("Scripted"); }
    void Begin() override { emit StateChanged(ReceiverState::Connected, QString()); }
    void Set(const std::vector<ReceiverWord>& words, quint64 newest) override {
        serial = newest;
        for (const ReceiverWord& word : words)
            wishes[Names::Text(word.key)] = word.text;
        if (atOnce)
            Measure(*atOnce);
    }
    /// Reads the radio, which stands at another frequency when one is given.
    void Measure(double level, const char* frequency = nullptr) {
        ReceiverReading reading;
        reading.serial = serial;
        reading.level = level;
        reading.isElsewhere = isElsewhere;
        if (frequency)
            reading.values = {{Keys::KeyFrequency, QString::fromLatin1(frequency)}};
        emit Read(reading);
    }
    void Lose() { emit StateChanged(ReceiverState::NoAnswer, QStringLiteral("nobody is there")); }

    quint64 serial = 0;
    std::optional<double> atOnce; ///< the level (dBµV), if it is measured while it is set
    bool isElsewhere = false;     ///< it does not go where it is told to
    std::map<QString, QString> wishes;
};

/// A scan of a list of channels by the program's receiver.
class ChannelScans : public testing::Test {
protected:
    ChannelScans() {
        Tree::Instance()->GetRoot()->DeleteChildren();
        receiver = std::make_unique<Receiver>(ReceiverKind::HF);
        auto attached = std::make_unique<ScriptedLink>();
        link = attached.get();
        receiver->Attach(std::move(attached));
        port = std::make_unique<ReceiverPort>(*receiver);
        scan = std::make_unique<Scan>(*port, clock);
        channels = Tree::Instance()->MakeNode("/Channels");
        list.Init("/Channels");
        list.IncrementVisibleCnt();
        scan->SetPlan(ScanSource::MemoryChannels,
                      [this](QString&) { return std::make_unique<ChannelPlan>(list); });
        QObject::connect(scan.get(), &Scan::StopChanged,
                         [this](const ScanStop& stop) { stops[stop.number] = stop; });
        write(ScanKeys::Settle, "0");
        write(ScanKeys::Dwell, "0");
    }
    ~ChannelScans() override { scan.reset(); }

    Node* addChannel(double hertz, const char* demodulation, int threshold, const char* comment = "") {
        auto* node = new Node(channels, "MemItem");
        channels->AddItemUnique(node);
        add<ValueNumeric<double>>(*node, Keys::KeyFrequency)->SetValue(hertz);
        add<Value<QString>>(*node, Keys::KeyDemodulation)->SetValue(demodulation);
        add<Value<QString>>(*node, Keys::KeyComment)->SetValue(comment);
        add<ValueNumeric<int>>(*node, Keys::Threshold)->SetValue(threshold);
        return node;
    }
    template <typename V>
    static V* add(Node& node, Names::Id key) {
        auto* value = new V;
        EXPECT_TRUE(node.AddValue(key, value));
        return value;
    }
    static void write(Names::Id key, const QString& text) {
        Tree::Instance()->GetValue(ScanValues::PathOf(key))->SetStringValue(text);
    }
    static QString read(Names::Id key) {
        return Tree::Instance()->GetValue(ScanValues::PathOf(key))->GetStringValue();
    }
    /// One level, and the step that it leads to.
    double step(double level) {
        link->Measure(level);
        if (clock.due && *clock.due <= clock.now)
            clock.Fire();
        return receiver->GetFrequency();
    }
    std::vector<double> steps(int count) {
        std::vector<double> frequencies;
        for (int i = 0; i < count; ++i)
            frequencies.push_back(step(-30));
        return frequencies;
    }

    std::unique_ptr<Receiver> receiver;
    ScriptedLink* link = nullptr;
    std::unique_ptr<ReceiverPort> port;
    TestClock clock;
    Node* channels = nullptr;
    HalvoNodeMediatorCtrl list{MediatorType::MemoryHF, 4};
    std::unique_ptr<Scan> scan;
    std::map<quint64, ScanStop> stops;
};

TEST_F(ChannelScans, ChannelsTuneWithTheirOwnSettingsAndStopAtTheirOwnThresholds) {
    addChannel(7e6, "LSB", 30, "forty");
    addChannel(6e6, "AM", 50, "forty-nine");
    write(ScanKeys::Running, "true");
    EXPECT_EQ(read(ScanKeys::State), "Scanning");
    EXPECT_EQ(link->wishes["frequency"], "7000000");
    EXPECT_EQ(link->wishes["demodulation"], "LSB");
    EXPECT_EQ(link->wishes["threshold"], "30");
    EXPECT_EQ(read(ScanKeys::Channel), "1");
    EXPECT_EQ(step(29), 6e6);
    EXPECT_EQ(link->wishes["demodulation"], "AM");
    EXPECT_EQ(step(49), 7e6);
    EXPECT_EQ(step(30), 7e6);
    EXPECT_EQ(read(ScanKeys::State), "Signal");
    EXPECT_EQ(stops[1].channel, 1);
    EXPECT_EQ(stops[1].comment, "forty");
    EXPECT_EQ(stops[1].bandwidth, 6000);
    write(ScanKeys::Running, "false");
    EXPECT_FALSE(stops[1].isActive);
    EXPECT_EQ(read(ScanKeys::State), "Not scanning");
}

TEST_F(ChannelScans, ABandwidthThatStaysIsSaidWithANewMode) {
    add<ValueNumeric<double>>(*addChannel(7e6, "LSB", 30), Keys::KeyBandwidth)->SetValue(6000);
    addChannel(6e6, "AM", 50);
    ASSERT_TRUE(scan->Start());
    EXPECT_EQ(link->wishes["bandwidth"], "6000");
    link->wishes.clear();
    step(-30);
    EXPECT_EQ(link->wishes["demodulation"], "AM");
    EXPECT_FALSE(link->wishes.contains("bandwidth")) << "the channel has none";
}

TEST_F(ChannelScans, AChannelOfSeveralFrequenciesGivesAStepForEach) {
    Node* range = addChannel(7e6, "LSB", 30);
    add<Value<bool>>(*range, Keys::Range)->SetValue(true);
    auto* further = add<ValueList<double>>(*range, Keys::RangeFrequencies);
    further->PushBack(7.1e6);
    further->PushBack(7.2e6);
    addChannel(6e6, "AM", 50);
    ASSERT_TRUE(scan->Start());
    EXPECT_THAT(steps(4), ElementsAre(7.1e6, 7.2e6, 6e6, 7e6));
    step(-30);
    const quint64 before = link->serial;
    EXPECT_EQ(step(-30), 7.2e6);
    EXPECT_EQ(link->serial, before + 1) << "its frequency alone is another";
}

TEST_F(ChannelScans, WhoChangesTheListWhileItIsScannedIsFollowed) {
    addChannel(5e6, "AM", 50);
    Node* second = addChannel(6e6, "AM", 50);
    addChannel(7e6, "AM", 50);
    ASSERT_TRUE(scan->Start());
    EXPECT_EQ(step(-30), 6e6);
    channels->DeleteNode(second);
    list.ForceUpdateNow();
    addChannel(8e6, "AM", 50);
    EXPECT_THAT(steps(5), ElementsAre(7e6, 5e6, 7e6, 8e6, 5e6)) << "none is left out";
    channels->DeleteChildren();
    list.ForceUpdateNow();
    step(-30);
    EXPECT_EQ(read(ScanKeys::Reason), "There are no channels in the list.");
    EXPECT_EQ(read(ScanKeys::Running), "false");
}

TEST_F(ChannelScans, ALevelOfBeforeTheTuningDoesNotCount) {
    addChannel(7e6, "LSB", 30);
    addChannel(6e6, "AM", 50);
    ASSERT_TRUE(scan->Start());
    const quint64 before = link->serial;
    step(-30);
    link->serial = before;
    EXPECT_EQ(step(90), 6e6);
    EXPECT_TRUE(stops.empty()) << "that was the channel before";
}

TEST_F(ChannelScans, ARadioThatDoesNotFollowIsPassedOver) {
    addChannel(7e6, "LSB", 30);
    addChannel(6e6, "AM", 50);
    ASSERT_TRUE(scan->Start());
    link->Measure(90, "9990000");
    EXPECT_TRUE(stops.empty());
    EXPECT_EQ(receiver->GetFrequency(), 6e6);
    EXPECT_EQ(read(ScanKeys::Unreachable), "1");
    EXPECT_EQ(step(-30), 7e6);
    link->isElsewhere = true;
    link->Measure(90, "7000200");
    EXPECT_TRUE(stops.empty()) << "it stays near by";
    link->isElsewhere = false;
    EXPECT_EQ(step(-30), 7e6);
    link->Measure(-30);
    link->Measure(-30, "9990000"); // by hand, now that it had followed
    EXPECT_EQ(read(ScanKeys::Hold), "true");
    EXPECT_EQ(read(ScanKeys::Reason), "Tuned by hand to 9990.000 kHz");
}

TEST_F(ChannelScans, WhoTunesWhileTheRadioFollowsTheScanHasIt) {
    addChannel(7e6, "LSB", 30);
    addChannel(6e6, "AM", 50);
    ASSERT_TRUE(scan->Start());
    ASSERT_TRUE(receiver->Tune(7000800)); // a correction
    link->Measure(-30);
    EXPECT_EQ(read(ScanKeys::Unreachable), "0");
    clock.Fire();
    ASSERT_EQ(receiver->GetFrequency(), 6e6);
    ASSERT_TRUE(receiver->Tune(9990000));
    link->Measure(90);
    EXPECT_EQ(receiver->GetFrequency(), 9990000);
    EXPECT_EQ(read(ScanKeys::Reason), "Tuned by hand to 9990.000 kHz");
    EXPECT_EQ(read(ScanKeys::Unreachable), "0");
    EXPECT_TRUE(stops.empty());
}

TEST_F(ChannelScans, ALevelWhereSomebodyElseHasTunedIsNoneOfTheChannel) {
    addChannel(7e6, "LSB", 30);
    ASSERT_TRUE(scan->Start());
    link->Measure(-30);
    link->atOnce = 90;
    ASSERT_TRUE(receiver->Tune(9990000));
    EXPECT_TRUE(stops.empty());
}

TEST_F(ChannelScans, APriorityChannelOutOfReachDoesNotTakeItFromASignal) {
    addChannel(7e6, "LSB", 30);
    addChannel(6e6, "AM", 50);
    write(ScanKeys::GoOn, "By hand");
    write(ScanKeys::Priority, "145000000");
    write(ScanKeys::PrioritySeconds, "1");
    ASSERT_TRUE(scan->Start());
    EXPECT_EQ(step(40), 7e6);
    clock.now += 1000;
    clock.Fire();
    EXPECT_EQ(step(40), 7e6);
    EXPECT_TRUE(stops[1].isActive);
    EXPECT_EQ(read(ScanKeys::State), "Signal");
}

TEST_F(ChannelScans, ALostReceiverIsSaidAndTheScanGoesOnWhenItIsBack) {
    addChannel(7e6, "LSB", 30);
    ASSERT_TRUE(scan->Start());
    link->Lose();
    EXPECT_EQ(read(ScanKeys::State), "Waiting");
    EXPECT_EQ(read(ScanKeys::Reason), "Scripted: no answer, nobody is there");
    link->Begin();
    step(40);
    EXPECT_EQ(read(ScanKeys::State), "Signal");
    EXPECT_EQ(read(ScanKeys::Reason), "");
}

TEST_F(ChannelScans, CommandsAndSettingsAreValues) {
    addChannel(7e6, "LSB", 30);
    addChannel(6e6, "AM", 50);
    addChannel(5e6, "AM", 50);
    write(ScanKeys::Hold, "true");
    EXPECT_EQ(read(ScanKeys::Hold), "false") << "there is nothing to hold";
    write(ScanKeys::Running, "true");
    write(ScanKeys::Hold, "true");
    EXPECT_EQ(read(ScanKeys::State), "Held");
    write(ScanKeys::Skip, "true");
    EXPECT_EQ(read(ScanKeys::Skip), "false");
    EXPECT_EQ(receiver->GetFrequency(), 6e6);
    write(ScanKeys::LockOut, "true");
    EXPECT_EQ(read(ScanKeys::LockedOut), "6000000");
    write(ScanKeys::Hold, "false");
    EXPECT_THAT(steps(3), ElementsAre(7e6, 5e6, 7e6));
    write(ScanKeys::LockedOut, "");
    EXPECT_THAT(steps(2), ElementsAre(6e6, 5e6));
    write(ScanKeys::Dwell, "1000");
    EXPECT_THAT(steps(2), ElementsAre(5e6, 5e6)) << "at once";
}

TEST_F(ChannelScans, ARangeThatIsNoneIsToldAndNothingBegins) {
    QSignalSpy ended(scan.get(), &Scan::Ended);
    Tree::Instance()->Find<ValueSelection>(ScanValues::PathOf(ScanKeys::Source))->SelectAt(2);
    write(ScanKeys::From, "7200000");
    write(ScanKeys::To, "7000000");
    write(ScanKeys::Running, "true");
    EXPECT_EQ(read(ScanKeys::Running), "false");
    ASSERT_EQ(ended.size(), 1);
    EXPECT_EQ(ended[0][0].toString(), "The range ends below its beginning.");
    write(ScanKeys::To, "7210000");
    EXPECT_TRUE(scan->Start());
    EXPECT_THAT(steps(3), ElementsAre(7205000, 7210000, 7200000));
    EXPECT_FALSE(scan->IsScanningChannels());
    for (const char* wrong : {"0", "-5000"}) {
        write(ScanKeys::Step, wrong);
        EXPECT_FALSE(scan->Start()) << wrong;
        EXPECT_EQ(read(ScanKeys::Reason), "The step is too small.");
    }
}

TEST(SpanPlans, SpansAreGoneThroughInStepsAndNarrowOnesInTheirMiddle) {
    SpanPlan plan({{100, 120}, {200, 204}, {300, 310}}, 10, "");
    std::vector<double> frequencies;
    for (int pass = 0; pass < 2; ++pass) {
        ScanStep step;
        for (plan.Begin(); plan.Next(step);)
            frequencies.push_back(step.frequency);
    }
    EXPECT_THAT(frequencies, ElementsAre(100, 110, 120, 202, 300, 310, 100, 110, 120, 202, 300, 310));
}

} // namespace
