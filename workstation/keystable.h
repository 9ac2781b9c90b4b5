#pragma once

#include "workstation/keysettings.h"

#include <QWidget>

class QKeySequenceEdit;
class QLabel;
class QPushButton;
class QTreeWidget;

/// A table of all commands with their keys, in which the operator changes them. Nothing holds before `Apply`.
class KeysTable : public QWidget {
    Q_OBJECT

public:
    explicit KeysTable(KeySettings& settings, QWidget* parent = nullptr);

    /// Gives all commands the keys of the table.
    void Apply();

private:
    int current() const;
    void setKeys(size_t command, const KeySettings::Keys& keys);
    void showCurrent();
    void takeKey();
    void resetAll();

    KeySettings& m_settings;
    std::vector<KeySettings::Keys> m_keys; ///< of the commands, in their order
    QTreeWidget* m_table;
    QKeySequenceEdit* m_edit;
    QPushButton* m_set;
    QPushButton* m_none;
    QPushButton* m_reset;
    QLabel* m_conflict;
};
