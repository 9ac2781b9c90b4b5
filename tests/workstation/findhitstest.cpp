#include "workstation/findhits.h"

#include "host/freqlist/buttonbar.h"
#include "host/freqlist/filterfield.h"
#include "host/freqlist/frequencystorelistview.h"
#include "host/gui/sortlistview.h"
#include "tests/support/waiting.h"

#include <QTabWidget>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

namespace {

class NameList : public SortListView, public FrequencyStoreListView {
public:
    explicit NameList(const QStringList& names) {
        addColumn("Name");
        for (const QString& name : names)
            new SortListViewItem(this, {name}, false);
    }
    QWidget* GetWidget() override { return this; }
    SortListView* GetListView() override { return this; }
    void SelectFrequency(double) override {}
    void InitFreqStoreWidget(FreqStoreListViewButtonBar*) override {}
};

class Hits : public testing::Test {
protected:
    Hits() {
        addTab({"bbc 1", "rfi", "bbc 2"});
        addTab({"rfi 2"});
        tabs.addTab(new QWidget(&tabs), "not a list");
        addTab({"rai", "bbc 3"});
        tabs.show();
        tabs.activateWindow();
    }
    void addTab(const QStringList& names) {
        auto* page = new QWidget(&tabs);
        auto* layout = new QVBoxLayout(page);
        auto* bar = new FreqStoreListViewButtonBar(page);
        auto* list = new NameList(names);
        layout->addWidget(bar);
        layout->addWidget(list);
        bar->AttachView(list);
        tabs.addTab(page, "list");
        lists.push_back(list);
        bars.push_back(bar);
    }
    std::string current() const {
        auto* list = tabs.currentWidget()->findChild<QTreeWidget*>();
        const auto* row = list ? static_cast<SortListView*>(list)->currentItem() : nullptr;
        return row ? row->text(0).toStdString() : "";
    }

    QTabWidget tabs;
    FindHits hits{tabs};
    std::vector<NameList*> lists;
    std::vector<FreqStoreListViewButtonBar*> bars;
};

TEST_F(Hits, AreGoneThroughOverAllTabsAndRoundAgain) {
    ASSERT_TRUE(QTest::qWaitForWindowActive(&tabs, Patience));
    EXPECT_FALSE(hits.Step(1)) << "nothing is looked for";
    QTest::keyClicks(&bars[0]->Filter(), "BBC");
    for (const char* hit : {"bbc 1", "bbc 2", "bbc 3", "bbc 1"}) {
        EXPECT_TRUE(hits.Step(1));
        EXPECT_EQ(current(), hit);
    }
    for (const char* hit : {"bbc 3", "bbc 2"}) {
        EXPECT_TRUE(hits.Step(-1));
        EXPECT_EQ(current(), hit);
    }
    EXPECT_EQ(lists[1]->FilterText(), "") << "a list without a hit keeps its filter";
    EXPECT_EQ(lists[2]->FilterText(), "BBC");
    bars[0]->Filter().setText("nowhere");
    EXPECT_FALSE(hits.Step(1));
    EXPECT_EQ(lists[2]->FilterText(), "BBC");
}

} // namespace
