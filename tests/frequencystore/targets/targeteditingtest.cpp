#include "controls/frequencystore/targets/targetlisthandler.h"
#include "controls/frequencystore/targets/targetlistparser.h"
#include "controls/frequencystore/targets/wkflistview.h"
#include "host/base/problems.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencynodemediatorctrl.h"
#include "host/freqstorexml/csvoptions.h"
#include "host/widgets/canclosetabdialog.h"
#include "host/widgets/vclineedit.h"
#include "tests/frequencystore/listrows.h"
#include "tests/support/dialogs.h"
#include "tests/support/waiting.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

namespace {

using Bar = FreqStoreListViewButtonBar;

/// A shown view of the local target list, worked on by mouse and keys.
class TargetEditing : public ListFixture {
protected:
    enum { Frequency, Name, Bandwidth, Demodulation, Priority, ThreatClass };

    void SetUp() override {
        m_list = Tree::Instance()->MakeNode(Q("/Lists/Targets"));
        TargetListHandler::Instance()->Init(m_list, false);
        m_id = TargetListHandler::Instance()->AddToFreqStore();
        m_view = new WkfListView(&m_window, static_cast<unsigned>(m_id));
        m_view->InitFreqStoreWidget(&m_bar);
        m_view->resize(1000, 300);
        m_window.resize(1000, 300);
        m_window.show();
        m_window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&m_window, Patience));
        m_sink = Problems::SetSink([this](const Problem& problem) { m_told << problem.ToString(); });
        for (const char* name : {"a", "b", "c"})
            Add(name);
    }
    void TearDown() override {
        Problems::SetSink(m_sink);
        delete m_view;
        TargetListHandler::DeleteInstance();
        FreqStore::Instance().RemoveFrequencyListDefinition(m_id);
        ListFixture::TearDown();
    }
    void Add(const char* name) {
        TargetListHandler::Instance()->GetParser()->FillInData(
            7e6, 3000, Q(name), Q("USB"), 2, Q("low"), Q("id"), Q("profile"), Q("class"), Q("system"));
        Update();
    }
    void Update() { FreqStore::Instance().GetFrequencies(m_view->GetID())->ForceUpdateNow(); }
    void Click(int row, int column, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        const QModelIndex cell = m_view->model()->index(row, column);
        QTest::mouseClick(m_view->viewport(), Qt::LeftButton, modifiers, m_view->visualRect(cell).center());
        m_view->setFocus();
    }
    /// To whatever has the focus, as keys go.
    static void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    static void Type(const char* text) { QTest::keyClicks(QApplication::focusWidget(), Q(text)); }
    /// Name, frequency, bandwidth and priority of each target.
    QStringList Targets() const { return RowsOf(m_list, {"comment", "frequency", "bandwidth", "priority"}); }

    int m_id = 0;
    QWidget m_window;
    Bar m_bar;
    WkfListView* m_view = nullptr;
    Problems::Sink m_sink;
    QStringList m_told;
};

TEST_F(TargetEditing, F2EditsTheCellClickedAndTabGoesOn) {
    Click(1, Name);
    Press(Qt::Key_F2);
    Type("net");
    Press(Qt::Key_Tab);
    Type("5");
    Press(Qt::Key_Backtab);
    Type("net 2");
    Press(Qt::Key_Return);
    EXPECT_FALSE(m_view->IsEditing());
    EXPECT_EQ(QApplication::focusWidget(), m_view) << "keys go on in the list";
    EXPECT_EQ(Targets()[1], Q("net 2|7000000|5000|2"));
    Click(0, Frequency);
    Press(Qt::Key_F2);
    Press(Qt::Key_Backtab); // there is no cell before
    EXPECT_FALSE(m_view->IsEditing());
    Click(0, 7);
    Press(Qt::Key_F2);
    Press(Qt::Key_Tab);
    Type("14.1 MHz");
    Press(Qt::Key_Return);
    EXPECT_EQ(Targets()[1], Q("net 2|14100000|5000|2")) << "from the last cell to the next row";
}

TEST_F(TargetEditing, WhatACellRefusesStaysThereUntilItIsRightOrTakenBack) {
    const std::tuple<int, const char*, const char*> rows[] = {
        {Frequency, "seven", "\"seven\" is not a frequency"}, {Priority, "12", "1 to 11"}};
    for (const auto& [column, text, reason] : rows) {
        Click(1, column);
        Press(Qt::Key_F2);
        Type(text);
        Press(Qt::Key_Return);
        ASSERT_TRUE(m_view->IsEditing()) << text;
        const auto* field = qobject_cast<VCLineEdit*>(QApplication::focusWidget());
        ASSERT_NE(field, nullptr);
        EXPECT_TRUE(field->ErrorText().contains(Q(reason))) << field->ErrorText().toStdString();
        Press(Qt::Key_Escape);
        EXPECT_FALSE(m_view->IsEditing());
    }
    Click(1, Name);
    Press(Qt::Key_F2);
    Type("taken back");
    Press(Qt::Key_Escape);
    EXPECT_EQ(Targets()[1], Q("b|7000000|3000|2"));
}

TEST_F(TargetEditing, ASortedListWaitsWithItsOrderForTheCell) {
    m_view->sortByColumn(Name, Qt::AscendingOrder);
    Click(0, Name);
    Press(Qt::Key_F2);
    Type("z");
    Press(Qt::Key_Tab);
    Update();
    QCoreApplication::processEvents();
    ASSERT_TRUE(m_view->IsEditing());
    EXPECT_EQ(m_view->currentIndex().row(), 0);
    Type("9");
    Press(Qt::Key_Return);
    EXPECT_EQ(Targets()[0], Q("z|7000000|9000|2")) << "the same entry";
    Update();
    QCoreApplication::processEvents();
    EXPECT_EQ(m_view->topLevelItem(2)->text(Name), Q("z"));
}

TEST_F(TargetEditing, TargetsComeAndGoByKeysWithoutButtons) {
    Tree::Instance()->MakeNode(Q("/Receiver"));
    for (const char* name : {"frequency", "bandwidth"})
        GetOrCreateValue<ValueNumeric<double>>(Q("/Receiver/") + Q(name))->SetValue(6e6);
    TargetListHandler::Instance()->SetTemplate(
        {Q("/Receiver/frequency"), Q("/Receiver/bandwidth"), Q("/No")});
    m_view->SetFilterText(Q("b"));
    Press(Qt::Key_Insert);
    EXPECT_EQ(Targets().last(), Q("|6000000|6000000|10"));
    ASSERT_NE(m_view->currentItem(), nullptr);
    EXPECT_EQ(m_view->currentItem()->text(Priority), Q("10")) << "shown whatever the filter hides";
    m_view->SetFilterText(QString());
    Click(0, Name);
    Press(Qt::Key_Delete);
    Press(Qt::Key_Delete);
    EXPECT_EQ(Targets(), (QStringList{"c|7000000|3000|2", "|6000000|6000000|10"}));
    for (const Bar::Action action : {Bar::New, Bar::Edit, Bar::Delete})
        EXPECT_FALSE(m_bar.GetAction(action)->isVisible());
}

TEST_F(TargetEditing, TheEditorWritesWhatIsChosenToAllSelectedTargets) {
    Click(2, Name);
    Click(0, Name, Qt::ControlModifier);
    WhenOpen<CanCloseTabDialog>([](CanCloseTabDialog& dialog) {
        auto* name = dialog.findChild<VCLineEdit*>(Q("comment"));
        EXPECT_TRUE(name && name->text() == Q("a")) << "the first row's";
        for (const auto& [key, choice] : {std::pair("priority", "11"), {"demodulation", "ISB"}}) {
            auto* line = dialog.findChild<VCLineEdit*>(Q(key));
            auto* box = line ? qobject_cast<QComboBox*>(line->parentWidget()) : nullptr;
            ASSERT_NE(box, nullptr);
            box->setFocus();
            while (box->currentText() != Q(choice) && box->currentIndex() + 1 < box->count())
                QTest::keyClick(box, Qt::Key_Down);
            EXPECT_EQ(line->text(), Q(choice));
        }
        QStringList known;
        const auto* threat = dialog.findChild<VCLineEdit*>(Q("threadclass"))->parentWidget();
        for (int i = 0; i < qobject_cast<const QComboBox*>(threat)->count(); ++i)
            known << qobject_cast<const QComboBox*>(threat)->itemText(i);
        EXPECT_EQ(known, QStringList{"low"}) << "those that the list has";
        dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
    });
    m_bar.GetAction(Bar::Edit)->trigger();
    EXPECT_EQ(RowsOf(m_list, {"comment", "priority", "demodulation"}),
              (QStringList{"a|11|ISB", "b|2|USB", "c|11|ISB"}));
}

TEST_F(TargetEditing, OneValueGoesToManyRowsAndCopiesHaveAllOfThem) {
    m_list->Children()[1]->FindOwn<ValueNumeric<int>>(Keys::Priority)->SetValue(7);
    m_list->Children()[1]->FindOwn<Value<QString>>(Keys::SignalClass)->SetValue(Q("own"));
    Click(2, Priority);
    Click(1, Priority, Qt::ControlModifier);
    EXPECT_EQ(m_view->FillDown().written, 2);
    EXPECT_EQ(RowsOf(m_list, {"priority"}), (QStringList{"2", "7", "7"}));
    EXPECT_EQ(m_view->FillColumn(Priority, Q("none")).refused, 2);
    m_view->Duplicate();
    EXPECT_EQ(RowsOf(m_list, {"comment", "priority", "signalclass"}).mid(3),
              (QStringList{"b|7|own", "c|7|class"}));
    EXPECT_EQ(m_view->SelectedInOrder().size(), 2u);
    EXPECT_EQ(m_view->currentItem()->text(Name), Q("b"));
}

TEST_F(TargetEditing, RowsGoToASpreadsheetAndBack) {
    m_view->setColumnHidden(Bandwidth, true);
    Click(0, Name);
    const QString copied = m_view->SelectedText();
    EXPECT_EQ(copied, Q("Frequency\tName\tDemodulation\tPriority\tThreatclass\tSignal Class\t"
                        "Transmission System\n7000.000 kHz\ta\tUSB\t2\tlow\tclass\tsystem\n"));
    EXPECT_EQ(m_view->PasteText(copied), 1);
    EXPECT_EQ(Targets().last(), Q("a|7000000|0|2"));
    EXPECT_EQ(m_view->PasteText(Q("priority\tNAME\tfrequency\tother\r\n3\tx\t8 MHz\tz\r\n"
                                  "12\ty\t8 MHz\r\n\r\n4\tz\teight\r\n5\tlast\t9000\r\n")),
              2);
    EXPECT_EQ(Targets().mid(4), (QStringList{"x|8000000|0|3", "last|9000000|0|5"}));
    ASSERT_EQ(m_told.size(), 2);
    EXPECT_TRUE(m_told.contains(Q("Pasted text:5: \"eight\" is not a frequency")));
    EXPECT_TRUE(m_told[1].startsWith(Q("Pasted text:3: Priority: "))) << m_told[1].toStdString();
    EXPECT_EQ(m_view->PasteText(Q("10 MHz\tby columns\n")), 1) << "without headings: those that are shown";
    EXPECT_EQ(Targets().last(), Q("by columns|10000000|0|0"));
    m_view->setColumnHidden(Bandwidth, false); // it would be remembered
}

TEST_F(TargetEditing, NoTextIsAFormulaToASpreadsheetAndEachComesBackAsItWas) {
    FreqStoreXml::CsvOptions::SetSpreadsheetSafe(true);
    const std::pair<QString, QString> rows[] = {{Q("=1+2"), Q("'=1+2")}, {Q("@x"), Q("'@x")},
                                                {Q("+a"), Q("'+a")},     {Q("-12.5"), Q("-12.5")},
                                                {Q("'=x"), Q("''=x")},   {Q("a=b"), Q("a=b")}};
    const auto name = [this] { return Targets().last().section('|', 0, 0); };
    for (const auto& [text, shown] : rows) {
        SCOPED_TRACE(text.toStdString());
        ASSERT_EQ(m_view->PasteText(Q("Frequency\tPriority\tName\n7 MHz\t1\t") + shown), 1);
        EXPECT_EQ(name(), text);
        const QString copied = m_view->SelectedText();
        EXPECT_EQ(copied.section('\n', 1).section('\t', 1, 1), shown);
        ASSERT_EQ(m_view->PasteText(copied), 1);
        EXPECT_EQ(name(), text);
    }
    FreqStoreXml::CsvOptions::SetSpreadsheetSafe(false);
}

TEST_F(TargetEditing, TheRowOfTheReceiversFrequencyIsMarked) {
    m_list->Children()[1]->FindOwn<ValueNumeric<double>>(Keys::KeyFrequency)->SetValue(8e6);
    Update();
    const auto imageOf = [&](int row) {
        return m_view->viewport()->grab(m_view->visualItemRect(m_view->topLevelItem(row))).toImage();
    };
    const QImage before[] = {imageOf(0), imageOf(1)};
    m_view->MarkTuned(8e6 + 0.4);
    EXPECT_EQ(imageOf(0), before[0]);
    EXPECT_NE(imageOf(1), before[1]);
    m_view->MarkTuned(8e6 + 0.6);
    EXPECT_EQ(imageOf(1), before[1]);
    Click(1, Name);
    const QImage selected = imageOf(1);
    m_view->MarkTuned(8e6);
    EXPECT_NE(imageOf(1), selected) << "seen on a selected row, too";
}

TEST_F(TargetEditing, ReturnTunesToTheRow) {
    double tuned = 0;
    FreqStore::Instance().SetTuner(
        [&](IFrequencyStoreItem& item, QWidget*, bool) { item.GetFrequency(tuned, 0); });
    Click(1, Name);
    Press(Qt::Key_Return);
    FreqStore::Instance().SetTuner({});
    EXPECT_EQ(tuned, 7e6);
}

} // namespace
