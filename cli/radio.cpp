#include "cli/radio.h"

#include "cli/command.h"
#include "cli/output.h"
#include "host/gui/listsettings.h"
#include "receiver/hamlibreceiver.h"

#include <QEventLoop>
#include <QStandardPaths>

namespace {

constexpr std::chrono::milliseconds LongestFarewell(2000);
constexpr char UsualReceiver[] = "simulated";

/// Profiles are those of the workstation.
void useSettings(const Arguments& args) {
    ListSettings::SetDirectory(args.IsSet("config")
                                   ? args.Value("config")
                                   : QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
                                         QStringLiteral("/freqstore"));
}

} // namespace

CliRadio::CliRadio() {
    QObject::connect(&m_receiver, &Receiver::Refused, [this](const QString& reason) { m_refused << reason; });
    QObject::connect(&m_receiver, &Receiver::Followed, [this](quint64 serial) { m_followed = serial; });
}

CliRadio::~CliRadio() {
    m_receiver.Attach(nullptr);
    HamlibReceiver::WaitForAll(LongestFarewell);
}

void CliRadio::AddOptions(Arguments& args) {
    args.Parser().addOption(
        {QStringLiteral("receiver"),
         QStringLiteral(
             "The receiver: simulated, hamlib:MODEL@DEVICE, hamlib:MODEL@HOST:PORT, or the name of a "
             "receiver that the workstation keeps."),
         QStringLiteral("R"), QString::fromLatin1(UsualReceiver)});
    args.Parser().addOption({QStringLiteral("config"),
                             QStringLiteral("The workstation's settings, if they are not the usual ones."),
                             QStringLiteral("DIR")});
}

std::optional<ReceiverChoice> CliRadio::Choice(const Arguments& args) {
    useSettings(args);
    QString error;
    const ReceiverChoice choice = ReceiverChoice::Parse(args.Value("receiver"), error);
    if (error.isEmpty())
        return choice;
    args.TellUsage(error);
    return std::nullopt;
}

bool CliRadio::Connect(const Arguments& args, int& exitCode) {
    const std::optional<ReceiverChoice> choice = Choice(args);
    if (!choice) {
        exitCode = ExitUsage;
        return false;
    }
    QEventLoop loop;
    QObject::connect(&m_receiver, &Receiver::StateChanged, &loop, [&] {
        if (m_receiver.GetState() != ReceiverState::Connecting)
            loop.quit();
    });
    if (choice->radio)
        m_receiver.Attach(std::make_unique<HamlibReceiver>(*choice->radio, HamlibReceiver::Lost::GivenUp));
    else
        m_receiver.Attach(choice->MakeLink(m_receiver));
    if (m_receiver.GetState() == ReceiverState::Connecting)
        loop.exec();
    if (m_receiver.GetState() == ReceiverState::Connected)
        return true;
    TellError(m_receiver.GetStateText());
    exitCode = ExitFile;
    return false;
}

bool CliRadio::WaitUntilSet() {
    const auto isDone = [this] {
        return (m_followed && *m_followed >= m_receiver.GetSerial()) || !m_refused.isEmpty() ||
               m_receiver.GetState() != ReceiverState::Connected;
    };
    QEventLoop loop;
    const auto look = [&] {
        if (isDone())
            loop.quit();
    };
    QObject::connect(&m_receiver, &Receiver::Followed, &loop, look);
    QObject::connect(&m_receiver, &Receiver::StateChanged, &loop, look);
    if (!isDone())
        loop.exec();
    for (const QString& reason : m_refused)
        TellError(reason);
    if (m_receiver.GetState() != ReceiverState::Connected)
        TellError(m_receiver.GetStateText());
    return m_refused.isEmpty() && m_receiver.GetState() == ReceiverState::Connected;
}
