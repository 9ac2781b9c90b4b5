#include "controls/frequencystore/results/searchmcdatareader.h"
#include "host/freqstorexml/frequencystorelist.h"
#include "host/valuetree/valueselection.h"
#include "tests/frequencystore/results/resultfixture.h"

#include <random>

namespace {

class SearchMCDataTest : public ResultFixture {
protected:
    Node* NewNode() {
        auto* node = new Node(m_list, Q("Entry"));
        m_list->AddItemUnique(node);
        return node;
    }
    template <typename V>
    V* Source(const char* path) {
        return GetOrCreateValue<V>(Q("/Receiver/") + Q(path));
    }
    bool ReadFile(const QString& path) { return SearchMCDataReader(Controller()).ReadFile(path); }
};

TEST_F(SearchMCDataTest, AResultWithoutSourceIsNotLockedAndUnsure) {
    Tree::Instance()->MakeNode(Q("/Receiver"));
    const SearchMCDataResult result(NewNode(), true, nullptr);
    EXPECT_EQ(result.GetLocked()->GetStringValue(), Q("UNLOCKED"));
    EXPECT_EQ(result.GetLockTime()->GetValue(), 0);
    EXPECT_EQ(result.GetConfidence()->GetValue(), 0);
    EXPECT_EQ(result.GetConfidence()->GetMin(), 0);
    EXPECT_EQ(result.GetConfidence()->GetMax(), 100);
    EXPECT_EQ(result.GetConfidence()->GetStep(), 1);
    EXPECT_EQ(Entry(0)->FindOwn<ValueSelection>(Keys::BandwidthSel)->GetItemCount(), 0);
    EXPECT_EQ(result.GetLocked()->GetPathName(), Entry(0)->GetPathName() + Q("/locked"));
    EXPECT_EQ(result.GetLocked()->GetName(), Q("locked"));
    EXPECT_FALSE(SearchMCDataResult(nullptr, true, nullptr).GetLocked());
}

TEST_F(SearchMCDataTest, AResultTakesTheSettingsOfItsSource) {
    Tree::Instance()->MakeNode(Q("/Receiver"));
    Source<ValueSelection>("locked")->AddItems({Q("UNLOCKED"), Q("LOCKED"), Q("SEARCHING")});
    Source<ValueSelection>("locked")->Select(Q("SEARCHING"));
    Source<ValueNumeric<int>>("confidence")->SetMinMax(-5, 5, 2);
    Source<ValueNumeric<int>>("confidence")->SetValue(3);
    Source<ValueNumeric<qint64>>("locktime")->SetMinMax(1, 9, 2);
    Source<Value<char>>("type")->SetValue('x');
    Source<ValueNumeric<double>>("number")->SetValue(2500);
    Source<ValueSelection>("selection")->AddItem(Q("1 kHz"), 1000, 7);
    const FixedClock clock(1490968800000000);

    GeneralEntry source;
    for (const auto& [id, path] : {std::pair{SourceLocked, "locked"},
                                   {SourceConfidence, "confidence"},
                                   {SourceLockTime, "locktime"},
                                   {SourceType, "type"}})
        EXPECT_TRUE(source.AddSourceValue(id, Q("/Receiver/") + Q(path)));
    struct {
        const char* bandwidth;
        const char* text;
        double hertz;
        qint64 lockTime; ///< the first result stamps the source, later ones copy it
    } const rows[] = {{"number", "2500", 2500, 0}, {"selection", "1 kHz", 1000, 1490968800000000}};
    for (const auto& row : rows) {
        EXPECT_TRUE(source.AddSourceValue(SourceBandwidth, Q("/Receiver/") + Q(row.bandwidth)));
        Node* node = NewNode();
        const SearchMCDataResult result(node, true, &source);
        EXPECT_EQ(result.GetLocked()->GetStringValue(), Q("SEARCHING"));
        EXPECT_EQ(result.GetLocked()->GetItemCount(), 3);
        EXPECT_EQ(result.GetConfidence()->GetValue(), 3);
        EXPECT_EQ(result.GetConfidence()->GetMax(), 5);
        EXPECT_EQ(result.GetLockTime()->GetMax(), 9);
        EXPECT_EQ(result.GetLockTime()->GetValue(), row.lockTime);
        EXPECT_EQ(node->FindOwn<Value<char>>(Keys::KeyType)->GetValue(), 'x');
        const auto* bandwidth = node->FindOwn<ValueSelection>(Keys::BandwidthSel);
        EXPECT_EQ(bandwidth->GetStringValue(), Q(row.text));
        EXPECT_EQ(bandwidth->GetCurrentValue(), row.hertz);
    }
}

TEST_F(SearchMCDataTest, AttachingTakesOnlyWhatIsThereWithItsType) {
    AddResult(7e6, 3000, "LOCKED", 5, 50);
    Node* node = Entry(0);
    node->DeleteValue(Q("confidence"));
    EXPECT_TRUE(node->AddValue(Q("confidence"), new Value<QString>));
    SearchMCDataResult result(node, false, nullptr);
    EXPECT_EQ(result.GetConfidence(), nullptr);
    result.SetConfidence(80);
    EXPECT_EQ(node->GetValue(Q("confidence"))->GetStringValue(), QString());
    EXPECT_EQ(result.GetLocked()->GetStringValue(), Q("LOCKED"));
    result.SetLocked(Q("TRACKING")); // not offered, kept all the same
    EXPECT_EQ(result.GetLocked()->GetStringValue(), Q("TRACKING"));
    EXPECT_EQ(result.GetLockTime()->GetValue(), 5);
    SearchMCDataResult copy(result);
    node->DeleteChildren();
    for (SearchMCDataResult* gone : {&result, &copy}) {
        EXPECT_EQ(gone->GetLocked(), nullptr);
        EXPECT_EQ(gone->GetLockTime(), nullptr);
        gone->SetLocked(Q("x"));
        gone->SetLockTime(1);
        gone->SetConfidence(1);
    }
    SearchMCDataResult bare(NewNode(), false, nullptr);
    bare.SetLocked(Q("x"));
    EXPECT_EQ(Entry(1)->FirstValue(), nullptr) << "nothing is created";
}

TEST_F(SearchMCDataTest, TheTypeLetterFollowsLockStateAndConfidence) {
    struct {
        const char* locked;
        int confidence;
        char letter;
    } const rows[] = {{"UNLOCKED", 0, 'c'},     {"LOCKED", 0, 'b'},    {"LOCKED", 37, 'p'},
                      {"UNLOCKED", 37, 'p'},    {"unlocked", 0, 'b'},  {"LOCKED", -1, 'b'},
                      {"was UNLOCKED", 0, 'c'}, {"SEARCHING", 1, 'p'}, {"", 0, 'b'}};
    SearchMCDataResult result = AddResult(7e6);
    SearchMCDataMediator& mediator = Mediator(0);
    const auto* type = Entry(0)->FindOwn<Value<char>>(Keys::KeyType);
    for (const auto& row : rows) {
        result.SetLocked(Q(row.locked));
        result.SetConfidence(row.confidence);
        char letter = 0;
        EXPECT_TRUE(mediator.GetType(letter, 0));
        EXPECT_EQ(letter, row.letter) << row.locked << row.confidence;
        EXPECT_EQ(type->GetValue(), row.letter);
    }
    mediator.SetType('z');
    EXPECT_EQ(type->GetValue(), 'b') << "what follows from the values cannot be set";
    result.SetConfidence(50);
    Entry(0)->DeleteValue(Q("confidence"));
    EXPECT_EQ(type->GetValue(), 'b');
    Entry(0)->DeleteValue(Q("locked"));
    EXPECT_EQ(type->GetValue(), 'c');
    int percent = 7;
    QString text = Q("untouched");
    EXPECT_FALSE(mediator.GetConfidence(percent));
    EXPECT_FALSE(mediator.GetLockResult(text));
    mediator.SetConfidence(5);
    mediator.SetLockResult(Q("LOCKED"));
    EXPECT_EQ(percent, 7);
    EXPECT_EQ(text, Q("untouched"));
    // A value that comes back is found at the entry's next change.
    GetOrCreateValue<ValueNumeric<int>>(Entry(0)->GetPathName() + Q("/confidence"))->SetValue(9);
    result.SetFrequency(1);
    EXPECT_EQ(type->GetValue(), 'p');
    Entry(0)->DeleteValue(Q("type"));
    char letter = '?';
    EXPECT_FALSE(mediator.GetType(letter, 0));
    Entry(0)->DeleteChildren();
    EXPECT_TRUE(mediator.ToString().isEmpty());
}

TEST_F(SearchMCDataTest, CellsShowTheLocalTimeAndLeaveMissingValuesAlone) {
    AddResult(7055000, 2700, "LOCKED", 1490968800000000, 37);
    SearchMCDataMediator& mediator = Mediator(0);
    const std::pair<unsigned, const char*> rows[] = {
        {0, "7055.000 kHz"}, {1, "2.700 kHz"}, {49, "LOCKED"}, {50, "2017-03-31 16:00:00"}, {51, "37"}};
    for (const auto& [column, expected] : rows) {
        QString text;
        EXPECT_TRUE(mediator.CellText(column, text));
        EXPECT_EQ(text, Q(expected)) << column;
    }
    Entry(0)->DeleteChildren();
    QString text = Q("as it was");
    for (const unsigned column : {49u, 50u, 51u, 52u})
        EXPECT_FALSE(mediator.CellText(column, text));
    EXPECT_EQ(text, Q("as it was"));
    Traces traces;
    mediator.UpdateMyViewItems(nullptr);
    EXPECT_EQ(traces.places.mid(0, 1), QStringList{Q("searchmcdatamediator:54")});
    EXPECT_EQ(traces.texts.mid(0, 1), QStringList{Q("No valid View Item for Memory - Field")});
}

TEST_F(SearchMCDataTest, XmlEntriesCarryTheResult) {
    SearchMCDataResult result = AddResult(7055000, 3000, "LOCKED", 1490968800999999, 37);
    result.SetComment(Q("<calling>"));
    AddResult(1);
    Mediator(1); // bound before its values go
    Entry(1)->DeleteChildren();
    FreqStoreXml::FrequencyStoreList list;
    Mediator(0).AddToXml(list);
    Mediator(1).AddToXml(list);
    auto& entries = list.GetFrequencyStoreEntry();
    ASSERT_EQ(entries.size(), 2);
    EXPECT_EQ(entries[0].GetType(), Q("p"));
    EXPECT_EQ(entries[0].GetComment(), Q("<calling>"));
    EXPECT_EQ(entries[0].GetFFM_Settings().GetFrequency().GetValue(), 7055000);
    EXPECT_EQ(entries[0].GetFFM_Settings().GetIFBandwidth().GetValue(), 3000);
    EXPECT_EQ(entries[0].GetResultList().GetReason(), Q("LOCKED"));
    EXPECT_EQ(entries[0].GetResultList().GetConfidence(), 37);
    EXPECT_EQ(entries[0].GetResultList().GetResultTime().toUTC().toString(Qt::ISODateWithMs),
              Q("2017-03-31T14:00:00.000Z"));
    EXPECT_EQ(entries[1].GetResultList().GetConfidence(), 0);
    EXPECT_EQ(entries[1].GetResultList().GetResultTimeUsec(), 0);
    EXPECT_FALSE(list.GetXmlString().contains(Q("AnalogDemod")));
    EXPECT_EQ(Mediator(0).GetUsage(), Q("SearchResults"));
}

TEST_F(SearchMCDataTest, ALineAndItsResultAreInverse) {
    AddResult(7055000, 3000, "LOCKED", 1490968800123456, 37);
    AddResult(0.000001, 12.5, "UNLOCKED", 0, 0);
    AddResult(29999999999.5, 3e6, "a b\tc\nd", std::numeric_limits<qint64>::max(), -3);
    EXPECT_EQ(Mediator(0).ToString(),
              Q("7055000.000000\t\t3000.000000\t\tp\tLOCKED\t1490968800123456\t37\t"));
    AddResult(1, 2);
    for (int i = 0; i < 3; ++i) {
        QString line = Mediator(i).ToString();
        EXPECT_FALSE(line.contains(QLatin1Char('\n')));
        EXPECT_TRUE(Mediator(3).FromString(line));
        EXPECT_EQ(Mediator(3).ToString(), line);
    }
    // What is missing at the end of a line stays as it was; what is no number counts as 0.
    struct {
        const char* line;
        const char* result;
    } const rows[] = {
        {"5", "5.000000\t\t12.000000\t\tp\tLOCKED\t9\t40\t"},
        {"5\t\t\t6\tx", "5.000000\t\t6.000000\t\tp\tLOCKED\t9\t40\t"},
        {"nan\tinf\tx\tUNLOCKED\t18446744073709551616\t1e3", "0.000000\t\t0.000000\t\tc\tUNLOCKED\t0\t0\t"},
        {"5\t6\tb\tLOCKED\t7\t8\t9\t10", "5.000000\t\t6.000000\t\tp\tLOCKED\t7\t8\t"},
        {"", "11.000000\t\t12.000000\t\tp\tLOCKED\t9\t40\t"},
    };
    for (const auto& row : rows) {
        QString start = Q("11\t12\tc\tLOCKED\t9\t40");
        EXPECT_TRUE(Mediator(3).FromString(start));
        QString line = Q(row.line);
        EXPECT_EQ(Mediator(3).FromString(line), *row.line != 0);
        EXPECT_EQ(Mediator(3).ToString(), Q(row.result)) << row.line;
    }
    QString text = Q("1");
    for (int field = -1; field < 12; ++field) {
        // The lower numbers are those of every entry: a bandwidth must be offered, a demodulation be there.
        const bool known = (field >= 5 && field <= 10) || field == 0 || field == 2;
        EXPECT_EQ(Mediator(3).SetValueFromString(field, text), known) << field;
    }
    Entry(3)->DeleteValue(Q("locktime"));
    EXPECT_TRUE(Mediator(3).ToString().isEmpty());
}

TEST_F(SearchMCDataTest, FilesGiveBackWhatWasWritten) {
    std::mt19937 random(7);
    for (int i = 0; i < 200; ++i) {
        AddResult(static_cast<double>(random()) / 8, static_cast<double>(random() % 100000),
                  i % 3 ? "LOCKED" : "UNLOCKED", static_cast<qint64>(random()) * 1000000,
                  static_cast<int>(random() % 101));
    }
    AddResult(5, 6, "Ärger <&> \"x\"", 1000000, 1);
    const QStringList before = Results();
    struct {
        const char* name;
        bool (*write)(HalvoNodeMediatorCtrl& list, const QString& path);
    } const rows[] = {
        {"r.xml",
         [](HalvoNodeMediatorCtrl& list, const QString& path) { return list.SaveFrequencies(path); }},
        {"table.csv",
         [](HalvoNodeMediatorCtrl& list, const QString& path) {
             list.WriteFrequencies(path, true, FreqStoreXml::FrequencyStoreListHelper::SearchResults);
             return true;
         }},
        {"lines.csv",
         [](HalvoNodeMediatorCtrl& list, const QString& path) {
             return list.ExportFrequencies(path, FreqStoreXml::FrequencyStoreListHelper::SearchResults);
         }},
    };
    for (const auto& row : rows) {
        EXPECT_TRUE(row.write(Controller(), Path(Q(row.name))));
        QStringList expected = before;
        if (qstrcmp(row.name, "lines.csv") == 0) {
            // A line has no comment: it is that of a new result.
            for (QString& text : expected)
                text = text.section(QLatin1Char('|'), 0, 1) + QLatin1Char('|') +
                       text.section(QLatin1Char('|'), 0, 0) + QLatin1Char('|') +
                       text.section(QLatin1Char('|'), 3);
        }
        m_list->DeleteChildren();
        const Traces traces(0);
        EXPECT_TRUE(ReadFile(Path(Q(row.name))));
        EXPECT_EQ(traces.problems, QStringList());
        EXPECT_TRUE(Results() == expected) << row.name;
    }
    EXPECT_TRUE(Read(Q("r.xml")).contains("Usage=\"SearchResults\""));
    EXPECT_EQ(Read(Q("lines.csv")).count('\n'), 201);
}

TEST_F(SearchMCDataTest, BadFilesAreToldAndWhatCannotBeReadLeavesTheList) {
    AddResult(1);
    const QStringList before = Results();
    struct {
        const char* name;
        QByteArray bytes;
        const char* problem; ///< behind the path
        qsizetype results;   ///< -1: the list is as it was
    } const rows[] = {
        {"cut.xml", "<FrequencyStoreList>\n<FrequencyStoreEntry", ":2: ", -1},
        {"root.xml", "<Foo/>", ":1: ", -1},
        {"cell.csv", "Frequency,Confidence\n7,x\n", ":2: Confidence \"x\"", -1},
        {"nothing.txt", "1\t2\n", ": is of no known kind of file", -1},
        {"nul.csv", QByteArray("7\t\0x\n", 5), ":1: ", -1},
        {"short.csv", "7\t\t3\t\tp\n\n8\t\t3\t\tc\tUNLOCKED\t5\t6\n", ":1: has no lock state", 2},
        {"word.csv", "7\t3\tp\tLOCKED\t5\t6\nx\t3\tp\tLOCKED\t5\t6\n",
         ":2: \"x\" is no frequency; 0 is taken", 2},
    };
    for (const auto& row : rows) {
        const QString path = Write(Q(row.name), row.bytes);
        const Traces traces(0);
        EXPECT_EQ(ReadFile(path), row.results >= 0) << row.name;
        ASSERT_EQ(traces.problems.size(), 1) << row.name;
        EXPECT_TRUE(traces.problems[0].startsWith(path + Q(row.problem))) << traces.problems[0].toStdString();
        if (row.results < 0)
            EXPECT_EQ(Results(), before) << row.name;
        else
            EXPECT_EQ(Results().size(), row.results) << row.name;
    }
    const Traces traces(0);
    for (const QString& nowhere :
         {Q("/no/such/file.csv"), Q("/no/such/file.xml"), m_folder.path() + Q("/.csv")})
        EXPECT_FALSE(ReadFile(nowhere));
    EXPECT_EQ(traces.problems.size(), 3);
}

} // namespace
