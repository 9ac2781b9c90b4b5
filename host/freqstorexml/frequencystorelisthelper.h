#pragma once

#include "host/freqstorexml/frequencystorelist.h"

namespace FreqStoreXml {

/// Names the kinds of lists that have a CSV form of their own.
class FrequencyStoreListHelper {
public:
    /// Columns of a CSV file. XmlList is the XML form, which is the same for all lists; a CSV file of that
    /// type has the columns that go with the list's usage.
    enum ListType : int { XmlList = -1, Detections = 1, Targets = 2, SearchResults = 3, NoiFrequencies = 4 };

    static FrequencyStoreList::Usage UsageOf(ListType type);
    static ListType TypeOf(FrequencyStoreList::Usage usage);
};

} // namespace FreqStoreXml
