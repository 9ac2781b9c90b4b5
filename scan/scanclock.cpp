#include "scan/scanclock.h"

#include "host/base/quoros.h"

#include <algorithm>

MachineClock::MachineClock() {
    m_elapsed.start();
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { Wake(); });
}

qint64 MachineClock::Time() const {
    return QuorOS::Create().CurrentTime();
}

void MachineClock::WakeAt(qint64 milliseconds) {
    m_timer.start(static_cast<int>(std::clamp<qint64>(milliseconds - Now(), 0, 3'600'000)));
}
