#include "host/freqlist/recordsort.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>

namespace RecordSort {
namespace {

constexpr int DigitBits = 11;
constexpr size_t DigitCount = size_t(1) << DigitBits;
constexpr int Digits = (64 + DigitBits - 1) / DigitBits;

struct Place {
    quint64 key;
    quint32 index;
};

size_t digitOf(quint64 key, int digit) {
    return (key >> (digit * DigitBits)) & (DigitCount - 1);
}

/// Sorts by the least digit first; digits in which all keys agree cost nothing but the count.
void sortPlaces(std::vector<Place>& places) {
    std::vector<std::array<quint32, DigitCount>> counts(Digits);
    for (const Place& place : places) {
        for (int digit = 0; digit < Digits; ++digit)
            ++counts[static_cast<size_t>(digit)][digitOf(place.key, digit)];
    }
    std::vector<Place> sorted(places.size());
    for (int digit = 0; digit < Digits; ++digit) {
        std::array<quint32, DigitCount>& starts = counts[static_cast<size_t>(digit)];
        if (starts[digitOf(places.front().key, digit)] == places.size())
            continue;
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
    if (!places.empty())
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
    const auto goesBefore = [&](const Place& a, const Place& b) { return less(a.index, b.index); };
    for (auto from = places.begin(); from != places.end();) {
        const auto to = std::find_if(from, places.end(),
                                     [head = from->key](const Place& place) { return place.key != head; });
        if (to - from > 1 && !std::is_sorted(from, to, goesBefore))
            std::stable_sort(from, to, goesBefore);
        from = to;
    }
    return indices(places);
}

quint64 headOf(const std::string& text) {
    quint64 head = 0;
    for (size_t i = 0; i < sizeof head; ++i)
        head = head << 8 | (i < text.size() ? static_cast<unsigned char>(text[i]) : 0u);
    return head;
}

quint64 headOf(const QString& text) {
    quint64 head = 0;
    for (qsizetype i = 0; i < 4; ++i)
        head = head << 16 | (i < text.size() ? text[i].unicode() : 0u);
    return head;
}

} // namespace

quint64 OrderedBits(double value) {
    if (std::isnan(value))
        return std::numeric_limits<quint64>::max();
    constexpr quint64 Sign = quint64(1) << 63;
    const auto bits = std::bit_cast<quint64>(value + 0.0); // a negative zero becomes zero
    return (bits & Sign) != 0 ? ~bits : bits | Sign;
}

std::vector<quint32> Order(const std::vector<double>& keys) {
    return indices(sortedPlaces(keys.size(), [&](size_t i) { return OrderedBits(keys[i]); }));
}

std::vector<quint32> Order(const std::vector<const std::string*>& keys) {
    return orderTexts(
        keys.size(), [&](size_t i) { return headOf(*keys[i]); },
        [&](quint32 a, quint32 b) { return *keys[a] < *keys[b]; });
}

std::vector<quint32> Order(const std::vector<QString>& keys) {
    return orderTexts(
        keys.size(), [&](size_t i) { return headOf(keys[i]); },
        [&](quint32 a, quint32 b) { return keys[a] < keys[b]; });
}

} // namespace RecordSort
