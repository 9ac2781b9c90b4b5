#include "controls/frequencystore/memory/hfmemoryentry.h"

HFMemoryEntry::HFMemoryEntry(Node* node, bool createValues, const GeneralEntry* source)
    : MemoryEntry(node, createValues, source) {
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
    m_shift = MakeInteger(Keys::Shift, ShiftLink(), {26, 39974, 20000});
    m_bfoFrequency = MakeInteger(Keys::BFOFrequency, BFOFrequencyLink(), {-10000, 10000, 0});
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
