#include "controls/frequencystore/results/searchmcdataresult.h"

const Shape& SearchMCDataResult::Shape() {
    using S = ::Shape;
    static const S& shape =
        S::Make({FrequencyField(), S::Text(Keys::KeyComment), S::Selection(Keys::BandwidthSel),
                 S::Selection(Keys::Locked), S::Number<qint64>(Keys::LockTime, 0, 0, 0),
                 S::Number<int>(Keys::Confidence, 0, 100, 1), S::Letter(Keys::KeyType)});
    return shape;
}

SearchMCDataResult::SearchMCDataResult(Node* node, bool createValues, const GeneralEntry* source, Use use)
    : SimpleFrequency(node, createValues, source, use) {
    if (!node)
        return;
    if (createValues)
        create();
    else
        attach();
}

void SearchMCDataResult::create() {
    m_bandwidthSelection = Make<ValueSelection>(Keys::BandwidthSel);
    // A receiver that has its bandwidth as a number only gives the selection this one item.
    if (!CopyFromSource(BandwidthSelectionLink(), m_bandwidthSelection) && BandwidthLink())
        SetBandwidth(BandwidthLink()->GetValue());

    m_locked = Make<ValueSelection>(Keys::Locked);
    if (!CopyFromSource(LockedLink(), m_locked))
        SelectOrAppend(*m_locked, LockText::Unlocked());

    m_lockTime = Make<ValueNumeric<qint64>>(Keys::LockTime);
    SpecialValueInit(SourceLockTime, m_lockTime);

    m_confidence = Make<ValueNumeric<int>>(Keys::Confidence);
    if (!CopyFromSource(ConfidenceLink(), m_confidence)) {
        m_confidence->SetMinMax(0, 100, 1);
        m_confidence->SetValue(0);
    }
    m_type = Make<Value<char>>(Keys::KeyType);
    CopyFromSource(TypeLink(), m_type);
}

void SearchMCDataResult::attach() {
    m_locked = Find<ValueSelection>(Keys::Locked);
    m_lockTime = Find<ValueNumeric<qint64>>(Keys::LockTime);
    m_bandwidthSelection = Find<ValueSelection>(Keys::BandwidthSel);
    m_confidence = Find<ValueNumeric<int>>(Keys::Confidence);
    m_type = Find<Value<char>>(Keys::KeyType);
}

void SearchMCDataResult::SetLocked(const QString& state) {
    if (ValueSelection* locked = GetLocked())
        SelectOrAppend(*locked, state);
}
