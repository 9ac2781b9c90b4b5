#pragma once

#include <QtGlobal>

/// Operating-system services.
class IQuorOS {
public:
    virtual ~IQuorOS() = default;
    /// The current time in microseconds since 1970-01-01 UTC.
    virtual qint64 CurrentTime() const = 0;
};

namespace QuorOS {

/// The services of this machine, or those that took their place.
IQuorOS& Create();
/// Puts other services in place (a fixed clock, say), which the caller owns; null brings the machine's back.
void Replace(IQuorOS* services);

} // namespace QuorOS
