#pragma once

#include "host/freqstorexml/numberrecords.h"

namespace FreqStoreXml {

/// Details of the receiver settings.
class FFM_SettingsDetail final : public REPORTGENERATOR::IRGObject {
public:
    const REPORTGENERATOR::RecordInfo& GetRecordInfo() const override;

    /// Whether any detail is set.
    bool AnyData() const { return HasData(); }

    /// Beat oscillator frequency in Hz; 0 where none is set.
    double GetBFOFrequency() const { return NumberOr0(m_bfoFrequency); }
    void SetBFOFrequency(double value) { m_bfoFrequency = value; }
    bool HasBFOFrequency() const { return IsValid(m_bfoFrequency); }

private:
    double m_bfoFrequency = NoNumber;
};

/// An analogue demodulation. Receivers and files bring names of their own, so this is no closed enumeration:
/// it holds the name ("AM", "USB", ...) and is made and asked by FFM_Settings.
class AnalogDemod {
public:
    AnalogDemod() = default;
    bool operator==(const AnalogDemod&) const = default;

private:
    friend class FFM_Settings;
    explicit AnalogDemod(const QString& name) : m_name(name) {}

    QString m_name;
};

/// The receiver settings of an entry: frequency, bandwidth, demodulation, level and details.
class FFM_Settings final : public REPORTGENERATOR::IRGObject {
public:
    const REPORTGENERATOR::RecordInfo& GetRecordInfo() const override;

    /// Tuned frequency in Hz.
    Frequency& GetFrequency() { return m_frequency; }
    const Frequency& GetFrequency() const { return m_frequency; }

    /// Bandwidth in Hz.
    IFBandwidth& GetIFBandwidth() { return m_ifBandwidth; }
    const IFBandwidth& GetIFBandwidth() const { return m_ifBandwidth; }

    /// Level in the unit of the receiver; 0 where none is set.
    double GetLevel() const { return NumberOr0(m_level); }
    void SetLevel(double value) { m_level = value; }
    bool HasLevel() const { return IsValid(m_level); }

    /// Settings that only some receivers have.
    FFM_SettingsDetail& GetDetail() { return m_detail; }
    const FFM_SettingsDetail& GetDetail() const { return m_detail; }
    void SetDetail(const FFM_SettingsDetail& value) { m_detail = value; }

    /// Analogue demodulation; without a name where none is set.
    AnalogDemod GetAnalogDemod() const { return AnalogDemod(m_analogDemod); }
    void SetAnalogDemod(const AnalogDemod& demod) { m_analogDemod = demod.m_name; }
    /// Any name gives a demodulation, and comes back from it as it went in.
    static AnalogDemod NameToAnalogDemod(const QString& name) { return AnalogDemod(name); }
    static const QString& AnalogDemodToName(const AnalogDemod& demod) { return demod.m_name; }

private:
    QString m_analogDemod;
    Frequency m_frequency;
    IFBandwidth m_ifBandwidth;
    double m_level = NoNumber;
    FFM_SettingsDetail m_detail;
};

} // namespace FreqStoreXml
