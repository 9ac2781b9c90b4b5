#include "controls/frequencystore/common/halvovieweditor.h"
#include "controls/frequencystore/noi/searchmcnoilistview.h"
#include "host/freqlist/buttonbar.h"
#include "host/freqlist/copystruct.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencynodemediator.h"
#include "host/freqstorexml/frequencystorelist.h"
#include "host/widgets/canclosetabdialog.h"
#include "host/widgets/vclineedit.h"
#include "tests/frequencystore/noi/noifixture.h"
#include "tests/support/dialogs.h"
#include "tests/support/recorder.h"

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

namespace {

using Bar = FreqStoreListViewButtonBar;

class NoiViewTest : public NoiFixture {
protected:
    void SetUp() override {
        NoiFixture::SetUp();
        m_handler = &Start();
        m_id = m_handler->AddToFreqStore();
        m_view = std::make_unique<SearchMCNOIListView>(nullptr, static_cast<unsigned>(m_id));
        m_view->InitFreqStoreWidget(&m_bar);
        FreqStore::Instance().SetClipboardText(QString());
    }
    void TearDown() override {
        m_view.reset();
        FreqStore::Instance().RemoveFrequencyListDefinition(m_id);
        NoiFixture::TearDown();
    }
    void Fill() {
        for (const auto& [frequency, comment] :
             {std::pair{7055000.0, "b"}, std::pair{3500000.0, "c"}, std::pair{14000000.0, "a"}})
            m_handler->InsertNewValue(frequency, 3000, Q(comment));
    }
    FrequencyNodeMediatorViewItem* Row(unsigned long index) {
        return Controller().At(index)->GetItem4View(m_view.get());
    }
    void Trigger(Bar::Action action) { m_bar.GetAction(action)->trigger(); }
    static FreqStoreXml::FrequencyStoreList Clipboard() {
        FreqStoreXml::FrequencyStoreList list;
        EXPECT_TRUE(list.SetXmlString(FreqStore::Instance().GetClipboardText()));
        return list;
    }

    NOIFrequencyHandler* m_handler = nullptr;
    int m_id = 0;
    Bar m_bar;
    std::unique_ptr<SearchMCNOIListView> m_view;
};

TEST_F(NoiViewTest, ColumnsAndActionsAreThoseOfTheList) {
    EXPECT_EQ(m_view->objectName(), Q("SearchMCNOIListView"));
    EXPECT_EQ(m_view->GetColumnDescription(), (std::vector<unsigned>{0, 1, 4}));
    const char* const titles[] = {"Frequency", "Bandwidth", "Comment"};
    for (int column = 0; column < 3; ++column) {
        EXPECT_EQ(m_view->headerItem()->text(column), Q(titles[column]));
        EXPECT_TRUE(m_view->ColumnAlignment(column) & Qt::AlignRight);
    }
    Fill();
    EXPECT_EQ(Row(0)->CellText(0), Q("7055.000 kHz"));
    EXPECT_EQ(Row(0)->CellText(1), Q("3.000 kHz"));
    EXPECT_EQ(Row(0)->CellText(2), Q("b"));
    EXPECT_EQ(m_bar.GetCaption(), Q("Frequency Store - NOI Frequencies"));
    const auto visible = [this] {
        QString names;
        for (int action = 0; action < Bar::ActionCount; ++action)
            names += m_bar.GetAction(static_cast<Bar::Action>(action))->isVisible() ? QLatin1Char('x')
                                                                                    : QLatin1Char('.');
        return names;
    };
    EXPECT_EQ(visible(), Q("xxxxxxx.....")) << "new, edit, copy, paste, delete, read, save";
    Write(Q("FrequencyStore.ini"), "[ViewMenu]\nAllowExportToCsv=true\n");
    m_view->InitFreqStoreWidget(&m_bar);
    EXPECT_EQ(visible(), Q("xxxxxxxxx..."));
    Trigger(Bar::New);
    EXPECT_EQ(Entries().size(), 4) << "initialised twice, connected once";
    m_view->InitFreqStoreWidget(nullptr);
}

TEST_F(NoiViewTest, RowsNeverSeenAreSortedFilteredCopiedAndDeletedAsTheOthers) {
    constexpr int Many = 400;
    for (int i = 1; i <= Many; ++i)
        m_handler->InsertNewValue(1e6 + 1000.0 * i, 3000, Q("entry %1").arg(i));
    m_view->resize(300, 200);
    m_view->show();
    m_view->sortByColumn(0, Qt::AscendingOrder);
    EXPECT_LT(m_view->FillCount(), 60u);
    Controller().At(390)->SetFrequency(5.0); // goes to the top
    Controller().At(391)->SetComment(Q("renamed"));
    Controller().ForceUpdateNow();
    QCoreApplication::processEvents();
    EXPECT_EQ(m_view->firstChild(), Row(390));
    EXPECT_EQ(m_view->TextAt(0, 2), Q("entry 391"));

    m_view->SetFilterText(Q("renamed or \"entry 20\""));
    EXPECT_EQ(m_view->ShownCount(), 12) << "20 and 200 to 209";
    EXPECT_EQ(m_view->TextAt(11, 2), Q("renamed"));
    m_view->SelectPlace(3);
    m_view->GoToRow(11, Qt::ShiftModifier);
    Trigger(Bar::Copy);
    EXPECT_EQ(Clipboard().GetFrequencyStoreEntry().size(), 9);
    Trigger(Bar::Delete);
    EXPECT_EQ(Entries().size(), Many - 9);
    EXPECT_EQ(m_view->ShownCount(), 3);
    EXPECT_EQ(m_view->CurrentPlace(), 2) << "the next row, or the last";
    m_view->SetFilterText(QString());
    EXPECT_EQ(m_view->RowCount(), Many - 9);
    for (const unsigned long index : {0ul, 195ul, 300ul})
        EXPECT_EQ(Row(index)->GetMediator(), Controller().At(index));
    EXPECT_LT(m_view->FillCount(), 120u) << "sorting and filtering fill no rows";
}

TEST_F(NoiViewTest, NewEntriesBecomeTheCurrentRowAndDeletedOnesGoAtOnce) {
    Fill();
    m_view->sortByColumn(0, Qt::AscendingOrder);
    Trigger(Bar::New);
    EXPECT_EQ(Entries().last(), Q("0|0|0"));
    EXPECT_EQ(m_view->currentItem(), Row(3));
    EXPECT_EQ(m_view->SelectedCount(), 1);
    EXPECT_TRUE(Bands().endsWith(Q(";0,0;")));
    m_view->setSelected(Row(1), true);
    Recorder watcher;
    m_definition->AddObserver(&watcher);
    Trigger(Bar::Delete);
    EXPECT_EQ(Entries(), (QStringList{"7055000|3000|b", "14000000|3000|a"}));
    EXPECT_EQ(Bands(), Q("7053500,7056500;13998500,14001500;"));
    EXPECT_EQ(watcher.codes, std::vector<int>{3}) << "one change, however many entries";
    EXPECT_EQ(m_view->RowCount(), 2);
    m_view->clearSelection();
    m_view->setCurrentItem(nullptr);
    m_view->slotDelete();
    EXPECT_EQ(Entries().size(), 2) << "the slot itself removes nothing";
    // A new entry is shown even if the filter would hide it.
    m_view->SetFilterText(Q("7055"));
    EXPECT_EQ(m_view->ShownCount(), 1);
    m_view->slotNew();
    EXPECT_EQ(Entries().size(), 3);
    EXPECT_EQ(m_view->ShownCount(), 2);
    EXPECT_EQ(m_view->SelectedCount(), 1);
}

TEST_F(NoiViewTest, ACopyHasTheCurrentEntryFirst) {
    m_view->slotCopy();
    EXPECT_TRUE(FreqStore::Instance().GetClipboardText().isEmpty());
    Fill();
    m_view->selectAll();
    m_view->slotCopy();
    EXPECT_EQ(Clipboard().GetFrequencyStoreEntry().size(), 3) << "a selection needs no current row";
    m_view->clearSelection();
    m_view->setCurrentItem(Row(2));
    m_view->setSelected(Row(0), true);
    Trigger(Bar::Copy);
    const FreqStoreXml::FrequencyStoreList copy = Clipboard();
    EXPECT_EQ(copy.GetUsage(), FreqStoreXml::FrequencyStoreList::Noi);
    QStringList comments;
    for (const auto& entry : copy.GetFrequencyStoreEntry())
        comments << entry.GetComment();
    EXPECT_EQ(comments, (QStringList{"a", "b"}));
    bool more = false;
    FreqStore& store = FreqStore::Instance();
    const FrequencyListCopyStruct* row = store.GetFrequencyListCopyStruct(more);
    ASSERT_NE(row, nullptr);
    EXPECT_TRUE(more);
    const std::pair<const char*, const char*> texts[] = {
        {"Frequency", "14000.000 kHz"}, {"Bandwidth", "3000.000000"}, {"Comment", "a"}};
    for (const auto& [column, expected] : texts) {
        QString text;
        EXPECT_TRUE(row->GetValue(store.GetCopyStructId(Q(column)), text)) << column;
        EXPECT_EQ(text, Q(expected));
    }
    store.GetFrequencyListCopyStruct(more);
    EXPECT_FALSE(more);
}

TEST_F(NoiViewTest, ARowThatIsNoLongerSelectedIsLeftAlone) {
    Fill();
    m_handler->InsertNewValue(21e6, 3000, Q("d"));
    Controller().ForceUpdateNow();
    m_view->resize(500, 300);
    m_view->show();
    const auto press = [&](Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(m_view.get(), key, modifiers);
    };
    for (const int row : {0, 1, 2, 2}) { // the last one off again
        const QPoint place = m_view->visualItemRect(m_view->topLevelItem(row)).center();
        QTest::mouseClick(m_view->viewport(), Qt::LeftButton, row == 0 ? Qt::NoModifier : Qt::ControlModifier,
                          place);
    }
    press(Qt::Key_C, Qt::ControlModifier);
    ASSERT_EQ(Clipboard().GetFrequencyStoreEntry().size(), 2);
    EXPECT_EQ(Clipboard().GetFrequencyStoreEntry()[0].GetComment(), Q("c"))
        << "the current one is the nearest";
    WhenOpen<CanCloseTabDialog>([](CanCloseTabDialog& dialog) {
        auto* comment = dialog.findChild<QLineEdit*>(Q("comment"));
        EXPECT_TRUE(comment && comment->text() == Q("c"));
        dialog.reject();
    });
    press(Qt::Key_Return);
    press(Qt::Key_Delete);
    EXPECT_EQ(Entries(), (QStringList{"14000000|3000|a", "21000000|3000|d"}));
    EXPECT_EQ(m_view->currentItem(), Row(0)) << "where the first of them was";
    press(Qt::Key_Down);
    EXPECT_EQ(m_view->currentItem(), Row(1));
    press(Qt::Key_Space, Qt::ControlModifier); // nothing is selected now
    FreqStore::Instance().SetClipboardText(Q("as before"));
    for (const Bar::Action action : {Bar::Delete, Bar::Edit, Bar::Copy})
        EXPECT_FALSE(m_bar.GetAction(action)->isEnabled());
    press(Qt::Key_Delete);
    press(Qt::Key_Return);
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(Entries().size(), 2);
    EXPECT_EQ(FreqStore::Instance().GetClipboardText(), Q("as before"));
    press(Qt::Key_Up);
    press(Qt::Key_Delete);
    EXPECT_EQ(Entries(), QStringList{"21000000|3000|d"}) << "keys went on from where they were";
}

TEST_F(NoiViewTest, APasteAddsEveryEntryAndWritesTheBandListOnce) {
    Fill();
    m_view->selectAll();
    m_view->slotCopy();
    Recorder watcher;
    m_definition->AddObserver(&watcher);
    m_view->sortByColumn(0, Qt::AscendingOrder);
    Trigger(Bar::Paste);
    EXPECT_EQ(watcher.codes, std::vector<int>{3});
    EXPECT_EQ(Bands(), Q("7053500,7056500;3498500,3501500;13998500,14001500;").repeated(2));
    EXPECT_EQ(Entries().mid(3), Entries().mid(0, 3));
    EXPECT_EQ(m_view->RowCount(), 6);

    const QString before = Bands();
    for (const char* text :
         {"7055000\tone\t3000",
          "<FrequencyStoreList Version=\"7\"><FrequencyStoreEntry/></FrequencyStoreList>"}) {
        FreqStore::Instance().SetClipboardText(Q(text));
        Traces traces;
        m_view->slotPaste();
        EXPECT_EQ(Bands(), before) << text;
        EXPECT_EQ(Entries().size(), 6) << text;
        ASSERT_FALSE(traces.texts.isEmpty()) << text;
        EXPECT_EQ(traces.texts[0], Q("EXCEPTION WHILE PASTING FREQUENCIES:"));
        EXPECT_EQ(traces.problems.size(), 1) << text;
    }
    FreqStore::Instance().SetClipboardText(Q("<FrequencyStoreList Usage=\"TargetList\"><FrequencyStoreEntry/>"
                                             "</FrequencyStoreList>"));
    m_view->slotPaste();
    EXPECT_EQ(Entries().last(), Q("0|0|0")) << "without a frequency it is a new entry";
}

TEST_F(NoiViewTest, TheEditorWritesTheEntryAndTheBandListFollows) {
    Fill();
    struct {
        const char* field;
        const char* text;
        bool accept;
        const char* entry;
    } const rows[] = {
        {"bandwidth", "5", true, "3500000|5000|c"},
        {"comment", "changed", true, "3500000|5000|changed"},
        {"comment", "not taken", false, "3500000|5000|changed"},
    };
    for (const auto& row : rows) {
        QString title;
        WhenOpen<CanCloseTabDialog>([&](CanCloseTabDialog& dialog) {
            auto* editor = dialog.findChild<HalvoViewEditor*>(Q("NOI Editor"));
            ASSERT_NE(editor, nullptr);
            auto* line = editor->findChild<VCLineEdit*>(Q(row.field));
            ASSERT_NE(line, nullptr);
            line->selectAll();
            QTest::keyClicks(line, Q(row.text));
            dialog.findChild<QDialogButtonBox*>()
                ->button(row.accept ? QDialogButtonBox::Ok : QDialogButtonBox::Cancel)
                ->click();
        });
        m_view->slotEdit(Row(1));
        EXPECT_EQ(Entries()[1], Q(row.entry)) << row.text;
    }
    EXPECT_EQ(Bands(), Q("7053500,7056500;3497500,3502500;13998500,14001500;"));
    EXPECT_EQ(Row(1)->CellText(2), Q("changed"));

    // Without a row a new entry is added and edited; one that is no entry's is left alone.
    m_list->DeleteChildren();
    Controller().ForceUpdateNow();
    WhenOpen<CanCloseTabDialog>([](CanCloseTabDialog& dialog) { dialog.reject(); });
    Trigger(Bar::Edit);
    m_view->slotEdit(nullptr);
    EXPECT_EQ(Entries(), QStringList{"0|0|0"});
    SortListViewItem plain(nullptr, {}, false);
    m_view->slotEdit(&plain);
}

TEST_F(NoiViewTest, EntryViewAndListMayEndWhileTheyAreEdited) {
    const std::function<void()> ends[] = {
        [this] { m_list->DeleteNode(m_list->Children()[0]); },
        [this] { m_handler->ParseNOIFile(Write(Q("other.noi"), "12\tx\t1\n")); },
        [this] { Tree::Instance()->GetNode(Q("/Lists"))->DeleteNode(m_list); },
        [] { NOIFrequencyHandler::DeleteInstance(); },
        [this] { m_view.reset(); },
    };
    for (const auto& end : ends) {
        Fill();
        WhenOpen<CanCloseTabDialog>([&](CanCloseTabDialog& dialog) {
            const QPointer<CanCloseTabDialog> alive(&dialog);
            end();
            if (alive)
                alive->reject();
        });
        m_view->slotEdit(Row(0));
        TearDown();
        SetUp();
    }
}

TEST_F(NoiViewTest, AListThatWaitsForAFileSaysSoAndTakesNothing) {
    Fill();
    m_view->selectAll();
    m_view->slotCopy();
    m_view->show();
    const auto takesEntries = [this] {
        return m_bar.GetAction(Bar::New)->isEnabled() && m_bar.GetAction(Bar::Paste)->isEnabled();
    };
    EXPECT_TRUE(takesEntries());
    AnswerDialog(Write(Q("bad.csv"), "Frequency\nabc\n"));
    m_view->slotImportFromFile();
    EXPECT_EQ(m_view->GetFileName(), Path(Q("bad.csv")));
    EXPECT_FALSE(takesEntries());
    EXPECT_TRUE(m_bar.GetAction(Bar::New)->toolTip().contains(Q("could not be read")) ||
                m_view->WhyOff(Bar::New).contains(Q("could not be read")));
    EXPECT_EQ(m_view->RowCount(), 0) << "no rows of what has gone";
    m_view->slotPaste();
    m_view->slotNew();
    m_view->slotEdit(nullptr);
    EXPECT_EQ(Entries().size(), 0) << "the next file would take them away";
    AnswerDialog(Write(Q("good.csv"), "Frequency\n7055000\n"));
    m_view->slotImportFromFile();
    EXPECT_TRUE(takesEntries());
    EXPECT_EQ(m_view->RowCount(), 1);
    m_view->slotPaste();
    EXPECT_EQ(Entries().size(), 4);
    for (const auto slot : {&SearchMCNOIListView::slotSaveToFile, &SearchMCNOIListView::slotExportToFile,
                            &SearchMCNOIListView::slotLoadFile}) {
        AnswerDialog(Path(Q("list.xml.csv")));
        (m_view.get()->*slot)();
        EXPECT_EQ(m_view->GetFileName(), Path(Q("list.xml.csv")));
    }
}

} // namespace
