#pragma once

/// Sizes of the frequency bar, in pixels.
namespace BarSizes {

constexpr int LeastLabelWidth = 150; ///< of the names of lines
constexpr int MostLabelWidth = 220;
constexpr int LineHeight = 26; ///< where there is room
constexpr int LeastLineHeight = 8;
constexpr int AxisHeight = 26;
constexpr int Margin = 8;
constexpr int BandHeight = 4; ///< of the strip of bands of interest above the axis
constexpr int MajorTick = 6;
constexpr int MinorTick = 3;
constexpr int CatchPixels = 4; ///< how far from a mark a click still means it

} // namespace BarSizes
