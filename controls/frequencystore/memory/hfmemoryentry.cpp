#include "controls/frequencystore/memory/hfmemoryentry.h"

const MemoryEntry::IntegerSetting HFMemoryEntry::ShiftSetting{Keys::Shift, 26, 39974, 20000};
const MemoryEntry::IntegerSetting HFMemoryEntry::BFOSetting{Keys::BFOFrequency, -10000, 10000, 0};

const Shape& HFMemoryEntry::Shape() {
    using S = ::Shape;
    static const S& shape =
        S::Make({FrequencyField(), S::Text(Keys::KeyComment), BandwidthField(Keys::BandwidthSel),
                 S::Selection(Keys::KeyDemodulation), S::Selection(Keys::OutputIFPath), ShiftSetting.Field(),
                 BFOSetting.Field(), ThresholdSetting.Field(), S::Letter(Keys::KeyType), S::Flag(Keys::Range),
                 RangeCounterSetting.Field(), S::Numbers(Keys::RangeFrequencies)});
    return shape;
}

HFMemoryEntry::HFMemoryEntry(Node* node, bool createValues, const GeneralEntry* source, Use use)
    : MemoryEntry(node, createValues, source, use) {
    if (!node)
        return;
    if (createValues)
        create();
    else
        attach();
}

void HFMemoryEntry::create() {
    MakeBandwidthAndDemodulation();
    m_outputIFPath = Make<ValueSelection>(Keys::OutputIFPath);
    if (!CopyFromSource(OutputIFLink(), m_outputIFPath)) {
        m_outputIFPath->DeleteItems();
        m_outputIFPath->AddItem(QStringLiteral("48.0 kHz"), 48.0, 0);
        m_outputIFPath->AddItem(QStringLiteral("455.0 kHz"), 455.0, 1);
    }
    m_shift = MakeInteger(ShiftSetting, ShiftLink());
    m_bfoFrequency = MakeInteger(BFOSetting, BFOFrequencyLink());
    MakeThreshold();
    MakeTypeAndRange();
}

void HFMemoryEntry::attach() {
    m_outputIFPath = Find<ValueSelection>(Keys::OutputIFPath);
    m_shift = Find<ValueNumeric<int>>(Keys::Shift);
    m_bfoFrequency = Find<ValueNumeric<int>>(Keys::BFOFrequency);
    AttachCommon();
}

void HFMemoryEntry::SetOutputIFPath(const QString& path) {
    if (auto* selection = Alive(m_outputIFPath))
        SelectOrAppend(*selection, path);
}
