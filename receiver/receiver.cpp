#include "receiver/receiver.h"

#include "host/base/frequencytext.h"
#include "host/freqlist/mediator.h"
#include "host/freqlist/multiviewmediator.h"
#include "host/valuetree/tree.h"

#include <cmath>

namespace {

constexpr char NodePath[] = "/Receiver";
constexpr double LowestLevel = -40; // dBµV
constexpr double HighestLevel = 110;

bool is(const ReceiverSetting& setting, Names::Id key) {
    return setting.key == key;
}

template <typename T>
ValueBase* makeNumber(const ReceiverSetting& setting) {
    auto* value = new ValueNumeric<T>;
    value->SetMinMax(static_cast<T>(setting.min), static_cast<T>(setting.max), 1);
    value->SetValue(static_cast<T>(setting.initial));
    return value;
}

ValueBase* makeFlag(const ReceiverSetting& setting) {
    auto* value = new Value<bool>;
    value->SetValue(setting.initial > 0);
    return value;
}

ValueBase* makeChoice(const ReceiverSetting& setting) {
    auto* value = new ValueSelection;
    for (const ReceiverChoice& choice : setting.choices)
        value->AddItem(QString::fromUtf8(choice.name), choice.number, choice.key);
    value->Select(static_cast<long>(setting.initial));
    return value;
}

QString integerText(double number) {
    return QString::number(number, 'f', 0);
}

/// How each type of setting is made and told, in the order of ReceiverSetting::Type.
struct TypeInfo {
    ValueBase* (*make)(const ReceiverSetting&);
    QString (*text)(double);
};
constexpr TypeInfo Types[] = {
    {makeNumber<double>, Quor::FrequencyText},
    {makeNumber<double>, Quor::BandwidthText},
    {makeNumber<int>, integerText},
    {makeChoice, nullptr},
    {makeFlag, nullptr},
};

const TypeInfo& infoOf(const ReceiverSetting& setting) {
    return Types[static_cast<size_t>(setting.type)];
}

QString bandwidthOf(IFrequencyStoreItem& item) {
    double hertz = 0;
    return item.GetBandwidth(hertz, 0) && hertz > 0 ? Quor::ToShortest(hertz) : QString();
}

QString squelchLevelOf(IFrequencyStoreItem& item) {
    int level = 0;
    return item.GetSquelchValue(level, 0) ? QString::number(level) : QString();
}

template <bool (IFrequencyStoreItem::*get)(QString&, int)>
QString textOf(IFrequencyStoreItem& item) {
    QString text;
    return (item.*get)(text, 0) && !text.isEmpty() ? text : QString();
}

/// What any item tells of itself, whatever it is.
struct ItemSetting {
    const FreqList::Key& key;
    QString (*text)(IFrequencyStoreItem&);
};
constexpr ItemSetting ItemSettings[] = {
    {Keys::KeyBandwidth, bandwidthOf},
    {Keys::KeyDemodulation, textOf<&IFrequencyStoreItem::GetDemodulation>},
    {Keys::UseSquelch, textOf<&IFrequencyStoreItem::GetSquelchState>},
    {Keys::Threshold, squelchLevelOf},
    {Keys::Attenuation, textOf<&IFrequencyStoreItem::GetAttenuation>},
    {Keys::AFC, textOf<&IFrequencyStoreItem::GetAfc>},
};

/// The text of what an item carries for a setting; null when it carries nothing, as a bandwidth of 0 says.
QString textOf(IFrequencyStoreItem& item, const ReceiverSetting& setting) {
    for (const ItemSetting& known : ItemSettings) {
        if (is(setting, known.key))
            return known.text(item);
    }
    // What only some entries have stands in their node, under the setting's own key.
    const auto* mediator = dynamic_cast<const Mediator*>(&item);
    const auto* node = mediator ? dynamic_cast<const Node*>(mediator->GetObservable()) : nullptr;
    const ValueBase* value = node ? node->FindOwnValue(setting.key) : nullptr;
    return value ? value->GetStringValue() : QString();
}

} // namespace

Receiver::Receiver(ReceiverKind kind)
    : m_kind(kind), m_level(new ValueNumeric<double>), m_open(new Value<bool>) {
    Node* node = Tree::Instance()->MakeNode(QString::fromLatin1(NodePath));
    m_node = node;
    for (const ReceiverSetting& setting : GetSettings())
        addValue(*node, setting);
    m_level->SetMinMax(LowestLevel, HighestLevel, 0.1);
    m_level->SetValue(LowestLevel);
    // The receiver's node is new: it has no value of these names, nor of the settings'.
    (void)node->AddValue(QStringLiteral("level"), m_level);
    (void)node->AddValue(QStringLiteral("open"), m_open);
}

Receiver::~Receiver() {
    if (Node* node = m_node.get())
        Tree::Instance()->GetRoot()->DeleteNode(node);
}

void Receiver::addValue(Node& node, const ReceiverSetting& setting) {
    ValueBase* value = infoOf(setting).make(setting);
    (void)node.AddValue(setting.key, value);
    value->AddObserver(this);
    m_live.push_back({&setting, value, value->GetStringValue()});
}

ValueBase* Receiver::GetValue(Names::Id key) const {
    for (const Live& live : m_live) {
        if (is(*live.setting, key))
            return live.value;
    }
    return nullptr;
}

QString Receiver::PathOf(Names::Id key) const {
    return QString::fromLatin1(NodePath) + QLatin1Char('/') + Names::Text(key);
}

QString Receiver::ProblemOf(const ReceiverSetting& setting, const QString& text) const {
    if (is(setting, Keys::AntennaID)) {
        const auto* antennas = Find<ValueSelection>(KeyAntenna);
        return antennas->GetItem(text.toLong()) ? QString() : tr("there is no antenna %1").arg(text);
    }
    ValueBase* value = GetValue(setting.key);
    const QString title = tr(setting.title);
    if (const auto* selection = value_cast<ValueSelection>(value))
        return selection->GetItem(text) ? QString() : tr("there is no %1 \"%2\"").arg(title, text);
    const IValueNumeric* limits = numeric_cast(value);
    if (!limits)
        return QString();
    double number = 0;
    if (!Quor::ParseDouble(text, number))
        return tr("%1 \"%2\" is no number").arg(title, text);
    if (number >= limits->MinAsDouble() && number <= limits->MaxAsDouble())
        return QString();
    const auto shown = infoOf(setting).text;
    return tr("%1 %2 is outside %3 to %4")
        .arg(title, shown(number), shown(limits->MinAsDouble()), shown(limits->MaxAsDouble()));
}

bool Receiver::Tune(double hertz) {
    const ReceiverSetting& setting = *m_live.front().setting;
    const QString text = Quor::ToShortest(std::round(hertz));
    const QString problem = ProblemOf(setting, text);
    if (problem.isEmpty())
        GetValue(setting.key)->SetStringValue(text);
    else
        emit Refused(tr("%1 receiver: %2").arg(ReceiverName(m_kind), problem));
    return problem.isEmpty();
}

bool Receiver::Tune(IFrequencyStoreItem& item, bool allSettings) {
    double hertz = 0;
    if (!item.GetFrequency(hertz, 0)) {
        emit Refused(tr("The entry has no frequency"));
        return false;
    }
    // What the item carries is read first: setting the receiver may change the item.
    std::vector<std::pair<const ReceiverSetting*, QString>> wanted;
    for (const ReceiverSetting& setting : GetSettings().subspan(allSettings ? 1 : GetSettings().size())) {
        if (const QString text = textOf(item, setting); !text.isNull())
            wanted.emplace_back(&setting, text);
    }
    if (!Tune(hertz))
        return false;
    QStringList problems;
    for (const auto& [setting, text] : wanted) {
        const QString problem = ProblemOf(*setting, text);
        if (problem.isEmpty())
            GetValue(setting->key)->SetStringValue(text);
        else
            problems << problem;
    }
    if (!problems.isEmpty())
        emit Refused(tr("Tuned to %1, but %2")
                         .arg(Quor::FrequencyText(GetFrequency()), problems.join(QStringLiteral(", "))));
    return true;
}

void Receiver::Update(Observable* subject, TChangeCode code) {
    if (code != TChangeCode::ValueChanged)
        return;
    for (Live& live : m_live) {
        if (static_cast<Observable*>(live.value) == subject)
            return settle(live);
    }
}

/// Follows a new value, or takes it back.
void Receiver::settle(Live& live) {
    const QString text = live.value->GetStringValue();
    if (text == live.accepted)
        return;
    const QString problem = ProblemOf(*live.setting, text);
    if (!problem.isEmpty()) {
        live.value->SetStringValue(live.accepted, this);
        emit Refused(tr("%1 receiver: %2").arg(ReceiverName(m_kind), problem));
        return;
    }
    live.accepted = text;
    coupleAntenna(*live.setting);
    updateOpen();
    Follow(*live.setting);
    if (live.setting == m_live.front().setting)
        emit Tuned(GetFrequency());
}

/// Entries know antennas by number, operators by name.
void Receiver::coupleAntenna(const ReceiverSetting& setting) {
    auto* names = Find<ValueSelection>(KeyAntenna);
    auto* number = Find<ValueNumeric<int>>(Keys::AntennaID);
    if (is(setting, KeyAntenna))
        number->SetValue(static_cast<int>(names->GetCurrentKey()));
    else if (is(setting, Keys::AntennaID))
        names->Select(static_cast<long>(number->GetValue()));
}

void Receiver::SetLevel(double dbMicrovolt) {
    m_level->SetValue(std::round(std::clamp(dbMicrovolt, LowestLevel, HighestLevel) * 10) / 10);
    updateOpen();
}

/// A receiver without a squelch switch always has it on.
void Receiver::updateOpen() {
    const auto* squelch = Find<Value<bool>>(Keys::UseSquelch);
    const double threshold = Find<ValueNumeric<int>>(Keys::Threshold)->GetValue();
    m_open->SetValue((squelch && !squelch->GetValue()) || m_level->GetValue() >= threshold);
}
