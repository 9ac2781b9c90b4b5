#include "workstation/windowstatus.h"

#include "host/base/frequencytext.h"
#include "host/gui/colorset.h"
#include "workstation/failurenote.h"

#include <QLabel>
#include <QStatusBar>
#include <QToolButton>

namespace {

constexpr int TellMilliseconds = 8000; ///< how long a text stands before tips of menus

} // namespace

WindowStatus::WindowStatus(QStatusBar& bar)
    : QObject(&bar),
      m_bar(bar),
      m_last(new QLabel(&bar)),
      m_failure(new FailureNote(&bar)),
      m_tuned(new QLabel(&bar)),
      m_problems(new QToolButton(&bar)) {
    m_last->setObjectName(QStringLiteral("LastAction"));
    m_last->setTextFormat(Qt::PlainText);
    m_last->setSizePolicy(QSizePolicy::Ignored,
                          QSizePolicy::Preferred); // a long text does not widen the window
    m_tuned->setToolTip(tr("Tuned frequency"));
    m_problems->setObjectName(QStringLiteral("Problems"));
    m_problems->setAutoRaise(true);
    m_problems->setFocusPolicy(Qt::TabFocus);
    m_problems->setToolTip(tr("Show or hide the messages"));
    bar.addWidget(m_last, 1);
    for (QWidget* widget : {static_cast<QWidget*>(m_failure), static_cast<QWidget*>(m_tuned),
                            static_cast<QWidget*>(m_problems)})
        bar.addPermanentWidget(widget);
    m_failure->hide();
    ShowProblems(0);
    bar.setFixedHeight(
        std::max({bar.sizeHint().height(), m_failure->sizeHint().height(), m_problems->sizeHint().height()}));
}

void WindowStatus::Tell(const QString& text) {
    m_last->setText(text);
    m_last->setToolTip(text);
    m_bar.showMessage(text, TellMilliseconds);
}

void WindowStatus::ShowTuned(double hertz) {
    m_tuned->setText(Quor::FrequencyText(hertz));
}

void WindowStatus::ShowProblems(int count) {
    m_problems->setText(count == 0 ? tr("No problems") : tr("%n problem(s)", "", count));
    QPalette colors = m_bar.palette();
    if (count > 0)
        colors.setColor(QPalette::ButtonText,
                        ColorSet::Instance().GetColorDefinition(IColorBase::ERROR_TEXT).GetColor());
    m_problems->setPalette(colors);
}

void WindowStatus::AddNote(const QString& text, const QString& toolTip) {
    auto* note = new QLabel(text, &m_bar);
    note->setToolTip(toolTip);
    m_bar.insertPermanentWidget(0, note);
}
