#include "workstation/sweepimport.h"

#include "host/base/longwork.h"
#include "host/base/problems.h"
#include "tests/support/testfolder.h"
#include "workstation/sweepdialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QPushButton>
#include <QSignalSpy>

namespace {

const QString Sample = QStringLiteral(SAMPLES_DIR "/sweep.csv");

class SweepImports : public testing::Test, protected TestFolder {
protected:
    SweepImports() {
        m_before = Problems::SetSink([this](const Problem& problem) { problems << problem.reason; });
    }
    ~SweepImports() override { Problems::SetSink(m_before); }
    QWidget window;
    std::list<DetectionConventional> list;
    SweepImport import{&window, [this](auto&& found, const QString&) { list.splice(list.end(), found); }};
    QStringList problems;

private:
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

/// Cancels the work at its first turn.
class CancelAtOnce : public LongWork::Display {
public:
    CancelAtOnce() {
        LongWork::SetDisplay(this);
        LongWork::SetEager(true);
    }
    ~CancelAtOnce() override {
        LongWork::SetEager(false);
        LongWork::SetDisplay(nullptr);
    }
    void Turn(const LongWork::Progress&) override { LongWork::Cancel(); }
    void Hide() override {}
};

TEST_F(SweepImports, WhatIsCancelledLeavesNothing) {
    QSignalSpy opened(&import, &SweepImport::Opened);
    QSignalSpy read(&import, &SweepImport::SweepsRead);
    const CancelAtOnce cancel;
    EXPECT_FALSE(import.Open(Sample));
    EXPECT_TRUE(list.empty());
    EXPECT_EQ(opened.size() + read.size(), 0);
    EXPECT_TRUE(problems.isEmpty());
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
