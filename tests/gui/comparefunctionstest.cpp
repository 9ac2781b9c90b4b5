#include "host/gui/comparefunctions.h"

#include <QStringList>

#include <algorithm>
#include <gtest/gtest.h>
#include <numeric>
#include <random>

namespace {

struct Order {
    const char* name;
    CompareFunction function;
    QStringList ascending; ///< each goes before the next
};

void PrintTo(const Order& order, std::ostream* out) {
    *out << order.name;
}

class CompareFunctions : public testing::TestWithParam<Order> {};

int sign(int number) {
    return number < 0 ? -1 : number > 0 ? 1 : 0;
}

TEST_P(CompareFunctions, OrderTextsAsMeant) {
    const QStringList& texts = GetParam().ascending;
    for (qsizetype i = 0; i < texts.size(); ++i) {
        for (qsizetype j = 0; j < texts.size(); ++j) {
            EXPECT_EQ(sign(GetParam().function(texts[i], texts[j])), sign(static_cast<int>(i - j)))
                << texts[i].toStdString() << " and " << texts[j].toStdString();
        }
    }
}

TEST_P(CompareFunctions, SortByKeysAsByTexts) {
    QStringList texts = GetParam().ascending;
    std::shuffle(texts.begin(), texts.end(), std::mt19937(7));
    std::vector<SortKey> keys;
    for (const QString& text : texts)
        keys.push_back(SortKey::Of(text, GetParam().function));
    for (qsizetype i = 0; i < texts.size(); ++i) {
        for (qsizetype j = 0; j < texts.size(); ++j) {
            EXPECT_EQ(sign(Compare(keys[static_cast<size_t>(i)], keys[static_cast<size_t>(j)])),
                      sign(GetParam().function(texts[i], texts[j])));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    , CompareFunctions,
    testing::Values(
        Order{"text", _compStandardString, {"10", "9", "ALPHA", "alpha", "beta", "Zulu", "Ärger", ""}},
        Order{"number",
              _compStandardNumeric,
              {"-1e9", "-2", "0", "0.5", "2", "10", "1e3", "inf", "nan", "none", ""}},
        Order{"number with unit",
              _compNumericWithSuffix,
              {"-1 kHz", "0", "999 Hz", "1.5 kHz", "1501", "29999.999 kHz", "30.000000 MHz", "145.5MHz",
               "0.2 ghz", "9e99 GHz", "MHz", "nan kHz", "none", ""}},
        Order{"number with another unit",
              _compNumericWithSuffix,
              {"-3 dBm", "9 %", "12.5 %", "75 Bd", "%", ""}}),
    [](const auto& order) { return QString(order.param.name).replace(' ', '_').toStdString(); });

TEST(CompareNumbers, CallEqualWhatIsEqual) {
    EXPECT_EQ(_compNumericWithSuffix("30000 kHz", "30 MHz"), 0);
    EXPECT_EQ(_compStandardNumeric("1e3", "1000.0"), 0);
    EXPECT_EQ(_compStandardNumeric("", "  "), 0);
    EXPECT_NE(_compStandardString("a", "A"), 0);
}

struct Column {
    const char* name;
    CompareFunction function;
    QStringList words; ///< each cell is one of these, or two of them
    bool allDiffer;
};

void PrintTo(const Column& column, std::ostream* out) {
    *out << column.name;
}

class SortedRows : public testing::TestWithParam<Column> {};

TEST_P(SortedRows, StandAsAStableSortOfTheirTextsPutsThem) {
    constexpr quint32 Count = 3000;
    const auto& [name, compare, choices, allDiffer] = GetParam();
    const CompareFunction function = compare; // lambdas take variables, not parts of a structure
    const QStringList words = choices;
    std::mt19937 random(11);
    QStringList texts;
    for (quint32 i = 0; i < Count; ++i) {
        const auto word = [&] { return words[static_cast<qsizetype>(random() % quint32(words.size()))]; };
        texts << (allDiffer      ? word() + QString::number(i * 7919 % Count)
                  : random() % 2 ? word()
                                 : word() + word());
    }
    for (const bool ascending : {true, false}) {
        std::vector<quint32> expected(Count);
        std::iota(expected.begin(), expected.end(), 0u);
        std::stable_sort(expected.begin(), expected.end(), [&](quint32 a, quint32 b) {
            const bool emptyA = texts[a].trimmed().isEmpty();
            const bool emptyB = texts[b].trimmed().isEmpty();
            if (emptyA || emptyB)
                return emptyA < emptyB;
            return (ascending ? function(texts[a], texts[b]) : function(texts[b], texts[a])) < 0;
        });
        EXPECT_EQ(SortedPositions(
                      Count, [&](size_t i) { return texts[static_cast<qsizetype>(i)]; }, function, ascending),
                  expected);
    }
}

INSTANTIATE_TEST_SUITE_P(
    , SortedRows,
    testing::Values(
        Column{
            "words", _compStandardString, {"common a", "common B", "common b", "", " ", "commoner"}, false},
        Column{
            "other alphabets", _compStandardString, {"\u0416x", "\u0416", "\u00ffa", "\u0100b", "z"}, false},
        Column{"different words", _compStandardString, {"station ", "Station ", "st"}, true},
        Column{"numbers", _compStandardNumeric, {"1", "-2", "0.5", "-0", "00", "none", ""}, false},
        Column{"different numbers", _compNumericWithSuffix, {"1", "-3", "2.0"}, true},
        Column{"units", _compNumericWithSuffix, {"30000 kHz", "30 MHz", "29 MHz", "7 %", ""}, false},
        Column{"nothing", _compStandardString, {"", " "}, false}),
    [](const auto& column) { return QString(column.param.name).replace(' ', '_').toStdString(); });

} // namespace
