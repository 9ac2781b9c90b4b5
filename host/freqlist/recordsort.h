#pragma once

#include <QString>

#include <string>
#include <variant>
#include <vector>

/// Orders of records by keys of which each is computed once, by counting their digits instead of comparing
/// them. All orders are stable and total: numbers that are none go behind all others, zero is zero whatever
/// its sign, texts go by bytes, `QString`s by their code units.
namespace RecordSort {

/// What records are sorted by: a number, a text that they have, or a text made for the purpose.
template <typename Record>
using Key = std::variant<double (*)(const Record&), const std::string& (*)(const Record&),
                         QString (*)(const Record&)>;

/// A number whose unsigned order is that of the doubles.
quint64 OrderedBits(double value);

/// The places of the keys in their order.
std::vector<quint32> Order(const std::vector<double>& keys);
std::vector<quint32> Order(const std::vector<const std::string*>& keys);
std::vector<quint32> Order(const std::vector<QString>& keys);

inline bool Less(double a, double b) {
    return OrderedBits(a) < OrderedBits(b);
}
inline bool Less(const std::string& a, const std::string& b) {
    return a < b;
}
inline bool Less(const QString& a, const QString& b) {
    return a < b;
}

/// `Records` is any sequence of records with an index.
template <typename Record, typename Records>
std::vector<quint32> OrderBy(const Key<Record>& key, const Records& records) {
    return std::visit(
        [&](auto keyOf) {
            using Result = decltype(keyOf(records[0]));
            constexpr bool isReference = std::is_lvalue_reference_v<Result>;
            std::vector<
                std::conditional_t<isReference, std::remove_reference_t<Result>*, std::decay_t<Result>>>
                keys;
            keys.reserve(records.size());
            for (size_t i = 0; i < records.size(); ++i) {
                if constexpr (isReference)
                    keys.push_back(&keyOf(records[i]));
                else
                    keys.push_back(keyOf(records[i]));
            }
            return Order(keys);
        },
        key);
}

/// Whether one record goes before another.
template <typename Record>
bool Before(const Key<Record>& key, const Record& a, const Record& b) {
    return std::visit([&](auto keyOf) { return Less(keyOf(a), keyOf(b)); }, key);
}

} // namespace RecordSort
