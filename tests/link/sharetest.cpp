#include "tests/link/linkfixture.h"
#include "tests/support/eventsmeanwhile.h"
#include "tests/support/traces.h"

#include <random>

namespace {

class Share : public ShareFixture {};

TEST_F(Share, clientMirrorsAllEntriesWithAllValuesInOrder) {
    server.list.Fill(1000);
    TestList::Comment(*server.list.At(3)).SetValue(Q("Größe ±\n\"quoted\" 東"));
    TestList::Frequency(*server.list.At(4)).SetValue(-0.125);
    TestList::Frequency(*server.list.At(5)).SetValue(2999999999.25);
    server.Serve();
    TestClient& client = Join(Q("anna"));
    EXPECT_EQ(client.list.At(0)->WholeShape(), &TestShape());
    EXPECT_EQ(client.reader.GetState(), ListReader::State::Whole);
}

TEST_F(Share, whatComesWhileALongListIsShownIsTakenAfterwardsInOrder) {
    constexpr int Count = 3000;
    Serve(Count);
    Join(Q("watcher"));
    TestClient late(broker, Q("late"));
    LocalBus other(broker, Q("other"));
    other.Connect();
    QList<QByteArray> heard, calls;
    const auto log = late.bus->Subscribe("test/log", [&](const auto&, const auto& text) { heard << text; });
    const auto calling = late.bus->Subscribe(
        "test/call", [&](const auto&, const auto& text) { calls << text; }, MessageBus::Waits::Never);
    QList<QByteArray> sent;
    size_t partlyShown = 0;
    {
        const EventsMeanwhile display([&] {
            EXPECT_TRUE(heard.isEmpty());
            const size_t shown = late.list.GetNode().ChildCount();
            if (shown == 0 || shown == Count || shown % 1000 != 0)
                return;
            ++partlyShown;
            EXPECT_EQ(calls.size(), sent.size());
            sent << QByteArray::number(quint64(shown));
            other.Publish("test/log", sent.back(), MessageBus::Keep::No);
            other.Publish("test/call", sent.back(), MessageBus::Keep::No);
            TestList::Comment(*server.list.At(7)).SetValue(QString::fromLatin1(sent.back()));
            server.server->Flush();
        });
        ASSERT_TRUE(AreEqual(late));
    }
    ASSERT_TRUE(Until([&] { return heard.size() == sent.size(); }));
    EXPECT_GE(partlyShown, 2u);
    EXPECT_EQ(heard, sent);
    EXPECT_EQ(TestList::Comment(*late.list.At(7)).GetValue().toLatin1(), sent.back());
}

TEST_F(Share, whatIsTooMuchForOneTurnIsHandledInTheNextInOrder) {
    LocalBus sending(broker, Q("sending")), reading(broker, Q("reading"));
    sending.Connect();
    reading.Connect();
    QList<qsizetype> heard, heardAtTurns;
    const auto subscription = reading.Subscribe("test/+", [&](const auto&, const QByteArray& number) {
        QElapsedTimer work;
        for (work.start(); work.elapsed() < 3;)
            ;
        heard << number.toInt();
    });
    QTimer turns;
    QObject::connect(&turns, &QTimer::timeout, [&] { heardAtTurns << heard.size(); });
    turns.start(0);
    for (int i = 0; i < 30; ++i)
        sending.Publish("test/x", QByteArray::number(i), MessageBus::Keep::No);
    ASSERT_TRUE(Until([&] { return heard.size() == 30; }));
    EXPECT_TRUE(std::is_sorted(heard.begin(), heard.end()));
    const auto isBetween = [](qsizetype count) { return count > 0 && count < 30; };
    EXPECT_TRUE(std::any_of(heardAtTurns.begin(), heardAtTurns.end(), isBetween));
}

TEST_F(Share, aListThatWasCutWhileItWentOutComesWhole) {
    Serve(5000);
    ASSERT_TRUE(Until([&] { return server.IsServing(); }));
    const QByteArray chunk = "freqstore/north/lists/Targets/chunk/20";
    const QByteArray before = broker.Retained().at(chunk);
    for (Node* const entry : server.list.GetNode().Children())
        TestList::Comment(*entry).SetValue(Q("new"));
    {
        int turnsSince = 0; // that chunk went out
        const EventsMeanwhile display([&] {
            if (broker.Retained().at(chunk) == before)
                return;
            if (++turnsSince == 1)
                broker.Stop();
            else if (turnsSince == 20)
                broker.Start();
        });
        server.server->Flush();
        EXPECT_GT(turnsSince, 20);
    }
    Join(Q("late"));
}

TEST_F(Share, changesAtTheServerReachClients) {
    Serve(300);
    TestClient& client = Join(Q("anna"));
    Node* const kept = client.list.At(7);

    TestList::Comment(*server.list.At(7)).SetValue(Q("changed"));
    server.list.GetNode().DeleteNode(server.list.At(100));
    server.list.Add(5e6, Q("new"));
    ASSERT_TRUE(AreEqual(client));
    EXPECT_EQ(client.list.At(7), kept);
    EXPECT_EQ(client.list.At(299)->GetParentNode(), &client.list.GetNode());
}

TEST_F(Share, anEntryThatTheServerTakesBackComesToItsOldPlace) {
    Serve(10);
    TestClient& client = Join(Q("anna"));
    const Node::Returning place = server.list.Remove(4);
    ASSERT_TRUE(AreEqual(client));

    TestClient late(broker, Q("later")); // has never seen it
    ASSERT_TRUE(AreEqual(late));
    const Messages::EntryId before = server.server->Publisher().rows.RemovedId(place.serial);
    server.list.AddAt(place, 0, Q("is back"));
    ASSERT_TRUE(AreEqual(client));
    ASSERT_TRUE(AreEqual(late));
    EXPECT_EQ(late.client.IdOf(*late.list.At(4)), before);
    EXPECT_NE(before, 0u);
}

TEST_F(Share, editsOfAClientReachTheServerAndOtherClients) {
    Serve(50);
    TestClient& anna = Join(Q("anna"));
    TestClient& ben = Join(Q("ben"));

    TestList::Comment(*anna.list.At(3)).SetValue(Q("by anna"));
    ben.list.Add(77e6, Q("by ben"));
    anna.list.GetNode().DeleteNode(anna.list.At(20));
    ASSERT_TRUE(AreEqual(anna));
    ASSERT_TRUE(AreEqual(ben));
    EXPECT_EQ(TestList::Comment(*server.list.At(3)).GetValue(), Q("by anna"));
    EXPECT_EQ(server.list.GetNode().ChildCount(), 50u);
    EXPECT_EQ(TestList::Comment(*server.list.At(49)).GetValue(), Q("by ben"));
    EXPECT_EQ(anna.refused + ben.refused, QStringList());
}

TEST_F(Share, quickEditsOfOneEntryEndAsTheLastOne) {
    Serve(5);
    TestClient& anna = Join(Q("anna"));
    Node* const added = anna.list.Add(1e6, Q("a"));
    for (int i = 0; i < 20; ++i) {
        TestList::Comment(*anna.list.At(2)).SetValue(QString::number(i));
        TestList::Comment(*added).SetValue(QString::number(i));
        anna.client.Flush();
        QCoreApplication::processEvents();
    }
    ASSERT_TRUE(AreEqual(anna));
    EXPECT_EQ(TestList::Comment(*server.list.At(2)).GetValue(), Q("19"));
    EXPECT_EQ(TestList::Comment(*server.list.At(5)).GetValue(), Q("19"));
    EXPECT_EQ(anna.refused, QStringList());
}

TEST_F(Share, theSecondOfTwoEditsIsRefusedWithThePresentState) {
    Serve(5);
    TestClient& anna = Join(Q("anna"));
    TestClient& ben = Join(Q("ben"));
    TestList::Comment(*anna.list.At(1)).SetValue(Q("anna's"));
    TestList::Comment(*ben.list.At(1)).SetValue(Q("ben's"));
    anna.client.Flush();
    ben.client.Flush();
    ASSERT_TRUE(AreEqual(anna));
    ASSERT_TRUE(AreEqual(ben));
    EXPECT_EQ(TestList::Comment(*ben.list.At(1)).GetValue(), Q("anna's"));
    EXPECT_EQ(ben.refused,
              QStringList({Q("the entry has been changed meanwhile"), Q("comment: anna's, not ben's")}));
}

TEST_F(Share, whoMayOnlyReadGetsHisEditsBackWithTheReason) {
    server.list.Fill(5);
    LetOnlyRead(broker, Q("reader"));
    server.Serve();
    TestClient reader(broker, Q("reader"));
    ASSERT_TRUE(Until([&] { return reader.client.WhyNoEditing().contains(Q("only read")); }));
    const QStringList before = server.list.Text();
    TestList::Comment(*reader.list.At(1)).SetValue(Q("no"));
    reader.list.GetNode().DeleteNode(reader.list.At(3));
    reader.list.Add(1, Q("no"));
    ASSERT_TRUE(Until([&] { return reader.refusals == 3; }));
    EXPECT_EQ(reader.list.Text(), before);
    EXPECT_EQ(server.list.Text(), before);
}

TEST_F(Share, whoseRequestsGetNoAnswerIsToldUntilTheyDo) {
    Serve(5);
    TestClient& anna = Join(Q("anna"));
    const QStringList before = server.list.Text();
    Lose({"/request/"});
    TestList::Comment(*anna.list.At(1)).SetValue(Q("no"));
    ASSERT_TRUE(Until([&] { return anna.refusals == 1; }));
    EXPECT_TRUE(anna.client.WhyNoEditing().contains(Q("no answer")));
    EXPECT_EQ(anna.list.Text(), before);
    broker.SetFilter({});
    ASSERT_TRUE(AreEqual(anna));
}

/// What is not to be read, as a part of a filter.
class ShareWithoutRights : public Share, public testing::WithParamInterface<const char*> {};

TEST_P(ShareWithoutRights, tellsWhoMayNotRead) {
    server.list.Fill(5);
    broker.Stop();
    broker.SetReadRights([](const QString&, const QByteArray& topic) { return !topic.contains(GetParam()); });
    broker.Start();
    server.Serve();
    TestClient anna(broker, Q("anna"));
    ASSERT_TRUE(Until([&] { return server.server->GetState() == ListServer::State::Refused; }));
    EXPECT_EQ(server.server->Reason(), Q("the broker does not let this user read what a server needs"));
    ASSERT_TRUE(Until([&] { return anna.reader.GetState() == ListReader::State::Refused; }));
    EXPECT_EQ(anna.client.WhyNoEditing(), Q("the broker does not let this user read the list"));
    broker.Stop(); // rights are given at the broker, which is asked anew when it is back
    broker.SetReadRights({});
    broker.Start();
    EXPECT_TRUE(Until([&] { return anna.reader.GetState() == ListReader::State::Waiting; }));
}

INSTANTIATE_TEST_SUITE_P(Topics, ShareWithoutRights, testing::Values("/lists/", "/seats/"));

TEST_F(Share, whoHearsNothingIsToldThatHeMayHaveNoRight) {
    broker.Stop();
    broker.SetFilter([](const QByteArray&, const QByteArray&) { return false; });
    broker.Start();
    server.Serve();
    TestClient anna(broker, Q("anna"));
    ASSERT_TRUE(Until([&] { return anna.reader.StateText().contains(Q("passes nothing")); }));
    EXPECT_TRUE(Until([&] { return server.server->Reason().contains(Q("passes nothing")); }));
    broker.SetFilter({});
    anna.seat.CallAll();
    ASSERT_TRUE(Until([&] { return anna.reader.StateText().contains(Q("may not read")); }));
}

TEST_F(Share, removedEntriesThatComeBackAtAClientComeBackForAll) {
    Serve(6);
    TestClient& anna = Join(Q("anna"));
    const Messages::EntryId id = anna.client.IdOf(*anna.list.At(2));
    const QStringList before = server.list.Text();
    const Node::Returning place = anna.list.Remove(2);
    ASSERT_TRUE(AreEqual(anna));
    Node* const again = anna.list.AddAt(place, 1e6 + 2000, Q("entry 2"));
    ASSERT_TRUE(AreEqual(anna));
    EXPECT_EQ(server.list.Text(), before);
    EXPECT_EQ(anna.client.IdOf(*anna.list.At(2)), id);
    EXPECT_EQ(anna.client.EntryOf(id), again);
}

TEST_F(Share, aListThatIsReadAnewKeepsTheIdentitiesOfEqualEntries) {
    Serve(100);
    TestClient& client = Join(Q("anna"));
    Node* const kept = client.list.At(5);
    const Messages::EntryId id = client.client.IdOf(*kept);
    server.list.GetNode().DeleteChildren();
    server.list.Fill(99);
    ASSERT_TRUE(AreEqual(client));
    EXPECT_EQ(client.client.IdOf(*client.list.At(5)), id);
}

/// A list of the server's, by comments, that replaces one of "0" to "4" while a client's edit of "2" is under
/// way.
struct Reload {
    const char* comments;
    const char* after; ///< as far as anybody may have it
};
class ShareWithReloads : public Share, public testing::WithParamInterface<Reload> {};

TEST_P(ShareWithReloads, anEditUnderWayHitsItsEntryOrNone) {
    const auto fill = [this](const QString& comments) {
        for (const QChar comment : comments)
            server.list.Add(1e6, comment);
    };
    fill(Q("01234"));
    server.Serve();
    TestClient& anna = Join(Q("anna"));
    TestList::Comment(*anna.list.At(2)).SetValue(Q("E"));
    anna.client.Flush();
    server.list.GetNode().DeleteChildren();
    fill(Q(GetParam().comments));
    ASSERT_TRUE(AreEqual(anna));
    QString after;
    for (Node* entry : server.list.GetNode().Children())
        after += TestList::Comment(*entry).GetValue();
    EXPECT_EQ(after, Q(GetParam().after));
    EXPECT_EQ(anna.refusals, after.contains(QLatin1Char('E')) ? 0 : 1);
}

INSTANTIATE_TEST_SUITE_P(Lists, ShareWithReloads,
                         testing::Values(Reload{"01234", "01E34"}, Reload{"20134", "E0134"},
                                         Reload{"01x34", "01x34"}, Reload{"0134", "0134"}, Reload{"", ""},
                                         Reload{"22", "E2"}));

TEST_F(Share, aListThatIsReplacedByALongOneIsShownOnlyWhole) {
    Serve(20);
    TestClient& client = Join(Q("anna"));
    std::set<size_t> counts;
    QObject::connect(&client.reader, &ListReader::RowsChanged,
                     [&](const ListCopy::Changed&) { counts.insert(client.reader.Copy().GetRows().size()); });
    server.list.GetNode().DeleteChildren();
    server.list.Fill(9000);
    ASSERT_TRUE(AreEqual(client));
    EXPECT_EQ(counts, std::set<size_t>{9000});
}

/// What a reader lacks, as a part of its topic.
class ShareWithLosses : public Share, public testing::WithParamInterface<const char*> {};

TEST_P(ShareWithLosses, whatIsLostOnceIsAskedForAgain) {
    Serve(2000);
    ASSERT_TRUE(Until([&] { return server.IsServing(); }));
    for (int i = 0; i < 5; ++i) { // so that there is a log
        TestList::Comment(*server.list.At(1)).SetValue(QString::number(i));
        server.server->Flush();
    }
    std::set<QByteArray> lost;
    broker.SetFilter([&](const QByteArray& topic, const QByteArray&) {
        return !topic.contains(GetParam()) || !lost.insert(topic).second;
    });
    TestClient client(broker, Q("anna"));
    ASSERT_TRUE(Until([&] { return !lost.empty(); }));
    EXPECT_NE(client.reader.GetState(), ListReader::State::Whole);
    EXPECT_EQ(client.list.GetNode().ChildCount(), 0u);
    EXPECT_TRUE(AreEqual(client));
}

INSTANTIATE_TEST_SUITE_P(Parts, ShareWithLosses,
                         testing::Values("/chunk/", "/chunk/3", "/layout/", "/log/", "/manifest"));

TEST_F(Share, clientsKeepTheLastStateMarkedAsOldUntilAllIsBack) {
    Serve(200);
    TestClient& client = Join(Q("anna"));
    const QStringList before = client.list.Text();
    broker.Stop();
    TestList::Comment(*server.list.At(1)).SetValue(Q("meanwhile"));
    server.list.Add(1, Q("meanwhile"));
    EXPECT_TRUE(client.reader.StateText().contains(Q("is old")));
    EXPECT_FALSE(client.client.WhyNoEditing().isEmpty());
    server.server->Flush();
    QCoreApplication::processEvents();
    EXPECT_EQ(client.list.Text(), before);
    broker.Start();
    ASSERT_TRUE(AreEqual(client));

    broker.Stop();
    broker.Forget();
    TestList::Comment(*server.list.At(2)).SetValue(Q("again"));
    broker.Start();
    ASSERT_TRUE(AreEqual(client));
    TestClient late(broker, Q("late"));
    EXPECT_TRUE(AreEqual(late));
}

TEST_F(Share, aBrokerThatGoesBackToAnOldStateGetsWhatItLacks) {
    Serve(700);
    ASSERT_TRUE(Until([&] { return server.IsServing(); }));
    const auto old = broker.Retained();
    for (int i = 0; i < 600; ++i) {
        TestList::Comment(*server.list.At(static_cast<size_t>(i))).SetValue(Q("new"));
        server.server->Flush();
    }
    broker.Stop();
    broker.SetRetained(old);
    broker.Start();
    TestClient late(broker, Q("late"));
    EXPECT_TRUE(AreEqual(late));
}

TEST_F(Share, theSecondServerIsRefusedAndTakesOverWhenTheFirstHasGone) {
    Serve(3);
    ASSERT_TRUE(Until([&] { return server.IsServing(); }));
    {
        TestServer second(broker, Q("second"));
        second.list.Fill(9);
        second.Serve();
        ASSERT_TRUE(Until([&] { return second.server->GetState() == ListServer::State::Refused; }));
        EXPECT_TRUE(second.server->Reason().contains(Q("server serves this list already")));
    }
    TestClient& client = Join(Q("anna"));
    Lose({"/claim"});
    server.Cut(); // its claim stays
    EXPECT_TRUE(Until([&] { return client.reader.GetState() == ListReader::State::ServerGone; }));
    EXPECT_TRUE(client.reader.StateText().contains(Q("is old")));
    broker.SetFilter({});
    TestServer third(broker, Q("third"));
    third.list.Fill(4);
    third.Serve();
    ASSERT_TRUE(Until([&] { return third.IsServing(); }));
    EXPECT_TRUE(Until([&] { return client.list.Text() == third.list.Text(); }));
}

TEST_F(Share, oneOfTwoServersThatStartAtOnceServes) {
    TestServer second(broker, Q("second"));
    server.list.Fill(3);
    second.list.Fill(4);
    server.Serve();
    second.Serve();
    const auto is = [](const TestServer& one, ListServer::State state) {
        return one.server->GetState() == state;
    };
    ASSERT_TRUE(Until([&] {
        return (server.IsServing() && is(second, ListServer::State::Refused)) ||
               (second.IsServing() && is(server, ListServer::State::Refused));
    }));
    ASSERT_TRUE(UntilAllIsHere(server.seat) && UntilAllIsHere(second.seat));
    EXPECT_NE(server.IsServing(), second.IsServing());
}

TEST_F(Share, garbageAndForeignVersionsAreIgnoredAndToldOnce) {
    const Traces traces;
    Serve(300);
    TestClient& client = Join(Q("anna"));
    LocalBus hostile(broker, Q("mallory"));
    hostile.Connect();
    const QByteArray list = "freqstore/north/lists/Targets";
    std::mt19937 random(7);
    for (int i = 0; i < 300; ++i) {
        const char* const parts[] = {"/manifest", "/chunk/1", "/log/3",
                                     "/layout/0", "/file",    "/request/mallory/x",
                                     "/claim",    "/chunk/x", "/log/99999999999999999999"};
        QByteArray bytes(static_cast<qsizetype>(random() % 200), '\x01');
        for (char& byte : bytes)
            byte = static_cast<char>(random());
        if (bytes.size() > 3 && i % 2 == 0) // a good head
            bytes.replace(0, 3, QByteArray("\x01\x00", 2) + static_cast<char>(1 + random() % 8));
        hostile.Publish(list + parts[random() % std::size(parts)], bytes, MessageBus::Keep::No);
    }
    hostile.Publish("freqstore/north/seats/mallory/x", "\xff\xff", MessageBus::Keep::No);
    ASSERT_TRUE(UntilAllIsHere(server.seat));
    TestList::Comment(*server.list.At(1)).SetValue(Q("after"));
    EXPECT_TRUE(AreEqual(client));
    EXPECT_FALSE(traces.problems.isEmpty());
    EXPECT_LT(traces.problems.size(), 15);
}

/// Whatever numbers stand in messages, memory is taken for what has come.
TEST_F(Share, messagesWithWrongCountsAreNoList) {
    LocalBus hostile(broker, Q("mallory"));
    hostile.Connect();
    TestClient anna(broker, Q("anna"));
    const QByteArray list = "freqstore/north/lists/Targets";
    Messages::Manifest manifest{1, 5, 6, quint64(1) << 62, 0, 0, 0, 0, Q("mallory/x")};
    hostile.Publish(list + "/manifest", manifest.Encode(), MessageBus::Keep::Retained);
    ASSERT_TRUE(Until([&] { return anna.reader.Copy().Newest().has_value(); }));
    EXPECT_FALSE(anna.reader.Copy().IsWhole());
    manifest.revision = 7;
    manifest.chunks = 1;
    hostile.Publish(list + "/manifest", manifest.Encode(), MessageBus::Keep::Retained);
    for (const quint64 count : {quint64(1) << 62, quint64(100), quint64(1)})
        hostile.Publish(list + "/chunk/0", Messages::Chunk::EncodeRows(1, 7, count, QByteArray(1000, '\0')),
                        MessageBus::Keep::Retained);
    hostile.Publish(list + "/chunk/0", Messages::Chunk{1, 7, {}}.Encode(), MessageBus::Keep::Retained);
    EXPECT_TRUE(Until([&] { return anna.reader.Copy().IsInconsistent(); }));
    EXPECT_EQ(anna.list.GetNode().ChildCount(), 0u);
}

TEST_F(Share, presenceOfMoreSeatsThanThereCanBeIsNotKept) {
    LocalBus hostile(broker, Q("mallory"));
    hostile.Connect();
    const QByteArray presence = Messages::Presence{Q("x"), {}, 0, 1}.Encode();
    TestClient anna(broker, Q("anna"));
    for (int i = 0; i < 12000; ++i)
        hostile.Publish("freqstore/north/seats/mallory/" + QByteArray::number(i), presence,
                        MessageBus::Keep::No);
    ASSERT_TRUE(UntilAllIsHere(anna.seat));
    EXPECT_EQ(anna.seat.Present().size(), 10000u);
}

TEST_F(Share, aServerOfAnotherMajorVersionIsRefusedWithWords) {
    LocalBus other(broker, Q("other"));
    other.Connect();
    QByteArray manifest = Messages::Manifest{}.Encode();
    manifest[0] = 9;
    other.Publish("freqstore/north/lists/Targets/manifest", manifest, MessageBus::Keep::Retained);
    TestClient client(broker, Q("anna"));
    EXPECT_TRUE(Until([&] { return client.reader.GetState() == ListReader::State::OtherVersion; }));
    EXPECT_TRUE(client.client.WhyNoEditing().contains(Q("another version")));
}

TEST_F(Share, seatsKnowWhoIsThereAndWhatIsEdited) {
    Serve(3);
    TestClient& anna = Join(Q("anna/+#%"));
    TestClient& ben = Join(Q("ben"));
    anna.client.SetEditing(anna.list.At(1));
    EXPECT_TRUE(Until([&] { return ben.client.EditorsOf(*ben.list.At(1)) == QStringList(Q("anna/+#%")); }));
    EXPECT_EQ(ben.client.EditorsOf(*ben.list.At(0)), QStringList());
    EXPECT_EQ(anna.client.EditorsOf(*anna.list.At(1)), QStringList());
    anna.Cut();
    EXPECT_TRUE(Until([&] { return ben.client.EditorsOf(*ben.list.At(1)).isEmpty(); }));
    EXPECT_EQ(ben.seat.Present().size(), 2u);
}

} // namespace
