#include "scan/scanner.h"

#include "host/base/frequencytext.h"
#include "host/base/trace.h"
#include "scan/scanclock.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr qint64 AnswerMilliseconds = 3000; ///< without a level, after which the receiver is silent
constexpr qint64 RetryMilliseconds = 1000;
constexpr int TriedAtOnce = 1000;  ///< steps that lead nowhere, before the event loop gets its turn
constexpr double FineTuning = 500; ///< Hz, that may always be turned by hand
constexpr size_t MostTold = 10;
constexpr qint64 Never = std::numeric_limits<qint64>::max();

qint64 milliseconds(double seconds) {
    return std::llround(seconds * 1000);
}

} // namespace

Scanner::Scanner(ScanReceiver& receiver, ScanClock& clock, ScanWatcher& watcher)
    : m_receiver(receiver), m_clock(clock), m_watcher(watcher) {
    m_receiver.SetWatcher(this);
    m_clock.SetWake([this] { wake(); });
}

Scanner::~Scanner() {
    m_clock.Cancel();
    m_clock.SetWake({});
    m_receiver.SetWatcher(nullptr);
}

/// Plans read lists that others write, and receivers are others' code: what they throw must not leave a scan
/// that runs no more and does not know it.
template <typename Work>
void Scanner::guarded(Work work) {
    if (!IsRunning())
        return;
    try {
        work();
        if (const auto early = std::exchange(m_early, std::nullopt); early && IsRunning() && m_isTuned)
            take(*early);
        if (IsRunning()) {
            schedule();
            m_watcher.ScanChanged();
        }
    } catch (const std::exception& error) {
        const QString reason = QString::fromUtf8(error.what());
        TraceLazily("scanner", [&] { return reason; });
        End(reason);
    }
}

void Scanner::Start(std::unique_ptr<ScanPlan> plan, const ScanSettings& settings) {
    Stop();
    m_plan = std::move(plan);
    m_settings = settings;
    m_counts = {};
    m_unreachable.clear();
    m_leftOut.clear();
    m_reached = 0;
    m_isHeld = m_isByHand = m_isWaiting = m_isTuned = m_planHadStep = false;
    m_priorityAt = m_clock.Now();
    guarded([this] {
        m_plan->Begin();
        next();
    });
}

void Scanner::End(const QString& reason) {
    if (!IsRunning())
        return;
    m_clock.Cancel();
    endAway();
    endSignal();
    m_plan.reset();
    m_isTuned = m_isHeld = m_isByHand = m_isWaiting = m_isAtPriority = false;
    m_reason.clear();
    m_step.item = nullptr;
    m_watcher.ScanEnded(reason);
}

void Scanner::SetSettings(const ScanSettings& settings) {
    m_settings = settings;
    guarded([] {});
}

void Scanner::Hold(bool on) {
    guarded([this, on] {
        m_isHeld = on;
        if (!on && m_isByHand)
            next();
    });
}

void Scanner::Skip() {
    guarded([this] {
        endAway();
        endSignal();
        next();
    });
}

void Scanner::LockOut() {
    if (!IsRunning())
        return;
    m_lockedOut.insert(std::llround(m_step.frequency));
    Skip();
}

void Scanner::SetLockedOut(const std::vector<double>& frequencies) {
    m_lockedOut.clear();
    for (const double hertz : frequencies)
        m_lockedOut.insert(std::llround(hertz));
}

std::vector<double> Scanner::GetLockedOut() const {
    return {m_lockedOut.begin(), m_lockedOut.end()};
}

bool Scanner::isLockedOut(double hertz) const {
    return !m_lockedOut.empty() && m_lockedOut.contains(std::llround(hertz));
}

ScanState Scanner::GetState() const {
    if (!IsRunning())
        return ScanState::Idle;
    if (m_isWaiting)
        return ScanState::Waiting;
    if (m_isHeld)
        return ScanState::Held;
    return m_signal ? ScanState::OnSignal : ScanState::Scanning;
}

bool Scanner::isSignal(const Reading& reading) const {
    return m_settings.stopAt == ScanSettings::StopAt::Squelch
               ? reading.isOpen
               : reading.level >= m_step.threshold.value_or(m_settings.threshold);
}

void Scanner::Measured(double level, bool isOpen) {
    if (!IsRunning() || !m_isTuned)
        return;
    if (m_isTuning)
        m_early = {level, isOpen};
    else
        guarded([this, level, isOpen] { take({level, isOpen}); });
}

void Scanner::take(const Reading& reading) {
    const qint64 now = m_clock.Now();
    m_heard = now;
    if (std::exchange(m_isWaiting, false))
        m_reason.clear();
    if (now < m_settled)
        return;
    ++m_levels;
    if (!isSignal(reading))
        return;
    if (!m_signal)
        return beginSignal(reading.level);
    m_signal->lastSeen = now;
    m_signal->stop.stop = m_clock.Time();
    m_signal->stop.level = std::max(m_signal->stop.level, reading.level);
    m_watcher.StopTold(m_signal->stop);
}

void Scanner::beginSignal(double level) {
    endAway(); // the priority channel comes first
    const qint64 time = m_clock.Time();
    ++m_counts.stops;
    m_signal = Signal{{.number = ++m_lastStop,
                       .frequency = m_step.frequency,
                       .bandwidth = m_receiver.Bandwidth(),
                       .level = level,
                       .start = time,
                       .stop = time,
                       .channel = m_step.channel,
                       .comment = m_step.comment},
                      m_clock.Now(),
                      m_clock.Now()};
    m_watcher.StopTold(m_signal->stop);
}

void Scanner::endSignal() {
    if (!m_signal)
        return;
    ScanStop ended = std::exchange(m_signal, std::nullopt)->stop;
    ended.isActive = false;
    m_watcher.StopTold(ended);
}

void Scanner::endAway() {
    if (!m_away)
        return;
    ScanStop ended = std::exchange(m_away, std::nullopt)->signal.stop;
    ended.isActive = false;
    m_watcher.StopTold(ended);
}

void Scanner::AnsweringChanged() {
    if (m_isByHand)
        return;
    guarded([this] {
        const QString silent = m_receiver.WhySilent();
        if (!silent.isEmpty())
            waitFor(silent);
        else if (m_isWaiting)
            retune();
    });
}

/// Where the receiver is when it answers again is not known.
void Scanner::retune() {
    if (!m_plan->Renew(m_step) || !tune(m_step))
        next();
}

/// A radio may take a frequency and then not go there.
void Scanner::NotReached(const QString& reason) {
    if (!m_isTuned)
        return;
    guarded([this, reason] {
        --m_reached;
        noteUnreachable(m_step.frequency, reason);
        goOn();
    });
}

void Scanner::noteUnreachable(double hertz, const QString& reason) {
    ++m_counts.unreachable;
    m_unreachable = reason;
    if (m_leftOut.size() < MostTold && m_leftOut.insert(std::llround(hertz)).second)
        m_watcher.LeftOut(tr("%1 is left out: %2").arg(Quor::FrequencyText(hertz), reason));
}

/// Tuned beside the channel by hand, the receiver stays there: the scan does not take it away from the
/// operator. A correction within the channel is none of its business.
void Scanner::TunedElsewhere(double hertz) {
    const double tolerance = std::max(m_receiver.Bandwidth() / 2, FineTuning);
    if (!m_isTuned || m_isTuning || std::abs(hertz - m_step.frequency) <= tolerance)
        return;
    guarded([this, hertz] {
        endAway();
        endSignal();
        m_isTuned = m_isWaiting = false;
        m_isHeld = m_isByHand = true;
        m_reason = tr("Tuned by hand to %1").arg(Quor::FrequencyText(hertz));
    });
}

void Scanner::waitFor(const QString& reason) {
    endAway();
    endSignal();
    m_isWaiting = true;
    m_isTuned = false;
    leavePriority();
    m_reason = reason;
    m_heard = m_clock.Now();
}

void Scanner::wake() {
    guarded([this] {
        const qint64 now = m_clock.Now();
        if (m_isWaiting) {
            m_heard = now;
            if (const QString silent = m_receiver.WhySilent(); !silent.isEmpty())
                m_reason = silent;
            else
                retune();
            return;
        }
        if (!m_isTuned)
            return next();
        if (now >= silentAt())
            return waitFor(tr("The receiver tells no level"));
        if (m_isHeld)
            return;
        if (now >= goOnAt())
            return goOn();
        if (m_signal && now >= priorityAt())
            lookAtPriority();
    });
}

/// When the present step is over, by the clock's `Now`.
qint64 Scanner::goOnAt() const {
    if (!m_signal)
        return m_levels > 0 ? m_settled + m_settings.dwell : Never;
    switch (m_settings.goOn) {
    case ScanSettings::GoOn::WhenGone:
        return m_signal->lastSeen + milliseconds(m_settings.goOnSeconds);
    case ScanSettings::GoOn::AfterTime:
        return m_signal->began + milliseconds(m_settings.goOnSeconds);
    case ScanSettings::GoOn::ByHand:
        break;
    }
    return Never;
}

qint64 Scanner::silentAt() const {
    return std::max(m_settled, m_heard) + AnswerMilliseconds;
}

void Scanner::schedule() {
    if (m_isWaiting)
        return m_clock.WakeAt(m_heard + (m_isTuned ? AnswerMilliseconds : RetryMilliseconds));
    if (!m_isTuned)
        return m_isByHand ? m_clock.Cancel() : m_clock.WakeAt(m_clock.Now());
    qint64 due = silentAt();
    if (!m_isHeld)
        due = std::min({due, goOnAt(), m_signal ? priorityAt() : Never});
    m_clock.WakeAt(due);
}

void Scanner::goOn() {
    endSignal();
    if (m_away)
        comeBack();
    else
        next();
}

/// Tunes to the next step that can be reached. After many that cannot it leaves the rest to the next turn of
/// the event loop, without a step.
void Scanner::next() {
    leavePriority();
    m_isTuned = false;
    if (std::exchange(m_isByHand, false))
        m_reason.clear();
    if (m_clock.Now() >= priorityAt() && lookAtPriority())
        return;
    for (int tried = 0; tried < TriedAtOnce; ++tried) {
        ScanStep step;
        if (!m_plan->Next(step)) {
            if (m_reached <= 0)
                return End(whyNothing());
            if (++m_counts.passes == m_settings.passes)
                return Stop();
            m_reached = 0;
            m_planHadStep = false;
            m_plan->Begin();
            continue;
        }
        m_planHadStep = true;
        if (isLockedOut(step.frequency))
            continue;
        if (tune(step))
            return;
        if (const QString silent = m_receiver.WhySilent(); !silent.isEmpty()) {
            m_step = step; // where it begins when the receiver is there
            m_step.item = nullptr;
            return waitFor(silent);
        }
    }
}

QString Scanner::whyNothing() const {
    if (!m_planHadStep)
        return m_plan->WhyEmpty();
    return m_unreachable.isEmpty() ? tr("Everything is locked out.")
                                   : tr("Nothing can be reached: %1").arg(m_unreachable);
}

bool Scanner::tune(const ScanStep& step) {
    const ScanStep before = std::exchange(m_step, ScanStep(step));
    m_early.reset();
    m_levels = 0;
    m_settled = m_heard = m_clock.Now();
    m_settled += m_settings.settle;
    QString reason;
    // What a receiver measures while it is being tuned belongs to the new step.
    m_isTuned = m_isTuning = true;
    try {
        m_isTuned = m_receiver.Tune(step, reason);
    } catch (...) {
        m_isTuning = false;
        throw;
    }
    m_isTuning = false;
    m_step.item = nullptr;
    if (m_isTuned) {
        ++m_counts.steps;
        ++m_reached;
        return true;
    }
    m_step = before;
    if (m_receiver.WhySilent().isEmpty())
        noteUnreachable(step.frequency, reason);
    return false;
}

/// When the priority channel is to be looked at, by the clock's `Now`.
qint64 Scanner::priorityAt() const {
    const double priority = m_settings.priority;
    const bool isThere =
        m_isAtPriority || (m_signal && std::llround(m_step.frequency) == std::llround(priority));
    return priority > 0 && !isThere && !isLockedOut(priority) ? m_priorityAt : Never;
}

/// False when it cannot be reached; the scan is then where it was.
bool Scanner::lookAtPriority() {
    m_priorityAt = m_clock.Now() + std::max<qint64>(1, milliseconds(m_settings.prioritySeconds));
    ScanStep step;
    if (!m_plan->Find(m_settings.priority, step))
        step = ScanStep{.frequency = m_settings.priority};
    const bool isOnSignal = m_signal.has_value();
    if (isOnSignal)
        m_away = Away{m_step, *std::exchange(m_signal, std::nullopt), m_clock.Now()};
    m_isAtPriority = tune(step);
    if (!m_isAtPriority && isOnSignal) {
        m_signal = std::exchange(m_away, std::nullopt)->signal;
        m_isTuned = true; // still
        m_levels = 1;
    }
    return m_isAtPriority;
}

/// What is looked at between two looks at the priority channel has its time, however often that is due.
void Scanner::leavePriority() {
    if (std::exchange(m_isAtPriority, false))
        m_priorityAt = std::max(m_priorityAt, m_clock.Now() + m_settings.settle + m_settings.dwell);
}

/// Back to the signal that was left; the time away does not count as its silence.
void Scanner::comeBack() {
    Away away = *std::exchange(m_away, std::nullopt);
    leavePriority();
    const qint64 gone = m_clock.Now() - away.left;
    m_signal = away.signal;
    m_signal->lastSeen += gone;
    if (m_plan->Renew(away.step) && tune(away.step))
        return;
    endSignal();
    next();
}
