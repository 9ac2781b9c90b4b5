#include "host/widgets/frequencyfield.h"

#include "tests/support/waiting.h"

#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace {

class FrequencyFields : public testing::Test {
protected:
    FrequencyFields() {
        field.resize(300, field.sizeHint().height());
        field.SetFrequency(7055000);
    }
    void type(const QString& text) {
        field.selectAll();
        QTest::keyClicks(&field, text);
    }
    double lastEntered() const { return entered.isEmpty() ? 0 : entered.last().first().toDouble(); }

    FrequencyField field;
    QSignalSpy entered{&field, &FrequencyField::Entered};
};

TEST_F(FrequencyFields, TakesAnEntryByReturnInTheDefaultUnit) {
    EXPECT_EQ(field.text(), QString("7\u00A0055.000 kHz"));
    type("14230");
    EXPECT_EQ(field.UnderstoodText(), QString("14\u00A0230.000 kHz"));
    EXPECT_EQ(entered.count(), 0);
    QTest::keyClick(&field, Qt::Key_Return);
    EXPECT_EQ(lastEntered(), 14230000);
    EXPECT_EQ(field.GetFrequency(), 14230000);
    EXPECT_EQ(field.text(), QString("14\u00A0230.000 kHz"));
    EXPECT_EQ(field.UnderstoodText(), "");
    QTest::keyClick(&field, Qt::Key_Return);
    EXPECT_EQ(entered.count(), 2) << "Return enters what stands there once more";
    field.SetDefaultUnit(1e6);
    EXPECT_TRUE(field.placeholderText().contains("MHz"));
    EXPECT_TRUE(field.toolTip().contains("in MHz"));
    type("145,5");
    QTest::keyClick(&field, Qt::Key_Return);
    EXPECT_EQ(lastEntered(), 145500000);
    type("7,055");
    EXPECT_EQ(field.UnderstoodText(), QString("7\u00A0055.000 kHz?"));
}

TEST_F(FrequencyFields, KeepsAWrongEntryAndEscapeBringsTheFrequencyBack) {
    type("70 55");
    EXPECT_FALSE(field.ErrorText().isEmpty());
    EXPECT_TRUE(field.toolTip().contains(field.ErrorText()));
    QTest::keyClick(&field, Qt::Key_Return);
    EXPECT_EQ(entered.count(), 0);
    EXPECT_EQ(field.text(), "70 55");
    field.SetFrequency(7060000);
    EXPECT_EQ(field.text(), "70 55") << "an unfinished entry stays";
    QTest::keyClick(&field, Qt::Key_Escape);
    EXPECT_EQ(field.text(), QString("7\u00A0060.000 kHz"));
    EXPECT_EQ(field.ErrorText(), "");
    type(" ");
    QTest::keyClick(&field, Qt::Key_Return);
    EXPECT_EQ(field.GetFrequency(), 7060000) << "an empty entry is none";
    EXPECT_EQ(entered.count(), 0);
}

TEST_F(FrequencyFields, TakesAnEditedEntryWhenItIsLeftAndNoOther) {
    QWidget window;
    QLineEdit other(&window);
    field.setParent(&window);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window, Patience));
    field.setFocus();
    other.setFocus();
    EXPECT_EQ(entered.count(), 0);
    field.setFocus();
    type("3573");
    other.setFocus();
    EXPECT_EQ(lastEntered(), 3573000);
    field.setParent(nullptr);
}

TEST_F(FrequencyFields, NeverPaintsWhatItUnderstoodOverTheEntry) {
    for (const int width : {300, 80, 20}) {
        field.resize(width, field.height());
        type("14230.123");
        const int note = field.textMargins().right();
        const int entry = field.fontMetrics().horizontalAdvance(field.text());
        EXPECT_EQ(note > 0, width == 300);
        EXPECT_TRUE(note == 0 || entry + note < width) << width;
    }
}

} // namespace
