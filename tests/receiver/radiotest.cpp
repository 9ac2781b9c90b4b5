#include "host/valuetree/tree.h"
#include "receiver/simulatedreceiver.h"
#include "tests/receiver/attachedradio.h"

namespace {

using Radios = AttachedRadios;

TEST_F(Radios, ConnectingReadsTheRadioAndSetsNothing) {
    RadioServer server;
    server.Ask("F 14250000");
    server.Ask("M USB 2400");
    server.Ask("L ATT 20");
    attach(RadioProfile::Client, server.Port());
    EXPECT_EQ(receiver->GetState(), ReceiverState::Connecting);
    ASSERT_TRUE(comesTo(ReceiverState::Connected)) << told();
    EXPECT_TRUE(comesTo(Keys::KeyFrequency, "14250000"));
    EXPECT_EQ(text(Keys::KeyDemodulation), "USB");
    EXPECT_EQ(text(Keys::KeyBandwidth), "2400");
    EXPECT_EQ(text(Keys::Attenuation), "20");
    EXPECT_EQ(server.Ask("f"), "14250000");
    EXPECT_EQ(server.Ask("m"), "USB\n2400");
    EXPECT_TRUE(refused.isEmpty()) << told();
}

TEST_F(Radios, WhatIsSetReachesTheRadioAndWhatIsTurnedThereIsShown) {
    RadioServer server;
    attach(RadioProfile::Client, server.Port());
    ASSERT_TRUE(comesTo(ReceiverState::Connected)) << told();
    EXPECT_TRUE(receiver->Tune(7055000));
    for (const auto& [key, value] : {std::pair<Names::Id, const char*>{Keys::KeyDemodulation, "LSB"},
                                     {Keys::KeyBandwidth, "1800"},
                                     {Keys::Attenuation, "10"},
                                     {Keys::UseAttenuation, "true"},
                                     {KeyOffset, "-120"},
                                     {KeySquelchLevel, "40"}})
        receiver->GetValue(key)->SetStringValue(value);
    ASSERT_TRUE(isMeasured());
    EXPECT_EQ(server.Ask("f"), "7055000");
    EXPECT_EQ(server.Ask("m"), "LSB\n1800");
    EXPECT_EQ(server.Ask("l ATT"), "10");
    EXPECT_EQ(server.Ask("j"), "-120");
    EXPECT_EQ(server.Ask("l SQL").toDouble(), 0.4);
    EXPECT_TRUE(refused.isEmpty()) << told();

    server.Ask("F 144800000");
    server.Ask("M FM 15000");
    EXPECT_TRUE(comesTo(Keys::KeyFrequency, "144800000"));
    EXPECT_TRUE(comesTo(Keys::KeyDemodulation, "FM"));
}

TEST_F(Radios, AnAntennaIsChosenByNameOrNumber) {
    attach(RadioProfile::Dummy, QString());
    ASSERT_TRUE(comesTo(ReceiverState::Connected)) << told();
    receiver->GetValue(Keys::AntennaID)->SetStringValue("2");
    EXPECT_EQ(text(KeyAntenna), "ANT2");
    receiver->GetValue(KeyAntenna)->SetStringValue("ANT3");
    receiver->Tune(3600000);
    ASSERT_TRUE(isMeasured());
    EXPECT_EQ(text(Keys::AntennaID), "3");
    EXPECT_TRUE(refused.isEmpty()) << told();
}

TEST_F(Radios, LimitsAndChoicesAreThoseOfTheModel) {
    RadioServer server;
    attach(RadioProfile::Client, server.Port());
    ASSERT_TRUE(comesTo(ReceiverState::Connected)) << told();
    EXPECT_FALSE(receiver->Tune(99e9)) << "the server itself would take it";
    EXPECT_FALSE(receiver->Tune(100e3));
    receiver->GetValue(Keys::Attenuation)->SetStringValue("15");
    receiver->GetValue(Keys::KeyDemodulation)->SetStringValue("ISB"); // none of its choices
    EXPECT_EQ(refused.size(), 3) << told();
    EXPECT_TRUE(refused.value(0).contains("1500.000000 MHz")) << told();
    EXPECT_TRUE(refused.value(2).contains("0, 10, 20, 30")) << told();
    EXPECT_NE(receiver->Find<ValueSelection>(Keys::KeyDemodulation)->GetItem(QStringLiteral("CWR")), nullptr);
    EXPECT_FALSE(receiver->CanSet(setting(Keys::OutputIFPath)));
    EXPECT_FALSE(receiver->WhyNot(setting(Keys::OutputIFPath)).isEmpty());
    EXPECT_TRUE(receiver->WhyNot(setting(Keys::Threshold)).isEmpty()) << "is the workstation's own";

    receiver->Attach(std::make_unique<SimulatedReceiver>(*receiver, SimulatedReceiver::Pace::OnDemand));
    EXPECT_EQ(receiver->GetState(), ReceiverState::Connected);
    EXPECT_EQ(text(Keys::KeyFrequency), "6060000") << "145 MHz is out of its reach";
    EXPECT_TRUE(receiver->CanSet(setting(Keys::OutputIFPath)));
    EXPECT_FALSE(receiver->CanSet(setting(KeyOffset)));
}

TEST_F(Radios, AServerThatGoesAndComesBackIsFollowedAgain) {
    RadioServer server;
    attach(RadioProfile::Client, server.Port());
    ASSERT_TRUE(comesTo(ReceiverState::Connected)) << told();
    server.Stop();
    ASSERT_TRUE(comesTo(ReceiverState::NoAnswer)) << told();
    EXPECT_FALSE(receiver->Tune(7055000));
    EXPECT_TRUE(refused.value(0).contains("no answer")) << told();
    const auto pause = [this] {
        return receiver->GetStateText().section("after ", -1).section(' ', 0, 0).toDouble(); // s
    };
    double longest = 0;
    while (longest < 2) { // one may be missed on a busy machine
        ASSERT_TRUE(Until([&] { return pause() > longest; })) << told();
        longest = pause();
        EXPECT_TRUE(longest == 0.5 || longest == 1 || longest >= 2) << longest;
    }
    server.Start();
    server.Ask("F 21300000");
    ASSERT_TRUE(comesTo(ReceiverState::Connected)) << told();
    EXPECT_TRUE(comesTo(Keys::KeyFrequency, "21300000"));
    EXPECT_TRUE(receiver->Tune(7055000));
    ASSERT_TRUE(isMeasured());
    EXPECT_EQ(server.Ask("f"), "7055000");
}

TEST_F(Radios, WhatWasSetBeforeItWasConnectedDoesNotHideWhatItSays) {
    receiver->Attach(std::make_unique<SimulatedReceiver>(*receiver, SimulatedReceiver::Pace::OnDemand));
    receiver->Tune(7055000);
    RadioServer server;
    server.Ask("F 14250000");
    attach(RadioProfile::Client, server.Port());
    EXPECT_TRUE(comesTo(Keys::KeyFrequency, "14250000")) << told();
}

TEST_F(Radios, ManualAttenuationSetsTheStepThatIsShown) {
    RadioServer server;
    server.Ask("L ATT 20");
    attach(RadioProfile::Client, server.Port());
    ASSERT_TRUE(comesTo(Keys::Attenuation, "20")) << told();
    server.Ask("L ATT 0");
    attach(RadioProfile::Client, server.Port());
    ASSERT_TRUE(comesTo(Keys::UseAttenuation, "false")) << told();
    ASSERT_EQ(text(Keys::Attenuation), "20");
    ASSERT_TRUE(comesTo(ReceiverState::Connected));
    receiver->GetValue(Keys::UseAttenuation)->SetStringValue("true");
    ASSERT_TRUE(isMeasured());
    EXPECT_EQ(server.Ask("l ATT"), "20");
}

TEST_F(Radios, WhatIsSetAsSoonAsItIsBackReachesIt) {
    RadioServer server;
    attach(RadioProfile::Client, server.Port());
    ASSERT_TRUE(comesTo(ReceiverState::Connected)) << told();
    receiver->Tune(7055000);
    ASSERT_TRUE(isMeasured());
    server.Stop();
    ASSERT_TRUE(comesTo(ReceiverState::NoAnswer)) << told();
    server.Start(); // a new one, elsewhere
    QObject::connect(receiver.get(), &Receiver::StateChanged, receiver.get(), [this] {
        if (receiver->GetState() == ReceiverState::Connected)
            receiver->Tune(7055000);
    });
    ASSERT_TRUE(comesTo(ReceiverState::Connected)) << told();
    EXPECT_TRUE(Until([&] { return server.Ask("f") == "7055000"; })) << told();
}

TEST_F(Radios, OneThatHasGoneShowsNoLevelOfBefore) {
    RadioServer server;
    attach(RadioProfile::Client, server.Port(), 500, HamlibReceiver::Lost::GivenUp);
    ASSERT_TRUE(comesTo(ReceiverState::Connected)) << told();
    ASSERT_TRUE(Until([&] { return receiver->GetLevel()->GetValue() > -40; }));
    receiver->Tune(7055000);
    while (server.Ask("f") != "7055000") // its level waits to be heard
        ;
    server.Stop();
    ASSERT_TRUE(HamlibReceiver::WaitForAll(std::chrono::milliseconds(Patience)));
    ASSERT_TRUE(comesTo(ReceiverState::NoAnswer)) << told();
    EXPECT_EQ(receiver->GetLevel()->GetValue(), -40);
}

TEST_F(Radios, AShortTimeOutIsNotOverBetweenTwoQuestions) {
    attach(RadioProfile::Dummy, QString(), 20);
    ASSERT_TRUE(comesTo(ReceiverState::Connected)) << told();
    int states = 0;
    int readings = 0;
    QObject::connect(receiver.get(), &Receiver::StateChanged, [&] { ++states; });
    QObject::connect(receiver.get(), &Receiver::Measured, [&] { ++readings; });
    ASSERT_TRUE(Until([&] { return readings > 10; }));
    EXPECT_LT(states, 10) << "else it comes and goes with each; " << told();
}

struct BadPort {
    int model;
    const char* port;
    ReceiverState state;
    const char* words;
};

TEST_F(Radios, WhatCannotBeOpenedIsToldWithItsReason) {
    constexpr int Ts2000 = 2014;
    const BadPort ports[] = {
        {RadioProfile::Client, "127.0.0.1:1", ReceiverState::NoAnswer, "broken"},
        {Ts2000, "/nowhere/ttyUSB0", ReceiverState::NoAnswer, "is not there"},
        {Ts2000, "/tmp", ReceiverState::Refused, "is no device"},
    };
    for (const BadPort& bad : ports) {
        attach(bad.model, bad.port);
        EXPECT_TRUE(comesTo(bad.state)) << told();
        EXPECT_TRUE(receiver->GetStateText().contains(bad.words)) << told();
        EXPECT_TRUE(receiver->GetStateText().contains("tries again")) << told();
        attach(bad.model, bad.port, 500, HamlibReceiver::Lost::GivenUp);
        EXPECT_TRUE(comesTo(bad.state)) << told();
        EXPECT_TRUE(receiver->GetStateText().contains(bad.words)) << told();
        EXPECT_FALSE(receiver->GetStateText().contains("tries again")) << told();
    }
    EXPECT_TRUE(HamlibReceiver::WaitForAll(std::chrono::milliseconds(Patience)))
        << "who has given up holds nothing any more";
}

} // namespace
