#include "scan/scanvalues.h"

#include "host/valuetree/tree.h"
#include "scan/scan.h"

namespace {

using enum ScanValue::Type;

constexpr char NodePath[] = "/Scan";
constexpr double HighestFrequency = 100e9; // Hz

constexpr const char* Sources[] = {QT_TRANSLATE_NOOP("Scan", "Memory channels"),
                                   QT_TRANSLATE_NOOP("Scan", "NOI bands"),
                                   QT_TRANSLATE_NOOP("Scan", "Range")};
constexpr const char* Stops[] = {QT_TRANSLATE_NOOP("Scan", "Level over threshold"),
                                 QT_TRANSLATE_NOOP("Scan", "Squelch open")};
constexpr const char* GoOns[] = {QT_TRANSLATE_NOOP("Scan", "When the signal is gone"),
                                 QT_TRANSLATE_NOOP("Scan", "After a time"),
                                 QT_TRANSLATE_NOOP("Scan", "By hand")};

constexpr ScanValue Settings[] = {
    {ScanKeys::Source, QT_TRANSLATE_NOOP("Scan", "Scanned"), "", Choice, 0, 0, 0, Sources},
    {ScanKeys::From, QT_TRANSLATE_NOOP("Scan", "From"), "", Frequency, 0, HighestFrequency, 7e6},
    {ScanKeys::To, QT_TRANSLATE_NOOP("Scan", "To"), "", Frequency, 0, HighestFrequency, 7.3e6},
    {ScanKeys::Step, QT_TRANSLATE_NOOP("Scan", "Step"), "", Bandwidth, 1, 1e9, 5e3},
    {ScanKeys::Settle, QT_TRANSLATE_NOOP("Scan", "Settle"), "ms", Integer, 0, 10000, 30},
    {ScanKeys::Dwell, QT_TRANSLATE_NOOP("Scan", "Dwell"), "ms", Integer, 0, 60000, 200},
    {ScanKeys::StopAt, QT_TRANSLATE_NOOP("Scan", "Stop at"), "", Choice, 0, 0, 0, Stops},
    {ScanKeys::ScanThreshold, QT_TRANSLATE_NOOP("Scan", "Threshold"), "dBµV", Integer, -40, 110, 20},
    {ScanKeys::GoOn, QT_TRANSLATE_NOOP("Scan", "Go on"), "", Choice, 0, 0, 0, GoOns},
    {ScanKeys::GoOnSeconds, QT_TRANSLATE_NOOP("Scan", "Go on after"), "s", Real, 0, 3600, 2},
    {ScanKeys::Priority, QT_TRANSLATE_NOOP("Scan", "Priority (0: none)"), "", Frequency, 0, HighestFrequency,
     0},
    {ScanKeys::PrioritySeconds, QT_TRANSLATE_NOOP("Scan", "Look there every"), "s", Real, 0.1, 3600, 5},
};

template <typename T>
void setUp(ValueNumeric<T>& value, const ScanValue& setting) {
    value.SetMinMax(static_cast<T>(setting.min), static_cast<T>(setting.max), 1);
    value.SetValue(static_cast<T>(setting.initial));
}

} // namespace

std::span<const ScanValue> ScanSettingValues() {
    return Settings;
}

ScanValues::ScanValues(IObserver& observer) {
    m_node = Tree::Instance()->MakeNode(QString::fromLatin1(NodePath));
    for (const ScanValue& setting : Settings)
        addSetting(setting, &observer);
    add<ValueList<double>>(ScanKeys::LockedOut, &observer);
    for (const auto* key : {&ScanKeys::Running, &ScanKeys::Hold, &ScanKeys::Skip, &ScanKeys::LockOut})
        add<Value<bool>>(*key, &observer);
    for (const auto* key : {&ScanKeys::State, &ScanKeys::Reason, &ScanKeys::Comment})
        add<Value<QString>>(*key, nullptr);
    add<Value<double>>(ScanKeys::Frequency, nullptr);
    for (const auto* key :
         {&ScanKeys::Channel, &ScanKeys::Steps, &ScanKeys::Stops, &ScanKeys::Passes, &ScanKeys::Unreachable})
        add<Value<qint64>>(*key, nullptr);
}

ScanValues::~ScanValues() {
    if (Node* node = m_node.get())
        Tree::Instance()->GetRoot()->DeleteNode(node);
}

template <typename V>
V* ScanValues::add(Names::Id key, IObserver* observer) {
    auto* value = new V;
    // The node is new: it has no value of this name.
    (void)m_node.get()->AddValue(key, value);
    if (observer)
        value->AddObserver(observer);
    return value;
}

void ScanValues::addSetting(const ScanValue& setting, IObserver* observer) {
    if (setting.type == Choice) {
        auto* choice = add<ValueSelection>(setting.key, nullptr);
        for (long place = 0; const char* name : setting.choices) {
            choice->AddItem(Scan::tr(name), static_cast<double>(place), place);
            ++place;
        }
        choice->AddObserver(observer);
    } else if (setting.type == Integer) {
        auto* number = add<ValueNumeric<int>>(setting.key, nullptr);
        setUp(*number, setting);
        number->AddObserver(observer);
    } else {
        auto* number = add<ValueNumeric<double>>(setting.key, nullptr);
        setUp(*number, setting);
        number->AddObserver(observer);
    }
}

QString ScanValues::PathOf(Names::Id key) {
    return QString::fromLatin1(NodePath) + QLatin1Char('/') + Names::Text(key);
}

double ScanValues::GetNumber(Names::Id key) const {
    const IValueNumeric* value = numeric_cast(Find(key));
    Q_ASSERT(value);
    return value->ValueAsDouble();
}

ScanSource ScanValues::GetSource() const {
    return static_cast<ScanSource>(Get<ValueSelection>(ScanKeys::Source).GetCurrentKey());
}

ScanSettings ScanValues::GetSettings() const {
    return {.settle = static_cast<int>(GetNumber(ScanKeys::Settle)),
            .dwell = static_cast<int>(GetNumber(ScanKeys::Dwell)),
            .stopAt =
                static_cast<ScanSettings::StopAt>(Get<ValueSelection>(ScanKeys::StopAt).GetCurrentKey()),
            .threshold = GetNumber(ScanKeys::ScanThreshold),
            .goOn = static_cast<ScanSettings::GoOn>(Get<ValueSelection>(ScanKeys::GoOn).GetCurrentKey()),
            .goOnSeconds = GetNumber(ScanKeys::GoOnSeconds),
            .priority = GetNumber(ScanKeys::Priority),
            .prioritySeconds = GetNumber(ScanKeys::PrioritySeconds)};
}
