#pragma once

#include <QDir>
#include <QProcess>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

#include <gtest/gtest.h>

constexpr int Patience = 20000; ///< ms after which a test gives up waiting

/// A port of this machine that nobody has, for the moment.
inline quint16 freePort() {
    QTcpServer server;
    EXPECT_TRUE(server.listen(QHostAddress::LocalHost));
    return server.serverPort();
}

/// A program that a test has started, ended with it.
class Helper {
public:
    Helper() = default;
    ~Helper() { Stop(); }

    bool Start(const QString& program, const QStringList& arguments) {
        m_process.setStandardOutputFile(QProcess::nullDevice());
        m_process.setStandardErrorFile(QProcess::nullDevice());
        m_process.start(program, arguments);
        return m_process.waitForStarted(Patience);
    }
    void Stop() {
        if (m_process.state() == QProcess::NotRunning)
            return;
        m_process.kill();
        m_process.waitForFinished(Patience);
    }

private:
    QProcess m_process;
};

/// The radio library's own server with a radio that there is not.
class RadioServer {
public:
    explicit RadioServer(quint16 port = freePort()) : m_port(port) { Start(); }

    void Start() {
        ASSERT_TRUE(m_helper.Start("rigctld", {"-m", "1", "-T", "127.0.0.1", "-t", QString::number(m_port)}));
        ASSERT_TRUE(QTest::qWaitFor([this] { return !Ask("f").isEmpty(); }, Patience)) << "rigctld is up";
    }
    void Stop() { m_helper.Stop(); }
    QString Port() const { return QStringLiteral("127.0.0.1:%1").arg(m_port); }
    /// What the server answers to a command; empty when it does not.
    QString Ask(const QByteArray& command) const {
        QTcpSocket socket;
        socket.connectToHost(QHostAddress::LocalHost, m_port);
        if (!socket.waitForConnected(1000))
            return QString();
        socket.write(command + '\n');
        socket.waitForReadyRead(1000);
        return QString::fromLatin1(socket.readAll()).trimmed();
    }

private:
    quint16 m_port;
    Helper m_helper;
};
