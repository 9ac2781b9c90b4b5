#pragma once

#include "host/base/longwork.h"

#include <algorithm>
#include <ctime>
#include <functional>
#include <utility>

/// Notes for how long the window gets no turn while work runs, in processor seconds of the GUI thread.
class TurnClock : public LongWork::Display {
public:
    TurnClock() : m_before(LongWork::SetDisplay(this)) {}
    ~TurnClock() override { LongWork::SetDisplay(m_before); }

    double LongestOf(const std::function<void()>& work) {
        m_longest = 0;
        m_last = now();
        work();
        note();
        return m_longest;
    }

private:
    static double now() {
        timespec time{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
    }
    void Turn(const LongWork::Progress&) override { note(); }
    void Hide() override {}
    void note() {
        const double present = now();
        m_longest = std::max(m_longest, present - std::exchange(m_last, present));
    }

    LongWork::Display* m_before;
    double m_last = 0;
    double m_longest = 0;
};
