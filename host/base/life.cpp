#include "host/base/life.h"

#include <vector>

namespace Life {
namespace {

struct Slot {
    void* object;
    quint32 generation;
    quint32 nextFree;
};

struct Table {
    std::vector<Slot> entries{Slot{nullptr, 0, 0}};
    quint32 firstFree = 0;
};

Table& table() {
    static Table* const instance = new Table;
    return *instance;
}

} // namespace

Handle Acquire(void* object) {
    Table& t = table();
    if (t.firstFree == 0) {
        Q_ASSERT(t.entries.size() <= MaxIndex);
        t.entries.push_back(Slot{object, 1, 0});
        return {static_cast<quint32>(t.entries.size() - 1), 1};
    }
    const quint32 index = t.firstFree;
    Slot& slot = t.entries[index];
    t.firstFree = slot.nextFree;
    slot.object = object;
    return {index, slot.generation};
}

void Release(quint32 index) {
    Table& t = table();
    Slot& slot = t.entries[index];
    slot.object = nullptr;
    ++slot.generation;
    slot.nextFree = t.firstFree;
    t.firstFree = index;
}

Handle HandleOf(quint32 index) {
    return {index, index == 0 ? 0 : table().entries[index].generation};
}

void* Find(Handle handle) {
    const Slot& slot = table().entries[handle.index];
    return slot.generation == handle.generation ? slot.object : nullptr;
}

} // namespace Life
