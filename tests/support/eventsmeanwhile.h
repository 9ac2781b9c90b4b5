#pragma once

#include "host/base/longwork.h"

#include <QCoreApplication>

/// Handles events from the middle of work, as the window's display does, at each step of it, and looks.
class EventsMeanwhile : public LongWork::Display {
public:
    explicit EventsMeanwhile(std::function<void()> look)
        : m_look(std::move(look)), m_before(LongWork::SetDisplay(this)) {
        LongWork::SetEager(true);
    }
    ~EventsMeanwhile() override {
        LongWork::SetEager(false);
        LongWork::SetDisplay(m_before);
    }

private:
    void Turn(const LongWork::Progress&) override {
        QCoreApplication::processEvents(QEventLoop::X11ExcludeTimers);
        m_look();
    }
    void Hide() override {}

    std::function<void()> m_look;
    LongWork::Display* m_before;
};
