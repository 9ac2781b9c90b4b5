// Figures of whole lists of a million targets in XML and CSV, beside the least that their bytes cost others:
// a bare pass of expat for XML, reading the same list from lines for CSV.

#include "bench/figures.h"
#include "bench/memoryprobe.h"
#include "bench/targets.h"
#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/targets/targetlistparser.h"

#include <QFile>

#include <benchmark/benchmark.h>
#include <expat.h>

namespace {

constexpr int EntryCount = 1'000'000;

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

/// The million targets under another name; removed from the list again.
QString Saved(const char* name) {
    const QString path = Bench::Get().File(name);
    Bench::Get().List(EntryCount).SaveFile(path);
    Bench::Get().Empty();
    return path;
}

/// Reading a list from XML, beside a bare pass of expat over the file.
void ReadXmlList(benchmark::State& state) {
    const QString path = Saved("list.xml");
    for (auto _ : state) {
        compareReading(state, "a bare pass of expat", path, EntryCount, 2.0, 500, [&] {
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
        compareReading(state, "reading the list from lines", path, EntryCount, 1.3, 500,
                       [] { return secondsToRead(Bench::Get().Ltl(EntryCount)); });
}
BENCHMARK(ReadCsvList)->UseManualTime()->Iterations(1)->Unit(benchmark::kSecond);

} // namespace
