#include "host/valuetree/operatoraction.h"

namespace {

OperatorAction::Listener* currentListener = nullptr;

} // namespace

OperatorAction::OperatorAction(const QString& name) {
    if (currentListener)
        m_action = currentListener->Begin(name);
}

OperatorAction::~OperatorAction() {
    if (currentListener)
        currentListener->End(m_action);
}

void OperatorAction::SetListener(Listener* listener) {
    currentListener = listener;
}
