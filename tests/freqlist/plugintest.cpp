// The example plug-in at work: what the host does for a list without a line of the list's own.

#include "host/freqlist/undohistory.h"

#include <QUndoStack>

#include <gtest/gtest.h>

#include "examples/bookmarks/bookmarks.cpp"

TEST(ExamplePlugIn, HasUndoWithoutALineOfItsOwn) {
    UndoHistory::Instance().SetOn(true);
    FrequencyStorePlugInStart();
    FreqStoreListViewButtonBar bar;
    const std::unique_ptr<FrequencyStoreListView> view(
        FreqStore::Instance().GetDefinition(listId)->CreateView(nullptr, static_cast<unsigned>(listId)));
    view->InitFreqStoreWidget(&bar);
    SortListView& list = *view->GetListView();
    ASSERT_EQ(list.RowCount(), 3);
    list.SelectPlace(1);
    bar.GetAction(FreqStoreListViewButtonBar::Delete)->trigger();
    EXPECT_EQ(list.RowCount(), 2);
    QUndoStack& stack = UndoHistory::Instance().Stack();
    EXPECT_EQ(stack.undoText(), "Delete 1 entries - Bookmarks");
    stack.undo();
    ASSERT_EQ(list.RowCount(), 3);
    EXPECT_EQ(list.CurrentPlace(), 1);
    EXPECT_EQ(list.currentItem()->CellText(1), "40 m, digital voice");
    EXPECT_NE(Tree::Instance()->GetValue("/Lists/Bookmarks/Bookmark#2/comment"), nullptr);
    UndoHistory::Instance().SetOn(false);
    FrequencyStorePlugInStop();
    Tree::Instance()->GetRoot()->DeleteChildren();
}
