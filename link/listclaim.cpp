#include "link/listclaim.h"

#include <QPointer>

ListClaim::ListClaim(Seat& seat, const QByteArray& listTopic) : m_seat(seat), m_topic(listTopic) {
    m_patience.setSingleShot(true);
    m_patience.setInterval(Seat::PatienceMilliseconds);
    connect(&m_patience, &QTimer::timeout, this, &ListClaim::publish);
    m_repair.setSingleShot(true);
    m_repair.setInterval(Seat::PatienceMilliseconds);
    connect(&m_repair, &QTimer::timeout, this, &ListClaim::Overwritten);
}

ListClaim::~ListClaim() {
    if (IsServing())
        m_seat.Bus().Publish(m_topic + "/claim", {}, MessageBus::Keep::Retained);
}

void ListClaim::Start() {
    MessageBus& bus = m_seat.Bus();
    m_subscriptions.push_back(
        bus.Subscribe(m_topic + "/claim", [this](const auto&, const auto& payload) { take(payload); }));
    m_subscriptions.push_back(bus.Subscribe(
        m_topic + "/manifest", [this](const auto&, const auto& payload) { takeManifest(payload); }));
    connect(&bus, &MessageBus::StateChanged, this, &ListClaim::busChanged);
    connect(&m_seat, &Seat::Appeared, this, [this](const QByteArray& who) {
        if (m_patience.isActive() && m_latest && m_latest->seat.toUtf8() == who)
            refuse(who);
    });
    connect(&m_seat, &Seat::PresenceChanged, this, &ListClaim::lookAtRights);
    connect(&bus, &MessageBus::Refused, this, [this](const QByteArray& topic) {
        if (topic == m_topic + "/claim")
            setState(State::Refused, tr("the broker does not let this user serve the list"));
    });
    connect(&bus, &MessageBus::SubscriptionRefused, this, [this](const QByteArray& filter) {
        if (filter.startsWith(m_topic))
            refuseReading();
    });
    busChanged();
}

void ListClaim::setState(State state, const QString& reason) {
    if (state != State::Claiming)
        m_patience.stop();
    if (state != State::Serving)
        m_repair.stop();
    if (m_state == state && m_reason == reason)
        return;
    m_state = state;
    m_reason = reason;
    emit StateChanged();
}

QString ListClaim::Reason() const {
    return m_state == State::Offline ? m_seat.Bus().Reason() : m_reason;
}

void ListClaim::refuse(const QByteArray& holder) {
    setState(State::Refused, tr("%1 serves this list already").arg(m_seat.NameOf(holder)));
}

void ListClaim::refuseReading() {
    setState(State::Refused, tr("the broker does not let this user read what a server needs"));
}

void ListClaim::lookAtRights() {
    if (m_seat.IsRefused())
        refuseReading();
    else if (m_state == State::Claiming && m_seat.IsDeaf())
        setState(State::Claiming, tr("the broker passes nothing of this site on to this user"));
}

void ListClaim::busChanged() {
    if (m_state == State::Refused)
        return;
    m_patience.stop();
    m_contender.reset();
    if (!m_seat.Bus().IsOnline())
        return setState(State::Offline);
    m_latest.reset();
    m_manifest.reset();
    setState(State::Claiming);
    m_seat.AfterWhatIsUnderWay([self = QPointer(this)] {
        if (self)
            self->look();
    });
    lookAtRights();
}

void ListClaim::take(const QByteArray& payload) {
    m_latest = Messages::Claim::Decode(payload);
    if (!m_latest || m_latest->seat.isEmpty())
        return;
    if (isOwn())
        m_sawOwn = true;
    else if (IsServing())
        contest();
    else if (!m_sawOwn)
        m_rival = m_latest->seat.toUtf8();
}

/// Whoever claims later is the second, and hears so by the claim of this one. Only one that serves the list
/// already, since this one did not answer it, claims again.
void ListClaim::contest() {
    if (m_contender == m_latest->nonce)
        return refuse(m_latest->seat.toUtf8());
    m_contender = m_latest->nonce;
    m_repair.start();
    publish();
}

void ListClaim::takeManifest(const QByteArray& payload) {
    const auto manifest = Messages::Manifest::Decode(payload);
    if (m_state == State::Claiming)
        m_manifest = manifest;
    else if (IsServing() && manifest && manifest->server.toUtf8() != m_seat.Path())
        m_repair.start();
}

/// A claim that stands at the bus may be that of a seat which has gone: it is asked.
void ListClaim::look() {
    if (m_state != State::Claiming)
        return;
    m_rival.clear();
    m_sawOwn = false;
    if (!m_latest || m_latest->seat.isEmpty() || isOwn())
        return publish();
    m_patience.start();
    m_seat.CallAll();
}

void ListClaim::publish() {
    m_seat.Bus().Publish(m_topic + "/claim",
                         Messages::Claim{QString::fromUtf8(m_seat.Path()), m_seat.Nonce()}.Encode(),
                         MessageBus::Keep::Retained);
    if (m_state != State::Claiming)
        return;
    m_seat.AfterWhatIsUnderWay([self = QPointer(this)] {
        if (self)
            self->decide();
    });
}

void ListClaim::decide() {
    if (m_state != State::Claiming)
        return;
    if (!m_rival.isEmpty())
        return refuse(m_rival);
    if (!m_sawOwn)
        return setState(State::Refused, tr("the broker does not let this user serve the list"));
    emit Won();
    setState(State::Serving);
    if (!isOwn())
        publish(); // the second one's stands there
}
