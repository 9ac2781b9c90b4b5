#pragma once

#include "host/base/longwork.h"
#include "host/base/numbers.h"

#include <functional>
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

/// Many texts in one piece of memory: less of it, and less work, than texts of their own.
class MadeTexts {
public:
    void reserve(size_t count) { m_ends.reserve(count); }
    void push_back(const QString& text) {
        m_units.append(reinterpret_cast<const char16_t*>(text.utf16()), static_cast<size_t>(text.size()));
        m_ends.push_back(m_units.size());
    }
    size_t size() const { return m_ends.size(); }
    QStringView operator[](size_t i) const {
        const size_t begin = i == 0 ? 0 : m_ends[i - 1];
        return {m_units.data() + begin, static_cast<qsizetype>(m_ends[i] - begin)};
    }

private:
    std::u16string m_units;
    std::vector<size_t> m_ends;
};

/// The places of the keys in their order. Doubles come as their ordered bits.
std::vector<quint32> Order(const std::vector<quint64>& keys);
std::vector<quint32> Order(const std::vector<const std::string*>& keys);
std::vector<quint32> Order(const MadeTexts& keys);

/// Puts the records that changed, and those from `order.size()` to `count`, to their places in an order.
/// `before` is a total order: of two records one always goes before the other.
void Place(std::vector<quint32>& order, const std::vector<quint32>& changed, quint32 count,
           const std::function<bool(quint32, quint32)>& before);

inline bool Less(double a, double b) {
    return Quor::OrderedBits(a) < Quor::OrderedBits(b);
}
inline bool Less(const std::string& a, const std::string& b) {
    return a < b;
}
inline bool Less(const QString& a, const QString& b) {
    return a < b;
}

/// `Records` is any sequence of records with an index, which stay as they are meanwhile. Its steps are those
/// of LongWork: throws WorkCancelled when the operator cancels.
template <typename Record, typename Records>
std::vector<quint32> OrderBy(const Key<Record>& key, const Records& records) {
    return std::visit(
        [&](auto keyOf) {
            using Result = decltype(keyOf(records[0]));
            std::conditional_t<std::is_same_v<Result, double>, std::vector<quint64>,
                               std::conditional_t<std::is_same_v<Result, QString>, MadeTexts,
                                                  std::vector<const std::string*>>>
                keys;
            keys.reserve(records.size());
            for (size_t i = 0; i < records.size(); ++i) {
                LongWork::Step(static_cast<qint64>(i), static_cast<qint64>(records.size()));
                if constexpr (std::is_same_v<Result, double>)
                    keys.push_back(Quor::OrderedBits(keyOf(records[i])));
                else if constexpr (std::is_same_v<Result, QString>)
                    keys.push_back(keyOf(records[i]));
                else
                    keys.push_back(&keyOf(records[i]));
            }
            std::vector<quint32> order;
            LongWork::Elsewhere([&] { order = Order(keys); });
            return order;
        },
        key);
}

/// Whether one record goes before another.
template <typename Record>
bool Before(const Key<Record>& key, const Record& a, const Record& b) {
    return std::visit([&](auto keyOf) { return Less(keyOf(a), keyOf(b)); }, key);
}

} // namespace RecordSort
