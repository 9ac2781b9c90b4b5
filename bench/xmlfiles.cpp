#include "host/freqstorexml/liststreams.h"

#include <QBuffer>
#include <QXmlStreamReader>

#include <benchmark/benchmark.h>
#include <charconv>

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

void BareXmlPass(benchmark::State& state) {
    for (auto _ : state) {
        QXmlStreamReader reader(Document(false));
        while (!reader.atEnd())
            benchmark::DoNotOptimize(reader.readNext());
    }
    state.SetBytesProcessed(state.iterations() * Document(false).size());
}
BENCHMARK(BareXmlPass)->Unit(benchmark::kMillisecond);

void ReadTargets(benchmark::State& state) {
    const bool csv = state.range(0) != 0;
    for (auto _ : state) {
        QBuffer buffer;
        buffer.setData(Document(csv));
        buffer.open(QIODevice::ReadOnly);
        double sum = 0;
        const auto add = [&](FrequencyStoreEntry& entry) {
            sum += entry.GetFFM_Settings().GetFrequency().GetValue();
        };
        if (csv)
            ReadCsv(buffer, {}, FrequencyStoreListHelper::Targets, add);
        else
            ReadXml(buffer, {}, add);
        benchmark::DoNotOptimize(sum);
    }
    state.SetBytesProcessed(state.iterations() * Document(csv).size());
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

} // namespace
