#include "host/freqstorexml/detectionresultlist.h"
#include "host/freqstorexml/frequencystorelist.h"

// The tables of the records: what the members are called in files, and in which order they are written.

namespace FreqStoreXml {

using REPORTGENERATOR::MemberAt;
using REPORTGENERATOR::MemberInfo;
using REPORTGENERATOR::Placement;
using REPORTGENERATOR::RecordInfo;

const RecordInfo& Frequency::GetRecordInfo() const {
    static constexpr MemberInfo Members[] = {
        {"Value", Placement::Content, MemberAt<&Frequency::m_value>},
    };
    static constexpr RecordInfo Info{"Frequency", Members, false};
    return Info;
}

const RecordInfo& IFBandwidth::GetRecordInfo() const {
    static constexpr MemberInfo Members[] = {
        {"Value", Placement::Content, MemberAt<&IFBandwidth::m_value>},
    };
    static constexpr RecordInfo Info{"IFBandwidth", Members, false};
    return Info;
}

const RecordInfo& Bandwidth::GetRecordInfo() const {
    static constexpr MemberInfo Members[] = {
        {"Value", Placement::Content, MemberAt<&Bandwidth::m_value>},
    };
    static constexpr RecordInfo Info{"Bandwidth", Members, false};
    return Info;
}

const RecordInfo& Baudrate::GetRecordInfo() const {
    static constexpr MemberInfo Members[] = {
        {"Value", Placement::Content, MemberAt<&Baudrate::m_value>},
    };
    static constexpr RecordInfo Info{"Baudrate", Members, false};
    return Info;
}

const RecordInfo& Shift::GetRecordInfo() const {
    static constexpr MemberInfo Members[] = {
        {"Value", Placement::Content, MemberAt<&Shift::m_value>},
    };
    static constexpr RecordInfo Info{"Shift", Members, false};
    return Info;
}

const RecordInfo& FFM_SettingsDetail::GetRecordInfo() const {
    static constexpr MemberInfo Members[] = {
        {"BFOFrequency", Placement::Element, MemberAt<&FFM_SettingsDetail::m_bfoFrequency>},
    };
    static constexpr RecordInfo Info{"FFM_SettingsDetail", Members, false};
    return Info;
}

const RecordInfo& FFM_Settings::GetRecordInfo() const {
    static constexpr MemberInfo Members[] = {
        {"Frequency", Placement::Element, MemberAt<&FFM_Settings::m_frequency>},
        {"IFBandwidth", Placement::Element, MemberAt<&FFM_Settings::m_ifBandwidth>},
        {"AnalogDemod", Placement::Element, MemberAt<&FFM_Settings::m_analogDemod>},
        {"Level", Placement::Element, MemberAt<&FFM_Settings::m_level>},
        {"Detail", Placement::Element, MemberAt<&FFM_Settings::m_detail>},
    };
    static constexpr RecordInfo Info{"FFM_Settings", Members, false};
    return Info;
}

const RecordInfo& Profile_Data::GetRecordInfo() const {
    static constexpr MemberInfo Members[] = {
        {"SignalClass", Placement::Element, MemberAt<&Profile_Data::m_signalClass>},
        {"ProfileID", Placement::Element, MemberAt<&Profile_Data::m_profileID>},
        {"TransmissionSystem", Placement::Element, MemberAt<&Profile_Data::m_transmissionSystem>},
        {"ProfileName", Placement::Element, MemberAt<&Profile_Data::m_profileName>},
        {"Priority", Placement::Element, MemberAt<&Profile_Data::m_priority>},
        {"ThreatClass", Placement::Element, MemberAt<&Profile_Data::m_threatClass>},
    };
    static constexpr RecordInfo Info{"Profile_Data", Members, false};
    return Info;
}

const RecordInfo& Detection::GetRecordInfo() const {
    static constexpr MemberInfo Members[] = {
        {"StartTime", Placement::Element, MemberAt<&Detection::m_startTime>},
        {"StopTime", Placement::Element, MemberAt<&Detection::m_stopTime>},
    };
    static constexpr RecordInfo Info{"Detection", Members, false};
    return Info;
}

const RecordInfo& ResultList::GetRecordInfo() const {
    static constexpr MemberInfo Members[] = {
        {"Reason", Placement::Element, MemberAt<&ResultList::m_reason>},
        {"ResultTime", Placement::Element, MemberAt<&ResultList::m_resultTime>},
        {"Confidence", Placement::Element, MemberAt<&ResultList::m_confidence>},
    };
    static constexpr RecordInfo Info{"ResultList", Members, false};
    return Info;
}

const RecordInfo& FrequencyStoreEntry::GetRecordInfo() const {
    static constexpr MemberInfo Members[] = {
        {"ID", Placement::Attribute, MemberAt<&FrequencyStoreEntry::m_id>},
        {"Type", Placement::Attribute, MemberAt<&FrequencyStoreEntry::m_type>},
        {"Comment", Placement::Element, MemberAt<&FrequencyStoreEntry::m_comment>},
        {"FFM_Settings", Placement::Element, MemberAt<&FrequencyStoreEntry::m_ffmSettings>},
        {"Profile_Data", Placement::Element, MemberAt<&FrequencyStoreEntry::m_profileData>},
        {"Detection", Placement::Element, MemberAt<&FrequencyStoreEntry::m_detection>},
        {"ResultList", Placement::Element, MemberAt<&FrequencyStoreEntry::m_resultList>},
    };
    static constexpr RecordInfo Info{"FrequencyStoreEntry", Members, false};
    return Info;
}

const RecordInfo& FrequencyStoreList::GetRecordInfo() const {
    static constexpr MemberInfo Members[] = {
        {"Usage", Placement::Attribute, MemberAt<&FrequencyStoreList::m_usage>},
        {"FrequencyStoreEntry", Placement::Element, MemberAt<&FrequencyStoreList::m_entries>},
    };
    static constexpr RecordInfo Info{"FrequencyStoreList", Members, true};
    return Info;
}

const RecordInfo& DetectionResult::GetRecordInfo() const {
    static constexpr MemberInfo Members[] = {
        {"ID", Placement::Attribute, MemberAt<&DetectionResult::m_id>},
        {"Type", Placement::Attribute, MemberAt<&DetectionResult::m_type>},
        {"Frequency", Placement::Element, MemberAt<&DetectionResult::m_frequency>},
        {"Bandwidth", Placement::Element, MemberAt<&DetectionResult::m_bandwidth>},
        {"Level", Placement::Element, MemberAt<&DetectionResult::m_level>},
        {"StartTime", Placement::Element, MemberAt<&DetectionResult::m_startTime>},
        {"StopTime", Placement::Element, MemberAt<&DetectionResult::m_stopTime>},
        {"Confidence", Placement::Element, MemberAt<&DetectionResult::m_confidence>},
        {"Modulation", Placement::Element, MemberAt<&DetectionResult::m_modulation>},
        {"TransmissionSystem", Placement::Element, MemberAt<&DetectionResult::m_transmissionSystem>},
        {"Baudrate", Placement::Element, MemberAt<&DetectionResult::m_baudrate>},
        {"Shift", Placement::Element, MemberAt<&DetectionResult::m_shift>},
        {"Decoder", Placement::Element, MemberAt<&DetectionResult::m_decoder>},
        {"Azimuth", Placement::Element, MemberAt<&DetectionResult::m_azimuth>},
        {"DFQuality", Placement::Element, MemberAt<&DetectionResult::m_dfQuality>},
        {"Longitude", Placement::Element, MemberAt<&DetectionResult::m_longitude>},
        {"Latitude", Placement::Element, MemberAt<&DetectionResult::m_latitude>},
    };
    static constexpr RecordInfo Info{"DetectionResult", Members, false};
    return Info;
}

const RecordInfo& DetectionResultList::GetRecordInfo() const {
    static constexpr MemberInfo Members[] = {
        {"Usage", Placement::Attribute, MemberAt<&DetectionResultList::m_usage>},
        {"ID", Placement::Attribute, MemberAt<&DetectionResultList::m_id>},
        {"Type", Placement::Attribute, MemberAt<&DetectionResultList::m_type>},
        {"Comment", Placement::Element, MemberAt<&DetectionResultList::m_comment>},
        {"DetectionResult", Placement::Element, MemberAt<&DetectionResultList::m_results>},
    };
    static constexpr RecordInfo Info{"DetectionResultList", Members, true};
    return Info;
}

namespace {

bool EndsAfterBegin(const REPORTGENERATOR::Timestamp& begin, const REPORTGENERATOR::Timestamp& end) {
    return !begin.IsSet() || !end.IsSet() || begin.usec <= end.usec;
}

} // namespace

bool Detection::Check() const {
    return EndsAfterBegin(m_startTime, m_stopTime);
}

bool DetectionResult::Check() const {
    return IRGObject::Check() && EndsAfterBegin(m_startTime, m_stopTime);
}

} // namespace FreqStoreXml
