#pragma once

#include "interchange/format.h"

/// Each format, where it is defined; a new one gets its line here and in formats.cpp.
namespace Interchange {

extern const Format ChirpCsv;
extern const Format GqrxBookmarks;
extern const Format GqrxBandPlan;
extern const Format KiwiCsv;
extern const Format KiwiJson;
extern const Format SdrPlusJson;
extern const Format SdrSharpXml;
extern const Format EibiSchedule;
extern const Format ScannerCsv;
extern const Format AnnotationsCsv;
extern const Format FldigiFrequencies;
extern const Format OwnJson;
extern const Format OwnJsonLines;
extern const Format GeoJson;
extern const Format Kml;

} // namespace Interchange
