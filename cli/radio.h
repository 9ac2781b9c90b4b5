#pragma once

#include "cli/arguments.h"
#include "receiver/receiver.h"
#include "receiver/receiverchoice.h"

#include <optional>

/// A receiver that a command works with, while it lives.
class CliRadio {
public:
    CliRadio();
    ~CliRadio();

    /// Adds `--receiver R` and `--config DIR`.
    static void AddOptions(Arguments& args);
    /// The receiver that the options name; nothing, told, when there is no such.
    static std::optional<ReceiverChoice> Choice(const Arguments& args);
    /// Connects what the options name, and waits until it is connected or will not be; false when it is not,
    /// which is told. `exitCode` is then the program's.
    bool Connect(const Arguments& args, int& exitCode);
    /// Waits until the receiver has followed all that was set; false when the receiver is lost meanwhile, or
    /// has refused something, which is told.
    bool WaitUntilSet();
    Receiver& Get() { return m_receiver; }

private:
    Receiver m_receiver{ReceiverKind::HF};
    QStringList m_refused;
    std::optional<quint64> m_followed; ///< serial
};
