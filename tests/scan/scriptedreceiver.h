#pragma once

#include "scan/scanclock.h"
#include "scan/scanner.h"

#include <functional>
#include <map>
#include <optional>
#include <vector>

/// A clock that goes as fast as the test wants.
class TestClock final : public ScanClock {
public:
    qint64 Now() const override { return now; }
    qint64 Time() const override { return Start + now * 1000; }
    void WakeAt(qint64 milliseconds) override { due = milliseconds; }
    void Cancel() override { due.reset(); }
    void Fire() {
        due.reset();
        Wake();
    }

    static constexpr qint64 Start = 1'700'000'000'000'000; ///< µs
    qint64 now = 0;
    std::optional<qint64> due;
};

/// A receiver that measures every ten milliseconds what its script says of frequency and time.
class ScriptedReceiver final : public ScanReceiver {
public:
    static constexpr qint64 Interval = 10; ///< ms

    bool Tune(const ScanStep& step, QString& reason) override {
        if (onTune)
            onTune(step);
        if (step.frequency < lowest || !silent.isEmpty()) {
            reason = silent.isEmpty() ? QStringLiteral("too low") : silent;
            return false;
        }
        tuned.push_back(step.frequency);
        if (measuresAtOnce)
            Measure();
        return true;
    }
    QString WhySilent() const override { return silent; }
    double Bandwidth() const override { return 6000; }

    void Measure() {
        const double dbMicrovolt = level(tuned.back());
        m_watcher->Measured(dbMicrovolt, dbMicrovolt >= 60);
    }
    void BeSilent(const QString& reason) {
        silent = reason;
        m_watcher->AnsweringChanged();
    }
    void Refuse(const QString& reason) { m_watcher->NotReached(reason); }
    void TurnKnob(double hertz) { m_watcher->TunedElsewhere(hertz); }

    std::function<double(double hertz)> level = [](double) { return 0.0; }; ///< dBµV
    std::function<void(const ScanStep&)> onTune;
    double lowest = 0;
    bool measures = true;
    bool measuresAtOnce = false;
    QString silent;
    std::vector<double> tuned; ///< Hz
};

/// What a scan told.
struct Told final : ScanWatcher {
    void ScanChanged() override {}
    void LeftOut(const QString& reason) override { leftOut << reason; }
    void StopTold(const ScanStop& stop) override {
        stops[stop.number] = stop;
        order.push_back(stop);
    }
    void ScanEnded(const QString& reason) override { ended = reason; }

    std::map<quint64, ScanStop> stops; ///< as they were told last
    std::vector<ScanStop> order;
    QStringList leftOut;
    std::optional<QString> ended;
};

/// Lets clock and receiver run for a while.
inline void RunFor(TestClock& clock, ScriptedReceiver& receiver, const Scanner& scanner,
                   qint64 milliseconds) {
    const qint64 end = clock.now + milliseconds;
    qint64 measured = clock.now;
    while (scanner.IsRunning()) {
        const qint64 next =
            std::min(measured + ScriptedReceiver::Interval, std::max(clock.due.value_or(end + 1), clock.now));
        if (next > end)
            break;
        clock.now = next;
        if (clock.due && *clock.due <= next) {
            clock.Fire();
            continue;
        }
        measured += ScriptedReceiver::Interval;
        if (receiver.measures && receiver.silent.isEmpty() && !receiver.tuned.empty())
            receiver.Measure();
    }
    clock.now = end;
}
