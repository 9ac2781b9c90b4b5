#include "host/freqstorexml/detectionresultlist.h"
#include "host/freqstorexml/frequencystorelisthelper.h"

#include <algorithm>
#include <array>

namespace FreqStoreXml {

namespace {

using Usage = FrequencyStoreList::Usage;

constexpr std::array<std::string_view, 5> UsageNames{"Unspecified", "SearchResults", "NOI", "TargetList",
                                                     "MemoryChannels"};

int KnownUsage(int usage) {
    return usage >= 0 && usage < static_cast<int>(UsageNames.size()) ? usage : 0;
}

} // namespace

FrequencyStoreList::FrequencyStoreList() : m_usage{UsageNames} {}

QString FrequencyStoreList::UsageToName(Usage usage) {
    const std::string_view name = UsageNames[static_cast<std::size_t>(KnownUsage(usage))];
    return QString::fromLatin1(name.data(), static_cast<qsizetype>(name.size()));
}

Usage FrequencyStoreList::NameToUsage(const QString& name) {
    const auto found = std::ranges::find(UsageNames, name.toStdString());
    return found == UsageNames.end() ? Unspecified : static_cast<Usage>(found - UsageNames.begin());
}

void FrequencyStoreList::SetUsage(int usage) {
    m_usage.value = KnownUsage(usage);
}

DetectionResultList::DetectionResultList() : m_usage{UsageNames} {}

void DetectionResultList::SetUsage(int usage) {
    m_usage.value = KnownUsage(usage);
}

Usage FrequencyStoreListHelper::UsageOf(ListType type) {
    switch (type) {
    case Detections:
    case SearchResults:
        return Usage::SearchResults;
    case Targets:
        return Usage::TargetList;
    case NoiFrequencies:
        return Usage::Noi;
    case XmlList:
        break;
    }
    return Usage::Unspecified;
}

} // namespace FreqStoreXml
