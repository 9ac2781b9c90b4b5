#include "host/freqlist/buttonbar.h"
#include "host/freqlist/pixstatevectorsearchmc.h"
#include "host/gui/guicentral.h"
#include "tests/frequencystore/detections/detectionfixture.h"

#include <QMenu>

namespace {

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

TEST_F(Detections, AListKeepsItsPlaceWhenAnotherOneIsRegistered) {
    constexpr char otherMarked[] = "/DetectionTest/OthersMarked";
    GetOrCreateValue<ValueList<double>>(QLatin1String(MarkedPath))->PushBack(7e6);
    GetOrCreateValue<ValueList<double>>(QLatin1String(otherMarked))->Append({8e6, 9e6});
    list<DetectionConventional>().PushBack(detection(1, 7e6));
    list<Extended>(OtherPath).Append({classified(1, 8e6), classified(2, 9e6), classified(3, 10e6)});
    DetConvListHandler& handler = *DetConvListHandler::Instance();
    const int plain = handler.AddToFreqStore(false, QStringLiteral("x"));
    handler.setEmissionListPath(QLatin1String(OtherPath));
    handler.setEmissionMarkedPath(QLatin1String(otherMarked));
    handler.Init(true);
    const int extended = handler.AddToFreqStore(false, QString());

    // Rows of the view, marks of the line, and rows whose selection marks emissions of the list's own.
    const auto shows = [&](int id, const char* markedPath) {
        IFrequencyListDefinition& definition = *FreqStore::Instance().GetDefinition(id);
        const std::unique_ptr<PixStateVector> line(definition.CreatePixStateVector());
        line->SetHMapping(&m_map, 20);
        line->Refresh();
        size_t marks = 0;
        size_t emphasis = 0;
        for (size_t pixel = 0; pixel < line->size(); ++pixel) {
            marks += (*line)[pixel].count;
            emphasis += ((*line)[pixel].flags & PixState::Focus) != 0;
        }
        const auto view = viewOf(id);
        dynamic_cast<VectorListViewBase&>(*view).SelectAll();
        const auto* marked = Tree::Instance()->Find<ValueList<double>>(QLatin1String(markedPath));
        return QStringLiteral("%1 rows, %2 marks, %3 emphasised, %4 selected")
            .arg(view->GetListView()->RowCount())
            .arg(marks)
            .arg(emphasis)
            .arg(marked->Size())
            .toStdString();
    };
    EXPECT_EQ(shows(plain, MarkedPath), "1 rows, 1 marks, 1 emphasised, 1 selected");
    EXPECT_EQ(shows(extended, otherMarked), "3 rows, 3 marks, 2 emphasised, 3 selected");

    handler.setEmissionListPath(QLatin1String("/DetectionTest/Nowhere"));
    EXPECT_EQ(viewOf(extended)->GetListView()->RowCount(), 0) << "a path that is set is the newest list's";
    EXPECT_EQ(viewOf(plain)->GetListView()->RowCount(), 1);
    DetConvListHandler::DeleteInstance();
    EXPECT_EQ(viewOf(plain)->GetListView()->RowCount(), 1) << "the list does without its handler";
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
        {new SearchMCVectorListView(nullptr), ListPath, plain},
        {new DetectionConventionalListView(nullptr, 1), ListPath, plain},
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
    view.Set_ValuePath(QLatin1String(ListPath));
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
    view.Set_ValuePath(QLatin1String(ListPath));
    EXPECT_FALSE(view.Sort(0, true)) << "empty list";
    list<DetectionConventional>().Append(
        {detection(3, 9e6, -5), detection(1, 7e6, 20), detection(2, 8e6, -5), detection(4, 6e6, 120)});
    view.Set_ValuePath(QLatin1String(ListPath));
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

TEST_F(Detections, EveryColumnSortsAsItsComparisonSays) {
    const std::vector<Extended> records = oddRecords(500);
    list<Extended>().Append({records.begin(), records.end()});
    Opened<SearchMCExtendedVectorListViewHF> hf(nullptr, "v");
    Opened<SearchMCExtendedVectorListViewVUHF> vuhf(nullptr, "v");
    const auto check = [&](auto& view, Variant variant) {
        view.Set_ValuePath(QLatin1String(ListPath));
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

TEST_F(Detections, SelectedOnesAreCopiedAndMarked) {
    GetOrCreateValue<ValueList<double>>(QLatin1String(MarkedPath));
    list<Extended>().Append({classified(1, 7e6), classified(2, 8e6), classified(3, 9e6)});
    DetConvListHandler& handler = *DetConvListHandler::Instance();
    handler.Init(true);
    const int id = handler.AddToFreqStore(false, QString());
    const auto view = viewOf(id);
    const std::unique_ptr<PixStateVector> line(
        FreqStore::Instance().GetDefinition(id)->CreatePixStateVector());
    line->SetHMapping(&m_map, 20);
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
        EXPECT_TRUE(row->GetValue(FreqStore::Instance().GetCopyStructId(QLatin1String(column)), found))
            << column;
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
