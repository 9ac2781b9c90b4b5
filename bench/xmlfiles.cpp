// Figures of lists in XML and CSV: records alone, and whole lists of a million targets. Whole lists are
// compared in one run, in processor time, with the least that their bytes cost others: a bare pass of expat
// for XML, reading the same list from lines for CSV.

#include "bench/figures.h"
#include "bench/memoryprobe.h"
#include "bench/targets.h"
#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/targets/targetlistparser.h"
#include "host/freqstorexml/liststreams.h"

#include <QBuffer>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <charconv>
#include <expat.h>

using namespace FreqStoreXml;

namespace {

constexpr int EntryCount = 1'000'000;

using ListType = FrequencyStoreListHelper::ListType;

FrequencyStoreEntry TargetOf(int number) {
    FrequencyStoreEntry entry;
    entry.SetType(QStringLiteral("p"));
    entry.SetComment(QStringLiteral("Target %1").arg(number));
    entry.GetFFM_Settings().GetFrequency().SetValue(1e6 + 12.5 * number);
    entry.GetFFM_Settings().GetIFBandwidth().SetValue(3100 + number % 7);
    entry.GetFFM_Settings().SetAnalogDemod(FFM_Settings::NameToAnalogDemod(QStringLiteral("USB")));
    entry.GetProfile_Data().SetPriority(QString::number(number % 10 + 1));
    entry.GetProfile_Data().SetThreatClass(QStringLiteral("not classified"));
    return entry;
}

/// Entries that take turns, so that a benchmark of the writer does not measure how they are made.
const std::vector<FrequencyStoreEntry>& SomeTargets() {
    static const auto* targets = [] {
        auto* made = new std::vector<FrequencyStoreEntry>;
        for (int i = 0; i < 1000; ++i)
            made->push_back(TargetOf(i * 997));
        return made;
    }();
    return *targets;
}

void Write(QIODevice& device, bool csv) {
    FrequencyStoreListWriter writer(device, csv, FrequencyStoreListHelper::Targets);
    writer.Begin(FrequencyStoreList::TargetList);
    const auto& targets = SomeTargets();
    for (std::size_t i = 0; i < EntryCount; ++i)
        writer.Append(targets[i % targets.size()]);
    writer.Commit();
}

const QByteArray& Document(bool csv) {
    static const auto* documents = [] {
        auto* made = new std::array<QByteArray, 2>;
        for (const bool isCsv : {false, true}) {
            QBuffer buffer(&(*made)[isCsv]);
            buffer.open(QIODevice::WriteOnly);
            Write(buffer, isCsv);
        }
        return made;
    }();
    return (*documents)[csv];
}

/// Number of the elements in a document, which is all that is asked of it.
qint64 CountElements(QIODevice& device) {
    constexpr int Piece = 256 * 1024;
    qint64 count = 0;
    const XML_Parser parser = XML_ParserCreate(nullptr);
    XML_SetUserData(parser, &count);
    XML_SetElementHandler(
        parser, [](void* elements, const char*, const char**) { ++*static_cast<qint64*>(elements); },
        [](void*, const char*) {});
    for (qint64 size = Piece; size > 0;) {
        size = device.read(static_cast<char*>(XML_GetBuffer(parser, Piece)), Piece);
        if (XML_ParseBuffer(parser, static_cast<int>(size), size == 0) != XML_STATUS_OK)
            return 0;
    }
    XML_ParserFree(parser);
    return count;
}

void ReadTargets(benchmark::State& state) {
    const bool csv = state.range(0) != 0;
    const QByteArray& document = Document(csv);
    for (auto _ : state) {
        QBuffer buffer;
        buffer.setData(document);
        buffer.open(QIODevice::ReadOnly);
        double sum = 0;
        const auto add = [&](const FrequencyStoreEntry& entry) {
            sum += entry.GetFFM_Settings().GetFrequency().GetValue();
        };
        if (csv)
            ReadCsv(buffer, {}, FrequencyStoreListHelper::Targets, add);
        else
            ReadXml(buffer, {}, add);
        benchmark::DoNotOptimize(sum);
    }
    state.SetBytesProcessed(state.iterations() * document.size());
}
BENCHMARK(ReadTargets)->ArgName("csv")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

/// The same seven fields as text into one buffer: the least that any writer does.
void FormatFields(benchmark::State& state) {
    const auto& targets = SomeTargets();
    for (auto _ : state) {
        std::string out;
        const auto number = [&](double value) {
            char text[32];
            out.append(text, std::to_chars(text, text + sizeof text, value, std::chars_format::fixed).ptr);
            out += '\t';
        };
        const auto text = [&](const QString& value) {
            const QByteArray utf8 = value.toUtf8();
            out.append(utf8.constData(), static_cast<std::size_t>(utf8.size()));
            out += '\t';
        };
        for (std::size_t i = 0; i < EntryCount; ++i) {
            const FrequencyStoreEntry& target = targets[i % targets.size()];
            number(target.GetFFM_Settings().GetFrequency().GetValue());
            number(target.GetFFM_Settings().GetIFBandwidth().GetValue());
            text(target.GetComment());
            text(FFM_Settings::AnalogDemodToName(target.GetFFM_Settings().GetAnalogDemod()));
            text(target.GetType());
            text(target.GetProfile_Data().GetThreatClass());
            text(target.GetProfile_Data().GetPriority());
            out += '\n';
        }
        benchmark::DoNotOptimize(out.data());
    }
}
BENCHMARK(FormatFields)->Unit(benchmark::kMillisecond);

void WriteTargets(benchmark::State& state) {
    for (auto _ : state) {
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        Write(buffer, state.range(0) != 0);
        benchmark::DoNotOptimize(bytes.constData());
    }
}
BENCHMARK(WriteTargets)->ArgName("csv")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void EmptyList() {
    Bench::Get().Forget();
    TargetListHandler::Instance()->GetItemsRoot()->DeleteChildren();
    TargetListHandler::Instance()->GetParser()->GetMediatorCtrl()->ForceUpdateNow();
}

/// Reads a file into the empty list; the processor time.
double SecondsToRead(const QString& path) {
    EmptyList();
    return processorSecondsOf([&] { TargetListHandler::Instance()->ReadFile(path); });
}

double Middle(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

/// Reads a list in turn with what it is compared with, and tells what it takes in memory the first time:
/// later ones find memory that the first has given back.
void CompareReading(benchmark::State& state, const QString& path, double goal,
                    const std::function<double()>& secondsOfBaseline) {
    constexpr int Pairs = 5;
    std::vector<double> baseline, ours, ratio;
    double bytes = 0, peak = 0;
    for (int i = 0; i < Pairs; ++i) {
        baseline.push_back(secondsOfBaseline());
        EmptyList();
        const double before = residentBytes();
        forgetPeak();
        ours.push_back(SecondsToRead(path));
        ratio.push_back(ours.back() / baseline.back());
        if (i == 0) {
            peak = (peakBytes() - before) / EntryCount;
            bytes = (residentBytes() - before) / EntryCount;
        }
    }
    report(state, Middle(baseline), Middle(ours), goal);
    state.counters["ratio"] = Middle(ratio);
    state.counters["bytes_per_entry"] = bytes;
    state.counters["bytes_while_reading"] = peak;
    state.counters["bytes_goal"] = 500;
}

/// The million targets under another name; removed from the list again.
QString Saved(const char* name) {
    const QString path = Bench::Get().File(name);
    Bench::Get().List(EntryCount).SaveFile(path);
    EmptyList();
    return path;
}

/// Reading a list from XML, beside a bare pass of expat over the file.
void ReadXmlList(benchmark::State& state) {
    const QString path = Saved("list.xml");
    for (auto _ : state) {
        CompareReading(state, path, 2.0, [&] {
            return processorSecondsOf([&] {
                QFile file(path);
                file.open(QIODevice::ReadOnly);
                if (CountElements(file) < EntryCount)
                    state.SkipWithError("expat found too few elements");
            });
        });
    }
}
BENCHMARK(ReadXmlList)->UseManualTime()->Iterations(1)->Unit(benchmark::kSecond);

/// Reading a list from CSV, beside reading it from lines.
void ReadCsvList(benchmark::State& state) {
    const QString path = Saved("list.csv");
    for (auto _ : state)
        CompareReading(state, path, 1.3, [] { return SecondsToRead(Bench::Get().Ltl(EntryCount)); });
}
BENCHMARK(ReadCsvList)->UseManualTime()->Iterations(1)->Unit(benchmark::kSecond);

} // namespace
