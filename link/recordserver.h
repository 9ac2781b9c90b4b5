#pragma once

#include "host/base/observer.h"
#include "link/listclaim.h"
#include "link/listpublisher.h"

/// Serves a list of records, such as the detections of a search, to all seats of a site. It reads what the
/// list's value tells of its changes: a record that is appended or changed in its place costs the same in a
/// long list as in a short one; only a list that is rewritten is read as a whole. Nobody else changes it. One
/// seat serves a list, as with `ListServer`.
class RecordServer : public QObject, public IObserver {
    Q_OBJECT

public:
    using State = ListClaim::State;

    /// `records` is a value list of DetectionConventional or ExtendedDetectionConventional; it may end before
    /// the server. The seat outlives the server. Throws RGException for another value.
    RecordServer(Seat& seat, ValueBase& records, const QString& name);
    ~RecordServer() override;

    State GetState() const { return m_claim.GetState(); }
    /// Why it is refused or offline, for people.
    QString Reason() const { return m_claim.Reason(); }
    const ListPublisher& Publisher() const { return m_publisher; }
    /// Publishes what has changed without waiting for the timer.
    void Flush();

    void Update(Observable* subject, TChangeCode code) override;

signals:
    void StateChanged();

private:
    class Rows;
    template <typename Record>
    class RowsOf;

    void publishChanges();

    WeakRef<ValueBase> m_value;
    ListPublisher m_publisher;
    std::unique_ptr<Rows> m_rows;
    QTimer m_timer;
    ListClaim m_claim;
};
