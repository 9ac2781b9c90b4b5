#include "host/gui/sortlistview.h"
#include "tests/support/waiting.h"

#include <QAccessible>
#include <QApplication>
#include <QLineEdit>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>

#include <gtest/gtest.h>

namespace {

/// A list that is much longer than its page. Its cells can be edited.
class LongList : public testing::Test {
protected:
    class Editable : public SortListView {
    public:
        using SortListView::indexWidget;
        using SortListView::mouseMoveEvent;

    protected:
        bool CanEdit(const SortListViewItem&, int column) const override { return column == 1; }
        QWidget* CreateCellEditor(QWidget* parent, const SortListViewItem& row, int column) override {
            m_row = const_cast<SortListViewItem*>(&row);
            auto* field = new QLineEdit(parent);
            field->setText(row.text(column));
            return field;
        }
        bool EndCellEditor(QWidget& field, bool keep) override {
            if (keep)
                m_row->setText(1, static_cast<QLineEdit&>(field).text());
            return true;
        }

    private:
        SortListViewItem* m_row = nullptr;
    };

    static constexpr int Rows = 5000;

    LongList() {
        for (const char* title : {"Number", "Name"})
            view.addColumn(title);
        view.SetCompareFunction(0, _compStandardNumeric);
        view.setAllColumnsShowFocus(true);
        std::vector<SortListViewItem*> rows;
        for (int i = 0; i < Rows; ++i)
            rows.push_back(new SortListViewItem(nullptr, {QString::number(i), nameOf(i)}, false));
        view.AddItems(rows);
        view.resize(300, 240);
        view.show();
        page = view.FullRows();
    }

    static QString nameOf(int number) { return QStringLiteral("n%1").arg(number % 10); }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(&view, key, modifiers);
    }
    QPoint centre(int row) { return view.visualItemRect(view.topLevelItem(row)).center(); }
    void click(int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::mouseClick(view.viewport(), Qt::LeftButton, modifiers, centre(row));
    }
    std::vector<int> selected() {
        std::vector<int> numbers;
        for (SortListViewItemIterator it(&view, SortListViewItemIterator::Selected); it.current(); ++it)
            numbers.push_back(it.current()->text(0).toInt());
        return numbers;
    }
    /// The colour of a row where it has no text.
    QColor background(int row) {
        const QRect place = view.visualItemRect(view.topLevelItem(row));
        return view.viewport()->grab().toImage().pixelColor(place.right() - 3, place.center().y());
    }

    Editable view;
    int page = 0;
};

TEST_F(LongList, GivesQtThePageOnlyWhereverItStands) {
    QScrollBar& bar = *view.verticalScrollBar();
    ASSERT_GT(page, 3);
    EXPECT_EQ(bar.maximum(), Rows - page);
    for (const int first : {0, 1, 2500, bar.maximum()}) {
        bar.setValue(first);
        EXPECT_LE(view.model()->rowCount(), page + 1);
        EXPECT_EQ(view.itemAt(centre(first)), view.topLevelItem(first));
        EXPECT_GE(centre(first).y(), 0);
        EXPECT_EQ(view.visualItemRect(view.topLevelItem((first + 1000) % Rows)), QRect());
    }
    EXPECT_EQ(view.visualItemRect(view.topLevelItem(Rows - 1)).isEmpty(), false);

    bar.setValue(10);
    QWheelEvent wheel(QPointF(9, 9), view.mapToGlobal(QPointF(9, 9)), QPoint(), QPoint(0, -120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(view.viewport(), &wheel);
    EXPECT_GT(bar.value(), 10);

    view.SetFilterText("Number:17");
    QTRY_VERIFY(!view.IsFiltering());
    view.SetFilterText("Number:1717");
    EXPECT_FALSE(bar.isVisible()) << "all rows fit";
    view.SetFilterText("");
    EXPECT_TRUE(bar.isVisible());
}

TEST_F(LongList, KeysMoveThroughAllRows) {
    const struct {
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        int focus;
        size_t selected;
    } steps[] = {
        {Qt::Key_Down, {}, 0, 1},
        {Qt::Key_Down, {}, 1, 1},
        {Qt::Key_PageDown, {}, 1 + page, 1},
        {Qt::Key_PageDown, Qt::ShiftModifier, 1 + 2 * page, static_cast<size_t>(page) + 1},
        {Qt::Key_PageUp, Qt::ShiftModifier, 1 + page, 1},
        {Qt::Key_Up, Qt::ShiftModifier, page, 2},
        {Qt::Key_End, Qt::ControlModifier, Rows - 1, 2},
        {Qt::Key_Space, Qt::ControlModifier, Rows - 1, 3},
        {Qt::Key_Up, Qt::ShiftModifier, Rows - 2, 4},
        {Qt::Key_End, {}, Rows - 1, 1},
        {Qt::Key_Down, {}, Rows - 1, 1},
        {Qt::Key_Home, Qt::ShiftModifier, 0, Rows},
        {Qt::Key_Home, {}, 0, 1},
        {Qt::Key_Up, {}, 0, 1},
    };
    for (const auto& step : steps) {
        press(step.key, step.modifiers);
        const auto where = testing::Message() << "key " << step.key << " to " << step.focus;
        EXPECT_EQ(view.FocusItem(), view.topLevelItem(step.focus)) << where;
        EXPECT_EQ(selected().size(), step.selected) << where;
        EXPECT_TRUE(view.viewport()->rect().contains(view.visualItemRect(view.FocusItem()))) << where;
    }
}

TEST_F(LongList, LettersGoToTheNextRowThatBeginsWithThem) {
    for (const char letter : {'4', '9', '7'})
        QTest::keyClick(&view, letter);
    EXPECT_EQ(selected(), std::vector<int>{497});
    EXPECT_TRUE(view.viewport()->rect().contains(centre(497)));
}

TEST_F(LongList, SelectionAndPageStayWithTheirRowsWhateverHappens) {
    const struct {
        const char* what;
        std::function<void(SortListView&)> act;
        std::vector<int> selected;
    } steps[] = {
        {"sorted", [](SortListView& l) { l.sortByColumn(1, Qt::AscendingOrder); }, {2000, 4321, 4994, 5}},
        {"within that",
         [](SortListView& l) { l.sortByColumn(0, Qt::DescendingOrder); },
         {4994, 4321, 2000, 5}},
        {"filtered", [](SortListView& l) { l.SetFilterText("4"); }, {4994, 4321}},
        {"shown again", [](SortListView& l) { l.SetFilterText(""); }, {4994, 4321}},
        {"one is removed",
         [](SortListView& l) {
             l.RemoveItems([](const SortListViewItem& row) { return row.text(0) == "4994"; });
         },
         {4321}},
        {"added",
         [](SortListView& l) {
             new SortListViewItem(&l, {"7777", "new"}, false);
             QCoreApplication::processEvents();
         },
         {4321}},
        {"another one is taken", [](SortListView& l) { delete l.takeItem(l.topLevelItem(0)); }, {4321}},
        {"unsorted", [](SortListView& l) { l.sortByColumn(-1, Qt::AscendingOrder); }, {4321}},
    };
    click(5);
    for (const int row : {2000, 4321, 4994}) {
        view.verticalScrollBar()->setValue(row);
        click(row, Qt::ControlModifier);
    }
    EXPECT_EQ(selected(), (std::vector<int>{5, 2000, 4321, 4994}));
    view.verticalScrollBar()->setValue(1000);
    for (const auto& step : steps) {
        step.act(view);
        QTRY_VERIFY(!view.IsFiltering());
        EXPECT_EQ(selected(), step.selected) << step.what;
        EXPECT_EQ(view.SelectedCount(), static_cast<int>(step.selected.size())) << step.what;
        EXPECT_EQ(view.itemAt(QPoint(5, 5)), view.topLevelItem(view.verticalScrollBar()->value()))
            << step.what;
    }
    EXPECT_EQ(view.verticalScrollBar()->value(), 1000);
    EXPECT_EQ(view.topLevelItem(4321)->text(0), "4321");
}

TEST_F(LongList, ShiftReplacesTheRangeAndKeepsTheRest) {
    const struct {
        int row;
        Qt::KeyboardModifiers modifiers;
        std::vector<int> selected;
    } steps[] = {
        {1, {}, {1}},
        {3, Qt::ControlModifier, {1, 3}},
        {5, Qt::ShiftModifier, {1, 3, 4, 5}},
        {4, Qt::ShiftModifier, {1, 3, 4}},
        {2, Qt::ShiftModifier, {1, 2, 3}},
        {4, Qt::NoModifier, {4}},
    };
    for (const auto& step : steps) {
        click(step.row, step.modifiers);
        EXPECT_EQ(selected(), step.selected) << step.row;
    }
}

TEST_F(LongList, DragGoesOnBelowThePageWhileTheMouseIsHeld) {
    QTest::mousePress(view.viewport(), Qt::LeftButton, {}, centre(2));
    const auto move = [this](const QPoint& place) {
        QMouseEvent event(QEvent::MouseMove, place, view.viewport()->mapToGlobal(QPointF(place)),
                          Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(view.viewport(), &event);
    };
    move(centre(4));
    EXPECT_EQ(selected(), (std::vector<int>{2, 3, 4}));
    move(QPoint(5, view.viewport()->height() + 20));
    ASSERT_TRUE(Until([this] { return view.SelectedCount() > page + 3; }));
    EXPECT_GT(view.verticalScrollBar()->value(), 3);
    move(QPoint(5, -20));
    ASSERT_TRUE(Until([this] { return view.IsRowSelected(0); }));
    EXPECT_EQ(selected(), (std::vector<int>{0, 1, 2}));
    QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, QPoint(5, -20));
}

TEST_F(LongList, AFieldThatIsOpenKeepsItsTextWhenThePageMoves) {
    click(3);
    ASSERT_TRUE(view.EditCell());
    auto* field = view.viewport()->findChild<QLineEdit*>();
    ASSERT_TRUE(field);
    field->setText("kept");
    view.verticalScrollBar()->setValue(3000);
    EXPECT_FALSE(view.IsEditing());
    EXPECT_EQ(view.topLevelItem(3)->text(1), "kept");
    view.SelectPlace(4000);
    ASSERT_TRUE(view.EditCell());
    EXPECT_TRUE(view.viewport()->rect().contains(centre(4000)));
}

TEST_F(LongList, TheFocusAloneDoesNotLookLikeASelection) {
    const QColor plain[] = {background(1), background(2)};
    EXPECT_NE(plain[0], plain[1]) << "stripes";
    click(1);
    EXPECT_NE(background(1), plain[0]);
    press(Qt::Key_Down, Qt::ControlModifier);
    press(Qt::Key_Space, Qt::ControlModifier);
    press(Qt::Key_Space, Qt::ControlModifier);
    press(Qt::Key_Up, Qt::ControlModifier);
    view.clearSelection();
    EXPECT_EQ(view.FocusItem(), view.topLevelItem(1));
    EXPECT_EQ(background(1), plain[0]);
    view.verticalScrollBar()->setValue(1);
    EXPECT_EQ(background(2), plain[1]) << "stripes stay with their rows";
}

TEST_F(LongList, IsHeardRowByRow) {
    view.SelectPlace(1233);
    const QAccessibleInterface* list = QAccessible::queryAccessibleInterface(&view);
    ASSERT_TRUE(list);
    QStringList heard;
    for (int i = 0; i < list->childCount(); ++i) {
        QAccessibleInterface* cell = list->child(i);
        if (cell && cell->state().selected)
            heard << cell->text(QAccessible::Name) << cell->text(QAccessible::Description);
    }
    ASSERT_GE(heard.size(), 2);
    EXPECT_EQ(heard[0], "1233");
    EXPECT_EQ(heard[1], "Row 1234 of 5000");
}

TEST_F(LongList, ARowSelectedWhileNobodyLooksIsSeenWhenTheListIsShown) {
    view.hide();
    view.SelectPlace(3000);
    EXPECT_EQ(view.currentItem(), view.topLevelItem(3000));
    view.resize(300, 150);
    view.show();
    EXPECT_TRUE(view.viewport()->rect().contains(centre(3000)));
}

} // namespace
