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

/// The frequencies of a range beside the channel's own, Hz; none of a channel that is no range.
std::vector<double> furtherOf(FrequencyNodeMediator& mediator) {
    std::vector<double> frequencies;
    const auto* const channel = dynamic_cast<const MemoryMediator*>(&mediator);
    bool isRange = false;
    if (!channel || !channel->GetInRange(isRange) || !isRange)
        return frequencies;
    for (double hertz = 0; channel->GetFrequencyInRange(static_cast<long>(frequencies.size()), hertz);)
        frequencies.push_back(hertz);
    return frequencies;
}

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

FreqStoreXml::ListContent HalvoNodeMediatorCtrl::Content() {
    if (m_type != MediatorType::MemoryHF && m_type != MediatorType::MemoryVUHF)
        return FrequencyNodeMediatorCtrl::Content();
    qint64 ranges = 0;
    ForEach([&](FrequencyNodeMediator& mediator) { ranges += furtherOf(mediator).empty() ? 0 : 1; });
    const auto visitAll = [this](const auto& visit) {
        ForEachRecord([&](FrequencyNodeMediator& mediator, const FreqStoreXml::FrequencyStoreEntry& entry) {
            visit(entry);
            FreqStoreXml::FrequencyStoreEntry other = entry;
            for (const double hertz : furtherOf(mediator)) {
                other.GetFFM_Settings().GetFrequency().SetValue(hertz);
                visit(other);
            }
        });
    };
    return {.entries = visitAll,
            .lost = {{QT_TRANSLATE_NOOP("Account", "settings of the receiver"), static_cast<qint64>(size())},
                     {QT_TRANSLATE_NOOP("Account", "ranges, each of whose frequencies is written"), ranges}}};
}

QString HalvoNodeMediatorCtrl::GetUsageName() const {
    const TypeInfo* info = infoOf(m_type);
    return FrequencyStoreList::UsageToName(info ? info->usage : FrequencyStoreList::Unspecified);
}
