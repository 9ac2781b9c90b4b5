// Reading a million targets from the files of other programs and from JSON, beside reading them from our own
// CSV.

#include "bench/figures.h"
#include "bench/targets.h"
#include "interchange/formatlist.h"
#include "interchange/jsonentry.h"

#include <QFile>

namespace {

constexpr int Million = 1'000'000;
constexpr double LinesGoal = 2;
constexpr double JsonGoal = 3;
constexpr double BytesGoal = 500; // an entry, as in the other lists

QString ownCsv() {
    Bench& bench = Bench::Get();
    const QString path = bench.File("own.csv");
    if (!QFile::exists(path)) {
        bench.List(Million);
        bench.CommandLine().Write(path);
    }
    return path;
}

/// The list in that format, or for one that is only read as many lines of a schedule.
QString fileOf(const Interchange::Format& format) {
    Bench& bench = Bench::Get();
    const QString path = bench.File("format.") + QLatin1String(format.id);
    if (format.makeEncoder) {
        bench.List(Million);
        Interchange::Write(format, path, bench.CommandLine().Content());
        return path;
    }
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    file.write(
        "kHz:75;Time(UTC):93;Days:59;ITU:49;Station:201;Lng:49;Target:62;Remarks:135;P:35;Start:60;\n");
    for (int i = 0; i < Million; ++i)
        file.write(QByteArray::number(100 + i % 29900) + ";0600-0700;Mo-Fr;D;Station " +
                   QByteArray::number(i) + ";D;Eu;;1;;;\n");
    return path;
}

double secondsToReadAs(const Interchange::Format& format, const QString& path) {
    Bench::Get().Empty();
    CliList& list = Bench::Get().CommandLine();
    const bool isOwn = &format == &Interchange::OwnJson || &format == &Interchange::OwnJsonLines;
    return processorSecondsOf([&] {
        Interchange::Account account;
        if (isOwn)
            list.ReadJson(path, {}, account);
        else
            list.ReadRecords(
                path, [&](const Interchange::TakeEntry& take) { Interchange::Read(format, path, {}, take); });
    });
}

void ReadFormat(benchmark::State& state, const Interchange::Format& format, double goal) {
    const QString csv = ownCsv();
    const QString path = fileOf(format);
    for (auto _ : state)
        compareReading(
            state, "reading the list from our own CSV", path, Million, goal, BytesGoal,
            [&] { return secondsToRead(csv); },
            [&](const QString& file) { return secondsToReadAs(format, file); });
    if (Bench::Get().CommandLine().Count() != Million)
        state.SkipWithError("entries are lost");
    Bench::Get().Empty();
    QFile::remove(path);
}

void of(const char* id, double goal) {
    benchmark::RegisterBenchmark((std::string("ReadFormat/") + id).c_str(), ReadFormat,
                                 std::cref(*Interchange::FormatOfId(QString::fromLatin1(id))), goal)
        ->UseManualTime()
        ->Iterations(1)
        ->Unit(benchmark::kSecond);
}

const bool areRegistered = [] {
    for (const char* id : {"chirp-csv", "gqrx", "kiwi-csv", "sdrangel", "fldigi", "eibi"})
        of(id, LinesGoal);
    for (const char* id : {"kiwi-json", "sdrpp", "json", "jsonl"})
        of(id, JsonGoal);
    of("sdrsharp", JsonGoal);
    return true;
}();

} // namespace
