#pragma once

#include "link/brokeraddress.h"
#include "link/messagebus.h"

/// A connection to an MQTT broker. The client library works in a thread of its own; what it hears comes to
/// this object's thread by queued calls, so that no call of the window waits for a network. Each message is
/// sent at least once (QoS 1).
class MqttBus : public MessageBus {
    Q_OBJECT

public:
    /// Throws RGException when certificates cannot be read.
    explicit MqttBus(const BrokerAddress& address, QObject* parent = nullptr);
    /// Gives the connection a moment to say good-bye.
    ~MqttBus() override;

    QString UserName() const override;
    void SetWill(const QByteArray& topic, const QByteArray& payload) override;
    void Connect() override;
    void Disconnect() override;
    void Publish(const QByteArray& topic, const QByteArray& payload, Keep keep) override;
    void FetchAgain(const QByteArray& filter) override;

protected:
    void startReceiving(const QByteArray& filter, Keep keep) override;
    void stopReceiving(const QByteArray& filter) override;

private:
    struct Connection;
    struct Worker;
    struct Will {
        QByteArray topic, payload;
    };

    void connected(const std::shared_ptr<Connection>& connection);
    void disconnected(const QString& reason);
    using Refusal = void (MessageBus::*)(const QByteArray& topic); ///< the signal that tells it
    void refused(Refusal signal, const QByteArray& topic);

    QString m_user;
    std::shared_ptr<Worker> m_worker;
    std::shared_ptr<Connection> m_connection; ///< which the broker has taken, null while there is none
};
