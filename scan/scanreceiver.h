#pragma once

#include <QString>

struct ScanStep;

/// Who is told what the receiver of a scan does.
class ScanReceiverWatcher {
public:
    /// A level (dBµV) was measured after the last `Tune`; `isOpen` is whether the squelch lets it through.
    virtual void Measured(double level, bool isOpen) = 0;
    /// The receiver began or ceased to answer.
    virtual void AnsweringChanged() = 0;
    /// Somebody else tuned the receiver to a frequency (Hz).
    virtual void TunedElsewhere(double hertz) = 0;
    /// The radio did not follow the last `Tune`.
    virtual void NotReached(const QString& reason) = 0;

protected:
    ~ScanReceiverWatcher() = default;
};

/// What a scan needs of a receiver.
class ScanReceiver {
public:
    virtual ~ScanReceiver() = default;

    /// Begins to tune; with a channel, to all its settings. It does not wait for the radio. False, with the
    /// reason, and the receiver as it was, for what it cannot reach.
    [[nodiscard]] virtual bool Tune(const ScanStep& step, QString& reason) = 0;
    /// Why the receiver does not answer; empty while it does.
    virtual QString WhySilent() const = 0;
    /// Hz, at present.
    virtual double Bandwidth() const = 0;

    /// Null for nobody.
    void SetWatcher(ScanReceiverWatcher* watcher) { m_watcher = watcher; }

protected:
    ScanReceiverWatcher* m_watcher = nullptr;
};
