#pragma once

#include "scan/scanreceiver.h"

#include <QObject>

#include <optional>
#include <utility>

class Receiver;

/// The program's receiver as a scan uses it.
class ReceiverPort final : public QObject, public ScanReceiver {
    Q_OBJECT

public:
    /// The receiver is not owned and outlives this.
    explicit ReceiverPort(Receiver& receiver);

    bool Tune(const ScanStep& step, QString& reason) override;
    QString WhySilent() const override;
    double Bandwidth() const override;

private:
    void takeFrequency(double hertz);
    void takeLevel(double dbMicrovolt, quint64 serial);

    Receiver& m_receiver;
    QString m_refused;                                 ///< what the receiver refused first, and why
    double m_wanted = 0;                               ///< Hz
    quint64 m_serial = 0;                              ///< of the last change that tuning made
    std::optional<std::pair<double, quint64>> m_early; ///< level and serial, measured while tuning
    bool m_isTuning = false;
    bool m_hasFollowed = true; ///< nothing of that is under way
};
