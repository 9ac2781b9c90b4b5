#pragma once

#include "host/freqstorexml/numberrecords.h"

namespace FreqStoreXml {

/// One detected emission with its classification and direction finding.
class DetectionResult final : public REPORTGENERATOR::IRGObject {
public:
    const REPORTGENERATOR::RecordInfo& GetRecordInfo() const override;
    /// The end does not precede the begin.
    bool Check() const override;

    /// Identifier of the result.
    const QString& GetID() const { return m_id; }
    void SetID(const QString& value) { m_id = value; }

    /// Type letter, as a text of one character.
    const QString& GetType() const { return m_type; }
    void SetType(const QString& value) { m_type = value; }

    /// Centre frequency in Hz.
    Frequency& GetFrequency() { return m_frequency; }
    const Frequency& GetFrequency() const { return m_frequency; }

    /// Bandwidth in Hz.
    Bandwidth& GetBandwidth() { return m_bandwidth; }
    const Bandwidth& GetBandwidth() const { return m_bandwidth; }

    /// Level in the unit of the receiver; 0 where none is set.
    double GetLevel() const { return NumberOr0(m_level); }
    void SetLevel(double value) { m_level = value; }
    bool HasLevel() const { return IsValid(m_level); }

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

    /// Confidence of the classification in percent; 0 where none is set.
    int GetConfidence() const { return NumberOr0(m_confidence); }
    void SetConfidence(int value) { m_confidence = value; }
    bool HasConfidence() const { return IsValid(m_confidence); }

    /// Modulation found.
    const QString& GetModulation() const { return m_modulation; }
    void SetModulation(const QString& value) { m_modulation = value; }

    /// Transmission system found.
    const QString& GetTransmissionSystem() const { return m_transmissionSystem; }
    void SetTransmissionSystem(const QString& value) { m_transmissionSystem = value; }

    /// Symbol rate in Bd.
    Baudrate& GetBaudrate() { return m_baudrate; }
    const Baudrate& GetBaudrate() const { return m_baudrate; }
    void SetBaudrate(const Baudrate& value) { m_baudrate = value; }

    /// Frequency shift in Hz.
    Shift& GetShift() { return m_shift; }
    const Shift& GetShift() const { return m_shift; }
    void SetShift(const Shift& value) { m_shift = value; }

    /// Decoder to use.
    const QString& GetDecoder() const { return m_decoder; }
    void SetDecoder(const QString& value) { m_decoder = value; }

    /// Bearing in degrees; 0 where none is set.
    double GetAzimuth() const { return NumberOr0(m_azimuth); }
    void SetAzimuth(double value) { m_azimuth = value; }
    bool HasAzimuth() const { return IsValid(m_azimuth); }

    /// Quality of the bearing in the unit of the direction finder; 0 where none is set.
    double GetDFQuality() const { return NumberOr0(m_dfQuality); }
    void SetDFQuality(double value) { m_dfQuality = value; }
    bool HasDFQuality() const { return IsValid(m_dfQuality); }

    /// Longitude in degrees, east positive; 0 where none is set.
    double GetLongitude() const { return NumberOr0(m_longitude); }
    void SetLongitude(double value) { m_longitude = value; }
    bool HasLongitude() const { return IsValid(m_longitude); }

    /// Latitude in degrees, north positive; 0 where none is set.
    double GetLatitude() const { return NumberOr0(m_latitude); }
    void SetLatitude(double value) { m_latitude = value; }
    bool HasLatitude() const { return IsValid(m_latitude); }

private:
    QString m_id;
    QString m_type;
    Frequency m_frequency;
    Bandwidth m_bandwidth;
    double m_level = NoNumber;
    REPORTGENERATOR::Timestamp m_startTime;
    REPORTGENERATOR::Timestamp m_stopTime;
    int m_confidence = NoInteger;
    QString m_modulation;
    QString m_transmissionSystem;
    Baudrate m_baudrate;
    Shift m_shift;
    QString m_decoder;
    double m_azimuth = NoNumber;
    double m_dfQuality = NoNumber;
    double m_longitude = NoNumber;
    double m_latitude = NoNumber;
};

} // namespace FreqStoreXml

Q_DECLARE_TYPEINFO(FreqStoreXml::DetectionResult, Q_RELOCATABLE_TYPE);
