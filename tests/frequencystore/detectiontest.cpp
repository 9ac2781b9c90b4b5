#include "controls/frequencystore/listviewshandler/detconvlisthandler.h"
#include "controls/frequencystore/searchmcextendedvectorlistview.h"
#include "controls/frequencystore/searchmcrecords.h"
#include "controls/frequencystore/searchmcvectorlistview.h"
#include "host/freqlist/buttonbar.h"
#include "host/freqlist/pixstatevectorsearchmc.h"
#include "host/freqstorexml/filehandling.h"
#include "host/gui/guibase.h"
#include "host/gui/guicentral.h"
#include "host/startup/cfgcenter.h"
#include "tests/support/dialogs.h"
#include "tests/support/traces.h"

#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QMenu>
#include <QTemporaryDir>
#include <QTimer>

#include <gtest/gtest.h>
#include <random>

namespace {

using Extended = ExtendedDetectionConventional;
using ExtendedAdapter = ExtendedDetectionConventionalAdapter;
using SearchMC::Variant;

constexpr double Infinite = std::numeric_limits<double>::infinity();
constexpr double NoNumber = std::numeric_limits<double>::quiet_NaN();
constexpr char Path[] = "/DetectionTest/Emissions";
constexpr char OtherPath[] = "/DetectionTest/Others";
constexpr char MarkedPath[] = "/DetectionTest/Marked";

template <typename Record = DetectionConventional>
Record detection(unsigned id, double hertz, short level = 30) {
    Record record;
    record.SetID(id);
    record.SetFrequency(hertz);
    record.SetBandwidth(3100);
    record.SetLevel(level);
    record.SetStartTime(1.7e15 + 1e6 * id);
    record.SetStopTime(1.7e15 + 1e6 * id + 2.5e6);
    return record;
}

Extended classified(unsigned id, double hertz) {
    auto record = detection<Extended>(id, hertz);
    record.Result() = {7055123.4, 2400,   45.45,   850,    0.25,     3.9, 87,     "FSK",
                       "Baudot",  "2, 4", "RTTY ", "2FSK", "123.25", "5", "11.5", "48.25"};
    return record;
}

template <typename View>
class Opened : public View {
public:
    using View::AllRecords;
    using View::CellText;
    using View::select;
    using View::View;

    std::vector<unsigned> Ids() {
        std::vector<unsigned> ids;
        for (const auto* record : AllRecords())
            ids.push_back(record->GetID());
        return ids;
    }
};

using PlainView = Opened<SearchMCVectorListView>;

class Detections : public testing::Test {
protected:
    void SetUp() override {
        Tree::Instance()->MakeNode(QStringLiteral("/DetectionTest"));
        GuiBase::Instance().SetUseNativeDialogs(false);
        CfgCenter::SetDirectory(folder.path());
        DetConvListHandler::Instance()->setEmissionListPath(QLatin1String(Path));
        DetConvListHandler::Instance()->setEmissionMarkedPath(QLatin1String(MarkedPath));
    }
    void TearDown() override {
        for (const int id : FreqStore::Instance().GetListIds())
            FreqStore::Instance().RemoveFrequencyListDefinition(id);
        DetConvListHandler::DeleteInstance();
        Tree::Instance()->GetRoot()->DeleteChildren();
    }

    template <typename Record>
    ValueList<Record>& list(const char* path = Path) {
        return *GetOrCreateValue<ValueList<Record>>(QLatin1String(path));
    }
    QString file(const QString& name) const { return folder.filePath(name); }
    QByteArray read(const QString& name) const {
        QFile in(file(name));
        return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray("<no such file>");
    }
    /// Registers a list as the host does and makes its view.
    std::unique_ptr<FrequencyStoreListView> viewOf(int listId) {
        return std::unique_ptr<FrequencyStoreListView>(
            FreqStore::Instance().GetDefinition(listId)->CreateView(nullptr, static_cast<unsigned>(listId)));
    }

    QTemporaryDir folder;
};

TEST_F(Detections, AreRegisteredByKindOfSearchAndReceiver) {
    DetConvListHandler& handler = *DetConvListHandler::Instance();
    list<DetectionConventional>().PushBack(detection(1, 7e6));
    const int plain = handler.AddToFreqStore(true, QStringLiteral("x"));
    EXPECT_EQ(FreqStore::Instance().GetDefinition(plain)->GetName(), "x");
    EXPECT_FALSE(FreqStore::Instance().GetDefinition(plain)->GetAvailable4WideView());
    EXPECT_TRUE(FreqStore::Instance().GetDefinition(plain)->GetAvailable4SimpleView());
    EXPECT_EQ(FreqStore::Instance().GetDefinition(plain)->GetPixmap().size(), QSize(14, 14));
    const auto view = viewOf(plain);
    ASSERT_NE(dynamic_cast<SearchMCVectorListView*>(view.get()), nullptr);
    EXPECT_EQ(view->GetID(), static_cast<unsigned>(plain));
    EXPECT_EQ(view->GetListView()->RowCount(), 1);

    handler.setEmissionListPath(QLatin1String(OtherPath));
    for (unsigned id : {1u, 2u})
        list<DetectionConventional>(OtherPath).PushBack(detection(id, 7e6));
    EXPECT_EQ(viewOf(plain)->GetListView()->RowCount(), 2) << "a view opened later reads the new path";
    EXPECT_EQ(view->GetListView()->RowCount(), 1);
    const std::unique_ptr<FrequencyStoreListView> overMediators(
        CreateDetectionConventionalListView(nullptr, 5));
    EXPECT_EQ(overMediators->GetListView()->RowCount(), 2);

    handler.Init(true);
    const int hf = handler.AddToFreqStore(false, QStringLiteral("x"));
    EXPECT_EQ(FreqStore::Instance().GetDefinition(hf)->GetName(), "Search MC with Classifier");
    EXPECT_NE(dynamic_cast<SearchMCExtendedVectorListViewHF*>(viewOf(hf).get()), nullptr);
    const auto vuhf = viewOf(handler.AddToFreqStore(true, QStringLiteral("x")));
    EXPECT_NE(dynamic_cast<SearchMCExtendedVectorListViewVUHF*>(vuhf.get()), nullptr);
    EXPECT_EQ(vuhf->GetWidget()->objectName(), "SearchMCExtListViewHF");
    EXPECT_EQ(vuhf->GetListView()->RowCount(), 0) << "plain records are not of its kind";
}

/// Titles and the cells of the first row.
QStringList shown(SortListView& list) {
    QStringList cells;
    for (int column = 0; column < list.columnCount(); ++column)
        cells << list.headerItem()->text(column) + QLatin1Char('=') +
                     (list.firstChild() ? list.firstChild()->text(column) : QString());
    return cells;
}

TEST_F(Detections, ShowTheColumnsOfTheirKind) {
    const QString start = DetectionConventionalAdapter::GetStartTimeString(detection(7, 0));
    const QString stop = DetectionConventionalAdapter::GetStopTimeString(detection(7, 0));
    const QStringList plain = {"Frequency=7055.000 kHz", "ID=7",         "Bandwidth=3.100 kHz", "Level=30",
                               "From=" + start,          "Until=" + stop};
    list<DetectionConventional>().PushBack(detection(7, 7055000));
    list<Extended>(OtherPath).PushBack(classified(7, 7055000));
    const QStringList hf = plain + QStringList{"Class. Frequency=7055.123 kHz",
                                               "Class. Bandwidth=2.400 kHz",
                                               "Class. Confidence=87 %",
                                               "Class. Modulation=FSK",
                                               "Class. Trans.=Baudot",
                                               "Class. Baudrate=45.45 Bd",
                                               "Class. Shift=850 Hz",
                                               "Class. Block Length=0.25 s",
                                               "Class. Cycle Time=3.9 s",
                                               "Class. Channels=2, 4",
                                               "Class. Decoder=RTTY ",
                                               "Azimuth=123.25",
                                               "DF Quality=5",
                                               "Location=" + Coord(11.5, 48.25).GetString({})};
    QStringList vuhf = hf;
    vuhf[6] = "Class. Frequency=7.055123 MHz";
    vuhf[13] = "Class. Primary Mod.=2FSK";
    vuhf[14] = "Class. Tone Count=3";
    vuhf.remove(15, 2);

    const struct {
        FrequencyStoreListView* view;
        const char* path;
        QStringList cells;
    } rows[] = {
        {new SearchMCVectorListView(nullptr), Path, plain},
        {new DetectionConventionalListView(nullptr, 1), Path, plain},
        {new SearchMCExtendedVectorListViewHF(nullptr, "v"), OtherPath, hf},
        {new ExtendedDetectionConventionalListViewHF(nullptr, 1), OtherPath, hf},
        {new SearchMCExtendedVectorListViewVUHF(nullptr, "v"), OtherPath, vuhf},
        {new ExtendedDetectionConventionalListViewVUHF(nullptr, 1), OtherPath, vuhf},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.view->GetWidget()->metaObject()->className());
        EXPECT_TRUE(dynamic_cast<VectorListViewBase*>(row.view)->Set_ValuePath(QLatin1String(row.path)));
        row.view->GetWidget()->resize(800, 200);
        row.view->GetWidget()->show();
        EXPECT_EQ(shown(*row.view->GetListView()), row.cells);
        for (unsigned column = 0; column < static_cast<unsigned>(row.cells.size()); ++column)
            EXPECT_TRUE(row.view->GetListView()->ColumnAlignment(static_cast<int>(column)) & Qt::AlignRight);
        delete row.view;
    }
}

TEST_F(Detections, CellsAreEmptyWithoutAResultAndTellItsCodes) {
    const struct {
        void (*set)(ClassifierResult&);
        const char* field;
        QString text;
    } rows[] = {
        {[](ClassifierResult&) {}, "Class. Frequency", ""},
        {[](ClassifierResult& r) { r.frequency = -1; }, "Class. Frequency MHz", ""},
        {[](ClassifierResult& r) { r.frequency = NoNumber; }, "Class. Frequency", ""},
        {[](ClassifierResult& r) { r.bandwidth = 0; }, "Class. Bandwidth", ""},
        {[](ClassifierResult& r) { r.confidence = 0; }, "Class. Confidence", ""},
        {[](ClassifierResult& r) { r.confidence = 1; }, "Class. Confidence", "1 %"},
        {[](ClassifierResult& r) { r.baudrate = 1234567; }, "Class. Baudrate", "1.23457e+06 Bd"},
        {[](ClassifierResult& r) { r.shift = -170; }, "Class. Shift", ""},
        {[](ClassifierResult& r) { r.cycletime = 0.9; }, "Class. Tone Count", ""},
        {[](ClassifierResult& r) { r.cycletime = 1e300; }, "Class. Tone Count", "9223372036854775807"},
        {[](ClassifierResult& r) { r.cycletime = 0.9; }, "Class. Cycle Time", "0.9 s"},
        {[](ClassifierResult& r) { r.demodulator = "\xc3\xa4,\"\n\xd0\x96"; }, "Class. Modulation",
         QString::fromUtf8("ä,\"\nЖ")},
        {[](ClassifierResult& r) { r.azimuth = "1000"; }, "Azimuth", "Searching..."},
        {[](ClassifierResult& r) { r.azimuth = "1001"; }, "Azimuth", "Invalid DF result"},
        {[](ClassifierResult& r) { r.azimuth = "1002"; }, "Azimuth", "Locate timeout"},
        {[](ClassifierResult& r) { r.azimuth = "-1000"; }, "Azimuth", ""},
        {[](ClassifierResult& r) { r.azimuth = "10000"; }, "Azimuth", "10000"},
        {[](ClassifierResult& r) { r.dfQuality = "1002"; }, "DF Quality", "Locate timeout"},
        {[](ClassifierResult& r) { r.dfQuality = "-1000"; }, "DF Quality", ""},
    };
    for (const auto& row : rows) {
        Extended record;
        row.set(record.Result());
        EXPECT_EQ(ExtendedAdapter::FieldText(record, QLatin1String(row.field)), row.text) << row.field;
    }
}

TEST_F(Detections, LocationsAreOneOrMorePositionsOrTheReasonForNone) {
    const struct {
        const char* azimuth;
        const char* longitude;
        const char* latitude;
        QString text;
    } rows[] = {
        {"1001", "1", "2", "Invalid DF result"},
        {"", "-1000", "2", ""},
        {"", "1", "-1000", ""},
        {"90", "11.5", "48.25", Coord(11.5, 48.25).GetString({})},
        {"", "11.5", "1.7976931348623157e+308", "---"},
        {"", "1.7976931348623157e+308", "48.25", "---"},
        {"", "11.5", "91", "---"},
        {"", "nan", "1", "---"},
        {"", "1,2", "3", ""},
        {"", "1,1.7976931348623157e+308", "3,4", Coord(1, 3).GetString({}) + ",---"},
    };
    for (const auto& row : rows) {
        Extended record;
        record.Result().azimuth = row.azimuth;
        record.Result().dfLongitude = row.longitude;
        record.Result().dfLatitude = row.latitude;
        EXPECT_EQ(ExtendedAdapter::GetLocationString(record), row.text)
            << row.longitude << ' ' << row.latitude;
    }
}

TEST_F(Detections, PositionsFollowTheFormatOfTheGui) {
    list<Extended>().PushBack(classified(1, 7e6));
    SearchMCExtendedVectorListViewHF view(nullptr, "v");
    view.Set_ValuePath(QLatin1String(Path));
    view.resize(800, 200);
    view.show();
    for (const CoordFormat format : {CoordFormat::Mgrs, CoordFormat::DecimalDegrees}) {
        GuiCentral::Instance().GetPositionFormat()->Select(static_cast<long>(format));
        EXPECT_EQ(view.GetListView()->firstChild()->text(19), Coord(11.5, 48.25).GetString(format));
    }
}

TEST_F(Detections, SortByAColumnTurnRoundAndRefuseToDoNothing) {
    PlainView view(nullptr);
    EXPECT_FALSE(view.Sort(0, true)) << "no list";
    list<DetectionConventional>();
    view.Set_ValuePath(QLatin1String(Path));
    EXPECT_FALSE(view.Sort(0, true)) << "empty list";
    list<DetectionConventional>().Append(
        {detection(3, 9e6, -5), detection(1, 7e6, 20), detection(2, 8e6, -5), detection(4, 6e6, 120)});
    view.Set_ValuePath(QLatin1String(Path));
    view.select(1);
    EXPECT_EQ(view.GetSelectedId(), 1);
    using Ids = std::vector<unsigned>;
    const struct {
        int column;
        bool ascending;
        bool sorted;
        Ids ids;
    } steps[] = {
        {3, true, true, {3, 2, 1, 4}},   {3, true, false, {3, 2, 1, 4}},  {3, false, true, {4, 1, 2, 3}},
        {3, false, false, {4, 1, 2, 3}}, {1, false, true, {4, 3, 2, 1}},  {0, true, true, {4, 1, 2, 3}},
        {6, true, false, {4, 1, 2, 3}},  {-1, true, false, {4, 1, 2, 3}},
    };
    for (const auto& step : steps) {
        EXPECT_EQ(view.Sort(step.column, step.ascending), step.sorted) << step.column << step.ascending;
        EXPECT_EQ(view.Ids(), step.ids) << step.column << step.ascending;
        EXPECT_EQ(view.GetSelectedId(), 1) << "the selected detection stays selected";
    }
}

/// Records with many equal keys and all that may go wrong in a number or a text.
std::vector<Extended> oddRecords(size_t count) {
    std::mt19937 random(11);
    const double numbers[] = {0, -0.0, 1, -7e6, 7e6, 1e300, -1e300, Infinite, -Infinite, NoNumber, 5e-324};
    const char* texts[] = {"",     "FSK",      "FSK 850", "FSK-12345", "FSK-12344",
                           "\xff", "\xc3\xa4", "AM",      "1000",      "9.5"};
    const auto number = [&] { return numbers[random() % std::size(numbers)]; };
    const auto text = [&] { return texts[random() % std::size(texts)]; };
    std::vector<Extended> records;
    for (size_t i = 0; i < count; ++i) {
        auto record = detection<Extended>(static_cast<unsigned>(random()), number(), short(random() % 9));
        record.SetBandwidth(number());
        record.SetStartTime(number());
        record.SetStopTime(number());
        record.Result() = {number(), number(), number(), number(), number(), number(), short(random() % 3),
                           text(),   text(),   text(),   text(),   text(),   text(),   text(),
                           text(),   text()};
        records.push_back(record);
    }
    return records;
}

TEST_F(Detections, EveryColumnSortsAsItsComparisonSays) {
    const std::vector<Extended> records = oddRecords(500);
    list<Extended>().Append({records.begin(), records.end()});
    Opened<SearchMCExtendedVectorListViewHF> hf(nullptr, "v");
    Opened<SearchMCExtendedVectorListViewVUHF> vuhf(nullptr, "v");
    const auto check = [&](auto& view, Variant variant) {
        view.Set_ValuePath(QLatin1String(Path));
        const auto columns = SearchMC::ExtendedColumns(variant);
        for (int column = 0; column < static_cast<int>(columns.size()); ++column) {
            for (const bool ascending : {true, false}) {
                const CompareExtDetConv before(columns[static_cast<size_t>(column)].id, ascending);
                ASSERT_TRUE(view.Sort(column, ascending)) << column;
                const auto sorted = view.AllRecords();
                ASSERT_EQ(sorted.size(), records.size());
                for (size_t i = 1; i < sorted.size(); ++i)
                    ASSERT_FALSE(before(*sorted[i], *sorted[i - 1])) << column << " at " << i;
            }
        }
    };
    check(hf, Variant::HF);
    check(vuhf, Variant::VUHF);
    EXPECT_FALSE(CompareExtDetConv(20, true)(records[0], records[1]));
    EXPECT_FALSE(CompareExtDetConv(-1, false)(records[1], records[0]));
}

TEST_F(Detections, ALineHasTheCellsAsTheyStand) {
    Extended record = classified(7, 7055000);
    record.Result().azimuth = "1001";
    record.Result().demodulator = "F\"S";
    record.SetActive(true);
    const auto start = DetectionConventionalAdapter::GetStartTimeString(record).toStdString();
    std::stringstream hf;
    SearchMCExtendedVectorListViewHF(nullptr, "v").writeCsvLineToStream(hf, record);
    EXPECT_EQ(hf.str(),
              "7055.000 kHz,7,3.100 kHz,30," + start +
                  ",,7055.123 kHz,2.400 kHz,87 %,F\"S,Baudot,45.45 Bd,850 Hz,0.25 s,3.9 s,2, 4,RTTY "
                  ",Invalid DF result,5,Invalid DF result\n");
    std::stringstream vuhf;
    SearchMCExtendedVectorListViewVUHF(nullptr, "v").writeCsvLineToStream(vuhf, record);
    EXPECT_EQ(vuhf.str(), "7055.000 kHz,7,3.100 kHz,30," + start +
                              ",,7.055123 MHz,2.400 kHz,87 %,F\"S,Baudot,45.45 Bd,850 Hz,2FSK,3,Invalid DF "
                              "result,5,Invalid DF result\n");
}

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
    view.Set_ValuePath(QLatin1String(Path));
    view.Sort(0, true);
    AnswerDialog(file("results"));
    view.slotSaveToFile();
    AnswerDialog(file("a.xml.bak"));
    view.slotSaveToFile();
    EXPECT_EQ(read("a.xml.bak"), read("results.xml"));
    FreqStoreXml::FrequencyStoreList saved;
    FreqStoreXml::FileHandling().ImportFrequencyStoreList(false, file("results.xml"), saved);
    EXPECT_EQ(saved.GetUsage(), FreqStoreXml::FrequencyStoreList::SearchResults);
    QStringList ids;
    for (const auto& entry : saved.GetFrequencyStoreEntry()) {
        ids << entry.GetID();
        EXPECT_EQ(entry.GetDetection().HasStopTime(), entry.GetID() != "3") << "an active one has not ended";
    }
    EXPECT_EQ(ids, QStringList({"2", "3", "1"}));

    AnswerDialog(file("results"));
    view.slotExportToFile();
    EXPECT_EQ(read("results.csv").split('\n').value(1).trimmed(),
              "2,7000000,3100,30,2023-11-14T22:13:22Z,2023-11-14T22:13:24Z,a,");
    AnswerDialog(QString());
    view.slotSaveToFile();
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 3) << "cancelled";
}

TEST_F(Detections, AFailedSaveIsTracedAndTellsNobody) {
    list<Extended>().PushBack(classified(1, 7e6));
    SearchMCExtendedVectorListViewHF view(nullptr, "v");
    view.Set_ValuePath(QLatin1String(Path));
    const Traces traces;
    ASSERT_TRUE(QDir(folder.path()).mkdir("x.xml"));
    ASSERT_TRUE(QDir(folder.path()).mkdir("x.csv"));
    AnswerDialog(file("x"));
    view.slotSaveFileAs();
    AnswerDialog(file("x"));
    view.slotExportFileAs();
    ASSERT_EQ(traces.texts.size(), 4) << qPrintable(QDir(folder.path()).entryList().join(' '));
    EXPECT_EQ(traces.texts[0], "EXCEPTION WHILE SAVING FREQUENCIES:");
    EXPECT_TRUE(traces.texts[1].contains("x.xml")) << qPrintable(traces.texts[1]);
    EXPECT_EQ(traces.texts[2], "EXCEPTION WHILE EXPORTING RESULTS:");
    EXPECT_EQ(traces.places,
              QStringList({"searchmcextendedvectorlistview:650", "searchmcextendedvectorlistview:651",
                           "searchmcextendedvectorlistview:699", "searchmcextendedvectorlistview:700"}));
    EXPECT_TRUE(traces.problems.isEmpty());
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
        SearchMC::WriteFile(file("plain" + end), csv, plain);
        FreqStoreXml::FrequencyStoreList entries;
        const auto type = csv ? FreqStoreXml::FrequencyStoreListHelper::Detections
                              : FreqStoreXml::FrequencyStoreListHelper::XmlList;
        files.ImportFrequencyStoreList(csv, file("plain" + end), entries, type);
        files.ExportFrequencyStoreList(csv, file("again" + end), entries, type);
        EXPECT_EQ(entries.GetFrequencyStoreEntry().size(), 206);
        EXPECT_EQ(read("again" + end), read("plain" + end));
        for (const Variant variant : {Variant::HF, Variant::VUHF}) {
            SearchMC::WriteFile(file("ext" + end), csv, all, variant);
            FreqStoreXml::DetectionResultList results;
            files.ImportDetectionResultList(csv, file("ext" + end), results);
            if (csv)
                results.SetUsage(1); // which a CSV file does not hold
            files.ExportFrequencyStoreList(csv, file("again" + end), results);
            EXPECT_EQ(read("again" + end), read("ext" + end));

            // As records, too: what a file holds is what its records hold.
            std::list<Extended> taken;
            SearchMC::ReadFile(file("ext" + end), taken);
            std::vector<const Extended*> again;
            for (const Extended& record : taken)
                again.push_back(&record);
            SearchMC::WriteFile(file("second" + end), csv, again, variant);
            taken.clear();
            SearchMC::ReadFile(file("second" + end), taken);
            EXPECT_EQ(taken.size(), 206u);
        }
    }
}

TEST_F(Detections, ReadFilesThatAreOddAndRefuseThoseThatAreNone) {
    const auto write = [this](const QString& name, const QByteArray& bytes) {
        QFile out(file(name));
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(bytes);
    };
    const Traces traces;
    write("odd.csv", "ID,Frequency,Level\nfirst,7000000,1e9\n,,\n");
    std::list<DetectionConventional> plain;
    SearchMC::ReadFile(file("odd.csv"), plain);
    ASSERT_EQ(plain.size(), 2u);
    EXPECT_EQ(plain.front().GetLevel(), 32767);
    EXPECT_TRUE(plain.front().GetActive());
    ASSERT_EQ(traces.problems.size(), 2);
    EXPECT_TRUE(traces.problems[0].endsWith("odd.csv: the ID \"first\" is no number"));
    EXPECT_TRUE(traces.problems[1].endsWith("odd.csv: the level 1000000000 is cut to 32767"));

    write("none.csv", "ID,Frequency\n1,seven\n");
    EXPECT_THROW(SearchMC::ReadFile(file("none.csv"), plain), RGException);
    write("none.xml", "<FrequencyStoreList/>");
    std::list<Extended> extended;
    EXPECT_THROW(SearchMC::ReadFile(file("none.xml"), extended), RGException);
    EXPECT_EQ(plain.size(), 2u) << "what was there stays";
}

TEST_F(Detections, SelectedOnesAreCopiedAndMarked) {
    GetOrCreateValue<ValueList<double>>(QLatin1String(MarkedPath));
    list<Extended>().Append({classified(1, 7e6), classified(2, 8e6), classified(3, 9e6)});
    DetConvListHandler& handler = *DetConvListHandler::Instance();
    handler.Init(true);
    const int id = handler.AddToFreqStore(false, QString());
    const auto view = viewOf(id);
    struct MegahertzPerPixel : IHasHMap {
        double MapToPixel(double hertz) const override { return hertz / 1e6; }
        double MapToFrequency(double pixel) const override { return pixel * 1e6; }
    } map;
    const std::unique_ptr<PixStateVector> line(
        FreqStore::Instance().GetDefinition(id)->CreatePixStateVector());
    line->SetHMapping(&map, 20);
    const auto marked = [&] {
        std::vector<size_t> pixels;
        line->Refresh();
        for (size_t pixel = 0; pixel < line->size(); ++pixel) {
            if ((*line)[pixel].flags & PixState::Focus)
                pixels.push_back(pixel);
        }
        return pixels;
    };
    EXPECT_TRUE(marked().empty());
    view->SelectFrequency(8.1e6);
    EXPECT_EQ(marked(), std::vector<size_t>{8});
    EXPECT_EQ((*line)[9].count, 1u);
    dynamic_cast<VectorListViewBase&>(*view).SelectAll();
    EXPECT_EQ(marked(), (std::vector<size_t>{7, 8, 9}));
    list<Extended>().PushBack(classified(4, 10e6));
    EXPECT_EQ(marked(), (std::vector<size_t>{7, 8, 9}));
    EXPECT_EQ((*line)[10].count, 1u);
    view->SelectFrequency(9e6);
    EXPECT_EQ(marked(), std::vector<size_t>{9});

    FreqStoreListViewButtonBar bar;
    view->InitFreqStoreWidget(&bar);
    bar.GetAction(FreqStoreListViewButtonBar::Copy)->trigger();
    bool more = true;
    const FrequencyListCopyStruct* row = FreqStore::Instance().GetFrequencyListCopyStruct(more);
    ASSERT_NE(row, nullptr);
    EXPECT_FALSE(more);
    const auto text = [&](const char* column) {
        QString found;
        row->GetValue(FreqStore::Instance().GetCopyStructId(QLatin1String(column)), found);
        return found;
    };
    EXPECT_EQ(text("Frequency"), "9000.000 kHz");
    EXPECT_EQ(text("Bandwidth"), "3.100 kHz");
    EXPECT_EQ(text("Demodulation"), "FSK");
    EXPECT_EQ(text("Type"), "a");
    EXPECT_TRUE(text("Comment").startsWith("Detection 3, level 30, ")) << qPrintable(text("Comment"));
}

TEST_F(Detections, ExportIsOfferedWhereItIsAllowed) {
    using Bar = FreqStoreListViewButtonBar;
    for (const bool allowed : {false, true}) {
        const std::unique_ptr<ICfg> cfg(CfgCenter::CreateCfg("FrequencyStore", ICfg::PlugIn, QString()));
        cfg->SetBool("AllowExportToCsv", allowed);
        FrequencyStoreListView* views[] = {new SearchMCVectorListView(nullptr),
                                           new DetectionConventionalListView(nullptr, 1),
                                           new SearchMCExtendedVectorListViewVUHF(nullptr, "v"),
                                           new ExtendedDetectionConventionalListViewHF(nullptr, 1)};
        for (FrequencyStoreListView* view : views) {
            Bar bar;
            view->InitFreqStoreWidget(&bar);
            EXPECT_EQ(bar.GetCaption(), "Frequency Store - Detection Conventional");
            EXPECT_TRUE(bar.GetAction(Bar::Copy)->isVisible());
            EXPECT_TRUE(bar.GetAction(Bar::Save)->isVisible());
            EXPECT_EQ(bar.GetAction(Bar::Export)->isVisible(), allowed);
            EXPECT_NE(view->GetWidget()->findChild<QMenu*>("ViewMenu"), nullptr);
            delete view;
        }
    }
}

} // namespace
