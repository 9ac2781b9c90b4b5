#pragma once

#include "host/base/traceplace.h"

/// The few places that are fixed: whoever looks for such a message in a log looks for these source names and
/// lines, wherever the code that writes it stands today. They never change. All other traces tell the line of
/// their call.
namespace FixedPlace {

inline constexpr TracePlace ValueRefused("valueobservermacros", 297);

inline constexpr TracePlace CannotOpenList("listviewshandler", 897);
inline constexpr TracePlace CannotConvert("listviewshandler", 1069);
inline constexpr TracePlace ProfileTableText("listviewshandler", 608);
inline constexpr TracePlace CannotOpenProfileTable("listviewshandler", 615);
inline constexpr TracePlace TargetsWithoutController("listviewshandler", 1155);
inline constexpr TracePlace ResultsWithoutController("listviewshandler", 89);

inline constexpr TracePlace ResultWithoutRow("searchmcdatamediator", 54);

inline constexpr TracePlace SavingDetections("searchmcextendedvectorlistview", 650);
inline constexpr TracePlace SavingDetectionsReason("searchmcextendedvectorlistview", 651);
inline constexpr TracePlace ExportingDetections("searchmcextendedvectorlistview", 699);
inline constexpr TracePlace ExportingDetectionsReason("searchmcextendedvectorlistview", 700);

} // namespace FixedPlace
