#include "sweep/sweepdetector.h"
#include "sweep/sweepreader.h"

#include <QIODevice>
#include <QTime>

#include <benchmark/benchmark.h>
#include <cstring>
#include <random>

namespace {

constexpr qint64 FileSize = 1'000'000'000;
constexpr qsizetype StampTime = 12; ///< where the time stands in a row

/// One sweep from 24 MHz to 1764 MHz in hops of 2 MHz and bins of 10 kHz, with a signal every 100 bins or so.
QByteArray MakeSweep() {
    std::mt19937 random(1);
    std::normal_distribution<double> noise(-70, 1.5);
    QByteArray text;
    for (int low = 24'000'000; low < 1'764'000'000; low += 2'000'000) {
        text += "2024-03-30, 00:00:00, " + QByteArray::number(low) + ", " +
                QByteArray::number(low + 2'000'000) + ", 10000.00, 64";
        for (int bin = 0; bin < 200; ++bin)
            text += ", " + QByteArray::number(noise(random) + (random() % 100 == 0 ? 30 : 0), 'f', 2);
        text += '\n';
    }
    return text;
}

/// A file of many sweeps, one a second, which is never whole in memory.
class SweepDevice final : public QIODevice {
public:
    SweepDevice() : m_sweep(MakeSweep()) {
        for (qsizetype row = 0; row < m_sweep.size(); row = m_sweep.indexOf('\n', row) + 1)
            m_rows.push_back(row);
        open(ReadOnly | Unbuffered);
    }
    bool isSequential() const override { return true; }

protected:
    qint64 readData(char* data, qint64 wanted) override {
        if (m_at == m_sweep.size()) {
            if (m_done >= FileSize)
                return 0;
            stamp();
            m_at = 0;
        }
        const qint64 count = std::min(wanted, m_sweep.size() - m_at);
        std::memcpy(data, m_sweep.constData() + m_at, static_cast<size_t>(count));
        m_at += count;
        m_done += count;
        return count;
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    /// Gives all rows the next time.
    void stamp() {
        const QByteArray time =
            QTime(0, 0).addSecs(m_second++).toString(QStringLiteral("HH:mm:ss")).toLatin1();
        for (const qsizetype row : m_rows)
            std::memcpy(m_sweep.data() + row + StampTime, time.constData(), 8);
    }

    QByteArray m_sweep;
    std::vector<qsizetype> m_rows; ///< where they begin
    qint64 m_at = m_sweep.size();
    qint64 m_done = 0;
    int m_second = 0;
};

/// Reads a gigabyte of sweeps and, with `detect`, finds the signals in them.
void ReadSweeps(benchmark::State& state) {
    qint64 bytes = 0;
    for (auto _ : state) {
        SweepDevice device;
        SweepReader reader(device, {}, QTimeZone("Europe/Berlin"));
        qint64 detections = 0;
        SweepDetector detector({}, [&](const SweepDetection&) { ++detections; });
        for (Sweep sweep; reader.Next(sweep);) {
            if (state.range(0))
                detector.Add(sweep);
        }
        detector.Finish();
        bytes += reader.BytesRead();
        state.counters["sweeps"] = double(reader.Sweeps());
        state.counters["detections"] = double(detections);
        if (reader.Problems() > 0)
            state.SkipWithError("the sweeps are bad");
    }
    state.SetBytesProcessed(bytes);
}
BENCHMARK(ReadSweeps)->ArgName("detect")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

/// The same bytes looked at for their line ends only: the least that any reader does.
void FindLines(benchmark::State& state) {
    for (auto _ : state) {
        SweepDevice device;
        REPORTGENERATOR::ByteInput input(device, {});
        qint64 lines = 0;
        for (bool more = true; more; more = input.More()) {
            const std::string_view rest = input.Rest();
            lines += std::count(rest.begin(), rest.end(), '\n');
            input.Skip(rest.size());
        }
        benchmark::DoNotOptimize(lines);
    }
    state.SetBytesProcessed(state.iterations() * FileSize);
}
BENCHMARK(FindLines)->Unit(benchmark::kMillisecond);

} // namespace
