#include "controls/frequencystore/common/halvonodemediatorctrl.h"

#include "controls/frequencystore/memory/memorymediatorhf.h"
#include "controls/frequencystore/results/searchmcdatamediator.h"
#include "controls/frequencystore/targets/wkfnodemediator.h"
#include "host/base/trace.h"
#include "host/freqstorexml/frequencystorelist.h"

using FreqStoreXml::FrequencyStoreList;

namespace {

template <typename M>
Mediator* make(MediatorCtrl* controller, Node* node, int kind) {
    return new M(controller, node, kind);
}

/// What belongs to a mediator type. A type without a class yields no mediators.
struct TypeInfo {
    MediatorType type;
    FrequencyStoreList::Usage usage;
    Mediator* (*make)(MediatorCtrl*, Node*, int);
};

constexpr TypeInfo Types[] = {
    {MediatorType::MemoryHF, FrequencyStoreList::MemoryChannels, make<MemoryMediatorHF>},
    {MediatorType::SearchMCData, FrequencyStoreList::SearchResults, make<SearchMCDataMediator>},
    {MediatorType::TargetList, FrequencyStoreList::TargetList, make<WkfNodeMediator>},
    {MediatorType::NoiFrequencies, FrequencyStoreList::Noi, make<FrequencyNodeMediator>},
    {MediatorType::MemoryVUHF, FrequencyStoreList::MemoryChannels, make<MemoryMediatorVUHF>},
};

const TypeInfo* infoOf(MediatorType type) {
    for (const TypeInfo& info : Types) {
        if (info.type == type)
            return &info;
    }
    return nullptr;
}

} // namespace

HalvoNodeMediatorCtrl::HalvoNodeMediatorCtrl(MediatorType type, int storeType)
    : FrequencyNodeMediatorCtrl(storeType), m_type(type) {}

Mediator* HalvoNodeMediatorCtrl::CreateMediator(Observable* entryNode) {
    const TypeInfo* info = infoOf(m_type);
    auto* node = node_cast(entryNode);
    return info && info->make && node ? info->make(this, node, GetFreqStoreType()) : nullptr;
}

FrequencyNodeMediator* HalvoNodeMediatorCtrl::GetItemwithIndex(int index) {
    FrequencyNodeMediator* mediator = index < 0 ? nullptr : At(static_cast<unsigned long>(index));
    if (!mediator) {
        TraceLazily("halvonodemediatorctrl", [this] {
            return size() == 0 ? QStringLiteral("List of Mediators is Empty")
                               : QStringLiteral("iIndex >= size() of MediatorList");
        });
    }
    return mediator;
}

QString HalvoNodeMediatorCtrl::GetUsageName() const {
    const TypeInfo* info = infoOf(m_type);
    return FrequencyStoreList::UsageToName(info ? info->usage : FrequencyStoreList::Unspecified);
}
