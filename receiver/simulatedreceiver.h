#pragma once

#include "receiver/receiver.h"

#include <QTimer>

/// A receiver without a radio: its level comes from carriers on a raster, which fade slowly, above a noise
/// floor. The same settings and the same number of measurements give the same level on every run.
class SimulatedReceiver : public Receiver {
    Q_OBJECT

public:
    explicit SimulatedReceiver(ReceiverKind kind);

    /// Starts measuring at regular intervals.
    void Start() { m_timer.start(); }
    /// One measurement.
    void Measure();
    /// The strength (dBµV) of the strongest carrier within the bandwidth around a frequency (both Hz), as it
    /// stands without fading and attenuation; far below any noise when there is none.
    double CarrierAt(double hertz, double bandwidth) const;

protected:
    void Follow(const ReceiverSetting& setting) override;

private:
    double raster() const;

    QTimer m_timer;
    quint64 m_tick = 0;
};
