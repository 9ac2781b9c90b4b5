#include "host/base/life.h"

#include <vector>

namespace Life {
namespace {

/// Two rows, so that a slot costs twelve bytes.
struct Table {
    std::vector<void*> objects{nullptr}; ///< of a free slot the number of the next free one
    std::vector<quint32> generations{0};
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
        Q_ASSERT(t.objects.size() <= MaxIndex);
        t.objects.push_back(object);
        t.generations.push_back(1);
        return {static_cast<quint32>(t.objects.size() - 1), 1};
    }
    const quint32 index = t.firstFree;
    t.firstFree = static_cast<quint32>(reinterpret_cast<quintptr>(t.objects[index]));
    t.objects[index] = object;
    return {index, t.generations[index]};
}

void Release(quint32 index) {
    Table& t = table();
    ++t.generations[index];
    t.objects[index] = reinterpret_cast<void*>(quintptr(t.firstFree));
    t.firstFree = index;
}

Handle HandleOf(quint32 index) {
    return {index, index == 0 ? 0 : table().generations[index]};
}

void* Find(Handle handle) {
    const Table& t = table();
    return t.generations[handle.index] == handle.generation ? t.objects[handle.index] : nullptr;
}

} // namespace Life
