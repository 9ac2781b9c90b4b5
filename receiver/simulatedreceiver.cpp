#include "receiver/simulatedreceiver.h"

#include "receiver/receiver.h"

#include <cmath>
#include <numbers>

namespace {

constexpr int MeasureMilliseconds = 200;
constexpr double HfRaster = 5e3; // Hz between the places of carriers
constexpr double VuhfRaster = 25e3;
constexpr double OccupiedShare = 0.3;
constexpr double WeakestCarrier = 15; // dBµV
constexpr double StrongestCarrier = 75;
constexpr double NoCarrier = -200;
constexpr double FadingDepth = 3; // dB
constexpr double FadingTicks = 40;
constexpr double NoiseFloor = -14; // dBµV in 1 kHz
constexpr double NoiseJitter = 1.5;

/// A number from 0 to 1 that looks random and belongs to the seed for good.
double scattered(quint64 seed) {
    seed += 0x9e3779b97f4a7c15;
    seed = (seed ^ (seed >> 30)) * 0xbf58476d1ce4e5b9;
    seed = (seed ^ (seed >> 27)) * 0x94d049bb133111eb;
    return static_cast<double>((seed ^ (seed >> 31)) >> 11) * 0x1p-53;
}

double power(double decibel) {
    return std::pow(10, decibel / 10);
}

} // namespace

SimulatedReceiver::SimulatedReceiver(const Receiver& receiver, Pace pace)
    : m_receiver(receiver), m_pace(pace) {
    m_timer.setInterval(MeasureMilliseconds);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        ++m_tick;
        measure();
    });
}

QString SimulatedReceiver::GetName() const {
    return tr("Simulated %1 receiver").arg(ReceiverName(m_receiver.GetKind()));
}

void SimulatedReceiver::Begin() {
    emit StateChanged(ReceiverState::Connected, QString());
    measure();
    if (m_pace == Pace::Steady)
        m_timer.start();
}

void SimulatedReceiver::Set(const std::vector<ReceiverWord>&, quint64) {
    measure();
}

double SimulatedReceiver::raster() const {
    return m_receiver.GetKind() == ReceiverKind::HF ? HfRaster : VuhfRaster;
}

double SimulatedReceiver::CarrierAt(double hertz, double bandwidth) const {
    const auto first = static_cast<quint64>(std::max(0.0, std::ceil((hertz - bandwidth / 2) / raster())));
    const auto last = static_cast<quint64>(std::floor((hertz + bandwidth / 2) / raster()));
    double strongest = NoCarrier;
    for (quint64 place = first; place <= last; ++place) {
        const double strength = scattered(place);
        if (strength < OccupiedShare)
            strongest =
                std::max(strongest, std::lerp(WeakestCarrier, StrongestCarrier, strength / OccupiedShare));
    }
    return strongest;
}

void SimulatedReceiver::measure() {
    const double hertz = m_receiver.GetFrequency();
    const double bandwidth = m_receiver.Find<ValueNumeric<double>>(Keys::KeyBandwidth)->GetValue();
    // AFC finds the carrier that lies a little beside.
    const auto* afc = m_receiver.Find<Value<bool>>(Keys::AFC);
    const double reach = afc && afc->GetValue() ? std::max(bandwidth, raster()) : bandwidth;
    const auto place = static_cast<quint64>(hertz / raster());
    const double phase = scattered(~place) + static_cast<double>(m_tick) / FadingTicks;
    const double carrier = CarrierAt(hertz, reach) + FadingDepth * std::sin(2 * std::numbers::pi * phase);
    const double noise = NoiseFloor + 10 * std::log10(bandwidth / 1e3) +
                         NoiseJitter * (scattered(place * 0x10001 + m_tick) - 0.5);
    const auto* manual = m_receiver.Find<Value<bool>>(Keys::UseAttenuation);
    const double attenuation =
        manual && manual->GetValue() ? m_receiver.Find<ValueNumeric<int>>(Keys::Attenuation)->GetValue() : 0;
    ReceiverReading reading;
    reading.serial = m_receiver.GetSerial();
    reading.level = 10 * std::log10(power(carrier) + power(noise)) - attenuation;
    emit Read(reading);
}
