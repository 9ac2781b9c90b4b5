#pragma once

#include "link/seat.h"

/// The lists of a site, as those who serve them tell of them: what a seat may choose from. Lists whose server
/// has gone stay, with what it left.
class SiteLists : public QObject {
    Q_OBJECT

public:
    enum class State {
        Unknown,      ///< its server has not said yet that it is there
        Served,       ///< all of it is at the bus, and its server is there
        ServerGone,   ///< all of it is at the bus, as the server left it
        Beginning,    ///< its server is there and has published nothing yet
        OtherVersion, ///< the server speaks another major version
    };
    struct List {
        QString name;
        quint64 entries = 0; ///< nothing is known of them while it begins, and of another version
        QString server;      ///< as people read him, as the next one empty when he is not known
        QString user;        ///< by whose rights he serves
        State state = State::Unknown;

        /// Server and user, where that is another name.
        QString ServerText() const;
        bool HasCount() const { return state != State::Beginning && state != State::OtherVersion; }
    };

    /// The seat outlives this.
    explicit SiteLists(Seat& seat);

    /// By name.
    std::vector<List> Get() const;
    /// Whether all is told that the bus had when the connection came up, and every server is known to be
    /// there or to have gone. False while the bus is offline.
    bool IsComplete() const;
    /// For people.
    static QString StateText(State state);

signals:
    /// Lists came, went or changed, or more is known of their servers; many changes are told once.
    void Changed();
    /// A seat has said that it serves a list.
    void Claimed(const QString& list, const Messages::Claim& claim);

private:
    struct Known {
        std::optional<Messages::Manifest> manifest;
        std::optional<Messages::Claim> claim; ///< null when nobody claims it
        bool isOtherVersion = false;
    };

    void begin();
    Known* known(const QByteArray& topic);
    void takeClaim(const QByteArray& topic, const QByteArray& payload);
    void takeManifest(const QByteArray& topic, const QByteArray& payload);
    State stateOf(const Known& list) const;
    void tellSoon();

    Seat& m_seat;
    std::map<QString, Known> m_lists;
    bool m_hasRetained = false;
    QTimer m_change;
    std::vector<std::unique_ptr<MessageBus::Subscription>> m_subscriptions;
};
