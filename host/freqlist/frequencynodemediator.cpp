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

ValueBase* textOrSelection(ValueBase* value) {
    return value_cast<Value<QString>>(value) || value_cast<ValueSelection>(value) ? value : nullptr;
}

} // namespace

FrequencyNodeMediator::FrequencyNodeMediator(MediatorCtrl* controller, Observable* entryNode, int kind)
    : Mediator(controller, entryNode), m_kind(kind), m_isNode(dynamic_cast<Node*>(entryNode) != nullptr) {
    FrequencyNodeMediator::UpdateDependentValues();
}

FrequencyNodeMediator::~FrequencyNodeMediator() {
    if (m_hasTip)
        tips().erase(this);
}

void FrequencyNodeMediator::UpdateDependentValues() {
    Rebind(m_frequency, Own<ValueNumeric<double>>(FreqList::KeyFrequency));
    Rebind(m_bandwidth, Own<ValueNumeric<double>>(FreqList::KeyBandwidth));
    Rebind(m_comment, Own<Value<QString>>(FreqList::KeyComment));
    Rebind(m_demodulation, textOrSelection(OwnValue(FreqList::KeyDemodulation)));
    Rebind(m_type, Own<Value<char>>(FreqList::KeyType));
}

void FrequencyNodeMediator::Update(Observable* subject, TChangeCode code) {
    if (subject == m_observable && code == TChangeCode::MediatorNodeEnds) {
        delete this;
        return;
    }
    if (code == TChangeCode::Removing) {
        ForgetIfRemoved(m_frequency, subject) || ForgetIfRemoved(m_bandwidth, subject) ||
            ForgetIfRemoved(m_comment, subject) || ForgetIfRemoved(m_demodulation, subject) ||
            ForgetIfRemoved(m_type, subject);
    } else if (subject == m_observable) {
        UpdateDependentValues();
    }
    UpdateAllViewItems();
    if (auto* list = dynamic_cast<MultiViewMediatorCtrl*>(m_controller))
        list->SetEntryDirty(GetNode());
    if (code == TChangeCode::Removing && subject == m_observable)
        m_observable = nullptr;
}

void FrequencyNodeMediator::SetFrequency(double hertz) {
    if (m_frequency)
        m_frequency->SetValue(hertz);
}

void FrequencyNodeMediator::SetBandwidth(double hertz) {
    if (m_bandwidth)
        m_bandwidth->SetValue(hertz);
}

void FrequencyNodeMediator::SetDemodulation(QString demodulation) {
    if (m_demodulation)
        m_demodulation->SetStringValue(demodulation);
}

void FrequencyNodeMediator::SetComment(QString comment) {
    if (m_comment)
        m_comment->SetValue(comment);
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
    if (m_type)
        m_type->SetValue(type);
}

bool FrequencyNodeMediator::GetFrequency(double& frequency, int) {
    if (!m_frequency)
        return false;
    frequency = m_frequency->GetValue();
    return true;
}

bool FrequencyNodeMediator::GetBandwidth(double& bandwidth, int) {
    if (!m_bandwidth)
        return false;
    bandwidth = m_bandwidth->GetValue();
    return true;
}

bool FrequencyNodeMediator::GetComment(QString& comment, int) {
    if (!m_comment)
        return false;
    comment = m_comment->GetValue();
    return true;
}

bool FrequencyNodeMediator::GetDemodulation(QString& demodulation, int) {
    if (!m_demodulation)
        return false;
    demodulation = m_demodulation->GetStringValue();
    return true;
}

bool FrequencyNodeMediator::GetType(char& type, int) {
    if (!m_type)
        return false;
    type = m_type->GetValue();
    return true;
}

bool FrequencyNodeMediator::GetTip(QString& tip, int) {
    if (m_hasTip) {
        tip = tips().find(this)->second;
        return true;
    }
    if (!m_frequency)
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
    list.AppendFrequencyStoreEntry(std::move(entry));
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
