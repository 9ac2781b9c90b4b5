#pragma once

#include "cli/arguments.h"
#include "link/mqttbus.h"
#include "link/seat.h"

#include <memory>

/// What the commands that share lists have in common: the options of a broker, and the connection to it.
class Broker {
public:
    static void AddOptions(QCommandLineParser& parser);
    /// Throws RGException when an option or the address is none; does not wait for a connection.
    Broker(const Arguments& args, const QString& url);

    Seat& GetSeat() { return *m_seat; }
    MessageBus& Bus() { return *m_bus; }
    const BrokerAddress& Address() const { return m_address; }

private:
    BrokerAddress m_address;
    std::unique_ptr<MqttBus> m_bus;
    std::unique_ptr<Seat> m_seat;
};

/// Runs the event loop until a signal asks for the end, or the loop is told to exit.
int RunUntilSignal();
