#pragma once

#include "controls/frequencystore/common/simplefrequency.h"

/// One result of a classifier search: a classified signal with its bandwidth, whether the classifier locked
/// to it, when that was, and how sure the classification is. The type letter follows from lock state and
/// confidence; the list's mediator writes it.
class SearchMCDataResult : public SimpleFrequency {
public:
    SearchMCDataResult(Node* node, bool create, const GeneralEntry* source, Use use = Use::Kept);
    static const class Shape& Shape();

    /// Null when the value is missing or has ended.
    ValueSelection* GetLocked() const { return Alive(m_locked); }
    ValueNumeric<qint64>* GetLockTime() const { return Alive(m_lockTime); }
    ValueNumeric<int>* GetConfidence() const { return Alive(m_confidence); }

    /// Setters do nothing when the value is missing. A lock state that the selection lacks is appended to it.
    void SetLocked(const QString& state);
    /// Percent.
    void SetConfidence(int percent) { Set(m_confidence, percent); }
    /// Microseconds since 1970-01-01 UTC.
    void SetLockTime(quint64 microseconds) { Set(m_lockTime, static_cast<qint64>(microseconds)); }

private:
    void create();
    void attach();

    ValueSelection* m_bandwidthSelection = nullptr;
    ValueSelection* m_locked = nullptr;
    ValueNumeric<qint64>* m_lockTime = nullptr;
    ValueNumeric<int>* m_confidence = nullptr;
    Value<char>* m_type = nullptr;
};
