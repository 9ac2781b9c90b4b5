#include "controls/frequencystore/entries/wkflistentry.h"

namespace {

struct KeyIds {
    Names::Id bandwidth = FreqList::KeyId(Keys::KeyBandwidth);
    Names::Id demodulation = FreqList::KeyId(Keys::KeyDemodulation);
    Names::Id type = FreqList::KeyId(Keys::KeyType);
    Names::Id threadClass = FreqList::KeyId(Keys::ThreadClass);
    Names::Id priority = FreqList::KeyId(Keys::Priority);
    Names::Id profileID = FreqList::KeyId(Keys::ProfileID);
    Names::Id signalClass = FreqList::KeyId(Keys::SignalClass);
    Names::Id transmissionSystem = FreqList::KeyId(Keys::TransmissionSystem);
    Names::Id profileName = FreqList::KeyId(Keys::ProfileName);
};

const KeyIds& keys() {
    static const KeyIds ids;
    return ids;
}

constexpr double MaxBandwidth = 3e9; // Hz

} // namespace

WkfListEntry::WkfListEntry(Node* node, bool createValues, const GeneralEntry* source)
    : SimpleFrequency(node, createValues, source) {
    if (!node)
        return;
    if (createValues)
        create();
    else
        attach();
}

void WkfListEntry::create() {
    m_bandwidth = Make<ValueNumeric<double>>(keys().bandwidth);
    // A bandwidth that the receiver offers as a selection does not fit a number: the limits below apply.
    if (BandwidthSelectionLink() || !CopyFromSource(BandwidthLink(), m_bandwidth))
        m_bandwidth->SetMinMax(0.0, MaxBandwidth, 1.0);

    m_demodulation = Make<Value<QString>>(keys().demodulation);
    // A receiver that offers demodulation as a selection only gives new targets none.
    if (DemodulationSelectionLink() || !CopyFromSource(DemodulationTextLink(), m_demodulation))
        m_demodulation->SetValue(QStringLiteral("NONE"));

    m_type = Make<Value<char>>(keys().type);
    CopyFromSource(TypeLink(), m_type);
    m_threadClass = Make<Value<QString>>(keys().threadClass);
    m_priority = Make<ValueNumeric<int>>(keys().priority);
    m_priority->SetMinMax(1, 11, 1);

    const QString undefined = QStringLiteral("undefined");
    for (const auto& [member, key] :
         {std::pair(&m_profileID, keys().profileID), std::pair(&m_signalClass, keys().signalClass),
          std::pair(&m_transmissionSystem, keys().transmissionSystem),
          std::pair(&m_profileName, keys().profileName)}) {
        *member = Make<Value<QString>>(key);
        (*member)->SetValue(undefined);
    }
}

void WkfListEntry::attach() {
    m_demodulation = Find<Value<QString>>(keys().demodulation);
    m_type = Find<Value<char>>(keys().type);
    m_threadClass = Find<Value<QString>>(keys().threadClass);
    m_priority = Find<ValueNumeric<int>>(keys().priority);
    m_bandwidth = Find<ValueNumeric<double>>(keys().bandwidth);
    m_profileID = Find<Value<QString>>(keys().profileID);
    m_signalClass = Find<Value<QString>>(keys().signalClass);
    m_transmissionSystem = Find<Value<QString>>(keys().transmissionSystem);
    m_profileName = Find<Value<QString>>(keys().profileName);
}
