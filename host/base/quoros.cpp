#include "host/base/quoros.h"

#include <chrono>

namespace {

class Machine : public IQuorOS {
public:
    qint64 CurrentTime() const override {
        const auto now = std::chrono::system_clock::now().time_since_epoch();
        return std::chrono::duration_cast<std::chrono::microseconds>(now).count();
    }
};

IQuorOS*& replacement() {
    static IQuorOS* services = nullptr;
    return services;
}

} // namespace

IQuorOS& QuorOS::Create() {
    static auto* const machine = new Machine;
    return replacement() ? *replacement() : *machine;
}

void QuorOS::Replace(IQuorOS* services) {
    replacement() = services;
}
