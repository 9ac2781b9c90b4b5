// Against a mosquitto with the documented configuration.

#include "host/report/rgexception.h"
#include "link/topics.h"
#include "tests/link/linkfixture.h"
#include "tests/link/realbroker.h"
#include "tests/support/traces.h"

#include <random>

namespace {

std::unique_ptr<MqttBus> busOf(const RealBroker& broker, const QString& user, int port = 0) {
    return std::make_unique<MqttBus>(broker.AddressOf(user, port));
}

TEST(Broker, lateComersGetTwentyThousandEntriesAndEditsGoBothWays) {
    const RealBroker broker({"server", "anna", "reader"});
    TestServer server(busOf(broker, Q("server")), Q("server"));
    server.list.Fill(20000);
    server.Serve();
    ASSERT_TRUE(Until([&] { return server.IsServing(); })) << server.server->Reason().toStdString();
    TestClient anna(busOf(broker, Q("anna")), Q("anna"));
    ASSERT_TRUE(Until([&] { return anna.IsReady(); })) << anna.client.WhyNoEditing().toStdString();
    EXPECT_EQ(anna.list.Text(), server.list.Text());

    TestList::Comment(*anna.list.At(77)).SetValue(Q("by anna"));
    ASSERT_TRUE(Until([&] { return TestList::Comment(*server.list.At(77)).GetValue() == Q("by anna"); }));
    TestClient reader(busOf(broker, Q("reader")), Q("reader"));
    EXPECT_TRUE(Until([&] { return reader.client.WhyNoEditing().contains(Q("only read")); }));
    EXPECT_EQ(reader.list.Text(), server.list.Text());
}

/// A user who may edit, and nothing else, tries what he can.
TEST(Broker, aHostileUserChangesNothingThatHeMayNot) {
    const RealBroker broker({"server", "anna", "reader"});
    TestServer server(busOf(broker, Q("server")), Q("server"));
    server.list.Fill(300);
    server.Serve();
    TestClient reader(busOf(broker, Q("reader")), Q("reader"));
    ASSERT_TRUE(Until([&] { return reader.reader.GetState() == ListReader::State::Whole; }));
    const QStringList before = server.list.Text();

    auto hostile = busOf(broker, Q("anna"));
    std::set<QByteArray> refused;
    QObject::connect(hostile.get(), &MessageBus::Refused, [&](const QByteArray& t) { refused.insert(t); });
    hostile->Connect();
    ASSERT_TRUE(Until([&] { return hostile->IsOnline(); }));
    const QByteArray list = "freqstore/north/lists/Targets";
    const std::set<QByteArray> forbidden{list + "/manifest",
                                         list + "/chunk/0",
                                         list + "/layout/0",
                                         list + "/log/1",
                                         list + "/claim",
                                         list + "/file",
                                         list + "/request/reader/x",
                                         list + "/answer/reader/x",
                                         "freqstore/north/seats/reader/x"};
    for (const QByteArray& topic : forbidden)
        hostile->Publish(topic, Messages::Manifest{}.Encode(), MessageBus::Keep::Retained);
    EXPECT_TRUE(Until([&] { return refused == forbidden; }));
    const QByteArray own = list + "/request/anna/x";
    hostile->Publish(own, QByteArray(16 * 1024 * 1024, '\x01'), MessageBus::Keep::No);
    hostile->Publish("freqstore/north/seats/anna/x", QByteArray(16 * 1024 * 1024, '\x01'),
                     MessageBus::Keep::No);
    const Traces traces;
    hostile->Publish(own, QByteArray(100 * 1024 * 1024, '\x01'), MessageBus::Keep::No);
    EXPECT_EQ(traces.problems.filter(Q("larger than the broker takes")).size(), 1);
    hostile = nullptr;

    TestList::Comment(*server.list.At(1)).SetValue(Q("after"));
    ASSERT_TRUE(Until([&] { return TestList::Comment(*reader.list.At(1)).GetValue() == Q("after"); }));
    TestList::Comment(*server.list.At(1)).SetValue(Q("entry 1"));
    EXPECT_TRUE(Until([&] { return reader.list.Text() == before; }));
    EXPECT_EQ(reader.seat.Present().size(), 2u);
}

TEST(Broker, whatIsKeptWhereThingsAreSaidOnceDoesNotCome) {
    const RealBroker broker({"anna", "reader"});
    const auto hostile = busOf(broker, Q("anna"));
    hostile->Connect();
    MqttBus reader(broker.AddressOf(Q("reader")));
    std::set<QByteArray> heard;
    const auto all = reader.Subscribe("freqstore/north/seats/+/+",
                                      [&](const auto& topic, const auto&) { heard.insert(topic); });
    reader.Connect();
    ASSERT_TRUE(Until([&] { return hostile->IsOnline() && reader.IsOnline(); }));
    const QByteArray ghost = "freqstore/north/seats/anna/x";
    hostile->Publish(ghost, Messages::Presence{Q("ghost"), {}, 0, 1}.Encode(), MessageBus::Keep::Retained);
    ASSERT_TRUE(Until([&] { return heard.count(ghost) > 0; }));
    const auto bus = busOf(broker, Q("reader"));
    const Seat seat(*bus, Q("north"), Q("late"));
    ASSERT_TRUE(Until([&] { return seat.IsPresent(seat.Path()); })); // which came behind it
    EXPECT_FALSE(seat.IsPresent("anna/x"));
}

TEST(Broker, aChangeOfMoreBytesThanTheBrokerTakesAtOnceArrives) {
    const RealBroker broker({"server", "anna"});
    TestServer server(busOf(broker, Q("server")), Q("server"));
    server.list.Fill(200);
    server.Serve();
    TestClient anna(busOf(broker, Q("anna")), Q("anna"));
    ASSERT_TRUE(Until([&] { return anna.IsReady(); }));
    for (Node* entry : server.list.GetNode().Children())
        TestList::Comment(*entry).SetValue(QString(200000, QChar(u'x')));
    EXPECT_TRUE(Until([&] { return anna.list.Text() == server.list.Text(); }));
}

TEST(Broker, whoComesInHearsOfNoFault) {
    const RealBroker broker({"anna"});
    for (int i = 0; i < 10; ++i) {
        const auto bus = busOf(broker, Q("anna"));
        QStringList reasons;
        QObject::connect(bus.get(), &MessageBus::StateChanged, [&] { reasons << bus->Reason(); });
        Seat seat(*bus, Q("north"), Q("anna"));
        const ListReader reader(seat, Q("Targets"));
        ASSERT_TRUE(Until([&] { return bus->IsOnline(); }));
        EXPECT_EQ(reasons.join(QString()), QString());
    }
}

TEST(Broker, usersWithoutTheRightAreToldWhy) {
    const RealBroker broker({"server", "anna"});
    TestServer anna(busOf(broker, Q("anna")), Q("anna"));
    anna.list.Fill(3);
    anna.Serve();
    EXPECT_TRUE(Until([&] { return anna.server->GetState() == ListServer::State::Refused; }));
    EXPECT_EQ(anna.server->Reason(), Q("the broker does not let this user serve the list"));

    const FaultProxy proxy(broker.Port());
    BrokerAddress wrong = broker.AddressOf(Q("anna"), proxy.Port());
    wrong.password = Q("guess");
    MqttBus bus(wrong);
    std::set<QString> reasons;
    QObject::connect(&bus, &MessageBus::StateChanged, [&] { reasons.insert(bus.Reason()); });
    bus.Connect();
    const std::set<QString> refusal{QString(), Q("the broker refuses the user or the password")};
    EXPECT_TRUE(Until([&] { return reasons == refusal; }));
    const int before = proxy.Connections();
    EXPECT_TRUE(Until([&] { return proxy.Connections() >= before + 2; })); // it is tried again
    EXPECT_EQ(reasons, refusal);
    BrokerAddress stranger = broker.AddressOf(Q("anna"));
    stranger.caFile.clear();
    MqttBus distrusting(stranger);
    distrusting.Connect();
    EXPECT_TRUE(Until([&] { return distrusting.Reason().contains(Q("certificate verify failed")); }))
        << distrusting.Reason().toStdString();
    EXPECT_FALSE(distrusting.IsOnline());
}

TEST(Broker, aBrokerThatIsKilledComesBackByItself) {
    RealBroker broker({"server", "anna"});
    TestServer server(busOf(broker, Q("server")), Q("server"));
    server.list.Fill(500);
    server.Serve();
    TestClient anna(busOf(broker, Q("anna")), Q("anna"));
    ASSERT_TRUE(Until([&] { return anna.IsReady(); }));
    QStringList states;
    QObject::connect(&anna.reader, &ListReader::StateChanged, [&] { states << anna.reader.StateText(); });
    broker.Kill();
    ASSERT_TRUE(Until([&] {
        return anna.reader.StateText().contains(Q("Connection refused; what is shown is old"));
    })) << anna.reader.StateText().toStdString();
    EXPECT_TRUE(states.filter(Q(".;")).isEmpty()) << states.join('\n').toStdString();
    TestList::Comment(*server.list.At(7)).SetValue(Q("meanwhile"));
    EXPECT_EQ(anna.list.GetNode().ChildCount(), 500u);
    broker.Start();
    ASSERT_TRUE(Until([&] { return anna.IsReady() && anna.list.Text() == server.list.Text(); }))
        << anna.reader.StateText().toStdString();
    EXPECT_EQ(TestList::Comment(*anna.list.At(7)).GetValue(), Q("meanwhile"));
}

/// A broker that came back with an older state would have the end of what was sent without its beginning.
TEST(Broker, whatABrokenConnectionHadUnderWayIsNotSentAgain) {
    RealBroker broker({"server", "anna"});
    FaultProxy proxy(broker.Port());
    MqttBus sender(broker.AddressOf(Q("server"), proxy.Port()));
    MqttBus reader(broker.AddressOf(Q("anna")));
    const QByteArray topic = Topics::List(Topics::Site(Q("north")), Q("Targets")) + "/manifest";
    QList<QByteArray> heard;
    const auto hearing = reader.Subscribe(topic, [&](const auto&, const auto& payload) { heard << payload; });
    reader.Connect();
    sender.Connect();
    ASSERT_TRUE(Until([&] { return reader.IsOnline() && sender.IsOnline(); }));
    sender.Publish(topic, "first", MessageBus::Keep::Retained);
    ASSERT_TRUE(Until([&] { return heard.contains("first"); }));
    proxy.HalveNext();
    sender.Publish(topic, "lost", MessageBus::Keep::Retained);
    ASSERT_TRUE(Until([&] { return !sender.IsOnline(); }));
    ASSERT_TRUE(Until([&] { return sender.IsOnline(); }));
    sender.Publish(topic, "last", MessageBus::Keep::Retained);
    ASSERT_TRUE(Until([&] { return heard.contains("last"); }));
    EXPECT_FALSE(heard.contains("lost"));
}

/// freqstore-cli as a process of its own.
class CliProcess : public QProcess {
public:
    CliProcess(const RealBroker& broker, const QString& user, const QStringList& words) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(Q("FREQSTORE_SHARE_PASSWORD"), RealBroker::PasswordOf(user));
        setProcessEnvironment(environment);
        QStringList arguments = words;
        const QString at = user.isEmpty() ? QString() : user + QLatin1Char('@');
        arguments.insert(1, Q("mqtts://") + at + QStringLiteral("127.0.0.1:%1/north").arg(broker.Port()));
        start(Q(CLI_PROGRAM), arguments + QStringList{"--ca-file", broker.CaFile()});
    }
    ~CliProcess() override {
        kill();
        waitForFinished();
    }
    /// Standard output from the start.
    const QByteArray& Out() {
        setReadChannel(StandardOutput);
        m_out += readAll();
        return m_out;
    }
    const QByteArray& Err() { return m_err += readAllStandardError(); }

private:
    QByteArray m_out, m_err;
};

class Programs : public testing::Test, protected TestFolder {};

TEST_F(Programs, shareAListKeepWhatWasAcceptedAndPrintEachChange) {
    RealBroker broker({"server", "anna", "reader"});
    ASSERT_TRUE(QFile::copy(Q(SAMPLES_DIR "/targets.ltl"), Path("list.ltl")));
    QFile(Path("list.ltl")).setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    auto share = std::make_unique<CliProcess>(broker, Q("server"), QStringList{"share", Path("list.ltl")});
    CliProcess watch(broker, Q("reader"), {"watch"});

    const TestList list(Q("anna"));
    MqttBus bus(broker.AddressOf(Q("anna")));
    Seat seat(bus, Q("north"), Q("anna"));
    ListReader reader(seat, Q("target"));
    const ListClient client(reader, {&list.GetNode(), Q("target"), Q("Target"), nullptr, false});
    ASSERT_TRUE(Until([&] { return client.WhyNoEditing().isEmpty(); })) << share->Err().toStdString();
    const auto count = static_cast<int>(list.GetNode().ChildCount());
    ASSERT_GT(count, 10);
    EXPECT_TRUE(Until([&] { return watch.Out().count('\n') == count; })) << watch.Err().toStdString();
    EXPECT_EQ(watch.Out().count("\"event\":\"entry\""), count);

    list.At(3)->GetValue(Q("comment"))->SetStringValue(Q("edited by \"anna\""));
    EXPECT_TRUE(Until([&] { return watch.Out().contains("\"comment\":\"edited by \\\"anna\\\"\""); }));
    EXPECT_EQ(watch.Out().count("\"event\":\"changed\""), 1);
    ASSERT_TRUE(Until([&] { return client.Pending() == 0; }));
    CliProcess second(broker, Q("server"), {"share", Path("list.ltl"), "--journal", Path("other")});
    EXPECT_TRUE(second.waitForFinished() && second.exitCode() == 2);
    EXPECT_TRUE(second.Err().contains("serves this list already")) << second.Err().toStdString();

    share = nullptr; // killed: the journal has what the file may not have yet
    share = std::make_unique<CliProcess>(broker, Q("server"), QStringList{"share", Path("list.ltl")});
    EXPECT_TRUE(Until([&] { return client.WhyNoEditing().isEmpty() && client.Pending() == 0; }));
    EXPECT_EQ(list.At(3)->GetValue(Q("comment"))->GetStringValue(), Q("edited by \"anna\""));
    ASSERT_TRUE(Until([&] { return share->Err().contains("serves"); }));
    share->terminate();
    EXPECT_TRUE(share->waitForFinished());
    EXPECT_EQ(share->exitCode(), 0) << share->Err().toStdString();
    const QByteArray saved = Read("list.ltl");
    EXPECT_TRUE(QString::fromUtf16(reinterpret_cast<const char16_t*>(saved.constData()), saved.size() / 2)
                    .contains(Q("edited by")));
}

/// A list of each kind, and what a user without rights is told.
class Kinds : public Programs, public testing::WithParamInterface<std::pair<const char*, const char*>> {};

TEST_P(Kinds, areSharedWithAllThatTheirEntriesHave) {
    const auto [kind, sample] = GetParam();
    const QString file = QStringLiteral(SAMPLES_DIR "/%1").arg(Q(sample));
    const RealBroker broker({"server", "reader"});
    CliProcess share(broker, Q("server"), {"share", file, "--list", kind, "--journal", Path("journal")});
    CliProcess watch(broker, Q("reader"), {"watch", "--list", kind, "--once"});
    ASSERT_TRUE(watch.waitForFinished()) << share.Err().toStdString();
    EXPECT_EQ(watch.exitCode(), 0) << watch.Err().toStdString();
    const QList<QByteArray> shown = watch.Out().split('\n');
    QProcess show;
    show.start(Q(CLI_PROGRAM), {"show", file, "--list", kind, "--format", "jsonl"});
    ASSERT_TRUE(show.waitForFinished());
    const QList<QByteArray> expected = show.readAllStandardOutput().split('\n');
    ASSERT_GT(expected.size(), 2);
    ASSERT_EQ(shown.size(), expected.size());
    for (qsizetype i = 0; i + 1 < shown.size(); ++i) {
        const QByteArray entry = '{' + shown[i].mid(shown[i].indexOf(',', shown[i].indexOf("\"id\"")) + 1);
        EXPECT_EQ(entry.toStdString(), expected[i].toStdString());
    }
}

using Kind = std::pair<const char*, const char*>;
INSTANTIATE_TEST_SUITE_P(Lists, Kinds,
                         testing::Values(Kind{"target", "targets.ltl"}, Kind{"noi", "interest.noi"},
                                         Kind{"memory-hf", "memory-hf.xml"},
                                         Kind{"memory-vuhf", "memory-vuhf.xml"},
                                         Kind{"results", "results.xml"},
                                         Kind{"detections", "interchange/detections.jsonl"},
                                         Kind{"detections-hf", "interchange/detections.jsonl"},
                                         Kind{"detections-vuhf", "interchange/detections.jsonl"}));

TEST_F(Programs, endWithTheReasonWhereTheBrokerRefusesTheList) {
    const RealBroker broker({}, RealBroker::Rights::NoListsForAnybody);
    CliProcess watch(broker, QString(), {"watch"});
    ASSERT_TRUE(watch.waitForFinished());
    EXPECT_EQ(watch.exitCode(), 2);
    EXPECT_TRUE(watch.Err().contains("does not let this user read the list")) << watch.Err().toStdString();
    CliProcess share(broker, QString(),
                     {"share", Q(SAMPLES_DIR "/targets.ltl"), "--journal", Path("journal")});
    ASSERT_TRUE(share.waitForFinished());
    EXPECT_EQ(share.exitCode(), 2);
    EXPECT_TRUE(share.Err().contains("does not let this user read")) << share.Err().toStdString();
}

TEST_F(Programs, tellWhoGetsNothingThatHeMayHaveNoRight) {
    const RealBroker broker({"server", "ben"}); // ben is not on the access list
    CliProcess share(broker, Q("server"),
                     {"share", Q(SAMPLES_DIR "/targets.ltl"), "--journal", Path("journal")});
    CliProcess watch(broker, Q("ben"), {"watch"});
    EXPECT_TRUE(Until([&] { return watch.Err().contains("this user may not read it"); }))
        << watch.Err().toStdString();
    EXPECT_TRUE(watch.Out().isEmpty());
}

/// What five clients did, without a link: each has entries of its own, known by their frequencies.
struct Model {
    std::map<double, QString> entries;
    std::map<QString, std::pair<double, QString>> before; ///< of each comment that was written

    void Write(double frequency, const QString& comment) {
        before[comment] = {frequency, entries[frequency]};
        entries[frequency] = comment;
    }
    QStringList Text() const {
        QStringList lines;
        for (const auto& [frequency, comment] : entries)
            lines << QStringLiteral("%1 %2").arg(frequency).arg(comment);
        lines.sort();
        return lines;
    }
};

QStringList textOf(const TestList& list) {
    Model model;
    for (Node* entry : list.GetNode().Children())
        model.entries[TestList::Frequency(*entry).GetValue()] = TestList::Comment(*entry).GetValue();
    EXPECT_EQ(model.entries.size(), list.GetNode().ChildCount());
    return model.Text();
}

/// What the first has, and what the second has instead.
std::string difference(QStringList first, QStringList second) {
    const QStringList whole = first;
    for (const QString& line : std::as_const(second))
        first.removeOne(line);
    for (const QString& line : whole)
        second.removeOne(line);
    return first.isEmpty() && second.isEmpty()
               ? std::string()
               : (first.join('\n') + Q("\ninstead of\n") + second.join('\n')).toStdString();
}

class RandomEdits : public testing::Test, protected TestFolder {
protected:
    static constexpr int Clients = 5;

    void SetUp() override {
        server->list.Fill(100);
        startServer();
        for (Node* entry : server->list.GetNode().Children())
            model.entries[TestList::Frequency(*entry).GetValue()] = TestList::Comment(*entry).GetValue();
        for (int i = 0; i < Clients; ++i) {
            const QString name = QStringLiteral("c%1").arg(i);
            clients.push_back(std::make_unique<TestClient>(
                std::make_unique<MqttBus>(broker.AddressOf(Q("anna"), proxy.Port())), name));
            QObject::connect(&clients.back()->client, &ListClient::Refused,
                             [this](const ListClient::Refusal& refusal) { takeBack(refusal); });
        }
        ASSERT_TRUE(Until([&] { return areReady(); }));
    }
    void startServer() {
        server->Serve({}, std::make_unique<ListJournal>(Path("journal")));
        server->server->WasSaved();
    }
    /// Kills the server, whose list is then as it was saved, and starts it anew.
    void restartServer() {
        const QStringList saved = textOf(server->list);
        server->bus->Disconnect(); // its claim stays
        server.reset();
        server = std::make_unique<TestServer>(std::make_unique<MqttBus>(broker.AddressOf(Q("server"))),
                                              Q("server"));
        server->list.Fill(100);
        server->Serve({}, std::make_unique<ListJournal>(Path("journal")));
        EXPECT_EQ(difference(textOf(server->list), saved), std::string());
    }
    void takeBack(const ListClient::Refusal& refusal) {
        for (const auto& field : refusal.fields) {
            if (field.name != Q("comment") || model.before.count(field.wanted) == 0)
                continue;
            auto [frequency, comment] = model.before[field.wanted];
            // Changes of an entry that follow each other quickly are taken back at once.
            while (comment != field.present && model.before.count(comment) > 0)
                comment = model.before[comment].second;
            if (comment.isEmpty())
                model.entries.erase(frequency);
            else
                model.entries[frequency] = comment;
        }
        if (refusal.fields.empty() && refusal.entry)
            model.entries[TestList::Frequency(*refusal.entry.get()).GetValue()] =
                TestList::Comment(*refusal.entry.get()).GetValue();
    }
    bool areReady() const {
        return std::all_of(clients.begin(), clients.end(),
                           [](const auto& client) { return client->IsReady(); });
    }
    /// What each waits for, for whoever looks at a failure.
    std::string states() const {
        QStringList lines{QStringLiteral("server: %1 %2")
                              .arg(int(server->server->GetState()))
                              .arg(server->server->Reason())};
        for (const auto& client : clients)
            lines << QStringLiteral("%1, %2; %3 pending; as the server: %4")
                         .arg(client->reader.StateText(), client->client.WhyNoEditing())
                         .arg(client->client.Pending())
                         .arg(client->list.Text() == server->list.Text());
        return lines.join('\n').toStdString();
    }
    void edit(int number) {
        TestClient& client = *clients[number % Clients];
        if (!client.IsReady())
            return;
        const QString comment = QStringLiteral("edit %1").arg(number);
        std::vector<Node*> own;
        for (Node* entry : client.list.GetNode().Children()) {
            if (static_cast<qint64>(TestList::Frequency(*entry).GetValue()) / 1000 % Clients ==
                number % Clients)
                own.push_back(entry);
        }
        const auto kind = random() % 10;
        if (kind < 2 || own.empty()) {
            const double frequency = 1e8 + number * 5000 + number % Clients * 1000;
            client.list.Add(frequency, comment);
            return model.Write(frequency, comment);
        }
        Node* const entry = own[random() % own.size()];
        const double frequency = TestList::Frequency(*entry).GetValue();
        if (kind == 9) {
            model.entries.erase(frequency);
            client.list.GetNode().DeleteNode(entry);
        } else {
            TestList::Comment(*entry).SetValue(comment);
            model.Write(frequency, comment);
        }
    }
    void disturb() {
        switch (random() % 60) {
        case 0:
            return proxy.Cut();
        case 1:
            return proxy.HalveNext();
        case 2:
            return proxy.SetDelay(static_cast<int>(random() % 30));
        case 3:
            return proxy.SetDelay(0);
        case 4:
            broker.Kill();
            return broker.Start();
        default:
            return;
        }
    }

    std::mt19937 random;
    RealBroker broker{{"server", "anna"}};
    FaultProxy proxy{broker.Port()};
    std::unique_ptr<TestServer> server =
        std::make_unique<TestServer>(std::make_unique<MqttBus>(broker.AddressOf(Q("server"))), Q("server"));
    std::vector<std::unique_ptr<TestClient>> clients;
    Model model;
};

TEST_F(RandomEdits, ofFiveClientsWithFaultsEndAlikeForAll) {
    const unsigned seed = qEnvironmentVariableIsSet("LINK_SEED") ? qEnvironmentVariable("LINK_SEED").toUInt()
                                                                 : std::random_device()();
    SCOPED_TRACE(testing::Message() << "LINK_SEED=" << seed);
    std::printf("LINK_SEED=%u\n", seed);
    random.seed(seed);
    for (int number = 0; number < 1500; ++number) {
        edit(number);
        disturb();
        QTest::qWait(static_cast<int>(random() % 10));
        if (number == 500 || number == 1000) {
            proxy.SetDelay(0);
            ASSERT_TRUE(Until([&] { return areReady(); })) << states();
            restartServer();
        }
    }
    proxy.SetDelay(0);
    EXPECT_TRUE(Until([&] {
        return areReady() && std::all_of(clients.begin(), clients.end(), [&](const auto& client) {
                   return client->list.Text() == server->list.Text();
               });
    })) << states();
    EXPECT_EQ(difference(textOf(server->list), model.Text()), std::string());
}

} // namespace
