#include "link/mqttbus.h"

#include "host/base/problems.h"
#include "host/report/rgexception.h"

#include <QFile>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <cstring>
#include <mosquitto.h>
#include <mqtt_protocol.h>
#include <mutex>
#include <thread>

namespace {

using namespace std::chrono_literals;

constexpr char TraceSource[] = "sharelink";
constexpr int AtLeastOnce = 1;
constexpr int KeepAliveSeconds = 20;
constexpr int LoopMilliseconds = 1000;
/// Messages under way that wait for the other side's answer.
constexpr int MostUnderWay = 1000;
/// From this code on, an answer to a subscription is a refusal.
constexpr int SubscriptionFails = 0x80;
constexpr auto FirstPause = 200ms;
constexpr auto LongestPause = 5s;
constexpr auto GoodBye = 1s;

QString textOfConnack(int code) {
    switch (code) {
    case MQTT_RC_BAD_USERNAME_OR_PASSWORD:
    case MQTT_RC_NOT_AUTHORIZED:
        return MqttBus::tr("the broker refuses the user or the password");
    default:
        return QString::fromUtf8(mosquitto_reason_string(code));
    }
}

/// The library has no words for each of its own.
QString textOf(int result) {
    return result == MOSQ_ERR_KEEPALIVE
               ? MqttBus::tr("the broker does not answer")
               : QString::fromLocal8Bit(result == MOSQ_ERR_ERRNO ? strerror(errno)
                                                                 : mosquitto_strerror(result));
}

} // namespace

/// One connection of the library, made anew each time: the library would send what a broken one had under way
/// once more, and a broker that has come back with an older state would get a manifest without the rows that
/// went before it.
struct MqttBus::Connection : std::enable_shared_from_this<Connection> {
    /// Throws RGException when certificates cannot be read. The worker outlives what is heard here.
    Connection(Worker& itsWorker, const BrokerAddress& address, const Will& will);

    void Publish(const QByteArray& topic, const QByteArray& payload, bool retain) {
        int message = 0;
        const int result =
            mosquitto_publish(Handle(), &message, topic.constData(), static_cast<int>(payload.size()),
                              payload.constData(), AtLeastOnce, retain);
        if (result == MOSQ_ERR_SUCCESS)
            note(message, topic);
        else if (result == MOSQ_ERR_OVERSIZE_PACKET)
            Problems::Report(TraceSource,
                             {QString::fromUtf8(topic), 0, tr("is larger than the broker takes at once")});
    }
    void Subscribe(const QByteArray& filter, Keep keep) {
        int message = 0;
        const int options = keep == Keep::No ? MQTT_SUB_OPT_SEND_RETAIN_NEVER : 0;
        if (mosquitto_subscribe_v5(Handle(), &message, filter.constData(), AtLeastOnce, options, nullptr) ==
            MOSQ_ERR_SUCCESS)
            note(message, filter);
    }
    void Unsubscribe(const QByteArray& filter) {
        mosquitto_unsubscribe(Handle(), nullptr, filter.constData());
    }

    mosquitto* Handle() const { return m_handle.get(); }
    /// Why TLS failed, in the words of its library; empty when it told nothing. For the worker's thread.
    const QString& TlsReason() const { return m_tlsReason; }

private:
    void encrypt(const BrokerAddress& address);

    static Connection& of(void* connection) { return *static_cast<Connection*>(connection); }
    static void onConnect(mosquitto*, void* connection, int code, int, const mosquitto_property*);
    static void onDisconnect(mosquitto*, void* connection, int code, const mosquitto_property*);
    static void onMessage(mosquitto*, void* connection, const mosquitto_message* message);
    static void onLog(mosquitto*, void* connection, int level, const char* text);
    static void onPublished(mosquitto*, void* connection, int message, int code, const mosquitto_property*) {
        of(connection).takeAnswer(message, code == MQTT_RC_NOT_AUTHORIZED ? &MqttBus::Refused : nullptr);
    }
    static void onSubscribed(mosquitto*, void* connection, int message, int count, const int* codes,
                             const mosquitto_property*) {
        const bool isRefused =
            std::any_of(codes, codes + count, [](int c) { return c >= SubscriptionFails; });
        of(connection).takeAnswer(message, isRefused ? &MqttBus::SubscriptionRefused : nullptr);
    }
    void note(int message, const QByteArray& topic);
    void takeAnswer(int message, Refusal signal);
    void tellRefusal(Refusal signal, const QByteArray& topic);

    const std::unique_ptr<mosquitto, decltype(&mosquitto_destroy)> m_handle;
    Worker& m_worker;
    QString m_tlsReason;
    std::mutex m_mutex;
    std::unordered_map<int, QByteArray> m_underWay; ///< topics of messages that wait for their answer
    std::unordered_map<int, Refusal>
        m_answered; ///< answers, null for good ones, quicker than their topic's note
};

/// The thread that connects and works for the connection. It lives until the thread ends, which may be after
/// the bus.
struct MqttBus::Worker : std::enable_shared_from_this<Worker> {
    Worker(MqttBus& owner, const BrokerAddress& itsAddress) : address(itsAddress), bus(&owner) {
        static const int initialized = mosquitto_lib_init();
        (void)initialized;
        makeConnection(); // tells at once what cannot be
    }
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    void Start() {
        started = true;
        std::thread([self = shared_from_this()] { self->run(); }).detach();
    }
    /// The bus hears nothing from now on.
    void Stop() {
        std::unique_lock lock(mutex);
        bus = nullptr;
        stopping = true;
        if (const std::shared_ptr<Connection> connection = current) {
            lock.unlock();
            mosquitto_disconnect(connection->Handle()); // what was published before still goes out
            lock.lock();
        }
        wake.notify_all();
        wake.wait_for(lock, GoodBye, [this] { return ended || !started || connecting; });
    }
    template <typename Bus, typename... Parameters, typename... Arguments>
    void Tell(void (Bus::*what)(Parameters...), Arguments... arguments) {
        const std::lock_guard lock(mutex);
        tell(what, arguments...);
    }
    void Connected(const std::shared_ptr<Connection>& connection) {
        const std::lock_guard lock(mutex);
        wasConnected = true;
        tell(&MqttBus::connected, connection);
    }
    void Refused(const QString& reason) {
        const std::lock_guard lock(mutex);
        refusal = reason;
    }
    void Disconnected(const QString& reason) {
        const std::lock_guard lock(mutex);
        if (refusal.isEmpty()) // that tells more
            tell(&MqttBus::disconnected, reason);
    }

    Will will; ///< set before the start

private:
    std::shared_ptr<Connection> makeConnection() {
        return std::make_shared<Connection>(*this, address, will);
    }
    void run() {
        auto pause = std::chrono::milliseconds(FirstPause);
        while (!isStopping()) {
            int result = connect();
            while (result == MOSQ_ERR_SUCCESS) {
                result = mosquitto_loop(current->Handle(), LoopMilliseconds, 1);
                if (wasConnected.exchange(false))
                    pause = FirstPause;
            }
            std::unique_lock lock(mutex);
            if (!stopping)
                tell(&MqttBus::disconnected, reasonOf(result));
            if (wake.wait_for(lock, pause, [this] { return stopping; }))
                break;
            pause = std::min<std::chrono::milliseconds>(pause * 2, LongestPause);
        }
        const std::lock_guard lock(mutex);
        ended = true;
        wake.notify_all();
    }
    /// Waits until there is a connection or none. The library's calls that do not wait begin with TLS at
    /// once, and when the connection is refused go on with that without a pause.
    int connect() {
        try {
            const std::shared_ptr<Connection> made = makeConnection();
            setConnecting(made);
        } catch (const RGException& exception) { // the certificates have gone meanwhile
            Refused(exception.GetErrorText());
            return MOSQ_ERR_TLS;
        }
        const int result = mosquitto_connect(current->Handle(), address.host.toUtf8().constData(),
                                             address.port, KeepAliveSeconds);
        const int error = errno;
        const std::lock_guard lock(mutex);
        connecting = false;
        errno = error;
        return result == MOSQ_ERR_SUCCESS && stopping ? MOSQ_ERR_NO_CONN : result;
    }
    void setConnecting(std::shared_ptr<Connection> made) {
        const std::lock_guard lock(mutex);
        current.swap(made);
        connecting = true;
    }
    bool isStopping() {
        const std::lock_guard lock(mutex);
        return stopping;
    }
    QString reasonOf(int result) {
        if (!refusal.isEmpty())
            return std::exchange(refusal, {});
        const QString tls = result == MOSQ_ERR_TLS && current ? current->TlsReason() : QString();
        return tls.isEmpty() ? textOf(result) : MqttBus::tr("no encrypted connection: %1").arg(tls);
    }
    /// With the lock held.
    template <typename Bus, typename... Parameters, typename... Arguments>
    void tell(void (Bus::*what)(Parameters...), Arguments... arguments) {
        if (MqttBus* const to = bus)
            QMetaObject::invokeMethod(
                to, [=] { (to->*what)(arguments...); }, Qt::QueuedConnection);
    }

    const BrokerAddress address;
    std::mutex mutex;
    std::condition_variable wake;
    MqttBus* bus;
    std::shared_ptr<Connection> current; ///< written by the thread alone
    bool started = false;
    bool connecting = false;
    bool stopping = false;
    bool ended = false;
    std::atomic<bool> wasConnected = false;
    QString refusal;
};

MqttBus::Connection::Connection(Worker& itsWorker, const BrokerAddress& address, const Will& will)
    : m_handle(mosquitto_new(nullptr, true, this), mosquitto_destroy), m_worker(itsWorker) {
    mosquitto* const handle = Handle();
    if (!handle)
        throw std::bad_alloc();
    mosquitto_int_option(handle, MOSQ_OPT_PROTOCOL_VERSION, MQTT_PROTOCOL_V5);
    mosquitto_int_option(handle, MOSQ_OPT_RECEIVE_MAXIMUM, MostUnderWay);
    mosquitto_int_option(handle, MOSQ_OPT_SEND_MAXIMUM, MostUnderWay);
    mosquitto_threaded_set(handle, true);
    mosquitto_connect_v5_callback_set(handle, onConnect);
    mosquitto_disconnect_v5_callback_set(handle, onDisconnect);
    mosquitto_message_callback_set(handle, onMessage);
    mosquitto_publish_v5_callback_set(handle, onPublished);
    mosquitto_log_callback_set(handle, onLog);
    mosquitto_subscribe_v5_callback_set(handle, onSubscribed);
    if (!will.topic.isEmpty())
        mosquitto_will_set(handle, will.topic.constData(), static_cast<int>(will.payload.size()),
                           will.payload.constData(), AtLeastOnce, false);
    if (!address.user.isEmpty())
        mosquitto_username_pw_set(handle, address.user.toUtf8().constData(),
                                  address.password.toUtf8().constData());
    if (address.isEncrypted)
        encrypt(address);
}

void MqttBus::Connection::encrypt(const BrokerAddress& address) {
    const auto path = [](const QString& file) { return QFile::encodeName(file); };
    const QByteArray ca = path(address.caFile);
    const QByteArray certificate = path(address.certificateFile);
    const QByteArray key = path(address.keyFile);
    const auto given = [](const QByteArray& name) { return name.isEmpty() ? nullptr : name.constData(); };
    if (ca.isEmpty())
        mosquitto_int_option(Handle(), MOSQ_OPT_TLS_USE_OS_CERTS, 1);
    if (mosquitto_tls_set(Handle(), given(ca), ca.isEmpty() ? "/etc/ssl/certs" : nullptr, given(certificate),
                          given(key), nullptr) == MOSQ_ERR_SUCCESS)
        return;
    throw RGException(tr("%1: the certificates cannot be read").arg(address.ToString()));
}

void MqttBus::Connection::onConnect(mosquitto*, void* connection, int code, int, const mosquitto_property*) {
    Connection& self = of(connection);
    if (code == 0)
        self.m_worker.Connected(self.shared_from_this());
    else
        self.m_worker.Refused(textOfConnack(code));
}

void MqttBus::Connection::onDisconnect(mosquitto*, void* connection, int code, const mosquitto_property*) {
    if (code != 0)
        of(connection).m_worker.Disconnected(textOf(code));
}

void MqttBus::Connection::onMessage(mosquitto*, void* connection, const mosquitto_message* message) {
    const QByteArray topic(message->topic);
    const QByteArray payload(static_cast<const char*>(message->payload), message->payloadlen);
    of(connection).m_worker.Tell(&MqttBus::deliver, topic, payload);
}

/// The library tells what is wrong with certificates here alone: in its own words, or behind the last colon
/// of "OpenSSL Error[0]: error:0A000086:SSL routines::certificate verify failed".
void MqttBus::Connection::onLog(mosquitto*, void* connection, int level, const char* text) {
    if (level != MOSQ_LOG_ERR)
        return;
    const QString told = QString::fromUtf8(text);
    QString reason = told.mid(told.lastIndexOf(QLatin1Char(':')) + 1).trimmed();
    if (reason.endsWith(QLatin1Char('.')))
        reason.chop(1);
    of(connection).m_tlsReason = reason;
}

/// Notes what a message is about, whose answer may have been quicker.
void MqttBus::Connection::note(int message, const QByteArray& topic) {
    const std::lock_guard lock(m_mutex);
    if (const auto early = m_answered.find(message); early != m_answered.end()) {
        tellRefusal(early->second, topic);
        m_answered.erase(early);
    } else {
        m_underWay[message] = topic;
    }
}

void MqttBus::Connection::takeAnswer(int message, Refusal signal) {
    const std::lock_guard lock(m_mutex);
    const auto found = m_underWay.find(message);
    if (found == m_underWay.end()) {
        m_answered[message] = signal;
        return;
    }
    tellRefusal(signal, found->second);
    m_underWay.erase(found);
}

void MqttBus::Connection::tellRefusal(Refusal signal, const QByteArray& topic) {
    if (signal)
        m_worker.Tell(&MqttBus::refused, signal, topic);
}

MqttBus::MqttBus(const BrokerAddress& address, QObject* parent)
    : MessageBus(parent), m_user(address.user), m_worker(std::make_shared<Worker>(*this, address)) {}

MqttBus::~MqttBus() {
    blockSignals(true);
    Disconnect();
}

QString MqttBus::UserName() const {
    return m_user.isEmpty() ? QStringLiteral("anyone") : m_user;
}

void MqttBus::SetWill(const QByteArray& topic, const QByteArray& payload) {
    m_worker->will = {topic, payload};
}

void MqttBus::Connect() {
    if (!m_worker || GetState() != State::Offline)
        return;
    setState(State::Connecting);
    m_worker->Start();
}

void MqttBus::Disconnect() {
    if (!m_worker)
        return;
    // A connection that is closed in good order leaves no will.
    if (const Will& will = m_worker->will; !will.topic.isEmpty())
        Publish(will.topic, will.payload, Keep::No);
    std::exchange(m_worker, nullptr)->Stop();
    m_connection = nullptr;
    setState(State::Offline);
}

void MqttBus::connected(const std::shared_ptr<Connection>& connection) {
    if (!m_worker)
        return;
    m_connection = connection;
    startReceivingAll();
    setState(State::Online);
}

void MqttBus::disconnected(const QString& reason) {
    m_connection = nullptr;
    setState(State::Connecting, reason);
}

void MqttBus::refused(Refusal signal, const QByteArray& topic) {
    inOrder([this, signal, topic] { emit(this->*signal)(topic); });
}

void MqttBus::Publish(const QByteArray& topic, const QByteArray& payload, Keep keep) {
    if (m_connection && IsOnline())
        m_connection->Publish(topic, payload, keep == Keep::Retained);
}

void MqttBus::FetchAgain(const QByteArray& filter) {
    if (!IsOnline())
        return;
    startReceiving(filter, Keep::Retained);
    if (!isSubscribed(filter))
        stopReceiving(filter);
}

/// What is said before the broker has let us in breaks the connection that is being made.
void MqttBus::startReceiving(const QByteArray& filter, Keep keep) {
    if (m_connection)
        m_connection->Subscribe(filter, keep);
}

void MqttBus::stopReceiving(const QByteArray& filter) {
    if (m_connection)
        m_connection->Unsubscribe(filter);
}
