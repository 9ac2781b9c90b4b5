#pragma once

#include "receiver/receiverchoice.h"

#include <QObject>

class MainWindow;
class QAction;
class RigServer;

/// Which receiver the workstation has, and who else may follow it: the commands of the Receiver menu that
/// connect one and share it on a port.
class ReceiverConnection : public QObject {
    Q_OBJECT

public:
    /// Begins with the simulated receiver. Receiver and window are not owned and outlive this.
    ReceiverConnection(Receiver& receiver, MainWindow& window);
    ~ReceiverConnection() override;

    void Connect(const ReceiverChoice& choice);
    /// As a command line names it; what is wrong with the name is told.
    void Connect(const QString& name);

private:
    void ask();
    void share(bool shares);

    Receiver& m_receiver;
    MainWindow& m_window;
    ReceiverChoice m_choice;
    std::unique_ptr<RigServer> m_server;
    QAction* m_share;
};
