#pragma once

#include "host/base/observer.h"
#include "host/valuetree/node.h"

#include <QCoreApplication>

#include <memory>

class HalvoNodeMediatorCtrl;

/// Owner of the list of classifier results ("Data Results"): keeps its controller, registers it with the
/// frequency store, and saves and exports it under names that carry the time. The results themselves are made
/// by whoever runs the search, under the list node. One instance exists per process.
class SearchMCDataHandler : public IObserver {
    Q_DECLARE_TR_FUNCTIONS(SearchMCDataHandler)

public:
    static SearchMCDataHandler* Instance();
    static void DeleteInstance();

    /// Once, with the node (not owned) whose children are the results.
    void Init(Node* root);
    /// The results' node; null before `Init` and after the node ended.
    Node* GetItemsRoot() const { return m_pNode.get(); }
    /// Null before `Init`.
    HalvoNodeMediatorCtrl* GetMediatorCtrl() const { return m_pMedCtrl.get(); }

    /// Registers the list with the frequency store and returns its identifier there.
    int AddToFreqStore();

    /// Write the list as XML, or as one line of text per result, to a file that the operator chooses from a
    /// proposal with the present time; `silent` takes the proposal. A write that fails asks whether to save
    /// to a different file, until one succeeds or the operator gives up. The result is the name used, empty
    /// when given up. Before `Init` nothing is written and the name is returned.
    QString SaveToFile(bool silent);
    QString ExportToFile(bool silent);

    /// The handler observes nothing itself.
    void Update(Observable*, TChangeCode) override {}

protected:
    /// The name to write to: the one given or, without one, one in the data directory that carries the
    /// present time; unless `silent`, the operator's choice, which is empty when cancelled.
    QString GetSaveFileName(QString name, bool silent);
    QString GetExportFileName(QString name, bool silent);

    SearchMCDataHandler() = default;
    ~SearchMCDataHandler() override;

private:
    QString writeFile(QString (SearchMCDataHandler::*nameOf)(QString, bool),
                      bool (*write)(HalvoNodeMediatorCtrl& list, const QString& name), bool silent);

    static SearchMCDataHandler* m_pInstance;

    WeakRef<Node> m_pNode;
    std::unique_ptr<HalvoNodeMediatorCtrl> m_pMedCtrl;
};
