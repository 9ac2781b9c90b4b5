#include "host/gui/comparefunctions.h"

#include <QStringList>

#include <algorithm>
#include <gtest/gtest.h>
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

} // namespace
