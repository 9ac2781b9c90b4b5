#include "interchange/formatlist.h"
#include "interchange/located.h"
#include "interchange/recordmembers.h"

namespace Interchange {

namespace {

// Places for maps (RFC 7946): a feature per detection, longitude first, in degrees of WGS 84. Its properties
// are the members that the detection has in our own JSON.

bool knows(const QString& head) {
    return head.trimmed().startsWith(u'{') && head.contains(QLatin1String("\"FeatureCollection\""));
}

class FeatureEncoder : public PlaceEncoder {
public:
    void Begin(std::string& out) override { out += "{\"type\":\"FeatureCollection\",\"features\":["; }
    void End(std::string& out) override { out += "\n]}\n"; }

protected:
    void AppendPlace(std::string& out, const FreqStoreXml::DetectionResult& result, qint64 number) override {
        m_result = result;
        out += number == 0 ? "\n" : ",\n";
        out += "{\"type\":\"Feature\",\"geometry\":{\"type\":\"Point\",\"coordinates\":[";
        AppendLocation(out, result);
        out += "]},\"properties\":{";
        m_members.AppendJson(out);
        out += "}}";
    }

private:
    FreqStoreXml::DetectionResult m_result;
    RecordMembers m_members{m_result};
};

} // namespace

const Format GeoJson{"geojson",
                     "GeoJSON",
                     ".geojson",
                     "entries without a location, which only detections with classifier results have",
                     knows,
                     nullptr,
                     []() -> std::unique_ptr<Encoder> { return std::make_unique<FeatureEncoder>(); }};

} // namespace Interchange
