#pragma once

#include "host/freqlist/vectorlistviewbase.h"
#include "host/gui/recordsort.h"
#include "host/valuetree/value.h"

#include <algorithm>

namespace Detail {

/// Records by number, in blocks that never move: a long copy grows without being copied itself.
template <typename T>
class RecordBlocks {
public:
    size_t size() const { return m_size; }
    const T& operator[](size_t i) const { return m_blocks[i / BlockSize][i % BlockSize]; }
    T& operator[](size_t i) { return m_blocks[i / BlockSize][i % BlockSize]; }
    void push_back(const T& record) {
        if (m_size++ % BlockSize == 0)
            m_blocks.emplace_back().reserve(BlockSize);
        m_blocks.back().push_back(record);
    }
    void clear() {
        m_blocks.clear();
        m_size = 0;
    }

private:
    static constexpr size_t BlockSize = 1024;

    std::vector<std::vector<T>> m_blocks;
    size_t m_size = 0;
};

} // namespace Detail

/// List view over a `ValueList<T>` without an object per record. `Format` tells what makes the texts of a
/// column by a static `FindField(const QString& field)`, see `DetectionConventionalAdapter`. Derived views
/// add columns, and override `Sort` where they sort by something other than the texts.
///
/// \code
/// class DetectionView : public VectorListView<DetectionConventional, DetectionConventionalAdapter> {
/// public:
///     DetectionView(QWidget* parent, const QString& path) : VectorListView(parent, "DetectionView") {
///         AddColumn(QStringLiteral("Frequency"), QStringLiteral("Frequency"), _compNumericWithSuffix);
///         Set_ValuePath(path);
///     }
/// };
/// \endcode
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
    /// All records in the order shown, whatever the filter hides or waits, and those of the selected rows.
    std::vector<const T*> AllRecords() {
        if (IsPaused())
            UpdateView();
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
        for (size_t column = 0; column < Fields().size(); ++column)
            texts << fieldText(record, column);
        return texts;
    }

    bool Sort(int column, bool ascending) override {
        if (!VectorListViewBase::Sort(column, ascending))
            return false;
        m_key = nullptr;
        return true;
    }
    /// Sorts by a key, asked for once of each record. The same column in the other direction turns the
    /// present order round. False when there is nothing to do. The key, which must stay, then places new
    /// records.
    bool SortByKey(int column, bool ascending, const RecordSort::Key<T>& key) {
        const SortStep step = NextSort(column, ascending);
        if (step == SortStep::Nothing)
            return false;
        std::vector<quint32> order = step == SortStep::Anew ? RecordSort::OrderBy(key, m_records) : Order();
        if (step == SortStep::Reverse || !ascending)
            std::reverse(order.begin(), order.end());
        m_key = &key;
        SetOrder(std::move(order), column, ascending);
        ShowOrderUnlessArranging();
        return true;
    }

    bool IsRecordList(const ValueBase* value) const override {
        return value_cast<ValueList<T>>(value) != nullptr;
    }
    int TakeRecords(const ValueBase* value, int atMost) override {
        m_records.clear();
        m_seen = {};
        m_key = nullptr;
        const auto* list = value_cast<ValueList<T>>(value);
        if (!list)
            return 0;
        m_seen = list->SeenNow();
        takeNew(*list, atMost);
        return static_cast<int>(list->Size());
    }
    std::optional<int> TakeChanges(const ValueBase* value, int atMost,
                                   std::vector<quint32>& edited) override {
        const auto* list = value_cast<ValueList<T>>(value);
        std::vector<typename ValueList<T>::Edited> edits;
        if (!list || !list->ChangesSince(m_seen, edits))
            return std::nullopt;
        for (const auto& edit : edits) {
            if (edit.place >= m_records.size())
                continue;
            m_records[edit.place] = *edit.element;
            edited.push_back(static_cast<quint32>(edit.place));
        }
        m_seen = list->SeenNow();
        takeNew(*list, atMost);
        return static_cast<int>(list->Size());
    }
    int CountNew(const ValueBase* value) const override {
        const auto* list = value_cast<ValueList<T>>(value);
        if (!list)
            return 0;
        const bool isSame = list->SeenNow().rewrites == m_seen.rewrites;
        return static_cast<int>(list->Size() - (isSame ? std::min(list->Size(), m_seen.size) : 0));
    }
    bool KnowsOrder() const override { return m_key != nullptr; }
    bool GoesBefore(quint32 a, quint32 b) const override {
        return RecordSort::Before(*m_key, m_records[a], m_records[b]);
    }
    QString CellText(quint32 record, int column) const override {
        return fieldText(m_records[record], static_cast<size_t>(column));
    }
    double RecordFrequency(quint32 record) const override { return m_records[record].GetFrequency(); }
    unsigned RecordId(quint32 record) const override { return m_records[record].GetID(); }

private:
    QString fieldText(const T& record, size_t column) const {
        for (size_t known = m_texts.size(); known < Fields().size(); ++known)
            m_texts.push_back(Format::FindField(Fields()[known]));
        return m_texts[column] ? m_texts[column](record) : QString();
    }
    void takeNew(const ValueList<T>& list, int atMost) {
        auto next = m_records.size() == 0 ? list.Elements().begin() : std::next(m_last);
        for (; next != list.Elements().end() && atMost > 0; --atMost) {
            m_records.push_back(*next);
            m_last = next++;
        }
    }
    std::vector<const T*> recordsAt(const std::vector<quint32>& places) const {
        std::vector<const T*> records;
        records.reserve(places.size());
        for (const quint32 place : places)
            records.push_back(&m_records[place]);
        return records;
    }

    Detail::RecordBlocks<T> m_records;
    mutable std::vector<QString (*)(const T&)> m_texts;      ///< by column, as far as they were asked for
    typename ValueList<T>::Container::const_iterator m_last; ///< in the list, of the copy's last one
    typename ValueList<T>::Seen m_seen;                      ///< how much of the list the copy holds
    const RecordSort::Key<T>* m_key = nullptr;               ///< of the order, when it is one by a key
};
