#include "controls/frequencystore/files/linereader.h"
#include "tests/frequencystore/targets/targetfixture.h"

#include <QDir>
#include <QFile>
#include <QStringEncoder>

namespace {

class ReaderTest : public TargetFixture {};

struct LinesRow {
    const char* name; ///< of the file; tells its kind
    QByteArray bytes;
    const char* targets; ///< frequency, bandwidth, comment, demodulation, priority and threat class of each
    const char* problems = ""; ///< behind the path of the file
};

const LinesRow LinesRows[] = {
    {"all-fields.sfl", "7055000\tcalling\t2700\tUSB\tx\ty\tz\n", "7055000|2700|calling|USB|1|not classified"},
    {"all-fields.ltl", "7055000\t2700\tcalling\tUSB\tp\thostile\t4\n", "7055000|2700|calling|USB|4|hostile"},
    {"short-line-repeats.ltl", "7055000\t2700\ta\tUSB\tp\thostile\t4\n12\n13\t99\n",
     "7055000|2700|a|USB|4|hostile\n12|2700|a|USB|4|hostile\n13|99|a|USB|4|hostile"},
    {"short-line-repeats.sfl", "7055000\ta\t2700\tUSB\n12\n",
     "7055000|2700|a|USB|1|not classified\n12|2700|a|USB|1|not classified"},
    {"short-first-line.ltl", "12\n", "12|0|||1|not classified"},
    {"one-character-is-skipped.ltl", "1\n\n22\n", "22|0|||1|not classified"},
    {"one-character-before-crlf.ltl", "1\r\n22\t5\r\n", "22|5|||1|not classified"},
    {"empty-comment-shifts-nothing.ltl", "7\t8\t\tAM\tp\thostile\t2\n", "7|8||AM|2|hostile"},
    {"empty-fields-empty-what-was.ltl", "7\t8\tc\tAM\tp\thostile\t2\n9\t1\t\t\t\t\t3\n",
     "7|8|c|AM|2|hostile\n9|1|||3|"},
    {"tab-at-the-end.ltl", "7\t8\tc\n9\t1\t\n", "7|8|c||1|not classified\n9|1|c||1|not classified"},
    {"sixteen-fields.ltl", "7\t8\tc\tAM\tp\th\t2\t8\t9\t10\t11\t12\t13\t14\t15\t16\t17\n", "7|8|c|AM|2|h"},
    {"no-final-newline.ltl", "9\t1\n118450000", "9|1|||1|not classified\n118450000|1|||1|not classified",
     ":2: the last line has no line end; the file may be cut"},
    {"returns.ltl", "7\t8\tc\r9\t1\td\r", "7|8|c||1|not classified\n9|1|d||1|not classified"},
    {"all-line-ends.ltl", "7\t8\ta\r9\t1\tb\r\n\n10\t2\tc\n\r\r\nx\t3\td\r\n",
     "7|8|a||1|not classified\n9|1|b||1|not classified\n10|2|c||1|not classified\n0|3|d||1|not classified",
     ":7: \"x\" is no frequency; 0 is taken"},
    {"control-z.ltl", "7\t8\tc\r\n\x1A", "7|8|c||1|not classified"},
    {"control-z-ends-the-line.ltl", "7\t8\tc\x1A\x1A", "7|8|c||1|not classified"},
    {"control-characters.ltl",
     "7\t8\ta\x01\x1A"
     "b\x7F\n9\t1\tc\f\n",
     "7|8|ab||1|not classified\n9|1|c\f||1|not classified", ":1: control characters are left out"},
    {"windows.ltl", "7\t8\tc\r\n9\t1\t\xC4rger \x80\r\n",
     "7|8|c||1|not classified\n9|1|Ärger €||1|not classified",
     ":2: is not UTF-8 from here on; all is read as Windows-1252"},
    {"marked-twice.ltl",
     "\xEF\xBB\xBF\xEF\xBB\xBF"
     "7\t8\tc\n",
     "7|8|c||1|not classified"},
    {"marked-noise.ltl",
     "\xEF\xBB\xBF"
     "7\t8\t\x01\x02\x03\x04\x05\x06\x07\x08\x0E\x0F\n",
     "7|8|||1|not classified", ":1: control characters are left out"},
    {"impossible.ltl", "-5\t8\tc\n1e12\t1\td\n1.5e12\n",
     "-5|8|c||1|not classified\n1000000000000|1|d||1|not classified\n1500000000000|1|d||1|not classified",
     ":1: the frequency -5 is below 0 Hz\n:3: the frequency 1500000000000 is above 1 THz"},
    {"blanks-around-numbers.ltl", " 7 \t 8.5 \tc\n", "7|8.5|c||1|not classified"},
    {"exponents.ltl", "7.055e6\t2.7E3\n", "7055000|2700|||1|not classified"},
    {"bad-numbers.ltl", "7\t8\tc\tAM\tp\th\t2\nx\tnan\td\tFM\tp\th\t2.5\n1,5\n",
     "7|8|c|AM|2|h\n0|0|d|FM|0|h\n0|0|d|FM|0|h",
     ":2: \"x\" is no frequency; 0 is taken\n:2: \"nan\" is no bandwidth; 0 is taken\n:2: \"2.5\" is no "
     "priority; 0 is taken\n:3: \"1,5\" is no frequency; 0 is taken"},
    {"utf8.ltl", "7\t8\tÄrger\n", "7|8|Ärger||1|not classified"},
    {"utf8-mark.ltl",
     "\xEF\xBB\xBF"
     "7\t8\tc\n",
     "7|8|c||1|not classified"},
    {"empty.ltl", "", ""},
    {"sfl-wins.ltl.sfl", "7\tc\t8\n", "7|8|c||1|not classified"},
    {"sfl-wins.sfl.xml", "7\tc\t8\n", "7|8|c||1|not classified"},
    {"sfl-anywhere.sfl.bak", "7\tc\t8\n", "7|8|c||1|not classified"},
    {"ltl-before-xml.ltl.xml", "7\t8\tc\n", "7|8|c||1|not classified"},
};

/// The texts between line ends, each behind `head`.
QStringList Behind(const QString& head, const char* lines) {
    QStringList texts = Q(lines).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (QString& text : texts)
        text.prepend(head);
    return texts;
}

TEST_F(ReaderTest, LinesBecomeTargets) {
    for (const LinesRow& row : LinesRows) {
        Traces traces;
        const QString path = Write(Q(row.name), row.bytes);
        EXPECT_TRUE(Parse(path)) << row.name;
        QStringList lines = Targets(); // no line says what a profile says
        for (QString& line : lines) {
            EXPECT_TRUE(line.endsWith(Q("||||"))) << line.toStdString();
            line.chop(4);
        }
        EXPECT_EQ(lines.join(QLatin1Char('\n')).toStdString(), row.targets) << row.name;
        EXPECT_EQ(traces.problems, Behind(path, row.problems)) << row.name;
        EXPECT_FALSE(Controller().IsSuspended());
        EXPECT_EQ(Controller().size(), static_cast<unsigned long>(lines.size())) << row.name;
    }
}

TEST_F(ReaderTest, EncodingsAreKnownByTheirMarkOrTheirZeros) {
    const QString text = Q("7055000\t2700\tÄrger €😀\tUSB\r\n12\n");
    const QStringList expected{Q("7055000|2700|Ärger €😀|USB|1|not classified||||"),
                               Q("12|2700|Ärger €😀|USB|1|not classified||||")};
    using enum QStringConverter::Encoding;
    using Flag = QStringConverter::Flag;
    for (const auto& [encoding, flag] :
         std::initializer_list<std::pair<QStringConverter::Encoding, Flag>>{{Utf8, Flag::WriteBom},
                                                                            {Utf16LE, Flag::WriteBom},
                                                                            {Utf16BE, Flag::WriteBom},
                                                                            {Utf32LE, Flag::WriteBom},
                                                                            {Utf32BE, Flag::WriteBom},
                                                                            {Utf8, Flag::Default},
                                                                            {Utf16LE, Flag::Default},
                                                                            {Utf16BE, Flag::Default}}) {
        QStringEncoder encoder(encoding, flag);
        const QByteArray bytes = encoder.encode(text);
        Traces traces;
        EXPECT_TRUE(Parse(Write(Q("marked.ltl"), bytes)));
        EXPECT_EQ(Targets(), expected) << static_cast<int>(encoding);
        EXPECT_TRUE(traces.problems.isEmpty()) << traces.problems.join(QLatin1Char('\n')).toStdString();
    }
}

TEST_F(ReaderTest, FilesLargerThanOneChunkReadTheSame) {
    QStringEncoder encoder(QStringConverter::Utf16LE, QStringConverter::Flag::WriteBom);
    QString text;
    constexpr int Lines = 40000;
    for (int i = 0; i < Lines; ++i)
        text += Q("%1\t100\tñ%1\r\n").arg(i + 10);
    EXPECT_TRUE(Parse(Write(Q("long.ltl"), encoder.encode(text))));
    const QStringList targets = Targets();
    ASSERT_EQ(targets.size(), Lines);
    for (const int i : {0, 13000, 13107, 26214, Lines - 1})
        EXPECT_EQ(targets[i], Q("%1|100|ñ%1||1|not classified||||").arg(i + 10));
}

TEST_F(ReaderTest, WhatComesLateInAFileCountsAsWhatComesEarly) {
    constexpr int Chunk = 512 * 1024;
    const QByteArray first = "7\t8\t\xC3\xA4\n";
    const QByteArray filler = QByteArray("9\t1\tx\n").repeated(Chunk / 6);
    const auto targetsOf = [&](const QByteArray& bytes, const QStringList& problems) {
        Traces traces;
        const QString path = Write(Q("late.ltl"), bytes);
        EXPECT_TRUE(Parse(path));
        QStringList told;
        for (const QString& problem : problems)
            told << path + problem;
        EXPECT_EQ(traces.problems, told);
        return Targets();
    };
    const int line = Chunk / 6 + 2;
    EXPECT_EQ(targetsOf(first + filler + "5\t6\t\xE4\n",
                        {Q(":%1: is not UTF-8 from here on; all is read as Windows-1252").arg(line)})
                  .first(),
              Q("7|8|Ã¤||1|not classified||||"));
    EXPECT_EQ(
        targetsOf(first + filler + "5\t6\ta\x02\n", {Q(":%1: control characters are left out").arg(line)})
            .last(),
        Q("5|6|a||1|not classified||||"));
    // Both halves of a line end, and of a character, at a chunk's edge.
    for (const QByteArray& edge : {QByteArray("\r\n"), QByteArray("\xC3\xA4\n")}) {
        QByteArray bytes = first + filler;
        bytes += "8\t2\t" + QByteArray(2 * Chunk - 1 - bytes.size() - 4, 'y') + edge + "5\t6\tz\r";
        ASSERT_EQ(bytes[2 * Chunk - 1], edge[0]);
        EXPECT_EQ(targetsOf(bytes, {}).size(), Chunk / 6 + 3) << edge.toHex().toStdString();
        EXPECT_EQ(Targets().first(), Q("7|8|ä||1|not classified||||"));
    }
    Traces traces;
    EXPECT_FALSE(Parse(Write(Q("late.ltl"), first + filler + QByteArray(1, '\0'))));
    EXPECT_FALSE(traces.texts.contains(Q("File cannot be opened: ") + Path(Q("late.ltl")))) << "it could be";
}

TEST_F(ReaderTest, ATruncatedCharacterAtTheEndIsTold) {
    QStringEncoder encoder(QStringConverter::Utf16LE, QStringConverter::Flag::WriteBom);
    QByteArray bytes = encoder.encode(Q("7\t8\tab\n9\t1\tcd"));
    bytes.chop(1);
    for (const QByteArray& content : {bytes, QByteArray("7\t8\tab\n9\t1\tc\xC3")}) {
        Traces traces;
        const QString path = Write(Q("cut.ltl"), content);
        EXPECT_TRUE(Parse(path));
        EXPECT_EQ(Targets().size(), 2);
        ASSERT_EQ(traces.problems.size(), 1);
        EXPECT_TRUE(traces.problems[0].startsWith(path + QLatin1Char(':')))
            << traces.problems[0].toStdString();
        EXPECT_TRUE(traces.problems[0].endsWith(Q("file ends within a character")));
    }
}

TEST_F(ReaderTest, AnEndlessLineKeepsItsHeadAndIsTold) {
    QByteArray bytes = "7\t8\t";
    bytes += QByteArray(4 << 20, 'x');
    bytes += "\n9\t1\tnext\n";
    Traces traces;
    const QString path = Write(Q("long-line.ltl"), bytes);
    EXPECT_TRUE(Parse(path));
    ASSERT_EQ(m_list->ChildCount(), 2u);
    const auto* comment = m_list->Children()[0]->FindOwn<Value<QString>>(Names::Intern(Q("comment")));
    EXPECT_EQ(comment->GetValue().size(), LineReader::MaxLine - 4);
    EXPECT_EQ(Targets()[1], Q("9|1|next||1|not classified||||"));
    EXPECT_EQ(traces.problems, QStringList{path + Q(":1: line is too long; its end is ignored")});
}

TEST_F(ReaderTest, ManyProblemsAreCountedNotTold) {
    Traces traces;
    const QString path = Write(Q("bad.ltl"), QByteArray("xx\n").repeated(1000));
    EXPECT_TRUE(Parse(path));
    EXPECT_EQ(Targets().size(), 1000);
    EXPECT_EQ(traces.problems.size(), 201);
    EXPECT_EQ(traces.problems.last(), path + Q(": 800 further problems"));
}

TEST_F(ReaderTest, WhatCannotBeReadIsToldAndLeavesTheList) {
    AddTarget(1);
    Controller().ForceUpdateNow();
    const QStringList before = Targets();
    QDir().mkpath(Path(Q("folder.ltl")));
    QDir().mkpath(Path(Q("folder")));
    for (const char* kind : {"ltl", "sfl", "xml", "csv", "txt"})
        ASSERT_TRUE(QFile::link(Q("/dev/zero"), Path(Q("zero.") + Q(kind))));
    Write(Q("nul.ltl"), QByteArray("7\t8\tab\0cd\n", 10));
    Write(Q("garbage.sfl"), QByteArray("\x7f"
                                       "ELF\x02\x01\x01\x00\x00\x90\x85\xff\xfe\x00",
                                       14));
    Write(Q("picture.ltl"), QByteArray("\x89PNG\r\n\x1A\n\0\0\0\rIHDR", 16));
    Write(Q("noise.ltl"), QByteArray("\x01\x02\x03\x04 7\n").repeated(9));
    Write(Q("foreign.csv"), "Name,Frequency,Duplex\nA,121.500000,\n");
    Write(Q("cut.xml"), "<?xml version=\"1.0\"?>\n<FrequencyStoreList Version=\"1\"><FrequencyStoreEntry>\n");
    Write(Q("root.xml"), "<Other/>");
    Write(Q("version.xml"), "<FrequencyStoreList Version=\"2\"/>");
    Write(Q("no-columns.csv"), "\n");
    Write(Q("bad-cell.csv"), "Frequency,Bandwidth\n7,8\nx,1\n");
    struct Row {
        const char* name;
        const char* reason;
    };
    const Row rows[] = {{"missing.ltl", "no such file"},
                        {"missing.xml", ""},
                        {"missing.csv", ""},
                        {"missing.txt", "no such file"},
                        {"", "no regular file"},
                        {"folder", "no regular file"},
                        {"folder.ltl", "no regular file"},
                        {"zero.ltl", "no regular file"},
                        {"zero.sfl", "no regular file"},
                        {"zero.xml", ""},
                        {"zero.csv", ""},
                        {"zero.txt", "no regular file"},
                        {"nul.ltl", "no text file"},
                        {"garbage.sfl", ""},
                        {"picture.ltl", "no text file"},
                        {"noise.ltl", "no text file"},
                        {"foreign.csv", "CHIRP"},
                        {"cut.xml", ":"},
                        {"root.xml", "Other"},
                        {"version.xml", "ersion"},
                        {"no-columns.csv", ""},
                        {"bad-cell.csv", ":3"}};
    for (const Row& row : rows) {
        Traces traces;
        m_refusal.clear();
        const QString path = Path(Q(row.name));
        EXPECT_FALSE(Parse(path)) << row.name;
        const QString told = traces.problems.join(QLatin1Char('\n')) + m_refusal;
        EXPECT_TRUE(told.contains(path)) << row.name << ": " << told.toStdString();
        EXPECT_TRUE(told.contains(Q(row.reason))) << row.name << ": " << told.toStdString();
        EXPECT_EQ(Targets(), before) << row.name;
        EXPECT_FALSE(Controller().IsSuspended()) << row.name;
        EXPECT_EQ(Controller().size(), 1u) << row.name;
    }
}

TEST_F(ReaderTest, AFileOfNoKnownKindEmptiesTheListAndIsTold) {
    for (const char* name : {"list.txt", "LIST.LTL", "list.SFL", "list.Xml", "plain"}) {
        AddTarget(1);
        Controller().ForceUpdateNow();
        Traces traces;
        const QString path = Write(Q(name), "7\t8\tc\n");
        EXPECT_FALSE(Parse(path)) << name;
        EXPECT_TRUE(Targets().isEmpty()) << name;
        ASSERT_FALSE(traces.texts.isEmpty());
        EXPECT_EQ(traces.texts[0], Q("File cannot be converted"));
        EXPECT_EQ(traces.places[0], Q("listviewshandler:1069"));
        EXPECT_EQ(traces.problems, QStringList{path + Q(": is of no known kind of file")});
        // The list goes on: it shows that it is empty, and takes what comes.
        EXPECT_EQ(Controller().size(), 0u);
        AddTarget(2);
        Controller().ForceUpdateNow();
        EXPECT_EQ(Controller().size(), 1u);
    }
    Traces traces;
    EXPECT_FALSE(Parse(Path(Q("nothing.ltl"))));
    EXPECT_EQ(traces.texts.value(0), Q("File cannot be opened: ") + Path(Q("nothing.ltl")));
    EXPECT_EQ(traces.places.value(0), Q("listviewshandler:897"));
}

TEST_F(ReaderTest, XmlAndCsvEntriesBecomeTargets) {
    const char xml[] = R"(<?xml version="1.0" encoding="UTF-8"?>
<FrequencyStoreList Version="1" Usage="TargetList" Newer="x">
  <FrequencyStoreEntry><Comment>a &amp; b</Comment>
    <FFM_Settings><Frequency>7055000.5</Frequency><IFBandwidth>2700</IFBandwidth><AnalogDemod>USB</AnalogDemod></FFM_Settings>
    <Profile_Data><Priority>3</Priority><ThreatClass>hostile</ThreatClass><ProfileID>P1</ProfileID><ProfileName>n</ProfileName>
      <SignalClass>s</SignalClass><TransmissionSystem>t</TransmissionSystem></Profile_Data><Unknown/>
  </FrequencyStoreEntry>
  <FrequencyStoreEntry><FFM_Settings><Frequency>1</Frequency></FFM_Settings></FrequencyStoreEntry>
</FrequencyStoreList>)";
    EXPECT_TRUE(Parse(Write(Q("list.xml"), xml))) << m_refusal.toStdString();
    ASSERT_EQ(Targets().size(), 2);
    EXPECT_EQ(Targets()[0], Q("7055000.5|2700|a & b|USB|3|hostile|P1|n|s|t"));
    EXPECT_TRUE(Targets()[1].startsWith(Q("1|0||"))) << Targets()[1].toStdString();
    EXPECT_TRUE(Targets()[1].endsWith(Q("|0||undefined|undefined|undefined|undefined")));

    for (const char* csv : {"Comment,Frequency,Other,Priority,Bandwidth,Demodulation,ThreatClass\n"
                            "\"a, \"\"b\"\"\",7055000.5,x,3,2700,USB,hostile\n",
                            "\xEF\xBB\xBF"
                            "Frequency;Bandwidth;Comment;Demodulation;Priority;ThreatClass\r\n"
                            "7055000.5;2700;\"a, \"\"b\"\"\";USB;3;hostile\r\n"}) {
        EXPECT_TRUE(Parse(Write(Q("list.csv"), csv))) << m_refusal.toStdString();
        EXPECT_EQ(
            Targets(),
            QStringList{Q("7055000.5|2700|a, \"b\"|USB|3|hostile|undefined|undefined|undefined|undefined")});
    }
}

QByteArray Object(const char* name, const char* priority, const char* threat = "T") {
    return QByteArray("<OBJECTENTRY><PRIORITY>") + priority + "</PRIORITY><OBJECT_NAME>" + name +
           "</OBJECT_NAME><THREATCLASS>" + threat + "</THREATCLASS></OBJECTENTRY>";
}

QByteArray Set(const char* frequency, const char* bandwidth, const char* modulation = "AM") {
    QByteArray set = "<PROFILEPARAMETERSETTBL>";
    if (bandwidth)
        set += QByteArray("<NOMINALBANDWIDTH>") + bandwidth + "</NOMINALBANDWIDTH>";
    if (frequency)
        set += QByteArray("<NOMINALFREQUENCY>") + frequency + "</NOMINALFREQUENCY>";
    if (modulation)
        set += QByteArray("<MODULATIONTYPE>") + modulation + "</MODULATIONTYPE>";
    return set + "</PROFILEPARAMETERSETTBL>";
}

QByteArray Profile(const QByteArray& content) {
    return "<PROFILETBL><PROFILEID>P1</PROFILEID><PROFILENAME>name</PROFILENAME><SIGNALCLASS>class</"
           "SIGNALCLASS>" +
           content + "</PROFILETBL>";
}

struct ProfileRow {
    const char* what;
    QByteArray content; ///< of the root
    const char* targets;
    const char* problems = ""; ///< behind the path of the file
};

const ProfileRow ProfileRows[] = {
    {"the best priority's names are joined",
     Profile(Object("A", "3", "x") + Object("B", "2", "y") + Object("C", "2", "z") + Set("7", "8")),
     "7|8|B, C|AM|2|y|P1|name|class|undefined"},
    {"a worse object later changes nothing",
     Profile(Object("A", "2", "x") + Object("B", "3", "y") + Set("7", "8")),
     "7|8|A|AM|2|x|P1|name|class|undefined"},
    {"priority 0 ends the object scan",
     Profile(Object("A", "3") + Object("B", "0") + Object("C", "1") + Set("7", "8")),
     "7|8|A|AM|3|T|P1|name|class|undefined"},
    {"priority 11 ends the object scan",
     Profile(Object("A", "3") + Object("B", "11") + Object("C", "1") + Set("7", "8")),
     "7|8|A|AM|3|T|P1|name|class|undefined"},
    {"text as priority ends the object scan", Profile(Object("A", "high") + Object("C", "1") + Set("7", "8")),
     "7|8||AM|11||P1|name|class|undefined"},
    {"priorities are cut to whole numbers",
     Profile(Object("A", "0.9") + Set("7", "8")) + Profile(Object("B", "10.9") + Set("7", "8")),
     "7|8||AM|11||P1|name|class|undefined\n7|8|B|AM|10|T|P1|name|class|undefined"},
    {"an object without priority is passed over",
     Profile("<OBJECTENTRY><OBJECT_NAME>A</OBJECT_NAME></OBJECTENTRY>" + Object("B", "4") + Set("7", "8")),
     "7|8|B|AM|4|T|P1|name|class|undefined"},
    {"a profile without objects has priority 11", Profile(Set("7", "8")),
     "7|8||AM|11||P1|name|class|undefined"},
    {"missing parts are undefined",
     "<PROFILETBL>" + Object("A", "1") + Set("7", nullptr, nullptr) + "</PROFILETBL>",
     "7|0|A||1|T|undefined|undefined|undefined|undefined"},
    {"a set without frequency is no record", Profile(Set(nullptr, "8") + Set("9", "10")),
     "9|10||AM|11||P1|name|class|undefined"},
    {"a bad bandwidth ends this profile only",
     Profile(Set("1", "2") + Set("3", "wide") + Set("5", "6")) + Profile(Set("7", "8")),
     "1|2||AM|11||P1|name|class|undefined\n7|8||AM|11||P1|name|class|undefined"},
    {"a bad frequency ends this profile only",
     Profile(Set("1", "2") + Set("", "4") + Set("5", "6")) + Profile(Set("7", "8")),
     "1|2||AM|11||P1|name|class|undefined\n7|8||AM|11||P1|name|class|undefined"},
    {"other elements may stand between",
     Profile(Object("A", "2") + "<X/>" + Set("1", "2") + "<!-- c --><Y/>" + Object("B", "1") + Set("3", "4")),
     "1|2|B|AM|1|T|P1|name|class|undefined\n3|4|B|AM|1|T|P1|name|class|undefined"},
    {"an impossible frequency is told and kept", Profile("\n" + Set("-1", "2")),
     "-1|2||AM|11||P1|name|class|undefined", ":2: the frequency -1 is below 0 Hz"},
    {"profiles are found at any depth", "<A><B>" + Profile(Set("1", "2")) + "</B></A>",
     "1|2||AM|11||P1|name|class|undefined"},
};

TEST_F(ReaderTest, ProfileTablesBecomeTargets) {
    for (const ProfileRow& row : ProfileRows) {
        Traces traces;
        const QByteArray bytes = "<?xml version=\"1.0\" encoding=\"UTF-8\"?><ROOT>" + row.content + "</ROOT>";
        const QString path = Write(Q("profiles.xml"), bytes);
        EXPECT_TRUE(m_parser->ParseProfileTable(path)) << row.what;
        EXPECT_EQ(Targets().join(QLatin1Char('\n')).toStdString(), row.targets) << row.what;
        EXPECT_EQ(traces.problems, Behind(path, row.problems)) << row.what;
        EXPECT_EQ(traces.texts.value(0), QString::fromUtf8(bytes)) << "the whole text is traced";
        EXPECT_EQ(traces.places.value(0), Q("listviewshandler:608"));
        EXPECT_FALSE(Controller().IsSuspended());
    }
}

TEST_F(ReaderTest, UnreadableProfileTablesYieldNothingAndAreTold) {
    QByteArray deep;
    for (int i = 0; i < 100000; ++i)
        deep += "<a>";
    const std::pair<const char*, QByteArray> rows[] = {
        {"malformed", "<ROOT>" + Profile(Set("1", "2"))},
        {"empty", ""},
        {"binary", QByteArray("\0\1\2\xff", 4)},
        {"entities", "<!DOCTYPE R [<!ENTITY a \"1\">]><R>" + Profile(Set("&a;", "2")) + "</R>"},
        {"deep", deep},
        {"no profiles", "<FrequencyStoreList Version=\"2\"/>"},
    };
    for (const auto& [what, bytes] : rows) {
        AddTarget(1);
        Traces traces(0);
        const QString path = Write(Q("profiles.xml"), bytes);
        EXPECT_FALSE(m_parser->ParseProfileTable(path)) << what;
        EXPECT_TRUE(Targets().isEmpty()) << what;
        ASSERT_EQ(traces.problems.size(), 1) << what;
        EXPECT_TRUE(traces.problems[0].startsWith(path + QLatin1Char(':'))) << what;
        EXPECT_FALSE(Controller().IsSuspended()) << what;
    }
    AddTarget(1);
    Traces traces;
    for (const QString& path : {Path(Q("none.xml")), m_folder.path()})
        EXPECT_FALSE(m_parser->ParseProfileTable(path));
    EXPECT_EQ(traces.problems.size(), 2);
    EXPECT_EQ(traces.texts.value(0), Q("File cannot be opened: ") + Path(Q("none.xml")));
    EXPECT_EQ(traces.places.value(0), Q("listviewshandler:615"));
    EXPECT_EQ(Targets().size(), 1) << "a file that cannot be opened changes nothing";
}

} // namespace
