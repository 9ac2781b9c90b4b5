#pragma once

#include "controls/frequencystore/common/halvoitnodemediator.h"

/// What the mediators of both kinds of memory channels have in common: it binds the channel's settings by the
/// table of its kind, shows them in their columns, and gives access to the range that a channel may stand
/// for.
///
/// Getters are false, with the output untouched, when the value is missing; setters then do nothing.
class MemoryMediator : public HalvoITNodeMediator {
public:
    /// Level of the squelch in dBµV.
    bool GetThreshold(long& level) const;
    void SetThreshold(long level);
    /// Whether the channel stands for a group of frequencies.
    bool GetInRange(bool& inRange) const;
    /// The range's number (-1: none), and how many frequencies it has besides the channel's own.
    bool GetRangeNumber(long& number, long& count) const;
    /// One of those, in Hz, by its 0-based index.
    bool GetFrequencyInRange(long index, double& hertz) const;
    bool GetDemodulationSelection(QString& demodulation) { return GetDemodulation(demodulation, 0); }
    /// Chooses the demodulation among those that the channel offers.
    void SetDemodSelection(const QString& demodulation) { SetDemodulation(demodulation); }

    /// Memory channels have no text form.
    QString ToString() override { return QString(); }
    /// Receiver settings and range are not part of the interchange entry.
    void AddToXml(FreqStoreXml::FrequencyStoreList& list) override;
    void Update(Observable* subject, TChangeCode code) override;
    bool CellText(unsigned columnId, QString& text) override;
    ValueBase* EditedValue(unsigned columnId) override;
    /// How many further frequencies the channel stands for.
    QString CellAddition(unsigned columnId) override;
    /// Names the frequencies of a range, too.
    bool GetTip(QString& tip, int subItem) override;

protected:
    /// The settings that all channels have are bound by these numbers, those of each kind follow.
    enum CommonSetting : size_t {
        Threshold = FirstOwnOfHalvo,
        Range,
        RangeCounter,
        RangeFrequencies,
        FirstOwnOfMemory
    };

    MemoryMediator(MediatorCtrl* controller, Observable* node, int kind, MediatorType type);

    void UpdateDependentValues() override;

    /// The value of a setting, or null; V is the class that belongs to its type.
    template <typename V>
    V* Held(size_t setting) const {
        return Bound<V>(setting);
    }
    template <typename T>
    bool Get(size_t setting, T& content) const;
    template <typename T>
    void Set(size_t setting, T content);

private:
    /// The settings of a kind of channel, and the columns that show them.
    struct Settings;

    const Settings& settings() const;
    size_t settingOf(unsigned columnId) const;
    void bindOwn();
};

/// Mediator of one HF memory channel.
class MemoryMediatorHF : public MemoryMediator {
public:
    MemoryMediatorHF(MediatorCtrl* controller, Observable* node, int kind);

    /// Shift and BFO frequency in Hz.
    bool GetShift(long& hertz) const;
    void SetShift(long hertz);
    bool GetBFOFrequency(long& hertz) const;
    void SetBFOFrequency(long hertz);
    bool GetOutputIFPath(QString& path) const;
    /// Chooses among the paths that the channel offers.
    void SetOutputIFPath(const QString& path);

private:
    friend class MemoryMediator;
    enum OwnSetting : size_t { OutputIFPath = FirstOwnOfMemory, Shift, BFOFrequency, End };
};

/// Mediator of one VHF/UHF memory channel.
class MemoryMediatorVUHF : public MemoryMediator {
public:
    MemoryMediatorVUHF(MediatorCtrl* controller, Observable* node, int kind);

    bool GetAFC(bool& on) const;
    void SetAFC(bool on);
    /// Whether the threshold acts as a squelch.
    bool GetUseThreshold(bool& use) const;
    void SetUseThreshold(bool use);
    /// Whether the attenuation is set by hand, and the attenuation in dB.
    bool GetUseAttenuation(bool& use) const;
    void SetUseAttenuation(bool use);
    bool GetAttenuation(long& decibels) const;
    void SetAttenuation(long decibels);
    bool GetAntenna(long& id) const;
    void SetAntenna(long id);

private:
    friend class MemoryMediator;
    enum OwnSetting : size_t {
        UseSquelch = FirstOwnOfMemory,
        UseAttenuation,
        Attenuation,
        AFC,
        AntennaID,
        End
    };
    static_assert(size_t(End) <= BoundValues::Count);
};
