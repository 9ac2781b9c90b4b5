#include "workstation/frequencyaxis.h"

#include <cmath>

namespace {

constexpr double NarrowestRatio = 1.0001;
/// Ranges that are wider get ticks by decades.
constexpr double WideRatio = 8;
constexpr double PixelsPerMajor = 110;

} // namespace

bool FrequencyAxis::SetRange(double fromHertz, double toHertz) {
    const double from = std::clamp(fromHertz, Lowest, Highest);
    const double to = std::clamp(toHertz, Lowest, Highest);
    if (!(to / from >= NarrowestRatio))
        return false;
    m_from = from;
    m_to = to;
    return true;
}

bool FrequencyAxis::Zoom(double factor, double hertz) {
    return SetRange(hertz * std::pow(m_from / hertz, factor), hertz * std::pow(m_to / hertz, factor));
}

bool FrequencyAxis::Shift(double fromHertz, double toHertz, double share) {
    const double shift = std::pow(toHertz / fromHertz, share);
    return fromHertz * shift >= Lowest && toHertz * shift <= Highest &&
           SetRange(fromHertz * shift, toHertz * shift);
}

double FrequencyAxis::MapToPixel(double hertz) const {
    return hertz > 0 ? std::log(hertz / m_from) / std::log(m_to / m_from) * m_width
                     : -std::numeric_limits<double>::infinity();
}

double FrequencyAxis::MapToFrequency(double pixel) const {
    return m_from * std::pow(m_to / m_from, pixel / m_width);
}

std::vector<FrequencyAxis::Tick> FrequencyAxis::Ticks() const {
    return IsWide() ? decadeTicks() : evenTicks();
}

bool FrequencyAxis::IsWide() const {
    return m_to / m_from > WideRatio;
}

std::vector<FrequencyAxis::Tick> FrequencyAxis::decadeTicks() const {
    std::vector<Tick> ticks;
    for (double decade = std::pow(10, std::floor(std::log10(m_from))); decade <= m_to; decade *= 10) {
        for (int step = 1; step < 10; ++step) {
            const double hertz = decade * step;
            if (hertz >= m_from && hertz <= m_to)
                ticks.push_back({hertz, step == 1 || step == 2 || step == 5});
        }
    }
    return ticks;
}

std::vector<FrequencyAxis::Tick> FrequencyAxis::evenTicks() const {
    const double rough = (m_to - m_from) / std::max(m_width / PixelsPerMajor, 1.0);
    const double power = std::pow(10, std::floor(std::log10(rough)));
    const double mantissa = rough / power;
    const double step = power * (mantissa > 5 ? 10 : mantissa > 2 ? 5 : mantissa > 1 ? 2 : 1);
    const bool isTwo = mantissa > 1 && mantissa <= 2;
    const int parts = isTwo ? 4 : 5; // so that minor ticks are round, too
    std::vector<Tick> ticks;
    // Counted, since a sum of steps drifts away from round frequencies.
    for (auto number = static_cast<qint64>(std::ceil(m_from / step * parts));; ++number) {
        const double hertz = static_cast<double>(number) * step / parts;
        if (hertz > m_to)
            return ticks;
        ticks.push_back({hertz, number % parts == 0});
    }
}
