#pragma once

#include "host/valuetree/detection.h"
#include "host/valuetree/valueptr.h"
#include "sweep/sweepdetector.h"

#include <QObject>
#include <QPointer>
#include <QTimeZone>

class QProgressDialog;
class QWidget;

/// Reads power sweeps and appends the signals in them to a list of detections in the value tree, while a
/// dialog shows how far it is.
class SweepImport : public QObject {
    Q_OBJECT

public:
    using List = ValueList<DetectionConventional>;

    /// The dialogs belong to `window`, which outlives this; the list is the value at `listPath`.
    SweepImport(QWidget* window, const QString& listPath);

    /// Asks for a file and for what counts as a signal, and opens it.
    void AskAndOpen();
    /// Opens a file with the settings of the last time. False, with problems told, when it holds no sweep; a
    /// list that is gone is a problem, too. What was found before it is cancelled stays.
    bool Open(const QString& path);

signals:
    /// A text for the operator: what was found.
    void Opened(const QString& text);

private:
    struct Reading;

    bool showProgress(Reading& reading, qint64 done, qint64 total);

    QWidget* m_window;
    QString m_listPath;
    SweepSettings m_settings;
    QTimeZone m_zone = QTimeZone::systemTimeZone();
    bool m_isReading = false; ///< its dialog's event loop may ask for more
};
