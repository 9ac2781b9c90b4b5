// Entries that readers make whole are as those that their classes make value by value.

#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/memory/memorysystemhandler.h"
#include "controls/frequencystore/noi/noifrequency.h"
#include "controls/frequencystore/noi/noifrequencyhandler.h"
#include "controls/frequencystore/results/searchmcdatahandler.h"
#include "controls/frequencystore/results/searchmcdatareader.h"
#include "controls/frequencystore/results/searchmcdataresult.h"
#include "tests/frequencystore/listrows.h"
#include "tests/support/recorder.h"

namespace {

/// A list: how it begins and ends, reads a file, and what entry it makes of the file's only line.
struct Kind {
    const char* name;
    const char* file;
    QByteArray line;
    void (*begin)(Node* list);
    void (*read)(const QString& path);
    void (*end)();
    void (*make)(Node* node);
};

template <MediatorType Type>
void beginMemory(Node* list) {
    MemorySystemHandler::Instance()->SetListType(Type);
    MemorySystemHandler::Instance()->Init(list);
}

template <typename Entry>
void makeChannel(Node* node) {
    Entry(node, true, nullptr).SetBasics(7055000.5, 2700, Q("calling"), Q("USB"));
}

const QByteArray SflLine = "7055000.5\tcalling\t2700\tUSB\n";

const Kind Kinds[] = {
    {"Noi", "a.noi", "7055000.5\tcalling\t2700\t\n",
     [](Node* list) {
         NOIFrequencyHandler::Instance()->SetRemembersFile(false);
         NOIFrequencyHandler::Instance()->Init(list);
     },
     [](const QString& path) { EXPECT_TRUE(NOIFrequencyHandler::Instance()->ReadFile(path)); },
     [] { NOIFrequencyHandler::DeleteInstance(); },
     [](Node* node) {
         NOIFrequency entry(node, true, nullptr);
         entry.SetFrequency(7055000.5);
         entry.SetBandwidth(2700.0);
         entry.SetComment(Q("calling"));
     }},
    {"MemoryHF", "a.sfl", SflLine, beginMemory<MediatorType::MemoryHF>,
     [](const QString& path) { EXPECT_TRUE(MemorySystemHandler::Instance()->ReadFile(path)); },
     [] { MemorySystemHandler::DeleteInstance(); }, makeChannel<HFMemoryEntry>},
    {"MemoryVUHF", "a.sfl", SflLine, beginMemory<MediatorType::MemoryVUHF>,
     [](const QString& path) { EXPECT_TRUE(MemorySystemHandler::Instance()->ReadFile(path)); },
     [] { MemorySystemHandler::DeleteInstance(); }, makeChannel<VUHFMemoryEntry>},
    {"Results", "a.csv", "7055000.5\t\t2700\t\tx\tLOCKED\t1700000000000000\t40\t\n",
     [](Node* list) { SearchMCDataHandler::Instance()->Init(list); },
     [](const QString& path) {
         EXPECT_TRUE(SearchMCDataReader(*SearchMCDataHandler::Instance()->GetMediatorCtrl()).ReadFile(path));
     },
     [] { SearchMCDataHandler::DeleteInstance(); },
     [](Node* node) {
         SearchMCDataResult entry(node, true, nullptr);
         entry.SetFrequency(7055000.5);
         entry.SetBandwidth(2700.0);
         entry.SetLocked(Q("LOCKED"));
         entry.SetLockTime(1700000000000000);
         entry.SetConfidence(40);
         entry.SetComment(Q("7055000.5"));
         node->FindOwn<Value<char>>(Keys::KeyType)->SetValue('p'); // as a mediator does
     }},
};

class ShapedEntries : public ListFixture, public testing::WithParamInterface<Kind> {
protected:
    void SetUp() override {
        m_list = Tree::Instance()->MakeNode(Q("/Lists/Read"));
        GetParam().begin(m_list);
    }
    void TearDown() override {
        GetParam().end();
        ListFixture::TearDown();
    }
    /// Reads a file of that many equal lines.
    void ReadLines(int count) const {
        GetParam().read(Write(Q(GetParam().file), GetParam().line.repeated(count)));
    }
    /// An entry of the list that its class makes.
    Node* MadeByClass() {
        auto* node = new Node(m_list, Q("Entry"));
        m_list->AddItemUnique(node);
        GetParam().make(node);
        return node;
    }
    /// Name, type, content, limits and rows of each value.
    static QStringList Described(const Node* node) {
        QStringList values;
        for (const ValueBase* value = node->FirstValue(); value; value = Node::NextValue(value)) {
            QStringList parts{value->GetName(), value->GetTypeName(), value->GetStringValue()};
            if (auto* number = numeric_cast(const_cast<ValueBase*>(value)))
                parts << QString::number(number->MinAsDouble()) << QString::number(number->MaxAsDouble())
                      << QString::number(number->StepAsDouble());
            if (const auto* selection = value_cast<ValueSelection>(value)) {
                for (long i = 0; i < selection->GetItemCount(); ++i)
                    parts << QStringLiteral("%1=%2/%3")
                                 .arg(selection->ItemAt(i)->GetName())
                                 .arg(selection->ItemAt(i)->GetValue())
                                 .arg(selection->ItemAt(i)->GetKey());
            }
            values << parts.join(QLatin1Char('|'));
        }
        return values;
    }
};

TEST_P(ShapedEntries, AreAsTheClassMakesThemAndOfOneShape) {
    ReadLines(3);
    const std::vector<Node*> read = m_list->Children();
    ASSERT_EQ(read.size(), 3u);
    const Node* const made = MadeByClass();
    EXPECT_EQ(made->ShapeId(), 0);
    for (const Node* entry : read) {
        EXPECT_NE(entry->ShapeId(), 0);
        EXPECT_EQ(entry->ShapeId(), read.front()->ShapeId());
        EXPECT_EQ(Described(entry), Described(made));
    }
}

TEST_P(ShapedEntries, MayBeTouchedWhileTheyAreMade) {
    Recorder touching;
    int touched = 0;
    touching.onUpdate = [&](Observable* subject, TChangeCode code) {
        Node* const last = static_cast<Node*>(subject)->LastChild();
        if (code != TChangeCode::ChildrenChanged || !last || last->FirstValue())
            return;
        ++touched;
        EXPECT_TRUE(last->AddValue(Q("own"), new Value<int>));
        EXPECT_TRUE(last->AddValue(Q("comment"), new Value<QString>));
    };
    m_list->AddObserver(&touching);
    ReadLines(2);
    m_list->DeleteObserver(&touching);
    EXPECT_EQ(touched, 2);
    ASSERT_EQ(m_list->ChildCount(), 2u);
    for (const Node* entry : m_list->Children()) {
        EXPECT_EQ(entry->FirstValue()->GetName(), Q("own"));
        EXPECT_EQ(entry->FindOwn<ValueNumeric<double>>(Keys::KeyFrequency)->GetValue(), 7055000.5);
        EXPECT_EQ(entry->FindOwn<Value<QString>>(Keys::KeyComment)->GetValue(),
                  Q(GetParam().name) == Q("Results") ? Q("7055000.5") : Q("calling"));
    }
}

INSTANTIATE_TEST_SUITE_P(Lists, ShapedEntries, testing::ValuesIn(Kinds),
                         [](const auto& row) { return row.param.name; });

} // namespace
