#include "host/freqlist/boundvalues.h"

#include <algorithm>
#include <cstring>

static_assert(Shape::MaxPlace < 0xff);

BoundValues::Pointers* BoundValues::pointers() const {
    Pointers* found = nullptr;
    if (m_bytes.back() == PointersMark)
        std::memcpy(&found, m_bytes.data(), sizeof(void*));
    return found;
}

ValueBase* BoundValues::Get(const Node* entry, size_t number) const {
    if (m_bytes.back() == PointersMark)
        return (*pointers())[number];
    return m_bytes[number] == 0 ? nullptr : entry->ValueAtPlace(m_bytes[number]);
}

bool BoundValues::SetFresh(size_t first, std::span<const quint8> places) {
    const auto from = m_bytes.begin() + static_cast<std::ptrdiff_t>(first);
    if (m_bytes.back() == PointersMark ||
        !std::all_of(from, from + static_cast<std::ptrdiff_t>(places.size()),
                     [](quint8 byte) { return byte == 0; }))
        return false;
    std::copy(places.begin(), places.end(), from);
    return true;
}

void BoundValues::Set(const Node* entry, size_t number, ValueBase* value) {
    const quint8 place = value ? entry->PlaceOf(*value) : 0;
    if (m_bytes.back() != PointersMark && (place != 0 || !value)) {
        m_bytes[number] = place;
        return;
    }
    keepPointers(entry);
    (*pointers())[number] = value;
}

void BoundValues::keepPointers(const Node* entry) {
    if (m_bytes.back() == PointersMark)
        return;
    auto* const all = new Pointers;
    for (size_t i = 0; i < Count; ++i)
        (*all)[i] = Get(entry, i);
    m_bytes.back() = PointersMark;
    std::memcpy(m_bytes.data(), &all, sizeof(void*));
}
