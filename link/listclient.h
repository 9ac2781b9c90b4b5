#pragma once

#include "host/valuetree/valueptr.h"
#include "link/entrychanges.h"
#include "link/listreader.h"
#include "link/mirror.h"

/// Lets a list that another seat serves be read and edited here: mirrors it into the tree, where all that
/// follows a list follows this one. What is changed in the tree, by an operator, an undo or a plug-in, is
/// asked of the server; what that refuses is put back as the server has it, and told. The list changes only
/// from one whole state to another; while the server is away the last one stays.
class ListClient : public QObject, public IObserver {
    Q_OBJECT

public:
    /// What the server did not take: the entry as it was wanted here, and as it is, value by value.
    struct Refusal {
        struct Field {
            QString name, wanted, present;
        };
        QString reason;
        WeakRef<Node> entry;       ///< null when there is none any more
        std::vector<Field> fields; ///< those that differ; all, with nothing present, when there is no entry
    };

    /// The reader and the list outlive the client. The list's node is emptied when the server's list comes.
    ListClient(ListReader& reader, const SharedList& list);

    ListReader& Reader() { return m_reader; }
    const SharedList& List() const { return m_list; }
    /// Why entries cannot be changed here; empty when they can.
    QString WhyNoEditing() const;
    /// Changes that the server has not answered yet.
    size_t Pending() const {
        return m_changing.size() + m_adding.size() + m_removing.size() + (m_loading ? 1 : 0);
    }
    /// The id of a mirrored entry; 0 for another node.
    Messages::EntryId IdOf(const Node& entry) const;
    /// The mirrored entry; null when it is not here.
    Node* EntryOf(Messages::EntryId id) const { return m_mirror.EntryOf(id); }
    /// Names of other seats that edit this entry.
    QStringList EditorsOf(const Node& entry) const;
    /// Tells the others which entry is being edited here; null for none.
    void SetEditing(const Node* entry);
    /// Asks for what has been changed without waiting for the timer.
    void Flush();

    void Update(Observable* subject, TChangeCode code) override;

signals:
    /// `WhyNoEditing` may answer otherwise.
    void RightsChanged();
    void Refused(const ListClient::Refusal& refusal);
    /// The server has loaded a file, and its list is here.
    void FileLoaded();

private:
    using EntryId = Messages::EntryId;
    struct Asked {
        Messages::Request request;
        QByteArray before;      ///< contents that it changes
        quint64 generation = 0; ///< of the list on whose revision it is
        bool isAccepted = false;
        EntryId id = 0; ///< of an added entry, once it is known
    };

    // From the server.
    void takeRows(const ListCopy::Changed& changed);
    void showRows(const ListCopy::Changed& changed);
    void takeRow(EntryId id);
    void takeNewRow(EntryId id, const Messages::Row& row);
    void takeFile();
    void setFileValues();

    // To the server.
    void noteLocal(quint32 serial);
    void noteChanged(EntryId id, Node& entry);
    void noteAdded(Node& entry);
    void noteRemoved(EntryId id);
    Asked send(Messages::Request request, const QByteArray& before = {});
    void sendAgain(Asked& asked, const Messages::Row& row);
    void publish(const Messages::Request& request);
    static std::vector<std::pair<QString, QString>> textsOf(const Node& entry);
    bool isAsAsked(const Node& entry, const Messages::Request& request) const;
    void putContents(const Node& entry, quint32 alike, Messages::Request& request) const;
    void takeAnswer(const QByteArray& payload);
    void takeVerdict(const Messages::Answer& answer);
    void settleChange(EntryId id);
    void settleAdded(quint32 serial, EntryId id);
    void refuseChange(EntryId id, const QString& reason);
    void refuseAdded(quint32 serial, const QString& reason);
    void refuseRemoved(EntryId id, const QString& reason);
    Node* takeBack(EntryId id);
    void refuseLoading(const QString& reason);
    void refuseAll(const QString& reason);
    void askAgain();
    void retry();
    void sayHello();
    void dropAddedThatAreHere();
    void stateChanged();
    void takeRefusedTopic(const QByteArray& topic);

    ListReader& m_reader;
    SharedList m_list;
    EntryChanges m_changes;
    Mirror m_mirror;
    QTimer m_timer;
    QTimer m_retry;
    QByteArray m_requestTopic;

    /// Requests that are repeated so often without any answer are given up.
    static constexpr int MostUnanswered = 3;

    quint64 m_helloNumber = 0;
    std::optional<Messages::Request> m_loading; ///< a file, until that is answered
    std::map<EntryId, Asked> m_changing;
    std::map<EntryId, Asked> m_removing;
    std::map<quint32, Asked> m_adding; ///< by serial
    bool m_mayEdit = false;
    bool m_isReadOnly = false;
    int m_unanswered = 0; ///< turns of `m_retry` since the last answer

    ValueObservingPtr<Value<bool>> m_fileLoaded;
    ValueObservingPtr<Value<QString>> m_fileName;
    quint64 m_announced = 0;
    std::unique_ptr<MessageBus::Subscription> m_answers;
};
