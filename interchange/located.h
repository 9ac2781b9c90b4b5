#pragma once

#include "interchange/format.h"

#include <string>

namespace Interchange {

/// What formats for maps share: a detection with a location is a place, all else has none and is refused.
class PlaceEncoder : public Encoder {
public:
    void Append(std::string& out, const FreqStoreXml::FrequencyStoreEntry& entry, Account& lost) final;
    void Append(std::string& out, const FreqStoreXml::DetectionResult& result, Account& lost) final;

    bool HoldsRecords() const final { return true; }

protected:
    /// `number` counts from 0.
    virtual void AppendPlace(std::string& out, const FreqStoreXml::DetectionResult& result,
                             qint64 number) = 0;
    /// "longitude,latitude" in degrees of WGS 84.
    static void AppendLocation(std::string& out, const FreqStoreXml::DetectionResult& result);
};

} // namespace Interchange
