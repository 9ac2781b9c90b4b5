#include "controls/frequencystore/noi/noifrequency.h"

NOIFrequency::NOIFrequency(Node* node, bool create, const GeneralEntry* source)
    : SimpleFrequency(node, create, source) {
    if (!node)
        return;
    if (create)
        m_bandwidth = MakeBandwidth();
    else
        m_bandwidth = Find<ValueNumeric<double>>(Keys::KeyBandwidth);
}
