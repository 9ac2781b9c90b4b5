#pragma once

#include <QObject>

#include <map>
#include <memory>

class QTcpServer;
class QTcpSocket;
class Receiver;

/// Answers other programs of this machine, such as loggers and decoders, in the line protocol that radio
/// programs share: they read and set the receiver's frequency and mode, and read its level. What would key a
/// transmitter is refused, and while the receiver does not answer nothing is told of it. Clients do not know
/// of each other; one that sends lines without an end, or does not read its answers, is cut off.
class RigServer : public QObject {
    Q_OBJECT

public:
    static constexpr quint16 UsualPort = 4532;
    static constexpr int MostClients = 8;
    static constexpr int LongestLine = 256;  ///< bytes
    static constexpr int MostUnread = 65536; ///< bytes of answers that a client may leave lying

    /// The receiver is not owned and outlives this.
    explicit RigServer(Receiver& receiver, QObject* parent = nullptr);
    ~RigServer() override;

    /// Listens on a port of the loopback address, 0 for a free one; false, with the reason, when that fails.
    bool Listen(quint16 port, QString& error);
    void Close();
    bool IsListening() const;
    quint16 GetPort() const;

private:
    struct Command;

    void accept();
    void hear(QTcpSocket& client);
    QByteArray answer(const QByteArray& line);
    const Command* find(const QByteArray& name) const;

    Receiver& m_receiver;
    std::unique_ptr<QTcpServer> m_server;
    int m_clients = 0;
};
