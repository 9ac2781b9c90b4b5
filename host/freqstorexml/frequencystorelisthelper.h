#pragma once

#include "host/freqstorexml/frequencystorelist.h"

namespace FreqStoreXml {

/// Names the kinds of lists that have a CSV form of their own.
class FrequencyStoreListHelper {
public:
    /// Columns of a CSV file. XmlList is the XML form, which is the same for all lists; a CSV file of that
    /// type has all columns.
    enum ListType : int { XmlList = -1, Detections = 1, Targets = 2, SearchResults = 3, NoiFrequencies = 4 };

    /// The usage of a list that is read from a CSV file of that type.
    static FrequencyStoreList::Usage UsageOf(ListType type);
};

} // namespace FreqStoreXml
