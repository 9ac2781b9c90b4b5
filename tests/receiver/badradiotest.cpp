#include "host/valuetree/tree.h"
#include "receiver/hamlibreceiver.h"
#include "receiver/receiver.h"
#include "tests/support/radioserver.h"

#include <QMap>
#include <QTemporaryDir>

using namespace std::chrono_literals;

namespace {

/// A server that begins well and then misbehaves.
class BadServer {
public:
    enum class Manner { Good, Silent, Halves, Nonsense, OthersReplies, Drops };

    BadServer() {
        EXPECT_TRUE(m_server.listen(QHostAddress::LocalHost));
        QObject::connect(&m_server, &QTcpServer::newConnection, [this] {
            QTcpSocket* client = m_server.nextPendingConnection();
            QObject::connect(client, &QTcpSocket::readyRead, client, [this, client] {
                for (; client->canReadLine(); ++questions) {
                    const QByteArray line = client->readLine().trimmed();
                    if (line.startsWith("F "))
                        tuned << line.mid(2).toDouble();
                    reply(*client, line);
                }
            });
        });
    }
    QString Port() const { return QStringLiteral("127.0.0.1:%1").arg(m_server.serverPort()); }

    Manner manner = Manner::Good;
    int questions = 0;   ///< so far
    QList<double> tuned; ///< Hz, that were set

private:
    static QByteArray goodReply(const QByteArray& line) {
        static const QMap<QByteArray, QByteArray> replies{
            {"\\chk_vfo", "0\n"},
            {"\\dump_state",
             "0\n2\n0\n100000 2000000000 0x2f -1 -1 0x1 0x0\n0 0 0 0 0 0 0\n0 0 0 0 0 0 0\n"
             "0x2f 1\n0 0\n0x2f 0\n0 0\n0\n0\n0\n0\n0\n0\n0x0\n0x0\n0x40000000\n0x0\n0x0\n0x0\n"},
            {"f", "7055000\n"},
            {"m", "USB\n2400\n"},
            {"v", "VFOA\n"},
            {"s", "0\nVFOA\n"},
            {"l STRENGTH", "-20\n"},
            {"\\get_powerstat", "1\n"},
            {"\\get_lock_mode", "0\n"}};
        return replies.value(line, "RPRT 0\n");
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

class BadRadios : public testing::Test {
protected:
    BadRadios() { Tree::Instance()->GetRoot()->DeleteChildren(); }
    void TearDown() override { EXPECT_TRUE(HamlibReceiver::WaitForAll(30s)); }

    BadServer server;
};

class BadManners : public BadRadios, public testing::WithParamInterface<BadServer::Manner> {};

TEST_P(BadManners, LeaveAClearStateAndAreFollowedWhenTheyAreGoodAgain) {
    Receiver receiver(ReceiverKind::HF);
    RadioProfile profile{QString(), RadioProfile::Client, server.Port()};
    profile.timeout = 200;
    const auto comesTo = [&](ReceiverState state) {
        return QTest::qWaitFor([&] { return receiver.GetState() == state; }, Patience);
    };
    quint64 measured = 0;
    QObject::connect(&receiver, &Receiver::Measured, [&](double, quint64 serial) { measured = serial; });
    receiver.Attach(std::make_unique<HamlibReceiver>(profile));
    ASSERT_TRUE(comesTo(ReceiverState::Connected)) << receiver.GetStateText().toStdString();
    server.manner = GetParam();
    receiver.Tune(9410000);
    if (GetParam() == BadServer::Manner::Halves) {
        EXPECT_TRUE(QTest::qWaitFor([&] { return measured >= receiver.GetSerial(); }, Patience));
        EXPECT_EQ(receiver.GetState(), ReceiverState::Connected) << "halves make a whole";
    } else if (GetParam() != BadServer::Manner::OthersReplies) {
        EXPECT_TRUE(comesTo(ReceiverState::NoAnswer)) << receiver.GetStateText().toStdString();
        EXPECT_FALSE(receiver.Tune(7100000));
        EXPECT_EQ(receiver.GetLevel()->GetValue(), -40) << "nothing is measured";
    }
    server.manner = BadServer::Manner::Good;
    EXPECT_TRUE(comesTo(ReceiverState::Connected)) << receiver.GetStateText().toStdString();
    EXPECT_TRUE(QTest::qWaitFor([&] { return receiver.GetFrequency() == 7055000; }, Patience));
}

INSTANTIATE_TEST_SUITE_P(Manners, BadManners,
                         testing::Values(BadServer::Manner::Silent, BadServer::Manner::Halves,
                                         BadServer::Manner::Nonsense, BadServer::Manner::OthersReplies,
                                         BadServer::Manner::Drops));

TEST_F(BadRadios, NewerSettingsTakeThePlaceOfThoseThatWait) {
    Receiver receiver(ReceiverKind::HF);
    quint64 measured = 0;
    QObject::connect(&receiver, &Receiver::Measured, [&](double, quint64 serial) { measured = serial; });
    receiver.Attach(
        std::make_unique<HamlibReceiver>(RadioProfile{QString(), RadioProfile::Client, server.Port()}));
    ASSERT_TRUE(QTest::qWaitFor([&] { return receiver.GetState() == ReceiverState::Connected; }, Patience));
    constexpr int Turns = 500;
    for (int i = 1; i <= Turns; ++i) // the server is of this thread and answers none of them meanwhile
        ASSERT_TRUE(receiver.Tune(7e6 + i));
    ASSERT_TRUE(QTest::qWaitFor([&] { return measured == receiver.GetSerial(); }, Patience));
    ASSERT_FALSE(server.tuned.isEmpty());
    EXPECT_EQ(server.tuned.last(), 7e6 + Turns);
    EXPECT_LE(server.tuned.size(), 2) << "the first one at most was under way";
}

TEST_F(BadRadios, LettingGoDoesNotWaitForTheRadio) {
    server.manner = BadServer::Manner::Silent;
    {
        Receiver receiver(ReceiverKind::HF);
        RadioProfile profile{QString(), RadioProfile::Client, server.Port()};
        profile.timeout = 1500;
        receiver.Attach(std::make_unique<HamlibReceiver>(profile));
        EXPECT_EQ(receiver.GetState(), ReceiverState::Connecting);
        EXPECT_FALSE(receiver.Tune(7055000));
        ASSERT_TRUE(QTest::qWaitFor([&] { return server.questions > 0; }, Patience));
    }
    EXPECT_FALSE(HamlibReceiver::WaitForAll(0ms))
        << "the receiver ended while its thread waits for the answer";
}

TEST_F(BadRadios, ASilentLineAndADeviceThatIsPulledAwayAreToldApart) {
    constexpr int Ts2000 = 2014;
    const QTemporaryDir folder;
    const QString device = folder.filePath("radio");
    Helper wire;
    ASSERT_TRUE(
        wire.Start("socat", {QStringLiteral("pty,raw,echo=0,link=%1").arg(device), "pty,raw,echo=0"}));
    ASSERT_TRUE(QTest::qWaitFor([&] { return QFile::exists(device); }, Patience));
    Receiver receiver(ReceiverKind::HF);
    RadioProfile profile{QString(), Ts2000, device};
    profile.timeout = 200;
    receiver.Attach(std::make_unique<HamlibReceiver>(profile));
    const auto tells = [&](const char* words) {
        return QTest::qWaitFor([&] { return receiver.GetStateText().contains(words); }, 2 * Patience);
    };
    EXPECT_TRUE(tells("does not answer in time")) << receiver.GetStateText().toStdString();
    wire.Stop();
    QFile::remove(device);
    EXPECT_TRUE(tells("is not there")) << receiver.GetStateText().toStdString();
}

} // namespace
