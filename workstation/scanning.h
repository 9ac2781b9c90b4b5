#pragma once

#include "scan/receiverport.h"
#include "scan/scan.h"
#include "scan/scanclock.h"
#include "workstation/scandetections.h"

class JobPanel;
class MainWindow;
class Receiver;

/// Scanning in the window: the scan with its menu and panel, its stops among the plain detections, and what
/// must not happen while it runs.
class Scanning : public QObject {
    Q_OBJECT

public:
    /// The parts of the workstation that a scan works with. None is owned; all outlive this.
    struct Parts {
        MainWindow& window;
        Receiver& receiver;
        SimulatedSearch& search;
        JobPanel& job;
        int channels; ///< identifiers of lists in the store
        int detections;
        bool remembers; ///< whether settings are kept for the next time
    };

    explicit Scanning(const Parts& parts);
    /// A scan that runs ends.
    ~Scanning() override;

    Scan& GetScan() { return m_scan; }
    const ScanDetections& GetDetections() const { return m_detections; }
    void Stop() { m_scan.Stop(); }

private:
    std::unique_ptr<ScanPlan> planChannels(QString& reason) const;
    std::unique_ptr<ScanPlan> planBands(QString& reason) const;
    void addToWindow();
    void showNotes();
    void follow(bool isRunning);
    void closeJob(bool isClosed);
    void loadSettings();
    void saveSettings() const;

    Parts m_parts;
    ReceiverPort m_port;
    MachineClock m_clock;
    ScanDetections m_detections;
    Scan m_scan;
};
