#include "host/startup/endsignals.h"

#include <QSocketNotifier>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int Signals[] = {SIGTERM, SIGHUP, SIGINT};
struct sigaction before[std::size(Signals)];
int ends[2] = {-1, -1}; ///< of the pipe: for reading, for writing

void actionOf(int signalNumber, void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    sigaction(signalNumber, &action, nullptr);
}

/// Runs where anything may have been interrupted: it writes one byte, and from now on the signals end the
/// program.
void note(int signalNumber) {
    const int error = errno;
    for (const int number : Signals)
        actionOf(number, SIG_DFL);
    const auto byte = static_cast<char>(signalNumber);
    if (write(ends[1], &byte, 1) < 0)
        raise(signalNumber);
    errno = error;
}

} // namespace

EndSignals::EndSignals(QObject* parent) : QObject(parent) {
    if (ends[0] >= 0 || pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    m_notifier = new QSocketNotifier(ends[0], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &EndSignals::read);
    for (size_t i = 0; i < std::size(Signals); ++i) {
        sigaction(Signals[i], nullptr, &before[i]);
        if (before[i].sa_handler != SIG_IGN)
            actionOf(Signals[i], note);
    }
}

EndSignals::~EndSignals() {
    if (!m_notifier)
        return;
    for (size_t i = 0; i < std::size(Signals); ++i)
        sigaction(Signals[i], &before[i], nullptr);
    delete m_notifier;
    for (int& end : ends) {
        close(end);
        end = -1;
    }
}

void EndSignals::read() {
    char signalNumber = 0;
    if (::read(ends[0], &signalNumber, 1) == 1)
        emit Came(signalNumber);
}
