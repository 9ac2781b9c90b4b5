#include "receiver/radioabilities.h"

#include <QCoreApplication>

#include <algorithm>
#include <bit>

namespace {

constexpr double HighestFrequency = 1e11; // Hz, for a radio that does not say
constexpr double NarrowestPassband = 1;
constexpr double WidestPassband = 20e6;
constexpr int LowestPitch = 300; // Hz, where the radio does not say
constexpr int HighestPitch = 1050;
constexpr int HighestAttenuation = 60;
constexpr int AntennaBits = 30; // above are marks that name no antenna
constexpr int ModeBits = 40;
constexpr long WidestNarrowFm = 50000; // Hz

/// The ranges that are there, of a list which ends with an empty one.
std::vector<freq_range_t> rangesOf(const RIG& rig) {
    std::vector<freq_range_t> ranges;
    for (const freq_range_t& range : rig.state.rx_range_list) {
        if (RIG_IS_FRNG_END(range))
            break;
        ranges.push_back(range);
    }
    return ranges;
}

std::vector<filter_list> filtersOf(const RIG& rig, rmode_t modes) {
    std::vector<filter_list> filters;
    for (const filter_list& filter : rig.state.filters) {
        if (RIG_IS_FLT_END(filter))
            break;
        if (filter.modes & modes)
            filters.push_back(filter);
    }
    return filters;
}

rmode_t modesOf(const RIG& rig) {
    rmode_t modes = RIG_MODE_NONE;
    for (const freq_range_t& range : rangesOf(rig))
        modes |= range.modes;
    return modes;
}

ReceiverAbility frequency(const RIG& rig) {
    ReceiverAbility ability{Keys::KeyFrequency, 0, HighestFrequency};
    const std::vector<freq_range_t> ranges = rangesOf(rig);
    if (!ranges.empty()) {
        ability.min = std::ranges::min(ranges, {}, &freq_range_t::startf).startf;
        ability.max = std::ranges::max(ranges, {}, &freq_range_t::endf).endf;
    }
    ability.step = RadioAbilities::SmallestStep(rig);
    return ability;
}

ReceiverAbility bandwidth(const RIG& rig) {
    ReceiverAbility ability{Keys::KeyBandwidth, NarrowestPassband, WidestPassband};
    std::vector<double> widths;
    for (const filter_list& filter : filtersOf(rig, ~rmode_t(0))) {
        if (filter.width != RIG_FLT_ANY)
            widths.push_back(static_cast<double>(filter.width));
    }
    if (!widths.empty()) {
        ability.min = std::ranges::min(widths);
        ability.max = std::ranges::max(widths);
    }
    return ability;
}

ReceiverAbility demodulation(const RIG& rig) {
    ReceiverAbility ability{Keys::KeyDemodulation};
    const rmode_t modes = modesOf(rig);
    for (int bit = 0; bit < ModeBits; ++bit) {
        const QString name = (modes >> bit) & 1 ? RadioAbilities::ModeName(rmode_t(1) << bit) : QString();
        if (!name.isEmpty())
            ability.choices.push_back({name, double(bit), bit});
    }
    return ability;
}

ReceiverAbility attenuation(const RIG& rig) {
    ReceiverAbility ability{Keys::Attenuation, 0, HighestAttenuation};
    for (const int decibel : rig.state.attenuator) {
        if (RIG_IS_DBLST_END(decibel))
            break;
        ability.only.push_back(decibel);
    }
    if (!ability.only.empty()) {
        ability.only.push_back(0);
        std::ranges::sort(ability.only);
        ability.max = ability.only.back();
    }
    return ability;
}

ReceiverAbility pitch(const RIG& rig) {
    const gran_t& limits = rig.state.level_gran[rig_setting2idx(RIG_LEVEL_CWPITCH)];
    if (limits.max.i > limits.min.i)
        return {Keys::BFOFrequency, double(limits.min.i), double(limits.max.i),
                std::max(double(limits.step.i), 1.0)};
    return {Keys::BFOFrequency, LowestPitch, HighestPitch};
}

/// A client of another program reads fewer lines of an antenna than that program sends, and takes the rest
/// for the answer to the next question.
bool knowsAntennas(const RIG& rig) {
    return rig.caps->get_ant && rig.caps->set_ant && rig.caps->rig_model != RIG_MODEL_NETRIGCTL;
}

/// By name and by number.
void addAntennas(const RIG& rig, std::vector<ReceiverAbility>& abilities) {
    ant_t antennas = 0;
    for (const freq_range_t& range : rangesOf(rig))
        antennas |= range.ant;
    antennas &= (ant_t(1) << AntennaBits) - 1;
    if (!knowsAntennas(rig) || std::popcount(antennas) < 2)
        return;
    ReceiverAbility names{KeyAntenna};
    for (int bit = 0; bit < AntennaBits; ++bit) {
        if ((antennas >> bit) & 1)
            names.choices.push_back({QStringLiteral("ANT%1").arg(bit + 1), double(bit + 1), bit + 1});
    }
    abilities.push_back({Keys::AntennaID, 0, AntennaBits});
    abilities.push_back(names);
}

} // namespace

std::vector<ReceiverAbility> RadioAbilities::Of(RIG& rig) {
    std::vector<ReceiverAbility> abilities{frequency(rig)};
    if (rig.caps->set_mode && modesOf(rig) != RIG_MODE_NONE) {
        abilities.push_back(bandwidth(rig));
        abilities.push_back(demodulation(rig));
    }
    if (rig_has_set_level(&rig, RIG_LEVEL_ATT)) {
        abilities.push_back(attenuation(rig));
        abilities.push_back({Keys::UseAttenuation});
    }
    if (rig_has_set_level(&rig, RIG_LEVEL_CWPITCH))
        abilities.push_back(pitch(rig));
    if (rig_has_set_level(&rig, RIG_LEVEL_SQL))
        abilities.push_back({KeySquelchLevel, 0, 100});
    if (rig_has_set_func(&rig, RIG_FUNC_AFC))
        abilities.push_back({Keys::AFC});
    if (HasOffset(rig))
        abilities.push_back({KeyOffset, -double(rig.state.max_rit), double(rig.state.max_rit)});
    addAntennas(rig, abilities);
    return abilities;
}

bool RadioAbilities::Receives(const RIG& rig, double hertz) {
    const std::vector<freq_range_t> ranges = rangesOf(rig);
    return ranges.empty() || std::ranges::any_of(ranges, [hertz](const freq_range_t& range) {
               return hertz >= range.startf && hertz <= range.endf;
           });
}

double RadioAbilities::SmallestStep(const RIG& rig) {
    double smallest = 0;
    for (const tuning_step_list& step : rig.state.tuning_steps) {
        if (RIG_IS_TS_END(step))
            break;
        if (step.ts > RIG_TS_ANY && (smallest == 0 || static_cast<double>(step.ts) < smallest))
            smallest = static_cast<double>(step.ts);
    }
    return std::max(smallest, 1.0);
}

QString RadioAbilities::ModeName(rmode_t mode) {
    const char* name = rig_strrmode(mode);
    return name ? QString::fromLatin1(name) : QString();
}

rmode_t RadioAbilities::ModeOf(const RIG& rig, const QString& name, long width) {
    if (name == QLatin1String("FM") && width > WidestNarrowFm && (modesOf(rig) & RIG_MODE_WFM))
        return RIG_MODE_WFM;
    return rig_parse_mode(name.toLatin1().constData());
}

pbwidth_t RadioAbilities::PassbandOf(const RIG& rig, rmode_t mode, long width) {
    const std::vector<filter_list> filters = filtersOf(rig, mode);
    const auto takesAny = [](const filter_list& filter) { return filter.width == RIG_FLT_ANY; };
    if (width == 0 || filters.empty() || std::ranges::any_of(filters, takesAny))
        return width;
    return std::ranges::min(filters, {},
                            [width](const filter_list& filter) { return std::labs(filter.width - width); })
        .width;
}

bool RadioAbilities::HasOffset(const RIG& rig) {
    return rig.caps->set_rit && rig.caps->get_rit && rig.state.max_rit > 0;
}

int RadioAbilities::ReadAntenna(RIG& rig) {
    ant_t current = 0;
    ant_t transmits = 0;
    ant_t receives = 0;
    value_t option{};
    if (!knowsAntennas(rig) ||
        rig_get_ant(&rig, RIG_VFO_CURR, RIG_ANT_CURR, &option, &current, &transmits, &receives) != RIG_OK)
        return 0;
    const ant_t antenna = current & ((ant_t(1) << AntennaBits) - 1);
    return antenna ? std::countr_zero(antenna) + 1 : 0;
}
