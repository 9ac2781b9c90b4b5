#include "link/mqttbus.h"

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

void initializeOnce() {
    static const int initialized = mosquitto_lib_init();
    (void)initialized;
}

QString textOfConnack(int code) {
    switch (code) {
    case MQTT_RC_BAD_USERNAME_OR_PASSWORD:
    case MQTT_RC_NOT_AUTHORIZED:
        return MqttBus::tr("the broker refuses the user or the password");
    default:
        return QString::fromUtf8(mosquitto_reason_string(code));
    }
}

} // namespace

/// The library's connection and the thread that works for it. It lives until its thread ends, which may be
/// after the bus.
struct MqttBus::Worker : std::enable_shared_from_this<Worker> {
    explicit Worker(MqttBus& owner) : bus(&owner) {
        initializeOnce();
        connection = mosquitto_new(nullptr, true, this);
        if (!connection)
            throw std::bad_alloc();
        mosquitto_int_option(connection, MOSQ_OPT_PROTOCOL_VERSION, MQTT_PROTOCOL_V5);
        mosquitto_int_option(connection, MOSQ_OPT_RECEIVE_MAXIMUM, MostUnderWay);
        mosquitto_int_option(connection, MOSQ_OPT_SEND_MAXIMUM, MostUnderWay);
        mosquitto_threaded_set(connection, true);
        mosquitto_connect_v5_callback_set(connection, onConnect);
        mosquitto_disconnect_v5_callback_set(connection, onDisconnect);
        mosquitto_message_callback_set(connection, onMessage);
        mosquitto_publish_v5_callback_set(connection, onPublished);
        mosquitto_subscribe_v5_callback_set(connection, onSubscribed);
    }
    ~Worker() { mosquitto_destroy(connection); }
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    void Start(const std::string& host, int port) {
        started = true;
        std::thread([self = shared_from_this(), host, port] { self->run(host, port); }).detach();
    }
    /// The bus hears nothing from now on.
    void Stop() {
        {
            const std::lock_guard lock(mutex);
            bus = nullptr;
            stopping = true;
        }
        mosquitto_disconnect(connection); // what was published before still goes out
        wake.notify_all();
        std::unique_lock lock(mutex);
        wake.wait_for(lock, GoodBye, [this] { return ended || !started || connecting; });
    }
    void Publish(const QByteArray& topic, const QByteArray& payload, bool retain) {
        int message = 0;
        if (mosquitto_publish(connection, &message, topic.constData(), static_cast<int>(payload.size()),
                              payload.constData(), AtLeastOnce, retain) == MOSQ_ERR_SUCCESS)
            note(message, topic);
    }
    void Subscribe(const QByteArray& filter) {
        int message = 0;
        if (mosquitto_subscribe(connection, &message, filter.constData(), AtLeastOnce) == MOSQ_ERR_SUCCESS)
            note(message, filter);
    }

    mosquitto* connection = nullptr;

private:
    void run(const std::string& host, int port) {
        auto pause = std::chrono::milliseconds(FirstPause);
        while (!isStopping()) {
            int result = connect(host, port);
            while (result == MOSQ_ERR_SUCCESS) {
                result = mosquitto_loop(connection, LoopMilliseconds, 1);
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
    int connect(const std::string& host, int port) {
        setConnecting(true);
        const int result = std::exchange(wasTried, true)
                               ? mosquitto_reconnect(connection)
                               : mosquitto_connect(connection, host.c_str(), port, KeepAliveSeconds);
        const int error = errno;
        setConnecting(false);
        errno = error;
        return result == MOSQ_ERR_SUCCESS && isStopping() ? MOSQ_ERR_NO_CONN : result;
    }
    void setConnecting(bool is) {
        const std::lock_guard lock(mutex);
        connecting = is;
    }
    bool isStopping() {
        const std::lock_guard lock(mutex);
        return stopping;
    }
    QString reasonOf(int result) {
        if (!refusal.isEmpty())
            return std::exchange(refusal, {});
        return QString::fromLocal8Bit(result == MOSQ_ERR_ERRNO ? strerror(errno)
                                                               : mosquitto_strerror(result));
    }
    /// With the lock held.
    template <typename Bus, typename... Parameters, typename... Arguments>
    void tell(void (Bus::*what)(Parameters...), Arguments... arguments) {
        if (MqttBus* const to = bus)
            QMetaObject::invokeMethod(
                to, [=] { (to->*what)(arguments...); }, Qt::QueuedConnection);
    }

    static Worker& of(void* worker) { return *static_cast<Worker*>(worker); }
    static void onConnect(mosquitto*, void* worker, int code, int, const mosquitto_property*) {
        Worker& self = of(worker);
        const std::lock_guard lock(self.mutex);
        if (code == 0) {
            self.wasConnected = true;
            self.tell(&MqttBus::connected);
        } else {
            self.refusal = textOfConnack(code);
        }
    }
    static void onDisconnect(mosquitto*, void* worker, int code, const mosquitto_property*) {
        Worker& self = of(worker);
        const std::lock_guard lock(self.mutex);
        if (code != 0 && self.refusal.isEmpty()) // that tells more
            self.tell(&MqttBus::disconnected, QString::fromUtf8(mosquitto_strerror(code)));
    }
    static void onMessage(mosquitto*, void* worker, const mosquitto_message* message) {
        Worker& self = of(worker);
        const QByteArray topic(message->topic);
        const QByteArray payload(static_cast<const char*>(message->payload), message->payloadlen);
        const std::lock_guard lock(self.mutex);
        self.tell(&MqttBus::deliver, topic, payload);
    }
    static void onPublished(mosquitto*, void* worker, int message, int code, const mosquitto_property*) {
        of(worker).takeAnswer(message, code == MQTT_RC_NOT_AUTHORIZED ? &MqttBus::Refused : nullptr);
    }
    static void onSubscribed(mosquitto*, void* worker, int message, int count, const int* codes,
                             const mosquitto_property*) {
        const bool isRefused =
            std::any_of(codes, codes + count, [](int c) { return c >= SubscriptionFails; });
        of(worker).takeAnswer(message, isRefused ? &MqttBus::SubscriptionRefused : nullptr);
    }
    /// Notes what a message is about, whose answer may have been quicker.
    void note(int message, const QByteArray& topic) {
        const std::lock_guard lock(mutex);
        if (const auto early = answered.find(message); early != answered.end()) {
            tellRefusal(early->second, topic);
            answered.erase(early);
        } else {
            underWay[message] = topic;
        }
    }
    void takeAnswer(int message, Refusal signal) {
        const std::lock_guard lock(mutex);
        const auto found = underWay.find(message);
        if (found == underWay.end()) {
            answered[message] = signal;
            return;
        }
        tellRefusal(signal, found->second);
        underWay.erase(found);
    }
    void tellRefusal(Refusal signal, const QByteArray& topic) {
        if (signal)
            tell(&MqttBus::refused, signal, topic);
    }

    std::mutex mutex;
    std::condition_variable wake;
    MqttBus* bus;
    bool started = false;
    bool wasTried = false;
    bool connecting = false;
    bool stopping = false;
    bool ended = false;
    std::atomic<bool> wasConnected = false;
    QString refusal;
    std::unordered_map<int, QByteArray> underWay; ///< topics of messages that wait for their answer
    std::unordered_map<int, Refusal>
        answered; ///< answers, null for good ones, quicker than their topic's note
};

MqttBus::MqttBus(const BrokerAddress& address, QObject* parent)
    : MessageBus(parent), m_address(address), m_worker(std::make_shared<Worker>(*this)) {
    mosquitto* const connection = m_worker->connection;
    if (!address.user.isEmpty())
        mosquitto_username_pw_set(connection, address.user.toUtf8().constData(),
                                  address.password.toUtf8().constData());
    if (!address.isEncrypted)
        return;
    const auto path = [](const QString& file) { return QFile::encodeName(file); };
    const QByteArray ca = path(address.caFile);
    const QByteArray certificate = path(address.certificateFile);
    const QByteArray key = path(address.keyFile);
    const auto given = [](const QByteArray& name) { return name.isEmpty() ? nullptr : name.constData(); };
    if (ca.isEmpty())
        mosquitto_int_option(connection, MOSQ_OPT_TLS_USE_OS_CERTS, 1);
    if (mosquitto_tls_set(connection, given(ca), ca.isEmpty() ? "/etc/ssl/certs" : nullptr,
                          given(certificate), given(key), nullptr) != MOSQ_ERR_SUCCESS)
        throw RGException(tr("%1: the certificates cannot be read").arg(address.ToString()));
}

MqttBus::~MqttBus() {
    blockSignals(true);
    Disconnect();
}

QString MqttBus::UserName() const {
    return m_address.user.isEmpty() ? QStringLiteral("anyone") : m_address.user;
}

void MqttBus::SetWill(const QByteArray& topic, const QByteArray& payload) {
    m_will = {topic, payload};
    mosquitto_will_set(m_worker->connection, topic.constData(), static_cast<int>(payload.size()),
                       payload.constData(), AtLeastOnce, false);
}

void MqttBus::Connect() {
    if (!m_worker || GetState() != State::Offline)
        return;
    setState(State::Connecting);
    m_worker->Start(m_address.host.toStdString(), m_address.port);
}

void MqttBus::Disconnect() {
    if (!m_worker)
        return;
    // A connection that is closed in good order leaves no will.
    if (!m_will.first.isEmpty())
        Publish(m_will.first, m_will.second, Keep::No);
    std::exchange(m_worker, nullptr)->Stop();
    setState(State::Offline);
}

void MqttBus::connected() {
    if (!m_worker)
        return;
    m_mayReceive = true;
    for (const QByteArray& filter : filters())
        startReceiving(filter);
    setState(State::Online);
}

void MqttBus::disconnected(const QString& reason) {
    m_mayReceive = false;
    setState(State::Connecting, reason);
}

void MqttBus::refused(Refusal signal, const QByteArray& topic) {
    inOrder([this, signal, topic] { emit(this->*signal)(topic); });
}

void MqttBus::Publish(const QByteArray& topic, const QByteArray& payload, Keep keep) {
    if (m_worker && IsOnline())
        m_worker->Publish(topic, payload, keep == Keep::Retained);
}

void MqttBus::FetchAgain(const QByteArray& filter) {
    if (!IsOnline())
        return;
    startReceiving(filter);
    const std::vector<QByteArray> own = filters();
    if (std::find(own.begin(), own.end(), filter) == own.end())
        stopReceiving(filter);
}

/// What is said before the broker has let us in breaks the connection that is being made.
void MqttBus::startReceiving(const QByteArray& filter) {
    if (m_worker && m_mayReceive)
        m_worker->Subscribe(filter);
}

void MqttBus::stopReceiving(const QByteArray& filter) {
    if (m_worker && m_mayReceive)
        mosquitto_unsubscribe(m_worker->connection, nullptr, filter.constData());
}
