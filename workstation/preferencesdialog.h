#pragma once

#include "workstation/preferences.h"

#include <QDialog>

#include <array>

class KeySettings;
class KeysTable;
class QComboBox;
class QDialogButtonBox;
class QFormLayout;
class QDoubleSpinBox;
class QLabel;
class QLineEdit;

/// The operator's preferences by pages, with the keys of all commands. OK and Apply set them.
class PreferencesDialog : public QDialog {
    Q_OBJECT

public:
    PreferencesDialog(Preferences& preferences, KeySettings& keys, QWidget* parent = nullptr);

    /// The field of one preference.
    QComboBox* GetField(Preferences::Id id) const { return m_fields[id]; }
    KeysTable* GetKeys() const { return m_keys; }

private:
    void addFields(Preferences::Page page, QFormLayout& form);
    void addTolerance(QFormLayout& form);
    void addDataFolder(QFormLayout& form);
    void chooseFolder();
    void checkFolder();
    void apply();

    Preferences& m_preferences;
    std::array<QComboBox*, Preferences::Count> m_fields{};
    QDoubleSpinBox* m_tolerance = nullptr;
    QLineEdit* m_folder = nullptr;
    QLabel* m_folderNote = nullptr;
    KeysTable* m_keys;
    QDialogButtonBox* m_buttons;
};
