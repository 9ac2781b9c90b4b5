#pragma once

#include "host/freqstorexml/frequencystoreentry.h"

namespace FreqStoreXml {

/// A list of frequencies as it stands in files and on the clipboard; owns its entries.
///
/// \code
/// FreqStoreXml::FrequencyStoreList list;
/// list.SetUsage(FreqStoreXml::FrequencyStoreList::TargetList);
/// list.AppendFrequencyStoreEntry(entry);
/// \endcode
class FrequencyStoreList final : public REPORTGENERATOR::IRGObject {
public:
    /// What the list is.
    enum Usage : int { Unspecified = 0, SearchResults = 1, Noi = 2, TargetList = 3, MemoryChannels = 4 };

    FrequencyStoreList();

    const REPORTGENERATOR::RecordInfo& GetRecordInfo() const override;

    static QString UsageToName(Usage usage);
    /// Unspecified for an unknown name.
    static Usage NameToUsage(const QString& name);

    Usage GetUsage() const { return static_cast<Usage>(m_usage.value); }
    /// A number without a name counts as Unspecified.
    void SetUsage(int usage);

    QVector<FrequencyStoreEntry>& GetFrequencyStoreEntry() { return m_entries.items; }
    const QVector<FrequencyStoreEntry>& GetFrequencyStoreEntry() const { return m_entries.items; }
    void AppendFrequencyStoreEntry(const FrequencyStoreEntry& entry) { m_entries.items.append(entry); }

private:
    REPORTGENERATOR::NamedNumber m_usage;
    REPORTGENERATOR::ObjectList<FrequencyStoreEntry> m_entries;
};

} // namespace FreqStoreXml
