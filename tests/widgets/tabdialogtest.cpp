#include "host/valuetree/value.h"
#include "host/widgets/canclosetabdialog.h"
#include "host/widgets/vclineedit.h"
#include "tests/support/waiting.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTest>

#include <gtest/gtest.h>

namespace {

class Dialog : public testing::Test {
protected:
    Dialog() {
        value.SetMinMax(9e3, 3e9, 1);
        value.SetValue(7055000);
        auto* tab = new QWidget;
        field = new VCLineEdit(tab, "frequency", VCLineEdit::Frequency);
        field->SetValueBase(&value);
        dialog.addTab(tab, "Edit");
        dialog.addTab(new QWidget, "More");
        dialog.show();
        dialog.activateWindow();
    }
    void SetUp() override { ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog, Patience)); }
    void press(QDialogButtonBox::StandardButton button) {
        dialog.findChild<QDialogButtonBox*>()->button(button)->click();
    }
    void type(const QString& text) {
        field->setFocus();
        field->selectAll();
        QTest::keyClicks(field, text);
    }

    ValueNumeric<double> value;
    CanCloseTabDialog dialog{nullptr, nullptr, true, Qt::Dialog | Qt::MSWindowsFixedSizeDialogHint};
    VCLineEdit* field = nullptr;
    QSignalSpy applied{&dialog, &TabDialog::applyButtonPressed};
};

TEST_F(Dialog, OkTakesTheEntriesBeforeItCloses) {
    double seen = 0;
    QObject::connect(&dialog, &TabDialog::applyButtonPressed, [&] { seen = value.GetValue(); });
    type("7060");
    press(QDialogButtonBox::Ok);
    EXPECT_EQ(seen, 7060e3);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_FALSE(dialog.IsCancelled());
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
}

TEST_F(Dialog, ReturnInAFieldIsOk) {
    type("7060");
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(value.GetValue(), 7060e3);
    EXPECT_EQ(applied.count(), 1);
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(Dialog, ApplyTakesTheEntriesAndStaysOpen) {
    type("7060");
    press(QDialogButtonBox::Apply);
    EXPECT_EQ(value.GetValue(), 7060e3);
    EXPECT_EQ(applied.count(), 1);
    EXPECT_TRUE(dialog.isVisible());
}

TEST_F(Dialog, AWrongEntryKeepsItOpenAndIsShown) {
    type("seven");
    auto* tabs = dialog.findChild<QTabWidget*>();
    tabs->setCurrentIndex(1);
    press(QDialogButtonBox::Ok);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(applied.count(), 0);
    EXPECT_EQ(tabs->currentIndex(), 0);
    EXPECT_TRUE(field->hasFocus());
    const auto shows = [&](const QString& text) {
        const auto labels = dialog.findChildren<QLabel*>();
        return std::any_of(labels.begin(), labels.end(), [&](QLabel* l) { return l->text() == text; });
    };
    EXPECT_TRUE(shows("\"seven\" is not a frequency"));
    type("7060");
    EXPECT_FALSE(shows("\"seven\" is not a frequency"));
    press(QDialogButtonBox::Ok);
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(Dialog, WhoTakesTheEntriesCanKeepItOpen) {
    bool refuse = true;
    QObject::connect(&dialog, &TabDialog::applyButtonPressed, [&] { dialog.SetCanClose(!refuse); });
    press(QDialogButtonBox::Ok);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_FALSE(dialog.IsCancelled());
    refuse = false;
    press(QDialogButtonBox::Ok);
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(Dialog, CancelClosesItWhateverTheEntriesAre) {
    dialog.SetCanClose(false);
    type("seven");
    press(QDialogButtonBox::Cancel);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_TRUE(dialog.IsCancelled());
    EXPECT_EQ(applied.count(), 0);
    EXPECT_EQ(value.GetValue(), 7055e3);
    dialog.show();
    EXPECT_FALSE(dialog.IsCancelled()) << "shown again, it is not cancelled yet";
}

TEST_F(Dialog, EscapeDropsTheEntryFirstAndClosesNext) {
    type("seven");
    QTest::keyClick(field, Qt::Key_Escape);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(field->text(), "7055.000 kHz");
    QTest::keyClick(field, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_TRUE(dialog.IsCancelled());
}

TEST_F(Dialog, LeavingAFieldWritesItsEntry) {
    type("7060");
    dialog.ForceKillFocus();
    EXPECT_EQ(value.GetValue(), 7060e3);
    EXPECT_FALSE(field->hasFocus());
}

} // namespace
