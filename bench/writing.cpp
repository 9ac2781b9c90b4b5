// Figures of writing a million targets, beside the lean way to make the same bytes.

#include "bench/figures.h"
#include "bench/leantargets.h"
#include "bench/leanwriter.h"
#include "bench/targets.h"
#include "cli/jsonfile.h"
#include "cli/show.h"

#include <unistd.h>

namespace {

constexpr int Million = 1000000;
constexpr char Letters[] = "?ponmlkjihgg"; ///< of the type, by priority

/// What a writer of lines has: texts as they go into the file, all other things as numbers.
struct Target {
    double frequency, bandwidth;
    std::string comment, demodulation, threatClass;
    int priority;
};

const std::vector<Target>& targets() {
    static const auto* const made = [] {
        const LeanParse lean(Bench::Get().Ltl(Million));
        auto* records = new std::vector<Target>;
        const auto utf8 = [](const std::u16string& text) {
            return QString::fromStdU16String(text).toStdString();
        };
        for (const LeanParse::Record& record : lean.Records())
            records->push_back({record.frequency, record.bandwidth, utf8(record.comment),
                                utf8(lean.Word(record.demodulation)), utf8(lean.Word(record.threatClass)),
                                record.priority});
        return records;
    }();
    return *made;
}

void leanXml(const QString& path) {
    LeanWriter<char> out(path);
    out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<FrequencyStoreList Version=\"1\" "
           "Usage=\"TargetList\">\n";
    for (const Target& target : targets()) {
        out << " <FrequencyStoreEntry Type=\"" << Letters[target.priority] << "\">\n  <Comment>"
            << target.comment << "</Comment>\n  <FFM_Settings>\n   <Frequency>";
        out.Shortest(target.frequency) << "</Frequency>\n   <IFBandwidth>";
        out.Shortest(target.bandwidth)
            << "</IFBandwidth>\n   <AnalogDemod>" << target.demodulation
            << "</AnalogDemod>\n  </FFM_Settings>\n  <Profile_Data>\n   <Priority>";
        out.Whole(target.priority) << "</Priority>\n   <ThreatClass>" << target.threatClass
                                   << "</ThreatClass>\n  </Profile_Data>\n </FrequencyStoreEntry>\n";
        out.EndEntry();
    }
    out << "</FrequencyStoreList>\n";
    out.Flush();
}

void leanCsv(const QString& path) {
    LeanWriter<char> out(path);
    out << "Frequency,Bandwidth,Comment,Demodulation,Type,Priority,ThreatClass,ProfileID,ProfileName,"
           "SignalClass,"
           "TransmissionSystem\r\n";
    for (const Target& target : targets()) {
        out.Shortest(target.frequency) << ',';
        out.Shortest(target.bandwidth)
            << ',' << target.comment << ',' << target.demodulation << ',' << Letters[target.priority] << ',';
        out.Whole(target.priority) << ',' << target.threatClass << ",,,,\r\n";
        out.EndEntry();
    }
    out.Flush();
}

void leanJson(const QString& path) {
    LeanWriter<char> out(path);
    const char* before = "[\n";
    for (const Target& target : targets()) {
        out << std::exchange(before, ",\n") << "{\"frequency\":";
        out.Shortest(target.frequency) << ",\"comment\":\"" << target.comment << "\",\"bandwidth\":";
        out.Shortest(target.bandwidth)
            << ",\"demodulation\":\"" << target.demodulation << "\",\"type\":\"" << Letters[target.priority]
            << "\",\"threadclass\":\"" << target.threatClass << "\",\"priority\":";
        out.Whole(target.priority)
            << ",\"profileid\":\"\",\"signalclass\":\"\",\"transmissionsystem\":\"\",\"profilename\":\"\"}";
        out.EndEntry();
    }
    out << "\n]\n";
    out.Flush();
}

void leanLtl(const QString& path) {
    static const auto* const wide = [] {
        auto* texts = new std::vector<std::array<std::u16string, 3>>;
        for (const Target& target : targets())
            texts->push_back({QString::fromStdString(target.comment).toStdU16String(),
                              QString::fromStdString(target.demodulation).toStdU16String(),
                              QString::fromStdString(target.threatClass).toStdU16String()});
        return texts;
    }();
    LeanWriter<char16_t> out(path);
    out << u'\ufeff';
    auto text = wide->begin();
    for (const Target& target : targets()) {
        out.Fixed(target.frequency, 6) << u'\t';
        out.Fixed(target.bandwidth, 6)
            << u'\t' << (*text)[0] << u'\t' << (*text)[1] << u'\t'
            << static_cast<char16_t>(Letters[target.priority]) << u'\t' << (*text)[2] << u'\t';
        out.Whole(target.priority) << u"\t\n";
        out.EndEntry();
        ++text;
    }
    out.Flush();
}

void writeAs(benchmark::State& state, const char* name, double goal, void (*lean)(const QString& path)) {
    Bench::Get().List(Million);
    reportWriter(state, name, goal, lean,
                 [](const QString& path) { Bench::Get().CommandLine().Write(path); });
}

void WriteLtl(benchmark::State& state) {
    writeAs(state, "out.ltl", 2, leanLtl);
}
void WriteCsv(benchmark::State& state) {
    writeAs(state, "out.csv", 3, leanCsv);
}
void WriteXml(benchmark::State& state) {
    writeAs(state, "out.xml", 3, leanXml);
}
void WriteJson(benchmark::State& state) {
    writeAs(state, "out.json", 3, leanJson);
}

/// Standard output goes into a file while it lives.
class StandardOutput {
public:
    explicit StandardOutput(const QString& path) {
        std::fflush(stdout);
        QFile file(path);
        file.open(QIODevice::WriteOnly);
        dup2(file.handle(), STDOUT_FILENO);
    }
    ~StandardOutput() {
        std::fflush(stdout);
        dup2(m_old, STDOUT_FILENO);
        close(m_old);
    }
    StandardOutput(const StandardOutput&) = delete;
    StandardOutput& operator=(const StandardOutput&) = delete;

private:
    int m_old = dup(STDOUT_FILENO);
};

/// What `freqstore-cli show` prints, beside writing the list as an LTL file.
void Show(benchmark::State& state, const char* format) {
    Bench& bench = Bench::Get();
    bench.List(Million);
    const EntryPrinter print = PrinterOf(QString::fromLatin1(format), "show");
    const QString ltl = bench.File("out.ltl");
    const QString shown = bench.File("shown");
    for (auto _ : state) {
        reportInTurn(
            state, "writing the list as LTL", 3,
            [&] {
                QFile::remove(ltl);
                return processorSecondsOf([&] { bench.CommandLine().Write(ltl); });
            },
            timed([&] {
                const StandardOutput output(shown);
                print(bench.CommandLine());
            }));
    }
    QFile::remove(shown);
}

} // namespace

BENCHMARK(WriteLtl)->UseManualTime()->Iterations(1)->Unit(benchmark::kSecond);
BENCHMARK(WriteCsv)->UseManualTime()->Iterations(1)->Unit(benchmark::kSecond);
BENCHMARK(WriteXml)->UseManualTime()->Iterations(1)->Unit(benchmark::kSecond);
BENCHMARK(WriteJson)->UseManualTime()->Iterations(1)->Unit(benchmark::kSecond);
BENCHMARK_CAPTURE(Show, json, "json")->UseManualTime()->Iterations(1)->Unit(benchmark::kSecond);
BENCHMARK_CAPTURE(Show, tsv, "tsv")->UseManualTime()->Iterations(1)->Unit(benchmark::kSecond);
BENCHMARK_CAPTURE(Show, table, "table")->UseManualTime()->Iterations(1)->Unit(benchmark::kSecond);
