#include "controls/frequencystore/common/generalentry.h"

#include "host/base/quoros.h"
#include "host/valuetree/tree.h"

#include <array>

namespace {

constexpr size_t LinkCount = 19;
constexpr size_t LockTimeIndex = 7;

/// Type of the value that each link takes, in link order.
constexpr ValueType LinkTypes[LinkCount] = {
    ValueType::NumericDouble, ValueType::NumericDouble, ValueType::Text,       ValueType::Selection,
    ValueType::Text,          ValueType::Char,          ValueType::Selection,  ValueType::NumericInt64,
    ValueType::Selection,     ValueType::Selection,     ValueType::NumericInt, ValueType::NumericInt,
    ValueType::NumericInt,    ValueType::NumericInt,    ValueType::Bool,       ValueType::Bool,
    ValueType::Bool,          ValueType::NumericInt,    ValueType::NumericInt,
};

/// In which order the links are looked through when a value ends.
constexpr size_t RemovalOrder[LinkCount] = {0, 1, 2, 4, 5, 6, 7, 8, 9, 10, 11, 12, 3, 13, 14, 15, 16, 17, 18};

constexpr size_t None = LinkCount;

struct LinkOfId {
    unsigned id;
    size_t first;
    size_t selection; ///< second choice when binding, first choice when copying
};

constexpr LinkOfId LinksOfIds[] = {
    {SourceFrequency, 0, None},     {SourceBandwidth, 1, 8},      {SourceDemodulation, 2, 3},
    {SourceType, 5, None},          {SourceText, 4, None},        {SourceLocked, 6, None},
    {SourceLockTime, 7, None},      {SourceConfidence, 13, None}, {SourceThreshold, 11, None},
    {SourceBFOFrequency, 12, None}, {SourceOutputIF, 9, None},    {SourceShift, 10, None},
    {SourceThresholdToo, 11, None}, {SourceUseSquelch, 16, None}, {SourceUseAttenuation, 15, None},
    {SourceAttenuation, 17, None},  {SourceAntenna, 18, None},    {SourceAFC, 14, None},
};

const LinkOfId* linkOf(unsigned id) {
    for (const LinkOfId& entry : LinksOfIds) {
        if (entry.id == id)
            return &entry;
    }
    return nullptr;
}

} // namespace

struct GeneralEntry::Links {
    std::array<WeakRef<ValueBase>, LinkCount> values;
};

GeneralEntry::GeneralEntry() = default;

GeneralEntry::GeneralEntry(const GeneralEntry& other) : IObserver(other) {
    *this = other;
}

GeneralEntry& GeneralEntry::operator=(const GeneralEntry& other) {
    if (this != &other)
        m_links = other.m_links ? std::make_unique<Links>(*other.m_links) : nullptr;
    return *this;
}

GeneralEntry::~GeneralEntry() {
    for (size_t i = 0; m_links && i < LinkCount; ++i) {
        if (ValueBase* value = linked(i))
            value->DeleteObserver(this);
    }
}

ValueBase* GeneralEntry::linked(size_t index) const {
    return m_links ? m_links->values[index].get() : nullptr;
}

bool GeneralEntry::bind(size_t index, const QString& path) {
    if (ValueBase* old = linked(index))
        old->DeleteObserver(this);
    ValueBase* found = Tree::Instance()->GetValue(path);
    const bool fits = found && found->GetType() == LinkTypes[index];
    if (!m_links)
        m_links = std::make_unique<Links>();
    m_links->values[index] = fits ? found : nullptr;
    if (fits)
        found->AddObserver(this);
    return fits;
}

bool GeneralEntry::AddSourceValue(unsigned id, const QString& path) {
    const LinkOfId* link = linkOf(id);
    if (!link)
        return false;
    return bind(link->first, path) || (link->selection != None && bind(link->selection, path));
}

bool GeneralEntry::CopyFromSource(const IValueNumeric* source, IValueNumeric* target) {
    if (!source || !target)
        return false;
    target->CopyNumeric(*source);
    return true;
}

bool GeneralEntry::CopyFromSource(const ValueBase* source, ValueBase* target) {
    if (!source || !target)
        return false;
    target->SetStringValue(source->GetStringValue());
    return true;
}

bool GeneralEntry::CopyFromSource(const ValueSelection* source, ValueSelection* target) {
    if (!source || !target)
        return false;
    target->DeleteItems();
    target->AddItemsFrom(*source);
    target->Select(source->GetCurrentKey());
    return true;
}

/// Values copy as what they both are: numbers as numbers, selections as selections, all others as text.
bool GeneralEntry::copyLinked(size_t index, ValueBase* target) const {
    ValueBase* source = linked(index);
    if (!source || !target)
        return false;
    if (numeric_cast(source))
        return CopyFromSource(numeric_cast(source), numeric_cast(target));
    if (source->GetType() == ValueType::Selection)
        return CopyFromSource(value_cast<ValueSelection>(source), value_cast<ValueSelection>(target));
    return CopyFromSource(source, target);
}

bool GeneralEntry::InitValueFrom(unsigned id, ValueBase* target) {
    const LinkOfId* link = linkOf(id);
    if (!link)
        return false;
    const bool bySelection = link->selection != None && linked(link->selection);
    return copyLinked(bySelection ? link->selection : link->first, target);
}

void GeneralEntry::SpecialValueInit(unsigned id, ValueNumeric<qint64>* target) {
    auto* source = value_cast<ValueNumeric<qint64>>(linked(LockTimeIndex));
    if (id != SourceLockTime || !source || !target)
        return;
    target->CopyNumeric(*source);
    if (source->GetValue() == 0)
        source->SetValue(QuorOS::Create().CurrentTime());
}

void GeneralEntry::Update(Observable* subject, TChangeCode code) {
    if (code != TChangeCode::Removing)
        return;
    for (const size_t index : RemovalOrder) {
        ValueBase* value = linked(index);
        if (!value || static_cast<Observable*>(value) != subject)
            continue;
        if (value->GetState() == TValueState::Removing) {
            value->DeleteObserver(this);
            m_links->values[index] = nullptr;
        }
        return;
    }
}
