// Rows of views when entries come back by undo.

#include "host/freqlist/frequencynodelistview.h"
#include "host/freqlist/frequencynodemediator.h"
#include "tests/freqlist/undofixture.h"

namespace UndoTests {
namespace {

class UndoneRows : public Undo {};

class BookmarkView : public FrequencyNodeListView {
public:
    BookmarkView(unsigned listId) : FrequencyNodeListView(nullptr, listId) {
        AddColumn(QStringLiteral("Frequency"), _compNumericWithSuffix, FreqList::ColumnFrequency);
        AddColumn(QStringLiteral("Comment"), _compStandardString, FreqList::ColumnComment);
    }
    using FrequencyNodeListView::DeleteSelectedEntries;
    QStringList Comments() {
        QStringList texts;
        for (SortListViewItemIterator it(this); it.current(); ++it)
            texts << it.current()->text(1);
        return texts;
    }
};

TEST_F(UndoneRows, RowsComeBackToTheirPlacesSelectedWhereTheOperatorWas) {
    List& list = make("/L", addLoose, 300);
    BookmarkView view(static_cast<unsigned>(list.id));
    view.resize(400, 200);
    view.show();
    const QStringList before = view.Comments();
    view.SelectPlace(150);
    view.scrollToItem(view.currentItem(), QAbstractItemView::PositionAtCenter);
    const int scroll = view.ScrollPlace();
    ASSERT_GT(scroll, 0);
    view.DeleteSelectedEntries();
    EXPECT_EQ(view.RowCount(), 299);
    view.SelectPlace(0);
    stack().undo();
    EXPECT_EQ(view.Comments(), before);
    EXPECT_EQ(view.SelectedCount(), 1);
    EXPECT_EQ(view.CurrentPlace(), 150);
    EXPECT_EQ(view.ScrollPlace(), scroll);
    view.sortByColumn(1, Qt::DescendingOrder);
    view.SelectPlace(0);
    const QString first = view.Comments().first();
    view.DeleteSelectedEntries();
    stack().undo();
    QCoreApplication::processEvents();
    EXPECT_EQ(view.Comments().first(), first);
}

/// Counts what is asked of its rows.
class CountingView : public BookmarkView {
public:
    using BookmarkView::BookmarkView;
    QString RecordText(quint32 record, int column) const override {
        ++texts;
        return BookmarkView::RecordText(record, column);
    }
    mutable int texts = 0;
};

TEST_F(UndoneRows, FewRowsComeBackToTheirPlacesWithoutALookAtAllOthers) {
    constexpr int Rows = 5000;
    List& list = make("/L", addLoose, Rows);
    for (const int column : {-1, 0, 1}) {
        CountingView view(static_cast<unsigned>(list.id));
        view.resize(400, 200);
        view.show();
        view.sortByColumn(column, Qt::DescendingOrder);
        QCoreApplication::processEvents();
        const QStringList before = view.Comments();
        for (const int row : {4000, 7}) { // one by one: the second comes back first
            view.SelectPlace(row);
            view.DeleteSelectedEntries();
        }
        view.SelectPlace(20);
        view.texts = 0;
        stack().undo();
        stack().undo();
        QCoreApplication::processEvents();
        EXPECT_LT(view.texts, Rows / 10) << column;
        EXPECT_TRUE(view.Comments() == before) << column;
        EXPECT_EQ(view.CurrentPlace(), 4000) << column;
    }
    CountingView view(static_cast<unsigned>(list.id));
    view.SelectPlace(4000);
    view.DeleteSelectedEntries();
    CountingView later(static_cast<unsigned>(list.id)); // in which the row has left no room
    view.SetFilterText(QStringLiteral("station"));
    while (view.IsFiltering())
        QCoreApplication::processEvents();
    stack().undo();
    QCoreApplication::processEvents();
    EXPECT_EQ(view.ShownCount(), view.RowCount());
    EXPECT_TRUE(later.Comments() == view.Comments());
}

} // namespace
} // namespace UndoTests
