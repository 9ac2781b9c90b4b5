#pragma once

#include "controls/frequencystore/common/keys.h"
#include "host/freqlist/frequencynodemediator.h"

/// Base of this library's mediators: adds the value "bandwidthsel", which some entries have instead of a
/// plain bandwidth, the text of the bandwidth column, and the marking of the controller when the entry
/// changes.
class HalvoITNodeMediator : public FrequencyNodeMediator {
public:
    HalvoITNodeMediator(MediatorCtrl* controller, Observable* node, int kind, MediatorType type);

    /// False when the entry has no bandwidth selection.
    virtual bool SetBandwidthSelection(double hertz);
    virtual bool GetBandwidthSelection(double& hertz, int subItem);
    /// Takes the fields of a text line as `ToString` writes it; false when the text has none.
    virtual bool FromString(QString& line);
    /// Sets the value of one field, by its number, from its text; false when there is no such field or value.
    virtual bool SetValueFromString(int field, QString& text);

    /// The fields frequency, bandwidth (both in Hz), comment and demodulation, each followed by a TAB.
    QString ToString() override;
    void Update(Observable* subject, TChangeCode code) override;
    void UpdateMyViewItems(FrequencyNodeListView* view) override;
    bool GetBandwidth(double& hertz, int subItem) override;
    void SetBandwidth(double hertz) override;
    ValueBase* EditedValue(unsigned columnId) override;
    bool GetType(char& type, int subItem) override;

    MediatorType GetMediatorType() const { return static_cast<MediatorType>(m_itemKind); }

protected:
    void UpdateDependentValues() override;

    enum HalvoBoundNumber : size_t { BoundBandwidthSelection = FirstOwn, FirstOwnOfHalvo };

    /// A number with six decimals, as lines carry it.
    static QString NumberField(double value);

private:
    /// A number or a selection.
    ValueBase* HeldBandwidthSelection() const { return Bound<ValueBase>(BoundBandwidthSelection); }
    void bindOwn();
};
