#include "controls/frequencystore/memory/vuhfmemoryentry.h"

VUHFMemoryEntry::VUHFMemoryEntry(Node* node, bool createValues, const GeneralEntry* source)
    : MemoryEntry(node, createValues, source) {
    if (!node)
        return;
    if (createValues)
        create();
    else
        attach();
}

void VUHFMemoryEntry::create() {
    MakeBandwidthAndDemodulation();
    MakeThreshold();
    m_afc = MakeFlag(Keys::AFC, AFCLink());
    m_useSquelch = MakeFlag(Keys::UseSquelch, UseSquelchLink());
    m_useAttenuation = MakeFlag(Keys::UseAttenuation, UseAttenuationLink());
    m_attenuation = MakeInteger(Keys::Attenuation, AttenuationLink(), {0, 40, 0});
    m_antennaID = MakeInteger(Keys::AntennaID, AntennaLink(), {0, 99, 0});
    MakeTypeAndRange();
}

void VUHFMemoryEntry::attach() {
    AttachCommon();
    m_afc = Find<Value<bool>>(Keys::AFC);
    m_useSquelch = Find<Value<bool>>(Keys::UseSquelch);
    m_useAttenuation = Find<Value<bool>>(Keys::UseAttenuation);
    m_attenuation = Find<ValueNumeric<int>>(Keys::Attenuation);
    m_antennaID = Find<ValueNumeric<int>>(Keys::AntennaID);
}
