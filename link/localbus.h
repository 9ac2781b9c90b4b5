#pragma once

#include "link/messagebus.h"

#include <unordered_map>

class LocalBus;

/// A broker within the process, for plug-ins and tests: seats that share one share lists without a network.
/// Buses may end before or after it.
class LocalBroker : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;
    ~LocalBroker() override;

    /// Breaks all connections; `Start` lets buses in again. What was retained stays, unless `Forget`.
    void Stop();
    void Start();
    void Forget() { m_retained.clear(); }
    using Messages = std::unordered_map<QByteArray, QByteArray>; ///< payloads by topics
    /// As a broker that comes back with an older state of its disk.
    void SetRetained(Messages retained) { m_retained = std::move(retained); }
    bool IsRunning() const { return m_isRunning; }

    const Messages& Retained() const { return m_retained; }
    /// What passes: answers false for a message that gets lost on its way from this broker.
    using Filter = std::function<bool(const QByteArray& topic, const QByteArray& payload)>;
    void SetFilter(Filter filter) { m_filter = std::move(filter); }
    /// Who may publish to a topic, and who may read one or subscribe to a filter; everyone without one.
    using Rights = std::function<bool(const QString& user, const QByteArray& topic)>;
    void SetRights(Rights rights) { m_rights = std::move(rights); }
    void SetReadRights(Rights rights) { m_readRights = std::move(rights); }

private:
    friend class LocalBus;

    void publish(const QByteArray& topic, const QByteArray& payload, MessageBus::Keep keep);
    void send(LocalBus& bus, const QByteArray& topic, const QByteArray& payload);
    void subscribe(LocalBus& bus, const QByteArray& filter, MessageBus::Keep keep);
    bool mayRead(const LocalBus& bus, const QByteArray& filter) const;

    std::vector<LocalBus*> m_buses;
    Messages m_retained;
    Filter m_filter;
    Rights m_rights;
    Rights m_readRights;
    bool m_isRunning = true;
};

/// A connection to a broker of this process. Messages come by queued calls, as those of a network do.
class LocalBus : public MessageBus {
    Q_OBJECT

public:
    LocalBus(LocalBroker& broker, const QString& user, QObject* parent = nullptr);
    ~LocalBus() override;

    QString UserName() const override { return m_user; }
    void SetWill(const QByteArray& topic, const QByteArray& payload) override;
    void Connect() override;
    void Disconnect() override;
    /// Breaks the connection, as a cut cable does; the next `Connect` restores it.
    void Cut();
    void Publish(const QByteArray& topic, const QByteArray& payload, Keep keep) override;
    void FetchAgain(const QByteArray& filter) override;

protected:
    void startReceiving(const QByteArray& filter, Keep keep) override;
    void stopReceiving(const QByteArray&) override {}

private:
    friend class LocalBroker;

    void comeOnline();
    void leave(const QString& reason);

    LocalBroker* m_broker;
    QString m_user;
    std::pair<QByteArray, QByteArray> m_will;
    bool m_wanted = false;
    quint64 m_connection = 0; ///< messages of an earlier one no longer arrive
};
