#include "host/freqlist/entrymerge.h"

#include "host/base/frequencytext.h"
#include "host/base/numbers.h"
#include "host/freqlist/keys.h"

#include <queue>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <set>

namespace EntryMerge {

namespace {

/// Follow from other values, or number what has no meaning in another list.
constexpr const char* FollowingKeys[] = {"type", "rangecounter"};
/// What lists write where they know nothing.
constexpr const char* Placeholders[] = {"undefined", "not defined", "not classified", "none", "unknown"};
constexpr const char* BandwidthKeys[] = {"bandwidth", "bandwidthsel"};

template <size_t N>
bool isAmong(const QString& text, const char* const (&texts)[N]) {
    return std::any_of(std::begin(texts), std::end(texts), [&](const char* known) {
        return text.compare(QLatin1String(known), Qt::CaseInsensitive) == 0;
    });
}

const QString& frequencyKey() {
    static const QString key = FreqList::KeyFrequency.Text();
    return key;
}

const QString& commentKey() {
    static const QString key = FreqList::KeyComment.Text();
    return key;
}

const QString& demodulationKey() {
    static const QString key = FreqList::KeyDemodulation.Text();
    return key;
}

bool isFrequencyAsText(const QString& comment, double hertz) {
    return comment == Quor::FrequencyText(hertz) || comment == Quor::ToShortest(hertz);
}

const Field* find(std::span<const Field> fields, const QString& key) {
    const auto found =
        std::find_if(fields.begin(), fields.end(), [&](const Field& field) { return field.key == key; });
    return found == fields.end() ? nullptr : &*found;
}

} // namespace

QString Said(const Field& field, double hertz) {
    if (field.key == commentKey())
        return isFrequencyAsText(field.text, hertz) ? QString() : field.text;
    if (isAmong(field.text, Placeholders))
        return QString();
    double number = 0;
    if (isAmong(field.key, BandwidthKeys) && Quor::ParseDouble(field.text, number) && number == 0.0)
        return QString();
    return field.text;
}

double FrequencyOf(std::span<const Field> fields) {
    double hertz = 0;
    const Field* field = find(fields, frequencyKey());
    return field && Quor::ParseDouble(field->text, hertz) ? hertz : std::numeric_limits<double>::quiet_NaN();
}

std::vector<Difference> Differences(std::span<const Field> mine, std::span<const Field> theirs,
                                    Silence silence) {
    std::vector<Difference> found;
    const double hertzOfMine = FrequencyOf(mine);
    const double hertzOfTheirs = FrequencyOf(theirs);
    const auto note = [&](const QString& key, const Field* own, const Field* other) {
        const QString ours = own ? Said(*own, hertzOfMine) : QString();
        const QString said = other ? Said(*other, hertzOfTheirs) : QString();
        if (ours != said && !isAmong(key, FollowingKeys))
            found.push_back({key, ours, said});
    };
    for (const Field& field : mine) {
        const Field* other = find(theirs, field.key);
        if (silence == Silence::Differs || (other && !Said(*other, hertzOfTheirs).isEmpty()))
            note(field.key, &field, other);
    }
    for (const Field& field : theirs) {
        if (silence == Silence::Differs && !find(mine, field.key))
            note(field.key, nullptr, &field);
    }
    return found;
}

QString JoinedComments(const QString& mine, const QString& theirs) {
    constexpr QLatin1String Gap("; ");
    QStringList parts = mine.split(Gap, Qt::SkipEmptyParts);
    for (const QString& part : theirs.split(Gap, Qt::SkipEmptyParts)) {
        if (!parts.contains(part))
            parts << part;
    }
    return parts.join(Gap);
}

quint32 KeyMaker::numberOf(const QString& demodulation) {
    quint32& number = m_demodulations[demodulation];
    if (number == 0)
        number = static_cast<quint32>(m_demodulations.size());
    return number;
}

Key KeyMaker::Of(std::span<const Field> fields) {
    Key key;
    key.frequency = FrequencyOf(fields);
    for (const Field& field : fields) {
        if (isAmong(field.key, FollowingKeys))
            continue;
        const QString said = Said(field, key.frequency);
        if (said.isEmpty()) // as one that the list does not have
            continue;
        key.content += qHashMulti(0, field.key, said); // in whatever order
        if (field.key == commentKey())
            key.name = qHash(said);
        else if (field.key == demodulationKey())
            key.demodulation = numberOf(said.toUpper());
    }
    return key;
}

Key KeyMaker::Of(double hertz, const QString& demodulation) {
    const QString said = Said({demodulationKey(), demodulation}, hertz);
    Key key;
    key.frequency = hertz;
    key.demodulation = said.isEmpty() ? 0 : numberOf(said.toUpper());
    return key;
}

namespace {

/// Pairs the entries of two lists, step by step; those that are paired are out of the next step.
class Pairing {
public:
    Pairing(std::span<const Key> mine, std::span<const Key> theirs)
        : m_lists{mine, theirs},
          m_taken{std::vector<bool>(mine.size()), std::vector<bool>(theirs.size())},
          m_ofTheirs(theirs.size(), None) {}

    using Part = size_t (*)(const Key& key);
    /// Entries of the same frequency that have the same of something, the n-th of mine with the n-th of
    /// theirs.
    void PairEqual(Part part);
    using Pick = bool (*)(const Key& key);
    /// Entries of those that are picked whose frequencies are nearest, of the same demodulation or of any.
    void PairNearest(double tolerance, bool sameDemodulation, Pick ofMine, Pick ofTheirs);

    std::vector<quint32> Result() && { return std::move(m_ofTheirs); }

private:
    enum Side : size_t { Mine, Theirs };

    /// Entries of one side and frequency that stand next to each other, first those that come first.
    struct Stand {
        double frequency;
        quint32 demodulation;
        Side side;
        size_t begin; ///< among the sorted ones
        size_t end;
        size_t before;
        size_t behind;
    };
    struct Sorted {
        quint64 frequency; ///< in the order of numbers
        size_t part;
        quint32 place;
        Side side;

        auto operator<=>(const Sorted&) const = default;
    };
    struct Gap {
        double width;
        size_t low; ///< the stand below it
        size_t high;

        bool operator>(const Gap& other) const {
            return width != other.width ? width > other.width : low > other.low;
        }
    };

    void pair(quint32 mine, quint32 theirs) {
        m_taken[Mine][mine] = true;
        m_taken[Theirs][theirs] = true;
        m_ofTheirs[theirs] = mine;
    }
    std::vector<Sorted> sorted(Side side, Part part) const;
    std::vector<Sorted> picked(bool sameDemodulation, Pick ofMine, Pick ofTheirs) const;
    std::vector<Stand> standsOf(const std::vector<Sorted>& order) const;
    void pairStands(std::vector<Stand>& stands, const std::vector<Sorted>& order, double tolerance);

    std::array<std::span<const Key>, 2> m_lists;
    std::array<std::vector<bool>, 2> m_taken;
    std::vector<quint32> m_ofTheirs;
};

std::vector<Pairing::Sorted> Pairing::sorted(Side side, Part part) const {
    std::vector<Sorted> order;
    const std::span<const Key> list = m_lists[side];
    for (quint32 place = 0; place < list.size(); ++place) {
        if (!m_taken[side][place])
            order.push_back({Quor::OrderedBits(list[place].frequency), part(list[place]), place, side});
    }
    std::sort(order.begin(), order.end());
    return order;
}

void Pairing::PairEqual(Part part) {
    const std::vector<Sorted> mine = sorted(Mine, part);
    const std::vector<Sorted> theirs = sorted(Theirs, part);
    auto own = mine.begin();
    auto other = theirs.begin();
    while (own != mine.end() && other != theirs.end()) {
        const auto left = std::pair(own->frequency, own->part);
        const auto right = std::pair(other->frequency, other->part);
        if (left == right)
            pair(own->place, other->place);
        const bool ownGoesOn = left <= right;
        const bool otherGoesOn = right <= left;
        own += ownGoesOn ? 1 : 0;
        other += otherGoesOn ? 1 : 0;
    }
}

/// The entries that may be paired, sorted by demodulation, where that matters, and frequency.
std::vector<Pairing::Sorted> Pairing::picked(bool sameDemodulation, Pick ofMine, Pick ofTheirs) const {
    std::vector<Sorted> order;
    for (const auto& [side, pick] : {std::pair(Mine, ofMine), std::pair(Theirs, ofTheirs)}) {
        const std::span<const Key> list = m_lists[side];
        for (quint32 place = 0; place < list.size(); ++place) {
            const Key& key = list[place];
            if (!m_taken[side][place] && std::isfinite(key.frequency) && pick(key))
                order.push_back({Quor::OrderedBits(key.frequency), sameDemodulation ? key.demodulation : 0u,
                                 place, side});
        }
    }
    const auto less = [](const Sorted& a, const Sorted& b) {
        return std::tie(a.part, a.frequency, a.side, a.place) <
               std::tie(b.part, b.frequency, b.side, b.place);
    };
    std::sort(order.begin(), order.end(), less);
    return order;
}

std::vector<Pairing::Stand> Pairing::standsOf(const std::vector<Sorted>& order) const {
    std::vector<Stand> stands;
    for (size_t i = 0; i < order.size(); ++i) {
        const Sorted& entry = order[i];
        const bool goesOn = i > 0 && order[i - 1].frequency == entry.frequency &&
                            order[i - 1].part == entry.part && order[i - 1].side == entry.side;
        if (goesOn) {
            ++stands.back().end;
            continue;
        }
        const size_t place = stands.size();
        stands.push_back({m_lists[entry.side][entry.place].frequency, static_cast<quint32>(entry.part),
                          entry.side, i, i + 1, place - 1, place + 1});
    }
    return stands;
}

/// The two nearest frequencies of all always stand next to each other: the narrowest gap goes first, and
/// where a stand is used up its neighbours become neighbours.
void Pairing::pairStands(std::vector<Stand>& stands, const std::vector<Sorted>& order, double tolerance) {
    std::priority_queue<Gap, std::vector<Gap>, std::greater<>> gaps;
    const auto look = [&](size_t low, size_t high) {
        if (low >= stands.size() || high >= stands.size() || stands[low].side == stands[high].side ||
            stands[low].demodulation != stands[high].demodulation)
            return;
        const double width = stands[high].frequency - stands[low].frequency;
        if (width <= tolerance)
            gaps.push({width, low, high});
    };
    for (size_t i = 1; i < stands.size(); ++i)
        look(i - 1, i);
    while (!gaps.empty()) {
        const Gap gap = gaps.top();
        gaps.pop();
        Stand& low = stands[gap.low];
        Stand& high = stands[gap.high];
        if (low.begin == low.end || high.begin == high.end)
            continue; // one has been used up by a narrower gap
        Stand& mine = low.side == Mine ? low : high;
        Stand& theirs = low.side == Mine ? high : low;
        while (mine.begin != mine.end && theirs.begin != theirs.end)
            pair(order[mine.begin++].place, order[theirs.begin++].place);
        for (const size_t used : {gap.low, gap.high}) {
            const Stand& stand = stands[used];
            if (stand.begin != stand.end)
                continue;
            if (stand.before < stands.size())
                stands[stand.before].behind = stand.behind;
            if (stand.behind < stands.size())
                stands[stand.behind].before = stand.before;
        }
        const size_t before = low.begin == low.end ? low.before : gap.low;
        const size_t behind = high.begin == high.end ? high.behind : gap.high;
        look(before, behind);
    }
}

void Pairing::PairNearest(double tolerance, bool sameDemodulation, Pick ofMine, Pick ofTheirs) {
    const std::vector<Sorted> order = picked(sameDemodulation, ofMine, ofTheirs);
    std::vector<Stand> stands = standsOf(order);
    pairStands(stands, order, tolerance);
}

} // namespace

std::vector<quint32> Match(std::span<const Key> mine, std::span<const Key> theirs, double tolerance) {
    static constexpr Pairing::Pick any = [](const Key&) { return true; };
    static constexpr Pairing::Pick without = [](const Key& key) { return key.demodulation == 0; };
    Pairing pairing(mine, theirs);
    pairing.PairEqual([](const Key& key) { return key.content; });
    pairing.PairEqual([](const Key& key) { return qHashMulti(0, key.name, key.demodulation); });
    for (const double within : {0.0, tolerance}) {
        pairing.PairNearest(within, true, any, any);
        pairing.PairNearest(within, false, any, without);
        pairing.PairNearest(within, false, without, any);
    }
    return std::move(pairing).Result();
}

std::vector<quint32> FindDuplicates(std::span<const Key> entries, double tolerance) {
    constexpr quint32 AnyDemodulation = None;
    std::map<quint32, std::set<double>> kept;
    const auto isNear = [&](quint32 demodulation, double frequency) {
        const auto found = kept.find(demodulation);
        if (found == kept.end())
            return false;
        const auto next = found->second.lower_bound(frequency - tolerance);
        return next != found->second.end() && *next <= frequency + tolerance;
    };
    std::vector<quint32> duplicates;
    for (quint32 place = 0; place < entries.size(); ++place) {
        const Key& key = entries[place];
        if (!std::isfinite(key.frequency))
            continue;
        const bool isOne = key.demodulation == 0
                               ? isNear(AnyDemodulation, key.frequency)
                               : isNear(key.demodulation, key.frequency) || isNear(0, key.frequency);
        if (isOne) {
            duplicates.push_back(place);
            continue;
        }
        kept[key.demodulation].insert(key.frequency);
        kept[AnyDemodulation].insert(key.frequency);
    }
    return duplicates;
}

} // namespace EntryMerge
