#pragma once

#include "controls/frequencystore/common/simplefrequency.h"

/// What the memory channels of all receivers have in common: bandwidth, demodulation and threshold, the type
/// 'm', and the range. A channel can stand for a range of scan frequencies: its own frequency is the first of
/// them, and "rangefrequencies" holds the others in the order in which they were added.
///
/// A new channel takes limits, choices and settings of the receiver where its template is bound to one, else
/// the defaults of each value. Setters do nothing when their value is missing, and store what they are given.
class MemoryEntry : public SimpleFrequency {
public:
    static constexpr char Type = 'm';
    /// Range number of a channel that has none.
    static constexpr int NoRange = -1;

    /// What channels share with other entries; frequency and bandwidth in Hz.
    void SetBasics(double frequency, double bandwidth, const QString& comment, const QString& demodulation);
    void SetThreshold(long threshold) { SetNumber(m_threshold, threshold); }
    /// Says that the channel stands for a range.
    void SetInRange() { Set(m_range, true); }
    void SetRangeNumber(long number) { SetNumber(m_rangeCounter, number); }
    /// Adds a further frequency (Hz) to the range.
    void SetFrequencyInRange(double hertz);

    /// The range number; false when the channel's value is gone.
    bool GetRangeNumber(int& number) const;

protected:
    using SimpleFrequency::SimpleFrequency;

    /// A setting that is an integer: limits and content where the receiver does not give them.
    struct IntegerSetting {
        const FreqList::Key& key;
        int min;
        int max;
        int content;

        Shape::Field Field() const { return Shape::Number<int>(key, min, max, 1); }
    };
    static const IntegerSetting ThresholdSetting;
    static const IntegerSetting RangeCounterSetting;

    /// A new entry makes its values in these steps, with the receiver's own ones between them.
    void MakeBandwidthAndDemodulation();
    void MakeThreshold();
    void MakeTypeAndRange();
    /// Finds the values that exist.
    void AttachCommon();

    ValueNumeric<int>* MakeInteger(const IntegerSetting& setting, const ValueNumeric<int>* source);
    Value<bool>* MakeFlag(Names::Id key, const Value<bool>* source);
    /// A number outside the value's own type is cut to it.
    void SetNumber(ValueNumeric<int>* held, long number);

private:
    ValueNumeric<int>* m_threshold = nullptr;
    Value<char>* m_type = nullptr;
    Value<bool>* m_range = nullptr;
    ValueNumeric<int>* m_rangeCounter = nullptr;
    ValueList<double>* m_rangeFrequencies = nullptr;
};
