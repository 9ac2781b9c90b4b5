#include "host/freqlist/emptylist.h"

#include "host/freqlist/buttonbar.h"
#include "host/freqlist/frequencystorelistview.h"
#include "host/gui/sortlistview.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QScrollBar>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

using Bar = FreqStoreListViewButtonBar;

/// What brings entries into a list.
constexpr Bar::Action Fillers[] = {Bar::New, Bar::Paste, Bar::Read, Bar::Import};
constexpr int Margin = 24; ///< around it, in the list

} // namespace

EmptyList::EmptyList(FrequencyStoreListView& view, const Bar& bar)
    : QWidget(view.GetListView()->viewport()),
      m_view(view),
      m_list(*view.GetListView()),
      m_text(new QLabel(this)) {
    auto* layout = new QVBoxLayout(this);
    m_text->setAlignment(Qt::AlignCenter);
    m_text->setWordWrap(true);
    layout->addWidget(m_text);
    auto* row = new QHBoxLayout;
    layout->addLayout(row);
    row->addStretch(1);
    for (const Bar::Action action : Fillers) {
        auto* button = new QToolButton(this);
        button->setDefaultAction(bar.GetAction(action)); // and follows it
        button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        button->setFocusPolicy(Qt::NoFocus); // the list keeps it
        row->addWidget(button);
        m_buttons.push_back(button);
    }
    row->addStretch(1);
    connect(&m_list, &SortListView::countsChanged, this, &EmptyList::follow);
    connect(m_list.horizontalScrollBar(), &QScrollBar::valueChanged, this,
            &EmptyList::follow); // moves it, too
    m_list.viewport()->installEventFilter(this);
    follow();
}

void EmptyList::Refresh() {
    for (QToolButton* button : m_buttons)
        button->setVisible(button->defaultAction()->isVisible() && button->defaultAction()->isEnabled());
    if (isVisible())
        follow();
}

void EmptyList::follow() {
    const bool wanted = m_list.RowCount() == 0;
    if (wanted) {
        const QString text = m_view.EmptyText();
        m_text->setText(text.isEmpty() ? tr("The list is empty.") : text);
        const QRect room = m_list.viewport()->rect().adjusted(Margin, 0, -Margin, 0);
        const int height = std::max(layout()->totalHeightForWidth(room.width()), sizeHint().height());
        setGeometry(room.x(), room.center().y() - height / 2, room.width(), height);
        raise();
    }
    setVisible(wanted);
}

bool EmptyList::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize || event->type() == QEvent::Show)
        follow();
    return QWidget::eventFilter(watched, event);
}
