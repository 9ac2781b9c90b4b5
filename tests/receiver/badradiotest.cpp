#include "host/valuetree/tree.h"
#include "receiver/hamlibreceiver.h"
#include "receiver/receiver.h"
#include "tests/support/badserver.h"

#include <QTemporaryDir>

using namespace std::chrono_literals;

namespace {

class BadRadios : public testing::Test {
protected:
    BadRadios() { Tree::Instance()->GetRoot()->DeleteChildren(); }
    void TearDown() override { EXPECT_TRUE(HamlibReceiver::WaitForAll(std::chrono::milliseconds(Patience))); }

    BadServer server;
};

class BadManners : public BadRadios, public testing::WithParamInterface<BadServer::Manner> {};

TEST_P(BadManners, LeaveAClearStateAndAreFollowedWhenTheyAreGoodAgain) {
    Receiver receiver(ReceiverKind::HF);
    RadioProfile profile{QString(), RadioProfile::Client, server.Port()};
    profile.timeout = 200;
    const auto comesTo = [&](ReceiverState state) {
        return Until([&] { return receiver.GetState() == state; });
    };
    quint64 measured = 0;
    QObject::connect(&receiver, &Receiver::Measured, [&](double, quint64 serial) { measured = serial; });
    receiver.Attach(std::make_unique<HamlibReceiver>(profile));
    ASSERT_TRUE(comesTo(ReceiverState::Connected)) << receiver.GetStateText().toStdString();
    server.manner = GetParam();
    receiver.Tune(9410000);
    if (GetParam() == BadServer::Manner::Halves) {
        EXPECT_TRUE(Until([&] { return measured >= receiver.GetSerial(); }));
        EXPECT_EQ(receiver.GetState(), ReceiverState::Connected) << "halves make a whole";
    } else if (GetParam() != BadServer::Manner::OthersReplies) {
        EXPECT_TRUE(comesTo(ReceiverState::NoAnswer)) << receiver.GetStateText().toStdString();
        EXPECT_FALSE(receiver.Tune(7100000));
        EXPECT_EQ(receiver.GetLevel()->GetValue(), -40) << "nothing is measured";
    }
    server.manner = BadServer::Manner::Good;
    EXPECT_TRUE(comesTo(ReceiverState::Connected)) << receiver.GetStateText().toStdString();
    EXPECT_TRUE(Until([&] { return receiver.GetFrequency() == 7055000; }));
}

INSTANTIATE_TEST_SUITE_P(Manners, BadManners,
                         testing::Values(BadServer::Manner::Silent, BadServer::Manner::Halves,
                                         BadServer::Manner::Nonsense, BadServer::Manner::OthersReplies,
                                         BadServer::Manner::Drops));

TEST_F(BadRadios, AServerThatHangsUpOnceIsAskedAgainBeforeThatCounts) {
    const auto ending = [this] {
        Receiver receiver(ReceiverKind::HF);
        QStringList states;
        QObject::connect(&receiver, &Receiver::StateChanged, [&] {
            if (receiver.GetState() != ReceiverState::Connecting)
                states << receiver.GetStateText().section(": ", 1);
        });
        receiver.Attach(std::make_unique<HamlibReceiver>(
            RadioProfile{QString(), RadioProfile::Client, server.Port()}, HamlibReceiver::Lost::GivenUp));
        EXPECT_TRUE(Until([&] { return !states.isEmpty(); }));
        return states.join('|').toStdString();
    };
    for (const int answers : {0, 1, 2, 6, 13}) { // 14 questions are an opening
        server.answersBefore = answers;
        server.clients = 0;
        server.hangsUpOn = 1;
        EXPECT_EQ(ending(), "connected") << "behind " << answers << " answers";
        EXPECT_EQ(server.clients, 2);
        server.clients = 0;
        server.hangsUpOn = 3;
        EXPECT_EQ(ending(), "no answer, the connection is broken") << answers;
        EXPECT_EQ(server.clients, 2) << "it is not asked a third time";
    }
}

TEST_F(BadRadios, NewerSettingsTakeThePlaceOfThoseThatWait) {
    Receiver receiver(ReceiverKind::HF);
    quint64 measured = 0;
    QObject::connect(&receiver, &Receiver::Measured, [&](double, quint64 serial) { measured = serial; });
    receiver.Attach(
        std::make_unique<HamlibReceiver>(RadioProfile{QString(), RadioProfile::Client, server.Port()}));
    ASSERT_TRUE(Until([&] { return receiver.GetState() == ReceiverState::Connected; }));
    constexpr int Turns = 500;
    for (int i = 1; i <= Turns; ++i) // the server is of this thread and answers none of them meanwhile
        ASSERT_TRUE(receiver.Tune(7e6 + i));
    ASSERT_TRUE(Until([&] { return measured == receiver.GetSerial(); }));
    ASSERT_FALSE(server.Tuned().empty());
    EXPECT_EQ(server.Tuned().back(), 7e6 + Turns);
    EXPECT_LE(server.Tuned().size(), 2u) << "the first one at most was under way";
}

TEST_F(BadRadios, WhatIsNoneOfTheirRangesOrLimitsIsNotHandedOn) {
    server.others = {{"m", "PKTUSB\n2400\n"}, {"l SQL", "-150.0\n"}};
    Receiver receiver(ReceiverKind::HF);
    receiver.Attach(
        std::make_unique<HamlibReceiver>(RadioProfile{QString(), RadioProfile::Client, server.Port()}));
    ValueBase* mode = receiver.GetValue(Keys::KeyDemodulation);
    ASSERT_TRUE(Until([&] { return mode->GetStringValue() == "PKTUSB"; }));
    EXPECT_EQ(receiver.GetValue(KeySquelchLevel)->GetStringValue(), "0") << "its squelch is in other units";
    const auto isSaid = [&](const QByteArray& line) {
        return Until([&] { return server.lines.contains(line); });
    };
    server.others.remove("m");
    mode->SetStringValue("LSB");
    EXPECT_TRUE(isSaid("M LSB 0"));
    ASSERT_TRUE(Until([&] { return mode->GetStringValue() == "USB"; }));
    mode->SetStringValue("PKTUSB"); // it was in this mode, which it does not name
    EXPECT_TRUE(isSaid("M PKTUSB 0")) << server.lines.join('|').toStdString();
}

TEST_F(BadRadios, ASquelchInDecibelsIsNoKnob) {
    Receiver receiver(ReceiverKind::HF);
    QStringList refused;
    QObject::connect(&receiver, &Receiver::Refused, [&](const QString& reason) { refused << reason; });
    receiver.Attach(
        std::make_unique<HamlibReceiver>(RadioProfile{QString(), RadioProfile::Client, server.Port()}));
    ASSERT_TRUE(Until([&] { return receiver.GetState() == ReceiverState::Connected; }));
    const ReceiverSetting& knob =
        *std::ranges::find_if(receiver.GetSettings(), [](const ReceiverSetting& setting) {
            return setting.key == Names::Id(KeySquelchLevel);
        });
    EXPECT_EQ(receiver.WhyNot(knob), QString()) << "0 may be both";
    receiver.Tune(7055000);
    server.others["l SQL"] = "-47.5\n";
    ASSERT_TRUE(Until([&] { return receiver.WhyNot(knob).contains("squelch in dB"); }));
    EXPECT_TRUE(receiver.CanSet(knob)) << "it has one, and the panel says why it is off";
    receiver.GetValue(KeySquelchLevel)->SetStringValue("40");
    EXPECT_TRUE(refused.join('\n').contains("squelch in dB")) << refused.join('\n').toStdString();
    EXPECT_EQ(receiver.GetValue(KeySquelchLevel)->GetStringValue(), "0");

    server.others["l SQL"] = "0.5\n"; // a level, too
    const qsizetype asked = server.lines.count("l SQL");
    ASSERT_TRUE(Until([&] { return server.lines.count("l SQL") > asked + 1; }));
    EXPECT_EQ(receiver.GetValue(KeySquelchLevel)->GetStringValue(), "0");
    for (const QByteArray& line : server.lines)
        EXPECT_FALSE(line.startsWith("L SQL")) << line.toStdString();
}

/// Where a radio goes that was told to go to 9410.040 kHz, and how often it is asked before it is there.
struct Going {
    const char* frequency;
    int asked;
    const char* told;
};

TEST_F(BadRadios, OneThatStaysWhereItIsIsToldAndOneThatRoundsIsNot) {
    Receiver receiver(ReceiverKind::HF);
    QStringList refused;
    QObject::connect(&receiver, &Receiver::Refused, [&](const QString& reason) { refused << reason; });
    receiver.Attach(
        std::make_unique<HamlibReceiver>(RadioProfile{QString(), RadioProfile::Client, server.Port()}));
    for (const Going& going :
         {Going{"9410000\n", 1, ""}, Going{"9410400\n", 1, ""}, Going{"9410040\n", 2, ""},
          Going{"9410541\n", 1, "HF receiver: the radio stays at 9410.541 kHz"},
          Going{"7055000\n", 1, "HF receiver: the radio stays at 7055.000 kHz"},
          Going{"9409900\n", 9, "HF receiver: the radio stays at 9409.900 kHz"}}) {
        SCOPED_TRACE(going.frequency);
        server.others["f"] = going.asked == 9 ? going.frequency : "7055000\n";
        ASSERT_TRUE(Until([&] {
            return receiver.GetState() == ReceiverState::Connected &&
                   receiver.GetFrequency() == server.others["f"].toDouble();
        }));
        server.onLine = [&, asked = -1](const QByteArray& line) mutable {
            if (line.startsWith("F "))
                asked = 0;
            else if (line == "f" && asked >= 0 && ++asked == going.asked)
                server.others["f"] = going.frequency;
        };
        refused.clear();
        ASSERT_TRUE(receiver.Tune(9410040));
        EXPECT_TRUE(Until([&] { return receiver.GetFrequency() == atof(going.frequency); }));
        EXPECT_EQ(refused.join('|'), going.told);
        EXPECT_EQ(receiver.IsElsewhere(), *going.told != 0);
        server.onLine = {};
    }
}

TEST_F(BadRadios, WhatNoRadioCanSayIsNotShown) {
    server.others = {
        {"f", "1e300\n"}, {"m", "USB\n999999999999\n"}, {"_", QByteArray(5000, '<') + "<img src=a> b\n"}};
    Receiver receiver(ReceiverKind::HF);
    receiver.Attach(
        std::make_unique<HamlibReceiver>(RadioProfile{QString(), RadioProfile::Client, server.Port()}));
    ASSERT_TRUE(Until([&] { return receiver.GetState() == ReceiverState::Connected; }));
    EXPECT_EQ(receiver.GetFrequency(), 6060000) << "as it was";
    EXPECT_EQ(receiver.GetValue(Keys::KeyBandwidth)->GetStringValue(), "6000");
    EXPECT_EQ(receiver.GetValue(Keys::KeyDemodulation)->GetStringValue(), "USB");
    EXPECT_FALSE(receiver.GetStateText().contains('<')) << receiver.GetStateText().toStdString();
    server.others["f"] = "-7055000\n";
    const qsizetype asked = server.lines.count("f");
    ASSERT_TRUE(Until([&] { return server.lines.count("f") > asked + 1; }));
    EXPECT_EQ(receiver.GetFrequency(), 6060000);
}

TEST_F(BadRadios, LettingGoDoesNotWaitForTheRadio) {
    server.manner = BadServer::Manner::Silent;
    {
        Receiver receiver(ReceiverKind::HF);
        RadioProfile profile{QString(), RadioProfile::Client, server.Port()};
        profile.timeout = Patience;
        receiver.Attach(std::make_unique<HamlibReceiver>(profile));
        EXPECT_EQ(receiver.GetState(), ReceiverState::Connecting);
        EXPECT_FALSE(receiver.Tune(7055000));
        ASSERT_TRUE(Until([&] { return !server.lines.isEmpty(); }));
    }
    EXPECT_FALSE(HamlibReceiver::WaitForAll(0ms))
        << "the receiver ended while its thread waits for the answer";
    server.HangUp();
}

TEST_F(BadRadios, ASilentLineAndADeviceThatIsPulledAwayAreToldApart) {
    constexpr int Ts2000 = 2014;
    const QTemporaryDir folder;
    const QString device = folder.filePath("radio");
    Helper wire;
    ASSERT_TRUE(
        wire.Start("socat", {QStringLiteral("pty,raw,echo=0,link=%1").arg(device), "pty,raw,echo=0"}));
    ASSERT_TRUE(Until([&] { return QFile::exists(device); }));
    Receiver receiver(ReceiverKind::HF);
    RadioProfile profile{QString(), Ts2000, device};
    profile.timeout = 200;
    receiver.Attach(std::make_unique<HamlibReceiver>(profile));
    const auto tells = [&](const char* words) {
        return Until([&] { return receiver.GetStateText().contains(words); });
    };
    EXPECT_TRUE(tells("does not answer in time")) << receiver.GetStateText().toStdString();
    wire.Stop();
    QFile::remove(device);
    EXPECT_TRUE(tells("is not there")) << receiver.GetStateText().toStdString();
}

} // namespace
