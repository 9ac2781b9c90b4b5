#include "tests/receiver/serialradio.h"

#include "tests/receiver/attachedradio.h"

#include <QTemporaryDir>

namespace {

class SerialRadios : public AttachedRadios {
protected:
    void attachSerial() { attach(SerialRadio::Model, device, 300); }

    const QTemporaryDir folder;
    const QString device = folder.filePath("radio");
    SerialRadio radio{device};
};

TEST_F(SerialRadios, ConnectingSetsNothingAndTuningSetsWhatIsTuned) {
    attachSerial();
    ASSERT_TRUE(comesTo(ReceiverState::Connected)) << told();
    EXPECT_TRUE(comesTo(Keys::KeyFrequency, "7055000"));
    EXPECT_TRUE(comesTo(Keys::KeyDemodulation, "USB"));
    EXPECT_EQ(radio.set.join(' '), "");
    EXPECT_TRUE(receiver->Tune(9410000));
    receiver->GetValue(Keys::KeyDemodulation)->SetStringValue("AM");
    ASSERT_TRUE(isMeasured()) << told();
    EXPECT_EQ(radio.set.join(' '), "FA00009410000 MD5");
}

TEST_F(SerialRadios, TheMetersS9IsAnotherLevelOnShortWaveThanAbove) {
    radio.settings["FA"] = "00144800000";
    std::optional<double> first;
    QObject::connect(receiver.get(), &Receiver::Measured,
                     [&](double level, quint64) { first = first.value_or(level); });
    attachSerial();
    ASSERT_TRUE(comesTo(ReceiverState::Connected)) << told();
    EXPECT_EQ(first, 14.0) << "where it is is known before its level";
    for (const auto& [hertz, level] : {std::pair{29.9e6, 34.0}, {144.8e6, 14.0}}) {
        ASSERT_TRUE(receiver->Tune(hertz)) << told();
        ASSERT_TRUE(isMeasured()) << told();
        EXPECT_EQ(receiver->GetLevel()->GetValue(), level);
    }
}

TEST_F(SerialRadios, AKnobIsFollowedAndADeviceThatComesBackIsConnectedAgain) {
    attachSerial();
    ASSERT_TRUE(comesTo(ReceiverState::Connected)) << told();
    radio.settings["FA"] = "00003573000";
    EXPECT_TRUE(comesTo(Keys::KeyFrequency, "3573000"));
    radio.Pull();
    ASSERT_TRUE(comesTo(ReceiverState::NoAnswer));
    EXPECT_FALSE(receiver->Tune(7100000));
    EXPECT_TRUE(Until([&] { return receiver->GetStateText().contains("is not there"); })) << told();
    radio.settings["FA"] = "00021300000";
    radio.Plug();
    ASSERT_TRUE(comesTo(ReceiverState::Connected)) << told();
    EXPECT_TRUE(comesTo(Keys::KeyFrequency, "21300000"));
    EXPECT_TRUE(receiver->Tune(7100000));
    ASSERT_TRUE(isMeasured()) << told();
    EXPECT_EQ(radio.settings["FA"], "00007100000");
}

} // namespace
