#include "host/gui/columnarrangement.h"
#include "host/gui/listsettings.h"
#include "host/gui/sortlistview.h"
#include "tests/support/traces.h"

#include <QFile>
#include <QHeaderView>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <random>

namespace {

class RememberedColumns : public testing::Test {
protected:
    RememberedColumns() { ListSettings::SetDirectory(directory.path()); }
    ~RememberedColumns() override { ListSettings::SetDirectory(QString()); }

    std::unique_ptr<SortListView> makeList() const {
        auto list = std::make_unique<SortListView>();
        for (const char* title : {"A", "B", "C"})
            list->addColumn(title);
        list->setShowSortIndicator(true);
        list->SetColumnWidthPersistantName("TestList");
        return list;
    }

    QTemporaryDir directory;
};

TEST_F(RememberedColumns, ComeBackInTheNextList) {
    {
        const auto list = makeList();
        list->setColumnWidth(2, 123);
        list->setColumnHidden(1, true);
        list->header()->moveSection(2, 0);
    }
    const auto list = makeList();
    EXPECT_EQ(list->columnWidth(2), 123);
    EXPECT_TRUE(list->isColumnHidden(1));
    EXPECT_EQ(list->header()->visualIndex(2), 0);
}

TEST_F(RememberedColumns, CanBeBroughtBackToTheirDefault) {
    const int normal = makeList()->columnWidth(0);
    makeList()->setColumnWidth(0, normal + 50);
    EXPECT_EQ(makeList()->columnWidth(0), normal + 50);
    makeList()->setColumnWidth(0, normal);
    EXPECT_EQ(makeList()->columnWidth(0), normal);
}

TEST_F(RememberedColumns, DoNotPretendASort) {
    makeList()->sortByColumn(1, Qt::DescendingOrder);
    const auto list = makeList();
    EXPECT_EQ(list->header()->isSortIndicatorShown(), list->SortColumn() >= 0);
}

TEST_F(RememberedColumns, OfAListWithOtherColumnsLeaveAllInReach) {
    for (const int count : {2, 5}) {
        {
            SortListView other;
            for (int i = 0; i < count; ++i)
                other.addColumn("X");
            other.SetColumnWidthPersistantName("TestList");
            other.setColumnWidth(1, 77);
        }
        const auto list = makeList();
        EXPECT_EQ(list->header()->count(), 3);
        for (int column = 0; column < 3; ++column)
            EXPECT_GT(list->columnWidth(column), 0);
        list->addColumn("D");
        EXPECT_EQ(list->header()->count(), 4);
    }
}

TEST_F(RememberedColumns, StandInTheFileAsAPersonReadsThem) {
    {
        const auto list = makeList();
        list->setColumnWidth(0, 111);
        list->setColumnWidth(1, 123);
        list->setColumnHidden(1, true);
        list->setColumnWidthMode(2, QHeaderView::Stretch);
        list->header()->moveSection(2, 0);
    }
    QFile file(directory.filePath("columns.ini"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll();
    EXPECT_TRUE(text.contains("TestList=2:auto 0:111 1:123:hidden\n")) << text.toStdString();
    const auto list = makeList();
    list->header()->setStretchLastSection(false);
    list->setColumnHidden(1, false);
    EXPECT_EQ(list->columnWidth(1), 123) << "a hidden column keeps its width";
}

TEST_F(RememberedColumns, ThatNoListCanHaveAreIgnored) {
    const QString normal = ColumnArrangement::Of(*makeList()->header());
    for (const char* text :
         {"no header state", "0:100 1:100", "0:100 1:100 2:100 3:100", "0:100 1:100 1:100",
          "0:100 1:100 3:100", "-1:100 1:100 2:100", "0:100 1:100 2:99999999999", "0:100 1:100 2:20000",
          "0:100 1:100 2:-5", "0:100 1:100 2:1", "0:100 1:100 2:0", "0:100 1:100 2",
          "0:100 1:100 2:100:shown", "0:100:hidden 1:100:hidden 2:100:hidden", "0:100  1:100 2:100",
          "0:1e2 1:100 2:100"}) {
        ListSettings::SaveText("TestList", QString::fromLatin1(text));
        EXPECT_EQ(ColumnArrangement::Of(*makeList()->header()), normal) << text;
    }
    SortListView before; // what Qt keeps of a header, as it was remembered once
    ListSettings::SaveText("TestList", QString::fromLatin1(before.header()->saveState().toHex()));
    EXPECT_EQ(ColumnArrangement::Of(*makeList()->header()), normal);
    ListSettings::Save("TestList", before.header()->saveState());
    EXPECT_EQ(ColumnArrangement::Of(*makeList()->header()), normal);
}

TEST_F(RememberedColumns, CostNothingWhateverByteOfTheFileChanges) {
    constexpr unsigned Seed = 20;
    Traces traces;
    makeList()->setColumnWidth(1, 140);
    ListSettings::Save("Window/Panels", "a state of the window");
    QFile file(directory.filePath("columns.ini"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray sound = file.readAll();
    file.close();
    std::mt19937 random(Seed);
    for (qsizetype i = 0; i < 2 * sound.size(); ++i) {
        QByteArray bytes = sound;
        bytes[i / 2] = static_cast<char>(random());
        SCOPED_TRACE("seed " + std::to_string(Seed) + ", change " + std::to_string(i));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        file.close();
        const QByteArray state = ListSettings::Load("Window/Panels");
        EXPECT_TRUE(state.isEmpty() || state == "a state of the window");
        const auto list = makeList();
        ASSERT_EQ(list->header()->count(), 3);
        EXPECT_LT(list->header()->hiddenSectionCount(), 3);
        EXPECT_LE(list->header()->length(), 3 * 10000);
        list->grab();
        list->SetColumnWidthPersistantName(QString()); // remembers nothing
    }
}

} // namespace
