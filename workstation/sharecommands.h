#pragma once

#include "link/listclient.h"
#include "workstation/shareprofile.h"

#include <QPointer>

#include <functional>

class MainWindow;
class QAction;
class ShareEditing;
class ShareRefusal;
class Sharing;

/// The Share menu, and how the window shows what is shared.
class ShareCommands : public QObject {
    Q_OBJECT

public:
    /// Sharing and window are not owned and outlive this. `remembers`: the site of the next start goes into
    /// the settings.
    ShareCommands(Sharing& sharing, MainWindow& window, bool remembers);
    ~ShareCommands() override;

    /// Who is asked before the targets of a site take the place of the window's.
    void SetMayBecomeClient(std::function<bool()> may) { m_mayBecomeClient = std::move(may); }
    /// Whether somebody can be asked for a password.
    void SetMayAsk(std::function<bool()> may) { m_mayAsk = std::move(may); }
    /// With the password that the profile leads to; what goes wrong is told.
    void Connect(const ShareProfile& profile);

private:
    void addMenu();
    void addPanel();
    void ask();
    void askForFile();
    void takePassword(const ShareProfile& profile, const QString& password, const QString& whyNone);
    void askForPassword(const ShareProfile& profile, const QString& whyNone);
    void connectWith(const ShareProfile& profile, const QString& password);
    void forgetFinding();
    void disconnect();
    void showState();
    void showRefusal(int listId, const ListClient::Refusal& refusal);

    Sharing& m_sharing;
    MainWindow& m_window;
    bool m_remembers;
    std::function<bool()> m_mayBecomeClient;
    std::function<bool()> m_mayAsk;
    QAction* m_file = nullptr;
    QAction* m_disconnect = nullptr;
    std::unique_ptr<ShareEditing> m_editing;
    std::unique_ptr<QObject> m_finding; ///< what is done when the password that was asked for last is found
    QString m_waitsAtSite;              ///< for the keyring; empty when it does not
    QPointer<ShareRefusal> m_refusal;   ///< while one is open
};
