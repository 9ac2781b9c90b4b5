#include "host/freqlist/multiviewmediator.h"

#include "host/freqlist/frequencynodelistview.h"

namespace {

/// Rows of all items. Items are very many, and most of them are shown nowhere or in one view.
class RowTable {
public:
    struct Place {
        FrequencyNodeListView* view;
        FrequencyNodeMediatorViewItem* row; ///< null while the view has not made it
        quint32 number;                     ///< that the view knows it by
        quint32 next;                       ///< place of the same item's next row, or the next free place
    };

    Place& operator[](quint32 place) { return m_places[place]; }
    quint32 Add(const Place& added) {
        if (m_firstFree == 0) {
            m_places.push_back(added);
            return static_cast<quint32>(m_places.size() - 1);
        }
        const quint32 place = m_firstFree;
        m_firstFree = std::exchange(m_places[place], added).next;
        return place;
    }
    /// Frees a place; the result is the one that followed it.
    quint32 Remove(quint32 place) {
        return std::exchange(m_places[place], Place{nullptr, nullptr, 0, std::exchange(m_firstFree, place)})
            .next;
    }

private:
    std::vector<Place> m_places = std::vector<Place>(1); ///< 0 is no place
    quint32 m_firstFree = 0;
};

RowTable& rowTable() {
    static auto* const table = new RowTable;
    return *table;
}

void tellChange(const RowTable::Place& place) {
    if (place.row)
        place.row->MarkStale();
    else
        place.view->NoteChangedRow(place.number);
}

} // namespace

MultiViewMediator::~MultiViewMediator() {
    while (m_rows != 0) {
        const RowTable::Place place = rowTable()[m_rows];
        m_rows = rowTable().Remove(m_rows);
        if (place.row)
            place.row->MediatorEnds();
        place.view->NoteEndedRow(place.number);
    }
}

/// The item's place for a view in the table; 0 for none.
quint32 MultiViewMediator::placeOf(const FrequencyNodeListView* view) const {
    quint32 place = m_rows;
    while (place != 0 && rowTable()[place].view != view)
        place = rowTable()[place].next;
    return place;
}

bool MultiViewMediator::AddView(FrequencyNodeListView* view, quint32 number) {
    if (placeOf(view) != 0)
        return false;
    const quint32 added = rowTable().Add({view, nullptr, number, 0});
    quint32* last = &m_rows;
    while (*last != 0)
        last = &rowTable()[*last].next;
    *last = added;
    return true;
}

void MultiViewMediator::AddView(FrequencyNodeListView* view, FrequencyNodeMediatorViewItem* row) {
    if (!row)
        return;
    AddView(view, FrequencyNodeListView::NoNumber);
    if (FrequencyNodeMediatorViewItem*& known = rowTable()[placeOf(view)].row; !known)
        known = row;
}

void MultiViewMediator::RemoveView(FrequencyNodeListView* view) {
    for (quint32* place = &m_rows; *place != 0;) {
        if (rowTable()[*place].view == view)
            *place = rowTable().Remove(*place);
        else
            place = &rowTable()[*place].next;
    }
}

void MultiViewMediator::UpdateAllViewItems() {
    for (quint32 place = m_rows; place != 0;) {
        const RowTable::Place at = rowTable()[place];
        tellChange(at);
        place = at.next;
    }
}

void MultiViewMediator::UpdateViewItem(const FrequencyNodeListView* view) {
    if (const quint32 place = placeOf(view))
        tellChange(rowTable()[place]);
}

FrequencyNodeMediatorViewItem* MultiViewMediator::GetItem4View(const FrequencyNodeListView* view) const {
    const quint32 place = placeOf(view);
    if (place == 0)
        return nullptr;
    const RowTable::Place at = rowTable()[place];
    return at.row ? at.row : at.view->MakeRow(at.number);
}

std::optional<quint32> MultiViewMediator::NumberInView(const FrequencyNodeListView* view) const {
    const quint32 place = placeOf(view);
    return place == 0 ? std::nullopt : std::optional(rowTable()[place].number);
}

int MultiViewMediatorCtrl::IncrementVisibleCnt(QWidget*) {
    return ++m_visible;
}
