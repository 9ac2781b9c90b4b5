#pragma once

#include "controls/frequencystore/common/simplefrequency.h"

/// One frequency of interest: a frequency, the bandwidth around it, and a comment.
class NOIFrequency : public SimpleFrequency {
public:
    /// As of every entry; a new one takes limits and settings from the receiver that `source` is bound to.
    /// Its bandwidth has a range of 0 to 3 GHz where the receiver offers bandwidth as a selection or not at
    /// all.
    NOIFrequency(Node* node, bool create, const GeneralEntry* source, Use use = Use::Kept);
    static const class Shape& Shape();

    /// Null where an existing entry has no bandwidth, and after the value ended.
    ValueNumeric<double>* GetBandwidthValue() const { return Alive(m_bandwidth); }

private:
    ValueNumeric<double>* m_bandwidth = nullptr;
};
