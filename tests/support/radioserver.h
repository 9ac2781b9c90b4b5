#pragma once

#include "tests/support/freeport.h"
#include "tests/support/waiting.h"

#include <QDir>
#include <QProcess>
#include <QTcpSocket>

#include <gtest/gtest.h>

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
    explicit RadioServer(quint16 port = FreePort()) : m_port(port) { Start(); }

    void Start() {
        ASSERT_TRUE(m_helper.Start("rigctld", {"-m", "1", "-T", "127.0.0.1", "-t", QString::number(m_port)}));
        ASSERT_TRUE(Until([this] { return !Ask("f").isEmpty(); })) << "rigctld is up";
    }
    void Stop() { m_helper.Stop(); }
    QString Port() const { return QStringLiteral("127.0.0.1:%1").arg(m_port); }
    /// What the server answers to a command; empty when it is not there. It hangs up now and then on who
    /// comes while another one leaves, and is asked again.
    QString Ask(const QByteArray& command) const {
        QByteArray answer;
        while (answer.isEmpty()) {
            QTcpSocket socket;
            socket.connectToHost(QHostAddress::LocalHost, m_port);
            if (!socket.waitForConnected(Patience))
                break;
            socket.write(command + '\n');
            socket.waitForReadyRead(Patience);
            answer = socket.readAll();
        }
        return QString::fromLatin1(answer).trimmed();
    }

private:
    quint16 m_port;
    Helper m_helper;
};
