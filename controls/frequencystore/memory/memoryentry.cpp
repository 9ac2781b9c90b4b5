#include "controls/frequencystore/memory/memoryentry.h"

#include <algorithm>

namespace {

/// The limits of a number that the receiver offers as a choice: those of its items.
void takeLimits(const ValueSelection& choice, ValueNumeric<double>& number) {
    double min = choice.GetCurrentValue();
    double max = min;
    for (long i = 0; i < choice.GetItemCount(); ++i) {
        min = std::min(min, choice.ItemAt(i)->GetValue());
        max = std::max(max, choice.ItemAt(i)->GetValue());
    }
    number.SetMinMax(min, max, 1.0);
    number.SetValue(choice.GetCurrentValue());
}

} // namespace

const MemoryEntry::IntegerSetting MemoryEntry::ThresholdSetting{Keys::Threshold, -40, 110, 0};
const MemoryEntry::IntegerSetting MemoryEntry::RangeCounterSetting{Keys::RangeCounter, -1, 1000, NoRange};

void MemoryEntry::MakeBandwidthAndDemodulation() {
    auto* bandwidth = Make<ValueNumeric<double>>(Keys::BandwidthSel);
    if (BandwidthSelectionLink() && BandwidthSelectionLink()->GetItemCount() > 0)
        takeLimits(*BandwidthSelectionLink(), *bandwidth);
    else if (!CopyFromSource(BandwidthLink(), bandwidth))
        bandwidth->SetMinMax(0.0, MaxBandwidth, 1.0);

    auto* demodulation = Make<ValueSelection>(Keys::KeyDemodulation);
    if (!CopyFromSource(DemodulationSelectionLink(), demodulation))
        SelectOrAppend(*demodulation, QStringLiteral("NONE"));
}

void MemoryEntry::MakeThreshold() {
    m_threshold = MakeInteger(ThresholdSetting, ThresholdLink());
}

void MemoryEntry::MakeTypeAndRange() {
    m_type = Make<Value<char>>(Keys::KeyType);
    if (!CopyFromSource(TypeLink(), m_type))
        m_type->SetValue(Type);
    m_range = MakeFlag(Keys::Range, nullptr);
    m_rangeCounter = MakeInteger(RangeCounterSetting, nullptr);
    m_rangeFrequencies = Make<ValueList<double>>(Keys::RangeFrequencies);
}

void MemoryEntry::AttachCommon() {
    m_threshold = Find<ValueNumeric<int>>(Keys::Threshold);
    m_type = Find<Value<char>>(Keys::KeyType);
    m_range = Find<Value<bool>>(Keys::Range);
    m_rangeCounter = Find<ValueNumeric<int>>(Keys::RangeCounter);
    m_rangeFrequencies = Find<ValueList<double>>(Keys::RangeFrequencies);
}

ValueNumeric<int>* MemoryEntry::MakeInteger(const IntegerSetting& setting, const ValueNumeric<int>* source) {
    auto* value = Make<ValueNumeric<int>>(setting.key);
    if (!CopyFromSource(source, value)) {
        value->SetMinMax(setting.min, setting.max, 1);
        value->SetValue(setting.content);
    }
    return value;
}

Value<bool>* MemoryEntry::MakeFlag(Names::Id key, const Value<bool>* source) {
    auto* value = Make<Value<bool>>(key);
    if (!CopyFromSource(source, value))
        value->SetValue(false);
    return value;
}

void MemoryEntry::SetNumber(ValueNumeric<int>* held, long number) {
    using Limits = std::numeric_limits<int>;
    Set(held, static_cast<int>(std::clamp<long>(number, Limits::min(), Limits::max())));
}

void MemoryEntry::SetBasics(double frequency, double bandwidth, const QString& comment,
                            const QString& demodulation) {
    SetBandwidth(bandwidth);
    SetFrequency(frequency);
    SetComment(comment);
    SetDemodulation(demodulation);
}

void MemoryEntry::SetFrequencyInRange(double hertz) {
    if (auto* frequencies = Alive(m_rangeFrequencies))
        frequencies->PushBack(hertz);
}

bool MemoryEntry::GetRangeNumber(int& number) const {
    const auto* value = Alive(m_rangeCounter);
    if (value)
        number = value->GetValue();
    return value != nullptr;
}
