#include "workstation/frequencybar.h"

#include "host/base/problems.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencynodelistview.h"
#include "host/gui/listsettings.h"
#include "host/gui/sortlistview.h"
#include "receiver/receiver.h"
#include "tests/workstation/stationfixture.h"
#include "workstation/barlabels.h"
#include "workstation/fileopener.h"

#include <QAccessible>
#include <QApplication>
#include <QFontMetrics>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>

#include <cmath>
#include <gtest/gtest.h>

namespace {

TEST(FrequencyAxes, HaveRoundTicksThatAreNotTooMany) {
    const struct {
        double from, to;
    } rows[] = {{9e3, 30e9}, {100e3, 1e9}, {1e6, 9e6}, {7e6, 7.2e6}, {118e6, 118.1e6}, {433.05e6, 434.79e6}};
    for (const auto& [from, to] : rows) {
        SCOPED_TRACE(testing::Message() << from << " to " << to);
        FrequencyAxis axis;
        axis.SetWidth(1000);
        ASSERT_TRUE(axis.SetRange(from, to));
        EXPECT_NEAR(axis.MapToPixel(axis.MapToFrequency(321)), 321, 1e-6);
        int majors = 0;
        double before = 0;
        for (const FrequencyAxis::Tick& tick : axis.Ticks()) {
            majors += tick.isMajor;
            EXPECT_GT(tick.hertz, before);
            EXPECT_GE(tick.hertz, from);
            EXPECT_LE(tick.hertz, to);
            // Four digits tell a tick of a wide range, seven that of the narrowest one here.
            EXPECT_NEAR(std::remainder(tick.hertz, tick.hertz < 1e6 ? 10 : 1000), 0, 1e-3);
            before = tick.hertz;
        }
        EXPECT_GE(majors, 3);
        EXPECT_LE(majors, 20);
        EXPECT_GT(axis.Ticks().size(), static_cast<size_t>(majors)) << "there are minor ones";
    }
    FrequencyAxis axis;
    EXPECT_FALSE(axis.SetRange(7e6, 7e6));
    EXPECT_FALSE(axis.Shift(FrequencyAxis::Lowest, 1e6, -0.1)) << "the spectrum ends there";
}

/// A line of marks at given pixels, as many entries at each as are told.
struct Line final : PixStateVector, IHasHMap {
    explicit Line(const std::vector<std::pair<int, int>>& pixels) {
        SetHMapping(this, 400);
        for (const auto& [pixel, entries] : pixels) {
            for (int i = 0; i < entries; ++i) {
                places.push_back(pixel);
                Mark(static_cast<quint32>(places.size() - 1), pixel, 0, 'p');
            }
        }
    }
    void Init(const QString&) override {}
    void Refresh() override {}
    QString ItemText(quint32 item) const override { return QStringLiteral("at %1").arg(places[item]); }
    double ItemFrequency(quint32 item) const override { return places[item]; }
    double ItemBandwidth(quint32) const override { return 0; }
    bool HasObservable() const override { return false; }
    void ClearObservable() override {}
    double MapToPixel(double hertz) const override { return hertz; }
    double MapToFrequency(double pixel) const override { return pixel; }

    std::vector<int> places;
};

TEST(BarLabels, StandWhereThereIsRoomAndCoverNothing) {
    const QFontMetrics metrics{QFont()};
    const struct {
        const char* what;
        std::vector<std::pair<int, int>> pixels;
        QStringList texts;
    } rows[] = {
        {"nothing", {}, {}},
        {"one", {{10, 1}}, {"at 10"}},
        {"several on a pixel", {{10, 4}}, {"at 10 +3 more"}},
        {"neighbours", {{10, 1}, {20, 1}, {30, 2}}, {"at 30 +3 more"}},
        {"two groups", {{10, 1}, {20, 1}, {200, 1}}, {"at 20 +1 more", "at 200"}},
        {"no room at the end", {{10, 1}, {390, 1}}, {"at 10"}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        const Line line(row.pixels);
        QStringList texts;
        int end = 0;
        for (const BarLabel& label : LabelsOf(line, metrics)) {
            texts << label.text;
            EXPECT_GE(label.left, end);
            end = label.left + label.width;
            EXPECT_LE(metrics.horizontalAdvance(label.text), label.width);
            for (const auto& [pixel, entries] : row.pixels)
                EXPECT_TRUE(pixel + 2 <= label.left || pixel >= end) << pixel;
        }
        EXPECT_EQ(texts, row.texts) << texts.join('|').toStdString();
    }
    LabelRow taken;
    EXPECT_TRUE(taken.Take(10, 20));
    constexpr std::pair<int, int> Crossing[] = {{0, 11}, {19, 30}, {12, 15}, {5, 40}};
    for (const auto& [from, to] : Crossing)
        EXPECT_FALSE(taken.Take(from, to)) << from;
    EXPECT_TRUE(taken.Take(20, 30));
}

TEST(BandPlans, AreWholeAndOrdered) {
    QStringList problems;
    const Problems::Sink before =
        Problems::SetSink([&](const Problem& problem) { problems << problem.ToString(); });
    for (int region = 1; region <= BandPlan::RegionCount; ++region) {
        SCOPED_TRACE(region);
        const BandPlan plan = BandPlan::OfRegion(region);
        EXPECT_GT(plan.Bands().size(), 90u);
        double end = 0;
        std::map<QString, int> services;
        for (const BandPlan::Band& band : plan.Bands()) {
            EXPECT_GE(band.from, end) << band.name.toStdString();
            EXPECT_LT(band.from, band.to);
            end = band.to;
            ++services[band.service];
        }
        EXPECT_EQ(static_cast<qsizetype>(services.size()), BandPlan::Services().size());
        const auto at = [&](double hertz) { return plan.Within(hertz, hertz).at(0).service; };
        EXPECT_EQ(at(14.1e6), "amateur");
        EXPECT_EQ(at(100e6), "broadcast");
        EXPECT_EQ(at(121.5e6), "aeronautical");
        EXPECT_EQ(at(156.8e6), "maritime");
        // Where the regions differ.
        EXPECT_EQ(at(7.25e6), region == 2 ? "amateur" : "broadcast");
        EXPECT_EQ(at(147e6), region == 1 ? "mobile" : "amateur");
    }
    EXPECT_TRUE(problems.isEmpty()) << problems.join('\n').toStdString();

    const BandPlan read =
        BandPlan::Read("# a comment\n\n10;20;first;amateur\n15;30;over;amateur\n20;x;no;amateur\n"
                       "30;20;back;amateur\n20;30;no service;bakery\n20;30;;other\n1;2\n"
                       "20;30;second;other\n",
                       "plan.csv");
    ASSERT_EQ(read.Bands().size(), 2u);
    EXPECT_EQ(read.Bands()[1].name, "second");
    ASSERT_EQ(problems.size(), 6);
    EXPECT_EQ(problems[0], "plan.csv:4: begins below the end of the band before");
    EXPECT_EQ(problems[3], "plan.csv:7: names an unknown service: bakery");
    EXPECT_EQ(problems[5], "plan.csv:9: has 2 fields instead of 4");
    Problems::SetSink(before);
}

/// A workstation whose clicks take effect soon.
class FrequencyBars : public Workstations {
protected:
    void SetUp() override { QApplication::setDoubleClickInterval(30); }
    void TearDown() override {
        QApplication::setDoubleClickInterval(m_interval);
        Workstations::TearDown();
    }
    void open() {
        start({"--job", sample("job-hf.pij"), sample("targets.xml")});
        station->GetWindow().resize(1200, 700);
        ASSERT_TRUE(station->LoadFiles());
        QApplication::processEvents();
        for (const int id : FreqStore::Instance().GetListIds())
            ids[FreqStore::Instance().GetDefinition(id)->GetName()] = id;
    }
    FrequencyBar& bar() { return *station->GetWindow().GetBar(); }
    double tuned() { return station->GetReceiver().GetFrequency(); }
    QPoint placeOf(double hertz, const char* list) {
        const QRect line = bar().LineRect(ids.at(list));
        return {bar().AxisLeft() + static_cast<int>(bar().MapToPixel(hertz)), line.center().y()};
    }
    /// A line that is up to date is painted.
    void paint() { bar().grab(); }

    std::map<QString, int> ids;

private:
    int m_interval = QApplication::doubleClickInterval();
};

TEST_F(FrequencyBars, AClickOnAMarkTunesToTheEntryAndSelectsIt) {
    open();
    auto* view = dynamic_cast<FrequencyNodeListView*>(station->GetWindow().ViewOf(ids.at("Memory Channels")));
    constexpr double hertz = 5e6; // a time signal among the channels
    bar().SetRange(4.9e6, 5.1e6);
    paint();
    view->clearSelection();
    station->GetReceiver().GetValue(Keys::KeyBandwidth)->SetStringValue("100");
    QSignalSpy entry(&bar(), &FrequencyBar::EntryTuned);
    QTest::mouseClick(&bar(), Qt::LeftButton, {}, placeOf(hertz, "Memory Channels") + QPoint(3, 0));
    ASSERT_TRUE(entry.wait(Patience));
    EXPECT_EQ(tuned(), hertz);
    EXPECT_NE(station->GetReceiver().GetValue(Keys::KeyBandwidth)->GetStringValue(), "100")
        << "with all its settings";
    EXPECT_EQ(view->SelectedFrequencies(), std::vector<double>{hertz});
    EXPECT_TRUE(view->isVisible()) << "its tab is up";
}

TEST_F(FrequencyBars, AClickBesideMarksTunesToTheStepAndADoubleClickNotAtAll) {
    open();
    bar().SetRange(20.0e6, 20.9e6);
    paint();
    QSignalSpy clicked(&bar(), &FrequencyBar::Clicked);
    const QPoint place = placeOf(20.5e6, "NOI Frequencies");
    QTest::mouseClick(&bar(), Qt::LeftButton, {}, place);
    ASSERT_TRUE(clicked.wait(Patience));
    EXPECT_EQ(std::fmod(tuned(), 1000), 0);
    EXPECT_NEAR(tuned(), 20.5e6, 3e3);
    bar().SetStep(25e3);
    QTest::mouseClick(&bar(), Qt::LeftButton, {}, place);
    ASSERT_TRUE(clicked.wait(Patience));
    EXPECT_EQ(tuned(), 20.5e6);
    QTest::mouseClick(&bar(), Qt::LeftButton, {}, place);
    bar().SetRange(10e6, 11e6);
    EXPECT_EQ(clicked.size(), 3) << "taken before something else lies there";
    EXPECT_EQ(tuned(), 20.5e6);
    bar().SetRange(20.0e6, 20.9e6);
    clicked.clear();
    station->GetReceiver().Tune(6e6);
    QTest::mouseDClick(&bar(), Qt::LeftButton, {}, place);
    // A click that follows is the first thing that happens.
    EXPECT_GT(bar().To() / bar().From(), 100) << "everything is shown";
    EXPECT_EQ(clicked.size(), 0);
    QTest::mouseClick(&bar(), Qt::LeftButton, {}, placeOf(100e6, "NOI Frequencies"));
    ASSERT_TRUE(clicked.wait(Patience));
    EXPECT_EQ(clicked.size(), 1);
    EXPECT_EQ(tuned(), 6e6) << "out of the receiver's reach";
}

TEST_F(FrequencyBars, KeysZoomAndMove) {
    open();
    bar().setFocus(Qt::TabFocusReason);
    EXPECT_TRUE(bar().focusPolicy() & Qt::TabFocus);
    station->GetReceiver().Tune(6e6);
    bar().SetRange(5e6, 9e6);
    const double tunedAt = bar().MapToPixel(6e6);
    const double width = bar().To() / bar().From();
    QTest::keyClick(&bar(), Qt::Key_Plus);
    EXPECT_LT(bar().To() / bar().From(), width);
    EXPECT_NEAR(bar().MapToPixel(6e6), tunedAt, 1) << "about the tuned frequency";
    QTest::keyClick(&bar(), Qt::Key_Minus);
    EXPECT_NEAR(bar().From(), 5e6, 1);
    QTest::keyClick(&bar(), Qt::Key_Right);
    EXPECT_GT(bar().From(), 5e6);
    EXPECT_NEAR(bar().To() / bar().From(), width, 1e-6);
    QTest::keyClick(&bar(), Qt::Key_Left);
    EXPECT_NEAR(bar().From(), 5e6, 1);
    QTest::keyClick(&bar(), Qt::Key_Home);
    EXPECT_LT(bar().From(), 20e3);
    EXPECT_GT(bar().To(), 1e9);
}

TEST_F(FrequencyBars, TheSelectionOfAListIsMarkedAndZoomedTo) {
    open();
    EXPECT_FALSE(bar().ZoomToSelection()) << "nothing is selected";
    auto* view =
        dynamic_cast<FrequencyNodeListView*>(station->GetWindow().ViewOf(ids.at("Local TargetList")));
    bar().SetRange(5e6, 9e6);
    const QImage before = bar().grab().toImage();
    view->SelectFrequency(7.1e6);
    const double hertz = view->SelectedFrequencies().at(0);
    const QPoint place = placeOf(hertz, "Local TargetList");
    const auto isMarked = [&] {
        return bar().grab().toImage().pixelColor(place) == bar().palette().color(QPalette::Highlight);
    };
    EXPECT_TRUE(Until(isMarked));
    EXPECT_NE(before.pixelColor(place), bar().palette().color(QPalette::Highlight));
    ASSERT_TRUE(bar().ZoomToSelection());
    EXPECT_LT(bar().To() / bar().From(), 1.01);
    EXPECT_LT(bar().From(), hertz);
    EXPECT_GT(bar().To(), hertz);
}

TEST_F(FrequencyBars, LinesAreHiddenMovedAndThereTheNextTime) {
    open();
    bar().RememberLines();
    const std::vector<int> before = bar().ShownLists();
    ASSERT_GE(before.size(), 4u);
    const int height = bar().sizeHint().height();
    bar().SetLineShown(before[1], false);
    EXPECT_LT(bar().sizeHint().height(), height);
    EXPECT_TRUE(bar().LineRect(before[1]).isEmpty());
    bar().MoveLine(before[2], -1);
    std::vector<int> moved = before;
    moved.erase(moved.begin() + 1);
    std::swap(moved[0], moved[1]);
    EXPECT_EQ(bar().ShownLists(), moved);
    QStringList names;
    for (const int id : bar().ShownLists())
        names << FreqStore::Instance().GetDefinition(id)->GetName();
    station.reset();
    open();
    bar().RememberLines();
    QStringList again;
    for (const int id : bar().ShownLists())
        again << FreqStore::Instance().GetDefinition(id)->GetName();
    EXPECT_EQ(again, names);
}

TEST_F(FrequencyBars, MarksOnlyRowsThatAreShownIfThatIsWanted) {
    open();
    bar().RememberLines();
    bar().FitAll();
    SortListView& list = *station->GetWindow().ViewOf(ids.at("Local TargetList"))->GetListView();
    QAccessibleInterface* access = QAccessible::queryAccessibleInterface(&bar());
    ASSERT_EQ(access->childCount(), static_cast<int>(bar().ShownLists().size()));
    QAccessibleInterface* line = nullptr;
    for (int i = 0; i < access->childCount(); ++i) {
        if (access->child(i)->text(QAccessible::Name) == "Local TargetList")
            line = access->child(i);
    }
    ASSERT_TRUE(line && line->parent() == access);
    const auto summary = [line] { return line->text(QAccessible::Description); };
    const QString all = summary();
    EXPECT_TRUE(all.contains(QString(": %1, from").arg(list.RowCount()))) << qPrintable(all);

    list.SetFilterText('"' + list.firstChild()->CellText(0) + '"');
    ASSERT_EQ(list.ShownCount(), 1);
    QMenu menu;
    bar().AddActionsTo(menu, 0);
    for (QAction* action : menu.actions()) {
        if (action->text() == "&Only rows shown")
            action->trigger();
    }
    EXPECT_TRUE(Until([&] { return summary().contains(": 1, from"); }));
    list.SetFilterText("no such row");
    EXPECT_TRUE(Until([&] { return summary().startsWith("Nothing"); }));
    list.SetFilterText("");
    EXPECT_TRUE(Until([&] { return summary() == all; }));
    station.reset();
    open();
    bar().RememberLines();
    EXPECT_TRUE(bar().IsShownOnly());
}

TEST_F(FrequencyBars, IsFittedAfterAFileWasOpenedAndReadByAssistiveTools) {
    open();
    bar().SetRange(5e6, 9e6);
    ASSERT_TRUE(station->GetOpener().Open(sample("targets.ltl")));
    EXPECT_GT(bar().To() / bar().From(), 100);
    station->GetReceiver().Tune(6e6);
    QAccessibleInterface* access = QAccessible::queryAccessibleInterface(&bar());
    ASSERT_TRUE(access && access->valueInterface());
    EXPECT_EQ(access->text(QAccessible::Name), "Frequency bar");
    EXPECT_EQ(access->valueInterface()->currentValue().toDouble(), 6e6);
    EXPECT_EQ(access->valueInterface()->minimumValue().toDouble(), bar().From());
    EXPECT_TRUE(access->text(QAccessible::Description).contains("Local TargetList"));
    access->valueInterface()->setCurrentValue(7e6);
    EXPECT_EQ(tuned(), 7e6);
}

} // namespace
