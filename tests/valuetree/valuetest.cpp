#include "host/valuetree/value.h"

#include "host/valuetree/detection.h"
#include "host/valuetree/itemmap.h"
#include "host/valuetree/tree.h"
#include "host/valuetree/valueselection.h"
#include "tests/support/recorder.h"
#include "tests/support/waiting.h"

#include <QTest>

#include <gtest/gtest.h>
#include <limits>
#include <memory>

namespace {

constexpr auto MinInt64 = std::numeric_limits<qint64>::min();
constexpr auto MaxInt64 = std::numeric_limits<qint64>::max();

struct TextRow {
    const char* given;
    const char* kept; ///< text of the value afterwards; null when the given text is refused
};

/// Sets each text on a value that holds `start` and compares text and notifications.
template <typename V>
void CheckTexts(const char* start, std::initializer_list<TextRow> rows) {
    for (const TextRow& row : rows) {
        V value;
        value.SetStringValue(QString::fromUtf8(start));
        ASSERT_EQ(value.GetStringValue(), QString::fromUtf8(start));
        Recorder recorder;
        value.AddObserver(&recorder);
        value.SetStringValue(QString::fromUtf8(row.given));
        EXPECT_EQ(value.GetStringValue(), QString::fromUtf8(row.kept ? row.kept : start)) << row.given;
        const bool changed = row.kept && qstrcmp(row.kept, start) != 0;
        EXPECT_EQ(recorder.codes, changed ? std::vector<int>{3} : std::vector<int>{}) << row.given;
    }
}

TEST(Value, TextsSetWhatTheySayAndBadTextsChangeNothing) {
    CheckTexts<Value<QString>>("old", {{"", ""}, {"old", "old"}, {"naïve\t\n", "naïve\t\n"}});
    CheckTexts<Value<bool>>(
        "true", {{"false", "false"}, {"0", "false"}, {"1", "true"}, {"yes", nullptr}, {"", nullptr}});
    CheckTexts<Value<bool>>("false", {{"true", "true"}, {"TRUE", nullptr}, {"2", nullptr}});
    CheckTexts<Value<char>>("109", {{"112", "112"},
                                    {"-128", "-128"},
                                    {"127", "127"},
                                    {"128", nullptr},
                                    {"-129", nullptr},
                                    {"m", nullptr},
                                    {"", nullptr}});
    CheckTexts<ValueNumeric<int>>("7", {{"-2147483648", "-2147483648"},
                                        {"2147483648", nullptr},
                                        {"1.5", nullptr},
                                        {"7x", nullptr},
                                        {"", nullptr},
                                        {" 8 ", "8"}});
    CheckTexts<ValueNumeric<qint64>>("7", {{"9223372036854775807", "9223372036854775807"},
                                           {"-9223372036854775808", "-9223372036854775808"},
                                           {"9223372036854775808", nullptr}});
    CheckTexts<ValueNumeric<double>>("7055000", {{"0.1", "0.1"},
                                                 {"-0.5", "-0.5"},
                                                 {"1e3", "1000"},
                                                 {"7.0550000e6", "7055000"},
                                                 {"1,5", nullptr},
                                                 {"nan", nullptr},
                                                 {"inf", nullptr},
                                                 {"1e999", nullptr},
                                                 {"7 kHz", nullptr}});
    CheckTexts<ValueList<double>>("1;2.5", {{"", ""}, {"3", "3"}, {"1;;2", nullptr}, {"1;x", nullptr}});
}

TEST(Value, DoublesReadBackExactlyFromTheirText) {
    for (const double number :
         {0.1, 1.0 / 3, 5e-324, 1.7976931348623157e308, 123456789.123456789, -0.000001}) {
        Value<double> value;
        value.SetValue(number);
        EXPECT_FALSE(value.GetStringValue().contains(QLatin1Char('e')));
        Value<double> back;
        back.SetStringValue(value.GetStringValue());
        EXPECT_EQ(back.GetValue(), number) << value.GetStringValue().toStdString();
    }
}

TEST(Value, TheOriginatorAloneIsNotTold) {
    Value<QString> value;
    Recorder first, writer, last;
    for (Recorder* recorder : {&first, &writer, &last})
        value.AddObserver(recorder);
    value.SetValue(QStringLiteral("a"), &writer);
    value.SetStringValue(QStringLiteral("b"), &writer);
    EXPECT_TRUE(writer.codes.empty());
    EXPECT_EQ(first.codes, (std::vector<int>{3, 3}));
    EXPECT_EQ(last.codes, (std::vector<int>{3, 3}));
    value.SetValue(QStringLiteral("b"), &first);
    EXPECT_EQ(last.codes.size(), 2u) << "an equal content is no change";
    value.SetValue(QStringLiteral("c"));
    EXPECT_EQ(writer.codes, std::vector<int>{3});
}

TEST(Value, LimitsAreKeptForEditorsAndClampNothing) {
    ValueNumeric<double> value;
    Recorder recorder;
    value.AddObserver(&recorder);
    value.SetMinMax(0, 30e6, 1);
    value.SetMinMax(0, 30e6, 1);
    EXPECT_EQ(recorder.codes, std::vector<int>{0});
    value.SetValue(145e6);
    value.SetStringValue(QStringLiteral("-3"));
    EXPECT_EQ(value.GetValue(), -3);
    value.SetMax(1);
    value.SetMin(0.5);
    value.SetStep(0.25);
    EXPECT_EQ(value.GetValue(), -3);
    EXPECT_EQ(value.GetMin(), 0.5);
    EXPECT_EQ(value.GetMax(), 1);
    EXPECT_EQ(value.GetStep(), 0.25);
    EXPECT_EQ(recorder.codes, (std::vector<int>{0, 3, 3, 0, 0, 0}));
}

TEST(Value, WholeNumbersOf64BitsPassWithoutLoss) {
    ValueNumeric<qint64> source;
    source.SetMinMax(MinInt64, MaxInt64, MaxInt64 - 1);
    source.SetValue(MaxInt64 - 2);
    ValueNumeric<qint64> target;
    IValueNumeric* general = numeric_cast(&target);
    ASSERT_NE(general, nullptr);
    general->CopyNumeric(source);
    EXPECT_EQ(target.GetMin(), MinInt64);
    EXPECT_EQ(target.GetMax(), MaxInt64);
    EXPECT_EQ(target.GetStep(), MaxInt64 - 1);
    EXPECT_EQ(target.GetValue(), MaxInt64 - 2);

    ValueNumeric<int> narrow;
    narrow.CopyNumeric(source);
    EXPECT_EQ(narrow.GetMin(), std::numeric_limits<int>::min());
    EXPECT_EQ(narrow.GetValue(), std::numeric_limits<int>::max());
    for (const double beyond : {1e300, -1e300, std::numeric_limits<double>::quiet_NaN()})
        target.SetFromDouble(beyond);
    EXPECT_EQ(target.GetValue(), 0) << "not a number counts as 0";
    target.SetFromDouble(9223372036854775808.0);
    EXPECT_EQ(target.GetValue(), MaxInt64);
}

std::unique_ptr<ValueSelection> MakeSelection() {
    auto selection = std::make_unique<ValueSelection>();
    selection->AddItem(QStringLiteral("AM"), 9000, 11);
    selection->AddItem(QStringLiteral("USB"), 2700, 12);
    selection->AddItem(QStringLiteral("FM"), 15000, 13);
    selection->Select(12L);
    return selection;
}

template <typename V, typename Content>
std::unique_ptr<V> Filled(const Content& content) {
    auto value = std::make_unique<V>();
    value->SetValue(content);
    return value;
}

template <typename V, typename Element>
std::unique_ptr<V> FilledList(const Element& element) {
    auto value = std::make_unique<V>();
    value->PushBack(element);
    return value;
}

/// One value of each type, with content.
std::vector<std::unique_ptr<ValueBase>> OneOfEach() {
    std::vector<std::unique_ptr<ValueBase>> values;
    values.push_back(Filled<Value<QString>>(QStringLiteral("text")));
    values.push_back(Filled<Value<bool>>(true));
    values.push_back(Filled<Value<char>>('m'));
    values.push_back(Filled<Value<int>>(3));
    values.push_back(Filled<Value<qint64>>(MaxInt64));
    values.push_back(Filled<Value<double>>(0.1));
    values.push_back(Filled<ValueNumeric<int>>(4));
    values.push_back(Filled<ValueNumeric<qint64>>(MinInt64));
    values.push_back(Filled<ValueNumeric<double>>(0.5));
    values.push_back(MakeSelection());
    values.push_back(FilledList<ValueList<double>>(2.5));
    DetectionConventional detection;
    detection.SetFrequency(7e6);
    values.push_back(FilledList<ValueList<DetectionConventional>>(detection));
    ExtendedDetectionConventional extended;
    extended.Result().azimuth = "1000";
    values.push_back(FilledList<ValueList<ExtendedDetectionConventional>>(extended));
    auto map = std::make_unique<FrequencyItemMap>();
    map->Add({7e6, 3e3, 1, QStringLiteral("a"), 'p', QString()});
    values.push_back(std::move(map));
    return values;
}

TEST(Value, ClonesAreEqualAndOnlyLikeTypesCompareAndAssign) {
    const auto values = OneOfEach();
    for (const auto& value : values) {
        const std::string type = value->GetTypeName().toStdString();
        const std::unique_ptr<ValueBase> clone(value->Clone());
        EXPECT_EQ(clone->GetType(), value->GetType()) << type;
        EXPECT_TRUE(value->Compare(clone.get())) << type;
        EXPECT_FALSE(value->Compare(nullptr)) << type;
        Recorder recorder;
        clone->AddObserver(&recorder);
        clone->Assign(*value);
        EXPECT_TRUE(recorder.codes.empty()) << "equal content of a " << type;
        for (const auto& other : values) {
            EXPECT_EQ(value->Compare(other.get()), other == value) << type;
            if (other != value)
                clone->Assign(*other);
        }
        EXPECT_TRUE(recorder.codes.empty()) << "foreign types assigned to a " << type;
        EXPECT_TRUE(value->Compare(clone.get())) << type;
    }
    // An empty value of each type takes the content, and says so once.
    const std::unique_ptr<ValueBase> fresh[] = {
        std::make_unique<Value<QString>>(), std::make_unique<ValueSelection>(),
        std::make_unique<ValueList<double>>(), std::make_unique<FrequencyItemMap>()};
    for (const auto& value : values) {
        for (const auto& target : fresh) {
            if (target->GetType() != value->GetType())
                continue;
            Recorder recorder;
            target->AddObserver(&recorder);
            EXPECT_FALSE(target->Compare(value.get()));
            target->Assign(*value);
            EXPECT_TRUE(target->Compare(value.get()));
            EXPECT_EQ(recorder.codes, std::vector<int>{3});
        }
    }
}

TEST(Value, CloneAndAssignCarryLimitsAndItems) {
    ValueNumeric<int> number;
    number.SetMinMax(1, 11, 2);
    number.SetValue(5);
    const std::unique_ptr<ValueNumeric<int>> clone(number.Clone());
    EXPECT_EQ(clone->GetMax(), 11);
    EXPECT_EQ(clone->GetStep(), 2);
    const std::unique_ptr<ValueSelection> selection = MakeSelection();
    ValueSelection target;
    target.AddItem(QStringLiteral("old"), 0, 1);
    target.Assign(*selection);
    EXPECT_EQ(target.GetItemCount(), 3);
    EXPECT_EQ(target.GetCurrentKey(), 12);
    selection->AddItem(QStringLiteral("CW"), 500, 14);
    EXPECT_EQ(target.GetItemCount(), 3) << "items are copies";
}

TEST(Transaction, NestedChangesAreOneNotificationWithTheCodeGiven) {
    ValueNumeric<double> value;
    Recorder recorder, writer;
    value.AddObserver(&recorder);
    value.AddObserver(&writer);
    value.EndTransaction(TChangeCode::ValueChanged);
    EXPECT_TRUE(recorder.codes.empty()) << "an end without a start is nothing";

    value.StartTransaction();
    value.StartTransaction(&writer);
    EXPECT_TRUE(value.IsTransactionActive());
    value.SetValue(1);
    value.SetMinMax(0, 9, 1);
    value.EndTransaction(TChangeCode::ValueChanged, &writer);
    EXPECT_TRUE(value.IsTransactionActive());
    value.SetValue(2);
    EXPECT_TRUE(recorder.codes.empty());
    value.EndTransaction(TChangeCode::LookAgain, &writer);
    EXPECT_FALSE(value.IsTransactionActive());
    EXPECT_EQ(recorder.codes, std::vector<int>{0});
    EXPECT_TRUE(writer.codes.empty());
    value.SetValue(3);
    EXPECT_EQ(recorder.codes, (std::vector<int>{0, 3}));
}

TEST(Transaction, AScopeSendsItsCodesInOrderWhenItEnds) {
    ValueNumeric<int> value;
    Recorder recorder;
    value.AddObserver(&recorder);
    {
        const auto scope =
            value.CreateTransaction({TChangeCode::ValueChanged, TChangeCode::Announcement}, nullptr);
        value.SetValue(1);
        value.SetValue(2);
        EXPECT_TRUE(recorder.codes.empty());
    }
    EXPECT_EQ(recorder.codes, (std::vector<int>{3, 19}));
    EXPECT_FALSE(value.IsTransactionActive());
}

TEST(Transaction, TheValueMayEndInsideAndRemovalIsToldAtOnce) {
    auto value = std::make_unique<ValueNumeric<int>>();
    Recorder recorder;
    value->AddObserver(&recorder);
    {
        const auto scope =
            value->CreateTransaction({TChangeCode::ValueChanged, TChangeCode::LookAgain}, nullptr);
        value->SetValue(1);
        value.reset();
    }
    EXPECT_EQ(recorder.codes, std::vector<int>{2});

    value = std::make_unique<ValueNumeric<int>>();
    Recorder ending;
    value->AddObserver(&ending);
    ending.onUpdate = [&](Observable*, TChangeCode code) {
        if (code == TChangeCode::ValueChanged)
            value.reset();
    };
    auto* raw = value.get();
    {
        const auto scope =
            raw->CreateTransaction({TChangeCode::ValueChanged, TChangeCode::LookAgain}, nullptr);
        raw->SetValue(1);
    }
    EXPECT_EQ(ending.codes, (std::vector<int>{3, 2}));
}

TEST(DelayedUpdates, ChangesWithinTheDelayAreOneNotification) {
    ValueNumeric<int> value;
    Recorder recorder;
    value.AddObserver(&recorder);
    EXPECT_EQ(value.SetUpdateTimerTime(20), 0);
    EXPECT_EQ(value.SetUpdateTimerTime(10), 20);
    for (int i = 1; i <= 50; ++i)
        value.SetValue(i);
    EXPECT_TRUE(recorder.codes.empty());
    EXPECT_TRUE(Until([&] { return !recorder.codes.empty(); }));
    EXPECT_EQ(recorder.codes, std::vector<int>{3});
    value.HasChanged(TChangeCode::Announcement);
    EXPECT_EQ(recorder.codes, (std::vector<int>{3, 19})) << "announcements do not wait";
    value.SetUpdateTimerTime(0);
    value.SetValue(1);
    EXPECT_EQ(recorder.codes, (std::vector<int>{3, 19, 3}));
}

TEST(DelayedUpdates, NobodyMissesTheChangesOfSeveralWriters) {
    ValueNumeric<int> value;
    Recorder a, b;
    value.AddObserver(&a);
    value.AddObserver(&b);
    value.SetUpdateTimerTime(1);
    value.SetValue(1, &a);
    EXPECT_TRUE(Until([&] { return !b.codes.empty(); }));
    EXPECT_TRUE(a.codes.empty());
    value.SetValue(2, &a);
    value.SetValue(3, &b);
    EXPECT_TRUE(Until([&] { return b.codes.size() == 2; }));
    EXPECT_EQ(a.codes, std::vector<int>{3});
}

TEST(DelayedUpdates, TheNewestOverrideHoldsUntilItIsKilled) {
    ValueNumeric<int> value;
    Recorder recorder;
    value.AddObserver(&recorder);
    const int slow = value.OverrideTimer(1000000);
    const int immediate = value.OverrideTimer(0);
    EXPECT_NE(slow, immediate);
    value.SetValue(1);
    EXPECT_EQ(recorder.codes.size(), 1u);
    value.KillOverrideTimer(slow);
    value.KillOverrideTimer(4711);
    value.SetValue(2);
    EXPECT_EQ(recorder.codes.size(), 2u);
    value.SetUpdateTimerTime(1);
    value.KillOverrideTimer(immediate);
    value.SetValue(3);
    EXPECT_EQ(recorder.codes.size(), 2u);
    EXPECT_TRUE(Until([&] { return recorder.codes.size() == 3; }));
}

TEST(DelayedUpdates, ADelayThatEndsInATransactionWaitsForItsEnd) {
    ValueNumeric<int> value;
    ValueNumeric<int> clock;
    Recorder recorder, tick;
    value.AddObserver(&recorder);
    clock.AddObserver(&tick);
    value.SetUpdateTimerTime(1);
    value.SetValue(1);
    value.StartTransaction();
    clock.SetUpdateTimerTime(20);
    clock.SetValue(1);
    ASSERT_TRUE(Until([&] { return !tick.codes.empty(); }));
    EXPECT_TRUE(recorder.codes.empty()) << "told in the middle of a transaction";
    value.SetUpdateTimerTime(0);
    value.EndTransaction(TChangeCode::LookAgain);
    EXPECT_EQ(recorder.codes, std::vector<int>{0});
}

TEST(DelayedUpdates, ValueAndWriterMayEndBeforeTheDelayDoes) {
    auto value = std::make_unique<ValueNumeric<int>>();
    ValueNumeric<int> other;
    Recorder told, last;
    value->AddObserver(&told);
    other.AddObserver(&last);
    value->SetUpdateTimerTime(1);
    value->SetValue(1);
    value.reset();
    other.SetUpdateTimerTime(5);
    {
        Recorder writer;
        other.AddObserver(&writer);
        other.SetValue(1, &writer);
    }
    EXPECT_TRUE(Until([&] { return !last.codes.empty(); }));
    EXPECT_EQ(told.codes, std::vector<int>{2});
}

TEST(Selection, ChoosesByNameKeyAndNumberOnlyWhatIsThere) {
    const auto selection = MakeSelection();
    Recorder recorder;
    selection->AddObserver(&recorder);
    EXPECT_TRUE(selection->Select(QStringLiteral("AM")));
    EXPECT_TRUE(selection->Select(L"AM"));
    EXPECT_TRUE(selection->Select(11L));
    EXPECT_EQ(recorder.codes, std::vector<int>{3}) << "choosing the chosen one is no change";
    EXPECT_FALSE(selection->Select(QStringLiteral("am")));
    EXPECT_FALSE(selection->Select(0L));
    EXPECT_FALSE(selection->Select(9001.0, nullptr, false));
    EXPECT_EQ(selection->GetStringValue(), QStringLiteral("AM"));
    selection->SetStringValue(QStringLiteral("no such"));
    EXPECT_EQ(recorder.codes.size(), 1u);

    EXPECT_TRUE(selection->Select(13000.0, &recorder, true));
    EXPECT_EQ(recorder.codes.size(), 1u) << "the originator is skipped";
    EXPECT_EQ(selection->GetCurrentKey(), 13);
    EXPECT_EQ(selection->GetCurrentIndex(), 2);
    EXPECT_EQ(selection->GetCurrentValue(), 15000);
    EXPECT_EQ(selection->GetItemIndex(12), 1);
    EXPECT_EQ(selection->GetItemIndex(99), -1);
    EXPECT_EQ(selection->GetItem(QStringLiteral("none")), nullptr);
    EXPECT_EQ(selection->GetItem(2700.0)->GetName(), QStringLiteral("USB"));
    EXPECT_EQ(selection->GetItemNameForKey(11), QStringLiteral("AM"));
    EXPECT_EQ(selection->GetKeyForItemName(QStringLiteral("USB")), 12);
}

TEST(Selection, DeletingRowsKeepsTheChoiceWhereItCan) {
    const auto selection = MakeSelection();
    Recorder recorder;
    selection->AddObserver(&recorder);
    selection->DeleteItem(selection->GetItem(11L));
    EXPECT_EQ(selection->GetStringValue(), QStringLiteral("USB"));
    EXPECT_EQ(selection->GetCurrentIndex(), 0);
    selection->DeleteItem(selection->GetItem(12L));
    EXPECT_EQ(selection->GetStringValue(), QStringLiteral("FM"));
    SelectionItem foreign;
    selection->DeleteItem(&foreign);
    selection->DeleteItem(nullptr);
    EXPECT_EQ(recorder.codes, (std::vector<int>{0, 3}));
    selection->DeleteItems();
    EXPECT_EQ(selection->GetCurrentItem(), nullptr);
    EXPECT_EQ(selection->GetCurrentKey(), -1);
    EXPECT_EQ(selection->GetCurrentIndex(), -1);
    EXPECT_EQ(selection->GetStringValue(), QString());
    EXPECT_FALSE(selection->Select(1.0, nullptr, true));
    selection->AddItems({QStringLiteral("a"), QStringLiteral("b")});
    EXPECT_EQ(selection->GetStringValue(), QStringLiteral("a"));
    EXPECT_EQ(selection->GetKeyForItemName(QStringLiteral("b")), 1);
    selection->AddItemsFrom(*selection);
    EXPECT_EQ(selection->GetItemCount(), 4);
}

TEST(ItemMap, KeysAreNeverGivenTwice) {
    FrequencyItemMap map(QStringLiteral("map"), TValueState::Valid);
    EXPECT_EQ(map.GetName(), QStringLiteral("map"));
    const FrequencyMapItem item(7e6, 3e3, 1, QStringLiteral("a\tb\u0001"), 'p', QStringLiteral("x"));
    const unsigned first = map.Add(item);
    const unsigned second = map.Add(item);
    EXPECT_NE(first, second);
    map.EraseAt(second);
    const unsigned third = map.Add(item);
    EXPECT_NE(third, second);
    EXPECT_EQ(map.SetAt(100, item), 100u);
    const unsigned behind = map.Add(item);
    EXPECT_NE(behind, 100u);
    map.Clear();
    EXPECT_NE(map.Add(item), behind);
    EXPECT_EQ(map.GetStringValue().count(QLatin1Char('\t')), 6) << "a TAB inside a text is a blank";
    EXPECT_TRUE(map.GetStringValue().contains(QStringLiteral("\ta b\ufffd\t")));

    map.SetAt(0, item);
    map.SetAt(std::numeric_limits<unsigned>::max(), item);
    const size_t before = map.GetItems().size();
    map.Add(item);
    map.Add(item);
    EXPECT_EQ(map.GetItems().size(), before + 2);
}

TEST(ItemMap, OnlyRealChangesAreTold) {
    FrequencyItemMap map;
    Recorder recorder;
    map.AddObserver(&recorder);
    const FrequencyMapItem item(7e6, 3e3, 1, QStringLiteral("a"), 'p', QString());
    const FrequencyMapItem other(8e6, 3e3, 1, QStringLiteral("a"), 'p', QString());
    map.SetAt(5, item);
    map.SetAt(5, item);
    map.EraseAt(6);
    EXPECT_EQ(recorder.codes.size(), 1u);
    map.SetAt(5, other);
    EXPECT_EQ(map.GetItems().at(5), other);
    map.EraseAt(5, &recorder);
    map.Clear();
    EXPECT_EQ(recorder.codes.size(), 2u);
    EXPECT_TRUE(map.GetItems().empty());
}

TEST(RecordList, RecordsAreKeptInOrderAndHaveNoTextToReadBack) {
    ValueList<DetectionConventional> list;
    Recorder recorder;
    list.AddObserver(&recorder);
    for (unsigned id = 1; id <= 3; ++id) {
        DetectionConventional detection;
        detection.SetID(id);
        list.PushBack(detection);
    }
    EXPECT_EQ(list.Size(), 3u);
    EXPECT_EQ(list.At(2).GetID(), 3u);
    list.SetStringValue(QStringLiteral("7"));
    EXPECT_EQ(list.Size(), 3u);
    list.GetList().front().SetLevel(40);
    list.HasChanged(TChangeCode::ValueChanged, nullptr);
    EXPECT_EQ(list.At(0).GetLevel(), 40);
    list.Clear();
    list.Clear();
    EXPECT_EQ(recorder.codes, (std::vector<int>{3, 3, 3, 3, 3}));
}

} // namespace
