#include "link/sitelists.h"
#include "link/topics.h"
#include "tests/link/linkfixture.h"
#include "tests/link/realbroker.h"

namespace {

/// A seat that looks at what the site has.
struct Looker {
    explicit Looker(LocalBroker& broker) : bus(broker, Q("anna")), seat(bus, Q("north"), Q("anna")) {}
    /// "NAME ENTRIES SERVER STATE" of each list.
    QStringList Texts() const {
        QStringList all;
        for (const SiteLists::List& list : lists.Get())
            all << QStringLiteral("%1 %2 %3 %4")
                       .arg(list.name, list.HasCount() ? QString::number(list.entries) : Q("-"), list.server,
                            SiteLists::StateText(list.state));
        return all;
    }
    bool Show(const QStringList& wanted) {
        return Until([&] { return lists.IsComplete() && Texts() == wanted; });
    }

    LocalBus bus;
    Seat seat;
    SiteLists lists{seat};
};

TEST(SiteLists, tellWhatEachHasAndWhoServesItWhateverHappens) {
    LocalBroker broker;
    auto server = std::make_unique<TestServer>(broker);
    server->list.Fill(3);
    server->Serve();
    Looker looker(broker);
    EXPECT_TRUE(looker.Show({"Targets 3 server served"})) << looker.Texts().join('\n').toStdString();

    server->list.Add(1, Q("one more"));
    EXPECT_TRUE(looker.Show({"Targets 4 server served"}));
    const auto publish = [&](const char* topic, const QByteArray& payload) {
        server->bus->Publish("freqstore/north/lists/" + QByteArray(topic), payload,
                             MessageBus::Keep::Retained);
    };
    const QByteArray claim =
        Messages::Claim{QString::fromUtf8(server->seat.Path()), server->seat.Nonce()}.Encode();
    publish("a%2Fb/claim", claim);
    publish("later/manifest", "\x7fwhatever it is");
    publish("never/claim", Messages::Claim{Q("bert/gone"), 1}.Encode());
    publish("garbage/manifest", "\x01garbage");
    EXPECT_TRUE(looker.Show({"Targets 4 server served", "a/b - server begins", "later -  other version"}))
        << looker.Texts().join('\n').toStdString();

    broker.Stop();
    EXPECT_FALSE(looker.lists.IsComplete());
    EXPECT_TRUE(Until([&] { return looker.Texts().isEmpty(); }));
    server.reset();
    broker.Start();
    EXPECT_TRUE(looker.Show({"Targets 4 server server gone", "later -  other version"}))
        << looker.Texts().join('\n').toStdString();
}

/// The end of "freqstore-cli watch --lists".
struct Listed {
    int exitCode;
    QByteArray out, err;
};

Listed listOf(const RealBroker& broker, const QString& user, const QStringList& options = {}) {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(Q("FREQSTORE_SHARE_PASSWORD"), RealBroker::PasswordOf(user));
    process.setProcessEnvironment(environment);
    process.start(Q(CLI_PROGRAM),
                  QStringList{"watch",
                              QStringLiteral("mqtts://%1@127.0.0.1:%2/north").arg(user).arg(broker.Port()),
                              "--lists", "--ca-file", broker.CaFile()} +
                      options);
    // The lists' server is in this process.
    EXPECT_TRUE(Until([&] { return process.state() == QProcess::NotRunning; }));
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

TEST(SiteLists, arePrintedByTheProgramAsATableOrAsJson) {
    RealBroker broker({"server", "reader"});
    const Listed none = listOf(broker, Q("reader"));
    EXPECT_EQ(none.exitCode, 0) << none.err.toStdString();
    EXPECT_EQ(none.out, "");
    EXPECT_TRUE(none.err.contains("no list is served at north")) << none.err.toStdString();

    TestServer server(std::make_unique<MqttBus>(broker.AddressOf(Q("server"))), Q("server"));
    server.list.Fill(12);
    server.Serve();
    ASSERT_TRUE(Until([&] { return server.IsServing(); }));
    const Listed table = listOf(broker, Q("reader"));
    EXPECT_EQ(table.exitCode, 0);
    EXPECT_EQ(table.out.simplified(), "list entries state served by Targets 12 served server");
    EXPECT_EQ(listOf(broker, Q("reader"), {"--format", "jsonl"}).out,
              R"({"entries":12,"list":"Targets","server":"server","state":"served","user":"server"})"
              "\n");
    const Listed stranger = listOf(broker, Q("stranger"));
    EXPECT_EQ(stranger.exitCode, 2);
    EXPECT_TRUE(stranger.err.contains("refuses the user or the password")) << stranger.err.toStdString();
    EXPECT_EQ(listOf(broker, Q("reader"), {"--once"}).exitCode, 1) << "it belongs to one list";
    EXPECT_EQ(listOf(broker, Q("reader"), {"--format", "yaml"}).exitCode, 1);
}

} // namespace
