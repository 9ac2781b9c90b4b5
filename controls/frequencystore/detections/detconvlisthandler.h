#pragma once

#include "host/base/observer.h"

#include <QObject>

class FrequencyStoreListView;
class PixStateVector;
class QWidget;

/// Puts the host's list of conventional-search detections into the frequency store. The records stay in a
/// list value of the host's; the handler knows the paths of that list and of the list of marked emissions,
/// and the views and bar lines that are made later read what the paths name then. One instance exists per
/// process.
class DetConvListHandler : public QObject, public IObserver {
    Q_OBJECT

public:
    static DetConvListHandler* Instance();
    static void DeleteInstance();

    /// Whether the records carry classifier results; before `AddToFreqStore`.
    void Init(bool extended) { m_extended = extended; }
    /// Path of the list of records.
    void setEmissionListPath(const QString& path) { m_emissionListPath = path; }
    QString getEmissionListPath() const { return m_emissionListPath; }
    /// Path of the list of marked emissions: their frequencies in Hz.
    void setEmissionMarkedPath(const QString& path) { m_emissionMarkedPath = path; }
    QString getEmissionMarkedPath() const { return m_emissionMarkedPath; }

    /// Registers the list and returns its identifier. Plain detections go under `name`; extended ones have a
    /// name of their own, and `vuhf` tells which receiver's classifier made the results.
    int AddToFreqStore(bool vuhf, const QString& name);

    void Update(Observable*, TChangeCode) override {}

private:
    DetConvListHandler() = default;

    static DetConvListHandler* m_pInstance;

    int m_listId = 0; ///< -1 while a registration is under way
    QString m_emissionListPath;
    QString m_emissionMarkedPath;
    bool m_extended = false;
};

/// The views of the lists, defined by the views' files.
FrequencyStoreListView* CreateSearchMCVectorListView(QWidget* parent, unsigned listId);
FrequencyStoreListView* CreateSearchMCExtendedVectorListViewHF(QWidget* parent, unsigned listId);
FrequencyStoreListView* CreateSearchMCExtendedVectorListViewVUHF(QWidget* parent, unsigned listId);
FrequencyStoreListView* CreateDetectionConventionalListView(QWidget* parent, unsigned listId);

/// Makes the frequency-bar line of plain detections; the caller owns it.
PixStateVector* CreateSearchMCPixStateVector();
