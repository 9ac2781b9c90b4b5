#pragma once

#include <QObject>

class QSocketNotifier;

/// Hears the signals that ask the program to end (SIGTERM, SIGHUP, SIGINT) and tells of the first one from
/// the event loop, also while a dialog is open. The next one ends the program at once. A signal that the
/// program was started to ignore stays ignored. Only one can live at a time.
class EndSignals : public QObject {
    Q_OBJECT

public:
    explicit EndSignals(QObject* parent = nullptr);
    /// Gives the signals back what they did before.
    ~EndSignals() override;

signals:
    /// The number of the signal.
    void Came(int signalNumber);

private:
    void read();

    QSocketNotifier* m_notifier = nullptr; ///< null when there is no pipe
};
