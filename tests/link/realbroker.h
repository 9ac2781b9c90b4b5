#pragma once

#include "link/mqttbus.h"
#include "tests/support/freeport.h"
#include "tests/support/testfolder.h"
#include "tests/support/text.h"

#include <QProcess>

#include <atomic>
#include <netinet/in.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

/// A mosquitto of the test's own with the configuration of docs/sharing, at a free port of the loopback, with
/// an authority and passwords that it makes. It is ended by its own process.
class RealBroker : protected TestFolder {
public:
    /// Brokers that refuse subscriptions to lists tell it; the access list of the documentation does not.
    enum class Rights { AccessList, NoListsForAnybody };
    explicit RealBroker(const QStringList& users, Rights rights = Rights::AccessList) : m_rights(rights) {
        makeCertificates();
        Write("passwords", "");
        for (const QString& user : users)
            run("mosquitto_passwd", {"-b", Path("passwords"), user, PasswordOf(user)});
        writeConfiguration();
        Start();
    }
    ~RealBroker() { Kill(); }
    RealBroker(const RealBroker&) = delete;
    RealBroker& operator=(const RealBroker&) = delete;

    static QString PasswordOf(const QString& user) { return QStringLiteral("secret-") + user; }
    void Start() {
        m_process.setProcessChannelMode(QProcess::MergedChannels);
        m_process.start(Q("mosquitto"), {"-c", Path("mosquitto.conf")});
        QByteArray told;
        while (!told.contains("running") && m_process.waitForReadyRead(20000))
            told += m_process.readAll();
        ASSERT_TRUE(told.contains("running")) << told.toStdString();
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    }
    void Kill() {
        m_process.kill();
        m_process.waitForFinished();
    }
    qint64 ProcessId() const { return m_process.processId(); }
    int Port() const { return m_port; }
    QString CaFile() const { return Path("ca.crt"); }
    BrokerAddress AddressOf(const QString& user, int port = 0) const {
        BrokerAddress address;
        address.host = Q("127.0.0.1");
        address.port = port != 0 ? port : m_port;
        address.isEncrypted = true;
        address.site = Q("north");
        address.user = user;
        address.password = PasswordOf(user);
        address.caFile = CaFile();
        return address;
    }

private:
    void run(const char* program, const QStringList& arguments) {
        QProcess process;
        process.setWorkingDirectory(m_folder.path());
        process.start(Q(program), arguments);
        EXPECT_TRUE(process.waitForFinished() && process.exitCode() == 0)
            << program << ": " << process.readAllStandardError().toStdString();
    }
    void makeCertificates() {
        const QStringList key{"-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes"};
        run("openssl", QStringList{"req", "-x509", "-days", "2", "-subj", "/CN=test authority", "-keyout",
                                   "ca.key", "-out", "ca.crt"} +
                           key);
        run("openssl",
            QStringList{"req", "-subj", "/CN=broker", "-keyout", "broker.key", "-out", "broker.csr"} + key);
        Write("names", "subjectAltName=IP:127.0.0.1,DNS:localhost");
        run("openssl", {"x509", "-req", "-in", "broker.csr", "-CA", "ca.crt", "-CAkey", "ca.key",
                        "-CAcreateserial", "-days", "2", "-extfile", "names", "-out", "broker.crt"});
    }
    void writeConfiguration() {
        QFile documented(Q(SHARING_DIR "/mosquitto.conf"));
        EXPECT_TRUE(documented.open(QIODevice::ReadOnly));
        QByteArray text = documented.readAll();
        const QByteArray folder = m_folder.path().toUtf8();
        text.replace("listener 8883", "listener " + QByteArray::number(m_port) + " 127.0.0.1");
        text.replace("/etc/mosquitto/freqstore", folder);
        text += "persistence true\npersistence_location " + folder + "/\n"; // as Debian's own file has them
        text += "log_dest stderr\nlog_type error\nlog_type warning\nlog_type information\n";
        if (m_rights == Rights::NoListsForAnybody)
            refuseLists(text);
        if (geteuid() == 0)
            text += "user root\n"; // the folder is this user's alone
        Write("mosquitto.conf", text);
        QFile::copy(Q(SHARING_DIR "/access"), Path("access"));
    }
    /// By a plug-in that comes with the broker, for users without a name.
    void refuseLists(QByteArray& text) const {
        const QDir libraries(Q("/usr/lib"));
        QByteArray plugin;
        for (const QString& folder : libraries.entryList(QDir::Dirs)) {
            const QString path = libraries.filePath(folder + Q("/mosquitto_dynamic_security.so"));
            plugin = QFile::exists(path) ? path.toUtf8() : plugin;
        }
        const QByteArray rule = R"("acltype":"subscribePattern","topic":"freqstore/+/lists/#","allow":false)";
        Write("rules", R"({"defaultACLAccess":{"publishClientSend":true,"publishClientReceive":true,)"
                       R"("subscribe":true,"unsubscribe":true},"clients":[],"anonymousGroup":"all",)"
                       R"("groups":[{"groupname":"all","roles":[{"rolename":"r"}]}],)"
                       R"("roles":[{"rolename":"r","acls":[{)" +
                           rule + "}]}]}");
        text.replace("allow_anonymous false", "allow_anonymous true");
        text.replace("password_file", "#").replace("acl_file", "#");
        text += "plugin " + plugin + "\nplugin_opt_config_file " + Path("rules").toUtf8() + "\n";
    }

    QProcess m_process;
    Rights m_rights;
    quint16 m_port = FreePort();
};

/// Stands between seats and a broker and spoils connections: holds bytes back, passes half of a piece and
/// hangs up, cuts.
class FaultProxy {
public:
    explicit FaultProxy(int target) : m_target(target) {
        m_listening = ListenAt(m_port);
        m_accepting = std::thread([this] { accept(); });
    }
    ~FaultProxy() {
        m_isEnding = true;
        shutdown(m_listening, SHUT_RDWR);
        Cut();
        m_accepting.join();
        close(m_listening);
    }
    FaultProxy(const FaultProxy&) = delete;
    FaultProxy& operator=(const FaultProxy&) = delete;

    int Port() const { return m_port; }
    void SetDelay(int milliseconds) { m_delay = milliseconds; }
    void HalveNext() { m_halve = true; }
    void Cut() { ++m_cuts; }
    /// So many there have been.
    int Connections() const { return m_connections; }

private:
    void accept() {
        std::vector<std::thread> connections;
        while (!m_isEnding) {
            const int from = ::accept4(m_listening, nullptr, nullptr, SOCK_CLOEXEC);
            if (from < 0)
                continue;
            ++m_connections;
            connections.emplace_back([this, from] { serve(from); });
        }
        for (std::thread& connection : connections)
            connection.join();
    }
    void serve(int from) {
        const int to = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(static_cast<quint16>(m_target));
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        if (connect(to, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0)
            pass(from, to);
        close(from);
        close(to);
    }
    void pass(int from, int to) {
        const int cuts = m_cuts;
        while (cuts == m_cuts && !m_isEnding) {
            fd_set readable;
            FD_ZERO(&readable);
            FD_SET(from, &readable);
            FD_SET(to, &readable);
            timeval patience{0, 20000};
            if (select(std::max(from, to) + 1, &readable, nullptr, nullptr, &patience) < 0)
                return;
            if ((FD_ISSET(from, &readable) && !move(from, to)) ||
                (FD_ISSET(to, &readable) && !move(to, from)))
                return;
        }
    }
    bool move(int from, int to) {
        char bytes[16384];
        ssize_t size = recv(from, bytes, sizeof bytes, 0);
        const bool isHalved = size > 1 && m_halve.exchange(false);
        if (isHalved)
            size /= 2;
        if (m_delay > 0)
            std::this_thread::sleep_for(std::chrono::milliseconds(m_delay));
        return size > 0 && send(to, bytes, static_cast<size_t>(size), MSG_NOSIGNAL) == size && !isHalved;
    }

    int m_target;
    int m_listening = -1;
    quint16 m_port = FreePort();
    std::atomic<int> m_delay = 0;
    std::atomic<bool> m_halve = false;
    std::atomic<int> m_cuts = 0;
    std::atomic<int> m_connections = 0;
    std::atomic<bool> m_isEnding = false;
    std::thread m_accepting;
};
