#include "controls/frequencystore/common/halvoitnodemediator.h"

#include "host/base/numbers.h"
#include "host/base/tokenizer.h"
#include "host/base/trace.h"
#include "host/freqlist/frequencynodelistview.h"
#include "host/valuetree/valueselection.h"

namespace {

/// Numbers of the fields of a plain entry's line.
enum Field { FieldFrequency, FieldBandwidth, FieldComment, FieldDemodulation };
constexpr unsigned char MaxFields = 15;

} // namespace

HalvoITNodeMediator::HalvoITNodeMediator(MediatorCtrl* controller, Observable* node, int kind,
                                         MediatorType type)
    : FrequencyNodeMediator(controller, node, kind) {
    m_itemKind = static_cast<quint16>(type);
    bindOwn();
}

void HalvoITNodeMediator::UpdateDependentValues() {
    FrequencyNodeMediator::UpdateDependentValues();
    bindOwn();
}

void HalvoITNodeMediator::bindOwn() {
    static constexpr Binding table[] = {
        {&Keys::BandwidthSel, TypesOf(ValueType::NumericInt, ValueType::NumericInt64,
                                      ValueType::NumericDouble, ValueType::Selection)}};
    static const Bindings bindings{BoundBandwidthSelection, table};
    Bind(bindings);
}

bool HalvoITNodeMediator::GetBandwidthSelection(double& hertz, int) {
    if (const IValueNumeric* number = numeric_cast(HeldBandwidthSelection())) {
        hertz = number->ValueAsDouble();
        return true;
    }
    if (const auto* selection = value_cast<ValueSelection>(HeldBandwidthSelection())) {
        hertz = selection->GetCurrentValue();
        return true;
    }
    return false;
}

bool HalvoITNodeMediator::SetBandwidthSelection(double hertz) {
    if (IValueNumeric* number = numeric_cast(HeldBandwidthSelection())) {
        number->SetFromDouble(hertz);
        return true;
    }
    auto* selection = value_cast<ValueSelection>(HeldBandwidthSelection());
    return selection && selection->Select(hertz, nullptr, false);
}

bool HalvoITNodeMediator::GetBandwidth(double& hertz, int subItem) {
    return GetBandwidthSelection(hertz, subItem) || FrequencyNodeMediator::GetBandwidth(hertz, subItem);
}

void HalvoITNodeMediator::SetBandwidth(double hertz) {
    if (!SetBandwidthSelection(hertz))
        FrequencyNodeMediator::SetBandwidth(hertz);
}

ValueBase* HalvoITNodeMediator::EditedValue(unsigned columnId) {
    ValueBase* selection = columnId == SourceBandwidth ? HeldBandwidthSelection() : nullptr;
    return selection ? selection : FrequencyNodeMediator::EditedValue(columnId);
}

bool HalvoITNodeMediator::GetType(char& type, int subItem) {
    return FrequencyNodeMediator::GetType(type, subItem);
}

void HalvoITNodeMediator::Update(Observable* subject, TChangeCode code) {
    if (subject == m_observable) {
        auto* list = dynamic_cast<MultiViewMediatorCtrl*>(m_controller);
        if (list && code == TChangeCode::Removing)
            list->SetDirty(true);
        else if (list)
            list->SetEntryDirty(GetNode());
        if (code == TChangeCode::MediatorNodeEnds) {
            subject->DeleteObserver(this);
            delete this;
            return;
        }
        if (code != TChangeCode::Removing) {
            UpdateDependentValues();
            UpdateAllViewItems();
            return;
        }
    }
    if (code == TChangeCode::Removing)
        ForgetIfRemoved(BoundBandwidthSelection, subject);
    FrequencyNodeMediator::Update(subject, code);
}

void HalvoITNodeMediator::UpdateMyViewItems(FrequencyNodeListView* view) {
    FrequencyNodeMediator::UpdateMyViewItems(view);
    FrequencyNodeMediatorViewItem* row = GetItem4View(view);
    if (!row) {
        TraceLazily("halvonodemediator",
                    [] { return QStringLiteral("No valid View Item for Memory - Field"); });
        return;
    }
    // The bandwidth column has been filled through GetBandwidth, which prefers the selection.
    view->sort();
}

QString HalvoITNodeMediator::NumberField(double value) {
    QString text;
    Quor::AppendFixed(text, value, 6);
    return text;
}

QString HalvoITNodeMediator::ToString() {
    double frequency = 0;
    double bandwidth = 0;
    if (!GetFrequency(frequency, 0))
        return QString();
    GetBandwidth(bandwidth, 0);
    const QLatin1Char tab('\t');
    return NumberField(frequency) + tab + NumberField(bandwidth) + tab + Quor::OneField(GetCommentString(0)) +
           tab + Quor::OneField(GetDemodulationString(0)) + tab;
}

bool HalvoITNodeMediator::FromString(QString& line) {
    QString fields[MaxFields];
    const unsigned char count = Quor::separateString(line, fields, MaxFields);
    bool any = false;
    for (int field = 0; field < count; ++field)
        any = SetValueFromString(field, fields[field]) || any;
    return any;
}

bool HalvoITNodeMediator::SetValueFromString(int field, QString& text) {
    double number = 0;
    switch (field) {
    case FieldFrequency:
        if (!HeldFrequency() || !Quor::ParseDouble(text, number))
            return false;
        SetFrequency(number);
        return true;
    case FieldBandwidth:
        if (!Quor::ParseDouble(text, number))
            return false;
        if (SetBandwidthSelection(number))
            return true;
        FrequencyNodeMediator::SetBandwidth(number);
        return HeldBandwidth() != nullptr;
    case FieldComment:
        SetComment(text);
        return HeldComment() != nullptr;
    case FieldDemodulation:
        if (auto* offered = value_cast<ValueSelection>(HeldDemodulation()))
            return offered->Select(text);
        SetDemodulation(text);
        return HeldDemodulation() != nullptr;
    default:
        return false;
    }
}
