#pragma once

#include "host/valuetree/valueptr.h"
#include "link/entrychanges.h"
#include "link/listclaim.h"
#include "link/listjournal.h"
#include "link/listpublisher.h"
#include "link/sharedlist.h"

#include <QRandomGenerator>

#include <deque>

class ByContents;

/// Serves a list of this program to all seats of a site: publishes the entries under its node and what
/// becomes of them, and does what clients ask for. It alone changes the list; undo, files and views of this
/// program go on as ever. One seat serves a list: where another one does already, this one is refused.
class ListServer : public QObject, public IObserver {
    Q_OBJECT

public:
    using State = ListClaim::State;

    /// The seat and the list outlive the server. Files that clients ask for lie in `listDirectory`; empty for
    /// none. The journal, which may be null, keeps the entries' identities and what clients changed.
    ListServer(Seat& seat, const SharedList& list, const QString& listDirectory = {},
               std::unique_ptr<ListJournal> journal = nullptr);
    ~ListServer() override;

    State GetState() const { return m_claim.GetState(); }
    /// Why it is refused or offline, for people.
    QString Reason() const { return m_claim.Reason(); }
    const ListPublisher& Publisher() const { return m_publisher; }
    /// Publishes what has changed without waiting for the timer.
    void Flush();
    /// The list has been written to its file: the journal begins anew.
    void WasSaved();
    /// Whether the journal has changes that the list's file may lack.
    bool HasUnsaved() const;
    /// The id of an entry that has been published; 0 for another node.
    Messages::EntryId IdOf(const Node& entry) const;

    void Update(Observable* subject, TChangeCode code) override;

signals:
    void StateChanged();
    /// A client's changes are in the list, and in the journal if there is one.
    void Edited();

private:
    using Step = ListPublisher::Step;
    struct Waiting {
        QByteArray seat;
        Messages::Answer answer;
        quint32 added; ///< serial of an entry whose id is still to be told
    };

    void adopt();
    void claimChanged();
    std::vector<Step> stepsOf(const std::vector<quint32>& serials);
    bool noteStep(Node& entry, ByContents& vanished, std::vector<Step>& steps);
    void publishChanges(const std::vector<quint32>& serials);
    void keep(const std::vector<Step>& steps);
    void publishFile();

    void takeRequest(const QByteArray& topic, const QByteArray& payload);
    Messages::Answer perform(const Messages::Request& request, quint32& added);
    /// Each tells why it is refused; empty when it is done.
    Messages::Answer change(const Messages::Request& request);
    QString set(const Messages::Request& request, Node& entry);
    QString add(const Messages::Request& request, quint32& added);
    QString load(const QString& name);
    const EntryLayout* layoutOf(const Messages::Request& request, std::optional<EntryLayout>& own) const;
    bool isKnown(const QByteArray& seat, quint64 number);
    void tell(const QByteArray& seat, const Messages::Answer& answer);
    void answer();

    Seat& m_seat;
    SharedList m_list;
    QString m_listDirectory;
    ListPublisher m_publisher;
    std::unique_ptr<ListJournal> m_journal;
    EntryChanges m_changes;
    QTimer m_timer;
    ListClaim m_claim;

    ValueObservingPtr<Value<bool>> m_fileLoaded;
    ValueObservingPtr<Value<QString>> m_fileName;
    /// Begins anywhere, so that it is not that of an earlier server.
    quint64 m_announced = 1 + QRandomGenerator::global()->bounded(1u << 30);

    /// The last ones, by seat and number; none while an answer waits.
    using Answered = std::map<std::pair<QByteArray, quint64>, std::optional<Messages::Answer>>;
    Answered m_answered;
    std::deque<Answered::iterator> m_answeredOrder; ///< by age
    std::vector<Waiting> m_answers;                 ///< that wait for the change being published
    bool m_hasEdits = false;                        ///< of clients
    std::unique_ptr<MessageBus::Subscription> m_requests;
};
