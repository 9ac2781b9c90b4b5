#include "host/widgets/vcfrequencylist.h"

#include "host/base/frequencytext.h"
#include "host/widgets/limits.h"

#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>
#include <memory>

namespace {

class FrequencyList : public testing::Test {
protected:
    FrequencyList() {
        reference.SetMinMax(9e3, 30e6, 1);
        reference.SetValue(7055000);
        field.SetValueList(list.get(), &reference);
    }
    void type(const QString& text) {
        field.selectAll();
        field.insertPlainText(text);
    }

    ValueNumeric<double> reference;
    std::unique_ptr<ValueList<double>> list = std::make_unique<ValueList<double>>();
    VCFrequencyList field{nullptr, "frequencies"};
};

TEST_F(FrequencyList, EntriesAreReadInTheUnitThatTheyNameOrThatOfTheReference) {
    const std::pair<const char*, const char*> rows[] = {
        {"7060", "7060000"},
        {" 7060 kHz ;; 7.061MHz;\n\n 7062\n", "7060000;7061000;7062000"},
        {"7060\n7060", "7060000;7060000"},
        {"0.03 GHz", "30000000"},
        {"", ""}};
    for (const auto& [entry, stored] : rows) {
        type(entry);
        EXPECT_EQ(field.ErrorText(), QString()) << entry;
        EXPECT_TRUE(field.Commit());
        EXPECT_EQ(list->GetStringValue(), stored) << entry;
    }
    reference.SetMax(3e9);
    reference.SetValue(145e6);
    type("145.5");
    EXPECT_TRUE(field.Commit());
    EXPECT_EQ(list->GetStringValue(), "145500000");
}

TEST_F(FrequencyList, AWrongLineIsNamedAndNothingIsWritten) {
    list->PushBack(7e6);
    QSignalSpy errors(&field, &VCFrequencyList::errorChanged);
    type("7060\n\n70x");
    EXPECT_EQ(field.ErrorText(), "Line 3: \"70x\" is not a frequency");
    EXPECT_FALSE(field.Commit());
    field.ShowError();
    EXPECT_EQ(field.textCursor().selectedText(), "70x");
    type("7060\n31 MHz");
    EXPECT_EQ(field.ErrorText(), "Line 2: 31.000000 MHz is outside 9.000 kHz to 30.000000 MHz");
    EXPECT_FALSE(field.Commit());
    EXPECT_EQ(list->GetStringValue(), "7000000");
    list->PushBack(8e6);
    EXPECT_TRUE(field.toPlainText().contains("31 MHz")) << "an unfinished entry stays";
    QTest::keyClick(&field, Qt::Key_Escape);
    EXPECT_EQ(field.toPlainText(), "7000.000 kHz\n8000.000 kHz");
    EXPECT_EQ(errors.count(), 3);
    EXPECT_EQ(errors.last().first().toString(), QString());
    EXPECT_TRUE(field.Commit());
}

TEST_F(FrequencyList, TheFieldFollowsItsListAndLetsGoOfIt) {
    EXPECT_TRUE(field.isEnabled());
    list->PushBack(145.5e6);
    EXPECT_EQ(field.toPlainText(), "145.500000 MHz");
    EXPECT_FALSE(field.document()->isModified());
    list.reset();
    EXPECT_FALSE(field.isEnabled());
    EXPECT_EQ(field.toPlainText(), QString());
    type("7060");
    EXPECT_TRUE(field.Commit()) << "there is nothing to write to";
}

TEST(LimitsOfNumbers, AreToldAsFarAsThereAreAny) {
    constexpr double Max = std::numeric_limits<double>::max();
    const std::tuple<double, double, const char*, const char*> rows[] = {
        {1e3, 30e6, "1.000 kHz to 30.000000 MHz", "0.000 kHz is outside 1.000 kHz to 30.000000 MHz"},
        {1e3, Max, "from 1.000 kHz", "0.000 kHz is below 1.000 kHz"},
        {-Max, -1e3, "up to -1.000 kHz", "0.000 kHz is above -1.000 kHz"},
        {-Max, Max, "", ""},
        {5, 5, "", ""}};
    for (const auto& [min, max, text, problem] : rows) {
        ValueNumeric<double> number;
        number.SetMinMax(min, max, 1);
        EXPECT_EQ(Limits::Text(&number, Quor::FrequencyText), text);
        EXPECT_EQ(Limits::Problem(&number, 0, Quor::FrequencyText), problem);
    }
    EXPECT_EQ(Limits::Text(nullptr, Quor::FrequencyText), QString());
    EXPECT_EQ(Limits::Problem(nullptr, 0, Quor::FrequencyText), QString());
}

} // namespace
