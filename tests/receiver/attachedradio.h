#pragma once

#include "host/valuetree/tree.h"
#include "receiver/hamlibreceiver.h"
#include "receiver/receiver.h"
#include "tests/support/radioserver.h"

/// A receiver with a radio behind it.
class AttachedRadios : public testing::Test {
protected:
    AttachedRadios() {
        Tree::Instance()->GetRoot()->DeleteChildren();
        receiver = std::make_unique<Receiver>(ReceiverKind::HF);
        QObject::connect(receiver.get(), &Receiver::Refused,
                         [this](const QString& reason) { refused << reason; });
        QObject::connect(receiver.get(), &Receiver::Measured,
                         [this](double, quint64 serial) { measured = serial; });
    }
    void TearDown() override {
        receiver.reset();
        EXPECT_TRUE(HamlibReceiver::WaitForAll(std::chrono::milliseconds(Patience))) << "the radio is closed";
    }
    void attach(int model, const QString& port, int timeout = 500,
                HamlibReceiver::Lost lost = HamlibReceiver::Lost::TriedAgain) {
        RadioProfile profile{QString(), model, port};
        profile.timeout = timeout;
        EXPECT_EQ(profile.Problem(), QString());
        receiver->Attach(std::make_unique<HamlibReceiver>(profile, lost));
    }
    bool comesTo(ReceiverState state) {
        return Until([&] { return receiver->GetState() == state; });
    }
    bool comesTo(Names::Id key, const QString& wanted) {
        return Until([&] { return text(key) == wanted; });
    }
    /// Whether a level has been measured with all that was set.
    bool isMeasured() {
        return Until([&] { return measured >= receiver->GetSerial(); });
    }
    QString text(Names::Id key) const { return receiver->GetValue(key)->GetStringValue(); }
    std::string told() const { return (receiver->GetStateText() + '\n' + refused.join('\n')).toStdString(); }
    const ReceiverSetting& setting(Names::Id key) const {
        return *std::ranges::find_if(receiver->GetSettings(),
                                     [key](const ReceiverSetting& known) { return known.key == key; });
    }

    std::unique_ptr<Receiver> receiver;
    QStringList refused;
    quint64 measured = 0;
};
