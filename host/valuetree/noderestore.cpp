// Children that are kept while they are removed, and come back to their places.

#include "host/valuetree/changerecorder.h"
#include "host/valuetree/node.h"
#include "host/valuetree/nodeparts.h"

namespace {

/// The children of a node and their serials, in order.
struct Places {
    std::vector<Node*> children;
    std::vector<quint32> serials;

    void Append(Node* child, quint32 serial) {
        children.push_back(child);
        serials.push_back(serial);
    }
};

} // namespace

Node* Node::ChildBySerial(quint32 serial) const {
    const Rare* const r = findRare();
    if (!r || r->children.empty())
        return nullptr;
    if (r->serials.empty())
        return serial > r->serialsBefore && serial - r->serialsBefore <= r->children.size()
                   ? r->children[serial - r->serialsBefore - 1]
                   : nullptr;
    const auto found = std::lower_bound(r->serials.begin(), r->serials.end(), serial);
    return found != r->serials.end() && *found == serial
               ? r->children[static_cast<size_t>(found - r->serials.begin())]
               : nullptr;
}

quint32 Node::RestoreCount() const {
    const Rare* const r = findRare();
    return r ? r->restores : 0;
}

const Shape* Node::WholeShape() const {
    const bool hasChildren = ChildCount() > 0;
    return ShapeId() != Shape::None && !hasChildren ? &shape() : nullptr;
}

bool Node::CanPark() const {
    if (!m_isFilled || (m_side && (m_side->firstValue || m_side->rare)))
        return false;
    const std::vector<Shape::Field>& fields = shape().Fields();
    return std::all_of(fields.begin(), fields.end(), [this](const Shape::Field& field) {
        const ValueBase& value = shaped(field);
        return value.m_autoDelete && !value.m_hasHeadBeside;
    });
}

bool Node::Park() {
    if (!CanPark())
        return false;
    for (const Shape::Field& field : shape().Fields()) {
        if (!shaped(field).m_isRemoving)
            return false;
    }
    stopRemovals();
    if (m_attached)
        m_parent->unlinkChild(this);
    m_parent = nullptr;
    m_announced = false;
    for (const Shape::Field& field : shape().Fields()) {
        ValueBase& value = shaped(field);
        value.end();
        value.m_isRemoving = 0;
    }
    end();
    m_follower = {};
    if (m_side && m_side->slot != 0)
        Life::Release(m_side->slot);
    m_side.reset();
    return true;
}

/// A child that was made by its path may have taken the bare name meanwhile: then the other one is numbered.
void Node::takePlace(Node& parent, const Returning& place) {
    Rare& r = parent.rare();
    const bool isTaken =
        place.ordinal == 1 && std::any_of(r.children.begin(), r.children.end(), [this](const Node* other) {
            return other && other->m_name == m_name && other->m_ordinal == 1;
        });
    m_parent = &parent;
    m_attached = true;
    m_ordinal = isTaken ? r.nextOrdinal(m_name) : place.ordinal;
    r.remember(this, m_name, m_ordinal);
}

void Node::Restore(std::span<const Returning> returning) {
    if (returning.empty())
        return;
    Rare& r = rare();
    Q_ASSERT(r.removing == 0);
    Places places;
    places.children.reserve(r.children.size() - r.holes + returning.size());
    places.serials.reserve(places.children.capacity());
    size_t old = 0;
    const auto appendUpTo = [&](quint32 serial) {
        for (; old < r.children.size() && r.serialAt(old) <= serial; ++old) {
            if (r.children[old])
                places.Append(r.children[old], r.serialAt(old));
        }
    };
    for (const Returning& place : returning) {
        appendUpTo(place.serial);
        place.child->takePlace(*this, place);
        places.Append(place.child, place.serial);
        r.lastSerial = std::max(r.lastSerial, place.serial);
    }
    appendUpTo(r.lastSerial);
    for (size_t i = 0; i < places.children.size(); ++i)
        places.children[i]->m_index = static_cast<quint32>(i);
    r.children = std::move(places.children);
    r.holes = 0;
    const bool countOn = r.lastSerial - places.serials.front() + 1 == places.serials.size();
    r.serialsBefore = places.serials.front() - 1;
    r.serials = countOn ? std::vector<quint32>() : std::move(places.serials);
    ++r.restores;
    for (const Returning& place : returning) {
        if (ChangeRecorder* recorder = ChangeRecorder::Active()) [[unlikely]]
            recorder->Attached(*place.child);
    }
    const WeakRef<Node> alive(this);
    NotifyObservers(TChangeCode::ChildrenChanged, nullptr);
    if (alive)
        Commit();
}
