#pragma once

#include "host/report/irgobject.h"

namespace FreqStoreXml {

/// What is known of the profile that a target belongs to. All members are free texts.
class Profile_Data final : public REPORTGENERATOR::IRGObject {
public:
    const REPORTGENERATOR::RecordInfo& GetRecordInfo() const override;

    /// Class of the signal.
    const QString& GetSignalClass() const { return m_signalClass; }
    void SetSignalClass(const QString& value) { m_signalClass = value; }

    /// Identifier of the profile.
    const QString& GetProfileID() const { return m_profileID; }
    void SetProfileID(const QString& value) { m_profileID = value; }

    /// Transmission system in use.
    const QString& GetTransmissionSystem() const { return m_transmissionSystem; }
    void SetTransmissionSystem(const QString& value) { m_transmissionSystem = value; }

    /// Name of the profile.
    const QString& GetProfileName() const { return m_profileName; }
    void SetProfileName(const QString& value) { m_profileName = value; }

    /// Priority as a decimal number text, "1" being the most urgent.
    const QString& GetPriority() const { return m_priority; }
    void SetPriority(const QString& value) { m_priority = value; }

    /// Threat class.
    const QString& GetThreatClass() const { return m_threatClass; }
    void SetThreatClass(const QString& value) { m_threatClass = value; }

private:
    QString m_signalClass;
    QString m_profileID;
    QString m_transmissionSystem;
    QString m_profileName;
    QString m_priority;
    QString m_threatClass;
};

} // namespace FreqStoreXml
