// Messages that come late, twice or never, from another life of the list or from hostile seats.

#include "host/base/longwork.h"
#include "link/topics.h"
#include "tests/link/linkfixture.h"

#include <optional>
#include <random>

namespace {

constexpr char ListTopic[] = "freqstore/north/lists/Targets";

class Faults : public ShareFixture {
protected:
    /// The server takes a change.
    void EditAtServer(size_t place, const QString& comment) {
        TestList::Comment(*server.list.At(place)).SetValue(comment);
        server.server->Flush();
    }
    void StartAgain() {
        server.server.reset();
        server.Serve();
    }
    /// Has the server go on with edits that nobody waits for, until the condition holds.
    template <typename Condition>
    bool UntilWhileEdited(Condition isSo) {
        QTimer edits;
        int count = 0;
        QObject::connect(&edits, &QTimer::timeout,
                         [&] { EditAtServer(0, QStringLiteral("edit %1").arg(++count)); });
        edits.start(400);
        return Until(isSo);
    }
};

/// What stands at a broker, as it comes to whoever joins.
ListCopy copyOf(const LocalBroker& broker) {
    ListCopy copy;
    const QByteArray list = ListTopic;
    copy.TakeManifest(broker.Retained().at(list + "/manifest"));
    for (const auto& [topic, payload] : broker.Retained()) {
        quint64 number = 0;
        if (!Topics::NumberOf(topic, number))
            continue;
        if (topic.startsWith(list + "/layout/"))
            copy.TakeLayout(static_cast<quint32>(number), payload);
        else if (topic.startsWith(list + "/log/"))
            copy.TakeDelta(payload);
        else if (topic.startsWith(list + "/chunk/"))
            copy.TakeChunk(static_cast<quint32>(number), payload);
    }
    return copy;
}

TEST_F(Faults, whoJoinsGetsAllWhereverRemovedEntriesCameBack) {
    Serve(4 * RowTable::RowsInChunk);
    ASSERT_TRUE(Until([&] { return server.IsServing(); }));
    std::mt19937 random(5);
    std::vector<Node::Returning> removed;
    for (int i = 0; i < 1500; ++i) {
        const size_t place = random() % server.list.GetNode().ChildCount();
        if (!removed.empty() && random() % 3 == 0) {
            const size_t which = random() % removed.size();
            server.list.AddAt(removed[which], i, Q("is back"));
            removed.erase(removed.begin() + static_cast<std::ptrdiff_t>(which));
        } else if (removed.size() < 10 && random() % 3 == 0) {
            removed.push_back(server.list.Remove(place));
        } else {
            TestList::Comment(*server.list.At(place)).SetValue(QString::number(i));
        }
        server.server->Flush();
        const ListCopy late = copyOf(broker);
        ASSERT_TRUE(late.IsWhole()) << i;
        ASSERT_EQ(late.GetRows().size(), server.list.GetNode().ChildCount()) << i;
    }
}

TEST_F(Faults, whatIsLostIsAskedForWhileOthersGoOn) {
    Serve(2000);
    ASSERT_TRUE(Until([&] { return server.IsServing(); }));
    for (const char* part : {"/chunk/3", "/log/"}) {
        SCOPED_TRACE(part);
        bool isLost = false;
        broker.SetFilter([&](const QByteArray& topic, const QByteArray&) {
            return isLost || !(isLost = topic.contains(part));
        });
        const TestClient anna(broker, Q("anna"));
        EXPECT_TRUE(UntilWhileEdited([&] { return isLost && anna.list.Text() == server.list.Text(); }));
    }
}

/// A list of one entry with one number, of a layout with that limit, at a broker of its own.
struct OneNumber {
    OneNumber(double limit, bool hasSecondLayout) {
        bus.Connect();
        const Names::Id name = Names::Intern(Q("number"));
        const auto add = [&](double most) {
            publisher.layouts.Add(
                EntryLayout::Of(Names::Intern(Q("Target")), {Shape::Number<double>(name, 0.0, most, 1.0)}));
        };
        add(limit);
        if (hasSecondLayout)
            add(limit + 1);
        Wire::Writer contents;
        contents.Number(5);
        publisher.rows.Put(1, 1, {1, 1, publisher.NextRevision(), 0, contents.View()});
        publisher.PublishAnew();
        publisher.StartSending(std::nullopt);
    }
    const QByteArray& At(const char* below) const {
        return broker.Retained().at(ListTopic + QByteArray(below));
    }

    LocalBroker broker;
    LocalBus bus{broker, Q("server")};
    ListPublisher publisher{bus, ListTopic, Q("server/x")};
};

TEST(ListCopies, areNotWholeWithALayoutOfAnotherLife) {
    const OneNumber before(10, true), after(20, false);
    ListCopy copy;
    copy.TakeManifest(before.At("/manifest"));
    copy.TakeLayout(0, before.At("/layout/0"));
    copy.TakeLayout(1, before.At("/layout/1"));
    copy.TakeChunk(0, before.At("/chunk/0"));
    ASSERT_TRUE(copy.IsWhole());
    copy.TakeManifest(after.At("/manifest"));
    copy.TakeChunk(0, after.At("/chunk/0"));
    EXPECT_FALSE(copy.IsWhole()); // its layout got lost
    EXPECT_EQ(copy.TakeLayout(0, after.At("/layout/0")), ListCopy::Taken::Changed);
    EXPECT_TRUE(copy.IsWhole());
}

TEST_F(Faults, oneOfTwoServersGivesWayWhenTheFirstOneDidNotAnswer) {
    Serve(3);
    ASSERT_TRUE(Until([&] { return server.IsServing(); }));
    TestServer second(broker, Q("second"));
    Lose({"/seats/server/"}); // as of one whose window stands still
    second.list.Fill(9);
    second.Serve();
    ASSERT_TRUE(Until([&] { return second.IsServing(); }));
    broker.SetFilter({});
    ASSERT_TRUE(Until([&] { return server.IsServing() != second.IsServing(); }));
    const TestServer& one = server.IsServing() ? server : second;
    TestClient late(broker, Q("late"));
    EXPECT_TRUE(Until([&] { return late.IsReady() && late.list.Text() == one.list.Text(); }));
}

TEST_F(Faults, aBreakDuringLongWorkIsNoticedBehindIt) {
    Serve(5);
    TestClient& anna = Join(Q("anna"));
    auto ben = std::make_unique<TestClient>(broker, Q("ben"));
    const QByteArray who = ben->seat.Path();
    ASSERT_TRUE(Until([&] { return anna.seat.IsPresent(who); }));
    LongWork::Run(Q("long"), [&] {
        anna.Cut();
        ben.reset(); // which anna is not told
        anna.bus->Connect();
    });
    EXPECT_TRUE(Until([&] { return !anna.seat.IsPresent(who); }));
    EXPECT_TRUE(AreEqual(anna));
}

TEST_F(Faults, anEntryThatIsRemovedWhileItsEditIsRefusedComesBack) {
    Serve(5);
    TestClient& anna = Join(Q("anna"));
    EditAtServer(1, Q("server's"));
    TestList::Comment(*anna.list.At(1)).SetValue(Q("anna's"));
    anna.client.Flush();
    anna.list.Remove(1);
    EXPECT_TRUE(AreEqual(anna));
    EXPECT_EQ(anna.refusals, 1);
    EXPECT_EQ(TestList::Comment(*server.list.At(1)).GetValue(), Q("server's"));
}

TEST_F(Faults, manyEntriesAreAddedOnceHoweverOftenTheyAreAskedFor) {
    constexpr int Count = 600;
    Serve(5);
    TestClient& anna = Join(Q("anna"));
    int requests = 0;
    broker.SetFilter([&](const QByteArray& topic, const QByteArray&) {
        requests += topic.contains("/request/") ? 1 : 0;
        return !topic.contains("/answer/") && !topic.contains("/log/") && !topic.contains("/manifest");
    });
    anna.list.Fill(Count);
    ASSERT_TRUE(Until([&] { return requests > Count + Count / 2; }));
    broker.SetFilter({});
    EditAtServer(0, Q("behind them")); // tells that something got lost
    EXPECT_TRUE(AreEqual(anna));
    EXPECT_EQ(server.list.GetNode().ChildCount(), 5u + Count);
}

TEST_F(Faults, equalEntriesAreEachAdded) {
    Serve(5);
    TestClient& anna = Join(Q("anna"));
    int requests = 0;
    broker.SetFilter([&](const QByteArray& topic, const QByteArray&) {
        if (topic.contains("/request/"))
            return ++requests == 1;
        return !topic.contains("/answer/") && !topic.contains("/log/") && !topic.contains("/manifest");
    });
    anna.list.Add(5e6, Q("alike"));
    anna.list.Add(5e6, Q("alike"));
    ASSERT_TRUE(Until([&] { return requests >= 2 && server.list.GetNode().ChildCount() == 6; }));
    anna.Cut();
    broker.SetFilter({});
    StartAgain();
    ASSERT_TRUE(Until([&] { return server.IsServing(); }));
    anna.bus->Connect();
    ASSERT_TRUE(AreEqual(anna));
    EXPECT_EQ(server.list.GetNode().ChildCount(), 7u);
}

TEST_F(Faults, anEntryThatWasRemovedAndTakenBackStays) {
    Serve(6);
    TestClient& anna = Join(Q("anna"));
    Lose({"/answer/", "/log/", "/manifest"});
    const Node::Returning place = anna.list.Remove(2);
    ASSERT_TRUE(Until([&] { return server.list.GetNode().ChildCount() == 5; }));
    anna.list.AddAt(place, 1e6 + 2000, Q("entry 2"));
    ASSERT_TRUE(Until([&] { return server.list.GetNode().ChildCount() == 6; }));
    anna.Cut();
    for (quint64 i = 0; i < ListPublisher::LogPlaces + 10; ++i)
        EditAtServer(0, QString::number(i));
    broker.SetFilter({});
    anna.bus->Connect();
    ASSERT_TRUE(AreEqual(anna));
    EXPECT_EQ(server.list.GetNode().ChildCount(), 6u);
    EXPECT_EQ(TestList::Comment(*server.list.At(2)).GetValue(), Q("entry 2"));
}

TEST_F(Faults, aSecondClientOfASeatIsNotTakenForTheFirst) {
    Serve(3);
    LocalBus bus(broker, Q("anna"));
    Seat seat(bus, Q("north"), Q("anna"));
    for (unsigned life = 1; life <= 2; ++life) {
        const TestList list(Q("anna"));
        ListReader reader(seat, Q("Targets"));
        const ListClient client(reader, list.Shared());
        ASSERT_TRUE(Until([&] { return client.WhyNoEditing().isEmpty(); }));
        list.Add(life, Q("new"));
        EXPECT_TRUE(Until([&] { return server.list.GetNode().ChildCount() == 3 + life; })) << life;
        ASSERT_TRUE(Until([&] { return client.Pending() == 0; }));
    }
}

TEST_F(Faults, aListThatIsNotHereYetIsNotAnnounced) {
    LocalBus bus(broker, Q("server"));
    bus.Connect();
    const auto publish = [&](const char* below, const QByteArray& payload) {
        bus.Publish(ListTopic + QByteArray(below), payload, MessageBus::Keep::Retained);
    };
    TestClient anna(broker, Q("anna"), true);
    int loaded = 0;
    QObject::connect(&anna.client, &ListClient::FileLoaded, [&] { ++loaded; });
    publish("/manifest", Messages::Manifest{1, 1000, 1001, 0, 0, 0, 0, 0, Q("server/x")}.Encode());
    publish("/file", Messages::FileState{true, Q("a"), 1, 1000}.Encode());
    ASSERT_TRUE(Until([&] { return loaded == 1; }));
    // A server that started anew counts revisions anew.
    publish("/manifest", Messages::Manifest{2, 10, 11, 0, 0, 1, 0, 0, Q("server/x")}.Encode());
    publish("/file", Messages::FileState{true, Q("b"), 2, 10}.Encode());
    ASSERT_TRUE(Until([&] { return anna.reader.File() && anna.reader.File()->name == Q("b"); }));
    EXPECT_EQ(loaded, 1);
    publish("/chunk/0", Messages::Chunk{2, 10, {}}.Encode());
    EXPECT_TRUE(Until([&] { return loaded == 2; }));
}

TEST_F(Faults, entriesGetTheValuesThatAnotherLifeOfTheListGivesThem) {
    LocalBus bus(broker, Q("server"));
    bus.Connect();
    TestClient anna(broker, Q("anna"));
    const auto publish = [&](const std::vector<Shape::Field>& fields) {
        ListPublisher publisher(bus, ListTopic, Q("server/x"));
        const EntryLayout layout = EntryLayout::Of(Names::Intern(Q("Target")), fields);
        const std::unique_ptr<Node> entry = layout.MakeEntry(anna.list.GetNode(), nullptr, {});
        Wire::Writer contents;
        publisher.layouts.At(publisher.layouts.NumberOf(*entry))->Put(contents, *entry);
        publisher.rows.Put(1, 1, {1, 1, publisher.NextRevision(), 0, contents.View()});
        publisher.PublishAnew();
        publisher.StartSending(std::nullopt);
        return Until([&] {
            const Node* const shown = anna.list.GetNode().ChildCount() == 1 ? anna.list.At(0) : nullptr;
            return shown && layout.Describes(*shown);
        });
    };
    const Shape::Field number = Shape::Number<double>(Names::Intern(Q("frequency")), 0.0, 9.0, 1.0);
    EXPECT_TRUE(publish({number}));
    EXPECT_TRUE(publish({number, Shape::Text(Names::Intern(Q("comment")))}));
}

/// A seat that may edit, by its own bytes.
class Hostile : public Faults {
protected:
    Hostile() { bus.Connect(); }
    LocalBus bus{broker, Q("mallory")};
};

TEST_F(Hostile, seatsWithEndlessNamesAreNotKept) {
    const Seat& seat = server.seat;
    const QByteArray presence = Messages::Presence{Q("x"), {}, 0, 1}.Encode();
    ASSERT_TRUE(Until([&] { return server.bus->IsOnline(); }));
    bus.Publish("freqstore/north/seats/mallory/" + QByteArray(2000, 'x'), presence, MessageBus::Keep::No);
    bus.Publish("freqstore/north/seats/mallory/y", presence, MessageBus::Keep::No);
    ASSERT_TRUE(Until([&] { return seat.IsPresent("mallory/y"); }));
    EXPECT_EQ(seat.Present().size(), 2u);
}

TEST_F(Hostile, namesAreNotKept) {
    Serve(3);
    ASSERT_TRUE(Until([&] { return server.IsServing(); }));
    // A layout with names that this process does not know.
    const QByteArray known =
        EntryLayout::Of(Names::Intern(Q("Target")), {Shape::Text(Names::Intern(Q("note")))}).Encode();
    Messages::Request request;
    request.kind = Messages::Request::Kind::Add;
    request.layout = QByteArray(known).replace("Target", "Mallor").replace("note", "evil");
    ASSERT_NE(request.layout, known);
    std::optional<Messages::Answer> answer;
    const auto answers =
        bus.Subscribe(ListTopic + QByteArray("/answer/mallory/x"),
                      [&](const auto&, const auto& payload) { answer = Messages::Answer::Decode(payload); });
    request.number = 1;
    bus.Publish(ListTopic + QByteArray("/request/mallory/x"), request.Encode(), MessageBus::Keep::No);
    ASSERT_TRUE(Until([&] { return answer.has_value(); }));
    EXPECT_EQ(answer->verdict, Messages::Answer::Verdict::Refused);
    EXPECT_EQ(Names::Find(u"Mallor"), Names::Unknown);
    EXPECT_EQ(Names::Find(u"evil"), Names::Unknown);
}

} // namespace
