#include "host/freqlist/buttonbar.h"
#include "host/freqlist/pixstatevectorsearchmc.h"
#include "host/freqlist/valuelistmediator.h"
#include "host/valuetree/detection.h"
#include "host/valuetree/tree.h"
#include "tests/support/waiting.h"

#include <QLabel>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

#include <gtest/gtest.h>
#include <random>

namespace {

using Adapter = DetectionConventionalAdapter;
using List = ValueList<DetectionConventional>;

DetectionConventional detection(unsigned id, double hertz, short level) {
    DetectionConventional record;
    record.SetID(id);
    record.SetFrequency(hertz);
    record.SetBandwidth(3000);
    record.SetLevel(level);
    record.SetActive(true);
    return record;
}

/// Sorts by values where it has one for the column, and counts what it makes and takes.
class LevelView final : public VectorListView<DetectionConventional, Adapter> {
public:
    LevelView() : VectorListView(nullptr, "LevelView") {
        AddColumn("ID", "Name", _compStandardNumeric);
        AddColumn("Level", "Level", _compStandardNumeric);
        resize(300, 200);
    }

    bool Sort(int column, bool ascending) override {
        static const RecordSort::Key<DetectionConventional> byLevel =
            [](const DetectionConventional& record) { return double(record.GetLevel()); };
        return column == 1 ? SortByKey(column, ascending, byLevel) : VectorListView::Sort(column, ascending);
    }
    SortListViewItem* CreateItem(int row) override {
        ++made;
        return VectorListView::CreateItem(row);
    }
    int TakeRecords(const ValueBase* value, int atMost) override {
        ++taken;
        return VectorListView::TakeRecords(value, atMost);
    }
    std::optional<int> TakeChanges(const ValueBase* value, int atMost,
                                   std::vector<quint32>& edited) override {
        const std::optional<int> count = VectorListView::TakeChanges(value, atMost, edited);
        followed += count.has_value();
        return count;
    }
    std::vector<unsigned> Ids() {
        std::vector<unsigned> ids;
        for (const auto* record : AllRecords())
            ids.push_back(record->GetID());
        return ids;
    }
    std::vector<unsigned> SelectedIds() {
        std::vector<unsigned> ids;
        for (const auto* record : SelectedRecords())
            ids.push_back(record->GetID());
        return ids;
    }
    int CurrentRow() { return Item2Index(GetListView()->currentItem()); }
    int RowOfItem(int index) {
        return Item2Index(GetListView()->topLevelItem(GetScrollBar()->value() + index));
    }
    using VectorListView::Record;
    using VectorListViewBase::Item2Index;
    using VectorListViewBase::UpdateView;

    int made = 0;
    int taken = 0;
    int followed = 0;
};

class RecordViews : public testing::Test {
protected:
    RecordViews() {
        Tree::Instance()->MakeNode("/RecordViewTest");
        list = GetOrCreateValue<List>(Path);
    }
    ~RecordViews() override { removeList(); }

    void removeList() { Tree::Instance()->GetNode("/RecordViewTest")->DeleteValue("Detections"); }
    /// Records 0 to count - 1, at 1 kHz distance, levels repeating from 0 to 9.
    void fill(unsigned count) {
        for (unsigned id = 0; id < count; ++id)
            list->GetList().push_back(detection(id, 1e6 + 1000.0 * id, static_cast<short>(id % 10)));
        list->HasChanged(TChangeCode::ValueChanged);
    }
    void open(unsigned count) {
        fill(count);
        ASSERT_TRUE(view.Set_ValuePath(Path));
        view.show();
        page = view.GetScrollBar()->pageStep();
        ASSERT_GT(page, 3);
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(view.GetListView(), key, modifiers);
    }
    void click(int indexOnPage, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        SortListView* shown = view.GetListView();
        const QRect row =
            shown->visualItemRect(shown->topLevelItem(view.GetScrollBar()->value() + indexOnPage));
        QTest::mouseClick(shown->viewport(), Qt::LeftButton, modifiers, row.center());
    }

    static constexpr char Path[] = "/RecordViewTest/Detections";
    List* list;
    LevelView view;
    int page = 0;
};

TEST_F(RecordViews, MakeItemsForThePageOnlyAndScrollToAnyRecord) {
    open(20000);
    EXPECT_EQ(view.GetListView()->RowCount(), 20000);
    view.made = 0;
    view.GetScrollBar()->setValue(15000);
    EXPECT_LE(view.made, page + 1);
    EXPECT_EQ(view.RowOfItem(0), 15000);
    EXPECT_EQ(view.GetListView()->topLevelItem(15000)->text(0), "15000");
    EXPECT_EQ(view.GetListView()->firstChild(), nullptr) << "has no item";
    view.GetScrollBar()->setValue(view.GetScrollBar()->maximum());
    EXPECT_EQ(view.Item2Index(view.GetListView()->topLevelItem(19999)), 19999);
    EXPECT_LT(view.Item2Index(nullptr), 0);

    QWheelEvent wheel(QPointF(9, 9), view.mapToGlobal(QPointF(9, 9)), QPoint(), QPoint(0, 120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(view.GetListView()->viewport(), &wheel);
    EXPECT_LT(view.GetScrollBar()->value(), view.GetScrollBar()->maximum());

    view.resize(300, 400);
    EXPECT_GT(view.GetScrollBar()->pageStep(), page + 1);
}

TEST_F(RecordViews, KeysMoveThroughAllRecords) {
    open(5000);
    const struct {
        Qt::Key key;
        int row;
    } steps[] = {
        {Qt::Key_Down, 0},   {Qt::Key_Down, 1},    {Qt::Key_PageDown, 1 + page},
        {Qt::Key_Up, page},  {Qt::Key_PageUp, 0},  {Qt::Key_Up, 0},
        {Qt::Key_End, 4999}, {Qt::Key_Down, 4999}, {Qt::Key_Home, 0},
    };
    for (const auto& step : steps) {
        press(step.key);
        EXPECT_EQ(view.CurrentRow(), step.row) << "key " << step.key;
        EXPECT_EQ(view.SelectedIds(), std::vector<unsigned>{static_cast<unsigned>(step.row)});
    }
}

TEST_F(RecordViews, SelectionReachesBeyondThePageAndKeepsItsRecords) {
    open(5000);
    QSignalSpy changes(&view, &LevelView::selectionChanged);
    click(1);
    click(3, Qt::ControlModifier);
    EXPECT_EQ(changes.size(), 2);
    EXPECT_EQ(view.SelectedIds(), (std::vector<unsigned>{1, 3}));

    view.GetScrollBar()->setValue(2000);
    EXPECT_EQ(view.SelectedCount(), 2);
    view.GetScrollBar()->setValue(0);
    EXPECT_TRUE(view.GetListView()->topLevelItem(3)->isSelected());
    EXPECT_FALSE(view.GetListView()->topLevelItem(2)->isSelected());

    view.GetListView()->slotHeaderClicked(1);
    EXPECT_EQ(view.SelectedIds(), (std::vector<unsigned>{1, 3}));
    view.GetListView()->sortByColumn(-1, Qt::AscendingOrder);

    click(2);
    view.GetScrollBar()->setValue(3000);
    click(0, Qt::ShiftModifier);
    EXPECT_EQ(view.GetListView()->SelectedCount(), 2999);
    press(Qt::Key_End, Qt::ShiftModifier);
    EXPECT_EQ(view.SelectedCount(), 4998);
    press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(view.SelectedCount(), 5000);

    // Items of the page may be selected from outside, too.
    view.GetListView()->setSelected(view.GetListView()->topLevelItem(4999), false);
    EXPECT_EQ(view.SelectedCount(), 4999);
    view.GetListView()->QTreeWidget::topLevelItem(0)->setSelected(false);
    EXPECT_EQ(view.SelectedCount(), 4998) << "by Qt's own means";
}

TEST_F(RecordViews, TheCurrentRowIsASelectedOne) {
    open(5000);
    click(1);
    click(3, Qt::ControlModifier);
    EXPECT_EQ(view.CurrentRow(), 3);
    click(3, Qt::ControlModifier);
    EXPECT_EQ(view.CurrentRow(), 1);
    EXPECT_EQ(view.SelectedIds(), std::vector<unsigned>{1});
    press(Qt::Key_Down, Qt::ControlModifier); // the focus goes on alone
    EXPECT_EQ(view.SelectedIds(), std::vector<unsigned>{1});
    EXPECT_EQ(view.CurrentRow(), 1);
    press(Qt::Key_Space, Qt::ControlModifier);
    EXPECT_EQ(view.SelectedIds(), (std::vector<unsigned>{1, 4}));
    EXPECT_EQ(view.CurrentRow(), 4);
    view.GetListView()->setSelected(static_cast<SortListViewItem*>(view.GetListView()->topLevelItem(4)),
                                    false);
    EXPECT_EQ(view.CurrentRow(), 1);
    press(Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(view.GetScrollBar()->value(), view.GetScrollBar()->maximum());
    EXPECT_EQ(view.CurrentRow(), -1) << "on another page";
    view.GetScrollBar()->setValue(0);
    EXPECT_EQ(view.CurrentRow(), 1);
    click(1, Qt::ControlModifier);
    EXPECT_EQ(view.CurrentRow(), -1);
    press(Qt::Key_Down);
    EXPECT_EQ(view.SelectedIds(), std::vector<unsigned>{2}) << "keys go on from the focus";
    view.SelectAll();
    view.GetListView()->SetFilterText("7");
    QTRY_VERIFY(!view.IsFiltering());
    EXPECT_EQ(view.CurrentRow(), 0) << "the next that is shown";
    press(Qt::Key_Down);
    EXPECT_EQ(view.SelectedIds(), std::vector<unsigned>{17});
}

TEST_F(RecordViews, PausedRowsStandStillAndTheBarCountsWhatWaits) {
    open(2000);
    FreqStoreListViewButtonBar bar;
    bar.AttachView(&view);
    bar.OfferPause();
    const auto counts = [&] {
        QString text;
        for (const QLabel* label : bar.findChildren<QLabel*>())
            text += label->text();
        return text;
    };
    bar.UpdateModeSelection()->Select("Paused");
    EXPECT_TRUE(view.IsPaused());
    EXPECT_FALSE(view.IsLoading()) << "what was there is shown whole";
    EXPECT_TRUE(counts().contains("paused, 0 waiting")) << counts().toStdString();
    fill(10);
    QTRY_VERIFY(counts().contains("10 waiting"));
    list->GetList().front() = detection(77777, 1, 1);
    list->HasChanged(TChangeCode::ValueChanged);
    view.GetListView()->sortByColumn(1, Qt::DescendingOrder);
    view.GetListView()->SetFilterText("1");
    view.GetListView()->SetFilterText("");
    view.GetListView()->sortByColumn(-1, Qt::AscendingOrder);
    EXPECT_EQ(view.RecordCount(), 2000);
    EXPECT_EQ(view.GetListView()->firstChild()->text(0), "0");
    EXPECT_EQ(view.Ids().size(), 2010u) << "what is saved is all there is";
    EXPECT_EQ(view.WaitingCount(), 0);
    EXPECT_TRUE(view.IsPaused());
    list->GetList().clear();
    fill(5);
    EXPECT_EQ(view.WaitingCount(), 5);
    EXPECT_EQ(view.RecordCount(), 2010);
    QAction* pause = nullptr;
    for (QAction* action : bar.findChildren<QAction*>()) {
        if (action->text() == "Pause")
            pause = action;
    }
    ASSERT_TRUE(pause && pause->isChecked());
    pause->trigger();
    EXPECT_EQ(bar.UpdateModeSelection()->GetStringValue(), "Immediately");
    EXPECT_EQ(view.RecordCount(), 5);
    EXPECT_FALSE(counts().contains("waiting"));
    pause->trigger();
    EXPECT_TRUE(view.IsPaused());
    removeList();
    EXPECT_EQ(view.RecordCount(), 0) << "a list that ends is not shown";
    list = GetOrCreateValue<List>(Path);
}

TEST_F(RecordViews, SortACopyStablyAndTurnItRound) {
    EXPECT_FALSE(view.Sort(1, true));
    open(25);
    view.GetListView()->slotHeaderClicked(1);
    std::vector<unsigned> ids = view.Ids();
    EXPECT_EQ(std::vector<unsigned>(ids.begin(), ids.begin() + 4), (std::vector<unsigned>{0, 10, 20, 1}));
    EXPECT_FALSE(view.Sort(1, true));
    view.GetListView()->slotHeaderClicked(1);
    std::reverse(ids.begin(), ids.end());
    EXPECT_EQ(view.Ids(), ids);
    EXPECT_EQ(view.GetListView()->firstChild()->text(1), "9");

    // By the texts of a column, in the order of its compare function.
    view.GetListView()->sortByColumn(0, Qt::DescendingOrder);
    EXPECT_EQ(view.Ids().front(), 24u);
    view.GetListView()->sortByColumn(-1, Qt::AscendingOrder);
    EXPECT_EQ(view.Ids().front(), 0u);
    EXPECT_EQ(list->At(1).GetID(), 1u);
}

TEST_F(RecordViews, FilterNarrowsRowsAndSelection) {
    open(5000);
    press(Qt::Key_A, Qt::ControlModifier);
    view.GetListView()->SetFilterText("499");
    EXPECT_EQ(view.GetListView()->ShownCount(), 4) << "of a long list the first records are there at once";
    ASSERT_TRUE(Until([this] { return !view.IsFiltering(); }));
    EXPECT_EQ(view.GetListView()->ShownCount(), 15); // 499, 1499 to 4499, 4990 to 4999
    EXPECT_EQ(view.GetListView()->RowCount(), 5000);
    EXPECT_EQ(view.SelectedCount(), 15);
    press(Qt::Key_End);
    EXPECT_EQ(view.SelectedIds(), std::vector<unsigned>{4999});
    EXPECT_EQ(view.Ids().size(), 5000u);
    view.GetListView()->SetFilterText("");
    EXPECT_EQ(view.GetListView()->ShownCount(), 5000);
    view.SelectFrequency(1e6 + 1000.0 * 1234 + 300);
    EXPECT_EQ(view.SelectedIds(), std::vector<unsigned>{1234});
    EXPECT_EQ(view.CurrentRow(), 1234);
}

TEST_F(RecordViews, FilterIsRightWhateverHappensWhileItIsAtWork) {
    open(9000);
    const auto filtered = [this] { return Until([this] { return !view.IsFiltering(); }); };
    const auto shown = [this] { return view.GetListView()->ShownCount(); };

    view.GetListView()->SetFilterText("89");
    EXPECT_TRUE(view.IsFiltering());
    view.GetListView()->sortByColumn(0, Qt::DescendingOrder);
    EXPECT_EQ(view.Ids().front(), 8999u);
    ASSERT_TRUE(filtered());
    EXPECT_EQ(shown(), 279);
    press(Qt::Key_Home);
    EXPECT_EQ(view.SelectedIds(), std::vector<unsigned>{8999});
    view.GetListView()->SetFilterText("899");
    EXPECT_FALSE(view.IsFiltering()) << "more letters are looked for in what was found";
    EXPECT_EQ(shown(), 19);

    view.GetListView()->SetFilterText("0");
    EXPECT_TRUE(view.IsFiltering());
    press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_TRUE(view.IsFiltering()) << "nobody waits for it";
    ASSERT_TRUE(filtered());
    EXPECT_EQ(view.SelectedCount(), shown()) << "all of them, found or not yet";
    EXPECT_GT(view.SelectedCount(), 2000);

    view.GetListView()->SetFilterText("77");
    ASSERT_TRUE(filtered());
    const int before = shown();
    view.GetListView()->SetFilterText("");
    view.GetListView()->SetFilterText("77");
    EXPECT_TRUE(view.IsFiltering());
    list->PushBack(detection(777777, 5e6, 0));
    ASSERT_TRUE(Until([&] { return view.RecordCount() == 9001 && !view.IsFiltering(); }));
    EXPECT_EQ(shown(), before + 1);
    view.GetListView()->SetFilterText("");
    EXPECT_EQ(shown(), 9001);
}

TEST_F(RecordViews, ManyChangesAreOneRefresh) {
    open(10);
    view.GetListView()->slotHeaderClicked(1);
    const int before = view.taken;
    for (unsigned id = 10; id < 60; ++id)
        list->PushBack(detection(id, 5e6, 0));
    EXPECT_EQ(view.RecordCount(), 10);
    ASSERT_TRUE(Until([this] { return view.RecordCount() == 60; }));
    EXPECT_EQ(view.followed, 1);
    EXPECT_EQ(view.taken, before) << "the old records were taken again";
    EXPECT_EQ(view.Ids()[1], 10u) << "new records take their place in the order";
}

TEST_F(RecordViews, FollowWhatComesAndChangesAsIfTheyTookAllAnew) {
    open(300);
    LevelView whole; // takes the list anew each time
    const struct {
        int column;
        bool ascending;
        const char* filter;
    } ways[] = {{1, true, ""}, {1, false, ""}, {1, false, "7"}, {-1, true, "3"}, {0, true, ""}};
    std::mt19937 random(5);
    for (const auto& way : ways) {
        SCOPED_TRACE(testing::Message() << "column " << way.column << " filter " << way.filter);
        view.GetListView()->SetFilterText(way.filter);
        view.GetListView()->sortByColumn(way.column,
                                         way.ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
        for (int round = 0; round < 5; ++round) {
            std::list<DetectionConventional> more;
            for (unsigned i = 0; i < 20; ++i)
                more.push_back(detection(static_cast<unsigned>(list->Size()) + i, 2e6, short(random() % 12)));
            list->Append(std::move(more));
            for (int i = 0; i < 10; ++i) {
                const auto place = static_cast<long>(random() % list->Size());
                list->Edit(static_cast<quint64>(place), list->At(place), [&](DetectionConventional& record) {
                    record.SetLevel(static_cast<short>(random() % 12));
                });
            }
            list->HasChanged(TChangeCode::ValueChanged);
            view.UpdateView();
            ASSERT_TRUE(whole.Set_ValuePath(Path));
            whole.GetListView()->SetFilterText(way.filter);
            whole.GetListView()->sortByColumn(way.column,
                                              way.ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
            ASSERT_EQ(view.Ids(), whole.Ids());
            ASSERT_EQ(view.RowCount(), whole.RowCount());
            for (int row = 0; row < view.RowCount(); ++row)
                ASSERT_EQ(view.Record(row)->GetLevel(), whole.Record(row)->GetLevel());
        }
    }
    EXPECT_EQ(view.followed, 20) << "all ways but the one by texts";
}

TEST_F(RecordViews, KeepFollowingHoweverManyRecordsHaveChangedInAll) {
    open(10);
    constexpr int Rounds = 100;
    for (int round = 1; round <= Rounds; ++round) {
        for (int i = 0; i < 200; ++i)
            list->Edit(3, list->At(3), [&](auto& record) { record.SetLevel(static_cast<short>(round)); });
        list->HasChanged(TChangeCode::ValueChanged);
        view.UpdateView();
        ASSERT_EQ(view.followed, round);
        ASSERT_EQ(view.Record(3)->GetLevel(), round);
    }
}

TEST_F(RecordViews, OpenWithTheHeadOfALongListAndTakeTheRestAfterwards) {
    open(50000);
    EXPECT_EQ(view.RecordCount(), 50000);
    EXPECT_TRUE(view.IsLoading());
    const int made = view.made;
    ASSERT_TRUE(Until([this] { return view.followed == 1; }));
    EXPECT_TRUE(view.IsLoading()) << "a part in each turn";
    EXPECT_EQ(view.made, made) << "the page stands";
    list->PushBack(detection(777, 5e6, 0));
    list->Edit(3, *std::next(list->Elements().begin(), 3), [](auto& record) { record.SetID(33); });
    list->Edit(49999, *std::prev(list->Elements().end(), 2), [](auto& record) { record.SetID(44); });
    list->HasChanged(TChangeCode::ValueChanged);
    ASSERT_TRUE(Until([this] { return !view.IsLoading(); }));
    EXPECT_EQ(view.taken, 1) << "what was taken stays";
    const std::vector<unsigned> ids = view.Ids();
    ASSERT_EQ(ids.size(), 50001u);
    EXPECT_EQ(ids[3], 33u);
    EXPECT_EQ(ids[25000], 25000u);
    EXPECT_EQ(ids[49999], 44u);
    EXPECT_EQ(ids[50000], 777u);

    list->GetList().resize(30000);
    list->HasChanged(TChangeCode::ValueChanged);
    ASSERT_TRUE(Until([this] { return view.RecordCount() == 30000; }));
    EXPECT_EQ(view.taken, 2);
    EXPECT_EQ(view.Ids().back(), 29999u);
}

TEST_F(RecordViews, FollowTheirListOnlyWhileConnected) {
    EXPECT_FALSE(view.Set_ValuePath("/RecordViewTest/Nothing"));
    open(3000);
    view.SetConnected(false);
    fill(5);
    EXPECT_EQ(view.Ids().size(), 3000u);
    EXPECT_FALSE(list->HasObservers());
    view.SetConnected(true);
    EXPECT_EQ(view.RecordCount(), 3005);

    press(Qt::Key_End);
    removeList();
    EXPECT_EQ(view.RecordCount(), 0);
    EXPECT_EQ(view.SelectedCount(), 0);
    EXPECT_EQ(view.GetListView()->topLevelItemCount(), 0);
    press(Qt::Key_Home);
    EXPECT_FALSE(view.Sort(0, true));
}

/// The view over mediators, with the columns of a detection.
class MediatorView final : public ValueListMediatorListView<DetectionConventional, Adapter> {
public:
    MediatorView() : ValueListMediatorListView(nullptr, 7, "MediatorView") {
        for (const char* field :
             {"Frequency", "Name", "Bandwidth", "Level", "Type", "From", "Until", "Colour"})
            AddColumn(field, field, _compNumericWithSuffix);
        resize(600, 200);
    }
};

TEST_F(RecordViews, RowsCarryMediatorsWithTheTextsOfTheirFields) {
    list->PushBack(detection(1, 31e6, 20));
    list->PushBack(detection(2, 7055000, -3));
    MediatorView mediators;
    ASSERT_TRUE(mediators.Set_ValuePath(Path));
    mediators.show();
    mediators.GetListView()->slotHeaderClicked(0);
    QStringList texts;
    for (int column = 0; column < 8; ++column)
        texts << mediators.GetListView()->firstChild()->text(column);
    EXPECT_EQ(texts, QStringList({"7055.000 kHz", "2", "3.000 kHz", "-3", "a",
                                  Adapter::GetStartTimeString(list->At(1)), "", ""}));
    EXPECT_EQ(mediators.GetID(), 7u);

    mediators.SelectAll();
    auto selected = mediators.SelectedMediators();
    ASSERT_EQ(selected.size(), 2u);
    list->Clear();
    double hertz = 0;
    EXPECT_TRUE(selected[1].GetFrequency(hertz, 0));
    EXPECT_EQ(hertz, 31e6);
    EXPECT_TRUE(selected[1].GetBandwidth(hertz, 0));
    EXPECT_EQ(hertz, 3000);

    double tuned = 0;
    FreqStore::Instance().SetTuner(
        [&](IFrequencyStoreItem& item, QWidget*, bool) { item.GetFrequency(tuned, 0); });
    emit mediators.GetListView()->doubleClicked(mediators.GetListView()->firstChild());
    FreqStore::Instance().SetTuner(nullptr);
    EXPECT_EQ(tuned, 7055000);
}

TEST_F(RecordViews, BarLineMarksEveryRecordOnceItIsVisible) {
    struct KilohertzPerPixel : IHasHMap {
        double MapToPixel(double hertz) const override { return (hertz - 1e6) / 1000; }
        double MapToFrequency(double pixel) const override { return 1e6 + pixel * 1000; }
    } map;
    fill(10);
    PixStateVectorSearchMC<DetectionConventional> line(0);
    line.SetHMapping(&map, 50);
    line.Init(Path);
    const auto marked = [&] {
        line.Refresh();
        int count = 0;
        for (size_t pixel = 0; pixel < line.size(); ++pixel)
            count += (line[pixel].flags & PixState::Centre) != 0;
        return count;
    };
    EXPECT_EQ(marked(), 0);
    line.SetVisible(true);
    EXPECT_EQ(marked(), 10);
    EXPECT_EQ(line.ItemText(line[4].lastItem), "4");
    list->PushBack(detection(77, 1e6 + 40500, 1));
    EXPECT_EQ(marked(), 11);
    EXPECT_EQ(line.ItemFrequency(line[40].lastItem), 1e6 + 40500);
    view.Set_ValuePath(Path);
    view.GetListView()->SetFilterText("77");
    line.SetShownOnly(view.ShownEntries());
    EXPECT_EQ(marked(), 1);
    EXPECT_TRUE(line[40].flags & PixState::Centre);
    view.GetListView()->SetFilterText("");
    line.SetShownOnly(view.ShownEntries());
    EXPECT_EQ(marked(), 11);
    removeList();
    EXPECT_FALSE(line.HasObservable());
    EXPECT_EQ(marked(), 0);
}

} // namespace
