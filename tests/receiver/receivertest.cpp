#include "receiver/receiver.h"

#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencynodemediator.h"
#include "host/freqlist/valuelistmediator.h"
#include "host/valuetree/tree.h"
#include "receiver/simulatedreceiver.h"
#include "tests/support/recorder.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace {

/// The controller of entries that stand alone.
class NoController : public MediatorCtrl {
public:
    void NotifyCreated(Mediator*) override {}
    void NotifyDeleted(Mediator*) override {}
    QString GetUsageName() const override { return QString(); }
};

/// An entry of any list, with the values that a test gives it.
class Entry {
public:
    Entry() : m_node(new Node(nullptr, "Entry")) { Tree::Instance()->GetRoot()->AddItemUnique(m_node); }
    ~Entry() {
        m_mediator.reset();
        Tree::Instance()->GetRoot()->DeleteNode(m_node);
    }

    template <typename V>
    Entry& With(Names::Id key, const QString& text) {
        auto* value = new V;
        if constexpr (std::is_same_v<V, ValueSelection>)
            value->AddItem(text, 0, 0);
        value->SetStringValue(text);
        EXPECT_TRUE(m_node->AddValue(key, value));
        return *this;
    }
    Entry& At(double hertz) {
        return With<ValueNumeric<double>>(Keys::KeyFrequency, QString::number(hertz, 'f', 0));
    }
    IFrequencyStoreItem& Item() {
        m_mediator = std::make_unique<FrequencyNodeMediator>(&m_controller, m_node, 0);
        return *m_mediator;
    }

private:
    Node* m_node;
    NoController m_controller;
    std::unique_ptr<FrequencyNodeMediator> m_mediator;
};

class Receivers : public testing::Test {
protected:
    QString text(Names::Id key) const { return receiver->GetValue(key)->GetStringValue(); }
    void use(ReceiverKind kind) {
        receiver.reset();
        receiver = std::make_unique<Receiver>(kind);
        auto link = std::make_unique<SimulatedReceiver>(*receiver, SimulatedReceiver::Pace::OnDemand);
        simulated = link.get();
        receiver->Attach(std::move(link));
        QObject::connect(receiver.get(), &Receiver::Refused,
                         [this](const QString& reason) { refused << reason; });
    }
    Receivers() {
        Tree::Instance()->GetRoot()->DeleteChildren(); // what tests before have left
        use(ReceiverKind::HF);
    }

    std::unique_ptr<Receiver> receiver;
    SimulatedReceiver* simulated = nullptr; ///< the receiver's
    QStringList refused;
};

TEST_F(Receivers, SettingsAreValuesOfTheTreeWhileTheReceiverLives) {
    for (const ReceiverKind kind : {ReceiverKind::HF, ReceiverKind::VUHF}) {
        use(kind);
        for (const ReceiverSetting& setting : receiver->GetSettings())
            EXPECT_EQ(Tree::Instance()->GetValue(receiver->PathOf(setting.key)),
                      receiver->GetValue(setting.key))
                << setting.key.Text().toStdString();
    }
    EXPECT_EQ(receiver->GetValue(Keys::Shift), nullptr) << "is a setting of HF receivers";
    Recorder recorder;
    receiver->GetValue(Keys::KeyFrequency)->AddObserver(&recorder);
    receiver.reset();
    EXPECT_EQ(recorder.codes, std::vector<int>{2});
    EXPECT_EQ(Tree::Instance()->GetNode("/Receiver"), nullptr);
}

struct Write {
    ReceiverKind kind;
    Names::Id key;
    const char* good;
    const char* bad;
    const char* reason;
};

void PrintTo(const Write& write, std::ostream* out) {
    *out << Names::Text(write.key).toStdString() << '=' << write.bad;
}

class ReceiverLimits : public Receivers, public testing::WithParamInterface<Write> {};

TEST_P(ReceiverLimits, AWriteThatTheReceiverCannotFollowIsTakenBackAndTold) {
    use(GetParam().kind);
    ValueBase* value = receiver->GetValue(GetParam().key);
    Recorder others;
    value->AddObserver(&others);
    value->SetStringValue(GetParam().good);
    EXPECT_EQ(value->GetStringValue(), GetParam().good);
    EXPECT_TRUE(refused.isEmpty()) << refused.join('\n').toStdString();
    value->SetStringValue(GetParam().bad);
    EXPECT_EQ(value->GetStringValue(), GetParam().good);
    ASSERT_EQ(refused.size(), 1);
    EXPECT_TRUE(refused[0].contains(GetParam().reason)) << refused[0].toStdString();
    EXPECT_GE(others.codes.size(), 3U) << "who saw the bad value sees the good one again";
}

INSTANTIATE_TEST_SUITE_P(
    Writes, ReceiverLimits,
    testing::Values(
        Write{ReceiverKind::HF, Keys::KeyFrequency, "9000", "8999", "9.000 kHz"},
        Write{ReceiverKind::HF, Keys::KeyFrequency, "30000000", "30000001", "30.000000 MHz"},
        Write{ReceiverKind::VUHF, Keys::KeyFrequency, "20000000", "19999999", "19999.999 kHz"},
        Write{ReceiverKind::VUHF, Keys::KeyFrequency, "3000000000", "3000000001", "3000.000001 MHz"},
        Write{ReceiverKind::HF, Keys::KeyBandwidth, "40000", "40001", "Bandwidth 40.001 kHz"},
        Write{ReceiverKind::HF, Keys::Threshold, "-40", "-41", "Threshold -41 is outside -40 to 110"},
        Write{ReceiverKind::HF, Keys::Shift, "26", "25", "Shift"},
        Write{ReceiverKind::HF, Keys::BFOFrequency, "-10000", "10001", "BFO"},
        Write{ReceiverKind::VUHF, Keys::Attenuation, "40", "41", "Attenuation"},
        Write{ReceiverKind::VUHF, Keys::AntennaID, "3", "7", "no antenna 7"}));

TEST_F(Receivers, AnAntennaIsTheSameByNameAndByNumber) {
    use(ReceiverKind::VUHF);
    receiver->GetValue(Keys::AntennaID)->SetStringValue("3");
    EXPECT_EQ(text(KeyAntenna), "Horn");
    receiver->GetValue(KeyAntenna)->SetStringValue("Log-periodic");
    EXPECT_EQ(text(Keys::AntennaID), "2");
}

TEST_F(Receivers, TuneTakesAllThatAnEntryCarries) {
    Entry entry;
    entry.At(7055000)
        .With<ValueNumeric<double>>(Keys::KeyBandwidth, "2700")
        .With<ValueSelection>(Keys::KeyDemodulation, "LSB")
        .With<ValueNumeric<int>>(Keys::Threshold, "35")
        .With<ValueNumeric<int>>(Keys::BFOFrequency, "-1500")
        .With<ValueSelection>(Keys::OutputIFPath, "455.0 kHz")
        .With<ValueNumeric<int>>(Keys::Shift, "12000")
        .With<Value<bool>>(Keys::AFC, "true"); // not of an HF receiver
    EXPECT_TRUE(receiver->Tune(entry.Item(), true));
    EXPECT_EQ(text(Keys::KeyFrequency), "7055000");
    EXPECT_EQ(text(Keys::KeyBandwidth), "2700");
    EXPECT_EQ(text(Keys::KeyDemodulation), "LSB");
    EXPECT_EQ(text(Keys::Threshold), "35");
    EXPECT_EQ(text(Keys::BFOFrequency), "-1500");
    EXPECT_EQ(text(Keys::OutputIFPath), "455.0 kHz");
    EXPECT_EQ(text(Keys::Shift), "12000");
    EXPECT_TRUE(refused.isEmpty());
}

/// An item of a list that keeps no nodes.
struct ForeignItem final : RecordItem {
    bool GetFrequency(double& hertz, int) override { return hertz = 118100000, true; }
    bool GetBandwidth(double&, int) override { return false; }
    bool GetType(char&, int) override { return false; }
    bool GetDemodulation(QString& text, int) override { return text = QStringLiteral("FM"), true; }
    bool GetSquelchState(QString& text, int) override { return text = QStringLiteral("true"), true; }
    bool GetSquelchValue(int& level, int) override { return level = 27, true; }
    bool GetAttenuation(QString& text, int) override { return text = QStringLiteral("20"), true; }
    bool GetAfc(QString& text, int) override { return text = QStringLiteral("true"), true; }
};

TEST_F(Receivers, TuneTakesWhatAnItemWithoutANodeTells) {
    use(ReceiverKind::VUHF);
    for (const Names::Id key : {Names::Id(Keys::UseSquelch), Names::Id(Keys::AFC)})
        receiver->GetValue(key)->SetStringValue("false");
    ForeignItem item;
    EXPECT_TRUE(receiver->Tune(item, true));
    EXPECT_EQ(text(Keys::KeyDemodulation), "FM");
    EXPECT_EQ(text(Keys::UseSquelch), "true");
    EXPECT_EQ(text(Keys::Threshold), "27");
    EXPECT_EQ(text(Keys::Attenuation), "20");
    EXPECT_EQ(text(Keys::AFC), "true");
    EXPECT_TRUE(refused.isEmpty()) << refused.join(' ').toStdString();
}

TEST_F(Receivers, TuneToTheFrequencyAloneLeavesTheOtherSettings) {
    Entry entry;
    entry.At(7055000)
        .With<ValueSelection>(Keys::KeyDemodulation, "LSB")
        .With<ValueNumeric<int>>(Keys::Threshold, "35");
    EXPECT_TRUE(receiver->Tune(entry.Item(), false));
    EXPECT_EQ(text(Keys::KeyFrequency), "7055000");
    EXPECT_EQ(text(Keys::KeyDemodulation), "AM");
    EXPECT_EQ(text(Keys::Threshold), "20");
}

TEST_F(Receivers, AFrequencyOutOfReachLeavesEverySetting) {
    Entry entry;
    entry.At(118100000).With<ValueSelection>(Keys::KeyDemodulation, "LSB");
    const QString before = text(Keys::KeyFrequency);
    EXPECT_FALSE(receiver->Tune(entry.Item(), true));
    EXPECT_EQ(text(Keys::KeyFrequency), before);
    EXPECT_EQ(text(Keys::KeyDemodulation), "AM");
    ASSERT_EQ(refused.size(), 1);
    EXPECT_TRUE(refused[0].contains("118.100000 MHz")) << refused[0].toStdString();
}

TEST_F(Receivers, SettingsThatTheReceiverLacksAreLeftOutAndNamed) {
    Entry entry;
    entry.At(7055000)
        .With<ValueNumeric<double>>(Keys::KeyBandwidth, "3000000")
        .With<Value<QString>>(Keys::KeyDemodulation, "WFM")
        .With<ValueNumeric<int>>(Keys::Threshold, "35");
    EXPECT_TRUE(receiver->Tune(entry.Item(), true));
    EXPECT_EQ(text(Keys::KeyBandwidth), "6000");
    EXPECT_EQ(text(Keys::KeyDemodulation), "AM");
    EXPECT_EQ(text(Keys::Threshold), "35");
    ASSERT_EQ(refused.size(), 1);
    EXPECT_TRUE(refused[0].contains("Bandwidth 3000.000 kHz")) << refused[0].toStdString();
    EXPECT_TRUE(refused[0].contains("\"WFM\"")) << refused[0].toStdString();
}

TEST_F(Receivers, AnEntryWithoutBandwidthOrDemodulationLeavesThem) {
    Entry entry;
    entry.At(7055000)
        .With<ValueNumeric<double>>(Keys::KeyBandwidth, "0")
        .With<Value<QString>>(Keys::KeyDemodulation, "");
    EXPECT_TRUE(receiver->Tune(entry.Item(), true));
    EXPECT_EQ(text(Keys::KeyBandwidth), "6000");
    EXPECT_EQ(text(Keys::KeyDemodulation), "AM");
    EXPECT_TRUE(refused.isEmpty());
    Entry nothing;
    EXPECT_FALSE(receiver->Tune(nothing.Item(), true));
    EXPECT_EQ(refused.size(), 1);
}

TEST_F(Receivers, AFrequencyOfTheBarIsRoundedToOneHertz) {
    QSignalSpy tuned(receiver.get(), &Receiver::Tuned);
    EXPECT_TRUE(receiver->Tune(7055000.4));
    EXPECT_EQ(text(Keys::KeyFrequency), "7055000");
    ASSERT_EQ(tuned.size(), 1);
    EXPECT_EQ(tuned[0][0].toDouble(), 7055000.0);
}

/// A radio that says what a test wants.
class TalkingLink final : public ReceiverLink {
public:
    QString GetName() const override { return QStringLiteral("Talker"); }
    void Begin() override { emit StateChanged(ReceiverState::Connected, QString()); }
    void Set(const std::vector<ReceiverWord>&, quint64) override {}
    void Say(quint64 serial, Names::Id key, const char* text) {
        ReceiverReading reading;
        reading.serial = serial;
        reading.values = {{key, QString::fromLatin1(text)}};
        emit Read(reading);
    }
};

TEST_F(Receivers, WhatTheRadioSaidBeforeAWishDoesNotUndoIt) {
    auto attached = std::make_unique<TalkingLink>();
    TalkingLink* link = attached.get();
    receiver->Attach(std::move(attached));
    ASSERT_TRUE(receiver->Tune(7055000));
    const quint64 before = receiver->GetSerial();
    ASSERT_TRUE(receiver->Tune(9410000));
    link->Say(before, Keys::KeyFrequency, "7055000");
    EXPECT_EQ(text(Keys::KeyFrequency), "9410000");
    link->Say(before, Keys::KeyBandwidth, "2400");
    EXPECT_EQ(text(Keys::KeyBandwidth), "2400") << "nobody has set that since";
    link->Say(receiver->GetSerial(), Keys::KeyFrequency, "9410500");
    EXPECT_EQ(text(Keys::KeyFrequency), "9410500") << "the knob was turned";
}

/// The first carrier that the simulation has above a frequency, in a bandwidth of 1 kHz.
double carrierAbove(const SimulatedReceiver& receiver, double hertz, double raster) {
    double place = std::ceil(hertz / raster) * raster;
    while (receiver.CarrierAt(place, 1000) < 40)
        place += raster;
    return place;
}

TEST_F(Receivers, TheLevelFollowsFrequencyAttenuationAndSquelch) {
    use(ReceiverKind::VUHF);
    receiver->GetValue(Keys::KeyBandwidth)->SetStringValue("8330");
    const double carrier = carrierAbove(*simulated, 118e6, 25e3);
    ASSERT_TRUE(receiver->Tune(carrier));
    const double strong = receiver->GetLevel()->GetValue();
    EXPECT_GT(strong, 35);
    ASSERT_TRUE(receiver->Tune(carrier + 8000));
    EXPECT_LT(receiver->GetLevel()->GetValue(), 10) << "beside the carrier there is noise";
    receiver->GetValue(Keys::AFC)->SetStringValue("true");
    EXPECT_GT(receiver->GetLevel()->GetValue(), 35) << "AFC finds the carrier";
    receiver->GetValue(Keys::AFC)->SetStringValue("false");
    ASSERT_TRUE(receiver->Tune(carrier));
    EXPECT_EQ(receiver->GetLevel()->GetValue(), strong) << "the same settings give the same level";

    receiver->GetValue(Keys::Attenuation)->SetStringValue("30");
    EXPECT_EQ(receiver->GetLevel()->GetValue(), strong) << "attenuation is automatic";
    receiver->GetValue(Keys::UseAttenuation)->SetStringValue("true");
    EXPECT_NEAR(receiver->GetLevel()->GetValue(), strong - 30, 0.11);

    receiver->GetValue(Keys::Threshold)->SetStringValue("100");
    EXPECT_TRUE(receiver->GetOpen()->GetValue()) << "without squelch the audio is open";
    receiver->GetValue(Keys::UseSquelch)->SetStringValue("true");
    EXPECT_FALSE(receiver->GetOpen()->GetValue());
    receiver->GetValue(Keys::Threshold)->SetStringValue("-40");
    EXPECT_TRUE(receiver->GetOpen()->GetValue());
}

} // namespace
