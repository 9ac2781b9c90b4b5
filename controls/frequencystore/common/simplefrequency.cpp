#include "controls/frequencystore/common/simplefrequency.h"

#include <cmath>
#include <limits>

namespace {

/// A key that no item of the selection has.
long freeKey(const ValueSelection& selection) {
    long key = selection.GetItemCount();
    while (selection.GetItemIndex(key) >= 0)
        ++key;
    return key;
}

} // namespace

NewEntryNode::NewEntryNode(Node& list, Names::Id name, const Shape& shape)
    : node(Node::NewEntry(&list, name, shape)) {
    list.AddItemUnique(node);
    const bool isWhole = node->IsInTree() && node->FillFromShape();
    use = isWhole ? SimpleFrequency::Use::Passing : SimpleFrequency::Use::Kept;
}

SimpleFrequency::SimpleFrequency(Node* node, bool create, const GeneralEntry* source, Use use)
    : GeneralEntry(source ? *source : GeneralEntry()) {
    if (!node)
        return;
    if (use == Use::Passing)
        m_passed = node;
    else
        m_kept = node;
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

Shape::Field SimpleFrequency::FrequencyField() {
    return Shape::Number<double>(Keys::KeyFrequency, 0.0, std::numeric_limits<double>::max(), 1.0);
}

Shape::Field SimpleFrequency::BandwidthField(Names::Id key) {
    return Shape::Number<double>(key, 0.0, MaxBandwidth, 1.0);
}

bool SimpleFrequency::stillThere(const ValueBase* value) const {
    const Node* const there = GetNode();
    if (there && there->RemovedValues() == m_removedValues)
        return true;
    for (const ValueBase* own = there ? there->FirstValue() : nullptr; own; own = Node::NextValue(own)) {
        if (own == value)
            return true;
    }
    return std::find(m_outside.begin(), m_outside.end(), value) != m_outside.end();
}

ValueBase* SimpleFrequency::ownValue(Names::Id key) const {
    const Node* const there = GetNode();
    return there ? there->FindOwnValue(key) : nullptr;
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
