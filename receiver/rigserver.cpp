#include "receiver/rigserver.h"

#include "host/base/numbers.h"
#include "receiver/hamlib.h"
#include "receiver/receiver.h"
#include "receiver/s9.h"

#include <QTcpServer>
#include <QTcpSocket>

#include <cmath>

namespace {

constexpr quint64 StrengthBit = RIG_LEVEL_STRENGTH;

using Words = QList<QByteArray>;

/// What a command says: lines of "Name: value", of which the short form shows the value, and a code.
struct Reply {
    struct Line {
        const char* name;
        QByteArray value;
    };
    int code = RIG_OK;
    std::vector<Line> lines = {};
};

QByteArray frequencyOf(const Receiver& receiver) {
    return QByteArray::number(receiver.GetFrequency(), 'f', 0);
}

QByteArray modeOf(const Receiver& receiver) {
    return receiver.GetValue(Keys::KeyDemodulation)->GetStringValue().toLatin1();
}

QByteArray widthOf(const Receiver& receiver) {
    return QByteArray::number(receiver.Find<ValueNumeric<double>>(Keys::KeyBandwidth)->GetValue(), 'f', 0);
}

Reply getFrequency(Receiver& receiver, const Words&) {
    return {RIG_OK, {{"Frequency", frequencyOf(receiver)}}};
}

Reply setFrequency(Receiver& receiver, const Words& words) {
    double hertz = 0;
    const bool isNumber = words.size() == 1 && Quor::ParseDouble(QString::fromLatin1(words[0]), hertz);
    return {isNumber && receiver.Tune(hertz) ? RIG_OK : -RIG_EINVAL};
}

Reply getMode(Receiver& receiver, const Words&) {
    return {RIG_OK, {{"Mode", modeOf(receiver)}, {"Passband", widthOf(receiver)}}};
}

const ReceiverSetting& settingOf(const Receiver& receiver, Names::Id key) {
    return *std::ranges::find_if(receiver.GetSettings(),
                                 [key](const ReceiverSetting& setting) { return setting.key == key; });
}

/// The mode's own passband is asked for by 0, none by -1; both leave it to the receiver.
Reply setMode(Receiver& receiver, const Words& words) {
    double width = 0;
    if (words.isEmpty() || words.size() > 2 ||
        (words.size() == 2 && !Quor::ParseDouble(QString::fromLatin1(words[1]), width)))
        return {-RIG_EINVAL};
    const QString mode = QString::fromLatin1(words[0]);
    const QString bandwidth = Quor::ToShortest(width);
    if (!receiver.ProblemOf(settingOf(receiver, Keys::KeyDemodulation), mode).isEmpty() ||
        (width > 0 && !receiver.ProblemOf(settingOf(receiver, Keys::KeyBandwidth), bandwidth).isEmpty()))
        return {-RIG_EINVAL};
    if (width > 0)
        receiver.SetMode(mode, bandwidth);
    else
        receiver.GetValue(Keys::KeyDemodulation)->SetStringValue(mode);
    return {};
}

Reply getLevel(Receiver& receiver, const Words& words) {
    if (words.size() != 1 || words[0] != "STRENGTH")
        return {-RIG_EINVAL};
    if (!receiver.HasLevel())
        return {-RIG_ENAVAIL};
    const double level = receiver.GetLevel()->GetValue() - S9At(receiver.GetFrequency());
    return {RIG_OK, {{"STRENGTH", QByteArray::number(std::lround(level))}}};
}

Reply getVfo(Receiver&, const Words&) {
    return {RIG_OK, {{"VFO", "VFOA"}}};
}

Reply setVfo(Receiver&, const Words& words) {
    return {words.size() == 1 && (words[0] == "VFOA" || words[0] == "currVFO") ? RIG_OK : -RIG_EINVAL};
}

Reply checkVfo(Receiver&, const Words&) {
    return {RIG_OK, {{"ChkVFO", "0"}}};
}

Reply getPower(Receiver&, const Words&) {
    return {RIG_OK, {{"Power Status", "1"}}};
}

Reply getLockMode(Receiver&, const Words&) {
    return {RIG_OK, {{"Locked", "0"}}};
}

Reply getTransmits(Receiver&, const Words&) {
    return {RIG_OK, {{"PTT", "0"}}};
}

Reply getSplit(Receiver&, const Words&) {
    return {RIG_OK, {{"Split", "0"}, {"TX VFO", "VFOA"}}};
}

Reply getInfo(Receiver& receiver, const Words&) {
    return {RIG_OK, {{"Info", receiver.GetName().simplified().toUtf8()}}};
}

Reply refuseToTransmit(Receiver&, const Words&) {
    return {-RIG_ENAVAIL};
}

/// What the library's own client asks for first: ranges and modes, no transmitter, frequency, mode and level.
Reply dumpState(Receiver& receiver, const Words&) {
    rmode_t modes = RIG_MODE_NONE;
    const auto* choices = receiver.Find<ValueSelection>(Keys::KeyDemodulation);
    for (long i = 0; i < choices->GetItemCount(); ++i)
        modes |= rig_parse_mode(choices->ItemAt(i)->GetName().toLatin1().constData());
    const QByteArray mask = "0x" + QByteArray::number(quint64(modes), 16);
    const auto* limits = receiver.Find<ValueNumeric<double>>(Keys::KeyFrequency);
    QByteArray text = "0\n2\n0\n"; // protocol, model of a client, no region
    text += QByteArray::number(limits->GetMin(), 'f', 6) + ' ' +
            QByteArray::number(limits->GetMax(), 'f', 6) + ' ' + mask + " -1 -1 0x1 0x0\n";
    text += "0 0 0 0 0 0 0\n0 0 0 0 0 0 0\n";        // that is all that is received; nothing is sent
    text += mask + " 1\n0 0\n" + mask + " 0\n0 0\n"; // any step from 1 Hz on, any passband
    text += "0\n0\n0\n0\n0\n0\n0x0\n0x0\n"; // no RIT, XIT, shift, announces, preamp, attenuator, functions
    text += "0x" + QByteArray::number(StrengthBit, 16) + "\n0x0\n0x0\n0x0";
    return {RIG_OK, {{"", text}}};
}

} // namespace

struct RigServer::Command {
    char letter; ///< 0 for none
    const char* name;
    Reply (*run)(Receiver& receiver, const Words& words);
    bool isQuestion = true;  ///< whose short answer has no code when all is well
    bool needsRadio = false; ///< without which nothing is known
};

namespace {

/// What keys a transmitter, or would: all of it is refused.
constexpr const char* Transmitting[] = {"T",
                                        "\\set_ptt",
                                        "S",
                                        "\\set_split_vfo",
                                        "I",
                                        "\\set_split_freq",
                                        "X",
                                        "\\set_split_mode",
                                        "K",
                                        "\\set_split_freq_mode",
                                        "b",
                                        "\\send_morse",
                                        "\\send_voice_mem",
                                        "\\set_powerstat",
                                        "G",
                                        "\\vfo_op",
                                        "w",
                                        "\\send_cmd",
                                        "W",
                                        "\\send_cmd_rx"};

bool transmits(const QByteArray& name) {
    return std::ranges::any_of(Transmitting, [&](const char* known) { return name == known; });
}

} // namespace

const RigServer::Command* RigServer::find(const QByteArray& name) const {
    static constexpr Command Refusal{0, "", refuseToTransmit, false};
    static constexpr Command Commands[] = {
        {'f', "get_freq", getFrequency, true, true},
        {'F', "set_freq", setFrequency, false, true},
        {'m', "get_mode", getMode, true, true},
        {'M', "set_mode", setMode, false, true},
        {'v', "get_vfo", getVfo},
        {'V', "set_vfo", setVfo, false},
        {'l', "get_level", getLevel, true, true},
        {'t', "get_ptt", getTransmits},
        {'s', "get_split_vfo", getSplit},
        {'_', "get_info", getInfo},
        {0, "dump_state", dumpState},
        {0, "chk_vfo", checkVfo},
        {0, "get_powerstat", getPower},
        {0, "get_lock_mode", getLockMode},
    };
    if (transmits(name))
        return &Refusal;
    for (const Command& command : Commands) {
        if ((command.letter && name == QByteArray(1, command.letter)) ||
            (name.startsWith('\\') && name.mid(1) == command.name))
            return &command;
    }
    return nullptr;
}

RigServer::RigServer(Receiver& receiver, QObject* parent)
    : QObject(parent), m_receiver(receiver), m_server(std::make_unique<QTcpServer>()) {
    LoadHamlib();
    connect(m_server.get(), &QTcpServer::newConnection, this, &RigServer::accept);
}

RigServer::~RigServer() {
    Close();
}

bool RigServer::Listen(quint16 port, QString& error) {
    const bool listens = m_server->listen(QHostAddress::LocalHost, port);
    error = listens ? QString() : tr("port %1: %2").arg(port).arg(m_server->errorString());
    return listens;
}

void RigServer::Close() {
    m_server->close();
    for (QTcpSocket* client : m_server->findChildren<QTcpSocket*>()) {
        client->disconnect(this);
        delete client;
    }
    m_clients = 0;
}

bool RigServer::IsListening() const {
    return m_server->isListening();
}

quint16 RigServer::GetPort() const {
    return m_server->serverPort();
}

void RigServer::accept() {
    while (QTcpSocket* client = m_server->nextPendingConnection()) {
        if (m_clients == MostClients) {
            delete client;
            continue;
        }
        ++m_clients;
        client->setReadBufferSize(2 * LongestLine);
        connect(client, &QTcpSocket::readyRead, this, [this, client] { hear(*client); });
        connect(client, &QTcpSocket::disconnected, this, [this, client] {
            --m_clients;
            client->deleteLater();
        });
    }
}

void RigServer::hear(QTcpSocket& client) {
    while (client.canReadLine() && client.bytesToWrite() <= MostUnread) {
        const QByteArray line = client.readLine().trimmed();
        if (line == "q" || line == "Q" || line == "\\quit" || line.size() > LongestLine) {
            client.disconnectFromHost();
            return;
        }
        if (!line.isEmpty())
            client.write(answer(line));
    }
    client.flush(); // one that has ended its side is gone with the next turn of the loop
    if (client.bytesToWrite() > MostUnread ||
        (!client.canReadLine() && client.bytesAvailable() > LongestLine))
        client.abort();
}

QByteArray RigServer::answer(const QByteArray& line) {
    const bool isLong = line.startsWith('+');
    QByteArray command = isLong ? line.mid(1).trimmed() : line;
    // A letter may stand before its value without a blank.
    if (command.size() > 1 && command[0] != '\\' && command[1] != ' ')
        command.insert(1, ' ');
    Words words = command.simplified().split(' ');
    const Command* known = find(words.takeFirst());
    Reply reply{-RIG_ENIMPL};
    if (known && known->needsRadio && m_receiver.GetState() != ReceiverState::Connected)
        reply = {-RIG_EIO};
    else if (known)
        reply = known->run(m_receiver, words);
    QByteArray text;
    if (isLong && known)
        text +=
            QByteArray(known->name) + ':' + (words.isEmpty() ? QByteArray() : ' ' + words.join(' ')) + '\n';
    for (const Reply::Line& said : reply.lines)
        text += (isLong && *said.name ? QByteArray(said.name) + ": " : QByteArray()) + said.value + '\n';
    if (isLong || reply.code != RIG_OK || !known->isQuestion)
        text += "RPRT " + QByteArray::number(reply.code) + '\n';
    return text;
}
