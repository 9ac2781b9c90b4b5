#include "controls/frequencystore/targets/wkflistentry.h"
#include "controls/frequencystore/targets/wkflistview.h"
#include "controls/frequencystore/targets/wkfnodemediator.h"
#include "host/freqlist/freqstore.h"
#include "host/freqstorexml/frequencystorelist.h"
#include "host/valuetree/valueselection.h"
#include "tests/frequencystore/targets/targetfixture.h"
#include "tests/support/eventsmeanwhile.h"
#include "tests/support/fulldisk.h"
#include "tests/support/recorder.h"
#include "tests/support/waiting.h"

#include <QDir>
#include <QSignalSpy>
#include <QTest>

#include <numeric>
#include <random>
#include <sys/stat.h>

namespace {

class TargetListTest : public TargetFixture {
protected:
    WkfNodeMediator* Mediator(int index) {
        Controller().ForceUpdateNow();
        return dynamic_cast<WkfNodeMediator*>(Controller().GetItemwithIndex(index));
    }
    Node* Target(size_t index) { return m_list->Children()[index]; }
    void FillMixedList() {
        AddTarget(7055000, Q("calling"), 1);
        AddTarget(145500000.25, Q("Ärger \"x\", y; <z> & 'q' 😀"), 10);
        AddTarget(0.000001, Q("%1 %2 %n"), 11);
        AddTarget(4294967296.5, Q(" blanks "), 5);
    }
};

TEST_F(TargetListTest, EveryFormatGivesBackWhatWasSaved) {
    const char* const kinds[] = {"ltl", "sfl", "xml", "csv"};
    for (const char* first : kinds) {
        for (const char* second : kinds) {
            m_list->DeleteChildren();
            FillMixedList();
            QStringList expected = Targets();
            bool lossless = true; // lines carry no profile, and no priority under a name of the other kind
            for (const char* kind : {first, second}) {
                const QString path = Path(Q("list.") + Q(kind));
                const bool isSfl = qstrcmp(kind, "sfl") == 0;
                ASSERT_TRUE(m_parser->SaveFile(path)) << kind;
                ASSERT_TRUE(Parse(path)) << kind << m_refusal.toStdString();
                const QStringList read = Targets();
                ASSERT_EQ(read.size(), expected.size());
                for (qsizetype i = 0; i < read.size(); ++i) {
                    QStringList want = expected[i].split(QLatin1Char('|'));
                    const QStringList got = read[i].split(QLatin1Char('|'));
                    if (isSfl) {
                        // Comment and bandwidth change places; a comment that is no number is no bandwidth.
                        EXPECT_EQ(got[0], want[0]) << kind;
                        EXPECT_EQ(got[1].toDouble(), want[2].toDouble());
                        EXPECT_EQ(got[2].toDouble(), want[1].toDouble());
                        EXPECT_EQ(got[3], want[3]);
                        EXPECT_EQ(got[4], Q("1"));
                        continue;
                    }
                    const qsizetype fields = lossless && qstrlen(kind) == 3 && kind[0] != 'l' ? 10 : 6;
                    EXPECT_EQ(got.mid(0, fields), want.mid(0, fields)) << first << " then " << second;
                }
                lossless = lossless && kind[0] != 'l' && !isSfl;
                expected = read;
            }
        }
    }
}

TEST_F(TargetListTest, LinesAreWrittenByteForByte) {
    AddTarget(7055000, Q("a\tb\nc"), 1);
    AddTarget(0.5, QString(), 11);
    AddTarget(30000000, QString(), 9);
    m_list->Children()[1]->FindOwn<Value<QString>>(Names::Intern(Q("demodulation")))->SetValue(QString());
    m_list->Children()[1]->FindOwn<Value<QString>>(Names::Intern(Q("threadclass")))->SetValue(QString());
    m_list->Children()[2]->DeleteValue(Q("priority"));
    const QByteArray expected =
        Utf16(Q("7055000.000000\t3000.000000\ta b c\tUSB\tp\thostile\t1\t\n"
                "0.500000\t3000.000000\t0.001 kHz\tUnknown\tg\tNot defined\t11\t\n"
                "30000000.000000\t3000.000000\t30.000000 MHz\tUSB\th\thostile\t0\t\n"));
    for (const char* name : {"list.ltl", "list.sfl", "list.ltl.xml", "list.sfl.csv"}) {
        EXPECT_TRUE(m_parser->SaveFile(Path(Q(name))));
        EXPECT_EQ(Read(Q(name)), expected) << name;
    }
    m_list->DeleteChildren();
    EXPECT_TRUE(m_parser->SaveFile(Path(Q("empty.ltl"))));
    const QByteArray empty = Read(Q("empty.ltl"));
    EXPECT_TRUE(empty.isEmpty() || empty == Utf16(QString()));
    EXPECT_TRUE(Parse(Path(Q("empty.ltl"))));
    EXPECT_FALSE(m_parser->SaveFile(QString()));
}

TEST_F(TargetListTest, AFailedSaveLeavesTheOldFileAndIsTold) {
    for (int i = 0; i < 3000; ++i)
        AddTarget(i, Q("target %1").arg(i));
    Controller().ForceUpdateNow();
    for (const char* kind : {"ltl", "sfl", "xml", "csv"}) {
        const QString name = Q("list.") + Q(kind);
        const QString path = Write(name, "old");
        Traces traces;
        {
            const FullDisk disk(10000);
            EXPECT_FALSE(m_parser->SaveFile(path)) << kind;
        }
        EXPECT_EQ(Read(name), QByteArray("old")) << kind;
        ASSERT_EQ(traces.problems.size(), 1) << kind;
        EXPECT_TRUE(traces.problems[0].contains(path)) << traces.problems[0].toStdString();
        for (const QString& nowhere : {Q("/proc/list.") + Q(kind), Path(Q("no/such/folder.")) + Q(kind)})
            EXPECT_FALSE(m_parser->SaveFile(nowhere)) << nowhere.toStdString();
        EXPECT_EQ(traces.problems.size(), 3) << kind;
        EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden).filter(name), QStringList{name})
            << "nothing half-written is left behind";
        EXPECT_TRUE(m_parser->SaveFile(path)) << kind;
    }
}

TEST_F(TargetListTest, APipeIsNeverReplacedByAList) {
    AddTarget(7e6);
    for (const char* name : {"pipe.ltl", "pipe.sfl", "pipe.xml", "pipe.csv"}) {
        ASSERT_EQ(mkfifo(qPrintable(Path(Q(name))), 0600), 0);
        const Traces traces;
        EXPECT_FALSE(m_parser->SaveFile(Path(Q(name)))) << name;
        EXPECT_EQ(traces.problems, QStringList{Path(Q(name)) + Q(": this is no ordinary file")});
        EXPECT_FALSE(QFileInfo(Path(Q(name))).isFile()) << name;
    }
}

TEST_F(TargetListTest, SavesAndReportsHoldAllEntriesAlsoTheYoungest) {
    const std::function<QByteArray()> writers[] = {
        [&] { return Controller().GetFreqStoreReport().toUtf8(); },
        [&] {
            EXPECT_TRUE(Controller().SaveFrequencies(Path(Q("a.xml"))));
            return Read(Q("a.xml"));
        },
        [&] {
            const auto type = FreqStoreXml::FrequencyStoreListHelper::Targets;
            EXPECT_TRUE(Controller().ExportFrequencies(Path(Q("a.csv")), type));
            return Read(Q("a.csv"));
        }};
    int count = 0;
    for (const bool suspended : {false, true}) {
        Controller().Suspend(suspended);
        const unsigned long known = Controller().size();
        for (const auto& write : writers) {
            ++count;
            AddTarget(count, Q("entry %1.").arg(count));
            const QByteArray text = write();
            for (int i = 1; i <= count; ++i)
                EXPECT_EQ(text.count("entry " + QByteArray::number(i) + '.'), 1) << i << suspended;
        }
        EXPECT_EQ(Controller().size(), suspended ? known : 3u) << "a suspended list follows nothing";
    }
    Controller().Suspend(false);
    EXPECT_EQ(Controller().size(), 6u);
}

TEST_F(TargetListTest, TheWalkGoesThroughTheListAndStartsAnew) {
    double frequency = 1, bandwidth = 1;
    int priority = 1;
    QString comment = Q("x"), threat = Q("x"), demodulation = Q("x");
    const auto next = [&] {
        return m_parser->GetNextData(frequency, bandwidth, priority, comment, threat, demodulation);
    };
    EXPECT_FALSE(next());
    EXPECT_EQ(frequency, 0);
    EXPECT_EQ(bandwidth, 0);
    EXPECT_EQ(priority, 0);
    EXPECT_TRUE(comment.isEmpty() && threat.isEmpty() && demodulation.isEmpty());
    AddTarget(5, Q("a"), 2);
    AddTarget(6, Q("b"), 3);
    Controller().ForceUpdateNow();
    for (int round = 0; round < 2; ++round) {
        EXPECT_TRUE(next());
        EXPECT_EQ(frequency, 5);
        EXPECT_EQ(bandwidth, 3000);
        EXPECT_EQ(priority, 2);
        EXPECT_EQ(comment, Q("a"));
        EXPECT_EQ(threat, Q("hostile"));
        EXPECT_EQ(demodulation, Q("USB"));
        EXPECT_TRUE(next());
        EXPECT_FALSE(next());
        EXPECT_EQ(frequency, 0);
        m_parser->ResetDataCollect();
    }
    EXPECT_TRUE(next());
    EXPECT_TRUE(Parse(Write(Q("one.ltl"), "9\t1\n")));
    EXPECT_TRUE(next());
    EXPECT_EQ(frequency, 9) << "reading a file starts the walk anew";
}

TEST_F(TargetListTest, TheControllerKeepsTheOrderOfTheNodes) {
    Traces traces;
    EXPECT_EQ(Controller().GetItemwithIndex(0), nullptr);
    EXPECT_EQ(traces.texts, QStringList{Q("List of Mediators is Empty")});
    for (int i = 0; i < 5; ++i)
        AddTarget(i);
    Controller().ForceUpdateNow();
    EXPECT_EQ(Controller().size(), 5u);
    m_list->DeleteNodes({Target(1), Target(3)});
    EXPECT_EQ(Controller().size(), 3u) << "a mediator does not outlive its node";
    AddTarget(9);
    Controller().ForceUpdateNow();
    std::vector<double> frequencies;
    for (int i = 0; i < 4; ++i) {
        double frequency = 0;
        FrequencyNodeMediator* mediator = Controller().GetItemwithIndex(i);
        ASSERT_NE(dynamic_cast<WkfNodeMediator*>(mediator), nullptr);
        mediator->GetFrequency(frequency, 0);
        frequencies.push_back(frequency);
        EXPECT_EQ(Controller().Find(mediator->GetNode()), mediator);
    }
    EXPECT_EQ(frequencies, (std::vector<double>{0, 2, 4, 9}));
    EXPECT_EQ(traces.texts.size(), 1);
    for (const int index : {-1, 4, 1000000})
        EXPECT_EQ(Controller().GetItemwithIndex(index), nullptr);
    EXPECT_EQ(traces.texts.size(), 4);
    EXPECT_EQ(traces.texts.last(), Q("iIndex >= size() of MediatorList"));
}

TEST_F(TargetListTest, RowsOfManyNewEntriesAreMadeWhileTheWindowPaints) {
    constexpr int Many = 6000;
    for (int i = 0; i < Many; ++i)
        AddTarget(i);
    int turns = 0;
    {
        const EventsMeanwhile display([&] { ++turns; });
        EXPECT_TRUE(Until([&] { return Controller().size() == Many; }));
    }
    EXPECT_GE(turns, Many);
}

TEST_F(TargetListTest, ManyChangesAreOneRefreshAndASuspendedControllerMakesNone) {
    QSignalSpy refreshed(&Controller(), &FrequencyNodeMediatorCtrl::Refreshed);
    for (int i = 0; i < 100; ++i)
        AddTarget(i);
    EXPECT_EQ(refreshed.size(), 0);
    EXPECT_TRUE(Until([&] { return Controller().size() == 100; }));
    EXPECT_EQ(refreshed.size(), 1);

    Controller().Suspend(true);
    Controller().Suspend(true);
    AddTarget(100);
    Controller().ForceUpdateNow();
    Controller().OnTimer();
    EXPECT_EQ(Controller().size(), 100u);
    Controller().Suspend(false);
    EXPECT_EQ(Controller().size(), 101u) << "resumed is up to date, and a flag counts nothing";
    EXPECT_EQ(refreshed.size(), 2);
    Controller().Suspend(false);
    EXPECT_EQ(refreshed.size(), 2);

    refreshed.clear();
    Target(0)->FindOwn<ValueNumeric<double>>(Names::Intern(Q("frequency")))->SetValue(17);
    EXPECT_TRUE(Controller().IsDirty());
    EXPECT_TRUE(refreshed.wait(Patience));
    EXPECT_FALSE(Controller().IsDirty());
}

TEST_F(TargetListTest, TypeLettersFollowThePriority) {
    AddTarget(1);
    WkfNodeMediator* mediator = Mediator(0);
    ASSERT_NE(mediator, nullptr);
    const auto* type = Target(0)->FindOwn<Value<char>>(Names::Intern(Q("type")));
    const std::pair<int, char> rows[] = {{1, 'p'},  {2, 'o'}, {3, 'n'},  {4, 'm'},   {5, 'l'},
                                         {6, 'k'},  {7, 'j'}, {8, 'i'},  {9, 'h'},   {10, 'g'},
                                         {11, 'g'}, {0, 'g'}, {-1, 'g'}, {1000, 'g'}};
    char letter = 0;
    for (const auto& [priority, expected] : rows) {
        mediator->SetPriority(priority);
        EXPECT_TRUE(mediator->GetType(letter, 0));
        EXPECT_EQ(letter, expected) << priority;
        EXPECT_EQ(type->GetValue(), expected) << priority;
        EXPECT_EQ(mediator->GetTypeString(0), QString(QLatin1Char(expected)));
    }
    Target(0)->DeleteValue(Q("priority"));
    mediator->GetType(letter, 0);
    EXPECT_EQ(letter, 'h');
    EXPECT_EQ(type->GetValue(), 'h');
    int priority = 5;
    EXPECT_FALSE(mediator->GetPriority(priority, 0));
    EXPECT_EQ(priority, 5);
    mediator->SetPriority(2);
    // A priority that comes back is found at the target's next change.
    GetOrCreateValue<ValueNumeric<int>>(Target(0)->GetPathName() + Q("/priority"))->SetValue(3);
    mediator->SetComment(Q("changed"));
    mediator->GetType(letter, 0);
    EXPECT_EQ(letter, 'n');
}

TEST_F(TargetListTest, CellsShowTheValuesOfTheirColumns) {
    m_parser->FillInData(7055000.4, 2700.5, Q("c"), Q("USB"), 4, Q("threat"), Q("id"), Q("name"), Q("class"),
                         Q("sys"));
    AddTarget(145500000);
    WkfNodeMediator* mediator = Mediator(0);
    const std::pair<unsigned, const char*> rows[] = {
        {0, "7055.000 kHz"}, {1, "2.700 kHz"}, {2, "USB"},    {3, "m"},   {4, "c"},
        {52, "4"},           {53, "threat"},   {54, "class"}, {55, "sys"}};
    for (const auto& [column, expected] : rows) {
        QString text;
        EXPECT_TRUE(mediator->CellText(column, text)) << column;
        if (column == 1)
            EXPECT_TRUE(text == Q("2.700 kHz") || text == Q("2.701 kHz")) << text.toStdString();
        else
            EXPECT_EQ(text, Q(expected)) << column;
    }
    EXPECT_EQ(Mediator(1)->GetFrequencyString(0), Q("145.500000 MHz"));
    QString text = Q("untouched");
    EXPECT_FALSE(mediator->CellText(50, text));
    Target(0)->DeleteChildren();
    for (const unsigned column : {52u, 53u, 54u, 55u})
        EXPECT_FALSE(mediator->CellText(column, text)) << column;
    EXPECT_EQ(text, Q("untouched"));
    EXPECT_TRUE(mediator->GetFrequencyString(0).isEmpty());
}

TEST_F(TargetListTest, ALineAndItsTargetAreInverse) {
    FillMixedList();
    AddTarget(1, Q("tab\tand\nnewline\r\nhere"), 3);
    AddTarget(99);
    for (int i = 0; i < 5; ++i) {
        WkfNodeMediator* source = Mediator(i);
        WkfNodeMediator* target = Mediator(5);
        QString line = source->ToString();
        EXPECT_EQ(line.count(QLatin1Char('\t')), 7) << line.toStdString();
        EXPECT_FALSE(line.contains(QLatin1Char('\n')) || line.contains(QLatin1Char('\r')));
        EXPECT_TRUE(target->FromString(line));
        EXPECT_EQ(target->ToString(), line);
        const QStringList fields = line.split(QLatin1Char('\t'));
        target->SetPriority(11);
        for (int field = 0; field < 7; ++field) {
            QString text = fields[field];
            EXPECT_TRUE(target->SetValueFromString(field, text)) << field;
        }
        EXPECT_EQ(target->ToString(), line);
    }
    WkfNodeMediator* target = Mediator(5);
    const QString before = target->ToString();
    QString bad = Q("x");
    for (const int field : {-1, 0, 1, 6, 7, 100})
        EXPECT_FALSE(target->SetValueFromString(field, bad)) << field;
    QString line = Q("abc");
    EXPECT_FALSE(target->FromString(line));
    EXPECT_EQ(target->ToString(), before);
}

TEST_F(TargetListTest, XmlEntriesSayWhatTheTargetIs) {
    AddTarget(7055000, Q("c"), 4);
    AddTarget(30e6, QString(), 12);
    WkfNodeMediator* bare = Mediator(1);
    bare->SetDemodulation(QString());
    bare->SetThreadClass(QString());
    FreqStoreXml::FrequencyStoreList list;
    Mediator(0)->AddToXml(list);
    bare->AddToXml(list);
    auto& entries = list.GetFrequencyStoreEntry();
    ASSERT_EQ(entries.size(), 2);
    EXPECT_EQ(entries[0].GetComment(), Q("c"));
    EXPECT_EQ(entries[0].GetType(), Q("m"));
    EXPECT_EQ(entries[0].GetFFM_Settings().GetFrequency().GetValue(), 7055000);
    EXPECT_EQ(entries[0].GetFFM_Settings().GetIFBandwidth().GetValue(), 3000);
    EXPECT_EQ(FreqStoreXml::FFM_Settings::AnalogDemodToName(entries[0].GetFFM_Settings().GetAnalogDemod()),
              Q("USB"));
    EXPECT_EQ(entries[0].GetProfile_Data().GetPriority(), Q("4"));
    EXPECT_EQ(entries[0].GetProfile_Data().GetThreatClass(), Q("hostile"));
    EXPECT_EQ(entries[0].GetProfile_Data().GetProfileID(), Q("id"));
    EXPECT_EQ(entries[0].GetProfile_Data().GetProfileName(), Q("name"));
    EXPECT_EQ(entries[0].GetProfile_Data().GetSignalClass(), Q("class"));
    EXPECT_EQ(entries[0].GetProfile_Data().GetTransmissionSystem(), Q("system"));
    EXPECT_EQ(entries[1].GetComment(), Q("30.000000 MHz"));
    EXPECT_EQ(entries[1].GetType(), Q("g"));
    EXPECT_EQ(entries[1].GetProfile_Data().GetThreatClass(), Q("undefined"));
    EXPECT_FALSE(list.GetXmlString().section(Q("<FrequencyStoreEntry"), 2).contains(Q("AnalogDemod")));
    EXPECT_EQ(FreqStoreXml::FrequencyStoreList::NameToUsage(bare->GetUsage()),
              FreqStoreXml::FrequencyStoreList::TargetList);
    EXPECT_TRUE(m_parser->SaveFile(Path(Q("list.xml"))));
    EXPECT_TRUE(Read(Q("list.xml")).contains("Usage=\"TargetList\""));
}

TEST_F(TargetListTest, ControllersOfAllTypesMakeTheirMediatorsFromNodesOnly) {
    AddTarget(1);
    HalvoNodeMediatorCtrl plain(MediatorType::NoiFrequencies, 4);
    plain.Init(m_list->GetPathName());
    ASSERT_EQ(plain.size(), 1u);
    EXPECT_EQ(dynamic_cast<WkfNodeMediator*>(plain.GetItemwithIndex(0)), nullptr);
    EXPECT_EQ(plain.GetFreqStoreType(), 4);
    HalvoNodeMediatorCtrl unknown(static_cast<MediatorType>(4711), 4);
    unknown.Init(m_list->GetPathName());
    EXPECT_EQ(unknown.size(), 0u);
    HalvoNodeMediatorCtrl nowhere(MediatorType::TargetList, 2);
    nowhere.Init(Q("/No/Such/List"));
    EXPECT_EQ(nowhere.size(), 0u);
    EXPECT_EQ(nowhere.GetNode(), nullptr);
    nowhere.ForceUpdateNow();
}

/// Deletes parts of a shown list in every order, with a view open on it.
TEST_F(TargetListTest, PartsOfAShownListMayEndInAnyOrder) {
    enum Part { EndNode, EndValue, EndMediator, EndList, EndController, EndView, EndRegistration, Parts };
    std::vector<int> order(Parts);
    for (int seed = 0; seed < 60; ++seed) {
        std::iota(order.begin(), order.end(), 0);
        std::mt19937 random(static_cast<unsigned>(seed));
        std::shuffle(order.begin(), order.end(), random);
        TearDown();
        SetUp();
        FillMixedList();
        const int listId = m_parser->AddToFreqStore();
        auto view = std::make_unique<WkfListView>(nullptr, static_cast<unsigned>(listId));
        view->show();
        view->sortByColumn(0, Qt::AscendingOrder);
        Controller().ForceUpdateNow();
        ASSERT_EQ(view->RowCount(), 4);
        QCoreApplication::processEvents();
        bool listLives = true;
        for (const int part : order) {
            const auto targets = listLives ? m_list->Children() : std::vector<Node*>();
            switch (part) {
            case EndNode:
                if (!targets.empty())
                    m_list->DeleteNode(targets.front());
                break;
            case EndValue:
                if (!targets.empty())
                    targets.back()->DeleteChildren();
                break;
            case EndMediator:
                if (m_parser && Controller().size() > 1)
                    delete Controller().At(1);
                break;
            case EndList:
                Tree::Instance()->GetNode(Q("/Lists"))->DeleteNode(m_list);
                listLives = false;
                if (m_parser) {
                    EXPECT_EQ(Controller().size(), 0u);
                    EXPECT_FALSE(m_parser->AddValue());
                    EXPECT_TRUE(Parse(Write(Q("x.ltl"), "7\t8\n")));
                }
                break;
            case EndController:
                m_parser.reset();
                break;
            case EndView:
                view.reset();
                break;
            default:
                FreqStore::Instance().RemoveFrequencyListDefinition(listId);
                break;
            }
            if (m_parser)
                Controller().ForceUpdateNow();
            if (view) {
                view->sort();
                QCoreApplication::processEvents();
                if (m_parser)
                    EXPECT_EQ(view->RowCount(), static_cast<int>(Controller().size()));
                else
                    EXPECT_EQ(view->RowCount(), 0);
            }
        }
    }
}

TEST_F(TargetListTest, ForeignCodesOnAnEntryOnlyMakeTheRowLookAgain) {
    AddTarget(1);
    WkfNodeMediator* mediator = Mediator(0);
    auto* priority = Target(0)->FindOwn<ValueNumeric<int>>(Names::Intern(Q("priority")));
    // Told to go, but not in its removing state: the mediator holds on to the value.
    mediator->Update(priority, TChangeCode::Removing);
    int content = 0;
    EXPECT_TRUE(mediator->GetPriority(content, 0));
    mediator->Update(Target(0), static_cast<TChangeCode>(4711));
    EXPECT_TRUE(Controller().IsDirty());
    Controller().ForceUpdateNow();
    // Code 18 from the node ends the mediator, whoever sends it.
    Target(0)->NotifyObservers(TChangeCode::MediatorNodeEnds, nullptr);
    EXPECT_EQ(Controller().size(), 0u);
    EXPECT_EQ(m_list->ChildCount(), 1u);
}

TEST_F(TargetListTest, TargetsReadAtOnceAreThoseMadeValueByValue) {
    const auto add = [&] {
        m_parser->FillInData(7055000.5, 2700, Q("a comment"), Q("USB"), 11, Q("low"), Q("id"), QString(),
                             Q("class"), Q("system"));
    };
    add();
    Recorder meddler; // which makes a value of each target that comes, before the reader does
    meddler.onUpdate = [&](Observable*, TChangeCode code) {
        if (code == TChangeCode::ChildrenChanged) {
            EXPECT_TRUE(m_list->LastChild()->AddValue(Keys::KeyFrequency, new ValueNumeric<double>));
        }
    };
    m_list->AddObserver(&meddler);
    add();
    m_list->DeleteObserver(&meddler);
    Controller().ForceUpdateNow();
    EXPECT_NE(Target(0)->ShapeId(), 0);
    EXPECT_EQ(Target(1)->ShapeId(), 0);
    EXPECT_EQ(Target(0)->GetAsStdString(), Target(1)->GetAsStdString());
    EXPECT_EQ(Mediator(0)->ToString(), Mediator(1)->ToString());
    for (const Names::Id key :
         {Names::Id(Keys::KeyFrequency), Names::Id(Keys::KeyBandwidth), Names::Id(Keys::Priority)}) {
        const auto* atOnce = numeric_cast(Target(0)->FindOwnValue(key));
        const auto* oneByOne = numeric_cast(Target(1)->FindOwnValue(key));
        EXPECT_EQ(atOnce->MinAsDouble(), oneByOne->MinAsDouble());
        EXPECT_EQ(atOnce->MaxAsDouble(), oneByOne->MaxAsDouble());
        EXPECT_EQ(atOnce->StepAsDouble(), oneByOne->StepAsDouble());
    }
}

} // namespace
