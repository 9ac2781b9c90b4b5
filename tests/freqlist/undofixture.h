#pragma once

#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencynodemediatorctrl.h"
#include "host/freqlist/keys.h"
#include "host/freqlist/undohistory.h"
#include "host/valuetree/tree.h"
#include "host/valuetree/valueselection.h"

#include <QUndoStack>

#include <gtest/gtest.h>

namespace UndoTests {

inline const Names::Id Mode = Names::Intern(QStringLiteral("mode"));
inline const Names::Id Further = Names::Intern(QStringLiteral("further"));

/// One list of the store, whose entries are made in a way of its own.
struct List {
    using Fill = void (*)(Node& list, double hertz, const QString& comment);

    List(const char* path, Fill make)
        : node(Tree::Instance()->MakeNode(QString::fromLatin1(path))), add(make) {
        controller.Init(node->GetPathName());
        controller.IncrementVisibleCnt();
        id = FreqStore::Instance().RegisterList(
            {.name = QString::fromLatin1(path).section('/', -1), .controller = &controller});
    }
    ~List() { FreqStore::Instance().RemoveFrequencyListDefinition(id); }

    void Add(double hertz, const QString& comment = QString()) const { add(*node, hertz, comment); }
    Node* At(size_t index) const { return node->Children()[index]; }

    Node* node;
    FrequencyNodeMediatorCtrl controller{0};
    Fill add;
    int id;
};

/// Values one by one, a choice, a list of numbers and a sub-node among them.
inline void addLoose(Node& list, double hertz, const QString& comment) {
    auto* entry = new Node(&list, QStringLiteral("Entry"));
    list.AddItemUnique(entry);
    auto* frequency = new ValueNumeric<double>;
    frequency->SetMinMax(0, hertz + 1e9, 1);
    frequency->SetValue(hertz);
    EXPECT_TRUE(entry->AddValue(FreqList::KeyFrequency, frequency));
    Value<QString> text;
    text.SetValue(comment);
    entry->CreateValue(FreqList::KeyComment.Text(), text);
    ValueSelection mode;
    mode.AddItems({"AM", "USB", "CW"});
    mode.SelectAt(static_cast<long>(hertz) % 3);
    entry->CreateValue(Names::Text(Mode), mode);
    ValueList<double> further;
    further.Append({hertz + 1, hertz + 2});
    entry->CreateValue(Names::Text(Further), further);
    entry->AddNode(QStringLiteral("receiver"));
    Value<int> antenna;
    antenna.SetValue(static_cast<int>(hertz) % 7);
    entry->GetNode(QStringLiteral("receiver"))->CreateValue(QStringLiteral("antenna"), antenna);
}

/// All values at once.
inline void addShaped(Node& list, double hertz, const QString& comment) {
    static const Shape& shape =
        Shape::Make({Shape::Number<double>(FreqList::KeyFrequency, 0, 1e12, 1),
                     Shape::Text(FreqList::KeyComment), Shape::Letter(FreqList::KeyType)});
    Node* entry = Node::NewEntry(&list, Names::Intern(QStringLiteral("Target")), shape);
    list.AddItemUnique(entry);
    EXPECT_TRUE(entry->FillFromShape());
    entry->ShapedValue<ValueNumeric<double>>(0).SetValue(hertz);
    entry->ShapedValue<Value<QString>>(1).SetValue(comment);
}

class Undo : public testing::Test {
protected:
    Undo() { UndoHistory::Instance().SetOn(true); }
    ~Undo() override {
        UndoHistory::Instance().SetOn(false);
        lists.clear();
        Tree::Instance()->GetRoot()->DeleteChildren();
    }

    List& make(const char* path, List::Fill add, int entries = 0) {
        lists.push_back(std::make_unique<List>(path, add));
        for (int i = 0; i < entries; ++i)
            lists.back()->Add(1000 + i, QStringLiteral("station %1").arg(i));
        lists.back()->controller.ForceUpdateNow();
        return *lists.back();
    }
    static QUndoStack& stack() { return UndoHistory::Instance().Stack(); }
    static void setComment(const Node& entry, const QString& text) {
        entry.FindOwn<Value<QString>>(FreqList::KeyComment)->SetValue(text);
    }

    std::vector<std::unique_ptr<List>> lists;
};

} // namespace UndoTests
