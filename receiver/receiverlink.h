#pragma once

#include "receiver/receiversettings.h"

#include <QObject>

#include <optional>
#include <vector>

/// How a receiver stands to what does the receiving.
enum class ReceiverState { Connecting, Connected, NoAnswer, Refused };

/// What a radio is to do with one of its settings, or what it says of one.
struct ReceiverWord {
    Names::Id key;
    QString text; ///< as the setting's value writes it
};

/// What was read from a radio at one time.
struct ReceiverReading {
    quint64 serial = 0; ///< all wishes up to this one had been carried out before the reading began
    std::vector<ReceiverWord> values;
    std::optional<double> level;       ///< dBµV
    std::optional<bool> isSquelchOpen; ///< of the radio's own squelch
    bool isElsewhere = false;          ///< it has not gone to the frequency that was wished last
};

/// What does the receiving behind a `Receiver`, which owns it: a radio or a simulation of one. Nothing here
/// waits for a radio: wishes are carried out and answers come in their own time, as signals of the thread in
/// which it lives.
class ReceiverLink : public QObject {
    Q_OBJECT

public:
    /// As the operator knows the radio.
    virtual QString GetName() const = 0;
    /// Begins to connect; only then it has something to say.
    virtual void Begin() = 0;
    /// Settings, within their limits, that the radio is to take; newer wishes replace older ones that still
    /// wait. `serial` counts up.
    virtual void Set(const std::vector<ReceiverWord>& wishes, quint64 serial) = 0;

signals:
    /// Who is connected has told its abilities and was read before. `words` says more, such as what a radio
    /// has answered; it may be empty.
    void StateChanged(ReceiverState state, const QString& words);
    /// What the radio can do is known; settings that are not named are those that it lacks.
    void AbilitiesKnown(const std::vector<ReceiverAbility>& abilities);
    void Read(const ReceiverReading& reading);
    /// The radio has not followed a wish.
    void Failed(const QString& reason);
};
