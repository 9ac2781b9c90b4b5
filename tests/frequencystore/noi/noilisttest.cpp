#include "controls/frequencystore/noi/noifrequency.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencynodemediator.h"
#include "host/freqlist/pixstatevector.h"
#include "tests/frequencystore/noi/noifixture.h"
#include "tests/support/dialogs.h"
#include "tests/support/fulldisk.h"
#include "tests/support/recorder.h"
#include "tests/support/text.h"

#include <QSignalSpy>

namespace {

QByteArray Utf16(const QString& text) {
    QByteArray bytes("\xFF\xFE", 2);
    bytes.append(reinterpret_cast<const char*>(text.utf16()), 2 * text.size());
    return bytes;
}

constexpr char TwoXml[] =
    "<FrequencyStoreList Version=\"1\" Usage=\"NOI\">"
    "<FrequencyStoreEntry Type=\"d\"><Comment>one</Comment><FFM_Settings><Frequency>7055000</Frequency>"
    "<IFBandwidth>3000</IFBandwidth></FFM_Settings></FrequencyStoreEntry>"
    "<FrequencyStoreEntry><FFM_Settings><Frequency>0.5</Frequency></FFM_Settings></FrequencyStoreEntry>"
    "</FrequencyStoreList>";
constexpr char Profiles[] =
    "<T><PROFILETBL><PROFILEID>P</PROFILEID><OBJECTENTRY><OBJECT_NAME>Ship</OBJECT_NAME>"
    "<PRIORITY>1</PRIORITY></OBJECTENTRY><PROFILEPARAMETERSETTBL>"
    "<NOMINALFREQUENCY>156800000</NOMINALFREQUENCY><NOMINALBANDWIDTH>25000</NOMINALBANDWIDTH>"
    "</PROFILEPARAMETERSETTBL></PROFILETBL></T>";

class NoiListTest : public NoiFixture {};

TEST_F(NoiListTest, EntriesTakeWhatTheReceiverOffers) {
    const auto limits = [](const ValueNumeric<double>* value) {
        return std::array{value->GetMin(), value->GetMax(), value->GetStep(), value->GetValue()};
    };
    auto* node = new Node(m_list, Q("Entry"));
    m_list->AddItemUnique(node);
    NOIFrequency found(node, false, nullptr);
    EXPECT_EQ(found.GetBandwidthValue(), nullptr);
    EXPECT_EQ(node->FirstValue(), nullptr) << "looking for values makes none";
    found.SetBandwidth(5.0);
    NOIFrequency fresh(node, true, nullptr);
    ASSERT_NE(fresh.GetBandwidthValue(), nullptr);
    EXPECT_EQ(fresh.GetBandwidthValue()->GetPathName(), Q("/Lists/NOI/Entry/bandwidth"));
    EXPECT_EQ(limits(fresh.GetBandwidthValue()), (std::array{0.0, 3e9, 1.0, 0.0}));
    const NOIFrequency copy(fresh);
    EXPECT_EQ(copy.GetBandwidthValue(), fresh.GetBandwidthValue());
    EXPECT_EQ(NOIFrequency(node, false, nullptr).GetBandwidthValue(), fresh.GetBandwidthValue());
    node->DeleteValue(Q("bandwidth"));
    EXPECT_EQ(copy.GetBandwidthValue(), nullptr) << "the value has ended";

    NOIFrequencyHandler& handler = Start();
    auto* frequency = GetOrCreateValue<ValueNumeric<double>>(Q("/Lists/frequency"));
    auto* number = GetOrCreateValue<ValueNumeric<double>>(Q("/Lists/bandwidth"));
    auto* selection = GetOrCreateValue<ValueSelection>(Q("/Lists/bandwidthsel"));
    frequency->SetMinMax(9e3, 3e7, 10);
    frequency->SetValue(7e6);
    number->SetMinMax(100, 16000, 100);
    number->SetValue(2400);
    selection->AddItem(Q("2.7 kHz"), 2700, 1);
    handler.SetFrequencyValue_Path(Q("/Lists/frequency"));
    handler.SetBandwidthValue_Path(Q("/Lists/bandwidth"));
    EXPECT_TRUE(handler.InsertNewValue(-1, 0, QString()));
    const auto own = [&](const char* key) {
        return m_list->Children().back()->FindOwn<ValueNumeric<double>>(Names::Intern(Q(key)));
    };
    EXPECT_EQ(limits(own("bandwidth")), (std::array{100.0, 16000.0, 100.0, 2400.0}));
    EXPECT_EQ(limits(own("frequency")), (std::array{9e3, 3e7, 10.0, 7e6}));
    EXPECT_EQ(Entries().last(), Q("7000000|2400|7000000"));
    EXPECT_EQ(Bands(), Q("0,0;6998800,7001200;"));
    handler.SetBandwidthValue_Path(Q("/Lists/bandwidthsel"));
    EXPECT_TRUE(handler.InsertNewValue(5000.4, 1, Q("c")));
    EXPECT_EQ(limits(own("bandwidth")), (std::array{0.0, 3e9, 1.0, 1.0}));
    handler.SetBandwidthValue_Path(Q("/Lists/nothing"));
    handler.SetFrequencyValue_Path(Q("/Lists/nothing"));
    EXPECT_TRUE(handler.InsertNewValue(0, 17, Q("not taken")));
    EXPECT_EQ(Entries().last(), Q("0|0|0"));
}

TEST_F(NoiListTest, TheBandListHasTheEdgesInWholeHertz) {
    NOIFrequencyHandler& handler = Start();
    EXPECT_EQ(Bands(), QString());
    const std::pair<double, double> entries[] = {
        {100000000, 10000}, {5000.4, 1},    {10, 100},   {7055000, 2701},         {0.25, 0.5},
        {4.5, 0},           {2.5, 0},       {1e15, 3e9}, {123456789.499999, 0},   {0.3, 1.2},
        {1e-7, 1},          {1e300, 1e299}, {0.5, 0},    {4503599627370497.5, 1},
    };
    QString expected;
    for (const auto& [frequency, bandwidth] : entries) {
        handler.InsertNewValue(frequency, bandwidth, QString());
        expected += QStringLiteral("%1,%2;")
                        .arg(frequency - bandwidth / 2, 0, 'f', 0)
                        .arg(frequency + bandwidth / 2, 0, 'f', 0);
        EXPECT_EQ(Bands(), expected);
    }
    EXPECT_TRUE(Bands().startsWith(Q("99995000,100005000;5000,5001;-40,60;")));
    // What lacks its values counts as a band at 0.
    m_list->DeleteChildren();
    m_list->AddItemUnique(new Node(m_list, Q("Entry")));
    handler.UpdateNOIList();
    EXPECT_EQ(Bands(), Q("0,0;"));
    m_list->DeleteChildren();
    handler.UpdateNOIList();
    EXPECT_EQ(Bands(), QString());
}

TEST_F(NoiListTest, TheBandListFollowsOnceAndItsValueMayEnd) {
    NOIFrequencyHandler& handler = Start();
    Recorder watcher;
    m_definition->AddObserver(&watcher);
    QSignalSpy loaded(&handler, &NOIFrequencyHandler::signalNewFileLoaded);
    QByteArray lines;
    for (int i = 1; i <= 100; ++i)
        lines += QByteArray::number(i * 1000) + "\tc\t10\n";
    EXPECT_TRUE(handler.ParseNOIFile(Write(Q("many.noi"), lines)));
    EXPECT_EQ(watcher.codes, std::vector<int>{3});
    EXPECT_EQ(Bands().count(QLatin1Char(';')), 100);
    EXPECT_EQ(loaded.size(), 1);
    const QString report = Controller().GetFreqStoreReport();
    Controller().SetReportXml(report, false);
    EXPECT_EQ(watcher.codes.size(), 2u) << "entries that come together are one change";
    EXPECT_EQ(Bands().count(QLatin1Char(';')), 200);
    EXPECT_TRUE(handler.InsertNewValue(1, 0, QString()));
    EXPECT_EQ(watcher.codes.size(), 3u);
    Controller().ForceUpdateNow();
    handler.UpdateNOIList();
    EXPECT_EQ(watcher.codes.size(), 3u);

    // A path without a value, another value, and a value that ends.
    handler.SetNOIDefinition_ValuePath(Q("/Lists/none"));
    handler.InsertNewValue(2, 0, QString());
    EXPECT_EQ(watcher.codes.size(), 3u);
    auto* other = GetOrCreateValue<Value<QString>>(Q("/Lists/other"));
    handler.SetNOIDefinition_ValuePath(Q("/Lists/other"));
    EXPECT_EQ(other->GetValue().count(QLatin1Char(';')), 202);
    EXPECT_EQ(Bands().count(QLatin1Char(';')), 201) << "the old value is left as it is";
    Tree::Instance()->GetNode(Q("/Lists"))->DeleteValue(Q("other"));
    EXPECT_TRUE(handler.InsertNewValue(3, 0, QString()));
    handler.SetNOIDefinition_ValuePath(Q("/Lists/NoiDefinition"));
    EXPECT_EQ(Bands().count(QLatin1Char(';')), 203);
    // Whoever announces an end that is none is believed.
    handler.Update(m_definition, TChangeCode::ValueChanged);
    handler.Update(m_definition, TChangeCode::Removing);
    handler.InsertNewValue(4, 0, QString());
    EXPECT_EQ(Bands().count(QLatin1Char(';')), 203);
}

TEST_F(NoiListTest, LinesAreReadWithWhatTheyLackFromTheLineBefore) {
    NOIFrequencyHandler& handler = Start();
    Traces traces;
    const QString path =
        Write(Q("list.noi"), "7055000\tone\t3000\trest\n\nx\n8000000\n12\ttwo\n"
                             "9000000\t\t\t\n  14e6 \t4\t1e3\t\t\t\nabc\tbad\t5\r\n77\t\tzz\n");
    EXPECT_TRUE(handler.ParseNOIFile(path));
    EXPECT_EQ(Entries(), (QStringList{"7055000|3000|one", "8000000|3000|one", "12|3000|two", "9000000|0|",
                                      "14000000|1000|4", "0|0|0", "77|0|"}));
    ASSERT_EQ(traces.problems.size(), 5) << traces.problems.join(QLatin1Char('\n')).toStdString();
    EXPECT_EQ(traces.problems[1], path + Q(":8: \"abc\" is no frequency; 0 is taken"));
    EXPECT_TRUE(handler.ParseNOIFile(Write(Q("first.noi"), "12\n")));
    EXPECT_EQ(Entries(), QStringList{"12|0|"});
    EXPECT_TRUE(handler.ParseNOIFile(Write(Q("empty.noi"), "")));
    EXPECT_EQ(Bands(), QString());
    EXPECT_TRUE(handler.ParseNOIFile(QStringLiteral(SAMPLES_DIR "/interest.noi")));
    EXPECT_EQ(Entries().size(), 30);
    EXPECT_EQ(Entries()[3], Q("3756000|3000|«Капля» / The Pip, by night"));
}

TEST_F(NoiListTest, EveryFormatGivesBackWhatWasSaved) {
    NOIFrequencyHandler& handler = Start();
    const auto fill = [&] {
        m_list->DeleteChildren();
        handler.InsertNewValue(7055000, 3000, Q("calling"));
        handler.InsertNewValue(145500000.25, 0, Q("Ärger \"x\", y; <z> & 'q' 😀 %1 %2"));
        handler.InsertNewValue(0.000001, 1e9, Q(" blanks "));
        handler.InsertNewValue(4294967296.5, 12.5, QString());
    };
    for (const char* kind : {"noi", "xml", "csv"}) {
        fill();
        const QStringList expected = Entries();
        const QString path = Path(Q("list.") + Q(kind));
        ASSERT_TRUE(handler.SaveFile(path)) << kind;
        m_list->DeleteChildren();
        ASSERT_TRUE(handler.ReadFile(path)) << kind;
        EXPECT_EQ(Entries(), expected) << kind;
    }
    EXPECT_TRUE(Read(Q("list.xml")).contains("Usage=\"NOI\""));
    EXPECT_EQ(Read(Q("list.xml")).count("Type=\"d\""), 4);
    EXPECT_TRUE(
        Read(Q("list.csv")).startsWith("Frequency,Bandwidth,Comment,Type\r\n7055000,3000,calling,d\r\n"));

    m_list->DeleteChildren();
    handler.InsertNewValue(7055000, 3000, Q("a\tb\nc\x01"));
    handler.InsertNewValue(0.5, 0, QString());
    handler.InsertNewValue(3, 0, Q("bare"));
    m_list->Children()[2]->DeleteValue(Q("bandwidth"));
    ASSERT_TRUE(handler.SaveFile(Path(Q("bytes.noi"))));
    EXPECT_EQ(Read(Q("bytes.noi")),
              Utf16(Q("7055000.000000\ta b c\uFFFD\t3000.000000\t\n\n0.500000\t\t0.000000\t\n\n\n\n")));
    EXPECT_TRUE(handler.ReadFile(Path(Q("bytes.noi"))));
    EXPECT_EQ(Entries().size(), 2);
}

TEST_F(NoiListTest, AnXmlOrCsvFileThatCannotBeReadLeavesAListThatWaitsForTheNext) {
    struct {
        const char* name;
        QByteArray bytes;
        const char* problem;
    } const rows[] = {
        {"cut.xml", QByteArray(TwoXml).left(200), ": the file ends within"},
        {"root.xml", "<Foo/>", "Foo"},
        {"version.xml", "<FrequencyStoreList Version=\"2\"/>", "ersion"},
        {"entity.xml", "<!DOCTYPE a [<!ENTITY x \"y\">]>\n<FrequencyStoreList/>", ":1: document type"},
        {"bytes.xml", "<FrequencyStoreList><FrequencyStoreEntry><Comment>\xc3\x28</Comment>", ":1:"},
        {"number.xml",
         "<FrequencyStoreList>\n<FrequencyStoreEntry><FFM_Settings><Frequency>x</Frequency>"
         "</FFM_Settings></FrequencyStoreEntry></FrequencyStoreList>",
         ":2:"},
        {"cell.csv", "Frequency,Bandwidth\n7055000,3000\n8000000,abc\n", ":3: Bandwidth \"abc\""},
        {"empty.csv", "", ":1: the file is empty"},
    };
    NOIFrequencyHandler& handler = Start();
    for (const auto& row : rows) {
        handler.InsertNewValue(1, 2, Q("before"));
        const QString path = Write(Q(row.name), row.bytes);
        QSignalSpy loaded(&handler, &NOIFrequencyHandler::signalNewFileLoaded);
        Traces traces;
        EXPECT_FALSE(handler.ParseNOIXmlFile(path)) << row.name;
        EXPECT_EQ(Entries().size(), 0) << row.name;
        EXPECT_TRUE(handler.IsWaitingForFile()) << row.name;
        EXPECT_EQ(loaded.size(), 0);
        ASSERT_EQ(traces.problems.size(), 1) << row.name;
        EXPECT_TRUE(traces.problems[0].contains(path) && traces.problems[0].contains(Q(row.problem)))
            << traces.problems[0].toStdString();
        ASSERT_EQ(traces.texts.size(), 2);
        EXPECT_EQ(traces.texts[0], Q("EXCEPTION WHILE PARSING FREQUENCIES:"));
        EXPECT_EQ(traces.texts[1], traces.problems[0]);
        EXPECT_EQ(Read(Q(row.name)), row.bytes);
        EXPECT_TRUE(handler.ParseNOIXmlFile(Write(Q("good.xml"), TwoXml)));
        EXPECT_EQ(Entries(), (QStringList{"7055000|3000|one", "0.5|0|"}));
        EXPECT_EQ(Bands(), Q("7053500,7056500;1,1;"));
        EXPECT_FALSE(handler.IsWaitingForFile());
        // Opened rather than imported, an XML file might be a profile table, which leaves no list waiting.
        traces.problems.clear();
        if (path.endsWith(Q(".xml"))) {
            EXPECT_FALSE(handler.ReadFile(path)) << row.name;
            EXPECT_FALSE(handler.IsWaitingForFile()) << row.name;
            EXPECT_EQ(Bands(), QString());
            EXPECT_EQ(traces.problems.size(), 1) << traces.problems.join(QLatin1Char('\n')).toStdString();
        }
    }
    EXPECT_TRUE(handler.ReadFile(Write(Q("profiles.xml"), Profiles)));
    EXPECT_EQ(Entries(), QStringList{"156800000|25000|Ship"});
    Traces traces;
    EXPECT_FALSE(handler.ReadFile(Write(Q("notes.txt"), "1\t2")));
    EXPECT_EQ(traces.problems.size(), 1);
    EXPECT_EQ(Entries().size(), 1);
    for (const char* name : {"missing.noi", "folder.noi"}) {
        QDir().mkdir(Q("folder.noi"));
        EXPECT_FALSE(handler.ParseNOIFile(Path(Q(name))));
        EXPECT_TRUE(traces.texts.contains(Q("File cannot be opened: ") + Path(Q(name))));
    }
    EXPECT_FALSE(handler.ParseNOIFile(Write(Q("picture.noi"), QByteArray("\x89PNG\0\0\x01", 7))));
    EXPECT_EQ(Entries().size(), 1) << "a line file that cannot be read changes nothing";
}

TEST_F(NoiListTest, TheListIsRememberedFromStartToStart) {
    Start();
    EXPECT_EQ(Remembered(), QString());
    End();
    EXPECT_EQ(Remembered(), QString()) << "an empty list has no file";
    EXPECT_FALSE(QFile::exists(Q("NoiFrequencies.xml")));

    Start().InsertNewValue(7055000, 3000, Q("kept"));
    End();
    EXPECT_EQ(Remembered(), Q("NoiFrequencies.xml"));
    EXPECT_TRUE(Read(Q("NoiFrequencies.xml")).contains("kept"));
    Start(Remembered());
    EXPECT_EQ(Entries(), QStringList{"7055000|3000|kept"});
    EXPECT_EQ(Bands(), Q("7053500,7056500;"));

    // A line file that is opened becomes the current one, an XML file does not.
    NOIFrequencyHandler& handler = *NOIFrequencyHandler::Instance();
    const QString lines = Write(Q("list.noi"), "8000000\tlines\t10\n");
    AnswerDialog(lines);
    EXPECT_EQ(handler.FileOpen(), lines);
    EXPECT_EQ(handler.GetCurrentFileName(), lines);
    AnswerDialog(Write(Q("other.xml"), TwoXml));
    EXPECT_EQ(handler.FileOpen(), Path(Q("other.xml")));
    EXPECT_EQ(handler.GetCurrentFileName(), lines);
    End();
    EXPECT_EQ(Remembered(), lines);
    EXPECT_EQ(Read(Q("list.noi")),
              Utf16(Q("7055000.000000\tone\t3000.000000\t\n\n0.500000\t\t0.000000\t\n\n")));
    Start(Remembered());
    EXPECT_EQ(Entries().size(), 2);
    // The operator removed all entries: an empty line file says so.
    m_list->DeleteChildren();
    End();
    EXPECT_LE(Read(Q("list.noi")).size(), 2);
    EXPECT_EQ(Remembered(), lines);

    // Cancelling forgets the file.
    Start(lines).InsertNewValue(1, 2, Q("x"));
    AnswerDialog(QString());
    Traces traces;
    EXPECT_EQ(NOIFrequencyHandler::Instance()->FileOpen(), QString());
    EXPECT_EQ(traces.texts, QStringList{"File cannot be opened: "});
    EXPECT_TRUE(traces.problems.isEmpty());
    EXPECT_EQ(Entries().size(), 1);
    End();
    EXPECT_EQ(Remembered(), QString());
    EXPECT_LE(Read(Q("list.noi")).size(), 2);

    // Whoever works on given files only leaves no trace of it.
    NOIFrequencyHandler::Instance()->SetRemembersFile(false);
    Start(lines).InsertNewValue(1, 2, Q("x"));
    End();
    EXPECT_EQ(Remembered(), lines);
    EXPECT_LE(Read(Q("list.noi")).size(), 2);
}

TEST_F(NoiListTest, WhatCouldNotBeReadIsNeverOverwrittenUnasked) {
    const QByteArray good = Utf16(Q("7055000.000000\tgood\t10.000000\t\n\n"));
    struct {
        const char* remembered;
        QByteArray content;
        const char* bad;                       ///< a file to read meanwhile; null for none
        QString (*read)(NOIFrequencyHandler&); ///< and how
    } const rows[] = {
        {"list.noi", QByteArray("7055000\t\0", 9), nullptr, nullptr},
        {"list.noi", "7055000\ta\t1\n@@@ to be looked up\tb\t1\n", nullptr, nullptr},
        {"list.noi", "7055000\ta\t1\n118450000", nullptr, nullptr},
        {"list.noi", "7055000\ta\t1\n118450000\t\xE4\t1\n", nullptr, nullptr},
        {"list.xml", QByteArray(TwoXml).replace("0.5", "-5"), nullptr, nullptr},
        {"list.xml", QByteArray(TwoXml).left(300), nullptr, nullptr},
        {"NoiFrequencies.xml", QByteArray(TwoXml).left(300), nullptr, nullptr},
        {"list.xml", "<Foo/>", nullptr, nullptr},
        {"list.xml", Profiles, nullptr, nullptr},
        {"list.noi", good, "bad.csv", [](NOIFrequencyHandler& h) { return h.FileImport(); }},
        {"list.noi", good, "bad.xml", [](NOIFrequencyHandler& h) { return h.FileOpen(); }},
        {"list.xml", TwoXml, "bad.xml", [](NOIFrequencyHandler& h) { return h.FileOpen(); }},
        {"list.noi", good, "bad.noi", [](NOIFrequencyHandler& h) { return h.FileOpen(); }},
    };
    const QByteArray badContent("<FrequencyStoreList>\0@", 22);
    for (const bool withEntry : {false, true}) {
        for (const auto& row : rows) {
            SCOPED_TRACE(row.content.toStdString() + (row.bad ? row.bad : "") + (withEntry ? " +" : ""));
            for (const QString& old : QDir(m_folder.path()).entryList({"*.xml", "*.noi"}, QDir::Files))
                QFile::remove(old);
            Write(Q(row.remembered), row.content);
            Traces traces;
            NOIFrequencyHandler& handler = Start(Q(row.remembered));
            if (row.bad) {
                AnswerDialog(Write(Q(row.bad), badContent));
                row.read(handler);
                EXPECT_EQ(traces.problems.size(), 1) << traces.problems.join(QLatin1Char('\n')).toStdString();
            }
            if (withEntry && !handler.IsWaitingForFile())
                handler.InsertNewValue(99, 0, Q("new"));
            const qsizetype entries = static_cast<qsizetype>(Controller().size());
            End();
            EXPECT_EQ(Read(Q(row.remembered)), row.content);
            EXPECT_TRUE(!row.bad || Read(Q(row.bad)) == badContent);
            if (entries == 0) {
                EXPECT_EQ(Remembered(),
                          row.bad && Q(row.bad).endsWith(Q("noi")) ? Path(Q(row.bad)) : Q(row.remembered));
                continue;
            }
            // What the list did hold is in another file, and there the next time.
            EXPECT_TRUE(Remembered().startsWith(Q("NoiFrequencies"))) << Remembered().toStdString();
            Start(Remembered());
            EXPECT_EQ(Entries().size(), entries);
            End();
        }
    }
    // A file that was not there is none that could be lost.
    Start(Q("gone.noi")).InsertNewValue(99, 0, Q("new"));
    End();
    EXPECT_EQ(Remembered(), Q("gone.noi"));
    EXPECT_TRUE(Read(Q("gone.noi")).size() > 20);
    // Asked to, the list goes to any file, and from then on there.
    Write(Q("list.noi"), QByteArray("\0", 1));
    Start(Q("list.noi")).InsertNewValue(99, 0, Q("new"));
    AnswerDialog(Path(Q("list.noi.xml")));
    EXPECT_EQ(NOIFrequencyHandler::Instance()->FileSave(false), Path(Q("list.noi.xml")));
    EXPECT_TRUE(Read(Q("list.noi.xml")).startsWith("\xFF\xFE")) << "the kind is that of lines";
    EXPECT_EQ(NOIFrequencyHandler::Instance()->GetCurrentFileName(), Path(Q("list.noi.xml")));
    End();
    EXPECT_EQ(Remembered(), Q("NoiFrequencies.xml")) << "what is named XML and is none is left alone, too";
}

TEST_F(NoiListTest, AFileOfCarriageReturnsIsKeptWhole) {
    Write(Q("list.noi"), "7055000\ta\t10\r8000000\tb\t10\r9000000\tc\t10\r");
    Start(Q("list.noi"));
    EXPECT_EQ(Entries().size(), 3);
    End();
    Start(Remembered());
    EXPECT_EQ(Remembered(), Q("list.noi"));
    EXPECT_EQ(Entries(), (QStringList{"7055000|10|a", "8000000|10|b", "9000000|10|c"}));
}

TEST_F(NoiListTest, WhatAFileMakesOfTheBandsIsTold) {
    const QString withoutFrequency =
        Q("entries without a frequency above 0 have the values of a new entry: %1, the first is number %2");
    const QString belowZero = Q("bands that begin below 0 Hz: %1, the first is number %2");
    const QString lines = Write(Q("a.noi"), "7055000\ta\t10\n0\tb\t10\n10\tc\t100\n20\td\t100\n");
    const QString csv = Write(Q("a.csv"), "Frequency,Bandwidth\n10,100\n,5\n");
    const QString xml = Write(Q("a.xml"), QByteArray(TwoXml).replace("0.5", "0"));
    const std::pair<QString, QStringList> rows[] = {
        {lines, {withoutFrequency.arg(1).arg(2), belowZero.arg(2).arg(3)}},
        {csv, {withoutFrequency.arg(1).arg(2), belowZero.arg(1).arg(1)}},
        {xml, {withoutFrequency.arg(1).arg(2)}},
    };
    NOIFrequencyHandler& handler = Start();
    for (const auto& [path, reasons] : rows) {
        QStringList told;
        for (const QString& reason : reasons)
            told << path + Q(": ") + reason;
        Traces traces;
        EXPECT_TRUE(handler.ReadFile(path));
        EXPECT_EQ(traces.problems, told);
        handler.InsertNewValue(1, 1000, QString());
        handler.UpdateNOIList();
        EXPECT_EQ(traces.problems, told) << "only of a file, and once";
    }
    EXPECT_EQ(Bands(), Q("7053500,7056500;0,0;-499,501;"));
    const QStringList before = Entries();
    Traces traces;
    EXPECT_FALSE(handler.ReadFile(Write(Q("foreign.csv"), "Name,Frequency,Duplex\nA,121.500000,\n")));
    EXPECT_EQ(traces.problems.size(), 1);
    EXPECT_EQ(Entries(), before) << "a table of another program costs nothing";
    EXPECT_FALSE(handler.IsWaitingForFile());
}

TEST_F(NoiListTest, DialogsSaveAndExport) {
    NOIFrequencyHandler& handler = Start();
    handler.SetReadDirectory(Q("/nowhere"));
    Traces traces;
    AnswerDialog(Path(Q("empty")));
    EXPECT_EQ(handler.FileSave(false), QString());
    EXPECT_EQ(handler.GetCurrentFileName(), Q("NoiFrequencies.xml"));
    EXPECT_FALSE(QFile::exists(Q("empty.xml")));
    EXPECT_EQ(traces.problems.size(), 1) << "an empty list is not written, which is told";
    handler.InsertNewValue(7055000, 3000, Q("c"));
    struct {
        QString (*run)(NOIFrequencyHandler&);
        const char* answer;
        const char* written;
        const char* current;
    } const rows[] = {
        {[](NOIFrequencyHandler& h) { return h.FileSave(false); }, "plain", "plain.xml", "plain.xml"},
        {[](NOIFrequencyHandler& h) { return h.FileSave(false); }, "a.noi", "a.noi.xml", "a.noi.xml"},
        {[](NOIFrequencyHandler& h) { return h.FileSave(false); }, "named.xml", "named.xml", "named.xml"},
        {[](NOIFrequencyHandler& h) { return h.FileExport(); }, "table", "table.csv", "named.xml"},
        {[](NOIFrequencyHandler& h) { return h.FileExport(); }, "table.txt", "", "named.xml"},
        {[](NOIFrequencyHandler& h) { return h.FileExport(); }, "", "", "named.xml"},
        {[](NOIFrequencyHandler& h) { return h.FileSave(false); }, "no/folder/x", "", "named.xml"},
        {[](NOIFrequencyHandler& h) { return h.FileExport(); }, "no/folder/x.csv", "", "named.xml"},
        {[](NOIFrequencyHandler& h) { return h.FileImport(); }, "table.csv", "table.csv", "named.xml"},
        {[](NOIFrequencyHandler& h) { return h.FileImport(); }, "", "", "named.xml"},
        {[](NOIFrequencyHandler& h) { return h.FileSave(false); }, "", "", ""},
        {[](NOIFrequencyHandler& h) { return h.FileSave(true); }, nullptr, "", ""},
    };
    for (const auto& row : rows) {
        if (row.answer)
            AnswerDialog(*row.answer ? Path(Q(row.answer)) : QString());
        EXPECT_EQ(row.run(handler), *row.written ? Path(Q(row.written)) : QString()) << row.answer;
        EXPECT_TRUE(!*row.written || Read(Q(row.written)).size() > 30) << row.answer;
        EXPECT_EQ(handler.GetCurrentFileName(), *row.current ? Path(Q(row.current)) : QString());
        EXPECT_EQ(Entries(), QStringList{"7055000|3000|c"}) << row.answer;
    }
    EXPECT_TRUE(traces.texts.contains(Q("EXCEPTION WHILE SAVING NOI FREQUENCIES:")));
    EXPECT_TRUE(traces.texts.contains(Q("EXCEPTION WHILE EXPORTING NOI FREQUENCIES:")));
}

TEST_F(NoiListTest, AFailedSaveLeavesTheOldFileAndIsTold) {
    for (const char* kind : {"noi", "xml", "csv"}) {
        const QString name = Q("list.") + Q(kind);
        NOIFrequencyHandler& handler = Start(qstrcmp(kind, "csv") == 0 ? QString() : name);
        QByteArray lines;
        for (int i = 1; i <= 3000; ++i)
            lines += QByteArray::number(i) + "\tc\t1\n";
        ASSERT_TRUE(handler.ParseNOIFile(Write(Q("many.noi"), lines)));
        Write(name, qstrcmp(kind, "xml") == 0 ? QByteArray(TwoXml) : QByteArray("7\told\t1\n"));
        const QByteArray old = Read(name);
        Traces traces;
        {
            const FullDisk disk(10000);
            EXPECT_FALSE(handler.SaveFile(Path(name))) << kind;
            EXPECT_EQ(traces.problems.size(), 1) << kind;
            EXPECT_TRUE(traces.problems.value(0).contains(Path(name)));
            End();
        }
        EXPECT_EQ(Read(name), old) << kind;
        EXPECT_TRUE(qstrcmp(kind, "csv") == 0 || Remembered() == name) << "the old file is still the list's";
    }
}

TEST_F(NoiListTest, TheEndKeepsWhatAnotherWorkstationSavedMeanwhile) {
    const QByteArray ours = Utf16(Q("7055000.000000\tours\t10.000000\t\n\n"));
    const QByteArray theirs = Utf16(Q("8000000.000000\ttheirs\t10.000000\t\n\n"));
    const struct { bool theyChanged, weChanged; } rows[] = {{false, false}, {true, false}, {true, true}};
    for (const auto& [theyChanged, weChanged] : rows) {
        Write(Q("list.noi"), ours);
        NOIFrequencyHandler& handler = Start(Q("list.noi"));
        if (theyChanged)
            Write(Q("list.noi"), theirs);
        if (weChanged)
            handler.InsertNewValue(9e6, 10, Q("new"));
        const Traces traces;
        End();
        EXPECT_EQ(Read(Q("list.noi")), theyChanged ? theirs : ours);
        EXPECT_EQ(Read(Q("list-2.noi")), weChanged
                                             ? ours + Utf16(Q("9000000.000000\tnew\t10.000000\t\n\n")).mid(2)
                                             : QByteArray("<no such file>"));
        EXPECT_EQ(traces.problems.size(), theyChanged ? 1 : 0);
    }
}

TEST_F(NoiListTest, AFileThatChangesWhileItIsReadIsToldAndKept) {
    QByteArray lines;
    for (int i = 1; i <= 3; ++i)
        lines += QByteArray::number(i) + "\tc\t1\n";
    const QString path = Write(Q("list.noi"), lines);
    NOIFrequencyHandler& handler = Start();
    Recorder recorder; // hears of the first entry before the next is read
    recorder.onUpdate = [&](Observable*, TChangeCode) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::Append) && file.write("4\td\t1\n") > 0);
        recorder.onUpdate = {};
    };
    m_list->AddObserver(&recorder);
    const Traces traces;
    EXPECT_TRUE(handler.ParseNOIFile(path));
    m_list->DeleteObserver(&recorder);
    EXPECT_EQ(traces.problems, QStringList{path + Q(": changed while it was read")});
    EXPECT_TRUE(handler.SaveFile(path));
    EXPECT_TRUE(Read(path).contains("4\td")) << "kept";
}

TEST_F(NoiListTest, HandlerValueAndListEndInAnyOrder) {
    const QByteArray content = Utf16(Q("7055000.000000\tgood\t10.000000\t\n\n"));
    for (int order = 0; order < 6; ++order) {
        m_list = Tree::Instance()->MakeNode(Q("/Lists/NOI"));
        GetOrCreateValue<Value<QString>>(Q("/Lists/NoiDefinition"));
        Write(Q("list.noi"), content);
        Start(Q("list.noi")).AddToFreqStore();
        const auto endValue = [] { Tree::Instance()->GetNode(Q("/Lists"))->DeleteValue(Q("NoiDefinition")); };
        const auto endList = [this] { Tree::Instance()->GetNode(Q("/Lists"))->DeleteNode(m_list); };
        const std::function<void()> steps[][3] = {{endValue, endList, NOIFrequencyHandler::DeleteInstance},
                                                  {endValue, NOIFrequencyHandler::DeleteInstance, endList},
                                                  {endList, endValue, NOIFrequencyHandler::DeleteInstance},
                                                  {endList, NOIFrequencyHandler::DeleteInstance, endValue},
                                                  {NOIFrequencyHandler::DeleteInstance, endValue, endList},
                                                  {NOIFrequencyHandler::DeleteInstance, endList, endValue}};
        for (const auto& step : steps[order])
            step();
        EXPECT_EQ(Read(Q("list.noi")), content) << "a list that has gone is no empty list";
        EXPECT_EQ(Remembered(), Q("list.noi"));
        Tree::Instance()->GetRoot()->DeleteChildren();
    }
    SetUp();
    Traces traces;
    NOIFrequencyHandler& handler = Start();
    EXPECT_EQ(traces.texts, QStringList{"No NOI file loaded"});
    Tree::Instance()->GetNode(Q("/Lists"))->DeleteNode(m_list);
    EXPECT_FALSE(handler.InsertNewValue(1, 2, QString()));
    EXPECT_EQ(traces.texts.last(), Q("AddValue returned invalid value"));
    EXPECT_TRUE(handler.ParseNOIFile(Write(Q("x.noi"), "12\n")));
    EXPECT_EQ(handler.GetItemsRoot(), nullptr);
    // One that was never given a list neither saves nor forgets.
    NOIFrequencyHandler::DeleteInstance();
    CfgCenter::GetAppCfg(ICfg::StartUp).SetString(Q("NOIFrequencies"), Q("list.noi"));
    EXPECT_EQ(NOIFrequencyHandler::Instance()->FileSave(true), QString());
    NOIFrequencyHandler::DeleteInstance();
    EXPECT_EQ(Remembered(), Q("list.noi"));
}

TEST_F(NoiListTest, WhoHearsOfANewListMayEndIt) {
    const QString lines = Write(Q("list.noi"), "12\tc\t1\n");
    const QString xml = Write(Q("list.xml"), TwoXml);
    const QString profiles = Write(Q("profiles.xml"), Profiles);
    for (const QString& path : {lines, xml, profiles}) {
        NOIFrequencyHandler& handler = Start();
        QObject::connect(&handler, &NOIFrequencyHandler::signalNewFileLoaded,
                         [] { NOIFrequencyHandler::DeleteInstance(); });
        AnswerDialog(path);
        EXPECT_EQ(handler.FileOpen(), path);
    }
}

TEST_F(NoiListTest, TheListRegistersWithTheStore) {
    NOIFrequencyHandler& handler = Start();
    const int id = handler.AddToFreqStore();
    auto* definition = dynamic_cast<FrequencyListDefinition*>(FreqStore::Instance().GetDefinition(id));
    ASSERT_NE(definition, nullptr);
    EXPECT_EQ(definition->GetName(), Q("NOI Frequencies"));
    EXPECT_EQ(definition->GetPixmap().size(), QSize(16, 16));
    EXPECT_TRUE(definition->GetAvailable4WideView() && definition->GetAvailable4SimpleView());
    EXPECT_EQ(FreqStore::Instance().GetFrequencies(static_cast<unsigned>(id)), handler.GetMediatorCtrl());
    EXPECT_EQ(handler.GetMediatorCtrl()->GetFreqStoreType(), 4);
    handler.InsertNewValue(7055000, 3000, Q("c"));
    const std::unique_ptr<PixStateVector> line(definition->CreatePixStateVector());
    struct Map : IHasHMap {
        double MapToPixel(double hertz) const override { return (hertz - 7050000) / 100; }
        double MapToFrequency(double pixel) const override { return 7050000 + 100 * pixel; }
    } map;
    line->SetHMapping(&map, 100);
    line->Refresh();
    EXPECT_EQ(line->GetSymbol(), 2);
    EXPECT_EQ((*line)[50].type, 'a');
    EXPECT_EQ((*line)[50].count, 1u);
    EXPECT_FALSE((*line)[36].IsEmpty());
    EXPECT_EQ(line->ItemText(0), Q("c"));
    FreqStore::Instance().RemoveFrequencyListDefinition(id);
}

} // namespace
