#pragma once

#include "host/base/observer.h"
#include "host/base/slabs.h"

#include <QString>

#include <cstddef>
#include <vector>

class Mediator;
class Node;

/// Keeps one mediator for each child of an observed node.
class MediatorCtrl {
public:
    virtual ~MediatorCtrl() = default;

    /// Tells that a mediator of this controller has been made, or is being destroyed.
    virtual void NotifyCreated(Mediator* mediator) = 0;
    virtual void NotifyDeleted(Mediator* mediator) = 0;
    /// Usage name that the list's entries carry in interchange files; see `FrequencyStoreList::UsageToName`.
    virtual QString GetUsageName() const = 0;

protected:
    /// Walk the children of the observed node in order: `MapInit` starts, `MapNext` gives the next child,
    /// null at the end.
    void MapInit(const Node* node);
    Node* MapNext();

private:
    std::vector<Node*> m_walk;
    size_t m_next = 0;
};

/// An observer bound to one entry node. It is made by its controller, owns nothing in the tree, and outlives
/// neither its node nor its controller.
class Mediator : public IObserver {
public:
    Mediator(MediatorCtrl* controller, Observable* observable);
    Mediator(const Mediator&) = delete;
    Mediator& operator=(const Mediator&) = delete;
    /// Leaves the node and tells the controller.
    ~Mediator() override;
    static void* operator new(size_t size) { return Slabs::Take(size); }
    static void operator delete(void* memory, size_t size) { Slabs::Free(memory, size); }

    /// The entry node that the mediator observes.
    Observable* GetObservable() const { return m_observable; }
    MediatorCtrl* GetController() const { return m_controller; }

    /// Place among the controller's mediators; the controller's own book-keeping.
    unsigned OrderIndex = 0;

protected:
    MediatorCtrl* m_controller;
    Observable* m_observable;
};
