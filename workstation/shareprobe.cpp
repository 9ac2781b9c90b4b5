#include "workstation/shareprobe.h"

#include "workstation/sharekinds.h"

#include <QLocale>

ShareProbe::ShareProbe(std::unique_ptr<MessageBus> bus, const QString& site)
    : m_bus(std::move(bus)), m_seat(*m_bus, site, m_bus->UserName()), m_lists(m_seat) {
    connect(m_bus.get(), &MessageBus::StateChanged, this, &ShareProbe::Changed);
    connect(&m_lists, &SiteLists::Changed, this, &ShareProbe::Changed);
}

ShareProbe::~ShareProbe() = default;

QString ShareProbe::listsText() const {
    QStringList served;
    QStringList others;
    for (const SiteLists::List& list : m_lists.Get()) {
        const QString title = ShareKind::TitleOf(list.name);
        if (list.state == SiteLists::State::Served)
            served << tr("%1 by %2 (%3)").arg(title, list.ServerText(), QLocale().toString(list.entries));
        else
            others << tr("%1 (%2)").arg(title, SiteLists::StateText(list.state));
    }
    QStringList texts;
    if (!served.isEmpty())
        texts << tr("Served: %1.").arg(served.join(QStringLiteral(", ")));
    else if (m_lists.IsComplete())
        texts << tr("No list is served there.");
    if (!others.isEmpty())
        texts << tr("Not served: %1.").arg(others.join(QStringLiteral(", ")));
    return texts.join(QLatin1Char(' '));
}

QString ShareProbe::Answer() const {
    if (!m_bus->IsOnline())
        return m_bus->Reason().isEmpty() ? tr("Connecting...") : tr("Not connected: %1").arg(m_bus->Reason());
    QStringList texts{tr("The broker lets %1 in.").arg(m_bus->UserName())};
    if (m_seat.IsDeaf() || m_seat.IsRefused())
        return texts.first() + QLatin1Char(' ') +
               tr("But it passes nothing of this site on to this user: see its access list.");
    texts << listsText();
    QStringList seats;
    for (const auto& [path, presence] : m_seat.Present()) {
        if (path != m_seat.Path())
            seats << presence.name;
    }
    if (!seats.isEmpty())
        texts << tr("There: %1.").arg(seats.join(QStringLiteral(", ")));
    texts.removeAll(QString());
    return texts.join(QLatin1Char(' '));
}
