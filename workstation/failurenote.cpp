#include "workstation/failurenote.h"

#include "host/gui/colorset.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

FailureNote::FailureNote(QWidget* parent) : QWidget(parent), m_label(new QLabel(this)) {
    auto* dismiss = new QToolButton(this);
    dismiss->setText(tr("Dismiss"));
    dismiss->setAutoRaise(true);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_label, 1);
    layout->addWidget(dismiss);
    m_label->setTextFormat(Qt::PlainText);
    m_label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    connect(dismiss, &QToolButton::clicked, this, &FailureNote::Dismissed);
    hide();
}

void FailureNote::Show(const QString& text) {
    QPalette colors = palette();
    colors.setColor(QPalette::WindowText,
                    ColorSet::Instance().GetColorDefinition(IColorBase::ERROR_TEXT).GetColor());
    m_label->setPalette(colors);
    m_text = text;
    setToolTip(text);
    setVisible(!text.isEmpty());
    fit();
}

void FailureNote::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    fit();
}

void FailureNote::fit() {
    m_label->setText(m_label->fontMetrics().elidedText(m_text, Qt::ElideMiddle, m_label->width()));
}
