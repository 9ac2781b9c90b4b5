#include "host/gui/comparefunctions.h"

#include "host/base/frequencytext.h"
#include "host/base/numbers.h"

#include <algorithm>
#include <numeric>

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

template <typename Key, typename KeyOf, typename Before>
std::vector<quint32> sortedBy(size_t count, KeyOf keyOf, Before before) {
    std::vector<Key> keys;
    keys.reserve(count);
    for (size_t i = 0; i < count; ++i)
        keys.push_back(keyOf(i));
    std::vector<quint32> order(count);
    std::iota(order.begin(), order.end(), 0u);
    std::stable_sort(order.begin(), order.end(),
                     [&](quint32 a, quint32 b) { return before(keys[a], keys[b]); });
    return order;
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

std::vector<quint32> SortedPositions(size_t count, const std::function<QString(size_t)>& textOf,
                                     CompareFunction function, bool ascending) {
    if (!HasSortKey(function))
        return sortedBy<QString>(count, textOf, [=](const QString& a, const QString& b) {
            return (ascending ? function(a, b) : function(b, a)) < 0;
        });
    const auto keyOf = [&](size_t i) { return SortKey::Of(textOf(i), function); };
    return sortedBy<SortKey>(count, keyOf, [ascending](const SortKey& a, const SortKey& b) {
        if (ascending || a.kind == SortKey::Kind::Empty || b.kind == SortKey::Kind::Empty)
            return Compare(a, b) < 0;
        return Compare(b, a) < 0;
    });
}
