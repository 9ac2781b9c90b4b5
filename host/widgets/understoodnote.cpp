#include "host/widgets/understoodnote.h"

#include "host/gui/quiettext.h"

#include <QApplication>
#include <QLineEdit>
#include <QPainter>
#include <QStyle>

namespace {

constexpr int Gap = 6; ///< pixels beside the note

/// The note stands in the size of other texts, however large the entry is.
QFont noteFont(const QLineEdit& field) {
    QFont font(field.font());
    font.setBold(false);
    font.setPointSizeF(std::min(QFontInfo(font).pointSizeF(), QFontInfo(QApplication::font()).pointSizeF()));
    return font;
}

} // namespace

void UnderstoodNote::Show(const QString& understood, bool mayMisread) {
    m_text = understood;
    if (mayMisread)
        m_text += QLatin1Char('?');
    MakeRoom();
}

QString UnderstoodNote::AboveTip(const QString& tip) const {
    if (m_text.isEmpty())
        return tip;
    const QString note = QStringLiteral("= ") + m_text;
    return tip.isEmpty() ? note : note + QLatin1Char('\n') + tip;
}

void UnderstoodNote::MakeRoom() {
    const int frame =
        2 * (m_field.style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, &m_field) + Gap);
    const int note = m_text.isEmpty() ? 0 : QFontMetrics(noteFont(m_field)).horizontalAdvance(m_text) + Gap;
    const int entry = m_field.fontMetrics().horizontalAdvance(m_field.text());
    m_hasRoom = note > 0 && entry + note + frame <= m_field.width();
    m_field.setTextMargins(0, 0, m_hasRoom ? note : 0, 0);
    m_field.update();
}

void UnderstoodNote::Paint() const {
    if (!m_hasRoom)
        return;
    QPainter painter(&m_field);
    painter.setPen(QuietText(m_field.palette()));
    painter.setFont(noteFont(m_field));
    painter.drawText(m_field.rect().adjusted(0, 0, -Gap, 0), Qt::AlignRight | Qt::AlignVCenter, m_text);
}
