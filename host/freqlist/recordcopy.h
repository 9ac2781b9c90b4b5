#pragma once

#include "host/base/observer.h"
#include "host/valuetree/valuebase.h"

#include <limits>
#include <optional>
#include <vector>

/// Records copied from a list value, and what is asked of them whatever their type. Records go by their place
/// in the copy, from 0.
class CopiedRecords {
public:
    virtual ~CopiedRecords() = default;

    virtual bool IsRecordList(const ValueBase* value) const = 0;
    /// Copies the first `atMost` records of a list; null has none. Returns how many there are in all.
    virtual int TakeRecords(const ValueBase* value, int atMost) = 0;
    /// Records of a list that the copy does not have.
    virtual int CountNew(const ValueBase* value) const = 0;
    /// Brings the copy up to date when only some records came or changed; `edited` are the numbers of those
    /// that changed, and of those that came no more are taken than `atMost`. Returns how many there are in
    /// all; nothing when the copy must be taken anew.
    [[nodiscard]] virtual std::optional<int> TakeChanges(const ValueBase* value, int atMost,
                                                         std::vector<quint32>& edited) = 0;
    /// Whether one record goes before another in ascending order of the sorted column; asked only where the
    /// order is known.
    virtual bool KnowsOrder() const = 0;
    virtual bool GoesBefore(quint32 a, quint32 b) const = 0;
    /// The text of a cell, and the frequency (Hz) of a record.
    virtual QString CellText(quint32 record, int column) const = 0;
    virtual double RecordFrequency(quint32 record) const = 0;
    virtual unsigned RecordId(quint32 record) const = 0;
};

/// How much of a list a copy of its records holds. The copy follows one list value at a time, is taken anew
/// or brought up to date when its owner says so, and may for a while be only the head of a long list.
class RecordCopy {
public:
    static constexpr int All = std::numeric_limits<int>::max();

    /// `records` hold the copy; they must outlive it.
    explicit RecordCopy(CopiedRecords& records) : m_records(records) {}

    /// Follows a list from now on, and lets the observer observe it; the one before no more. Null, and what
    /// is no record list, are followed as no list. What was copied stays until it is taken anew.
    void Follow(ValueBase* value, IObserver* observer);
    bool IsFollowing() const { return m_value.get() != nullptr; }
    bool Follows(const Observable* subject) const;
    /// The list has ended.
    void Forget() { m_value = nullptr; }

    /// Records of the list, and those of them that the copy holds: the first ones.
    int Count() const { return m_count; }
    int Taken() const { return m_taken; }
    bool IsPart() const { return m_taken < m_count; }
    /// Records that the list has and the copy has not.
    int CountNew() const { return m_records.CountNew(m_value.get()); }

    void TakeAnew(int atMost);

    struct Changes {
        std::vector<quint32> edited; ///< ascending, each once
        bool any;                    ///< whether the list has changed at all
    };
    /// Takes what changed, and no more than `atMost` of the records that came; nothing when the copy must be
    /// taken anew.
    [[nodiscard]] std::optional<Changes> TakeChanges(int atMost);

private:
    CopiedRecords& m_records;
    WeakRef<ValueBase> m_value;
    int m_count = 0;
    int m_taken = 0;
};
