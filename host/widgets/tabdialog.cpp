#include "host/widgets/tabdialog.h"

#include "host/gui/colorset.h"
#include "host/widgets/entryfield.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

TabDialog::TabDialog(QWidget* parent, const char* name, bool modal, Qt::WindowFlags flags)
    : QDialog(parent, flags), m_tabs(new QTabWidget), m_message(new QLabel) {
    setObjectName(QString::fromLatin1(name));
    setModal(modal);
    m_message->setWordWrap(true);
    m_message->setTextFormat(Qt::PlainText);
    QPalette palette = m_message->palette();
    palette.setColor(QPalette::WindowText,
                     ColorSet::Instance().GetColorDefinition(IColorBase::ERROR_TEXT).GetColor());
    m_message->setPalette(palette);

    auto* buttons =
        new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Apply | QDialogButtonBox::Cancel);
    connect(buttons->button(QDialogButtonBox::Apply), &QPushButton::clicked, this, &TabDialog::apply);
    connect(buttons, &QDialogButtonBox::accepted, this, [this] {
        if (apply())
            accept();
    });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_tabs);
    layout->addWidget(m_message);
    layout->addWidget(buttons);
}

void TabDialog::addTab(QWidget* tab, const QString& title) {
    m_tabs->addTab(tab, title);
}

void TabDialog::ForceKillFocus() {
    QWidget* focused = focusWidget();
    if (focused && m_tabs->isAncestorOf(focused))
        focused->clearFocus();
}

bool TabDialog::apply() {
    ForceKillFocus();
    if (!entriesAreRight())
        return false;
    emit applyButtonPressed();
    return true;
}

bool TabDialog::entriesAreRight() {
    m_message->clear();
    const QList<QWidget*> widgets = m_tabs->findChildren<QWidget*>();
    for (QWidget* widget : widgets) {
        auto* field = dynamic_cast<IEntryField*>(widget);
        if (!field || field->Commit())
            continue;
        for (int i = 0; i < m_tabs->count(); ++i) {
            if (m_tabs->widget(i)->isAncestorOf(widget))
                m_tabs->setCurrentIndex(i);
        }
        field->ShowError();
        m_message->setText(field->ErrorText());
        connect(widget, SIGNAL(errorChanged(QString)), m_message, SLOT(setText(QString)),
                Qt::UniqueConnection);
        return false;
    }
    return true;
}
