#include "controls/frequencystore/memory/vuhfmemoryentry.h"

const MemoryEntry::IntegerSetting VUHFMemoryEntry::AttenuationSetting{Keys::Attenuation, 0, 40, 0};
const MemoryEntry::IntegerSetting VUHFMemoryEntry::AntennaSetting{Keys::AntennaID, 0, 99, 0};

const Shape& VUHFMemoryEntry::Shape() {
    using S = ::Shape;
    static const S& shape =
        S::Make({FrequencyField(), S::Text(Keys::KeyComment), BandwidthField(Keys::BandwidthSel),
                 S::Selection(Keys::KeyDemodulation), ThresholdSetting.Field(), S::Flag(Keys::AFC),
                 S::Flag(Keys::UseSquelch), S::Flag(Keys::UseAttenuation), AttenuationSetting.Field(),
                 AntennaSetting.Field(), S::Letter(Keys::KeyType), S::Flag(Keys::Range),
                 RangeCounterSetting.Field(), S::Numbers(Keys::RangeFrequencies)});
    return shape;
}

VUHFMemoryEntry::VUHFMemoryEntry(Node* node, bool createValues, const GeneralEntry* source, Use use)
    : MemoryEntry(node, createValues, source, use) {
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
    m_attenuation = MakeInteger(AttenuationSetting, AttenuationLink());
    m_antennaID = MakeInteger(AntennaSetting, AntennaLink());
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
