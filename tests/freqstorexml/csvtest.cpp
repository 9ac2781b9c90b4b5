#include "host/freqstorexml/csvoptions.h"
#include "host/freqstorexml/filehandling.h"
#include "host/freqstorexml/liststreams.h"
#include "tests/freqstorexml/sampledata.h"
#include "tests/support/traces.h"

#include <QBuffer>
#include <QStringEncoder>

using namespace FreqStoreXml;

namespace {

using ListType = FrequencyStoreListHelper::ListType;

QByteArray WriteCsv(const QVector<FrequencyStoreEntry>& entries, ListType type) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    FrequencyStoreListWriter writer(buffer, true, type);
    writer.Begin(FrequencyStoreList::Unspecified);
    for (const FrequencyStoreEntry& entry : entries)
        writer.Append(entry);
    writer.Commit();
    return buffer.data();
}

QVector<FrequencyStoreEntry> ParseCsv(QByteArray bytes, ListType type = FrequencyStoreListHelper::Targets) {
    QVector<FrequencyStoreEntry> entries;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    ReadCsv(buffer, QStringLiteral("f.csv"), type,
            [&](const FrequencyStoreEntry& entry) { entries.append(entry); });
    return entries;
}

struct Layout {
    const char* name;
    ListType type;
    const char* text;
};

class CsvLayouts : public testing::TestWithParam<Layout> {};

TEST_P(CsvLayouts, HoldTheListsColumns) {
    const Layout& layout = GetParam();
    EXPECT_EQ(WriteCsv({FullEntry(), FrequencyStoreEntry()}, layout.type).toStdString(), layout.text);
    EXPECT_EQ(WriteCsv(ParseCsv(layout.text, layout.type), layout.type).toStdString(), layout.text);
    const QByteArray awkward = WriteCsv({AwkwardEntry()}, layout.type);
    EXPECT_EQ(WriteCsv(ParseCsv(awkward, layout.type), layout.type), awkward);
}

INSTANTIATE_TEST_SUITE_P(
    Csv, CsvLayouts,
    testing::Values(
        Layout{"Detections", FrequencyStoreListHelper::Detections,
               "ID,Frequency,Bandwidth,Level,StartTime,StopTime,Type,Comment\r\n"
               "17,7055000.5,3100,-12.25,2024-05-31T12:00:00.000001Z,2024-05-31T12:01:00Z,p,Harbour\r\n"
               ",,,,,,,\r\n"},
        Layout{"Targets", FrequencyStoreListHelper::Targets,
               "Frequency,Bandwidth,Comment,Demodulation,Type,Priority,ThreatClass,ProfileID,ProfileName,"
               "SignalClass,TransmissionSystem\r\n"
               "7055000.5,3100,Harbour,USB,p,1,not classified,P1,Port control,voice,analogue\r\n"
               ",,,,,,,,,,\r\n"},
        Layout{"SearchResults", FrequencyStoreListHelper::SearchResults,
               "Frequency,Bandwidth,Comment,Demodulation,Type,Reason,ResultTime,Confidence\r\n"
               "7055000.5,3100,Harbour,USB,p,LOCKED,2024-05-31T12:00:00Z,87\r\n"
               ",,,,,,,\r\n"},
        Layout{"Noi", FrequencyStoreListHelper::NoiFrequencies,
               "Frequency,Bandwidth,Comment,Type\r\n7055000.5,3100,Harbour,p\r\n,,,\r\n"}),
    [](const auto& row) { return row.param.name; });

TEST(Csv, OfNoParticularListHoldsEverything) {
    const auto type = FrequencyStoreListHelper::XmlList;
    const auto entries = ParseCsv(WriteCsv({AwkwardEntry(), FullEntry()}, type), type);
    ASSERT_EQ(entries.size(), 2);
    EXPECT_EQ(entries[0].GetXmlString(), AwkwardEntry().GetXmlString());
    EXPECT_EQ(entries[1].GetXmlString(), FullEntry().GetXmlString());
}

TEST(Csv, IsReadInManySpellings) {
    const char* rows[] = {
        "Frequency,Comment\n7055,a b\n",
        "Frequency,Comment\r\n7055,a b",
        "\xEF\xBB\xBF\"Frequency\",\"Comment\"\n\"7055\",\"a b\"\n",
        "Comment;Frequency\na b;7055\n",
        "Colour, Comment ,x,Frequency\nred,a b,\"1\n2\", 7055.0 \n",
        "\n\nFrequency,Comment,Bandwidth\n\n7055,a b\n\n",
        "Frequency,Comment\r7055,a b\r",
        "\r\rComment;Frequency\r\n\ra b;7055\n\r",
        ("\xEF\xBB\xBF\xEF\xBB\xBF"
         "Frequency,Comment\n7055,a b\n"),
        "Frequency,Comment\r\n7055,a b\r\n\x1A",
        "Frequency,Comment\r\n7055,a b\x1A\x1A",
        "Frequency,Comment,\r\n7055,a b,\r\n",
    };
    for (const char* text : rows) {
        const auto entries = ParseCsv(text);
        ASSERT_EQ(entries.size(), 1) << text;
        EXPECT_EQ(entries[0].GetFFM_Settings().GetFrequency().GetValue(), 7055.0) << text;
        EXPECT_EQ(entries[0].GetComment(), QStringLiteral("a b")) << text;
        EXPECT_FALSE(entries[0].GetFFM_Settings().GetIFBandwidth().HasData()) << text;
    }
}

TEST(Csv, KeepsWhatStandsWithinQuotes) {
    const auto entries = ParseCsv("Comment,Type,Frequency\n\"a \"\"b\"\", c\r\nd\",\"\"\n\"\"\"\"\"\",x\n");
    ASSERT_EQ(entries.size(), 2);
    EXPECT_EQ(entries[0].GetComment(), QStringLiteral("a \"b\", c\r\nd"));
    EXPECT_EQ(entries[0].GetType(), QString());
    EXPECT_EQ(entries[1].GetComment(), QStringLiteral("\"\""));
}

TEST(Csv, RowsEndAnywhereInTheBytes) {
    // The carriage return of the second row is the last byte that is read at once, its line feed the next.
    const QByteArray head = "Frequency,Comment\r\n1,";
    const QByteArray bytes =
        head + QByteArray(256 * 1024 - head.size() - 1, 'x') + "\r\n2,\"a\rb\r\nc\"\r3,d";
    const auto entries = ParseCsv(bytes);
    ASSERT_EQ(entries.size(), 3);
    EXPECT_EQ(entries[1].GetComment(), QStringLiteral("a\rb\r\nc"));
    EXPECT_EQ(entries[2].GetComment(), QStringLiteral("d"));
}

TEST(Csv, IsConvertedFromOtherEncodings) {
    const QString text = QStringLiteral("Frequency,Comment\r\n7055,first\r\n7056,\u20ac\u00c4\r\n");
    const auto encoded = [&](QStringConverter::Encoding encoding, QStringConverter::Flag flag) {
        return QByteArray(QStringEncoder(encoding, flag).encode(text));
    };
    using enum QStringConverter::Encoding;
    using enum QStringConverter::Flag;
    const std::pair<QByteArray, QString> rows[] = {
        {encoded(Utf8, Default), QString()},
        {"Frequency,Comment\r\n7055,first\r\n7056,\x80\xC4\r\n",
         QStringLiteral("f.csv:3: is not UTF-8 from here on; all is read as Windows-1252")},
        {encoded(Utf16LE, WriteBom), QStringLiteral("f.csv:1: is not UTF-8, and is read all the same")},
        {encoded(Utf16BE, WriteBom), QStringLiteral("f.csv:1: is not UTF-8, and is read all the same")},
        {encoded(Utf16LE, Default), QStringLiteral("f.csv:1: is not UTF-8, and is read all the same")},
        {encoded(Utf16BE, Default), QStringLiteral("f.csv:1: is not UTF-8, and is read all the same")},
    };
    for (const auto& [bytes, told] : rows) {
        const Traces traces(0);
        const auto entries = ParseCsv(bytes);
        ASSERT_EQ(entries.size(), 2) << bytes.toHex().toStdString();
        EXPECT_EQ(entries[1].GetComment(), QStringLiteral("\u20ac\u00c4"));
        EXPECT_EQ(traces.problems, told.isEmpty() ? QStringList() : QStringList{told});
    }
}

TEST(Csv, TellsWhatIsDoubtfulAndReadsIt) {
    const std::pair<const char*, QStringList> rows[] = {
        {"Frequency,Comment\n7055,a\n-5,b\n2e12,c\n1e12,d\n",
         {QStringLiteral("f.csv:3: the frequency -5 is below 0 Hz"),
          QStringLiteral("f.csv:4: the frequency 2000000000000 is above 1 THz")}},
        {"Frequency,Comment\n7055,a\n70",
         {QStringLiteral(
             "f.csv:3: the last row has only 1 of 2 cells and no line end; the file may be cut")}},
        {"Frequency,Comment\n7055,a\n70\n", {}},
        {"Frequency,Comment\n7055,a\n70,b", {}},
        // Hertz are hertz where all columns are ours, and where there are whole numbers only.
        {"Frequency,Comment\n121.5,a\n", {}},
        {"Frequency,Colour\n7055,a\n", {}},
        {"Frequency,Colour\n7055.5,a\n77500,b\n", {}},
    };
    for (const auto& [text, told] : rows) {
        const Traces traces(0);
        EXPECT_EQ(ParseCsv(text).size(), QByteArray(text).trimmed().count('\n')) << text;
        EXPECT_EQ(traces.problems, told) << text;
    }
}

/// Writes CSV for spreadsheets while it lives.
struct SpreadsheetSafe {
    SpreadsheetSafe() { CsvOptions::SetSpreadsheetSafe(true); }
    ~SpreadsheetSafe() { CsvOptions::SetSpreadsheetSafe(false); }
};

TEST(Csv, ForSpreadsheetsHoldsNoFormulaAndReadsBack) {
    const char* const texts[] = {"=1+1", "+49 30",   "-5",    "@SUM(A1)", "\t=1", "\r=1",
                                 "'",    "''=1",     "'a",    "plain",    "a=1",  " =1",
                                 "\"=1", "=\"a,b\"", "-;\n'", "",         "=",    "\xC3\xA4="};
    QVector<FrequencyStoreEntry> entries;
    for (const char* text : texts) {
        FrequencyStoreEntry entry = FullEntry(); // whose level is negative
        entry.SetComment(QString::fromUtf8(text));
        entry.GetProfile_Data().SetThreatClass(QString::fromUtf8(text));
        entries.append(entry);
    }
    const ListType type = FrequencyStoreListHelper::XmlList;
    const QByteArray plain = WriteCsv(entries, type);
    QByteArray safe;
    {
        const SpreadsheetSafe option;
        safe = WriteCsv(entries, type);
    }
    EXPECT_TRUE(safe.left(safe.indexOf('\r')).endsWith(",ApostropheBeforeFormula"));
    EXPECT_TRUE(safe.contains(",-12.25,")) << "numbers are as they were";
    for (const char* formula : {",=", ",+", ",-5", ",@", ",\"=", ",\"\t", ",\"\r", ",\"-"})
        EXPECT_TRUE(plain.contains(formula) && !safe.contains(formula)) << formula;
    for (const QByteArray& bytes : {plain, safe}) {
        const auto read = ParseCsv(bytes, type);
        ASSERT_EQ(read.size(), entries.size());
        for (qsizetype i = 0; i < read.size(); ++i)
            EXPECT_EQ(read[i].GetXmlString(), entries[i].GetXmlString()) << texts[i];
    }
    // Texts of files without the mark keep their apostrophes.
    EXPECT_EQ(ParseCsv("Frequency,Comment\n1,'=a\n")[0].GetComment(), QStringLiteral("'=a"));
}

TEST(Csv, IsRefusedWithLineAndColumn) {
    const std::pair<QByteArray, const char*> rows[] = {
        {"", "f.csv:1: the file is empty"},
        {"a,b\n1,2\n", "f.csv:1: there is no column \"Frequency\""},
        {"freq,Bandwidth\n1,2\n", "f.csv:1: there is no column \"Frequency\""},
        {"Freq (Hz),Enable,Notes\n1,2,3\n",
         "f.csv:1: this is a table of SDRangel (column \"Freq (Hz)\"): there is no column \"Frequency\""},
        {"Location,Name,Frequency,Duplex,Offset,Tone\n0,A,121.500000,,0,\n",
         "f.csv:1: this is a table of CHIRP (column \"Duplex\"): its frequencies are no hertz"},
        {"Frequency,Colour\n121,red\n118.1,blue\n119.1,blue\n",
         "f.csv:3: the frequencies are no hertz: all are below 30000, some have decimals, and the column "
         "\"Colour\" is of another program"},
        {"Type,Type\n", "f.csv:1: the column Type is there twice"},
        {"Frequency,Type\n1,a\n\n7 MHz,b\n", "f.csv:4: Frequency \"7 MHz\" is not a number"},
        {"Frequency;Bandwidth\n1;2,5\n", "f.csv:2: Bandwidth \"2,5\" is not a number"},
        {"Comment,Frequency\n\"a\nb\",1\nc,inf\n", "f.csv:4: Frequency \"inf\" is not a number"},
        {"Frequency,Comment\n1,b,c\n", "f.csv:2: there are 3 cells, but only 2 columns"},
        {"Frequency,Comment\n1,\"b\n", "f.csv:2: a quoted cell does not end"},
        {"Frequency,Comment\r1,b\r2,\"b\r", "f.csv:3: a quoted cell does not end"},
        {"Frequency,Comment\n1,5\" disc\"\n", "f.csv:2: there is a quote within a cell that is not quoted"},
        {"Frequency,Comment\n1,\"b\"c\n", "f.csv:2: there is text behind the quotes of a cell"},
        {"\xEF\xBB\xBF"
         "Frequency,Comment\n1,\xE4\n",
         "f.csv:2: this is not UTF-8 text"},
        {QByteArray("Frequency\n1\n\0\n", 14), "f.csv:3: is no text file: it holds zero bytes"},
        {"Type" + QByteArray(2000, ','), "f.csv:1: a row has more than 1024 cells"},
        {QByteArray(40 * 1024 * 1024, 'x'), "f.csv:1: one piece of text is larger than 16 MiB"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(ErrorOf([&row] { ParseCsv(row.first); }), row.second);
    EXPECT_EQ(ErrorOf([] { ParseCsv("Frequency\n", static_cast<ListType>(9)); }), "there is no list type 9");
}

class CsvFiles : public FileTest {};

TEST_F(CsvFiles, GiveTheListTheUsageOfItsType) {
    const std::pair<ListType, FrequencyStoreList::Usage> rows[] = {
        {FrequencyStoreListHelper::Detections, FrequencyStoreList::SearchResults},
        {FrequencyStoreListHelper::Targets, FrequencyStoreList::TargetList},
        {FrequencyStoreListHelper::SearchResults, FrequencyStoreList::SearchResults},
        {FrequencyStoreListHelper::NoiFrequencies, FrequencyStoreList::Noi},
        {FrequencyStoreListHelper::XmlList, FrequencyStoreList::Unspecified},
    };
    const QString path = Write("a.csv", "Frequency,Comment\n1,a\n2,b\n");
    for (const auto& [type, usage] : rows) {
        FrequencyStoreList list;
        list.SetUsage(4);
        EXPECT_TRUE(FileHandling().ImportCSV(path, list, type));
        EXPECT_EQ(list.GetUsage(), usage);
        EXPECT_EQ(list.GetFrequencyStoreEntry().size(), 2);
    }
}

TEST_F(CsvFiles, AreRefusedBeforeAnybodyGivesUpAList) {
    const std::pair<QByteArray, const char*> rows[] = {
        {"Frequency,Comment\n1,a\n", ""},
        {"Name,Frequency,Duplex\na,121.5,\n", "CHIRP"},
        {"Frequency,Colour\n121.5,red\n", "no hertz"},
        {"Frequency,Comment\n1,\"a\n", ":2: a quoted cell does not end"},
    };
    for (const auto& [bytes, reason] : rows) {
        const Traces traces;
        const QString path = Write("a.csv", bytes);
        const QString told = FileHandling::WhyNotReadable(path);
        EXPECT_TRUE(*reason ? told.startsWith(path) && told.contains(QLatin1String(reason)) : told.isEmpty())
            << told.toStdString();
        EXPECT_EQ(traces.texts + traces.problems, QStringList()) << "it is a mere look";
    }
    EXPECT_NE(FileHandling::WhyNotReadable(Path("none.csv")), QString());
}

TEST_F(CsvFiles, TellImpossibleFrequenciesInXmlToo) {
    const Traces traces(0);
    const QString path = Write("a.xml", "<FrequencyStoreList Version=\"1\"><FrequencyStoreEntry/>"
                                        "<FrequencyStoreEntry><FFM_Settings><Frequency>-5</Frequency>"
                                        "</FFM_Settings></FrequencyStoreEntry></FrequencyStoreList>");
    FrequencyStoreList list;
    FileHandling().ImportXml(path, list);
    EXPECT_EQ(list.GetFrequencyStoreEntry().value(1).GetFFM_Settings().GetFrequency().GetValue(), -5);
    EXPECT_EQ(traces.problems,
              QStringList{path + QStringLiteral(": entry 2: the frequency -5 is below 0 Hz")});
}

TEST_F(CsvFiles, LongerThanABufferComeBackRowByRow) {
    FrequencyStoreList list;
    for (int i = 0; i < 20'000; ++i) {
        FrequencyStoreEntry entry;
        entry.GetFFM_Settings().GetFrequency().SetValue(i + 0.25);
        entry.SetComment(QStringLiteral("\"%1\"\n").arg(i).repeated(i % 7));
        list.AppendFrequencyStoreEntry(entry);
    }
    const auto type = FrequencyStoreListHelper::NoiFrequencies;
    FileHandling().ExportFrequencyStoreList(true, Path("a.csv"), list, type);
    FrequencyStoreList read;
    FileHandling().ImportFrequencyStoreList(true, Path("a.csv"), read, type);
    list.SetUsage(FrequencyStoreList::Noi);
    EXPECT_EQ(read.GetXmlString(), list.GetXmlString());
}

} // namespace
