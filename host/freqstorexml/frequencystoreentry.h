#pragma once

#include "host/freqstorexml/detection.h"
#include "host/freqstorexml/ffm_settings.h"
#include "host/freqstorexml/profile_data.h"
#include "host/freqstorexml/resultlist.h"

namespace FreqStoreXml {

/// One frequency of a list with all that is known of it. Owned by its FrequencyStoreList or by whoever builds
/// it.
class FrequencyStoreEntry final : public REPORTGENERATOR::IRGObject {
public:
    const REPORTGENERATOR::RecordInfo& GetRecordInfo() const override;

    /// Identifier of the entry in its list.
    const QString& GetID() const { return m_iD; }
    void SetID(const QString& value) { m_iD = value; }

    /// Type letter of the entry, as a text of one character.
    const QString& GetType() const { return m_type; }
    void SetType(const QString& value) { m_type = value; }

    /// Comment or name of the entry.
    const QString& GetComment() const { return m_comment; }
    void SetComment(const QString& value) { m_comment = value; }

    /// Receiver settings.
    FFM_Settings& GetFFM_Settings() { return m_fFM_Settings; }
    const FFM_Settings& GetFFM_Settings() const { return m_fFM_Settings; }
    void SetFFM_Settings(const FFM_Settings& value) { m_fFM_Settings = value; }

    /// Profile of a target.
    Profile_Data& GetProfile_Data() { return m_profile_Data; }
    const Profile_Data& GetProfile_Data() const { return m_profile_Data; }
    void SetProfile_Data(const Profile_Data& value) { m_profile_Data = value; }

    /// Time on air of a detection.
    Detection& GetDetection() { return m_detection; }
    const Detection& GetDetection() const { return m_detection; }
    void SetDetection(const Detection& value) { m_detection = value; }

    /// Search result.
    ResultList& GetResultList() { return m_resultList; }
    const ResultList& GetResultList() const { return m_resultList; }
    void SetResultList(const ResultList& value) { m_resultList = value; }

private:
    QString m_iD;
    QString m_type;
    QString m_comment;
    FFM_Settings m_fFM_Settings;
    Profile_Data m_profile_Data;
    Detection m_detection;
    ResultList m_resultList;
};

} // namespace FreqStoreXml

Q_DECLARE_TYPEINFO(FreqStoreXml::FrequencyStoreEntry, Q_RELOCATABLE_TYPE);
