// The walk of an operator with a radio: connect by dialog, tune, turn the knob, scan, lose it and have it
// again.

#include "controls/frequencystore/common/paths.h"
#include "receiver/hamlibreceiver.h"
#include "tests/support/dialogs.h"
#include "tests/support/radioserver.h"
#include "tests/workstation/windowfixture.h"
#include "workstation/connectdialog.h"
#include "workstation/frequencybar.h"
#include "workstation/receiverpanel.h"
#include "workstation/scanning.h"
#include "workstation/simulatedsearch.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>

namespace {

class RadioWalks : public Windows {
protected:
    void TearDown() override {
        Windows::TearDown();
        EXPECT_TRUE(HamlibReceiver::WaitForAll(std::chrono::milliseconds(Patience)));
    }
    void connectByDialog() {
        WhenOpen<ConnectDialog>([this](ConnectDialog& dialog) {
            dialog.findChild<QLineEdit*>("Search")->setText("net rigctl");
            dialog.findChild<QComboBox*>("Port")->setEditText(server.Port());
            dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
        });
        window().findChild<QAction*>("connect-receiver")->trigger();
        window().activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window(), Patience));
    }
    /// What the radio library's own client says, with the window at work meanwhile. It is asked again where
    /// the server hangs up on it.
    std::string rigctl(const QStringList& command) const {
        QByteArray said;
        EXPECT_TRUE(Until([&] {
            QProcess client;
            client.setProcessChannelMode(QProcess::MergedChannels);
            client.start("rigctl", QStringList{"-m", "2", "-r", server.Port()} + command);
            const bool hasEnded = Until([&] { return client.state() == QProcess::NotRunning; });
            said = client.readAll().trimmed();
            return !hasEnded || client.exitCode() == 0;
        })) << said.toStdString();
        return said.toStdString();
    }
    template <typename Condition>
    static bool comes(Condition condition) {
        return Until(condition);
    }
    bool comesTo(ReceiverState state) {
        return comes([this, state] { return station->GetReceiver().GetState() == state; });
    }
    QString shown(const char* label) { return window().findChild<QLabel*>(QLatin1String(label))->text(); }
    Scan& scan() { return station->GetScanning().GetScan(); }
    quint64 steps() { return scan().GetScanner().GetCounts().steps; }
    static size_t detections() {
        return Tree::Instance()
            ->Find<ValueList<DetectionConventional>>(SimulatedSearch::DetectionsPath)
            ->Size();
    }
    static void write(Names::Id key, const QString& text) {
        Tree::Instance()->GetValue(ScanValues::PathOf(key))->SetStringValue(text);
    }

    RadioServer server;
};

TEST_F(RadioWalks, ConnectTuneTurnTheKnobScanAndLoseIt) {
    open({"--job", sample("job-hf.pij")});
    ASSERT_TRUE(station->LoadFiles());
    connectByDialog();
    ASSERT_TRUE(comesTo(ReceiverState::Connected));
    EXPECT_TRUE(shown("ReceiverState").contains("connected, ")) << shown("ReceiverState").toStdString();

    SortListView* channels = show("Memory Channels");
    ASSERT_TRUE(comes([&] { return channels->RowCount() > 20; }));
    Receiver& receiver = station->GetReceiver();
    quint64 measured = 0;
    QObject::connect(&receiver, &Receiver::Measured, channels,
                     [&](double, quint64 serial) { measured = serial; });
    const QSignalSpy refused(&receiver, &Receiver::Refused);
    struct Channel {
        int row;
        const char* frequency;
        const char* mode; ///< and the passband of the radio next to the channel's
    };
    for (const Channel& channel : {Channel{5, "2500000", "AM\n8000"},
                                   {6, "2863000", "USB\n2700"},
                                   {10, "4996000", "CW\n500"},
                                   {11, "5000000", "AM\n8000"}}) {
        select(channels, channel.row);
        channels->setFocus();
        ASSERT_TRUE(comes([&] { return action(A::Tune)->isEnabled(); }));
        key(Qt::Key_Return, Qt::ControlModifier);
        ASSERT_TRUE(comes([&] { return measured >= receiver.GetSerial(); }));
        EXPECT_EQ(rigctl({"f"}), channel.frequency);
        EXPECT_EQ(rigctl({"m"}), channel.mode);
    }

    EXPECT_EQ(refused.size(), 0) << "a BFO of 0 is none that the radio lacks";

    EXPECT_EQ(rigctl({"F", "9410000"}), "");
    auto* field = window().findChild<ReceiverPanel*>()->findChild<QLineEdit*>("frequency");
    EXPECT_TRUE(comes([&] { return field->text() == "9410.000 kHz"; })) << field->text().toStdString();
    EXPECT_EQ(window().GetBar()->GetTuned(), 9410000);

    for (const Names::Id none :
         {Names::Id(ScanKeys::Settle), Names::Id(ScanKeys::Dwell), Names::Id(ScanKeys::GoOnSeconds)})
        write(none, "0");
    for (Node* channel : Tree::Instance()->GetNode(Paths::MemoryChannels)->Children())
        channel->GetValue("threshold")->SetStringValue("-40"); // whatever the radio hears is a signal
    key(Qt::Key_F6);
    EXPECT_TRUE(comes([] { return detections() >= 3; }));

    server.Stop();
    EXPECT_TRUE(comesTo(ReceiverState::NoAnswer));
    EXPECT_EQ(scan().GetScanner().GetState(), ScanState::Waiting);
    EXPECT_TRUE(shown("ReceiverState").contains("no answer")) << shown("ReceiverState").toStdString();
    const quint64 before = steps();
    server.Start();
    EXPECT_TRUE(comesTo(ReceiverState::Connected));
    EXPECT_TRUE(comes([&] { return steps() > before + 2; })) << "the scan goes on";
    key(Qt::Key_F6);
    EXPECT_FALSE(scan().GetScanner().IsRunning());
    EXPECT_EQ(rigctl({"F", "5505000"}), "");
    EXPECT_TRUE(comes([&] { return field->text() == "5505.000 kHz"; })) << field->text().toStdString();
}

} // namespace
