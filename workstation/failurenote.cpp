#include "workstation/failurenote.h"

#include "host/gui/colorset.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

namespace {

/// Beside the note stays room for what the status bar tells otherwise.
constexpr int MaxCharacters = 90;

} // namespace

FailureNote::FailureNote(QWidget* parent) : QWidget(parent), m_label(new QLabel(this)) {
    auto* dismiss = new QToolButton(this);
    dismiss->setText(tr("Dismiss"));
    dismiss->setAutoRaise(true);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_label);
    layout->addWidget(dismiss);
    m_label->setTextFormat(Qt::PlainText);
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
    const QFontMetrics metrics = m_label->fontMetrics();
    m_label->setText(metrics.elidedText(text, Qt::ElideMiddle, metrics.averageCharWidth() * MaxCharacters));
    setVisible(!text.isEmpty());
}
