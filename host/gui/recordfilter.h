#pragma once

#include "host/base/query.h"

#include <functional>
#include <vector>

/// Which records of a list match a query. Long lists are looked
/// through a part at a time, in the order in which they are shown, so that what was found is seen at once and
/// nobody waits for the rest.
class RecordFilter {
public:
    /// `matches` asks the query of the cells of a record.
    explicit RecordFilter(std::function<bool(quint32 record)> matches) : m_matches(std::move(matches)) {}

    /// An empty query lets all through. Tells whether only records that passed the one before can match.
    bool SetQuery(Query query);
    const Query& GetQuery() const { return m_query; }
    const QString& GetText() const { return m_query.GetText(); }
    bool IsOn() const { return !m_query.IsEmpty(); }

    /// Begins to look through these of `count` records, given in the order shown; no other can match.
    void Begin(std::vector<quint32> records, size_t count);
    /// Looks at so many more records.
    void LookOn(size_t records);
    bool IsComplete() const { return m_next == m_toLookAt.size(); }

    /// Looks again at records that changed, and at those from the present count on. `order` is that of all.
    void Renew(const std::vector<quint32>& changed, size_t count, const std::vector<quint32>& order);
    /// The same records in another order.
    void Reorder(const std::vector<quint32>& order);

    /// These records pass, whatever is in them.
    void LetPass(const std::vector<quint32>& records, const std::vector<quint32>& order);
    /// Records went, and those that are left have new numbers, see `RecordOrder::Renumber`.
    void Renumber(const std::vector<quint32>& numbers, size_t count);

    /// What was found so far: all records in the order shown, and whether one is among them.
    const std::vector<quint32>& Passed() const { return m_passed; }
    bool Passes(quint32 record) const { return m_passes[record]; }
    const std::vector<bool>& PassesByRecord() const { return m_passes; }

private:
    std::function<bool(quint32)> m_matches;
    Query m_query;
    std::vector<quint32> m_toLookAt;
    size_t m_next = 0;             ///< of these
    std::vector<bool> m_passes;    ///< by record
    std::vector<quint32> m_passed; ///< in the order shown
};
