#include "controls/frequencystore/results/resultlistviewfactory.h"
#include "controls/frequencystore/results/searchmcdatalistview.h"
#include "controls/frequencystore/targets/targetlisthandler.h"
#include "controls/frequencystore/targets/targetlistviewfactory.h"
#include "host/freqlist/buttonbar.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/pixstatevector.h"
#include "tests/frequencystore/results/resultfixture.h"
#include "tests/frequencystore/targets/targetfixture.h"
#include "tests/support/dialogs.h"
#include "tests/support/fulldisk.h"

#include <QDir>
#include <QLabel>
#include <QTest>

namespace {

using Bar = FreqStoreListViewButtonBar;

/// 2017-03-31 14:05:09 in summer time, two hours ahead of UTC.
constexpr qint64 Moment = 1490961909000000;
constexpr char Stem[] = "SearchMCDATA_2017_03_31__14_05_09";

class SearchMCDataHandlerTest : public ResultFixture {
protected:
    void SetUp() override {
        ResultFixture::SetUp();
        m_id = SearchMCDataHandler::Instance()->AddToFreqStore();
        m_view.reset(CreateSearchMCDataListView(nullptr, static_cast<unsigned>(m_id)));
        m_view->InitFreqStoreWidget(&m_bar);
    }
    void TearDown() override {
        m_view.reset();
        FreqStore::Instance().RemoveFrequencyListDefinition(m_id);
        ResultFixture::TearDown();
    }
    SearchMCDataListView& View() { return static_cast<SearchMCDataListView&>(*m_view); }
    SearchMCDataHandler& Handler() { return *SearchMCDataHandler::Instance(); }
    void SetDataDirectory(const QString& path) {
        CfgCenter::GetAdminCfg(ICfg::Administration).SetString(Q("VeltaDataDir"), path);
    }

    FixedClock m_clock{Moment};
    int m_id = 0;
    Bar m_bar;
    std::unique_ptr<FrequencyStoreListView> m_view;
};

TEST_F(SearchMCDataHandlerTest, TheListIsRegisteredWithIconLineAndView) {
    IFrequencyListDefinition* definition = FreqStore::Instance().GetDefinition(m_id);
    EXPECT_EQ(definition->GetName(), Q("Data Results"));
    const QImage icon = definition->GetPixmap().toImage();
    EXPECT_EQ(icon.size(), QSize(16, 16));
    EXPECT_EQ(icon.pixelColor(9, 1), QColor(Qt::yellow));
    EXPECT_EQ(icon.pixelColor(0, 0).alpha(), 0);
    EXPECT_EQ(definition->GetFrequencyNodeMediatorCtrl(), &Controller());
    EXPECT_EQ(Controller().GetFreqStoreType(), 4);
    EXPECT_EQ(Controller().GetVisibleCnt(), 1);

    AddResult(7055000, 3000, "LOCKED");
    const std::unique_ptr<PixStateVector> line(definition->CreatePixStateVector());
    EXPECT_EQ(line->GetSymbol(), 4);
    line->Refresh();
    EXPECT_EQ(line->ItemFrequency(0), 7055000);
    EXPECT_EQ(line->ItemBandwidth(0), 3000);
    EXPECT_EQ(line->ItemText(0), Q("LOCKED"));

    SearchMCDataHandler::DeleteInstance();
    Traces traces;
    const int id = Handler().AddToFreqStore();
    EXPECT_EQ(traces.places, QStringList{Q("listviewshandler:89")});
    EXPECT_EQ(FreqStore::Instance().GetFrequencies(static_cast<unsigned>(id)), nullptr);
    const std::unique_ptr<PixStateVector> unbound(
        FreqStore::Instance().GetDefinition(id)->CreatePixStateVector());
    EXPECT_FALSE(unbound->HasObservable());
    FreqStore::Instance().RemoveFrequencyListDefinition(id);
}

TEST_F(SearchMCDataHandlerTest, ProposedNamesCarryTheLocalTime) {
    struct {
        const char* directory;
        const char* name;
    } const rows[] = {
        {"D:\\VeltaData", "D:\\VeltaData\\"}, {"/var/data", "/var/data/"}, {"", "D:\\VeltaData\\"}};
    SearchMCDataHandler::DeleteInstance(); // before Init nothing is written
    for (const auto& row : rows) {
        QFile::remove(Path(Q("Administration.ini")));
        if (*row.directory)
            SetDataDirectory(Q(row.directory));
        EXPECT_EQ(Handler().SaveToFile(true), Q(row.name) + Q(Stem) + Q(".xml"));
        EXPECT_EQ(Handler().ExportToFile(true), Q(row.name) + Q(Stem) + Q(".csv"));
    }
    EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::Files).filter(Q("SearchMC")), QStringList());
    SetDataDirectory(m_folder.path());
    Handler().Init(m_list);
    AddResult(7055000, 3000, "LOCKED", Moment, 37);
    EXPECT_EQ(Handler().SaveToFile(true), Path(Q(Stem) + Q(".xml")));
    EXPECT_EQ(Handler().ExportToFile(true), Path(Q(Stem) + Q(".csv")));
    EXPECT_TRUE(Read(Q(Stem) + Q(".xml")).contains("<ResultTime>2017-03-31T12:05:09Z</ResultTime>"));
    EXPECT_EQ(Read(Q(Stem) + Q(".csv")),
              "7055000.000000\t\t3000.000000\t\tp\tLOCKED\t1490961909000000\t37\t\n");
}

TEST_F(SearchMCDataHandlerTest, AFailedWriteAsksUntilOneSucceedsOrTheOperatorGivesUp) {
    for (int i = 0; i < 500; ++i)
        AddResult(i);
    const QString blocked = Write(Q("old.xml"), "old");
    const QString good = Path(Q("good.xml"));
    QString asked;
    struct {
        QString (SearchMCDataHandler::*run)(bool);
        const char* kind;
    } const rows[] = {{&SearchMCDataHandler::SaveToFile, "xml"}, {&SearchMCDataHandler::ExportToFile, "csv"}};
    for (const auto& row : rows) {
        // Cancelled, a folder that takes no files, a folder as a file, a device: each is asked about.
        for (const QString& bad : {QString(), Q("/sys/x.") + Q(row.kind), m_folder.path(), Q("/dev/full")}) {
            Traces traces(0);
            AnswerDialog(bad);
            AnswerQuestion(QMessageBox::No, asked);
            EXPECT_TRUE((Handler().*row.run)(false).isEmpty());
            EXPECT_EQ(asked.toStdString(),
                      Q("File Error|Memory Items List: Could not open %1 for writing, do you want to "
                        "save to a different file?")
                          .arg(bad)
                          .toStdString());
            EXPECT_EQ(traces.problems.size(), 1) << "and the reason is told";
        }
        {
            const FullDisk disk(1000);
            AnswerDialog(blocked);
            AnswerQuestion(QMessageBox::No, asked);
            EXPECT_TRUE((Handler().*row.run)(false).isEmpty());
        }
        EXPECT_EQ(Read(Q("old.xml")), QByteArray("old"));
        AnswerDialog(Q("/sys/x"));
        AnswerQuestion(QMessageBox::Yes, asked, [&] { AnswerDialog(good); });
        EXPECT_EQ((Handler().*row.run)(false), good);
        EXPECT_TRUE(asked.contains(Q("/sys/x")));
        EXPECT_GT(Read(Q("good.xml")).size(), 500 * 30);
        QFile::remove(good);
    }
    // Silent: no dialog, but the question; Yes proposes a name with the time of then.
    SetDataDirectory(Q("/no/such/folder"));
    AnswerQuestion(QMessageBox::Yes, asked, [&] {
        SetDataDirectory(m_folder.path());
        m_clock.now += 1000000;
    });
    EXPECT_TRUE(Handler().SaveToFile(true).endsWith(Q("__14_05_10.xml")));
    EXPECT_TRUE(QFile::exists(Path(Q("SearchMCDATA_2017_03_31__14_05_10.xml"))));
}

TEST_F(SearchMCDataHandlerTest, TheHandlerAndTheViewMayEndWhileADialogIsOpen) {
    AddResult(1);
    QTimer::singleShot(0, &m_bar, [&] {
        m_view.reset();
        SearchMCDataHandler::DeleteInstance();
        AnswerDialog(Path(Q("late.xml")));
    });
    View().slotSaveToFile();
    EXPECT_FALSE(QFile::exists(Path(Q("late.xml"))));
}

TEST_F(SearchMCDataHandlerTest, TheViewShowsFiveColumnsAndSortsEachByItsKind) {
    const char* const titles[] = {"Lock State", "Frequency", "Bandwidth", "Signal Time", "Confidence"};
    EXPECT_EQ(View().objectName(), Q("SearchMCDataListView"));
    EXPECT_EQ(View().GetColumnDescription(), (std::vector<unsigned>{49, 0, 1, 50, 51}));
    ASSERT_EQ(View().columnCount(), 5);
    for (int column = 0; column < 5; ++column) {
        EXPECT_EQ(View().headerItem()->text(column), Q(titles[column]));
        EXPECT_EQ(View().ColumnAlignment(column) & Qt::AlignHorizontal_Mask, Qt::AlignRight);
    }
    AddResult(145e6, 12000, "LOCKED", 3000000, 9);
    AddResult(7e6, 3000, "UNLOCKED", 1000000, 100);
    AddResult(2e9, 500, "LOCKED", 2000000, 37);
    Controller().ForceUpdateNow();
    const char* const order[] = {"021", "102", "210", "120", "021"};
    for (int column = 0; column < 5; ++column) {
        View().sortByColumn(column, Qt::AscendingOrder);
        std::string got;
        for (int row = 0; row < 3; ++row) {
            const auto* item = static_cast<FrequencyNodeMediatorViewItem*>(View().topLevelItem(row));
            got += static_cast<char>('0' + item->GetMediator()->OrderIndex);
        }
        EXPECT_EQ(got, order[column]) << titles[column];
    }
}

TEST_F(SearchMCDataHandlerTest, TheBarShowsWhatTheConfigurationAllows) {
    const auto shown = [&] {
        QString names;
        for (const auto& [action, name] : {std::pair{Bar::Copy, "copy "},
                                           {Bar::Paste, "paste "},
                                           {Bar::Save, "save "},
                                           {Bar::Export, "export "}})
            names += m_bar.GetAction(action)->isVisible() ? Q(name) : QString();
        return names;
    };
    EXPECT_EQ(shown(), Q("copy paste save "));
    EXPECT_FALSE(m_bar.GetAction(Bar::ToDataBase)->isVisible());
    EXPECT_EQ(m_bar.GetCaption(), Q("Frequency Store - Search MC Data Results "));
    const std::unique_ptr<ICfg> cfg(CfgCenter::CreateCfg(Q("FrequencyStore"), ICfg::PlugIn, QString()));
    cfg->SetBool(Q("AllowExportToCsv"), true);
    View().InitFreqStoreWidget(&m_bar);
    EXPECT_EQ(shown(), Q("copy paste save export "));

    AddResult(1);
    // Connected once although initialised twice: one dialog per action.
    AnswerDialog(Path(Q("saved.xml")));
    m_bar.GetAction(Bar::Save)->trigger();
    EXPECT_EQ(m_bar.GetCaption(),
              Q("Frequency Store - Search MC Data Results, File: ") + Path(Q("saved.xml")));
    AnswerDialog(Path(Q("exported.csv")));
    m_bar.GetAction(Bar::Export)->trigger();
    EXPECT_TRUE(m_bar.GetCaption().endsWith(Q("saved.xml")));
    EXPECT_TRUE(QFile::exists(Path(Q("exported.csv"))));
    QString asked;
    AnswerDialog(QString());
    AnswerQuestion(QMessageBox::No, asked);
    m_bar.GetAction(Bar::Save)->trigger();
    EXPECT_EQ(m_bar.GetCaption(), Q("Frequency Store - Search MC Data Results, File: "));
    View().InitFreqStoreWidget(nullptr);
}

TEST_F(SearchMCDataHandlerTest, PausedRowsStandStillAndTheBarCountsWhatWaits) {
    AddResult(7e6);
    AddResult(8e6);
    Controller().ForceUpdateNow();
    View().grab();
    const auto counts = [&] {
        QString text;
        for (const QLabel* label : m_bar.findChildren<QLabel*>())
            text += label->text();
        return text;
    };
    m_bar.UpdateModeSelection()->Select(Q("Paused"));
    auto third = AddResult(9e6);
    AddResult(10e6);
    Mediator(0).SetLockResult(Q("LOCKED"));
    Controller().ForceUpdateNow();
    const auto lockState = [&] { return View().firstChild()->CellText(0); };
    EXPECT_EQ(View().RowCount(), 2);
    EXPECT_EQ(lockState(), Q("UNLOCKED"));
    EXPECT_EQ(Controller().size(), 4u) << "results are taken all the same";
    EXPECT_TRUE(counts().contains(Q("2 waiting"))) << counts().toStdString();
    m_list->DeleteNode(Entry(2));
    m_list->DeleteNode(Entry(1));
    Controller().ForceUpdateNow();
    EXPECT_EQ(View().RowCount(), 1) << "what is gone is not shown";
    EXPECT_TRUE(counts().contains(Q("1 waiting"))) << counts().toStdString();
    m_bar.UpdateModeSelection()->Select(Q("Immediately"));
    EXPECT_EQ(View().RowCount(), 2);
    EXPECT_EQ(lockState(), Q("LOCKED"));
    EXPECT_FALSE(counts().contains(Q("waiting")));
    AddResult(11e6);
    Controller().ForceUpdateNow();
    EXPECT_EQ(View().RowCount(), 3);
}

TEST_F(SearchMCDataHandlerTest, AResultSaysWhatItIsInAnyList) {
    AddResult(7e6);
    HalvoNodeMediatorCtrl other(MediatorType::TargetList, 0);
    SearchMCDataMediator mediator(&other, Entry(0), 0);
    EXPECT_EQ(mediator.GetUsage(), Q("SearchResults"));
}

/// The results and a target list, both with a view.
class PasteTest : public SearchMCDataHandlerTest {
protected:
    void SetUp() override {
        SearchMCDataHandlerTest::SetUp();
        m_targets = Tree::Instance()->MakeNode(Q("/Lists/Targets"));
        TargetListHandler::Instance()->Init(m_targets, false);
        m_targetId = TargetListHandler::Instance()->AddToFreqStore();
        m_targetView.reset(CreateWkfListView(nullptr, static_cast<unsigned>(m_targetId)));
        m_targetView->InitFreqStoreWidget(&m_targetBar);
    }
    void TearDown() override {
        m_targetView.reset();
        FreqStore::Instance().RemoveFrequencyListDefinition(m_targetId);
        TargetListHandler::DeleteInstance();
        SearchMCDataHandlerTest::TearDown();
    }
    void AddTarget(double frequency, const char* comment) {
        TargetListHandler::Instance()->GetParser()->FillInData(
            frequency, 2700, Q(comment), Q("USB"), 4, Q("hostile"), Q("id"), Q("name"), Q("class"), Q("sys"));
    }
    QStringList Targets() const { return TargetFixture::TargetsOf(m_targets); }
    /// Copies all rows of one view and pastes them into another.
    void CopyAll(FrequencyStoreListView& from, Bar& fromBar, Bar& toBar) {
        for (unsigned id : {static_cast<unsigned>(m_id), static_cast<unsigned>(m_targetId)})
            FreqStore::Instance().GetFrequencies(id)->ForceUpdateNow();
        SortListView* list = from.GetListView();
        list->setCurrentItem(list->topLevelItem(0));
        list->selectAll();
        fromBar.GetAction(Bar::Copy)->trigger();
        toBar.GetAction(Bar::Paste)->trigger();
    }

    Node* m_targets = nullptr;
    int m_targetId = 0;
    Bar m_targetBar;
    std::unique_ptr<FrequencyStoreListView> m_targetView;
};

TEST_F(PasteTest, EachListKeepsWhatItHasOfWhatIsPasted) {
    AddResult(7055000.5, 3000, "LOCKED", 1490968800123456, 37).SetComment(Q("calling"));
    AddResult(1, 2).SetComment(Q("%1 <&>"));
    CopyAll(*m_view, m_bar, m_bar);
    EXPECT_EQ(Results().join(QLatin1Char('\n')),
              Q("7055000.5|3000|calling|LOCKED|1490968800123456|37|112\n1|2|%1 <&>|UNLOCKED|0|0|99\n"
                "7055000.5|3000|calling|LOCKED|1490968800000000|37|112\n1|2|%1 <&>|UNLOCKED|0|0|99"))
        << "a copy has its lock time to the second";
    CopyAll(*m_view, m_bar, m_targetBar);
    EXPECT_EQ(Targets().mid(0, 2).join(QLatin1Char('\n')),
              Q("7055000.5|3000|calling||0||undefined|undefined|undefined|undefined\n"
                "1|2|%1 <&>||0||undefined|undefined|undefined|undefined"));
}

TEST_F(PasteTest, ForeignTextAddsNothingAndIsTold) {
    AddResult(1);
    AddTarget(2, "t");
    const std::pair<QString, const char*> rows[] = {
        {QString(), "clipboard:1: "},
        {Q("7055000\t3000\n"), "clipboard:1: "},
        {Q("<html>\n<b></html>"), "clipboard:1: "},
        {Q("<FrequencyStoreList>\n<FrequencyStoreEntry>\n</Frequency"), "clipboard:3: "},
        {Q("<FrequencyStoreList Version=\"2\"/>"), "clipboard:1: "},
        {Q("<FrequencyStoreList>\n<FrequencyStoreEntry/>\n<FrequencyStoreEntry><FFM_Settings>\n"
           "<Frequency>abc</Frequency></FFM_Settings></FrequencyStoreEntry></FrequencyStoreList>"),
         "clipboard:4: "},
        {Q("<!DOCTYPE a [<!ENTITY x \"y\">]><FrequencyStoreList/>"), "clipboard:1: "},
    };
    for (const auto& [text, problem] : rows) {
        FreqStore::Instance().SetClipboardText(text);
        for (Bar* bar : {&m_bar, &m_targetBar}) {
            Traces traces;
            bar->GetAction(Bar::Paste)->trigger();
            EXPECT_EQ(traces.texts.value(0), Q("EXCEPTION WHILE PASTING FREQUENCIES:")) << text.toStdString();
            ASSERT_EQ(traces.problems.size(), 1) << text.toStdString();
            EXPECT_TRUE(traces.problems[0].startsWith(Q(problem))) << traces.problems[0].toStdString();
        }
        EXPECT_EQ(m_list->ChildCount(), 1u);
        EXPECT_EQ(m_targets->ChildCount(), 1u);
    }
    // A list that says it is in another encoding is text all the same.
    FreqStore::Instance().SetClipboardText(
        Q("<?xml version=\"1.0\" encoding=\"UTF-16\"?><FrequencyStoreList><FrequencyStoreEntry/>"
          "</FrequencyStoreList>"));
    m_bar.GetAction(Bar::Paste)->trigger();
    EXPECT_EQ(m_list->ChildCount(), 2u);
}

} // namespace
