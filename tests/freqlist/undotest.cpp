// Undo and redo of what the operator does to lists: each list of the store has them without a line of its
// own.

#include "host/freqlist/frequencynodemediator.h"
#include "tests/freqlist/undofixture.h"
#include "tests/support/text.h"
#include "tests/support/waiting.h"

#include <QEventLoop>
#include <QScopeGuard>
#include <QTest>
#include <QTimer>

#include <random>

namespace UndoTests {
namespace {

/// All that can be seen of an entry.
QString dumpOf(const Node& entry) {
    QString text = entry.GetPathName() + QLatin1Char('\n') + QString::fromStdString(entry.GetAsStdString());
    for (ValueBase* value = entry.FirstValue(); value; value = Node::NextValue(value)) {
        if (const IValueNumeric* number = numeric_cast(value))
            text += QStringLiteral(" %1..%2/%3")
                        .arg(number->MinAsDouble())
                        .arg(number->MaxAsDouble())
                        .arg(number->StepAsDouble());
        if (const auto* choice = value_cast<ValueSelection>(value))
            text += QStringLiteral(" of %1").arg(choice->GetItemCount());
    }
    return text;
}

QStringList dumpOf(const List& list) {
    QStringList texts;
    for (const Node* entry : list.node->Children())
        texts << dumpOf(*entry);
    return texts;
}

/// What an action may do to a list of ten entries.
struct Deed {
    const char* name;
    void (*run)(const List& list);
    const char* step; ///< as the menu names it
};

const Deed Deeds[] = {
    {"Add", [](const List& list) { list.Add(5000, "new"); }, "Add 1 entries - L"},
    {"DeleteAmong",
     [](const List& list) {
         list.node->DeleteNodes({list.At(7), list.At(1), list.At(2)});
     },
     "DeleteAmong 3 entries - L"},
    {"DeleteEnds",
     [](const List& list) {
         list.node->DeleteNodes({list.At(0), list.At(9)});
     },
     "DeleteEnds 2 entries - L"},
    {"Clear", [](const List& list) { list.node->DeleteChildren(); }, "Clear 10 entries - L"},
    {"Replace",
     [](const List& list) {
         list.node->DeleteChildren();
         list.Add(7000, "seven");
         list.Add(8000, QString::fromUtf8("ä und ⌁"));
     },
     "Replace 2 entries - L"},
    {"Edit",
     [](const List& list) {
         list.At(3)->GetValue("comment")->SetStringValue("once");
         list.At(4)->GetValue("comment")->SetStringValue("other");
         list.At(3)->GetValue("comment")->SetStringValue("twice");
         list.At(3)->GetValue("frequency")->SetStringValue("77");
     },
     "Edit 2 entries - L"},
    {"EditAndDelete",
     [](const List& list) {
         list.At(3)->GetValue("comment")->SetStringValue("gone");
         list.At(5)->GetValue("comment")->SetStringValue("stays");
         list.node->DeleteNode(list.At(3));
     },
     "EditAndDelete 1 entries - L"},
    {"AddAndDeleteNew",
     [](const List& list) {
         list.Add(1, "first");
         list.Add(2, "second");
         list.node->DeleteNode(list.At(10));
     },
     "AddAndDeleteNew 1 entries - L"},
};

class UndoDeeds : public Undo, public testing::WithParamInterface<std::tuple<Deed, List::Fill>> {};

TEST_P(UndoDeeds, BringsBackEntriesWithPathsPlacesAndLimits) {
    const auto& [deed, add] = GetParam();
    List& list = make("/L", add, 10);
    const QStringList before = dumpOf(list);
    {
        const OperatorAction action(QString::fromLatin1(deed.name));
        deed.run(list);
    }
    const QStringList after = dumpOf(list);
    ASSERT_NE(before, after);
    ASSERT_EQ(stack().count(), 1);
    EXPECT_EQ(stack().undoText(), deed.step);
    for (int round = 0; round < 2; ++round) {
        stack().undo();
        EXPECT_EQ(dumpOf(list), before);
        EXPECT_EQ(list.controller.size(), list.node->ChildCount());
        stack().redo();
        EXPECT_EQ(dumpOf(list), after);
        EXPECT_EQ(list.controller.size(), list.node->ChildCount());
    }
    list.Add(9999, "later"); // the order goes on
    EXPECT_EQ(dumpOf(list).mid(0, after.size()), after);
}

INSTANTIATE_TEST_SUITE_P(All, UndoDeeds,
                         testing::Combine(testing::ValuesIn(Deeds), testing::Values(addLoose, addShaped)),
                         [](const auto& row) {
                             return std::get<0>(row.param).name +
                                    std::string(std::get<1>(row.param) == addLoose ? "Loose" : "Shaped");
                         });

TEST_F(Undo, WhatNobodyDidOrNothingChangedIsNoStep) {
    List& list = make("/L", addLoose, 3);
    list.Add(1, "by a search");
    { const OperatorAction action(QStringLiteral("Nothing")); }
    {
        const OperatorAction action(QStringLiteral("Come and go"));
        list.Add(2, "short");
        list.node->DeleteNode(list.At(4));
    }
    EXPECT_EQ(stack().count(), 0);
}

TEST_F(Undo, ActionsWithinAnActionAreOneStep) {
    List& list = make("/L", addLoose, 3);
    List& other = make("/M", addShaped, 3);
    const QStringList before = dumpOf(list) + dumpOf(other);
    {
        const OperatorAction outer(QStringLiteral("&Cut…"));
        {
            const OperatorAction inner(QStringLiteral("Delete"));
            list.node->DeleteNode(list.At(1));
        }
        setComment(*other.At(0), Q("sent"));
    }
    EXPECT_EQ(stack().count(), 1);
    EXPECT_EQ(stack().undoText(), "Cut 1 entries - L");
    stack().undo();
    EXPECT_EQ(dumpOf(list) + dumpOf(other), before);
}

TEST_F(Undo, WhatARunningSearchDoesBehindADialogIsNoPartOfTheStep) {
    List& list = make("/L", addLoose, 3);
    {
        const OperatorAction action(QStringLiteral("Edit"));
        QEventLoop dialog;
        QTimer::singleShot(0, &dialog, [&] {
            list.Add(5, "found meanwhile");
            setComment(*list.At(0), Q("by the search"));
            {
                const OperatorAction apply(QStringLiteral("Apply"));
                setComment(*list.At(1), Q("by the operator"));
            }
            dialog.quit();
        });
        dialog.exec();
        setComment(*list.At(2), Q("behind the dialog"));
    }
    ASSERT_EQ(stack().count(), 2);
    EXPECT_EQ(stack().text(0), "Apply 1 entries - L");
    EXPECT_EQ(stack().text(1), "Edit 1 entries - L");
    stack().undo();
    stack().undo();
    EXPECT_EQ(list.node->ChildCount(), 4u);
    EXPECT_EQ(list.At(0)->GetValue("comment")->GetStringValue(), "by the search");
    EXPECT_EQ(list.At(1)->GetValue("comment")->GetStringValue(), "station 1");
    EXPECT_EQ(list.At(2)->GetValue("comment")->GetStringValue(), "station 2");
}

TEST_F(Undo, AStepWhoseEntryHasGoneSaysSoAndChangesNothing) {
    List& list = make("/L", addLoose, 4);
    QStringList told;
    const auto connection = QObject::connect(&FreqStore::Instance(), &FreqStore::Told,
                                             [&](const QString& text) { told << text; });
    {
        const OperatorAction action(QStringLiteral("Edit"));
        setComment(*list.At(0), Q("a"));
        setComment(*list.At(1), Q("b"));
    }
    list.node->DeleteNode(list.At(1));
    const QStringList before = dumpOf(list);
    stack().undo();
    QObject::disconnect(connection);
    EXPECT_EQ(dumpOf(list), before);
    EXPECT_EQ(
        told,
        QStringList("Edit 2 entries - L cannot be undone: the list or entries of it have gone meanwhile"));
    EXPECT_EQ(stack().count(), 0);
}

TEST_F(Undo, AStepOfAListThatHasEndedDoesNothing) {
    make("/L", addLoose, 4);
    {
        const OperatorAction action(QStringLiteral("Delete"));
        lists[0]->node->DeleteNode(lists[0]->At(1));
    }
    lists.clear();
    stack().undo();
    EXPECT_EQ(stack().count(), 0);
}

/// Counts what an observer of a list hears.
class Ear : public IObserver {
public:
    void Update(Observable*, TChangeCode code) override { heard << static_cast<int>(code); }
    QList<int> heard;
};

TEST_F(Undo, ObserversHearOfAReturnOnceAndFindTheEntryUnderItsOldPath) {
    List& list = make("/L", addLoose, 3);
    {
        const OperatorAction action(QStringLiteral("Delete"));
        list.node->DeleteNodes({list.At(1), list.At(2)});
    }
    EXPECT_EQ(Tree::Instance()->GetValue("/L/Entry#2/comment"), nullptr);
    Ear ear;
    list.node->AddObserver(&ear);
    stack().undo();
    EXPECT_EQ(ear.heard.mid(0, 2), QList<int>({1, 0}));
    ASSERT_NE(Tree::Instance()->GetValue("/L/Entry#2/comment"), nullptr);
    EXPECT_EQ(Tree::Instance()->GetValue("/L/Entry#2/comment")->GetStringValue(), "station 1");
}

/// What an observer may do to an entry, or to a value of it, that tells it of its end.
struct AtItsEnd {
    const char* name;
    void (*run)(Node& entry);
};

class UndoObserved : public Undo, public testing::WithParamInterface<std::tuple<AtItsEnd, List::Fill>> {};

class Meddler : public Ear {
public:
    Meddler(Node& entry, void (*run)(Node&)) : m_entry(entry), m_run(run) {}
    void Update(Observable* subject, TChangeCode code) override {
        Ear::Update(subject, code);
        if (code == TChangeCode::MediatorNodeEnds)
            m_run(m_entry);
    }

private:
    Node& m_entry;
    void (*m_run)(Node&);
};

TEST_P(UndoObserved, EntriesEndForAllWhoHeldThemAndComeBackAsNewOnes) {
    const auto& [deed, add] = GetParam();
    List& list = make("/L", add, 3);
    const QStringList before = dumpOf(list);
    const auto remove = [&] {
        const OperatorAction action(QStringLiteral("Delete"));
        list.node->DeleteNode(list.At(1));
    };
    for (int round = 0; round < 2; ++round) { // deleted, and deleted again by redo
        ValueBase* const comment = list.At(1)->FindOwnValue(FreqList::KeyComment);
        const WeakRef<Node> node(list.At(1));
        const WeakRef<ValueBase> value(comment);
        Meddler ofNode(*list.At(1), deed.run);
        Ear first, second;
        list.At(1)->AddObserver(&ofNode);
        comment->AddObserver(&first);
        comment->AddObserver(&second);
        if (round == 0)
            remove();
        else
            stack().redo();
        EXPECT_FALSE(node);
        EXPECT_FALSE(value);
        EXPECT_EQ(ofNode.heard.value(0), 18);
        EXPECT_EQ(first.heard, QList<int>({2}));
        EXPECT_EQ(second.heard, QList<int>({2}));
        EXPECT_EQ(list.node->ChildCount(), 2u);
        stack().undo();
        ASSERT_EQ(dumpOf(list), before);
        ValueBase* const back = list.At(1)->FindOwnValue(FreqList::KeyComment);
        EXPECT_EQ(back->GetState(), TValueState::Valid);
        back->SetStringValue(QStringLiteral("heard by nobody"));
        back->SetStringValue(QStringLiteral("station 1"));
        EXPECT_EQ(first.heard.size(), 1);
        EXPECT_FALSE(node);
        EXPECT_FALSE(value);
    }
}

INSTANTIATE_TEST_SUITE_P(
    All, UndoObserved,
    testing::Combine(
        testing::Values(AtItsEnd{"Nothing", [](Node&) {}},
                        AtItsEnd{"Delay", [](Node& entry) { entry.FirstValue()->SetUpdateTimerTime(1); }},
                        AtItsEnd{"DeleteIt", [](Node& entry) { entry.GetParentNode()->DeleteNode(&entry); }}),
        testing::Values(addLoose, addShaped)),
    [](const auto& row) {
        return std::get<0>(row.param).name +
               std::string(std::get<1>(row.param) == addLoose ? "Loose" : "Shaped");
    });

/// Entries that were deleted rest as they are, and after a while the oldest are made small.
TEST_F(Undo, WhatIsDeletedRestsAndIsThenKeptWithinTheMemoryOfTheHistory) {
    constexpr int Characters = 10000;
    constexpr size_t InOneStep = 40000000; // of 2000 entries, two bytes for each character
    UndoHistory& history = UndoHistory::Instance();
    history.SetRest(1);
    const auto usual = qScopeGuard([&] {
        history.SetRest(UndoHistory::UsualRest);
        history.SetMostResting(UndoHistory::MostResting);
    });
    List& list = make("/L", addShaped);
    for (int i = 0; i < 5000; ++i)
        list.Add(i, QString(Characters, QLatin1Char(static_cast<char>('0' + i % 50))));
    const QStringList before = dumpOf(list);
    const auto deleteSome = [&](size_t count) {
        const OperatorAction action(QStringLiteral("Delete"));
        std::vector<Node*> entries = list.node->Children();
        entries.resize(count);
        list.node->DeleteNodes(entries);
    };
    const auto isPacked = [&] { return history.InMemory() < UndoHistory::MostInMemory; };
    deleteSome(2000);
    EXPECT_GT(history.InMemory(), InOneStep);
    EXPECT_TRUE(isPacked()) << "there is room for one step";
    deleteSome(2000);
    EXPECT_GT(history.InMemory(), 2 * InOneStep);
    ASSERT_TRUE(Until(isPacked));
    EXPECT_GT(history.InMemory(), InOneStep) << "the last step rests on";
    stack().undo();
    stack().undo();
    EXPECT_TRUE(dumpOf(list) == before);
    deleteSome(5000);
    EXPECT_GT(history.InMemory(), 2 * InOneStep);
    const size_t all = history.InMemory();
    while (history.InMemory() == all)
        QCoreApplication::processEvents();
    EXPECT_FALSE(isPacked()) << "some are packed in one turn";
    stack().undo();
    EXPECT_TRUE(dumpOf(list) == before);
    stack().redo();
    ASSERT_TRUE(Until(isPacked));
    stack().undo();
    EXPECT_TRUE(dumpOf(list) == before);
    history.SetMostResting(UndoHistory::MostInMemory); // there is little memory
    deleteSome(5000);
    EXPECT_TRUE(isPacked());
    stack().undo();
    EXPECT_TRUE(dumpOf(list) == before);
}

TEST_F(Undo, ATextThatFollowsIsPutBackByItsWriter) {
    List& list = make("/L", addLoose, 3);
    auto* job = GetOrCreateValue<Value<QString>>(Q("/Job"));
    UndoHistory::Instance().Follow(*job, *list.node);
    job->SetValue(Q("<job by hand> 0 1 2</job>"));
    Ear writer;
    Ear receiver;
    job->AddObserver(&writer);
    job->AddObserver(&receiver);
    const auto follow = [&] {
        QString text = Q("<job>");
        list.controller.ForEach([&](FrequencyNodeMediator& m) { text += m.GetCommentString(0).right(1); });
        job->SetValue(text + Q("</job>"), &writer);
    };
    QObject::connect(&list.controller, &FrequencyNodeMediatorCtrl::EntriesEdited, follow);
    {
        const OperatorAction action(QStringLiteral("Delete"));
        list.node->DeleteNode(list.At(1));
        list.controller.ForceUpdateNow();
    }
    {
        const OperatorAction action(QStringLiteral("Follow")); // nothing but the text: a part of the step
        follow();
    }
    ASSERT_EQ(stack().count(), 1);
    EXPECT_EQ(job->GetValue(), "<job>02</job>");
    stack().undo();
    EXPECT_EQ(job->GetValue(), "<job by hand> 0 1 2</job>");
    stack().redo();
    EXPECT_EQ(job->GetValue(), "<job>02</job>");
    job->SetValue(Q("<job>another</job>"));
    stack().undo(); // what is there now is none of the step's
    EXPECT_EQ(job->GetValue(), "<job>012</job>");
    EXPECT_TRUE(writer.heard == QList<int>({3}));
}

/// Lists as plain rows.
struct Row {
    QString path;
    double hertz;
    QString comment;
    bool operator==(const Row&) const = default;
};
using Rows = std::vector<Row>;

Rows rowsOf(const List& list) {
    Rows rows;
    for (const Node* entry : list.node->Children())
        rows.push_back({entry->GetPathName(),
                        entry->FindOwn<ValueNumeric<double>>(FreqList::KeyFrequency)->GetValue(),
                        entry->FindOwn<Value<QString>>(FreqList::KeyComment)->GetValue()});
    return rows;
}

QStringList toldOf(List& list) {
    QStringList comments;
    list.controller.ForEach([&](FrequencyNodeMediator& m) { comments << m.GetCommentString(0); });
    return comments;
}

/// The operator at work on two lists, and what plain lists have after each action.
class RandomWork : public Undo {
protected:
    using State = std::array<Rows, 2>;

    static constexpr int Actions = 10000;

    int pick(size_t count) { return static_cast<int>(random() % count); }
    void act(State& state) {
        const size_t which = random() % 2;
        const List& list = *lists[which];
        Rows& rows = state[which];
        const OperatorAction action(QStringLiteral("Act"));
        const int deeds = 1 + pick(3);
        for (int i = 0; i < deeds; ++i)
            (this->*Work[random() % std::size(Work)])(list, rows, ordinals[which]);
    }
    void add(const List& list, Rows& rows, int& ordinal) {
        for (int count = 1 + pick(4); count > 0; --count) {
            const double hertz = 1000 + pick(1000000);
            const QString comment = QStringLiteral("new %1").arg(pick(100));
            list.Add(hertz, comment);
            const QString name = QString::fromLatin1(list.add == addLoose ? "Entry" : "Target");
            ++ordinal;
            rows.push_back({list.node->GetPathName() + '/' + name +
                                (ordinal > 1 ? '#' + QString::number(ordinal) : QString()),
                            hertz, comment});
        }
    }
    void remove(const List& list, Rows& rows, int&) {
        std::vector<Node*> nodes;
        Rows kept;
        const int oneIn = 1 + pick(12);
        for (size_t i = 0; i < rows.size(); ++i) {
            if (pick(static_cast<size_t>(oneIn)) == 0)
                nodes.push_back(list.At(i));
            else
                kept.push_back(rows[i]);
        }
        std::shuffle(nodes.begin(), nodes.end(), random);
        list.node->DeleteNodes(nodes);
        rows = kept;
    }
    void edit(const List& list, Rows& rows, int&) {
        for (int count = pick(5); count > 0 && !rows.empty(); --count) {
            const auto place = static_cast<size_t>(pick(rows.size()));
            rows[place].comment = QStringLiteral("edit %1").arg(pick(3));
            setComment(*list.At(place), rows[place].comment);
        }
    }
    void clear(const List& list, Rows& rows, int&) {
        if (pick(10) > 0)
            return;
        list.node->DeleteChildren();
        rows.clear();
    }

    static constexpr void (RandomWork::*Work[])(const List&, Rows&, int&) = {
        &RandomWork::add, &RandomWork::remove, &RandomWork::edit, &RandomWork::clear};

    std::mt19937 random;
    std::array<int, 2> ordinals{};
};

TEST_F(RandomWork, OfTenThousandActionsMatchesPlainLists) {
    const unsigned seed = std::random_device()();
    std::printf("seed %u\n", seed);
    SCOPED_TRACE("seed " + std::to_string(seed));
    random.seed(seed);
    make("/A", addLoose);
    make("/B", addShaped);
    std::vector<State> states(1); // the first is that before the oldest step
    size_t at = 0;
    for (int i = 0; i < Actions; ++i) {
        const int what = pick(5);
        if (what == 0 && stack().canUndo()) {
            stack().undo();
            --at;
        } else if (what == 1 && stack().canRedo()) {
            stack().redo();
            ++at;
        } else {
            State next = states[at];
            const QUndoCommand* last = stack().command(stack().index() - 1);
            act(next);
            if (stack().command(stack().index() - 1) == last) { // nothing has changed
                ASSERT_TRUE(next == states[at]) << "action " << i;
            } else {
                states.resize(at + 1);
                states.push_back(next);
                ++at;
            }
            if (states.size() > size_t(UndoHistory::MostSteps) + 1) {
                states.erase(states.begin());
                --at;
            }
        }
        for (size_t list = 0; list < lists.size(); ++list) {
            const Rows rows = rowsOf(*lists[list]);
            ASSERT_TRUE(rows == states[at][list]) << "action " << i << " list " << list;
            lists[list]->controller.ForceUpdateNow();
            QStringList comments;
            for (const Row& row : rows)
                comments << row.comment;
            ASSERT_EQ(toldOf(*lists[list]), comments) << "action " << i << " list " << list;
        }
    }
}

} // namespace
} // namespace UndoTests
