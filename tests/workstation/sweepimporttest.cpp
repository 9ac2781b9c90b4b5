#include "workstation/sweepimport.h"

#include "host/base/problems.h"
#include "tests/support/testfolder.h"
#include "workstation/sweepdialog.h"

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QProgressDialog>
#include <QPushButton>
#include <QSignalSpy>
#include <QTimer>

namespace {

const QString Sample = QStringLiteral(SAMPLES_DIR "/sweep.csv");

class SweepImports : public testing::Test, protected TestFolder {
protected:
    SweepImports() {
        m_before = Problems::SetSink([this](const Problem& problem) { problems << problem.reason; });
    }
    ~SweepImports() override { Problems::SetSink(m_before); }
    /// A sweep file that is read long enough for its dialog to be seen.
    QString longFile() const {
        const QByteArray sweeps = Read(Sample);
        QByteArray all;
        for (int hour = 10; hour < 28; ++hour) {
            const QByteArray time = "2024-03-3" + QByteArray::number(hour / 24) + ", " +
                                    QByteArray::number(hour % 24).rightJustified(2, '0');
            all += QByteArray(sweeps).replace("2024-03-30, 09", time);
        }
        return Write("long.csv", all);
    }
    /// Does something with the progress dialog once it is seen.
    void whenDialogIsSeen(const std::function<void(QProgressDialog&)>& act) {
        m_timer.disconnect();
        m_timer.callOnTimeout([this, act] {
            if (auto* dialog = qobject_cast<QProgressDialog*>(QApplication::activeModalWidget())) {
                m_timer.stop();
                ++dialogsSeen;
                act(*dialog);
            }
        });
        m_timer.start(0);
    }

    QWidget window;
    std::list<DetectionConventional> list;
    SweepImport import{&window, [this](auto&& found) { list.splice(list.end(), found); }};
    QStringList problems;
    int dialogsSeen = 0;

private:
    QTimer m_timer;
    Problems::Sink m_before;
};

TEST_F(SweepImports, SignalsAreHandedOver) {
    QSignalSpy opened(&import, &SweepImport::Opened);
    ASSERT_TRUE(import.Open(Sample));
    ASSERT_EQ(list.size(), 10u);
    const DetectionConventional& second = *std::next(list.begin());
    EXPECT_EQ(second.GetFrequency(), 119'737'500);
    EXPECT_EQ(second.GetBandwidth(), 25'000);
    EXPECT_EQ(second.GetLevel(), -40);
    EXPECT_FALSE(second.GetActive());
    EXPECT_EQ(second.GetStopTime() - second.GetStartTime(), 6e6);
    ASSERT_EQ(opened.size(), 1);
    EXPECT_EQ(opened[0][0].toString(), "sweep.csv: 10 detections in 40 sweeps");
    EXPECT_TRUE(problems.isEmpty());
}

TEST_F(SweepImports, WhatIsNoSweepIsToldAndChangesNothing) {
    EXPECT_FALSE(import.Open(Write("empty.csv", "")));
    EXPECT_FALSE(import.Open(Path("missing.csv")));
    ASSERT_EQ(problems.size(), 2);
    EXPECT_EQ(problems[0], "holds no power sweeps");
    EXPECT_TRUE(problems[1].endsWith("there is no such file")) << problems[1].toStdString();
    EXPECT_TRUE(list.empty());
}

TEST_F(SweepImports, ALongFileShowsHowFarItIsAndCanBeCancelled) {
    const QString file = longFile();
    whenDialogIsSeen([](QProgressDialog&) {});
    ASSERT_TRUE(import.Open(file));
    const size_t whole = list.size();
    EXPECT_GT(whole, 100u);
    list.clear();
    whenDialogIsSeen([&](QProgressDialog& dialog) {
        EXPECT_FALSE(import.Open(Sample)) << "one at a time";
        dialog.cancel();
    });
    EXPECT_TRUE(import.Open(file));
    EXPECT_EQ(dialogsSeen, 2);
    EXPECT_GT(list.size(), 0u);
    EXPECT_LT(list.size(), whole);
    EXPECT_EQ(problems.join("; "), "another file of sweeps is being read");
}

TEST(SweepDialogs, ASettingIsTakenAndAnUnknownZoneRefused) {
    SweepDialog dialog({12, 25e3, 3}, QTimeZone("Europe/Berlin"), nullptr);
    EXPECT_EQ(dialog.GetSettings().threshold, 12);
    EXPECT_EQ(dialog.GetSettings().minWidth, 25e3);
    EXPECT_EQ(dialog.GetZone().id(), "Europe/Berlin");
    dialog.findChild<QDoubleSpinBox*>("Hold")->setValue(0.5);
    EXPECT_EQ(dialog.GetSettings().hold, 0.5);
    const auto* open = dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open);
    auto* zone = dialog.findChild<QComboBox*>("Zone");
    zone->setEditText("Mars/Olympus");
    EXPECT_FALSE(open->isEnabled());
    zone->setEditText("UTC");
    EXPECT_TRUE(open->isEnabled());
    EXPECT_EQ(dialog.GetZone().offsetFromUtc(QDateTime::currentDateTimeUtc()), 0);
}

} // namespace
