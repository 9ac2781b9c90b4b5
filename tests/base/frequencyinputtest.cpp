#include "host/base/frequencyinput.h"

#include <gtest/gtest.h>

namespace {

struct Row {
    const char* typed;
    double unit;
    double hertz; ///< negative when it is refused
    bool mayMisread = false;
};

TEST(FrequencyInput, IsReadAsOperatorsType) {
    constexpr double kHz = 1e3;
    constexpr double MHz = 1e6;
    const Row rows[] = {
        {"7055", kHz, 7055000},
        {"7.055 MHz", kHz, 7055000},
        {"7,055 MHz", kHz, 7055000},
        {"7055k", MHz, 7055000},
        {" 2.4g ", kHz, 2.4e9},
        {"145.5", MHz, 145500000},
        {"145,5", MHz, 145500000},
        {"145.", MHz, 145000000},
        {".5", MHz, 500000},
        {"7 055.000 kHz", MHz, 7055000},
        {"7\u00A0055.000\u00A0kHz", MHz, 7055000},
        {"7'055'000 Hz", kHz, 7055000},
        {"7.055.000 Hz", kHz, 7055000},
        {"7,055,000", 1, 7055000},
        {"1.234,5 kHz", kHz, 1234500},
        {"1,234.5 kHz", kHz, 1234500},
        {"7.0551 MHz", kHz, 7055100},
        {"7.055", kHz, 7055, true},
        {"7,055", MHz, 7055000, true},
        {"7055.000", kHz, 7055000},
        {"", kHz, -1},
        {"MHz", kHz, -1},
        {"1e6", kHz, -1},
        {"-7055", kHz, -1},
        {"+7055", kHz, -1},
        {"7055 dB", kHz, -1},
        {"7055 kHz kHz", kHz, -1},
        {"nan", kHz, -1},
        {".", kHz, -1},
        {"70 55 kHz", kHz, -1},
        {"7 05 kHz", kHz, -1},
        {"7.05.5", kHz, -1},
        {"1.234,567.8", kHz, -1},
        {"145.5 00 MHz", kHz, -1},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.typed);
        const Quor::FrequencyInput input = Quor::ReadFrequencyInput(QString::fromUtf8(row.typed), row.unit);
        EXPECT_EQ(input.IsFrequency(), row.hertz >= 0) << input.problem.toStdString();
        EXPECT_EQ(input.Understood().isEmpty(), row.hertz < 0);
        EXPECT_EQ(input.mayMisread, row.mayMisread);
        if (row.hertz >= 0) {
            EXPECT_EQ(input.hertz, row.hertz);
        }
    }
}

TEST(FrequencyInput, TellsWhatItUnderstood) {
    const std::pair<double, const char*> rows[] = {{7055000, "7\u00A0055.000 kHz"},
                                                   {500000, "500.000 kHz"},
                                                   {145500000, "145.500000 MHz"},
                                                   {2.4e9, "2\u00A0400.000000 MHz"}};
    for (const auto& [hertz, text] : rows) {
        EXPECT_EQ(Quor::GroupedFrequencyText(hertz), QString::fromUtf8(text));
        EXPECT_EQ(Quor::ReadFrequencyInput(Quor::GroupedFrequencyText(hertz), 1).hertz, hertz);
    }
    EXPECT_EQ(Quor::ReadFrequencyInput(u"7.05 MHz", 1).step, 1e4);
    EXPECT_EQ(Quor::GroupThousands("BBC 2000"), "BBC 2000");
}

} // namespace
