#include "workstation/shareprobe.h"

#include "link/messages.h"
#include "link/topics.h"
#include "workstation/sharekinds.h"

namespace {

QString titleOf(const QString& list) {
    const ShareKind* const kind = FindShareKind(list);
    return kind ? kind->Title() : list;
}

} // namespace

ShareProbe::ShareProbe(std::unique_ptr<MessageBus> bus, const QString& site) : m_bus(std::move(bus)) {
    const QByteArray topic = Topics::Site(site);
    m_subscriptions.push_back(
        m_bus->Subscribe(topic + "/seats/+/+", [this](const QByteArray& seat, const QByteArray& payload) {
            const auto presence = Messages::Presence::Decode(payload);
            if (!presence)
                return;
            m_seats[seat] = presence->name;
            emit Changed();
        }));
    m_subscriptions.push_back(
        m_bus->Subscribe(topic + "/lists/+/claim", [this](const QByteArray& claimed, const auto& payload) {
            const auto claim = Messages::Claim::Decode(payload);
            if (!claim || claim->seat.isEmpty())
                return;
            const QByteArray list = claimed.left(claimed.lastIndexOf('/'));
            m_lists[Topics::Unescaped(list.mid(list.lastIndexOf('/') + 1))] =
                claim->seat.section(QLatin1Char('/'), 0, 0);
            emit Changed();
        }));
    connect(m_bus.get(), &MessageBus::StateChanged, this, [this, topic] {
        if (m_bus->IsOnline())
            m_bus->Publish(topic + "/call", "?");
        emit Changed();
    });
    m_bus->Connect();
}

ShareProbe::~ShareProbe() = default;

QString ShareProbe::Answer() const {
    if (!m_bus->IsOnline())
        return m_bus->Reason().isEmpty() ? tr("Connecting...") : tr("Not connected: %1").arg(m_bus->Reason());
    QStringList lists;
    for (const auto& [list, server] : m_lists)
        lists << tr("%1 by %2").arg(titleOf(list), server);
    QStringList seats;
    for (const auto& [topic, name] : m_seats)
        seats << name;
    QString text = tr("The broker lets %1 in.").arg(m_bus->UserName());
    text += QLatin1Char(' ') + (lists.isEmpty() ? tr("No list is served there.")
                                                : tr("Served: %1.").arg(lists.join(QStringLiteral(", "))));
    if (!seats.isEmpty())
        text += QLatin1Char(' ') + tr("There: %1.").arg(seats.join(QStringLiteral(", ")));
    return text;
}
