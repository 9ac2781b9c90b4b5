#include "host/report/textform.h"

#include <QRandomGenerator>

#include <bit>
#include <cmath>
#include <gtest/gtest.h>

using namespace REPORTGENERATOR;

namespace {

std::string NumberText(double value) {
    std::string text;
    AppendNumber(text, value);
    return text;
}

std::string TimeText(qint64 usec) {
    std::string text;
    AppendTime(text, Timestamp(usec));
    return text;
}

std::string Escaped(const QString& text, const EscapeTable& table) {
    std::string out;
    AppendText(out, text, table);
    return out;
}

TEST(Numbers, AreWrittenAsShortAsTheyReadBackExactly) {
    const std::pair<double, const char*> rows[] = {
        {0.0, "0"},         {7055000.0, "7055000"},   {0.5, "0.5"},    {-12.25, "-12.25"},
        {0.1, "0.1"},       {3e9, "3000000000"},      {1e17, "1e+17"}, {1e-7, "1e-07"},
        {5e-324, "5e-324"}, {7055123.4, "7055123.4"},
    };
    for (const auto& [value, text] : rows)
        EXPECT_EQ(NumberText(value), text);
}

TEST(Numbers, ComeBackBitForBit) {
    QRandomGenerator random(1);
    for (int i = 0; i < 20'000; ++i) {
        const double value = std::bit_cast<double>(random.generate64());
        if (std::isfinite(value)) {
            ASSERT_EQ(ParseNumber(NumberText(value)), value);
        }
    }
}

TEST(Numbers, RefuseWhatIsNoFiniteNumber) {
    for (const char* text :
         {"", "abc", "nan", "inf", "-Infinity", "1e999", "1,5", "0x10", "1 2", "+-1", "--1", "1.2.3"})
        EXPECT_FALSE(ParseNumber(text)) << text;
    for (const char* text : {"1.5", "2147483648", "-2147483648", "1e2", ""})
        EXPECT_FALSE(ParseInteger(text)) << text;
    EXPECT_EQ(ParseNumber("\n +7055000.5 "), 7055000.5);
    EXPECT_EQ(ParseInteger(" -12\n"), -12);
}

TEST(Times, AreIsoInUtcWithMicrosecondsWhereThereAreAny) {
    const std::pair<qint64, const char*> rows[] = {
        {0, "1970-01-01T00:00:00Z"},
        {1'717'156'800'000'001, "2024-05-31T12:00:00.000001Z"},
        {1'709'210'096'500'000, "2024-02-29T12:34:56.500000Z"},
        {-1, "1969-12-31T23:59:59.999999Z"},
        {Timestamp::First, "0001-01-01T00:00:00Z"},
        {Timestamp::Last, "9999-12-31T23:59:59.999999Z"},
    };
    for (const auto& [usec, text] : rows) {
        EXPECT_EQ(TimeText(usec), text);
        ASSERT_TRUE(ParseTime(text)) << text;
        EXPECT_EQ(ParseTime(text)->usec, usec);
    }
}

TEST(Times, ReadOtherIsoFormsToo) {
    const qint64 noon = 1'717'156'800'000'000;
    for (const char* text : {"2024-05-31T12:00:00", "2024-05-31 12:00:00.0Z", "2024-05-31T14:30:00+02:30",
                             "2024-05-31T07:00:00-0500", " 2024-05-31T12:00:00.0000004Z\n"}) {
        ASSERT_TRUE(ParseTime(text)) << text;
        EXPECT_EQ(ParseTime(text)->usec, noon) << text;
    }
    for (const char* text : {"", "2024-02-30T00:00:00Z", "2024-13-01T00:00:00Z", "2024-05-31T24:00:00Z",
                             "2024-05-31", "2024-05-31T12:00:60Z", "2024-05-31T12:00:00.Z",
                             "2024-05-31T12:00:00ZZ", "2024-05-31T12:00:00+99:00", "0000-01-01T00:00:00Z"})
        EXPECT_FALSE(ParseTime(text)) << text;
}

TEST(Timestamp, ConvertsWithQDateTimeAndRoundsDown) {
    const QDateTime time =
        QDateTime::fromString(QStringLiteral("2024-05-31T12:00:00.123+02:00"), Qt::ISODateWithMs);
    EXPECT_EQ(Timestamp(time).usec, 1'717'149'600'123'000);
    EXPECT_EQ(Timestamp(time).ToDateTime(), time);
    EXPECT_EQ(Timestamp(qint64{-1}).ToDateTime().toMSecsSinceEpoch(), -1);
    EXPECT_EQ(Timestamp(qint64{1999}).ToDateTime().toMSecsSinceEpoch(), 1);
    EXPECT_FALSE(Timestamp(QDateTime()).IsSet());
    EXPECT_FALSE(Timestamp(Timestamp::Last + 1).IsSet());
    EXPECT_FALSE(Timestamp().ToDateTime().isValid());
}

TEST(Texts, AreEscapedForTheirPlace) {
    const QString text = QStringLiteral("<a & \"b\">\t\r\n");
    EXPECT_EQ(Escaped(text, XmlTextEscapes), "&lt;a &amp; \"b\"&gt;\t&#13;\n");
    EXPECT_EQ(Escaped(text, XmlAttributeEscapes), "&lt;a &amp; &quot;b&quot;&gt;&#9;&#13;&#10;");
    EXPECT_EQ(Escaped(text, CsvEscapes), "<a & \"\"b\"\">\t\r\n");
}

TEST(Texts, ReplaceWhatNoFileCanHold) {
    const QString text = QStringLiteral("a\x01") + QChar(0) + QChar(0xD800) + QStringLiteral("b") +
                         QChar(0xDC00) + QChar(0xFFFE) + QString::fromUtf8("ä€\U0001F600");
    for (const EscapeTable* table : {&XmlTextEscapes, &XmlAttributeEscapes, &CsvEscapes})
        EXPECT_EQ(Escaped(text, *table),
                  reinterpret_cast<const char*>(u8"a\uFFFD\uFFFD\uFFFDb\uFFFD\uFFFDä€\U0001F600"));
}

TEST(Texts, AgreeWithQtOnWhatIsUtf8) {
    QRandomGenerator random(2);
    for (int i = 0; i < 50'000; ++i) {
        QByteArray bytes;
        for (int n = random.bounded(1, 5); n > 0; --n)
            bytes += static_cast<char>(random.bounded(2) ? random.bounded(0x80, 0x100)
                                                         : random.bounded(0xE0, 0xF6));
        ASSERT_EQ(IsUtf8(bytes.toStdString()), bytes.isValidUtf8()) << bytes.toHex().constData();
    }
}

TEST(TextCache, GivesEveryTextAsItIs) {
    TextCache cache;
    for (int round = 0; round < 2; ++round)
        for (int i = 0; i < 2000; ++i) {
            const QString text =
                QString::number(i * 7919) + (i % 3 ? QString() : QStringLiteral("äöü").repeated(8));
            ASSERT_EQ(cache.Get(text.toStdString()), text);
        }
    EXPECT_EQ(cache.Get(""), QString());
}

} // namespace
