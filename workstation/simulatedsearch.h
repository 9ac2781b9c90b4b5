#pragma once

#include "host/valuetree/detection.h"
#include "receiver/receiversettings.h"

#include <QObject>
#include <QTimer>

#include <functional>
#include <map>
#include <random>

class QMenu;

/// A search without a radio: emitters of the receiver's band come on air and go, and each time one does, the
/// lists of plain and of classified detections get a record, which follows its level while it is active. The
/// classifier answers after a while, the direction finder later still. The lists are values of the tree; old
/// records go when there are very many. The same steps from the same seed give the same records.
class SimulatedSearch : public QObject {
    Q_OBJECT

public:
    /// So many there are at most, of each kind, but for those of files; then the older half goes.
    static constexpr size_t MaxRecords = 100000;
    static constexpr char DetectionsPath[] = "/Search/Detections";
    static constexpr char ClassifiedPath[] = "/Search/ClassifiedDetections";
    /// Frequencies (Hz) of the emissions that are marked in the lists.
    static constexpr char MarkedPath[] = "/Search/MarkedEmissions";

    /// The lists are empty then.
    explicit SimulatedSearch(ReceiverKind kind, unsigned seed = 1);

    bool IsRunning() const { return m_timer.isActive(); }
    /// One look at the band, at a time in microseconds since 1970-01-01 UTC that does not go back.
    void Step(qint64 now);
    /// All the steps of a span of time (µs) that ends at `end`.
    void Simulate(qint64 span, qint64 end);
    /// Appends detections of somebody else's to the plain ones, and numbers them. `source` is whose they are.
    void Add(std::list<DetectionConventional>&& found, const QString& source = QString());
    /// The same for one that its maker goes on with; the answer is its number.
    unsigned Begin(DetectionConventional record, const QString& source);
    /// Changes a plain detection; false when it has gone.
    bool Amend(unsigned id, const std::function<void(DetectionConventional&)>& change);
    /// Whose a detection is, by its number: the search's, or the source that it was added with.
    QString SourceOf(unsigned id) const;
    /// Identifiers of the lists in the store, for steps of undo.
    void SetListIds(int plain, int classified) { m_listIds = {plain, classified}; }
    /// Empties both lists, as a step of the operator's. What is on air is found anew.
    void Clear();
    /// Adds the action that starts and stops the search.
    void AddTo(QMenu& menu);

public slots:
    /// Stopped, the search ends what is active.
    void SetRunning(bool running);

signals:
    void RunningChanged(bool running);

private:
    /// A transmitter, with what the classifier and the direction finder would find.
    struct Emitter {
        double frequency; ///< Hz
        double bandwidth; ///< Hz
        double azimuth;   ///< degrees
        double longitude;
        double latitude;
        short level;   ///< dBµV
        size_t system; ///< of the kind's table
        bool onAir = false;
    };
    /// An active detection.
    struct Active {
        size_t emitter;
        quint64 place; ///< in the list of plain detections
        quint64 classifiedPlace;
        const DetectionConventional* record;
        const ExtendedDetectionConventional* classified;
        qint64 start; ///< times in µs
        qint64 end;
        int results = 0; ///< how many of classification and direction finding are there
    };

    void makeEmitters();
    void begin(qint64 now);
    /// False when it ended.
    bool follow(Active& active, qint64 now);
    template <typename Change>
    void edit(const Active& active, Change change);
    void classify(const Active& active);
    void locate(const Active& active);
    void dropOldest();
    void dropOldestPlain();
    void noteSource(const QString& source);
    double random(double from, double to);

    ReceiverKind m_kind;
    std::mt19937 m_random;
    QTimer m_timer;
    std::vector<Emitter> m_emitters;
    std::vector<Active> m_active;
    ValueList<DetectionConventional>& m_detections;
    ValueList<ExtendedDetectionConventional>& m_classified;
    std::map<unsigned, QString> m_sources; ///< by the number of the first detection in a row
    unsigned m_lastId = 0;
    std::pair<int, int> m_listIds; ///< plain, classified
    qint64 m_lastStep = 0;
};
