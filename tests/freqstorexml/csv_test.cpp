#include "host/freqstorexml/filehandling.h"
#include "host/freqstorexml/liststreams.h"
#include "tests/freqstorexml/sampledata.h"

#include <QBuffer>

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
            [&](FrequencyStoreEntry& entry) { entries.append(entry); });
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
    const auto entries = ParseCsv("Comment,Type\n\"a \"\"b\"\", c\r\nd\",\"\"\n\"\"\"\"\"\",x\n");
    ASSERT_EQ(entries.size(), 2);
    EXPECT_EQ(entries[0].GetComment(), QStringLiteral("a \"b\", c\r\nd"));
    EXPECT_EQ(entries[0].GetType(), QString());
    EXPECT_EQ(entries[1].GetComment(), QStringLiteral("\"\""));
}

TEST(Csv, IsRefusedWithLineAndColumn) {
    const std::pair<QByteArray, const char*> rows[] = {
        {"", "f.csv:1: the file is empty"},
        {"a,b\n1,2\n", "f.csv:1: the first line names no column that is known"},
        {"Type,Type\n", "f.csv:1: the column Type is there twice"},
        {"Frequency,Type\n1,a\n\n7 MHz,b\n", "f.csv:4: Frequency \"7 MHz\" is not a number"},
        {"Frequency;Bandwidth\n1;2,5\n", "f.csv:2: Bandwidth \"2,5\" is not a number"},
        {"Comment,Frequency\n\"a\nb\",1\nc,inf\n", "f.csv:4: Frequency \"inf\" is not a number"},
        {"Type,Comment\na,b,c\n", "f.csv:2: there are 3 cells, but only 2 columns"},
        {"Type,Comment\na,\"b\n", "f.csv:2: a quoted cell does not end"},
        {"Type,Comment\na,5\" disc\"\n", "f.csv:2: there is a quote within a cell that is not quoted"},
        {"Type,Comment\na,\"b\"c\n", "f.csv:2: there is text behind the quotes of a cell"},
        {"Type,Comment\na,\xE4\n", "f.csv:2: this is not UTF-8 text"},
        {QByteArray("\xFF\xFET\0y\0", 6), "f.csv:1: this is not UTF-8 text"},
        {"Type" + QByteArray(2000, ','), "f.csv:1: a row has more than 1024 cells"},
        {QByteArray(40 * 1024 * 1024, 'x'), "f.csv:1: one piece of text is larger than 16 MiB"},
    };
    for (const auto& [bytes, error] : rows)
        EXPECT_EQ(ErrorOf([&] { ParseCsv(bytes); }), error);
    EXPECT_EQ(ErrorOf([] { ParseCsv("Type\n", static_cast<ListType>(9)); }), "there is no list type 9");
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
