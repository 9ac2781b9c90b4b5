#include "controls/frequencystore/noi/noifrequency.h"

const Shape& NOIFrequency::Shape() {
    using S = ::Shape;
    static const S& shape =
        S::Make({FrequencyField(), S::Text(Keys::KeyComment), BandwidthField(Keys::KeyBandwidth)});
    return shape;
}

NOIFrequency::NOIFrequency(Node* node, bool create, const GeneralEntry* source, Use use)
    : SimpleFrequency(node, create, source, use) {
    if (!node)
        return;
    if (create)
        m_bandwidth = MakeBandwidth();
    else
        m_bandwidth = Find<ValueNumeric<double>>(Keys::KeyBandwidth);
}
