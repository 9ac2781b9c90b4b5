#pragma once

#include "host/freqstorexml/frequencystorelisthelper.h"
#include "host/freqstorexml/liststreams.h"

#include <deque>
#include <string>
#include <vector>

namespace FreqStoreXml {

/// Entries of a file that has to be read to its end before a list is emptied for it. They stand as bytes,
/// each as what differs from the one before: some 60 bytes a target. Owned by the reader.
class StagedEntries {
public:
    StagedEntries();
    StagedEntries(const StagedEntries&) = delete;
    StagedEntries& operator=(const StagedEntries&) = delete;

    /// Takes all entries of an XML file or, with `csv`, of one with the columns of `type`. Throws RGException
    /// "file:line: reason", and NotEnoughMemory when they do not fit into memory; there are no entries then.
    void Read(const QString& fileName, bool csv, FrequencyStoreListHelper::ListType type);

    /// The same for the entries that `read` hands on, on another thread when that is long work.
    void Read(const QString& fileName, const std::function<void(const EntryCallback&)>& read);

    void Append(const FrequencyStoreEntry& entry);
    qint64 Size() const { return m_size; }
    /// Gives the entries in their order and frees their memory behind them. The object is used again for the
    /// next one.
    void Drain(const EntryCallback& take);

private:
    /// The members of a record, by what they take in memory.
    struct Members {
        explicit Members(FrequencyStoreEntry& entry);

        const FrequencyStoreEntry* entry;
        std::vector<void*> words; ///< numbers and times, of eight bytes
        std::vector<int*> integers;
        std::vector<QString*> texts;
    };

    void clear();
    void takeChunk(std::string_view chunk, const EntryCallback& take);

    FrequencyStoreEntry m_last; ///< the one appended or drained last
    Members m_lastMembers;
    Members m_source; ///< the record that readers fill again and again
    std::deque<std::string> m_chunks;
    qint64 m_size = 0;
};

} // namespace FreqStoreXml
