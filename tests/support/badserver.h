#pragma once

#include "tests/support/radioserver.h"

#include <QMap>
#include <QTcpServer>

#include <functional>
#include <vector>

/// A server that begins well and then misbehaves.
class BadServer {
public:
    enum class Manner { Good, Silent, Halves, Nonsense, OthersReplies, Drops };

    BadServer() {
        EXPECT_TRUE(m_server.listen(QHostAddress::LocalHost));
        QObject::connect(&m_server, &QTcpServer::newConnection, [this] {
            QTcpSocket* client = m_server.nextPendingConnection();
            int answers = ++clients <= hangsUpOn ? answersBefore : -1;
            if (answers == 0)
                return client->abort();
            QObject::connect(client, &QTcpSocket::readyRead, client, [this, client, answers]() mutable {
                while (client->canReadLine()) {
                    lines << client->readLine().trimmed();
                    if (answers-- == 0)
                        return client->abort();
                    if (onLine)
                        onLine(lines.last());
                    reply(*client, lines.last());
                }
            });
        });
    }
    QString Port() const { return QStringLiteral("127.0.0.1:%1").arg(m_server.serverPort()); }

    /// On all who are there.
    void HangUp() {
        for (QTcpSocket* client : m_server.findChildren<QTcpSocket*>())
            client->abort();
    }
    /// The frequencies (Hz) that were set.
    std::vector<double> Tuned() const {
        std::vector<double> tuned;
        for (const QByteArray& line : lines) {
            if (line.startsWith("F "))
                tuned.push_back(line.mid(2).toDouble());
        }
        return tuned;
    }

    Manner manner = Manner::Good;
    int clients = 0;                                      ///< that came so far
    int hangsUpOn = 0;                                    ///< so many of them, the first ones,
    int answersBefore = 0;                                ///< after so many answers
    QList<QByteArray> lines;                              ///< that came so far
    QMap<QByteArray, QByteArray> others{};                ///< answers of its own in place of the usual ones
    std::function<void(const QByteArray& line)> onLine{}; ///< called before it is answered

private:
    QByteArray goodReply(const QByteArray& line) const {
        static const QMap<QByteArray, QByteArray> replies{
            {"\\chk_vfo", "0\n"},
            {"\\dump_state",
             "0\n2\n0\n100000 2000000000 0x2f -1 -1 0x1 0x0\n0 0 0 0 0 0 0\n0 0 0 0 0 0 0\n"
             "0x2f 1\n0 0\n0x2f 0\n0 0\n0\n0\n0\n0\n0\n0\n0x0\n0x0\n0x40000020\n0x20\n0x0\n0x0\n"},
            {"f", "7055000\n"},
            {"m", "USB\n2400\n"},
            {"v", "VFOA\n"},
            {"s", "0\nVFOA\n"},
            {"l STRENGTH", "-20\n"},
            {"l SQL", "0\n"},
            {"\\get_powerstat", "1\n"},
            {"\\get_lock_mode", "0\n"}};
        return others.value(line, replies.value(line, "RPRT 0\n"));
    }
    void reply(QTcpSocket& client, const QByteArray& line) {
        const QByteArray good = goodReply(line);
        switch (manner) {
        case Manner::Good:
            client.write(good);
            return;
        case Manner::Silent:
            return;
        case Manner::Halves: // the rest comes with the next turn of the loop
            client.write(good.left(good.size() / 2));
            client.flush();
            QMetaObject::invokeMethod(
                &client, [&client, good] { client.write(good.mid(good.size() / 2)); }, Qt::QueuedConnection);
            return;
        case Manner::Nonsense:
            client.write("\x01\xff%s%n garbage\n");
            return;
        case Manner::OthersReplies:
            client.write("RPRT -1\n14074000\n" + good);
            return;
        case Manner::Drops:
            client.abort();
        }
    }

    QTcpServer m_server;
};
