#pragma once

#include "receiver/receiverlink.h"

#include <QTimer>

class Receiver;

/// A receiver without a radio: its level comes from carriers on a raster, which fade slowly, above a noise
/// floor. The same settings and the same number of measurements give the same level on every run.
class SimulatedReceiver : public ReceiverLink {
    Q_OBJECT

public:
    /// Whether it measures by itself, or only when a setting changes.
    enum class Pace { Steady, OnDemand };

    /// The receiver whose settings it looks at; it owns this.
    explicit SimulatedReceiver(const Receiver& receiver, Pace pace = Pace::Steady);

    QString GetName() const override;
    void Begin() override;
    void Set(const std::vector<ReceiverWord>& wishes, quint64 serial) override;

    /// The strength (dBµV) of the strongest carrier within the bandwidth around a frequency (both Hz), as it
    /// stands without fading and attenuation; far below any noise when there is none.
    double CarrierAt(double hertz, double bandwidth) const;

private:
    void measure();
    double raster() const;

    const Receiver& m_receiver;
    Pace m_pace;
    QTimer m_timer;
    quint64 m_tick = 0;
};
