#pragma once

#include "host/freqstorexml/detection.h"
#include "host/freqstorexml/ffm_settings.h"
#include "host/freqstorexml/profile_data.h"
#include "host/freqstorexml/resultlist.h"

namespace FreqStoreXml {

/// One frequency of a list with all that is known of it. Owned by its FrequencyStoreList or by whoever builds
/// it.
///
/// \code
/// FreqStoreXml::FrequencyStoreEntry entry;
/// entry.SetComment(QStringLiteral("calling"));
/// entry.GetFFM_Settings().GetFrequency().SetValue(7055000); // Hz
/// \endcode
class FrequencyStoreEntry final : public REPORTGENERATOR::IRGObject {
public:
    const REPORTGENERATOR::RecordInfo& GetRecordInfo() const override;

    /// Identifier of the entry in its list.
    const QString& GetID() const { return m_id; }
    void SetID(const QString& value) { m_id = value; }

    /// Type letter of the entry, as a text of one character.
    const QString& GetType() const { return m_type; }
    void SetType(const QString& value) { m_type = value; }

    /// Comment or name of the entry.
    const QString& GetComment() const { return m_comment; }
    void SetComment(const QString& value) { m_comment = value; }

    /// Receiver settings.
    FFM_Settings& GetFFM_Settings() { return m_ffmSettings; }
    const FFM_Settings& GetFFM_Settings() const { return m_ffmSettings; }
    void SetFFM_Settings(const FFM_Settings& value) { m_ffmSettings = value; }

    /// Profile of a target.
    Profile_Data& GetProfile_Data() { return m_profileData; }
    const Profile_Data& GetProfile_Data() const { return m_profileData; }
    void SetProfile_Data(const Profile_Data& value) { m_profileData = value; }

    /// Time on air of a detection.
    Detection& GetDetection() { return m_detection; }
    const Detection& GetDetection() const { return m_detection; }
    void SetDetection(const Detection& value) { m_detection = value; }

    /// Search result.
    ResultList& GetResultList() { return m_resultList; }
    const ResultList& GetResultList() const { return m_resultList; }
    void SetResultList(const ResultList& value) { m_resultList = value; }

private:
    QString m_id;
    QString m_type;
    QString m_comment;
    FFM_Settings m_ffmSettings;
    Profile_Data m_profileData;
    Detection m_detection;
    ResultList m_resultList;
};

} // namespace FreqStoreXml

Q_DECLARE_TYPEINFO(FreqStoreXml::FrequencyStoreEntry, Q_RELOCATABLE_TYPE);
