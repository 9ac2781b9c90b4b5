// Edits of a client that the server has not answered yet.

#include "tests/link/linkfixture.h"

namespace {

class PendingEdits : public ShareFixture {};

/// How entries come to be made anew at a client: one that it has not seen comes between, or all change
/// places.
enum class MadeAnew { ByOneBetween, ByAnotherOrder };

class PendingEditsMadeAnew : public PendingEdits, public testing::WithParamInterface<MadeAnew> {
protected:
    static constexpr int Count = 4200;

    void MakeAnew() {
        const Node& list = server.list.GetNode();
        if (GetParam() == MadeAnew::ByOneBetween) {
            Node* const again =
                Node::NewEntry(&server.list.GetNode(), Names::Intern(Q("Target")), TestShape());
            again->FillFromShape();
            const Node::Returning returning[] = {{again, m_removed.serial, m_removed.ordinal}};
            server.list.GetNode().Restore(returning);
            return;
        }
        std::vector<std::pair<double, QString>> entries;
        for (Node* entry : list.Children())
            entries.emplace_back(TestList::Frequency(*entry).GetValue(),
                                 TestList::Comment(*entry).GetValue());
        server.list.GetNode().DeleteChildren();
        for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry)
            server.list.Add(entry->first, entry->second);
    }
    void RemoveOne() {
        m_removed = {nullptr, server.list.At(4)->GetSerial(), server.list.At(4)->GetOrdinal()};
        server.list.GetNode().DeleteNode(server.list.At(4));
    }

private:
    Node::Returning m_removed{};
};

TEST_P(PendingEditsMadeAnew, entriesKeepWhatWaitsForTheServer) {
    Serve(Count);
    RemoveOne();
    TestClient& anna = Join(Q("anna"));
    Lose({"/request/"});
    const double changed = TestList::Frequency(*anna.list.At(7)).GetValue();
    TestList::Comment(*anna.list.At(7)).SetValue(Q("mine"));
    anna.list.GetNode().DeleteNode(anna.list.At(8));
    anna.client.Flush();
    const Messages::Revision before = anna.reader.Copy().Revision();
    MakeAnew();
    ASSERT_TRUE(Until([&] { return anna.reader.Copy().Revision() > before; }));
    const auto has = [&](const TestList& list) {
        QStringList comments;
        for (Node* entry : list.GetNode().Children()) {
            if (TestList::Frequency(*entry).GetValue() == changed)
                comments << TestList::Comment(*entry).GetValue();
        }
        return comments.join(' ');
    };
    EXPECT_EQ(has(anna.list), Q("mine"));
    const unsigned removed = 1;
    EXPECT_EQ(anna.list.GetNode().ChildCount(), server.list.GetNode().ChildCount() - removed);
    broker.SetFilter({});
    ASSERT_TRUE(AreEqual(anna));
    EXPECT_EQ(has(server.list), Q("mine"));
    EXPECT_EQ(anna.refused, QStringList());
}

INSTANTIATE_TEST_SUITE_P(Ways, PendingEditsMadeAnew,
                         testing::Values(MadeAnew::ByOneBetween, MadeAnew::ByAnotherOrder));

TEST_F(PendingEdits, anAddedEntryThatIsEditedOnBeforeItIsAnsweredKeepsTheEdit) {
    Serve(5);
    TestClient& anna = Join(Q("anna"));
    const TestClient& ben = Join(Q("ben"));
    Lose({"/request/anna/"});
    Node* const added = anna.list.Add(5e6, Q("first"));
    anna.client.Flush();
    ben.list.Add(6e6, Q("by ben"));
    ASSERT_TRUE(Until([&] { return anna.list.GetNode().ChildCount() == 7; }));
    TestList::Comment(*added).SetValue(Q("later"));
    broker.SetFilter({});
    ASSERT_TRUE(AreEqual(anna));
    ASSERT_EQ(server.list.GetNode().ChildCount(), 7u);
    EXPECT_EQ(TestList::Comment(*server.list.At(6)).GetValue(), Q("later"));
    EXPECT_EQ(anna.refused, QStringList());
}

TEST_F(PendingEdits, whatWasTypedIntoAnEntryThatIsRemovedElsewhereIsTold) {
    Serve(5);
    TestClient& anna = Join(Q("anna"));
    server.list.GetNode().DeleteNode(server.list.At(1));
    TestList::Comment(*anna.list.At(1)).SetValue(Q("typed"));
    ASSERT_TRUE(Until([&] { return anna.list.GetNode().ChildCount() == 4; }));
    EXPECT_TRUE(anna.refused.contains(Q("comment: , not typed"))) << anna.refused.join('\n').toStdString();
}

} // namespace
