#pragma once

#include "receiver/radioprofile.h"

#include <memory>
#include <optional>

class Receiver;
class ReceiverLink;

/// Which receiver a command line asks for: "simulated", "hamlib:MODEL", "hamlib:MODEL@DEVICE",
/// "hamlib:MODEL@HOST:PORT", or the name of a profile in the settings.
struct ReceiverChoice {
    std::optional<RadioProfile> radio; ///< nothing for the simulated one

    /// On a text that is none `error` says why.
    static ReceiverChoice Parse(const QString& text, QString& error);
    /// What is to be attached to the receiver.
    std::unique_ptr<ReceiverLink> MakeLink(const Receiver& receiver) const;
};
