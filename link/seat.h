#pragma once

#include "link/messagebus.h"
#include "link/messages.h"

#include <QTimer>

#include <map>
#include <set>

/// This program at a site: one connection, whatever lists it serves or mirrors. It tells that it is there,
/// knows who else is, and tells a fault of others once. The broker tells its end when the connection breaks.
class Seat : public QObject {
    Q_OBJECT

public:
    /// `name` is what people read. The bus is not owned and outlives the seat; the seat connects it.
    Seat(MessageBus& bus, const QString& site, const QString& name, QObject* parent = nullptr);
    ~Seat() override;

    MessageBus& Bus() { return m_bus; }
    /// "USER/SEAT", escaped as in topics.
    const QByteArray& Path() const { return m_path; }
    const QByteArray& SiteTopic() const { return m_site; }
    /// Tells this seat from others of its user.
    quint64 Nonce() const { return m_nonce; }
    /// A number for a request, which no other one of this seat has.
    quint64 NewNumber() { return ++m_lastNumber; }
    /// Seats that are there, by their paths, this one among them.
    const std::map<QByteArray, Messages::Presence>& Present() const { return m_present; }
    bool IsPresent(const QByteArray& seat) const { return m_present.count(seat) > 0; }
    /// Whether all who are there have had the time to say so since the connection stands.
    bool KnowsAll() const { return m_bus.IsOnline() && !m_patience.isActive(); }
    /// Whether the bus passes nothing on to this seat, not even what it told of itself: its user has no right
    /// at the site. Brokers do not tell.
    bool IsDeaf() const { return KnowsAll() && !IsPresent(m_path); }
    /// Whether the bus has told that its user may not read who is at the site, without which no seat works.
    bool IsRefused() const { return m_isRefused; }
    QString NameOf(const QByteArray& seat) const;

    /// Tells which entry is being edited here; id 0 for none.
    void SetEditing(const QString& list, Messages::EntryId id);
    /// Asks all seats to say that they are there. They answer within `Patience`.
    void CallAll();
    static constexpr int PatienceMilliseconds = 3000;
    /// Calls `then` when all that the bus had to send before has arrived; not at all when the connection
    /// breaks before.
    void AfterWhatIsUnderWay(std::function<void()> then);

    /// Tells the operator of a fault in messages of others, once for each topic's kind.
    void TellOnce(const QByteArray& topic, const QString& reason);

signals:
    /// Someone came, went or edits something else, or what is known of the rights here has changed.
    void PresenceChanged();
    /// A seat answered `CallAll`, or came.
    void Appeared(const QByteArray& seat);

private:
    void stateChanged();
    void comeIn();
    void answerCall();
    void publishPresence();
    void takePresence(const QByteArray& topic, const QByteArray& payload);
    void takeEcho(const QByteArray& payload);

    MessageBus& m_bus;
    QByteArray m_site;
    QByteArray m_path;
    QByteArray m_topic;
    quint64 m_nonce;
    Messages::Presence m_own;
    std::map<QByteArray, Messages::Presence> m_present;
    std::map<quint64, std::function<void()>> m_echoes;
    quint64 m_lastEcho = 0;
    quint64 m_lastNumber = 0;
    quint64 m_connection = 0; ///< of the bus, to which belongs what is known of others
    bool m_isRefused = false;
    QTimer m_patience;
    QTimer m_answer; ///< runs after an answer to a call
    bool m_isCalledAgain = false;
    std::set<QByteArray> m_told;
    std::vector<std::unique_ptr<MessageBus::Subscription>> m_subscriptions;
};
