#include "scan/receiverport.h"

#include "host/base/frequencytext.h"
#include "receiver/receiver.h"
#include "scan/scanplan.h"

#include <QScopedValueRollback>

#include <cmath>

namespace {

/// How far a radio's own steps may lead it from what was asked, in Hz.
constexpr double Rounding = 500;
constexpr double SameFrequency = 1; // Hz

} // namespace

ReceiverPort::ReceiverPort(Receiver& receiver) : m_receiver(receiver) {
    connect(&receiver, &Receiver::Measured, this, [this](double dbMicrovolt, quint64 serial) {
        if (m_isTuning)
            m_early = {dbMicrovolt, serial};
        else
            takeLevel(dbMicrovolt, serial);
    });
    connect(&receiver, &Receiver::Refused, this, [this](const QString& reason) {
        if (m_refused.isEmpty()) // the first is the one that matters
            m_refused = reason;
    });
    connect(&receiver, &Receiver::StateChanged, this, [this] {
        if (m_watcher && !m_isTuning)
            m_watcher->AnsweringChanged();
    });
    connect(&receiver, &Receiver::Tuned, this, [this](double hertz) {
        if (!m_isTuning)
            takeFrequency(hertz);
    });
}

bool ReceiverPort::Tune(const ScanStep& step, QString& reason) {
    const QScopedValueRollback tuning(m_isTuning, true);
    m_refused.clear();
    m_early.reset();
    const bool isTuned =
        step.item ? m_receiver.TuneLike(*step.item, step.frequency) : m_receiver.Tune(step.frequency);
    if (!isTuned) { // it is where it was
        reason = m_refused;
        return false;
    }
    m_refused.clear(); // what it lacks of the channel is none of the radio's doing
    m_wanted = step.frequency;
    m_hasFollowed = false;
    m_serial = m_receiver.GetSerial();
    if (m_early && m_early->second >= m_serial)
        takeLevel(m_early->first, m_early->second);
    return true;
}

/// While the radio follows, what it says of itself is its answer; what somebody else sets is not.
void ReceiverPort::takeFrequency(double hertz) {
    const bool isWish = m_receiver.GetSerial() > m_serial;
    if (!m_watcher || (!m_hasFollowed && !isWish))
        return;
    if (isWish) {
        m_serial = m_receiver.GetSerial();
        m_wanted = hertz;
    }
    m_watcher->TunedElsewhere(hertz);
}

QString ReceiverPort::WhySilent() const {
    return m_receiver.GetState() == ReceiverState::Connected ? QString() : m_receiver.GetStateText();
}

double ReceiverPort::Bandwidth() const {
    return m_receiver.Find<ValueNumeric<double>>(Keys::KeyBandwidth)->GetValue();
}

void ReceiverPort::takeLevel(double dbMicrovolt, quint64 serial) {
    if (!m_watcher || serial < m_serial)
        return;
    const bool isFirst = !std::exchange(m_hasFollowed, true);
    const double rounding = m_receiver.IsElsewhere() ? SameFrequency : Rounding;
    if (isFirst && !m_isTuning && std::abs(m_receiver.GetFrequency() - m_wanted) > rounding)
        return m_watcher->NotReached(
            m_refused.isEmpty()
                ? tr("the radio stays at %1").arg(Quor::FrequencyText(m_receiver.GetFrequency()))
                : m_refused);
    m_watcher->Measured(dbMicrovolt, m_receiver.IsSquelchOpen().value_or(m_receiver.GetOpen()->GetValue()));
}
