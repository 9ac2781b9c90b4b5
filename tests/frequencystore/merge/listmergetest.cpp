#include "controls/frequencystore/merge/listmerge.h"

#include "controls/frequencystore/merge/fileentries.h"
#include "controls/frequencystore/noi/noifrequencyhandler.h"
#include "controls/frequencystore/targets/targetlisthandler.h"
#include "controls/frequencystore/targets/targetlistparser.h"
#include "host/base/problems.h"
#include "tests/frequencystore/memory/memoryfixture.h"

namespace {

using Choice = ListMerge::Choice;
using Entries = QVector<FreqStoreXml::FrequencyStoreEntry>;

class ListMergeTest : public MemoryFixture {
protected:
    void TearDown() override {
        NOIFrequencyHandler::DeleteInstance();
        TargetListHandler::DeleteInstance();
        MemoryFixture::TearDown();
    }
    HalvoNodeMediatorCtrl& Targets(const char* lines) {
        TargetListHandler::Instance()->Init(m_list, false);
        EXPECT_TRUE(TargetListHandler::Instance()->ReadFile(Write("mine.ltl", lines)));
        return *TargetListHandler::Instance()->GetParser()->GetMediatorCtrl();
    }
    HalvoNodeMediatorCtrl& Bands(const char* lines) {
        NOIFrequencyHandler& handler = *NOIFrequencyHandler::Instance();
        handler.SetRemembersFile(false);
        handler.Init(m_list);
        handler.SetNOIDefinition_ValuePath(Q("/JEN/Job/Data"));
        EXPECT_TRUE(handler.ReadFile(Write("mine.noi", lines)));
        return *handler.GetMediatorCtrl();
    }
    Entries Read(const char* name, const QByteArray& bytes, MediatorType list = MediatorType::TargetList) {
        return ReadFileEntries(Write(Q(name), bytes), list).value_or(Entries());
    }
    /// The states of all rows, each by its first letter.
    static std::string States(const ListMerge& merge) {
        std::string states;
        for (const ListMerge::Row& row : merge.Rows())
            states += "NDER"[static_cast<int>(row.state)];
        return states;
    }
    static void ChooseForAll(ListMerge& merge, Choice choice) {
        for (size_t row = 0; row < merge.Rows().size(); ++row)
            merge.Choose(row, choice);
    }
};

constexpr char Three[] = "1000\t9000\tone\tAM\tg\tred\t3\n2000\t9000\ttwo\tAM\tg\tred\t3\n"
                         "3000\t9000\tthree\tAM\tg\tred\t3\n";

TEST_F(ListMergeTest, EachChoiceDoesWhatItSays) {
    const char* const theirs =
        "1000\tuno\t8000\tAM\n2000\ttwo\t9000\tAM\n4000\tfour\t9000\tAM\n0\tnone\t1\tAM\n";
    const QStringList three = {"1000|9000|one|3", "2000|9000|two|3", "3000|9000|three|3"};
    const QStringList taken = {"1000|8000|uno|3", "2000|9000|two|3", "3000|9000|three|3"};
    const QStringList joined = {"1000|9000|one; uno|3", "2000|9000|two|3", "3000|9000|three|3"};
    const QString four = "4000|9000|four|1";
    const struct {
        Choice choice; ///< for all rows that have it
        std::vector<qsizetype> plan;
        QStringList rows;
    } rows[] = {
        {Choice::Mine, {0, 0, 3}, three},
        {Choice::Theirs, {1, 1, 1}, taken + QStringList{four}},
        {Choice::Join, {1, 1, 1}, joined + QStringList{four}},
        {Choice::Both, {3, 0, 0}, three + QStringList{"1000|8000|uno|1", "2000|9000|two|1", four}},
    };
    for (const auto& row : rows) {
        HalvoNodeMediatorCtrl& list = Targets(Three);
        ListMerge merge(list, Read("theirs.sfl", theirs));
        merge.Match(0);
        EXPECT_EQ(States(merge), "DENR");
        ChooseForAll(merge, row.choice);
        const ListMerge::Plan plan = merge.GetPlan();
        EXPECT_EQ((std::vector{plan.added, plan.changed, plan.left}), row.plan) << int(row.choice);
        EXPECT_EQ(plan.refused, 1);
        EXPECT_TRUE(merge.Apply());
        EXPECT_EQ(RowsOf(m_list, {"frequency", "bandwidth", "comment", "priority"}), row.rows)
            << int(row.choice);
    }
}

TEST_F(ListMergeTest, ARowSaysWhereAndInWhatItDiffers) {
    ListMerge merge(Targets(Three),
                    Read("theirs.ltl", "1000\t8000\tuno\tAM\tg\tblue\t2\n1200\t9000\ttwo\tAM\tg\tred\t3\n"));
    merge.Match(0);
    EXPECT_EQ(States(merge), "DN");
    EXPECT_EQ(merge.Rows()[0].mine, 0u);
    using Part = ListMerge::Part;
    EXPECT_EQ(merge.CellOf(0, ListMerge::Part::Comment).mine, Q("one"));
    EXPECT_EQ(merge.CellOf(0, ListMerge::Part::Comment).theirs, Q("uno"));
    EXPECT_TRUE(merge.CellOf(0, ListMerge::Part::Comment).differs);
    EXPECT_EQ(merge.CellOf(0, Part::Bandwidth).theirs, Q("8.000 kHz"));
    EXPECT_FALSE(merge.CellOf(0, Part::Demodulation).differs);
    EXPECT_EQ(merge.OtherDifferences(0), Q("Priority: 3 → 2, Threat class: red → blue"));
    EXPECT_TRUE(merge.Choose(0, Choice::Join));
    EXPECT_FALSE(merge.Choose(1, Choice::Join));

    merge.Match(900); // the second one is nearer to the first of mine than to the second
    EXPECT_EQ(States(merge), "DD");
    EXPECT_EQ(merge.Rows()[0].choice, Choice::Join) << "nothing else was found of it";
    EXPECT_EQ(merge.Rows()[1].mine, 1u);
    EXPECT_TRUE(merge.CellOf(1, Part::Frequency).differs);
}

TEST_F(ListMergeTest, AListThatChangedMeanwhileStaysAsItIs) {
    ListMerge merge(Targets(Three), Read("theirs.ltl", "1000\t8000\tuno\tAM\tg\tblue\t2\n"));
    merge.Match(0);
    merge.Choose(0, Choice::Theirs);
    m_list->DeleteNode(m_list->Children().front());
    EXPECT_EQ(merge.CellOf(0, ListMerge::Part::Comment).theirs, "uno") << "what is shown stays";
    EXPECT_EQ(merge.CellOf(0, ListMerge::Part::Comment).mine, QString()) << "it has gone";
    EXPECT_EQ(merge.OtherDifferences(0), QString());
    EXPECT_FALSE(merge.Apply());
    EXPECT_EQ(RowsOf(m_list, {"comment"}), (QStringList{"two", "three"}));
}

TEST_F(ListMergeTest, ChannelsThatAreAddedAndChangedGoIntoTheJob) {
    Tree::Instance()->MakeNode(Q("/Receiver"));
    auto* frequency = GetOrCreateValue<ValueNumeric<double>>(Q("/Receiver/frequency"));
    frequency->SetMinMax(20e6, 3e9, 1);
    m_job->SetValue(QString::fromUtf8(Job(SubJob({}))));
    Start(MediatorType::MemoryVUHF);
    BindJob();
    Handler().SetFrequency_ValuePath(Q("/Receiver/frequency"));
    Handler().SetNewEntry(145.5e6, 12000, Q("calling"), Q("FM"));
    Handler().UpdateJobFileEntries();
    const QByteArray theirs = "145500000\tsimplex\t12000\tFM\n7055000\tshort wave\t3000\tUSB\n";
    for (const QByteArray& lines : {theirs, theirs + "433500000\tcalling too\t12000\tFM\n"}) {
        ListMerge merge(*Handler().GetMediatorCtrl(), Read("theirs.sfl", lines, MediatorType::MemoryVUHF));
        merge.Match(500);
        EXPECT_EQ(States(merge).substr(0, 2), "DR");
        EXPECT_EQ(merge.ReasonOf(1), Q("the receiver reaches 20 MHz to 3 GHz"));
        ChooseForAll(merge, Choice::Join);
        EXPECT_TRUE(merge.Apply());
        EXPECT_TRUE(m_job->GetValue().contains(Q("Name=\"calling; simplex\"")))
            << "changed alone, or with what was added";
        m_list->Children().front()->FindOwn<Value<QString>>(Keys::KeyComment)->SetValue(Q("calling"));
    }
    EXPECT_TRUE(m_job->GetValue().contains(Q("Name=\"calling too\"")));
    EXPECT_FALSE(m_job->GetValue().contains(Q("short wave")));
}

TEST_F(ListMergeTest, BandsThatAreAddedAndChangedGoIntoTheBandList) {
    HalvoNodeMediatorCtrl& list = Bands("1000\tone\t100\n");
    auto* receiver = GetOrCreateValue<ValueNumeric<double>>(Q("/Receiver/frequency"));
    receiver->SetMinMax(0, 2000, 1); // which need not reach what is of interest
    NOIFrequencyHandler::Instance()->SetFrequencyValue_Path(Q("/Receiver/frequency"));
    const QByteArray theirs = "1000\t200\tone\tAM\tg\tred\t3\n";
    for (const QByteArray& lines : {theirs, theirs + "3000\t200\ttwo\tAM\tg\tred\t3\n"}) {
        ListMerge merge(list, Read("theirs.ltl", lines, MediatorType::NoiFrequencies));
        merge.Match(0);
        ChooseForAll(merge, Choice::Theirs);
        EXPECT_TRUE(merge.Apply());
        EXPECT_TRUE(m_data->GetValue().startsWith(Q("900,1100;")));
    }
    EXPECT_EQ(m_data->GetValue(), Q("900,1100;2900,3100;"));
}

TEST_F(ListMergeTest, FilesOfEveryKindAreReadWithoutAList) {
    const auto channels = Job(SubJob(Channel(1, "one", "7055000") + Channel(1, "two", "7056000")));
    const struct {
        const char* name;
        QByteArray bytes;
        MediatorType list;
        const char* comments; ///< null when it is refused
    } rows[] = {
        {"a.ltl", Three, MediatorType::TargetList, "one two three"},
        {"a.sfl", "1000\tone\t9000\tAM\n", MediatorType::MemoryHF, "one"},
        {"a.noi", "1000\tone\t9000\n", MediatorType::TargetList, "one"},
        {"a.pij", channels, MediatorType::MemoryHF, "one two"},
        {"a.pij", "<JOB>", MediatorType::MemoryHF, nullptr},
        {"a.txt", "1000\tone\n", MediatorType::TargetList, nullptr},
        {"a.xml", "<Other/>", MediatorType::TargetList, nullptr},
        {"a.csv", "no;such;columns\n1;2;3\n", MediatorType::TargetList, nullptr},
    };
    for (const auto& row : rows) {
        int problems = 0;
        Problems::SetSink([&](const Problem&) { ++problems; });
        const auto entries = ReadFileEntries(Write(Q(row.name), row.bytes), row.list);
        Problems::SetSink({});
        ASSERT_EQ(entries.has_value(), row.comments != nullptr) << row.name;
        EXPECT_EQ(problems > 0, !entries) << row.name;
        QStringList comments;
        for (const auto& entry : entries.value_or(Entries()))
            comments << entry.GetComment();
        EXPECT_EQ(comments.join(' '), Q(row.comments ? row.comments : "")) << row.name;
    }
    for (const char* sample : {"targets.xml", "targets.csv", "interest.csv", "profiles.xml", "job-hf.pij"})
        EXPECT_GT(ReadFileEntries(Q(SAMPLES_DIR "/") + Q(sample), MediatorType::MemoryHF)
                      .value_or(Entries())
                      .size(),
                  3)
            << sample;
}

} // namespace
