#include "host/gui/comparefunctions.h"

#include "host/base/frequencytext.h"
#include "host/base/longwork.h"
#include "host/base/numbers.h"

#include <QHash>

#include <algorithm>
#include <numeric>
#include <utility>

namespace {

template <typename T>
int threeWay(const T& a, const T& b) {
    return a < b ? -1 : b < a ? 1 : 0;
}

/// The number at the head of a text whose unit is none of the known ones, such as "12 %" or "75 Bd".
bool leadingNumber(QStringView text, double& number) {
    qsizetype end = 0;
    while (end < text.size() && (text[end].isDigit() || QStringView(u"+-.eE").contains(text[end])))
        ++end;
    for (; end > 0; --end) {
        if (Quor::ParseDouble(text.left(end), number))
            return true;
    }
    return false;
}

bool numberWithSuffix(QStringView text, double& number) {
    return Quor::ParseFrequency(text, number) || leadingNumber(text, number);
}

/// The first eight characters behind `from`, up to the first one that is none of Latin-1.
quint64 headOf(const QString& text, qsizetype from) {
    quint64 head = 0;
    quint64 filler = 0;
    for (qsizetype i = from; i < from + 8; ++i) {
        const quint64 unit = filler ? filler : i < text.size() ? text[i].unicode() : 0u;
        if (unit >= 0xff)
            filler = 0xff;
        head = head << 8 | std::min<quint64>(unit, 0xff);
    }
    return head;
}

/// The keys of many texts in ascending order. What decides most comparisons stands beside a key's number.
class KeyRanking {
public:
    explicit KeyRanking(const std::vector<SortKey>& keys) : m_keys(keys) {
        const qsizetype common = commonLength();
        m_order.reserve(keys.size());
        for (const SortKey& key : keys) {
            const quint64 head = key.kind == SortKey::Kind::Number ? Quor::OrderedBits(key.number)
                                 : key.kind == SortKey::Kind::Text ? headOf(key.foldedText, common)
                                                                   : 0;
            m_order.push_back({head, static_cast<quint32>(m_order.size()), key.kind});
        }
        std::sort(m_order.begin(), m_order.end(),
                  [this](const Entry& a, const Entry& b) { return compare(a, b) < 0; });
    }

    /// The rank of each key; equal keys have one rank. Descending ranks leave empty texts last.
    std::vector<quint32> Ranks(bool ascending) const {
        std::vector<quint32> ranks(m_order.size());
        quint32 rank = 0;
        for (size_t i = 0; i < m_order.size(); ++i) {
            if (i > 0 && compare(m_order[i - 1], m_order[i]) != 0)
                ++rank;
            ranks[m_order[i].number] = rank;
        }
        if (ascending)
            return ranks;
        const bool haveEmpty = !m_order.empty() && m_order.back().kind == SortKey::Kind::Empty;
        const quint32 turned = haveEmpty ? rank : rank + 1;
        for (quint32& each : ranks)
            each = each < turned ? turned - 1 - each : each;
        return ranks;
    }

private:
    struct Entry {
        quint64 head; ///< orders as the key does, or is equal where only the whole key decides
        quint32 number;
        SortKey::Kind kind;
    };

    int compare(const Entry& a, const Entry& b) const {
        if (a.kind != b.kind || a.head != b.head)
            return a.kind != b.kind ? threeWay(a.kind, b.kind) : threeWay(a.head, b.head);
        return a.kind == SortKey::Kind::Text ? Compare(m_keys[a.number], m_keys[b.number]) : 0;
    }

    /// Length of what all texts begin with.
    qsizetype commonLength() const {
        const QString* first = nullptr;
        qsizetype length = 0;
        for (const SortKey& key : m_keys) {
            if (key.kind != SortKey::Kind::Text)
                continue;
            if (!std::exchange(first, first ? first : &key.foldedText))
                length = first->size();
            const QStringView text = QStringView(key.foldedText).left(length);
            length = std::mismatch(text.begin(), text.end(), first->begin()).first - text.begin();
        }
        return length;
    }

    const std::vector<SortKey>& m_keys;
    std::vector<Entry> m_order;
};

/// The rows in the order of their ranks, those of one rank in the present order.
std::vector<quint32> orderByRank(const std::vector<quint32>& rankOfRow, size_t rankCount,
                                 const std::vector<quint32>& present) {
    std::vector<quint32> places(rankCount + 1);
    for (const quint32 rank : rankOfRow)
        ++places[rank + 1];
    std::partial_sum(places.begin(), places.end(), places.begin());
    std::vector<quint32> order(rankOfRow.size());
    for (size_t i = 0; i < rankOfRow.size(); ++i) {
        const quint32 row = present.empty() ? static_cast<quint32>(i) : present[i];
        order[places[rankOfRow[row]]++] = row;
    }
    return order;
}

/// The rows under a function that is none of ours.
std::vector<quint32> orderByFunction(const std::vector<QString>& texts, CompareFunction function,
                                     bool ascending, std::vector<quint32> order) {
    if (order.empty()) {
        order.resize(texts.size());
        std::iota(order.begin(), order.end(), 0u);
    }
    std::stable_sort(order.begin(), order.end(), [&](quint32 a, quint32 b) {
        return (ascending ? function(texts[a], texts[b]) : function(texts[b], texts[a])) < 0;
    });
    return order;
}

void step(size_t done, size_t total) {
    LongWork::Step(static_cast<qint64>(done), static_cast<qint64>(total));
}

} // namespace

SortKey SortKey::Of(const QString& text, CompareFunction function) {
    SortKey key;
    if (text.trimmed().isEmpty())
        return key;
    const bool isNumber = function == _compStandardNumeric ? Quor::ParseDouble(text, key.number)
                          : function == _compNumericWithSuffix
                              ? numberWithSuffix(QStringView(text).trimmed(), key.number)
                              : false;
    if (isNumber) {
        key.kind = Kind::Number;
        return key;
    }
    key.kind = Kind::Text;
    key.text = text;
    key.foldedText = text.toCaseFolded();
    return key;
}

int Compare(const SortKey& a, const SortKey& b) {
    if (a.kind != b.kind)
        return threeWay(a.kind, b.kind);
    if (a.kind == SortKey::Kind::Number)
        return threeWay(a.number, b.number);
    if (const int folded = threeWay(a.foldedText, b.foldedText))
        return folded;
    return threeWay(a.text, b.text);
}

bool HasSortKey(CompareFunction function) {
    return function == _compStandardString || function == _compStandardNumeric ||
           function == _compNumericWithSuffix;
}

int _compStandardString(const QString& a, const QString& b) {
    return Compare(SortKey::Of(a, _compStandardString), SortKey::Of(b, _compStandardString));
}

int _compStandardNumeric(const QString& a, const QString& b) {
    return Compare(SortKey::Of(a, _compStandardNumeric), SortKey::Of(b, _compStandardNumeric));
}

int _compNumericWithSuffix(const QString& a, const QString& b) {
    return Compare(SortKey::Of(a, _compNumericWithSuffix), SortKey::Of(b, _compNumericWithSuffix));
}

SortKey RowOrder::KeyOf(const QString& text) const {
    if (HasSortKey(m_function))
        return SortKey::Of(text, m_function);
    SortKey key;
    key.kind = SortKey::Kind::Text;
    key.text = text;
    return key;
}

bool RowOrder::Before(const SortKey& a, const SortKey& b) const {
    if (!HasSortKey(m_function))
        return (m_ascending ? m_function(a.text, b.text) : m_function(b.text, a.text)) < 0;
    const bool anyEmpty = a.kind == SortKey::Kind::Empty || b.kind == SortKey::Kind::Empty;
    return (m_ascending || anyEmpty ? Compare(a, b) : Compare(b, a)) < 0;
}

std::vector<quint32> SortedPositions(size_t count, const std::function<QString(size_t)>& textOf,
                                     CompareFunction function, bool ascending,
                                     const std::vector<quint32>& present) {
    if (!HasSortKey(function)) {
        std::vector<QString> texts;
        texts.reserve(count);
        for (size_t row = 0; row < count; ++row) {
            step(row, count);
            texts.push_back(textOf(row));
        }
        return orderByFunction(texts, function, ascending, present);
    }
    // Most columns repeat their texts, each of which is parsed and compared once. Where nearly all differ,
    // looking for equal ones costs more than it saves.
    constexpr size_t Sample = 1024;
    QHash<QString, quint32> numbers;
    std::vector<SortKey> keys;
    std::vector<quint32> ranks(count);
    for (size_t row = 0; row < count; ++row) {
        step(row, count);
        const QString text = textOf(row);
        quint32 single = 0;
        quint32& number = keys.size() < Sample + row / 2 ? numbers[text] : single; // counted from 1
        if (number == 0) {
            keys.push_back(SortKey::Of(text, function));
            number = static_cast<quint32>(keys.size());
        }
        ranks[row] = number - 1;
    }
    std::vector<quint32> rankOfKey;
    LongWork::Elsewhere([&] { rankOfKey = KeyRanking(keys).Ranks(ascending); });
    for (quint32& each : ranks)
        each = rankOfKey[each];
    return orderByRank(ranks, keys.size(), present);
}
