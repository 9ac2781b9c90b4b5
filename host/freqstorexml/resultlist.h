#pragma once

#include "host/report/irgobject.h"

namespace FreqStoreXml {

/// The outcome of a search at an entry's frequency.
class ResultList final : public REPORTGENERATOR::IRGObject {
public:
    const REPORTGENERATOR::RecordInfo& GetRecordInfo() const override;

    /// Why the search stopped here, for example the lock state.
    const QString& GetReason() const { return m_reason; }
    void SetReason(const QString& value) { m_reason = value; }

    /// When; µs since 1970-01-01 UTC in the Usec forms, where 0 also stands for none; QDateTime rounds to ms.
    QDateTime GetResultTime() const { return m_resultTime.ToDateTime(); }
    void SetResultTime(const QDateTime& value) { m_resultTime = REPORTGENERATOR::Timestamp(value); }
    qint64 GetResultTimeUsec() const { return m_resultTime.IsSet() ? m_resultTime.usec : 0; }
    void SetResultTimeUsec(qint64 value) { m_resultTime = REPORTGENERATOR::Timestamp(value); }
    bool HasResultTime() const { return m_resultTime.IsSet(); }

    /// Confidence of the classification in percent; 0 where none is set.
    int GetConfidence() const { return NumberOr0(m_confidence); }
    void SetConfidence(int value) { m_confidence = value; }
    bool HasConfidence() const { return IsValid(m_confidence); }

private:
    QString m_reason;
    REPORTGENERATOR::Timestamp m_resultTime;
    int m_confidence = NoInteger;
};

} // namespace FreqStoreXml
