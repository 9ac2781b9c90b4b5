#pragma once

#include "controls/frequencystore/common/keys.h"
#include "host/valuetree/value.h"
#include "host/valuetree/valueselection.h"

#include <tuple>

/// A set of 19 links to values that live elsewhere in the tree, usually the live settings of a receiver. A
/// list handler keeps one as its template, binds the links by path and hands it to every new entry, which
/// copies limits, choices and settings from it. No link is owned; a link whose value ends turns null.
///
/// A link that `AddSourceValue` binds is observed. A copy has the same links and observes nothing.
class GeneralEntry : public IObserver {
public:
    GeneralEntry();
    GeneralEntry(const GeneralEntry& other);
    GeneralEntry& operator=(const GeneralEntry& other);
    ~GeneralEntry() override;

    /// Binds the link of an identifier to the value at a full tree path. False when there is no value of the
    /// link's type, which leaves the link null, and for an identifier without a link. Bandwidth and
    /// demodulation have two links each: the second is bound when the value is a selection.
    bool AddSourceValue(unsigned id, const QString& path);

    /// Copies the linked source of an identifier into a value; false when nothing is linked or the types do
    /// not fit. Of two links the selection is preferred.
    bool InitValueFrom(unsigned id, ValueBase* target);

    /// The lock time's own copy: limits, step and current value; then a source that is 0 is set to the
    /// current time (µs since 1970-01-01 UTC). The target keeps the 0: only later entries see the stamped
    /// time. Other identifiers do nothing.
    void SpecialValueInit(unsigned id, ValueNumeric<qint64>* target);

    /// Lets go of a linked value that announces its removal.
    void Update(Observable* subject, TChangeCode code) override;

protected:
    /// Copy rules; each is false, and does nothing, when either value is missing. For numbers: minimum,
    /// maximum, step, current value. For selections: the items, in order, and the current key. For all
    /// others: the text.
    static bool CopyFromSource(const IValueNumeric* source, IValueNumeric* target);
    static bool CopyFromSource(const ValueSelection* source, ValueSelection* target);
    static bool CopyFromSource(const ValueBase* source, ValueBase* target);

    /// The 19 links, by what they stand for.
    ValueNumeric<double>* FrequencyLink() const { return link<0>(); }
    ValueNumeric<double>* BandwidthLink() const { return link<1>(); }
    Value<QString>* DemodulationTextLink() const { return link<2>(); }
    ValueSelection* DemodulationSelectionLink() const { return link<3>(); }
    Value<QString>* TextLink() const { return link<4>(); }
    Value<char>* TypeLink() const { return link<5>(); }
    ValueSelection* LockedLink() const { return link<6>(); }
    ValueNumeric<qint64>* LockTimeLink() const { return link<7>(); }
    ValueSelection* BandwidthSelectionLink() const { return link<8>(); }
    ValueSelection* OutputIFLink() const { return link<9>(); }
    ValueNumeric<int>* ShiftLink() const { return link<10>(); }
    ValueNumeric<int>* ThresholdLink() const { return link<11>(); }
    ValueNumeric<int>* BFOFrequencyLink() const { return link<12>(); }
    ValueNumeric<int>* ConfidenceLink() const { return link<13>(); }
    Value<bool>* AFCLink() const { return link<14>(); }
    Value<bool>* UseAttenuationLink() const { return link<15>(); }
    Value<bool>* UseSquelchLink() const { return link<16>(); }
    ValueNumeric<int>* AttenuationLink() const { return link<17>(); }
    ValueNumeric<int>* AntennaLink() const { return link<18>(); }

private:
    /// Most entries are made without a template: they have no table of links.
    struct Links;

    template <size_t I>
    std::tuple_element_t<
        I, std::tuple<ValueNumeric<double>*, ValueNumeric<double>*, Value<QString>*, ValueSelection*,
                      Value<QString>*, Value<char>*, ValueSelection*, ValueNumeric<qint64>*, ValueSelection*,
                      ValueSelection*, ValueNumeric<int>*, ValueNumeric<int>*, ValueNumeric<int>*,
                      ValueNumeric<int>*, Value<bool>*, Value<bool>*, Value<bool>*, ValueNumeric<int>*,
                      ValueNumeric<int>*>>
    link() const {
        using Pointer = decltype(link<I>());
        return static_cast<Pointer>(linked(I));
    }
    ValueBase* linked(size_t index) const;
    bool bind(size_t index, const QString& path);
    bool copyLinked(size_t index, ValueBase* target) const;

    std::unique_ptr<Links> m_links;
};
