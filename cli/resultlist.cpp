#include "cli/list.h"
#include "controls/frequencystore/halvonodemediatorctrl.h"
#include "controls/frequencystore/listviewshandler/filekind.h"
#include "controls/frequencystore/listviewshandler/searchmcdatahandler.h"
#include "controls/frequencystore/listviewshandler/searchmcdatareader.h"
#include "host/valuetree/tree.h"

namespace {

/// Results of a classifier. A name with ".csv" is written in the list's own export form, one line per result.
class ResultList final : public CliList {
public:
    ResultList() : m_node(Tree::Instance()->MakeNode(QStringLiteral("/Lists/SearchMCDataResults"))) {
        SearchMCDataHandler::Instance()->Init(m_node);
    }
    ~ResultList() override {
        SearchMCDataHandler::DeleteInstance();
        m_node->DeleteChildren();
    }

    bool Read(const QString& path) override { return SearchMCDataReader(list()).ReadFile(path); }
    bool Write(const QString& path) override {
        list().ForceUpdateNow();
        return PathContains(path, ".csv")
                   ? list().ExportFrequencies(path, FreqStoreXml::FrequencyStoreListHelper::SearchResults)
                   : list().SaveFrequencies(path);
    }

protected:
    Node* GetNode() const override { return m_node; }

private:
    static HalvoNodeMediatorCtrl& list() { return *SearchMCDataHandler::Instance()->GetMediatorCtrl(); }

    Node* m_node;
};

} // namespace

std::unique_ptr<CliList> MakeResults() {
    return std::make_unique<ResultList>();
}
