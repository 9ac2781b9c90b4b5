#pragma once

#include "controls/frequencystore/memory/memoryentry.h"

/// A memory channel of an HF receiver.
class HFMemoryEntry : public MemoryEntry {
public:
    HFMemoryEntry(Node* node, bool create, const GeneralEntry* source, Use use = Use::Kept);
    static const class Shape& Shape();

    /// Selects the path of the IF output by its text; one that the receiver does not offer becomes a new
    /// item.
    void SetOutputIFPath(const QString& path);
    void SetShift(long hertz) { SetNumber(m_shift, hertz); }
    void SetBFOFrequency(long hertz) { SetNumber(m_bfoFrequency, hertz); }

private:
    static const IntegerSetting ShiftSetting;
    static const IntegerSetting BFOSetting;

    void create();
    void attach();

    ValueSelection* m_outputIFPath = nullptr;
    ValueNumeric<int>* m_shift = nullptr;
    ValueNumeric<int>* m_bfoFrequency = nullptr;
};
