#include "host/base/numbers.h"

#include <QLocale>

#include <bit>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace {

constexpr double Untouched = -4711;

struct NumberText {
    const char* name;
    QString text;
    std::optional<double> value; ///< none when the text is no number
};

class ParseDouble : public testing::TestWithParam<NumberText> {};

TEST_P(ParseDouble, TakesWholeFiniteNumbersOnly) {
    const auto& [name, text, expected] = GetParam();
    double value = Untouched;
    EXPECT_EQ(Quor::ParseDouble(text, value), expected.has_value());
    EXPECT_EQ(value, expected.value_or(Untouched));

    bool ok = !expected;
    EXPECT_EQ(Quor::toDoubleEx(text, &ok), expected.value_or(0));
    EXPECT_EQ(ok, expected.has_value());
    EXPECT_EQ(Quor::toDoubleEx(text), expected.value_or(0));
}

INSTANTIATE_TEST_SUITE_P(
    Texts, ParseDouble,
    testing::Values(
        NumberText{"Integer", "7055000", 7055000}, NumberText{"Decimals", "0.5", 0.5},
        NumberText{"SixDecimals", "7055000.000000", 7055000}, NumberText{"Negative", "-12.25", -12.25},
        NumberText{"Plus", "+3", 3}, NumberText{"Exponent", "1.5e6", 1.5e6},
        NumberText{"NegativeExponent", "1E-3", 1e-3}, NumberText{"PointLast", "5.", 5},
        NumberText{"PointFirst", ".5", 0.5}, NumberText{"BlanksAround", " \t12 \n", 12},
        NumberText{"Largest", "1.7976931348623157e308", std::numeric_limits<double>::max()},
        NumberText{"ManyZeros", QString(300, QLatin1Char('0')) + "1", 1},
        NumberText{"Empty", "", std::nullopt}, NumberText{"Blank", " ", std::nullopt},
        NumberText{"Nan", "nan", std::nullopt}, NumberText{"Inf", "inf", std::nullopt},
        NumberText{"NegativeInfinity", "-Infinity", std::nullopt},
        NumberText{"NanWithPayload", "nan(1)", std::nullopt}, NumberText{"Overflow", "1e999", std::nullopt},
        NumberText{"Comma", "0,5", std::nullopt}, NumberText{"Grouped", "1.000.000", std::nullopt},
        NumberText{"Unit", "5 kHz", std::nullopt}, NumberText{"BlankWithin", "1 000", std::nullopt},
        NumberText{"TwoSigns", "+-5", std::nullopt}, NumberText{"TwoPluses", "++5", std::nullopt},
        NumberText{"SignOnly", "-", std::nullopt}, NumberText{"Hexadecimal", "0x10", std::nullopt},
        NumberText{"ArabicDigits", QString::fromUtf8("\u0661\u0662"), std::nullopt},
        NumberText{"WideDigits", QString::fromUtf8("1\uff12"), std::nullopt},
        NumberText{"HalfAnExponent", "1e", std::nullopt},
        NumberText{"EndlessDigits", QString(100000, QLatin1Char('9')), std::nullopt}),
    [](const auto& row) { return row.param.name; });

/// Short and long numbers are parsed in two ways, which must not differ in the last bit.
TEST(ParseDoubleRounding, IsToTheNearestDoubleForShortAndLongNumbers) {
    std::mt19937_64 random(4711);
    for (int i = 0; i < 20000; ++i) {
        QByteArray text = QByteArray::number(random() >> (random() % 60));
        if (const auto point = static_cast<qsizetype>(random() % 12); point > 0 && point < text.size())
            text.insert(text.size() - point, '.');
        double value = 0;
        ASSERT_TRUE(Quor::ParseDouble(QString::fromLatin1(text), value)) << text.constData();
        EXPECT_EQ(value, std::strtod(text.constData(), nullptr)) << text.constData();
    }
}

TEST(ParseDoubleLocale, IsAlwaysThatOfC) {
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German));
    double value = 0;
    EXPECT_TRUE(Quor::ParseDouble(u"1.5", value));
    EXPECT_EQ(value, 1.5);
    EXPECT_FALSE(Quor::ParseDouble(u"1,5", value));
    EXPECT_EQ(Quor::ToShortest(1234567.5), QStringLiteral("1234567.5"));
    QLocale::setDefault(before);
}

TEST(ParseInt, TakesWholeDecimalNumbersInRange) {
    int small = 0;
    EXPECT_TRUE(Quor::ParseInt(u" -2147483648 ", small));
    EXPECT_EQ(small, std::numeric_limits<int>::min());
    EXPECT_TRUE(Quor::ParseInt(u"+7", small));
    EXPECT_EQ(small, 7);
    qint64 large = 0;
    EXPECT_TRUE(Quor::ParseInt(u"9223372036854775807", large));
    EXPECT_EQ(large, std::numeric_limits<qint64>::max());
    for (const char* text : {"2147483648", "1.0", "1e3", "", "7 8", "seven", "--7"}) {
        EXPECT_FALSE(Quor::ParseInt(QString(text), small)) << text;
        EXPECT_EQ(small, 7) << text;
    }
    EXPECT_FALSE(Quor::ParseInt(u"9223372036854775808", large));
    EXPECT_EQ(large, std::numeric_limits<qint64>::max());
}

TEST(ToShortest, NeedsNoExponentAndNoTrailingZeros) {
    const std::pair<double, const char*> rows[] = {
        {0, "0"},
        {-0.0, "0"},
        {0.5, "0.5"},
        {7055000, "7055000"},
        {-12.25, "-12.25"},
        {1e22, "10000000000000000000000"},
        {1e-7, "0.0000001"},
        {0.1 + 0.2, "0.30000000000000004"},
        {std::numeric_limits<double>::quiet_NaN(), "0"},
        {std::numeric_limits<double>::infinity(), "0"},
    };
    for (const auto& [value, text] : rows) {
        EXPECT_EQ(Quor::ToShortest(value), QString(text));
        QString appended = QStringLiteral("f=");
        Quor::AppendShortest(appended, value);
        EXPECT_EQ(appended, QStringLiteral("f=") + text);
        QByteArray bytes("f=");
        Quor::AppendShortest(bytes, value);
        EXPECT_EQ(bytes, QByteArray("f=") + text);
    }
}

TEST(ToShortest, ReadsBackExactly) {
    std::mt19937_64 random(1);
    const auto readsBack = [](double value) {
        double back = Untouched;
        EXPECT_TRUE(Quor::ParseDouble(Quor::ToShortest(value), back)) << value;
        EXPECT_EQ(back, value);
    };
    for (int i = 0; i < 20000; ++i) {
        const double value = std::bit_cast<double>(random());
        if (std::isfinite(value))
            readsBack(value);
        readsBack(static_cast<double>(random() % 3'000'000'000'000) / 1000);
    }
    readsBack(std::numeric_limits<double>::denorm_min());
    readsBack(-std::numeric_limits<double>::min());
    readsBack(std::numeric_limits<double>::max());
}

TEST(AppendFixed, AgreesWithTheStringClass) {
    std::mt19937_64 random(2);
    std::vector<double> values{0,
                               -0.0,
                               0.5,
                               1.5,
                               2.5,
                               1e-7,
                               -0.4,
                               0.0078125,
                               7055000.5,
                               2999999999.0,
                               999.99995,
                               -0.00000001,
                               1e21,
                               1.0000005e0,
                               5e-324,
                               0.0000005,
                               123456.789012345};
    for (int i = 0; i < 20000; ++i) {
        values.push_back(static_cast<double>(random() % 3'000'000'000'000) / 1000);
        values.push_back(static_cast<double>(random() % 1'000'000'000) / 1024);
        // As near to half of the last decimal as doubles come.
        values.push_back((static_cast<double>(random() % 1'000'000'000) + 0.5) / (i % 2 == 0 ? 1e3 : -1e5));
    }
    for (const double value : values) {
        for (const int decimals : {0, 3, 5, 6}) {
            const QString expected = QStringLiteral("%1").arg(value, 0, 'f', decimals);
            QString text;
            Quor::AppendFixed(text, value, decimals);
            EXPECT_EQ(text, expected) << value;
            QByteArray bytes;
            Quor::AppendFixed(bytes, value, decimals);
            EXPECT_EQ(bytes, expected.toLatin1()) << value;
        }
    }
}

} // namespace
