#include "host/widgets/frequencyfield.h"

#include "host/base/frequencyinput.h"
#include "host/base/frequencytext.h"
#include "host/gui/guibase.h"

#include <QKeyEvent>

FrequencyField::FrequencyField(QWidget* parent) : EntryLine(parent) {
    connect(this, &QLineEdit::textEdited, this, &FrequencyField::follow);
    SetDefaultUnit(m_unit);
}

/// The operator's choice counts more than the field's.
double FrequencyField::unit() const {
    const double chosen = GuiBase::Instance().GetBareUnit();
    return chosen > 0 ? chosen : m_unit;
}

void FrequencyField::SetDefaultUnit(double hertz) {
    m_unit = hertz;
    setPlaceholderText(tr("Frequency in %1").arg(Quor::UnitName(unit())));
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
    m_understood.Show(QString());
    setError(QString());
    updateToolTip();
}

void FrequencyField::follow(const QString& entry) {
    const Quor::FrequencyInput input = Quor::ReadFrequencyInput(entry, unit());
    const bool isEmpty = entry.trimmed().isEmpty();
    m_understood.Show(input.Understood(), input.mayMisread);
    setError(isEmpty ? QString() : input.problem);
    updateToolTip();
}

bool FrequencyField::Commit() {
    if (!isModified())
        return ErrorText().isEmpty();
    if (text().trimmed().isEmpty()) {
        showFrequency(); // nothing typed is no entry
        return true;
    }
    const Quor::FrequencyInput input = Quor::ReadFrequencyInput(text(), unit());
    setError(input.problem);
    if (!input.IsFrequency())
        return false;
    m_hertz = input.hertz;
    showFrequency();
    emit Entered(m_hertz);
    return true;
}

void FrequencyField::updateToolTip() {
    const QString tip = tr("A number without a unit is in %1; Hz, kHz, MHz and GHz may follow it")
                            .arg(Quor::UnitName(unit()));
    setToolTip(ErrorText().isEmpty() ? m_understood.AboveTip(tip) : ErrorText() + QLatin1Char('\n') + tip);
}

QSize FrequencyField::sizeHint() const {
    return QLineEdit::sizeHint().shrunkBy(textMargins());
}

QSize FrequencyField::minimumSizeHint() const {
    return QLineEdit::minimumSizeHint().shrunkBy(textMargins());
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
