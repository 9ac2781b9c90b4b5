#pragma once

#include "host/valuetree/value.h"
#include "host/valuetree/valueptr.h"
#include "host/valuetree/valueselection.h"
#include "receiver/receiverlink.h"

#include <memory>
#include <optional>
#include <vector>

class IFrequencyStoreItem;

/// A receiver as the workstation sees it. Its settings are live values under "/Receiver" of the value tree:
/// whoever writes one sets the receiver, and new list entries copy them. A write that the receiver cannot
/// follow is taken back, with `Refused` telling why, so a value always shows what the receiver really does.
///
/// What does the receiving is attached to it and may be exchanged for another one; the values stay the same
/// objects, with the limits and choices of what is attached. Without any they are values and no more.
/// The receiver owns its node of the tree; only one can live at a time.
class Receiver : public QObject, private IObserver {
    Q_OBJECT

public:
    explicit Receiver(ReceiverKind kind);
    ~Receiver() override;

    /// Exchanges what does the receiving, and has it begin. Limits and choices are those of the kind until it
    /// tells its own.
    void Attach(std::unique_ptr<ReceiverLink> link);
    ReceiverState GetState() const { return m_state; }
    /// What is attached and how it stands, in words for the operator; empty when nothing is attached.
    QString GetStateText() const;
    /// The same without what was said.
    QString GetShortState() const;
    /// Name of what is attached; empty when nothing is.
    QString GetName() const { return m_link ? m_link->GetName() : QString(); }

    ReceiverKind GetKind() const { return m_kind; }
    /// Whether what is attached has a setting that its kind or only some radio has.
    bool CanSet(const ReceiverSetting& setting) const;
    /// Why a setting cannot be changed now; empty when it can.
    QString WhyNot(const ReceiverSetting& setting) const;
    std::span<const ReceiverSetting> GetSettings() const { return ReceiverSettings(m_kind); }
    /// The live value of a setting; null when this kind of receiver has no such.
    ValueBase* GetValue(Names::Id key) const;
    template <typename V>
    V* Find(Names::Id key) const {
        return value_cast<V>(GetValue(key));
    }
    /// Path of a setting's value, whether there is one or not.
    QString PathOf(Names::Id key) const;

    /// The level at the input of the demodulator, in dBµV; written by the receiver only.
    ValueNumeric<double>* GetLevel() const { return m_level; }
    /// Whether what is attached measures a level; without it is the lowest.
    bool HasLevel() const { return m_hasLevel; }
    /// Whether the level opens the audio; written by the receiver only.
    Value<bool>* GetOpen() const { return m_open; }
    /// Whether the radio's own squelch is open; nothing when the radio does not tell.
    std::optional<bool> IsSquelchOpen() const { return m_isSquelchOpen; }
    /// Whether the radio has not gone to the frequency to which it was tuned last.
    bool IsElsewhere() const { return m_isElsewhere; }
    /// Number of the newest change of a setting, counted up from 0 for each that is attached.
    quint64 GetSerial() const { return m_serial; }
    /// Hz.
    double GetFrequency() const { return Find<ValueNumeric<double>>(Keys::KeyFrequency)->GetValue(); }

    /// Tunes to a frequency (Hz) alone. One that the receiver cannot reach leaves it as it is: false, and
    /// `Refused` says why.
    bool Tune(double hertz);
    /// Tunes to an item: with all the settings that it carries, or to its frequency alone. Without a
    /// frequency that the receiver reaches all stays as it is and the answer is false. Of the other settings
    /// those that the receiver lacks are left out, and `Refused` names them.
    bool Tune(IFrequencyStoreItem& item, bool allSettings);
    /// Tunes to a frequency (Hz) with all the settings that the item carries.
    bool TuneLike(IFrequencyStoreItem& item, double hertz);

    /// Sets demodulation and bandwidth at once, as their values write them: a demodulation that is set alone
    /// lets a radio choose the bandwidth. Both must be without a `ProblemOf`.
    void SetMode(const QString& demodulation, const QString& bandwidth);

    /// What is wrong with a text as a setting's value; empty when nothing is.
    QString ProblemOf(const ReceiverSetting& setting, const QString& text) const;

signals:
    /// The frequency (Hz) changed, whoever did it.
    void Tuned(double hertz);
    void Refused(const QString& reason);
    /// The state, its words or what can be set are others.
    void StateChanged();
    /// All changes up to that serial have been carried out. Where the radio has not followed one, the values
    /// show what it does, before this is told.
    void Followed(quint64 serial);
    /// A level (dBµV) was measured, or where there is none the squelch looked at, after that.
    void Measured(double dbMicrovolt, quint64 serial);

private:
    struct Live {
        const ReceiverSetting* setting;
        ValueBase* value;
        QString accepted; ///< the text that the receiver follows
        bool isAble;
        std::vector<double> only = {}; ///< the numbers that it takes; empty for all within the limits
        QString whyNot = {};           ///< why it cannot be set although it is able
        quint64 serial = 0;            ///< of its newest change
    };

    void Update(Observable* subject, TChangeCode code) override;
    void addValue(Node& node, const ReceiverSetting& setting);
    const Live& liveOf(const ReceiverSetting& setting) const;
    bool saysNothing(const ReceiverSetting& setting, const QString& text) const;
    void settle(Live& live);
    void tell(const QString& problem);
    bool tuneWith(IFrequencyStoreItem& item, double hertz, std::span<const ReceiverSetting> settings);
    void sayAgainWith(Names::Id wished, Names::Id other);
    void hand();
    void coupleAntenna(const ReceiverSetting& setting);
    void updateOpen();
    void take(const std::vector<ReceiverAbility>& abilities);
    static void takeAbility(Live& live, const ReceiverAbility& ability);
    void take(const ReceiverReading& reading);
    static void takeText(ValueBase& value, const QString& text);
    void setLevel(double dbMicrovolt);
    void bringWithinLimits();

    ReceiverKind m_kind;
    WeakRef<Node> m_node;
    std::vector<Live> m_live;
    ValueNumeric<double>* m_level;
    Value<bool>* m_open;
    std::unique_ptr<ReceiverLink> m_link;
    ReceiverState m_state = ReceiverState::Connected;
    QString m_words; ///< what was said of the state
    bool m_hasLevel = false;
    std::optional<bool> m_isSquelchOpen;
    bool m_isElsewhere = false;
    quint64 m_serial = 0;
    std::vector<ReceiverWord> m_wishes; ///< not yet handed on
    bool m_collects = false;            ///< wishes wait for more of them
    bool m_isTaking = false;            ///< what changes is what the radio says
};
