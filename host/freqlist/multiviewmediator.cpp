#include "host/freqlist/multiviewmediator.h"

#include "host/freqlist/frequencynodelistview.h"

MultiViewMediator::~MultiViewMediator() {
    if (m_row)
        m_row->MediatorEnds();
    if (m_furtherRows) {
        for (FrequencyNodeMediatorViewItem* row : *m_furtherRows)
            row->MediatorEnds();
        delete m_furtherRows;
    }
}

void MultiViewMediator::AddView(FrequencyNodeListView* view, FrequencyNodeMediatorViewItem* row) {
    if (!row || GetItem4View(view))
        return;
    if (!m_row) {
        m_row = row;
        return;
    }
    if (!m_furtherRows)
        m_furtherRows = new std::vector<FrequencyNodeMediatorViewItem*>;
    m_furtherRows->push_back(row);
}

void MultiViewMediator::RemoveView(FrequencyNodeListView* view) {
    if (m_row && m_row->GetView() == view)
        m_row = nullptr;
    if (m_furtherRows)
        std::erase_if(*m_furtherRows, [view](const auto* row) { return row->GetView() == view; });
}

void MultiViewMediator::UpdateAllViewItems() {
    if (m_row)
        m_row->MarkStale();
    if (m_furtherRows) {
        for (FrequencyNodeMediatorViewItem* row : *m_furtherRows)
            row->MarkStale();
    }
}

FrequencyNodeMediatorViewItem* MultiViewMediator::GetItem4View(const FrequencyNodeListView* view) const {
    if (m_row && m_row->GetView() == view)
        return m_row;
    if (m_furtherRows) {
        for (FrequencyNodeMediatorViewItem* row : *m_furtherRows) {
            if (row->GetView() == view)
                return row;
        }
    }
    return nullptr;
}

int MultiViewMediatorCtrl::IncrementVisibleCnt(QWidget*) {
    return ++m_visible;
}
