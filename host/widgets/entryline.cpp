#include "host/widgets/entryline.h"

void EntryLine::ShowError() {
    setFocus();
    selectAll();
}

void EntryLine::setError(const QString& error) {
    if (error == m_error)
        return;
    m_error = error;
    updateToolTip();
    update();
    emit errorChanged(m_error);
}

void EntryLine::resizeEvent(QResizeEvent* event) {
    QLineEdit::resizeEvent(event);
    m_understood.MakeRoom();
}

void EntryLine::paintEvent(QPaintEvent* event) {
    QLineEdit::paintEvent(event);
    m_understood.Paint();
    if (!m_error.isEmpty())
        PaintErrorFrame(*this);
}
