#include "workstation/windowstatus.h"

#include "host/base/frequencytext.h"
#include "host/gui/colorset.h"
#include "receiver/receiver.h"
#include "workstation/elidedlabel.h"
#include "workstation/failurenote.h"

#include <QLabel>
#include <QStatusBar>
#include <QToolButton>

namespace {

// Pixels: names and reasons may be long, and beside them stays room for what is told.
constexpr int LongestSharing = 420;
constexpr int LongestReceiver = 260;

} // namespace

WindowStatus::WindowStatus(QStatusBar& bar)
    : QObject(&bar),
      m_bar(bar),
      m_failure(new FailureNote(&bar)),
      m_receiver(new ElidedLabel(&bar, Qt::ElideMiddle)),
      m_tuned(new QLabel(&bar)),
      m_sharing(new QToolButton(&bar)),
      m_problems(new QToolButton(&bar)) {
    m_receiver->setObjectName(QStringLiteral("ReceiverName"));
    m_receiver->setMaximumWidth(LongestReceiver); // the name is cut in the middle: its state stands behind it
    m_tuned->setToolTip(tr("Tuned frequency"));
    m_problems->setObjectName(QStringLiteral("Problems"));
    m_problems->setAutoRaise(true);
    m_problems->setFocusPolicy(Qt::TabFocus);
    m_problems->setToolTip(tr("Show or hide the messages"));
    m_sharing->setObjectName(QStringLiteral("Sharing"));
    m_sharing->setAutoRaise(true);
    m_sharing->setFocusPolicy(Qt::TabFocus);
    for (QWidget* widget : {static_cast<QWidget*>(m_failure), static_cast<QWidget*>(m_sharing),
                            static_cast<QWidget*>(m_receiver), static_cast<QWidget*>(m_tuned),
                            static_cast<QWidget*>(m_problems)})
        bar.addPermanentWidget(widget);
    m_failure->hide();
    m_sharing->hide();
    // Tips of menus come and go; then what was done last stands there again.
    connect(&bar, &QStatusBar::messageChanged, this, [this](const QString& text) {
        if (text.isEmpty() && !m_last.isEmpty())
            m_bar.showMessage(m_last);
    });
    ShowProblems(0);
    bar.setFixedHeight(
        std::max({bar.sizeHint().height(), m_failure->sizeHint().height(), m_problems->sizeHint().height()}));
}

void WindowStatus::Tell(const QString& text) {
    m_last = text;
    m_bar.showMessage(text);
}

void WindowStatus::TellBriefly(const QString& text) {
    constexpr int Milliseconds = 5000;
    m_bar.showMessage(text, Milliseconds);
}

void WindowStatus::ShowTuned(double hertz) {
    m_tuned->setText(Quor::FrequencyText(hertz));
}

void WindowStatus::ShowReceiver(const Receiver& receiver) {
    const bool isLost =
        receiver.GetState() == ReceiverState::NoAnswer || receiver.GetState() == ReceiverState::Refused;
    m_receiver->setText(receiver.GetState() == ReceiverState::Connected ? receiver.GetName()
                                                                        : receiver.GetShortState());
    m_receiver->setToolTip(receiver.GetStateText());
    QPalette colors = m_bar.palette();
    if (isLost)
        colors.setColor(QPalette::WindowText,
                        ColorSet::Instance().GetColorDefinition(IColorBase::ERROR_TEXT).GetColor());
    m_receiver->setPalette(colors);
}

/// In the colour of errors, or as the bar is.
void WindowStatus::colour(QToolButton& button, bool isError) const {
    QPalette colors = m_bar.palette();
    if (isError)
        colors.setColor(QPalette::ButtonText,
                        ColorSet::Instance().GetColorDefinition(IColorBase::ERROR_TEXT).GetColor());
    button.setPalette(colors);
}

void WindowStatus::ShowSharing(const QString& text, const QString& toolTip, bool isBroken) {
    m_sharing->setVisible(!text.isEmpty());
    m_sharing->setText(m_sharing->fontMetrics().elidedText(text, Qt::ElideRight, LongestSharing));
    m_sharing->setToolTip(toolTip);
    m_sharing->setAccessibleName(text.isEmpty() ? tr("Nothing is shared") : text);
    colour(*m_sharing, isBroken);
}

void WindowStatus::ShowProblems(int count) {
    m_problems->setText(count == 0 ? tr("No problems") : tr("%n problem(s)", "", count));
    colour(*m_problems, count > 0);
}

void WindowStatus::AddNote(const QString& text, const QString& toolTip) {
    auto* note = new QLabel(text, &m_bar);
    note->setToolTip(toolTip);
    m_bar.insertPermanentWidget(0, note);
}
