// Figures of lists of a million detections: "ratio" is ours over the baseline of the same run, "ours_s" a
// time, and "goal" what must not be exceeded.

#include "bench/figures.h"
#include "bench/leanwriter.h"
#include "controls/frequencystore/detections/searchmcextendedvectorlistview.h"
#include "controls/frequencystore/detections/searchmcvectorlistview.h"
#include "host/base/numbers.h"
#include "host/freqlist/pixstatevectorsearchmc.h"

#include <QCoreApplication>
#include <QScrollBar>

#include <benchmark/benchmark.h>

namespace {

using Extended = ExtendedDetectionConventional;
using SearchMC::Variant;

constexpr int Million = 1000000;
constexpr char PlainPath[] = "/DetectionBench/Plain";
constexpr char ExtendedPath[] = "/DetectionBench/Extended";

template <typename Record>
void fill(Record& record, int i) {
    record.SetID(static_cast<unsigned>(i * 7919LL % Million));
    record.SetFrequency(1e6 + static_cast<double>(i * 104729LL % Million) * 29.0);
    record.SetBandwidth(static_cast<double>(2000 + i * 7919LL % 997));
    record.SetLevel(static_cast<short>(i * 31 % 90));
    record.SetStartTime(1.7e15 + static_cast<double>(i * 15485863LL % Million) * 1e6);
    record.SetStopTime(record.GetStartTime() + static_cast<double>(i * 7919LL % 60) * 1e6);
    record.SetActive(i % 17 == 0);
}

DetectionConventional plainAt(int i) {
    DetectionConventional record;
    fill(record, i);
    return record;
}

Extended extendedAt(int i) {
    static const char* const names[] = {"FSK", "8PSK", "USB", "MFSK", "CW", "AM"};
    static const char* const systems[] = {"Baudot", "STANAG 4285", "Voice", "ALE 2G", "Morse", "Broadcast"};
    Extended record;
    fill(record, i);
    const auto kind = static_cast<size_t>(i * 7 % 6);
    record.Result() = {record.GetFrequency() + 50,
                       2400,
                       static_cast<double>(50 + i % 9 * 50),
                       static_cast<double>(170 + i % 5 * 170),
                       0.1 * (i % 4),
                       i % 8 * 0.5,
                       static_cast<short>(1 + i % 99),
                       names[kind],
                       systems[kind],
                       std::to_string(1 + i % 12),
                       systems[kind],
                       names[kind],
                       std::to_string(static_cast<double>(i * 13LL % 3600) / 10.0),
                       std::to_string(i % 100),
                       std::to_string(i % 300 * 0.1),
                       std::to_string(36 + i % 200 * 0.1)};
    return record;
}

template <typename Record>
ValueList<Record>& listOf(const char* path, Record (*make)(int)) {
    Tree::Instance()->MakeNode(QStringLiteral("/DetectionBench"));
    auto& list = *GetOrCreateValue<ValueList<Record>>(QString::fromLatin1(path));
    if (list.Size() != Million) {
        auto& records = list.GetList();
        records.clear();
        for (int i = 0; i < Million; ++i)
            records.push_back(make(i));
    }
    return list;
}

class PlainView final : public SearchMCVectorListView {
public:
    using Record = DetectionConventional;
    static constexpr const char* Path = PlainPath;
    static ValueList<Record>& List() { return listOf<Record>(Path, plainAt); }
    static Record At(int i) { return plainAt(i); }

    PlainView() : SearchMCVectorListView(nullptr) {}
    using SearchMCVectorListView::UpdateView;
};

class ExtendedView final : public SearchMCExtendedVectorListViewHF {
public:
    using Record = Extended;
    static constexpr const char* Path = ExtendedPath;
    static ValueList<Record>& List() { return listOf<Record>(Path, extendedAt); }
    static Record At(int i) { return extendedAt(i); }

    ExtendedView() : SearchMCExtendedVectorListViewHF(nullptr, "bench") {}
    using SearchMCExtendedVectorListViewHF::UpdateView;
};

template <typename View>
std::unique_ptr<View> opened() {
    View::List();
    auto view = std::make_unique<View>();
    view->resize(1200, 800);
    view->show();
    view->Set_ValuePath(QString::fromLatin1(View::Path));
    view->grab();
    view->UpdateView();
    return view;
}

void reportTime(benchmark::State& state, double ours, double goal) {
    state.SetIterationTime(ours);
    state.counters["ours_s"] = ours;
    state.counters["goal"] = goal;
}

template <typename View>
void openList(benchmark::State& state) {
    View::List();
    for (auto _ : state) {
        View view;
        view.resize(1200, 800);
        view.show();
        view.grab();
        reportTime(state, processorSecondsOf([&] {
                       view.Set_ValuePath(QString::fromLatin1(View::Path));
                       view.grab();
                   }),
                   0.016);
    }
}

/// What follows the opening: the whole list is taken, in turns of the event loop. The longest of them.
template <typename View>
void loadList(benchmark::State& state) {
    View::List();
    for (auto _ : state) {
        View view;
        view.resize(1200, 800);
        view.show();
        view.Set_ValuePath(QString::fromLatin1(View::Path));
        view.grab();
        double longest = 0;
        double whole = 0;
        while (view.IsLoading()) {
            const double time = processorSecondsOf([] { QCoreApplication::processEvents(); });
            whole += time;
            longest = std::max(longest, time);
        }
        reportTime(state, longest, 0.05);
        state.counters["whole_s"] = whole;
    }
}

template <typename View>
void scrollPage(benchmark::State& state) {
    const auto view = opened<View>();
    view->Sort(0, true);
    int row = Million / 2;
    for (auto _ : state) {
        reportTime(state, processorSecondsOf([&] {
                       view->GetScrollBar()->setValue(row += 40);
                       view->grab();
                   }),
                   0.016);
    }
}

/// Types a text into the filter, a letter at a time: the longest wait, and the time until all is found.
template <typename View>
void filterList(benchmark::State& state) {
    const auto view = opened<View>();
    const QString typed = QStringLiteral("9042");
    qsizetype letters = 0;
    double longest = 0;
    for (auto _ : state) {
        double whole = 0;
        const auto turn = [&](const std::function<void()>& work) {
            const double time = processorSecondsOf(work);
            whole += time;
            longest = std::max(longest, time);
        };
        turn([&] { view->GetListView()->SetFilterText(typed.left(++letters)); });
        while (view->IsFiltering())
            turn([] { QCoreApplication::processEvents(); });
        reportTime(state, longest, 0.05);
        state.counters["whole_s"] = whole;
    }
}

/// Sorts by the column, page shown, over `std::sort` of the keys with their numbers.
void sortColumn(benchmark::State& state) {
    const auto view = opened<ExtendedView>();
    const auto column = static_cast<int>(state.range(0));
    const RecordSort::Key<Extended>& key = *SearchMC::KeyOf<Extended>(column);
    const auto baseline = [&] {
        return std::visit(
            [&](auto keyOf) {
                const auto& records = ExtendedView::List().Elements();
                using Key = std::decay_t<decltype(keyOf(records.front()))>;
                std::vector<Key> keys;
                for (const Extended& record : records)
                    keys.push_back(keyOf(record));
                return processorSecondsOf([&] { std::sort(keys.begin(), keys.end()); });
            },
            key);
    };
    const auto ours = [&] {
        view->Sort(column == 0 ? 1 : 0, true);
        return processorSecondsOf([&] { view->Sort(column, true); });
    };
    for (auto _ : state)
        reportInTurn(state, "std::sort of bare keys", 1.5, baseline, ours);
}

/// 40 ms of a search: 200 new detections, and 200 that end, with the view and the bar line open and sorted.
template <typename View>
void follow(benchmark::State& state) {
    BarMap map;
    auto& list = View::List();
    const auto view = opened<View>();
    view->GetListView()->sortByColumn(0, Qt::DescendingOrder);
    PixStateVectorSearchMC<typename View::Record> line(1);
    line.Init(QString::fromLatin1(View::Path));
    line.SetHMapping(&map, 1000);
    line.Refresh();
    int next = Million;
    double worst = 0;
    std::vector<std::pair<quint64, const typename View::Record*>> active;
    for (auto _ : state) {
        for (const auto& [place, record] : active)
            list.Edit(place, *record, [](DetectionConventional& ended) { ended.SetActive(false); });
        active.clear();
        std::list<typename View::Record> more;
        for (int i = 0; i < 200; ++i)
            more.push_back(View::At(next++ * 37 % (4 * Million)));
        const quint64 before = list.Size();
        list.Append(std::move(more));
        auto at = std::prev(list.Elements().end(), 200);
        for (quint64 place = before; at != list.Elements().end(); ++at)
            active.emplace_back(place++, &*at);
        const double time = processorSecondsOf([&] {
            view->UpdateView();
            line.Refresh();
            view->grab();
        });
        worst = std::max(worst, time);
        reportTime(state, worst, 0.05);
    }
    list.GetList().clear();
}

void leanCsv(const QString& path, const std::vector<const Extended*>& records, bool extended) {
    LeanWriter<char> out(path);
    out << (extended ? "ID,Type,Frequency,Bandwidth,Level,StartTime,StopTime,Confidence,Modulation,"
                       "TransmissionSystem,Baudrate,Shift,Decoder,Azimuth,DFQuality,Longitude,Latitude\r\n"
                     : "ID,Frequency,Bandwidth,Level,StartTime,StopTime,Type,Comment\r\n");
    for (const Extended* record : records) {
        const ClassifierResult& result = record->Result();
        out.Whole(record->GetID()) << (extended ? ",a," : ",");
        out.Shortest(extended ? result.frequency : record->GetFrequency()) << ',';
        out.Shortest(extended ? result.bandwidth : record->GetBandwidth()) << ',';
        out.Whole(record->GetLevel()) << ',';
        out.Time(record->GetStartTime()) << ',';
        if (!record->GetActive())
            out.Time(record->GetStopTime());
        if (extended) {
            out << ',';
            out.Whole(result.confidence)
                << ',' << result.demodulator << ',' << result.transmissionType << ',';
            out.Shortest(result.baudrate) << ',';
            out.Shortest(result.shift) << ',' << result.decoder << ",2222,4444,1000,2000";
        } else {
            out << ",a,";
        }
        out << "\r\n";
        out.EndEntry();
    }
    out.Flush();
}

void leanXml(const QString& path, const std::vector<const Extended*>& records) {
    LeanWriter<char> out(path);
    out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<FrequencyStoreList Version=\"1\" "
           "Usage=\"SearchResults\">\n";
    for (const Extended* record : records) {
        out << " <FrequencyStoreEntry ID=\"";
        out.Whole(record->GetID()) << "\" Type=\"a\">\n  <FFM_Settings>\n   <Frequency>";
        out.Shortest(record->GetFrequency()) << "</Frequency>\n   <IFBandwidth>";
        out.Shortest(record->GetBandwidth()) << "</IFBandwidth>\n   <Level>";
        out.Whole(record->GetLevel()) << "</Level>\n  </FFM_Settings>\n  <Detection>\n   <StartTime>";
        out.Time(record->GetStartTime()) << "</StartTime>\n";
        if (!record->GetActive()) {
            out << "   <StopTime>";
            out.Time(record->GetStopTime()) << "</StopTime>\n";
        }
        out << "  </Detection>\n </FrequencyStoreEntry>\n";
        out.EndEntry();
    }
    out << "</FrequencyStoreList>\n";
    out.Flush();
}

void leanResultXml(const QString& path, const std::vector<const Extended*>& records) {
    LeanWriter<char> out(path);
    out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<DetectionResultList Version=\"1\" "
           "Usage=\"SearchResults\" "
           "ID=\"None\" Type=\"a\">\n <Comment>Emission Result List</Comment>\n";
    for (const Extended* record : records) {
        const ClassifierResult& result = record->Result();
        out << " <DetectionResult ID=\"";
        out.Whole(record->GetID()) << "\" Type=\"a\">\n  <Frequency>";
        out.Shortest(result.frequency) << "</Frequency>\n  <Bandwidth>";
        out.Shortest(result.bandwidth) << "</Bandwidth>\n  <Level>";
        out.Whole(record->GetLevel()) << "</Level>\n  <StartTime>";
        out.Time(record->GetStartTime()) << "</StartTime>\n";
        if (!record->GetActive()) {
            out << "  <StopTime>";
            out.Time(record->GetStopTime()) << "</StopTime>\n";
        }
        out << "  <Confidence>";
        out.Whole(result.confidence) << "</Confidence>\n  <Modulation>" << result.demodulator
                                     << "</Modulation>\n  <TransmissionSystem>" << result.transmissionType
                                     << "</TransmissionSystem>\n  <Baudrate>";
        out.Shortest(result.baudrate) << "</Baudrate>\n  <Shift>";
        out.Shortest(result.shift)
            << "</Shift>\n  <Decoder>" << result.decoder
            << "</Decoder>\n  <Azimuth>2222</Azimuth>\n  <DFQuality>4444</DFQuality>\n  "
               "<Longitude>1000</Longitude>\n  <Latitude>2000</Latitude>\n </DetectionResult>\n";
        out.EndEntry();
    }
    out << "</DetectionResultList>\n";
    out.Flush();
}

/// Arguments: CSV or XML, extended or plain.
void saveFile(benchmark::State& state) {
    const bool csv = state.range(0) != 0;
    const bool extended = state.range(1) != 0;
    std::vector<const Extended*> records;
    for (const Extended& record : ExtendedView::List().Elements())
        records.push_back(&record);
    const std::vector<const DetectionConventional*> plain(records.begin(), records.end());
    const auto lean = [&](const QString& path) {
        if (csv)
            leanCsv(path, records, extended);
        else
            extended ? leanResultXml(path, records) : leanXml(path, records);
    };
    const auto ours = [&](const QString& path) {
        if (extended)
            SearchMC::WriteFile(path, csv, records, Variant::HF);
        else
            SearchMC::WriteFile(path, csv, plain);
    };
    reportWriter(state, "ours", 3, lean, ours);
}

BENCHMARK(openList<PlainView>)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);
BENCHMARK(openList<ExtendedView>)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);
BENCHMARK(loadList<PlainView>)->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK(loadList<ExtendedView>)->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK(scrollPage<PlainView>)->UseManualTime()->Iterations(20)->Unit(benchmark::kMillisecond);
BENCHMARK(scrollPage<ExtendedView>)->UseManualTime()->Iterations(20)->Unit(benchmark::kMillisecond);
BENCHMARK(filterList<PlainView>)->UseManualTime()->Iterations(4)->Unit(benchmark::kMillisecond);
BENCHMARK(filterList<ExtendedView>)->UseManualTime()->Iterations(4)->Unit(benchmark::kMillisecond);
BENCHMARK(sortColumn)->DenseRange(0, 19)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(saveFile)
    ->ArgsProduct({{0, 1}, {0, 1}})
    ->UseManualTime()
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(follow<PlainView>)->UseManualTime()->Iterations(125)->Unit(benchmark::kMillisecond);
BENCHMARK(follow<ExtendedView>)->UseManualTime()->Iterations(125)->Unit(benchmark::kMillisecond);

} // namespace
