#include "interchange/formatlist.h"
#include "interchange/located.h"
#include "interchange/recordmembers.h"
#include "interchange/rows.h"

namespace Interchange {

namespace {

// Places for maps (KML 2.2): a placemark per detection, with the time that it was on air. Elements stand in
// the order of the schema.

using namespace REPORTGENERATOR;

bool knows(const QString& head) {
    return head.trimmed().startsWith(u'<') && head.contains(QLatin1String("<kml"));
}

class PlacemarkEncoder : public PlaceEncoder {
public:
    void Begin(std::string& out) override {
        out += "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<kml xmlns=\"http://www.opengis.net/kml/2.2\">\n"
               "<Document>\n<name>Detections</name>\n";
    }
    void End(std::string& out) override { out += "</Document>\n</kml>\n"; }

protected:
    void AppendPlace(std::string& out, const FreqStoreXml::DetectionResult& result, qint64) override {
        m_result = result;
        out += "<Placemark><name>";
        AppendFixed(out, result.GetFrequency().GetValue() / 1e6, 6);
        out += " MHz</name>";
        appendTimes(out);
        out += "<ExtendedData>";
        for (const RecordMember& member : m_members.All()) {
            if (!IsSet(member.at))
                continue;
            out += "<Data name=\"" + member.name.toStdString() + "\"><value>";
            AppendMember(out, member.at, XmlTextEscapes);
            out += "</value></Data>";
        }
        out += "</ExtendedData><Point><coordinates>";
        AppendLocation(out, result);
        out += "</coordinates></Point></Placemark>\n";
    }

private:
    /// A span without an end goes on.
    void appendTimes(std::string& out) const {
        const std::pair<const char*, Timestamp> times[] = {
            {"begin", m_result.HasStartTime() ? Timestamp(m_result.GetStartTimeUsec()) : Timestamp()},
            {"end", m_result.HasStopTime() ? Timestamp(m_result.GetStopTimeUsec()) : Timestamp()}};
        if (!times[0].second.IsSet() && !times[1].second.IsSet())
            return;
        out += "<TimeSpan>";
        for (const auto& [name, time] : times) {
            if (!time.IsSet())
                continue;
            out += std::string("<") + name + '>';
            AppendTime(out, time);
            out += std::string("</") + name + '>';
        }
        out += "</TimeSpan>";
    }

    FreqStoreXml::DetectionResult m_result;
    RecordMembers m_members{m_result};
};

} // namespace

const Format Kml{"kml",
                 "KML",
                 ".kml",
                 "entries without a location, which only detections with classifier results have",
                 knows,
                 nullptr,
                 []() -> std::unique_ptr<Encoder> { return std::make_unique<PlacemarkEncoder>(); }};

} // namespace Interchange
