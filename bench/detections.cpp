// Figures of lists of a million detections: "ratio" is ours over the baseline of the same run, "ours_s" a
// time, and "goal" what must not be exceeded.

#include "bench/figures.h"
#include "controls/frequencystore/detections/searchmcextendedvectorlistview.h"
#include "controls/frequencystore/detections/searchmcvectorlistview.h"
#include "host/base/numbers.h"
#include "host/freqlist/pixstatevectorsearchmc.h"

#include <QCoreApplication>
#include <QScrollBar>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <charconv>
#include <chrono>
#include <ctime>

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
                       static_cast<double>(i % 9 * 50),
                       static_cast<double>(i % 5 * 170),
                       0.1 * (i % 4),
                       i % 8 * 0.5,
                       static_cast<short>(i % 100),
                       names[kind],
                       systems[kind],
                       std::to_string(i % 12),
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

/// Of processor time, so that whatever else runs on the machine has no part in it.
double seconds(const std::function<void()>& work) {
    const auto now = [] {
        timespec time{};
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
    };
    const double begin = now();
    work();
    return now() - begin;
}

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

void report(benchmark::State& state, double ours, double goal) {
    state.SetIterationTime(ours);
    state.counters["ours_s"] = ours;
    state.counters["goal"] = goal;
}

void reportRatio(benchmark::State& state, double ours, double baseline, double goal) {
    state.SetIterationTime(ours);
    state.counters["ours_s"] = ours;
    state.counters["ratio"] = ours / baseline;
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
        report(state, seconds([&] {
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
            const double time = seconds([] { QCoreApplication::processEvents(); });
            whole += time;
            longest = std::max(longest, time);
        }
        report(state, longest, 0.05);
        state.counters["whole_s"] = whole;
    }
}

template <typename View>
void scrollPage(benchmark::State& state) {
    const auto view = opened<View>();
    view->Sort(0, true);
    int row = Million / 2;
    for (auto _ : state) {
        report(state, seconds([&] {
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
            const double time = seconds(work);
            whole += time;
            longest = std::max(longest, time);
        };
        turn([&] { view->GetListView()->SetFilterText(typed.left(++letters)); });
        while (view->IsFiltering())
            turn([] { QCoreApplication::processEvents(); });
        report(state, longest, 0.05);
        state.counters["whole_s"] = whole;
    }
}

/// Sorts by the column, page shown, over `std::sort` of the keys with their numbers.
void sortColumn(benchmark::State& state) {
    const auto view = opened<ExtendedView>();
    const auto column = static_cast<int>(state.range(0));
    const RecordSort::Key<Extended>& key = *SearchMC::KeyOf<Extended>(column);
    double ours = 0;
    double baseline = 0;
    for (auto _ : state) {
        baseline += std::visit(
            [&](auto keyOf) {
                const auto& records = ExtendedView::List().Elements();
                using Key = std::decay_t<decltype(keyOf(records.front()))>;
                std::vector<Key> keys;
                for (const Extended& record : records)
                    keys.push_back(keyOf(record));
                return seconds([&] { std::sort(keys.begin(), keys.end()); });
            },
            key);
        view->Sort(column == 0 ? 1 : 0, true);
        const double time = seconds([&] { view->Sort(column, true); });
        ours += time;
        reportRatio(state, time, time * baseline / ours, 1.5); // of all runs so far: one alone varies much
    }
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
        const double time = seconds([&] {
            view->UpdateView();
            line.Refresh();
            view->grab();
        });
        worst = std::max(worst, time);
        report(state, worst, 0.05);
    }
    list.GetList().clear();
}

void addNumber(std::string& out, double value) {
    char digits[32];
    out.append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
    out += ';';
}

void addTime(std::string& out, double microseconds) {
    using namespace std::chrono;
    const sys_seconds time{std::chrono::seconds(static_cast<qint64>(microseconds) / 1000000)};
    const year_month_day day{floor<days>(time)};
    const hh_mm_ss clock{time - floor<days>(time)};
    char text[32];
    const int length = std::snprintf(text, sizeof text, "%04d-%02u-%02uT%02d:%02d:%02dZ;", int(day.year()),
                                     unsigned(day.month()), unsigned(day.day()), int(clock.hours().count()),
                                     int(clock.minutes().count()), int(clock.seconds().count()));
    out.append(text, static_cast<size_t>(length));
}

/// The fields of a file's record, formatted into one buffer that is then written.
double formatAndWrite(const QString& file, const std::vector<const Extended*>& records, bool extended) {
    return seconds([&] {
        std::string out;
        for (const Extended* record : records) {
            addNumber(out, record->GetID());
            addNumber(out, record->GetFrequency());
            addNumber(out, record->GetBandwidth());
            addNumber(out, record->GetLevel());
            addTime(out, record->GetStartTime());
            if (!record->GetActive())
                addTime(out, record->GetStopTime());
            if (extended) {
                for (const double number :
                     {double(record->GetClassifierConfidence()), record->GetClassifierShift(),
                      record->GetClassifierBaudrate(), 2222.0, 4444.0, 1000.0, 2000.0})
                    addNumber(out, number);
                out += record->GetClassifierDemodulator() + ';' + record->GetClassifierTransmissionType() +
                       ';' + record->GetClassifierDecoder() + ';';
            }
            out += '\n';
        }
        QFile raw(file);
        raw.open(QIODevice::WriteOnly);
        raw.write(out.data(), static_cast<qint64>(out.size()));
    });
}

/// Arguments: CSV or XML, extended or plain.
void saveFile(benchmark::State& state) {
    const bool csv = state.range(0) != 0;
    const bool extended = state.range(1) != 0;
    const QTemporaryDir folder;
    std::vector<const Extended*> records;
    for (const Extended& record : ExtendedView::List().Elements())
        records.push_back(&record);
    const std::vector<const DetectionConventional*> plain(records.begin(), records.end());
    for (auto _ : state) {
        const double baseline = formatAndWrite(folder.filePath("raw"), records, extended);
        const double ours = seconds([&] {
            if (extended)
                SearchMC::WriteFile(folder.filePath("ours"), csv, records, Variant::HF);
            else
                SearchMC::WriteFile(folder.filePath("ours"), csv, plain);
        });
        reportRatio(state, ours, baseline, 3);
    }
}

BENCHMARK(openList<PlainView>)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);
BENCHMARK(openList<ExtendedView>)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);
BENCHMARK(loadList<PlainView>)->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK(loadList<ExtendedView>)->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK(scrollPage<PlainView>)->UseManualTime()->Iterations(20)->Unit(benchmark::kMillisecond);
BENCHMARK(scrollPage<ExtendedView>)->UseManualTime()->Iterations(20)->Unit(benchmark::kMillisecond);
BENCHMARK(filterList<PlainView>)->UseManualTime()->Iterations(4)->Unit(benchmark::kMillisecond);
BENCHMARK(filterList<ExtendedView>)->UseManualTime()->Iterations(4)->Unit(benchmark::kMillisecond);
BENCHMARK(sortColumn)->DenseRange(0, 19)->UseManualTime()->Iterations(10)->Unit(benchmark::kMillisecond);
BENCHMARK(saveFile)
    ->ArgsProduct({{0, 1}, {0, 1}})
    ->UseManualTime()
    ->Iterations(2)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(follow<PlainView>)->UseManualTime()->Iterations(125)->Unit(benchmark::kMillisecond);
BENCHMARK(follow<ExtendedView>)->UseManualTime()->Iterations(125)->Unit(benchmark::kMillisecond);

} // namespace
