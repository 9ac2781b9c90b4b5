#pragma once

#include "receiver/radioprofile.h"
#include "receiver/receiverlink.h"

#include <QStringList>

#include <memory>
#include <optional>

struct s_rig;

/// Why a radio could not be reached or has been lost.
struct RadioError {
    bool isRefusal; ///< it is there, but would not have us
    QString words;
    bool isHangUp = false; ///< the line broke
};

/// What a radio is to do; what is not set stays.
struct RadioWishes {
    std::optional<double> frequency; ///< Hz
    std::optional<QString> mode;
    std::optional<double> bandwidth; ///< Hz
    std::optional<int> attenuation;  ///< dB
    std::optional<bool> attenuates;
    std::optional<int> antenna; ///< from 1
    std::optional<int> offset;  ///< Hz
    std::optional<int> bfo;     ///< Hz
    std::optional<int> squelch; ///< percent
    std::optional<bool> afc;

    void Take(const std::vector<ReceiverWord>& words);
};

/// An open connection to a radio. Each call may last as long as the radio's time-out and more, so all of them
/// are made by a thread of its own. It receives only: there is nothing in here that keys a transmitter.
/// What ends the connection is thrown as `RadioError`.
class Radio {
public:
    /// Connects, and asks for nothing but the radio's state.
    explicit Radio(const RadioProfile& profile);
    ~Radio();
    Radio(const Radio&) = delete;
    Radio& operator=(const Radio&) = delete;

    /// What it says of itself, without what a tip would take for markup; may be empty.
    QString GetInfo() const;
    /// What it can do, unless that is what was given last: what it says may tell more of it.
    std::optional<std::vector<ReceiverAbility>> TakeNewAbilities();
    /// Carries out what is wished; what the radio does not do is told in `refusals`. One that takes a
    /// frequency and does not go there has not done it.
    void Set(const RadioWishes& wishes, QStringList& refusals);
    /// All that the panel shows.
    ReceiverReading ReadAll();
    /// What an operator turns at the radio most: frequency, mode and bandwidth, with the level; and one of
    /// the other settings, another one each time.
    ReceiverReading Poll();
    /// The level, and the squelch where it says something.
    ReceiverReading Measure();

private:
    struct Closer {
        void operator()(s_rig* rig) const;
    };
    using Handle = std::unique_ptr<s_rig, Closer>;

    void configure(const RadioProfile& profile);
    void configure(const char* name, const QByteArray& value);
    bool check(int code, const QString& what, QStringList* refusals);
    void setFrequency(double hertz, QStringList& refusals);
    bool hasGoneTo(double hertz);
    void setSquelch(int percent, QStringList& refusals);
    void setMode(const RadioWishes& wishes, QStringList& refusals);
    void setOthers(const RadioWishes& wishes, QStringList& refusals);
    void setAttenuation(QStringList& refusals);
    void readTuning(ReceiverReading& reading);
    void readOther(size_t which, ReceiverReading& reading);
    void takeSquelch(float said, ReceiverReading& reading);
    void measure(ReceiverReading& reading);
    ReceiverReading readTuned();

    Handle m_rig;
    int m_silences = 0;     ///< questions without an answer since it told its frequency last
    double m_frequency = 0; ///< Hz
    bool m_isElsewhere = false;
    quint64 m_mode = 0;
    int m_attenuation = 0;
    bool m_attenuates = false;
    int m_squelch = 0; ///< percent
    bool m_squelchIsInDecibels = false;
    bool m_abilitiesAreKnown = false; ///< as they are now
    size_t m_nextOther = 0;
};
