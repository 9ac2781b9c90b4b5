#include "controls/frequencystore/targets/wkflistentry.h"
#include "host/valuetree/tree.h"
#include "tests/support/clock.h"
#include "tests/support/text.h"
#include "tests/support/traces.h"

#include <gtest/gtest.h>
#include <limits>
#include <memory>

namespace {

/// Gives a test what entries see only from inside.
class Template : public GeneralEntry {
public:
    using GeneralEntry::CopyFromSource;

    /// The value at each link, in link order.
    std::vector<const ValueBase*> Linked() const {
        return {FrequencyLink(),
                BandwidthLink(),
                DemodulationTextLink(),
                DemodulationSelectionLink(),
                TextLink(),
                TypeLink(),
                LockedLink(),
                LockTimeLink(),
                BandwidthSelectionLink(),
                OutputIFLink(),
                ShiftLink(),
                ThresholdLink(),
                BFOFrequencyLink(),
                ConfidenceLink(),
                AFCLink(),
                UseAttenuationLink(),
                UseSquelchLink(),
                AttenuationLink(),
                AntennaLink()};
    }
    int LinkCount() const {
        const auto linked = Linked();
        return static_cast<int>(linked.size() -
                                static_cast<size_t>(std::count(linked.begin(), linked.end(), nullptr)));
    }
};

class EntryTest : public testing::Test {
protected:
    void SetUp() override { m_receiver = Tree::Instance()->MakeNode(Q("/Receiver")); }
    void TearDown() override { Tree::Instance()->GetRoot()->DeleteChildren(); }

    template <typename V>
    V* Setting(const QString& name) {
        auto* value = new V;
        EXPECT_TRUE(m_receiver->AddValue(name, value));
        return value;
    }
    ValueBase* SettingOfType(ValueType type, const QString& name) {
        switch (type) {
        case ValueType::NumericDouble:
            return Setting<ValueNumeric<double>>(name);
        case ValueType::NumericInt:
            return Setting<ValueNumeric<int>>(name);
        case ValueType::NumericInt64:
            return Setting<ValueNumeric<qint64>>(name);
        case ValueType::Text:
            return Setting<Value<QString>>(name);
        case ValueType::Char:
            return Setting<Value<char>>(name);
        case ValueType::Bool:
            return Setting<Value<bool>>(name);
        default:
            return Setting<ValueSelection>(name);
        }
    }
    static QString Path(const char* name) { return Q("/Receiver/") + Q(name); }
    Node* NewNode() {
        Node* list = Tree::Instance()->MakeNode(Q("/List"));
        auto* node = new Node(list, Q("Target"));
        list->AddItemUnique(node);
        return node;
    }
    template <typename V>
    static V* Own(Node* node, const char* key) {
        return node->FindOwn<V>(Names::Intern(Q(key)));
    }

    Node* m_receiver = nullptr;
};

struct IdRow {
    unsigned id;
    ValueType type;
    size_t link; ///< from 1
};

constexpr IdRow IdRows[] = {
    {0, ValueType::NumericDouble, 1}, {1, ValueType::NumericDouble, 2}, {1, ValueType::Selection, 9},
    {2, ValueType::Text, 3},          {2, ValueType::Selection, 4},     {3, ValueType::Char, 6},
    {4, ValueType::Text, 5},          {49, ValueType::Selection, 7},    {50, ValueType::NumericInt64, 8},
    {51, ValueType::NumericInt, 14},  {56, ValueType::NumericInt, 12},  {57, ValueType::NumericInt, 13},
    {58, ValueType::Selection, 10},   {59, ValueType::NumericInt, 11},  {60, ValueType::NumericInt, 12},
    {61, ValueType::Bool, 17},        {62, ValueType::Bool, 16},        {63, ValueType::NumericInt, 18},
    {64, ValueType::NumericInt, 19},  {65, ValueType::Bool, 15}};

TEST_F(EntryTest, EachIdentifierBindsItsLinkToAValueOfItsTypeOnly) {
    constexpr ValueType AllTypes[] = {
        ValueType::NumericDouble, ValueType::NumericInt, ValueType::NumericInt64, ValueType::Text,
        ValueType::Char,          ValueType::Bool,       ValueType::Selection};
    for (const ValueType type : AllTypes) {
        const QString name = Q("v%1").arg(static_cast<int>(type));
        const ValueBase* value = SettingOfType(type, name);
        for (unsigned id = 0; id <= 70; ++id) {
            const IdRow* expected = nullptr;
            for (const IdRow& row : IdRows) {
                if (row.id == id && row.type == type)
                    expected = &row;
            }
            Template entry;
            EXPECT_EQ(entry.AddSourceValue(id, value->GetPathName()), expected != nullptr)
                << id << " " << name.toStdString();
            EXPECT_EQ(entry.LinkCount(), expected ? 1 : 0) << id;
            if (expected) {
                EXPECT_EQ(entry.Linked()[expected->link - 1], value) << id;
                EXPECT_TRUE(value->HasObservers());
            }
        }
        EXPECT_FALSE(value->HasObservers()) << "entries that ended observe nothing";
    }
    Template entry;
    EXPECT_FALSE(entry.AddSourceValue(0, Q("/No/Such/Value")));
    EXPECT_FALSE(entry.AddSourceValue(0, QString()));
    EXPECT_EQ(Tree::Instance()->GetNode(Q("/No")), nullptr);
}

TEST_F(EntryTest, RebindingDetachesFromTheValueBefore) {
    auto* first = Setting<ValueNumeric<int>>(Q("first"));
    auto* second = Setting<ValueNumeric<int>>(Q("second"));
    Template entry;
    EXPECT_TRUE(entry.AddSourceValue(56, Path("first")));
    EXPECT_TRUE(entry.AddSourceValue(60, Path("second")));
    EXPECT_FALSE(first->HasObservers());
    EXPECT_TRUE(second->HasObservers());
    EXPECT_EQ(entry.LinkCount(), 1);
    EXPECT_FALSE(entry.AddSourceValue(56, Path("none")));
    EXPECT_FALSE(second->HasObservers());
    EXPECT_EQ(entry.LinkCount(), 0);

    auto* number = Setting<ValueNumeric<double>>(Q("bandwidth"));
    auto* choice = Setting<ValueSelection>(Q("bandwidths"));
    EXPECT_TRUE(entry.AddSourceValue(1, Path("bandwidths")));
    EXPECT_TRUE(entry.AddSourceValue(1, Path("bandwidth")));
    EXPECT_EQ(entry.LinkCount(), 2) << "the selection stays when a number is bound";
    EXPECT_TRUE(entry.AddSourceValue(1, Path("bandwidths")));
    EXPECT_EQ(entry.LinkCount(), 1) << "the number goes when a selection is bound";
    EXPECT_FALSE(number->HasObservers());
    EXPECT_TRUE(choice->HasObservers());
}

TEST_F(EntryTest, AValueThatAnnouncesItsRemovalIsForgottenOnlyInItsRemovingState) {
    auto* value = Setting<ValueNumeric<double>>(Q("frequency"));
    Template entry;
    entry.AddSourceValue(0, Path("frequency"));
    value->NotifyObservers(TChangeCode::Removing);
    EXPECT_EQ(entry.LinkCount(), 1);
    EXPECT_TRUE(value->HasObservers());
    value->SetState(TValueState::Removing);
    EXPECT_EQ(entry.LinkCount(), 0);
    EXPECT_FALSE(value->HasObservers());
}

TEST_F(EntryTest, CopiesHaveTheLinksObserveNothingAndLoseThemWithTheValue) {
    auto* value = Setting<ValueNumeric<double>>(Q("frequency"));
    auto original = std::make_unique<Template>();
    original->AddSourceValue(0, Path("frequency"));
    const Template copy(*original);
    Template assigned;
    assigned = copy;
    EXPECT_EQ(copy.Linked()[0], value);
    EXPECT_EQ(assigned.Linked()[0], value);
    original.reset();
    EXPECT_FALSE(value->HasObservers());
    EXPECT_EQ(copy.Linked()[0], value);
    m_receiver->DeleteValue(Q("frequency"));
    EXPECT_EQ(copy.LinkCount(), 0);
    EXPECT_EQ(assigned.LinkCount(), 0);
}

TEST_F(EntryTest, CopyRulesTakeWhatBothValuesAre) {
    ValueNumeric<int> source;
    source.SetMinMax(-5, 5, 2);
    source.SetValue(3);
    ValueNumeric<double> number;
    EXPECT_TRUE(Template::CopyFromSource(&source, &number));
    EXPECT_EQ(number.GetMin(), -5);
    EXPECT_EQ(number.GetStep(), 2);
    EXPECT_EQ(number.GetValue(), 3);
    EXPECT_FALSE(Template::CopyFromSource(static_cast<IValueNumeric*>(nullptr), &number));
    EXPECT_FALSE(Template::CopyFromSource(&source, static_cast<IValueNumeric*>(nullptr)));

    Value<QString> text;
    text.SetValue(Q("109"));
    Value<char> letter;
    EXPECT_TRUE(
        Template::CopyFromSource(static_cast<const ValueBase*>(&text), static_cast<ValueBase*>(&letter)));
    EXPECT_EQ(letter.GetValue(), 'm');

    ValueSelection choices, target;
    choices.AddItems({Q("AM"), Q("FM"), Q("USB")});
    choices.Select(2L);
    target.AddItem(Q("old"), 0, 2);
    EXPECT_TRUE(Template::CopyFromSource(&choices, &target));
    EXPECT_EQ(target.GetItemCount(), 3);
    EXPECT_EQ(target.GetStringValue(), Q("USB"));
    EXPECT_FALSE(Template::CopyFromSource(&choices, static_cast<ValueSelection*>(nullptr)));
}

TEST_F(EntryTest, InitValuePrefersTheSelectionAndRefusesForeignTypes) {
    auto* choice = Setting<ValueSelection>(Q("demods"));
    choice->AddItems({Q("AM"), Q("FM")});
    choice->Select(1L);
    Setting<Value<QString>>(Q("demod"))->SetValue(Q("USB"));
    Template entry;
    Value<QString> text;
    EXPECT_FALSE(entry.InitValueFrom(2, &text)) << "nothing is bound";
    entry.AddSourceValue(2, Path("demod"));
    EXPECT_TRUE(entry.InitValueFrom(2, &text));
    EXPECT_EQ(text.GetValue(), Q("USB"));
    // The selection is added to a template that keeps its text link.
    Template both;
    both.AddSourceValue(2, Path("demods"));
    both.AddSourceValue(2, Path("demod"));
    ValueSelection target;
    EXPECT_TRUE(both.InitValueFrom(2, &target));
    EXPECT_EQ(target.GetStringValue(), Q("FM"));
    EXPECT_FALSE(both.InitValueFrom(2, nullptr));
    EXPECT_FALSE(both.InitValueFrom(5, &text));
    EXPECT_FALSE(both.InitValueFrom(66, &text));
}

TEST_F(EntryTest, LockTimeStampsTheSourceAndLeavesTheFirstTargetAtZero) {
    const FixedClock clock(1234567890123456);
    auto* source = Setting<ValueNumeric<qint64>>(Q("locktime"));
    const qint64 max = std::numeric_limits<qint64>::max();
    source->SetMinMax(0, max, 7);
    Template entry;
    ValueNumeric<qint64> first, second;
    entry.SpecialValueInit(50, &first);
    EXPECT_EQ(first.GetMax(), 0) << "nothing is bound";
    entry.AddSourceValue(50, Path("locktime"));
    entry.SpecialValueInit(51, &first);
    EXPECT_EQ(source->GetValue(), 0);
    entry.SpecialValueInit(50, nullptr);
    entry.SpecialValueInit(50, &first);
    EXPECT_EQ(first.GetValue(), 0);
    EXPECT_EQ(first.GetMax(), max);
    EXPECT_EQ(first.GetStep(), 7);
    EXPECT_EQ(source->GetValue(), clock.CurrentTime());
    entry.SpecialValueInit(50, &second);
    EXPECT_EQ(second.GetValue(), clock.CurrentTime());
}

TEST_F(EntryTest, ANewSimpleFrequencyHasItsFrequencyAsComment) {
    Node* plain = NewNode();
    const SimpleFrequency without(plain, true, nullptr);
    auto* frequency = Own<ValueNumeric<double>>(plain, "frequency");
    ASSERT_NE(frequency, nullptr);
    EXPECT_EQ(frequency->GetMin(), 0);
    EXPECT_EQ(frequency->GetMax(), std::numeric_limits<double>::max());
    EXPECT_EQ(frequency->GetStep(), 1);
    EXPECT_EQ(Own<Value<QString>>(plain, "comment")->GetValue(), Q("0"));

    auto* tuned = Setting<ValueNumeric<double>>(Q("frequency"));
    tuned->SetMinMax(9e3, 30e6, 10);
    tuned->SetValue(7055000.5);
    Template entry;
    entry.AddSourceValue(0, Path("frequency"));
    Node* node = NewNode();
    SimpleFrequency with(node, true, &entry);
    frequency = Own<ValueNumeric<double>>(node, "frequency");
    EXPECT_EQ(frequency->GetMax(), 30e6);
    EXPECT_EQ(Own<Value<QString>>(node, "comment")->GetValue(), Q("7055000.5"));
    tuned->SetValue(1e6);
    EXPECT_EQ(frequency->GetValue(), 7055000.5) << "sources are copied once";
    with.SetFrequency(145e6);
    EXPECT_EQ(frequency->GetValue(), 145e6) << "limits do not clamp";
    EXPECT_EQ(Own<Value<QString>>(node, "comment")->GetValue(), Q("7055000.5"));
}

TEST_F(EntryTest, AttachingMakesNothingAndSettersOfMissingValuesDoNothing) {
    Node* node = NewNode();
    SimpleFrequency nothing(node, false, nullptr);
    nothing.SetFrequency(1);
    nothing.SetComment(Q("x"));
    nothing.SetBandwidth(1.0);
    nothing.SetBandwidth(1L);
    nothing.SetDemodulation(Q("AM"));
    WkfListEntry target(nullptr, true, nullptr);
    target.SetFrequency(1);
    target.SetPriority(1);
    EXPECT_EQ(node->FirstValue(), nullptr);

    WkfListEntry(node, true, nullptr).SetPriority(4);
    node->DeleteValue(Q("profilename"));
    WkfListEntry incomplete(node, false, nullptr);
    incomplete.SetProfileName(Q("lost"));
    incomplete.SetProfileID(Q("kept"));
    EXPECT_EQ(node->GetValue(Q("profilename")), nullptr);
    EXPECT_EQ(node->GetValue(Q("profileid"))->GetStringValue(), Q("kept"));
    EXPECT_EQ(node->GetValue(Q("priority"))->GetStringValue(), Q("4"));
}

TEST_F(EntryTest, ANewTargetWithoutTemplateHasDefaults) {
    Node* node = NewNode();
    const WkfListEntry entry(node, true, nullptr);
    const auto* bandwidth = Own<ValueNumeric<double>>(node, "bandwidth");
    EXPECT_EQ(bandwidth->GetMin(), 0);
    EXPECT_EQ(bandwidth->GetMax(), 3e9);
    EXPECT_EQ(bandwidth->GetStep(), 1);
    const auto* priority = Own<ValueNumeric<int>>(node, "priority");
    EXPECT_EQ(priority->GetMin(), 1);
    EXPECT_EQ(priority->GetMax(), 11);
    EXPECT_EQ(priority->GetStep(), 1);
    EXPECT_NE(Own<Value<char>>(node, "type"), nullptr);
    EXPECT_EQ(Own<Value<QString>>(node, "demodulation")->GetValue(), Q("NONE"));
    EXPECT_EQ(Own<Value<QString>>(node, "threadclass")->GetValue(), QString());
    for (const char* key : {"profileid", "signalclass", "transmissionsystem", "profilename"})
        EXPECT_EQ(Own<Value<QString>>(node, key)->GetValue(), Q("undefined")) << key;
    EXPECT_EQ(node->GetValueDescriptor()->values.size(), 11u);
}

TEST_F(EntryTest, ANewTargetTakesTextAndNumberOfTheTemplateButNoSelections) {
    auto* bandwidth = Setting<ValueNumeric<double>>(Q("bandwidth"));
    bandwidth->SetMinMax(100, 9000, 100);
    bandwidth->SetValue(2700);
    Setting<Value<QString>>(Q("demod"))->SetValue(Q("USB"));
    Setting<Value<char>>(Q("type"))->SetValue('x');
    Setting<ValueSelection>(Q("demods"))->AddItems({Q("AM")});
    Setting<ValueSelection>(Q("bandwidths"))->AddItem(Q("6 kHz"), 6000, 1);
    Template entry;
    entry.AddSourceValue(1, Path("bandwidth"));
    entry.AddSourceValue(2, Path("demod"));
    entry.AddSourceValue(3, Path("type"));
    Node* node = NewNode();
    WkfListEntry(node, true, &entry);
    EXPECT_EQ(Own<ValueNumeric<double>>(node, "bandwidth")->GetMax(), 9000);
    EXPECT_EQ(Own<ValueNumeric<double>>(node, "bandwidth")->GetValue(), 2700);
    EXPECT_EQ(Own<Value<QString>>(node, "demodulation")->GetValue(), Q("USB"));
    EXPECT_EQ(Own<Value<char>>(node, "type")->GetValue(), 'x');

    entry.AddSourceValue(1, Path("bandwidths"));
    entry.AddSourceValue(2, Path("demods"));
    node = NewNode();
    WkfListEntry(node, true, &entry);
    EXPECT_EQ(Own<ValueNumeric<double>>(node, "bandwidth")->GetMax(), 3e9);
    EXPECT_EQ(Own<ValueNumeric<double>>(node, "bandwidth")->GetValue(), 0);
    EXPECT_EQ(Own<Value<QString>>(node, "demodulation")->GetValue(), Q("NONE"));
}

TEST_F(EntryTest, SettersAppendWhatASelectionLacks) {
    Node* node = NewNode();
    auto* demodulation = new ValueSelection;
    demodulation->AddItems({Q("AM"), Q("FM")});
    EXPECT_TRUE(node->AddValue(Q("demodulation"), demodulation));
    auto* bandwidth = new ValueSelection;
    bandwidth->AddItem(Q("6 kHz"), 6000, 1);
    EXPECT_TRUE(node->AddValue(Q("bandwidthsel"), bandwidth));
    SimpleFrequency entry(node, false, nullptr);
    entry.SetDemodulation(Q("FM"));
    EXPECT_EQ(demodulation->GetItemCount(), 2);
    entry.SetDemodulation(Q("DRM"));
    EXPECT_EQ(demodulation->GetStringValue(), Q("DRM"));
    entry.SetBandwidth(2700.5);
    EXPECT_EQ(bandwidth->GetCurrentValue(), 2700.5);
    EXPECT_EQ(bandwidth->GetItemCount(), 2);
    EXPECT_NE(bandwidth->GetCurrentKey(), 1);
    entry.SetBandwidth(1L);
    EXPECT_EQ(bandwidth->GetCurrentValue(), 6000);
    entry.SetBandwidth(4711L);
    EXPECT_EQ(bandwidth->GetCurrentValue(), 6000) << "there is no such key";
    EXPECT_EQ(node->GetValue(Q("bandwidth")), nullptr);
}

TEST_F(EntryTest, ARefusedValueIsUsableAndTraced) {
    Node* node = NewNode();
    auto* clash = new Value<QString>;
    clash->SetValue(Q("mine"));
    EXPECT_TRUE(node->AddValue(Q("priority"), clash));
    Traces traces;
    WkfListEntry entry(node, true, nullptr);
    ASSERT_EQ(traces.texts.size(), 1);
    EXPECT_EQ(traces.places[0], Q("valueobservermacros:297"));
    EXPECT_EQ(
        traces.texts[0],
        Q("!!!!!!!MEMORY LEAK! The value with the path '%1' could not be created!!! A value of this name "
          "already exists for a different type!!!!!!!!")
            .arg(node->GetPathName() + Q("/priority")));
    entry.SetPriority(3);
    EXPECT_EQ(clash->GetValue(), Q("mine"));
    EXPECT_EQ(node->GetValue(Q("profileid"))->GetStringValue(), Q("undefined"))
        << "the other values are made";
}

TEST_F(EntryTest, ValuesAndNodeMayEndWhileTheEntryLives) {
    Node* node = NewNode();
    WkfListEntry entry(node, true, nullptr);
    const WkfListEntry copy(entry);
    node->DeleteValue(Q("frequency"));
    node->DeleteValue(Q("priority"));
    entry.SetFrequency(1);
    entry.SetPriority(2);
    entry.SetComment(Q("still here"));
    EXPECT_EQ(node->GetValue(Q("comment"))->GetStringValue(), Q("still here"));
    EXPECT_EQ(node->GetValue(Q("frequency")), nullptr);
    node->DeleteChildren();
    entry.SetComment(Q("gone"));
    Tree::Instance()->GetNode(Q("/List"))->DeleteNode(node);
    entry.SetBandwidth(1.0);
    entry.SetDemodulation(Q("AM"));
    WkfListEntry(copy).SetThreadClass(Q("gone"));
    EXPECT_EQ(Tree::Instance()->GetNode(Q("/List"))->ChildCount(), 0u);
}

TEST_F(EntryTest, ANodeOutsideTheTreeResolvesToNothing) {
    Node list(nullptr, Q("Loose"));
    auto* node = new Node(&list, Q("Target"));
    list.AddItemUnique(node);
    Traces traces;
    WkfListEntry entry(node, true, nullptr);
    entry.SetFrequency(5);
    EXPECT_EQ(traces.texts.size(), 11);
    EXPECT_EQ(node->FirstValue(), nullptr);
}

} // namespace
