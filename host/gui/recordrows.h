#pragma once

#include "host/gui/recordfilter.h"
#include "host/gui/recordorder.h"

#include <optional>

/// Which record stands in which row: the records in their order, without those that the filter hides. It
/// keeps nothing itself, so it is right whatever becomes of order and filter, which must outlive it. Rows
/// count from 0; while the filter is at work they are those that it found so far.
class RecordRows {
public:
    RecordRows(const RecordOrder& order, const RecordFilter& filter) : m_order(order), m_filter(filter) {}

    int Count() const;
    /// The record of a row that there is.
    quint32 RecordAt(int row) const;
    /// The row of a record; negative for one that is hidden, and for none.
    int RowOf(std::optional<quint32> record) const;
    /// The records of all rows.
    std::vector<quint32> Records() const;
    bool IsShown(quint32 record) const { return !m_filter.IsOn() || m_filter.Passes(record); }
    /// The record that takes the place of a hidden one: the next shown, else the last; nothing when all are
    /// hidden.
    std::optional<quint32> NextShown(quint32 record) const;

private:
    /// By row; empty while rows are those of the list.
    const std::vector<quint32>& listed() const {
        return m_filter.IsOn() ? m_filter.Passed() : m_order.Sorted();
    }
    bool isListed() const { return m_filter.IsOn() || !m_order.Sorted().empty(); }

    const RecordOrder& m_order;
    const RecordFilter& m_filter;
};
