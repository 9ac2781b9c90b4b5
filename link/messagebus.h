#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QTimer>

#include <deque>
#include <functional>
#include <memory>
#include <vector>

/// A bus that carries messages between seats: who publishes knows no reader. A retained message is kept by
/// the bus and given to whoever subscribes later; an empty one removes it. Topics are paths ("a/b/c"); in
/// filters "+" stands for any one part and "#", at the end, for all further ones.
///
/// Everything happens in the thread of the object, the GUI thread; messages come from the event loop. What
/// comes while LongWork runs, in whose middle no list may be touched, waits for its end and is then told in
/// its order. So does what is too much for one turn of the event loop, for the next one. While the bus is
/// offline nothing that is published is kept for later: who publishes does it again when `StateChanged` tells
/// that it is online.
class MessageBus : public QObject {
    Q_OBJECT

public:
    enum class State { Offline, Connecting, Online };
    enum class Keep { No, Retained };
    /// Whether messages wait while LongWork runs; `Never` is for handlers that touch no list.
    enum class Waits { ForWork, Never };
    using Handler = std::function<void(const QByteArray& topic, const QByteArray& payload)>;

    /// Ends the subscription with its own end. The bus may end first.
    class Subscription {
    public:
        Subscription(MessageBus& bus, quint64 id) : m_bus(&bus), m_id(id) {}
        ~Subscription();
        Subscription(const Subscription&) = delete;
        Subscription& operator=(const Subscription&) = delete;

    private:
        friend class MessageBus;
        MessageBus* m_bus;
        quint64 m_id;
    };

    explicit MessageBus(QObject* parent = nullptr);
    ~MessageBus() override;

    State GetState() const { return m_state; }
    bool IsOnline() const { return m_state == State::Online; }
    /// How often the bus has come online.
    quint64 Connections() const { return m_connections; }
    /// Why the bus is not online, for people; empty while it is, or nothing is known.
    const QString& Reason() const { return m_reason; }
    /// How the bus knows its user, as its rights are given to; never empty.
    virtual QString UserName() const = 0;

    /// Before `Connect`: what the bus publishes when the connection ends in any way.
    virtual void SetWill(const QByteArray& topic, const QByteArray& payload) = 0;
    /// Connects, and connects again whenever the connection breaks, until `Disconnect`.
    virtual void Connect() = 0;
    virtual void Disconnect() = 0;
    virtual void Publish(const QByteArray& topic, const QByteArray& payload, Keep keep = Keep::No) = 0;

    /// Has the handler called for each message that matches, retained ones first, again after each
    /// reconnection. What is said once, such as a request, is subscribed to with `Keep::No`: what somebody
    /// had retained there all the same does not come.
    [[nodiscard]] std::unique_ptr<Subscription> Subscribe(const QByteArray& filter, Handler handler,
                                                          Waits waits = Waits::ForWork,
                                                          Keep keep = Keep::Retained);
    /// Has retained messages that match sent again to who subscribed to them.
    virtual void FetchAgain(const QByteArray& filter) = 0;

    static bool Matches(QByteArrayView filter, QByteArrayView topic);

signals:
    void StateChanged();
    /// The bus does not let this user publish there. A bus may also drop such a message and say nothing.
    void Refused(const QByteArray& topic);
    /// The bus does not let this user read there; told again for each connection. A bus may also take the
    /// subscription and deliver nothing.
    void SubscriptionRefused(const QByteArray& filter);

protected:
    /// Retained messages come unless `keep` is `No`.
    virtual void startReceiving(const QByteArray& filter, Keep keep) = 0;
    /// Starts all subscriptions.
    void startReceivingAll();
    virtual void stopReceiving(const QByteArray& filter) = 0;
    /// The state holds at once; that it has changed is told in order.
    void setState(State state, const QString& reason = {});
    void deliver(const QByteArray& topic, const QByteArray& payload);
    /// Does it now or, while LongWork runs, behind what waits already.
    void inOrder(std::function<void()> act);
    bool isSubscribed(const QByteArray& filter) const;
    /// Whether a subscription matches.
    bool isWanted(QByteArrayView topic) const;

private:
    struct Entry {
        quint64 id;
        QByteArray filter;
        std::shared_ptr<Handler> handler;
        Subscription* owner;
        Waits waits;
        Keep keep;
    };

    void wait(std::function<void()> act);
    bool mayAct();
    void actInTurn(const std::function<void()>& act);
    void doWaiting();
    void unsubscribe(quint64 id);

    State m_state = State::Offline;
    quint64 m_connections = 0;
    QString m_reason;
    std::vector<Entry> m_entries;
    quint64 m_lastId = 0;
    std::deque<std::function<void()>> m_waiting;
    QTimer m_turn;      ///< runs out at the next turn of the event loop, if messages came in this one
    qint64 m_spent = 0; ///< nanoseconds in this turn
};
