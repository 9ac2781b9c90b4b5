#include "controls/frequencystore/targets/wkfnodemediator.h"

#include "host/base/numbers.h"
#include "host/freqstorexml/frequencystorelist.h"

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
    UpdateDependentValues();
    CheckType();
}

void WkfNodeMediator::UpdateDependentValues() {
    HalvoITNodeMediator::UpdateDependentValues();
    Rebind(m_priority, Own<ValueNumeric<int>>(Keys::Priority));
    Rebind(m_threatClass, Own<Value<QString>>(Keys::ThreatClass));
    Rebind(m_profileID, Own<Value<QString>>(Keys::ProfileID));
    Rebind(m_profileName, Own<Value<QString>>(Keys::ProfileName));
    Rebind(m_signalClass, Own<Value<QString>>(Keys::SignalClass));
    Rebind(m_transmissionSystem, Own<Value<QString>>(Keys::TransmissionSystem));
}

void WkfNodeMediator::CheckType() {
    if (!m_priority) {
        m_letter = LetterWithoutPriority;
    } else {
        const int priority = m_priority->GetValue();
        m_letter = priority >= 1 && priority <= 9 ? LettersByPriority[priority - 1] : LetterOfOtherPriority;
    }
    if (m_type)
        m_type->SetValue(m_letter, this);
}

void WkfNodeMediator::Update(Observable* subject, TChangeCode code) {
    if (subject == m_observable && code == TChangeCode::MediatorNodeEnds) {
        HalvoITNodeMediator::Update(subject, code); // ends this mediator
        return;
    }
    if (code == TChangeCode::Removing) {
        ForgetIfRemoved(m_priority, subject) || ForgetIfRemoved(m_threatClass, subject) ||
            ForgetIfRemoved(m_profileID, subject) || ForgetIfRemoved(m_profileName, subject) ||
            ForgetIfRemoved(m_signalClass, subject) || ForgetIfRemoved(m_transmissionSystem, subject);
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
    return get(m_priority, priority);
}

bool WkfNodeMediator::GetProfileID(QString& id, int) {
    return get(m_profileID, id);
}

bool WkfNodeMediator::GetProfileName(QString& name, int) {
    return get(m_profileName, name);
}

bool WkfNodeMediator::GetSignalClass(QString& signalClass, int) {
    return get(m_signalClass, signalClass);
}

bool WkfNodeMediator::GetThreadClass(QString& threatClass, int) {
    return get(m_threatClass, threatClass);
}

bool WkfNodeMediator::GetTransmissionSystem(QString& system, int) {
    return get(m_transmissionSystem, system);
}

void WkfNodeMediator::SetPriority(int priority) {
    set(m_priority, priority);
}

void WkfNodeMediator::SetProfileID(const QString& id) {
    set(m_profileID, id);
}

void WkfNodeMediator::SetProfileName(const QString& name) {
    set(m_profileName, name);
}

void WkfNodeMediator::SetSignalClass(const QString& signalClass) {
    set(m_signalClass, signalClass);
}

void WkfNodeMediator::SetThreadClass(const QString& threatClass) {
    set(m_threatClass, threatClass);
}

void WkfNodeMediator::SetTransmissionSystem(const QString& system) {
    set(m_transmissionSystem, system);
}

bool WkfNodeMediator::CellText(unsigned columnId, QString& text) {
    const auto* value = columnId == ColumnThreatClass          ? m_threatClass
                        : columnId == ColumnSignalClass        ? m_signalClass
                        : columnId == ColumnTransmissionSystem ? m_transmissionSystem
                                                               : nullptr;
    if (value)
        return get(value, text);
    if (columnId != ColumnPriority)
        return HalvoITNodeMediator::CellText(columnId, text);
    if (m_priority)
        text = m_priority->GetStringValue();
    return m_priority != nullptr;
}

void WkfNodeMediator::AddToXml(FreqStoreXml::FrequencyStoreList& list) {
    double frequency = 0;
    double bandwidth = 0;
    GetFrequency(frequency, 0);
    GetBandwidth(bandwidth, 0);
    const QString comment = GetCommentString(0);
    const QString demodulation = GetDemodulationString(0);

    FreqStoreXml::FrequencyStoreEntry entry;
    entry.SetComment(comment.isEmpty() ? GetFrequencyString(0) : comment);
    entry.SetType(QString(QLatin1Char(m_letter)));
    FreqStoreXml::FFM_Settings& settings = entry.GetFFM_Settings();
    settings.GetFrequency().SetValue(frequency);
    settings.GetIFBandwidth().SetValue(bandwidth);
    if (!demodulation.isEmpty())
        settings.SetAnalogDemod(FreqStoreXml::FFM_Settings::NameToAnalogDemod(demodulation));

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
    list.AppendFrequencyStoreEntry(entry);
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
    line += OneField(comment.isEmpty() ? GetFrequencyString(0) : comment);
    line += tab;
    line += OneField(orText(GetDemodulationString(0), "Unknown"));
    line += tab;
    line += QLatin1Char(m_letter);
    line += tab;
    line += OneField(orText(threatClass, "Not defined"));
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
        return m_threatClass != nullptr;
    case FieldPriority:
        if (!m_priority || !Quor::ParseInt(text, priority))
            return false;
        SetPriority(priority);
        return true;
    default:
        return HalvoITNodeMediator::SetValueFromString(field, text);
    }
}
