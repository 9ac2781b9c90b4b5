#include "bench/figures.h"
#include "sweep/sweepdetector.h"
#include "sweep/sweepreader.h"

#include <QIODevice>
#include <QTime>

#include <charconv>
#include <cmath>
#include <cstring>
#include <numeric>
#include <random>

namespace {

constexpr qint64 FileSize = 100'000'000;
constexpr int FirstLevel = 6;       ///< field of a row
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

/// The leanest program for the same bytes: numbers by `std::from_chars` from comma to comma, added up.
double leanSum() {
    SweepDevice device;
    std::vector<char> block(1 << 20);
    size_t kept = 0; ///< bytes of a row that goes on in the next block
    double sum = 0;
    for (qint64 count = 0; (count = device.read(block.data() + kept, qint64(block.size() - kept))) > 0;) {
        const char* at = block.data();
        const char* const end = at + kept + count;
        const char* row = at;
        while (const auto* const rowEnd = static_cast<const char*>(std::memchr(at, '\n', size_t(end - at)))) {
            for (int field = 0; at < rowEnd; ++field) {
                const auto* comma = static_cast<const char*>(std::memchr(at, ',', size_t(rowEnd - at)));
                comma = comma ? comma : rowEnd;
                double level = 0;
                if (field >= FirstLevel && std::from_chars(at + 1, comma, level).ec == std::errc())
                    sum += level;
                at = comma + 1;
            }
            row = at = rowEnd + 1;
        }
        kept = size_t(end - row);
        std::memmove(block.data(), row, kept);
    }
    return sum;
}

/// Reads sweeps and, with `detect`, finds the signals in them.
void ReadSweeps(benchmark::State& state) {
    const bool isToDetect = state.range(0) != 0;
    for (auto _ : state) {
        double expected = 0;
        double sum = 0;
        reportInTurn(state, "a lean parse of the numbers", isToDetect ? 3 : 2,
                     timed([&] { expected = leanSum(); }), timed([&] {
                         SweepDevice device;
                         SweepReader reader(device, {}, QTimeZone("Europe/Berlin"));
                         SweepDetector detector({}, [](const SweepDetection&) {});
                         sum = 0;
                         for (Sweep sweep; reader.Next(sweep);) {
                             if (isToDetect)
                                 detector.Add(sweep);
                             else
                                 sum = std::accumulate(sweep.levels.begin(), sweep.levels.end(), sum);
                         }
                         detector.Finish();
                         if (reader.Problems() > 0)
                             state.SkipWithError("the sweeps are bad");
                     }));
        // Levels are kept with less digits than the sum has.
        if (!isToDetect && std::abs(sum - expected) > std::abs(expected) * 1e-6)
            state.SkipWithError("the levels differ");
    }
}
BENCHMARK(ReadSweeps)
    ->ArgName("detect")
    ->Arg(0)
    ->Arg(1)
    ->UseManualTime()
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

} // namespace
