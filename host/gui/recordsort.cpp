#include "host/gui/recordsort.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <optional>

namespace RecordSort {
namespace {

constexpr int DigitBits = 11;
constexpr size_t DigitCount = size_t(1) << DigitBits;
constexpr int Digits = (64 + DigitBits - 1) / DigitBits;

/// Keys of so few different values are counted by value instead of by digit.
constexpr size_t FewValues = 128;

struct Place {
    quint64 key;
    quint32 index;
};

size_t digitOf(quint64 key, int digit) {
    return (key >> (digit * DigitBits)) & (DigitCount - 1);
}

/// Sorts by the least digit first. Digits in which all keys agree are passed over.
void sortPlaces(std::vector<Place>& places) {
    quint64 differing = 0;
    for (const Place& place : places)
        differing |= place.key ^ places.front().key;
    std::vector<std::pair<int, std::array<quint32, DigitCount>>> digits;
    for (int digit = 0; digit < Digits; ++digit) {
        if (digitOf(differing, digit) != 0)
            digits.emplace_back(digit, std::array<quint32, DigitCount>());
    }
    for (const Place& place : places) {
        for (auto& [digit, counts] : digits)
            ++counts[digitOf(place.key, digit)];
    }
    std::vector<Place> sorted(places.size());
    for (auto& [digit, starts] : digits) {
        quint32 start = 0;
        for (quint32& count : starts)
            start += std::exchange(count, start);
        for (const Place& place : places)
            sorted[starts[digitOf(place.key, digit)]++] = place;
        places.swap(sorted);
    }
}

template <typename KeyOf>
std::vector<Place> sortedPlaces(size_t size, KeyOf keyOf) {
    std::vector<Place> places(size);
    for (size_t i = 0; i < size; ++i)
        places[i] = {keyOf(i), static_cast<quint32>(i)};
    sortPlaces(places);
    return places;
}

std::vector<quint32> indices(const std::vector<Place>& places) {
    std::vector<quint32> order(places.size());
    std::transform(places.begin(), places.end(), order.begin(),
                   [](const Place& place) { return place.index; });
    return order;
}

/// Texts that begin alike have the same head; what follows it decides among them.
template <typename HeadOf, typename Less>
std::vector<quint32> orderTexts(size_t size, HeadOf headOf, Less less) {
    std::vector<Place> places = sortedPlaces(size, headOf);
    auto from = places.begin();
    const auto goesBefore = [&](const Place& a, const Place& b) {
        LongWork::Step(from - places.begin(), static_cast<qint64>(size));
        return less(a.index, b.index);
    };
    while (from != places.end()) {
        const auto to = std::find_if(from, places.end(),
                                     [head = from->key](const Place& place) { return place.key != head; });
        if (to - from > 1 && !std::is_sorted(from, to, goesBefore))
            std::stable_sort(from, to, goesBefore);
        from = to;
    }
    return indices(places);
}

/// The different values among keys, numbered as they come.
class Values {
public:
    /// The number of a value, below `FewValues`; `FewValues` when it is one too many.
    size_t NumberOf(quint64 value) {
        size_t slot = (value * 0x9e3779b97f4a7c15) >> (64 - SlotBits); // spreads by the golden ratio
        while (m_numbers[slot] != 0 && m_values[m_numbers[slot] - 1u] != value)
            slot = (slot + 1) % Slots;
        if (m_numbers[slot] == 0) {
            if (m_values.size() == FewValues)
                return FewValues;
            m_values.push_back(value);
            m_numbers[slot] = static_cast<quint8>(m_values.size());
        }
        return m_numbers[slot] - 1u;
    }
    const std::vector<quint64>& All() const { return m_values; }

private:
    static constexpr int SlotBits = 9;
    static constexpr size_t Slots = size_t(1) << SlotBits;

    std::array<quint8, Slots> m_numbers{}; ///< of the value in the slot, from 1 on; 0 while it is free
    std::vector<quint64> m_values;
};

/// The order of keys of few values; none when they have too many.
std::optional<std::vector<quint32>> orderFewValues(const std::vector<quint64>& keys) {
    Values values;
    std::vector<quint8> numbers;
    numbers.reserve(keys.size());
    std::array<quint32, FewValues> counts{};
    for (const quint64 key : keys) {
        const size_t number = values.NumberOf(key);
        if (number == FewValues)
            return std::nullopt;
        ++counts[number];
        numbers.push_back(static_cast<quint8>(number));
    }
    std::vector<quint8> ascending(values.All().size());
    std::iota(ascending.begin(), ascending.end(), quint8(0));
    std::sort(ascending.begin(), ascending.end(),
              [&](quint8 a, quint8 b) { return values.All()[a] < values.All()[b]; });
    quint32 start = 0;
    for (const quint8 number : ascending)
        start += std::exchange(counts[number], start);
    std::vector<quint32> order(keys.size());
    for (size_t i = 0; i < numbers.size(); ++i)
        order[counts[numbers[i]]++] = static_cast<quint32>(i);
    return order;
}

quint64 headOf(const std::string& text) {
    quint64 head = 0;
    for (size_t i = 0; i < sizeof head; ++i)
        head = head << 8 | (i < text.size() ? static_cast<unsigned char>(text[i]) : 0u);
    return head;
}

quint64 headOf(QStringView text) {
    quint64 head = 0;
    for (qsizetype i = 0; i < 4; ++i)
        head = head << 16 | (i < text.size() ? text[i].unicode() : 0u);
    return head;
}

} // namespace

std::vector<quint32> Order(const std::vector<quint64>& keys) {
    if (std::optional<std::vector<quint32>> order = orderFewValues(keys))
        return *std::move(order);
    return indices(sortedPlaces(keys.size(), [&](size_t i) { return keys[i]; }));
}

std::vector<quint32> Order(const std::vector<const std::string*>& keys) {
    return orderTexts(
        keys.size(), [&](size_t i) { return headOf(*keys[i]); },
        [&](quint32 a, quint32 b) { return *keys[a] < *keys[b]; });
}

std::vector<quint32> Order(const MadeTexts& keys) {
    return orderTexts(
        keys.size(), [&](size_t i) { return headOf(keys[i]); },
        [&](quint32 a, quint32 b) { return keys[a] < keys[b]; });
}

void Place(std::vector<quint32>& order, const std::vector<quint32>& changed, quint32 count,
           const std::function<bool(quint32, quint32)>& before) {
    const auto firstNew = static_cast<quint32>(order.size());
    if (!changed.empty()) {
        std::vector<bool> moves(firstNew);
        for (const quint32 record : changed)
            moves[record] = true;
        std::erase_if(order, [&](quint32 record) { return moves[record]; });
    }
    std::vector<quint32> placed = changed;
    for (quint32 record = firstNew; record < count; ++record)
        placed.push_back(record);
    std::sort(placed.begin(), placed.end(), before);
    std::vector<quint32> merged;
    merged.reserve(count);
    auto rest = order.cbegin();
    for (const quint32 record : placed) {
        const auto to =
            std::partition_point(rest, order.cend(), [&](quint32 other) { return before(other, record); });
        merged.insert(merged.end(), rest, to);
        merged.push_back(record);
        rest = to;
    }
    merged.insert(merged.end(), rest, order.cend());
    order = std::move(merged);
}

} // namespace RecordSort
