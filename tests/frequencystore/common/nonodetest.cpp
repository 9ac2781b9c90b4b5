#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/memory/memorysystemhandler.h"
#include "controls/frequencystore/noi/noifrequencyhandler.h"
#include "controls/frequencystore/results/searchmcdatahandler.h"
#include "controls/frequencystore/targets/targetlisthandler.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencystorelistview.h"
#include "host/gui/sortlistview.h"
#include "host/valuetree/tree.h"
#include "tests/support/testfolder.h"
#include "tests/support/text.h"

namespace {

/// Handlers that were given no node for their list.
class NoNode : public testing::Test, protected TestFolder {
protected:
    void SetUp() override {
        Tree::Instance()->MakeNode(Q("/Other"));
        TargetListHandler::Instance()->Init(nullptr, true);
        NOIFrequencyHandler::Instance()->SetRemembersFile(false);
        NOIFrequencyHandler::Instance()->Init(nullptr);
        SearchMCDataHandler::Instance()->Init(nullptr);
        MemorySystemHandler::Instance()->SetListType(MediatorType::MemoryHF);
        MemorySystemHandler::Instance()->Init(nullptr);
        m_lists = {TargetListHandler::Instance()->AddToFreqStore(),
                   NOIFrequencyHandler::Instance()->AddToFreqStore(),
                   SearchMCDataHandler::Instance()->AddToFreqStore(),
                   MemorySystemHandler::Instance()->AddToFreqStore()};
    }
    void TearDown() override {
        for (const int list : m_lists)
            FreqStore::Instance().RemoveFrequencyListDefinition(list);
        TargetListHandler::DeleteInstance();
        NOIFrequencyHandler::DeleteInstance();
        SearchMCDataHandler::DeleteInstance();
        MemorySystemHandler::DeleteInstance();
        Tree::Instance()->GetRoot()->DeleteChildren();
    }
    void expectEmpty(const char* when) const {
        for (const int list : m_lists) {
            const auto id = static_cast<unsigned>(list);
            auto* controller =
                dynamic_cast<FrequencyNodeMediatorCtrl*>(FreqStore::Instance().GetFrequencies(id));
            ASSERT_NE(controller, nullptr);
            controller->ForceUpdateNow();
            EXPECT_EQ(controller->GetNode(), nullptr) << when << list;
            EXPECT_EQ(controller->size(), 0u) << when << list;
            const std::unique_ptr<FrequencyStoreListView> view(
                FreqStore::Instance().GetDefinition(list)->CreateView(nullptr, id));
            EXPECT_EQ(dynamic_cast<SortListView&>(*view->GetListView()).RowCount(), 0) << when << list;
        }
    }

    std::vector<int> m_lists;
};

TEST_F(NoNode, ListsHaveNoEntriesWhateverIsCalled) {
    expectEmpty("at first");
    const QString lines = Write(Q("list.ltl"), "7055000\t3000\tc\tUSB\t\t\t1\n");
    TargetListHandler::Instance()->ReadFile(lines);
    NOIFrequencyHandler::Instance()->ReadFile(Write(Q("list.noi"), "7055000\tc\t1\n"));
    EXPECT_FALSE(NOIFrequencyHandler::Instance()->InsertNewValue(7e6, 1, Q("c")));
    MemorySystemHandler::Instance()->ReadFile(Write(Q("list.sfl"), "7055000\tc\t3000\tUSB\n"));
    MemorySystemHandler::Instance()->SetNewEntry(7e6, 1, Q("c"), Q("USB"));
    MemorySystemHandler::Instance()->UpdateJobFileEntries();
    double number = 0;
    int priority = 0;
    QString text;
    EXPECT_FALSE(TargetListHandler::Instance()->GetNextData(number, number, priority, text, text, text));
    EXPECT_EQ(NOIFrequencyHandler::Instance()->FileSave(true), QString());
    EXPECT_TRUE(SearchMCDataHandler::Instance()->GetMediatorCtrl()->SaveFrequencies(Path(Q("empty.xml"))));
    EXPECT_FALSE(Read(Q("empty.xml")).contains("<FrequencyStoreEntry"));
    Tree::Instance()->MakeNode(Q("/Another"));
    expectEmpty("after calls");
    EXPECT_EQ(Tree::Instance()->GetRoot()->ChildCount(), 2u);
}

} // namespace
