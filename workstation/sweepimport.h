#pragma once

#include "host/valuetree/detection.h"
#include "sweep/sweepdetector.h"
#include "workstation/waterfall.h"

#include <QObject>
#include <QTimeZone>

#include <memory>

class QWidget;

/// Reads power sweeps for whoever keeps the detections, while a dialog shows how far it is.
class SweepImport : public QObject {
    Q_OBJECT

public:
    /// Takes some detections; they have no numbers yet.
    using Receive = std::function<void(std::list<DetectionConventional>&&)>;

    /// The dialogs belong to `window`, which outlives this.
    SweepImport(QWidget* window, Receive receive);

    /// Asks for a file and for what counts as a signal, and opens it.
    void AskAndOpen();
    /// Opens a file with the settings of the last time. False, with problems told, when it holds no sweep.
    /// What was found before it is cancelled stays.
    bool Open(const QString& path);
    /// Name of the file that is being read, or was last, without its folder.
    QString GetFileName() const { return m_fileName; }

signals:
    /// The sweeps of a file as a picture.
    void SweepsRead(std::shared_ptr<const Waterfall> sweeps);
    /// A text for the operator: what was found.
    void Opened(const QString& text);

private:
    struct Reading;

    bool showProgress(Reading& reading, qint64 done, qint64 total);

    QWidget* m_window;
    Receive m_receive;
    SweepSettings m_settings;
    QString m_fileName;
    QTimeZone m_zone = QTimeZone::systemTimeZone();
    bool m_isReading = false; ///< its dialog's event loop may ask for more
};
