#include "host/widgets/canclosetabdialog.h"

CanCloseTabDialog::CanCloseTabDialog(QWidget* parent, const char* name, bool modal, Qt::WindowFlags flags)
    : TabDialog(parent, name, modal, flags) {}

void CanCloseTabDialog::done(int result) {
    m_cancelled = result == Rejected;
    if (!m_cancelled && !m_canClose)
        return;
    TabDialog::done(result);
}

void CanCloseTabDialog::showEvent(QShowEvent* event) {
    m_cancelled = false;
    TabDialog::showEvent(event);
}
