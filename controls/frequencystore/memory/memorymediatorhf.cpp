#include "controls/frequencystore/memory/memorymediatorhf.h"

#include "host/base/frequencytext.h"
#include "host/freqstorexml/frequencystorelist.h"
#include "host/valuetree/valueselection.h"

namespace {

/// Type letter of an exported channel.
constexpr char ExportedType[] = "a";
/// A tool tip names that many frequencies of a range.
constexpr size_t FrequenciesInTip = 12;
constexpr unsigned NoColumn = ~0u;

} // namespace

static_assert(sizeof(void*) != 8 || sizeof(MemoryMediatorVUHF) == 64, "there are a million of them");

struct MemoryMediator::Settings {
    Bindings bindings;
    std::span<const unsigned> columns; ///< of each one, or `NoColumn`
};

const MemoryMediator::Settings& MemoryMediator::settings() const {
    constexpr ValueTypes number = TypesOf(ValueType::NumericInt);
    constexpr ValueTypes flag = TypesOf(ValueType::Bool);
    constexpr ValueTypes numbers = TypesOf(ValueType::DoubleList);
    static constexpr Binding hf[] = {{&Keys::Threshold, number},
                                     {&Keys::Range, flag},
                                     {&Keys::RangeCounter, number},
                                     {&Keys::RangeFrequencies, numbers},
                                     {&Keys::OutputIFPath, TypesOf(ValueType::Selection)},
                                     {&Keys::Shift, number},
                                     {&Keys::BFOFrequency, number}};
    static constexpr unsigned columnsHF[] = {SourceThreshold, NoColumn,    NoColumn,          NoColumn,
                                             SourceOutputIF,  SourceShift, SourceBFOFrequency};
    static constexpr Binding vuhf[] = {
        {&Keys::Threshold, number},         {&Keys::Range, flag},      {&Keys::RangeCounter, number},
        {&Keys::RangeFrequencies, numbers}, {&Keys::UseSquelch, flag}, {&Keys::UseAttenuation, flag},
        {&Keys::Attenuation, number},       {&Keys::AFC, flag},        {&Keys::AntennaID, number}};
    static constexpr unsigned columnsVUHF[] = {SourceThreshold,   NoColumn,         NoColumn,
                                               NoColumn,          SourceUseSquelch, SourceUseAttenuation,
                                               SourceAttenuation, SourceAFC,        SourceAntenna};
    static_assert(std::size(hf) == size_t(MemoryMediatorHF::End) - Threshold &&
                  std::size(columnsHF) == std::size(hf));
    static_assert(std::size(vuhf) == size_t(MemoryMediatorVUHF::End) - Threshold &&
                  std::size(columnsVUHF) == std::size(vuhf));
    static const Settings ofHF{{Threshold, hf}, columnsHF};
    static const Settings ofVUHF{{Threshold, vuhf}, columnsVUHF};
    return GetMediatorType() == MediatorType::MemoryHF ? ofHF : ofVUHF;
}

MemoryMediator::MemoryMediator(MediatorCtrl* controller, Observable* node, int kind, MediatorType type)
    : HalvoITNodeMediator(controller, node, kind, type) {
    bindOwn();
}

void MemoryMediator::UpdateDependentValues() {
    HalvoITNodeMediator::UpdateDependentValues();
    bindOwn();
}

void MemoryMediator::bindOwn() {
    Bind(settings().bindings);
}

void MemoryMediator::Update(Observable* subject, TChangeCode code) {
    if (subject == m_observable && code == TChangeCode::MediatorNodeEnds) {
        HalvoITNodeMediator::Update(subject, code); // ends this mediator
        return;
    }
    if (code == TChangeCode::Removing) {
        const size_t end = Threshold + settings().columns.size();
        for (size_t number = Threshold; number < end && !ForgetIfRemoved(number, subject); ++number)
            ;
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

/// 0 for a column of the bases.
size_t MemoryMediator::settingOf(unsigned columnId) const {
    if (columnId == SourceThresholdToo)
        columnId = SourceThreshold;
    const std::span<const unsigned> columns = settings().columns;
    const auto found = std::find(columns.begin(), columns.end(), columnId);
    return found == columns.end() ? 0 : Threshold + static_cast<size_t>(found - columns.begin());
}

bool MemoryMediator::CellText(unsigned columnId, QString& text) {
    const size_t setting = settingOf(columnId);
    if (setting == 0)
        return HalvoITNodeMediator::CellText(columnId, text);
    const auto* value = Held<ValueBase>(setting);
    if (value)
        text = value->GetStringValue();
    return value != nullptr;
}

ValueBase* MemoryMediator::EditedValue(unsigned columnId) {
    const size_t setting = settingOf(columnId);
    return setting == 0 ? HalvoITNodeMediator::EditedValue(columnId) : Held<ValueBase>(setting);
}

QString MemoryMediator::CellAddition(unsigned columnId) {
    bool inRange = false;
    const auto* further = Held<ValueList<double>>(RangeFrequencies);
    if (columnId != SourceFrequency || !further || further->Size() == 0 || !GetInRange(inRange) || !inRange)
        return QString();
    return QStringLiteral("+%1  ").arg(further->Size());
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

MemoryMediatorHF::MemoryMediatorHF(MediatorCtrl* controller, Observable* node, int kind)
    : MemoryMediator(controller, node, kind, MediatorType::MemoryHF) {}

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

MemoryMediatorVUHF::MemoryMediatorVUHF(MediatorCtrl* controller, Observable* node, int kind)
    : MemoryMediator(controller, node, kind, MediatorType::MemoryVUHF) {}

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
