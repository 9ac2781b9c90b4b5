#pragma once

#include <QDialog>

class QLabel;
class QTabWidget;

/// A dialog of tabs with the buttons OK, Apply and Cancel and a line for errors. It owns its tabs and writes
/// nothing itself: its owner listens to `applyButtonPressed`. While an entry is wrong, OK and Apply do
/// nothing but show it.
class TabDialog : public QDialog {
    Q_OBJECT

public:
    TabDialog(QWidget* parent, const char* name, bool modal, Qt::WindowFlags flags);

    /// Appends a tab, which the dialog owns from now on.
    void addTab(QWidget* tab, const QString& title);
    /// Leaves the field that is being edited, so that its entry is written.
    void ForceKillFocus();

signals:
    /// The operator wants the entries taken: by Apply, or by OK before the dialog closes.
    void applyButtonPressed();

private:
    /// False when a field holds a wrong entry; that field is brought to the operator's eyes.
    bool entriesAreRight();
    /// Takes the entries; false when one is wrong.
    bool apply();

    QTabWidget* m_tabs;
    QLabel* m_message;
};
