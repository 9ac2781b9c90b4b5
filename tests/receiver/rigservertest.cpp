#include "receiver/rigserver.h"

#include "host/valuetree/tree.h"
#include "receiver/hamlibreceiver.h"
#include "receiver/receiver.h"
#include "receiver/simulatedreceiver.h"
#include "tests/support/radioserver.h"

#include <QDeadlineTimer>

namespace {

/// A simulated receiver that other programs share.
class SharedReceivers : public testing::Test {
protected:
    SharedReceivers() {
        Tree::Instance()->GetRoot()->DeleteChildren();
        receiver = std::make_unique<Receiver>(ReceiverKind::HF);
        receiver->Attach(std::make_unique<SimulatedReceiver>(*receiver, SimulatedReceiver::Pace::OnDemand));
        server = std::make_unique<RigServer>(*receiver);
        QString error;
        EXPECT_TRUE(server->Listen(0, error)) << error.toStdString();
    }
    std::unique_ptr<QTcpSocket> join() {
        auto socket = std::make_unique<QTcpSocket>();
        socket->connectToHost(QHostAddress::LocalHost, server->GetPort());
        EXPECT_TRUE(socket->waitForConnected(Patience));
        return socket;
    }
    /// All that comes until an end, or until the line is cut.
    static QByteArray ask(QTcpSocket& socket, const QByteArray& text, const QByteArray& end) {
        socket.write(text);
        QByteArray answer;
        EXPECT_TRUE(Until([&] {
            answer += socket.readAll();
            return answer.endsWith(end) || socket.state() == QAbstractSocket::UnconnectedState;
        })) << answer.toStdString();
        return answer;
    }
    /// What the radio library's client says, which runs beside us.
    QString client(const QStringList& command) const {
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start("rigctl",
                      QStringList{"-m", "2", "-r", QStringLiteral("127.0.0.1:%1").arg(server->GetPort())} +
                          command);
        EXPECT_TRUE(Until([&] { return process.state() == QProcess::NotRunning; }));
        return QString::fromLatin1(process.readAll()).trimmed();
    }

    std::unique_ptr<Receiver> receiver;
    std::unique_ptr<RigServer> server;
};

struct Exchange {
    const char* line;
    const char* answer;
};

TEST_F(SharedReceivers, AnswersInTheShortAndTheLongForm) {
    const auto socket = join();
    const Exchange exchanges[] = {
        {"F 7055000\n", "RPRT 0\n"},
        {"f\n", "7055000\n"},
        {"F7100000\r\n", "RPRT 0\n"},
        {"+f\n", "get_freq:\nFrequency: 7100000\nRPRT 0\n"},
        {"+\\set_freq 9410000\n", "set_freq: 9410000\nRPRT 0\n"},
        {"M USB 2400\n", "RPRT 0\n"},
        {"m\n", "USB\n2400\n"},
        {"M LSB 0\n", "RPRT 0\n"},
        {"+m\n", "get_mode:\nMode: LSB\nPassband: 2400\nRPRT 0\n"},
        {"v\n", "VFOA\n"},
        {"\\chk_vfo\n", "0\n"},
        {"t\n", "0\n"},
        // What is wrong or out of reach leaves all as it is.
        {"F 99e9\n", "RPRT -1\n"},
        {"F\n", "RPRT -1\n"},
        {"F nan\n", "RPRT -1\n"},
        {"M CWX 500\n", "RPRT -1\n"},
        {"M USB 9999999\n", "RPRT -1\n"},
        {"l RFPOWER\n", "RPRT -1\n"},
        {"\xff\x01 %s%n\n", "RPRT -4\n"},
        {"m\n", "LSB\n2400\n"},
        {"f\n", "9410000\n"},
        // Nothing is sent.
        {"T 1\n", "RPRT -11\n"},
        {"\\set_ptt 1\n", "RPRT -11\n"},
        {"S 1 VFOB\n", "RPRT -11\n"},
        {"b CQ\n", "RPRT -11\n"},
        {"w FE\n", "RPRT -11\n"},
    };
    for (const Exchange& exchange : exchanges)
        EXPECT_EQ(ask(*socket, exchange.line, exchange.answer), exchange.answer) << exchange.line;
}

/// Keeps what was wished last.
class WishLink final : public ReceiverLink {
public:
    explicit WishLink(QStringList& wished) : m_wished(wished) {}
    QString GetName() const override { return QStringLiteral("Wishes"); }
    void Begin() override { emit StateChanged(ReceiverState::Connected, QString()); }
    void Set(const std::vector<ReceiverWord>& wishes, quint64) override {
        for (const ReceiverWord& word : wishes)
            m_wished << Names::Text(word.key) + '=' + word.text;
    }

private:
    QStringList& m_wished;
};

/// A radio that tells no level and can be lost.
class LosableLink final : public ReceiverLink {
public:
    QString GetName() const override { return QStringLiteral("Losable"); }
    void Begin() override { emit StateChanged(ReceiverState::Connected, QString()); }
    void Set(const std::vector<ReceiverWord>&, quint64) override {}
    void Lose() { emit StateChanged(ReceiverState::NoAnswer, QString()); }
};

TEST_F(SharedReceivers, WhatIsNotKnownIsNotTold) {
    auto link = std::make_unique<LosableLink>();
    LosableLink& radio = *link;
    receiver->Attach(std::move(link));
    const auto socket = join();
    EXPECT_EQ(ask(*socket, "f\n", "\n"), "6060000\n");
    EXPECT_EQ(ask(*socket, "l STRENGTH\n", "\n"), "RPRT -11\n");
    EXPECT_EQ(ask(*socket, QByteArray("\0\n", 2), "\n"), "RPRT -4\n");
    radio.Lose();
    for (const char* line : {"f\n", "m\n", "l STRENGTH\n", "F 7055000\n", "M USB 2400\n"})
        EXPECT_EQ(ask(*socket, line, "\n"), "RPRT -6\n") << line;
    EXPECT_EQ(ask(*socket, "T 1\n", "\n"), "RPRT -11\n");
    EXPECT_EQ(ask(*socket, "\\chk_vfo\n", "\n"), "0\n");
}

TEST_F(SharedReceivers, ABandwidthThatStaysIsSaidWithANewMode) {
    QStringList wished;
    receiver->Attach(std::make_unique<WishLink>(wished));
    EXPECT_EQ(ask(*join(), "M USB 6000\n", "RPRT 0\n"), "RPRT 0\n");
    EXPECT_EQ(wished.join(' '), "demodulation=USB bandwidth=6000");
}

TEST_F(SharedReceivers, OneClientDoesNotHarmAnother) {
    const auto good = join();
    const auto endless = join();
    endless->write(QByteArray(100000, 'x'));
    EXPECT_TRUE(Until([&] { return endless->state() == QAbstractSocket::UnconnectedState; }));
    const auto half = join();
    half->write("F 70"); // goes before it has said all
    half->abort();
    EXPECT_EQ(ask(*good, "F 7055000\nf\n", "7055000\n"), "RPRT 0\n7055000\n");

    std::vector<std::unique_ptr<QTcpSocket>> crowd;
    for (int i = 0; i < 2 * RigServer::MostClients; ++i)
        crowd.push_back(join());
    EXPECT_TRUE(Until([&] {
        return std::ranges::count_if(crowd, [](const auto& socket) {
                   return socket->state() == QAbstractSocket::ConnectedState;
               }) == RigServer::MostClients - 1;
    }));
    EXPECT_EQ(ask(*good, "q\n", "."), "");
    EXPECT_EQ(good->state(), QAbstractSocket::UnconnectedState);
}

TEST_F(SharedReceivers, WhoAsksAndDoesNotListenIsCutOff) {
    const auto deaf = join();
    deaf->setReadBufferSize(1);
    deaf->setSocketOption(QAbstractSocket::ReceiveBufferSizeSocketOption, 4096);
    QByteArray questions;
    for (int i = 0; i < 1000; ++i)
        questions += "\\dump_state\n";
    qint64 asked = 0;
    const QDeadlineTimer patience(Patience);
    while (deaf->isOpen() && !patience.hasExpired()) {
        if (deaf->bytesToWrite() == 0) // the end of the line is seen by who writes
            asked += deaf->write(asked < 1'000'000 ? questions : "f\n");
        QCoreApplication::processEvents();
    }
    EXPECT_EQ(deaf->state(), QAbstractSocket::UnconnectedState) << asked << " bytes of questions";
}

TEST_F(SharedReceivers, WhoHasSaidAllIsAnswered) {
    QProcess shell; // ends its side of the line behind the question
    shell.start("socat", {"-t", "10", "-", QStringLiteral("TCP:127.0.0.1:%1").arg(server->GetPort())});
    shell.write("F 7055000\n\\dump_state\nf\n");
    shell.closeWriteChannel();
    EXPECT_TRUE(Until([&] { return shell.state() == QProcess::NotRunning; }));
    EXPECT_TRUE(shell.readAll().endsWith("7055000\n"));
}

TEST_F(SharedReceivers, TheLibrarysOwnClientWorksWithIt) {
    EXPECT_EQ(client({"F", "7055000"}), "");
    EXPECT_EQ(client({"M", "USB", "2400"}), "");
    EXPECT_EQ(receiver->GetFrequency(), 7055000);
    EXPECT_EQ(client({"f"}), "7055000");
    EXPECT_EQ(client({"m"}), "USB\n2400");
    EXPECT_EQ(client({"l", "STRENGTH"}).toInt(), std::lround(receiver->GetLevel()->GetValue() - 34));
    EXPECT_TRUE(client({"T", "1"}).contains("not available", Qt::CaseInsensitive))
        << client({"T", "1"}).toStdString();
}

TEST_F(SharedReceivers, OurOwnRadioWorksWithIt) {
    receiver->Tune(9410000);
    HamlibReceiver radio(
        {QString(), RadioProfile::Client, QStringLiteral("127.0.0.1:%1").arg(server->GetPort())});
    ReceiverReading last;
    QObject::connect(&radio, &ReceiverLink::Read, [&](const ReceiverReading& reading) { last = reading; });
    radio.Begin();
    ASSERT_TRUE(Until([&] { return last.level.has_value(); }));
    radio.Set({{Keys::KeyFrequency, "7055000"}, {Keys::KeyDemodulation, "LSB"}}, 1);
    ASSERT_TRUE(Until([&] { return last.serial == 1; }));
    EXPECT_EQ(receiver->GetFrequency(), 7055000);
    EXPECT_EQ(receiver->GetValue(Keys::KeyDemodulation)->GetStringValue(), "LSB");
}

} // namespace
