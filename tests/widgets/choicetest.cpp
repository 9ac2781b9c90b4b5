#include "host/widgets/vccheckbox.h"
#include "host/widgets/vccomboboxclassic.h"

#include <QAbstractItemView>
#include <QTest>

#include <gtest/gtest.h>

namespace {

struct CountingObserver : IObserver {
    int calls = 0;
    void Update(Observable*, TChangeCode) override { ++calls; }
};

TEST(CheckBox, ShowsEditsFollowsAndLetsGoOfItsFlag) {
    auto flag = std::make_unique<Value<bool>>();
    CountingObserver other;
    flag->AddObserver(&other);
    VCCheckBox box(nullptr, "afc");
    EXPECT_FALSE(box.isEnabled());
    box.SetBoolean(flag.get());
    EXPECT_TRUE(box.isEnabled());
    flag->SetValue(true);
    EXPECT_TRUE(box.isChecked());
    other.calls = 0;
    box.click();
    EXPECT_FALSE(flag->GetValue());
    EXPECT_EQ(other.calls, 1);
    flag->SetValue(true);
    flag.reset();
    EXPECT_FALSE(box.isEnabled());
    EXPECT_FALSE(box.isChecked());
}

TEST(ComboBox, ShowsEditsFollowsAndLetsGoOfItsSelection) {
    auto selection = std::make_unique<ValueSelection>();
    selection->AddItem("AM", 0, 10);
    selection->AddItem("USB", 0, 20);
    selection->Select("USB");
    VCComboBoxClassic box(nullptr, "demodulation");
    box.SetValueSelection(selection.get());
    EXPECT_EQ(box.currentText(), "USB");

    CountingObserver other;
    selection->AddObserver(&other);
    QTest::keyClick(&box, Qt::Key_Up);
    EXPECT_EQ(selection->GetCurrentKey(), 10);
    EXPECT_EQ(other.calls, 1);

    selection->AddItem("CW", 0, 30);
    selection->Select("CW");
    EXPECT_EQ(box.currentText(), "CW");
    EXPECT_EQ(box.count(), 3);
    selection->DeleteItem(selection->GetItem("AM"));
    EXPECT_EQ(box.count(), 2);
    EXPECT_EQ(box.currentText(), "CW");

    selection.reset();
    EXPECT_EQ(box.count(), 0);
    EXPECT_FALSE(box.isEnabled());
}

TEST(ComboBox, FollowingItsSelectionWritesNothing) {
    ValueSelection selection;
    selection.AddItems({"AM", "FM"});
    VCComboBoxClassic box(nullptr, "demodulation");
    box.SetValueSelection(&selection);
    CountingObserver other;
    selection.AddObserver(&other);
    selection.Select("FM");
    EXPECT_EQ(other.calls, 1);
}

} // namespace
