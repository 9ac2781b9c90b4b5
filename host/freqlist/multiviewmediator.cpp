#include "host/freqlist/multiviewmediator.h"

#include "host/freqlist/frequencynodelistview.h"

MultiViewMediator::Rows* MultiViewMediator::manyRows() const {
    return m_rows & ManyBit ? reinterpret_cast<Rows*>(m_rows & ~ManyBit) : nullptr;
}

template <typename Visit>
void MultiViewMediator::forEachRow(Visit visit) const {
    if (const Rows* rows = manyRows()) {
        for (FrequencyNodeMediatorViewItem* row : *rows)
            visit(row);
    } else if (m_rows != 0) {
        visit(reinterpret_cast<FrequencyNodeMediatorViewItem*>(m_rows));
    }
}

MultiViewMediator::~MultiViewMediator() {
    forEachRow([](FrequencyNodeMediatorViewItem* row) { row->MediatorEnds(); });
    delete manyRows();
}

void MultiViewMediator::AddView(FrequencyNodeListView* view, FrequencyNodeMediatorViewItem* row) {
    if (!row || GetItem4View(view))
        return;
    if (m_rows == 0) {
        m_rows = reinterpret_cast<quintptr>(row);
        return;
    }
    if (!manyRows())
        m_rows =
            reinterpret_cast<quintptr>(new Rows{reinterpret_cast<FrequencyNodeMediatorViewItem*>(m_rows)}) |
            ManyBit;
    manyRows()->push_back(row);
}

void MultiViewMediator::RemoveView(FrequencyNodeListView* view) {
    if (Rows* rows = manyRows())
        std::erase_if(*rows, [view](const auto* row) { return row->GetView() == view; });
    else if (GetItem4View(view))
        m_rows = 0;
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
