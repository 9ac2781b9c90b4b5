#include "host/base/tellings.h"

#include <utility>

namespace {

thread_local Tellings* ofThisThread = nullptr;

} // namespace

Tellings::Scope::Scope(Tellings& tellings) : m_before(std::exchange(ofThisThread, &tellings)) {}

Tellings::Scope::~Scope() {
    ofThisThread = m_before;
}

Tellings* Tellings::OfThisThread() {
    return ofThisThread;
}

void Tellings::TellAll() {
    for (const auto& tell : std::exchange(m_waiting, {}))
        tell();
}
