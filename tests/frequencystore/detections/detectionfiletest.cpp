#include "controls/frequencystore/detections/searchmcrecords.h"
#include "host/freqstorexml/filehandling.h"
#include "host/report/outputfile.h"
#include "tests/frequencystore/detections/detectionfixture.h"
#include "tests/support/dialogs.h"
#include "tests/support/traces.h"

namespace {

TEST_F(Detections, FilesHoldDirectionsByVariant) {
    const struct {
        const char* azimuth;
        const char* quality;
        const char* longitude;
        const char* latitude;
        double hf[4]; ///< azimuth, quality, longitude, latitude; NaN for none
        double vuhf[4];
    } rows[] = {
        {"123.4", "5", "11.5", "48.25", {2222, 4444, 1000, 2000}, {123.4, 5, 11.5, 48.25}},
        {"1001",
         "5",
         "11.5",
         "48.25",
         {NoNumber, NoNumber, NoNumber, NoNumber},
         {NoNumber, NoNumber, NoNumber, NoNumber}},
        {"-1000", "5", "11.5", "48.25", {NoNumber, 4444, 1000, 2000}, {NoNumber, 5, 11.5, 48.25}},
        {"12",
         "-1000",
         "-1000",
         "48",
         {2222, NoNumber, NoNumber, NoNumber},
         {12, NoNumber, NoNumber, NoNumber}},
        {"12,13", "1,2", "11,12", "48,49", {2222, 4444, 1000, 2000}, {0, 0, 0, 0}},
        {"12", "1", "1000", "48", {2222, 4444, 1000, 2000}, {12, 1, NoNumber, NoNumber}},
    };
    const auto check = [](const FreqStoreXml::DetectionResult& result, const double(&wanted)[4]) {
        const std::pair<bool, double> found[] = {{result.HasAzimuth(), result.GetAzimuth()},
                                                 {result.HasDFQuality(), result.GetDFQuality()},
                                                 {result.HasLongitude(), result.GetLongitude()},
                                                 {result.HasLatitude(), result.GetLatitude()}};
        for (size_t i = 0; i < 4; ++i) {
            EXPECT_EQ(found[i].first, !std::isnan(wanted[i])) << i;
            if (found[i].first) {
                EXPECT_EQ(found[i].second, wanted[i]) << i;
            }
        }
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.azimuth);
        Extended record = classified(1, 7e6);
        record.Result().azimuth = row.azimuth;
        record.Result().dfQuality = row.quality;
        record.Result().dfLongitude = row.longitude;
        record.Result().dfLatitude = row.latitude;
        check(SearchMC::ToResult(record, Variant::HF), row.hf);
        check(SearchMC::ToResult(record, Variant::VUHF), row.vuhf);
    }
}

TEST_F(Detections, FilesPreferWhatTheClassifierFound) {
    Extended record = classified(12, 7e6);
    FreqStoreXml::DetectionResult result = SearchMC::ToResult(record, Variant::VUHF);
    EXPECT_EQ(result.GetType(), "a");
    EXPECT_EQ(result.GetID(), "12");
    EXPECT_EQ(result.GetFrequency().GetValue(), 7055123.4);
    EXPECT_EQ(result.GetBandwidth().GetValue(), 2400);
    EXPECT_EQ(result.GetLevel(), 30);
    EXPECT_EQ(result.GetStartTimeUsec(), 1700000012000000);
    EXPECT_EQ(result.GetStopTimeUsec(), 1700000014000000) << "whole seconds";
    EXPECT_EQ(result.GetConfidence(), 87);
    EXPECT_EQ(result.GetModulation(), "FSK");
    EXPECT_EQ(result.GetTransmissionSystem(), "Baudot");
    EXPECT_EQ(result.GetShift().GetValue(), 850);
    EXPECT_EQ(result.GetBaudrate().GetValue(), 45.45);
    EXPECT_EQ(result.GetDecoder(), "RTTY ");

    record.Result() = {};
    record.SetActive(true);
    result = SearchMC::ToResult(record, Variant::VUHF);
    EXPECT_EQ(result.GetFrequency().GetValue(), 7e6);
    EXPECT_EQ(result.GetBandwidth().GetValue(), 3100);
    EXPECT_FALSE(result.HasStopTime());
    EXPECT_FALSE(result.HasConfidence());
    EXPECT_FALSE(result.GetShift().HasData());
    EXPECT_FALSE(result.GetBaudrate().HasData());
}

TEST_F(Detections, AreSavedInTheOrderShownUnderTheNameGiven) {
    list<DetectionConventional>().Append({detection(1, 9e6), detection(2, 7e6), detection(3, 8e6)});
    list<DetectionConventional>().GetList().back().SetActive(true);
    PlainView view(nullptr);
    view.Set_ValuePath(QLatin1String(ListPath));
    view.Sort(0, true);
    AnswerDialog(Path("results"));
    view.slotSaveToFile();
    AnswerDialog(Path("a.xml.bak"));
    view.slotSaveToFile();
    EXPECT_EQ(Read("a.xml.bak"), Read("results.xml"));
    FreqStoreXml::FrequencyStoreList saved;
    FreqStoreXml::FileHandling().ImportFrequencyStoreList(false, Path("results.xml"), saved);
    EXPECT_EQ(saved.GetUsage(), FreqStoreXml::FrequencyStoreList::SearchResults);
    QStringList ids;
    for (const auto& entry : saved.GetFrequencyStoreEntry()) {
        ids << entry.GetID();
        EXPECT_EQ(entry.GetDetection().HasStopTime(), entry.GetID() != "3") << "an active one has not ended";
    }
    EXPECT_EQ(ids, QStringList({"2", "3", "1"}));

    AnswerDialog(Path("results"));
    view.slotExportToFile();
    EXPECT_EQ(Read("results.csv").split('\n').value(1).trimmed(),
              "2,7000000,3100,30,2023-11-14T22:13:22Z,2023-11-14T22:13:24Z,a,");
    AnswerDialog(QString());
    view.slotSaveToFile();
    EXPECT_EQ(FileNames().size(), 3) << "cancelled";
}

TEST_F(Detections, AFailedSaveIsTracedAndToldOnce) {
    list<Extended>().PushBack(classified(1, 7e6));
    SearchMCExtendedVectorListViewHF view(nullptr, "v");
    view.Set_ValuePath(QLatin1String(ListPath));
    const Traces traces;
    ASSERT_TRUE(QDir(m_folder.path()).mkdir("x.xml"));
    ASSERT_TRUE(QDir(m_folder.path()).mkdir("x.csv"));
    AnswerDialog(Path("x"));
    view.slotSaveFileAs();
    AnswerDialog(Path("x"));
    view.slotExportFileAs();
    ASSERT_EQ(traces.texts.size(), 4) << qPrintable(QDir(m_folder.path()).entryList().join(' '));
    EXPECT_EQ(traces.texts[0], "EXCEPTION WHILE SAVING FREQUENCIES:");
    EXPECT_TRUE(traces.texts[1].contains("x.xml")) << qPrintable(traces.texts[1]);
    EXPECT_EQ(traces.texts[2], "EXCEPTION WHILE EXPORTING RESULTS:");
    EXPECT_EQ(traces.places,
              QStringList({"searchmcextendedvectorlistview:650", "searchmcextendedvectorlistview:651",
                           "searchmcextendedvectorlistview:699", "searchmcextendedvectorlistview:700"}));
    const QString reason = QStringLiteral(": this is no ordinary file");
    EXPECT_EQ(traces.problems, QStringList({Path("x.xml") + reason, Path("x.csv") + reason}));
    EXPECT_EQ(REPORTGENERATOR::LastWriteFailure()->file, Path("x.csv"));
}

TEST_F(Detections, WhatWasSavedIsReadAndSavedAsTheSameBytes) {
    std::vector<Extended> records = oddRecords(200);
    for (const char* text :
         {" blanks ", "tab\tline\nend\r", "a,\"b\";c", "\x01\x02", "\xd0\x96\xe2\x82\xac", "<&>'"}) {
        records.push_back(classified(9, 1e6));
        records.back().Result().demodulator = records.back().Result().decoder = text;
    }
    std::vector<const Extended*> all;
    std::vector<const DetectionConventional*> plain;
    for (const Extended& record : records) {
        all.push_back(&record);
        plain.push_back(&record);
    }
    FreqStoreXml::FileHandling files;
    for (const bool csv : {false, true}) {
        SCOPED_TRACE(csv ? "CSV" : "XML");
        const QString end = csv ? ".csv" : ".xml";
        SearchMC::WriteFile(Path("plain" + end), csv, plain);
        FreqStoreXml::FrequencyStoreList entries;
        const auto type = csv ? FreqStoreXml::FrequencyStoreListHelper::Detections
                              : FreqStoreXml::FrequencyStoreListHelper::XmlList;
        files.ImportFrequencyStoreList(csv, Path("plain" + end), entries, type);
        files.ExportFrequencyStoreList(csv, Path("again" + end), entries, type);
        EXPECT_EQ(entries.GetFrequencyStoreEntry().size(), 206);
        EXPECT_EQ(Read("again" + end), Read("plain" + end));
        for (const Variant variant : {Variant::HF, Variant::VUHF}) {
            SearchMC::WriteFile(Path("ext" + end), csv, all, variant);
            FreqStoreXml::DetectionResultList results;
            files.ImportDetectionResultList(csv, Path("ext" + end), results);
            if (csv)
                results.SetUsage(1); // which a CSV file does not hold
            files.ExportFrequencyStoreList(csv, Path("again" + end), results);
            EXPECT_EQ(Read("again" + end), Read("ext" + end));

            // As records, too: what a file holds is what its records hold.
            std::list<Extended> taken;
            SearchMC::ReadFile(Path("ext" + end), taken);
            std::vector<const Extended*> again;
            for (const Extended& record : taken)
                again.push_back(&record);
            SearchMC::WriteFile(Path("second" + end), csv, again, variant);
            taken.clear();
            SearchMC::ReadFile(Path("second" + end), taken);
            EXPECT_EQ(taken.size(), 206u);
        }
    }
}

TEST_F(Detections, ReadFilesThatAreOddAndRefuseThoseThatAreNone) {
    const auto write = [this](const QString& name, const QByteArray& bytes) {
        QFile out(Path(name));
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(bytes);
    };
    const Traces traces;
    write("odd.csv", "ID,Frequency,Level\nfirst,7000000,1e9\n,,\n");
    std::list<DetectionConventional> plain;
    SearchMC::ReadFile(Path("odd.csv"), plain);
    ASSERT_EQ(plain.size(), 2u);
    EXPECT_EQ(plain.front().GetLevel(), 32767);
    EXPECT_TRUE(plain.front().GetActive());
    ASSERT_EQ(traces.problems.size(), 2);
    EXPECT_TRUE(traces.problems[0].endsWith("odd.csv: the ID \"first\" is no number"));
    EXPECT_TRUE(traces.problems[1].endsWith("odd.csv: the level 1000000000 is cut to 32767"));

    write("none.csv", "ID,Frequency\n1,seven\n");
    EXPECT_THROW(SearchMC::ReadFile(Path("none.csv"), plain), RGException);
    write("none.xml", "<FrequencyStoreList/>");
    std::list<Extended> extended;
    EXPECT_THROW(SearchMC::ReadFile(Path("none.xml"), extended), RGException);
    EXPECT_EQ(plain.size(), 2u) << "what was there stays";
}

} // namespace
