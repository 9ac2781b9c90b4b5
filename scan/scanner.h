#pragma once

#include "scan/scanplan.h"
#include "scan/scanreceiver.h"

#include <QCoreApplication>

#include <memory>
#include <set>

class ScanClock;

/// How a scan goes on; it may change while one runs.
struct ScanSettings {
    enum class StopAt { Threshold, Squelch };
    enum class GoOn { WhenGone, AfterTime, ByHand };

    int settle = 30; ///< ms; levels this soon after tuning do not count
    int dwell = 200; ///< ms behind that in which a signal is looked for
    StopAt stopAt = StopAt::Threshold;
    double threshold = 20; ///< dBµV, where the channel has none of its own
    GoOn goOn = GoOn::WhenGone;
    double goOnSeconds = 2; ///< for which the signal is gone, or behind the stop
    double priority = 0;    ///< Hz; the channel that is looked at again and again; 0 for none
    double prioritySeconds = 5;
    quint64 passes = 0; ///< after which the scan ends; 0 for never
};

/// A stop on a signal.
struct ScanStop {
    quint64 number = 0;   ///< in the order of all stops of the scanner, from 1
    double frequency = 0; ///< Hz
    double bandwidth = 0; ///< Hz
    double level = 0;     ///< dBµV, the highest
    qint64 start = 0;     ///< µs since 1970-01-01 UTC; when the signal was seen first and last
    qint64 stop = 0;
    bool isActive = true; ///< the scan has not gone on yet
    long channel = 0;     ///< 0 for none
    QString comment{};
};

enum class ScanState { Idle, Scanning, OnSignal, Held, Waiting };

struct ScanCounts {
    quint64 steps = 0;
    quint64 stops = 0;
    quint64 passes = 0;      ///< that are complete
    quint64 unreachable = 0; ///< steps that the receiver could not be tuned to
};

/// Who is told what a scan does. No call may throw, or call the scanner.
class ScanWatcher {
public:
    /// Channel, state or counts are others now.
    virtual void ScanChanged() = 0;
    /// A step cannot be reached, in words. Each is told once, and of many the first ones.
    virtual void LeftOut(const QString& reason) = 0;
    /// A stop began, went on or, no longer active, ended; it ends before the next one begins.
    virtual void StopTold(const ScanStop& stop) = 0;
    /// The scan ended, for that reason; an empty one is the operator's wish.
    virtual void ScanEnded(const QString& reason) = 0;

protected:
    ~ScanWatcher() = default;
};

/// Takes a receiver from step to step of a plan. On a signal it stops, and goes on when the condition for
/// that is met; a receiver that does not answer is waited for. Whatever plan or receiver throw ends the scan.
/// All that happens comes as a call: of a level, of the clock, of the operator.
class Scanner final : private ScanReceiverWatcher {
    Q_DECLARE_TR_FUNCTIONS(Scanner)

public:
    /// Nothing is owned; all outlive the scanner.
    Scanner(ScanReceiver& receiver, ScanClock& clock, ScanWatcher& watcher);
    ~Scanner();

    void Start(std::unique_ptr<ScanPlan> plan, const ScanSettings& settings);
    void Stop() { End(QString()); }
    /// Ends the scan and tells the reason.
    void End(const QString& reason);
    void SetSettings(const ScanSettings& settings);
    /// Stays where it is, until released.
    void Hold(bool on);
    /// Goes on now. While held it holds at the next step.
    void Skip();
    /// Goes on now and leaves this frequency out from then on.
    void LockOut();
    /// The frequencies (Hz) that are left out.
    void SetLockedOut(const std::vector<double>& frequencies);
    std::vector<double> GetLockedOut() const;

    ScanState GetState() const;
    bool IsRunning() const { return m_plan != nullptr; }
    bool IsHeld() const { return m_isHeld; }
    /// Why the scan waits or holds by itself; empty otherwise.
    const QString& GetReason() const { return m_reason; }
    /// What the receiver is tuned to; its item is not for others.
    const ScanStep& GetStep() const { return m_step; }
    /// Whether that is the priority channel.
    bool IsAtPriority() const { return m_isAtPriority; }
    const ScanCounts& GetCounts() const { return m_counts; }

private:
    /// A stop with what says when it is over; times by the clock's `Now`.
    struct Signal {
        ScanStop stop;
        qint64 began;
        qint64 lastSeen;
    };
    /// What the receiver measured.
    struct Reading {
        double level; ///< dBµV
        bool isOpen;
    };
    /// Where the scan was when it went to look at the priority channel.
    struct Away {
        ScanStep step;
        Signal signal;
        qint64 left;
    };

    void Measured(double level, bool isOpen) override;
    void AnsweringChanged() override;
    void TunedElsewhere(double hertz) override;
    void NotReached(const QString& reason) override;

    template <typename Work>
    void guarded(Work work);
    void wake();
    void take(const Reading& reading);
    bool isSignal(const Reading& reading) const;
    void beginSignal(double level);
    void endSignal();
    void endAway();
    void goOn();
    void next();
    bool tune(const ScanStep& step);
    void retune();
    void noteUnreachable(double hertz, const QString& reason);
    qint64 priorityAt() const;
    bool lookAtPriority();
    void leavePriority();
    void comeBack();
    void waitFor(const QString& reason);
    qint64 goOnAt() const;
    qint64 silentAt() const;
    void schedule();
    bool isLockedOut(double hertz) const;
    QString whyNothing() const;

    ScanReceiver& m_receiver;
    ScanClock& m_clock;
    ScanWatcher& m_watcher;
    std::unique_ptr<ScanPlan> m_plan; ///< null when no scan runs
    ScanSettings m_settings;
    std::set<qint64> m_lockedOut; ///< Hz
    ScanCounts m_counts;
    quint64 m_lastStop = 0; ///< number
    ScanStep m_step;
    std::optional<Signal> m_signal;
    std::optional<Away> m_away;
    QString m_reason;
    std::set<qint64> m_leftOut; ///< Hz, of the steps that were told
    QString m_unreachable;      ///< why the last step that could not be reached could not
    int m_levels = 0;           ///< that were measured at this step and count
    qint64 m_settled = 0;       ///< from when on they do
    qint64 m_heard = 0;         ///< when the receiver answered last
    qint64 m_priorityAt = 0;
    std::optional<Reading> m_early; ///< measured while the receiver is being tuned
    bool m_isTuned = false;         ///< to the step, by the scan
    bool m_isTuning = false;
    bool m_isHeld = false;
    bool m_isByHand = false; ///< held, and tuned elsewhere
    bool m_isWaiting = false;
    bool m_isAtPriority = false;
    qint64 m_reached = 0;       ///< steps of this pass
    bool m_planHadStep = false; ///< in this pass, reachable or not
};
