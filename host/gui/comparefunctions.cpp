#include "host/gui/comparefunctions.h"

#include "host/base/frequencytext.h"
#include "host/base/numbers.h"

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
