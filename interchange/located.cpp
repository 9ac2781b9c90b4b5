#include "interchange/located.h"

#include "host/report/textform.h"

#include <QCoreApplication>

#include <cmath>

namespace Interchange {

namespace {

/// A bearing of several positions, and one that has none, comes as 0/0, where nobody transmits.
bool hasLocation(const FreqStoreXml::DetectionResult& result) {
    const double longitude = result.GetLongitude();
    const double latitude = result.GetLatitude();
    return result.HasLongitude() && result.HasLatitude() && std::abs(longitude) <= 180 &&
           std::abs(latitude) <= 90 && (longitude != 0 || latitude != 0);
}

void refuse(Account& lost) {
    ++lost.refused;
    lost.Count(QT_TRANSLATE_NOOP("Account", "entries without a location"));
}

} // namespace

void PlaceEncoder::Append(std::string&, const FreqStoreXml::FrequencyStoreEntry&, Account& lost) {
    refuse(lost);
}

void PlaceEncoder::Append(std::string& out, const FreqStoreXml::DetectionResult& result, Account& lost) {
    if (hasLocation(result))
        AppendPlace(out, result, lost.entries++);
    else
        refuse(lost);
}

void PlaceEncoder::AppendLocation(std::string& out, const FreqStoreXml::DetectionResult& result) {
    REPORTGENERATOR::AppendNumber(out, result.GetLongitude());
    out += ',';
    REPORTGENERATOR::AppendNumber(out, result.GetLatitude());
}

} // namespace Interchange
