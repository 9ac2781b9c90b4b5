#include "host/base/tokenizer.h"

#include <QStringList>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

QStringList separated(const QString& text, unsigned char maxParts = 15) {
    // One part more than allowed, to see that it is not touched.
    std::vector<QString> parts(maxParts + 1u, QStringLiteral("untouched"));
    const unsigned char count = Quor::separateString(text, parts.data(), maxParts);
    EXPECT_EQ(parts[count], QStringLiteral("untouched"));
    return QStringList(parts.begin(), parts.begin() + count);
}

struct Line {
    const char* name;
    QString text;
    unsigned char maxParts;
    QStringList parts;
};

class SeparateString : public testing::TestWithParam<Line> {};

TEST_P(SeparateString, SplitsAtEverySingleTab) {
    EXPECT_EQ(separated(GetParam().text, GetParam().maxParts), GetParam().parts);
}

INSTANTIATE_TEST_SUITE_P(Lines, SeparateString,
                         testing::Values(Line{"EmptyTextHasNoField", "", 15, {}},
                                         Line{"OneField", "7055000", 15, {"7055000"}},
                                         Line{"EmptyFieldsCount", "1\t\t3", 15, {"1", "", "3"}},
                                         Line{"LeadingTab", "\ta", 15, {"", "a"}},
                                         Line{"OnlyATab", "\t", 15, {""}},
                                         Line{"TabAtTheEnd", "1\t2\t", 15, {"1", "2"}},
                                         Line{"TwoTabsAtTheEnd", "1\t\t", 15, {"1", ""}},
                                         Line{"BlanksSeparateNothing", " a b \tc", 15, {" a b ", "c"}},
                                         Line{"BeyondTheMaximumIsDropped", "1\t2\t3\t4", 3, {"1", "2", "3"}},
                                         Line{"MaximumOfNone", "1\t2", 0, {}}),
                         [](const auto& row) { return row.param.name; });

TEST(SeparateStringLimits, TakesAsManyFieldsAsTheCountCanSay) {
    EXPECT_EQ(separated(QString(400, QLatin1Char('\t')), 255).size(), 255);
}

TEST(SeparateStringViews, PointIntoTheText) {
    const QString text = QStringLiteral("14230000\tSSTV");
    QStringView parts[2];
    ASSERT_EQ(Quor::separateString(QStringView(text), parts, 2), 2);
    EXPECT_EQ(parts[1].data(), text.data() + 9);
    EXPECT_EQ(parts[1].size(), 4);
}

TEST(OneField, IsOneFieldOfOneLineOfText) {
    EXPECT_EQ(Quor::OneField(QStringLiteral("a\tb\r\nc")), QStringLiteral("a b  c"));
    EXPECT_EQ(Quor::OneField(QStringLiteral("\u0001x\u001f")), QStringLiteral("\ufffdx\ufffd"));
    EXPECT_EQ(Quor::OneField(QStringLiteral(" Ärger \u2028 ")), QStringLiteral(" Ärger \u2028 "));
}

TEST(Tokenizer, PassesOverEmptyTokensAndEndsWithANullText) {
    Quor::Tokenizer next(QStringLiteral("//JEN/Job//SuppressRestart/"));
    EXPECT_EQ(next("/"), QStringLiteral("JEN"));
    EXPECT_EQ(next("/"), QStringLiteral("Job"));
    EXPECT_EQ(next("/"), QStringLiteral("SuppressRestart"));
    EXPECT_TRUE(next("/").isNull());
    EXPECT_TRUE(next("/").isNull());
}

TEST(Tokenizer, TakesOtherSeparatorsWithEachToken) {
    Quor::Tokenizer next(QStringLiteral("7055 kHz; LSB,2.7"));
    EXPECT_EQ(next(" "), QStringLiteral("7055"));
    EXPECT_EQ(next(";"), QStringLiteral(" kHz"));
    EXPECT_EQ(next("; ,"), QStringLiteral("LSB"));
    EXPECT_EQ(next(QString()), QStringLiteral(",2.7"));
}

} // namespace
