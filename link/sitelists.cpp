#include "link/sitelists.h"

#include "link/topics.h"

#include <QPointer>

namespace {

/// A server of many small changes sends as many manifests.
constexpr int TellMilliseconds = 200;
/// What anybody who serves may publish is bounded.
constexpr size_t MostLists = 1000;

/// The part before the last one.
QString listOf(const QByteArray& topic) {
    const QByteArray list = topic.left(topic.lastIndexOf('/'));
    return Topics::Unescaped(list.mid(list.lastIndexOf('/') + 1));
}

/// Of the manifest, which is there as long as the list is; a claim goes with its server.
QByteArray serverOf(const std::optional<Messages::Manifest>& manifest,
                    const std::optional<Messages::Claim>& claim) {
    return claim ? claim->seat.toUtf8() : manifest ? manifest->server.toUtf8() : QByteArray();
}

} // namespace

SiteLists::SiteLists(Seat& seat) : m_seat(seat) {
    m_change.setSingleShot(true);
    m_change.setInterval(TellMilliseconds);
    connect(&m_change, &QTimer::timeout, this, &SiteLists::Changed);
    const QByteArray lists = seat.SiteTopic() + "/lists/+/";
    m_subscriptions.push_back(seat.Bus().Subscribe(
        lists + "claim", [this](const auto& topic, const auto& payload) { takeClaim(topic, payload); }));
    m_subscriptions.push_back(
        seat.Bus().Subscribe(lists + "manifest", [this](const auto& topic, const auto& payload) {
            takeManifest(topic, payload);
        }));
    connect(&seat, &Seat::PresenceChanged, this, &SiteLists::tellSoon);
    connect(&seat.Bus(), &MessageBus::StateChanged, this, &SiteLists::begin);
    begin();
}

/// What went while the bus was offline is not told: what is there comes anew.
void SiteLists::begin() {
    m_hasRetained = false;
    m_lists.clear();
    m_seat.AfterWhatIsUnderWay([self = QPointer(this)] {
        if (!self)
            return;
        self->m_hasRetained = true;
        self->tellSoon();
    });
    tellSoon();
}

void SiteLists::tellSoon() {
    if (!m_change.isActive())
        m_change.start();
}

/// The list that a topic belongs to, new if need be; null when there are too many.
SiteLists::Known* SiteLists::known(const QByteArray& topic) {
    const QString name = listOf(topic);
    if (m_lists.size() >= MostLists && m_lists.count(name) == 0)
        return nullptr;
    tellSoon();
    return &m_lists[name];
}

void SiteLists::takeClaim(const QByteArray& topic, const QByteArray& payload) {
    Known* const list = known(topic);
    if (!list)
        return;
    list->claim = Messages::Claim::Decode(payload);
    if (list->claim && list->claim->seat.isEmpty())
        list->claim.reset();
    if (list->claim)
        emit Claimed(listOf(topic), *list->claim);
}

void SiteLists::takeManifest(const QByteArray& topic, const QByteArray& payload) {
    Known* const list = known(topic);
    if (!list)
        return;
    list->isOtherVersion = Messages::IsOtherVersion(payload);
    list->manifest = Messages::Manifest::Decode(payload);
}

SiteLists::State SiteLists::stateOf(const Known& list) const {
    const bool isThere = m_seat.IsPresent(serverOf(list.manifest, list.claim));
    if (list.isOtherVersion)
        return State::OtherVersion;
    if (isThere)
        return list.manifest ? State::Served : State::Beginning;
    return m_seat.KnowsAll() ? State::ServerGone : State::Unknown;
}

std::vector<SiteLists::List> SiteLists::Get() const {
    std::vector<List> all;
    for (const auto& [name, list] : m_lists) {
        const QByteArray server = serverOf(list.manifest, list.claim);
        const State state = stateOf(list);
        // A seat that has claimed a list and gone before it published any of it has left nothing.
        if (!list.manifest && !list.isOtherVersion && state != State::Beginning)
            continue;
        all.push_back({name, list.manifest ? list.manifest->count : 0,
                       server.isEmpty() ? QString() : m_seat.NameOf(server),
                       Topics::Unescaped(server.left(server.indexOf('/'))), state});
    }
    return all;
}

bool SiteLists::IsComplete() const {
    if (!m_seat.Bus().IsOnline() || !m_hasRetained)
        return false;
    const auto isOpen = [this](const auto& list) { return stateOf(list.second) == State::Unknown; };
    return m_seat.KnowsAll() || std::none_of(m_lists.begin(), m_lists.end(), isOpen);
}

QString SiteLists::List::ServerText() const {
    return server == user ? server : QStringLiteral("%1 (%2)").arg(server, user);
}

QString SiteLists::StateText(State state) {
    switch (state) {
    case State::Unknown:
        return tr("waits");
    case State::Served:
        return tr("served");
    case State::ServerGone:
        return tr("server gone");
    case State::Beginning:
        return tr("begins");
    case State::OtherVersion:
        return tr("other version");
    }
    return {};
}
