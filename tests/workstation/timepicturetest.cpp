#include "workstation/timepicture.h"

#include "host/freqlist/freqstore.h"
#include "host/freqlist/vectorlistviewbase.h"
#include "host/gui/sortlistview.h"
#include "tests/workstation/stationfixture.h"
#include "workstation/fileopener.h"
#include "workstation/frequencybar.h"
#include "workstation/levelcolors.h"
#include "workstation/simulatedsearch.h"

#include <QApplication>
#include <QDockWidget>
#include <QMenu>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTest>

#include <cmath>
#include <gtest/gtest.h>

namespace {

constexpr qint64 Second = 1'000'000;
constexpr qint64 Begin = 1'700'000'000 * Second;

/// A sweep per second of `bins` bins of 1 kHz from 1 MHz.
Sweep sweepAt(qint64 second, size_t bins, const std::function<float(size_t bin)>& level) {
    Sweep sweep;
    sweep.time = Begin + second * Second;
    sweep.hops.push_back({1e6, 1e3, 0, bins});
    for (size_t bin = 0; bin < bins; ++bin)
        sweep.levels.push_back(level(bin));
    return sweep;
}

TEST(Waterfalls, ShowALevelWhereItIsHoweverFarTheyAreZoomed) {
    constexpr size_t Bins = 2000;
    constexpr qint64 Sweeps = 900;
    Waterfall waterfall;
    for (qint64 second = 0; second < Sweeps; ++second)
        waterfall.Add(sweepAt(second, Bins, [&](size_t bin) {
            return second == 300 && bin == 1500 ? -20.0F : bin < 1000 ? -100.0F : -90.0F;
        }));
    waterfall.Finish();
    EXPECT_EQ(waterfall.RowCount(), static_cast<size_t>(Sweeps));
    EXPECT_EQ(waterfall.LevelAt(1.5005e6, static_cast<double>(Begin)).has_value(), true);
    EXPECT_NEAR(*waterfall.LevelAt(2.5005e6, static_cast<double>(Begin + 300 * Second)), -20, 1);
    EXPECT_FALSE(waterfall.LevelAt(0.9e6, static_cast<double>(Begin)).has_value());
    const auto colorOf = [&](double level) {
        return LevelColors::ColorOf(level, waterfall.LowestLevel(), waterfall.HighestLevel());
    };
    const struct {
        double from, to, spanSeconds;
        int newestSecond;
    } views[] = {
        {1e6, 3e6, 900, 900}, {2.4e6, 2.6e6, 100, 350}, {2.5e6, 2.501e6, 4, 302}, {0.5e6, 20e6, 5000, 2000}};
    for (const auto& view : views) {
        SCOPED_TRACE(testing::Message() << view.from << ", " << view.spanSeconds << " s");
        FrequencyAxis frequencies;
        frequencies.SetWidth(300);
        ASSERT_TRUE(frequencies.SetRange(view.from, view.to));
        const TimeAxis times{static_cast<double>(Begin + view.newestSecond * Second),
                             view.spanSeconds * static_cast<double>(Second), 100};
        QImage picture(300, 100, QImage::Format_RGB32);
        picture.fill(Qt::white);
        waterfall.Draw(picture, frequencies, times);
        const int x = std::clamp(static_cast<int>(frequencies.MapToPixel(2.5005e6)), 0, 299);
        const int y =
            static_cast<int>(times.MapToPixel(static_cast<double>(Begin + 300 * Second + Second / 2)));
        EXPECT_EQ(picture.pixel(x, y), colorOf(*waterfall.LevelAt(2.5005e6, Begin + 300.5 * Second)))
            << "the one strong cell is seen at any scale";
        // All other pixels show the noise of their half, or nothing where nothing was received.
        std::map<QRgb, int> counts;
        for (int row = 0; row < 100; ++row) {
            for (int column = 0; column < 300; ++column)
                ++counts[picture.pixel(column, row)];
        }
        EXPECT_LE(counts.size(), 4u);
        EXPECT_EQ(counts.count(qRgb(255, 255, 255)), view.to > 3e6 ? 1u : 0u);
    }
}

TEST(Waterfalls, OfLongRecordingsKeepTheirStrongestLevels) {
    constexpr size_t Bins = 100'000;
    Waterfall waterfall;
    for (qint64 second = 0; second < 250; ++second)
        waterfall.Add(
            sweepAt(second, Bins, [&](size_t bin) { return bin == 7 && second == 123 ? 0.0F : -80.0F; }));
    waterfall.Finish();
    EXPECT_LE(waterfall.RowCount() * waterfall.BinCount(), Waterfall::MostCells);
    EXPECT_NEAR(*waterfall.LevelAt(1.0075e6, Begin + 123.5 * Second), 0, 1);
    EXPECT_NEAR(*waterfall.LevelAt(1.0075e6, Begin + 140.0 * Second), -80, 1);
    EXPECT_EQ(waterfall.Begin(), static_cast<double>(Begin));
    EXPECT_GE(waterfall.End(), static_cast<double>(Begin + 249 * Second));
}

class TimePictures : public Workstations {
protected:
    void open() {
        start({});
        picture = station->GetWindow().findChild<TimePicture*>();
        ASSERT_NE(picture, nullptr);
        dock = dynamic_cast<QDockWidget*>(picture->parentWidget());
        ASSERT_NE(dock, nullptr);
    }
    void show() {
        dock->show();
        QApplication::processEvents(); // it gets its size
    }
    static DetectionConventional record(double hertz, double bandwidth, short level, double from, double to) {
        DetectionConventional made;
        made.SetFrequency(hertz);
        made.SetBandwidth(bandwidth);
        made.SetLevel(level);
        made.SetStartTime(static_cast<double>(Begin) + from * Second);
        made.SetStopTime(static_cast<double>(Begin) + to * Second);
        return made;
    }
    QPoint placeOf(double hertz, double second) const {
        return picture->Plot().topLeft() + QPoint(static_cast<int>(picture->Frequencies().MapToPixel(hertz)),
                                                  static_cast<int>(picture->Times().MapToPixel(
                                                      static_cast<double>(Begin) + second * Second)));
    }
    QColor colorAt(double hertz, double second) {
        return picture->grab().toImage().pixelColor(placeOf(hertz, second));
    }

    TimePicture* picture = nullptr;
    QDockWidget* dock = nullptr;
};

TEST_F(TimePictures, ShowDetectionsWhereAndWhenTheyWereAndSelectTheirRows) {
    open();
    EXPECT_TRUE(dock->isHidden()) << "at first";
    show();
    station->GetSearch().Add({record(5e6, 200e3, 10, 0, 100), record(7e6, 200e3, 60, 50, 200)}, "one.csv");
    station->GetSearch().Add({record(9e6, 400e3, 35, 150, 180)}, "two.csv");
    station->GetWindow().GetBar()->SetRange(4e6, 11e6);
    EXPECT_EQ(picture->Frequencies().From(), 4e6) << "zooms with the bar";
    picture->SetTimes(Begin + 200.0 * Second, 250.0 * Second);
    picture->grab();
    const QColor base = picture->palette().color(QPalette::Base);
    EXPECT_EQ(colorAt(5e6, 50), QColor(LevelColors::ColorOf(10, 10, 60)));
    EXPECT_EQ(colorAt(7e6, 100), QColor(LevelColors::ColorOf(60, 10, 60)));
    EXPECT_EQ(colorAt(9e6, 165), QColor(LevelColors::ColorOf(35, 10, 60)));
    EXPECT_EQ(colorAt(5e6, 120), base) << "it had ended";
    EXPECT_EQ(colorAt(6e6, 90), base);

    QSignalSpy clicked(picture, &TimePicture::RecordClicked);
    QTest::mouseClick(picture, Qt::LeftButton, {}, placeOf(7e6, 100));
    ASSERT_EQ(clicked.size(), 1);
    QTabWidget* tabs = station->GetWindow().GetTabs();
    EXPECT_EQ(station->GetWindow().TabName(tabs->currentIndex()), "Detections");
    auto* view = tabs->currentWidget()->findChild<VectorListViewBase*>();
    ASSERT_NE(view, nullptr);
    EXPECT_TRUE(view->GetListView()->IsRowSelected(1));
    EXPECT_EQ(view->SelectedCount(), 1);
    SortListView& list = *view->GetListView();
    EXPECT_EQ(list.NoteOf(*list.currentItem()), "one.csv");
    EXPECT_TRUE(list.currentItem()->data(0, Qt::ToolTipRole).toString().endsWith("Source: one.csv"));

    picture->SetShownSource("two.csv");
    EXPECT_EQ(colorAt(7e6, 100), base);
    EXPECT_NE(colorAt(9e6, 165), base);
    EXPECT_EQ(station->GetSearch().SourceOf(2), "one.csv");
    EXPECT_EQ(station->GetSearch().SourceOf(3), "two.csv");
    EXPECT_EQ(station->GetSearch().SourceOf(4), QString());

    ASSERT_TRUE(picture->SavePicture(Path("picture.png")));
    EXPECT_EQ(QImage(Path("picture.png")).size(), picture->size());
    EXPECT_FALSE(picture->SavePicture(Path("none/picture.png")));
}

TEST_F(TimePictures, FollowTheNewestUntilTheyAreMovedAndMoveTheBar) {
    open();
    show();
    SimulatedSearch& search = station->GetSearch();
    const auto isNewest = [&](qint64 time) {
        return Until([&] {
            picture->grab();
            return picture->Times().newest == static_cast<double>(time);
        });
    };
    search.Simulate(60 * Second, Begin);
    EXPECT_TRUE(isNewest(Begin));
    search.Simulate(10 * Second, Begin + 20 * Second);
    EXPECT_TRUE(isNewest(Begin + 20 * Second));
    QTest::keyClick(picture, Qt::Key_Down);
    EXPECT_FALSE(picture->IsFollowing());
    const double newest = picture->Times().newest;
    search.Step(Begin + 40 * Second);
    picture->SetRange(2e6, 20e6);
    picture->grab();
    EXPECT_EQ(picture->Times().newest, newest);
    const double to = picture->Frequencies().To();
    QTest::keyClick(picture, Qt::Key_Plus);
    EXPECT_LT(picture->Frequencies().To(), to);
    EXPECT_EQ(station->GetWindow().GetBar()->To(), picture->Frequencies().To()) << "in both directions";
}

TEST_F(TimePictures, ShowAnOpenedSweepWithItsDetectionsFramed) {
    open();
    show();
    ASSERT_TRUE(station->GetOpener().Open(sample("sweep.csv")));
    EXPECT_NEAR(picture->Frequencies().From(), 118e6, 1);
    EXPECT_NEAR(picture->Frequencies().To(), 138e6, 1e5);
    EXPECT_EQ(station->GetSearch().SourceOf(1), "sweep.csv");
    const QImage image = picture->grab().toImage().copy(picture->Plot());
    int empty = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            empty += image.pixelColor(x, y) == picture->palette().color(QPalette::Base);
    }
    EXPECT_LT(empty, image.width() * image.height() / 20) << "levels are everywhere";
}

TEST_F(TimePictures, DetectionsAreClearedAndShownNewestFirst) {
    open();
    SimulatedSearch& search = station->GetSearch();
    search.Simulate(120 * Second, Begin);
    QTabWidget* tabs = station->GetWindow().GetTabs();
    for (int i = 0; i < tabs->count(); ++i) {
        if (station->GetWindow().TabName(i) == "Detections")
            tabs->setCurrentIndex(i);
    }
    auto* view = tabs->currentWidget()->findChild<VectorListViewBase*>();
    QAction* newest = nullptr;
    QAction* clear = nullptr;
    for (QAction* action : station->GetWindow().findChildren<QAction*>()) {
        newest = action->text() == "&Newest first" ? action : newest;
        clear = action->text() == "C&lear detections" ? action : clear;
    }
    ASSERT_TRUE(newest && clear);
    newest->trigger();
    const auto isNewestOnTop = [&] {
        const auto* list = value_cast<ValueList<DetectionConventional>>(
            Tree::Instance()->GetValue(SimulatedSearch::DetectionsPath));
        const SortListView& shown = *view->GetListView();
        return list->Size() > 0 && view->RowCount() == static_cast<int>(list->Size()) &&
               shown.topLevelItemCount() > 0 &&
               shown.topLevelItem(0)->text(4) ==
                   DetectionConventionalAdapter::GetStartTimeString(list->Elements().back());
    };
    EXPECT_TRUE(Until(isNewestOnTop));
    search.Simulate(120 * Second, Begin + 300 * Second);
    EXPECT_TRUE(Until(isNewestOnTop)) << "new ones come on top";
    clear->trigger();
    EXPECT_TRUE(Until([&] { return view->RowCount() == 0; }));
    search.Simulate(120 * Second, Begin + 600 * Second);
    EXPECT_TRUE(Until(isNewestOnTop)) << "and go on after a clearing";
}

} // namespace
