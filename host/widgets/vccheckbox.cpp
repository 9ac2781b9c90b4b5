#include "host/widgets/vccheckbox.h"

VCCheckBox::VCCheckBox(QWidget* parent, const char* name) : QCheckBox(parent) {
    setObjectName(QString::fromLatin1(name));
    showValue();
    connect(this, &QAbstractButton::clicked, this, [this](bool checked) {
        const OperatorAction action = edits();
        if (m_value)
            m_value->SetValue(checked, this);
    });
}

void VCCheckBox::showValue() {
    setEnabled(bool(m_value));
    setChecked(m_value && m_value->GetValue());
}
