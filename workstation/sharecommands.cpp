#include "workstation/sharecommands.h"

#include "controls/frequencystore/common/keys.h"
#include "host/base/problems.h"
#include "host/report/rgexception.h"
#include "workstation/actiontips.h"
#include "workstation/mainwindow.h"
#include "workstation/sharedialog.h"
#include "workstation/shareediting.h"
#include "workstation/sharepassword.h"
#include "workstation/sharerefusal.h"
#include "workstation/sharesitepanel.h"
#include "workstation/sharing.h"
#include "workstation/windowstatus.h"

#include <QDockWidget>
#include <QInputDialog>
#include <QMenu>
#include <QToolButton>

namespace {

constexpr char TraceSource[] = "sharing";

} // namespace

ShareCommands::ShareCommands(Sharing& sharing, MainWindow& window, bool remembers)
    : m_sharing(sharing),
      m_window(window),
      m_remembers(remembers),
      m_editing(std::make_unique<ShareEditing>(sharing, window)) {
    addMenu();
    addPanel();
    connect(&sharing, &Sharing::Changed, this, &ShareCommands::showState);
    connect(&sharing, &Sharing::Refused, this, &ShareCommands::showRefusal);
    connect(&sharing, &Sharing::RightsChanged, this, [this] {
        if (m_refusal)
            m_refusal->Refresh();
    });
    showState();
}

ShareCommands::~ShareCommands() {
    delete m_refusal;
}

void ShareCommands::addMenu() {
    QMenu* menu = m_window.AddMenu(tr("Sh&are"));
    QAction* connects = menu->addAction(tr("&Connect..."), this, &ShareCommands::ask);
    connects->setObjectName(QStringLiteral("connect-site"));
    SetTips(*connects, tr("Share lists with other seats through a broker"));
    m_file = menu->addAction(tr("&Open at the Server..."), this, &ShareCommands::askForFile);
    m_file->setObjectName(QStringLiteral("open-at-server"));
    m_disconnect = menu->addAction(tr("&Disconnect"), this, &ShareCommands::disconnect);
    m_disconnect->setObjectName(QStringLiteral("disconnect-site"));
    SetTips(*m_disconnect, tr("Share no list any more; what is shown stays"));
}

/// Where the state is shown, a click shows who and what is there.
void ShareCommands::addPanel() {
    auto* panel = new ShareSitePanel(m_sharing);
    QDockWidget* dock = m_window.AddPanel(panel, tr("Sit&e"), Qt::RightDockWidgetArea);
    dock->hide();
    connect(&m_sharing, &Sharing::Changed, panel, &ShareSitePanel::Refresh);
    connect(m_window.GetStatus().GetSharingButton(), &QToolButton::clicked, dock->toggleViewAction(),
            &QAction::trigger);
}

void ShareCommands::ask() {
    const ShareProfile atStart = m_remembers ? ShareProfile::AtStart() : ShareProfile();
    const ShareProfile present = m_sharing.IsOn() ? m_sharing.Profile() : atStart;
    const QPointer<ShareCommands> alive(this);
    ShareDialog dialog(m_sharing, present, !atStart.url.isEmpty(), &m_window);
    if (dialog.exec() != QDialog::Accepted || !alive)
        return;
    const ShareProfile choice = dialog.GetChoice();
    if (m_remembers)
        ShareProfile::SetAtStart(dialog.IsAtStart() ? choice : ShareProfile());
    if (dialog.KeepsPassword())
        SharePassword::Keep(choice, dialog.Password(), *this, [](const QString& reason) {
            if (!reason.isEmpty())
                Problems::Report(TraceSource,
                                 {tr("Keyring"), 0,
                                  tr("the password is not kept: %1; a password file does without "
                                     "a keyring")
                                      .arg(reason)});
        });
    if (dialog.Password().isEmpty())
        Connect(choice);
    else {
        forgetFinding();
        connectWith(choice, dialog.Password());
    }
}

/// A password that comes now is not wanted any more.
void ShareCommands::forgetFinding() {
    m_finding.reset();
    m_waitsAtSite.clear();
}

/// Paths of this machine mean nothing there.
void ShareCommands::askForFile() {
    const QPointer<ShareCommands> alive(this);
    const QString name = QInputDialog::getText(&m_window, tr("Open at the Server"),
                                               tr("Name of the file in the server's folder:"));
    if (alive && !name.isEmpty() && m_sharing.IsMirrored())
        m_sharing.AskForFile(name);
}

/// The keyring may have to be unlocked by the operator first, which takes as long as it does.
void ShareCommands::Connect(const ShareProfile& profile) {
    m_finding = std::make_unique<QObject>();
    try {
        m_waitsAtSite = SharePassword::IsInKeyring(profile) ? profile.Address().site : QString();
        SharePassword::Find(profile, *m_finding,
                            [this, profile](const QString& password, const QString& whyNone) {
                                m_waitsAtSite.clear();
                                showState();
                                takePassword(profile, password, whyNone);
                            });
    } catch (const RGException& exception) {
        m_waitsAtSite.clear();
        Problems::Report(TraceSource, Problem::FromText(exception.GetErrorText()));
    }
    showState();
}

/// Without one that is needed the operator is asked; a seat without one tells what it lacks, and tries.
void ShareCommands::takePassword(const ShareProfile& profile, const QString& password,
                                 const QString& whyNone) {
    const bool lacksOne = password.isEmpty() && profile.NeedsPassword();
    if (lacksOne && m_mayAsk && m_mayAsk())
        return askForPassword(profile, whyNone);
    if (lacksOne)
        Problems::Report(
            TraceSource,
            {profile.url, 0, tr("no password: %1; a password file does without a keyring").arg(whyNone)});
    connectWith(profile, password);
}

void ShareCommands::askForPassword(const ShareProfile& profile, const QString& whyNone) {
    const QPointer<ShareCommands> alive(this);
    bool isGiven = false;
    const QString password = QInputDialog::getText(&m_window, tr("Password"),
                                                   tr("Password for %1 (%2):").arg(profile.url, whyNone),
                                                   QLineEdit::Password, QString(), &isGiven);
    if (alive && isGiven)
        connectWith(profile, password);
}

void ShareCommands::connectWith(const ShareProfile& profile, const QString& password) {
    const bool becomesClient = profile.role == ShareProfile::Role::Client && !m_sharing.IsMirrored();
    if (becomesClient && m_mayBecomeClient && !m_mayBecomeClient())
        return;
    try {
        m_sharing.Connect(profile, password);
    } catch (const RGException& exception) {
        Problems::Report(TraceSource, Problem::FromText(exception.GetErrorText()));
    }
}

void ShareCommands::disconnect() {
    if (m_refusal)
        m_refusal->close();
    forgetFinding();
    m_sharing.Disconnect();
    showState();
}

void ShareCommands::showState() {
    using State = Sharing::State;
    const State state = m_sharing.GetState();
    if (m_waitsAtSite.isEmpty())
        m_window.GetStatus().ShowSharing(m_sharing.StateText(), m_sharing.Details(),
                                         state == State::Old || state == State::Refused);
    else
        m_window.GetStatus().ShowSharing(
            tr("%1: waits for the keyring").arg(m_waitsAtSite),
            tr("The desktop's keyring is asked for the password; it may have to be unlocked."), false);
    m_disconnect->setEnabled(m_sharing.IsOn() || !m_waitsAtSite.isEmpty());
    m_file->setEnabled(m_sharing.IsMirrored());
    SetTips(*m_file, m_sharing.IsMirrored()
                         ? tr("Ask the server to show a file of its own folder in place of the targets")
                         : tr("This seat shows no targets of a site."));
}

/// What was to become of entries is shown beside what they are; all else is told. What the program itself
/// makes of an entry's values is no wish of the operator's.
void ShareCommands::showRefusal(int listId, const ListClient::Refusal& whole) {
    ListClient::Refusal refusal = whole;
    std::erase_if(refusal.fields, [](const auto& field) { return field.name == Keys::KeyType.Text(); });
    if (refusal.fields.empty() && !whole.fields.empty())
        return;
    if (!refusal.entry && refusal.fields.empty())
        return Problems::Report(TraceSource, {m_sharing.Site(), 0, refusal.reason});
    if (!m_refusal || m_refusal->isHidden()) { // one that was closed goes by itself
        m_refusal = new ShareRefusal(m_sharing, &m_window);
        m_refusal->show();
    }
    m_refusal->Add(listId, refusal);
}
