#pragma once

#include "workstation/profilerow.h"
#include "workstation/shareprofile.h"

#include <QDialog>

#include <memory>

class QCheckBox;
class QDialogButtonBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class Sharing;
class ShareProbe;

/// Asks for a broker and a site, who connects, and what this seat is there. What is connected often has a
/// name and is kept, its password in the desktop's keyring. A test connects for a moment and shows what the
/// broker answers.
class ShareDialog : public QDialog {
    Q_OBJECT

public:
    /// Begins with a profile; `atStart`: it is the one of the next start. `sharing` makes the connection of a
    /// test; it is not owned.
    ShareDialog(const Sharing& sharing, const ShareProfile& present, bool atStart, QWidget* parent = nullptr);
    ~ShareDialog() override;

    ShareProfile GetChoice() const;
    /// Empty when none was typed: it may be elsewhere.
    QString Password() const;
    bool KeepsPassword() const;
    bool IsAtStart() const;

private:
    void addFile(QFormLayout& form, const QString& label, QLineEdit* field, const QString& title);
    void addBroker(QFormLayout& form);
    void addUser(QFormLayout& form);
    void addRole(QFormLayout& form);
    void addTest(QFormLayout& form);
    void showProfile(const ShareProfile& profile);
    void showProblem();
    void test();
    void probe(const QString& password);
    void forgetProfile(const QString& name);
    void forgetPassword(const ShareProfile& profile);

    const Sharing& m_sharing;
    KeptProfiles<ShareProfile> m_profiles;
    ProfileRow* m_profile;
    QLineEdit* m_broker;
    QCheckBox* m_isEncrypted;
    QLineEdit* m_site;
    QLineEdit* m_caFile;
    QLineEdit* m_user;
    QLineEdit* m_password;
    QCheckBox* m_keepsPassword;
    QPushButton* m_forget;
    QLineEdit* m_passwordFile;
    QLineEdit* m_certificateFile;
    QLineEdit* m_keyFile;
    QRadioButton* m_client;
    QRadioButton* m_server;
    std::vector<std::pair<QString, QCheckBox*>> m_kinds; ///< that a server may serve besides its targets
    QCheckBox* m_atStart;
    QPushButton* m_test;
    QLabel* m_answer;
    QDialogButtonBox* m_buttons;
    std::unique_ptr<ShareProbe> m_probe; ///< while a test runs
};
