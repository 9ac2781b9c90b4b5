#include "receiver/receiver.h"

#include "host/base/frequencytext.h"
#include "host/freqlist/mediator.h"
#include "host/freqlist/multiviewmediator.h"
#include "host/valuetree/tree.h"

#include <QScopedValueRollback>

#include <algorithm>
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

void addChoices(ValueSelection& value, const ReceiverAbility& ability) {
    for (const ReceiverAbility::Choice& choice : ability.choices)
        value.AddItem(choice.name, choice.number, choice.key);
}

ValueBase* makeChoice(const ReceiverSetting& setting) {
    auto* value = new ValueSelection;
    addChoices(*value, AbilityOf(setting));
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

/// What the radio has no part in: whether the level opens the audio is found here.
bool isOurs(const ReceiverSetting& setting) {
    return is(setting, Keys::Threshold) || is(setting, Keys::UseSquelch);
}

/// An antenna's number is shown by its name.
const char* titleOf(const ReceiverSetting& setting) {
    return setting.title ? setting.title : QT_TRANSLATE_NOOP("Receiver", "Antenna");
}

QString listOf(const std::vector<double>& numbers, QString (*text)(double)) {
    QStringList texts;
    for (const double number : numbers)
        texts << text(number);
    return texts.join(QStringLiteral(", "));
}

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
    m_live.push_back({&setting, value, value->GetStringValue(), !setting.isOfRadios});
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

const Receiver::Live& Receiver::liveOf(const ReceiverSetting& setting) const {
    return *std::find_if(m_live.begin(), m_live.end(),
                         [&](const Live& live) { return live.setting == &setting; });
}

bool Receiver::CanSet(const ReceiverSetting& setting) const {
    return liveOf(setting).isAble;
}

QString Receiver::WhyNot(const ReceiverSetting& setting) const {
    const Live& live = liveOf(setting);
    if (!live.isAble)
        return tr("%1 does not let this be set").arg(GetName());
    if (m_state != ReceiverState::Connected && !isOurs(setting))
        return GetStateText();
    return live.whyNot.isEmpty() ? QString() : tr("%1: %2").arg(GetName(), live.whyNot);
}

QString Receiver::ProblemOf(const ReceiverSetting& setting, const QString& text) const {
    const Live& live = liveOf(setting);
    if (const QString whyNot = WhyNot(setting); !whyNot.isEmpty())
        return text == live.accepted ? QString() : tr("%1: %2").arg(tr(titleOf(setting)), whyNot);
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
    const auto shown = infoOf(setting).text;
    if (number >= limits->MinAsDouble() && number <= limits->MaxAsDouble())
        return live.only.empty() || std::ranges::binary_search(live.only, number)
                   ? QString()
                   : tr("%1 %2 is not one of %3").arg(title, shown(number), listOf(live.only, shown));
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
        tell(problem);
    return problem.isEmpty();
}

void Receiver::tell(const QString& problem) {
    emit Refused(tr("%1 receiver: %2").arg(ReceiverName(m_kind), problem));
}

/// A radio has no mode "NONE" and often no pitch of 0 Hz; it stays at its own.
bool Receiver::saysNothing(const ReceiverSetting& setting, const QString& text) const {
    if (is(setting, Keys::BFOFrequency))
        return text == QLatin1String("0") && Find<ValueNumeric<int>>(Keys::BFOFrequency)->GetMin() > 0;
    return is(setting, Keys::KeyDemodulation) && text == QLatin1String("NONE") &&
           !Find<ValueSelection>(Keys::KeyDemodulation)->GetItem(text);
}

bool Receiver::Tune(IFrequencyStoreItem& item, bool allSettings) {
    double hertz = 0;
    if (!item.GetFrequency(hertz, 0)) {
        emit Refused(tr("The entry has no frequency"));
        return false;
    }
    return tuneWith(item, hertz, allSettings ? GetSettings() : GetSettings().first(1));
}

bool Receiver::TuneLike(IFrequencyStoreItem& item, double hertz) {
    return tuneWith(item, hertz, GetSettings());
}

/// The first of the settings is the frequency.
bool Receiver::tuneWith(IFrequencyStoreItem& item, double hertz, std::span<const ReceiverSetting> settings) {
    // What the item carries is read first: setting the receiver may change the item.
    std::vector<std::pair<const ReceiverSetting*, QString>> wanted;
    for (const ReceiverSetting& setting : settings.subspan(1)) {
        if (setting.isOfRadios && !CanSet(setting))
            continue;
        if (const QString text = textOf(item, setting); !text.isNull() && !saysNothing(setting, text))
            wanted.emplace_back(&setting, text);
    }
    const QScopedValueRollback collects(m_collects, true);
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
    if (std::ranges::any_of(wanted, [](const auto& said) { return is(*said.first, Keys::KeyBandwidth); }))
        sayAgainWith(Keys::KeyDemodulation, Keys::KeyBandwidth);
    hand();
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
    const QString problem = m_isTaking ? QString() : ProblemOf(*live.setting, text);
    if (!problem.isEmpty()) {
        live.value->SetStringValue(live.accepted, this);
        tell(problem);
        return;
    }
    live.accepted = text;
    if (!m_isTaking) {
        live.serial = ++m_serial;
        m_wishes.push_back({live.setting->key, text});
    }
    coupleAntenna(*live.setting);
    updateOpen();
    if (live.setting == m_live.front().setting)
        emit Tuned(GetFrequency()); // before a level is measured there
    if (!m_collects)
        hand();
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

void Receiver::SetMode(const QString& demodulation, const QString& bandwidth) {
    const QScopedValueRollback collects(m_collects, true);
    GetValue(Keys::KeyDemodulation)->SetStringValue(demodulation);
    GetValue(Keys::KeyBandwidth)->SetStringValue(bandwidth);
    sayAgainWith(Keys::KeyDemodulation, Keys::KeyBandwidth);
    hand();
}

/// A setting that stays what it was, but of which the radio is to be told with another one.
void Receiver::sayAgainWith(Names::Id wished, Names::Id other) {
    if (std::ranges::find(m_wishes, wished, &ReceiverWord::key) != m_wishes.end())
        m_wishes.push_back({other, GetValue(other)->GetStringValue()});
}

void Receiver::hand() {
    // While it was off, the radio knew of none.
    sayAgainWith(Keys::UseAttenuation, Keys::Attenuation);
    const std::vector<ReceiverWord> wishes = std::exchange(m_wishes, {});
    if (m_link && !wishes.empty())
        m_link->Set(wishes, m_serial);
}

void Receiver::setLevel(double dbMicrovolt) {
    m_level->SetValue(std::round(std::clamp(dbMicrovolt, LowestLevel, HighestLevel) * 10) / 10);
    updateOpen();
}

/// A receiver without a squelch switch always has it on.
void Receiver::updateOpen() {
    const auto* squelch = Find<Value<bool>>(Keys::UseSquelch);
    const double threshold = Find<ValueNumeric<int>>(Keys::Threshold)->GetValue();
    m_open->SetValue((squelch && !squelch->GetValue()) || m_level->GetValue() >= threshold);
}

void Receiver::Attach(std::unique_ptr<ReceiverLink> link) {
    m_link = std::move(link);
    m_hasLevel = false;
    m_isSquelchOpen.reset();
    m_isElsewhere = false;
    m_serial = 0;
    for (Live& live : m_live) {
        live.isAble = !live.setting->isOfRadios;
        live.serial = 0;
    }
    std::vector<ReceiverAbility> abilities;
    for (const ReceiverSetting& setting : GetSettings()) {
        if (!setting.isOfRadios)
            abilities.push_back(AbilityOf(setting));
    }
    m_state = ReceiverState::Connecting;
    m_words.clear();
    take(abilities);
    bringWithinLimits();
    if (!m_link)
        return;
    connect(m_link.get(), &ReceiverLink::StateChanged, this,
            [this](ReceiverState state, const QString& words) {
                m_state = state;
                m_words = words;
                if (state != ReceiverState::Connected)
                    setLevel(LowestLevel);
                emit StateChanged();
            });
    connect(m_link.get(), &ReceiverLink::AbilitiesKnown, this,
            [this](const std::vector<ReceiverAbility>& known) { take(known); });
    connect(m_link.get(), &ReceiverLink::Read, this,
            [this](const ReceiverReading& reading) { take(reading); });
    connect(m_link.get(), &ReceiverLink::Failed, this, &Receiver::tell);
    m_link->Begin();
}

QString Receiver::GetShortState() const {
    static constexpr const char* Texts[] = {
        QT_TR_NOOP("%1: connecting"),
        QT_TR_NOOP("%1: connected"),
        QT_TR_NOOP("%1: no answer"),
        QT_TR_NOOP("%1: refused"),
    };
    return m_link ? tr(Texts[static_cast<size_t>(m_state)]).arg(m_link->GetName()) : QString();
}

QString Receiver::GetStateText() const {
    return m_words.isEmpty() ? GetShortState() : tr("%1, %2").arg(GetShortState(), m_words);
}

/// What is not named is what the radio lacks, but for what it has no part in.
void Receiver::take(const std::vector<ReceiverAbility>& abilities) {
    const QScopedValueRollback taking(m_isTaking, true);
    for (Live& live : m_live) {
        const auto found = std::ranges::find_if(
            abilities, [&](const ReceiverAbility& ability) { return is(*live.setting, ability.key); });
        live.isAble = found != abilities.end() || isOurs(*live.setting);
        if (found != abilities.end())
            takeAbility(live, *found);
    }
    emit StateChanged();
}

void Receiver::takeAbility(Live& live, const ReceiverAbility& ability) {
    live.only = ability.only;
    live.whyNot = ability.whyNot;
    if (auto* real = value_cast<ValueNumeric<double>>(live.value))
        real->SetMinMax(ability.min, ability.max, ability.step);
    else if (auto* whole = value_cast<ValueNumeric<int>>(live.value))
        whole->SetMinMax(static_cast<int>(ability.min), static_cast<int>(ability.max),
                         static_cast<int>(ability.step));
    // What it was before may be none of them.
    auto* number = numeric_cast(live.value);
    if (number && !live.only.empty()) {
        const auto above = std::ranges::upper_bound(live.only, number->ValueAsDouble());
        number->SetFromDouble(above == live.only.begin() ? *above : *std::prev(above));
    }
    if (auto* selection = value_cast<ValueSelection>(live.value)) {
        const QString chosen = selection->GetStringValue();
        selection->DeleteItems();
        addChoices(*selection, ability);
        selection->Select(chosen);
    }
    live.accepted = live.value->GetStringValue();
}

/// A radio may have left what the kind does not reach.
void Receiver::bringWithinLimits() {
    const QScopedValueRollback taking(m_isTaking, true);
    for (const Live& live : m_live) {
        IValueNumeric* number = numeric_cast(live.value);
        if (number && (number->ValueAsDouble() < number->MinAsDouble() ||
                       number->ValueAsDouble() > number->MaxAsDouble()))
            number->SetFromDouble(live.setting->initial);
    }
}

void Receiver::take(const ReceiverReading& reading) {
    {
        const QScopedValueRollback taking(m_isTaking, true);
        for (const ReceiverWord& word : reading.values) {
            for (const Live& live : m_live) {
                if (is(*live.setting, word.key) && live.serial <= reading.serial)
                    takeText(*live.value, word.text);
            }
        }
    }
    m_isSquelchOpen = reading.isSquelchOpen;
    m_isElsewhere = reading.isElsewhere;
    m_hasLevel = reading.level.has_value();
    emit Followed(reading.serial);
    if (!m_hasLevel && !m_isSquelchOpen)
        return;
    setLevel(reading.level.value_or(LowestLevel));
    emit Measured(m_level->GetValue(), reading.serial);
}

/// What the radio was set to by hand may be none of what it offers.
void Receiver::takeText(ValueBase& value, const QString& text) {
    auto* selection = value_cast<ValueSelection>(&value);
    if (selection && !selection->GetItem(text))
        selection->AddItem(text, 0, -1);
    value.SetStringValue(text);
}
