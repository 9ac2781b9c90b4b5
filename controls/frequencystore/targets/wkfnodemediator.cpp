#include "controls/frequencystore/targets/wkfnodemediator.h"

#include "host/base/numbers.h"
#include "host/base/tokenizer.h"
#include "host/freqstorexml/frequencystorelist.h"

static_assert(sizeof(void*) != 8 || sizeof(WkfNodeMediator) == 64, "there are a million of them");

namespace {

/// Fields of a line, in order.
enum Field {
    FieldFrequency,
    FieldBandwidth,
    FieldComment,
    FieldDemodulation,
    FieldType,
    FieldThreatClass,
    FieldPriority
};

constexpr char LettersByPriority[] = "ponmlkjih"; // priority 1 to 9
constexpr char LetterOfOtherPriority = 'g';
constexpr char LetterWithoutPriority = 'h'; // that of priority 9, not that of the other priorities

template <typename V, typename Content>
bool get(const V* value, Content& content) {
    if (!value)
        return false;
    content = value->GetValue();
    return true;
}

template <typename V, typename Content>
void set(V* value, const Content& content) {
    if (value)
        value->SetValue(content);
}

QString orText(const QString& text, const char* whenEmpty) {
    return text.isEmpty() ? QString::fromLatin1(whenEmpty) : text;
}

} // namespace

WkfNodeMediator::WkfNodeMediator(MediatorCtrl* controller, Observable* node, int kind)
    : HalvoITNodeMediator(controller, node, kind, MediatorType::TargetList) {
    bindOwn();
    CheckType();
}

void WkfNodeMediator::UpdateDependentValues() {
    HalvoITNodeMediator::UpdateDependentValues();
    bindOwn();
}

void WkfNodeMediator::bindOwn() {
    static constexpr Binding table[] = {{&Keys::Priority, TypesOf(ValueType::NumericInt)},
                                        {&Keys::ThreatClass, TypesOf(ValueType::Text)},
                                        {&Keys::ProfileID, TypesOf(ValueType::Text)},
                                        {&Keys::ProfileName, TypesOf(ValueType::Text)},
                                        {&Keys::SignalClass, TypesOf(ValueType::Text)},
                                        {&Keys::TransmissionSystem, TypesOf(ValueType::Text)}};
    static_assert(std::size(table) == BoundEnd - BoundPriority);
    static const Bindings bindings{BoundPriority, table};
    Bind(bindings);
}

void WkfNodeMediator::CheckType() {
    if (!HeldPriority()) {
        m_letter = LetterWithoutPriority;
    } else {
        const int priority = HeldPriority()->GetValue();
        m_letter = priority >= 1 && priority <= 9 ? LettersByPriority[priority - 1] : LetterOfOtherPriority;
    }
    if (HeldType())
        HeldType()->SetValue(m_letter, this);
}

void WkfNodeMediator::Update(Observable* subject, TChangeCode code) {
    if (subject == m_observable && code == TChangeCode::MediatorNodeEnds) {
        HalvoITNodeMediator::Update(subject, code); // ends this mediator
        return;
    }
    if (code == TChangeCode::Removing) {
        for (size_t number = BoundPriority; number < BoundEnd && !ForgetIfRemoved(number, subject); ++number)
            ;
    }
    HalvoITNodeMediator::Update(subject, code);
    // A value on its way out is still under its node; binding it again would hold on to it.
    if (code != TChangeCode::Removing)
        UpdateDependentValues();
    CheckType();
}

bool WkfNodeMediator::GetType(char& type, int) {
    type = m_letter;
    return true;
}

bool WkfNodeMediator::GetPriority(int& priority, int) {
    return get(HeldPriority(), priority);
}

bool WkfNodeMediator::GetProfileID(QString& id, int) {
    return get(HeldProfileID(), id);
}

bool WkfNodeMediator::GetProfileName(QString& name, int) {
    return get(HeldProfileName(), name);
}

bool WkfNodeMediator::GetSignalClass(QString& signalClass, int) {
    return get(HeldSignalClass(), signalClass);
}

bool WkfNodeMediator::GetThreadClass(QString& threatClass, int) {
    return get(HeldThreatClass(), threatClass);
}

bool WkfNodeMediator::GetTransmissionSystem(QString& system, int) {
    return get(HeldTransmissionSystem(), system);
}

void WkfNodeMediator::SetPriority(int priority) {
    set(HeldPriority(), priority);
}

void WkfNodeMediator::SetProfileID(const QString& id) {
    set(HeldProfileID(), id);
}

void WkfNodeMediator::SetProfileName(const QString& name) {
    set(HeldProfileName(), name);
}

void WkfNodeMediator::SetSignalClass(const QString& signalClass) {
    set(HeldSignalClass(), signalClass);
}

void WkfNodeMediator::SetThreadClass(const QString& threatClass) {
    set(HeldThreatClass(), threatClass);
}

void WkfNodeMediator::SetTransmissionSystem(const QString& system) {
    set(HeldTransmissionSystem(), system);
}

/// Null for a column of the bases.
ValueBase* WkfNodeMediator::ownValue(unsigned columnId) const {
    switch (columnId) {
    case ColumnPriority:
        return HeldPriority();
    case ColumnThreatClass:
        return HeldThreatClass();
    case ColumnSignalClass:
        return HeldSignalClass();
    case ColumnTransmissionSystem:
        return HeldTransmissionSystem();
    default:
        return nullptr;
    }
}

bool WkfNodeMediator::CellText(unsigned columnId, QString& text) {
    const ValueBase* value = ownValue(columnId);
    if (!value)
        return HalvoITNodeMediator::CellText(columnId, text);
    text = value->GetStringValue();
    return true;
}

ValueBase* WkfNodeMediator::EditedValue(unsigned columnId) {
    ValueBase* value = ownValue(columnId);
    return value ? value : HalvoITNodeMediator::EditedValue(columnId);
}

void WkfNodeMediator::AddToXml(FreqStoreXml::FrequencyStoreList& list) {
    HalvoITNodeMediator::AddToXml(list);
    FreqStoreXml::FrequencyStoreEntry& entry = list.GetFrequencyStoreEntry().last();
    if (entry.GetComment().isEmpty())
        entry.SetComment(GetFrequencyString(0));
    entry.SetType(QString(QLatin1Char(m_letter)));

    int priority = 0;
    QString text;
    FreqStoreXml::Profile_Data& profile = entry.GetProfile_Data();
    if (GetPriority(priority, 0))
        profile.SetPriority(QString::number(priority));
    if (GetProfileID(text, 0))
        profile.SetProfileID(text);
    if (GetSignalClass(text, 0))
        profile.SetSignalClass(text);
    if (GetTransmissionSystem(text, 0))
        profile.SetTransmissionSystem(text);
    if (GetProfileName(text, 0))
        profile.SetProfileName(text);
    text.clear();
    GetThreadClass(text, 0);
    profile.SetThreatClass(orText(text, "undefined"));
}

QString WkfNodeMediator::ToString() {
    double frequency = 0;
    double bandwidth = 0;
    int priority = 0;
    QString threatClass;
    GetFrequency(frequency, 0);
    GetBandwidth(bandwidth, 0);
    GetPriority(priority, 0);
    GetThreadClass(threatClass, 0);
    const QString comment = GetCommentString(0);

    const QLatin1Char tab('\t');
    QString line;
    line.reserve(128);
    Quor::AppendFixed(line, frequency, 6);
    line += tab;
    Quor::AppendFixed(line, bandwidth, 6);
    line += tab;
    line += Quor::OneField(comment.isEmpty() ? GetFrequencyString(0) : comment);
    line += tab;
    line += Quor::OneField(orText(GetDemodulationString(0), "Unknown"));
    line += tab;
    line += QLatin1Char(m_letter);
    line += tab;
    line += Quor::OneField(orText(threatClass, "Not defined"));
    line += tab;
    line += QString::number(priority);
    line += tab;
    return line;
}

bool WkfNodeMediator::SetValueFromString(int field, QString& text) {
    int priority = 0;
    switch (field) {
    case FieldType:
        return true; // follows from the priority
    case FieldThreatClass:
        SetThreadClass(text);
        return HeldThreatClass() != nullptr;
    case FieldPriority:
        if (!HeldPriority() || !Quor::ParseInt(text, priority))
            return false;
        SetPriority(priority);
        return true;
    default:
        return HalvoITNodeMediator::SetValueFromString(field, text);
    }
}
