#pragma once

#include "host/base/observer.h"
#include "host/valuetree/detection.h"

#include <QObject>

#include <memory>

class PixStateVector;

/// Where a list of detections stands in the tree; nothing need be there.
struct DetectionPaths {
    QString emissions; ///< the list of records
    QString marked;    ///< the list of marked emissions: their frequencies in Hz
};

/// Puts the host's lists of conventional-search detections into the frequency store. The records stay in list
/// values of the host's; the handler knows where. Paths that are set are those of the list registered last:
/// its views and bar lines that are made later read what they name then. They are the next list's, too, and
/// once that is registered, the list before is back at the paths that it was registered with. One instance
/// exists per process.
class DetConvListHandler : public QObject, public IObserver {
    Q_OBJECT

public:
    static DetConvListHandler* Instance();
    static void DeleteInstance();

    /// Whether the records carry classifier results; before `AddToFreqStore`.
    void Init(bool extended) { m_extended = extended; }
    void setEmissionListPath(const QString& path) { m_paths->emissions = path; }
    QString getEmissionListPath() const { return m_paths->emissions; }
    void setEmissionMarkedPath(const QString& path) { m_paths->marked = path; }
    QString getEmissionMarkedPath() const { return m_paths->marked; }
    const DetectionPaths& GetPaths() const { return *m_paths; }

    /// Registers the list and returns its identifier. Plain detections go under `name`; extended ones have a
    /// name of their own, and `vuhf` tells which receiver's classifier made the results.
    int AddToFreqStore(bool vuhf, const QString& name);

    void Update(Observable*, TChangeCode) override {}

private:
    DetConvListHandler() = default;
    std::shared_ptr<const DetectionPaths> pathsOfNewList();

    static DetConvListHandler* m_pInstance;

    int m_listId = 0; ///< -1 while a registration is under way
    /// As set; shared with the factories of the list registered last.
    std::shared_ptr<DetectionPaths> m_paths = std::make_shared<DetectionPaths>();
    DetectionPaths m_registeredPaths; ///< what that list was registered with
    bool m_extended = false;
};

/// Makes the frequency-bar line of a list of detections; the caller owns it.
template <typename Record>
PixStateVector* MakeDetectionLine(const DetectionPaths& paths);
extern template PixStateVector* MakeDetectionLine<DetectionConventional>(const DetectionPaths& paths);
extern template PixStateVector* MakeDetectionLine<ExtendedDetectionConventional>(const DetectionPaths& paths);
/// The same for plain detections over the handler's paths.
PixStateVector* CreateSearchMCPixStateVector();
