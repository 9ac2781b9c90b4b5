#pragma once

#include <QtGlobal>

#include <functional>
#include <utility>
#include <vector>

namespace FreqStoreXml {

class DetectionResult;
class FrequencyStoreEntry;

/// Visits all entries of a list in their order; a record is good during the call.
using VisitEntries = std::function<void(const std::function<void(const FrequencyStoreEntry&)>&)>;
/// The same for a list of detections with what a classifier found.
using VisitResults = std::function<void(const std::function<void(const DetectionResult&)>&)>;

/// What a list gives of itself as records, as entries or as results; empty for a list that gives none. It is
/// good as long as the list is there.
struct ListContent {
    VisitEntries entries = {};
    VisitResults results = {};
    /// What the list has and no record holds, with how often: words of `Interchange::Account`.
    std::vector<std::pair<const char*, qint64>> lost = {};
};

} // namespace FreqStoreXml
