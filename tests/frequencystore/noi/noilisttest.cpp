#include "controls/frequencystore/noi/noifrequency.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencynodemediator.h"
#include "host/freqlist/pixstatevector.h"
#include "tests/frequencystore/noi/noifixture.h"
#include "tests/support/dialogs.h"
#include "tests/support/recorder.h"

#include <QSignalSpy>

namespace {

class NoiListTest : public NoiFixture {};

TEST_F(NoiListTest, EntriesTakeWhatTheReceiverOffers) {
    const auto limits = [](const ValueNumeric<double>* value) {
        return std::array{value->GetMin(), value->GetMax(), value->GetStep(), value->GetValue()};
    };
    auto* node = new Node(m_list, Q("Entry"));
    m_list->AddItemUnique(node);
    NOIFrequency found(node, false, nullptr);
    EXPECT_EQ(found.GetBandwidthValue(), nullptr);
    EXPECT_EQ(node->FirstValue(), nullptr) << "looking for values makes none";
    found.SetBandwidth(5.0);
    NOIFrequency fresh(node, true, nullptr);
    ASSERT_NE(fresh.GetBandwidthValue(), nullptr);
    EXPECT_EQ(fresh.GetBandwidthValue()->GetPathName(), Q("/Lists/NOI/Entry/bandwidth"));
    EXPECT_EQ(limits(fresh.GetBandwidthValue()), (std::array{0.0, 3e9, 1.0, 0.0}));
    const NOIFrequency copy(fresh);
    EXPECT_EQ(copy.GetBandwidthValue(), fresh.GetBandwidthValue());
    EXPECT_EQ(NOIFrequency(node, false, nullptr).GetBandwidthValue(), fresh.GetBandwidthValue());
    node->DeleteValue(Q("bandwidth"));
    EXPECT_EQ(copy.GetBandwidthValue(), nullptr) << "the value has ended";

    NOIFrequencyHandler& handler = Start();
    auto* frequency = GetOrCreateValue<ValueNumeric<double>>(Q("/Lists/frequency"));
    auto* number = GetOrCreateValue<ValueNumeric<double>>(Q("/Lists/bandwidth"));
    auto* selection = GetOrCreateValue<ValueSelection>(Q("/Lists/bandwidthsel"));
    frequency->SetMinMax(9e3, 3e7, 10);
    frequency->SetValue(7e6);
    number->SetMinMax(100, 16000, 100);
    number->SetValue(2400);
    selection->AddItem(Q("2.7 kHz"), 2700, 1);
    handler.SetFrequencyValue_Path(Q("/Lists/frequency"));
    handler.SetBandwidthValue_Path(Q("/Lists/bandwidth"));
    EXPECT_TRUE(handler.InsertNewValue(-1, 0, QString()));
    const auto own = [&](const char* key) {
        return m_list->Children().back()->FindOwn<ValueNumeric<double>>(Names::Intern(Q(key)));
    };
    EXPECT_EQ(limits(own("bandwidth")), (std::array{100.0, 16000.0, 100.0, 2400.0}));
    EXPECT_EQ(limits(own("frequency")), (std::array{9e3, 3e7, 10.0, 7e6}));
    EXPECT_EQ(Entries().last(), Q("7000000|2400|7000000"));
    EXPECT_EQ(Bands(), Q("0,0;6998800,7001200;"));
    handler.SetBandwidthValue_Path(Q("/Lists/bandwidthsel"));
    EXPECT_TRUE(handler.InsertNewValue(5000.4, 1, Q("c")));
    EXPECT_EQ(limits(own("bandwidth")), (std::array{0.0, 3e9, 1.0, 1.0}));
    handler.SetBandwidthValue_Path(Q("/Lists/nothing"));
    handler.SetFrequencyValue_Path(Q("/Lists/nothing"));
    EXPECT_TRUE(handler.InsertNewValue(0, 17, Q("not taken")));
    EXPECT_EQ(Entries().last(), Q("0|0|0"));
}

TEST_F(NoiListTest, TheBandListHasTheEdgesInWholeHertz) {
    NOIFrequencyHandler& handler = Start();
    EXPECT_EQ(Bands(), QString());
    const std::pair<double, double> entries[] = {
        {100000000, 10000}, {5000.4, 1},    {10, 100},   {7055000, 2701},         {0.25, 0.5},
        {4.5, 0},           {2.5, 0},       {1e15, 3e9}, {123456789.499999, 0},   {0.3, 1.2},
        {1e-7, 1},          {1e300, 1e299}, {0.5, 0},    {4503599627370497.5, 1},
    };
    QString expected;
    for (const auto& [frequency, bandwidth] : entries) {
        handler.InsertNewValue(frequency, bandwidth, QString());
        expected += QStringLiteral("%1,%2;")
                        .arg(frequency - bandwidth / 2, 0, 'f', 0)
                        .arg(frequency + bandwidth / 2, 0, 'f', 0);
        EXPECT_EQ(Bands(), expected);
    }
    EXPECT_TRUE(Bands().startsWith(Q("99995000,100005000;5000,5001;-40,60;")));
    // What lacks its values counts as a band at 0.
    m_list->DeleteChildren();
    m_list->AddItemUnique(new Node(m_list, Q("Entry")));
    handler.UpdateNOIList();
    EXPECT_EQ(Bands(), Q("0,0;"));
    m_list->DeleteChildren();
    handler.UpdateNOIList();
    EXPECT_EQ(Bands(), QString());
}

TEST_F(NoiListTest, TheBandListFollowsOnceAndItsValueMayEnd) {
    NOIFrequencyHandler& handler = Start();
    Recorder watcher;
    m_definition->AddObserver(&watcher);
    QSignalSpy loaded(&handler, &NOIFrequencyHandler::signalNewFileLoaded);
    QByteArray lines;
    for (int i = 1; i <= 100; ++i)
        lines += QByteArray::number(i * 1000) + "\tc\t10\n";
    EXPECT_TRUE(handler.ParseNOIFile(Write(Q("many.noi"), lines)));
    EXPECT_EQ(watcher.codes, std::vector<int>{3});
    EXPECT_EQ(Bands().count(QLatin1Char(';')), 100);
    EXPECT_EQ(loaded.size(), 1);
    const QString report = Controller().GetFreqStoreReport();
    Controller().SetReportXml(report, false);
    EXPECT_EQ(watcher.codes.size(), 2u) << "entries that come together are one change";
    EXPECT_EQ(Bands().count(QLatin1Char(';')), 200);
    EXPECT_TRUE(handler.InsertNewValue(1, 0, QString()));
    EXPECT_EQ(watcher.codes.size(), 3u);
    Controller().ForceUpdateNow();
    handler.UpdateNOIList();
    EXPECT_EQ(watcher.codes.size(), 3u);

    // A path without a value, another value, and a value that ends.
    handler.SetNOIDefinition_ValuePath(Q("/Lists/none"));
    handler.InsertNewValue(2, 0, QString());
    EXPECT_EQ(watcher.codes.size(), 3u);
    auto* other = GetOrCreateValue<Value<QString>>(Q("/Lists/other"));
    handler.SetNOIDefinition_ValuePath(Q("/Lists/other"));
    EXPECT_EQ(other->GetValue().count(QLatin1Char(';')), 202);
    EXPECT_EQ(Bands().count(QLatin1Char(';')), 201) << "the old value is left as it is";
    Tree::Instance()->GetNode(Q("/Lists"))->DeleteValue(Q("other"));
    EXPECT_TRUE(handler.InsertNewValue(3, 0, QString()));
    handler.SetNOIDefinition_ValuePath(Q("/Lists/NoiDefinition"));
    EXPECT_EQ(Bands().count(QLatin1Char(';')), 203);
    // Whoever announces an end that is none is believed.
    handler.Update(m_definition, TChangeCode::ValueChanged);
    handler.Update(m_definition, TChangeCode::Removing);
    handler.InsertNewValue(4, 0, QString());
    EXPECT_EQ(Bands().count(QLatin1Char(';')), 203);
}

TEST_F(NoiListTest, HandlerValueAndListEndInAnyOrder) {
    const QByteArray content = Utf16(Q("7055000.000000\tgood\t10.000000\t\n\n"));
    std::array order{0, 1, 2};
    do {
        m_list = Tree::Instance()->MakeNode(Q("/Lists/NOI"));
        GetOrCreateValue<Value<QString>>(Q("/Lists/NoiDefinition"));
        Write(Q("list.noi"), content);
        Start(Q("list.noi")).AddToFreqStore();
        const std::function<void()> steps[] = {
            [] { Tree::Instance()->GetNode(Q("/Lists"))->DeleteValue(Q("NoiDefinition")); },
            [this] { Tree::Instance()->GetNode(Q("/Lists"))->DeleteNode(m_list); },
            NOIFrequencyHandler::DeleteInstance};
        for (const int step : order)
            steps[step]();
        EXPECT_EQ(Read(Q("list.noi")), content) << "a list that has gone is no empty list";
        EXPECT_EQ(Remembered(), Q("list.noi"));
        Tree::Instance()->GetRoot()->DeleteChildren();
    } while (std::next_permutation(order.begin(), order.end()));
    SetUp();
    Traces traces;
    NOIFrequencyHandler& handler = Start();
    EXPECT_EQ(traces.texts, QStringList{"No NOI file loaded"});
    Tree::Instance()->GetNode(Q("/Lists"))->DeleteNode(m_list);
    EXPECT_FALSE(handler.InsertNewValue(1, 2, QString()));
    EXPECT_EQ(traces.texts.last(), Q("AddValue returned invalid value"));
    EXPECT_TRUE(handler.ParseNOIFile(Write(Q("x.noi"), "12\n")));
    EXPECT_EQ(handler.GetItemsRoot(), nullptr);
    // One that was never given a list neither saves nor forgets.
    NOIFrequencyHandler::DeleteInstance();
    CfgCenter::GetAppCfg(ICfg::StartUp).SetString(Q("NOIFrequencies"), Q("list.noi"));
    EXPECT_EQ(NOIFrequencyHandler::Instance()->FileSave(true), QString());
    NOIFrequencyHandler::DeleteInstance();
    EXPECT_EQ(Remembered(), Q("list.noi"));
}

TEST_F(NoiListTest, WhoHearsOfANewListMayEndIt) {
    const QString lines = Write(Q("list.noi"), "12\tc\t1\n");
    const QString xml = Write(Q("list.xml"), TwoXml);
    const QString profiles = Write(Q("profiles.xml"), Profiles);
    for (const QString& path : {lines, xml, profiles}) {
        NOIFrequencyHandler& handler = Start();
        QObject::connect(&handler, &NOIFrequencyHandler::signalNewFileLoaded,
                         [] { NOIFrequencyHandler::DeleteInstance(); });
        AnswerDialog(path);
        EXPECT_EQ(handler.FileOpen(), path);
    }
}

TEST_F(NoiListTest, TheListRegistersWithTheStore) {
    NOIFrequencyHandler& handler = Start();
    const int id = handler.AddToFreqStore();
    auto* definition = dynamic_cast<FrequencyListDefinition*>(FreqStore::Instance().GetDefinition(id));
    ASSERT_NE(definition, nullptr);
    EXPECT_EQ(definition->GetName(), Q("NOI Frequencies"));
    EXPECT_EQ(definition->GetPixmap().size(), QSize(16, 16));
    EXPECT_TRUE(definition->GetAvailable4WideView() && definition->GetAvailable4SimpleView());
    EXPECT_EQ(FreqStore::Instance().GetFrequencies(static_cast<unsigned>(id)), handler.GetMediatorCtrl());
    EXPECT_EQ(handler.GetMediatorCtrl()->GetFreqStoreType(), 4);
    handler.InsertNewValue(7055000, 3000, Q("c"));
    const std::unique_ptr<PixStateVector> line(definition->CreatePixStateVector());
    struct Map : IHasHMap {
        double MapToPixel(double hertz) const override { return (hertz - 7050000) / 100; }
        double MapToFrequency(double pixel) const override { return 7050000 + 100 * pixel; }
    } map;
    line->SetHMapping(&map, 100);
    line->Refresh();
    EXPECT_EQ(line->GetSymbol(), 2);
    EXPECT_EQ((*line)[50].type, 'a');
    EXPECT_EQ((*line)[50].count, 1u);
    EXPECT_FALSE((*line)[36].IsEmpty());
    EXPECT_EQ(line->ItemText(0), Q("c"));
    FreqStore::Instance().RemoveFrequencyListDefinition(id);
}

} // namespace
