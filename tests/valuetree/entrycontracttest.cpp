// What others rely on of an entry node and its values, however the entry was made.

#include "host/valuetree/tree.h"
#include "host/valuetree/valueptr.h"
#include "host/valuetree/valueselection.h"
#include "tests/support/recorder.h"
#include "tests/support/text.h"

#include <gtest/gtest.h>
#include <limits>
#include <memory>

namespace {

using Number = ValueNumeric<double>;
using Count = ValueNumeric<int>;
using Long = ValueNumeric<qint64>;
using Text = Value<QString>;
using Letter = Value<char>;
using Flag = Value<bool>;
using Choice = ValueSelection;
using List = ValueList<double>;

QStringList AllNames() {
    return QString("frequency comment type priority time mode squelch steps").split(' ');
}

/// Writes its letter and the code into the common trail at each call.
struct Voice : IObserver {
    Voice(std::string& common, char own) : trail(common), letter(own) {}
    void Update(Observable* subject, TChangeCode code) override {
        trail += letter + std::to_string(static_cast<int>(code));
        if (const auto now = then) // which may change meanwhile
            now(subject);
    }
    std::string& trail;
    char letter;
    std::function<void(Observable*)> then;
};

template <typename V>
void AddTo(Node* node, const char* name) {
    ASSERT_TRUE(node->AddValue(Q(name), new V));
}

/// An entry of values of each type, with limits, attached to the list.
Node* MadeOneByOne(Node* list) {
    auto* entry = new Node(list, Q("Entry"));
    list->AddItemUnique(entry);
    AddTo<Number>(entry, "frequency");
    AddTo<Text>(entry, "comment");
    AddTo<Letter>(entry, "type");
    AddTo<Count>(entry, "priority");
    AddTo<Long>(entry, "time");
    AddTo<Choice>(entry, "mode");
    AddTo<Flag>(entry, "squelch");
    AddTo<List>(entry, "steps");
    entry->FindOwn<Number>(Names::Intern(Q("frequency")))->SetMinMax(0, 3e9, 1);
    entry->FindOwn<Count>(Names::Intern(Q("priority")))->SetMinMax(1, 11, 1);
    return entry;
}

Node* MadeFromShape(Node* list) {
    static const auto key = [](const char* name) { return Names::Intern(Q(name)); };
    static const Shape& shape =
        Shape::Make({Shape::Number<double>(key("frequency"), 0, 3e9, 1), Shape::Text(key("comment")),
                     Shape::Letter(key("type")), Shape::Number<int>(key("priority"), 1, 11, 1),
                     Shape::Number<qint64>(key("time"), 0, 0, 0), Shape::Selection(key("mode")),
                     Shape::Flag(key("squelch")), Shape::Numbers(key("steps"))});
    Node* entry = Node::NewEntry(list, key("Entry"), shape);
    list->AddItemUnique(entry);
    EXPECT_TRUE(entry->FillFromShape());
    return entry;
}

using Maker = Node* (*)(Node*);

class EntryContract : public testing::TestWithParam<Maker> {
protected:
    void SetUp() override {
        list = Tree::Instance()->MakeNode(Q("/Contract"));
        entry = Make();
        sibling = Make();
    }
    void TearDown() override { Tree::Instance()->GetRoot()->DeleteChildren(); }

    Node* Make() const { return GetParam()(list); }
    template <typename V>
    static V* Of(Node* node, const char* name) {
        return node->FindOwn<V>(Names::Intern(Q(name)));
    }
    /// What the trail has got since it was last asked.
    std::string Told() { return std::exchange(trail, {}); }
    static QStringList NamesOf(const Node* node) {
        QStringList names;
        for (const ValueBase* value = node->FirstValue(); value; value = Node::NextValue(value))
            names << value->GetName();
        return names;
    }

    Node* list = nullptr;
    Node* entry = nullptr;
    Node* sibling = nullptr;
    std::string trail;
    Voice a{trail, 'a'}, b{trail, 'b'}, c{trail, 'c'}, m{trail, 'm'};
};

TEST_P(EntryContract, ValuesAreFoundByNameAndKnowTheirPlace) {
    auto* frequency = Of<Number>(sibling, "frequency");
    ASSERT_NE(frequency, nullptr);
    EXPECT_EQ(frequency->GetParentNode(), sibling);
    EXPECT_EQ(frequency->GetDeleteObserver(), static_cast<ITreeItem*>(sibling));
    EXPECT_EQ(frequency->GetPathName(), Q("/Contract/Entry#2/frequency"));
    EXPECT_EQ(Tree::Instance()->GetValue(Q("/Contract/Entry#2/frequency")), frequency);
    EXPECT_EQ(Of<Text>(sibling, "frequency"), nullptr) << "another type";
    EXPECT_EQ(NamesOf(entry), AllNames());
    EXPECT_EQ(entry->GetValueDescriptor()->values[2].type, ValueType::Char);

    auto* taken = Of<Text>(entry, "comment");
    EXPECT_FALSE(entry->AddValue(Q("comment"), frequency)) << "it hangs elsewhere";
    taken->SetName(Q("type"));
    EXPECT_EQ(taken->GetName(), Q("comment")) << "a name that is taken is refused";
    taken->AddObserver(&a);
    taken->SetName(Q("remark"));
    EXPECT_EQ(Told(), "a0");
    EXPECT_EQ(taken->GetPathName(), Q("/Contract/Entry/remark"));
    EXPECT_EQ(Of<Text>(entry, "remark"), taken);
    EXPECT_EQ(Of<Text>(entry, "comment"), nullptr);
    EXPECT_NE(Of<Text>(sibling, "comment"), nullptr) << "only the one is renamed";
    auto* second = new Text;
    EXPECT_TRUE(entry->AddValue(Q("comment"), second));
    EXPECT_EQ(Of<Text>(entry, "comment"), second);
    EXPECT_EQ(NamesOf(entry),
              QString("frequency remark type priority time mode squelch steps comment").split(' '));
    auto* third = new Count;
    third->SetName(Q("comment"));
    entry->AddItemUnique(third);
    EXPECT_EQ(third->GetPathName(), Q("/Contract/Entry/comment#2"));
}

TEST_P(EntryContract, ObserversAreToldInOrderWhoeverCameFirstAtTheNode) {
    auto* value = Of<Number>(entry, "frequency");
    value->AddObserver(&a);
    entry->AddObserver(&m); // as a mediator does: first the node, then its values
    for (const char* name : {"frequency", "comment", "priority"})
        EXPECT_TRUE(entry->FindOwnValue(Names::Intern(Q(name)))->AddObserver(&m));
    EXPECT_FALSE(value->AddObserver(&m));
    EXPECT_FALSE(Of<Text>(entry, "comment")->AddObserver(&m));
    value->AddObserver(&b);
    value->SetValue(1);
    EXPECT_EQ(Told(), "a3m3b3");
    value->SetValue(2, &m);
    EXPECT_EQ(Told(), "a3b3");
    value->MakeFirstObserver(&m);
    value->SetValue(3, &b);
    EXPECT_EQ(Told(), "m3a3");

    auto* comment = Of<Text>(entry, "comment");
    comment->SetValue(Q("x"), &m);
    EXPECT_EQ(Told(), "");
    comment->AddObserver(&a);
    comment->SetValue(Q("y"));
    EXPECT_EQ(Told(), "m3a3");
    comment->DeleteObserver(&m);
    comment->DeleteObserver(&m);
    comment->SetValue(Q("z"));
    EXPECT_EQ(Told(), "a3");
    comment->AddObserver(&m);
    comment->SetValue(Q("w"));
    EXPECT_EQ(Told(), "a3m3");
    Of<Count>(sibling, "priority")->SetValue(7);
    Of<Letter>(entry, "type")->SetValue('p');
    EXPECT_EQ(Told(), "");
    auto* priority = Of<Count>(entry, "priority");
    priority->SetValue(4);
    EXPECT_EQ(Told(), "m3");
    priority->MakeFirstObserver(&c);
    priority->SetValue(5);
    EXPECT_EQ(Told(), "c3m3");
    priority->DeleteObservers();
    EXPECT_FALSE(priority->HasObservers());
    priority->SetValue(6);
    EXPECT_EQ(Told(), "");
    entry->Commit();
    EXPECT_EQ(Told(), "m0");
}

TEST_P(EntryContract, NobodyInheritsWhatAnotherObserved) {
    auto* value = Of<Number>(entry, "frequency");
    {
        Voice gone(trail, 'g');
        entry->AddObserver(&gone);
        value->AddObserver(&gone);
        entry->AddObserver(&a);
    }
    entry->AddObserver(&b);
    value->SetValue(1);
    EXPECT_EQ(Told(), "");
    entry->Commit();
    EXPECT_EQ(Told(), "a0b0");
    EXPECT_TRUE(value->AddObserver(&b));
    value->SetValue(2);
    EXPECT_EQ(Told(), "b3");

    Node* other = Make(); // the first leaves the node and stays with the value
    auto* text = Of<Text>(other, "comment");
    other->AddObserver(&m);
    text->AddObserver(&m);
    other->DeleteObserver(&m);
    other->AddObserver(&c);
    other->Commit();
    text->SetValue(Q("x"));
    EXPECT_EQ(Told(), "c0m3");
    EXPECT_TRUE(text->AddObserver(&c));
    text->SetValue(Q("y"));
    EXPECT_EQ(Told(), "m3c3");
    other->DeleteObservers();
    other->AddObserver(&b);
    text->SetValue(Q("z"));
    other->Commit();
    EXPECT_EQ(Told(), "m3c3b0");
}

TEST_P(EntryContract, ReactionsMayChangeWhoObserves) {
    auto* value = Of<Text>(entry, "comment");
    entry->AddObserver(&m);
    value->AddObserver(&m);
    m.then = [&](Observable* subject) {
        subject->AddObserver(&a);
        subject->DeleteObserver(&m);
    };
    value->SetValue(Q("1"));
    EXPECT_EQ(Told(), "m3") << "who comes meanwhile is told next time";
    value->SetValue(Q("2"));
    EXPECT_EQ(Told(), "a3");
    m.then = [&](Observable*) { value->SetValue(Q("again")); };
    value->AddObserver(&m);
    value->SetValue(Q("3"), &a);
    EXPECT_EQ(Told(), "m3a3m3") << "the second change is told within the first";
    m.then = nullptr;
}

TEST_P(EntryContract, AValueMayBeDeletedAloneAlsoByThoseItTells) {
    auto* value = Of<Text>(entry, "comment");
    const WeakRef<ValueBase> weak(value);
    const quint32 removed = entry->RemovedValues();
    value->SetValue(Q("whole to the end"));
    value->AddObserver(&a);
    value->AddObserver(&b);
    a.then = [&](Observable* subject) {
        a.then = [value](Observable*) {
            EXPECT_EQ(value->GetState(), TValueState::Removing);
            EXPECT_EQ(value->GetValue(), Q("last"));
        };
        EXPECT_EQ(subject, static_cast<Observable*>(value));
        delete value;
    };
    value->SetValue(Q("last"));
    EXPECT_EQ(Told(), "a3a2b2");
    EXPECT_FALSE(weak);
    EXPECT_EQ(entry->RemovedValues(), removed + 1);
    QStringList rest = AllNames();
    rest.removeOne("comment");
    EXPECT_EQ(NamesOf(entry), rest);
    EXPECT_EQ(Of<Text>(entry, "comment"), nullptr);
    EXPECT_TRUE(entry->DeleteValue(Q("time")));
    EXPECT_FALSE(entry->DeleteValue(Q("time")));
    entry->AddObserver(&m);
    Of<Count>(entry, "priority")->AddObserver(&m);
    auto* anew = new Text;
    EXPECT_TRUE(entry->AddValue(Q("comment"), anew));
    rest.removeOne("time");
    EXPECT_EQ(NamesOf(entry), rest << "comment");
    anew->AddObserver(&m);
    anew->SetValue(Q("x"));
    Of<Count>(entry, "priority")->SetValue(5);
    EXPECT_EQ(Told(), "m3m3");
    entry->DeleteChildren();
    EXPECT_EQ(Told(), "m2m2m1");
    EXPECT_EQ(entry->FirstValue(), nullptr);
    AddTo<Number>(entry, "frequency");
    EXPECT_EQ(Of<Number>(entry, "frequency")->GetMax(), 0);
}

TEST_P(EntryContract, TheEndOfAnEntryIsToldToNodeThenValuesInOrder) {
    entry->AddObserver(&m);
    for (const ValueBase* value = entry->FirstValue(); value; value = Node::NextValue(value))
        const_cast<ValueBase*>(value)->AddObserver(&m);
    auto* comment = Of<Text>(entry, "comment");
    comment->AddObserver(&b);
    m.then = [&](Observable* subject) {
        if (subject == static_cast<Observable*>(Of<Number>(entry, "frequency")))
            comment->DeleteObserver(&b);
        else
            EXPECT_TRUE(subject == static_cast<Observable*>(entry) ||
                        Of<Number>(entry, "frequency")->GetState() == TValueState::Removing);
    };
    EXPECT_TRUE(list->DeleteNode(entry));
    EXPECT_EQ(Told(), "m18m2m2m2m2m2m2m2m2m2");

    // A value that an observer deletes while its node ends is told once; the rest follows.
    sibling->AddObserver(&a);
    for (const char* name : {"frequency", "type", "time"})
        sibling->FindOwnValue(Names::Intern(Q(name)))->AddObserver(&a);
    a.then = [&](Observable* subject) {
        a.then = nullptr;
        EXPECT_EQ(subject, static_cast<Observable*>(sibling));
        delete Of<Letter>(sibling, "type");
    };
    EXPECT_TRUE(list->DeleteNode(sibling));
    EXPECT_EQ(Told(), "a18a2a2a2a2");
}

TEST_P(EntryContract, WhatIsNotTheNodesToDeleteOutlivesIt) {
    auto* kept = Of<Number>(entry, "frequency");
    auto* text = Of<Text>(entry, "comment");
    kept->SetMinMax(5, 6, 0.5);
    text->SetValue(Q("still here"));
    entry->SetAllValuesAutoDelete(false);
    const std::unique_ptr<ValueBase> owned[] = {std::unique_ptr<ValueBase>(kept),
                                                std::unique_ptr<ValueBase>(text),
                                                std::unique_ptr<ValueBase>(Of<Letter>(entry, "type")),
                                                std::unique_ptr<ValueBase>(Of<Count>(entry, "priority")),
                                                std::unique_ptr<ValueBase>(Of<Long>(entry, "time")),
                                                std::unique_ptr<ValueBase>(Of<Choice>(entry, "mode")),
                                                std::unique_ptr<ValueBase>(Of<Flag>(entry, "squelch")),
                                                std::unique_ptr<ValueBase>(Of<List>(entry, "steps"))};
    static_cast<Choice*>(owned[5].get())->AddItems({Q("AM"), Q("FM")});
    entry->AddObserver(&m);
    kept->AddObserver(&m);
    text->AddObserver(&m);
    text->AddObserver(&b);
    list->DeleteNode(entry);
    EXPECT_EQ(Told(), "m18m2m2m2b2");
    EXPECT_EQ(kept->GetParentNode(), nullptr);
    EXPECT_EQ(kept->GetPathName(), Q("frequency"));
    EXPECT_EQ(kept->GetState(), TValueState::Removing);
    EXPECT_EQ(kept->GetMax(), 6);
    EXPECT_EQ(kept->GetStep(), 0.5);
    EXPECT_EQ(Of<Count>(sibling, "priority")->GetMax(), 11);
    EXPECT_EQ(static_cast<Count*>(owned[3].get())->GetMax(), 11);
    EXPECT_EQ(text->GetValue(), Q("still here"));
    EXPECT_TRUE(static_cast<Choice*>(owned[5].get())->Select(Q("FM")));
    kept->SetValue(1);
    text->SetValue(Q("on"));
    EXPECT_EQ(Told(), "m3m3b3");
    // It may hang somewhere else then.
    EXPECT_TRUE(sibling->AddValue(Q("further"), kept));
    kept->SetMinMax(7, 8, 1);
    EXPECT_EQ(kept->GetPathName(), Q("/Contract/Entry#2/further"));
    EXPECT_EQ(Of<Number>(sibling, "frequency")->GetMin(), 0);
    EXPECT_EQ(kept->GetMin(), 7);
}

TEST_P(EntryContract, LimitsAreThoseOfEachValueAlone) {
    constexpr auto lowest = std::numeric_limits<qint64>::min();
    constexpr auto highest = std::numeric_limits<qint64>::max();
    std::vector<Node*> all;
    for (int i = 0; i < 200; ++i)
        all.push_back(Make());
    auto* watched = Of<Number>(all[7], "frequency");
    watched->AddObserver(&a);
    watched->SetMinMax(1, 2, 3);
    watched->SetMinMax(1, 2, 3);
    EXPECT_EQ(Told(), "a0");
    for (int i = 0; i < 200; i += 2) {
        Of<Number>(all[size_t(i)], "frequency")->SetMinMax(i, i * 2.5, 1);
        Of<Long>(all[size_t(i)], "time")->SetMinMax(lowest + i, highest - i, highest);
        Of<Count>(all[size_t(i)], "priority")->SetMax(i);
    }
    for (int i = 0; i < 200; ++i) {
        const auto* frequency = Of<Number>(all[size_t(i)], "frequency");
        const auto* time = Of<Long>(all[size_t(i)], "time");
        const auto* priority = Of<Count>(all[size_t(i)], "priority");
        const bool changed = i % 2 == 0;
        EXPECT_EQ(frequency->GetMin(), changed ? i : i == 7 ? 1 : 0) << i;
        EXPECT_EQ(frequency->GetMax(), changed ? i * 2.5 : i == 7 ? 2 : 3e9) << i;
        EXPECT_EQ(time->GetMin(), changed ? lowest + i : 0) << i;
        EXPECT_EQ(time->GetMax(), changed ? highest - i : 0) << i;
        EXPECT_EQ(time->GetStep(), changed ? highest : 0) << i;
        EXPECT_EQ(priority->GetMin(), 1) << i;
        EXPECT_EQ(priority->GetMax(), changed ? i : 11) << i;
    }
    const std::unique_ptr<Long> copy(Of<Long>(all[4], "time")->Clone());
    EXPECT_EQ(copy->GetMax(), highest - 4);
    auto* made = static_cast<Long*>(sibling->CreateValue(Q("made"), *copy));
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->GetMin(), lowest + 4);
    EXPECT_EQ(sibling->CreateValue(Q("comment"), *copy), nullptr);
}

TEST_P(EntryContract, TextsStayWhatTheyAreForWhoTookThem) {
    auto* comment = Of<Text>(entry, "comment");
    EXPECT_TRUE(comment->GetValue().isNull());
    comment->SetValue(Q(""));
    EXPECT_TRUE(comment->GetValue().isEmpty());
    std::vector<QString> taken;
    std::vector<Node*> all;
    for (int i = 0; i < 1000; ++i) {
        Node* node = Make();
        all.push_back(node);
        const QString text = i % 3 == 0 ? Q("word") : QStringLiteral("%1 \u20ac").arg(i);
        Of<Text>(node, "comment")->SetValue(text);
        taken.push_back(Of<Text>(node, "comment")->GetValue());
    }
    taken[3] += Q("!");
    EXPECT_EQ(Of<Text>(all[0], "comment")->GetValue(), Q("word"));
    EXPECT_EQ(Of<Text>(all[3], "comment")->GetValue(), Q("word"));
    Of<Text>(all[6], "comment")->SetStringValue(Q("other"));
    EXPECT_EQ(Of<Text>(all[9], "comment")->GetValue(), Q("word"));
    const QString longOne(5000, QLatin1Char('x'));
    Of<Text>(all[1], "comment")->SetValue(longOne);
    EXPECT_EQ(Of<Text>(all[1], "comment")->GetValue(), longOne);
    EXPECT_EQ(Of<Text>(all[2], "comment")->GetValue(), QStringLiteral("2 \u20ac"));
    list->DeleteNodes(all);
    EXPECT_EQ(taken[3], Q("word!"));
    EXPECT_EQ(taken[998], QStringLiteral("998 \u20ac"));
}

TEST_P(EntryContract, TransactionsDelaysAndDeleteObserversWorkAnywhere) {
    struct Item final : Node {
        Item() : Node(nullptr, Q("item")) {}
        void OnDeleted(IDeleteSubject* subject) override { ended = subject; }
        IDeleteSubject* ended = nullptr;
    } item;
    auto* value = Of<Number>(entry, "frequency");
    entry->AddObserver(&m);
    value->AddObserver(&m);
    {
        const ValueTransaction scope =
            value->CreateTransaction({TChangeCode::ValueChanged, TChangeCode::Announcement}, nullptr);
        value->SetValue(1);
        value->SetMinMax(0, 1, 1);
        EXPECT_TRUE(value->IsTransactionActive());
        EXPECT_FALSE(Of<Number>(sibling, "frequency")->IsTransactionActive());
        EXPECT_EQ(Told(), "");
    }
    EXPECT_EQ(Told(), "m3m19");
    EXPECT_EQ(value->SetUpdateTimerTime(5), 0);
    EXPECT_EQ(value->SetUpdateTimerTime(0), 5);
    value->SetDeleteObserver(&item);
    EXPECT_EQ(value->GetDeleteObserver(), static_cast<ITreeItem*>(&item));
    IDeleteSubject* const address = value;
    list->DeleteNode(entry);
    EXPECT_EQ(item.ended, address);
}

TEST_P(EntryContract, FurtherValuesOfAnyTypeMayCome) {
    for (int i = 0; i < 60; ++i)
        EXPECT_TRUE(entry->AddValue(QStringLiteral("v%1").arg(i), new Count));
    auto* selection = new ValueSelection;
    selection->AddItem(Q("one"), 1, 1);
    EXPECT_TRUE(entry->AddValue(Q("selection"), selection));
    EXPECT_EQ(NamesOf(entry).size(), 69);
    EXPECT_EQ(Of<Count>(entry, "v59")->GetPathName(), Q("/Contract/Entry/v59"));
    EXPECT_NE(Of<Long>(entry, "time"), nullptr);
    Of<Text>(entry, "comment")->SetName(Q("v60"));
    EXPECT_NE(Of<Text>(entry, "v60"), nullptr);
    EXPECT_TRUE(entry->DeleteValue(Q("frequency")));
    EXPECT_TRUE(entry->DeleteValue(Q("v0")));
    EXPECT_EQ(NamesOf(entry).mid(0, 4), QString("v60 type priority time").split(' '));
    EXPECT_EQ(Of<Number>(entry, "frequency"), nullptr);
    sibling->SetAutoDeleteAtAddValue(false);
    Count outside;
    EXPECT_TRUE(sibling->AddValue(Q("outside"), &outside));
    list->DeleteNode(sibling);
    EXPECT_EQ(outside.GetName(), Q("outside"));
    EXPECT_EQ(outside.GetParentNode(), nullptr);
}

/// Rows of a selection as "name=number/key ...", the chosen one in brackets.
QString RowsOf(const Choice& choice) {
    QStringList rows;
    for (long i = 0; i < choice.GetItemCount(); ++i) {
        const SelectionItem& item = *choice.ItemAt(i);
        const QString row =
            QStringLiteral("%1=%2/%3").arg(item.GetName()).arg(item.GetValue()).arg(item.GetKey());
        rows << (i == choice.GetCurrentIndex() ? '[' + row + ']' : row);
    }
    return rows.join(' ');
}

TEST_P(EntryContract, SelectionsOfManyEntriesChangeEachAlone) {
    auto* one = Of<Choice>(entry, "mode");
    auto* other = Of<Choice>(sibling, "mode");
    one->AddObserver(&a);
    for (auto* mode : {one, other}) {
        EXPECT_EQ(mode->GetCurrentItem(), nullptr);
        mode->AddItem(Q("AM"), 1.5, 7);
        mode->AddItems({Q("FM"), Q("CW")});
    }
    EXPECT_EQ(RowsOf(*one), Q("[AM=1.5/7] FM=1/1 CW=2/2"));
    EXPECT_TRUE(one->Select(Q("CW")));
    EXPECT_TRUE(one->Select(2L));
    EXPECT_EQ(Told(), "a0a0a3");
    EXPECT_EQ(RowsOf(*other), Q("[AM=1.5/7] FM=1/1 CW=2/2"));

    SelectionItem* const row = one->GetItem(Q("FM")); // which may be changed
    *row = SelectionItem(Q("WFM"), 9, 9);
    one->AddItem(Q("USB"), 3, 3);
    auto* const given = new SelectionItem(Q("LSB"), 4, 4);
    other->AddItem(given);
    EXPECT_EQ(one->GetItemAt(1), row);
    EXPECT_EQ(other->GetItem(4L), given);
    EXPECT_EQ(RowsOf(*one), Q("AM=1.5/7 WFM=9/9 [CW=2/2] USB=3/3"));
    EXPECT_EQ(RowsOf(*other), Q("[AM=1.5/7] FM=1/1 CW=2/2 LSB=4/4"));
    one->DeleteItem(one->GetItemAt(0));
    one->DeleteItem(given); // of another selection
    other->DeleteItem(other->GetItemAt(0));
    EXPECT_EQ(RowsOf(*one), Q("WFM=9/9 [CW=2/2] USB=3/3"));
    EXPECT_EQ(RowsOf(*other), Q("[FM=1/1] CW=2/2 LSB=4/4"));
    one->Assign(*other);
    EXPECT_TRUE(one->Compare(other));
    one->AddItemsFrom(*one);
    EXPECT_EQ(RowsOf(*one), Q("[FM=1/1] CW=2/2 LSB=4/4 FM=1/1 CW=2/2 LSB=4/4"));
    one->DeleteItems();
    EXPECT_EQ(RowsOf(*one), QString());
    one->AddItemsFrom(*other);
    EXPECT_EQ(RowsOf(*one), Q("[FM=1/1] CW=2/2 LSB=4/4"));
    const std::unique_ptr<Choice> copy(one->Clone());
    list->DeleteNodes({entry, sibling});
    EXPECT_EQ(RowsOf(*copy), Q("[FM=1/1] CW=2/2 LSB=4/4"));
}

TEST_P(EntryContract, SelectionsWithRowsOfTheirOwnAreAsMany) {
    std::vector<Node*> all;
    for (int i = 0; i < 6000; ++i) { // more than share rows
        all.push_back(Make());
        auto* mode = Of<Choice>(all.back(), "mode");
        mode->AddItem(QString::number(i / 100), -1, 0);
        mode->AddItem(QString::number(i), i, 1);
        EXPECT_TRUE(mode->Select(static_cast<double>(i), nullptr, false));
    }
    for (int i = 0; i < 6000; ++i)
        EXPECT_EQ(RowsOf(*Of<Choice>(all[size_t(i)], "mode")),
                  QStringLiteral("%1=-1/0 [%2=%2/1]").arg(i / 100).arg(i));
}

INSTANTIATE_TEST_SUITE_P(Made, EntryContract, testing::Values(MadeOneByOne, MadeFromShape),
                         [](const auto& made) { return made.index == 0 ? "OneByOne" : "FromShape"; });

TEST(Shape, EntriesAreFilledOnceAndOnlyWhereNobodyWasQuicker) {
    Node* list = Tree::Instance()->MakeNode(Q("/Contract"));
    const Names::Id key = Names::Intern(Q("priority"));
    const Shape& shape = Shape::Make({Shape::Number<int>(key, 1, 11, 1)});
    Node* entry = Node::NewEntry(list, key, shape);
    EXPECT_EQ(entry->FirstValue(), nullptr);
    EXPECT_TRUE(entry->FillFromShape());
    EXPECT_FALSE(entry->FillFromShape());
    entry->ShapedValue<Count>(0).SetValue(3);
    EXPECT_EQ(entry->FindOwn<Count>(key)->GetValue(), 3);
    entry->DeleteChildren();
    EXPECT_FALSE(entry->FillFromShape()) << "values are made once";
    delete entry;

    Recorder quick;
    quick.onUpdate = [](Observable* subject, TChangeCode code) {
        if (code == TChangeCode::ChildrenChanged)
            AddTo<Text>(static_cast<Node*>(subject)->LastChild(), "own");
    };
    list->AddObserver(&quick);
    Node* touched = Node::NewEntry(list, key, shape);
    list->AddItemUnique(touched);
    EXPECT_FALSE(touched->FillFromShape());
    Node plain(list, Q("plain"));
    EXPECT_FALSE(plain.FillFromShape());
    list->DeleteObserver(&quick);
    list->DeleteChildren();
    EXPECT_EQ(list->LastChild(), nullptr);
    Tree::Instance()->GetRoot()->DeleteChildren();
}

} // namespace
