#include "host/freqlist/multiviewmediator.h"

#include "host/freqlist/frequencynodelistview.h"

namespace {

/// Rows of all items. Items are very many, and most of them are shown nowhere or in one view.
class RowTable {
public:
    struct Place {
        FrequencyNodeMediatorViewItem* row;
        quint32 next; ///< place of the same item's next row, or the next free place
    };

    Place& operator[](quint32 place) { return m_places[place]; }
    quint32 Add(FrequencyNodeMediatorViewItem* row) {
        if (m_firstFree == 0) {
            m_places.push_back({row, 0});
            return static_cast<quint32>(m_places.size() - 1);
        }
        const quint32 place = m_firstFree;
        m_firstFree = std::exchange(m_places[place], Place{row, 0}).next;
        return place;
    }
    /// Frees a place; the result is the one that followed it.
    quint32 Remove(quint32 place) {
        return std::exchange(m_places[place], Place{nullptr, std::exchange(m_firstFree, place)}).next;
    }

private:
    std::vector<Place> m_places = std::vector<Place>(1); ///< 0 is no place
    quint32 m_firstFree = 0;
};

RowTable& rowTable() {
    static auto* const table = new RowTable;
    return *table;
}

} // namespace

template <typename Visit>
void MultiViewMediator::forEachRow(Visit visit) const {
    for (quint32 place = m_rows; place != 0;) {
        const RowTable::Place at = rowTable()[place];
        visit(at.row);
        place = at.next;
    }
}

MultiViewMediator::~MultiViewMediator() {
    forEachRow([](FrequencyNodeMediatorViewItem* row) { row->MediatorEnds(); });
    while (m_rows != 0)
        m_rows = rowTable().Remove(m_rows);
}

void MultiViewMediator::AddView(FrequencyNodeListView* view, FrequencyNodeMediatorViewItem* row) {
    if (!row || GetItem4View(view))
        return;
    const quint32 added = rowTable().Add(row);
    quint32* last = &m_rows;
    while (*last != 0)
        last = &rowTable()[*last].next;
    *last = added;
}

void MultiViewMediator::RemoveView(FrequencyNodeListView* view) {
    for (quint32* place = &m_rows; *place != 0;) {
        if (rowTable()[*place].row->GetView() == view)
            *place = rowTable().Remove(*place);
        else
            place = &rowTable()[*place].next;
    }
}

void MultiViewMediator::UpdateAllViewItems() {
    forEachRow([](FrequencyNodeMediatorViewItem* row) { row->MarkStale(); });
}

FrequencyNodeMediatorViewItem* MultiViewMediator::GetItem4View(const FrequencyNodeListView* view) const {
    FrequencyNodeMediatorViewItem* found = nullptr;
    forEachRow([&](FrequencyNodeMediatorViewItem* row) {
        if (!found && row->GetView() == view)
            found = row;
    });
    return found;
}

int MultiViewMediatorCtrl::IncrementVisibleCnt(QWidget*) {
    return ++m_visible;
}
