#include "cli/broker.h"

#include "cli/command.h"
#include "host/base/longwork.h"
#include "host/startup/endsignals.h"

#include <QCoreApplication>
#include <QSysInfo>

void Broker::AddOptions(QCommandLineParser& parser) {
    const auto add = [&](const char* name, const char* purpose, const char* value) {
        parser.addOption(
            {QString::fromLatin1(name), QString::fromLatin1(purpose), QString::fromLatin1(value)});
    };
    add("name", "Name of this seat, as others read it; that of the machine if not given.", "NAME");
    add("password-file", "File whose first line is the password; its mode must be 600.", "FILE");
    add("ca-file", "Certificates of the authorities that the broker's is checked by.", "FILE");
    add("certificate", "Certificate of this client.", "FILE");
    add("key", "Key of this client's certificate.", "FILE");
}

Broker::Broker(const Arguments& args, const QString& url) : m_address(BrokerAddress::FromUrl(url)) {
    m_address.TakePasswordOfEnvironment();
    if (args.IsSet("password-file"))
        m_address.TakePasswordFile(args.Value("password-file"));
    m_address.caFile = args.Value("ca-file");
    m_address.certificateFile = args.Value("certificate");
    m_address.keyFile = args.Value("key");
    m_bus = std::make_unique<MqttBus>(m_address);
    const QString name = args.IsSet("name") ? args.Value("name") : QSysInfo::machineHostName();
    m_seat = std::make_unique<Seat>(*m_bus, m_address.site, name);
}

/// What a command does for hours is no work that others wait for.
int RunUntilSignal() {
    const LongWork::Standstill waiting;
    const EndSignals ends;
    QObject::connect(&ends, &EndSignals::Came, QCoreApplication::instance(),
                     [] { QCoreApplication::exit(ExitDone); });
    return QCoreApplication::exec();
}
