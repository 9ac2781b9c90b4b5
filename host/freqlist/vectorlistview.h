#pragma once

#include "host/freqlist/vectorlistviewbase.h"
#include "host/valuetree/value.h"

#include <algorithm>
#include <numeric>

/// List view over a `ValueList<T>` without an object per record. `Format` makes the cell texts by a static
/// `QString FieldText(const T&, const QString& field)`. Derived views add columns, and override `Sort` where
/// they sort by something other than the texts.
template <typename T, typename Format>
class VectorListView : public VectorListViewBase {
public:
    using VectorListViewBase::VectorListViewBase;

protected:
    /// The record of a row; null when there is no such row. Good until the view takes its records anew.
    const T* Record(int row) {
        if (row < 0 || row >= RowCount())
            return nullptr;
        if (RecordOfRow(row) >= m_records.size())
            LoadAll();
        return row < RowCount() ? &m_records[RecordOfRow(row)] : nullptr;
    }
    /// All records in the order shown, whatever the filter hides, and those of the selected rows.
    std::vector<const T*> AllRecords() {
        LoadAll();
        return recordsAt(Order());
    }
    std::vector<const T*> SelectedRecords() {
        LoadAll();
        return recordsAt(SelectedRows());
    }

    SortListViewItem* CreateItem(int row) override {
        return new SortListViewItem(nullptr, RowTexts(*Record(row)), false);
    }
    QStringList RowTexts(const T& record) const {
        QStringList texts;
        for (const QString& field : Fields())
            texts << Format::FieldText(record, field);
        return texts;
    }

    /// Sorts by what `keyOf` gives for a record, asked for once each. The same column in the other direction
    /// turns the present order round. False when there is nothing to do.
    template <typename KeyOf>
    bool SortByKey(int column, bool ascending, KeyOf keyOf) {
        const SortStep step = NextSort(column, ascending);
        if (step == SortStep::Nothing)
            return false;
        std::vector<quint32> order = Order();
        if (step == SortStep::Anew) {
            std::vector<std::decay_t<decltype(keyOf(m_records.front()))>> keys;
            keys.reserve(m_records.size());
            for (const T& record : m_records)
                keys.push_back(keyOf(record));
            std::iota(order.begin(), order.end(), 0u);
            std::stable_sort(order.begin(), order.end(),
                             [&](quint32 a, quint32 b) { return keys[a] < keys[b]; });
        }
        if (step == SortStep::Reverse || !ascending)
            std::reverse(order.begin(), order.end());
        SetOrder(std::move(order));
        return true;
    }

    bool IsRecordList(const ValueBase* value) const override {
        return value_cast<ValueList<T>>(value) != nullptr;
    }
    int TakeRecords(const ValueBase* value, int atMost) override {
        m_records.clear();
        const auto* list = value_cast<ValueList<T>>(value);
        if (!list)
            return 0;
        const int size = static_cast<int>(list->Size());
        m_records.reserve(static_cast<size_t>(std::min(size, atMost)));
        for (const T& record : list->GetList()) {
            if (static_cast<int>(m_records.size()) == atMost)
                break;
            m_records.push_back(record);
        }
        return size;
    }
    QString CellText(quint32 record, int column) const override {
        return Format::FieldText(m_records[record], Fields()[static_cast<size_t>(column)]);
    }
    double RecordFrequency(quint32 record) const override { return m_records[record].GetFrequency(); }

private:
    std::vector<const T*> recordsAt(const std::vector<quint32>& places) const {
        std::vector<const T*> records;
        records.reserve(places.size());
        for (const quint32 place : places)
            records.push_back(&m_records[place]);
        return records;
    }

    std::vector<T> m_records;
};
