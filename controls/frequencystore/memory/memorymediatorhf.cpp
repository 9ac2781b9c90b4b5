#include "controls/frequencystore/memory/memorymediatorhf.h"

#include "host/base/frequencytext.h"
#include "host/freqstorexml/frequencystorelist.h"
#include "host/valuetree/valueselection.h"

namespace {

/// Type letter of an exported channel.
constexpr char ExportedType[] = "a";
/// A tool tip names that many frequencies of a range.
constexpr size_t FrequenciesInTip = 12;

} // namespace

MemoryMediator::MemoryMediator(MediatorCtrl* controller, Observable* node, int kind, MediatorType type,
                               std::span<const Setting> settings)
    : HalvoITNodeMediator(controller, node, kind, type), m_settings(settings) {
    Q_ASSERT(settings.size() <= MaxSettings);
    MemoryMediator::UpdateDependentValues();
}

void MemoryMediator::UpdateDependentValues() {
    HalvoITNodeMediator::UpdateDependentValues();
    for (size_t i = 0; i < m_settings.size(); ++i) {
        ValueBase* found = OwnValue(*m_settings[i].key);
        Rebind(m_values[i], found && found->GetType() == m_settings[i].type ? found : nullptr);
    }
}

void MemoryMediator::Update(Observable* subject, TChangeCode code) {
    if (subject == m_observable && code == TChangeCode::MediatorNodeEnds) {
        HalvoITNodeMediator::Update(subject, code); // ends this mediator
        return;
    }
    if (code == TChangeCode::Removing) {
        for (ValueBase*& value : m_values)
            ForgetIfRemoved(value, subject);
    }
    HalvoITNodeMediator::Update(subject, code);
    // A value on its way out is still under its node; binding it again would hold on to it.
    if (code != TChangeCode::Removing)
        UpdateDependentValues();
}

template <typename T>
bool MemoryMediator::Get(size_t setting, T& content) const {
    using V = std::conditional_t<std::is_same_v<T, bool>, Value<bool>, ValueNumeric<int>>;
    const V* value = Held<V>(setting);
    if (value)
        content = value->GetValue();
    return value != nullptr;
}

template <typename T>
void MemoryMediator::Set(size_t setting, T content) {
    if constexpr (std::is_same_v<T, bool>) {
        if (auto* flag = Held<Value<bool>>(setting))
            flag->SetValue(content);
    } else if (auto* number = Held<ValueNumeric<int>>(setting)) {
        number->SetFromDouble(static_cast<double>(content)); // cut to what it can hold
    }
}

bool MemoryMediator::GetThreshold(long& level) const {
    return Get(Threshold, level);
}

void MemoryMediator::SetThreshold(long level) {
    Set(Threshold, level);
}

bool MemoryMediator::GetInRange(bool& inRange) const {
    return Get(Range, inRange);
}

bool MemoryMediator::GetRangeNumber(long& number, long& count) const {
    const auto* frequencies = Held<ValueList<double>>(RangeFrequencies);
    if (!frequencies || !Get(RangeCounter, number))
        return false;
    count = static_cast<long>(frequencies->Size());
    return true;
}

bool MemoryMediator::GetFrequencyInRange(long index, double& hertz) const {
    const auto* frequencies = Held<ValueList<double>>(RangeFrequencies);
    if (!frequencies || index < 0 || static_cast<quint64>(index) >= frequencies->Size())
        return false;
    hertz = frequencies->At(index);
    return true;
}

void MemoryMediator::AddToXml(FreqStoreXml::FrequencyStoreList& list) {
    HalvoITNodeMediator::AddToXml(list);
    list.GetFrequencyStoreEntry().last().SetType(QLatin1String(ExportedType));
}

/// Null for a column of the bases.
const MemoryMediator::Setting* MemoryMediator::settingOf(unsigned columnId) const {
    if (columnId == SourceThresholdToo)
        columnId = SourceThreshold;
    const auto found = std::find_if(m_settings.begin(), m_settings.end(),
                                    [=](const Setting& setting) { return setting.column == columnId; });
    return found == m_settings.end() ? nullptr : &*found;
}

bool MemoryMediator::CellText(unsigned columnId, QString& text) {
    const Setting* setting = settingOf(columnId);
    if (!setting)
        return HalvoITNodeMediator::CellText(columnId, text);
    const ValueBase* value = m_values[static_cast<size_t>(setting - m_settings.data())];
    if (value)
        text = value->GetStringValue();
    return value != nullptr;
}

ValueBase* MemoryMediator::EditedValue(unsigned columnId) {
    const Setting* setting = settingOf(columnId);
    return setting ? m_values[static_cast<size_t>(setting - m_settings.data())]
                   : HalvoITNodeMediator::EditedValue(columnId);
}

QString MemoryMediator::CellAddition(unsigned columnId) {
    bool inRange = false;
    const auto* further = Held<ValueList<double>>(RangeFrequencies);
    if (columnId != SourceFrequency || !further || further->Size() == 0 || !GetInRange(inRange) || !inRange)
        return QString();
    return QStringLiteral(" +%1").arg(further->Size());
}

bool MemoryMediator::GetTip(QString& tip, int subItem) {
    if (!HalvoITNodeMediator::GetTip(tip, subItem))
        return false;
    bool inRange = false;
    const auto* frequencies = Held<ValueList<double>>(RangeFrequencies);
    if (!GetInRange(inRange) || !inRange || !frequencies)
        return true;
    tip += QLatin1Char('\n') + QObject::tr("Range of %1 frequencies:").arg(frequencies->Size() + 1) +
           QLatin1Char('\n') + GetFrequencyString(subItem);
    size_t named = 1;
    for (const double hertz : frequencies->GetList()) {
        if (named++ == FrequenciesInTip) {
            tip += QStringLiteral("\n…");
            break;
        }
        tip += QLatin1Char('\n') + Quor::FrequencyText(hertz);
    }
    return true;
}

const MemoryMediator::Setting MemoryMediatorHF::Settings[] = {
    {&Keys::Threshold, ValueType::NumericInt, SourceThreshold},
    {&Keys::Range, ValueType::Bool, NoColumn},
    {&Keys::RangeCounter, ValueType::NumericInt, NoColumn},
    {&Keys::RangeFrequencies, ValueType::DoubleList, NoColumn},
    {&Keys::OutputIFPath, ValueType::Selection, SourceOutputIF},
    {&Keys::Shift, ValueType::NumericInt, SourceShift},
    {&Keys::BFOFrequency, ValueType::NumericInt, SourceBFOFrequency},
};

MemoryMediatorHF::MemoryMediatorHF(MediatorCtrl* controller, Observable* node, int kind)
    : MemoryMediator(controller, node, kind, MediatorType::MemoryHF, Settings) {}

bool MemoryMediatorHF::GetShift(long& hertz) const {
    return Get(Shift, hertz);
}

void MemoryMediatorHF::SetShift(long hertz) {
    Set(Shift, hertz);
}

bool MemoryMediatorHF::GetBFOFrequency(long& hertz) const {
    return Get(BFOFrequency, hertz);
}

void MemoryMediatorHF::SetBFOFrequency(long hertz) {
    Set(BFOFrequency, hertz);
}

bool MemoryMediatorHF::GetOutputIFPath(QString& path) const {
    const auto* paths = Held<ValueSelection>(OutputIFPath);
    if (paths)
        path = paths->GetStringValue();
    return paths != nullptr;
}

void MemoryMediatorHF::SetOutputIFPath(const QString& path) {
    if (auto* paths = Held<ValueSelection>(OutputIFPath))
        paths->Select(path);
}

const MemoryMediator::Setting MemoryMediatorVUHF::Settings[] = {
    {&Keys::Threshold, ValueType::NumericInt, SourceThreshold},
    {&Keys::Range, ValueType::Bool, NoColumn},
    {&Keys::RangeCounter, ValueType::NumericInt, NoColumn},
    {&Keys::RangeFrequencies, ValueType::DoubleList, NoColumn},
    {&Keys::UseSquelch, ValueType::Bool, SourceUseSquelch},
    {&Keys::UseAttenuation, ValueType::Bool, SourceUseAttenuation},
    {&Keys::Attenuation, ValueType::NumericInt, SourceAttenuation},
    {&Keys::AFC, ValueType::Bool, SourceAFC},
    {&Keys::AntennaID, ValueType::NumericInt, SourceAntenna},
};

MemoryMediatorVUHF::MemoryMediatorVUHF(MediatorCtrl* controller, Observable* node, int kind)
    : MemoryMediator(controller, node, kind, MediatorType::MemoryVUHF, Settings) {}

bool MemoryMediatorVUHF::GetAFC(bool& on) const {
    return Get(AFC, on);
}

void MemoryMediatorVUHF::SetAFC(bool on) {
    Set(AFC, on);
}

bool MemoryMediatorVUHF::GetUseThreshold(bool& use) const {
    return Get(UseSquelch, use);
}

void MemoryMediatorVUHF::SetUseThreshold(bool use) {
    Set(UseSquelch, use);
}

bool MemoryMediatorVUHF::GetUseAttenuation(bool& use) const {
    return Get(UseAttenuation, use);
}

void MemoryMediatorVUHF::SetUseAttenuation(bool use) {
    Set(UseAttenuation, use);
}

bool MemoryMediatorVUHF::GetAttenuation(long& decibels) const {
    return Get(Attenuation, decibels);
}

void MemoryMediatorVUHF::SetAttenuation(long decibels) {
    Set(Attenuation, decibels);
}

bool MemoryMediatorVUHF::GetAntenna(long& id) const {
    return Get(AntennaID, id);
}

void MemoryMediatorVUHF::SetAntenna(long id) {
    Set(AntennaID, id);
}
