#pragma once

/// The level in dBµV at 50 ohms that a radio's meter calls S9 at a frequency (Hz): -73 dBm on short wave,
/// -93 dBm above.
inline double S9At(double hertz) {
    constexpr double ShortWaveEnd = 30e6;
    return hertz < ShortWaveEnd ? 34 : 14;
}
