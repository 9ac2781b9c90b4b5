#pragma once

#include <QString>

#include <functional>
#include <vector>

/// Compare functions of sortable columns: negative, zero or positive as the first text goes before, with or
/// after the second. They are total orders; empty texts go last.
using CompareFunction = int (*)(const QString&, const QString&);

/// Text order, case-insensitive first, then by code.
int _compStandardString(const QString& a, const QString& b);
/// Numeric order of the texts; texts that are no numbers go behind all numbers, in text order.
int _compStandardNumeric(const QString& a, const QString& b);
/// Numeric order of texts that may carry a unit suffix (Hz, kHz, MHz, GHz, or another one, which counts 1).
int _compNumericWithSuffix(const QString& a, const QString& b);

/// What a text is sorted by under one of the functions above: two keys compare as the function compares their
/// texts, without parsing them again.
struct SortKey {
    enum class Kind : char { Number, Text, Empty };

    Kind kind = Kind::Empty;
    double number = 0;
    QString text;       ///< as it is; empty for numbers
    QString foldedText; ///< case-folded form of `text`

    static SortKey Of(const QString& text, CompareFunction function);
};

int Compare(const SortKey& a, const SortKey& b);

/// Whether `SortKey` knows the order of that function.
bool HasSortKey(CompareFunction function);

/// What a text of a column is sorted by, and the order of such keys that `SortedPositions` makes.
class RowOrder {
public:
    RowOrder(CompareFunction function, bool ascending) : m_function(function), m_ascending(ascending) {}

    SortKey KeyOf(const QString& text) const;
    bool Before(const SortKey& a, const SortKey& b) const;

private:
    CompareFunction m_function;
    bool m_ascending;
};

/// The numbers 0 to `count` - 1 in the order of their texts, each of which is asked for once, by ascending
/// numbers. Equal texts stay in order: that of `present`, which has all the numbers, or that of the numbers
/// when it is empty. Under the functions above empty texts stay last in either direction.
std::vector<quint32> SortedPositions(size_t count, const std::function<QString(size_t)>& textOf,
                                     CompareFunction function, bool ascending,
                                     const std::vector<quint32>& present = {});
