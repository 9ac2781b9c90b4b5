#include "workstation/receiverpanel.h"

#include "controls/frequencystore/common/paths.h"
#include "host/valuetree/tree.h"
#include "host/widgets/vccheckbox.h"
#include "host/widgets/vccomboboxclassic.h"
#include "host/widgets/vclineedit.h"
#include "receiver/receiver.h"
#include "receiver/simulatedreceiver.h"
#include "workstation/bandsteps.h"
#include "workstation/noibands.h"

#include <QLabel>
#include <QTest>

#include <gtest/gtest.h>

namespace {

class ReceiverPanels : public testing::Test {
protected:
    QString text(Names::Id key) const { return receiver->GetValue(key)->GetStringValue(); }
    void use(ReceiverKind kind) {
        receiver.reset();
        receiver = std::make_unique<Receiver>(kind);
        receiver->Attach(std::make_unique<SimulatedReceiver>(*receiver, SimulatedReceiver::Pace::OnDemand));
        QObject::connect(receiver.get(), &Receiver::Refused,
                         [this](const QString& reason) { refused << reason; });
    }
    ReceiverPanels() {
        Tree::Instance()->GetRoot()->DeleteChildren(); // what tests before have left
        use(ReceiverKind::HF);
    }

    std::unique_ptr<Receiver> receiver;
    QStringList refused;
};

TEST_F(ReceiverPanels, ThePanelShowsEachSettingOfItsReceiverAndNoOther) {
    for (const ReceiverKind kind : {ReceiverKind::HF, ReceiverKind::VUHF}) {
        use(kind);
        const NoiBands bands;
        const ReceiverPanel panel(*receiver, bands);
        qsizetype expected = 0;
        for (const ReceiverSetting& setting : receiver->GetSettings()) {
            auto* editor = panel.findChild<QWidget*>(setting.key.Text());
            EXPECT_EQ(editor != nullptr, setting.title != nullptr) << setting.key.Text().toStdString();
            expected += editor ? 1 : 0;
        }
        EXPECT_EQ(panel.findChildren<VCLineEdit*>().size() + panel.findChildren<VCCheckBox*>().size() +
                      panel.findChildren<VCComboBoxClassic*>().size(),
                  expected);
    }
}

TEST_F(ReceiverPanels, ThePanelSetsTheReceiverAndRefusesWithTheReasonBelowTheField) {
    const NoiBands bands;
    ReceiverPanel panel(*receiver, bands);
    auto* field = panel.findChild<VCLineEdit*>("frequency");
    auto* complaint = panel.findChild<QLabel*>("frequencyComplaint");
    const auto enter = [field](const char* typed) {
        field->selectAll();
        QTest::keyClicks(field, typed);
        QTest::keyClick(field, Qt::Key_Return);
    };
    enter("9.41 MHz");
    EXPECT_EQ(text(Keys::KeyFrequency), "9410000");
    EXPECT_TRUE(complaint->isHidden());
    enter("118.1 MHz");
    EXPECT_EQ(text(Keys::KeyFrequency), "9410000");
    EXPECT_FALSE(complaint->isHidden());
    EXPECT_TRUE(complaint->text().contains("30.000000 MHz")) << complaint->text().toStdString();
    QTest::keyClick(field, Qt::Key_Escape);
    EXPECT_TRUE(complaint->isHidden());
    receiver->Tune(7055000);
    EXPECT_EQ(field->text(), "7055.000 kHz");
}

/// A radio that can be tuned and no more.
class TunedLink final : public ReceiverLink {
public:
    QString GetName() const override { return QStringLiteral("Plain"); }
    void Begin() override {
        ReceiverAbility squelch{KeySquelchLevel, 0, 100};
        squelch.whyNot = QStringLiteral("it is in dB");
        emit AbilitiesKnown({ReceiverAbility{Keys::KeyFrequency, 1e6, 2e6}, squelch});
        emit StateChanged(ReceiverState::Connected, QStringLiteral("no frills"));
    }
    void Set(const std::vector<ReceiverWord>&, quint64) override {}
    void Lose() { emit StateChanged(ReceiverState::NoAnswer, QStringLiteral("unplugged")); }
};

TEST_F(ReceiverPanels, WhatARadioLacksIsOffWithTheReasonAndAllIsWhileItIsAway) {
    const NoiBands bands;
    const ReceiverPanel panel(*receiver, bands);
    auto attached = std::make_unique<TunedLink>();
    TunedLink* link = attached.get();
    receiver->Attach(std::move(attached));
    const auto whyOff = [&](const char* name) {
        const auto* editor = panel.findChild<QWidget*>(QLatin1String(name));
        return editor->isEnabled() ? QStringLiteral("on") : editor->parentWidget()->toolTip();
    };
    const auto* state = panel.findChild<QLabel*>("ReceiverState");
    EXPECT_EQ(state->text(), "Plain: connected, no frills, 1 MHz to 2 MHz");
    EXPECT_EQ(whyOff("frequency"), "on");
    EXPECT_EQ(whyOff("threshold"), "on");
    EXPECT_EQ(whyOff("demodulation"), "Plain does not let this be set");
    EXPECT_TRUE(panel.findChild<QWidget*>(KeyOffset.Text())->parentWidget()->isHidden());
    EXPECT_FALSE(panel.findChild<QWidget*>(KeySquelchLevel.Text())->parentWidget()->isHidden());
    EXPECT_EQ(whyOff("squelchLevel"), "Plain: it is in dB");
    link->Lose();
    EXPECT_EQ(state->text(), "Plain: no answer, unplugged");
    EXPECT_EQ(whyOff("frequency"), "Plain: no answer, unplugged");
    EXPECT_EQ(whyOff("threshold"), "on") << "is the workstation's own";
}

TEST_F(ReceiverPanels, StepsGoFromBandToBandWithinReach) {
    NoiBands bands;
    BandSteps steps(*receiver, bands);
    EXPECT_TRUE(steps.isHidden()) << "there are no bands";
    ValueBase* definition = Tree::Instance()->GetValue(Paths::NoiDefinition);
    definition->SetStringValue("7000000,7200000;2181000,2183000;156000000,157000000;14000000,14350000;");
    EXPECT_FALSE(steps.isHidden());
    const auto* place = steps.findChild<QLabel*>("BandPlace");
    receiver->Tune(5000000);
    EXPECT_EQ(place->text(), "Outside the NOI bands");
    QStringList visited;
    const auto visit = [&](void (BandSteps::*slot)()) {
        (steps.*slot)();
        visited << text(Keys::KeyFrequency);
    };
    visit(&BandSteps::Next);
    EXPECT_EQ(place->text(), "Within NOI band 7000.000 kHz to 7200.000 kHz");
    visit(&BandSteps::Next);
    visit(&BandSteps::Next); // over the band that an HF receiver does not reach
    visit(&BandSteps::Previous);
    visit(&BandSteps::Previous);
    EXPECT_EQ(visited.join(' '), "7100000 14175000 2182000 14175000 7100000");
    EXPECT_TRUE(refused.isEmpty());
    definition->SetStringValue("156000000,157000000;");
    visit(&BandSteps::Next);
    EXPECT_EQ(visited.last(), "7100000") << "no band is within reach";
    definition->SetStringValue("");
}

} // namespace
