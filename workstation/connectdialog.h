#pragma once

#include "receiver/radioprofile.h"
#include "workstation/profilerow.h"

#include <QDialog>

#include <memory>
#include <optional>

class HamlibReceiver;
class QComboBox;
class QDialogButtonBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QSpinBox;

/// Asks which receiver is to be connected: the simulated one, or a model of radio with its port. What is
/// connected often has a name and is kept. A test connects for a moment and shows what the radio answers.
class ConnectDialog : public QDialog {
    Q_OBJECT

public:
    /// Begins with what is connected; nothing stands for the simulated receiver.
    explicit ConnectDialog(const std::optional<RadioProfile>& present, QWidget* parent = nullptr);
    ~ConnectDialog() override;

    /// The radio that was chosen; nothing for the simulated receiver.
    std::optional<RadioProfile> GetChoice() const;

private:
    void addModels(QFormLayout& form);
    void addConnection(QFormLayout& form);
    void addTest(QFormLayout& form);
    void filter(const QString& words);
    void fill(const RadioProfile& profile);
    void chooseModel();
    void showProblem();
    void fillPorts(RadioModel::Port port);
    void test();
    int chosenModel() const;

    KeptProfiles<RadioProfile> m_profiles;
    ProfileRow* m_profile;
    QLineEdit* m_search;
    QListWidget* m_models;
    QComboBox* m_port;
    QComboBox* m_speed;
    QSpinBox* m_timeout;
    QPushButton* m_test;
    QLabel* m_answer;
    QDialogButtonBox* m_buttons;
    std::unique_ptr<HamlibReceiver> m_tested; ///< while a test runs
};
