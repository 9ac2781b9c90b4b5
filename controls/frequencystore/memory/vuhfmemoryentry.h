#pragma once

#include "controls/frequencystore/memory/memoryentry.h"

/// A memory channel of a VHF/UHF receiver.
class VUHFMemoryEntry : public MemoryEntry {
public:
    VUHFMemoryEntry(Node* node, bool create, const GeneralEntry* source, Use use = Use::Kept);
    static const class Shape& Shape();

    void SetAfc(bool on) { Set(m_afc, on); }
    /// Whether the threshold works as squelch.
    void SetUseSquelch(bool on) { Set(m_useSquelch, on); }
    /// Whether attenuation is set by hand.
    void SetUseAttenuation(bool on) { Set(m_useAttenuation, on); }
    void SetAttenuation(long decibel) { SetNumber(m_attenuation, decibel); }
    void SetAntennaID(long id) { SetNumber(m_antennaID, id); }

private:
    static const IntegerSetting AttenuationSetting;
    static const IntegerSetting AntennaSetting;

    void create();
    void attach();

    Value<bool>* m_afc = nullptr;
    Value<bool>* m_useSquelch = nullptr;
    Value<bool>* m_useAttenuation = nullptr;
    ValueNumeric<int>* m_attenuation = nullptr;
    ValueNumeric<int>* m_antennaID = nullptr;
};
