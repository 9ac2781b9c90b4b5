#pragma once

#include "host/base/quoros.h"

#include <QByteArray>

#include <cstdlib>
#include <ctime>

/// A clock that stands still, in microseconds, and is the system's while it lives.
struct FixedClock : IQuorOS {
    explicit FixedClock(qint64 microseconds) : now(microseconds) { QuorOS::Replace(this); }
    ~FixedClock() override { QuorOS::Replace(nullptr); }
    qint64 CurrentTime() const override { return now; }
    qint64 now;
};

/// The time zone of the process while it lives.
class Zone {
public:
    explicit Zone(const char* name) : m_before(qgetenv("TZ")) { Set(name); }
    ~Zone() { Set(m_before); }

private:
    static void Set(const QByteArray& name) {
        name.isEmpty() ? qunsetenv("TZ") : qputenv("TZ", name);
        tzset();
    }
    QByteArray m_before;
};
