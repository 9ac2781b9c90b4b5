#pragma once

#include "host/valuetree/value.h"
#include "host/valuetree/valueptr.h"
#include "host/valuetree/valueselection.h"
#include "receiver/receiversettings.h"

#include <QObject>

#include <vector>

class IFrequencyStoreItem;

/// A receiver as the workstation sees it. Its settings are live values under "/Receiver" of the value tree:
/// whoever writes one sets the receiver, and new list entries copy them. A write that the receiver cannot
/// follow is taken back, with `Refused` telling why, so a value always shows what the receiver really does.
///
/// A radio derives from it: it follows the settings in `Follow` and reports what it measures by `SetLevel`.
/// The receiver owns its node of the tree; only one can live at a time.
class Receiver : public QObject, private IObserver {
    Q_OBJECT

public:
    ~Receiver() override;

    ReceiverKind GetKind() const { return m_kind; }
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
    /// Whether the level opens the audio; written by the receiver only.
    Value<bool>* GetOpen() const { return m_open; }
    /// Hz.
    double GetFrequency() const { return Find<ValueNumeric<double>>(Keys::KeyFrequency)->GetValue(); }

    /// Tunes to a frequency (Hz) alone. One that the receiver cannot reach leaves it as it is: false, and
    /// `Refused` says why.
    bool Tune(double hertz);
    /// Tunes to an item: with all the settings that it carries, or to its frequency alone. Without a
    /// frequency that the receiver reaches all stays as it is and the answer is false. Of the other settings
    /// those that the receiver lacks are left out, and `Refused` names them.
    bool Tune(IFrequencyStoreItem& item, bool allSettings);

    /// What is wrong with a text as a setting's value; empty when nothing is.
    QString ProblemOf(const ReceiverSetting& setting, const QString& text) const;

signals:
    /// The frequency (Hz) changed, whoever did it.
    void Tuned(double hertz);
    void Refused(const QString& reason);

protected:
    explicit Receiver(ReceiverKind kind);

    /// The setting has a new value, within its limits.
    virtual void Follow(const ReceiverSetting& setting) = 0;
    void SetLevel(double dbMicrovolt);

private:
    struct Live {
        const ReceiverSetting* setting;
        ValueBase* value;
        QString accepted; ///< the text that the receiver follows
    };

    void Update(Observable* subject, TChangeCode code) override;
    void addValue(Node& node, const ReceiverSetting& setting);
    void settle(Live& live);
    void coupleAntenna(const ReceiverSetting& setting);
    void updateOpen();

    ReceiverKind m_kind;
    WeakRef<Node> m_node;
    std::vector<Live> m_live;
    ValueNumeric<double>* m_level;
    Value<bool>* m_open;
};
