#include "tests/freqstorexml/sampledata.h"

#include <QRandomGenerator>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>
#include <QtEndian>

using namespace FreqStoreXml;

namespace {

FrequencyStoreList ListOf(const FrequencyStoreEntry& entry) {
    FrequencyStoreList list;
    list.SetUsage(FrequencyStoreList::TargetList);
    list.AppendFrequencyStoreEntry(entry);
    list.AppendFrequencyStoreEntry(FrequencyStoreEntry());
    return list;
}

TEST(Records, HaveTheFilesLayoutAndLeaveEmptyMembersOut) {
    FrequencyStoreList list = ListOf(FullEntry());
    EXPECT_EQ(list.GetXmlString().toStdString(), R"(<?xml version="1.0" encoding="UTF-8"?>
<FrequencyStoreList Version="1" Usage="TargetList">
 <FrequencyStoreEntry ID="17" Type="p">
  <Comment>Harbour</Comment>
  <FFM_Settings>
   <Frequency>7055000.5</Frequency>
   <IFBandwidth>3100</IFBandwidth>
   <AnalogDemod>USB</AnalogDemod>
   <Level>-12.25</Level>
   <Detail>
    <BFOFrequency>1500</BFOFrequency>
   </Detail>
  </FFM_Settings>
  <Profile_Data>
   <SignalClass>voice</SignalClass>
   <ProfileID>P1</ProfileID>
   <TransmissionSystem>analogue</TransmissionSystem>
   <ProfileName>Port control</ProfileName>
   <Priority>1</Priority>
   <ThreatClass>not classified</ThreatClass>
  </Profile_Data>
  <Detection>
   <StartTime>2024-05-31T12:00:00.000001Z</StartTime>
   <StopTime>2024-05-31T12:01:00Z</StopTime>
  </Detection>
  <ResultList>
   <Reason>LOCKED</Reason>
   <ResultTime>2024-05-31T12:00:00Z</ResultTime>
   <Confidence>87</Confidence>
  </ResultList>
 </FrequencyStoreEntry>
 <FrequencyStoreEntry/>
</FrequencyStoreList>
)");
}

TEST(Records, AreEmptyAtFirstAndGiveZerosThen) {
    const FrequencyStoreEntry entry;
    EXPECT_FALSE(entry.HasData());
    EXPECT_EQ(entry.GetFFM_Settings().GetFrequency().GetValue(), 0.0);
    EXPECT_EQ(entry.GetFFM_Settings().GetLevel(), 0.0);
    EXPECT_FALSE(entry.GetFFM_Settings().HasLevel());
    EXPECT_EQ(entry.GetResultList().GetConfidence(), 0);
    EXPECT_EQ(entry.GetDetection().GetStartTimeUsec(), 0);
    EXPECT_FALSE(entry.GetDetection().GetStopTime().isValid());
    EXPECT_FALSE(entry.GetFFM_Settings().GetDetail().AnyData());
}

TEST(Records, TakeNoNumberThatIsNotFinite) {
    Frequency frequency;
    frequency.SetValue(1.0);
    frequency.SetValue(std::numeric_limits<double>::infinity());
    EXPECT_FALSE(frequency.HasData());
    EXPECT_EQ(frequency.GetValue(), 0.0);
}

TEST(Records, KeepAZeroApartFromNothing) {
    FrequencyStoreEntry entry;
    entry.GetFFM_Settings().GetIFBandwidth().SetValue(0.0);
    FrequencyStoreEntry read;
    ASSERT_TRUE(read.SetXmlString(entry.GetXmlString()));
    EXPECT_TRUE(read.GetFFM_Settings().GetIFBandwidth().HasData());
    EXPECT_FALSE(read.GetFFM_Settings().GetFrequency().HasData());
}

TEST(Records, ComeBackFromXmlWithTheirTexts) {
    FrequencyStoreList read;
    ASSERT_TRUE(read.SetXmlString(ListOf(AwkwardEntry()).GetXmlString()));
    EXPECT_EQ(read.GetUsage(), FrequencyStoreList::TargetList);
    ASSERT_EQ(read.GetFrequencyStoreEntry().size(), 2);
    const FrequencyStoreEntry& entry = read.GetFrequencyStoreEntry().at(0);
    EXPECT_EQ(entry.GetID(), AwkwardText);
    EXPECT_EQ(entry.GetComment(), AwkwardText);
    EXPECT_EQ(FFM_Settings::AnalogDemodToName(entry.GetFFM_Settings().GetAnalogDemod()), AwkwardText);
    EXPECT_EQ(read.GetXmlString(), ListOf(AwkwardEntry()).GetXmlString());
}

TEST(Records, ReplaceCharactersThatXmlCannotHold) {
    FrequencyStoreEntry entry;
    entry.SetComment(QStringLiteral("a\x02") + QChar(0) + QChar(0xDC00) + QStringLiteral("b"));
    FrequencyStoreEntry read;
    ASSERT_TRUE(read.SetXmlString(entry.GetXmlString()));
    EXPECT_EQ(read.GetComment(), QString::fromUtf8("a\uFFFD\uFFFD\uFFFDb"));
}

TEST(Records, GoThroughQtsStreamsTheSame) {
    const FrequencyStoreList list = ListOf(AwkwardEntry());
    QString text;
    QXmlStreamWriter writer(&text);
    writer.writeStartElement(QStringLiteral("Wrapper"));
    list.GetXml(writer);
    writer.writeTextElement(QStringLiteral("Next"), QStringLiteral("n"));
    writer.writeEndElement();
    ASSERT_FALSE(writer.hasError());

    QXmlStreamReader reader(text);
    ASSERT_TRUE(reader.readNextStartElement());
    ASSERT_TRUE(reader.readNextStartElement());
    FrequencyStoreList read;
    read.ProcessXml(reader);
    // Qt's writer leaves a CR in a text as it is, so that CR LF comes back as LF.
    EXPECT_EQ(read.GetXmlString().toStdString(),
              list.GetXmlString().replace(QStringLiteral("&#13;\n"), QStringLiteral("\n")).toStdString());
    ASSERT_TRUE(reader.readNextStartElement());
    EXPECT_EQ(reader.name(), QStringLiteral("Next"));
}

TEST(Records, RefuseOtherTextsAndTellTheLogger) {
    const std::pair<const char*, const char*> rows[] = {
        {"", "1: there is no XML element in the file"},
        {"7055000\t3100\tname", "1: this is not XML: there is text outside the root element"},
        {"<Other/>", "1: the root element is \"Other\", not \"FrequencyStoreList\""},
        {"<FrequencyStoreList Version='2'/>",
         "1: FrequencyStoreList has version 2, and only versions before 2 can be read"},
        {"<FrequencyStoreList>\n<FrequencyStoreEntry><FFM_Settings>\n<Frequency>7 MHz</Frequency>",
         "3: Frequency \"7 MHz\" is not a number"},
    };
    for (const auto& [text, reason] : rows) {
        QString logged;
        FrequencyStoreList::SetLogger([&](const QString& message) { logged = message; });
        FrequencyStoreList list = ListOf(FullEntry());
        EXPECT_FALSE(list.SetXmlString(QString::fromUtf8(text)));
        EXPECT_EQ(logged.toStdString(), reason);
        EXPECT_FALSE(list.HasData());
    }
    FrequencyStoreList::ResetLogger();
}

TEST(Records, PassOverWhatANewerVersionAdds) {
    FrequencyStoreList list;
    ASSERT_TRUE(list.SetXmlString(QStringLiteral(
        "<?xml version='1.0' encoding='UTF-16'?><FrequencyStoreList Version='1.7' Usage='Satellites' x='y'>"
        "<Legend><Comment>l</Comment></Legend><FrequencyStoreEntry Colour='red'><Comment>a<b>c</b>d</Comment>"
        "<FFM_Settings><Frequency unit='Hz'>1<i>2</i>3</Frequency></FFM_Settings></FrequencyStoreEntry>"
        "</FrequencyStoreList>")));
    EXPECT_EQ(list.GetUsage(), FrequencyStoreList::Unspecified);
    ASSERT_EQ(list.GetFrequencyStoreEntry().size(), 1);
    EXPECT_EQ(list.GetFrequencyStoreEntry()[0].GetComment(), QStringLiteral("ad"));
    EXPECT_EQ(list.GetFrequencyStoreEntry()[0].GetFFM_Settings().GetFrequency().GetValue(), 13.0);
}

TEST(Records, ValidateOnlyWhenAsked) {
    FrequencyStoreEntry entry;
    Detection detection;
    detection.SetStartTimeUsec(2);
    detection.SetStopTimeUsec(1);
    entry.SetDetection(detection);
    EXPECT_FALSE(entry.Check());
    FrequencyStoreEntry read;
    EXPECT_TRUE(read.SetXmlString(entry.GetXmlString()));
    EXPECT_FALSE(read.SetXmlString(entry.GetXmlString(), true));
    read.SetValidate(true);
    EXPECT_FALSE(read.SetBinary(entry.GetBinary()));
}

TEST(Records, MergeWhatIsSet) {
    FrequencyStoreEntry entry = FullEntry();
    FrequencyStoreEntry other;
    other.SetComment(QStringLiteral("new"));
    other.GetFFM_Settings().GetIFBandwidth().SetValue(9000);
    ASSERT_TRUE(entry.MergeRGObject(other));
    FrequencyStoreEntry expected = FullEntry();
    expected.SetComment(QStringLiteral("new"));
    expected.GetFFM_Settings().GetIFBandwidth().SetValue(9000);
    EXPECT_EQ(entry.GetXmlString(), expected.GetXmlString());

    EXPECT_FALSE(entry.MergeRGObject(FullResult()));
    FrequencyStoreList list = ListOf(FullEntry());
    ASSERT_TRUE(list.MergeRGObject(list));
    EXPECT_EQ(list.GetFrequencyStoreEntry().size(), 4);
}

TEST(Records, ResetToNothing) {
    FrequencyStoreEntry entry = FullEntry();
    entry.Reset();
    EXPECT_FALSE(entry.HasData());
    EXPECT_EQ(entry.GetBinary(), FrequencyStoreEntry().GetBinary());
}

TEST(Records, ComeBackFromBinaries) {
    FrequencyStoreList list = ListOf(AwkwardEntry());
    list.SetObjectType(42);
    for (const bool compressed : {false, true}) {
        FrequencyStoreList read;
        ASSERT_TRUE(compressed ? read.SetCompressedBinary(list.GetCompressedBinary())
                               : read.SetBinary(list.GetBinary()));
        EXPECT_EQ(read.GetXmlString(), list.GetXmlString());
        EXPECT_EQ(read.GetObjectType(), 42u);
    }
    DetectionResultList other;
    EXPECT_FALSE(other.SetBinary(list.GetBinary()));
}

TEST(Records, SurviveDamagedBinaries) {
    const QByteArray whole = ListOf(FullEntry()).GetBinary();
    for (qsizetype length = 0; length < whole.size(); ++length) {
        FrequencyStoreList list;
        EXPECT_FALSE(list.SetBinary(whole.left(length))) << length;
        EXPECT_FALSE(list.HasData());
    }
    QRandomGenerator random(3);
    for (int i = 0; i < 5000; ++i) {
        QByteArray bytes = whole;
        bytes[random.bounded(bytes.size())] = static_cast<char>(random.bounded(256));
        FrequencyStoreList list;
        if (list.SetBinary(bytes)) {
            FrequencyStoreList again;
            EXPECT_TRUE(again.SetXmlString(list.GetXmlString()));
        }
    }
}

TEST(Records, DoNotAllocateWhatACompressedBinaryOnlyClaims) {
    QByteArray bytes = FrequencyStoreList().GetCompressedBinary();
    qToBigEndian<quint32>(0xFFFFFFF0u, bytes.data() + 4);
    FrequencyStoreList list;
    EXPECT_FALSE(list.SetCompressedBinary(bytes));
    EXPECT_FALSE(list.SetCompressedBinary("RGZ1"));
}

TEST(Usages, HaveNames) {
    for (int usage = 0; usage < 5; ++usage) {
        const auto value = static_cast<FrequencyStoreList::Usage>(usage);
        EXPECT_EQ(FrequencyStoreList::NameToUsage(FrequencyStoreList::UsageToName(value)), value);
    }
    EXPECT_EQ(FrequencyStoreList::UsageToName(FrequencyStoreList::Noi), QStringLiteral("NOI"));
    EXPECT_EQ(FrequencyStoreList::NameToUsage(QStringLiteral("noi")), FrequencyStoreList::Unspecified);
    FrequencyStoreList list;
    list.SetUsage(99);
    EXPECT_EQ(list.GetUsage(), FrequencyStoreList::Unspecified);
}

TEST(AnalogDemods, GiveBackEveryName) {
    for (const QString& name :
         {QString(), QStringLiteral("NONE"), QStringLiteral("AM"), QStringLiteral("my mode 7")})
        EXPECT_EQ(FFM_Settings::AnalogDemodToName(FFM_Settings::NameToAnalogDemod(name)), name);
}

} // namespace
