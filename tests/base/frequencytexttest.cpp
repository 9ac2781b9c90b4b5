#include "host/base/frequencytext.h"

#include <gtest/gtest.h>

namespace {

TEST(FrequencyText, IsInKilohertzBelow30MegahertzElseInMegahertz) {
    const std::pair<double, const char*> rows[] = {
        {7055000, "7055.000 kHz"},      {14230001, "14230.001 kHz"}, {0, "0.000 kHz"},
        {29999999, "29999.999 kHz"},    {30000000, "30.000000 MHz"}, {121500000, "121.500000 MHz"},
        {2400000001, "2400.000001 MHz"}};
    for (const auto& [hertz, text] : rows)
        EXPECT_EQ(Quor::FrequencyText(hertz), QString(text));
    EXPECT_EQ(Quor::BandwidthText(2700), QStringLiteral("2.700 kHz"));
    EXPECT_EQ(Quor::BandwidthText(8330), QStringLiteral("8.330 kHz"));
    EXPECT_EQ(Quor::BandwidthText(1), QStringLiteral("0.001 kHz"));
}

TEST(FrequencyText, IsAsShortAsItGoesWhereThereIsLittleRoom) {
    const std::pair<double, const char*> rows[] = {
        {9e3, "9 kHz"}, {500e3, "500 kHz"}, {7.055e6, "7.055 MHz"}, {30e6, "30 MHz"}, {3e9, "3 GHz"}};
    for (const auto& [hertz, text] : rows)
        EXPECT_EQ(Quor::ShortFrequencyText(hertz), QString(text));
}

TEST(ParseFrequency, KnowsTheUnitsInAnyCase) {
    const std::pair<const char*, double> rows[] = {{"7055 kHz", 7055000},
                                                   {"7.055MHz", 7055000},
                                                   {"7055000 Hz", 7055000},
                                                   {"7055KHZ", 7055000},
                                                   {" 2.4 ghz ", 2400000000.0},
                                                   {"121.5 mhz", 121500000},
                                                   {"12", 12}};
    for (const auto& [text, hertz] : rows) {
        double value = -1;
        EXPECT_TRUE(Quor::ParseFrequency(QString(text), value)) << text;
        EXPECT_DOUBLE_EQ(value, hertz) << text;
    }
    double value = -1;
    EXPECT_TRUE(Quor::ParseFrequency(u"7055", value, 1000));
    EXPECT_DOUBLE_EQ(value, 7055000);
    EXPECT_TRUE(Quor::ParseFrequency(u"7.055 MHz", value, 1000));
    EXPECT_DOUBLE_EQ(value, 7055000);
}

TEST(ParseFrequency, RefusesOtherTextsAndLeavesTheValue) {
    for (const char* text :
         {"", " ", "Hz", "kHz", "7055 kHz kHz", "7055 dB", "7,055 MHz", "nan kHz", "1e308 GHz"}) {
        double value = -4711;
        EXPECT_FALSE(Quor::ParseFrequency(QString(text), value)) << text;
        EXPECT_EQ(value, -4711) << text;
    }
}

TEST(ParseFrequency, ReadsBackWhatIsShown) {
    for (const double hertz : {0.0, 1.0, 153000.0, 29999999.0, 30000000.0, 137912500.0, 2999999999.0}) {
        double value = -1;
        EXPECT_TRUE(Quor::ParseFrequency(Quor::FrequencyText(hertz), value));
        EXPECT_NEAR(value, hertz, 1e-3);
    }
}

} // namespace
