#include "host/valuetree/numberlimits.h"

#include <deque>
#include <unordered_map>

namespace {

constexpr size_t MaxKept = 16384;

struct HashOf {
    size_t operator()(const NumberLimits& limits) const { return limits.Hash(); }
};

struct Table {
    std::deque<NumberLimits> kept{NumberLimits()};
    std::unordered_map<NumberLimits, NumberLimits::Id, HashOf> ids{{NumberLimits(), 0}};
};

Table& table() {
    static auto* const instance = new Table;
    return *instance;
}

} // namespace

size_t NumberLimits::Hash() const {
    quint64 hash = 0;
    for (const quint64 bits : m_bits)
        hash = (hash ^ bits) * 0x9E3779B97F4A7C15ull;
    return hash ^ hash >> 32;
}

NumberLimits::Id NumberLimits::Keep(const NumberLimits& limits) {
    Table& t = table();
    if (const auto found = t.ids.find(limits); found != t.ids.end())
        return found->second;
    if (t.kept.size() >= MaxKept)
        return NotKept;
    const Id id = static_cast<Id>(t.kept.size());
    t.kept.push_back(limits);
    t.ids.emplace(limits, id);
    return id;
}

const NumberLimits& NumberLimits::At(Id id) {
    return table().kept[id];
}
