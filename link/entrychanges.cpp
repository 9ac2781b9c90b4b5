#include "link/entrychanges.h"

#include "host/valuetree/recorders.h"
#include "host/valuetree/valuebase.h"

#include <algorithm>

EntryChanges::EntryChanges(Node& list, std::function<void()> noted)
    : m_list(&list), m_noted(std::move(noted)) {
    Recorders::Add(*this);
}

EntryChanges::~EntryChanges() {
    Recorders::Remove(*this);
}

void EntryChanges::Changing(ValueBase& value, IObserver*) {
    if (const Node* entry = value.GetParentNode())
        note(*entry);
}

/// An entry's values mostly change one after the other.
void EntryChanges::note(const Node& child) {
    if (m_deaf > 0 || child.GetParentNode() != m_list)
        return;
    const quint32 serial = child.GetSerial();
    if (serial == 0 || (!m_serials.empty() && m_serials.back() == serial))
        return;
    m_serials.push_back(serial);
    if (m_serials.size() == 1)
        m_noted();
}

bool EntryChanges::Contains(quint32 serial) const {
    return std::find(m_serials.begin(), m_serials.end(), serial) != m_serials.end();
}

std::vector<quint32> EntryChanges::Take() {
    std::vector<quint32> serials = std::exchange(m_serials, {});
    std::sort(serials.begin(), serials.end());
    serials.erase(std::unique(serials.begin(), serials.end()), serials.end());
    return serials;
}
