#pragma once

#include "host/report/irgobject.h"

namespace FreqStoreXml {

/// When a signal was on air.
class Detection final : public REPORTGENERATOR::IRGObject {
public:
    const REPORTGENERATOR::RecordInfo& GetRecordInfo() const override;
    /// The end does not precede the begin.
    bool Check() const override;

    /// Begin; µs since 1970-01-01 UTC in the Usec forms, where 0 also stands for none; QDateTime rounds to
    /// ms.
    QDateTime GetStartTime() const { return m_startTime.ToDateTime(); }
    void SetStartTime(const QDateTime& value) { m_startTime = REPORTGENERATOR::Timestamp(value); }
    qint64 GetStartTimeUsec() const { return m_startTime.IsSet() ? m_startTime.usec : 0; }
    void SetStartTimeUsec(qint64 value) { m_startTime = REPORTGENERATOR::Timestamp(value); }
    bool HasStartTime() const { return m_startTime.IsSet(); }

    /// End; none while the signal is active.
    QDateTime GetStopTime() const { return m_stopTime.ToDateTime(); }
    void SetStopTime(const QDateTime& value) { m_stopTime = REPORTGENERATOR::Timestamp(value); }
    qint64 GetStopTimeUsec() const { return m_stopTime.IsSet() ? m_stopTime.usec : 0; }
    void SetStopTimeUsec(qint64 value) { m_stopTime = REPORTGENERATOR::Timestamp(value); }
    bool HasStopTime() const { return m_stopTime.IsSet(); }

private:
    REPORTGENERATOR::Timestamp m_startTime;
    REPORTGENERATOR::Timestamp m_stopTime;
};

} // namespace FreqStoreXml
