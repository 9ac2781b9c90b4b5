#include "controls/frequencystore/targets/wkflistentry.h"

#include <limits>

namespace {

constexpr int LowestPriority = 11;

/// The values, in order.
enum Field : size_t {
    Frequency,
    Comment,
    Bandwidth,
    Demodulation,
    Type,
    ThreatClass,
    Priority,
    ProfileID,
    SignalClass,
    TransmissionSystem,
    ProfileName,
};

} // namespace

const Shape& WkfTarget::Shape() {
    using S = ::Shape;
    static const S& shape =
        S::Make({S::Number<double>(Keys::KeyFrequency, 0.0, std::numeric_limits<double>::max(), 1.0),
                 S::Text(Keys::KeyComment),
                 S::Number<double>(Keys::KeyBandwidth, 0.0, SimpleFrequency::MaxBandwidth, 1.0),
                 S::Text(Keys::KeyDemodulation), S::Letter(Keys::KeyType), S::Text(Keys::ThreatClass),
                 S::Number<int>(Keys::Priority, 1, LowestPriority, 1), S::Text(Keys::ProfileID),
                 S::Text(Keys::SignalClass), S::Text(Keys::TransmissionSystem), S::Text(Keys::ProfileName)});
    return shape;
}

bool WkfTarget::Fill(const Content& content) {
    if (!m_node.IsInTree() || !m_node.FillFromShape())
        return false;
    const std::pair<Field, double> numbers[] = {{Frequency, content.frequency},
                                                {Bandwidth, content.bandwidth}};
    for (const auto& [field, hertz] : numbers)
        m_node.ShapedValue<ValueNumeric<double>>(field).SetValue(hertz);
    m_node.ShapedValue<ValueNumeric<int>>(Priority).SetValue(content.priority);
    const std::pair<Field, QStringView> texts[] = {{Comment, content.comment},
                                                   {Demodulation, content.demodulation},
                                                   {ThreatClass, content.threatClass},
                                                   {ProfileID, content.profileID},
                                                   {ProfileName, content.profileName},
                                                   {SignalClass, content.signalClass},
                                                   {TransmissionSystem, content.transmissionSystem}};
    for (const auto& [field, text] : texts) {
        if (!text.isEmpty())
            m_node.ShapedValue<Value<QString>>(field).SetText(text);
    }
    return true;
}

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
    m_bandwidth = MakeBandwidth();
    m_demodulation = Make<Value<QString>>(Keys::KeyDemodulation);
    // A receiver that offers demodulation as a selection only gives new targets none.
    if (DemodulationSelectionLink() || !CopyFromSource(DemodulationTextLink(), m_demodulation))
        m_demodulation->SetValue(QStringLiteral("NONE"));

    m_type = Make<Value<char>>(Keys::KeyType);
    CopyFromSource(TypeLink(), m_type);
    m_threatClass = Make<Value<QString>>(Keys::ThreatClass);
    m_priority = Make<ValueNumeric<int>>(Keys::Priority);
    m_priority->SetMinMax(1, LowestPriority, 1);

    const QString undefined = QStringLiteral("undefined");
    const std::pair<Value<QString>**, Names::Id> profile[] = {
        {&m_profileID, Keys::ProfileID},
        {&m_signalClass, Keys::SignalClass},
        {&m_transmissionSystem, Keys::TransmissionSystem},
        {&m_profileName, Keys::ProfileName}};
    for (const auto& [member, key] : profile) {
        *member = Make<Value<QString>>(key);
        (*member)->SetValue(undefined);
    }
}

void WkfListEntry::attach() {
    m_demodulation = Find<Value<QString>>(Keys::KeyDemodulation);
    m_type = Find<Value<char>>(Keys::KeyType);
    m_threatClass = Find<Value<QString>>(Keys::ThreatClass);
    m_priority = Find<ValueNumeric<int>>(Keys::Priority);
    m_bandwidth = Find<ValueNumeric<double>>(Keys::KeyBandwidth);
    m_profileID = Find<Value<QString>>(Keys::ProfileID);
    m_signalClass = Find<Value<QString>>(Keys::SignalClass);
    m_transmissionSystem = Find<Value<QString>>(Keys::TransmissionSystem);
    m_profileName = Find<Value<QString>>(Keys::ProfileName);
}
