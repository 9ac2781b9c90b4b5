#include "workstation/receiverconnection.h"

#include "host/base/problems.h"
#include "receiver/receiver.h"
#include "receiver/rigserver.h"
#include "workstation/actiontips.h"
#include "workstation/connectdialog.h"
#include "workstation/mainwindow.h"

#include <QMenu>

ReceiverConnection::ReceiverConnection(Receiver& receiver, MainWindow& window)
    : m_receiver(receiver), m_window(window), m_server(std::make_unique<RigServer>(receiver)) {
    QMenu* menu = window.GetReceiverMenu();
    menu->addSeparator();
    QAction* connects = menu->addAction(tr("&Connect..."), this, &ReceiverConnection::ask);
    connects->setObjectName(QStringLiteral("connect-receiver"));
    SetTips(*connects, tr("Choose the receiver that the lists tune"));
    m_share = menu->addAction(tr("&Share on a port"));
    m_share->setObjectName(QStringLiteral("share-receiver"));
    m_share->setCheckable(true);
    SetTips(*m_share,
            tr("Let programs of this machine follow and tune the receiver, on port %1 as rigctld would")
                .arg(RigServer::UsualPort));
    connect(m_share, &QAction::triggered, this, &ReceiverConnection::share);
}

ReceiverConnection::~ReceiverConnection() = default;

void ReceiverConnection::Connect(const ReceiverChoice& choice) {
    m_choice = choice;
    m_receiver.Attach(choice.MakeLink(m_receiver));
}

void ReceiverConnection::Connect(const QString& name) {
    QString error;
    const ReceiverChoice choice = ReceiverChoice::Parse(name, error);
    if (error.isEmpty())
        Connect(choice);
    else
        Problems::Report("receiver", {name, 0, error});
}

void ReceiverConnection::ask() {
    ConnectDialog dialog(m_choice.radio, &m_window);
    if (dialog.exec() == QDialog::Accepted)
        Connect({dialog.GetChoice()});
}

/// Where rigctld or another of our windows has the usual port, a free one does.
void ReceiverConnection::share(bool shares) {
    if (!shares) {
        m_server->Close();
        m_window.Tell(tr("The receiver is not shared any more"));
        return;
    }
    QString error;
    if (!m_server->Listen(RigServer::UsualPort, error) && !m_server->Listen(0, error)) {
        m_share->setChecked(false);
        Problems::Report("receiver", {tr("Share on a port"), 0, error});
        return;
    }
    m_window.Tell(tr("The receiver is shared on 127.0.0.1, port %1").arg(m_server->GetPort()));
}
