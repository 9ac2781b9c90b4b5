#pragma once

#include <QRgb>

#include <array>

/// Colours of levels: from dark blue over green to yellow, with even steps of lightness, so that equal
/// differences of level look equal, in grey and to eyes that do not tell red from green, too.
namespace LevelColors {

constexpr int Count = 256;

/// By level, from the lowest to the highest; opaque.
const std::array<QRgb, Count>& Table();
/// The colour of a level between two others (dB); what lies outside has the colour of the nearer one.
QRgb ColorOf(double level, double lowest, double highest);

} // namespace LevelColors
