#include "cli/jsonfile.h"
#include "cli/list.h"
#include "cli/shapedentry.h"
#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/common/paths.h"
#include "controls/frequencystore/files/filekind.h"
#include "controls/frequencystore/results/searchmcdatahandler.h"
#include "controls/frequencystore/results/searchmcdatareader.h"
#include "controls/frequencystore/results/searchmcdataresult.h"
#include "host/valuetree/tree.h"

namespace {

constexpr FileMark MarksRead[] = {{".xml", FileFormat::StoreXml}, {".csv", FileFormat::Csv}};
constexpr FileMark MarksWritten[] = {{".csv", FileFormat::Csv}, {".xml", FileFormat::StoreXml}};
constexpr FileNames ResultNames{.read = MarksRead, .written = MarksWritten};

/// Results of a classifier. A name with ".csv" is written in the list's own export form, one line per result.
class ResultList final : public CliList {
public:
    ResultList() : m_node(Tree::Instance()->MakeNode(Paths::Results)) {
        SearchMCDataHandler::Instance()->Init(m_node);
    }
    ~ResultList() override {
        LeaveToNextList([node = m_node] {
            SearchMCDataHandler::DeleteInstance();
            node->DeleteChildren();
        });
    }

    const FileNames& Names() const override { return ResultNames; }

protected:
    bool ReadFile(const QString& path) override { return SearchMCDataReader(list()).ReadFile(path); }
    bool WriteFile(const QString& path) override {
        list().ForceUpdateNow();
        return PathContains(path, ".csv")
                   ? list().ExportFrequencies(path, FreqStoreXml::FrequencyStoreListHelper::SearchResults)
                   : list().SaveFrequencies(path);
    }
    void BeginEntries() override {
        list().Suspend(true);
        m_node->DeleteChildren();
    }
    void EndEntries(bool isWhole) override {
        if (!isWhole)
            m_node->DeleteChildren();
        list().Suspend(false);
    }
    void AddEntry(const Interchange::JsonEntry& from) override {
        FillFromJson(AddShapedEntry<SearchMCDataResult>(*m_node, "Entry", nullptr), from);
    }
    Node* GetNode() const override { return m_node; }
    EntryNodes GetEntryNodes() const override { return {"Entry", &SearchMCDataResult::Shape()}; }
    Interchange::Content Content() const override { return list().Content(); }

private:
    static HalvoNodeMediatorCtrl& list() { return *SearchMCDataHandler::Instance()->GetMediatorCtrl(); }

    Node* m_node;
};

} // namespace

std::unique_ptr<CliList> MakeResults() {
    return std::make_unique<ResultList>();
}
