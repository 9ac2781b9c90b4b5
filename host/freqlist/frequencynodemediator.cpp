#include "host/freqlist/frequencynodemediator.h"

#include "host/base/frequencytext.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencynodelistview.h"
#include "host/freqstorexml/frequencystorelist.h"
#include "host/valuetree/valueselection.h"

#include <unordered_map>

namespace {

std::unordered_map<const FrequencyNodeMediator*, QString>& tips() {
    static auto* const table = new std::unordered_map<const FrequencyNodeMediator*, QString>;
    return *table;
}

using TextOf = QString (FrequencyNodeMediator::*)(int);

struct Cell {
    unsigned column;
    TextOf text;
};

constexpr Cell Cells[] = {
    {FreqList::ColumnFrequency, &FrequencyNodeMediator::GetFrequencyString},
    {FreqList::ColumnBandwidth, &FrequencyNodeMediator::GetBandwidthString},
    {FreqList::ColumnDemodulation, &FrequencyNodeMediator::GetDemodulationString},
    {FreqList::ColumnType, &FrequencyNodeMediator::GetTypeString},
    {FreqList::ColumnComment, &FrequencyNodeMediator::GetCommentString},
};

} // namespace

FrequencyNodeMediator::FrequencyNodeMediator(MediatorCtrl* controller, Observable* entryNode, int)
    : Mediator(controller, entryNode) {
    m_isNode = node_cast(entryNode) != nullptr;
    FrequencyNodeMediator::UpdateDependentValues();
}

FrequencyNodeMediator::~FrequencyNodeMediator() {
    if (m_hasTip)
        tips().erase(this);
}

void FrequencyNodeMediator::UpdateDependentValues() {
    static constexpr Binding table[] = {
        {&FreqList::KeyFrequency, TypesOf(ValueType::NumericDouble)},
        {&FreqList::KeyBandwidth, TypesOf(ValueType::NumericDouble)},
        {&FreqList::KeyComment, TypesOf(ValueType::Text)},
        {&FreqList::KeyDemodulation, TypesOf(ValueType::Text, ValueType::Selection)},
        {&FreqList::KeyType, TypesOf(ValueType::Char)}};
    static const Bindings bindings{BoundFrequency, table};
    Bind(bindings);
}

void FrequencyNodeMediator::Bind(const Bindings& bindings) {
    Node* const entry = GetNode();
    if (!entry)
        return;
    if (const quint16 shape = entry->ShapeId(); shape != 0) {
        if (bindings.shape != shape) {
            bindings.shape = shape;
            for (size_t i = 0; i < bindings.table.size(); ++i)
                bindings.places[i] = entry->PlaceOf(*bindings.table[i].key, bindings.table[i].types);
        }
        const std::span<const quint8> places(bindings.places.data(), bindings.table.size());
        if (m_bound.SetFresh(bindings.first, places))
            return entry->AddObserverAt(places, *this);
        for (size_t i = 0; i < places.size(); ++i)
            Rebind(bindings.first + i, places[i] == 0 ? nullptr : entry->ValueAtPlace(places[i]));
        return;
    }
    for (size_t i = 0; i < bindings.table.size(); ++i) {
        const Binding& binding = bindings.table[i];
        ValueBase* found = entry->FindOwnValue(*binding.key);
        if (found && !(binding.types & TypesOf(found->GetType())))
            found = nullptr;
        Rebind(bindings.first + i, found);
    }
}

void FrequencyNodeMediator::Rebind(size_t number, ValueBase* found) {
    ValueBase* const held = Bound<ValueBase>(number);
    if (held == found)
        return;
    if (held)
        held->DeleteObserver(this);
    m_bound.Set(GetNode(), number, found);
    if (found)
        found->AddObserver(this);
}

bool FrequencyNodeMediator::ForgetIfRemoved(size_t number, const Observable* subject) {
    ValueBase* held = Bound<ValueBase>(number);
    if (!ForgetIfRemoved(held, subject))
        return false;
    m_bound.Set(GetNode(), number, nullptr);
    return true;
}

void FrequencyNodeMediator::Update(Observable* subject, TChangeCode code) {
    if (subject == m_observable && code == TChangeCode::MediatorNodeEnds) {
        delete this;
        return;
    }
    if (code == TChangeCode::Removing) {
        for (size_t number = 0; number < FirstOwn && !ForgetIfRemoved(number, subject); ++number)
            ;
    } else if (subject == m_observable) {
        UpdateDependentValues();
    }
    UpdateAllViewItems();
    if (auto* list = dynamic_cast<MultiViewMediatorCtrl*>(m_controller))
        list->SetEntryDirty(GetNode());
    if (code == TChangeCode::Removing && subject == m_observable) {
        m_bound.OutliveEntry(GetNode()); // its values tell their own ends after it
        m_observable = nullptr;
    }
}

void FrequencyNodeMediator::SetFrequency(double hertz) {
    if (HeldFrequency())
        HeldFrequency()->SetValue(hertz);
}

void FrequencyNodeMediator::SetBandwidth(double hertz) {
    if (HeldBandwidth())
        HeldBandwidth()->SetValue(hertz);
}

void FrequencyNodeMediator::SetDemodulation(QString demodulation) {
    if (HeldDemodulation())
        HeldDemodulation()->SetStringValue(demodulation);
}

void FrequencyNodeMediator::SetComment(QString comment) {
    if (HeldComment())
        HeldComment()->SetValue(comment);
}

void FrequencyNodeMediator::SetTip(QString tip) {
    if (m_hasTip)
        tips().erase(this);
    m_hasTip = !tip.isEmpty();
    if (m_hasTip)
        tips().emplace(this, std::move(tip));
    UpdateAllViewItems();
}

void FrequencyNodeMediator::SetType(char type) {
    if (HeldType())
        HeldType()->SetValue(type);
}

bool FrequencyNodeMediator::GetFrequency(double& frequency, int) {
    if (!HeldFrequency())
        return false;
    frequency = HeldFrequency()->GetValue();
    return true;
}

bool FrequencyNodeMediator::GetBandwidth(double& bandwidth, int) {
    if (!HeldBandwidth())
        return false;
    bandwidth = HeldBandwidth()->GetValue();
    return true;
}

bool FrequencyNodeMediator::GetComment(QString& comment, int) {
    if (!HeldComment())
        return false;
    comment = HeldComment()->GetValue();
    return true;
}

bool FrequencyNodeMediator::GetDemodulation(QString& demodulation, int) {
    if (!HeldDemodulation())
        return false;
    demodulation = HeldDemodulation()->GetStringValue();
    return true;
}

bool FrequencyNodeMediator::GetType(char& type, int) {
    if (!HeldType())
        return false;
    type = HeldType()->GetValue();
    return true;
}

bool FrequencyNodeMediator::GetTip(QString& tip, int) {
    if (m_hasTip) {
        tip = tips().find(this)->second;
        return true;
    }
    if (!HeldFrequency())
        return false;
    QStringList lines{GetFrequencyString(0)};
    if (const QString comment = GetCommentString(0); !comment.isEmpty())
        lines.prepend(comment);
    if (const QString demodulation = GetDemodulationString(0); !demodulation.isEmpty())
        lines.append(demodulation);
    tip = lines.join(QLatin1Char('\n'));
    return true;
}

// Squelch, attenuation and AFC are settings of some memory channels. They are read to tune a receiver, not to
// fill rows, so they are looked up then.
template <typename V>
bool FrequencyNodeMediator::ownText(Names::Id key, QString& text) const {
    const V* value = Own<V>(key);
    if (value)
        text = value->GetStringValue();
    return value != nullptr;
}

bool FrequencyNodeMediator::GetSquelchState(QString& state, int) {
    return ownText<Value<bool>>(FreqList::KeyUseSquelch, state);
}

bool FrequencyNodeMediator::GetSquelchValue(int& value, int) {
    const auto* level = Own<ValueNumeric<int>>(FreqList::KeyThreshold);
    if (level)
        value = level->GetValue();
    return level != nullptr;
}

bool FrequencyNodeMediator::GetAttenuation(QString& attenuation, int) {
    return ownText<ValueNumeric<int>>(FreqList::KeyAttenuation, attenuation);
}

bool FrequencyNodeMediator::GetAfc(QString& afc, int) {
    return ownText<Value<bool>>(FreqList::KeyAfc, afc);
}

QString FrequencyNodeMediator::GetFrequencyString(int subItem) {
    double hertz = 0;
    return GetFrequency(hertz, subItem) ? Quor::FrequencyText(hertz) : QString();
}

QString FrequencyNodeMediator::GetBandwidthString(int subItem) {
    double hertz = 0;
    return GetBandwidth(hertz, subItem) ? Quor::BandwidthText(hertz) : QString();
}

QString FrequencyNodeMediator::GetDemodulationString(int subItem) {
    QString text;
    GetDemodulation(text, subItem);
    return text;
}

QString FrequencyNodeMediator::GetCommentString(int subItem) {
    QString text;
    GetComment(text, subItem);
    return text;
}

QString FrequencyNodeMediator::GetTipString(int subItem) {
    QString text;
    GetTip(text, subItem);
    return text;
}

QString FrequencyNodeMediator::GetTypeString(int subItem) {
    char type = 0;
    return GetType(type, subItem) && type != 0 ? QString(QLatin1Char(type)) : QString();
}

QString FrequencyNodeMediator::ToString() {
    return QString();
}

QString FrequencyNodeMediator::GetUsage() {
    return m_controller ? m_controller->GetUsageName() : QString();
}

void FrequencyNodeMediator::AddToXml(FreqStoreXml::FrequencyStoreList& list) {
    double frequency = 0;
    double bandwidth = 0;
    GetFrequency(frequency, 0);
    GetBandwidth(bandwidth, 0);
    FreqStoreXml::FrequencyStoreEntry entry;
    entry.SetComment(GetCommentString(0));
    entry.SetType(GetTypeString(0));
    auto& settings = entry.GetFFM_Settings();
    settings.GetFrequency().SetValue(frequency);
    settings.GetIFBandwidth().SetValue(bandwidth);
    if (const QString demodulation = GetDemodulationString(0); !demodulation.isEmpty())
        settings.SetAnalogDemod(FreqStoreXml::FFM_Settings::NameToAnalogDemod(demodulation));
    list.AppendFrequencyStoreEntry(entry);
}

bool FrequencyNodeMediator::CellText(unsigned columnId, QString& text) {
    for (const Cell& cell : Cells) {
        if (cell.column == columnId) {
            text = (this->*cell.text)(0);
            return true;
        }
    }
    return false;
}

ValueBase* FrequencyNodeMediator::EditedValue(unsigned columnId) {
    switch (columnId) {
    case FreqList::ColumnFrequency:
        return HeldFrequency();
    case FreqList::ColumnBandwidth:
        return HeldBandwidth();
    case FreqList::ColumnDemodulation:
        return HeldDemodulation();
    case FreqList::ColumnComment:
        return HeldComment();
    default:
        return nullptr;
    }
}

QString FrequencyNodeMediator::CellAddition(unsigned) {
    return QString();
}

void FrequencyNodeMediator::UpdateMyViewItems(FrequencyNodeListView* view) {
    FrequencyNodeMediatorViewItem* row = GetItem4View(view);
    if (!row)
        return;
    const std::vector<unsigned>& columns = view->GetColumnDescription();
    for (size_t i = 0; i < columns.size(); ++i) {
        QString text;
        if (CellText(columns[i], text))
            row->setText(static_cast<int>(i), text);
    }
}

void FrequencyNodeMediator::SetFrequency(QWidget* view) {
    FreqStore::Instance().Tune(*this, view, true);
}

void FrequencyNodeMediator::SetFrequencyOnly(QWidget* view) {
    FreqStore::Instance().Tune(*this, view, false);
}
