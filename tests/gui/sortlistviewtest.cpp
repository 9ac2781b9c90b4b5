#include "host/gui/sortlistview.h"

#include "tests/support/waiting.h"

#include <QApplication>
#include <QHeaderView>
#include <QMenu>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>
#include <random>

namespace {

/// A row that makes its texts when it is asked for them, as the rows of the lists do.
class LazyRow : public SortListViewItem {
public:
    LazyRow(int number, SortListView& list, int& fills)
        : SortListViewItem(nullptr, QStringList(), false), Number(number), m_list(list), m_fills(fills) {}

    int Number;

protected:
    void Fill() override {
        ++m_fills;
        setText(0, QStringLiteral("%1 kHz").arg(Number));
        setText(1, QStringLiteral("station %1").arg(Number % 7));
        m_list.sort(); // as a mediator does after it wrote its cells
    }

private:
    SortListView& m_list;
    int& m_fills;
};

int compareCalls = 0;
int countingCompare(const QString& a, const QString& b) {
    ++compareCalls;
    return a.compare(b);
}

class List : public testing::Test {
protected:
    List() {
        view.addColumn("Frequency");
        view.addColumn("Comment");
        view.setColumnAlignment(0, 2);
        view.SetCompareFunctionLength(1);
        view.SetCompareFunction(0, _compNumericWithSuffix);
        view.SetCompareFunction(1, _compStandardString);
        view.resize(400, 300);
    }

    void addLazy(const std::vector<int>& numbers) {
        std::vector<SortListViewItem*> rows;
        for (const int number : numbers)
            rows.push_back(new LazyRow(number, view, fills));
        view.AddItems(rows);
    }
    void addMany(int count) {
        std::vector<int> numbers(static_cast<size_t>(count));
        for (int i = 0; i < count; ++i)
            numbers[static_cast<size_t>(i)] = i * 7919 % count;
        addLazy(numbers);
    }
    std::vector<int> order() {
        std::vector<int> numbers;
        for (SortListViewItemIterator it(&view); it.current(); ++it)
            numbers.push_back(static_cast<LazyRow*>(it.current())->Number);
        return numbers;
    }
    SortListViewItem* row(int number) {
        for (SortListViewItemIterator it(&view); it.current(); ++it) {
            if (static_cast<LazyRow*>(it.current())->Number == number)
                return it.current();
        }
        return nullptr;
    }
    std::vector<int> selected() {
        std::vector<int> numbers;
        for (SortListViewItemIterator it(&view, SortListViewItemIterator::Selected); it.current(); ++it)
            numbers.push_back(static_cast<LazyRow*>(it.current())->Number);
        return numbers;
    }
    void show() {
        view.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&view, Patience));
        view.grab();
    }
    using Numbers = std::vector<int>;

    SortListView view;
    int fills = 0;
};

TEST_F(List, FillsOnlyRowsThatAreSeen) {
    addMany(100000);
    EXPECT_EQ(fills, 0);
    show();
    EXPECT_GT(fills, 3);
    EXPECT_LT(fills, 60);
    EXPECT_EQ(view.FillCount(), static_cast<quint64>(fills));
    const int before = fills;
    view.verticalScrollBar()->setValue(view.verticalScrollBar()->maximum());
    view.grab();
    EXPECT_GT(fills, before);
    EXPECT_LT(fills, before + 60);
}

TEST_F(List, AsksAStaleRowAgainOnlyWhenItIsSeen) {
    addMany(1000);
    show();
    const int before = fills;
    view.topLevelItem(900)->setText(0, "unseen");
    static_cast<SortListViewItem*>(view.topLevelItem(900))->MarkStale();
    auto* seen = view.firstChild();
    static_cast<LazyRow*>(seen)->Number = 4711;
    seen->MarkStale();
    EXPECT_FALSE(seen->IsFilled());
    view.RowsChanged();
    view.grab();
    EXPECT_EQ(fills, before + 1);
    EXPECT_EQ(seen->text(0), "4711 kHz");
}

TEST_F(List, RightAlignedColumnsAreRightAligned) {
    addMany(1);
    const auto alignment = [this](int column) {
        return Qt::Alignment(view.firstChild()->data(column, Qt::TextAlignmentRole).toInt());
    };
    EXPECT_TRUE(alignment(0) & Qt::AlignRight);
    EXPECT_TRUE(alignment(1) & Qt::AlignLeft);
}

TEST_F(List, HeaderClicksSortAscendingDescendingAndNotAtAll) {
    view.setShowSortIndicator(true);
    addLazy({30, 4, 200});
    show();
    const auto click = [this] {
        const QPoint position(view.header()->sectionPosition(0) + 20, view.header()->height() / 2);
        QTest::mouseClick(view.header()->viewport(), Qt::LeftButton, {}, position);
    };
    click();
    EXPECT_EQ(order(), (Numbers{4, 30, 200}));
    EXPECT_EQ(view.header()->sortIndicatorOrder(), Qt::AscendingOrder);
    EXPECT_TRUE(view.header()->isSortIndicatorShown());
    click();
    EXPECT_EQ(order(), (Numbers{200, 30, 4}));
    EXPECT_EQ(view.header()->sortIndicatorOrder(), Qt::DescendingOrder);
    click();
    EXPECT_EQ(order(), (Numbers{30, 4, 200}));
    EXPECT_FALSE(view.header()->isSortIndicatorShown());
    EXPECT_EQ(view.SortColumn(), -1);
}

TEST_F(List, EqualRowsKeepTheirOrderInEitherDirection) {
    addLazy({14, 7, 1, 0, 8}); // comments: station 0, 0, 1, 0, 1
    view.sortByColumn(1, Qt::AscendingOrder);
    EXPECT_EQ(order(), (Numbers{14, 7, 0, 1, 8}));
    view.sortByColumn(1, Qt::DescendingOrder);
    EXPECT_EQ(order(), (Numbers{1, 8, 14, 7, 0}));
}

TEST_F(List, EmptyCellsStayLastInEitherDirection) {
    new SortListViewItem(&view, {"", "a"}, false);
    new SortListViewItem(&view, {"2 kHz", "b"}, false);
    new SortListViewItem(&view, {"1 MHz", "c"}, false);
    for (const auto direction : {Qt::AscendingOrder, Qt::DescendingOrder}) {
        view.sortByColumn(0, direction);
        EXPECT_EQ(view.topLevelItem(2)->text(1), "a");
    }
}

TEST_F(List, ColumnsOfAGroupAreShownAndHiddenTogether) {
    while (view.columnCount() < 4)
        view.addColumn("Column " + QString::number(view.columnCount()));
    view.SetColumnGroup(1, "Time");
    view.SetColumnGroup(2, "Time");
    QMenu menu;
    view.AddColumnActionsTo(menu);
    EXPECT_EQ(menu.actions().at(0)->text(), view.ColumnTitles().at(0)) << "of no group";
    const QMenu* group = menu.actions().at(1)->menu();
    ASSERT_TRUE(group && group->title() == "Time");
    QAction* all = group->actions().at(0);
    EXPECT_TRUE(all->isChecked());
    all->trigger();
    const auto hidden = [this] {
        QList<int> columns;
        for (int column = 0; column < view.columnCount(); ++column) {
            if (view.isColumnHidden(column))
                columns << column;
        }
        return columns;
    };
    EXPECT_EQ(hidden(), (QList<int>{1, 2}));

    for (int column = 3; column < view.columnCount(); ++column)
        view.setColumnHidden(column, true);
    view.setColumnHidden(1, false);
    view.setColumnHidden(2, false);
    view.setColumnHidden(0, true);
    QMenu last;
    view.AddColumnActionsTo(last);
    EXPECT_FALSE(last.actions().at(1)->menu()->actions().at(0)->isEnabled()) << "something stays";
    EXPECT_TRUE(last.actions().at(1)->menu()->actions().at(2)->isEnabled());
}

TEST_F(List, SortsOncePerTurnHoweverOftenAsked) {
    view.SetCompareFunction(1, countingCompare);
    addLazy({3, 1, 2});
    view.sortByColumn(1, Qt::AscendingOrder);
    QApplication::processEvents();
    const auto callsOf = [](const auto& work) {
        compareCalls = 0;
        work();
        return compareCalls;
    };
    const int one = callsOf([this] { view.sortByColumn(1, Qt::AscendingOrder); });
    EXPECT_GT(one, 0);
    const int many = callsOf([this] {
        for (int i = 0; i < 50; ++i) {
            row(1 + i % 3)->MarkStale();
            view.sort();
        }
        EXPECT_EQ(compareCalls, 0) << "sorted at once";
        QApplication::processEvents();
    });
    EXPECT_EQ(many, one);
}

TEST_F(List, ARowThatAsksToSortWhileItFillsIsNotHeard) {
    view.SetCompareFunction(1, countingCompare);
    addLazy({3, 1, 2});
    view.sortByColumn(1, Qt::AscendingOrder);
    EXPECT_EQ(fills, 3);
    compareCalls = 0;
    QApplication::processEvents();
    show();
    QApplication::processEvents();
    EXPECT_EQ(compareCalls, 0);
}

TEST_F(List, NewRowsAreSortedInAtTheNextTurn) {
    view.sortByColumn(0, Qt::AscendingOrder);
    addLazy({30, 4});
    addLazy({20});
    QApplication::processEvents();
    EXPECT_EQ(order(), (Numbers{4, 20, 30}));
}

TEST_F(List, RowsThatComeOrChangeGoToTheirPlacesAmongTheOthers) {
    std::mt19937 random(11);
    addMany(1000);
    for (const int column : {0, 1}) {
        for (const Qt::SortOrder direction : {Qt::AscendingOrder, Qt::DescendingOrder}) {
            view.sortByColumn(column, direction);
            std::vector<SortListViewItem*> marked;
            view.clearSelection();
            for (const int i : {3, 4, 700})
                marked.push_back(view.topLevelItem(i));
            view.setCurrentItem(marked[0]);
            for (SortListViewItem* each : marked)
                each->setSelected(true);
            for (int round = 0; round < 20; ++round) {
                for (unsigned i = 0; i < 6; ++i) {
                    // Now and then the marked rows themselves, and neighbours.
                    auto* changed = static_cast<LazyRow*>(
                        i < 2 ? marked[random() % 3]
                              : view.topLevelItem(static_cast<int>(random() % 5 + (i < 4 ? 0 : 300))));
                    changed->Number = static_cast<int>(random() % 1500);
                    changed->MarkStale();
                }
                if (round % 3 != 0)
                    addLazy({static_cast<int>(random() % 1500), 1, 1});
                view.sort();
                QCoreApplication::processEvents();
                const auto compare = column == 0 ? _compNumericWithSuffix : _compStandardString;
                for (int i = 1; i < view.topLevelItemCount(); ++i) {
                    const int sign =
                        compare(view.topLevelItem(i - 1)->text(column), view.topLevelItem(i)->text(column));
                    ASSERT_TRUE(direction == Qt::AscendingOrder ? sign <= 0 : sign >= 0)
                        << "column " << column << ", round " << round << ", row " << i;
                }
                EXPECT_EQ(view.FocusItem(), marked[0]);
                EXPECT_EQ(view.SelectedCount(), 3);
                for (const SortListViewItem* each : marked)
                    EXPECT_TRUE(each->isSelected());
            }
        }
    }
    EXPECT_EQ(view.RowCount(), view.topLevelItemCount());
}

TEST_F(List, AFewRowsAreSortedInWithoutComparingAll) {
    view.SetCompareFunction(0, countingCompare);
    addMany(4000);
    view.sortByColumn(0, Qt::AscendingOrder);
    compareCalls = 0;
    addLazy({5, 500, 1999});
    static_cast<LazyRow*>(view.topLevelItem(17))->Number = 3000;
    static_cast<LazyRow*>(view.topLevelItem(17))->MarkStale();
    QCoreApplication::processEvents();
    EXPECT_GT(compareCalls, 0);
    EXPECT_LT(compareCalls, 200);
    // A row with rows of its own keeps them open.
    SortListViewItem* parent = row(2000);
    parent->addChild(new LazyRow(1, view, fills));
    parent->setOpen(true);
    static_cast<LazyRow*>(parent)->Number = 1;
    parent->MarkStale();
    view.sort();
    QCoreApplication::processEvents();
    EXPECT_TRUE(parent->isExpanded());
    EXPECT_LT(view.indexOfTopLevelItem(parent), 3);
}

TEST_F(List, SortingWaitsUntilItIsAllowed) {
    addLazy({2, 1});
    view.sortByColumn(0, Qt::AscendingOrder);
    view.AllowSort(false);
    addLazy({0});
    QApplication::processEvents();
    EXPECT_EQ(order(), (Numbers{1, 2, 0}));
    view.AllowSort(true);
    QApplication::processEvents();
    EXPECT_EQ(order(), (Numbers{0, 1, 2}));
}

TEST_F(List, SortingKeepsSelectionAndCurrentRow) {
    addMany(50);
    view.setCurrentItem(row(17));
    view.clearSelection();
    for (const int number : {3, 17, 18, 40})
        view.setSelected(row(number), true);
    view.sortByColumn(0, Qt::DescendingOrder);
    EXPECT_EQ(selected(), (Numbers{40, 18, 17, 3}));
    EXPECT_EQ(view.SelectedCount(), 4);
    EXPECT_EQ(view.currentItem(), row(17));
}

TEST_F(List, RowsThatTheFilterHidAreNotSelectedWhenTheyComeBack) {
    addLazy({1, 2, 70});
    view.selectAll();
    view.SetFilterText("7");
    view.SetFilterText("");
    EXPECT_EQ(selected(), (Numbers{70}));
    view.clearSelection();
    view.sortByColumn(0, Qt::DescendingOrder);
    EXPECT_EQ(selected(), Numbers());
}

/// What is done to the list, and the rows that are selected and current after it; none is -1.
struct CurrentStep {
    const char* what;
    std::function<void(SortListView&)> act;
    std::vector<int> selected;
    int current;
};

TEST_F(List, TheCurrentRowIsASelectedOneHoweverTheSelectionChanges) {
    addLazy({0, 1, 2, 3, 4, 5, 6, 7, 8, 9});
    show();
    const auto click = [](int index, Qt::KeyboardModifiers modifiers) {
        return [=](SortListView& list) {
            const QPoint place = list.visualItemRect(list.topLevelItem(index)).center();
            QTest::mouseClick(list.viewport(), Qt::LeftButton, modifiers, place);
        };
    };
    const auto press = [](Qt::Key key, Qt::KeyboardModifiers modifiers) {
        return [=](SortListView& list) { QTest::keyClick(&list, key, modifiers); };
    };
    const auto remove = [](std::vector<int> gone) {
        return [gone](SortListView& list) {
            list.RemoveItems([&](const SortListViewItem& item) {
                return std::count(gone.begin(), gone.end(), static_cast<const LazyRow&>(item).Number) > 0;
            });
        };
    };
    const CurrentStep steps[] = {
        {"nothing yet", [](SortListView&) {}, {}, -1},
        {"click", click(1, Qt::NoModifier), {1}, 1},
        {"one more", click(4, Qt::ControlModifier), {1, 4}, 4},
        {"a third", click(5, Qt::ControlModifier), {1, 4, 5}, 5},
        {"the last off again", click(5, Qt::ControlModifier), {1, 4}, 4},
        {"one off that had no focus", click(4, Qt::ControlModifier), {1}, 1},
        {"the last off", click(1, Qt::ControlModifier), {}, -1},
        {"keys go on from the focus", press(Qt::Key_Down, Qt::NoModifier), {2}, 2},
        {"the focus alone", press(Qt::Key_Down, Qt::ControlModifier), {2}, 2},
        {"further", press(Qt::Key_Down, Qt::ControlModifier), {2}, 2},
        {"selects there", press(Qt::Key_Space, Qt::ControlModifier), {2, 4}, 4},
        {"and deselects", press(Qt::Key_Space, Qt::ControlModifier), {2}, 2},
        {"extends", press(Qt::Key_Down, Qt::ShiftModifier), {2, 4, 5}, 5},
        {"from outside", [](SortListView& l) { l.setSelected(l.topLevelItem(5), false); }, {2, 4}, 4},
        {"a sort", [](SortListView& l) { l.sortByColumn(0, Qt::DescendingOrder); }, {4, 2}, 4},
        {"and back", [](SortListView& l) { l.sortByColumn(-1, Qt::AscendingOrder); }, {2, 4}, 4},
        {"all", press(Qt::Key_A, Qt::ControlModifier), {0, 1, 2, 3, 4, 5, 6, 7, 8, 9}, 5},
        {"the focused one goes", remove({5}), {0, 1, 2, 3, 4, 6, 7, 8, 9}, 6},
        {"it is hidden", [](SortListView& l) { l.SetFilterText("8 kHz"); }, {8}, 8},
        {"it is shown", [](SortListView& l) { l.SetFilterText(""); }, {8}, 8},
        {"nothing", [](SortListView& l) { l.clearSelection(); }, {}, -1},
        {"keys go on there", press(Qt::Key_Up, Qt::NoModifier), {7}, 7},
        {"gone with the rest below", remove({7, 8, 9}), {}, -1},
        {"keys go on at the end", press(Qt::Key_Up, Qt::NoModifier), {4}, 4},
        {"all gone", remove({0, 1, 2, 3, 4, 6}), {}, -1},
    };
    for (const CurrentStep& step : steps) {
        step.act(view);
        EXPECT_EQ(selected(), step.selected) << step.what;
        const auto* current = static_cast<const LazyRow*>(view.currentItem());
        EXPECT_EQ(current ? current->Number : -1, step.current) << step.what;
    }
}

TEST_F(List, SortingKeepsOpenRowsOpen) {
    addLazy({2, 1});
    row(2)->addChild(new LazyRow(20, view, fills));
    row(2)->setOpen(true);
    view.sortByColumn(0, Qt::AscendingOrder);
    EXPECT_TRUE(row(2)->isExpanded());
    EXPECT_FALSE(row(1)->isExpanded());
}

TEST_F(List, RemovesManyRowsAtOnceAndKeepsTheOthersSelected) {
    addMany(1000);
    view.selectAll();
    QSignalSpy counts(&view, &SortListView::countsChanged);
    view.RemoveItems(
        [](const SortListViewItem& item) { return static_cast<const LazyRow&>(item).Number % 10 != 0; });
    EXPECT_EQ(view.RowCount(), 100);
    EXPECT_EQ(view.SelectedCount(), 100);
    EXPECT_GE(counts.count(), 1);
    EXPECT_LE(fills, 1) << "rows are filled to be removed"; // one may tell the height of all
    view.RemoveItems([](const SortListViewItem&) { return true; });
    EXPECT_EQ(view.RowCount(), 0);
    EXPECT_EQ(view.currentItem(), nullptr);
}

TEST_F(List, FilterShowsRowsWithTheTextInAnyCell) {
    addLazy({70, 1, 2, 71});
    view.SetFilterText("STATION 1");
    EXPECT_EQ(order(), (Numbers{1, 71}));
    EXPECT_EQ(view.ShownCount(), 2);
    EXPECT_EQ(view.RowCount(), 4);
    view.SetFilterText("7");
    EXPECT_EQ(order(), (Numbers{70, 71}));
    view.SetFilterText("71");
    EXPECT_EQ(order(), (Numbers{71}));
    addLazy({5, 712});
    EXPECT_EQ(order(), (Numbers{71, 712})) << "new rows are filtered, too";
    view.RemoveItems(
        [](const SortListViewItem& item) { return static_cast<const LazyRow&>(item).Number == 2; });
    view.SetFilterText("");
    EXPECT_EQ(order(), (Numbers{70, 1, 71, 5, 712})) << "the order of the file";
}

TEST_F(List, LongListIsFilteredInTurnsAndIsRightWhateverHappensMeanwhile) {
    const auto filtered = [this] { return Until([this] { return !view.IsFiltering(); }); };
    const auto ascending = [this] {
        const Numbers numbers = order();
        return std::is_sorted(numbers.begin(), numbers.end());
    };
    addMany(20000);
    show();
    view.sortByColumn(0, Qt::AscendingOrder);
    view.selectAll();
    view.SetFilterText("frequency:7 \"station 0\" or 19999");
    EXPECT_TRUE(view.IsFiltering());
    EXPECT_GT(view.ShownCount(), 0) << "the first are there at once";
    EXPECT_EQ(view.RowCount(), 20000);
    ASSERT_TRUE(filtered());
    EXPECT_EQ(order().back(), 19999);
    EXPECT_TRUE(ascending());
    EXPECT_EQ(view.SelectedCount(), view.ShownCount());

    const std::pair<const char*, std::function<void()>> events[] = {
        {"sorted", [this] { view.sortByColumn(0, Qt::DescendingOrder); }},
        {"added", [this] { addLazy({70000}); }},
        {"removed",
         [this] {
             view.RemoveItems([](const SortListViewItem& item) {
                 return static_cast<const LazyRow&>(item).Number == 70000;
             });
         }},
        {"taken", [this] { delete view.takeItem(row(7)); }},
        {"all selected",
         [this] {
             view.selectAll();
             EXPECT_TRUE(view.IsFiltering()) << "nobody waits for it";
         }},
        {"another filter", [this] { view.SetFilterText("8"); }},
    };
    bool allSelected = false;
    view.clearSelection();
    bool stayed = true;
    for (const auto& [name, happens] : events) {
        SCOPED_TRACE(name);
        view.SetFilterText("");
        view.sortByColumn(0, Qt::AscendingOrder);
        const int rows = view.RowCount();
        view.SetFilterText("7");
        EXPECT_TRUE(view.IsFiltering());
        happens();
        ASSERT_TRUE(filtered());
        const int changed = name == std::string("added") ? 1 : name[0] == 'r' || name[0] == 't' ? -1 : 0;
        EXPECT_EQ(view.RowCount(), rows + changed);
        const std::string digit = view.FilterText() == "7" ? "7" : "8";
        for (const int number : order())
            EXPECT_NE(std::to_string(number).find(digit), std::string::npos);
        EXPECT_GT(view.ShownCount(), 1900);
        if (name == std::string("all selected"))
            allSelected = view.SelectedCount() == view.ShownCount();
        view.SetFilterText("");
        EXPECT_EQ(view.ShownCount(), rows + changed);
        if (name != std::string("sorted"))
            stayed = stayed && ascending();
    }
    EXPECT_TRUE(allSelected);
    EXPECT_TRUE(stayed) << "in order";
}

TEST_F(List, RowIsShownInSpiteOfTheFilter) {
    addLazy({71, 3});
    SortListViewItem* hidden = row(3);
    view.SetFilterText("7");
    EXPECT_EQ(order(), (Numbers{71}));
    EXPECT_TRUE(view.ShowRow(hidden));
    EXPECT_EQ(order(), (Numbers{71, 3}));
    EXPECT_FALSE(view.ShowRow(nullptr));
    view.SetFilterText("");
    EXPECT_EQ(order(), (Numbers{71, 3}));
}

TEST_F(List, FilteredListStaysSorted) {
    addLazy({71, 3, 70, 1});
    view.sortByColumn(0, Qt::AscendingOrder);
    view.SetFilterText("7");
    view.sortByColumn(0, Qt::DescendingOrder);
    view.SetFilterText("");
    EXPECT_EQ(order(), (Numbers{71, 70, 3, 1}));
}

TEST_F(List, TakenRowBelongsToTheCaller) {
    addLazy({1, 2, 3});
    std::unique_ptr<SortListViewItem> taken(view.takeItem(row(2)));
    EXPECT_EQ(order(), (Numbers{1, 3}));
    EXPECT_EQ(view.takeItem(nullptr), nullptr);
    EXPECT_EQ(view.firstChild()->nextSibling(), row(3));
    EXPECT_EQ(row(3)->nextSibling(), nullptr);

    view.sortByColumn(0, Qt::AscendingOrder);
    view.AddItems({taken.release()});
    QCoreApplication::sendPostedEvents(&view);
    EXPECT_EQ(order(), (Numbers{1, 2, 3})) << "a row that comes back goes to its place";
}

TEST_F(List, KeysAndMouseAreTold) {
    addLazy({1, 2, 3});
    show();
    QSignalSpy clicked(&view, &SortListView::clicked);
    QSignalSpy doubleClicked(&view, &SortListView::doubleClicked);
    QSignalSpy returned(&view, &SortListView::returnPressed);
    QSignalSpy menu(&view, &SortListView::contextMenuRequested);
    QSignalSpy selection(
        &view, static_cast<void (SortListView::*)(SortListViewItem*)>(&SortListView::selectionChanged));
    const auto rowOf = [](const QSignalSpy& spy) {
        return spy.isEmpty() ? nullptr : spy.last().first().value<SortListViewItem*>();
    };
    const QPoint onSecond = view.visualItemRect(row(2)).center();
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, onSecond);
    EXPECT_EQ(rowOf(clicked), row(2));
    EXPECT_EQ(rowOf(selection), row(2));
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, onSecond);
    EXPECT_EQ(rowOf(doubleClicked), row(2));
    QTest::keyClick(&view, Qt::Key_Down);
    QTest::keyClick(&view, Qt::Key_Return);
    EXPECT_EQ(rowOf(returned), row(3));
    QTest::keyClick(&view, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(view.SelectedCount(), 3);

    QContextMenuEvent onRow(QContextMenuEvent::Mouse, onSecond, view.viewport()->mapToGlobal(onSecond));
    QApplication::sendEvent(view.viewport(), &onRow);
    EXPECT_EQ(rowOf(menu), row(2));
    EXPECT_EQ(menu.last().at(2).toInt(), view.columnAt(onSecond.x()));
}

} // namespace
