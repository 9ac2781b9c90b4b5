#include "controls/frequencystore/memory/jobfile.h"
#include "controls/frequencystore/memory/memoryscansection.h"
#include "host/valuetree/valueselection.h"
#include "tests/frequencystore/memory/memoryfixture.h"

namespace {

class MemoryJobTest : public MemoryFixture {
protected:
    bool TakeJob(const QByteArray& job) { return Handler().UpdateFromJobFile(QString::fromUtf8(job)); }
};

TEST_F(MemoryJobTest, ASectionHoldsAllSettingsInOrder) {
    Start();
    Handler().SetNewEntryHF(7055000.25, 2700, Q("a <\"&'>\n\tb"), Q("USB"), true, Q("455.0 kHz"), -800, 1500,
                            20);
    Handler().SuspendMediatorCtrl(false, true);
    Handler().UpdateJobFileEntries();
    EXPECT_EQ(Handler().GetData4JobFile(), Q(R"(<MEMORYSCAN>
 <MEMORYSCAN_CHANNEL Range="1" Name="a &lt;&quot;&amp;'&gt;&#10;&#9;b" Value="1" Enabled="true">
  <MEMORYSCAN_SEQ_CHANNELNUMBER Value="1"/>
  <MEMORYSCAN_SEQ_FREQUENCY Value="7055000.250000"/>
  <MEMORYSCAN_SEQ_THRESHOLD Value="20"/>
  <MEMORYSCAN_SEQ_ANALOGDEMOD_METHOD Value="USB"/>
  <MEMORYSCAN_SEQ_IFBANDWIDTH Value="2700.000000"/>
  <MEMORYSCAN_SEQ_OUTPUTIFPATH Value="455.0 kHz"/>
  <MEMORYSCAN_SEQ_SHIFT Value="1500"/>
  <MEMORYSCAN_SEQ_BFOFREQUENCY Value="-800"/>
 </MEMORYSCAN_CHANNEL>
</MEMORYSCAN>
)"));
    End();
    m_list->DeleteChildren();
    Start(MediatorType::MemoryVUHF);
    Handler().SetNewEntryVUHF(118.1e6, 8330, Q("b\x01"), Q("AM"), true, 10, 3, -5, true, false, true);
    Handler().SetNewEntryVUHF(118.2e6, 8330, QString(QChar(0xd800)), Q("AM"), true, 10, 3, -5, false, true,
                              false);
    Handler().UpdateJobFileEntries();
    const QString section = Handler().GetData4JobFile();
    EXPECT_TRUE(section.contains(Q(R"( <MEMORYSCAN_CHANNEL Range="1" Name="b)") + QChar(0xfffd) +
                                 Q(R"(" Value="1" Enabled="true">
  <MEMORYSCAN_SEQ_CHANNELNUMBER Value="1"/>
  <MEMORYSCAN_SEQ_FREQUENCY Value="118100000.000000"/>
  <MEMORYSCAN_SEQ_THRESHOLD Value="-5"/>
  <MEMORYSCAN_SEQ_ANALOGDEMOD_METHOD Value="AM"/>
  <MEMORYSCAN_SEQ_IFBANDWIDTH Value="8330.000000"/>
  <MEMORYSCAN_SEQ_AFC Value="true"/>
  <MEMORYSCAN_SEQ_USEQUELCH Value="false"/>
  <MEMORYSCAN_SEQ_ATTENUATION_MODE Value="Manual"/>
  <MEMORYSCAN_SEQ_ATTENUATION Value="10"/>
  <MEMORYSCAN_SEQ_ANTENNAID Value="3"/>
 </MEMORYSCAN_CHANNEL>
)"))) << section.toStdString();
    EXPECT_EQ(ValuesOf(section, "MEMORYSCAN_SEQ_ATTENUATION_MODE"),
              (QStringList{Q("Manual"), Q("Automatic")}));

    const QStringList keys = {Q("frequency"),      Q("bandwidthsel"), Q("demodulation"),
                              Q("threshold"),      Q("afc"),          Q("usesquelch"),
                              Q("useattenuation"), Q("attenuation"),  Q("antennaid")};
    const QStringList written = Channels(keys);
    m_list->DeleteChildren();
    EXPECT_TRUE(Handler().UpdateFromJobFile(section));
    EXPECT_EQ(Channels(keys), written) << "what was written comes back";
    EXPECT_EQ(Channels({Q("rangecounter")}), (QStringList{Q("1"), Q("2")}));
}

TEST_F(MemoryJobTest, ChannelsOfOneNumberAreARangeAndComeOutAsOneEach) {
    Start();
    ASSERT_TRUE(TakeJob(Job(SubJob(Channel(7, "range", "3000000") + Channel(8, "single", "9000000") +
                                   Channel(7, "lost", "1000000") + Channel(7, "lost", "2000000.5")))));
    EXPECT_EQ(Channels(), (QStringList{Q("3000000|2700|range|USB|20|1000000;2000000.5"),
                                       Q("9000000|2700|single|USB|20|")}));
    EXPECT_EQ(Channels({Q("range"), Q("rangecounter")}), (QStringList{Q("true|7"), Q("false|8")}));
    Handler().SuspendMediatorCtrl(false, true);
    Handler().UpdateJobFileEntries();
    const QString section = Handler().GetData4JobFile();
    EXPECT_EQ(
        ValuesOf(section, "MEMORYSCAN_SEQ_FREQUENCY"),
        (QStringList{Q("3000000.000000"), Q("1000000.000000"), Q("2000000.500000"), Q("9000000.000000")}));
    EXPECT_EQ(ValuesOf(section, "MEMORYSCAN_SEQ_CHANNELNUMBER"),
              (QStringList{Q("1"), Q("2"), Q("3"), Q("4")}));
    EXPECT_EQ(section.count(Q("Name=\"range\"")), 3);
    EXPECT_EQ(section.count(Q("Value=\"455.0 kHz\"")), 4);
    EXPECT_EQ(Tree::Instance()->Find<FrequencyItemMap>(Q("/Lists/MemoryItemMap4View"))->GetItems().size(),
              4u);

    m_list->DeleteNodes({m_list->Children()[0]});
    ASSERT_TRUE(TakeJob(Job(SubJob(Channel(7, "new", "5000000") + Channel(8, "joins", "6000000")))));
    EXPECT_EQ(Channels(),
              (QStringList{Q("9000000|2700|single|USB|20|6000000"), Q("5000000|2700|new|USB|20|")}))
        << "a number whose channel is gone is free, the other is not";
}

TEST_F(MemoryJobTest, SubJobsWithTheSameSectionAreReadOnce) {
    Start();
    const QByteArray two = Channel(1, "a", "1000000") + Channel(2, "b", "2000000");
    const QByteArray spaced = Channel(1, "a", "1000000.0") + "\n<!-- x -->" + Channel(2, "b", "2e6");
    Handler().SetJobfileName(Q("job"));
    Traces traces;
    ASSERT_TRUE(TakeJob(Job(SubJob(two) + SubJob(spaced) + SubJob("") + SubJob("") + SubJob(two))));
    EXPECT_EQ(Channels().size(), 2);
    EXPECT_EQ(Channels({Q("range")}), (QStringList{Q("false"), Q("false")}));
    EXPECT_TRUE(traces.problems.isEmpty()) << traces.problems.join(QLatin1Char('\n')).toStdString();
    m_list->DeleteChildren();
    ASSERT_TRUE(TakeJob(
        Job(SubJob(two) + "\n" + SubJob(Channel(2, "other", "3000000") + Channel(3, "c", "4000000")))));
    EXPECT_EQ(Channels({Q("comment"), Q("rangefrequencies")}),
              (QStringList{Q("a|"), Q("b|3000000"), Q("c|")}));
    ASSERT_EQ(traces.problems.size(), 1);
    EXPECT_TRUE(traces.problems[0].startsWith(Q("job:3: this section differs from that of line 2")))
        << traces.problems[0].toStdString();
}

TEST_F(MemoryJobTest, WhatAChannelLacksIsZeroAndTold) {
    struct {
        const char* channel;
        const char*
            content; ///< frequency, bandwidth, threshold, shift, BFO, demodulation, path, range number
        const char* problem;
    } const rows[] = {
        {"<MEMORYSCAN_CHANNEL/>", "0|0|0|0|0|NONE|48.0 kHz|0", "Range \"\" is no number; 0 is taken"},
        {"<MEMORYSCAN_CHANNEL Range='3' Name='x'/>", "0|0|0|0|0|NONE|48.0 kHz|3",
         "channel \"x\" lacks MEMORYSCAN_SEQ_FREQUENCY, MEMORYSCAN_SEQ_THRESHOLD, "},
        {"<MEMORYSCAN_CHANNEL Range='3'>\n<MEMORYSCAN_SEQ_FREQUENCY Value='nan'/>"
         "<MEMORYSCAN_SEQ_SHIFT Value='99999999999'/><MEMORYSCAN_SEQ_BFOFREQUENCY Value='1.5'/>"
         "</MEMORYSCAN_CHANNEL>",
         "0|0|0|0|0|NONE|48.0 kHz|3", "2: MEMORYSCAN_SEQ_FREQUENCY \"nan\" is no number; 0 is taken"},
        {"<MEMORYSCAN_CHANNEL Range='3'><X><MEMORYSCAN_SEQ_FREQUENCY "
         "Value='5'/></X><MEMORYSCAN_SEQ_FREQUENCY "
         "Value='7000000'/><MEMORYSCAN_SEQ_FREQUENCY Value='6'/><MEMORYSCAN_SEQ_THRESHOLD Value='111'/>"
         "<MEMORYSCAN_SEQ_SHIFT Value='25'/><MEMORYSCAN_SEQ_BFOFREQUENCY Value='-10001'/>"
         "<MEMORYSCAN_SEQ_ANALOGDEMOD_METHOD Value='DRM'/><MEMORYSCAN_SEQ_OUTPUTIFPATH Value='Wide'/>"
         "<MEMORYSCAN_SEQ_IFBANDWIDTH Value='-1'/></MEMORYSCAN_CHANNEL>",
         "7000000|-1|111|25|-10001|DRM|Wide|3", "threshold 111 is outside -40 to 110"},
    };
    for (const auto& row : rows) {
        End();
        m_list->DeleteChildren();
        Start();
        Handler().SetJobfileName(Q("job"));
        Traces traces;
        EXPECT_TRUE(TakeJob(row.channel));
        EXPECT_EQ(Channels({Q("frequency"), Q("bandwidthsel"), Q("threshold"), Q("shift"), Q("bfofrequency"),
                            Q("demodulation"), Q("outputifpath"), Q("rangecounter")}),
                  QStringList{Q(row.content)});
        EXPECT_TRUE(traces.problems.join(QLatin1Char('\n')).contains(Q(row.problem)))
            << traces.problems.join(QLatin1Char('\n')).toStdString();
    }
}

struct MergeRow {
    const char* job;
    const char* merged;
    int sections;
};

TEST_F(MemoryJobTest, OnlySectionsChangeWhenOneIsPutIntoAJob) {
    const char* const section = "<MEMORYSCAN>\n <C/>\n</MEMORYSCAN>\n";
    const MergeRow rows[] = {
        {"<J><SUBJOB><TDS><MEMORYSCAN/></TDS></SUBJOB></J>",
         "<J><SUBJOB><TDS><MEMORYSCAN>\n <C/>\n</MEMORYSCAN></TDS></SUBJOB></J>", 1},
        {"<J>\n <SUBJOB>\n  <TDS>\n   <MEMORYSCAN>\n   </MEMORYSCAN>\n   <R a = '&#10;\"' />\n  </TDS >\n "
         "</SUBJOB>\n</J>\n",
         "<J>\n <SUBJOB>\n  <TDS>\n   <R a = '&#10;\"' />\n   <MEMORYSCAN>\n    <C/>\n   </MEMORYSCAN>\n  "
         "</TDS >\n "
         "</SUBJOB>\n</J>\n",
         1},
        {"<?xml version='1.0' standalone='yes'?>\r\n<J>\r\n<!-- <MEMORYSCAN/> \U0001F4FB "
         "-->\r\n<SUBJOB>\r\n<TDS>\r\n"
         "<x:y xmlns:x='u'>ü\U0001F4FB</x:y>\r\n<MEMORYSCAN/>\r\n</TDS>\r\n</SUBJOB></J>",
         "<?xml version='1.0' standalone='yes'?>\r\n<J>\r\n<!-- <MEMORYSCAN/> \U0001F4FB "
         "-->\r\n<SUBJOB>\r\n<TDS>\r\n"
         "<x:y xmlns:x='u'>ü\U0001F4FB</x:y>\r\n<MEMORYSCAN>\r\n "
         "<C/>\r\n</MEMORYSCAN>\r\n</TDS>\r\n</SUBJOB></J>",
         1},
        // The first child of each name counts.
        {"<J><SUBJOB><X/><TDS><MEMORYSCAN>1</MEMORYSCAN><A/><MEMORYSCAN>2</MEMORYSCAN></TDS><TDS><MEMORYSCAN/"
         "></TDS>"
         "</SUBJOB></J>",
         "<J><SUBJOB><X/><TDS><A/><MEMORYSCAN>2</MEMORYSCAN><MEMORYSCAN>\n "
         "<C/>\n</MEMORYSCAN></TDS><TDS><MEMORYSCAN/>"
         "</TDS></SUBJOB></J>",
         1},
        // Sub-jobs without a place stay, and what a section held goes with it.
        {"<J><SUBJOB><TDS><MEMORYSCAN><SUBJOB><TDS><MEMORYSCAN/></TDS></SUBJOB></MEMORYSCAN></TDS></"
         "SUBJOB><SUBJOB/>"
         "<SUBJOB><TDS><B/></TDS><SUBJOB><TDS><MEMORYSCAN/></TDS></SUBJOB></SUBJOB></J>",
         "<J><SUBJOB><TDS><MEMORYSCAN>\n "
         "<C/>\n</MEMORYSCAN></TDS></SUBJOB><SUBJOB/><SUBJOB><TDS><B/></TDS><SUBJOB><TDS>"
         "<MEMORYSCAN>\n <C/>\n</MEMORYSCAN></TDS></SUBJOB></SUBJOB></J>",
         2},
        {"\xef\xbb\xbf<!DOCTYPE J SYSTEM 'j.dtd'><J><SUBJOB><TDS><![CDATA[<MEMORYSCAN>]]><MEMORYSCAN/> "
         "</TDS></SUBJOB></J>",
         "<!DOCTYPE J SYSTEM 'j.dtd'><J><SUBJOB><TDS><![CDATA[<MEMORYSCAN>]]><MEMORYSCAN>\n "
         "<C/>\n</MEMORYSCAN> </TDS>"
         "</SUBJOB></J>",
         1},
        {"<J><SUBJOB><TDS/></SUBJOB></J>", "<J><SUBJOB><TDS/></SUBJOB></J>", 0},
        {"<J><SUBJOB><TDS><MEMORYSCAN></TDS></SUBJOB></J>", "<J><SUBJOB><TDS><MEMORYSCAN></TDS></SUBJOB></J>",
         -1},
    };
    for (const MergeRow& row : rows) {
        QString job = Q(row.job);
        EXPECT_EQ(MergeSection(job, Q(section), true, Q("job")), row.sections) << row.job;
        EXPECT_EQ(job.toStdString(), row.merged);
        QString again = job;
        if (row.sections > 0 && !job.contains(Q("</MEMORYSCAN><MEMORYSCAN>"))) {
            EXPECT_EQ(MergeSection(again, Q(section), false, Q("job")), row.sections);
            EXPECT_EQ(again.toStdString(), job.toStdString()) << "a second time changes nothing";
        }
    }
}

TEST_F(MemoryJobTest, FilesAreReadByTheirKindAndAddToTheList) {
    const QString xml = Write(Q("a.xml"), R"(<FrequencyStoreList Version="1"><FrequencyStoreEntry>
 <Comment>x</Comment><FFM_Settings><Frequency>7000000</Frequency><IFBandwidth>2700</IFBandwidth><AnalogDemod>DRM</AnalogDemod>
 <Level>12.6</Level><Detail><BFOFrequency>-750</BFOFrequency></Detail></FFM_Settings></FrequencyStoreEntry>
 <FrequencyStoreEntry><FFM_Settings><Frequency>8000000</Frequency></FFM_Settings></FrequencyStoreEntry>
 <FrequencyStoreEntry/></FrequencyStoreList>)");
    const QString sfl = Write(Q("a.sfl"), "9000000\tfull\t500\tCW\n10000000\tshort\n\n0\tnothing\t1\tAM\n");
    const QString pij = Write(Q("a.pij"), Job(SubJob(Channel(1, "p", "6000000"))));
    for (const bool isVuhf : {false, true}) {
        Start(isVuhf ? MediatorType::MemoryVUHF : MediatorType::MemoryHF);
        m_job->SetValue(QString::fromUtf8(Job(SubJob(""))));
        BindJob();
        Traces traces;
        for (const QString& file : {xml, sfl, pij, pij})
            EXPECT_TRUE(Handler().ReadFile(file));
        EXPECT_EQ(
            Channels({Q("frequency"), Q("bandwidthsel"), Q("comment"), Q("demodulation"), Q("threshold")}),
            (QStringList{Q("7000000|2700|x|DRM|13"), Q("8000000|0||NONE|0"), Q("0|0|0|NONE|0"),
                         Q("9000000|500|full|CW|0"), Q("10000000|500|short|CW|0"), Q("0|0|0|NONE|0"),
                         Q("6000000|2700|p|USB|20"), Q("6000000|2700|p|USB|20")}));
        EXPECT_EQ(Channels({Q("bfofrequency"), Q("shift")})[0],
                  isVuhf ? Q("<none>|<none>") : Q("-750|20000"));
        EXPECT_EQ(ValuesOf(m_job->GetValue(), "MEMORYSCAN_SEQ_FREQUENCY").size(), 8)
            << "what is read goes into the job";
        EXPECT_EQ(traces.problems.size(), isVuhf ? 2 : 0) << "the HF job lacks what the other receiver needs";
        End();
        m_list->DeleteChildren();
    }
}

TEST_F(MemoryJobTest, BadFilesAreToldAndChangeNothing) {
    struct {
        const char* name;
        QByteArray bytes;
        const char* problem; ///< behind the file's name
    } const rows[] = {
        {"a.XML", "<FrequencyStoreList Version=\"1\"/>", ": is of no known kind of file"},
        {"a.ltl", "7055000\t3000\n", ": is of no known kind of file"},
        {"root.xml", "<JOB/>", ":1: "},
        {"cut.xml", "<FrequencyStoreList Version=\"1\">\n<FrequencyStoreEntry>", ":2: "},
        {"nul.sfl", QByteArray("7\0x\n", 4), ":1: is no text file"},
        {"cut.pij", "<JOB>\n<SUBJOB>", ":2: Premature end of document."},
        {"crossed.pij", "<JOB>\n<SUBJOB>\n</JOB></SUBJOB>", ":3: Opening and ending tag mismatch."},
        {"empty.pij", "", ":1: Premature end of document."},
        {"latin1.pij", "<JOB>\n<SUBJOB Name=\"W\xe4rme\"/></JOB>", ":2: is not well encoded UTF-8 text"},
        {"entities.pij",
         "<!DOCTYPE a [<!ENTITY a '1'><!ENTITY b '&a;&a;&a;'>]>\n<JOB><SUBJOB>&b;</SUBJOB></JOB>",
         ":1: entity declarations are refused"},
        {"deep.pij", QByteArray("<JOB><SUBJOB>") + QByteArray("<x>").repeated(5000),
         ":1: elements are nested too deeply"},
        {"many.pij",
         Job(SubJob(QByteArray("<MEMORYSCAN_CHANNEL Range='1'/>\n").repeated(MaxScanChannels + 1))),
         ":200002: a job cannot hold more than 200000 channels"},
    };
    Start();
    m_job->SetValue(QString::fromUtf8(Job(SubJob(Channel(1, "old", "7000000")))));
    BindJob();
    Handler().ReadFile(Write(Q("first.sfl"), "8000000\tx\t1\tAM\n"));
    const QStringList channels = Channels();
    const QString job = m_job->GetValue();
    ASSERT_EQ(channels.size(), 2);
    for (const auto& row : rows) {
        const QString path = Write(Q(row.name), row.bytes);
        for (const bool asJob : {false, true}) {
            if (asJob && !path.endsWith(Q(".pij")))
                continue;
            Traces traces;
            EXPECT_FALSE(asJob ? Handler().OpenJobFile(path) : Handler().ReadFile(path)) << row.name;
            const auto isTold = [&](const QString& problem) {
                return problem.startsWith(path + Q(row.problem));
            };
            EXPECT_TRUE(std::any_of(traces.problems.begin(), traces.problems.end(), isTold))
                << traces.problems.join(QLatin1Char('\n')).right(500).toStdString();
            EXPECT_EQ(Channels(), channels) << row.name;
            EXPECT_EQ(m_job->GetValue(), job) << row.name;
            EXPECT_FALSE(Handler().GetMediatorCtrl()->IsSuspended()) << row.name;
        }
    }
    Traces traces;
    EXPECT_FALSE(Handler().OpenJobFile(Write(Q("list.pij"), "<FrequencyStoreList/>")));
    EXPECT_EQ(traces.problems, QStringList{Path(Q("list.pij")) + Q(": is no job: it has no SUBJOB")});
    EXPECT_FALSE(Handler().OpenJobFile(m_folder.path()));
    EXPECT_EQ(m_job->GetValue(), job);
    EXPECT_EQ(Handler().GetJobfileName(), QString());

    for (const auto& [name, place] :
         {std::pair("none.sfl", "listviewshandler:897"), std::pair("none.xml", "memorysystemhandling:"),
          std::pair("none.pij", "memorysystemhandling:")}) {
        const Traces refused;
        EXPECT_FALSE(Handler().ReadFile(Path(Q(name))));
        EXPECT_EQ(refused.texts.value(0), Q("File cannot be opened: ") + Path(Q(name)));
        EXPECT_TRUE(refused.places.value(0).startsWith(Q(place))) << name;
        EXPECT_EQ(Handler().GetMediatorCtrl()->IsSuspended(), qstrcmp(name, "none.pij") == 0);
    }
}

TEST_F(MemoryJobTest, AJobIsOpenedAndSavedAsItIs) {
    Start();
    BindJob();
    const QByteArray bytes =
        "<?xml version=\"1.0\" encoding=\"iso-8859-1\" ?>\n<JOB a='\"'>\n <SUBJOB>\n  <TDS>\n"
        "   <REC/>\n   <MEMORYSCAN/>\n  </TDS>\n </SUBJOB>\n</JOB>\n";
    const QString path = Write(Q("job.pij"), bytes);
    Recorder job;
    m_job->AddObserver(&job);
    ASSERT_TRUE(Handler().OpenJobFile(path));
    EXPECT_EQ(job.codes, std::vector<int>{3});
    EXPECT_EQ(Handler().GetJobfileName(), path);
    const QByteArray asUtf8 = QByteArray(bytes).replace("iso-8859-1", "UTF-8");
    EXPECT_EQ(m_job->GetValue().toUtf8() + "\n", asUtf8);
    EXPECT_TRUE(Handler().SaveJobFile(Path(Q("copy.pij"))));
    EXPECT_EQ(Read(Path(Q("copy.pij"))), asUtf8);
    EXPECT_EQ(Handler().GetJobfileName(), Path(Q("copy.pij")));
    EXPECT_EQ(Read(path), bytes);

    AddChannels({7e6});
    EXPECT_TRUE(Handler().OpenJobFile(path));
    EXPECT_EQ(Channels().size(), 0) << "the job on disk has no channels";
    AddChannels({8e6});
    Traces traces;
    for (const QString& target : {Path(Q("no/such/job.pij")), m_folder.path(), Q("/dev/full")}) {
        traces.problems.clear();
        EXPECT_FALSE(Handler().SaveJobFile(target));
        ASSERT_EQ(traces.problems.size(), 1) << target.toStdString();
        EXPECT_TRUE(traces.problems[0].startsWith(target));
        EXPECT_EQ(Handler().GetJobfileName(), path);
        EXPECT_TRUE(Handler().IsChangedSinceJobSave());
    }
    ASSERT_TRUE(Handler().OpenJobFile(Write(Q("bare.pij"), "<JOB><SUBJOB/></JOB>")));
    EXPECT_TRUE(Handler().SaveJobFile(Path(Q("bare.pij"))));
    AddChannels({8e6});
    traces.problems.clear();
    EXPECT_FALSE(Handler().SaveJobFile(Path(Q("bare.pij"))));
    EXPECT_EQ(traces.problems,
              QStringList{Path(Q("bare.pij")) +
                          Q(": not written: the job has no memory-scan section for the channels")});
    EXPECT_EQ(Read(Path(Q("bare.pij"))), "<JOB><SUBJOB/></JOB>\n");

    Handler().SetInScanSurveillance(true);
    for (const bool done :
         {Handler().OpenJobFile(path), Handler().ReadFile(path), Handler().SaveJobFile(path)})
        EXPECT_FALSE(done);
    EXPECT_EQ(Read(path), bytes);
}

TEST_F(MemoryJobTest, AJobThatAnotherProgramChangedIsKept) {
    Start();
    BindJob();
    const QString path = Write(Q("job.pij"), Job(SubJob(Channel(1, "ours", "7000000.000000"))));
    ASSERT_TRUE(Handler().OpenJobFile(path));
    const QByteArray theirs = Job(SubJob(Channel(1, "theirs", "8000000.000000")));
    Write(Q("job.pij"), theirs);
    AddChannels({9e6});
    const Traces traces;
    EXPECT_TRUE(Handler().SaveJobFile(path));
    EXPECT_EQ(Read(path), theirs);
    EXPECT_TRUE(Read(Q("job-2.pij")).contains("Name=\"ours\""));
    EXPECT_EQ(Handler().GetJobfileName(), Path(Q("job-2.pij")));
    EXPECT_EQ(traces.problems.size(), 1);
}

TEST_F(MemoryJobTest, ChannelsAreWrittenAsInterchangeList) {
    Start();
    Handler().SetNewEntryHF(7e6, 2700, Q("a"), Q("USB"), true, Q("455.0 kHz"), 1, 2, 3);
    const QString path = Path(Q("out.xml"));
    ASSERT_TRUE(Handler().SaveFile(path));
    EXPECT_TRUE(Read(path).contains("Usage=\"MemoryChannels\""));
    m_list->DeleteChildren();
    ASSERT_TRUE(Handler().ReadFile(path));
    EXPECT_EQ(Channels(), QStringList{Q("7000000|2700|a|USB|0|")});
    Traces traces;
    EXPECT_FALSE(Handler().SaveFile(Path(Q("out.sfl"))));
    EXPECT_FALSE(Handler().SaveFile(Path(Q("no/out.xml"))));
    EXPECT_EQ(traces.problems.size(), 2);
}

/// Texts go to the parser in pieces; a character of two halves at each place around the end of one.
TEST_F(MemoryJobTest, LongJobsOfAnyCharactersKeepTheirPlaces) {
    Start();
    const QByteArray head = "<?xml version='1.0' encoding='ISO-8859-1'?>";
    for (int filler = 2680; filler < 2740; ++filler) {
        const QString job = QString::fromUtf8(head + "<JOB><!--" + QByteArray(filler, 'x') +
                                              "\xf0\x9f\x93\xa1" + QByteArray(6000, 'x') + "-->" +
                                              SubJob(Channel(1, "\xf0\x9f\x93\xa1", "1")) + "</JOB>");
        QString merged = job;
        ASSERT_EQ(MergeSection(merged, Q("<MEMORYSCAN/>"), true, Q("job")), 1);
        EXPECT_EQ(Outside(merged), Outside(job)) << filler;
        EXPECT_FALSE(merged.contains(Q("MEMORYSCAN_CHANNEL"))) << filler;
    }
}

} // namespace
