#include "cli/interrupt.h"

#include "host/base/longwork.h"

namespace {

volatile std::sig_atomic_t hasCome = 0;

void cancel(int) {
    hasCome = 1;
    LongWork::Cancel();
}

} // namespace

Interrupt::Interrupt() {
    hasCome = 0;
    sigaction(SIGINT, nullptr, &m_before);
    if (m_before.sa_handler != SIG_DFL)
        return;
    struct sigaction action {};
    action.sa_handler = cancel;
    action.sa_flags = static_cast<int>(SA_RESETHAND | SA_RESTART);
    sigemptyset(&action.sa_mask);
    sigaction(SIGINT, &action, nullptr);
}

Interrupt::~Interrupt() {
    sigaction(SIGINT, &m_before, nullptr);
}

void Interrupt::EndProgram() const {
    if (!hasCome)
        return;
    sigaction(SIGINT, &m_before, nullptr);
    std::raise(SIGINT);
}
