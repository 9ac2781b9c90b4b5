#pragma once

#include <QHash>

#include <memory>
#include <vector>

/// The entry objects of the channels that were read from jobs, in order, and the first one of each range
/// number. Channels may end meanwhile; their entries are then passed over.
template <typename Entry>
class RangeEntries {
public:
    void Append(std::unique_ptr<Entry> entry) {
        remember(entry.get());
        m_entries.push_back(std::move(entry));
    }
    void Clear() {
        m_entries.clear();
        m_first.clear();
    }
    /// Drops the entries of ended channels and takes the numbers as they are now; before a job is read.
    void Refresh() {
        int number = 0;
        std::erase_if(m_entries, [&](const auto& entry) { return !entry->GetRangeNumber(number); });
        m_first.clear();
        for (const auto& entry : m_entries)
            remember(entry.get());
    }
    /// The first entry of that number, in constant time; null when there is none.
    Entry* Find(long number) const {
        Entry* entry = m_first.value(number);
        int present = 0;
        return entry && entry->GetRangeNumber(present) && present == number ? entry : nullptr;
    }

private:
    void remember(Entry* entry) {
        int number = 0;
        if (entry->GetRangeNumber(number) && !m_first.contains(number))
            m_first.insert(number, entry);
    }

    std::vector<std::unique_ptr<Entry>> m_entries;
    QHash<long, Entry*> m_first;
};
