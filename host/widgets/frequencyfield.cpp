#include "host/widgets/frequencyfield.h"

#include "host/base/frequencyinput.h"
#include "host/base/frequencytext.h"
#include "host/gui/quiettext.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QStyle>

namespace {

constexpr int Gap = 6; ///< pixels beside what was understood

} // namespace

FrequencyField::FrequencyField(QWidget* parent) : QLineEdit(parent) {
    connect(this, &QLineEdit::textEdited, this, &FrequencyField::follow);
    SetDefaultUnit(m_unit);
}

void FrequencyField::SetDefaultUnit(double hertz) {
    m_unit = hertz;
    setPlaceholderText(tr("Frequency in %1").arg(Quor::UnitName(hertz)));
    if (isModified())
        follow(text());
    updateToolTip();
}

void FrequencyField::SetFrequency(double hertz) {
    m_hertz = hertz;
    if (!isModified())
        showFrequency();
}

void FrequencyField::showFrequency() {
    setText(m_hertz > 0 ? Quor::GroupedFrequencyText(m_hertz) : QString());
    setModified(false);
    m_understood.clear();
    setError(QString());
    makeRoom();
    updateToolTip();
}

void FrequencyField::follow(const QString& entry) {
    const Quor::FrequencyInput input = Quor::ReadFrequencyInput(entry, m_unit);
    const bool isEmpty = entry.trimmed().isEmpty();
    m_understood = input.Understood();
    if (input.mayMisread)
        m_understood += QLatin1Char('?');
    setError(isEmpty ? QString() : input.problem);
    makeRoom();
    updateToolTip();
}

bool FrequencyField::Commit() {
    if (!isModified())
        return m_error.isEmpty();
    if (text().trimmed().isEmpty()) {
        showFrequency(); // nothing typed is no entry
        return true;
    }
    const Quor::FrequencyInput input = Quor::ReadFrequencyInput(text(), m_unit);
    setError(input.problem);
    if (!input.IsFrequency())
        return false;
    m_hertz = input.hertz;
    showFrequency();
    emit Entered(m_hertz);
    return true;
}

void FrequencyField::ShowError() {
    setFocus();
    selectAll();
}

void FrequencyField::setError(const QString& error) {
    if (error == m_error)
        return;
    m_error = error;
    updateToolTip();
    update();
    emit errorChanged(m_error);
}

void FrequencyField::updateToolTip() {
    const QString tip = tr("A number without a unit is in %1; Hz, kHz, MHz and GHz may follow it")
                            .arg(Quor::UnitName(m_unit));
    if (!m_error.isEmpty())
        setToolTip(m_error + QLatin1Char('\n') + tip);
    else
        setToolTip(m_understood.isEmpty() ? tip
                                          : QStringLiteral("= ") + m_understood + QLatin1Char('\n') + tip);
}

QSize FrequencyField::sizeHint() const {
    return QLineEdit::sizeHint().shrunkBy(textMargins());
}

QSize FrequencyField::minimumSizeHint() const {
    return QLineEdit::minimumSizeHint().shrunkBy(textMargins());
}

/// What was understood stands in the size of other texts, however large the entry is.
QFont FrequencyField::noteFont() const {
    QFont font(this->font());
    font.setBold(false);
    font.setPointSizeF(std::min(QFontInfo(font).pointSizeF(), QFontInfo(QApplication::font()).pointSizeF()));
    return font;
}

/// Keeps the end of the field free for what was understood, if the entry leaves so much.
void FrequencyField::makeRoom() {
    const int frame = 2 * (style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, this) + Gap);
    const int note =
        m_understood.isEmpty() ? 0 : QFontMetrics(noteFont()).horizontalAdvance(m_understood) + Gap;
    const int entry = fontMetrics().horizontalAdvance(text());
    m_hasRoom = note > 0 && entry + note + frame <= width();
    setTextMargins(0, 0, m_hasRoom ? note : 0, 0);
    update();
}

void FrequencyField::keyPressEvent(QKeyEvent* event) {
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn) {
        if (isModified())
            Commit();
        else if (m_hertz > 0)
            emit Entered(m_hertz);
        selectAll();
        event->accept();
    } else if (event->key() == Qt::Key_Escape && isModified()) {
        showFrequency();
        selectAll();
        event->accept();
    } else {
        QLineEdit::keyPressEvent(event);
    }
}

void FrequencyField::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    if (event->reason() != Qt::PopupFocusReason)
        Commit();
}

void FrequencyField::resizeEvent(QResizeEvent* event) {
    QLineEdit::resizeEvent(event);
    makeRoom();
}

void FrequencyField::paintEvent(QPaintEvent* event) {
    QLineEdit::paintEvent(event);
    if (m_hasRoom) {
        QPainter painter(this);
        painter.setPen(QuietText(palette()));
        painter.setFont(noteFont());
        painter.drawText(rect().adjusted(0, 0, -Gap, 0), Qt::AlignRight | Qt::AlignVCenter, m_understood);
    }
    if (!m_error.isEmpty())
        PaintErrorFrame(*this);
}
