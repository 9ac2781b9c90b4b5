#include "workstation/profilerow.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>

ProfileRow::ProfileRow(const QStringList& names, const QString& tip, const QString& removeTip,
                       QWidget* parent)
    : QWidget(parent), m_name(new QComboBox(this)), m_remove(new QPushButton(tr("&Remove"), this)) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_name, 1);
    row->addWidget(m_remove);
    m_name->setObjectName(QStringLiteral("Profile"));
    m_name->setEditable(true);
    m_name->setInsertPolicy(QComboBox::NoInsert);
    m_name->lineEdit()->setPlaceholderText(tr("name it to keep it"));
    m_name->setToolTip(tip);
    m_name->addItems(names);
    m_name->setCurrentIndex(-1);
    m_remove->setObjectName(QStringLiteral("RemoveProfile"));
    m_remove->setToolTip(removeTip);
    m_remove->setAutoDefault(false);
    setFocusPolicy(m_name->focusPolicy()); // else the key of a label passes it by
    setFocusProxy(m_name);
    connect(m_name, &QComboBox::textActivated, this, &ProfileRow::Chosen);
    connect(m_name, &QComboBox::editTextChanged, this, [this] {
        showName();
        emit Edited();
    });
    connect(m_remove, &QPushButton::clicked, this, &ProfileRow::forget);
    showName();
}

QString ProfileRow::GetName() const {
    return m_name->currentText().trimmed();
}

void ProfileRow::SetName(const QString& name) {
    m_name->setEditText(name);
}

void ProfileRow::forget() {
    const QString name = m_name->currentText();
    m_name->removeItem(m_name->findText(name));
    m_name->setCurrentIndex(-1);
    m_name->clearEditText();
    emit Forgotten(name);
}

void ProfileRow::showName() {
    m_remove->setEnabled(m_name->findText(m_name->currentText()) >= 0);
}
