#pragma once

#include <csignal>

/// While it lives an interrupt (Ctrl+C) cancels the running LongWork, so that nothing half-written stays; the
/// next one ends the program at once. One that the program was started to ignore stays ignored.
class Interrupt {
public:
    Interrupt();
    Interrupt(const Interrupt&) = delete;
    Interrupt& operator=(const Interrupt&) = delete;
    ~Interrupt();

    /// Ends the program as the interrupt would have done, if there was one.
    void EndProgram() const;

private:
    struct sigaction m_before {};
};
