#pragma once

#include "link/seat.h"

/// Which of the seats of a site serves a list: one alone. Each that wants to publishes a claim, which the bus
/// retains; as all seats see claims in the same order, the first one holds, for as long as its seat is there.
/// Where another one serves the list already, this one is refused, for good; when the connection breaks, it
/// claims anew by itself. A seat that stood still for so long that another one took the list over gives way
/// to that one.
class ListClaim : public QObject {
    Q_OBJECT

public:
    enum class State {
        Offline,
        Claiming, ///< looks whether another one serves the list
        Serving,
        Refused, ///< another one does, or this user may not
    };

    /// The seat outlives the claim. `Start` begins.
    ListClaim(Seat& seat, const QByteArray& listTopic);
    /// Gives the list up to others.
    ~ListClaim() override;

    void Start();
    State GetState() const { return m_state; }
    bool IsServing() const { return m_state == State::Serving; }
    /// Why it is refused or offline, or what it waits for, for people.
    QString Reason() const;
    /// What stood at the bus when the list was claimed.
    const std::optional<Messages::Manifest>& AtBroker() const { return m_manifest; }

signals:
    void StateChanged();
    /// The list is this seat's, which publishes now what the bus lacks; the state is `Serving` afterwards.
    void Won();
    /// Another one, which has given way, has published something of the list.
    void Overwritten();

private:
    void setState(State state, const QString& reason = {});
    void busChanged();
    void look();
    void publish();
    void decide();
    void take(const QByteArray& payload);
    void takeManifest(const QByteArray& payload);
    void contest();
    void refuse(const QByteArray& holder);
    void refuseReading();
    void lookAtRights();
    bool isOwn() const { return m_latest && m_latest->nonce == m_seat.Nonce(); }

    Seat& m_seat;
    QByteArray m_topic; ///< of the list
    State m_state = State::Offline;
    QString m_reason;
    std::optional<Messages::Claim> m_latest; ///< at the bus
    std::optional<Messages::Manifest> m_manifest;
    QByteArray m_rival; ///< whose claim came before ours
    bool m_sawOwn = false;
    std::optional<quint64> m_contender; ///< nonce of another one that claimed what is served here
    QTimer m_repair;                    ///< runs while such a one may still publish something
    QTimer m_patience;                  ///< for the holder of an old claim to say that it is there
    std::vector<std::unique_ptr<MessageBus::Subscription>> m_subscriptions;
};
