#include "controls/frequencystore/memory/memorysystemfreqstorelistdefinition.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencynodemediator.h"
#include "host/freqlist/pixstatevector.h"
#include "tests/frequencystore/memory/memoryfixture.h"
#include "tests/support/dialogs.h"

namespace {

using MemoryHandlerTest = MemoryFixture;

TEST_F(MemoryHandlerTest, InitHappensOnceAndFindsOrMakesTheViewMap) {
    const QString mapPath = Q("/Lists/MemoryItemMap4View");
    EXPECT_FALSE(Handler().IsAlreadyInit());
    EXPECT_FALSE(Handler().IsVUHF());
    Start(MediatorType::MemoryVUHF);
    EXPECT_TRUE(Handler().IsAlreadyInit());
    EXPECT_TRUE(Handler().IsVUHF());
    auto* map = Tree::Instance()->Find<FrequencyItemMap>(mapPath);
    ASSERT_NE(map, nullptr);
    Handler().Init(nullptr);
    EXPECT_EQ(Handler().GetItemsRoot(), m_list);

    End();
    EXPECT_FALSE(Handler().IsAlreadyInit());
    Start();
    EXPECT_EQ(Tree::Instance()->Find<FrequencyItemMap>(mapPath), map);
    AddChannels({7055000, 14100000});
    ASSERT_EQ(map->GetItems().size(), 2u);
    const FrequencyMapItem& item = map->GetItems().begin()->second;
    EXPECT_EQ(item, FrequencyMapItem(7055000, 3000, 0, Q("7.055e+06"), 109, QString(), true));
    Handler().SetNewEntry(1, 1, QString(), QString());
    Recorder recorder;
    map->AddObserver(&recorder);
    Handler().UpdateJobFileEntries();
    EXPECT_EQ(recorder.codes, std::vector<int>{3}) << "one notification, however many channels";
    EXPECT_EQ(map->GetItems().size(), 3u);
}

TEST_F(MemoryHandlerTest, NewChannelsTakeSettingsOnlyWhereAsked) {
    Start();
    const QStringList keys = {Q("frequency"),    Q("bandwidthsel"), Q("comment"), Q("demodulation"),
                              Q("bfofrequency"), Q("outputifpath"), Q("shift"),   Q("threshold")};
    Handler().SetNewEntryHF(7e6, 2700, Q("a"), Q("DRM"), true, Q("455.0 kHz"), 800, 1500, 33);
    Handler().SetNewEntryHF(8e6, 500, Q("b"), Q("CW"), false, Q("455.0 kHz"), 800, 1500, 33);
    Handler().SetNewEntryHF(0.0, 500, Q("c"), Q("CW"), true, Q("455.0 kHz"), 800, 1500, 33);
    EXPECT_EQ(Channels(keys),
              (QStringList{Q("7000000|2700|a|DRM|800|455.0 kHz|1500|33"),
                           Q("8000000|500|b|CW|0|48.0 kHz|20000|0"), Q("0|0|0|NONE|0|48.0 kHz|20000|0")}));
    End();
    m_list->DeleteChildren();

    Start(MediatorType::MemoryVUHF);
    Handler().SetNewEntryVUHF(118e6, 8330, Q("a"), Q("AM"), true, 10, 3, -5, true, false, true);
    Handler().SetNewEntryVUHF(119e6, 8330, Q("b"), Q("AM"), false, 10, 3, -5, true, true, true);
    EXPECT_EQ(Channels({Q("frequency"), Q("attenuation"), Q("antennaid"), Q("threshold"), Q("afc"),
                        Q("usesquelch"), Q("useattenuation")}),
              (QStringList{Q("118000000|10|3|-5|true|false|true"), Q("119000000|0|0|0|false|false|false")}));
    Handler().SetNewEntry(120e6, 8330, Q("c"), Q("FM"));
    EXPECT_EQ(Handler().GetMediatorCtrl()->size(), 3u) << "views see it at once";
    EXPECT_TRUE(m_list->Children()[2]->GetPathName().startsWith(Q("/Lists/Memory/MemItem")));
}

TEST_F(MemoryHandlerTest, EachPathBindsItsSettingOfTheReceiver) {
    struct Row {
        void (MemorySystemHandler::*bind)(const QString&);
        const char* key;
        ValueBase* value;
        const char* content;
    };
    const auto number = [](auto* value, auto content) {
        value->SetMinMax(-1000000, 100000000, 1);
        value->SetValue(content);
        return value;
    };
    auto* demodulation = new ValueSelection;
    demodulation->AddItems({Q("AM"), Q("ISB")});
    demodulation->Select(Q("ISB"));
    auto* path = new ValueSelection;
    path->AddItem(Q("10.7 MHz"), 10700, 4);
    const auto flag = [] {
        auto* value = new Value<bool>;
        value->SetValue(true);
        return value;
    };
    using H = MemorySystemHandler;
    const Row rows[] = {
        {&H::SetFrequency_ValuePath, "frequency", number(new ValueNumeric<double>, 1234.5), "1234.5"},
        {&H::SetBandwidth_ValuePath, "bandwidthsel", number(new ValueNumeric<double>, 99.5), "99.5"},
        {&H::SetDemodulation_ValuePath, "demodulation", demodulation, "ISB"},
        {&H::SetThreshold_ValuePath, "threshold", number(new ValueNumeric<int>, 11), "11"},
        {&H::SetBFOFrequency_ValuePath, "bfofrequency", number(new ValueNumeric<int>, 12), "12"},
        {&H::SetOutputIF_ValuePath, "outputifpath", path, "10.7 MHz"},
        {&H::SetShift_ValuePath, "shift", number(new ValueNumeric<int>, 13), "13"},
        {&H::SetUseSquelch_ValuePath, "usesquelch", flag(), "true"},
        {&H::SetUseAttenuation_ValuePath, "useattenuation", flag(), "true"},
        {&H::SetAttenuation_ValuePath, "attenuation", number(new ValueNumeric<int>, 14), "14"},
        {&H::SetAntenna_ValuePath, "antennaid", number(new ValueNumeric<int>, 15), "15"},
        {&H::SetAFC_ValuePath, "afc", flag(), "true"},
    };
    Node* receiver = Tree::Instance()->MakeNode(Q("/Receiver"));
    for (const Row& row : rows) {
        for (const MediatorType type : {MediatorType::MemoryHF, MediatorType::MemoryVUHF}) {
            End();
            m_list->DeleteChildren();
            Start(type);
            if (type == MediatorType::MemoryHF) {
                EXPECT_TRUE(receiver->AddValue(Q(row.key), row.value));
            }
            (Handler().*row.bind)(Q("/Receiver/") + Q(row.key));
            Handler().SetNewEntry(0, 0, QString(), QString());
            const Node* channel = m_list->Children()[0];
            for (const Row& other : rows) {
                const ValueBase* value = channel->GetValue(Q(other.key));
                const bool bound = &other == &row && value;
                EXPECT_EQ(value && value->GetStringValue() == Q(other.content), bound)
                    << other.key << " by " << row.key;
            }
        }
    }
}

TEST_F(MemoryHandlerTest, AChangeOfTheListReachesTheJobOnce) {
    Start();
    m_job->SetValue(QString::fromUtf8(Job(SubJob(Channel(1, "first", "7055000")) + SubJob(""))));
    BindJob();
    ASSERT_EQ(Channels().size(), 1);
    const QString before = m_job->GetValue();
    EXPECT_EQ(m_data->GetValue(), QString()) << "reading the job writes nothing";
    Handler().UpdateJobFileEntries();
    EXPECT_EQ(m_job->GetValue(), before) << "nothing is pending";

    Recorder job, data, suppress;
    m_job->AddObserver(&job);
    m_data->AddObserver(&data);
    m_suppress->AddObserver(&suppress);
    size_t writes = 0;
    suppress.onUpdate = [&](Observable*, TChangeCode) {
        if (m_suppress->GetValue())
            writes = job.codes.size();
        else
            EXPECT_EQ(job.codes.size(), writes + 1) << "the job is written while no restart may happen";
    };
    Handler().SetNewEntryHF(8e6, 2700, Q("second"), Q("CW"), false, QString(), 0, 0, 0);
    Handler().UpdateJobFileEntries();
    EXPECT_EQ(job.codes, std::vector<int>{3});
    EXPECT_EQ(data.codes, std::vector<int>{3});
    EXPECT_EQ(suppress.codes, (std::vector<int>{3, 3}));
    EXPECT_FALSE(m_suppress->GetValue());
    EXPECT_TRUE(Handler().IsChangedSinceJobSave());
    EXPECT_EQ(
        ValuesOf(m_job->GetValue(), "MEMORYSCAN_SEQ_FREQUENCY"),
        (QStringList{Q("7055000.000000"), Q("8000000.000000"), Q("7055000.000000"), Q("8000000.000000")}))
        << "each sub-job has both";
    EXPECT_EQ(Outside(m_job->GetValue()), Outside(before));
    EXPECT_EQ(Handler().GetData4JobFile(), m_data->GetValue());
    EXPECT_EQ(Channels().size(), 2) << "the handler does not read its own writing";

    m_list->DeleteNodes(m_list->Children());
    Handler().SuspendMediatorCtrl(false, true);
    Handler().UpdateJobFileEntries();
    EXPECT_EQ(job.codes.size(), 2u) << "all channels go in one step";
    EXPECT_EQ(ValuesOf(m_job->GetValue(), "MEMORYSCAN_SEQ_FREQUENCY"), QStringList());
}

TEST_F(MemoryHandlerTest, PendingDataWaitsForTheJobDataValue) {
    Start();
    AddChannels({7e6});
    m_job->SetValue(QString::fromUtf8(Job(SubJob(""))));
    Handler().SetJobfile_ValuePath(Q("/JEN/Job/File"));
    EXPECT_EQ(ValuesOf(m_job->GetValue(), "MEMORYSCAN_SEQ_FREQUENCY"), QStringList());
    Handler().SetData4Jobfile_ValuePath(Q("/JEN/Job/Data"));
    EXPECT_EQ(ValuesOf(m_job->GetValue(), "MEMORYSCAN_SEQ_FREQUENCY"), QStringList{Q("7000000.000000")});
    m_data->SetValue(Q("x"), &Handler());
    Handler().SetData2VT();
    EXPECT_EQ(m_data->GetValue(), Q("x")) << "nothing is pending any more";
}

TEST_F(MemoryHandlerTest, AForeignSectionGoesIntoTheJobAndABadOneDoesNot) {
    Start();
    Recorder suppress;
    m_suppress->AddObserver(&suppress);
    Handler().SetData4Jobfile_ValuePath(Q("/JEN/Job/Data"));
    m_data->SetValue(Q("<MEMORYSCAN/>"));
    EXPECT_EQ(suppress.codes, (std::vector<int>{3, 3}))
        << "without a job the restart is suppressed and allowed again";
    EXPECT_FALSE(m_suppress->GetValue());
    EXPECT_FALSE(Handler().IsChangedSinceJobSave());

    m_job->SetValue(QString::fromUtf8(Job(SubJob(Channel(1, "a", "1")))));
    Handler().SetJobfile_ValuePath(Q("/JEN/Job/File"));
    m_data->SetValue(Q("<?xml version='1.0'?><!-- c --><MEMORYSCAN x='1'>\n <A/>\n</MEMORYSCAN>"));
    EXPECT_EQ(m_job->GetValue(),
              Q("<JOB>\n<SUBJOB><TDS><REC/><MEMORYSCAN x='1'>\n <A/>\n</MEMORYSCAN></TDS></SUBJOB></JOB>"));
    EXPECT_EQ(Handler().GetData4JobFile(), m_data->GetValue());
    EXPECT_TRUE(Handler().IsChangedSinceJobSave());
    const QString good = m_job->GetValue();
    const std::pair<const char*, const char*> bad[] = {
        {"<MEMORYSCAN>\n<A>", "job data:2: Premature end of document."},
        {"", "job data:1: Premature end of document."},
        {"<JOB/>", "job data:1: is no MEMORYSCAN"},
        {"<!DOCTYPE a [<!ENTITY b 'c'>]><MEMORYSCAN>&b;</MEMORYSCAN>",
         "job data:1: entity declarations are refused"}};
    for (const auto& [section, problem] : bad) {
        Traces traces;
        m_data->SetValue(Q(section));
        EXPECT_EQ(traces.problems, QStringList{Q(problem)}) << section;
        EXPECT_EQ(m_job->GetValue(), good) << section;
        EXPECT_FALSE(m_suppress->GetValue());
    }
}

TEST_F(MemoryHandlerTest, AJobWithoutAPlaceForASectionStaysAsItIs) {
    Start();
    BindJob();
    for (const char* job : {"<JOB/>", "<JOB><SUBJOB/></JOB>", "<JOB><SUBJOB><TDS/></SUBJOB></JOB>",
                            "<JOB><TDS><MEMORYSCAN/></TDS></JOB>",
                            "<JOB><SUBJOB><X><TDS><MEMORYSCAN/></TDS></X></SUBJOB></JOB>",
                            "<JOB><SUBJOB><MEMORYSCAN/><TDS/></SUBJOB></JOB>", "", "<JOB><SUBJOB>"}) {
        m_job->SetValue(Q(job));
        AddChannels({7e6});
        EXPECT_EQ(m_job->GetValue(), Q(job));
    }
}

TEST_F(MemoryHandlerTest, ANewJobReplacesTheChannels) {
    Start();
    BindJob();
    AddChannels({1e6, 2e6});
    m_job->SetValue(QString::fromUtf8(Job(SubJob(Channel(1, "a", "7055000") + Channel(4, "b", "8000000")))));
    EXPECT_EQ(Channels(), (QStringList{Q("7055000|2700|a|USB|20|"), Q("8000000|2700|b|USB|20|")}));
    EXPECT_EQ(Handler().GetMediatorCtrl()->size(), 2u);
    EXPECT_EQ(Channels({Q("outputifpath"), Q("shift"), Q("bfofrequency"), Q("rangecounter"), Q("range")})[1],
              Q("455.0 kHz|1500|-800|4|false"));
    EXPECT_FALSE(Handler().IsChangedSinceJobSave());
    EXPECT_EQ(ValuesOf(Handler().GetData4JobFile(), "MEMORYSCAN_SEQ_FREQUENCY").size(), 2);

    Handler().SetInScanSurveillance(true);
    m_job->SetValue(QString::fromUtf8(Job(SubJob(""))));
    EXPECT_EQ(Channels().size(), 2) << "not while a scan runs";
    Handler().SetInScanSurveillance(false);
    Traces traces;
    m_job->SetValue(Q("<JOB>\n<SUBJOB>"));
    EXPECT_EQ(traces.problems, QStringList{Q("/JEN/Job/File:2: Premature end of document.")});
    EXPECT_EQ(Channels().size(), 0);
    AddChannels({3e6});
    EXPECT_EQ(Handler().GetMediatorCtrl()->size(), 1u) << "the list is usable";
}

TEST_F(MemoryHandlerTest, AnEmptyJobIsOneThatChangesAndIsSaved) {
    Start();
    EXPECT_FALSE(Handler().UpdateFromJobFile(QString())) << "no value is bound";
    const QString path = Write(Q("job.pij"), "of before");
    Handler().SetJobfileName(path);
    Traces traces;
    BindJob();
    EXPECT_TRUE(Handler().UpdateFromJobFile(QString()));
    AddChannels({7e6});
    EXPECT_TRUE(Handler().IsChangedSinceJobSave());
    EXPECT_EQ(m_job->GetValue(), QString()) << "it has no place for a section";
    EXPECT_TRUE(Handler().Save2Job());
    EXPECT_EQ(Read(path), "\n");
    EXPECT_FALSE(Handler().IsChangedSinceJobSave());

    m_data->SetValue(Q("<MEMORYSCAN/>"));
    EXPECT_TRUE(Handler().IsChangedSinceJobSave());
    EXPECT_EQ(Handler().GetData4JobFile(), m_data->GetValue());
    m_job->HasChanged(TChangeCode::ValueChanged);
    EXPECT_EQ(Channels().size(), 0);
    EXPECT_FALSE(Handler().IsChangedSinceJobSave());
    EXPECT_EQ(traces.problems, QStringList());

    EXPECT_FALSE(Handler().SaveJobFile(path)) << "what is saved under a new name is a job";
    EXPECT_EQ(traces.problems, QStringList(path + Q(": not written: there is no job")));
}

TEST_F(MemoryHandlerTest, SavingIsAskedForThroughAValue) {
    Start();
    EXPECT_FALSE(Handler().Save2Job());
    const QString path = Path(Q("job.pij"));
    Handler().SetJobfileName(path);
    m_job->SetValue(QString::fromUtf8(Job(SubJob(""))));
    BindJob();
    Handler().SetNewEntry(7e6, 1, Q("é"), Q("AM"));
    Recorder others;
    m_save->AddObserver(&others);
    EXPECT_TRUE(Handler().Save2Job());
    EXPECT_EQ(others.codes, std::vector<int>{19});
    EXPECT_EQ(QString::fromUtf8(Read(path)), m_job->GetValue() + QLatin1Char('\n'));
    EXPECT_TRUE(m_job->GetValue().contains(Q("Name=\"é\"")));
    EXPECT_FALSE(Handler().IsChangedSinceJobSave());

    for (const TChangeCode code :
         {TChangeCode::ValueChanged, TChangeCode::Announcement, TChangeCode::LookAgain}) {
        QFile::remove(path);
        m_save->NotifyObservers(code);
        EXPECT_EQ(QFile::exists(path), code != TChangeCode::LookAgain);
    }
    QFile::remove(path);
    Handler().SetInScanSurveillance(true);
    Handler().SetNewEntry(8e6, 1, Q("new"), Q("AM"));
    Handler().SaveData2JobFile();
    EXPECT_TRUE(Handler().GetData4JobFile().contains(Q("new")));
    EXPECT_FALSE(QFile::exists(path));
    EXPECT_EQ(Handler().FileOpen(), QString()) << "without a dialog";
    Handler().SetInScanSurveillance(false);
    Handler().SetJobfileName(Path(Q("no/such/folder.pij")));
    Traces traces;
    Handler().SaveData2JobFile();
    EXPECT_TRUE(Handler().IsChangedSinceJobSave());
    ASSERT_EQ(traces.problems.size(), 1);
    EXPECT_TRUE(traces.problems[0].startsWith(Path(Q("no/such/folder.pij"))));
}

TEST_F(MemoryHandlerTest, AValueThatEndsIsLetGoOf) {
    Start();
    m_job->SetValue(QString::fromUtf8(Job(SubJob(""))));
    BindJob();
    m_job->NotifyObservers(TChangeCode::Removing);
    EXPECT_TRUE(Handler().UpdateFromJobFile(QString())) << "it does not confirm that it ends";
    Node* job = Tree::Instance()->GetNode(Q("/JEN/Job"));
    job->DeleteValue(Q("File"));
    EXPECT_FALSE(Handler().UpdateFromJobFile(QString()));
    AddChannels({7e6});
    EXPECT_TRUE(m_data->GetValue().contains(Q("7000000"))) << "the section is made without a job";
    job->DeleteChildren();
    AddChannels({8e6});
    EXPECT_FALSE(Handler().Save2Job());
    Tree::Instance()->GetNode(Q("/Lists"))->DeleteChildren();
    EXPECT_EQ(Handler().GetItemsRoot(), nullptr);
    Handler().SetNewEntry(1, 1, QString(), QString());
    EXPECT_TRUE(Handler().UpdateFromJobFile(QString::fromUtf8(Job(SubJob(Channel(1, "a", "1"))))));
    Handler().UpdateJobFileEntries();
    m_list = Tree::Instance()->MakeNode(Q("/Lists/Memory"));
}

TEST_F(MemoryHandlerTest, TheEndWithAnUnsavedJobIsToldAndSavesNothing) {
    for (const bool changed : {true, false}) {
        Start();
        Handler().SetJobfileName(Path(Q("job.pij")));
        m_job->SetValue(QString::fromUtf8(Job(SubJob(""))));
        BindJob();
        if (changed)
            AddChannels({7e6});
        int asked = 0;
        if (changed) {
            WhenOpen<QMessageBox>([&](QMessageBox& box) {
                ++asked;
                EXPECT_EQ(box.objectName(), Q("Memchannelschanged"));
                EXPECT_EQ(box.windowTitle(), Q("Memory Channels Changed"));
                EXPECT_EQ(box.icon(), QMessageBox::Information);
                EXPECT_EQ(box.text(),
                          Q("Memory Channels have been Saved in Frequency Store without saving.\n "
                            "Do you want to save your settings?"));
                EXPECT_EQ(box.standardButtons(), QMessageBox::Ok);
                box.accept();
            });
        }
        Traces traces;
        MemorySystemHandler::DeleteInstance();
        EXPECT_EQ(asked, changed ? 1 : 0);
        EXPECT_EQ(traces.texts, (QStringList{Q(" ARDeletes are ready"), Q(" Observers removed")}));
        EXPECT_FALSE(QFile::exists(Path(Q("job.pij"))));
        EXPECT_EQ(m_list->ChildCount(), changed ? 1u : 0u) << "the channels stay in the tree";
        EXPECT_FALSE(m_job->HasObservers());
        m_list->DeleteChildren();
    }
}

TEST_F(MemoryHandlerTest, WithoutInitNothingBreaks) {
    Traces traces;
    Handler().UpdateJobFileEntries();
    EXPECT_EQ(traces.texts, QStringList{Q("no mediator controller defined")});
    EXPECT_EQ(Handler().GetData4JobFile(), QString());
    Handler().SetNewEntry(1, 1, QString(), QString());
    Handler().ResetDataAfterNewFile();
    traces.texts.clear();
    const int id = Handler().AddToFreqStore();
    EXPECT_FALSE(traces.texts.isEmpty()) << "a failed assertion";
    EXPECT_EQ(FreqStore::Instance().GetFrequencies(static_cast<unsigned>(id)), nullptr);
    FreqStore::Instance().RemoveFrequencyListDefinition(id);
}

TEST_F(MemoryHandlerTest, AListOfAnotherTypeLeavesTheJobAlone) {
    Start(MediatorType::TargetList);
    m_job->SetValue(QString::fromUtf8(Job(SubJob(Channel(1, "a", "7000000")))));
    BindJob();
    const QString before = m_job->GetValue();
    Handler().FillInData(1, 1, QString(), QString(), 0, {}, {}, {}, {}, {});
    EXPECT_EQ(Channels().size(), 1) << "the channel of the job, and no other";
    Handler().ResetDataAfterNewFile();
    EXPECT_EQ(m_job->GetValue(), before);
}

TEST_F(MemoryHandlerTest, TheFileDialogReadsByTheNameChosen) {
    Start();
    const QByteArray lines = "7055000\tx\t1\tAM\n";
    const std::pair<const char*, size_t> rows[] = {
        {"a.sfl", 1}, {"a.SFL", 1}, {"a.txt", 1}, {"", 1}, {"b.sfl", 2}};
    for (const auto& [name, count] : rows) {
        const QString path = *name ? Write(Q(name), lines) : QString();
        WhenOpen<QFileDialog>([&](QFileDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle(), Q("Select file to read Memory Channels from"));
            EXPECT_EQ(dialog.nameFilters(), QStringList{Q("Memory Channels (*.xml *.sfl *.pij)")});
            Choose(dialog, path);
        });
        EXPECT_EQ(Handler().FileOpen(), path);
        EXPECT_EQ(m_list->ChildCount(), count) << name;
    }
}

TEST_F(MemoryHandlerTest, TheListIsRegisteredWithItsBarLineAndPath) {
    Start();
    AddChannels({7e6, 8e6});
    const int id = Handler().AddToFreqStore();
    IFrequencyListDefinition* list = FreqStore::Instance().GetDefinition(id);
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->GetName(), Q("Memory Channels"));
    EXPECT_EQ(list->GetPixmap().size(), QSize(16, 16));
    EXPECT_EQ(list->GetFrequencyNodeMediatorCtrl(), Handler().GetMediatorCtrl());
    EXPECT_EQ(list->GetValuePath(), Q("/Lists/Memory"));
    QWidget widget;
    EXPECT_TRUE(list->PassValuePath(&widget));
    EXPECT_EQ(widget.property("valuePath").toString(), Q("/Lists/Memory"));
    dynamic_cast<FrequencyListDefinition*>(list)->SetAvailable4WideView(false);
    EXPECT_FALSE(list->PassValuePath(&widget));
    const std::unique_ptr<PixStateVector> line(list->CreatePixStateVector());
    line->Refresh();
    EXPECT_EQ(dynamic_cast<PixStateVectorOnNode*>(line.get())->ItemCount(), 2u);
    EXPECT_EQ(line->ItemBandwidth(0), 3000);
    FreqStore::Instance().RemoveFrequencyListDefinition(id);
}

} // namespace
