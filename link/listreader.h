#pragma once

#include "link/listcopy.h"
#include "link/seat.h"

/// Reads a list that another seat serves: subscribes to what it needs, and asks again for what does not come.
class ListReader : public QObject {
    Q_OBJECT

public:
    enum class State {
        Offline,
        Waiting,      ///< nobody has ever served the list
        Loading,      ///< some of it is missing
        Whole,        ///< all is there, and the server is, too
        ServerGone,   ///< all is there, as the server left it
        OtherVersion, ///< the server speaks another major version
        Refused,      ///< the broker does not let this user read the list; tried anew when it is back
    };

    /// The seat outlives the reader.
    ListReader(Seat& seat, const QString& list, QObject* parent = nullptr);

    State GetState() const { return m_state; }
    /// In words for people: how far it is, what is wrong.
    QString StateText() const;
    const ListCopy& Copy() const { return m_copy; }
    const QByteArray& Topic() const { return m_topic; }
    Seat& GetSeat() { return m_seat; }
    const std::optional<Messages::FileState>& File() const { return m_file; }

signals:
    /// The state or its text has changed.
    void StateChanged();
    /// The rows have changed, and are whole.
    void RowsChanged(const ListCopy::Changed& changed);
    void FileChanged();

private:
    using Handler = void (ListReader::*)(const QByteArray& topic, const QByteArray& payload);

    void subscribe(const char* below, Handler handler);
    void takeManifest(const QByteArray& topic, const QByteArray& payload);
    void takeLayout(const QByteArray& topic, const QByteArray& payload);
    void takeChunk(const QByteArray& topic, const QByteArray& payload);
    void takeDelta(const QByteArray& topic, const QByteArray& payload);
    void takeFile(const QByteArray& topic, const QByteArray& payload);
    void took(const QByteArray& topic, const QByteArray& payload, ListCopy::Taken taken);
    void update();
    State stateNow() const;
    QString waitingText() const;
    void askAgain();

    Seat& m_seat;
    QByteArray m_topic;
    ListCopy m_copy;
    State m_state = State::Offline;
    bool m_isOtherVersion = false;
    bool m_isRefused = false;
    QString m_text;
    std::optional<Messages::FileState> m_file;
    QTimer m_stall;
    std::vector<std::unique_ptr<MessageBus::Subscription>> m_subscriptions;
    std::unique_ptr<MessageBus::Subscription> m_chunks; ///< while chunks are wanted
};
