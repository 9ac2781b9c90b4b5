#include "workstation/findhits.h"

#include "host/freqlist/buttonbar.h"
#include "host/freqlist/filterfield.h"
#include "host/gui/sortlistview.h"

#include <QCoreApplication>
#include <QTabWidget>

FindHits::FindHits(QTabWidget& tabs) : QObject(&tabs), m_tabs(tabs) {}

FilterField* FindHits::fieldOf(int tab) const {
    const QWidget* page = m_tabs.widget(tab);
    const auto* bar = page ? page->findChild<FreqStoreListViewButtonBar*>() : nullptr;
    return bar && bar->Filter().List() ? &bar->Filter() : nullptr;
}

bool FindHits::Step(int direction) {
    const int first = m_tabs.currentIndex();
    FilterField* field = fieldOf(first);
    if (field && !field->text().trimmed().isEmpty())
        m_query = field->text();
    if (m_query.isEmpty()) {
        if (field)
            field->setFocus();
        return false;
    }
    const int tabs = m_tabs.count();
    for (int i = 0; i <= tabs; ++i) { // the first one again at the end, from its other end
        if (goTo((first + i * direction + tabs * 2) % tabs, direction, i == 0))
            return true;
    }
    return false;
}

/// Goes to a hit in one tab, the next one from the current row or the outermost; false when there is none.
bool FindHits::goTo(int tab, int direction, bool fromCurrent) {
    FilterField* field = fieldOf(tab);
    if (!field)
        return false;
    const QString before = field->text();
    field->setText(m_query);
    const QPointer<SortListView> list = field->List();
    while (list && list->IsFiltering())
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::WaitForMoreEvents);
    if (!list)
        return false;
    const int current = fromCurrent ? list->CurrentPlace() : -1;
    const int end = direction > 0 ? 0 : list->ShownCount() - 1;
    const int place = current < 0 ? end : current + direction;
    if (place < 0 || place >= list->ShownCount()) {
        if (list->ShownCount() == 0)
            field->setText(before);
        return false;
    }
    m_tabs.setCurrentIndex(tab);
    list->SelectPlace(place);
    list->setFocus();
    return true;
}
