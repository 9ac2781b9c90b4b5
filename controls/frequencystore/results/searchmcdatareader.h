#pragma once

#include "host/report/readsafely.h"

class FrequencyNodeMediatorCtrl;
class Node;

namespace FreqStoreXml {
class FrequencyStoreEntry;
}

/// Reads files of classifier results into the list of a controller, for programs that show or convert them:
/// the results of a running search are made by whoever searches.
class SearchMCDataReader {
public:
    /// The controller outlives the reader.
    explicit SearchMCDataReader(FrequencyNodeMediatorCtrl& list) : m_list(list) {}

    /// Replaces the list by the content of a file: frequency-store XML when its path contains ".xml", else,
    /// when it contains ".csv", the lines of an export or a table with a heading row. False, told and traced,
    /// with the list as it was, when the file cannot be read as a whole. One that does not fit into memory
    /// may leave it empty.
    bool ReadFile(const QString& path);

    /// Makes a result under the list node from an interchange entry. What the entry lacks is as in any new
    /// result: not locked, confidence 0.
    static void AddEntry(Node& list, const FreqStoreXml::FrequencyStoreEntry& entry);

private:
    void readEntries(const QString& path, bool csv);
    void readLines(const QString& path);
    REPORTGENERATOR::DroppedEntries dropEntries();

    FrequencyNodeMediatorCtrl& m_list;
    bool m_isEmptied = false; ///< of the old results, for those of a file
};
