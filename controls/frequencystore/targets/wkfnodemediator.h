#pragma once

#include "controls/frequencystore/common/halvoitnodemediator.h"

/// Mediator of one target of the local target list. It derives the target's type letter from the priority and
/// writes it into the target's "type" value.
class WkfNodeMediator : public HalvoITNodeMediator {
public:
    WkfNodeMediator(MediatorCtrl* controller, Observable* node, int kind);

    /// False, with the output untouched, when the value is missing.
    bool GetPriority(int& priority, int subItem);
    bool GetProfileID(QString& id, int subItem);
    bool GetProfileName(QString& name, int subItem);
    bool GetSignalClass(QString& signalClass, int subItem);
    bool GetThreadClass(QString& threatClass, int subItem);
    bool GetTransmissionSystem(QString& system, int subItem);
    /// Each does nothing when the value is missing.
    void SetPriority(int priority);
    void SetProfileID(const QString& id);
    void SetProfileName(const QString& name);
    void SetSignalClass(const QString& signalClass);
    void SetThreadClass(const QString& threatClass);
    void SetTransmissionSystem(const QString& system);

    void AddToXml(FreqStoreXml::FrequencyStoreList& list) override;
    /// The target as one line of an LTL file, without its line end.
    QString ToString() override;
    bool SetValueFromString(int field, QString& text) override;
    void Update(Observable* subject, TChangeCode code) override;
    bool CellText(unsigned columnId, QString& text) override;
    ValueBase* EditedValue(unsigned columnId) override;
    bool GetType(char& type, int subItem) override;

protected:
    void UpdateDependentValues() override;
    void CheckType();

private:
    enum WkfBoundNumber : size_t {
        BoundPriority = FirstOwnOfHalvo,
        BoundThreatClass,
        BoundProfileID,
        BoundProfileName,
        BoundSignalClass,
        BoundTransmissionSystem,
        BoundEnd
    };
    static_assert(size_t(BoundEnd) <= BoundValues::Count);

    void bindOwn();
    ValueBase* ownValue(unsigned columnId) const;
    ValueNumeric<int>* HeldPriority() const { return Bound<ValueNumeric<int>>(BoundPriority); }
    Value<QString>* HeldThreatClass() const { return Bound<Value<QString>>(BoundThreatClass); }
    Value<QString>* HeldProfileID() const { return Bound<Value<QString>>(BoundProfileID); }
    Value<QString>* HeldProfileName() const { return Bound<Value<QString>>(BoundProfileName); }
    Value<QString>* HeldSignalClass() const { return Bound<Value<QString>>(BoundSignalClass); }
    Value<QString>* HeldTransmissionSystem() const { return Bound<Value<QString>>(BoundTransmissionSystem); }

    char m_letter = 0;
};
