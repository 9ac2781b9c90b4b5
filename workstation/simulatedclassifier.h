#pragma once

#include "host/valuetree/node.h"
#include "receiver/receiversettings.h"

#include <QObject>
#include <QTimer>

#include <deque>
#include <random>

class Node;
class QMenu;

/// A classifier without a radio: it adds a result for each signal that it meets, not locked at first. Of some
/// it knows more after a while: it locks to them, and of most of these it tells a confidence. The results are
/// entries under a node of the tree. The same steps from the same seed give the same results.
class SimulatedClassifier : public QObject {
    Q_OBJECT

public:
    /// When there are this many results it stops.
    static constexpr size_t MaxResults = 200000;

    /// The node outlives the classifier.
    SimulatedClassifier(ReceiverKind kind, Node& results, unsigned seed = 1);

    bool IsRunning() const { return m_timer.isActive(); }
    /// How many results it adds, two a second unless told.
    void SetRate(double resultsPerSecond) { m_rate = resultsPerSecond; }
    /// Does what is due at a time in microseconds since 1970-01-01 UTC that does not go back.
    void Step(qint64 now);
    /// Adds the action that starts and stops the classifier.
    void AddTo(QMenu& menu);

public slots:
    void SetRunning(bool running);

signals:
    void RunningChanged(bool running);

private:
    /// A result that is still being classified.
    struct Pending {
        WeakRef<Node> entry;
        qint64 due; ///< µs
    };

    void add(qint64 now);
    void classify(Node& entry, qint64 now);
    int random(int from, int to);

    ReceiverKind m_kind;
    Node& m_results;
    std::mt19937 m_random;
    QTimer m_timer;
    double m_rate = 2;
    double m_owed = 0;     ///< results to add, the begun one included
    qint64 m_lastStep = 0; ///< 0: none since the start
    std::deque<Pending> m_pending;
};
