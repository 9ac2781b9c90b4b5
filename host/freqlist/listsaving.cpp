#include "host/freqlist/listsaving.h"

#include "host/freqlist/freqstore.h"

namespace {

int current = 0;

} // namespace

ListSaving::ListSaving(int listId) : m_before(std::exchange(current, listId)) {}

ListSaving::~ListSaving() {
    current = m_before;
}

int ListSaving::Current() {
    return current;
}

int ListSaving::idOf(const MultiViewMediatorCtrl* list) {
    if (list) {
        for (const int id : FreqStore::Instance().GetListIds())
            if (FreqStore::Instance().GetFrequencies(static_cast<unsigned>(id)) == list)
                return id;
    }
    return 0;
}
