#include "host/freqstorexml/csvlayout.h"

#include "host/freqstorexml/detectionresult.h"
#include "host/report/rgexception.h"

#include <algorithm>
#include <array>
#include <span>

namespace FreqStoreXml {

using REPORTGENERATOR::IRGObject;
using REPORTGENERATOR::MemberInfo;
using REPORTGENERATOR::MemberPtr;
using REPORTGENERATOR::Placement;

namespace {

using ListType = FrequencyStoreListHelper::ListType;

/// Where the columns of frequency lists find their members: member names from the entry inwards.
struct ColumnPlace {
    std::string_view name;
    std::string_view path;
};

constexpr ColumnPlace Places[] = {
    {"ID", "ID"},
    {"Type", "Type"},
    {"Frequency", "FFM_Settings/Frequency"},
    {"Bandwidth", "FFM_Settings/IFBandwidth"},
    {"Comment", "Comment"},
    {"Demodulation", "FFM_Settings/AnalogDemod"},
    {"Level", "FFM_Settings/Level"},
    {"BFOFrequency", "FFM_Settings/Detail/BFOFrequency"},
    {"Priority", "Profile_Data/Priority"},
    {"ThreatClass", "Profile_Data/ThreatClass"},
    {"ProfileID", "Profile_Data/ProfileID"},
    {"ProfileName", "Profile_Data/ProfileName"},
    {"SignalClass", "Profile_Data/SignalClass"},
    {"TransmissionSystem", "Profile_Data/TransmissionSystem"},
    {"StartTime", "Detection/StartTime"},
    {"StopTime", "Detection/StopTime"},
    {"Reason", "ResultList/Reason"},
    {"ResultTime", "ResultList/ResultTime"},
    {"Confidence", "ResultList/Confidence"},
};

constexpr std::string_view DetectionColumns[] = {"ID",        "Frequency", "Bandwidth", "Level",
                                                 "StartTime", "StopTime",  "Type",      "Comment"};
constexpr std::string_view TargetColumns[] = {
    "Frequency", "Bandwidth",   "Comment",     "Demodulation",      "Type", "Priority", "ThreatClass",
    "ProfileID", "ProfileName", "SignalClass", "TransmissionSystem"};
constexpr std::string_view ResultColumns[] = {"Frequency", "Bandwidth", "Comment",    "Demodulation",
                                              "Type",      "Reason",    "ResultTime", "Confidence"};
constexpr std::string_view NoiColumns[] = {"Frequency", "Bandwidth", "Comment", "Type"};

const MemberInfo* FindMember(const IRGObject& record, std::string_view name) {
    const auto& info = record.GetRecordInfo();
    const MemberInfo* element = info.Find(name, Placement::Element);
    return element ? element : info.Find(name, Placement::Attribute);
}

/// Follows the path from a record to a member that is a number, text or time.
CsvColumn MakeColumn(std::string_view name, std::string_view path, IRGObject& record) {
    CsvColumn column{name, {}};
    IRGObject* at = &record;
    while (at) {
        const std::size_t end = std::min(path.find('/'), path.size());
        const MemberInfo* member =
            path.empty() ? at->GetRecordInfo().Content() : FindMember(*at, path.substr(0, end));
        column.path.push_back(member);
        const MemberPtr value = member->at(*at);
        auto* const* part = std::get_if<IRGObject*>(&value);
        at = part ? *part : nullptr;
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    return column;
}

CsvLayout MakeLayout(std::span<const std::string_view> names) {
    CsvLayout layout;
    FrequencyStoreEntry entry;
    for (const ColumnPlace& place : Places)
        if (names.empty())
            layout.columns.push_back(MakeColumn(place.name, place.path, entry));
    for (const std::string_view name : names)
        layout.columns.push_back(
            MakeColumn(name, std::ranges::find(Places, name, &ColumnPlace::name)->path, entry));
    return layout;
}

CsvLayout MakeDetectionResultLayout() {
    CsvLayout layout;
    DetectionResult result;
    for (const MemberInfo& member : result.GetRecordInfo().members)
        layout.columns.push_back(MakeColumn(member.name, member.name, result));
    return layout;
}

} // namespace

MemberPtr CsvColumn::At(IRGObject& record) const {
    MemberPtr value = &record;
    for (const MemberInfo* member : path)
        value = member->at(**std::get_if<IRGObject*>(&value));
    return value;
}

const CsvColumn* CsvLayout::Find(std::string_view heading) const {
    const auto found = std::ranges::find(columns, heading, &CsvColumn::name);
    return found == columns.end() ? nullptr : &*found;
}

const CsvLayout& CsvLayout::Of(ListType type) {
    static const auto* layouts = new std::array<std::pair<ListType, CsvLayout>, 5>{
        {{FrequencyStoreListHelper::XmlList, MakeLayout({})},
         {FrequencyStoreListHelper::Detections, MakeLayout(DetectionColumns)},
         {FrequencyStoreListHelper::Targets, MakeLayout(TargetColumns)},
         {FrequencyStoreListHelper::SearchResults, MakeLayout(ResultColumns)},
         {FrequencyStoreListHelper::NoiFrequencies, MakeLayout(NoiColumns)}}};
    for (const auto& [known, layout] : *layouts)
        if (known == type)
            return layout;
    throw RGException(QStringLiteral("there is no list type %1").arg(static_cast<int>(type)));
}

const CsvLayout& CsvLayout::OfDetectionResults() {
    static const auto* layout = new CsvLayout(MakeDetectionResultLayout());
    return *layout;
}

} // namespace FreqStoreXml
