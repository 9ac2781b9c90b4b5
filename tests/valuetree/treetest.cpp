#include "host/valuetree/tree.h"

#include "host/valuetree/valueptr.h"
#include "host/valuetree/valueselection.h"
#include "tests/support/recorder.h"
#include "tests/support/traces.h"

#include <gtest/gtest.h>
#include <memory>
#include <random>

namespace {

class TreeTest : public testing::Test {
protected:
    void SetUp() override { m_list = Tree::Instance()->MakeNode(QStringLiteral("/Test/List")); }
    void TearDown() override { Tree::Instance()->GetRoot()->DeleteChildren(); }

    Node* AddEntry(const QString& name = QStringLiteral("Entry")) {
        auto* node = new Node(m_list, name);
        m_list->AddItemUnique(node);
        return node;
    }
    static ValueNumeric<double>* AddNumber(Node* node, const QString& name, double content) {
        auto* value = new ValueNumeric<double>;
        value->SetValue(content);
        EXPECT_TRUE(node->AddValue(name, value));
        return value;
    }

    Node* m_list = nullptr;
};

TEST_F(TreeTest, ChildrenOfOneNameAreKeptApartByTheirPaths) {
    Node* first = AddEntry();
    Node* second = AddEntry();
    Node* third = AddEntry();
    EXPECT_EQ(first->GetPathName(), QStringLiteral("/Test/List/Entry"));
    EXPECT_EQ(second->GetPathName(), QStringLiteral("/Test/List/Entry#2"));
    EXPECT_EQ(second->GetName(), QStringLiteral("Entry"));
    ValueBase* value = AddNumber(third, QStringLiteral("frequency"), 5);
    EXPECT_EQ(value->GetPathName(), QStringLiteral("/Test/List/Entry#3/frequency"));
    EXPECT_EQ(Tree::Instance()->GetValue(value->GetPathName()), value);
    EXPECT_EQ(m_list->GetNode(QStringLiteral("Entry#2")), second);

    EXPECT_TRUE(m_list->DeleteNode(second));
    EXPECT_FALSE(m_list->DeleteNode(m_list));
    Node* fourth = AddEntry();
    EXPECT_EQ(fourth->GetPathName(), QStringLiteral("/Test/List/Entry#4"));
    EXPECT_EQ(m_list->GetNode(QStringLiteral("Entry#2")), nullptr);
    EXPECT_EQ(m_list->GetNode(QStringLiteral("Entry#4")), fourth);
    EXPECT_EQ(m_list->ChildCount(), 3u);
}

TEST_F(TreeTest, PathsThatNameNothingYieldNull) {
    AddNumber(AddEntry(), QStringLiteral("frequency"), 1);
    for (const char* path : {"/Test/Nothing", "/Test/List/Entry/none", "/Test/List/Entry#1/frequency",
                             "/Test/List/Entry#99/frequency", "", "/"})
        EXPECT_EQ(Tree::Instance()->GetValue(QString::fromLatin1(path)), nullptr) << path;
    EXPECT_EQ(Tree::Instance()->GetRoot()->GetPathName(), QStringLiteral("/"));
    EXPECT_EQ(Tree::Instance()->GetRoot()->GetPathName_NoSlashForRoot(), QString());
    const Node loose(m_list, QStringLiteral("Loose"));
    EXPECT_FALSE(loose.IsInTree());
    EXPECT_EQ(m_list->GetNode(QStringLiteral("Loose")), nullptr);
}

TEST_F(TreeTest, ManyValuesOfOneNodeAreFoundAndUnique) {
    for (int i = 0; i < 200; ++i)
        AddNumber(m_list, QStringLiteral("v%1").arg(i), i);
    ValueNumeric<double> duplicate;
    EXPECT_FALSE(m_list->AddValue(QStringLiteral("v150"), &duplicate));
    EXPECT_EQ(m_list->GetValue(QStringLiteral("v150"))->GetStringValue(), QStringLiteral("150"));
    EXPECT_TRUE(m_list->DeleteValue(QStringLiteral("v150")));
    EXPECT_FALSE(m_list->DeleteValue(QStringLiteral("v150")));
    EXPECT_EQ(m_list->GetValue(QStringLiteral("v150")), nullptr);
    m_list->GetValue(QStringLiteral("v7"))->SetName(QStringLiteral("v8"));
    EXPECT_NE(m_list->GetValue(QStringLiteral("v7")), nullptr);
    m_list->GetValue(QStringLiteral("v7"))->SetName(QStringLiteral("seven"));
    EXPECT_EQ(m_list->GetValue(QStringLiteral("seven"))->GetStringValue(), QStringLiteral("7"));
    EXPECT_EQ(m_list->GetValueDescriptor()->values.size(), 199u);
}

TEST_F(TreeTest, ChildrenSinceGivesOnlyWhatIsNew) {
    quint32 serial = 0;
    AddEntry();
    Node* second = AddEntry();
    EXPECT_EQ(m_list->ChildrenSince(serial).size(), 2u);
    Node* third = AddEntry();
    m_list->DeleteNodes({second});
    Node* fourth = AddEntry();
    EXPECT_EQ(m_list->ChildrenSince(serial), (std::vector<Node*>{third, fourth}));
    EXPECT_TRUE(m_list->ChildrenSince(serial).empty());
    m_list->DeleteChildren();
    EXPECT_TRUE(m_list->ChildrenSince(serial).empty());
    Node* fifth = AddEntry();
    EXPECT_EQ(m_list->ChildrenSince(serial), std::vector<Node*>{fifth});
}

TEST_F(TreeTest, RemovalTellsNodeThenValuesThenSubNodes) {
    Node* entry = AddEntry();
    ValueBase* value = AddNumber(entry, QStringLiteral("frequency"), 1);
    auto* sub = new Node(entry, QStringLiteral("Sub"));
    entry->AddItemUnique(sub);
    ValueBase* deep = AddNumber(sub, QStringLiteral("deep"), 2);
    Recorder recorder;
    bool stateIsRemoving = true;
    recorder.onUpdate = [&](Observable* subject, TChangeCode code) {
        if (auto* v = dynamic_cast<ValueBase*>(subject); v && code == TChangeCode::Removing)
            stateIsRemoving = stateIsRemoving && v->GetState() == TValueState::Removing;
    };
    for (Observable* subject : std::initializer_list<Observable*>{entry, value, sub, deep})
        subject->AddObserver(&recorder);
    Recorder list;
    m_list->AddObserver(&list);
    const std::vector<Observable*> expected{entry, entry, value, sub, sub, deep};
    m_list->DeleteNode(entry);
    EXPECT_EQ(recorder.codes, (std::vector<int>{18, 2, 2, 18, 2, 2}));
    EXPECT_EQ(recorder.subjects, expected);
    EXPECT_TRUE(stateIsRemoving);
    EXPECT_EQ(list.codes, std::vector<int>{1});
}

TEST_F(TreeTest, DeletingManyChildrenTellsTheListOnce) {
    std::vector<Node*> some;
    for (int i = 0; i < 100; ++i) {
        Node* node = AddEntry();
        if (i % 3 == 0)
            some.push_back(node);
    }
    Recorder list;
    m_list->AddObserver(&list);
    m_list->DeleteNodes(some);
    EXPECT_EQ(list.codes, std::vector<int>{1});
    EXPECT_EQ(m_list->ChildCount(), 66u);
    m_list->DeleteChildren();
    EXPECT_EQ(list.codes, (std::vector<int>{1, 1}));
    EXPECT_EQ(m_list->ChildCount(), 0u);
}

TEST_F(TreeTest, ADeletedValueAnnouncesItselfAndNullsItsLinks) {
    ValueBase* value = AddNumber(m_list, QStringLiteral("x"), 3);
    Recorder recorder;
    recorder.onUpdate = [](Observable* subject, TChangeCode) {
        EXPECT_EQ(dynamic_cast<ValueBase*>(subject)->GetStringValue(), QStringLiteral("3"));
    };
    ValueObservingPtr<ValueBase> observing(&recorder);
    observing.Reset(value);
    const ValuePtr<ValueBase> weak(value);
    delete value;
    EXPECT_EQ(recorder.codes, std::vector<int>{2});
    EXPECT_FALSE(observing);
    EXPECT_FALSE(weak);
    EXPECT_EQ(m_list->GetValue(QStringLiteral("x")), nullptr);
}

/// Observers that delete values, nodes and whole lists while a list is being emptied.
TEST_F(TreeTest, RandomDeletionsWithinRemovalsAreSafe) {
    std::mt19937 random(7);
    for (int round = 0; round < 200; ++round) {
        std::vector<std::unique_ptr<Recorder>> recorders;
        for (int i = 0; i < 20; ++i) {
            Node* entry = AddEntry();
            for (const char* key : {"a", "b", "c"})
                AddNumber(entry, QString::fromLatin1(key), 1);
        }
        for (Node* entry : m_list->Children()) {
            recorders.push_back(std::make_unique<Recorder>());
            Recorder* recorder = recorders.back().get();
            recorder->onUpdate = [&, recorder](Observable*, TChangeCode) {
                if (recorder->codes.size() > 1)
                    return;
                const std::vector<Node*> rest = m_list->Children();
                if (rest.empty())
                    return;
                Node* victim = rest[random() % rest.size()];
                switch (random() % 4) {
                case 0:
                    victim->DeleteValue(QStringLiteral("b"));
                    break;
                case 1:
                    m_list->DeleteNode(victim);
                    break;
                case 2:
                    AddEntry();
                    break;
                default:
                    victim->DeleteChildren();
                    break;
                }
            };
            if (random() % 2)
                entry->AddObserver(recorder);
            else
                entry->GetValue(QStringLiteral("a"))->AddObserver(recorder);
        }
        m_list->DeleteChildren();
        m_list->DeleteChildren();
        EXPECT_EQ(m_list->ChildCount(), 0u);
    }
}

TEST_F(TreeTest, TextDumpReadsBack) {
    AddNumber(m_list, QStringLiteral("frequency"), 7055000.5);
    auto* text = new Value<QString>;
    text->SetValue(QStringLiteral("one\ntwo\\three = :"));
    EXPECT_TRUE(m_list->AddValue(QStringLiteral("comment"), text));
    Node* entry = AddEntry();
    AddEntry();
    auto* selection = new ValueSelection;
    selection->AddItems({QStringLiteral("AM"), QStringLiteral("USB")});
    selection->Select(QStringLiteral("USB"));
    EXPECT_TRUE(entry->AddValue(QStringLiteral("demodulation"), selection));
    const std::string dump = m_list->GetAsStdString();

    Node* copy = Tree::Instance()->MakeNode(QStringLiteral("/Test/Copy"));
    copy->SetAsStdString(dump.c_str());
    EXPECT_EQ(copy->GetAsStdString(), dump);
    EXPECT_EQ(copy->GetValue(QStringLiteral("comment"))->GetStringValue(), text->GetValue());
    EXPECT_EQ(copy->GetValue(QStringLiteral("Entry/demodulation"))->GetStringValue(), QStringLiteral("USB"));
    EXPECT_EQ(copy->ChildCount(), 2u);

    Traces traces;
    copy->SetAsStdString("frequency:numeric double=1\n      lost\nx:no such type=1\n");
    EXPECT_EQ(copy->GetValue(QStringLiteral("frequency"))->GetStringValue(), QStringLiteral("1"));
    EXPECT_EQ(traces.texts.size(), 2);
}

TEST_F(TreeTest, RefusedValuesAreUsableAndTraced) {
    auto* text = new Value<QString>;
    EXPECT_TRUE(m_list->AddValue(QStringLiteral("frequency"), text));
    Traces traces;
    auto* clash =
        GetOrCreateValue<ValueNumeric<double>>(m_list->GetPathName() + QStringLiteral("/frequency"));
    auto* orphan = GetOrCreateValue<Value<bool>>(QStringLiteral("/No/Such/Node/flag"));
    ASSERT_NE(clash, nullptr);
    clash->SetValue(1);
    orphan->SetValue(true);
    ASSERT_EQ(traces.texts.size(), 2);
    EXPECT_EQ(traces.places[0], QStringLiteral("valueobservermacros:297"));
    EXPECT_TRUE(traces.texts[0].startsWith(
        QStringLiteral("!!!!!!!MEMORY LEAK! The value with the path '/Test/List/frequency'")));
    EXPECT_EQ(GetOrCreateValue<Value<QString>>(m_list->GetPathName() + QStringLiteral("/frequency")), text);
    EXPECT_EQ(traces.texts.size(), 2);
}

} // namespace
