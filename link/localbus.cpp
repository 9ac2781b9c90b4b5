#include "link/localbus.h"

#include <algorithm>

LocalBroker::~LocalBroker() {
    Stop();
    for (LocalBus* bus : m_buses)
        bus->m_broker = nullptr;
}

void LocalBroker::Stop() {
    m_isRunning = false;
    for (LocalBus* bus : std::vector(m_buses))
        bus->leave(LocalBus::tr("the broker has gone"));
}

void LocalBroker::Start() {
    m_isRunning = true;
    for (LocalBus* bus : std::vector(m_buses)) {
        if (bus->m_wanted)
            bus->comeOnline();
    }
}

bool LocalBroker::mayRead(const LocalBus& bus, const QByteArray& filter) const {
    return !m_readRights || m_readRights(bus.UserName(), filter);
}

void LocalBroker::publish(const QByteArray& topic, const QByteArray& payload, MessageBus::Keep keep) {
    if (keep == MessageBus::Keep::Retained) {
        if (payload.isEmpty())
            m_retained.erase(topic);
        else
            m_retained[topic] = payload;
    }
    for (LocalBus* bus : m_buses) {
        if (bus->IsOnline() && bus->isWanted(topic) && mayRead(*bus, topic))
            send(*bus, topic, payload);
    }
}

void LocalBroker::send(LocalBus& bus, const QByteArray& topic, const QByteArray& payload) {
    if (m_filter && !m_filter(topic, payload))
        return;
    const auto arrive = [&bus, topic, payload, connection = bus.m_connection] {
        if (bus.IsOnline() && bus.m_connection == connection)
            bus.deliver(topic, payload);
    };
    QMetaObject::invokeMethod(&bus, arrive, Qt::QueuedConnection);
}

void LocalBroker::subscribe(LocalBus& bus, const QByteArray& filter, MessageBus::Keep keep) {
    if (!mayRead(bus, filter)) {
        QMetaObject::invokeMethod(
            &bus, [&bus, filter] { bus.inOrder([&bus, filter] { emit bus.SubscriptionRefused(filter); }); },
            Qt::QueuedConnection);
        return;
    }
    for (const auto& [topic, payload] : m_retained) {
        if (keep == MessageBus::Keep::Retained && MessageBus::Matches(filter, topic))
            send(bus, topic, payload);
    }
}

LocalBus::LocalBus(LocalBroker& broker, const QString& user, QObject* parent)
    : MessageBus(parent), m_broker(&broker), m_user(user) {
    broker.m_buses.push_back(this);
}

LocalBus::~LocalBus() {
    if (!m_broker)
        return;
    std::erase(m_broker->m_buses, this);
    blockSignals(true);
    leave({});
}

void LocalBus::SetWill(const QByteArray& topic, const QByteArray& payload) {
    m_will = {topic, payload};
}

void LocalBus::Connect() {
    m_wanted = true;
    if (m_broker && m_broker->IsRunning() && !IsOnline())
        comeOnline();
}

void LocalBus::comeOnline() {
    ++m_connection;
    setState(State::Online);
    startReceivingAll();
}

void LocalBus::Disconnect() {
    m_wanted = false;
    leave({});
}

void LocalBus::Cut() {
    leave(tr("the connection broke"));
}

void LocalBus::leave(const QString& reason) {
    if (!IsOnline())
        return;
    setState(State::Offline, reason);
    if (m_broker && !m_will.first.isEmpty())
        m_broker->publish(m_will.first, m_will.second, Keep::No);
}

void LocalBus::Publish(const QByteArray& topic, const QByteArray& payload, Keep keep) {
    if (!IsOnline())
        return;
    if (!m_broker->m_rights || m_broker->m_rights(m_user, topic))
        m_broker->publish(topic, payload, keep);
    else
        QMetaObject::invokeMethod(
            this, [this, topic] { inOrder([this, topic] { emit Refused(topic); }); }, Qt::QueuedConnection);
}

void LocalBus::FetchAgain(const QByteArray& filter) {
    startReceiving(filter, Keep::Retained);
}

void LocalBus::startReceiving(const QByteArray& filter, Keep keep) {
    if (IsOnline())
        m_broker->subscribe(*this, filter, keep);
}
