#include "interchange/comment.h"
#include "interchange/formatlist.h"
#include "interchange/recordmembers.h"
#include "tests/interchange/formatfixture.h"

#include <random>

namespace Interchange {

namespace {

/// A file of a format that comes back byte for byte when all that it says is kept.
struct Sample {
    const char* format;
    const char* text;
};
const Sample Samples[] = {
    {"chirp-csv",
     "Location,Name,Frequency,Duplex,Offset,Tone,rToneFreq,cToneFreq,DtcsCode,DtcsPolarity,RxDtcsCode,"
     "CrossMode,Mode,TStep,Skip,Power,Comment,URCALL,RPT1CALL,RPT2CALL,DVCODE\r\n"
     "0,DB0XY,145.600000,-,0.600000,TSQL,88.5,103.5,023,NN,023,Tone->Tone,NFM,12.50,S,50W,\"hill, "
     "north\",,,,\r\n"
     "1,Dig,7.034500,split,7.120000,,88.5,88.5,023,NN,023,Tone->Tone,CWR,5.00,,,,,,,\r\n"
     "40,Net,7.100000,,0.000000,,88.5,88.5,023,NN,023,Tone->Tone,LSB,5.00,,,,,,,\r\n"
     "41,Second,7.110000,,0.000000,,88.5,88.5,023,NN,023,Tone->Tone,LSB,5.00,,,,,,,\r\n"},
    {"gqrx", "# Tag name          ;  color\nUntagged            ; #c0c0c0\n\n"
             "# Frequency ; Name                     ; Modulation          ;  Bandwidth; Tags\n"
             "   121500000; Guard                    ; AM                  ;      10000; Air,Sea\n"
             "    98500000; Radio                    ; WFM (stereo)        ;     160000; Untagged\n"},
    {"sdrangel",
     "Freq (Hz),Enable,Notes,Channel,Ch BW (Hz),TH (dB),Sq (dB)\n145500000,1,Calling,,12500,-60,\n"
     "118100000,0,\"Tower, north\",2,,,\n"},
    {"fldigi", "# rfcarrier rig_mode carrier mode usage\n14070000 USB 1000 BPSK31 PSK calling\n"
               "14074000 PKT-U 0 FT8 digital\n"},
    {"kiwi-csv", "Freq kHz;Mode;Ident;Notes;Extension;Type;PB low;PB high;Offset;DOW;Begin;End;Sig bw\n"
                 "198.000;AM;\"BBC \"\"4\"\"\";Droitwich;;T1;-4900;4900;0;MTWTFSS;'0000;'2400;0\n"
                 "7850.000;USB;CHU;\"time; signal\";;T3;300;2700;25;M____S_;'0600;'1800;0\n"
                 "121500.000;AM;Narrow;;;T0;-2500;2500;0;MTWTFSS;'0000;'2400;0\n"},
    {"kiwi-json",
     "{\"dx\":[\n[198.000,\"AM\",\"BBC\",\"Droitwich\",{\"T1\":1,\"lo\":-4900,\"hi\":4900}],\n"
     "[7850.000,\"USB\",\"CHU\",\"\",{\"T3\":1,\"lo\":300,\"hi\":2700,\"o\":25,\"d0\":66,\"b0\":600,"
     "\"e0\":1800}]\n]}\n"},
    {"sdrpp", R"({
    "bookmarkDisplayMode": 1,
    "lists": {
        "General": {
            "bookmarks": {
                "Wide": {"bandwidth": 150000.0, "frequency": 98500000.0, "mode": 0},
                "Odd": {"bandwidth": 0.0, "frequency": 7000000.0, "mode": 4865}
            },
            "showOnWaterfall": true
        },
        "Air": {
            "bookmarks": {
                "Wide": {"bandwidth": 10000.0, "frequency": 121500000.5, "mode": 2}
            },
            "showOnWaterfall": true
        }
    },
    "selectedList": "General"
}
)"},
};

TEST(FilesOfOthers, ComeBackByteForByteWhenAllIsKept) {
    ReadOptions options;
    options.keepExtras = true;
    for (const Sample& sample : Samples) {
        const Format& format = *FormatOfId(QString::fromLatin1(sample.format));
        const ReadText read = readText(format, sample.text, options);
        EXPECT_EQ(read.refused, 0);
        EXPECT_EQ(ToBytes(format, contentOf(read.records)), sample.text) << sample.format;
    }
}

/// Entries with frequencies in whole Hz, whose texts have what is awkward in tables.
std::vector<FreqStoreXml::FrequencyStoreEntry> randomEntries(std::mt19937& random, int count) {
    static const QStringList words = {
        QStringLiteral("Tower"),  QStringLiteral("a,b"),          QStringLiteral("\"q\""),
        QStringLiteral("#1"),     QStringLiteral("\u00E4\u4E2D"), QStringLiteral("x=1"),
        QStringLiteral("50 % {"), QStringLiteral("'tis"),         QStringLiteral("&<amp>")};
    static const QStringList modes = {QStringLiteral("AM"),  QStringLiteral("FM"), QStringLiteral("USB"),
                                      QStringLiteral("LSB"), QStringLiteral("CW"), QString()};
    const auto below = [&](qsizetype limit) {
        return static_cast<qsizetype>(random() % static_cast<quint32>(limit));
    };
    std::vector<FreqStoreXml::FrequencyStoreEntry> entries(static_cast<size_t>(count));
    for (FreqStoreXml::FrequencyStoreEntry& entry : entries) {
        FreqStoreXml::FFM_Settings& settings = entry.GetFFM_Settings();
        settings.GetFrequency().SetValue(static_cast<double>(1 + random() % 3'000'000'000));
        if (below(4) != 0)
            settings.GetIFBandwidth().SetValue(static_cast<double>(1 + below(200000)));
        settings.SetAnalogDemod(FreqStoreXml::FFM_Settings::NameToAnalogDemod(modes[below(modes.size())]));
        CommentParts parts;
        for (qsizetype i = below(4); i > 0; --i)
            parts.name += words[below(words.size())] + QLatin1Char(' ');
        if (!parts.name.isEmpty())
            parts.name += QString::number(&entry - entries.data()); // some formats know no name twice
        if (!parts.name.isEmpty() && below(3) == 0)
            parts.notes = words[below(words.size())];
        entry.SetComment(JoinComment(parts));
    }
    return entries;
}

TEST(FilesOfOthers, KeepFrequenciesAndTexts) {
    const auto seed = std::random_device()();
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    std::mt19937 random(seed);
    const std::vector<FreqStoreXml::FrequencyStoreEntry> entries = randomEntries(random, 500);
    for (const Format* format : Formats()) {
        if (!format->makeEncoder || !format->read)
            continue;
        SCOPED_TRACE(format->id);
        Account lost;
        const std::string bytes = ToBytes(*format, contentOf(entries), &lost);
        EXPECT_EQ(lost.entries, static_cast<qint64>(entries.size()));
        const ReadText read = readText(*format, QByteArray::fromStdString(bytes));
        EXPECT_EQ(read.failure, QString());
        ASSERT_EQ(read.records.size(), entries.size()) << read.problems.value(0).toStdString();
        for (size_t i = 0; i < entries.size(); ++i) {
            const FreqStoreXml::FFM_Settings& before = entries[i].GetFFM_Settings();
            const FreqStoreXml::FFM_Settings& after = read.records[i].GetFFM_Settings();
            ASSERT_EQ(after.GetFrequency().GetValue(), before.GetFrequency().GetValue()) << i;
            const double bandwidth = before.GetIFBandwidth().GetValue();
            if (bandwidth > 0 && !lost.Counts().contains("bandwidths")) {
                ASSERT_EQ(after.GetIFBandwidth().GetValue(), bandwidth) << i;
            }
            if (!entries[i].GetComment().isEmpty()) {
                ASSERT_EQ(read.records[i].GetComment(), entries[i].GetComment()) << i;
            }
            const QString mode = before.AnalogDemodToName(before.GetAnalogDemod());
            if (!mode.isEmpty() && !lost.Counts().contains("modes")) {
                ASSERT_EQ(after.AnalogDemodToName(after.GetAnalogDemod()), mode) << i;
            }
        }
        // What was read once is written and read again without a change.
        EXPECT_EQ(
            readText(*format, QByteArray::fromStdString(ToBytes(*format, contentOf(read.records)))).entries,
            read.entries);
    }
}

/// A short file that consists of little else is still a text.
TEST(FilesOfOthers, WithNothingButLostCharactersInATextAreReadAgain) {
    for (const char16_t lost : {u'\uFFFD', u'\x01', u'\x7F'}) {
        std::vector<FreqStoreXml::FrequencyStoreEntry> entries(1);
        entries[0].GetFFM_Settings().GetFrequency().SetValue(7e6);
        entries[0].SetComment(QString(200, lost));
        for (const Format* format : Formats()) {
            if (!format->makeEncoder || !format->read)
                continue;
            const ReadText read =
                readText(*format, QByteArray::fromStdString(ToBytes(*format, contentOf(entries))));
            EXPECT_EQ(read.failure, QString()) << format->id << int(lost);
            EXPECT_EQ(read.records.size(), 1u) << format->id << int(lost);
        }
    }
}

/// Sets each member of the record, or leaves it empty.
void fill(REPORTGENERATOR::IRGObject& record, std::mt19937& random) {
    const QString texts[] = {QStringLiteral("a\"\\\n\u0001"), QStringLiteral("\u00E4\U0001F4E1"),
                             QStringLiteral("7")};
    const RecordMembers members(record);
    for (const RecordMember& member : members.All()) {
        if (random() % 4 == 0 && member.name != QLatin1String("frequency"))
            continue;
        if (auto* const* number = std::get_if<double*>(&member.at))
            **number = static_cast<double>(random()) / 128;
        else if (auto* const* whole = std::get_if<int*>(&member.at))
            **whole = static_cast<int>(random() % 1000) - 500;
        else if (auto* const* text = std::get_if<QString*>(&member.at))
            **text = texts[random() % std::size(texts)];
        else if (auto* const* time = std::get_if<REPORTGENERATOR::Timestamp*>(&member.at))
            **time = REPORTGENERATOR::Timestamp(static_cast<qint64>(random()) * 1'000'003);
    }
}

TEST(OwnJsonFiles, KeepAllThatARecordHas) {
    const auto seed = std::random_device()();
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    std::mt19937 random(seed);
    std::vector<FreqStoreXml::FrequencyStoreEntry> entries(200);
    for (FreqStoreXml::FrequencyStoreEntry& entry : entries)
        fill(entry, random);
    for (const char* id : {"json", "jsonl"}) {
        const Format& format = *FormatOfId(QString::fromLatin1(id));
        const std::string bytes = ToBytes(format, contentOf(entries));
        EXPECT_EQ(FormatOfText(QString::fromStdString(bytes)), &format);
        const ReadText read = readText(format, QByteArray::fromStdString(bytes));
        EXPECT_EQ(read.failure.toStdString(), "");
        ASSERT_EQ(read.records.size(), entries.size());
        EXPECT_EQ(read.counts, QString());
        for (size_t i = 0; i < entries.size(); ++i)
            ASSERT_EQ(read.records[i].GetXmlString().toStdString(), entries[i].GetXmlString().toStdString());
    }
}

TEST(FilesOfOthers, DoNotGetBackAModeThatWasChangedSince) {
    ReadOptions options;
    options.keepExtras = true;
    const Format& chirp = *FormatOfId(QStringLiteral("chirp-csv"));
    ReadText read =
        readText(chirp, "Location,Name,Frequency,Mode,rToneFreq\n0,Dig,7.034500,CWR,88.5\n", options);
    ASSERT_EQ(read.records.size(), 1U);
    EXPECT_NE(ToBytes(chirp, contentOf(read.records)).find(",CWR,"), std::string::npos);
    FreqStoreXml::FFM_Settings& settings = read.records[0].GetFFM_Settings();
    settings.SetAnalogDemod(FreqStoreXml::FFM_Settings::NameToAnalogDemod(QStringLiteral("USB")));
    for (const char* id : {"chirp-csv", "kiwi-csv", "fldigi", "sdrsharp"}) {
        const std::string bytes = ToBytes(*FormatOfId(QString::fromLatin1(id)), contentOf(read.records));
        EXPECT_NE(bytes.find("USB"), std::string::npos) << id;
        EXPECT_EQ(bytes.find("CWR"), std::string::npos) << id;
    }
}

TEST(FilesOfOthers, LoseNoModeOfAnEntryThatHasNone) {
    FreqStoreXml::FrequencyStoreEntry entry;
    entry.GetFFM_Settings().GetFrequency().SetValue(7e6);
    entry.SetComment(QStringLiteral("Odd {Mode=4865}"));
    for (const char* none : {"", "NONE", "Unknown"}) {
        entry.GetFFM_Settings().SetAnalogDemod(
            FreqStoreXml::FFM_Settings::NameToAnalogDemod(QString::fromLatin1(none)));
        EXPECT_NE(ToBytes(SdrPlusJson, contentOf({entry})).find("\"mode\": 4865"), std::string::npos) << none;
        for (const Format* format : {&ChirpCsv, &GqrxBookmarks, &ScannerCsv}) {
            Account lost;
            ToBytes(*format, contentOf({entry}), &lost);
            EXPECT_EQ(lost.CountsText(), QStringLiteral("Mode (1)")) << format->id << none;
        }
    }
}

TEST(FilesOfOthers, TellWhatWasKeptAndHasNoPlaceInThem) {
    ReadOptions options;
    options.keepExtras = true;
    const ReadText read =
        readText(ChirpCsv, "Location,Name,Frequency,Duplex,Offset,Mode\n0,Relay,145.6,-,0.6,CWR\n", options);
    const std::pair<const char*, const char*> told[] = {
        {"chirp-csv", ""},
        {"gqrx", "Duplex (1), Mode (1), Offset (1)"},
        {"sdrpp", "Duplex (1), Mode (1), Offset (1)"},
        {"sdrsharp", "Duplex (1), Mode (1), Offset (1)"},
        {"kiwi-csv", "Duplex (1), Mode (1), Offset (1)"},
        {"kiwi-json", "Duplex (1), Mode (1), Offset (1)"},
        {"sdrangel", "Duplex (1), Mode (1), Offset (1), modes (1)"},
        {"fldigi", "Duplex (1), Offset (1)"}, // which has the same word
        {"json", ""},
    };
    for (const auto& [id, counts] : told) {
        Account lost;
        const std::string bytes =
            ToBytes(*FormatOfId(QString::fromLatin1(id)), contentOf(read.records), &lost);
        EXPECT_EQ(lost.CountsText().toStdString(), counts) << bytes;
    }
}

TEST(FilesOfOthers, GiveNoChannelNumberTwice) {
    ReadOptions options;
    options.keepExtras = true;
    const ReadText read =
        readText(ChirpCsv, "Location,Name,Frequency,Duplex\n5,A,7.1,\n3,B,7.2,\n9,C,7.3,\n", options);
    Account lost;
    const std::string bytes = ToBytes(ChirpCsv, contentOf(read.records), &lost);
    EXPECT_EQ(lost.CountsText(), QStringLiteral("Location (1)"));
    for (const char* row : {"\n5,A,", "\n6,B,", "\n9,C,"})
        EXPECT_NE(bytes.find(row), std::string::npos) << bytes;
}

TEST(FilesOfOthers, KeepFractionsOfAHertzOrTellThem) {
    FreqStoreXml::FrequencyStoreEntry entry;
    entry.GetFFM_Settings().GetFrequency().SetValue(7e6);
    entry.GetFFM_Settings().GetIFBandwidth().SetValue(2700.5);
    for (const char* id : {"gqrx", "sdrangel", "sdrsharp", "kiwi-csv", "kiwi-json"}) {
        Account lost;
        ToBytes(*FormatOfId(QString::fromLatin1(id)), contentOf({entry}), &lost);
        EXPECT_TRUE(lost.Counts().contains("fractions of a Hz")) << id;
    }
    entry.GetFFM_Settings().GetIFBandwidth().SetValue(0);
    entry.GetFFM_Settings().GetFrequency().SetValue(66666.667);
    for (const Format* format : Formats()) {
        if (!format->makeEncoder || !format->read)
            continue;
        Account lost;
        const std::string bytes = ToBytes(*format, contentOf({entry}), &lost);
        const ReadText read = readText(*format, QByteArray::fromStdString(bytes));
        ASSERT_EQ(read.records.size(), 1u) << format->id;
        EXPECT_NE(read.records[0].GetFFM_Settings().GetFrequency().GetValue() == 66666.667,
                  lost.Counts().contains("fractions of a Hz"))
            << bytes;
    }
}

/// Who sets a filter to what stands there would hear nothing through one of 0 Hz.
TEST(FilesOfOthers, HaveAFilterAndOneLineForEachEntry) {
    FreqStoreXml::FrequencyStoreEntry entry;
    entry.GetFFM_Settings().GetFrequency().SetValue(7e6);
    entry.GetFFM_Settings().SetAnalogDemod(
        FreqStoreXml::FFM_Settings::NameToAnalogDemod(QStringLiteral("AM")));
    entry.SetComment(QStringLiteral("Round\nand\tround | Broad\ncast"));
    const std::pair<const char*, const char*> written[] = {
        {"gqrx", "Round and round | Broad cast; AM                  ;      10000; "},
        {"sdrpp", "\"Round and round | Broad cast\": {\"bandwidth\": 10000.0, "},
        {"sdrsharp", "<FilterBandwidth>10000<"},
        {"chirp-csv", "0,Round and round,7.000000,"},
        {"kiwi-csv", "7000.000;AM;Round and round;Broad cast;"},
        {"kiwi-json", ",\"Round and round\",\"Broad cast\","},
        {"sdrangel", ",Round and round | Broad cast,"},
        {"fldigi", "NULL Round and round | Broad cast\n"},
    };
    for (const auto& [id, part] : written) {
        Account lost;
        const std::string bytes = ToBytes(*FormatOfId(QString::fromLatin1(id)), contentOf({entry}), &lost);
        EXPECT_NE(bytes.find(part), std::string::npos) << bytes;
        const bool setsFilter = std::string_view(part).find("10000") != std::string_view::npos;
        EXPECT_EQ(lost.Counts().contains("entries without a bandwidth"), setsFilter) << id;
    }
}

TEST(FilesOfOthers, GetWordsOfWhatAnOperatorWroteIntoAComment) {
    FreqStoreXml::FrequencyStoreEntry entry;
    entry.GetFFM_Settings().GetFrequency().SetValue(7e6);
    for (const char* modem : {"", "two words"}) {
        entry.SetComment(QStringLiteral("Call {Carrier=; Modem=%1}").arg(QLatin1String(modem)));
        const Format& fldigi = *FormatOfId(QStringLiteral("fldigi"));
        const std::string bytes = ToBytes(fldigi, contentOf({entry}));
        EXPECT_EQ(readText(fldigi, QByteArray::fromStdString(bytes)).entries,
                  QStringList{QStringLiteral("7000000|2700|USB|Call")});
    }
}

TEST(CommentsOfFilesOfOthers, AreTakenApartAsTheyWerePutTogether) {
    const CommentParts parts{QStringLiteral("Tower"),
                             QStringLiteral("north\nand\x01south"),
                             {{QStringLiteral("Power"), QStringLiteral("50W; {a=b} 100 %")}}};
    const QString comment = JoinComment(parts);
    EXPECT_EQ(comment, QStringLiteral("Tower | north and south {Power=50W%3B %7Ba%3Db%7D 100 %25}"));
    const CommentParts apart = SplitComment(comment);
    EXPECT_EQ(apart.name, parts.name);
    EXPECT_EQ(apart.notes, QStringLiteral("north and south"));
    EXPECT_EQ(apart.extras, parts.extras);
    EXPECT_EQ(SplitComment(QStringLiteral("a {b}")).name, QStringLiteral("a {b}"));
}

} // namespace

} // namespace Interchange
