#include "interchange/formatlist.h"
#include "tests/interchange/formatfixture.h"

namespace Interchange {

namespace {

struct Row {
    const char* what;
    const char* format;
    const char* text;
    QStringList entries;
    const char* counts = "";
    QStringList problems = {};
    qint64 refused = problems.size();
};

class ReadingFiles : public testing::TestWithParam<Row> {};

TEST_P(ReadingFiles, GivesEntriesAndAnAccountOfTheRest) {
    const Row& row = GetParam();
    const Format* const format =
        FormatOfText(QString::fromUtf8(row.text).remove(QChar(QChar::ByteOrderMark)));
    ASSERT_NE(format, nullptr) << "its content does not tell what it is";
    EXPECT_STREQ(format->id, row.format);
    const ReadText read = readText(*format, row.text);
    EXPECT_EQ(read.failure, QString());
    EXPECT_EQ(read.entries, row.entries);
    EXPECT_EQ(read.counts, QString::fromUtf8(row.counts));
    EXPECT_EQ(read.problems.join(u'\n').toStdString(), row.problems.join(u'\n').toStdString());
    EXPECT_EQ(read.refused, row.refused);
}

const Row Rows[] = {
    {"ChirpWithTonesAndSplit",
     "chirp-csv",
     "\xEF\xBB\xBFLocation,Name,Frequency,Duplex,Offset,Tone,rToneFreq,cToneFreq,DtcsCode,DtcsPolarity,Mode,"
     "TStep,"
     "Skip,Comment,URCALL,RPT1CALL,RPT2CALL\r\n"
     "# my radio\r\n"
     "0,Tower,121.500000,,0.000000,,88.5,88.5,023,NN,AM,5.00,,,,,\r\n"
     "1,,145.600000,-,0.600000,TSQL,88.5,103.5,023,NN,FM,12.50,S,\"DB0XY, \"\"hill\"\"\",,,\r\n"
     "2,,438.725000\r\n"
     "7,Dig,7.0345,split,7.120000,,88.5,88.5,023,NN,CWR,5.00,,,,,\r\n",
     {"121500000|9000|AM|Tower", "145600000|16000|FM|DB0XY, \"hill\"", "438725000|0||2",
      "7034500|500|CW|Dig"},
     "Duplex (2), Location (1), Mode (1), Offset (2), Skip (1), TStep (1), Tone (1), bandwidths from the "
     "mode (3), "
     "cToneFreq (1)"},
    {"ChirpWithWhatIsNoFrequency",
     "chirp-csv",
     "Frequency,Location,rToneFreq\n\"121,5\",1,88.5\n-7,2,88.5\n1e30,3,88.5\n0,4,88.5\n,5,88.5\n7.1,6,88."
     "5\n",
     {"7100000|0||6"},
     "Location (1)",
     {"file:2: \"121,5\" is no frequency", "file:3: \"-7\" is no frequency",
      "file:4: \"1e30\" MHz is above 1 THz", "file:5: \"0\" is no frequency", "file:6: has no frequency"}},
    {"ChirpWithDecimalCommasAndAnEndWithin",
     "chirp-csv",
     "Location,Frequency,Name,rToneFreq\n1,121,500000,Tower,88.5\n2,7.1\n3,145.6,Cal",
     {"7100000|0||2"},
     "Location (1), last line without an end (1)",
     {"file:2: has 5 fields instead of 4", "file:4: is cut: the file ends within it"}},
    {"ChirpWithHeadingsOfAnotherHand",
     "chirp-csv",
     "# mine\rlocation, name, frequency, mode, duplex\r3, Tower, 121.5, Auto,\r",
     {"121500000|0||Tower"},
     "Location (1)"},
    {"ChirpFromASpreadsheet",
     "chirp-csv",
     "Location,Name,Frequency,Duplex,Mode\n  \n0,A,146.52,,\n,,,,\n , ,,\"\",\n1,B,147,,N",
     {"146520000|0||A", "147000000|0|N|B"},
     "last line without an end (1), unknown modes (1)"},
    {"CutWithinACharacter",
     "chirp-csv",
     "Location,Frequency,Duplex,Name\n0,7.1,,A\n1,121.5,,T\xC3",
     {"7100000|0||A"},
     "",
     {"file:3: is cut: the file ends within it"}},
    {"GqrxWithTags",
     "gqrx",
     "# Tag name          ;  color\nUntagged            ; #c0c0c0\nAir                 ; #00ff00\n\n"
     "# Frequency ; Name                     ; Modulation          ;  Bandwidth; Tags\n"
     "   121500000; Guard \xC3\xBC                  ; AM                  ;      10000; Air\n"
     "    98500000; Radio                    ; WFM (stereo)        ;     160000; Untagged\n"
     "    98500000; Radio                    ; WFM (stereo)\n",
     {"121500000|10000|AM|Guard \u00FC", "98500000|160000|FM|Radio"},
     "Mode (1), Tags (1), colours of tags (2)",
     {"file:8: has 3 fields instead of 5"}},
    {"GqrxWithoutTags",
     "gqrx",
     "   145500000; Relay                    ; Narrow FM           ;      10000;\n",
     {"145500000|10000|FM|Relay"}},
    {"GqrxBandPlan",
     "gqrx-bands",
     "# begin, end, mode, step, color, name\n1810000, 2000000, LSB, 100, #80AAFF00, "
     "160m, top\n5,4,,,#80AAFF00,no\n",
     {"1905000|190000|LSB|160m, top"},
     "Color (1), Step (1)",
     {"file:3: is no band"}},
    {"ScannerOfSdrangel",
     "sdrangel",
     "Freq (Hz),Enable,Notes,Channel,Ch BW (Hz),TH (dB),Sq (dB)\n145500000,1,Calling,,12500,-60,\n"
     "118100000,0,\"Tower, north\",2,,,\n"
     "121,5,1,Comma,,,,\n87500000,20500000,\"Broadcast\",1,255,0,0\n118300000,TRUE,Marked,,,,\n118200000,1,"
     "Cut",
     {"145500000|12500||Calling", "118100000|0||Tower, north", "118300000|0||Marked"},
     "Channel (1), Enable (1), TH (1), last line without an end (1)",
     {"file:4: has 8 fields instead of 7", "file:5: \"20500000\" is neither 0 nor 1",
      "file:7: has 3 fields instead of 7"}},
    {"ScannerOfAnOlderSdrangel",
     "sdrangel",
     "Freq (Hz),Enable,Notes\n145500000,1,Calling\n",
     {"145500000|0||Calling"}},
    {"ScannerOfANewerSdrangel",
     "sdrangel",
     "Freq (Hz),Enable,Notes,Delay,Ch BW (Hz)\n145500000,1,Calling,7,12500\n145600000,1,,,1e300\n",
     {"145500000|12500||Calling", "145600000|0||"},
     "Delay (1), bandwidths that are none (1)"},
    {"AnnotationsOfSdrangel",
     "sdrangel-annotations",
     "Start,Width,Text,Show,Red,Green,Blue\n87500000,20500000,Broadcast,1,255,0,0\n1,,,\n"
     "145500000,1,Calling,,12500,-60,\n",
     {"97750000|20500000||Broadcast"},
     "colours (1)",
     {"file:3: has 4 fields instead of 7", "file:4: is no annotation"}},
    {"AnnotationsWithoutColours",
     "sdrangel-annotations",
     "Start,Width,Text,Show\n87500000,20500000,Broadcast,0\n",
     {"97750000|20500000||Broadcast"},
     "Show (1)"},
    {"Fldigi",
     "fldigi",
     "# rfcarrier rig_mode carrier mode usage\n14070000 USB 1000 BPSK31 PSK calling\n7040000 LSB 0 RTTY\n"
     "7.1 USB 0 CW no\n14074000 DATA-U 0 FT8 \xC3\xA4\n14075000 USB 0 FT8 \xC3",
     {"14070000|2700|USB|PSK calling", "7040000|2700|LSB|", "14074000|3000|USB|\u00E4"},
     "Carrier (1), Mode (1), Modem (3), bandwidths from the mode (3)",
     {"file:4: does not begin with a frequency in whole Hz, a mode, a carrier and a modem",
      "file:6: is cut: the file ends within it"}},
    {"KiwiCsv",
     "kiwi-csv",
     "Freq kHz;Mode;Ident;Notes;Extension;Type;PB low;PB high;Offset;DOW;Begin;End;Sig bw\n"
     "198.00;AM;\"BBC \"\"4\"\"\";Droitwich;;T1;-4900;4900;0;MTWTFSS;'0000;'2400;0\n"
     "7850;USB;CHU;\"time; signal\";;T3;300;2700;0;M____S_;'0600;'1800\n"
     "5890;0600-0700;Mo-Fr;D;Radio;D;Eu;/AUT;1;;;\n7850;USB\n",
     {"198000|9800|AM|BBC \"4\" | Droitwich", "7850000|2400|USB|CHU | time; signal"},
     "Begin (1), DOW (1), End (1), PB high (2), PB low (2), Type (2)",
     {"file:4: \"Eu\" is no edge of a pass band", "file:5: has 2 fields instead of 12 or 13"}},
    {"Eibi",
     "eibi",
     "kHz:75;Time(UTC):93;Days:59;ITU:49;Station:201;Lng:49;Target:62;Remarks:135;P:35;Start:60;Stop:60;\n"
     "5890;0600-0700;Mo-Fr;D;Radio \xD6sterreich;D;Eu;/AUT;1;;;\n"
     "9410;2300-0200;irr;G;BBC;E;Af;;1;;;\n"
     "9410;2300;;G;BBC;E;Af;;1;;;\n",
     {"5890000|0||Radio \u00D6sterreich {Time=0600-0700; Days=Mo-Fr}",
      "9410000|0||BBC {Time=2300-0200; Days=irr}"},
     "ITU (2), Language (2), P (2), Remarks (1), Target (2), days in words, taken as daily (1)",
     {"file:4: \"2300\" is no time on air"},
     1},
    {"KiwiJson",
     "kiwi-json",
     "{\"dx\":[\n[198,\"AM\",\"BBC%204\",\"Droit\\nwich\",{\"T1\":1,\"lo\":-4900,\"hi\":4900}],\n"
     "[7850,\"USB\",\"CHU 100% sure\",\"\",{\"T3\":1,\"d0\":66,\"b0\":600,\"e0\":1800,\"o\":25}],\n"
     "[\"x\",\"AM\",\"no\"],\n[121,5,\"AM\",\"Comma\",\"\"],\n"
     "[5000,\"AM\",\"WWV\",\"\",{\"WL\":1,\"lo\":-50}]\n],\"types\":[[1,\"active\"]]}\n",
     {"198000|9800|AM|BBC 4 | Droit wich", "7850000|2400|USB|CHU 100% sure", "5000000|9800|AM|WWV"},
     "Begin (1), DOW (1), End (1), Offset Hz (1), PB high (1), PB low (2), Type (2), WL (1), bandwidths from "
     "the mode (2)",
     {"file:4: \"x\" is no frequency", "file:5: its second field is no mode"}},
    {"SdrPlus",
     "sdrpp",
     "{\"bookmarkDisplayMode\":1,\"lists\":{\"General\":{\"bookmarks\":{\n"
     "\"Guard\":{\"bandwidth\":10000.0,\"frequency\":121500000.0,\"mode\":2,\"notes\":\"all day\"},\n"
     "\"Odd\":{\"bandwidth\":0,\"frequency\":7e6,\"mode\":4865}\n"
     "},\"showOnWaterfall\":true},\"Old\":{\"Radio\":{\"frequency\":98500000,\"mode\":1}}},"
     "\"selectedList\":\"General\"}",
     {"121500000|10000|AM|Guard", "7000000|0||Odd", "98500000|150000|FM|Radio"},
     "List (1), Mode (1), bandwidths from the mode (1), notes (1), unknown modes (1)"},
    {"SdrPlusExport",
     "sdrpp",
     "{\"bookmarks\":{\"A\":{\"frequency\":7e6,\"mode\":6},\"B\":{\"mode\":6}}}",
     {"7000000|2800|LSB|A"},
     "bandwidths from the mode (1)",
     {"file:1: \"B\" has no frequency"}},
    {"SdrSharp",
     "sdrsharp",
     "<?xml version=\"1.0\"?>\n<ArrayOfMemoryEntry xmlns:xsd=\"http://www.w3.org/2001/XMLSchema\">\n"
     "  <MemoryEntry>\n    <IsFavourite>true</IsFavourite><Name>A &amp; B</Name><GroupName>Air</GroupName>\n"
     "    "
     "<Frequency>\n121500000\n</Frequency><Squelch>12</Squelch><DetectorType>AM</DetectorType><Shift>0</"
     "Shift>\n"
     "    <FilterBandwidth>10000</FilterBandwidth>\n  </MemoryEntry>\n  "
     "<MemoryEntry><Name>no</Name></MemoryEntry>\n"
     "</ArrayOfMemoryEntry>\n",
     {"121500000|10000|AM|A & B"},
     "GroupName (1), IsFavourite (1), Squelch (1)",
     {"file:10: has no frequency"}},
};

struct BadFile {
    const char* format;
    std::string text;
    const char* failure;
};

TEST(ReadingFilesOfOthers, TellsWhatIsNoneOfThem) {
    const std::string deep(10000, '[');
    const BadFile files[] = {
        {"sdrpp", "{\"bookmarks\":{\"A\":{\"frequency\":7e6}", "file:1: the JSON text is cut"},
        {"sdrpp", "{\"bookmarks\":\n" + deep, "file:2: is nested deeper than 64"},
        {"kiwi-json", "{\"dx\":[\n[1,2],\n[1 2]]}",
         "file:3: is no JSON: Missing a comma or ']' after an array element."},
        {"sdrsharp", "<ArrayOfMemoryEntry>\n<MemoryEntry><Name>A", "file:2: "},
        {"chirp-csv", "Location,Name\n1,2\n", "file:1: has no column \"Frequency\""},
        {"chirp-csv", "Location,Frequency,Name\n1,7.1,\"a", "file:2: a quoted cell does not end"},
        {"json", "[{\"frequency\":118,\"name\":\"A\"},\n{\"frequency\":121.5,\"name\":\"Guard\"}]",
         "file:2: the frequencies are no hertz: all are below 30000, some have decimals, and the member "
         "\"name\" is of another program"},
        {"jsonl", "{\"frequency\":121.5,\"mode\":\"AM\"}", "file:1: the frequencies are no hertz"},
    };
    for (const BadFile& file : files) {
        const ReadText read =
            readText(*FormatOfId(QString::fromLatin1(file.format)), QByteArray::fromStdString(file.text));
        EXPECT_TRUE(read.failure.startsWith(QString::fromLatin1(file.failure)))
            << file.format << ": " << read.failure.toStdString();
    }
    for (const char* text : {"", "print('<ArrayOfMemoryEntry>')", "frequency,Freq\n1,2\n",
                             "7055000\tCALLING\t2700\tUSB\n", // lines of our own
                             "7055 LSB 2700 Net\n",           // rows of somebody's spreadsheet, in kHz
                             "145500;Relay;FM;12500;hill\n", "7055;Net;LSB;2700;\n", "7055 \"<kml\"\n"})
        EXPECT_EQ(FormatOfText(QString::fromUtf8(text)), nullptr) << text;
}

INSTANTIATE_TEST_SUITE_P(Formats, ReadingFiles, testing::ValuesIn(Rows),
                         [](const auto& row) { return std::string(row.param.what); });

struct OnAirRow {
    const char* schedule; ///< times;days;first;last;what it is valid for, 1 when that is not said
    const char* at;
    bool isOnAir;
};

TEST(ReadingSchedules, KeepsWhatIsOnAir) {
    const OnAirRow rows[] = {
        {"0600-0700;;;", "2026-11-22T06:00:00Z", true},
        {"0600-0700;;;", "2026-11-22T07:00:00Z", false},
        {"0600-0700;;;", "2026-11-22T07:30:00+01:00", true}, // a time of any zone
        {"0000-2400;;;", "2026-11-22T23:59:00Z", true},
        {"2300-0200;;;", "2026-11-22T01:59:00Z", true},
        {"2300-0200;;;", "2026-11-22T02:00:00Z", false},
        {"2300-0200;Sa;;", "2026-11-22T01:00:00Z", true}, // Sunday, begun on Saturday
        {"2300-0200;Sa;;", "2026-11-21T01:00:00Z", false},
        {"2300-0200;Sa;;", "2026-11-21T23:30:00Z", true},
        {"0600-0700;Mo-Fr;;", "2026-11-22T06:30:00Z", false},
        {"0600-0700;Fr-Mo;;", "2026-11-22T06:30:00Z", true},
        {"0600-0700;1245;;", "2026-11-24T06:30:00Z", true},
        {"0600-0700;1245;;", "2026-11-25T06:30:00Z", false},
        {"0600-0700;SaSu;;", "2026-11-22T06:30:00Z", true},
        {"0600-0700;alt;;", "2026-11-22T06:30:00Z", true},
        {"0600-0700;;0111;0103;6", "2026-11-22T06:30:00Z", true}, // November to March
        {"0600-0700;;0111;0103;6", "2026-02-28T06:30:00Z", true},
        {"0600-0700;;0103;0111;6", "2026-11-22T06:30:00Z", false},
        {"0600-0700;;0104;2211;6", "2026-11-22T06:30:00Z", true}, // the last day
        {"0600-0700;;1511;;6", "2026-01-10T06:30:00Z", true},     // for the rest of the season
        {"0600-0700;;1511;;6", "2026-11-14T06:30:00Z", false},
        {"0600-0700;;;1511;6", "2026-11-14T06:30:00Z", true},
        {"0600-0700;;;1511;6", "2026-11-16T06:30:00Z", false},
        {"0600-0700;;0103;0111;1", "2026-11-22T06:30:00Z", true}, // every year, since that one
        {"0600-0700;;;;8", "2026-11-22T06:30:00Z", false},        // inactive
    };
    for (const OnAirRow& row : rows) {
        const QStringList parts = QString::fromLatin1(row.schedule).split(QLatin1Char(';'));
        const QString eibi =
            QStringLiteral("kHz:75;Time(UTC):93;Days:59;ITU:49\n"
                           "5890;%1;%2;D;Name;D;Eu;;%5;%3;%4;\n")
                .arg(parts[0], parts[1], parts[2], parts[3], parts.value(4, QStringLiteral("1")));
        ReadOptions options;
        options.onAirAt = QDateTime::fromString(QString::fromLatin1(row.at), Qt::ISODate);
        EXPECT_EQ(readText(EibiSchedule, eibi.toUtf8(), options).entries.size(), row.isOnAir ? 1 : 0)
            << row.schedule << " at " << row.at;
    }
}

TEST(ReadingSchedules, OfLabelsKeepsWhatIsOnAir) {
    const QByteArray texts[] = {
        "Freq kHz;Mode;Ident;Notes;Extension;Type;PB low;PB high;Offset;DOW;Begin;End;Sig bw\n"
        "198.00;AM;Always;;;T1;;;0;MTWTFSS;'0000;'2400;0\n"
        "7850;USB;Mondays;;;T1;;;0;M______;'0600;'1800;0\n"
        "9410;AM;Nights;;;T1;;;0;MTWTFSS;'2200;'0500;0\n",
        "{\"dx\":[[198,\"AM\",\"Always\",\"\",{\"T1\":1}],"
        "[7850,\"USB\",\"Mondays\",\"\",{\"d0\":64,\"b0\":600,\"e0\":1800}],"
        "[9410,\"AM\",\"Nights\",\"\",{\"b0\":2200,\"e0\":500}]]}"};
    const std::pair<const char*, QStringList> times[] = {
        {"2026-11-23T07:00:00Z", {QStringLiteral("Always"), QStringLiteral("Mondays")}},
        {"2026-11-24T07:00:00Z", {QStringLiteral("Always")}},
        {"2026-11-24T23:00:00Z", {QStringLiteral("Always"), QStringLiteral("Nights")}}};
    for (const QByteArray& text : texts) {
        for (const auto& [at, names] : times) {
            ReadOptions options;
            options.onAirAt = QDateTime::fromString(QString::fromLatin1(at), Qt::ISODate);
            const ReadText read = readText(*FormatOfText(QString::fromUtf8(text)), text, options);
            QStringList onAir;
            for (const FreqStoreXml::FrequencyStoreEntry& entry : read.records)
                onAir << entry.GetComment();
            EXPECT_EQ(onAir, names) << at;
        }
    }
}

} // namespace

} // namespace Interchange
