#pragma once

#include <QElapsedTimer>
#include <QTimer>

#include <functional>

/// What a scan knows of time, so that a test need not wait.
class ScanClock {
public:
    virtual ~ScanClock() = default;

    /// Milliseconds since some moment; they never go back.
    virtual qint64 Now() const = 0;
    /// Microseconds since 1970-01-01 UTC.
    virtual qint64 Time() const = 0;
    /// Calls `m_wake` once, from the event loop, when it is that late by `Now`; the last call counts.
    virtual void WakeAt(qint64 milliseconds) = 0;
    virtual void Cancel() = 0;

    void SetWake(std::function<void()> wake) { m_wake = std::move(wake); }

protected:
    void Wake() const {
        if (m_wake)
            m_wake();
    }

private:
    std::function<void()> m_wake;
};

/// The machine's clock.
class MachineClock final : public ScanClock {
public:
    MachineClock();

    qint64 Now() const override { return m_elapsed.elapsed(); }
    qint64 Time() const override;
    void WakeAt(qint64 milliseconds) override;
    void Cancel() override { m_timer.stop(); }

private:
    QElapsedTimer m_elapsed;
    QTimer m_timer;
};
