#pragma once

#include "host/valuetree/detection.h"
#include "sweep/sweepdetector.h"
#include "workstation/waterfall.h"

#include <QObject>
#include <QTimeZone>

#include <memory>

class QWidget;

/// Reads power sweeps for whoever keeps the detections.
class SweepImport : public QObject {
    Q_OBJECT

public:
    /// Takes the detections of a file, which have no numbers yet; `source` is its name without the folder.
    using Receive = std::function<void(std::list<DetectionConventional>&&, const QString& source)>;

    /// The dialogs belong to `window`, which outlives this.
    SweepImport(QWidget* window, Receive receive);

    /// Asks for a file and for what counts as a signal, and opens it.
    void AskAndOpen();
    /// Opens a file with the settings of the last time, as long work. False, with problems told, when it
    /// holds no sweep, and when the operator cancels.
    bool Open(const QString& path);

signals:
    /// The sweeps of a file as a picture.
    void SweepsRead(std::shared_ptr<const Waterfall> sweeps);
    /// A text for the operator: what was found.
    void Opened(const QString& text);

private:
    QWidget* m_window;
    Receive m_receive;
    SweepSettings m_settings;
    QTimeZone m_zone = QTimeZone::systemTimeZone();
};
