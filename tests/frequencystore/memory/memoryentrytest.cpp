#include "controls/frequencystore/memory/hfmemoryentry.h"
#include "controls/frequencystore/memory/vuhfmemoryentry.h"
#include "host/valuetree/tree.h"
#include "tests/support/text.h"

#include <gtest/gtest.h>

namespace {

/// One value as "key type min..max/step = content"; selections tell their items instead of limits.
QString Described(const ValueBase& value) {
    QString limits;
    if (value.GetType() == ValueType::NumericInt || value.GetType() == ValueType::NumericDouble) {
        const auto& number = static_cast<const IValueNumeric&>(value);
        limits =
            Q(" %1..%2/%3").arg(number.MinAsDouble()).arg(number.MaxAsDouble()).arg(number.StepAsDouble());
    }
    if (const auto* selection = value_cast<ValueSelection>(&value)) {
        for (long i = 0; i < selection->GetItemCount(); ++i) {
            const SelectionItem* item = selection->GetItemAt(i);
            limits += Q(" [%1|%2|%3]").arg(item->GetName()).arg(item->GetValue()).arg(item->GetKey());
        }
    }
    return value.GetName() + Q(": ") + value.GetTypeName() + limits + Q(" = ") + value.GetStringValue();
}

QStringList Described(const Node& node) {
    QStringList values;
    for (const ValueBase* value = node.FirstValue(); value; value = Node::NextValue(value))
        values << Described(*value);
    return values;
}

class MemoryEntryTest : public testing::Test {
protected:
    void SetUp() override { m_receiver = Tree::Instance()->MakeNode(Q("/Receiver")); }
    void TearDown() override { Tree::Instance()->GetRoot()->DeleteChildren(); }

    Node* NewNode() {
        Node* list = Tree::Instance()->MakeNode(Q("/List"));
        auto* node = new Node(list, Q("MemItem"));
        list->AddItemUnique(node);
        return node;
    }
    template <typename V>
    V* Bind(unsigned id) {
        auto* value = new V;
        const QString name = QString::number(id);
        EXPECT_TRUE(m_receiver->AddValue(name, value));
        m_template.AddSourceValue(id, Q("/Receiver/") + name);
        return value;
    }
    void BindInteger(unsigned id, int min, int max, int step, int content) {
        auto* value = Bind<ValueNumeric<int>>(id);
        value->SetMinMax(min, max, step);
        value->SetValue(content);
    }
    template <typename V>
    static V* Own(const Node* node, const char* key) {
        return node->FindOwn<V>(Names::Intern(Q(key)));
    }

    Node* m_receiver = nullptr;
    GeneralEntry m_template;
};

const QLatin1Char Line('\n');
const QStringList CommonHead = {Q("frequency: numeric double 0..1.79769e+308/1 = 0"), Q("comment: text = 0"),
                                Q("bandwidthsel: numeric double 0..3e+09/1 = 0"),
                                Q("demodulation: selection [NONE|0|0] = NONE")};
const QStringList CommonTail = {Q("type: char = 109"), Q("range: bool = false"),
                                Q("rangecounter: numeric int -1..1000/1 = -1"),
                                Q("rangefrequencies: double list = ")};

TEST_F(MemoryEntryTest, WithoutReceiverValuesHaveTheirDefaultsInOrder) {
    Node* hf = NewNode();
    HFMemoryEntry(hf, true, &m_template);
    const QStringList hfSettings = {Q("outputifpath: selection [48.0 kHz|48|0] [455.0 kHz|455|1] = 48.0 kHz"),
                                    Q("shift: numeric int 26..39974/1 = 20000"),
                                    Q("bfofrequency: numeric int -10000..10000/1 = 0"),
                                    Q("threshold: numeric int -40..110/1 = 0")};
    EXPECT_EQ(Described(*hf).join(Line).toStdString(),
              (CommonHead + hfSettings + CommonTail).join(Line).toStdString());
    Node* vuhf = NewNode();
    VUHFMemoryEntry(vuhf, true, nullptr);
    const QStringList vuhfSettings = {Q("threshold: numeric int -40..110/1 = 0"),
                                      Q("afc: bool = false"),
                                      Q("usesquelch: bool = false"),
                                      Q("useattenuation: bool = false"),
                                      Q("attenuation: numeric int 0..40/1 = 0"),
                                      Q("antennaid: numeric int 0..99/1 = 0")};
    EXPECT_EQ(Described(*vuhf).join(Line).toStdString(),
              (CommonHead + vuhfSettings + CommonTail).join(Line).toStdString());
}

TEST_F(MemoryEntryTest, ANewChannelTakesLimitsChoicesAndSettingsOfTheReceiver) {
    auto* frequency = Bind<ValueNumeric<double>>(SourceFrequency);
    frequency->SetMinMax(1e4, 3e7, 10);
    frequency->SetValue(7055000);
    auto* bandwidth = Bind<ValueNumeric<double>>(SourceBandwidth);
    bandwidth->SetMinMax(100, 9000, 50);
    bandwidth->SetValue(2700);
    auto* demodulation = Bind<ValueSelection>(SourceDemodulation);
    demodulation->AddItems({Q("AM"), Q("USB")});
    demodulation->Select(Q("USB"));
    BindInteger(SourceThreshold, -20, 80, 2, 34);
    BindInteger(SourceBFOFrequency, -5000, 5000, 10, 800);
    BindInteger(SourceShift, 100, 30000, 5, 1500);
    BindInteger(SourceAttenuation, 0, 30, 10, 20);
    BindInteger(SourceAntenna, 1, 4, 1, 3);
    Bind<ValueSelection>(SourceOutputIF)->AddItem(Q("10.7 MHz"), 10700, 7);
    for (const unsigned id : {SourceAFC, SourceUseSquelch, SourceUseAttenuation})
        Bind<Value<bool>>(id)->SetValue(true);
    const QStringList head = {Q("frequency: numeric double 10000..3e+07/10 = 7055000"),
                              Q("comment: text = 7055000"),
                              Q("bandwidthsel: numeric double 100..9000/50 = 2700"),
                              Q("demodulation: selection [AM|0|0] [USB|1|1] = USB")};
    const QString threshold = Q("threshold: numeric int -20..80/2 = 34");

    Node* hf = NewNode();
    HFMemoryEntry(hf, true, &m_template);
    const QStringList hfSettings = {Q("outputifpath: selection [10.7 MHz|10700|7] = 10.7 MHz"),
                                    Q("shift: numeric int 100..30000/5 = 1500"),
                                    Q("bfofrequency: numeric int -5000..5000/10 = 800"), threshold};
    EXPECT_EQ(Described(*hf).join(Line).toStdString(),
              (head + hfSettings + CommonTail).join(Line).toStdString());
    Node* vuhf = NewNode();
    VUHFMemoryEntry(vuhf, true, &m_template);
    const QStringList vuhfSettings = {threshold,
                                      Q("afc: bool = true"),
                                      Q("usesquelch: bool = true"),
                                      Q("useattenuation: bool = true"),
                                      Q("attenuation: numeric int 0..30/10 = 20"),
                                      Q("antennaid: numeric int 1..4/1 = 3")};
    EXPECT_EQ(Described(*vuhf).join(Line).toStdString(),
              (head + vuhfSettings + CommonTail).join(Line).toStdString());
}

TEST_F(MemoryEntryTest, ABandwidthThatTheReceiverOffersAsChoiceIsANumberWithinItsItems) {
    auto* bandwidths = Bind<ValueSelection>(SourceBandwidth);
    Node* node = NewNode();
    HFMemoryEntry(node, true, &m_template);
    EXPECT_EQ(Own<ValueNumeric<double>>(node, "bandwidthsel")->GetMax(), 3e9)
        << "a choice of nothing limits nothing";
    for (const double hertz : {6000.0, 500.0, 12000.0})
        bandwidths->AddItem(QString::number(hertz), hertz, bandwidths->GetItemCount());
    node = NewNode();
    HFMemoryEntry entry(node, true, &m_template);
    const auto* bandwidth = Own<ValueNumeric<double>>(node, "bandwidthsel");
    EXPECT_EQ(Described(*bandwidth), Q("bandwidthsel: numeric double 500..12000/1 = 6000"));
    entry.SetBandwidth(2700.5);
    EXPECT_EQ(bandwidth->GetValue(), 2700.5) << "what a file says is stored as it is";
}

TEST_F(MemoryEntryTest, SettersReachTheirValuesAndAppendWhatAChoiceLacks) {
    Node* hf = NewNode();
    HFMemoryEntry(hf, true, nullptr);
    HFMemoryEntry a(hf, false, nullptr);
    a.SetOutputIFPath(Q("455.0 kHz"));
    EXPECT_EQ(hf->GetValue(Q("outputifpath"))->GetStringValue(), Q("455.0 kHz"));
    a.SetOutputIFPath(QString());
    a.SetDemodulation(QString());
    EXPECT_EQ(hf->GetValue(Q("outputifpath"))->GetStringValue(), Q("455.0 kHz"))
        << "an empty text says nothing";
    EXPECT_EQ(hf->GetValue(Q("demodulation"))->GetStringValue(), Q("NONE"));
    a.SetOutputIFPath(Q("Narrow"));
    EXPECT_EQ(Own<ValueSelection>(hf, "outputifpath")->GetItemCount(), 3);
    a.SetDemodulation(Q("DRM"));
    a.SetShift(39975);
    a.SetBFOFrequency(-9000000000L);
    a.SetThreshold(-41);
    VUHFMemoryEntry(NewNode(), true, nullptr);
    Node* vuhf = Tree::Instance()->GetNode(Q("/List"))->Children().back();
    VUHFMemoryEntry b(vuhf, false, nullptr);
    b.SetThreshold(12);
    b.SetAfc(true);
    b.SetUseSquelch(true);
    b.SetUseAttenuation(true);
    b.SetAttenuation(41);
    b.SetAntennaID(5);
    const std::tuple<Node*, const char*, const char*> rows[] = {
        {hf, "demodulation", "DRM"},  {hf, "shift", "39975"},    {hf, "bfofrequency", "-2147483648"},
        {hf, "threshold", "-41"},     {vuhf, "threshold", "12"}, {vuhf, "afc", "true"},
        {vuhf, "usesquelch", "true"}, {vuhf, "antennaid", "5"},  {vuhf, "useattenuation", "true"},
        {vuhf, "attenuation", "41"},  {vuhf, "range", "false"},
    };
    for (const auto& [node, key, text] : rows)
        EXPECT_EQ(node->GetValue(Q(key))->GetStringValue(), Q(text)) << key;
}

TEST_F(MemoryEntryTest, FurtherFrequenciesOfARangeKeepTheirOrderAndDoNotMakeTheRange) {
    Node* node = NewNode();
    HFMemoryEntry entry(node, true, nullptr);
    int number = 7;
    EXPECT_TRUE(entry.GetRangeNumber(number));
    EXPECT_EQ(number, MemoryEntry::NoRange);
    for (const double hertz : {3e6, 1e6, 2e6})
        entry.SetFrequencyInRange(hertz);
    EXPECT_EQ(Own<ValueList<double>>(node, "rangefrequencies")->GetList(),
              (std::vector<double>{3e6, 1e6, 2e6}));
    EXPECT_FALSE(Own<Value<bool>>(node, "range")->GetValue());
    entry.SetInRange();
    entry.SetRangeNumber(12);
    EXPECT_TRUE(Own<Value<bool>>(node, "range")->GetValue());
    EXPECT_TRUE(HFMemoryEntry(node, false, nullptr).GetRangeNumber(number));
    EXPECT_EQ(number, 12);

    Tree::Instance()->GetNode(Q("/List"))->DeleteNode(node);
    EXPECT_FALSE(entry.GetRangeNumber(number)) << "the channel is gone, its entry object is not";
    entry.SetFrequencyInRange(1);
    entry.SetOutputIFPath(Q("x"));
}

} // namespace
