#include "controls/frequencystore/common/simplefrequency.h"

#include <cmath>
#include <limits>

namespace {

/// A key that no item of the selection has.
long freeKey(const ValueSelection& selection) {
    long key = selection.GetItemCount();
    while (selection.GetItem(key))
        ++key;
    return key;
}

} // namespace

SimpleFrequency::SimpleFrequency(Node* node, bool create, const GeneralEntry* source)
    : GeneralEntry(source ? *source : GeneralEntry()) {
    if (!node)
        return;
    m_node = node;
    m_inTree = node->IsInTree();
    m_removedValues = node->RemovedValues();
    if (!create) {
        m_frequency = Find<ValueNumeric<double>>(Keys::KeyFrequency);
        m_comment = Find<Value<QString>>(Keys::KeyComment);
        return;
    }
    m_frequency = Make<ValueNumeric<double>>(Keys::KeyFrequency);
    if (!CopyFromSource(FrequencyLink(), m_frequency))
        m_frequency->SetMinMax(0.0, std::numeric_limits<double>::max(), 1.0);
    m_comment = Make<Value<QString>>(Keys::KeyComment);
    m_comment->SetValue(m_frequency->GetStringValue());
}

bool SimpleFrequency::stillThere(const ValueBase* value) const {
    const Node* node = m_node.get();
    if (node && node->RemovedValues() == m_removedValues)
        return true;
    for (const ValueBase* own = node ? node->FirstValue() : nullptr; own; own = Node::NextValue(own)) {
        if (own == value)
            return true;
    }
    return std::find(m_outside.begin(), m_outside.end(), value) != m_outside.end();
}

ValueBase* SimpleFrequency::ownValue(Names::Id key) const {
    const Node* node = m_node.get();
    return node ? node->FindOwnValue(key) : nullptr;
}

void SimpleFrequency::SetFrequency(double hertz) {
    Set(m_frequency, hertz);
}

void SimpleFrequency::SetComment(const QString& comment) {
    Set(m_comment, comment);
}

void SimpleFrequency::SetBandwidth(double hertz) {
    ValueBase* value = ownValue(Keys::KeyBandwidth);
    if (!value)
        value = ownValue(Keys::BandwidthSel);
    if (IValueNumeric* number = numeric_cast(value)) {
        number->SetFromDouble(hertz);
    } else if (auto* selection = value_cast<ValueSelection>(value);
               selection && !selection->Select(hertz, nullptr, false)) {
        const long key = freeKey(*selection);
        selection->AddItem(Quor::ToShortest(hertz), hertz, key);
        selection->Select(key);
    }
}

void SimpleFrequency::SetBandwidth(long keyOrHertz) {
    if (auto* selection = value_cast<ValueSelection>(ownValue(Keys::BandwidthSel)))
        selection->Select(keyOrHertz);
    else
        SetBandwidth(static_cast<double>(keyOrHertz));
}

ValueNumeric<double>* SimpleFrequency::MakeBandwidth() {
    auto* bandwidth = Make<ValueNumeric<double>>(Keys::KeyBandwidth);
    if (BandwidthSelectionLink() || !CopyFromSource(BandwidthLink(), bandwidth))
        bandwidth->SetMinMax(0.0, MaxBandwidth, 1.0);
    return bandwidth;
}

void SimpleFrequency::SetDemodulation(const QString& demodulation) {
    ValueBase* value = ownValue(Keys::KeyDemodulation);
    if (auto* selection = value_cast<ValueSelection>(value))
        SelectOrAppend(*selection, demodulation);
    else if (value)
        value->SetStringValue(demodulation);
}

void SimpleFrequency::SelectOrAppend(ValueSelection& selection, const QString& text) {
    if (selection.Select(text) || text.isEmpty())
        return;
    const long key = freeKey(selection);
    selection.AddItem(text, 0.0, key);
    selection.Select(key);
}
