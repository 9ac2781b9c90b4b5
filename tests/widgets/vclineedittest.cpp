#include "host/widgets/vclineedit.h"

#include "host/valuetree/value.h"
#include "host/valuetree/valueselection.h"

#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>
#include <memory>
#include <ostream>

namespace {

using enum VCLineEdit::LineEditType;

/// Types over what the field shows.
void type(VCLineEdit& field, const QString& text) {
    field.selectAll();
    QTest::keyClick(&field, Qt::Key_Delete);
    QTest::keyClicks(&field, text);
}

void enter(VCLineEdit& field, const QString& text) {
    type(field, text);
    QTest::keyClick(&field, Qt::Key_Return);
}

struct CountingObserver : IObserver {
    int calls = 0;
    void Update(Observable*, TChangeCode) override { ++calls; }
};

class FrequencyField : public testing::Test {
protected:
    FrequencyField() {
        value.SetMinMax(9e3, 3e9, 1);
        value.SetValue(7055000);
        field.SetValueBase(&value);
    }

    ValueNumeric<double> value;
    VCLineEdit field{nullptr, "frequency", Frequency};
};

struct Entry {
    const char* before; ///< Hz
    const char* typed;
    const char* stored; ///< Hz; null when the entry is refused
    const char* shown;
};

void PrintTo(const Entry& entry, std::ostream* out) {
    *out << '"' << entry.typed << '"';
}

class FrequencyEntries : public testing::TestWithParam<Entry> {};

TEST_P(FrequencyEntries, AreReadInTheUnitTheyNameOrTheFieldShows) {
    ValueNumeric<double> value;
    value.SetMinMax(9e3, 3e9, 1);
    value.SetStringValue(GetParam().before);
    VCLineEdit field(nullptr, "frequency", Frequency);
    field.SetValueBase(&value);
    enter(field, GetParam().typed);
    EXPECT_EQ(value.GetStringValue(), GetParam().stored ? GetParam().stored : GetParam().before);
    EXPECT_EQ(field.text(), GetParam().shown);
    EXPECT_EQ(field.ErrorText().isEmpty(), GetParam().stored != nullptr);
}

INSTANTIATE_TEST_SUITE_P(
    , FrequencyEntries,
    testing::Values(Entry{"7055000", "7.056 MHz", "7056000", "7056.000 kHz"},
                    Entry{"7055000", "145.5MHz", "145500000", "145.500000 MHz"},
                    Entry{"7055000", "7056.5", "7056500", "7056.500 kHz"},
                    Entry{"145500000", "146", "146000000", "146.000000 MHz"},
                    Entry{"7055000", "7,056 MHz", "7056000", "7056.000 kHz"},
                    Entry{"7055000", "7 056,5", "7056500", "7056.500 kHz"},
                    Entry{"7055000", "1e4", nullptr, "1e4"}, Entry{"0", "500", "500000", "500.000 kHz"},
                    Entry{"7055000", "9000 hz", "9000", "9.000 kHz"},
                    Entry{"7055000", "3 GHz", "3000000000", "3000.000000 MHz"},
                    Entry{"7055000", "3.1 GHz", nullptr, "3.1 GHz"},
                    Entry{"7055000", "8999 Hz", nullptr, "8999 Hz"},
                    Entry{"7055000", "seven", nullptr, "seven"}, Entry{"7055000", "nan", nullptr, "nan"},
                    Entry{"7055000", "1e308 GHz", nullptr, "1e308 GHz"}, Entry{"7055000", "", nullptr, ""}));

TEST_F(FrequencyField, ShowsFollowsAndLetsGoOfItsValue) {
    EXPECT_EQ(field.text(), "7055.000 kHz");
    EXPECT_TRUE(field.isEnabled());
    EXPECT_EQ(field.toolTip(), "9.000 kHz to 3000.000000 MHz");
    value.SetValue(145.5e6);
    EXPECT_EQ(field.text(), "145.500000 MHz");
    value.SetMax(1e9);
    EXPECT_EQ(field.toolTip(), "9.000 kHz to 1000.000000 MHz");

    auto other = std::make_unique<ValueNumeric<double>>();
    other->SetValue(100e3);
    field.SetValueBase(other.get());
    EXPECT_EQ(field.text(), "100.000 kHz");
    value.SetValue(1);
    EXPECT_EQ(field.text(), "100.000 kHz") << "still follows the value before";
    other.reset();
    EXPECT_EQ(field.text(), "");
    EXPECT_FALSE(field.isEnabled());
}

TEST_F(FrequencyField, TellsOtherObserversOfAnEntryAndNotItself) {
    CountingObserver other;
    value.AddObserver(&other);
    enter(field, "7060");
    EXPECT_EQ(other.calls, 1);
    QTest::keyClick(&field, Qt::Key_Return);
    EXPECT_EQ(other.calls, 1) << "an unchanged field writes nothing";
}

TEST_F(FrequencyField, LeavesWhatItCannotShowUntouchedWithoutAnEntry) {
    value.SetValue(7055000.25);
    EXPECT_EQ(field.text(), "7055.000 kHz");
    QTest::keyClick(&field, Qt::Key_Return);
    EXPECT_EQ(value.GetValue(), 7055000.25);
}

TEST_F(FrequencyField, SaysWhileTypingWhatIsWrongAndWhenItIsRightAgain) {
    QSignalSpy errors(&field, &VCLineEdit::errorChanged);
    type(field, "70000 MHz");
    EXPECT_EQ(field.ErrorText(), "70000.000000 MHz is outside 9.000 kHz to 3000.000000 MHz");
    EXPECT_EQ(errors.last().first().toString(), field.ErrorText());
    EXPECT_TRUE(field.toolTip().contains("is outside"));
    EXPECT_EQ(value.GetValue(), 7055000);
    type(field, "70 MHz");
    EXPECT_EQ(errors.last().first().toString(), "");
    EXPECT_EQ(field.toolTip(), "9.000 kHz to 3000.000000 MHz");
}

TEST_F(FrequencyField, SaysWhileTypingWhatItHasUnderstood) {
    const auto type = [this](const char* text) {
        field.selectAll();
        QTest::keyClicks(&field, QString::fromUtf8(text));
        return field.UnderstoodText();
    };
    EXPECT_EQ(type("7056"), QString("7\u00A0056.000 kHz"));
    EXPECT_TRUE(field.toolTip().startsWith("= " + field.UnderstoodText())) << "the field may be short";
    EXPECT_EQ(type("145,5 MHz"), QString("145.500000 MHz"));
    EXPECT_EQ(type("9.100"), QString("9.100 kHz?")) << "somebody else would read thousands";
    EXPECT_EQ(type("seven"), "");
    type("7056");
    QTest::keyClick(&field, Qt::Key_Return);
    EXPECT_EQ(field.UnderstoodText(), "");
    type("7057");
    QTest::keyClick(&field, Qt::Key_Escape);
    EXPECT_EQ(field.UnderstoodText(), "");

    value.SetValue(2700);
    VCLineEdit bandwidth(nullptr, "bandwidth", VCLineEdit::Bandwidth);
    bandwidth.SetValueBase(&value);
    bandwidth.selectAll();
    QTest::keyClicks(&bandwidth, "12,5");
    EXPECT_EQ(bandwidth.UnderstoodText(), "12.500 kHz");
}

TEST_F(FrequencyField, KeepsAnUnfinishedEntryWhenTheValueChangesAndEscapeDropsIt) {
    type(field, "14 M");
    value.SetValue(145.5e6);
    EXPECT_EQ(field.text(), "14 M");
    QTest::keyClick(&field, Qt::Key_Escape);
    EXPECT_EQ(field.text(), "145.500000 MHz");
    EXPECT_EQ(field.ErrorText(), "");
    EXPECT_EQ(value.GetValue(), 145.5e6);
}

TEST_F(FrequencyField, FrameTurnsRedWithAWrongEntry) {
    const auto redPixels = [&] {
        const QImage image = field.grab().toImage();
        int count = 0;
        for (int x = 0; x < image.width(); ++x) {
            const QColor color = image.pixelColor(x, 0);
            count += color.red() > color.green() + 60 ? 1 : 0;
        }
        return count;
    };
    field.resize(200, 30);
    EXPECT_EQ(redPixels(), 0);
    type(field, "x");
    EXPECT_GT(redPixels(), 100);
}

TEST(LineEdits, TakeOnlyWhatTheValueCanHold) {
    struct Row {
        VCLineEdit::LineEditType type;
        ValueBase* value;
        const char* typed;
        const char* stored; ///< null: refused
    };
    ValueSelection selection;
    selection.AddItems({"USB", "LSB"});
    Value<QString> text;
    ValueNumeric<int> number;
    ValueNumeric<qint64> wide;
    Value<double> real;
    const Row rows[] = {
        {Text, &text, "50 % of <b>it</b> %1", "50 % of <b>it</b> %1"},
        {Text, &text, "", ""},
        {Text, &selection, "LSB", "LSB"},
        {Text, &selection, "CW", nullptr},
        {Integer, &number, " 42 ", "42"},
        {Integer, &number, "4.5", nullptr},
        {Integer, &number, "3000000000", nullptr},
        {Integer, &wide, "9007199254740993", "9007199254740993"},
        {Frequency, &wide, "7.0555555 MHz", "7055556"},
        {Real, &real, "-0.1", "-0.1"},
        {Real, &real, "0,1", nullptr},
        {Bandwidth, &real, "2.7", "2700"},
        {Bandwidth, &real, "12 MHz", "12000000"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.typed);
        const QString before = row.value->GetStringValue();
        VCLineEdit field(nullptr, "field", row.type);
        field.SetValueBase(row.value);
        enter(field, row.typed);
        EXPECT_EQ(row.value->GetStringValue(), row.stored ? QString(row.stored) : before);
        EXPECT_EQ(field.ErrorText().isEmpty(), row.stored != nullptr) << field.ErrorText().toStdString();
    }
}

TEST(LineEdits, OutliveAValueThatEndsWhileItIsWritten) {
    struct Deleter : IObserver {
        std::unique_ptr<Value<QString>> value = std::make_unique<Value<QString>>();
        void Update(Observable*, TChangeCode code) override {
            if (code == TChangeCode::ValueChanged)
                value.reset();
        }
    } owner;
    owner.value->AddObserver(&owner);
    VCLineEdit field(nullptr, "field", Text);
    field.SetValueBase(owner.value.get());
    enter(field, "last words");
    EXPECT_FALSE(field.isEnabled());
    EXPECT_EQ(field.text(), "");
}

} // namespace
