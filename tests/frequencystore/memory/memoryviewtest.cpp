#include "controls/frequencystore/memory/memorymediatorhf.h"
#include "controls/frequencystore/memory/memorysystemhandler.h"
#include "controls/frequencystore/memory/memorysystemlistview.h"
#include "host/freqlist/buttonbar.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencynodemediatorctrl.h"
#include "host/freqstorexml/frequencystorelist.h"
#include "host/widgets/canclosetabdialog.h"
#include "tests/frequencystore/listrows.h"
#include "tests/support/dialogs.h"
#include "tests/support/recorder.h"
#include "tests/support/waiting.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTest>

namespace {

using Bar = FreqStoreListViewButtonBar;

constexpr char EmptyJob[] = "<JOB><SUBJOB><TDS><MEMORYSCAN/></TDS></SUBJOB></JOB>";
constexpr Bar::Action Offered[] = {Bar::New,    Bar::Edit, Bar::Copy,     Bar::Paste,
                                   Bar::Delete, Bar::Read, Bar::SaveToJob};

/// A receiver, its job, its memory channels, and a shown view of them with its bar.
class MemoryView : public testing::Test {
protected:
    void Start(MediatorType type) {
        Node* receiver = Tree::Instance()->MakeNode(Q("/Receiver"));
        m_frequency = GetOrCreateValue<ValueNumeric<double>>(Q("/Receiver/frequency"));
        m_frequency->SetMinMax(9e3, 3e9, 1);
        m_frequency->SetValue(7055000);
        ASSERT_NE(receiver, nullptr);
        Tree::Instance()->MakeNode(Q("/Job"));
        m_job = GetOrCreateValue<Value<QString>>(Q("/Job/file"));
        m_job->SetValue(Q(EmptyJob));
        m_jobData = GetOrCreateValue<Value<QString>>(Q("/Job/data"));
        m_list = Tree::Instance()->MakeNode(Q("/Lists/Memory"));
        Handler().SetListType(type);
        Handler().Init(m_list);
        Handler().SetFrequency_ValuePath(Q("/Receiver/frequency"));
        Handler().SetJobfile_ValuePath(Q("/Job/file"));
        Handler().SetData4Jobfile_ValuePath(Q("/Job/data"));
        m_listId = Handler().AddToFreqStore();
        m_view = new MemorySystemListView(&m_window, static_cast<unsigned>(m_listId));
        m_bar = std::make_unique<Bar>();
        m_view->InitFreqStoreWidget(m_bar.get());
        m_view->resize(900, 300);
        m_window.resize(900, 300);
        m_window.show();
    }
    void TearDown() override {
        delete m_view.data();
        m_bar.reset();
        QString seen;
        if (Handler().IsChangedSinceJobSave())
            AnswerQuestion(QMessageBox::Ok, seen);
        MemorySystemHandler::DeleteInstance();
        FreqStore::Instance().RemoveFrequencyListDefinition(m_listId);
        FreqStore::Instance().ClearFrequencyListCopyStruct();
        Tree::Instance()->GetRoot()->DeleteChildren();
    }
    static MemorySystemHandler& Handler() { return *MemorySystemHandler::Instance(); }
    void Add(double frequency, const char* comment = "c") {
        if (Handler().IsVUHF())
            Handler().SetNewEntryVUHF(frequency, 3000, Q(comment), Q("USB"), false, 0, 0, 0, false, false,
                                      false);
        else
            Handler().SetNewEntryHF(frequency, 3000, Q(comment), Q("USB"), false, QString(), 0, 0, 0);
        Handler().SuspendMediatorCtrl(false, true);
        m_view->GetButtonBar();
        FreqStore::Instance().GetFrequencies(static_cast<unsigned>(m_listId))->ForceUpdateNow();
    }
    /// Frequency, bandwidth, comment and demodulation of each channel.
    QStringList Channels() const {
        return RowsOf(m_list, {"frequency", "bandwidthsel", "comment", "demodulation"});
    }
    void SelectRows(std::initializer_list<int> rows) {
        m_view->clearSelection();
        for (const int row : rows)
            m_view->setCurrentItem(m_view->topLevelItem(row), 0, QItemSelectionModel::Select);
    }
    QString CurrentComment() const {
        const SortListViewItem* row = m_view->currentItem();
        return row ? row->CellText(2) : QString();
    }
    static void Enter(const QDialog& dialog, const char* key, const char* text) {
        auto* field = dialog.findChild<QLineEdit*>(Q(key));
        ASSERT_NE(field, nullptr) << key;
        field->selectAll();
        QTest::keyClicks(field, Q(text));
    }
    static void Press(const QDialog& dialog, QDialogButtonBox::StandardButton button) {
        dialog.findChild<QDialogButtonBox*>()->button(button)->click();
    }

    QWidget m_window;
    QPointer<MemorySystemListView> m_view;
    std::unique_ptr<Bar> m_bar;
    ValueNumeric<double>* m_frequency = nullptr;
    Value<QString>* m_job = nullptr;
    Value<QString>* m_jobData = nullptr;
    Node* m_list = nullptr;
    int m_listId = 0;
};

TEST_F(MemoryView, EachKindOfReceiverHasItsColumns) {
    const std::tuple<MediatorType, QStringList, std::vector<unsigned>> kinds[] = {
        {MediatorType::MemoryVUHF,
         {Q("Frequency"), Q("Bandwidth"), Q("Comment"), Q("Demodulation"), Q("Use Threshold"), Q("Threshold"),
          Q("Man. Attenuation"), Q("Attenuation"), Q("AFC")},
         {0, 1, 4, 2, 61, 60, 62, 63, 65}},
        {MediatorType::MemoryHF,
         {Q("Frequency"), Q("Bandwidth"), Q("Comment"), Q("Demodulation"), Q("Threshold"), Q("BFOFrequency"),
          Q("OutputIFPath"), Q("Shift")},
         {0, 1, 4, 2, 56, 57, 58, 59}}};
    for (const auto& [type, titles, ids] : kinds) {
        Start(type);
        EXPECT_EQ(m_view->GetColumnDescription(), ids);
        QStringList seen;
        for (int i = 0; i < m_view->columnCount(); ++i) {
            seen << m_view->headerItem()->text(i);
            EXPECT_TRUE(m_view->ColumnAlignment(i) & Qt::AlignRight) << i;
        }
        EXPECT_EQ(seen, titles);
        EXPECT_EQ(m_view->objectName(), Q("MemorySystemListView"));
        EXPECT_EQ(m_view->selectionMode(), QAbstractItemView::ExtendedSelection);

        // Each column in the order of its kind: numbers as numbers, units as what they mean, texts as texts.
        Add(145.5e6, "100");
        Add(7055000, "99");
        const auto channels = m_list->Children();
        channels[0]->GetValue(Q("threshold"))->SetStringValue(Q("9"));
        channels[1]->GetValue(Q("threshold"))->SetStringValue(Q("10"));
        for (const auto& [column, first] :
             {std::pair{0, "99"}, {2, "100"}, {titles.indexOf("Threshold"), "100"}}) {
            m_view->sortByColumn(static_cast<int>(column), Qt::AscendingOrder);
            EXPECT_EQ(m_view->firstChild()->CellText(2), Q(first)) << column;
        }
        TearDown();
    }
    Start(MediatorType::MemoryHF);
}

TEST_F(MemoryView, TheBarOffersWhatTheListHasAndTheMenuTheSame) {
    Start(MediatorType::MemoryHF);
    EXPECT_EQ(m_bar->GetCaption(), Q("Frequency Store - Memory channels"));
    for (int i = 0; i < Bar::ActionCount; ++i) {
        const auto action = static_cast<Bar::Action>(i);
        const bool offered = std::find(std::begin(Offered), std::end(Offered), action) != std::end(Offered);
        EXPECT_EQ(m_bar->GetAction(action)->isVisible(), offered) << i;
        EXPECT_EQ(m_view->HeaderMenu()->actions().contains(m_bar->GetAction(action)), offered) << i;
    }
    EXPECT_EQ(m_view->HeaderMenu()->objectName(), Q("ViewMenu"));
    m_view->InitFreqStoreWidget(m_bar.get());
    m_bar->GetAction(Bar::New)->trigger();
    EXPECT_EQ(m_list->ChildCount(), 1u) << "connected once, however often the bar is handed over";
    m_view->InitFreqStoreWidget(nullptr);
}

TEST_F(MemoryView, NewStoresWhatTheReceiverIsSetToAndShowsIt) {
    for (const MediatorType type : {MediatorType::MemoryHF, MediatorType::MemoryVUHF}) {
        Start(type);
        Add(5e6, "a");
        m_view->slotNew();
        m_frequency->SetValue(7060000);
        m_view->slotNew();
        const QStringList channels = Channels();
        ASSERT_EQ(channels.size(), 3);
        EXPECT_TRUE(channels[1].startsWith(Q("7055000|")));
        EXPECT_TRUE(channels[2].startsWith(Q("7060000|")));
        EXPECT_EQ(CurrentComment(), Q("7060000"));
        EXPECT_EQ(m_view->SelectedCount(), 1);
        EXPECT_EQ(m_jobData->GetValue().count(Q("<MEMORYSCAN_CHANNEL ")), 3);
        EXPECT_EQ(m_job->GetValue().count(Q("<MEMORYSCAN_CHANNEL ")), 3);
        m_view->SetFilterText(Q("no such text"));
        m_view->slotNew();
        EXPECT_EQ(m_list->ChildCount(), 4u);
        TearDown();
    }
    Start(MediatorType::MemoryHF);
}

TEST_F(MemoryView, DeleteTakesTheSelectedChannelsOutOfTheListAndTheJobInOneGo) {
    Start(MediatorType::MemoryHF);
    for (const char* name : {"a", "b", "c", "d", "e"})
        Add(7e6, name);
    Handler().UpdateJobFileEntries();
    Recorder recorder;
    m_jobData->AddObserver(&recorder);
    SelectRows({4, 0, 2});
    m_view->slotDelete();
    EXPECT_EQ(Channels(), (QStringList{Q("7000000|3000|b|USB"), Q("7000000|3000|d|USB")}));
    EXPECT_EQ(m_view->RowCount(), 2);
    EXPECT_EQ(CurrentComment(), Q("b")) << "where the first of them was";
    EXPECT_EQ(m_view->SelectedCount(), 1) << "keys and commands go on there";
    EXPECT_EQ(recorder.codes.size(), 1u);
    EXPECT_EQ(m_job->GetValue().count(Q("<MEMORYSCAN_CHANNEL ")), 2);
    m_view->clearSelection();
    m_view->setCurrentItem(nullptr);
    m_view->slotDelete(); // nothing
    EXPECT_EQ(m_list->ChildCount(), 2u);
    EXPECT_EQ(recorder.codes.size(), 1u);
}

TEST_F(MemoryView, ARowThatIsNoLongerSelectedIsLeftAlone) {
    Start(MediatorType::MemoryHF);
    for (const char* name : {"a", "b", "c", "d", "e"})
        Add(7e6, name);
    FreqStore::Instance().GetFrequencies(m_view->GetID())->ForceUpdateNow();
    m_view->resize(600, 400);
    const auto click = [&](int row, Qt::KeyboardModifiers modifiers) {
        const QPoint place = m_view->visualItemRect(m_view->topLevelItem(row)).center();
        QTest::mouseClick(m_view->viewport(), Qt::LeftButton, modifiers, place);
    };
    click(0, Qt::NoModifier);
    click(1, Qt::ControlModifier);
    click(3, Qt::ControlModifier);
    click(3, Qt::ControlModifier); // off again
    m_view->slotCopy();
    FreqStoreXml::FrequencyStoreList copied;
    ASSERT_TRUE(copied.SetXmlString(FreqStore::Instance().GetClipboardText()));
    ASSERT_EQ(copied.GetFrequencyStoreEntry().size(), 2);
    EXPECT_EQ(copied.GetFrequencyStoreEntry()[0].GetComment(), Q("a"));
    EXPECT_EQ(CurrentComment(), Q("b")) << "the nearest";
    WhenOpen<CanCloseTabDialog>([](CanCloseTabDialog& dialog) {
        Enter(dialog, "comment", "edited");
        Press(dialog, QDialogButtonBox::Ok);
    });
    m_view->slotEdit();
    EXPECT_EQ(Channels().filter(Q("edited")).size(), 2);
    EXPECT_TRUE(Channels()[3].contains(Q("|d|")));
    m_view->slotDelete();
    EXPECT_EQ(Channels().size(), 3);
    EXPECT_TRUE(Channels()[1].contains(Q("|d|")));
    EXPECT_EQ(CurrentComment(), Q("c"));
}

TEST_F(MemoryView, FlagsAndChoicesAreEditedInTheirCells) {
    Start(MediatorType::MemoryVUHF);
    Add(145.5e6, "a");
    m_window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&m_window, Patience));
    m_view->setCurrentItem(m_view->topLevelItem(0), 8);
    const QString before = m_job->GetValue();
    QTest::keyClick(m_view, Qt::Key_F2);
    auto* flag = qobject_cast<QComboBox*>(QApplication::focusWidget());
    ASSERT_NE(flag, nullptr);
    QTest::keyClick(flag, Qt::Key_Down);
    QTest::keyClick(flag, Qt::Key_Return);
    EXPECT_EQ(RowsOf(m_list, {"afc"}), QStringList{"true"});
    EXPECT_NE(m_job->GetValue(), before) << "the job follows";
    EXPECT_FALSE(m_view->IsEditing());
}

TEST_F(MemoryView, ARangeIsSeenInItsRowAndItsTextStays) {
    Start(MediatorType::MemoryHF);
    Add(7e6);
    const Node* channel = m_list->Children().front();
    const QImage before = m_view->grab().toImage();
    channel->FindOwn<Value<bool>>(Keys::Range)->SetValue(true);
    for (const double hertz : {7.01e6, 7.02e6})
        channel->FindOwn<ValueList<double>>(Keys::RangeFrequencies)->PushBack(hertz);
    FreqStore::Instance().GetFrequencies(m_view->GetID())->ForceUpdateNow();
    EXPECT_EQ(m_view->firstChild()->text(0), Q("7000.000 kHz"));
    EXPECT_EQ(m_view->firstChild()->CellAddition(0), Q("+2  "));
    EXPECT_EQ(m_view->firstChild()->CellAddition(1), QString());
    EXPECT_NE(m_view->grab().toImage(), before);
}

TEST_F(MemoryView, SavingToTheJobTellsInTheCaptionWhetherItCouldBeAskedFor) {
    Start(MediatorType::MemoryHF);
    m_view->slotSavetoJob();
    EXPECT_EQ(m_bar->GetCaption(), Q("Frequency Store - Memory Items - To Job not successful"));
    GetOrCreateValue<Value<bool>>(Q("/Job/save"));
    Handler().SetSave2Job_ValuePath(Q("/Job/save"));
    m_bar->GetAction(Bar::SaveToJob)->trigger();
    EXPECT_EQ(m_bar->GetCaption(), Q("Frequency Store - Memory Items - To Job successful"));
}

TEST_F(MemoryView, LoadingAddsTheChannelsOfAFile) {
    Start(MediatorType::MemoryHF);
    Add(7055000, "own");
    const QString path = Q(SAMPLES_DIR) + Q("/shortwave.sfl");
    AnswerDialog(path);
    m_view->slotLoadFile();
    EXPECT_EQ(m_bar->GetCaption(), Q("Frequency Store - Memory Items - ") + path);
    EXPECT_GT(m_list->ChildCount(), 200u);
    EXPECT_EQ(Channels().first(), Q("7055000|3000|own|USB"));
    EXPECT_EQ(m_view->RowCount(), static_cast<int>(m_list->ChildCount()));
    EXPECT_EQ(m_job->GetValue().count(Q("<MEMORYSCAN_CHANNEL ")), static_cast<int>(m_list->ChildCount()));
    AnswerDialog(QString());
    m_view->slotLoadFile();
    EXPECT_EQ(m_bar->GetCaption(), Q("Frequency Store - Memory Items - "));
}

TEST_F(MemoryView, ChannelsAreCopiedAndPastedAsXmlOrAsRows) {
    Start(MediatorType::MemoryVUHF);
    for (const char* name : {"a", "b", "c"})
        Add(145.5e6, name);
    SelectRows({0, 2});
    m_view->slotCopy();
    FreqStoreXml::FrequencyStoreList copied;
    ASSERT_TRUE(copied.SetXmlString(FreqStore::Instance().GetClipboardText()));
    EXPECT_EQ(copied.GetUsage(), FreqStoreXml::FrequencyStoreList::MemoryChannels);
    QStringList comments;
    for (const auto& entry : copied.GetFrequencyStoreEntry())
        comments << entry.GetComment();
    EXPECT_EQ(comments, (QStringList{Q("a"), Q("c")})) << "in the order shown";
    m_view->slotPaste();
    const QStringList both{Q("145500000|3000|a|USB"), Q("145500000|3000|c|USB")};
    EXPECT_EQ(Channels().mid(3), both);
    EXPECT_EQ(CurrentComment(), Q("a"));
    EXPECT_EQ(m_job->GetValue().count(Q("<MEMORYSCAN_CHANNEL ")), 5);

    FreqStore::Instance().SetClipboardText(Q("no list"));
    m_view->slotPaste();
    EXPECT_EQ(Channels().mid(5), both) << "rows of the copy buffer serve as well";
    FrequencyListCopyStruct wrong;
    wrong.SetValue(FreqStore::Instance().GetCopyStructId(Q("Frequency")), Q("seven"));
    FreqStore::Instance().AddFrequencyListCopyStruct(wrong);
    Traces traces;
    m_view->slotPaste();
    EXPECT_EQ(Channels().mid(7), both);
    EXPECT_EQ(traces.problems, QStringList{Q("Copied row: \"seven\" is not a frequency")});

    FreqStore::Instance().ClearFrequencyListCopyStruct();
    const QString job = m_job->GetValue();
    m_view->slotPaste();
    EXPECT_EQ(Channels().size(), 9);
    EXPECT_EQ(traces.texts.value(1), Q("EXCEPTION WHILE PASTING FREQUENCIES:"));
    EXPECT_EQ(m_job->GetValue(), job);
    m_view->setCurrentItem(nullptr);
    m_view->clearSelection();
    m_view->slotCopy();
    EXPECT_EQ(FreqStore::Instance().GetClipboardText(), Q("no list")) << "nothing selected, nothing copied";
}

TEST_F(MemoryView, EntriesOfAnyListArePastedWithWhatTheyCarry) {
    Start(MediatorType::MemoryHF);
    FreqStoreXml::FrequencyStoreList list;
    list.SetUsage(FreqStoreXml::FrequencyStoreList::TargetList);
    FreqStoreXml::FrequencyStoreEntry entry;
    entry.SetComment(Q("Ä \"x\" <y>"));
    auto& settings = entry.GetFFM_Settings();
    settings.GetFrequency().SetValue(7055000.5);
    settings.GetIFBandwidth().SetValue(2400);
    settings.SetAnalogDemod(FreqStoreXml::FFM_Settings::NameToAnalogDemod(Q("RTTY")));
    list.AppendFrequencyStoreEntry(entry);
    settings.SetLevel(33);
    settings.GetDetail().SetBFOFrequency(-800);
    list.AppendFrequencyStoreEntry(entry);
    FreqStore::Instance().SetClipboardText(list.GetXmlString());
    m_view->slotPaste();
    ASSERT_EQ(Channels(), QStringList(2, Q("7055000.5|2400|Ä \"x\" <y>|RTTY")));
    const auto text = [&](size_t channel, const char* key) {
        return m_list->Children()[channel]->GetValue(Q(key))->GetStringValue();
    };
    EXPECT_EQ(text(0, "threshold") + text(0, "bfofrequency"), Q("00"));
    EXPECT_EQ(text(1, "threshold") + text(1, "bfofrequency"), Q("33-800"));
}

TEST_F(MemoryView, ScanSurveillanceTurnsOffWhatTouchesFilesAndSaysWhy) {
    Start(MediatorType::MemoryHF);
    Add(7e6);
    SelectRows({0});
    const auto isEnabled = [&](Bar::Action action) { return m_bar->GetAction(action)->isEnabled(); };
    for (const Bar::Action action : Offered)
        EXPECT_TRUE(isEnabled(action)) << action;
    Handler().SetInScanSurveillance(true);
    EXPECT_TRUE(Until([&] { return !isEnabled(Bar::Read); }));
    const QString why = Q("The receiver is in scan surveillance: no file is opened or written.");
    for (const Bar::Action action : Offered) {
        const bool touchesFiles = action == Bar::Read || action == Bar::SaveToJob;
        EXPECT_EQ(isEnabled(action), !touchesFiles) << action;
        EXPECT_EQ(m_bar->GetAction(action)->toolTip().contains(why), touchesFiles) << action;
    }
    const auto isShown = [&] {
        for (const QLabel* label : m_bar->findChildren<QLabel*>()) {
            if (label->text() == why && !label->isHidden())
                return true;
        }
        return false;
    };
    EXPECT_TRUE(isShown());
    m_view->slotLoadFile(); // opens no dialog
    m_view->slotNew();
    EXPECT_EQ(m_list->ChildCount(), 2u);
    Handler().SetInScanSurveillance(false);
    EXPECT_TRUE(Until([&] { return isEnabled(Bar::Read) && isEnabled(Bar::SaveToJob); }));
    EXPECT_FALSE(isShown());
    EXPECT_EQ(m_bar->GetAction(Bar::Read)->toolTip(), Q("Add the channels of a file"));
}

TEST_F(MemoryView, AFrequencyIsFoundInRangesToo) {
    Start(MediatorType::MemoryHF);
    Add(7e6, "a");
    Add(5e6, "range");
    Add(9e6, "c");
    const Node* range = m_list->Children()[1];
    range->GetValue(Q("rangefrequencies"))->SetStringValue(Q("8000000;8500000"));
    m_view->SelectFrequency(8.1e6);
    EXPECT_EQ(CurrentComment(), Q("c")) << "its further frequencies do not count before it is a range";
    range->GetValue(Q("range"))->SetStringValue(Q("true"));
    for (const auto& [hertz, comment] :
         {std::pair{8.1e6, "range"}, {5e6, "range"}, {7.1e6, "a"}, {1e12, "c"}}) {
        m_view->SelectFrequency(hertz);
        EXPECT_EQ(CurrentComment(), Q(comment)) << hertz;
    }
}

TEST_F(MemoryView, TheEditorChangesTheSelectedChannelsAndTheJob) {
    Start(MediatorType::MemoryHF);
    for (const char* name : {"a", "b", "c"})
        Add(7e6, name);
    m_view->slotEdit(nullptr); // opens nothing
    SelectRows({1});
    WhenOpen<CanCloseTabDialog>([](CanCloseTabDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), Q("Memory Items Editor"));
        EXPECT_NE(dialog.findChild<QWidget*>(Q("Memory Items Editor")), nullptr);
        Enter(dialog, "comment", "changed");
        Press(dialog, QDialogButtonBox::Ok);
    });
    QTest::keyClick(m_view, Qt::Key_Return);
    EXPECT_EQ(Channels()[1], Q("7000000|3000|changed|USB"));
    EXPECT_TRUE(m_job->GetValue().contains(Q("Name=\"changed\"")));
    EXPECT_EQ(m_view->topLevelItem(1)->text(2), Q("changed"));

    const QString job = m_job->GetValue();
    WhenOpen<CanCloseTabDialog>([](CanCloseTabDialog& dialog) {
        Enter(dialog, "comment", "dropped");
        Press(dialog, QDialogButtonBox::Cancel);
    });
    m_view->slotEdit();
    EXPECT_EQ(m_job->GetValue(), job);

    SelectRows({0, 2});
    WhenOpen<CanCloseTabDialog>([](CanCloseTabDialog& dialog) {
        Enter(dialog, "threshold", "21");
        Press(dialog, QDialogButtonBox::Ok);
    });
    m_bar->GetAction(Bar::Edit)->trigger();
    QStringList thresholds;
    for (const Node* channel : m_list->Children())
        thresholds << channel->GetValue(Q("threshold"))->GetStringValue();
    EXPECT_EQ(thresholds, (QStringList{Q("21"), Q("0"), Q("21")}));
    EXPECT_EQ(m_job->GetValue().count(Q("MEMORYSCAN_SEQ_THRESHOLD Value=\"21\"")), 2);
}

TEST_F(MemoryView, WhatIsEditedMayEndWhileTheEditorIsOpen) {
    Start(MediatorType::MemoryHF);
    Add(7e6, "a");
    SelectRows({0});
    WhenOpen<CanCloseTabDialog>([&](CanCloseTabDialog& dialog) {
        m_job->SetValue(Q("<JOB/>")); // a new job without channels
        EXPECT_EQ(m_list->ChildCount(), 0u);
        Enter(dialog, "comment", "too late");
        Press(dialog, QDialogButtonBox::Ok);
        EXPECT_TRUE(dialog.isVisible()) << "what was entered is not dropped silently";
        Press(dialog, QDialogButtonBox::Cancel);
    });
    m_view->slotEdit();
    EXPECT_EQ(m_list->ChildCount(), 0u);

    Add(7e6, "b");
    SelectRows({0});
    WhenOpen<CanCloseTabDialog>([&](CanCloseTabDialog&) { delete m_view.data(); });
    Traces traces;
    m_view->slotEdit();
    EXPECT_TRUE(m_view.isNull());
    EXPECT_TRUE(traces.texts.contains(Q("Delete listview memory")));
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(MemoryView, TheViewOutlivesItsHandler) {
    Start(MediatorType::MemoryHF);
    Add(7e6, "a");
    SelectRows({0});
    MemorySystemHandler::DeleteInstance();
    EXPECT_EQ(m_view->RowCount(), 0);
    m_view->hide();
    m_view->show();
    m_view->slotCopy();
    m_view->slotPaste();
    m_view->slotEdit();
    m_view->SelectFrequency(7e6);
    EXPECT_TRUE(m_view->WhyOff(Bar::Read).isEmpty());
}

} // namespace
