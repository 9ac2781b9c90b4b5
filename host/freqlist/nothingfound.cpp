#include "host/freqlist/nothingfound.h"

#include "host/gui/sortlistview.h"

#include <QEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

NothingFound::NothingFound(SortListView& list) : QWidget(list.viewport()), m_list(list) {
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(tr("Nothing matches"), this), 0, Qt::AlignHCenter);
    auto* clear = new QPushButton(tr("Clear filter"), this);
    clear->setFocusPolicy(Qt::NoFocus); // the field or the list keeps it
    layout->addWidget(clear, 0, Qt::AlignHCenter);
    connect(clear, &QPushButton::clicked, this, &NothingFound::clearWanted);
    connect(&list, &SortListView::countsChanged, this, &NothingFound::follow);
    list.viewport()->installEventFilter(this);
    follow();
}

void NothingFound::follow() {
    const bool wanted = m_list.RowCount() > 0 && m_list.ShownCount() == 0 && !m_list.IsFiltering();
    if (wanted) {
        adjustSize();
        move(m_list.viewport()->rect().center() - rect().center());
        raise();
    }
    setVisible(wanted);
}

bool NothingFound::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize)
        follow();
    return QWidget::eventFilter(watched, event);
}
