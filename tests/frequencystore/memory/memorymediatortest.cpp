#include "controls/frequencystore/memory/memorymediatorhf.h"
#include "controls/frequencystore/results/searchmcdatamediator.h"
#include "controls/frequencystore/targets/wkfnodemediator.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencynodelistview.h"
#include "host/freqstorexml/frequencystorelist.h"
#include "tests/frequencystore/memory/memorychannels.h"

#include <functional>

namespace {

class MemoryMediatorTest : public MemoryChannels {
protected:
    static QString Cell(FrequencyNodeMediator& mediator, unsigned column) {
        QString text = Q("<none>");
        mediator.CellText(column, text);
        return text;
    }
};

/// One setting of a channel: its key, how a mediator reads and writes it as text, another text for it, and
/// the column that shows it.
template <typename M>
struct SettingRow {
    const char* key;
    std::function<bool(M&, QString&)> get;
    std::function<void(M&)> set;
    const char* afterSet;
    unsigned column;
};

template <typename M, typename T>
std::function<bool(M&, QString&)> reads(bool (M::*getter)(T&) const) {
    return [getter](M& mediator, QString& text) {
        T content{};
        if (!(mediator.*getter)(content))
            return false;
        text = ValueText<std::conditional_t<std::is_same_v<T, long>, qint64, T>>::ToText(content);
        return true;
    };
}

template <typename M>
void checkSettings(M& mediator, Node* node, const std::vector<SettingRow<M>>& rows) {
    for (const auto& row : rows) {
        ValueBase* value = node->GetValue(QString::fromLatin1(row.key));
        ASSERT_NE(value, nullptr) << row.key;
        QString text;
        EXPECT_TRUE(row.get(mediator, text)) << row.key;
        EXPECT_EQ(text, value->GetStringValue()) << row.key;
        EXPECT_NE(text, QString::fromLatin1(row.afterSet)) << row.key;
        row.set(mediator);
        EXPECT_EQ(value->GetStringValue(), QString::fromLatin1(row.afterSet)) << row.key;
        EXPECT_TRUE(mediator.CellText(row.column, text));
        EXPECT_EQ(text, QString::fromLatin1(row.afterSet)) << row.key;

        node->DeleteValue(QString::fromLatin1(row.key));
        text = QStringLiteral("untouched");
        EXPECT_FALSE(row.get(mediator, text)) << row.key;
        EXPECT_FALSE(mediator.CellText(row.column, text)) << row.key;
        EXPECT_EQ(text, QStringLiteral("untouched")) << row.key;
        row.set(mediator); // must not touch what is gone
    }
}

TEST_F(MemoryMediatorTest, HFSettingsAreReadWrittenShownAndMissed) {
    Start(MediatorType::MemoryHF);
    Node* node = AddChannel(7055000, "calling");
    using M = MemoryMediatorHF;
    M* mediator = Mediator<M>(0);
    ASSERT_NE(mediator, nullptr);
    EXPECT_EQ(mediator->GetMediatorType(), MediatorType::MemoryHF);
    EXPECT_EQ(Cell(*mediator, 60), Q("10")) << "the threshold has two columns";
    mediator->SetOutputIFPath(Q("no such path"));
    EXPECT_EQ(Cell(*mediator, 58), Q("48.0 kHz"));
    for (const unsigned column : {61u, 62u, 63u, 64u, 65u, 17u})
        EXPECT_EQ(Cell(*mediator, column), Q("<none>"));
    checkSettings<M>(
        *mediator, node,
        {{"threshold", reads<M, long>(&M::GetThreshold), [](M& m) { m.SetThreshold(-7); }, "-7", 56},
         {"shift", reads(&M::GetShift), [](M& m) { m.SetShift(30000); }, "30000", 59},
         {"bfofrequency", reads(&M::GetBFOFrequency), [](M& m) { m.SetBFOFrequency(-900); }, "-900", 57},
         {"outputifpath", [](M& m, QString& text) { return m.GetOutputIFPath(text); },
          [](M& m) { m.SetOutputIFPath(Q("455.0 kHz")); }, "455.0 kHz", 58}});
}

TEST_F(MemoryMediatorTest, VUHFSettingsAreReadWrittenShownAndMissed) {
    Start(MediatorType::MemoryVUHF);
    Node* node = AddChannel(145.5e6, "relay");
    using M = MemoryMediatorVUHF;
    M* mediator = Mediator<M>(0);
    ASSERT_NE(mediator, nullptr);
    EXPECT_EQ(mediator->GetMediatorType(), MediatorType::MemoryVUHF);
    for (const unsigned column : {57u, 58u, 59u})
        EXPECT_EQ(Cell(*mediator, column), Q("<none>"));
    checkSettings<M>(
        *mediator, node,
        {{"threshold", reads<M, long>(&M::GetThreshold), [](M& m) { m.SetThreshold(99); }, "99", 60},
         {"afc", reads(&M::GetAFC), [](M& m) { m.SetAFC(true); }, "true", 65},
         {"usesquelch", reads(&M::GetUseThreshold), [](M& m) { m.SetUseThreshold(true); }, "true", 61},
         {"useattenuation", reads(&M::GetUseAttenuation), [](M& m) { m.SetUseAttenuation(true); }, "true",
          62},
         {"attenuation", reads(&M::GetAttenuation), [](M& m) { m.SetAttenuation(12); }, "12", 63},
         {"antennaid", reads(&M::GetAntenna), [](M& m) { m.SetAntenna(4); }, "4", 64}});
}

TEST_F(MemoryMediatorTest, AReceiverReadsSquelchAttenuationAndAfcOfAnyEntryThatHasThem) {
    Start(MediatorType::MemoryVUHF);
    AddChannel(145.5e6, "relay");
    auto* mediator = Mediator<MemoryMediatorVUHF>(0);
    mediator->SetThreshold(33);
    mediator->SetUseThreshold(true);
    mediator->SetAttenuation(12);
    mediator->SetAFC(true);
    auto* plain = new Node(nullptr, Q("Entry"));
    Tree::Instance()->GetRoot()->AddItemUnique(plain);
    FrequencyNodeMediator without(m_controller.get(), plain, 0);
    for (const bool has : {true, false}) {
        IFrequencyStoreItem& item = has ? static_cast<IFrequencyStoreItem&>(*mediator) : without;
        QString squelch = Q("-");
        QString attenuation = Q("-");
        QString afc = Q("-");
        int level = -7;
        EXPECT_EQ(item.GetSquelchState(squelch, 0), has);
        EXPECT_EQ(item.GetSquelchValue(level, 0), has);
        EXPECT_EQ(item.GetAttenuation(attenuation, 0), has);
        EXPECT_EQ(item.GetAfc(afc, 0), has);
        EXPECT_EQ(squelch, has ? Q("true") : Q("-"));
        EXPECT_EQ(level, has ? 33 : -7);
        EXPECT_EQ(attenuation, has ? Q("12") : Q("-"));
        EXPECT_EQ(afc, has ? Q("true") : Q("-"));
    }
}

template <typename M>
class MediatorWithoutNode : public MemoryChannels {};
using AllMediators = testing::Types<FrequencyNodeMediator, MemoryMediatorHF, MemoryMediatorVUHF,
                                    WkfNodeMediator, SearchMCDataMediator>;
TYPED_TEST_SUITE(MediatorWithoutNode, AllMediators);

TYPED_TEST(MediatorWithoutNode, HasNoValuesAndDoesNothing) {
    this->Start(MediatorType::MemoryHF);
    auto* value = GetOrCreateValue<ValueNumeric<double>>(QStringLiteral("/Lists/Value"));
    TypeParam mediator(this->m_controller.get(), value, 4);
    EXPECT_EQ(mediator.GetNode(), nullptr);
    EXPECT_EQ(mediator.GetObservable(), static_cast<Observable*>(value));
    double number = -1;
    QString text = QStringLiteral("-");
    EXPECT_FALSE(mediator.GetFrequency(number, 0) || mediator.GetBandwidth(number, 0) ||
                 mediator.GetComment(text, 0) || mediator.GetDemodulation(text, 0) ||
                 mediator.GetTip(text, 0) || mediator.GetSquelchState(text, 0) ||
                 mediator.FrequencyNodeMediator::GetAttenuation(text, 0));
    mediator.FrequencyNodeMediator::SetFrequency(7e6);
    mediator.SetBandwidth(3000);
    mediator.SetComment(text);
    mediator.SetDemodulation(text);
    mediator.SetType('a');
    mediator.CellText(FreqList::ColumnFrequency, text);
    mediator.ToString();
    if constexpr (std::is_base_of_v<HalvoITNodeMediator, TypeParam>) {
        QString line = QStringLiteral("1\t2\t3\tLOCKED\t5\t6\t7");
        mediator.FromString(line);
    }
    FreqStoreXml::FrequencyStoreList list;
    mediator.AddToXml(list);
    EXPECT_EQ(list.GetFrequencyStoreEntry().size(), 1);
    value->SetValue(5);
    this->m_controller->ForceUpdateNow();
    Tree::Instance()->GetNode(QStringLiteral("/Lists"))->DeleteValue(QStringLiteral("Value"));
    EXPECT_EQ(mediator.GetObservable(), nullptr);
    EXPECT_FALSE(mediator.GetFrequency(number, 0));
}

TEST_F(MemoryMediatorTest, RangesTellTheirNumberAndTheirFurtherFrequencies) {
    Start(MediatorType::MemoryHF);
    Node* node = AddChannel(7055000, "net");
    auto* mediator = Mediator<MemoryMediatorHF>(0);
    bool inRange = true;
    long number = 0;
    long count = 7;
    double hertz = 0;
    EXPECT_TRUE(mediator->GetInRange(inRange));
    EXPECT_FALSE(inRange);
    EXPECT_TRUE(mediator->GetRangeNumber(number, count));
    EXPECT_EQ(number, -1);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(mediator->GetTipString(0), Q("net\n7055.000 kHz\nNONE"));

    auto& frequencies = Own<ValueList<double>>(node, "rangefrequencies");
    for (const double further : {7060000.5, 145.5e6, 7065000.0})
        frequencies.PushBack(further);
    Own<Value<bool>>(node, "range").SetValue(true);
    Own<ValueNumeric<int>>(node, "rangecounter").SetValue(12);
    EXPECT_TRUE(mediator->GetInRange(inRange));
    EXPECT_TRUE(inRange);
    EXPECT_TRUE(mediator->GetRangeNumber(number, count));
    EXPECT_EQ(number, 12);
    EXPECT_EQ(count, 3);
    EXPECT_TRUE(mediator->GetFrequencyInRange(1, hertz));
    EXPECT_EQ(hertz, 145.5e6);
    for (const long outside : {-1L, 3L, 1L << 40}) {
        EXPECT_FALSE(mediator->GetFrequencyInRange(outside, hertz)) << outside;
        EXPECT_EQ(hertz, 145.5e6);
    }
    EXPECT_TRUE(mediator->GetTipString(0).endsWith(
        Q("Range of 4 frequencies:\n7055.000 kHz\n7060.001 kHz\n145.500000 MHz\n7065.000 kHz")))
        << mediator->GetTipString(0).toStdString();
    for (int i = 0; i < 100000; ++i)
        frequencies.PushBack(i);
    EXPECT_LT(mediator->GetTipString(0).size(), 400);

    node->DeleteValue(Q("rangefrequencies"));
    number = count = 5;
    EXPECT_FALSE(mediator->GetRangeNumber(number, count)) << "the counter alone is not enough";
    EXPECT_EQ(number, 5);
    EXPECT_EQ(count, 5);
    EXPECT_FALSE(mediator->GetFrequencyInRange(0, hertz));
    Own<ValueList<double>>(node, "rangefrequencies").PushBack(1);
    mediator->SetComment(Q("values that come back are found at the next change"));
    EXPECT_TRUE(mediator->GetFrequencyInRange(0, hertz));
    EXPECT_EQ(hertz, 1);
}

TEST_F(MemoryMediatorTest, DemodulationAndBandwidthAreThoseThatTheChannelHas) {
    Start(MediatorType::MemoryVUHF);
    Node* node = AddChannel(145.5e6, "relay");
    auto* mediator = Mediator<MemoryMediatorVUHF>(0);
    QString demodulation;
    mediator->SetDemodSelection(Q("CW"));
    mediator->SetDemodSelection(Q("not offered"));
    EXPECT_TRUE(mediator->GetDemodulationSelection(demodulation));
    EXPECT_EQ(demodulation, Q("CW"));
    EXPECT_EQ(Own<ValueSelection>(node, "demodulation").GetItemCount(), 3);
    double hertz = 0;
    EXPECT_TRUE(mediator->SetBandwidthSelection(15000));
    EXPECT_TRUE(mediator->GetBandwidth(hertz, 0));
    EXPECT_EQ(hertz, 15000);
    EXPECT_EQ(Cell(*mediator, 1), Q("15.000 kHz"));
    EXPECT_EQ(Cell(*mediator, 2), Q("CW"));

    for (const char* key : {"demodulation", "bandwidthsel"})
        node->DeleteValue(Q(key));
    demodulation = Q("untouched");
    EXPECT_FALSE(mediator->GetDemodulationSelection(demodulation));
    EXPECT_EQ(demodulation, Q("untouched"));
    EXPECT_FALSE(mediator->GetBandwidthSelection(hertz, 0));
    EXPECT_FALSE(mediator->SetBandwidthSelection(1));
    Own<Value<QString>>(node, "demodulation").SetValue(Q("FM"));
    mediator->SetComment(Q("changed"));
    mediator->SetDemodSelection(Q("any text"));
    EXPECT_TRUE(mediator->GetDemodulation(demodulation, 0));
    EXPECT_EQ(demodulation, Q("any text"));
}

TEST_F(MemoryMediatorTest, LinesSetOnlyWhatIsThere) {
    Start(MediatorType::MemoryHF);
    Node* node = AddChannel(7055000, "calling");
    auto* mediator = Mediator<MemoryMediatorHF>(0);
    EXPECT_EQ(mediator->ToString(), QString());
    QString line = Q("7060000\t2400\tnet\tUSB\t");
    EXPECT_TRUE(mediator->FromString(line));
    EXPECT_EQ(Cell(*mediator, 0) + Cell(*mediator, 1) + Cell(*mediator, 4) + Cell(*mediator, 2),
              Q("7060.000 kHz2.400 kHznetUSB"));
    const std::pair<int, const char*> refused[] = {{0, "x"},           {0, ""},  {1, "nan"},
                                                   {3, "not offered"}, {4, "1"}, {-1, "1"}};
    for (const auto& [field, content] : refused) {
        QString text = Q(content);
        EXPECT_FALSE(mediator->SetValueFromString(field, text)) << field << content;
    }
    node->DeleteChildren();
    const char* const good[] = {"7055000", "3000", "c", "USB"};
    for (int field = 0; field < 4; ++field) {
        QString text = Q(good[field]);
        EXPECT_FALSE(mediator->SetValueFromString(field, text)) << field;
    }
    EXPECT_FALSE(mediator->FromString(line));
}

TEST_F(MemoryMediatorTest, ExportedChannelsCarryNoReceiverSettings) {
    Start(MediatorType::MemoryHF);
    AddChannel(7055000, "calling");
    AddChannel(5000, "");
    Mediator<MemoryMediatorHF>(0)->SetDemodSelection(Q("USB"));
    FreqStoreXml::FrequencyStoreList list;
    Mediator(0)->AddToXml(list);
    Mediator(1)->AddToXml(list);
    const auto& entries = list.GetFrequencyStoreEntry();
    ASSERT_EQ(entries.size(), 2);
    EXPECT_EQ(entries[0].GetType(), Q("a"));
    EXPECT_EQ(entries[0].GetComment(), Q("calling"));
    const auto& settings = entries[0].GetFFM_Settings();
    EXPECT_EQ(settings.GetFrequency().GetValue(), 7055000);
    EXPECT_EQ(settings.GetIFBandwidth().GetValue(), 3000);
    EXPECT_EQ(FreqStoreXml::FFM_Settings::AnalogDemodToName(settings.GetAnalogDemod()), Q("USB"));
    EXPECT_FALSE(settings.HasLevel());
    EXPECT_FALSE(settings.GetDetail().AnyData());
    EXPECT_EQ(entries[1].GetComment(), QString());
    EXPECT_EQ(FreqStoreXml::FrequencyStoreList::NameToUsage(Mediator(0)->GetUsage()),
              FreqStoreXml::FrequencyStoreList::MemoryChannels);
}

/// A view that has a column for every setting.
class AllColumns : public FrequencyNodeListView {
public:
    explicit AllColumns(unsigned listId) : FrequencyNodeListView(nullptr, listId) {
        for (unsigned id = 0; id <= 65; ++id)
            AddColumn(QString::number(id), _compStandardString, id);
    }
};

TEST_F(MemoryMediatorTest, RowsFollowTheChannelsAndEndWithThem) {
    Start(MediatorType::MemoryHF);
    Node* node = AddChannel(7055000, "calling");
    AddChannel(7060000, "net");
    const int listId = FreqStore::Instance().AddFrequencyListDefinition(
        Q("m"), QPixmap(), nullptr, true, true, m_controller.get(), nullptr, nullptr, 0);
    {
        AllColumns view(static_cast<unsigned>(listId));
        m_controller->ForceUpdateNow();
        ASSERT_EQ(view.RowCount(), 2);
        auto* row = view.firstChild();
        EXPECT_EQ(row->text(57), Q("800"));
        Own<ValueNumeric<int>>(node, "bfofrequency").SetValue(17);
        EXPECT_TRUE(m_controller->IsDirty());
        EXPECT_EQ(row->text(57), Q("17"));
        EXPECT_EQ(row->text(65), QString());

        Traces traces;
        auto* mediator = Mediator<MemoryMediatorHF>(0);
        FrequencyNodeListView stranger(nullptr, 0);
        mediator->UpdateMyViewItems(&stranger);
        EXPECT_EQ(traces.texts, QStringList{Q("No valid View Item for Memory - Field")});
        m_list->DeleteNodes(m_list->Children());
        EXPECT_EQ(m_controller->size(), 0u);
        m_controller->ForceUpdateNow();
    }
    FreqStore::Instance().RemoveFrequencyListDefinition(listId);
}

} // namespace
