#include "host/freqlist/pixstatevector.h"
#include "host/valuetree/tree.h"
#include "host/valuetree/value.h"

#include <gtest/gtest.h>

namespace {

/// 100 Hz a pixel.
struct Map : IHasHMap {
    double MapToPixel(double hertz) const override { return hertz / 100; }
    double MapToFrequency(double pixel) const override { return pixel * 100; }
};

/// A list of entries, and a line that follows it.
class NodeLine : public testing::Test {
protected:
    NodeLine() : list(Tree::Instance()->MakeNode(QStringLiteral("/NodeLine"))) {
        bind(line);
        line.Refresh();
    }
    ~NodeLine() override { Tree::Instance()->GetRoot()->DeleteNode(list); }

    void bind(PixStateVectorOnNode& bound) {
        bound.Init(list->GetPathName());
        bound.SetKeyWords("f", "b", "t", "c");
        bound.SetHMapping(&map, 100);
    }
    template <typename V, typename T>
    static void add(Node* entry, const char* name, const T& content) {
        auto* value = new V;
        value->SetValue(content);
        EXPECT_TRUE(entry->AddValue(name, value));
    }
    Node* add(double hertz, double bandwidth, char type) {
        auto* entry = new Node(list, QStringLiteral("Entry"));
        add<ValueNumeric<double>>(entry, "f", hertz);
        add<ValueNumeric<double>>(entry, "b", bandwidth);
        add<Value<char>>(entry, "t", type);
        add<Value<QString>>(entry, "c", QString::number(hertz));
        list->AddItemUnique(entry);
        return entry;
    }
    /// All that can be seen of a line.
    static QStringList seen(PixStateVectorOnNode& seen) {
        seen.Refresh();
        QStringList pixels;
        for (size_t i = 0; i < seen.size(); ++i) {
            const PixState& state = seen[i];
            if (!state.IsEmpty())
                pixels << QStringLiteral("%1: %2 %3 %4 %5")
                              .arg(i)
                              .arg(state.type)
                              .arg(state.flags)
                              .arg(state.count)
                              .arg(seen.ItemText(state.lastItem));
        }
        return pixels;
    }
    /// Whether the line shows what one shows that is made now.
    void expectAsMadeAnew(const char* when) {
        PixStateVectorOnNode fresh;
        bind(fresh);
        fresh.SetVisible(line.IsVisible());
        EXPECT_EQ(seen(line), seen(fresh)) << when;
    }

    Map map;
    Node* list;
    PixStateVectorOnNode line;
};

TEST_F(NodeLine, ShowsWhatTheListHasHoweverItCameThere) {
    Node* first = add(1000, 0, 'a');
    add(1050, 0, 'b');
    EXPECT_EQ(seen(line), QStringList{QStringLiteral("10: b 1 2 1050")});
    Node* wide = add(5000, 1000, 'c');
    expectAsMadeAnew("entries came");
    EXPECT_EQ(seen(line).size(), 12);
    list->DeleteNode(first);
    EXPECT_TRUE(line.ItemText(1).isEmpty()) << "between a change and the refresh nothing is sure";
    expectAsMadeAnew("one went");
    list->DeleteNode(wide);
    add(7000, 200, 'd');
    expectAsMadeAnew("one went, one came");
    EXPECT_EQ(seen(line).size(), 4);
    Node* changed = add(3000, 0, 'e');
    seen(line);
    changed->FindOwn<ValueNumeric<double>>(Names::Intern("f"))->SetValue(3500);
    list->Commit(nullptr);
    expectAsMadeAnew("a value changed");
    Node* other = add(9000, 300, 'g');
    changed->FindOwn<ValueNumeric<double>>(Names::Intern("f"))->SetValue(1500);
    changed->FindOwn<ValueNumeric<double>>(Names::Intern("b"))->SetValue(800);
    Node* const both[] = {changed, other};
    list->CommitChanges(both, nullptr);
    expectAsMadeAnew("some are named that changed");
    changed->FindOwn<Value<char>>(Names::Intern("t"))->SetValue('z');
    list->CommitChanges({both, 1}, nullptr);
    EXPECT_TRUE(list->ChangedChildren().empty());
    expectAsMadeAnew("a type changed");
    list->CommitChanges(both, nullptr);
    list->DeleteNode(other);
    expectAsMadeAnew("one that changed went");
    line.SetHMapping(&map, 60);
    line.SetHMapping(&map, 100);
    expectAsMadeAnew("another width");
    line.SetVisible(false);
    add(8000, 0, 'f');
    expectAsMadeAnew("out of sight");
    line.SetVisible(true);
    expectAsMadeAnew("in sight again");
    line.RemoveValue(changed);
    EXPECT_FALSE(seen(line).join('\n').contains("3500"));
    list->DeleteChildren();
    EXPECT_TRUE(seen(line).isEmpty());
}

TEST_F(NodeLine, ThatDoesNotFollowAsksNoEntryAndCatchesUp) {
    Node* first = add(1000, 0, 'a');
    add(2000, 0, 'b');
    seen(line);
    line.SetObserve(false);
    list->DeleteNode(first);
    add(3000, 0, 'c');
    EXPECT_FALSE(line.GetDirty());
    for (const quint32 item : {0u, 1u, 2u})
        EXPECT_TRUE(line.ItemText(item).isEmpty());
    line.SetObserve(true);
    EXPECT_TRUE(line.GetDirty());
    expectAsMadeAnew("it follows again");
    EXPECT_TRUE(line.Observe(false));
    list->DeleteChildren();
    line.SetHMapping(&map, 60);
    EXPECT_TRUE(seen(line).isEmpty()) << "what is drawn anew is drawn as it is";
    add(1000, 0, 'd');
    EXPECT_FALSE(line.Observe(true));
    EXPECT_EQ(seen(line).size(), 1);
    line.RemoveAllValues();
    EXPECT_EQ(line.ItemFrequency(0), 0);
    EXPECT_TRUE(line[10].IsEmpty()) << "no mark without an item";
}

TEST_F(NodeLine, ThatDoesNotFollowOutlivesItsList) {
    add(1000, 0, 'a');
    seen(line);
    line.SetObserve(false);
    Tree::Instance()->GetRoot()->DeleteNode(list);
    EXPECT_TRUE(line.ItemText(0).isEmpty());
    line.SetObserve(true);
    EXPECT_TRUE(seen(line).isEmpty());
    list = Tree::Instance()->MakeNode(QStringLiteral("/NodeLine"));
}

} // namespace
