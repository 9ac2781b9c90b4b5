#include "workstation/importlists.h"

#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/memory/memorysystemhandler.h"
#include "controls/frequencystore/merge/listmerge.h"
#include "controls/frequencystore/noi/noifrequencyhandler.h"
#include "controls/frequencystore/targets/targetlisthandler.h"
#include "controls/frequencystore/targets/targetlistparser.h"
#include "host/freqlist/freqstore.h"

#include <QCoreApplication>

namespace {

struct Row {
    FileGate::List list;
    Node* (*node)();
    GeneralListParser* (*parser)();
};
const Row Rows[] = {
    {FileGate::List::Targets, [] { return TargetListHandler::Instance()->GetItemsRoot(); },
     []() -> GeneralListParser* { return TargetListHandler::Instance()->GetParser(); }},
    {FileGate::List::MemoryChannels, [] { return MemorySystemHandler::Instance()->GetItemsRoot(); },
     []() -> GeneralListParser* { return MemorySystemHandler::Instance(); }},
    {FileGate::List::Noi, [] { return NOIFrequencyHandler::Instance()->GetItemsRoot(); },
     []() -> GeneralListParser* { return NOIFrequencyHandler::Instance(); }},
};

/// Of the targets of a site.
QString whySiteTakesNone(bool replaces) {
    const TargetListHandler& targets = *TargetListHandler::Instance();
    const QString& reason = targets.WhyNoEditing();
    return reason.isEmpty() && replaces && targets.IsClient()
               ? QCoreApplication::translate(
                     "ForeignImport", "The targets are those of a site, whose server alone reads files "
                                      "in their place. Add the entries instead.")
               : reason;
}

} // namespace

std::vector<ImportList> ImportLists() {
    const FreqStore& store = FreqStore::Instance();
    std::vector<ImportList> lists;
    for (const Row& row : Rows) {
        for (const int id : store.GetListIds()) {
            auto* const controller =
                dynamic_cast<HalvoNodeMediatorCtrl*>(store.GetFrequencies(static_cast<unsigned>(id)));
            if (controller && controller->GetNode() && controller->GetNode() == row.node())
                lists.push_back({row.list, static_cast<unsigned>(id), store.GetDefinition(id)->GetName(),
                                 controller, row.parser()});
        }
    }
    return lists;
}

qsizetype ImportList::Count() const {
    const Node* const node = controller->GetNode();
    return node ? static_cast<qsizetype>(node->ChildCount()) : 0;
}

QString ImportList::WhyOff(bool replaces) const {
    if (list == FileGate::List::Targets) {
        if (QString reason = whySiteTakesNone(replaces); !reason.isEmpty())
            return reason;
    }
    if (list == FileGate::List::MemoryChannels && MemorySystemHandler::Instance()->GetInScanSurveillance())
        return QCoreApplication::translate("ForeignImport",
                                           "No file is used while a scan surveillance runs.");
    return replaces ? QString() : ListMerge::WhyOff(controller);
}

void ImportList::MakeRoom() const {
    Node* const node = controller->GetNode();
    if (list != FileGate::List::MemoryChannels || !node)
        return;
    node->DeleteChildren();
    MemorySystemHandler::Instance()->SuspendMediatorCtrl(false, true);
}
