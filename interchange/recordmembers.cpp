#include "interchange/recordmembers.h"

#include "host/report/irgobject.h"
#include "host/report/textform.h"
#include "interchange/jsonevents.h"

#include <algorithm>

namespace Interchange {

namespace {

using namespace REPORTGENERATOR;

/// Members whose names in records are not those of the lists' values.
constexpr std::pair<std::string_view, QLatin1String> Names[] = {
    {"IFBandwidth", QLatin1String("bandwidth")},   {"AnalogDemod", QLatin1String("demodulation")},
    {"ThreatClass", QLatin1String("threadclass")}, {"Reason", QLatin1String("locked")},
    {"ResultTime", QLatin1String("locktime")},
};
constexpr std::pair<QLatin1String, RecordMember::Form> Forms[] = {
    {QLatin1String("id"), RecordMember::Form::NumberOfText},
    {QLatin1String("priority"), RecordMember::Form::NumberOfText},
    {QLatin1String("locktime"), RecordMember::Form::MicrosecondsOfTime},
};

QString nameOf(std::string_view member) {
    const auto* const known = std::find_if(std::begin(Names), std::end(Names),
                                           [member](const auto& name) { return name.first == member; });
    if (known != std::end(Names))
        return known->second;
    return QString::fromLatin1(member.data(), static_cast<qsizetype>(member.size())).toLower();
}

RecordMember::Form formOf(const QString& name) {
    const auto* const known = std::find_if(std::begin(Forms), std::end(Forms),
                                           [&](const auto& form) { return name == form.first; });
    return known == std::end(Forms) ? RecordMember::Form::Same : known->second;
}

bool isWhole(QStringView text) {
    return !text.isEmpty() && text.size() < 10 &&
           std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; }) &&
           (text.front() != u'0' || text.size() == 1);
}

} // namespace

RecordMembers::RecordMembers(IRGObject& record) : m_record(&record) {
    add(record);
}

void RecordMembers::add(IRGObject& record) {
    const RecordInfo& info = record.GetRecordInfo();
    for (const MemberInfo& member : info.members) {
        const MemberPtr at = member.at(record);
        if (IRGObject* const* const inner = std::get_if<IRGObject*>(&at)) {
            add(**inner);
            continue;
        }
        const QString name = nameOf(member.placement == Placement::Content ? info.name : member.name);
        m_members.push_back({name, '"' + name.toStdString() + "\":", at, formOf(name)});
    }
}

void RecordMembers::AppendJson(std::string& out) const {
    const char* between = "";
    for (const RecordMember& member : m_members) {
        if (!IsSet(member.at))
            continue;
        out += std::exchange(between, ",");
        out += member.head;
        const auto* const text = std::get_if<QString*>(&member.at);
        const auto* const time = std::get_if<Timestamp*>(&member.at);
        const bool isPlain = member.form != RecordMember::Form::Same && (time || isWhole(**text));
        const char* const quote = isPlain || !(text || time) ? "" : "\"";
        out += quote;
        if (time && isPlain)
            out += std::to_string((*time)->usec);
        else
            AppendMember(out, member.at, JsonEscapes);
        out += quote;
    }
}

} // namespace Interchange
