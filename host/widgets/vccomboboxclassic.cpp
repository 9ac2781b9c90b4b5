#include "host/widgets/vccomboboxclassic.h"

VCComboBoxClassic::VCComboBoxClassic(QWidget* parent, const char* name) : QComboBox(parent) {
    setObjectName(QString::fromLatin1(name));
    showValue();
    connect(this, &QComboBox::activated, this, [this](int index) {
        const OperatorAction action = edits();
        if (m_value && index >= 0)
            m_value->Select(itemText(index), this);
    });
}

void VCComboBoxClassic::showValue() {
    QStringList names;
    for (long i = 0; m_value && i < m_value->GetItemCount(); ++i)
        names.append(m_value->GetItemAt(i)->GetName());
    QStringList shown;
    for (int i = 0; i < count(); ++i)
        shown.append(itemText(i));
    if (names != shown) {
        clear();
        addItems(names);
    }
    setCurrentIndex(m_value ? static_cast<int>(m_value->GetCurrentIndex()) : -1);
    setEnabled(bool(m_value));
}
