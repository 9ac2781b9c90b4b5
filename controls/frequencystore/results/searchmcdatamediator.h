#pragma once

#include "controls/frequencystore/common/halvoitnodemediator.h"
#include "host/valuetree/valueselection.h"

/// Mediator of one classifier result: shows lock state, signal time and confidence, and keeps the entry's
/// type letter in step with them: 'p' with a confidence over 0, else 'b' when locked, else 'c'.
class SearchMCDataMediator : public HalvoITNodeMediator {
public:
    SearchMCDataMediator(MediatorCtrl* controller, Observable* node, int kind);

    /// Getters are false, with the output untouched, when the value is missing; setters do nothing then.
    bool GetLockResult(QString& state);
    /// As "yyyy-MM-dd hh:mm:ss" in the local time zone.
    bool GetLockTime(QString& time);
    /// Microseconds since 1970-01-01 UTC.
    bool GetLockTime(quint64& microseconds);
    /// Percent.
    bool GetConfidence(int& percent);
    /// A lock state that the selection lacks is appended to it.
    void SetLockResult(const QString& state);
    void SetLockTime(quint64 microseconds);
    void SetConfidence(int percent);
    /// A bandwidth that the selection lacks is appended to it.
    void SetBandwidth(double hertz) override;

    /// Frequency and bandwidth (Hz, six decimals) with two TABs behind each, then type letter, lock state,
    /// lock time (µs) and confidence with one each; empty when one of them is missing.
    QString ToString() override;
    /// Takes such a line. Empty fields are passed over.
    bool FromString(QString& line) override;
    bool SetValueFromString(int field, QString& text) override;
    /// That of search results, whatever list the mediator is in.
    QString GetUsage() override;
    void AddToXml(FreqStoreXml::FrequencyStoreList& list) override;
    void Update(Observable* subject, TChangeCode code) override;
    void UpdateMyViewItems(FrequencyNodeListView* view) override;
    bool CellText(unsigned columnId, QString& text) override;

protected:
    void UpdateDependentValues() override;

private:
    enum ResultBoundNumber : size_t {
        BoundLockTime = FirstOwnOfHalvo,
        BoundLocked,
        BoundConfidence,
        BoundEnd
    };

    void bindOwn();
    void checkType();
    ValueNumeric<qint64>* HeldLockTime() const { return Bound<ValueNumeric<qint64>>(BoundLockTime); }
    ValueSelection* HeldLocked() const { return Bound<ValueSelection>(BoundLocked); }
    ValueNumeric<int>* HeldConfidence() const { return Bound<ValueNumeric<int>>(BoundConfidence); }

    char m_letter = 0;
};
