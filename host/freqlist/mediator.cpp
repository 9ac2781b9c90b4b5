#include "host/freqlist/mediator.h"

#include "host/valuetree/node.h"

void MediatorCtrl::MapInit(const Node* node) {
    m_walk = node ? node->Children() : std::vector<Node*>();
    m_next = 0;
}

Node* MediatorCtrl::MapNext() {
    return m_next < m_walk.size() ? m_walk[m_next++] : nullptr;
}

Mediator::Mediator(MediatorCtrl* controller, Observable* observable)
    : m_controller(controller), m_observable(observable) {
    if (m_observable)
        m_observable->AddObserver(this);
}

Mediator::~Mediator() {
    // The node drops its handle to this observer by itself.
    if (m_controller)
        m_controller->NotifyDeleted(this);
}
