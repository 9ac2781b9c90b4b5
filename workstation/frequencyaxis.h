#pragma once

#include "host/freqlist/pixstatevector.h"

#include <vector>

/// A logarithmic frequency axis: which range of the radio spectrum lies on how many pixels.
class FrequencyAxis final : public IHasHMap {
public:
    static constexpr double Lowest = 9e3; ///< Hz, the lower end of the radio spectrum
    static constexpr double Highest = 30e9;

    struct Tick {
        double hertz;
        bool isMajor;
    };

    double From() const { return m_from; }
    double To() const { return m_to; }
    int Width() const { return m_width; }
    void SetWidth(int pixels) { m_width = std::max(pixels, 1); }
    /// Takes a range (Hz), as much of it as lies in the spectrum; false when next to nothing is left.
    bool SetRange(double fromHertz, double toHertz);
    /// Makes the range so many times as wide (below 1: narrower); what lies at `hertz` stays where it is.
    bool Zoom(double factor, double hertz);
    /// Moves a range by a share of its width, upwards when positive; false, and nothing moves, at the end of
    /// the spectrum.
    bool Shift(double fromHertz, double toHertz, double share);

    double MapToPixel(double hertz) const override;
    double MapToFrequency(double pixel) const override;
    /// Round frequencies in the range, from low to high: 1-2-5 steps per decade while it is wide, even steps
    /// when it is narrow, with minor ones between them.
    std::vector<Tick> Ticks() const;
    /// Whether the range has ticks by decades.
    bool IsWide() const;

private:
    std::vector<Tick> decadeTicks() const;
    std::vector<Tick> evenTicks() const;

    double m_from = 100e3;
    double m_to = 1e9;
    int m_width = 1;
};
