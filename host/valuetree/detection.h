#pragma once

#include "host/valuetree/value.h"

#include <list>
#include <string>

/// One detection of a conventional search. Frequencies and bandwidths in Hz, level in dB, times in
/// microseconds since 1970-01-01 UTC.
class DetectionConventional {
public:
    virtual ~DetectionConventional() = default;
    DetectionConventional() = default;
    DetectionConventional(const DetectionConventional&) = default;
    DetectionConventional& operator=(const DetectionConventional&) = default;

    virtual double GetFrequency() const { return m_frequency; }
    virtual double GetBandwidth() const { return m_bandwidth; }
    unsigned GetID() const { return m_id; }
    short GetLevel() const { return m_level; }
    double GetStartTime() const { return m_startTime; }
    /// Meaningful only when the detection is no longer active.
    double GetStopTime() const { return m_stopTime; }
    bool GetActive() const { return m_active; }

    void SetFrequency(double hertz) { m_frequency = hertz; }
    void SetBandwidth(double hertz) { m_bandwidth = hertz; }
    void SetID(unsigned id) { m_id = id; }
    void SetLevel(short level) { m_level = level; }
    void SetStartTime(double microseconds) { m_startTime = microseconds; }
    void SetStopTime(double microseconds) { m_stopTime = microseconds; }
    void SetActive(bool active) { m_active = active; }

    bool operator==(const DetectionConventional& other) const;

private:
    double m_frequency = 0;
    double m_bandwidth = 0;
    double m_startTime = 0;
    double m_stopTime = 0;
    unsigned m_id = 0;
    short m_level = 0;
    bool m_active = false;
};

/// What the classifier and the direction finder add to a detection. Texts are UTF-8.
struct ClassifierResult {
    double frequency = 0;   ///< Hz
    double bandwidth = 0;   ///< Hz
    double baudrate = 0;    ///< Bd
    double shift = 0;       ///< Hz
    double blocklength = 0; ///< s
    double cycletime = 0;   ///< s; the VHF/UHF classifier delivers its tone count here
    short confidence = 0;   ///< percent
    std::string demodulator;
    std::string transmissionType;
    std::string channels;
    std::string decoder;
    std::string primMod;
    std::string azimuth;     ///< degrees, or a result code
    std::string dfQuality;   ///< percent, or a result code
    std::string dfLongitude; ///< degrees; several positions are separated by ","
    std::string dfLatitude;

    bool operator==(const ClassifierResult&) const = default;
};

/// A detection that carries classifier and direction-finder results.
class ExtendedDetectionConventional : public DetectionConventional {
public:
    double GetClassifierFrequency() const { return m_result.frequency; }
    double GetClassifierBandwidth() const { return m_result.bandwidth; }
    short GetClassifierConfidence() const { return m_result.confidence; }
    const std::string& GetClassifierDemodulator() const { return m_result.demodulator; }
    const std::string& GetClassifierTransmissionType() const { return m_result.transmissionType; }
    double GetClassifierBaudrate() const { return m_result.baudrate; }
    double GetClassifierShift() const { return m_result.shift; }
    double GetClassifierBlocklength() const { return m_result.blocklength; }
    double GetClassifierCycletime() const { return m_result.cycletime; }
    const std::string& GetClassifierChannels() const { return m_result.channels; }
    const std::string& GetClassifierDecoder() const { return m_result.decoder; }
    const std::string& GetClassifierPrimMod() const { return m_result.primMod; }
    const std::string& GetAzimuth() const { return m_result.azimuth; }
    const std::string& GetDFQuality() const { return m_result.dfQuality; }
    const std::string& GetDFLongitude() const { return m_result.dfLongitude; }
    const std::string& GetDFLatitude() const { return m_result.dfLatitude; }

    ClassifierResult& Result() { return m_result; }
    const ClassifierResult& Result() const { return m_result; }

    bool operator==(const ExtendedDetectionConventional& other) const {
        return DetectionConventional::operator==(other) && m_result == other.m_result;
    }

private:
    ClassifierResult m_result;
};

/// Cell texts of a detection. An active detection has no stop time yet: its text is empty.
struct DetectionConventionalAdapter {
    /// Type letter of every detection.
    static constexpr char Type = 'a';

    using Text = QString (*)(const DetectionConventional&);
    /// What makes the text of a field: "Frequency", "Name", "Bandwidth", "Level", "Type", "From", "Until".
    /// Null for any other name.
    static Text FindField(const QString& field);
    /// The text of a field by its name; empty when there is no such field.
    static QString FieldText(const DetectionConventional& record, const QString& field);
    static QString GetFrequencyString(const DetectionConventional& record);
    static QString GetName(const DetectionConventional& record);
    static QString GetBandwidthString(const DetectionConventional& record);
    static QString GetLevelString(const DetectionConventional& record);
    static QString GetStartTimeString(const DetectionConventional& record);
    static QString GetStopTimeString(const DetectionConventional& record);
};

namespace Detail {

/// Record lists have no text form to be read back: the text tells the number of records.
template <typename Record, ValueType Tag>
struct RecordListTraits {
    using Container = std::list<Record>;
    static constexpr ValueType Type = Tag;
    static QString ToText(const Container& list) { return QString::number(list.size()); }
    [[nodiscard]] static bool FromText(const QString&, Container&) { return false; }
};

} // namespace Detail

template <>
struct ValueListTraits<DetectionConventional>
    : Detail::RecordListTraits<DetectionConventional, ValueType::DetectionList> {
    static constexpr const char* Name = "detection list";
};

template <>
struct ValueListTraits<ExtendedDetectionConventional>
    : Detail::RecordListTraits<ExtendedDetectionConventional, ValueType::ExtendedDetectionList> {
    static constexpr const char* Name = "extended detection list";
};
