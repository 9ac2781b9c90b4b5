#include "workstation/listimport.h"

#include "controls/frequencystore/common/sendto.h"
#include "host/freqlist/frequencynodelistview.h"
#include "tests/support/dialogs.h"
#include "tests/support/text.h"
#include "tests/workstation/windowfixture.h"
#include "workstation/mergedialog.h"
#include "workstation/mergemodel.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QToolButton>

namespace {

class ListImportTest : public Windows {
protected:
    void SetUp() override {
        open({Write("mine.ltl", "1000000\t9000\tone\tAM\tg\tred\t3\n2000000\t9000\ttwo\tAM\tg\tred\t3\n"
                                "3000000\t9000\tthree\tAM\tg\tred\t3\n")});
        ASSERT_TRUE(station->LoadFiles());
        show("Local TargetList");
    }
    /// Imports a file into the list that is shown, and works on the preview by keys.
    void import(const QByteArray& lines, const std::function<void(MergeDialog&, QTableView&)>& act) {
        const QString path = Write("theirs.sfl", lines);
        ASSERT_TRUE(Until([&] { return action(A::Merge)->isEnabled(); }));
        AnswerDialog(path);
        WhenOpen<MergeDialog>([&](MergeDialog& dialog) {
            ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog, Patience));
            act(dialog, *dialog.findChild<QTableView*>());
            if (dialog.isVisible())
                dialog.reject();
        });
        key(Qt::Key_I, Qt::ControlModifier | Qt::ShiftModifier);
    }
    static QString plan(const QDialog& dialog) {
        return dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->text();
    }
    static QString textAt(const QTableView& table, int row, int column) {
        return table.model()->index(row, column).data().toString();
    }
    QStringList comments() {
        QStringList texts;
        for (const Node* entry : Tree::Instance()->GetNode(Q("/Lists/LocalTargetList"))->Children())
            texts << entry->GetValue(Q("comment"))->GetStringValue();
        return texts;
    }
};

constexpr char Theirs[] = "1000000\tuno\t9000\tAM\n2000000\ttwo\t9000\tAM\n3000400\tthree\t9000\tAM\n"
                          "4000000\tfour\t9000\tAM\n0\tnone\t9000\tAM\n";

TEST_F(ListImportTest, WhatComesIsSeenBesideALongComment) {
    Tree::Instance()
        ->GetNode(Q("/Lists/LocalTargetList"))
        ->Children()
        .front()
        ->GetValue(Q("comment"))
        ->SetStringValue("the beginning of a long comment");
    import("1000000\tuno\t9000\tAM\n", [](MergeDialog&, QTableView& table) {
        EXPECT_EQ(textAt(table, 0, 4), Q("the beginning o… → uno"));
    EXPECT_EQ(table.model()->index(0, 4).data(Qt::ToolTipRole),
              Q("Mine: the beginning of a long comment\nTheirs: uno"));
});
} // namespace

TEST_F(ListImportTest, WhatIsChosenByKeysIsDone) {
    import(Theirs, [&](MergeDialog& dialog, QTableView& table) {
        EXPECT_EQ(plan(dialog), "Add 1, Change 0, Leave 4");
    EXPECT_EQ(textAt(table, 0, 0), "Differs from 1");
    EXPECT_EQ(textAt(table, 0, 4), Q("one → uno"));
    EXPECT_EQ(textAt(table, 1, 0), "Equal to 2");
    EXPECT_EQ(textAt(table, 2, 1), "3000.400 kHz (+0.4 kHz)");
    EXPECT_EQ(textAt(table, 4, 5), "has no frequency");
    ASSERT_EQ(QApplication::focusWidget(), &table);
    key(Qt::Key_Home, Qt::ControlModifier);
    key(Qt::Key_4);
    EXPECT_EQ(textAt(table, 0, 6), "Join comments");
    key(Qt::Key_Down);
    key(Qt::Key_Down);
    key(Qt::Key_2);
    EXPECT_EQ(plan(dialog), "Add 1, Change 2, Leave 2");
    key(Qt::Key_Return);
});
EXPECT_EQ(comments(), (QStringList{"one; uno", "two", "three", "four"}));
EXPECT_EQ(status(), "theirs.sfl: 1 added, 2 changed, 2 left");
EXPECT_TRUE(tabText().endsWith('*')) << "the list is no longer what its file has";
} // namespace

TEST_F(ListImportTest, EachRowHasAListOfItsOwnChoices) {
    import(Theirs, [&](MergeDialog& dialog, QTableView& table) {
        const auto choices = [&](int row) {
            const QModelIndex cell = table.model()->index(row, MergeModel::ColumnChoice);
    QTest::mouseClick(table.viewport(), Qt::LeftButton, Qt::NoModifier, table.visualRect(cell).center());
    QStringList texts;
    const auto* box = table.findChild<QComboBox*>();
    for (int i = 0; box && i < box->count(); ++i)
        texts << box->itemText(i);
    return texts;
};
EXPECT_EQ(choices(0), (QStringList{"Keep mine", "Take theirs", "Keep both", "Join comments"}));
auto* box = table.findChild<QComboBox*>();
ASSERT_TRUE(Until([&] { return box->view()->isVisible(); })) << "one click opens it";
QTest::keyClick(box->view(), Qt::Key_End);
QTest::keyClick(box->view(), Qt::Key_Return);
EXPECT_EQ(textAt(table, 0, MergeModel::ColumnChoice), "Join comments");
EXPECT_EQ(plan(dialog), "Add 1, Change 1, Leave 3");
QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
EXPECT_EQ(choices(4), QStringList()) << "what is refused cannot be chosen";
EXPECT_EQ(choices(3), (QStringList{"Left out", "Added"}));
});
}

TEST_F(ListImportTest, AStateCanBeShownAloneAndChosenForAsAWhole) {
    import(Theirs, [&](MergeDialog& dialog, QTableView& table) {
        const auto states = dialog.findChildren<QToolButton*>();
    ASSERT_EQ(states.size(), 5);
    EXPECT_EQ(states[0]->text(), "All: 5");
    EXPECT_EQ(states[2]->text(), "Different: 2");
    states[2]->click();
    EXPECT_EQ(table.model()->rowCount(), 2);
    key(Qt::Key_3); // no row is selected
    EXPECT_EQ(plan(dialog), "Add 3, Change 0, Leave 2");
    states[1]->click();
    key(Qt::Key_1);
    EXPECT_EQ(textAt(table, 0, 6), "Left out");
    EXPECT_EQ(plan(dialog), "Add 2, Change 0, Leave 3");
    key(Qt::Key_Escape);
});
EXPECT_EQ(comments().size(), 3) << "nothing is done without the button";
}

TEST_F(ListImportTest, AnotherToleranceIsMatchedAnew) {
    import(Theirs, [&](MergeDialog& dialog, QTableView& table) {
        auto* field = dialog.findChild<QLineEdit*>("Tolerance");
    const auto enter = [&](const char* text) {
        field->setFocus();
        field->selectAll();
        QTest::keyClicks(field, text);
        QTest::keyClick(field, Qt::Key_Return);
        EXPECT_TRUE(dialog.isVisible()) << "Return takes the tolerance";
        return textAt(table, 2, 0) + Q(", ") + plan(dialog);
    };
    EXPECT_EQ(enter("300"), "New, Add 2, Change 0, Leave 3");
    EXPECT_EQ(enter("0.4 kHz"), "Differs from 3, Add 1, Change 0, Leave 4");
    EXPECT_EQ(enter("0"), "New, Add 2, Change 0, Leave 3");
});
}

TEST_F(ListImportTest, ListsOfWhatWasHeardSayWhyNothingIsImported) {
    for (const char* name : {"Search MC Data Results", "Detections"}) {
        if (!show(name))
            continue;
        ASSERT_TRUE(Until([&] { return !action(A::Merge)->isEnabled(); }));
        EXPECT_TRUE(action(A::Merge)->toolTip().contains("Nothing is imported into this list")) << name;
    }
}

TEST_F(ListImportTest, DuplicatesAreSelectedAndDeleteLeavesOneOfEach) {
    import("1000100\tuno\t9000\tAM\n3000000\tdrei\t9000\tUSB\n", [&](MergeDialog& dialog, QTableView&) {
        dialog.findChildren<QPushButton*>();
    key(Qt::Key_A, Qt::ControlModifier);
    key(Qt::Key_3);
    key(Qt::Key_Return);
});
ASSERT_EQ(comments(), (QStringList{"one", "two", "three", "uno", "drei"}));
action(A::FindDuplicates)->trigger();
EXPECT_EQ(status(), "1 duplicate within 0.500 kHz selected; the first of each stays unselected");
EXPECT_EQ(show("Local TargetList")->SelectedCount(), 1);
ASSERT_TRUE(Until([&] { return action(A::Delete)->isEnabled(); }));
action(A::Delete)->trigger();
EXPECT_EQ(comments(), (QStringList{"one", "two", "three", "drei"}));
action(A::FindDuplicates)->trigger();
EXPECT_EQ(status(), "No two entries within 0.500 kHz");
EXPECT_EQ(show("Local TargetList")->SelectedCount(), 0);
}

} // namespace
