#pragma once

#include "host/report/irgobject.h"

namespace FreqStoreXml {

/// Base of the records that are one number. In XML the number is the element's text.
class NumberRecord : public REPORTGENERATOR::IRGObject {
public:
    /// The number in the record's unit; 0 where none is set.
    double GetValue() const { return NumberOr0(m_value); }
    /// A number that is not finite leaves the record empty.
    void SetValue(double value) { m_value = value; }

protected:
    double m_value = NoNumber;
};

/// A frequency in Hz.
class Frequency final : public NumberRecord {
public:
    const REPORTGENERATOR::RecordInfo& GetRecordInfo() const override;
    /// The number is not negative.
    bool Check() const override { return GetValue() >= 0.0; }
};

/// The bandwidth of a receiver's intermediate frequency in Hz.
class IFBandwidth final : public NumberRecord {
public:
    const REPORTGENERATOR::RecordInfo& GetRecordInfo() const override;
    /// The number is not negative.
    bool Check() const override { return GetValue() >= 0.0; }
};

/// The bandwidth of a signal in Hz.
class Bandwidth final : public NumberRecord {
public:
    const REPORTGENERATOR::RecordInfo& GetRecordInfo() const override;
    /// The number is not negative.
    bool Check() const override { return GetValue() >= 0.0; }
};

/// A symbol rate in Bd.
class Baudrate final : public NumberRecord {
public:
    const REPORTGENERATOR::RecordInfo& GetRecordInfo() const override;
    /// The number is not negative.
    bool Check() const override { return GetValue() >= 0.0; }
};

/// The shift of a frequency-shift keyed signal in Hz.
class Shift final : public NumberRecord {
public:
    const REPORTGENERATOR::RecordInfo& GetRecordInfo() const override;
};

} // namespace FreqStoreXml
